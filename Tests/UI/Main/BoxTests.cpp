// SPDX-License-Identifier: MIT
#include <QAction>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>
#include <QTreeView>

#include "Support/LogCapture.h"
#include "UI/Dialogs/LEDDialogCanvasSize.h"
#include "UI/Dialogs/WEFTAboutDialog.h"
#include "UI/Dialogs/WEFTDialogPreferences.h"
#include "UI/Main/Desk.h"
#include "UI/Main/Startup.h"
#include "UI/Main/WEFTMain.h"

namespace {

class Boxes : public Desk
{
protected:
    const InFont usual{9};

    template <typename Type>
    static Type* In(QDialog& dialog, const char* name)
    {
        auto* child = dialog.findChild<Type*>(QLatin1String(name));
        EXPECT_TRUE(child) << name;
        return child;
    }
};

} // namespace

TEST_F(Boxes, CanvasSize)
{
    Start();
    person.Will([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Canvas Size"));
        EXPECT_EQ(dialog.size(), QSize(290, 200));
        EXPECT_EQ(In<QLabel>(dialog, "label_4")->text(), QStringLiteral("Change Canvas Size"));
        auto* width = In<QSpinBox>(dialog, "spinBoxWidth");
        auto* height = In<QSpinBox>(dialog, "spinBoxHeight");
        EXPECT_EQ(width->value(), 100);
        EXPECT_EQ(height->value(), 100);
        EXPECT_EQ(width->minimum(), 1);
        EXPECT_EQ(height->maximum(), 4096);
        auto* keep = In<QCheckBox>(dialog, "cbKeepPositions");
        EXPECT_EQ(keep->text(), QStringLiteral("Keep fixture position and size"));
        EXPECT_TRUE(keep->isChecked());
        width->setValue(5000);
        dialog.reject();
    });
    Trigger("actionCanvas_Size");
    EXPECT_EQ(CanvasWidth(), 100);
}

TEST_F(Boxes, PreferencesShowAndTakeWhatIsSet)
{
    Start();
    Trigger("actionDisplay_Pixel_Grid");
    person.Will([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Preferences"));
        EXPECT_EQ(dialog.size(), QSize(390, 405));
        EXPECT_FALSE(In<QCheckBox>(dialog, "checkShowGrid")->isChecked());
        EXPECT_TRUE(In<QCheckBox>(dialog, "checkSnapGrid")->isChecked());
        EXPECT_TRUE(In<QRadioButton>(dialog, "radioZoomCursor")->isChecked());
        EXPECT_TRUE(In<QRadioButton>(dialog, "artNetBroadcast")->isChecked());
        In<QCheckBox>(dialog, "checkShowGrid")->setChecked(true);
        In<QCheckBox>(dialog, "checkSnapGrid")->setChecked(false);
        In<QRadioButton>(dialog, "radioZoomSelection")->setChecked(true);
        dialog.accept();
    });
    Trigger("actionPreferences");
    EXPECT_TRUE(Action("actionDisplay_Pixel_Grid")->isChecked());
    EXPECT_FALSE(Action("actionSnapToGrid")->isChecked());
    const QSettings store(QStringLiteral("Zentri"), QStringLiteral("PixelWeft3"));
    EXPECT_EQ(store.value(QStringLiteral("zoomStyle")).toInt(), 1);
    EXPECT_TRUE(Title().contains(QStringLiteral("(saved)"))) << "nothing of the document changed";

    person.Will([](QDialog& dialog) {
        EXPECT_TRUE(In<QRadioButton>(dialog, "radioZoomSelection")->isChecked());
        In<QRadioButton>(dialog, "artNetAutoUnicast")->setChecked(true);
        dialog.reject();
    });
    Trigger("actionPreferences");
    EXPECT_TRUE(Title().contains(QStringLiteral("(saved)")));
    person.Will([](QDialog& dialog) {
        EXPECT_TRUE(In<QRadioButton>(dialog, "artNetBroadcast")->isChecked());
        In<QRadioButton>(dialog, "artNetAutoUnicast")->setChecked(true);
        dialog.accept();
    });
    Trigger("actionPreferences");
    EXPECT_TRUE(Title().contains(QStringLiteral("(unsaved)")));
}

TEST_F(Boxes, TheDefaultFixturesComeBackEvenWhenThePreferencesAreCancelled)
{
    Start();
    const auto* list = Find<QTreeView>("treeView");
    const int before = list->model()->rowCount();
    Edit();
    for (const auto& [answer, restored] : {std::pair("No", false), std::pair("Yes", true)}) {
        person.seen.clear();
        person.Will([](QDialog& dialog) {
            QTest::mouseClick(In<QPushButton>(dialog, "restoreFixturesButton"), Qt::LeftButton);
            dialog.reject();
        });
        person.WillPress(QLatin1String(answer));
        Trigger("actionPreferences");
        ASSERT_EQ(person.seen.size(), 2U);
        EXPECT_EQ(person.seen[1].title, QStringLiteral("Warning"));
        EXPECT_EQ(
            person.seen[1].text,
            QStringLiteral("Do you want to install the provided fixture library ? \nThis will "
                           "overwrite your local fixture definitions."));
        EXPECT_EQ(person.seen[1].buttons,
                  QStringList({QStringLiteral("No"), QStringLiteral("Yes")}));
        EXPECT_EQ(list->model()->rowCount(), before);
        // A restore begins a new document without a question.
        EXPECT_TRUE(Title().contains(QStringLiteral("(unsaved)"))) << restored;
    }
}

