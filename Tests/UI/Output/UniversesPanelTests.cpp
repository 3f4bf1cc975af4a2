// SPDX-License-Identifier: MIT
// The panel by mouse and keyboard.
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSettings>
#include <QTest>
#include <QToolButton>
#include <QTreeView>
#include <QUndoStack>

#include "Model/PatchText.h"
#include "Support/Literals.h"
#include "Support/TemporaryFolder.h"
#include "UI/Output/PatchedShow.h"
#include "UI/Output/UniverseGrid.h"
#include "UI/Output/UniversesPanel.h"
#include "UI/Widgets/DeskLook.h"

namespace {

class Panel : public PatchedShow
{
protected:
    void Open()
    {
        panel = std::make_unique<UniversesPanel>(
            UniversesPanel::Parts{manager, nodes, engine, history});
        // The canvas, which selects what it is told to.
        QObject::connect(panel.get(), &UniversesPanel::selectionWanted, panel.get(),
                         [this](const ElementIds& ids) {
                             selected = ids;
                             panel->ShowSelection(ids);
                         });
        grid = panel->findChild<UniverseGrid*>();
        list = panel->findChild<QTreeView*>("universeList"_q);
        panel->resize(1200, 700);
        panel->show();
        panel->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel.get()));
        grid->setFocus();
    }
    void Mouse(QEvent::Type type, QWidget* on, QPoint at, bool down,
               Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        const QPoint onScreen = on->mapToGlobal(at);
        QMouseEvent event(type, grid->viewport()->mapFromGlobal(onScreen),
                          on->mapTo(grid->viewport()->window(), at), onScreen,
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          down ? Qt::LeftButton : Qt::NoButton, keys);
        QApplication::sendEvent(grid->viewport(), &event);
    }
    [[nodiscard]] QPoint At(int channel) const { return grid->RectOf(channel).center(); }
    void Click(int channel, Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        Mouse(QEvent::MouseButtonPress, grid->viewport(), At(channel), true, keys);
        Mouse(QEvent::MouseButtonRelease, grid->viewport(), At(channel), false, keys);
    }
    void Press(int channel) const
    {
        Mouse(QEvent::MouseButtonPress, grid->viewport(), At(channel), true);
    }
    void DragTo(QWidget* on, QPoint at) const { Mouse(QEvent::MouseMove, on, at, true); }
    void Drop() const { Mouse(QEvent::MouseButtonRelease, grid->viewport(), {}, false); }
    /// Types this into the view, and Return.
    void GoTo(const char* text) const
    {
        auto* field = panel->findChild<QLineEdit*>();
        QTest::keyClick(grid, *text);
        EXPECT_TRUE(field->hasFocus());
        QTest::keyClicks(field, QLatin1String(text + 1));
        QTest::keyClick(field, Qt::Key_Return);
    }
    [[nodiscard]] QString Text(const char* label) const
    {
        return panel->findChild<QLabel*>(QLatin1String(label))->text();
    }
    [[nodiscard]] std::string Place(std::int64_t id)
    {
        return AddressText(AddressOf(id)).toStdString();
    }
    /// Whether this colour is seen in the cell.
    [[nodiscard]] bool Shows(int channel, const QColor& colour) const
    {
        const QImage cell = grid->viewport()->grab(grid->RectOf(channel)).toImage();
        for (int y = 0; y < cell.height(); ++y) {
            for (int x = 0; x < cell.width(); ++x) {
                if (cell.pixelColor(x, y) == colour)
                    return true;
            }
        }
        return false;
    }

    QUndoStack history;
    ElementIds selected;
    std::unique_ptr<UniversesPanel> panel;
    UniverseGrid* grid = nullptr;
    QTreeView* list = nullptr;
};

} // namespace

