// SPDX-License-Identifier: MIT
#include "CanvasStage.h"
#include "LEDEngine/LEDEngine.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "UI/Commands/AddressCommands.h"
#include "UI/Commands/GeometryCommands.h"
#include "UI/Commands/ManualNodeCommand.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <random>

#include <tinyxml2.h>

namespace {

/// What leaves the program: the document's file and the channels on the wire.
using Outcome = std::pair<std::string, std::string>;

/// Watches file and engine. No two pixels of the picture are alike.
class Witness
{
public:
    Witness(CanvasStage& stage, const ArtNetNodeModel& nodes)
        : stage_(stage)
        , nodes_(nodes)
        , engine_(stage.manager)
        , picture_(ZenBitmap::Create(Side, Side, 4))
    {
        for (int i = 0; i < Side * Side; ++i) {
            picture_->data[4 * i] = static_cast<std::uint8_t>(i % Side);
            picture_->data[4 * i + 1] = static_cast<std::uint8_t>(i / Side);
            picture_->data[4 * i + 2] = 255;
        }
        QObject::connect(&stage.manager, &DeviceManager::mappingsChanged, &engine_, [this] {
            engine_.ReleaseElements();
            Build(engine_);
        });
    }

    [[nodiscard]] Outcome Now()
    {
        tinyxml2::XMLDocument document;
        stage_.manager.MappingToXml(document, nodes_);
        tinyxml2::XMLPrinter printer;
        document.Print(&printer);
        return {printer.CStr(), WireOf(engine_)};
    }

    /// Whether the engine, which is rebuilt when elements come or go and only then, sends what one
    /// that is made now does.
    [[nodiscard]] std::string Disagreement()
    {
        LEDEngine fresh(stage_.manager);
        Build(fresh);
        return WireOf(engine_) == WireOf(fresh) ? "" : "the engine has missed a change";
    }

private:
    static constexpr int Side = 256;

    void Build(LEDEngine& engine) const
    {
        const MappedDeviceModel& document = *stage_.manager.GetMappedDeviceModel();
        engine.CreateElements(document.GetCanvasWidth(), document.GetCanvasHeight());
    }
    [[nodiscard]] std::string WireOf(LEDEngine& engine) const
    {
        std::string wire;
        engine.UpdateElementBitmaps(*picture_);
        engine.SendFrame();
        const ArtNetUniverses& universes = engine.GetOutput().GetUniverses();
        for (const auto& [port, universe] : universes.Broadcast())
            wire.append(universe.channels.begin(), universe.channels.end());
        for (const auto& [key, universe] : universes.Unicast())
            wire.append(universe.channels.begin(), universe.channels.end());
        return wire;
    }

    CanvasStage& stage_;
    const ArtNetNodeModel& nodes_;
    LEDEngine engine_;
    std::unique_ptr<ZenBitmap> picture_;
};

/// Edits as an operator makes them, one after the other, by chance.
class Operator
{
public:
    Operator(CanvasStage& stage, ArtNetNodeModel& nodes)
        : stage_(stage)
        , nodes_(nodes)
        , bar_(stage.AddFixture(L"Bar", 12, 4, 144))
    {
        // What only a file can bring: angles between degrees, another filter, a node of its own.
        for (int i = 0; i < 14; ++i) {
            const auto id = stage.Place(bar_, {10.0 + 6 * i, 15.0 + 5 * i}, {12.0 + i, 4});
            VideoMapping video = stage.Video(id);
            video.rotation = 12.75F * static_cast<float>(i);
            video.filterMode = static_cast<VideoFilterMode>(i % 3);
            stage.manager.SetVideoMappings({{id, video}});
            // Several share their channels: the last row wins.
            if (i % 2 == 1)
                stage.Item(id).EditArtNetMapping()->SetNode(L"2.0.0.9", L"Node");
        }
    }

    int Pick(std::ptrdiff_t below)
    {
        return static_cast<int>(random_() % static_cast<unsigned>(below));
    }