TEST_F(Boxes, AboutShowsTheCreditsOrItsOwnWords)
{
    Start();
    person.Will([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("About Zentri PixelWeft"));
        EXPECT_EQ(dialog.size(), QSize(360, 257));
        EXPECT_EQ(In<QLabel>(dialog, "labelVersion")->text(),
                  QStringLiteral("Version 3.2.5 alpha"));
        EXPECT_EQ(In<QLabel>(dialog, "labelCopyRight")->text(),
                  QStringLiteral("Copyright 2026 the PixelWeft authors"));
        EXPECT_FALSE(dialog.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
        dialog.accept();
    });
    Trigger("actionAbout");

    const Support::LogCapture log;
    WEFTAboutDialog missing(nullptr, QStringLiteral(":/text/Docs/none.txt"));
    EXPECT_EQ(In<QLabel>(missing, "labelCopyRight")->text(), QStringLiteral("Copyright"));
    EXPECT_EQ(In<QLabel>(missing, "labelTeam")->text(), QStringLiteral("Team"));
    EXPECT_TRUE(log.Has("The credits can't be opened: :/text/Docs/none.txt"));
}

TEST_F(Boxes, TheTestPictureIsChosen)
{
    Start();
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(Path(QStringLiteral("own.png"))));
    person.WillChoose(Path(QStringLiteral("own.png")));
    Trigger("actionChoose_Test_Image");
    EXPECT_EQ(person.seen[0].title, QStringLiteral("Open Test Image"));
    person.Will([](QDialog& dialog) {
        EXPECT_TRUE(qobject_cast<QFileDialog*>(&dialog)->testOption(QFileDialog::ShowDirsOnly));
        dialog.reject();
    });
    Trigger("actionChoose_Test_Image_Dir");
    EXPECT_EQ(person.seen[1].title, QStringLiteral("Choose Test Image Directory"));
    window->close();
    const QSettings store(QStringLiteral("Zentri"), QStringLiteral("PixelWeft3"));
    EXPECT_EQ(store.value(QStringLiteral("usrImgFile")), Path(QStringLiteral("own.png")));
    EXPECT_EQ(store.value(QStringLiteral("imgSelVal")).toInt(), 2);
}

TEST_F(Boxes, FixturesAreDeletedWithAQuestionAndNotWhileInUse)
{
    WriteDocument(DocumentPath(), 100, 100, QString());
    Start();
    auto* list = Find<QTreeView>("treeView");
    auto* button = Find<QPushButton>("buttonDeleteFixture");
    EXPECT_FALSE(button->isEnabled());
    const auto choose = [&](const QString& product) {
        const auto found = list->model()->match(list->model()->index(0, 1), Qt::DisplayRole,
                                                product, 1, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(found.size(), 1) << product.toStdString();
        list->setCurrentIndex(found.first());
    };
    list->setCurrentIndex(list->model()->index(0, 0));
    EXPECT_FALSE(button->isEnabled()) << "a manufacturer";

    choose(QStringLiteral("ArcLine 36"));
    ASSERT_TRUE(button->isEnabled());
    person.WillPress(QStringLiteral("OK"));
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(person.seen[0].title, QStringLiteral("Delete Used Fixture"));
    EXPECT_EQ(person.seen[0].text,
              QStringLiteral("This fixture is used in your current mapping file.\n\nIt cannot be "
                             "deleted until you remove it from your mapping."));

    Trigger("actionNew");
    Trigger("actionSave_File");
    for (const char* answer : {"Cancel", "Yes"}) {
        person.seen.clear();
        choose(QStringLiteral("ArcLine 36"));
        person.WillPress(QLatin1String(answer));
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_EQ(person.seen[0].text,
                  QStringLiteral("Are you sure you want to delete this fixture from the library?"
                                 "\n\nManufacturer: Anolis\nProduct: ArcLine 36"));
        EXPECT_EQ(person.seen[0].byDefault, QStringLiteral("Yes"));
    }
    EXPECT_TRUE(list->model()
                    ->match(list->model()->index(0, 1), Qt::DisplayRole,
                            QStringLiteral("ArcLine 36"), 1, Qt::MatchExactly | Qt::MatchRecursive)
                    .isEmpty());
    EXPECT_TRUE(Title().contains(QStringLiteral("(unsaved)")));
}

TEST_F(Boxes, WithoutTheHostsLibraryTheOperatorChoosesAFolder)
{
    WidgetBoxes real;
    // A cancelled folder dialog brings the box back.
    person.WillPress(QStringLiteral("Choose"));
    person.WillPress(QStringLiteral("Escape"));
    person.WillPress(QStringLiteral("Choose"));
    QDir().mkpath(Path(QStringLiteral("shows")));
    person.WillChoose(Path(QStringLiteral("shows")));
    EXPECT_EQ(Startup::AskForDocumentPath(real), Path(QStringLiteral("shows/mapping.wfm")));
    EXPECT_TRUE(person.seen[0].text.startsWith(QStringLiteral("PixelWeft requires that ")));
    EXPECT_TRUE(person.seen[0].title.endsWith(QStringLiteral(" Library Not Found")));
    EXPECT_EQ(person.seen[0].buttons,
              QStringList({QStringLiteral("Choose"), QStringLiteral("Quit")}));
    EXPECT_FALSE(person.seen[0].hasParent);
    EXPECT_EQ(person.seen[1].title, QStringLiteral("working directory"));
}

TEST_F(Boxes, QuitWithoutALibraryEndsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    WidgetBoxes real;
    for (const char* quit : {"Quit", "Escape"}) {
        EXPECT_EXIT(
            {
                person.WillPress(QLatin1String(quit));
                static_cast<void>(Startup::AskForDocumentPath(real));
            },
            testing::ExitedWithCode(EXIT_FAILURE), "");
    }
}
