// SPDX-License-Identifier: MIT
#include "CanvasStage.h"
#include "LEDEngine/LEDEngine.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "UI/Editor/GeometryCommands.h"
#include "UI/Editor/GraphCanvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <random>

#include <QTransform>
#include <tinyxml2.h>

namespace {

/// What leaves the program: the document's file and the channels on the wire.
struct Outcome
{
    std::string file;
    std::string wire;

    bool operator==(const Outcome&) const = default;
};

/// Watches file and engine. The picture tells the place of each of its pixels: blue is its column,
/// green its row.
class Witness
{
public:
    explicit Witness(CanvasStage& stage)
        : stage_(stage)
        , engine_(stage.manager)
        , picture_(ZenBitmap::Create(Side, Side, 4))
    {
        for (int i = 0; i < Side * Side; ++i) {
            picture_->data[4 * i] = static_cast<std::uint8_t>(i % Side);
            picture_->data[4 * i + 1] = static_cast<std::uint8_t>(i / Side);
            picture_->data[4 * i + 2] = 255;
        }
        // As the window does it: the engine is rebuilt when elements come or go, and only then.
        QObject::connect(&stage.manager, &DeviceManager::mappingsChanged, &engine_, [this] {
            engine_.ReleaseElements();
            const MappedDeviceModel& document = *stage_.manager.GetMappedDeviceModel();
            engine_.CreateElements(document.GetCanvasWidth(), document.GetCanvasHeight());
        });
    }

    [[nodiscard]] Outcome Now()
    {
        Outcome now;
        tinyxml2::XMLDocument document;
        stage_.manager.MappingToXml(document, nodes_);
        tinyxml2::XMLPrinter printer;
        document.Print(&printer);
        now.file = printer.CStr();
        engine_.UpdateElementBitmaps(*picture_);
        engine_.SendFrame();
        const ArtNetUniverses& universes = engine_.GetOutput().GetUniverses();
        for (const auto& [port, universe] : universes.Broadcast())
            now.wire.append(universe.channels.begin(), universe.channels.end());
        for (const auto& [key, universe] : universes.Unicast())
            now.wire.append(universe.channels.begin(), universe.channels.end());
        return now;
    }

    /// The first element that is sampled elsewhere than the canvas shows it; empty for none.
    [[nodiscard]] std::string Disagreement()
    {
        engine_.UpdateElementBitmaps(*picture_);
        for (const MappedLedItem* element : stage_.manager.GetMappedDeviceModel()->GetAllItems()) {
            const ZenBitmap* pixels = engine_.FindElementBitmap(*element);
            const MappingRectangle* item = stage_.scene->Find(element->uniqueID);
            if (!pixels || !item || pixels->width != 12 || pixels->height != 4)
                return "the engine has no pixels for an element";
            for (const QPoint cell : {QPoint(0, 0), QPoint(11, 0), QPoint(4, 2), QPoint(0, 3)}) {
                if (!ComesFrom(*pixels, cell, PlaceOf(*item, cell)))
                    return "element " + std::to_string(element->uniqueID) +
                           " is sampled elsewhere than it is shown";
            }
        }
        return {};
    }

private:
    static constexpr int Side = 256;

    /// The middle of a cell of the fixture, in fractions of the canvas, by what the canvas shows.
    [[nodiscard]] QPointF PlaceOf(const MappingRectangle& item, QPoint cell) const
    {
        const double x = (cell.x() + 0.5) / 12 - 0.5;
        const double y = (cell.y() + 0.5) / 4 - 0.5;
        QTransform frame;
        frame.translate(item.pos().x(), item.pos().y());
        frame.rotate(item.rotation());
        frame.scale(item.GetSize().width(), item.GetSize().height());
        const QPointF place = frame.map(QPointF(item.IsFlipped(FlipHorizontal) ? -x : x,
                                                item.IsFlipped(FlipVertical) ? -y : y));
        const QSizeF canvas = stage_.scene->GetCanvas().GetSize();
        return {place.x() / canvas.width(), place.y() / canvas.height()};
    }

