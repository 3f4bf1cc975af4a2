// SPDX-License-Identifier: MIT
// What an operator waits for on the canvas: steps of a drag, panning, zooming, selecting, removing
// and taking it back, duplicating and pasting, repaint included, with the list and the inspector's
// place beside it, and the selection read into the set that the output marks. Each figure comes
// with its ratio to a bare QGraphicsScene of as many plain rectangles that does the same in turn in
// the same run.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include <QAbstractSpinBox>
#include <QApplication>
#include <QFrame>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLayout>
#include <QScrollBar>
#include <QVBoxLayout>

#include "CanvasStage.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/MappedDeviceModel.h"
#include "Repaint.h"
#include "Timing.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Inspector/ArtNetPatchPage.h"
#include "UI/Inspector/InspectorCanvas.h"
#include "UI/Inspector/InspectorPanel.h"
#include "UI/Widgets/DeskLook.h"
#include "UI/Widgets/FormScrollArea.h"

namespace {

constexpr QSize ViewSize(1600, 900);
constexpr int Columns = 64;
constexpr QSize Cell(16, 12);
constexpr QSize Canvas(1024, 768);
constexpr QSizeF ElementSize(12, 4);
constexpr int All = 4096;

QPointF CentreOf(int element)
{
    return {(element % Columns + 0.5) * Cell.width(), (element / Columns + 0.5) * Cell.height()};
}

/// The real canvas, filled.
class Stage
{
public:
    explicit Stage(int elements)
        : stage(Canvas, ViewSize)
    {
        place->setFixedWidth(250);
        stage.window.layout()->addWidget(place);
        QObject::connect(stage.controller.get(), &EditorController::selectionHasChanged, [this] {
            const auto indexes = stage.scene->SelectedIndexes();
            selectionSet = {indexes.begin(), indexes.end()};
        });
        const auto fixture = stage.AddFixture(L"Bar", 12, 4, 1);
        for (int i = 0; i < elements; ++i)
            ids.push_back(stage.Place(fixture, CentreOf(i), ElementSize));
        QApplication::processEvents();
    }

    std::set<QPersistentModelIndex> selectionSet;
    CanvasStage stage;
    QFrame* place = new QFrame; ///< of the inspector; the window owns it
    std::vector<std::int64_t> ids;
};

/// As many rectangles in a scene of Qt's, painted the cheapest way that a view offers.
class Bare
{
public:
    explicit Bare(int elements)
    {
        scene.setItemIndexMethod(QGraphicsScene::NoIndex);
        scene.setSceneRect(-Canvas.width() / 2.0, -Canvas.height() / 2.0, 2 * Canvas.width(),
                           2 * Canvas.height());
        for (int i = 0; i < elements; ++i)
            Add(i);
        view.setViewportUpdateMode(QGraphicsView::BoundingRectViewportUpdate);
        view.setScene(&scene);
        view.setFixedSize(ViewSize);
        view.scale(1.15, 1.15);
        view.show();
        QApplication::processEvents();
    }

    void Add(int i)
    {
        auto* item = scene.addRect(QRectF(QPointF(-6, -2), ElementSize), QPen(Qt::red, 0),
                                   QBrush(QColor(0, 255, 0, 60)));
        item->setFlags(QGraphicsItem::ItemIsSelectable | QGraphicsItem::ItemIsMovable);
        item->setPos(CentreOf(i));
        items.push_back(item);
    }
    void Move(int count, double by)
    {
        for (int i = 0; i < count; ++i)
            items[static_cast<std::size_t>(i)]->moveBy(by, 0);
    }
    void Clear()
    {
        for (auto item = items.rbegin(); item != items.rend(); ++item)
            delete *item;
        items.clear();
    }

