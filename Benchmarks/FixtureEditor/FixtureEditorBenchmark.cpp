// SPDX-License-Identifier: MIT
// What an operator waits for in the fixture editor: a step of a drag that lays pixels, with map,
// table and repaint, and the opening of the dialog.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <vector>

#include <QApplication>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>

#include "Repaint.h"
#include "Timing.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/FixtureEditor/WEFTCustomFixtureDialog.h"
#include "UI/Widgets/DeskLook.h"

namespace {

constexpr int LastChannel = 512;
constexpr int SmallestCell = 6;

WEFTCustomFixtureDialog::Content EmptyFixture(const benchmark::State& state)
{
    const FixtureSize size{static_cast<int>(state.range(0)), static_cast<int>(state.range(1)),
                           PixelMapType::L, LastChannel};
    return {QStringLiteral("Maker"), QStringLiteral("Product"), FixtureLayout(size), {}};
}

void ShowTable(const QDialog& dialog)
{
    dialog.findChild<QTabWidget*>()->setCurrentIndex(1);
    QApplication::processEvents();
}

/// A drag along the first row over 512 cells, with the grid scrolled under it.
void DragStep(benchmark::State& state)
{
    WidgetBoxes boxes;
    WEFTCustomFixtureDialog dialog(EmptyFixture(state), false, {}, boxes);
    dialog.setStyleSheet(DeskStyleSheet());
    dialog.show();
    ShowTable(dialog);
    auto* grid = dialog.findChild<QWidget*>(QStringLiteral("pixelMapWidget"));
    auto* frame = dialog.findChild<QScrollArea*>(QStringLiteral("pixelMap"));
    std::vector<double> steps;
    const auto at = [](int cell) {
        return QPoint(cell * SmallestCell + SmallestCell / 2, SmallestCell / 2);
    };
    QTest::mousePress(grid, Qt::LeftButton, Qt::NoModifier, at(0));
    for (auto _ : state) {
        const int cell = static_cast<int>(steps.size()) + 1;
        frame->horizontalScrollBar()->setValue(at(cell).x() - frame->width() / 2);
        QApplication::processEvents();
        QMouseEvent move(QEvent::MouseMove, at(cell), grid->mapToGlobal(at(cell)), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        steps.push_back(MillisecondsOf(dialog, [&] { QApplication::sendEvent(grid, &move); }));
        state.SetIterationTime(steps.back() / 1e3);
    }
    if (dialog.GetLayout().GetNextChannel() != LastChannel + 1)
        state.SkipWithError("the drag missed some");
    state.counters["step_ms"] = Median(steps);
    state.counters["worst_ms"] = *std::ranges::max_element(steps);
}
BENCHMARK(DragStep)
    ->ArgNames({"width", "height"})
    ->Args({LastChannel, 1})
    ->Args({LastChannel, LastChannel})
    ->Args({1000, 1000})
    ->Iterations(LastChannel - 1)
    ->UseManualTime();

void Open(benchmark::State& state)
{
    WidgetBoxes boxes;
    std::vector<double> times;
    const WEFTCustomFixtureDialog::Content content = EmptyFixture(state);
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        WEFTCustomFixtureDialog dialog(content, false, {}, boxes);
        dialog.setStyleSheet(DeskStyleSheet());
        dialog.show();
        QApplication::processEvents();
        const auto end = std::chrono::steady_clock::now();
        times.push_back(std::chrono::duration<double, std::milli>(end - begin).count());
        state.SetIterationTime(times.back() / 1e3);
    }
    state.counters["open_ms"] = Median(times);
}
BENCHMARK(Open)
    ->ArgNames({"width", "height"})
    ->Args({LastChannel, 1})
    ->Args({1000, 1000})
    ->Iterations(9)
    ->UseManualTime();

} // namespace
