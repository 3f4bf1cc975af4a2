// SPDX-License-Identifier: MIT
// The view of what goes out, beside the rig that receives it.
#include <map>

#include "Support/ArtNetBytes.h"
#include "Support/Stage.h"
#include "UI/Main/Desk.h"
#include "UI/Output/UniverseGrid.h"

namespace {

using Channels = Stage::Bytes;

class Universes : public Desk
{
protected:
    /// The demonstration with these settings of the merger, running, with the view open.
    void StartDemo(const QString& merging = QString())
    {
        QFile file(":/wfm/Resources/DemoMapping.wfm"_q);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QTextStream reader(&file);
        QString text = reader.readAll();
        if (!merging.isEmpty())
            text.replace(QRegularExpression("<UniverseMerging [^>]*>"_q), merging);
        home.Write("data/LoomTap2/PixelWeft/mapping.wfm", "\xEF\xBB\xBF" + text.toStdString());
        person.WillPress("OK"_q); // the network, which is the list's
        Start();
        window->StartTimers();
        Trigger("view_dockWidgetUniverses");
        grid = window->findChild<UniverseGrid*>();
        list = Find<QTreeView>("universeList");
        EXPECT_TRUE(grid->isVisible());
    }
    /// Hears what comes in this time; a desk sends its universe meanwhile.
    void Listen(int milliseconds)
    {
        QElapsedTimer timer;
        for (timer.start(); timer.elapsed() < milliseconds; QTest::qWait(20)) {
            if (!sentByDesk.empty())
                rig->Send(Stage::Broadcast0, ArtNetBytes::Dmx(1, sentByDesk));
            while (const auto packet = rig->Next(std::chrono::milliseconds(0))) {
                constexpr std::size_t head = 18;
                const Stage::Bytes& bytes = packet->bytes;
                if (bytes.size() > head && bytes[8] == 0 && bytes[9] == 0x50)
                    heard[bytes[14] + 256 * bytes[15]] = {bytes.begin() + head, bytes.end()};
            }
        }
    }
    [[nodiscard]] QString Row(int row, int column = 0) const
    {
        return list->model()->index(row, column).data().toString();
    }
    [[nodiscard]] int UniverseOf(int row) const
    {
        return Row(row).section(QLatin1Char('('), 1).section(QLatin1Char(')'), 0, 0).toInt();
    }
    void Choose(int universe)
    {
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            if (UniverseOf(row) == universe)
                list->setCurrentIndex(list->model()->index(row, 0));
        }
    }
    /// What the cells show, as far as they are sent.
    [[nodiscard]] Channels Shown() const
    {
        Channels shown;
        for (int channel = 1; channel <= 512 && grid->Value(channel) >= 0; ++channel)
            shown.push_back(static_cast<std::uint8_t>(grid->Value(channel)));
        return shown;
    }
    /// Of each row, the universe and whether the rig has it channel by channel; an even number of
    /// them is sent.
    void ExpectTheRigHasWhatIsShown(const std::vector<int>& universes)
    {
        std::vector<int> found;
        for (int row = 0; row < list->model()->rowCount(); ++row) {
            found.push_back(UniverseOf(row));
            list->setCurrentIndex(list->model()->index(row, 0));
            Listen(150);
            Channels shown = Shown();
            EXPECT_FALSE(shown.empty()) << found.back();
            if (shown.size() % 2 == 1)
                shown.push_back(0);
            const bool isReceived = Row(row, 2).startsWith("received"_q);
            EXPECT_EQ(shown, isReceived ? sentByDesk : heard[found.back()]) << found.back();
        }
        EXPECT_EQ(found, universes);
    }
    void Mouse(QEvent::Type type, int channel) const
    {
        const QPoint at = grid->RectOf(channel).center();
        const bool isDown = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, at, grid->viewport()->mapToGlobal(at),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          isDown ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(grid->viewport(), &event);
    }

    std::unique_ptr<Stage::Socket> rig = Stage::RigSocket();
    std::map<int, Channels> heard;
    Channels sentByDesk;
    UniverseGrid* grid = nullptr;
    QTreeView* list = nullptr;
};

} // namespace

TEST_F(Universes, ShowWhatTheRigReceivesAndADragMovesTheLight)
{
    StartDemo();
    Listen(500);
    ExpectTheRigHasWhatIsShown({0, 1, 2, 3, 4});
    EXPECT_EQ(Row(4, 2), "broadcast"_q);
    EXPECT_TRUE(QTest::qWaitFor([this] { return Row(4, 3).toDouble() > 9; }, 10'000));

    // A cell selects on the canvas, and the canvas selects cells.
    Choose(3);
    Mouse(QEvent::MouseButtonPress, 1);
    ASSERT_EQ(Scene().SelectedCount(), 1);
    const Channels before = heard[3];
    constexpr int by = 200;
    constexpr int length = 72;
    grid->ScrollTo(1 + by);
    Mouse(QEvent::MouseMove, 1 + by);
    Mouse(QEvent::MouseButtonRelease, 1 + by);
    EXPECT_EQ(State(), "unsaved"_q);
    Listen(500);
    const Channels after = heard[3];
    ASSERT_GE(after.size(), std::size_t{by + length});
    EXPECT_EQ(Channels(after.begin() + by, after.begin() + by + length),
              Channels(before.begin(), before.begin() + length));
    EXPECT_EQ(Channels(after.begin(), after.begin() + length), Channels(length));
    EXPECT_EQ(Shown(), after);
    Trigger("actionUndo");
    Listen(500);
    EXPECT_EQ(heard[3], before);

    Scene().UnSelectAll();
    Scene().SetSelected(Scene().AllIds().front(), true);
    QCoreApplication::processEvents();
    const int first = list->currentIndex().row();
    Choose(first == 0 ? 1 : 0);
    Scene().UnSelectAll();
    Scene().SetSelected(Scene().AllIds().front(), true);
    EXPECT_EQ(list->currentIndex().row(), first);
}

TEST_F(Universes, ShowWhatIsMergedAndWhoSendsIt)
{
    StartDemo(
        "<UniverseMerging Enabled=\"1\" FromStartSubnet=\"0\" FromStartUniverse=\"1\" ConsecutiveUniverses=\"2\" ToStartSubnet=\"1\" ToStartUniverse=\"4\" MergerDMXSource=\"PixelWeft\" />"_q);
    for (int channel = 1; channel <= 512; ++channel)
        sentByDesk.push_back(static_cast<std::uint8_t>(channel % 251));
    Listen(500);
    ExpectTheRigHasWhatIsShown({0, 3, 4, 20, 21, 1});
    EXPECT_EQ(Row(5, 2), "received from 2.0.0.10"_q);
    Choose(20);
    EXPECT_EQ(grid->Cell(512).ground, UniverseCell::Ground::Received);
    EXPECT_EQ(grid->Cell(1).ground, UniverseCell::Ground::Owned);
    Listen(150);
    EXPECT_EQ(grid->Value(512), sentByDesk.back());
    sentByDesk.clear();
    EXPECT_TRUE(QTest::qWaitFor([this] { return list->model()->rowCount() == 5; }, 10'000))
        << "nobody sends";
}