    QGraphicsScene scene;
    QGraphicsView view;
    std::vector<QGraphicsRectItem*> items;
};

/// Times both in turn, and reports the medians of ours, theirs and the ratios.
template <class Ours, class Theirs>
void Compare(benchmark::State& state, Stage& stage, Bare& other, const Ours& ours,
             const Theirs& theirs)
{
    std::vector<double> real;
    std::vector<double> bare;
    std::vector<double> ratios;
    for (auto _ : state) {
        real.push_back(MillisecondsOf(stage.stage.window, ours));
        bare.push_back(MillisecondsOf(other.view, theirs));
        ratios.push_back(real.back() / bare.back());
        state.SetIterationTime(real.back() / 1e3);
    }
    state.counters["canvas_ms"] = Median(real);
    state.counters["bare_ms"] = Median(bare);
    state.counters["ratio"] = Median(ratios);
    state.counters["worst_ms"] = *std::ranges::max_element(real);
}

void DragStep(benchmark::State& state)
{
    Stage real(static_cast<int>(state.range(0)));
    Bare bare(static_cast<int>(state.range(0)));
    const int moving = static_cast<int>(state.range(1));
    {
        const WeftMapEditorScene::SelectionBatch batch(*real.stage.scene);
        for (int i = 0; i < moving; ++i)
            real.stage.scene->SetSelected(real.ids[static_cast<std::size_t>(i)], true);
    }
    real.stage.scene->ShowGroupOverlay();
    const QPointF start = CentreOf(0);
    real.stage.Press(start);
    int step = 0;
    Compare(
        state, real, bare,
        [&] {
            ++step;
            real.stage.MoveTo(start + QPointF(step % 40, step % 30));
        },
        [&] { bare.Move(moving, step % 40 == 0 ? -39 : 1); });
    real.stage.Release(start);
}
BENCHMARK(DragStep)
    ->ArgNames({"elements", "moving"})
    ->Args({All, 1})
    ->Args({All, 256})
    ->Args({All, All})
    ->Args({1024, 1024})
    ->Iterations(101)
    ->UseManualTime();

void PanStep(benchmark::State& state)
{
    Stage real(All);
    Bare bare(All);
    int step = 0;
    const auto pan = [&step](QGraphicsView& view) {
        QScrollBar* bar = view.horizontalScrollBar();
        bar->setValue(bar->value() + (step % 2 == 0 ? 8 : -8));
    };
    Compare(
        state, real, bare, [&] { pan(*real.stage.view); },
        [&] {
            pan(bare.view);
            ++step;
        });
}
BENCHMARK(PanStep)->Iterations(101)->UseManualTime();

void ZoomStep(benchmark::State& state)
{
    Stage real(All);
    Bare bare(All);
    int step = 0;
    Compare(
        state, real, bare,
        [&] {
            real.stage.Wheel({512, 384}, step / 8 % 2 == 0 ? 120 : -120);
        },
        [&] {
            const double factor = step / 8 % 2 == 0 ? 1.15 : 1 / 1.15;
            bare.view.scale(factor, factor);
            ++step;
        });
}
BENCHMARK(ZoomStep)->Iterations(96)->UseManualTime();

void SelectAllAndNone(benchmark::State& state)
{
    Stage real(All);
    Bare bare(All);
    const bool selecting = state.range(0) != 0;
    const auto all = [&bare] {
        QPainterPath path;
        path.addRect(bare.scene.sceneRect());
        bare.scene.setSelectionArea(path, QTransform());
    };
    std::vector<double> times;
    std::vector<double> ratios;
    for (auto _ : state) {
        const double on =
            MillisecondsOf(real.stage.window, [&] { real.stage.controller->ActionSelectAll(); });
        const double bareOn = MillisecondsOf(bare.view, all);
        const double off =
            MillisecondsOf(real.stage.window, [&] { real.stage.controller->ActionUnSelectAll(); });
        const double bareOff = MillisecondsOf(bare.view, [&] { bare.scene.clearSelection(); });
        times.push_back(selecting ? on : off);
        ratios.push_back(selecting ? on / bareOn : off / bareOff);
        state.SetIterationTime(times.back() / 1e3);
    }
    state.counters["canvas_ms"] = Median(times);
    state.counters["ratio"] = Median(ratios);
}
BENCHMARK(SelectAllAndNone)
    ->ArgNames({"selecting"})
    ->Arg(1)
    ->Arg(0)
    ->Iterations(15)
    ->UseManualTime();

void RubberBandOverAll(benchmark::State& state)
{
    Stage real(All);
    std::vector<double> times;
    for (auto _ : state) {
        real.stage.Press({-20, -20});
        // One move takes everything in, the worst that a band can meet.
        times.push_back(MillisecondsOf(real.stage.window, [&] {
            real.stage.MoveTo({1040, 780});
            real.stage.Release({1040, 780});
        }));
        if (real.stage.scene->SelectedCount() != All)
            state.SkipWithError("the band missed some");
        state.SetIterationTime(times.back() / 1e3);
        real.stage.scene->UnSelectAll();
    }
    state.counters["canvas_ms"] = Median(times);
}
BENCHMARK(RubberBandOverAll)->Iterations(15)->UseManualTime();

void RemoveAndBack(benchmark::State& state)
{
    const int elements = static_cast<int>(state.range(0));
    Stage real(elements);
    Bare bare(elements);
    std::vector<double> removed;
    std::vector<double> undone;
    std::vector<double> redone;
    std::vector<double> ratios;
    for (auto _ : state) {
        real.stage.controller->ActionSelectAll();
        QApplication::processEvents();
        removed.push_back(MillisecondsOf(real.stage.window,
                                         [&] { real.stage.scene->RemoveSelectedRectangle(); }));
        undone.push_back(MillisecondsOf(real.stage.window, [&] { real.stage.undo.undo(); }));
        redone.push_back(MillisecondsOf(real.stage.window, [&] { real.stage.undo.redo(); }));
        real.stage.undo.undo();
        const double bareTime =
            MillisecondsOf(bare.view, [&] { bare.Clear(); }) + MillisecondsOf(bare.view, [&] {
                for (int i = 0; i < elements; ++i)
                    bare.Add(i);
            });
        ratios.push_back((removed.back() + undone.back()) / bareTime);
        state.SetIterationTime(removed.back() / 1e3);
    }
    state.counters["remove_ms"] = Median(removed);
    state.counters["undo_ms"] = Median(undone);
    state.counters["redo_ms"] = Median(redone);
    state.counters["ratio"] = Median(ratios);
}
BENCHMARK(RemoveAndBack)
    ->ArgNames({"elements"})
    ->Arg(1024)
    ->Arg(All)
    ->Iterations(7)
    ->UseManualTime();

/// The whole inspector beside the canvas.
class Inspected final : public InspectorCanvas
{
public:
    explicit Inspected(Stage& real)
        : stage_(real.stage)
        , page(new ArtNetPatchPage({stage_.manager, nodes_, stage_.undo, boxes_, *this}))
        , panel_({stage_.manager, stage_.undo, *this, [](const MappedLedItem&) { return nullptr; },
                  *page, area_, frame, stage_.window})
    {
        frame.setStyleSheet(DeskStyleSheet());
        (new QVBoxLayout(&frame))->addWidget(&area_);
        real.place->hide();
        stage_.window.layout()->addWidget(&frame);
        QObject::connect(stage_.controller.get(), &EditorController::selectionHasChanged,
                         &panel_.GetInspector(), &Inspector::SelectionHasChanged);
        QApplication::processEvents();
    }
    ~Inspected() override { frame.setParent(nullptr); }