    [[nodiscard]] static bool ComesFrom(const ZenBitmap& pixels, QPoint cell, QPointF place)
    {
        constexpr double edge = 1e-3; // Here it is a matter of rounding what is sampled.
        const auto outside = [](double at) {
            return at < -edge || at > 1 + edge;
        };
        const auto inside = [](double at) {
            return at > edge && at < 1 - edge;
        };
        const std::uint8_t* pixel = pixels.data + cell.y() * pixels.bytesPerRow + 4 * cell.x();
        if (outside(place.x()) || outside(place.y()))
            return pixel[2] == 0;
        if (!inside(place.x()) || !inside(place.y()))
            return true;
        return pixel[2] == 255 && std::abs(pixel[0] - std::floor(place.x() * Side)) <= 1 &&
               std::abs(pixel[1] - std::floor(place.y() * Side)) <= 1;
    }

    CanvasStage& stage_;
    LEDEngine engine_;
    ArtNetNodeModel nodes_;
    std::unique_ptr<ZenBitmap> picture_;
};

/// Edits as an operator makes them, one after the other, by chance.
class Operator
{
public:
    explicit Operator(CanvasStage& stage)
        : stage_(stage)
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

    int Pick(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

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
    void TurnGroup()
    {
        SceneGestures& gestures = stage_.scene->GetGestures();
        gestures.RotateGroupGesture(GesturePhase::Start, 0);
        gestures.RotateGroupGesture(GesturePhase::Update, Pick(360));
        gestures.RotateGroupGesture(GesturePhase::End, 0);
    }
    /// Values typed for all selected elements.
    void Type()
    {
        const auto ids = stage_.scene->SelectedIds();
        auto move = std::make_unique<MoveCommand>(stage_.manager, ids);
        auto size = std::make_unique<SizeRectangleCommand>(stage_.manager, ids);
        auto turn = std::make_unique<RotateRectangleCommand>(stage_.manager, ids);
        switch (Pick(3)) {
        case 0:
            move->MoveTo(Pick(100) / 3.0, std::nullopt);
            stage_.undo.push(move.release());
            break;
        case 1:
            size->Resize(std::nullopt, Pick(30));
            stage_.undo.push(size.release());
            break;
        default:
            turn->TurnTo(Pick(720) - 360);
            stage_.undo.push(turn.release());
        }
    }

    CanvasStage& stage_;
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
        [this] {
            WithAny([this](std::int64_t id) { stage_.scene->SetSelected(id, Pick(3) > 0); });
        },
        [this] { TurnGroup(); },
        [this] { stage_.display.snapToGrid = Pick(2) == 0; },
        [this] { Type(); },
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
    Witness witness(stage);
    Operator hands(stage);
    const char* wanted = std::getenv("CANVAS_WALK_ROUNDS");
    const int rounds = wanted ? std::atoi(wanted) : 150;
    for (int round = 0; round < rounds; ++round) {
        const auto agree = [&](const char* when) {
            ASSERT_EQ(stage.Disagreement() + witness.Disagreement(), "")
                << when << " in round " << round;
        };
        stage.undo.clear();
        stage.manager.SetDocumentDirty(false);
        std::vector<Outcome> outcomes{witness.Now()};
        for (int edit = 0; edit < 60 && stage.undo.count() < stage.undo.undoLimit(); ++edit) {
            hands.Edit();
            ASSERT_NO_FATAL_FAILURE(agree("after an edit"));
            if (stage.undo.count() == std::ssize(outcomes))
                outcomes.push_back(witness.Now());
            ASSERT_EQ(witness.Now(), outcomes.back()) << "changed without a step, round " << round;
            ASSERT_EQ(stage.manager.documentDirty, stage.undo.count() > 0) << "round " << round;
        }
        for (int step = stage.undo.count(); step-- > 0;) {
            stage.undo.undo();
            ASSERT_EQ(witness.Now(), outcomes[static_cast<std::size_t>(step)])
                << "undone to " << step << ", round " << round;
            ASSERT_NO_FATAL_FAILURE(agree("after an undo"));
        }
        for (int step = 1; step <= stage.undo.count(); ++step) {
            stage.undo.redo();
            ASSERT_EQ(witness.Now(), outcomes[static_cast<std::size_t>(step)])
                << "redone to " << step << ", round " << round;
            ASSERT_NO_FATAL_FAILURE(agree("after a redo"));
        }
        stage.undo.setIndex(hands.Pick(stage.undo.count() + 1));
        if (stage.manager.CanvasPixels().width() < 50)
            stage.controller->ResizeCanvas(100, 100, false);
    }
}
