// SPDX-License-Identifier: MIT
// What the check finds in small documents, and that each remedy puts it right and can be undone.
#include "Model/PatchCheck.h"

#include <functional>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QUndoStack>

#include <tinyxml2.h>

#include "LEDEngine/LEDEngine.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappingFile.h"
#include "Model/PatchRemedy.h"
#include "Support/LogCapture.h"
#include "UI/Commands/RemedyCommands.h"
#include "UI/Output/LivePatchCheck.h"
#include "UI/Output/ProblemsModel.h"

namespace {

using Lines = std::vector<std::string>;

/// An element of a bar of ten pixels on 30 channels. Where not told otherwise it is well placed.
struct Bar
{
    int universe = 0;
    int channel = 1;
    const wchar_t* node = AutoNode;
    QRectF place{10, 10, 20, 5};
    float degrees = 0;
};

/// A document on a canvas of 100 x 100, a library that has the bar, and perhaps a network.
class Show
{
public:
    explicit Show(const std::vector<Bar>& bars)
    {
        manager.Initialize();
        manager.SetCanvasSize(100, 100);
        PixelMap map(10, 1, PixelMapType::RGB);
        for (int i = 0; i < 10; ++i)
            map.SetCell(i, 0, 1 + 3 * i);
        (void)manager.AddFixture(LEDFixture(L"Maker", L"Bar", map, 0, 30));
        for (const Bar& bar : bars)
            Add(bar);
    }

    void Add(const Bar& bar)
    {
        MappedObjectParams params;
        params.ipconf = QString::fromWCharArray(bar.node);
        params.subnet = bar.universe / 16;
        params.universe = bar.universe % 16;
        params.channel = bar.channel;
        params.fixtureID = Fixture().uniqueID;
        params.posX = static_cast<float>(bar.place.center().x());
        params.posY = static_cast<float>(bar.place.center().y());
        params.width = static_cast<float>(bar.place.width());
        params.height = static_cast<float>(bar.place.height());
        const QModelIndex index = manager.AddMappedObject(params);
        manager.ApplyObjectParams(index, params);
        if (bar.degrees != 0)
            manager.SetObjectRotation(index, bar.degrees);
    }

    [[nodiscard]] MappedDeviceModel& Document() { return *manager.GetMappedDeviceModel(); }
    [[nodiscard]] DeviceLedItem& Fixture() { return *manager.GetLEDFixtureByProduct(L"Bar"); }
    [[nodiscard]] PatchCheckInput Input()
    {
        return {Document(), manager.GetDeviceModel(), network ? &*network : nullptr};
    }
    [[nodiscard]] std::vector<PatchProblem> Check() { return CheckPatch(Input()); }
    [[nodiscard]] std::string File()
    {
        tinyxml2::XMLDocument document;
        manager.MappingToXml(document, nodes);
        tinyxml2::XMLPrinter printer;
        document.Print(&printer);
        return printer.CStr();
    }

    // ---- Steps of the tables -------------------------------------------------------------------

    void Merge(int from, int count, int to)
    {
        Document().SetMerging({true, static_cast<std::uint32_t>(from / 16),
                               static_cast<std::uint32_t>(from % 16), count,
                               static_cast<std::uint32_t>(to / 16),
                               static_cast<std::uint32_t>(to % 16), MergerDMXSource::PixelWeft});
    }
    PatchNetwork& Network()
    {
        if (!network)
            network = PatchNetwork{0x02FFFFFF, {}, false, {}};
        return *network;
    }
    void Node(const wchar_t* address, std::vector<std::uint16_t> ports)
    {
        Network().nodes.push_back({address, L"Truss", std::move(ports)});
        Network().knowsNodes = true;
    }
    void EditLibraryBehind()
    {
        TakenElements taken = manager.TakeElements({1});
        LEDFixture wanted = Fixture();
        wanted.pixelMap.SetCell(0, 0, 0);
        (void)manager.ChangeFixture(Fixture().uniqueID, wanted);
        manager.PutBackElements(std::move(taken));
    }