    [[nodiscard]] ElementIds SelectedIds() const override { return stage_.scene->SelectedIds(); }
    [[nodiscard]] double GroupAngle() const override { return 0; }
    void TurnGroupBy(double) override {}
    [[nodiscard]] bool IsDragging() const override
    {
        return stage_.scene->GetGestures().IsDragging();
    }
    void EndGesture() override {}
    [[nodiscard]] bool SnapsToGrid() const override { return true; }
    void TakeFocus() override {}

private:
    CanvasStage& stage_;
    ArtNetNodeModel nodes_;
    WidgetBoxes boxes_;

public:
    QFrame frame;
    ArtNetPatchPage* page;

private:
    FormScrollArea area_;
    InspectorPanel panel_;
};

/// What a panel over all elements costs: selecting them, one step of a box that they don't share,
/// and taking it back.
void InspectAll(benchmark::State& state)
{
    Stage real(All);
    const Inspected inspected(real);
    auto* left = inspected.frame.findChild<QAbstractSpinBox*>(QStringLiteral("spinBoxX"));
    std::vector<double> selected;
    std::vector<double> stepped;
    std::vector<double> undone;
    for (auto _ : state) {
        real.stage.controller->ActionUnSelectAll();
        QApplication::processEvents();
        selected.push_back(
            MillisecondsOf(real.stage.window, [&] { real.stage.controller->ActionSelectAll(); }));
        stepped.push_back(MillisecondsOf(real.stage.window, [&] { left->stepUp(); }));
        undone.push_back(MillisecondsOf(real.stage.window, [&] { real.stage.undo.undo(); }));
        state.SetIterationTime(stepped.back() / 1e3);
    }
    state.counters["select_ms"] = Median(selected);
    state.counters["step_ms"] = Median(stepped);
    state.counters["undo_ms"] = Median(undone);
}
BENCHMARK(InspectAll)->Iterations(15)->UseManualTime();

/// How much longer a step of a drag of one element takes while the inspector shows it than while
/// the inspector is hidden: the mean of steps that come as fast as those of a mouse, since the
/// inspector doesn't follow each.
void InspectedDragStep(benchmark::State& state)
{
    Stage real(All);
    Inspected inspected(real);
    real.stage.scene->SetSelected(real.ids.front(), true);
    const QPointF start = CentreOf(0);
    real.stage.Press(start);
    int step = 0;
    const auto move = [&] {
        QCoreApplication::processEvents();
        ++step;
        real.stage.MoveTo(start + QPointF(step % 40, step % 30));
    };
    std::array<double, 2> sums{};
    constexpr int steps = 50;
    for (auto _ : state) {
        const double before = sums[true];
        for (const bool visible : {false, true}) {
            inspected.frame.setVisible(visible);
            QApplication::processEvents();
            for (int i = 0; i < steps; ++i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(8));
                sums[visible] += MillisecondsOf(real.stage.window, move);
            }
        }
        state.SetIterationTime((sums[true] - before) / steps / 1e3);
    }
    real.stage.Release(start);
    const auto all = static_cast<double>(state.iterations() * steps);
    state.counters["hidden_ms"] = sums[false] / all;
    state.counters["shown_ms"] = sums[true] / all;
}
BENCHMARK(InspectedDragStep)->Iterations(9)->UseManualTime();