TEST_F(Panel, KeysGoFromChannelToChannelAndAreHeard)
{
    Add({.portAddress = 0, .channel = 97});
    Add({.portAddress = 4, .channel = 1});
    Add({.portAddress = 20, .channel = 1});
    Connect();
    Frame(194, 20, 30);
    Open();
    const int columns = grid->ChannelAt({grid->viewport()->width() - 20, 5});
    const struct
    {
        int key;
        int channel;
        int row;
    } keys[] = {
        {Qt::Key_Right, 2, 0},      {Qt::Key_Down, 2 + columns, 0}, {Qt::Key_Left, 1 + columns, 0},
        {Qt::Key_Up, 1, 0},         {Qt::Key_Left, 1, 0},           {Qt::Key_Up, 1, 0},
        {Qt::Key_End, 512, 0},      {Qt::Key_Right, 512, 0},        {Qt::Key_PageDown, 512, 1},
        {Qt::Key_PageDown, 512, 2}, {Qt::Key_PageDown, 512, 2},     {Qt::Key_Home, 1, 2},
        {Qt::Key_PageUp, 1, 1}};
    for (const auto& each : keys) {
        QTest::keyClick(grid, static_cast<Qt::Key>(each.key));
        EXPECT_EQ(grid->Current(), each.channel) << each.key;
        EXPECT_EQ(list->currentIndex().row(), each.row) << each.key;
        EXPECT_TRUE(grid->viewport()->rect().contains(grid->RectOf(grid->Current())));
    }
    GoTo("0/97");
    EXPECT_TRUE(grid->hasFocus());
    EXPECT_EQ(grid->accessibleDescription(), "channel 97, value 194, Bar 1"_q);
    EXPECT_TRUE(grid->accessibleName().contains("0/0 (0)"_q));
    GoTo("1/4/3");
    EXPECT_EQ(grid->accessibleDescription(), "channel 3, value 30, Bar 3"_q);
    GoTo("400");
    EXPECT_EQ(list->currentIndex().row(), 2);
    EXPECT_EQ(grid->accessibleDescription(), "channel 400, value 0, free"_q);
    for (const auto& [text, words] :
         {std::pair("9/1", "Universe 0/9 (9) is not in use."), std::pair("4/600", "is no channel")})
    {
        GoTo(text);
        EXPECT_TRUE(Text("universeLine").contains(QLatin1String(words))) << text;
        QTest::keyClick(panel->findChild<QLineEdit*>(), Qt::Key_Escape);
        EXPECT_TRUE(grid->hasFocus());
        EXPECT_EQ(grid->Current(), 400);
    }
    QTest::keyClick(grid, Qt::Key_Home);
    QTest::keyClick(grid, Qt::Key_Space);
    EXPECT_EQ(selected, ElementIds{3});
}

TEST_F(Panel, CellsSelectAndFollowTheSelection)
{
    const auto first = Add({.channel = 1});
    const auto second = Add({.channel = 7});
    const auto third = Add({.portAddress = 4, .channel = 400});
    Open();
    const QColor accent = CurrentLook().accent;
    Click(2);
    EXPECT_EQ(selected, ElementIds{first});
    EXPECT_TRUE(Shows(6, accent));
    EXPECT_FALSE(Shows(7, accent));
    Click(8, Qt::ControlModifier);
    EXPECT_EQ(selected, (ElementIds{first, second}));
    EXPECT_TRUE(Shows(7, accent));
    Click(8, Qt::ControlModifier);
    EXPECT_EQ(selected, ElementIds{first}) << "taken out";
    Click(8, Qt::ControlModifier);
    Click(100);
    EXPECT_EQ(selected, (ElementIds{first, second})) << "a free cell selects nothing";
    Click(1);
    EXPECT_EQ(selected, ElementIds{first});
    ElementIds shown;
    QObject::connect(panel.get(), &UniversesPanel::showWanted,
                     [&shown](const ElementIds& ids) { shown = ids; });
    Mouse(QEvent::MouseButtonDblClick, grid->viewport(), At(7), true);
    EXPECT_EQ(shown, ElementIds{second});

    // From the canvas: the universe comes, when it is one.
    panel->ShowSelection({third});
    EXPECT_EQ(list->currentIndex().row(), 1);
    EXPECT_TRUE(Shows(400, accent));
    panel->ShowSelection({first, third});
    EXPECT_EQ(list->currentIndex().row(), 1) << "it stays";
    const auto placed = Add({.portAddress = 7});
    panel->ShowSelection({placed});
    EXPECT_TRUE(QTest::qWaitFor([this] { return list->currentIndex().row() == 2; }));
    panel->ShowSelection({third});
    panel->hide();
    panel->ShowSelection({second});
    EXPECT_EQ(list->currentIndex().row(), 1);
    panel->show();
    EXPECT_EQ(list->currentIndex().row(), 0);
}

TEST_F(Panel, DraggedBlocksAreMovedInOneStep)
{
    const auto first = Add({.channel = 1});
    const auto second = Add({.channel = 7});
    const auto third = Add({.portAddress = 4, .channel = 4, .node = L"2.0.0.10"});
    Add({.portAddress = 256}); // sub-net 16, by an edited file
    Open();
    QWidget* cells = grid->viewport();
    Press(2);
    DragTo(cells, At(22));
    EXPECT_TRUE(Text("universeLine").endsWith("\"Bar 1\" to 0/0/21: free"_q))
        << Text("universeLine").toStdString();
    EXPECT_TRUE(Shows(26, CurrentLook().accent));
    DragTo(cells, At(8));
    EXPECT_TRUE(Text("universeLine").contains("shares 6 channels"_q));
    EXPECT_TRUE(Shows(7, CurrentLook().trouble));
    QTest::keyClick(grid, Qt::Key_Escape);
    Drop();
    EXPECT_EQ(history.count(), 0);
    EXPECT_FALSE(Shows(7, CurrentLook().trouble));

    Press(2);
    DragTo(cells, At(1));
    EXPECT_TRUE(Text("universeLine").contains("is not moved"_q)) << "below channel 1";
    Drop();
    EXPECT_EQ(history.count(), 0);

    // Both, by 20 channels.
    panel->ShowSelection({first, second});
    Press(1);
    DragTo(cells, At(21));
    Drop();
    EXPECT_EQ(Place(first) + " " + Place(second), "0/0/21 0/0/27");
    EXPECT_EQ(history.count(), 1);
    EXPECT_TRUE(Shows(21, CurrentLook().accent) && !Shows(1, CurrentLook().accent)) << "at once";
    history.undo();
    EXPECT_EQ(Place(first) + " " + Place(second), "0/0/1 0/0/7");
    QTest::qWait(150);

    panel->ShowSelection({first});
    Press(3);
    DragTo(list->viewport(), list->visualRect(list->model()->index(2, 0)).center());
    EXPECT_TRUE(Text("universeLine").contains("can't be patched"_q));
    Drop();
    EXPECT_EQ(Place(first), "0/0/1");

    // To another universe, with its node.
    Press(3);
    DragTo(list->viewport(), list->visualRect(list->model()->index(1, 0)).center());
    EXPECT_TRUE(Text("universeLine").contains("0/4/1: shares 3 channels"_q))
        << Text("universeLine").toStdString();
    Drop();
    EXPECT_EQ(Place(first), "0/4/1");
    EXPECT_EQ(AddressOf(first).GetIpconf(), L"2.0.0.10");
    EXPECT_EQ(list->currentIndex().row(), 1) << "where it went";
    EXPECT_TRUE(Shows(5, CurrentLook().caution)) << "hatched: two write it";
    history.undo();
    EXPECT_EQ(AddressOf(first), DMXMappingArtNet(0, 0, 1, AutoNode, L""));
    EXPECT_EQ(Place(third), "0/4/4");
}

