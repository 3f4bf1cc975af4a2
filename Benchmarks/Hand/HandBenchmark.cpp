// SPDX-License-Identifier: MIT
// Whether the hand takes time from the output: 254 universes with merging on, while the mouse moves
// 125 times a second. For each thing that the hand does: the frames a second, and how many of 100
// came within 5 ms of the grid of 25 ms, by the clock of the system that received them, and the
// longest time between two. The first line is that of a hand at rest, to compare with.
//   PICTURE_AFTER=300 Tools/headless.sh /tmp/screen.png build/release/HandBenchmark [SECONDS]
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <thread>
#include <vector>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "Hand/BigShow.h"
#include "Hand/WholeProgram.h"
#include "Language/Language.h"
#include "Support/Stage.h"
#include "Support/TemporaryFolder.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Main/WEFTMain.h"

// What QTest itself posts with: an event of the window system, from any thread.
Q_GUI_EXPORT extern void qt_handleMouseEvent(QWindow* window, const QPointF& local,
                                             const QPointF& global, Qt::MouseButtons state,
                                             Qt::MouseButton button, QEvent::Type type,
                                             Qt::KeyboardModifiers mods, int timestamp);

namespace {

using namespace std::chrono_literals;
using BigShow::Pass;

constexpr auto Tick = std::chrono::milliseconds(25);
constexpr auto Near = std::chrono::milliseconds(5);

/// Listens to universe 0 on the rig, in a thread of its own.
class Rig
{
public:
    Rig()
        : socket_(Stage::RigSocket())
        , thread_([this] { Listen(); })
    {}
    ~Rig()
    {
        stop_ = true;
        thread_.join();
    }
    void Begin() { listening_ = true; }
    std::vector<std::int64_t> End()
    {
        listening_ = false;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return std::exchange(times_, {});
    }

private:
    void Listen()
    {
        while (!stop_) {
            const auto heard = socket_->Next(std::chrono::milliseconds(20));
            if (listening_ && heard && heard->bytes.size() > 18 && heard->bytes[9] == 0x50 &&
                heard->bytes[14] == 0 && heard->bytes[15] == 0)
                times_.push_back(heard->arrived);
        }
    }

