// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QSettings>

#include "Support/Literals.h"
#include "Support/TemporaryFolder.h"
#include "UI/Main/Desk.h"
#include "UI/TestPattern/LEDTestPatternControl.h"

namespace {

/// Pictures of one colour each, so that the current picture shows which one it is.
class TestPattern : public testing::Test
{
protected:
    TestPattern()
    {
        for (const char* directory : {"empty", "two", "first broken"})
            QDir().mkpath(Path(directory));
        for (const char* broken : {"pictures/c.gif", "pictures/e.txt", "last broken/b.png",
                                   "none loads/a.png", "none loads/b.png", "first broken/a.png"})
            folder.Write(broken, "nothing");
        for (const auto& [name, colour] :
             {std::pair("pictures/a.png", Qt::red), std::pair("pictures/b.bmp", Qt::green),
              std::pair("pictures/d.png", Qt::blue), std::pair("last broken/a.png", Qt::red),
              std::pair("two/a.png", Qt::red), std::pair("two/b.png", Qt::green),
              std::pair("first broken/b.webp", Qt::green),
              std::pair("first broken/c.jpg", Qt::blue), std::pair("own.png", Qt::cyan)})
        {
            QImage image(4, 4, QImage::Format_RGB32);
            image.fill(colour);
            EXPECT_TRUE(image.save(Path(name), nullptr, 100)) << name;
        }
    }

    [[nodiscard]] QString Path(const char* name) const
    {
        return QString::fromStdString((folder.Path() / name).string());
    }
    /// The letter of the picture's colour, D for the demonstration and B for the colour bars.
    [[nodiscard]] char Shown() const
    {
        const QImage image = control.GetPixmap()->toImage();
        if (image.width() > 4)
            return control.GetSelection() == 0 ? 'D' : 'B';
        const QColor colour = image.pixelColor(1, 1);
        const bool green = colour.green() > 128; // a JPEG is not exact
        return colour.red() > 128 ? 'r' : colour.blue() < 128 ? 'g' : green ? 'c' : 'b';
    }

    Support::TemporaryFolder folder;
    LEDTestPatternControl control;
};

class TestPatternInWindow : public Desk
{};

} // namespace

TEST_F(TestPattern, TheStepsFromPictureToPicture)
{
    // Folder, file and selection at first; steps to the next (+) and the previous one (-), what is
    // shown at first and after each step, and the selection in the end.
    for (const auto& [directory, file, selection, steps, shown, at] : {
             // Without pictures of the user the two built-in ones take turns.
             std::tuple("empty", "gone.png", 0, "++-", "DBDB", 1),
             {"gone", "gone.png", 4, "", "D", 0},
             {"gone", "gone.png", 2, "", "D", 0},
             // The user's file is the third; back from the first leads to it where there is no
             // folder.
             {"empty", "own.png", 0, "-", "Dc", 2},
             {"gone", "own.png", 2, "+", "cD", 0},
             // A folder in its order, round, and what is no picture passed over.
             {"pictures", "gone.png", 1, "+++++", "BrgbDB", 1},
             {"pictures", "gone.png", 0, "--", "Dbb", 5},
             {"pictures", "gone.png", 3, "-+", "grg", 3},
             {"pictures", "gone.png", 99, "", "D", 0},
             {"two", "gone.png", 0, "--", "Dgr", 2},
             {"last broken", "gone.png", 2, "+", "rr", 2},
             // Behind the user's file.
             {"pictures", "own.png", 1, "+++++", "BcrgbD", 0},
             {"pictures", "own.png", 0, "-", "Db", 6},
             {"none loads", "gone.png", 2, "", "D", 0},
             {"none loads", "own.png", 3, "-", "DD", 0},
         })
    {
        QSettings store(Path("store.ini"), QSettings::IniFormat);
        store.setValue("defaultImgDir"_q, Path(directory));
        store.setValue("usrImgFile"_q, Path(file));
        store.setValue("imgSelVal"_q, selection);
        control.ReadSettings(store);
        control.Update();
        std::string seen(1, Shown());
        for (const char* step = steps; *step; ++step) {
            *step == '+' ? control.Next() : control.Previous();
            seen += Shown();
        }
        EXPECT_EQ(seen, shown) << directory << " " << file << " " << selection << steps;
        EXPECT_EQ(control.GetSelection(), at) << directory << " " << file << " " << selection;
    }
}

