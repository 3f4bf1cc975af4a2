// SPDX-License-Identifier: MIT
// Walls of equal elements, and elements that are copied: by keys and menus, in the list, on the
// canvas and between documents.
#include <algorithm>
#include <map>

#include "LibTools/NaturalOrder.h"
#include "Model/MappedDeviceModel.h"
#include "Support/ArtNetBytes.h"
#include "Support/LogCapture.h"
#include "Support/Stage.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Main/Desk.h"

namespace {

const QString ElementType = "application/x-pixelweft-elements"_q;

class Copying : public Desk
{
protected:
    [[nodiscard]] QWidget* Canvas() const { return &View(); }
    [[nodiscard]] QTreeView* List() const { return Find<QTreeView>("mappedTreeView"); }
    /// What a save would write.
    std::string File()
    {
        const QString file = Path("file%1.wfm"_q.arg(++files_));
        person.WillChoose(file);
        Trigger("actionExport");
        return Bytes(file);
    }
    /// Middles and addresses, in the order of making, in canvas pixels.
    [[nodiscard]] QString Places() const
    {
        QStringList places;
        for (const std::int64_t id : Scene().AllIds()) {
            const QPointF at = Scene().Find(id)->pos();
            places << "%1,%2"_q.arg(qRound(at.x())).arg(qRound(at.y()));
        }
        return places.join(QLatin1Char(' '));
    }
    [[nodiscard]] QStringList Addresses() const
    {
        QStringList addresses;
        for (int row = 0; row < List()->model()->rowCount(); ++row)
            addresses
                << List()->model()->index(row, MappedDeviceModel::AddressColumn).data().toString();
        std::sort(addresses.begin(), addresses.end(), IsBefore);
        return addresses;
    }
    /// Whether the middles of the selected elements are in sight.
    [[nodiscard]] bool SelectionIsInSight() const
    {
        const auto ids = Scene().SelectedIds();
        return std::all_of(ids.begin(), ids.end(), [this](std::int64_t id) {
            return View().viewport()->rect().contains(OnScreen(Scene().Find(id)->pos()));
        });
    }
    [[nodiscard]] bool CanPaste() const { return Action("actionPaste")->isEnabled(); }
    /// Another program puts this on the system's clipboard.
    static void Offer(const QString& type, const QByteArray& bytes)
    {
        auto* data = new QMimeData;
        data->setData(type, bytes);
        QGuiApplication::clipboard()->setMimeData(data);
    }
    /// Types into the duplicate dialog, with the keyboard alone.
    void WillDuplicate(const char* across, const char* down, int firstSteps, int thenSteps)
    {
        person.Will([=](QDialog& dialog) {
            dialog.activateWindow();
            ASSERT_TRUE(QTest::qWaitFor([&dialog] { return dialog.isActiveWindow(); }));
            const auto type = [&dialog](const char* text) {
                QTest::keyClicks(dialog.focusWidget(), QLatin1String(text));
                QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            };
            type(across);
            type(down);
            for (const int steps : {firstSteps, thenSteps}) {
                for (int i = 0; i < steps; ++i)
                    QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
                QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            }
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
    }

private:
    int files_ = 0;
};

} // namespace

TEST_F(Copying, AnElementOffTheCanvasBecomesAWallByKeysAlone)
{
    // Twelve by one pixel, far to the left and above.
    StartWith(Element({-0.4, -0.45}, {0.12, 0.01}, 15, 433));
    for (const char* name : {"actionDuplicate_Element", "actionCopy", "actionPaste"})
        EXPECT_FALSE(Action(name)->isEnabled()) << name;
    Type(List(), Qt::Key_A, Qt::ControlModifier);
    const std::string before = File();
    const QSignalSpy onCanvas(&Scene(), &WeftMapEditorScene::RectangleSelectionEvent);
    const QSignalSpy inList(List()->selectionModel(), &QItemSelectionModel::selectionChanged);
    WillDuplicate("4", "3", 1, 1);
    Type(List(), Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(person.seen.back().title, "Duplicate Element"_q);
    EXPECT_EQ(Places(), "-40,-45 -52,-45 -64,-45 -76,-45 -40,-46 -52,-46 -64,-46 -76,-46 "
                        "-40,-47 -52,-47 -64,-47 -76,-47"_q);
    EXPECT_EQ(Addresses().first(), "0/15/433"_q);
    EXPECT_EQ(Addresses().at(2), "1/0/1"_q);
    EXPECT_EQ(Addresses().last(), "1/0/325"_q);
    EXPECT_EQ(onCanvas.count(), 1);
    EXPECT_EQ(inList.count(), 1);
    EXPECT_EQ(Scene().SelectedCount(), 11);
    EXPECT_EQ(List()->selectionModel()->selectedRows().size(), 11);
    EXPECT_TRUE(SelectionIsInSight());

    const std::string after = File();
    Trigger("actionUndo");
    EXPECT_EQ(File(), before);
    View().centerOn(100, 100);
    Trigger("actionRedo");
    EXPECT_EQ(File(), after);
    EXPECT_EQ(Scene().SelectedCount(), 11);
    EXPECT_TRUE(SelectionIsInSight());
    Type(List(), Qt::Key_D, Qt::ControlModifier); // one alone can be duplicated: no dialog
    EXPECT_EQ(PlacedFixtures(), 12);
}

TEST_F(Copying, TheDuplicateDialogKeepsTheCountsWithinReason)
{
    StartWith(Element({0.2, 0.2}, {0.12, 0.01}));
    Type(List(), Qt::Key_A, Qt::ControlModifier);
    person.Will([](QDialog& dialog) {
        auto* across = dialog.findChild<QSpinBox*>("spinHorzizontalCount"_q);
        auto* first = dialog.findChild<QComboBox*>("comboDirectionFirst"_q);
        auto* then = dialog.findChild<QComboBox*>("comboDirectionThen"_q);
        const auto* total = dialog.findChild<QLabel*>("totalLabel"_q);
        auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
        EXPECT_EQ(dialog.focusWidget(), across);
        const QString axes[] = {"From top to bottom, From bottom to top"_q,
                                "From left to right, From right to left"_q};
        for (int i = 0; i < 4; ++i) {
            first->setCurrentIndex(i);
            EXPECT_EQ(then->itemText(0) + ", "_q + then->itemText(1), axes[i / 2]);
            EXPECT_EQ(first->itemText(i), axes[1 - i / 2].split(", "_q).at(i % 2));
        }
        QTest::keyClicks(across, "1024"_q);
        EXPECT_TRUE(ok->isEnabled());
        auto* down = dialog.findChild<QSpinBox*>("spinVerticalCount"_q);
        EXPECT_EQ(total->text(), "Elements in all: 1,024"_q);
        down->setValue(4);
        EXPECT_TRUE(ok->isEnabled());
        down->setValue(5);
        EXPECT_FALSE(ok->isEnabled());
        EXPECT_EQ(total->text(),
                  "Elements in all: 5,120. No more than 4,096 can be made at a time."_q);
        QTest::keyClick(&dialog, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        across->setValue(1);
        down->setValue(1);
        dialog.accept();
    });
    const Support::LogCapture log;
    Trigger("actionDuplicate_Element");
    EXPECT_TRUE(log.Has("Ignoring DuplicateElementCommand: Height and width are both 1."));
    EXPECT_FALSE(Action("actionUndo")->isEnabled());
    EXPECT_NE(State(), "unsaved"_q);

    // The document is replaced by another one with as many elements while the dialog is open.
    const QString other = WriteDocument("other.wfm"_q, {});
    person.Will([&](QDialog& dialog) {
        Import(other);
        dialog.findChild<QSpinBox*>("spinVerticalCount"_q)->setValue(5);
        dialog.accept();
    });
    Trigger("actionDuplicate_Element");
    EXPECT_EQ(PlacedFixtures(), 1);
}

TEST_F(Copying, OneCopyIsOnePasteAboveWithoutItsSourceToo)
{
    StartWith(Element({0.3, 0.4}, {0.12, 0.1}, 2, 5) + Element({0.5, 0.6}, {0.12, 0.1}, 1, 7));
    Type(Canvas(), Qt::Key_A, Qt::ControlModifier);
    Type(Canvas(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(CanPaste());
    Type(Canvas(), Qt::Key_Backspace);
    ASSERT_EQ(PlacedFixtures(), 0);
    Type(Canvas(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Places(), "30,0 50,20"_q);
    EXPECT_EQ(Addresses(), (QStringList{"0/0/1"_q, "0/0/37"_q}));
    EXPECT_EQ(Scene().SelectedCount(), 2);
    EXPECT_FALSE(CanPaste());
    Type(List(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(PlacedFixtures(), 2);

    // Higher and higher, each time in sight.
    for (int i = 0; i < 11; ++i) { // more than the history holds
        Trigger("actionCopy");
        Trigger("actionPaste");
        EXPECT_TRUE(SelectionIsInSight()) << i;
    }
    EXPECT_NEAR(Item(22).y(), -440, 1e-2);
}

TEST_F(Copying, APasteEndsADragThatStillRuns)
{
    StartWithTwo();
    Click({20, 20});
    Trigger("actionCopy");
    Press({20, 20});
    MoveTo({40, 30});
    Type(Canvas(), Qt::Key_V, Qt::ControlModifier);
    MoveTo({60, 60});
    Release({60, 60});
    EXPECT_EQ(Places(), "40,30 60,80 20,10"_q);
    Trigger("actionUndo");
    EXPECT_EQ(Places(), "40,30 60,80"_q);
    Trigger("actionUndo");
    EXPECT_EQ(Places(), "20,20 60,80"_q);
}

TEST_F(Copying, TheListHasAMenuOfItsOwn)
{
    StartWithTwo();
    Type(List(), Qt::Key_A, Qt::ControlModifier);
    const auto choose = [this](int step) {
        QTimer::singleShot(50, window.get(), [step] {
            QWidget* menu = QApplication::activePopupWidget();
            ASSERT_TRUE(menu);
            for (int i = 0; i < step; ++i)
                QTest::keyClick(menu, Qt::Key_Down);
            QTest::keyClick(menu, Qt::Key_Return);
        });
        const QPoint at =
            List()->visualRect(List()->model()->index(0, MappedDeviceModel::NameColumn)).center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, at, List()->mapToGlobal(at));
        QApplication::sendEvent(List(), &event);
    };
    choose(1); // Copy
    EXPECT_TRUE(CanPaste());
    choose(2); // Paste
    EXPECT_EQ(PlacedFixtures(), 4);
    choose(4); // Delete, past Paste, which is done, Duplicate and Repatch
    EXPECT_EQ(PlacedFixtures(), 2);
}

TEST_F(Copying, ElementsGoToOtherDocumentsWithTheirFixtures)
{
    const QString lamp =
        "<LEDFixtureLibrary><LEDFixture manufacturer=\"Own\" product=\"Own Lamp\"><PixelMapping width=\"1\" height=\"1\" type=\"RGB\">1</PixelMapping></LEDFixture></LEDFixtureLibrary>"_q;
    const QString element = Element({0.5, 0.5}, {0.1, 0.1}).replace(Bar, "Own Lamp"_q);
    const auto lamps = [this] {
        return LibraryRows("Own Lamp"_q).size();
    };
    Start();
    home.Write(
        "show.wfm",
        (lamp +
         "<Mapping name=\"Show\" version=\"1.0\" resolution=\"100,100\" network=\"2.X.X.X\">"_q +
         element + "</Mapping>"_q)
            .toStdString());
    Import(Path("show.wfm"_q), {"OK"});
    Trigger("actionSelect_All");
    Trigger("actionCopy");
    EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->formats(), QStringList{ElementType});
    const QByteArray copied = QGuiApplication::clipboard()->mimeData()->data(ElementType);
    // Fixtures that were in the document alone go with it.
    person.WillPress("Discard"_q);
    Trigger("actionNew");
    EXPECT_EQ(lamps(), 0);
    Trigger("actionPaste");
    EXPECT_EQ(Places(), "50,40"_q);
    EXPECT_EQ(lamps(), 1);

    // What another program offers, as ours writes it or by hand.
    person.WillPress("Discard"_q);
    Trigger("actionNew");
    Offer(ElementType, copied);
    EXPECT_TRUE(CanPaste());
    Offer("text/plain"_q, copied);
    EXPECT_FALSE(CanPaste());
    for (const QByteArray& text :
         {copied, (lamp + "<Mapping>"_q + element + "</Mapping>"_q).toUtf8()}) {
        Offer(ElementType, text);
        Type(Canvas(), Qt::Key_V, Qt::ControlModifier);
        EXPECT_FALSE(CanPaste());
        EXPECT_EQ(lamps(), 1);
    }
    EXPECT_EQ(Places(), "50,40 50,40"_q);

    // The last one counts, whoever copied it. What can't be read changes nothing, and what was
    // copied here is then still there.
    Trigger("actionCopy");
    Offer(ElementType, copied);
    Trigger("actionPaste");
    EXPECT_FALSE(CanPaste());
    Trigger("actionUndo");
    Trigger("actionSelect_All");
    Offer(ElementType, copied);
    Trigger("actionCopy");
    Trigger("actionPaste");
    EXPECT_EQ(PlacedFixtures(), 4);
    Trigger("actionUndo");
    Click(Item(0).pos());
    Trigger("actionCopy");
    Offer(ElementType, copied.left(copied.size() / 2));
    const Support::LogCapture log;
    Trigger("actionPaste");
    EXPECT_TRUE(log.Has("The elements on the clipboard can't be read"));
    EXPECT_EQ(PlacedFixtures(), 2);
    Trigger("actionPaste");
    EXPECT_EQ(PlacedFixtures(), 3);
    EXPECT_FALSE(CanPaste());
}

// ---- To the wire -------------------------------------------------------------------------------

TEST_F(Copying, AWallFromAnEmptyCanvasReachesItsNodeAndNobodyElse)
{
    constexpr int across = 16;
    constexpr int down = 4;
    constexpr int pixels = 12;
    const auto rig = Stage::RigSocket();
    StartWith(QString());
    window->StartTimers();
    SetCanvasWidth(across * pixels);
    // No two places of the wall have one colour. A row of the picture is a little higher than one
    // of the canvas, so that the middle of a strip never lies between two.
    QImage picture(across * pixels, 80, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixelColor(x, y, QColor(x, y, 255 - x));
    }
    ASSERT_TRUE(picture.save(Path("colours.png"_q)));
    person.WillChoose(Path("colours.png"_q));
    Trigger("actionChoose_Test_Image");

    DragFromLibrary({pixels / 2.0, 13.5});
    WillDuplicate("16", "4", 0, 0);
    Type(Canvas(), Qt::Key_D, Qt::ControlModifier);
    ASSERT_EQ(PlacedFixtures(), across * down);
    Type(Canvas(), Qt::Key_A, Qt::ControlModifier);
    person.Will([](QDialog& dialog) {
        for (const auto& [octet, text] : {std::pair(2, "0"), std::pair(3, "0"), std::pair(4, "10")})
            dialog.findChild<QLineEdit*>("octet%1"_q.arg(octet))->setText(QLatin1String(text));
        dialog.accept();
    });
    Support::Pick(*Find<QComboBox>("comboBoxsArtnetIP"), "Manual...");
    QTest::qWait(300); // for what is still on its way to all
    static_cast<void>(rig->All(std::chrono::milliseconds(100)));

    // 14 strips of 36 channels in each universe; the last one has the rest.
    std::map<int, Stage::Bytes> wanted;
    for (int strip = 0; strip < across * down; ++strip) {
        Stage::Bytes& channels = wanted[strip / 14];
        for (int pixel = 0; pixel < pixels; ++pixel) {
            const int x = strip % across * pixels + pixel;
            const int y = (2 * (13 + strip / across) + 1) * 80 / 200;
            for (const int value : {x, y, 255 - x})
                channels.push_back(static_cast<std::uint8_t>(value));
        }
    }
    std::map<int, int> frames;
    static_cast<void>(QTest::qWaitFor([&] {
        while (const auto heard = rig->Next(std::chrono::milliseconds(0))) {
            const auto universe = ArtNetBytes::UniverseOf(heard->bytes);
            if (!universe)
                continue;
            EXPECT_EQ(heard->destination, Stage::Rig0);
            const Stage::Bytes channels = ArtNetBytes::ChannelsOf(heard->bytes);
            EXPECT_GE(channels.size(), wanted[*universe].size());
            Stage::Bytes whole = wanted[*universe];
            whole.resize(channels.size());
            EXPECT_EQ(channels, whole) << "universe " << *universe;
            ++frames[*universe];
        }
        return HasFailure() || frames[0] > 3;
    }));
    ASSERT_EQ(wanted.size(), 5U) << "a universe that nothing is patched to";
    for (const auto& [universe, channels] : wanted)
        EXPECT_GE(frames[universe], 3) << universe;
}