TEST_F(Panel, ADragEndsWithItsUniverse)
{
    Add({.portAddress = 4});
    const auto last = Add({.portAddress = 9});
    Open();
    GoTo("9/1");
    Press(1);
    DragTo(grid->viewport(), At(21));
    manager.SetDescriptions({{last, L"Renamed"}});
    QTest::qWait(250);
    EXPECT_TRUE(grid->IsDragging()) << "nothing went elsewhere";
    manager.RemoveMappedObjects({last});
    EXPECT_TRUE(QTest::qWaitFor([this] { return list->model()->rowCount() == 1; }));
    EXPECT_FALSE(grid->IsDragging());
    Drop();
    EXPECT_EQ(history.count(), 0);
    EXPECT_TRUE(Text("universeTitle").contains("0/4 (4)"_q));
}

TEST_F(Panel, WhatTheOperatorScrolledStays)
{
    constexpr int universes = 40;
    for (int portAddress = 0; portAddress < universes; ++portAddress)
        Add({.portAddress = portAddress});
    Open();
    panel->resize(1200, 150);
    QTest::qWait(50);
    const QPoint at = At(5);
    Mouse(QEvent::MouseMove, grid->viewport(), at, false);
    ASSERT_EQ(grid->Looked(), 5);
    ASSERT_GT(grid->verticalScrollBar()->maximum(), 0);
    grid->verticalScrollBar()->setValue(grid->verticalScrollBar()->singleStep());
    EXPECT_GT(grid->Looked(), 5);
    EXPECT_EQ(grid->Looked(), grid->ChannelAt(at));
    QScrollBar& bar = *list->verticalScrollBar();
    bar.setValue(bar.maximum());
    Add({.portAddress = universes});
    EXPECT_TRUE(QTest::qWaitFor([this] { return list->model()->rowCount() > universes; }));
    EXPECT_GT(bar.value(), 0);
}

TEST_F(Panel, NothingIsReadWhileHiddenAndEmptyDocumentsAreSaid)
{
    Open();
    EXPECT_TRUE(Text("universeTitle").startsWith("Nothing goes out"_q));
    EXPECT_FALSE(grid->isEnabled());
    Add({.channel = 1});
    EXPECT_TRUE(QTest::qWaitFor([this] { return list->model()->rowCount() == 1; }));
    EXPECT_TRUE(Text("universeTitle").contains("no network is chosen"_q));
    Connect();
    Frame(255, 128, 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return grid->Value(2) == 128; }));
    EXPECT_EQ(grid->Value(7), -1) << "not sent";
    panel->hide();
    Frame(1, 2, 3);
    Add({.portAddress = 9});
    QTest::qWait(250);
    EXPECT_EQ(grid->Value(2), 128);
    EXPECT_EQ(list->model()->rowCount(), 1);
    panel->show();
    EXPECT_EQ(grid->Value(2), 2);
    EXPECT_EQ(list->model()->rowCount(), 2);
    manager.ClearAll();
    EXPECT_TRUE(QTest::qWaitFor([this] { return list->model()->rowCount() == 0; }));
    EXPECT_FALSE(grid->isEnabled());
    auto* field = panel->findChild<QLineEdit*>();
    field->setText("5"_q);
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(Text("universeLine").startsWith("No universe is in use"_q));

    panel->findChild<QToolButton*>("universePercent"_q)->click();
    EXPECT_TRUE(grid->IsPercent());
    const Support::TemporaryFolder folder;
    QSettings store(QString::fromStdString((folder.Path() / "store.ini").string()),
                    QSettings::IniFormat);
    panel->Write(store);
    Open();
    EXPECT_FALSE(grid->IsPercent());
    panel->Read(store);
    EXPECT_TRUE(grid->IsPercent());
}
