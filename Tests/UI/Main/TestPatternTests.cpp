// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QSettings>

#include "Support/Literals.h"
#include "Support/TemporaryFolder.h"
#include "UI/TestPattern/LEDTestPatternControl.h"

namespace {

/// Pictures of one colour each, so that the current picture shows which one it is.
class TestPattern : public testing::Test
{
protected:
    TestPattern()
    {
        for (const char* directory : {"empty", "two"})
            QDir().mkpath(Path(directory));
        for (const char* broken : {"pictures/c.gif", "pictures/e.txt", "last broken/b.png",
                                   "none loads/a.png", "none loads/b.png"})
            folder.Write(broken, "nothing");
        for (const auto& [name, colour] :
             {std::pair("pictures/a.png", Qt::red), std::pair("pictures/b.bmp", Qt::green),
              std::pair("pictures/d.png", Qt::blue), std::pair("last broken/a.png", Qt::red),
              std::pair("two/a.png", Qt::red), std::pair("two/b.png", Qt::green),
              std::pair("own.png", Qt::cyan)})
        {
            QImage image(4, 4, QImage::Format_RGB32);
            image.fill(colour);
            EXPECT_TRUE(image.save(Path(name)));
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
        return colour == Qt::red ? 'r' : colour == Qt::green ? 'g' : colour == Qt::blue ? 'b' : 'c';
    }

    Support::TemporaryFolder folder;
    LEDTestPatternControl control;
};

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

TEST_F(TestPattern, AChoiceIsShownAtOnce)
{
    control.SetDirectory(Path("pictures"));
    EXPECT_EQ(Shown(), 'g') << "without a user's file the fourth is the folder's second";
    control.SetFile(Path("own.png"));
    EXPECT_EQ(Shown(), 'c');
    control.SetDirectory(Path("pictures"));
    EXPECT_EQ(Shown(), 'r');
    // The old picture lives until everyone has taken the new one.
    const QPixmap* old = control.GetPixmap();
    QSize oldSize;
    QObject::connect(&control, &LEDTestPatternControl::testPatternChange, [&](QPixmap* picture) {
        EXPECT_NE(picture, old);
        oldSize = old->size();
    });
    control.Next();
    EXPECT_FALSE(oldSize.isEmpty());
}