    Support::LogCapture log;
    DeviceManager manager{QString()};
    ArtNetNodeModel nodes;
    QUndoStack history;
    std::optional<PatchNetwork> network;
};

/// Severity, universe, elements and matter of each.
Lines LinesOf(const std::vector<PatchProblem>& problems)
{
    Lines lines;
    for (const PatchProblem& problem : problems) {
        QString text = SeverityText(problem.trouble) + QLatin1Char(' ');
        text += problem.universe < 0 ? QStringLiteral("-") : ProblemUniverseText(problem);
        for (const std::int64_t id : problem.elements)
            text += QStringLiteral(" #%1").arg(id);
        lines.push_back((text + QStringLiteral(": ") + MatterText(problem)).toStdString());
        EXPECT_FALSE(EffectText(problem).contains(QLatin1Char('%')));
    }
    return lines;
}

/// A hint weighs less than any caution.
int WeightOf(const std::vector<PatchProblem>& problems)
{
    int weight = 0;
    for (const PatchProblem& problem : problems)
        weight += 1 + 100 * static_cast<int>(problem.trouble);
    return weight;
}

struct Case
{
    std::vector<Bar> bars;
    std::function<void(Show&)> setUp;
    Lines problems;
};

constexpr QRectF Right(90, 10, 20, 5);
constexpr QRectF Beside(200, 10, 20, 5);

const std::vector<Case> FaultyDocuments = {
    {{{0, 513}, {1, 0}},
     {},
     {"Fault 0/0 #1: Begins on channel 513, outside of channels 1 to 512 of universe 0/0",
      "Fault 0/1 #2: Begins on channel 0, outside of channels 1 to 512 of universe 0/1"}},
    {{{4, 486}}, {}, {"Fault 0/4 #1: Reaches beyond universe 0/4: channels 486 to 515, of 512"}},
    {{{4, 484}},
     {},
     {"Fault 0/4 #1: The end of universe 0/4 splits a pixel on channels 511 to 513"}},
    {{{0, 1}, {0, 30}, {0, 31}, {0, 483}, {0, 300}},
     {},
     {"Caution 0/0 #1 #2 #3: Channels 30 to 59 of universe 0/0 are written by 3 elements"}},
    {{{0, 1}, {0, 100, L"2.0.0.5"}},
     {},
     {"Fault 0/0 #1 #2: Universe 0/0 has elements with node Auto, and others with node 2.0.0.5"}},
    {{{0, 1, L"2.0.0.5"}, {0, 1, L"2.0.0.6"}},
     {},
     {"Hint 0/0 #1 #2: Universe 0/0 goes to several nodes: 2.0.0.5, 2.0.0.6"}},
    // ---- The merger
    {{{0, 1}, {1, 1, L"2.0.0.5"}, {16, 100}, {17, 1}, {18, 1}},
     [](Show& show) { show.Merge(0, 2, 16); },
     {"Caution 0/1 #2: Universe 0/1 is merged: its elements cannot have node 2.0.0.5",
      "Caution 1/0 #3: Patched into universe 1/0, on which the merger sends",
      "Caution 1/1 #2 #4: Channels 1 to 30 of universe 1/1 are written by 2 elements",
      "Caution 1/1 #4: Patched into universe 1/1, on which the merger sends",
      "Hint 0/0 #1: Universe 0/0 is merged and sent on universe 1/0"}},
    {{{40, 1}},
     [](Show& show) { show.Merge(0, 10, 16); },
     {"Caution -: 11 universes go to all nodes, 40 times a second"}},
    // ---- The canvas
    {{{0, 1, AutoNode, Beside}}, {}, {"Caution - #1: Lies beside the canvas"}},
    {{{0, 1, AutoNode, Right}}, {}, {"Hint - #1: Hangs over the edge of the canvas"}},
    {{{0, 1, AutoNode, {10, 1, 20, 5}, 90}}, {}, {"Hint - #1: Hangs over the edge of the canvas"}},
    {{{0, 1, AutoNode, {10, 10, 9.9, 5}, 45}},
     {},
     {"Caution - #1: Is smaller on the canvas than its 10 × 1 pixels"}},
    // ---- The library
    {{{0, 1}},
     [](Show& show) { show.EditLibraryBehind(); },
     {"Caution - #1: \"Bar\" has changed in the library"}},
    {{{0, 1}, {0, 31}},
     [](Show& show) { show.manager.GetDeviceModel()->RemoveWithRow(show.Fixture()); },
     {"Caution - #1 #2: \"Bar\" is gone from the library"}},
    // ---- The network
    {{{0, 1, L"10.0.0.5"}, {3, 1, L"10.0.0.5"}},
     [](Show& show) {
         show.Network();
         show.Document().SetAnsweringNodes(std::set<std::wstring>{});
     },
     {"Fault - #1 #2: Node 10.0.0.5 is outside of the network"}},
    {{{0, 1, L"2.0.0.5"}, {3, 1, L"2.0.0.5"}, {4, 1, L"2.0.0.6"}},
     [](Show& show) {
         show.Network();
         show.Document().SetAnsweringNodes(std::set<std::wstring>{L"2.0.0.6"});
     },
     {"Fault - #1 #2: Node 2.0.0.5 does not answer"}},
    {{{0, 1, L"2.0.0.5"}, {1, 1, L"2.0.0.5"}},
     [](Show& show) { show.Node(L"2.0.0.5", {1}); },
     {"Caution 0/0 #1: Node \"Truss\" (2.0.0.5) has no port for universe 0/0"}},
    {{{0, 1}, {1, 1}},
     [](Show& show) {
         show.Node(L"2.0.0.5", {1});
         show.Document().SetAutoUnicast(true);
     },
     {"Fault 0/0 #1: No node subscribes to universe 0/0"}},
    {{{0, 1}, {1, 1}},
     [](Show& show) { show.Node(L"2.0.0.5", {1}); },
     {"Caution 0/0 #1: No node that answers puts out universe 0/0"}},
    {{{1, 1}},
     [](Show& show) {
         show.Node(L"2.0.0.5", {1, 1, 0, 2});
         show.Node(L"2.0.0.6", {1});
     },
     {"Hint 0/1 #1: Several nodes put out universe 0/1: 2.0.0.5, 2.0.0.6",
      "Hint -: Nothing is patched to 0/0, 0/2 of node \"Truss\" (2.0.0.5)"}},
    {{{1, 1}, {1, 31}},
     [](Show& show) {
         show.Network().senders = {{0, 0x02000007}, {1, 0x02000007}};
     },
     {"Caution 0/1 #1 #2: 2.0.0.7 sends universe 0/1, too"}},
};

TEST(PatchCheck, EachRuleFindsItsProblemAndTheRemedyPutsItRight)
{
    for (const Case& each : FaultyDocuments) {
        Show show(each.bars);
        if (each.setUp)
            each.setUp(show);
        const std::vector<PatchProblem> problems = show.Check();
        EXPECT_EQ(LinesOf(problems), each.problems);
        const std::string file = show.File();
        for (const PatchProblem& problem : problems) {
            SCOPED_TRACE(MatterText(problem).toStdString());
            const bool hasRemedy = RemedyOf(problem.rule) != PatchRemedy::None;
            EXPECT_EQ(hasRemedy, !RemedyText(RemedyOf(problem.rule)).isEmpty());
            ASSERT_EQ(PushRemedy(show.manager, show.history, {&problem, 1}, {}).helped > 0,
                      hasRemedy);
            EXPECT_EQ(CanBeRemedied(problem, show.Document()), hasRemedy);
            if (!hasRemedy)
                continue;
            for (const PatchProblem& left : show.Check())
                EXPECT_FALSE(OrderOf(left, problem) == 0) << "it is still there";
            EXPECT_LT(WeightOf(show.Check()), WeightOf(problems)) << "and no other came instead";
            show.history.undo();
            EXPECT_EQ(show.File(), file);
            EXPECT_EQ(show.Check(), problems);
        }
    }
}

TEST(PatchCheck, ADocumentThatIsWellRaisesNoAlarm)
{
    const auto fullSetting = [](Show& show) {
        show.Node(L"2.0.0.5", {0, 1});
        show.Network().senders = {{7, 0x02000007}};
        show.Document().SetAutoUnicast(true);
        show.Document().SetAnsweringNodes(std::set<std::wstring>{L"2.0.0.5", L"127.0.0.1"});
    };
    const std::vector<Case> documents = {
        {{}, fullSetting, {}},
        {{{0, 1}, {0, 31}, {0, 483}, {1, 1}}, fullSetting, {}}, // up to channel 512
        {{{0, 1, L"2.0.0.5"}, {1, 483, L"2.0.0.5"}}, fullSetting, {}},
        {{{0, 1, L"127.0.0.1"}, {1, 1, L"2.0.0.5"}}, [](Show& show) { show.Network(); }, {}},
        // Edges and corners of the canvas, turned and not; as small as the pixels.
        {{{0, 1, AutoNode, {80, 95, 20, 5}}, {0, 31, AutoNode, {-5, 10, 20, 5}, 90}}, {}, {}},
        {{{0, 1, AutoNode, {10, 10, 10, 0.5}}}, {}, {}},
        // The merger is off, or no one else is there.
        {{{0, 1}, {16, 1}},
         [](Show& show) {
             UniverseMerging merging = UniverseMerging::OfNewDocument();
             merging.SetEnabled(false);
             show.Document().SetMerging(merging);
         },
         {}},
        {{{39, 1}}, [](Show& show) { show.Merge(0, 9, 16); }, {}},
    };
    for (const Case& each : documents) {
        Show show(each.bars);
        if (each.setUp)
            each.setUp(show);
        EXPECT_EQ(LinesOf(show.Check()), each.problems);
    }

    DeviceManager manager{QString()};
    manager.Initialize();
    manager.GetDeviceModel()->Merge(L":/wfl/Resources/LEDFixtureLib.wfl", true);
    ArtNetNodeModel nodes;
    ASSERT_TRUE(manager.LoadMapping(QStringLiteral(":/wfm/Resources/DemoMapping.wfm"), nodes));
    const MappedDeviceModel& demo = *manager.GetMappedDeviceModel();
    ASSERT_GT(demo.rowCount(), 0);
    EXPECT_EQ(LinesOf(CheckPatch({demo, manager.GetDeviceModel()})), Lines{});
}

/// The addresses of the elements after the remedy of all problems, from row `first` on.
std::string Remedied(Show& show, std::vector<std::int32_t> taken, int first)
{
    (void)PushRemedy(show.manager, show.history, show.Check(), taken);
    std::string text;
    for (int row = first; row < show.Document().rowCount(); ++row) {
        const QModelIndex cell = show.Document().index(row, MappedDeviceModel::AddressColumn);
        text += cell.data().toString().toStdString() + ' ';
    }
    return text;
}

/// A universe with no more than two channels free.
std::vector<Bar> FullUniverse(int universe)
{
    std::vector<Bar> full;
    for (int i = 0; i < 17; ++i)
        full.push_back({universe, 1 + 30 * i});
    return full;
}

TEST(PatchRemedy, AFreeAddressIsInTheSameUniverseOrWhereNoOtherNodeIsSentTo)
{
    Show gaps({{2, 1}, {2, 91}, {2, 500}, {2, 505}});
    EXPECT_EQ(Remedied(gaps, {}, 0), "0/2/1 0/2/91 0/2/31 0/2/61 ");
    Show chain({{2, 1}, {2, 30}, {2, 60}});
    EXPECT_EQ(Remedied(chain, {}, 0), "0/2/1 0/2/90 0/2/60 ");
    Show several({{2, 1, L"2.0.0.5"}, {2, 513, L"2.0.0.6"}});
    EXPECT_EQ(Remedied(several, {}, 0), "0/2/1 0/2/31 ");
    Show unsent({{2, 1}, {2, 513, L"2.0.0.5"}});
    EXPECT_EQ(Remedied(unsent, {}, 0), "0/2/1 0/3/1 ");

    struct FullCase
    {
        int universe;
        std::vector<Bar> others;
        const char* addresses;
    };
    const std::vector<FullCase> table = {
        {15, {{15, 1}, {15, 1}}, "1/1/1 1/1/31 "},
        {255, {{255, 1}, {255, 1}}, "0/0/1 0/0/31 "},
        {4, {{4, 1}, {9, 1}}, "0/9/31 0/9/1 "},
        {4, {{4, 1}, {9, 1, L"2.0.0.5"}}, "0/10/1 0/9/1 "},
        {4, {{4, 1}, {255, 1, L"2.0.0.5"}, {0, 1, L"2.0.0.5"}}, "0/1/1 15/15/1 0/0/1 "},
    };
    for (const FullCase& each : table) {
        std::vector<Bar> bars = FullUniverse(each.universe);
        bars.insert(bars.end(), each.others.begin(), each.others.end());
        Show show(bars);
        EXPECT_EQ(Remedied(show, {16}, 17), each.addresses);
        EXPECT_EQ(show.history.count(), 1);
    }
}

TEST(PatchRemedy, WhatCannotBeHelpedIsCountedAndOfferedNoRemedy)
{
    Show large({{0, 1, AutoNode, {-10, 10, 120, 5}}, {0, 31, AutoNode, Right}});
    std::vector<PatchProblem> problems = large.Check();
    ASSERT_EQ(problems.size(), 2U);
    EXPECT_FALSE(CanBeRemedied(problems[0], large.Document()));
    EXPECT_TRUE(CanBeRemedied(problems[1], large.Document()));
    const RemedyOutcome outcome = PushRemedy(large.manager, large.history, problems, {});
    EXPECT_EQ(outcome.helped, 1);
    EXPECT_EQ(outcome.left, 1);
}

/// The check that goes on and the rows of the list, against a check of everything, while elements
/// come, go, move and are patched, also in the middle of a pass.
TEST(PatchCheck, APassInPortionsFindsTheSameAsACheckOfEverything)
{
    Show show({});
    ProblemsModel rows(show.manager);
    const QAbstractItemModelTester tester(&rows,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    PatchCheck check;
    std::mt19937 random(11);
    const auto below = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const auto edit = [&] {
        const auto ids = [&] {
            return ElementIds{1 + below(100)};
        };
        switch (below(7)) {
        case 0:
            for (int i = below(6); i >= 0; --i)
                show.Add({below(4), 1 + below(520), below(3) == 0 ? L"2.0.0.5" : AutoNode});
            break;
        case 1:
            for (ElementMapping place : show.manager.GetVideoMappings(ids())) {
                place.video.centerX = static_cast<float>(below(15)) / 10;
                show.manager.SetVideoMappings({place});
            }
            break;
        case 2:
            for (ElementAddress element : show.manager.GetAddresses(ids())) {
                element.address->SetChannel(1 + below(520));
                show.manager.SetAddresses({element});
            }
            break;
        case 3:
            show.manager.RemoveMappedObjects({1 + below(100), 1 + below(100)});
            break;
        case 4:
            show.Merge(below(3), 1 + below(2), 2 + below(3));
            break;
        case 5:
            show.manager.SetCanvasSize(90 + below(20), 100);
            break;
        default:
            show.Network().nodes.clear();
            show.Node(L"2.0.0.5", {static_cast<std::uint16_t>(below(4))});
        }
    };
    for (int round = 0; round < 300; ++round) {
        edit();
        (void)check.Work(show.Input(), 1);
        edit();
        while (!check.Work(show.Input(), below(2) * 100'000)) {
        }
        while (!check.Work(show.Input(), 1)) {
        } // what changed in the middle of the first
        const std::vector<PatchProblem> all = show.Check();
        ASSERT_EQ(check.GetProblems(), all) << round;
        const QPersistentModelIndex kept = rows.index(below(rows.rowCount() + 1), 0);
        const PatchProblem* before = rows.GetProblem(kept.row());
        const PatchProblem known = before ? *before : PatchProblem{};
        rows.Show(all);
        ASSERT_EQ(static_cast<std::size_t>(rows.rowCount()), all.size());
        for (int row = 0; row < rows.rowCount(); ++row)
            ASSERT_EQ(*rows.GetProblem(row), all[static_cast<std::size_t>(row)]);
        if (kept.isValid()) {
            ASSERT_TRUE(OrderOf(*rows.GetProblem(kept.row()), known) == 0);
        }
    }
}

TEST(LivePatchCheck, TellsOfChangesOfDocumentLibraryAndNodes)
{
    Show show({{0, 1}, {1, 1}});
    LEDEngine engine(show.manager);
    LivePatchCheck check({show.manager, show.nodes, engine});
    int told = 0;
    QObject::connect(&check, &LivePatchCheck::problemsChanged, [&told] { ++told; });
    const auto found = [&check] {
        check.Finish();
        return LinesOf(check.GetProblems());
    };
    EXPECT_EQ(found(), Lines{});
    engine.InitializeOutput(L"2.0.0.1", L"2.255.255.255", L"", show.Document().GetMerging());
    const auto answer = [](const char* ip, const char* name) {
        return ArtNetNodeRecord{.ip = ip, .name = name, .universes = {{1, 0}}};
    };
    show.nodes.UpdateNodes({answer("2.0.0.5", "Truss"), answer("10.0.0.5", "Elsewhere")});
    EXPECT_EQ(found(), Lines{}) << "others may still answer";
    show.Document().SetAnsweringNodes(show.nodes.GetAnsweringNodes());
    EXPECT_EQ(found(), (Lines{"Caution 0/0 #1: No node that answers puts out universe 0/0"}));
    show.manager.GetDeviceModel()->RemoveWithRow(show.Fixture());
    EXPECT_EQ(found().size(), 2U);
    show.Document().SetAnsweringNodes(std::nullopt);
    EXPECT_EQ(found(), (Lines{"Caution - #1 #2: \"Bar\" is gone from the library"}));
    EXPECT_EQ(told, 3);
    (void)found();
    EXPECT_EQ(told, 3);
}

} // namespace