TEST_F(TestPattern, AChoiceThatCanBeReadIsShownAtOnce)
{
    control.Update();
    for (const auto& [choice, taken, shown, at] : {
             std::tuple("pictures", true, 'r', 2), // its first
             {"own.png", true, 'c', 2},
             {"two", true, 'r', 3}, // and behind the user's file
             // The picture stays the one before.
             {"pictures/c.gif", false, 'r', 3},
             {"gone.png", false, 'r', 3},
             {"empty", false, 'r', 3},
             {"none loads", false, 'r', 3},
             {"first broken", true, 'g', 4}, // its first one that can be read
             {"first broken/c.jpg", true, 'b', 2},
         })
    {
        const QString path = Path(choice);
        const bool done =
            QFileInfo(path).isDir() ? control.SetDirectory(path) : control.SetFile(path).isEmpty();
        EXPECT_EQ(done, taken) << choice;
        EXPECT_EQ(Shown(), shown) << choice;
        EXPECT_EQ(control.GetSelection(), at) << choice;
    }
    control.Next();
    EXPECT_EQ(Shown(), 'g') << "the folder behind it";
    // The old picture lives until everyone has taken the new one.
    const QPixmap* old = control.GetPixmap();
    QSize oldSize;
    const auto shown = QObject::connect(&control, &LEDTestPatternControl::testPatternChange,
                                        [&](const QPixmap* picture) {
                                            EXPECT_NE(picture, old);
                                            oldSize = old->size();
                                        });
    control.Next();
    EXPECT_FALSE(oldSize.isEmpty());
    QObject::disconnect(shown);

    // A disk that was taken out: the picture stays, until the step is made once more.
    int told = 0;
    QObject::connect(&control, &LEDTestPatternControl::directoryHasNone,
                     [&](const QString& directory) {
                         EXPECT_EQ(directory, Path("first broken"));
                         ++told;
                     });
    EXPECT_TRUE(QDir().rename(Path("first broken"), Path("elsewhere")));
    control.Previous();
    EXPECT_EQ(Shown(), 'b');
    EXPECT_EQ(control.GetSelection(), 5);
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(QDir().rename(Path("elsewhere"), Path("first broken")));
    control.Previous();
    EXPECT_EQ(Shown(), 'g');
    EXPECT_TRUE(QDir().rename(Path("first broken"), Path("elsewhere")));
    control.Next();
    EXPECT_EQ(Shown(), 'g');
    control.Next();
    EXPECT_EQ(Shown(), 'D');
    EXPECT_EQ(told, 3);
    control.Next();
    EXPECT_EQ(Shown(), 'B');
    EXPECT_EQ(told, 3) << "it leads not there";
}

TEST_F(TestPatternInWindow, APictureThatCantBeReadIsToldAndTheOneBeforeStays)
{
    Start();
    ChooseHalves();
    const QImage before = Picture();
    home.Write("broken.webp", "nothing");
    for (const auto& [action, path, words] :
         {std::tuple("actionChoose_Test_Image", Path("broken.webp"_q),
                     "broken.webp can't be read: "),
          {"actionChoose_Test_Image_Dir", Path("config"_q), "config has no picture that"}})
    {
        person.Will([path = path](QDialog& dialog) {
            auto& chooser = *qobject_cast<QFileDialog*>(&dialog);
            EXPECT_TRUE(chooser.testOption(QFileDialog::ShowDirsOnly) ||
                        chooser.nameFilters().front().contains("*.webp"_q));
            chooser.findChild<QLineEdit*>("fileNameEdit"_q)->setText(path);
            QMetaObject::invokeMethod(&chooser, "accept");
        });
        person.WillPress("OK"_q);
        Trigger(action);
        EXPECT_EQ(person.seen.back().title, "Test Image Not Read"_q);
        EXPECT_TRUE(person.seen.back().text.contains(QLatin1String(words))) << action;
        EXPECT_EQ(Picture(), before) << action;
    }
    ASSERT_TRUE(QDir().mkpath(Path("disk"_q)));
    ASSERT_TRUE(QFile::copy(Path("halves.png"_q), Path("disk/halves.png"_q)));
    person.WillChoose(Path("disk"_q));
    Trigger("actionChoose_Test_Image_Dir");
    ASSERT_TRUE(QDir(Path("disk"_q)).removeRecursively());
    QTest::mouseClick(View().GetNextImageButton(), Qt::LeftButton);
    EXPECT_EQ(Picture(), before);
    EXPECT_EQ(Find<QStatusBar>("statusbar")->currentMessage(),
              "No test image can be read in %1: is its disk connected?"_q.arg(Path("disk"_q)));
}