/// The universe of all elements, typed, and taken back, with the list sorted by a column.
void PatchAllAndBack(benchmark::State& state)
{
    Stage real(All);
    real.stage.list->sortByColumn(static_cast<int>(state.range(0)), Qt::AscendingOrder);
    const Inspected inspected(real);
    real.stage.controller->ActionSelectAll();
    QApplication::processEvents();
    std::vector<double> times;
    std::vector<double> undone;
    int universe = 0;
    for (auto _ : state) {
        universe = universe % 15 + 1;
        times.push_back(MillisecondsOf(real.stage.window,
                                       [&] { inspected.page->artnetUnivSpinChanged(universe); }));
        undone.push_back(MillisecondsOf(real.stage.window, [&] { real.stage.undo.undo(); }));
        state.SetIterationTime(times.back() / 1e3);
    }
    state.counters["patch_ms"] = Median(times);
    state.counters["undo_ms"] = Median(undone);
}
BENCHMARK(PatchAllAndBack)
    ->ArgNames({"sorted by"})
    ->Arg(MappedDeviceModel::ProductColumn)
    ->Arg(MappedDeviceModel::AddressColumn)
    ->Iterations(15)
    ->UseManualTime();
/// Times an edit that adds elements, taking it back and doing it again.
template <class Prepare, class Add>
void AddAndBack(benchmark::State& state, Stage& real, Bare& bare, int added, const Prepare& prepare,
                const Add& add)
{
    std::vector<double> adds;
    std::vector<double> undone;
    std::vector<double> redone;
    std::vector<double> ratios;
    const std::size_t before = real.stage.Ids().size();
    for (auto _ : state) {
        prepare();
        QApplication::processEvents();
        adds.push_back(MillisecondsOf(real.stage.window, add));
        if (real.stage.Ids().size() != before + static_cast<std::size_t>(added))
            state.SkipWithError("not all were added");
        undone.push_back(MillisecondsOf(real.stage.window, [&] { real.stage.undo.undo(); }));
        redone.push_back(MillisecondsOf(real.stage.window, [&] { real.stage.undo.redo(); }));
        real.stage.undo.undo();
        bare.Clear();
        ratios.push_back(adds.back() / MillisecondsOf(bare.view, [&] {
                             for (int i = 0; i < added; ++i)
                                 bare.Add(i);
                         }));
        state.SetIterationTime(adds.back() / 1e3);
    }
    state.counters["add_ms"] = Median(adds);
    state.counters["undo_ms"] = Median(undone);
    state.counters["redo_ms"] = Median(redone);
    state.counters["ratio"] = Median(ratios);
}

void DuplicateOne(benchmark::State& state)
{
    Stage real(1);
    Bare bare(1);
    AddAndBack(
        state, real, bare, All - 1, [] {},
        [&] {
            real.stage.controller->DuplicateElement(
                real.stage.manager.GetMappedDeviceModel()->GetIndexOfUniqueID(real.ids[0]),
                {Columns, All / Columns, 0, 0});
        });
}
BENCHMARK(DuplicateOne)->Iterations(9)->UseManualTime();

void Paste(benchmark::State& state)
{
    const int elements = static_cast<int>(state.range(0));
    Stage real(elements);
    Bare bare(1);
    std::vector<double> copied;
    AddAndBack(
        state, real, bare, elements,
        [&] {
            real.stage.controller->ActionSelectAll();
            copied.push_back(MillisecondsOf(real.stage.window,
                                            [&] { real.stage.controller->ActionCopySelection(); }));
        },
        [&] { real.stage.controller->ActionPasteSelection(); });
    state.counters["copy_ms"] = Median(copied);
}
BENCHMARK(Paste)->ArgNames({"elements"})->Arg(1024)->Arg(All)->Iterations(9)->UseManualTime();

} // namespace