    std::unique_ptr<Stage::Socket> socket_;
    std::atomic<bool> listening_ = false;
    std::atomic<bool> stop_ = false;
    std::vector<std::int64_t> times_;
    std::thread thread_;
};

/// Moves the mouse 125 times a second in a thread of its own, as a mouse does.
class Mouse
{
public:
    explicit Mouse(QWindow* window, QPointF middle)
        : window_(window)
        , middle_(middle)
    {}
    void Send(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons state,
              Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        qt_handleMouseEvent(window_, at, window_->mapToGlobal(at.toPoint()), state, button, type,
                            keys, ++time_ * 8);
    }
    void Press(Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        Send(QEvent::MouseButtonPress, middle_, Qt::LeftButton, Qt::LeftButton, keys);
    }
    void Release() { Send(QEvent::MouseButtonRelease, middle_, Qt::LeftButton, Qt::NoButton); }
    void MoveFor(std::chrono::seconds duration, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QEventLoop loop;
        std::thread hand([&] {
            auto next = std::chrono::steady_clock::now();
            for (int i = 0;
                 next < std::chrono::steady_clock::now() + duration && i < 125 * duration.count();
                 ++i)
            {
                const QPointF at = middle_ + 40.0 * QPointF(std::sin(i * 0.05), std::cos(i * 0.07));
                Send(QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton, keys);
                std::this_thread::sleep_until(next += std::chrono::milliseconds(8));
            }
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
        loop.exec();
        hand.join();
    }

private:
    QWindow* window_;
    QPointF middle_;
    int time_ = 0;
};

class Desk
{
public:
    /// In this home.
    Desk(const Support::TemporaryFolder& home, int elements)
    {
        home.Write("data/LoomTap2/PixelWeft/mapping.wfm",
                   BigShow::Document(elements).toStdString());
        window_ = std::make_unique<WEFTMain>(boxes_);
        window_->resize(1500, 900);
        window_->show();
        window_->LoadFirstDocument();
        window_->StartTimers();
        Pass(3s);
        view_ = window_->findChild<WeftMapEditorView*>(QStringLiteral("mappingEditorView"));
    }
    void Run(const QString& what, const std::function<void()>& act)
    {
        Pass(300ms);
        rig_.Begin();
        QElapsedTimer timer;
        timer.start();
        act();
        const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
        Report(what, rig_.End(), seconds);
    }
    void DoAll(std::chrono::seconds duration)
    {
        QAction* selectAll = window_->findChild<QAction*>(QStringLiteral("actionSelect_All"));
        const QPoint at = view_->viewport()->mapTo(window_.get(), Middle());
        Mouse mouse(window_->windowHandle(), at);
        Run(QStringLiteral("at rest"), [&] { Pass(duration); });
        scene().SetSelected(scene().AllIds().front(), true);
        Run(QStringLiteral("edits and saves"), [&] {
            for (int i = 0; i < 2 * duration.count(); ++i) {
                for (const char* name : {"actionFlipHorizontal", "actionSave_File"})
                    window_->findChild<QAction*>(QLatin1String(name))->trigger();
                Pass(500ms);
            }
        });
        selectAll->trigger();
        Run(QStringLiteral("drag of all"), [&] {
            mouse.Press();
            mouse.MoveFor(duration);
            mouse.Release();
        });
        Run(QStringLiteral("undo, redo of all"), [&] {
            for (int i = 0; i < 5 * duration.count(); ++i) {
                const auto keys =
                    i % 2 == 0 ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier;
                // There is no window manager that would do it.
                QApplication::setActiveWindow(window_.get());
                QTest::keyClick(window_.get(), Qt::Key_Z, keys);
                Pass(200ms);
            }
        });
        Run(QStringLiteral("panning"), [&] {
            mouse.Press(Qt::ControlModifier);
            mouse.MoveFor(duration, Qt::ControlModifier);
            mouse.Release();
        });
        Run(QStringLiteral("zooming"), [&] {
            for (int i = 0; i < 20 * duration.count(); ++i) {
                // To the window, as from the window system.
                QWheelEvent wheel(at, view_->viewport()->mapToGlobal(Middle()), QPoint(),
                                  QPoint(0, i % 20 < 10 ? 120 : -120), Qt::NoButton,
                                  Qt::ControlModifier, Qt::NoScrollPhase, false);
                QApplication::sendEvent(window_->windowHandle(), &wheel);
                Pass(50ms);
            }
        });
        Run(QStringLiteral("rubber band"), [&] {
            const QPoint corner = view_->viewport()->mapTo(window_.get(), QPoint(10, 10));
            Mouse band(window_->windowHandle(), corner + QPoint(60, 60));
            band.Press();
            Mouse wide(window_->windowHandle(), at);
            wide.MoveFor(duration);
            wide.Release();
        });
        Run(QStringLiteral("changes language"), [&] {
            for (int i = 0; i < 2 * duration.count(); ++i) {
                Language::Instance().Use(QLatin1String(i % 2 == 0 ? "de" : "en"));
                Pass(500ms);
            }
        });
        Run(QStringLiteral("resizing a dialog"), [&] {
            QTimer resizer;
            int i = 0;
            QObject::connect(&resizer, &QTimer::timeout, [&] {
                QWidget* dialog = QApplication::activeModalWidget();
                if (!dialog)
                    return;
                if (++i > 60 * duration.count())
                    dialog->close();
                else
                    dialog->setFixedSize(400 + i % 100, 300 + i % 70);
            });
            resizer.start(16);
            window_->findChild<QAction*>(QStringLiteral("actionAbout"))->trigger();
        });
    }

private:
    [[nodiscard]] QPoint Middle() const
    {
        const auto ids = scene().AllIds();
        // Any element: the canvas stands in the middle of the view.
        return view_->mapFromScene(scene().Find(ids[ids.size() / 2])->pos());
    }
    [[nodiscard]] WeftMapEditorScene& scene() const
    {
        return *qobject_cast<WeftMapEditorScene*>(view_->scene());
    }
    static void Report(const QString& what, const std::vector<std::int64_t>& times, double seconds)
    {
        if (times.size() < 2) {
            std::cout << qPrintable(what) << ": nothing came\n";
            return;
        }
        // The grid that fits best: the median of where the frames are within a tick.
        constexpr std::int64_t tick = std::chrono::nanoseconds(Tick).count();
        std::vector<std::int64_t> phases;
        for (const std::int64_t time : times)
            phases.push_back((time - times.front() + tick + tick / 2) % tick);
        std::vector<std::int64_t> sorted = phases;
        std::ranges::sort(sorted);
        const std::int64_t middle = sorted[sorted.size() / 2];
        std::int64_t worst = 0;
        std::int64_t gap = 0;
        for (std::size_t i = 1; i < times.size(); ++i)
            gap = std::max(gap, times[i] - times[i - 1]);
        std::size_t near = 0;
        for (const std::int64_t phase : phases) {
            std::int64_t off = std::abs(phase - middle);
            off = std::min(off, tick - off);
            worst = std::max(worst, off);
            near += off <= std::chrono::nanoseconds(Near).count() ? 1U : 0U;
        }
        std::cout << qPrintable(what.leftJustified(20)) << "  "
                  << static_cast<double>(times.size() - 1) * 1e9 /
                         static_cast<double>(times.back() - times.front())
                  << " frames/s, "
                  << 100.0 * static_cast<double>(near) / static_cast<double>(times.size())
                  << " of 100 within 5 ms, worst " << static_cast<double>(worst) / 1e6
                  << " ms, longest gap " << static_cast<double>(gap) / 1e6 << " ms (" << seconds
                  << " s)" << std::endl;
    }

    WidgetBoxes boxes_;
    Rig rig_;
    std::unique_ptr<WEFTMain> window_;
    WeftMapEditorView* view_ = nullptr;
};

} // namespace

int main(int argc, char** argv)
{
    Stage::Enter(argc, argv);
    const std::chrono::seconds duration(argc > 1 ? std::atoi(argv[1]) : 10);
    const WholeProgram program(argc, argv);
    for (const int elements : {254, 4000}) {
        std::cout << elements << " elements\n";
        Desk(program.Home(), elements).DoAll(duration);
    }
    return EXIT_SUCCESS;
}
