// SPDX-License-Identifier: MIT
// A fixture that the library lacks: made by hand, placed and seen on the wire; then changed while
// the lights are on.
#include "Model/DeviceModel.h"
#include "Settings/FixtureLibraryPath.h"
#include "Support/ArtNetBytes.h"
#include "Support/Stage.h"
#include "UI/Main/InspectorDesk.h"

namespace {

class OwnFixtures : public InspectorDesk
{
protected:
    static constexpr int Across = 10;
    static constexpr int Down = 4;
    static constexpr int Left = 10; ///< on the canvas, in pixels
    static constexpr int Top = 26;
    static constexpr int FirstPixel = 3; ///< behind two constants
    static constexpr int LastChannel = FirstPixel + 3 * Across * Down - 1;
    static inline const QString Panel = "Own \"Panel\" & more"_q;

    OwnFixtures()
    {
        StartWith(QString());
        window->StartTimers();
        // No two places of the canvas have one colour.
        QImage picture(100, 100, QImage::Format_RGB32);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                picture.setPixelColor(x, y, QColor(x, 100 + y, 255 - x));
        }
        EXPECT_TRUE(picture.save(Path("colours.png"_q)));
        person.WillChoose(Path("colours.png"_q));
        Trigger("actionChoose_Test_Image");
    }

    static void ClickOn(const QWidget& dialog, const char* button)
    {
        QTest::mouseClick(In<QAbstractButton>(dialog, button), Qt::LeftButton);
    }
    static void End(const QWidget& dialog, QDialogButtonBox::StandardButton button)
    {
        QTest::mouseClick(In<QDialogButtonBox>(dialog, "buttonBox")->button(button),
                          Qt::LeftButton);
    }
    void WillChooseSize(int type)
    {
        person.Will([type](QDialog& dialog) {
            In<QComboBox>(dialog, "comboFixtureType")->setCurrentIndex(type);
            In<QSpinBox>(dialog, "spinFixtureWidth")->setValue(Across);
            In<QSpinBox>(dialog, "spinFixtureHeight")->setValue(Down);
            In<QCheckBox>(dialog, "channelsCountEnabled")->setChecked(true);
            In<QSpinBox>(dialog, "channelCount")->setValue(LastChannel);
            End(dialog, QDialogButtonBox::Ok);
        });
    }
    static void AutoMapInSnakes(const QWidget& editor)
    {
        In<QCheckBox>(editor, "snake")->setChecked(true);
        In<QSpinBox>(editor, "automapStartChannel")->setValue(FirstPixel);
        ClickOn(editor, "buttonPatch");
    }
    static void TypeConstant(const QWidget& editor, int channel, const char* value)
    {
        In<QTabWidget>(editor, "settingsPeronalityTabWidget")->setCurrentIndex(1);
        auto& table = *In<QTableWidget>(editor, "personalityTable");
        const QTableWidgetItem* item = table.item(channel - 1, 1);
        table.scrollToItem(item);
        const QPoint at = table.visualItemRect(item).center();
        QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, at);
        const auto boxes = table.findChildren<QComboBox*>();
        ASSERT_FALSE(boxes.empty()) << channel;
        QTest::keyClicks(boxes.last()->lineEdit(), QLatin1String(value));
        QTest::keyClick(boxes.last(), Qt::Key_Return);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static void NameIt(const QWidget& editor, const QString& product)
    {
        In<QLineEdit>(editor, "editProductName")->setText(product);
    }
    void OpenOn(const QString& product) const
    {
        const QModelIndexList found = LibraryRows(product);
        ASSERT_EQ(found.size(), 1);
        Find<QTreeView>("treeView")->setCurrentIndex(found.front());
        ClickOn(*window, "buttonEditFixture");
    }
    /// From nothing to a lit panel.
    void MakeAndPlace(const QStringList& thenPressed = {})
    {
        WillChooseSize(0);
        person.Will([](QDialog& editor) {
            NameIt(editor, Panel);
            AutoMapInSnakes(editor);
            TypeConstant(editor, 1, "77");
            TypeConstant(editor, 2, "200");
            End(editor, QDialogButtonBox::Ok);
        });
        for (const QString& button : thenPressed)
            person.WillPress(button);
        ClickOn(*window, "buttonCustomFixture");
        QCoreApplication::processEvents(); // what the library reports comes behind it
        DragFromLibrary({Left + Across / 2.0, Top + Down / 2.0}, Panel);
        ASSERT_EQ(PlacedFixtures(), 1);
    }

