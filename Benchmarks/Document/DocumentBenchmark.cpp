// SPDX-License-Identifier: MIT
// What the document costs as it grows: its file, and the operations on its elements. Every ratio is
// the time for an element of the larger document over that for one of the smaller. Both were taken
// in turn in the same run, and of these ratios it is the median, so that a machine that is busy
// with something else slows both sides alike. 1 is in proportion; the ratio of the sizes
// would be a walk through the whole document for each element.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include <QPersistentModelIndex>
#include <QTemporaryDir>

#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"
#include "Model/PatchCheck.h"
#include "Model/Repatch.h"
#include "Timing.h"

namespace {

constexpr int CanvasSide = 1000;

/// Removals write a debug line for each element; a terminal's speed is none of ours.
void Discard(QtMsgType, const QMessageLogContext&, const QString&) {}

/// A document of `count` elements of a bar of 36 pixels in a DeviceManager, with its proxies.
class Document
{
public:
    explicit Document(int count)
        : manager_(QString())
    {
        qInstallMessageHandler(Discard);
        manager_.Initialize();
        manager_.SetCanvasSize(CanvasSide, CanvasSide);
        PixelMap map(36, 1, PixelMapType::RGB);
        for (int i = 0; i < 36; ++i)
            map.SetCell(i, 0, 1 + 3 * i);
        auto fixture = std::make_unique<DeviceLedItem>(L"Maker", L"Bar", map, 1, 108);
        manager_.GetDeviceModel()->AddFixture(std::move(fixture));
        const std::int64_t fixtureID = manager_.GetLEDFixtureByProduct(L"Bar")->uniqueID;
        for (int i = 0; i < count; ++i) {
            MappedObjectParams record;
            record.ipconf = QStringLiteral("Auto");
            record.posX = static_cast<float>(20 + i % 25 * 38);
            record.posY = static_cast<float>(i / 25 % CanvasSide);
            record.width = 36;
            record.height = 1;
            record.fixtureID = fixtureID;
            record.channel = 1 + 108 * (i % 4);
            record.universe = i / 4 % 16;
            record.subnet = i / 64 % 16;
            records_.push_back(record);
        }
    }

    [[nodiscard]] int Count() const { return static_cast<int>(records_.size()); }
    [[nodiscard]] int Rows() const { return manager_.GetMappedDeviceModel()->rowCount(); }
    [[nodiscard]] int ProxyRows() const { return manager_.GetMappedObjectListProxy()->rowCount(); }

    void AddAll()
    {
        const auto added = manager_.AddMappedObjects(records_);
        manager_.ApplyObjectParams(added);
    }

    /// The index that the canvas keeps of each element, and the one that a list with everything
    /// selected keeps of each row.
    void AttachView()
    {
        const auto* list = manager_.GetMappedObjectListProxy();
        for (int row = 0; row < Rows(); ++row) {
            view_.emplace_back(IndexOf(row));
            view_.emplace_back(list->index(row, MappedDeviceModel::IdentifierColumn));
        }
    }
    void DetachView() { view_.clear(); }

    void MoveAll()
    {
        std::vector<ElementPosition> corners;
        for (int row = 0; row < Rows(); ++row)
            corners.push_back({IndexOf(row), static_cast<double>(row % 900), 7});
        manager_.MoveObjects(corners, true);
    }

    void RotateAll()
    {
        std::vector<ElementRotation> rotations;
        for (int row = 0; row < Rows(); ++row)
            rotations.push_back({IndexOf(row), 30});
        manager_.SetObjectRotation(rotations);
    }

    void MoveMiddle()
    {
        place_ = 900 - place_;
        manager_.MoveObject(IndexOf(Rows() / 2), place_, place_, true);
    }

    /// From row `first` on every `step`-th element.
    void Remove(int first, int step)
    {
        QList<qint64> uniqueIDs;
        for (int row = first; row < Rows(); row += step)
            uniqueIDs.append(manager_.GetMappedItemByRow(row)->uniqueID);
        manager_.RemoveMappedObjects(uniqueIDs);
    }