    void Edit() { edits_[static_cast<std::size_t>(Pick(static_cast<int>(edits_.size())))](); }

private:
    QPointF Point()
    {
        const QSize canvas = stage_.manager.CanvasPixels();
        return {static_cast<double>(Pick(canvas.width())),
                static_cast<double>(Pick(canvas.height()))};
    }
    /// Nothing, when there is no element.
    void WithAny(const std::function<void(std::int64_t)>& act)
    {
        const auto ids = stage_.Ids();
        if (!ids.empty())
            act(ids[static_cast<std::size_t>(Pick(static_cast<int>(ids.size())))]);
    }
    void DragElement()
    {
        WithAny([this](std::int64_t id) { stage_.Drag(stage_.PlaceOf(id).centre, Point()); });
    }
    void DragCorner()
    {
        SceneGestures& gestures = stage_.scene->GetGestures();
        const int corner = Pick(8);
        gestures.SizeGesture(GesturePhase::Start, corner);
        gestures.SizeGesture(GesturePhase::Update, corner, QSizeF(Pick(20) - 8, Pick(20) - 8));
        gestures.SizeGesture(GesturePhase::End, corner);
    }
    void Duplicate()
    {
        WithAny([this](std::int64_t id) {
            if (stage_.Ids().size() < 30)
                editor_.DuplicateElement(
                    stage_.manager.GetMappedDeviceModel()->GetIndexOfUniqueID(id),
                    {1 + Pick(3), 1 + Pick(3), Pick(4), Pick(2)});
        });
    }
    void Paste()
    {
        if (stage_.Ids().size() < 40)
            editor_.ActionPasteSelection();
    }
    void TurnGroup()
    {
        SceneGestures& gestures = stage_.scene->GetGestures();
        gestures.RotateGroupGesture(GesturePhase::Start, 0);
        gestures.RotateGroupGesture(GesturePhase::Update, Pick(360));
        gestures.RotateGroupGesture(GesturePhase::End, 0);
    }
    /// A value typed for all selected elements.
    template <class Command, class... Values>
    void Type(void (Command::*set)(Values...), Values... values)
    {
        auto command = std::make_unique<Command>(stage_.manager, stage_.scene->SelectedIds());
        (command.get()->*set)(values...);
        stage_.undo.push(command.release());
    }

    template <class Command>
    void Push(std::unique_ptr<Command> command)
    {
        if (!command->ChangesNothing())
            stage_.undo.push(command.release());
    }
    void Patch()
    {
        const int universe = Pick(4);
        const auto edit = [&](std::int64_t id, DMXMappingArtNet& address) {
            address.SetUniverse(universe);
            address.SetChannel(static_cast<std::int32_t>(id * 7 % 600));
            if (universe == 3)
                address.SetNode(AutoNode, L"");
        };
        Push(std::make_unique<AddressCommand>(stage_.manager, stage_.scene->SelectedIds(), edit));
    }
    void Describe()
    {
        Push(std::make_unique<DescriptionCommand>(stage_.manager, stage_.scene->SelectedIds(),
                                                  L"Bar " + std::to_wstring(Pick(5))));
    }
    /// A manual node comes, is edited or goes. Elements may be sent to an address that is none yet.
    void ChangeNode()
    {
        const auto known = nodes_.GetManualNodes();
        ArtNetNodeRecord typed;
        typed.ip = "2.0.0." + std::to_string(8 + Pick(4));
        typed.name = "Node " + std::to_string(Pick(3));
        typed.manual = true;
        if (known.empty() || Pick(3) == 0) {
            if (!nodes_.GetNode(QString::fromStdString(typed.ip)))
                Replace({}, typed, stage_.scene->SelectedIds());
            return;
        }
        const ArtNetNodeRecord& one = known[static_cast<std::size_t>(Pick(std::ssize(known)))];
        ElementIds users;
        for (const MappedLedItem* element : stage_.manager.GetMappedDeviceModel()->GetAllItems()) {
            if (element->GetDMXMapping()->GetIpconf() == std::wstring(one.ip.begin(), one.ip.end()))
                users.push_back(element->uniqueID);
        }
        if (Pick(2) == 0)
            Replace(one, {}, users);
        else if (typed.ip == one.ip || !nodes_.GetNode(QString::fromStdString(typed.ip)))
            Replace(one, typed, users);
    }
    void Replace(const ManualNodeCommand::Node& before, const ManualNodeCommand::Node& after,
                 const ElementIds& ids)
    {
        Push(std::make_unique<ManualNodeCommand>(stage_.manager, nodes_, before, after, ids));
    }