    /// The channels of the panel in the next frame.
    [[nodiscard]] Stage::Bytes NextFrame() const
    {
        while (rig_->Next(std::chrono::milliseconds(0)))
            continue;
        Stage::Bytes channels;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            const auto heard = rig_->Next(std::chrono::milliseconds(0));
            if (!heard || !ArtNetBytes::UniverseOf(heard->bytes))
                return false;
            channels = ArtNetBytes::ChannelsOf(heard->bytes);
            channels.resize(LastChannel);
            return true;
        }));
        return channels;
    }
    /// `order` has the place of red, green and blue within a pixel.
    [[nodiscard]] static Stage::Bytes Lit(std::array<std::size_t, 3> order, std::uint8_t first = 77)
    {
        Stage::Bytes channels = {first, 200};
        for (int row = 0; row < Down; ++row) {
            for (int i = 0; i < Across; ++i) {
                const int column = row % 2 == 0 ? i : Across - 1 - i;
                const int x = Left + column;
                const int y = Top + row;
                std::array<std::uint8_t, 3> pixel{};
                pixel[order[0]] = static_cast<std::uint8_t>(x);
                pixel[order[1]] = static_cast<std::uint8_t>(100 + y);
                pixel[order[2]] = static_cast<std::uint8_t>(255 - x);
                channels.insert(channels.end(), pixel.begin(), pixel.end());
            }
        }
        return channels;
    }
    static constexpr std::array<std::size_t, 3> RGB = {0, 1, 2};
    static constexpr std::array<std::size_t, 3> GRB = {1, 0, 2};

private:
    std::unique_ptr<Stage::Socket> rig_ = Stage::RigSocket();
};

} // namespace

TEST_F(OwnFixtures, APanelFromNothingIsLitAndThenGetsAnotherOrderOfColours)
{
    MakeAndPlace();
    DeviceModel file;
    file.Merge(GetFixtureLibraryPath().toStdWString(), true);
    const DeviceLedItem* kept = file.GetLEDFixtureByProduct(Panel.toStdWString());
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->manufacturer, L"Manufacturer");
    EXPECT_EQ(kept->GetChannelCount(), LastChannel);
    EXPECT_EQ(kept->pixelMap.GetCell(0, 0), 3);
    EXPECT_EQ(kept->pixelMap.GetCell(9, 1), 33);
    EXPECT_EQ(kept->pixelMap.GetCell(0, 3), 120);
    EXPECT_EQ(NextFrame(), Lit(RGB));
    EXPECT_EQ(State(), "unsaved"_q);
    Trigger("actionSave_File");

    Select({0});
    QStringList before;
    for (const char* field : {X, Y, Width, Height, Universe, Channel})
        before << Value(0, field);
    Find<QCheckBox>(FlipH)->click();
    ASSERT_TRUE(Action("actionUndo")->isEnabled());
    Trigger("actionUndo");
    person.WillPress("Yes"_q);
    person.Will([this](QDialog& editor) {
        ClickOn(editor, "buttonModify");
        AutoMapInSnakes(editor);
        End(editor, QDialogButtonBox::Apply);
        EXPECT_EQ(NextFrame(), Lit(GRB)) << "with the editor still open";
        EXPECT_EQ(State(), "saved"_q);
        End(editor, QDialogButtonBox::Ok);
    });
    WillChooseSize(2);
    person.WillPress("Yes"_q);
    OpenOn(Panel);
    EXPECT_EQ(NextFrame(), Lit(GRB));
    QStringList after;
    for (const char* field : {X, Y, Width, Height, Universe, Channel})
        after << Value(0, field);
    EXPECT_EQ(after, before);
    EXPECT_EQ(State(), "unsaved"_q);
    EXPECT_FALSE(Action("actionUndo")->isEnabled() || Action("actionRedo")->isEnabled());
}

