// SPDX-License-Identifier: MIT
// What it costs to see what goes out: 254 universes with merging on, forty frames a second, while
// the rig changes all 512 channels of the universe that is shown in each frame. The processor time
// of the whole program in percent of a core, with the dock never opened, open and closed again, and
// the milliseconds of one repaint of all channels.
//   PICTURE_AFTER=300 Tools/headless.sh none build/release/UniversesBenchmark [SECONDS]
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <memory>
#include <thread>
#include <vector>

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QImage>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "Hand/BigShow.h"
#include "Hand/WholeProgram.h"
#include "Support/ArtNetBytes.h"
#include "Support/Stage.h"
#include "Support/TemporaryFolder.h"
#include "Timing.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Main/WEFTMain.h"
#include "UI/Output/UniverseGrid.h"

namespace {

using namespace std::chrono_literals;

/// A lighting desk on the rig that fades all channels of the received universe.
class Desk
{
public:
    Desk()
        : thread_([this] { Send(); })
    {}
    ~Desk()
    {
        stop_ = true;
        thread_.join();
    }

private:
    void Send()
    {
        constexpr std::uint16_t universe = 0xFF;
        const auto socket = Stage::RigSocket(0, 0);
        for (std::uint8_t step = 1; !stop_; ++step) {
            socket->Send(Stage::Broadcast0, ArtNetBytes::Dmx(universe, Stage::Bytes(512, step)));
            std::this_thread::sleep_for(25ms);
        }
    }

    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

double ProcessorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Of a core, while the program runs for so long.
double PercentWhile(std::chrono::seconds duration)
{
    BigShow::Pass(500ms);
    const auto begin = std::chrono::steady_clock::now();
    const double before = ProcessorSeconds();
    BigShow::Pass(duration);
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    return 100 * (ProcessorSeconds() - before) / passed.count();
}

/// With all channels in sight.
void MeasureRepaint(WEFTMain& window, UniverseGrid& grid)
{
    constexpr int height = 700;
    window.resizeDocks({window.findChild<QDockWidget*>(QStringLiteral("dockWidgetUniverses"))},
                       {height}, Qt::Vertical);
    BigShow::Pass(500ms);
    // Into a picture: the window would wait for a tick.
    QImage picture(grid.viewport()->size(), QImage::Format_RGB32);
    constexpr int repaints = 200;
    std::array<std::uint8_t, 512> values{};
    const double seconds = SecondsOf(repaints, [&] {
        values.fill(static_cast<std::uint8_t>(values.front() + 1));
        grid.ShowValues(values);
        grid.viewport()->render(&picture);
    });
    std::cout << "a repaint of all channels in a grid of " << grid.width() << " x " << grid.height()
              << ": " << 1000 * seconds << " ms" << std::endl;
}

void Measure(WEFTMain& window, std::chrono::seconds duration)
{
    QAction* show = window.findChild<QAction*>(QStringLiteral("view_dockWidgetUniverses"));
    constexpr int rounds = 5;
    std::vector<double> never;
    std::vector<double> open;
    std::vector<double> closed;
    for (int round = 0; round < rounds; ++round)
        never.push_back(PercentWhile(duration));
    auto* grid = window.findChild<UniverseGrid*>();
    show->trigger();
    auto* goTo = window.findChild<QLineEdit*>(QStringLiteral("universeGoTo"));
    QTest::keyClicks(goTo, QStringLiteral("15/14/1"));
    QTest::keyClick(goTo, Qt::Key_Return);
    show->trigger();
    for (int round = 0; round < rounds; ++round) {
        show->trigger();
        open.push_back(PercentWhile(duration));
        show->trigger();
        closed.push_back(PercentWhile(duration));
    }
    std::cout << "percent of a core, the dock never opened: " << Median(never)
              << ", open: " << Median(open) << ", closed again: " << Median(closed) << std::endl;
    show->trigger();
    BigShow::Pass(500ms);
    MeasureRepaint(window, *grid);
}

} // namespace

int main(int argc, char** argv)
{
    Stage::Enter(argc, argv);
    const std::chrono::seconds duration(argc > 1 ? std::atoi(argv[1]) : 5);
    WholeProgram program(argc, argv);
    program.Home().Write("data/LoomTap2/PixelWeft/mapping.wfm",
                         BigShow::Document(BigShow::Universes).toStdString());
    {
        const Desk desk;
        WidgetBoxes boxes;
        WEFTMain window(boxes);
        window.resize(1500, 900);
        window.show();
        window.LoadFirstDocument();
        window.StartTimers();
        BigShow::Pass(3s);
        program.LeaveBoxesOpen();
        Measure(window, duration);
    }
    return EXIT_SUCCESS;
}