    CanvasStage& stage_;
    ArtNetNodeModel& nodes_;
    std::int64_t bar_;
    std::mt19937 random_{20};
    EditorController& editor_ = *stage_.controller;
    const std::vector<std::function<void()>> edits_ = {
        [this] { stage_.DropFixture(stage_.Ids().size() < 30 ? bar_ : -1, Point()); },
        [this] { stage_.Drag(Point(), Point()); },
        [this] { stage_.Drag(Point(), Point()); },
        [this] { DragElement(); },
        [this] { DragElement(); },
        [this] { DragCorner(); },
        [this] { editor_.ActionSelectAll(); },
        [this] { editor_.ActionAlign(static_cast<ElementGeometry::AlignMode>(Pick(6))); },
        [this] {
            editor_.ActionAlignDistribute(static_cast<ElementGeometry::DistributeMode>(Pick(2)));
        },
        [this] { editor_.ActionRotateLeftRight(static_cast<float>(Pick(720) - 360)); },
        [this] { editor_.ActionFlip(Pick(2), Pick(2) == 0); },
        [this] { stage_.Key(Qt::Key_Delete); },
        [this] { stage_.HoldKey(Pick(2) == 0 ? Qt::Key_Left : Qt::Key_Down, 1 + Pick(3)); },
        [this] {
            WithAny([this](std::int64_t id) { stage_.scene->SetSelected(id, Pick(3) > 0); });
        },
        [this] { TurnGroup(); },
        [this] { Patch(); },
        [this] { Describe(); },
        [this] { ChangeNode(); },
        [this] { Duplicate(); },
        [this] { editor_.ActionCopySelection(); },
        [this] { Paste(); },
        [this] { stage_.display.snapToGrid = Pick(2) == 0; },
        [this] { Type(&MoveCommand::MoveTo, {Pick(100) / 3.0}, {}); },
        [this] { Type(&SizeRectangleCommand::Resize, {}, {1.0 * Pick(30)}); },
        [this] { Type(&RotateRectangleCommand::TurnTo, Pick(720) - 360.0); },
        [this] {
            if (Pick(4) == 0)
                editor_.ActionCropCanvasToSelectedDevices();
            else
                editor_.ResizeCanvas(60 + Pick(60), 60 + Pick(60), Pick(2) == 0);
        }};
};

} // namespace

TEST(CanvasWalk, UndoAndRedoAreExactAndEverybodyAgrees)
{
    CanvasStage stage;
    // In another order than that of the rows.
    stage.list->sortByColumn(MappedDeviceModel::NameColumn, Qt::DescendingOrder);
    ArtNetNodeModel nodes;
    Witness witness(stage, nodes);
    Operator hands(stage, nodes);
    const char* wanted = std::getenv("CANVAS_WALK_ROUNDS");
    const int rounds = wanted ? std::atoi(wanted) : 150;
    for (int round = 0; round < rounds; ++round) {
        stage.undo.clear();
        stage.manager.SetDocumentDirty(false);
        std::vector<Outcome> outcomes{witness.Now()};
        for (int edit = 0; edit < 60 && stage.undo.count() < stage.undo.undoLimit(); ++edit) {
            hands.Edit();
            ASSERT_EQ(stage.Disagreement() + witness.Disagreement(), "") << "round " << round;
            if (stage.undo.count() == std::ssize(outcomes))
                outcomes.push_back(witness.Now());
            ASSERT_EQ(witness.Now(), outcomes.back()) << "changed without a step, round " << round;
            ASSERT_EQ(stage.manager.documentDirty, stage.undo.count() > 0) << "round " << round;
        }
        const int last = stage.undo.count();
        const int saved = last > 0 ? hands.Pick(last) : 0;
        for (int i = 1; i <= 2 * last; ++i) {
            const int step = std::abs(last - i); // back to the first, and on to the last again
            stage.undo.setIndex(step);
            if (i == last - saved)
                stage.manager.SetDocumentDirty(false);
            ASSERT_EQ(stage.manager.documentDirty, i < last - saved || step != saved)
                << "saved at " << saved << ", now at " << step;
            ASSERT_EQ(witness.Now(), outcomes[static_cast<std::size_t>(step)])
                << (i <= last ? "undone to " : "redone to ") << step << ", round " << round;
            ASSERT_EQ(stage.Disagreement(), "") << "at " << step << ", round " << round;
        }
        stage.undo.setIndex(hands.Pick(stage.undo.count() + 1));
        if (stage.manager.CanvasPixels().width() < 50)
            stage.controller->ResizeCanvas(100, 100, false);
    }
}