TEST_F(OwnFixtures, CancelBringsBackTheLightTheNamesAndTheFile)
{
    MakeAndPlace();
    Trigger("actionSave_File");
    const std::string before = Bytes(GetFixtureLibraryPath());
    person.WillPress("Yes"_q);
    person.Will([this](QDialog& editor) {
        NameIt(editor, "Another name"_q);
        In<QComboBox>(editor, "comboManufacturer")->setEditText("Aaron"_q);
        TypeConstant(editor, 1, "5");
        End(editor, QDialogButtonBox::Apply);
        EXPECT_EQ(NextFrame(), Lit(RGB, 5));
        EXPECT_EQ(Document().GetElement(0)->GetFixture().product, L"Another name");
        End(editor, QDialogButtonBox::Cancel);
    });
    OpenOn(Panel);
    EXPECT_EQ(NextFrame(), Lit(RGB));
    EXPECT_EQ(Document().GetElement(0)->GetFixture().product, Panel.toStdWString());
    EXPECT_EQ(Bytes(GetFixtureLibraryPath()), before);
    EXPECT_EQ(State(), "saved"_q);
    // The element still knows its fixture: it is in use.
    person.WillPress("OK"_q);
    ClickOn(*window, "buttonDeleteFixture");
    EXPECT_EQ(person.seen.back().title, "Delete Used Fixture"_q);
}

TEST_F(OwnFixtures, StayInTheMappingWhenTheDefaultFixturesComeBack)
{
    MakeAndPlace();
    Trigger("actionSave_File");
    person.Will([](QDialog& dialog) {
        ClickOn(dialog, "restoreFixturesButton");
        dialog.reject();
    });
    person.WillPress("Yes"_q);
    Trigger("actionPreferences");
    DeviceModel file;
    file.Merge(GetFixtureLibraryPath().toStdWString(), true);
    EXPECT_EQ(file.GetLEDFixtureByProduct(Panel.toStdWString()), nullptr);
    EXPECT_EQ(NextFrame(), Lit(RGB));
    EXPECT_EQ(State(), "saved"_q);
    // The element still knows its fixture, and the document brings it along.
    person.WillPress("OK"_q);
    ClickOn(*window, "buttonDeleteFixture");
    EXPECT_EQ(person.seen.back().title, "Delete Used Fixture"_q);
    Trigger("actionNew");
    Import(DocumentPath(), {"Discard"});
    EXPECT_EQ(NextFrame(), Lit(RGB));
}

TEST_F(OwnFixtures, OneThatCouldNotBeSavedSurvivesANewDocument)
{
    const QString file = GetFixtureLibraryPath();
    ASSERT_TRUE(QFile::remove(file) && QDir().mkdir(file));
    MakeAndPlace({"OK"_q});
    EXPECT_EQ(person.seen.back().title, "Fixture Library Not Saved"_q);
    person.WillPress("Discard"_q);
    person.WillPress("OK"_q);
    Trigger("actionNew");
    QCoreApplication::processEvents(); // the notice comes behind it
    EXPECT_EQ(PlacedFixtures(), 0);
    DragFromLibrary({Left + Across / 2.0, Top + Down / 2.0}, Panel);
    EXPECT_EQ(NextFrame(), Lit(RGB));
    ASSERT_TRUE(QDir().rmdir(file));
    person.WillPress("Discard"_q);
    Trigger("actionNew");
    DragFromLibrary({Left + Across / 2.0, Top + Down / 2.0}, Panel);
    EXPECT_EQ(NextFrame(), Lit(RGB));
    EXPECT_TRUE(QFileInfo(file).isFile());
}