    /// What a repatch reads of every `step`-th element, which stand in rows by their places.
    [[nodiscard]] Repatch ReadForRepatch(int step) const
    {
        ElementIds ids;
        for (int row = 0; row < Rows(); row += step)
            ids.push_back(manager_.GetMappedItemByRow(row)->uniqueID);
        return {manager_, ids};
    }

    bool Save(const QString& path) { return bool(manager_.SaveMapping(path, nodes_)); }
    bool Load(const QString& path) { return manager_.LoadMapping(path, nodes_); }

private:
    [[nodiscard]] QModelIndex IndexOf(int row) const
    {
        return manager_.GetMappedDeviceModel()->index(row, MappedDeviceModel::ItemColumn);
    }

    DeviceManager manager_;
    ArtNetNodeModel nodes_;
    std::vector<MappedObjectParams> records_;
    std::vector<QPersistentModelIndex> view_;
    double place_ = 100;
};

// ---- The file ----------------------------------------------------------------------------------

void File(benchmark::State& state)
{
    const QTemporaryDir folder;
    Document small(static_cast<int>(state.range(0)));
    Document large(static_cast<int>(state.range(1)));
    const QString smallPath = folder.filePath(QStringLiteral("small.wfm"));
    const QString largePath = folder.filePath(QStringLiteral("large.wfm"));
    small.AddAll();
    large.AddAll();
    bool whole = true;
    const auto save = [&whole](Document& document, const QString& path, int times) {
        return SecondsOf(times, [&] { whole = document.Save(path) && whole; });
    };
    const auto load = [&whole](Document& document, const QString& path, int times) {
        return SecondsOf(times, [&] {
            whole = document.Load(path) && document.Rows() == document.Count() && whole;
        });
    };
    const int times = large.Count() / small.Count();
    const double more = static_cast<double>(large.Count()) / small.Count();
    std::vector<double> saveRatios;
    std::vector<double> loadRatios;
    std::vector<double> saves;
    std::vector<double> loads;
    for (auto _ : state) {
        const double smallSave = save(small, smallPath, times);
        saves.push_back(save(large, largePath, 1));
        const double smallLoad = load(small, smallPath, times);
        loads.push_back(load(large, largePath, 1));
        saveRatios.push_back(saves.back() / smallSave / more);
        loadRatios.push_back(loads.back() / smallLoad / more);
        state.SetIterationTime(saves.back() + loads.back());
    }
    if (!whole)
        state.SkipWithError("a document was not saved or loaded whole");
    state.counters["save_ratio"] = Median(saveRatios);
    state.counters["load_ratio"] = Median(loadRatios);
    state.counters["save_ms"] = Median(saves) * 1e3;
    state.counters["load_ms"] = Median(loads) * 1e3;
}
BENCHMARK(File)
    ->ArgNames({"few", "many"})
    ->Args({100, 1000})
    ->Args({1000, 4096})
    ->Args({4096, 20000})
    ->Iterations(15)
    ->UseManualTime();

// ---- The elements ------------------------------------------------------------------------------

/// Seconds of each operation for one element.
struct Times
{
    double add = 0;
    double move = 0;
    double rotate = 0;
    double remove = 0;
    double removeScattered = 0; ///< every second element
};

/// A document's life, `times` over. The removals leave it empty, as it began.
Times Live(Document& document, bool withView, int times)
{
    Times sum;
    const double share = 1.0 / (static_cast<double>(document.Count()) * times);
    const auto take = [&](double& into, auto work) {
        into += SecondsOf(1, work) * share;
    };
    const auto add = [&] {
        document.AddAll();
        if (withView)
            document.AttachView();
    };
    for (int i = 0; i < times; ++i) {
        take(sum.add, add);
        take(sum.move, [&] { document.MoveAll(); });
        take(sum.rotate, [&] { document.RotateAll(); });
        take(sum.remove, [&] { document.Remove(0, 1); });
        document.DetachView();
        add();
        take(sum.removeScattered, [&] { document.Remove(0, 2); });
        document.Remove(0, 1);
        document.DetachView();
    }
    sum.removeScattered *= 2; // half as many
    return sum;
}

void Elements(benchmark::State& state)
{
    constexpr int few = 64;
    constexpr int many = 4096;
    const bool withView = state.range(0) != 0;
    Document small(few);
    Document large(many);
    struct Figure
    {
        const char* name;
        double Times::*time;
        std::vector<double> ratios;
        std::vector<double> large;
    };
    std::vector<Figure> figures{{"add", &Times::add, {}, {}},
                                {"move", &Times::move, {}, {}},
                                {"rotate", &Times::rotate, {}, {}},
                                {"remove", &Times::remove, {}, {}},
                                {"remove_scattered", &Times::removeScattered, {}, {}}};
    for (auto _ : state) {
        const Times ofSmall = Live(small, withView, many / few);
        const Times ofLarge = Live(large, withView, 1);
        for (Figure& figure : figures) {
            figure.large.push_back(ofLarge.*figure.time);
            figure.ratios.push_back(ofLarge.*figure.time / (ofSmall.*figure.time));
        }
        state.SetIterationTime(ofLarge.add * many);
    }
    large.AddAll();
    if (small.Rows() != 0 || large.Rows() != many || large.ProxyRows() != many)
        state.SkipWithError("the elements are not those that were to be measured");
    for (Figure& figure : figures) {
        state.counters[std::string(figure.name) + "_ratio"] = Median(figure.ratios);
        state.counters[std::string(figure.name) + "_us"] = Median(figure.large) * 1e6;
    }
}
BENCHMARK(Elements)->ArgNames({"view"})->Arg(0)->Arg(1)->Iterations(21)->UseManualTime();

void OneMove(benchmark::State& state)
{
    constexpr int moves = 1000;
    const bool withView = state.range(0) != 0;
    Document small(64);
    Document large(20'000);
    for (Document* document : {&small, &large}) {
        document->AddAll();
        if (withView)
            document->AttachView();
    }
    std::vector<double> ratios;
    for (auto _ : state) {
        const double ofSmall = SecondsOf(moves, [&] { small.MoveMiddle(); });
        const double ofLarge = SecondsOf(moves, [&] { large.MoveMiddle(); });
        ratios.push_back(ofLarge / ofSmall);
        state.SetIterationTime(ofLarge);
    }
    state.counters["ratio"] = Median(ratios);
}
BENCHMARK(OneMove)->ArgNames({"view"})->Arg(0)->Arg(1)->Iterations(101)->UseManualTime();

// ---- The check of the patch --------------------------------------------------------------------

/// A wall of bars of 10 pixels, 17 in a universe and 256 universes on a node, of which nothing is
/// wrong; or all of them are off the canvas, cut off at channel 512 and on each other's channels.
std::unique_ptr<DeviceManager> Wall(int count, bool faulty)
{
    constexpr int inUniverse = 17;
    constexpr int onNode = inUniverse * 256;
    qInstallMessageHandler(Discard);
    auto manager = std::make_unique<DeviceManager>(QString());
    manager->Initialize();
    manager->SetCanvasSize(CanvasSide, CanvasSide);
    PixelMap map(10, 1, PixelMapType::RGB);
    for (int i = 0; i < 10; ++i)
        map.SetCell(i, 0, 1 + 3 * i);
    (void)manager->AddFixture(LEDFixture(L"Maker", L"Bar", map, 0, 30));
    std::vector<MappedObjectParams> records;
    for (int i = 0; i < count; ++i) {
        MappedObjectParams record;
        record.ipconf = QStringLiteral("2.0.0.%1").arg(1 + i / onNode);
        record.posX = static_cast<float>(faulty ? 2000 : 20 + i % 90 * 10);
        record.posY = static_cast<float>(10 + i / 90 % 900);
        record.width = 10;
        record.height = 1;
        record.fixtureID = manager->GetLEDFixtureByProduct(L"Bar")->uniqueID;
        record.channel = faulty ? 500 : 1 + 30 * (i % inUniverse);
        record.universe = i / inUniverse % 16;
        record.subnet = i / (16 * inUniverse) % 16;
        records.push_back(record);
    }
    manager->ApplyObjectParams(manager->AddMappedObjects(records));
    return manager;
}

/// Processor time, which a busy machine doesn't stretch.
template <class Work>
double ProcessorSecondsOf(Work work)
{
    const std::clock_t begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

void Check(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const bool faulty = state.range(1) != 0;
    const auto manager = Wall(count, faulty);
    PatchNetwork network{0x02FFFFFF, {}, true, {}};
    for (int node = 1; node <= 5; ++node) {
        PatchNode& answering = network.nodes.emplace_back();
        answering.address = L"2.0.0." + std::to_wstring(node);
        for (std::uint16_t port = 0; port < 256; ++port)
            answering.ports.push_back(port);
    }
    const PatchCheckInput input{*manager->GetMappedDeviceModel(), manager->GetDeviceModel(),
                                &network};
    PatchCheck live;
    std::vector<double> longest;
    const auto pass = [&] {
        double whole = 0;
        double most = 0;
        for (bool ended = false; !ended;) {
            const double portion = ProcessorSecondsOf([&] { ended = live.Work(input, 2'000'000); });
            most = std::max(most, portion);
            whole += portion;
        }
        longest.push_back(most);
        return whole;
    };
    ElementIds all;
    for (int row = 0; row < count; ++row)
        all.push_back(manager->GetMappedDeviceModel()->GetElement(row)->uniqueID);
    const auto drag = [&](const ElementIds& ids) {
        auto places = manager->GetVideoMappings(ids);
        for (ElementMapping& place : places)
            place.video.centerY = 0.5F - place.video.centerY / 4;
        manager->SetVideoMappings(places);
    };
    std::vector<double> full;
    std::vector<double> one;
    std::vector<double> dragged;
    std::vector<PatchProblem> problems;
    for (auto _ : state) {
        full.push_back(ProcessorSecondsOf([&] { problems = CheckPatch(input); }));
        (void)pass();
        drag({all[all.size() / 2]});
        one.push_back(pass());
        drag(all);
        dragged.push_back(pass());
        state.SetIterationTime(full.back());
    }
    const auto found = std::ranges::count_if(problems, [](const PatchProblem& problem) {
        return problem.trouble != Trouble::None; // hints are of ports and nodes
    });
    if ((found > 0) != faulty)
        state.SkipWithError("these are not the problems that were to be found");
    state.counters["problems"] = static_cast<double>(found);
    state.counters["full_ms"] = Median(full) * 1e3;
    state.counters["drag_one_ms"] = Median(one) * 1e3;
    state.counters["drag_all_ms"] = Median(dragged) * 1e3;
    state.counters["longest_portion_ms"] = Median(longest) * 1e3;
}
BENCHMARK(Check)
    ->ArgNames({"elements", "faulty"})
    ->Args({4096, 0})
    ->Args({4096, 1})
    ->Args({20000, 0})
    ->Args({20000, 1})
    ->Iterations(21)
    ->UseManualTime();

/// A plan is made with each key that is typed in its dialog.
void RepatchPlan(benchmark::State& state)
{
    Document document(static_cast<int>(state.range(0)));
    document.AddAll();
    const Repatch repatch = document.ReadForRepatch(static_cast<int>(state.range(1)));
    RepatchOptions options;
    options.place = {ElementOrder::Columns, ElementOrder::BottomRight, true};
    std::vector<double> times;
    for (auto _ : state) {
        std::vector<RepatchRow> rows;
        times.push_back(SecondsOf(1, [&] { rows = repatch.Plan(options); }));
        if (rows.size() != repatch.Elements().size())
            state.SkipWithError("elements are missing");
        state.SetIterationTime(times.back());
    }
    state.counters["plan_ms"] = Median(times) * 1e3;
}
BENCHMARK(RepatchPlan)
    ->ArgNames({"elements", "every"})
    ->Args({4096, 1})
    ->Args({4096, 2})
    ->Args({20000, 5})
    ->Iterations(51)
    ->UseManualTime();

} // namespace

BENCHMARK_MAIN();
