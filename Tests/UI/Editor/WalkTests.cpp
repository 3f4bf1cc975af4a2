// SPDX-License-Identifier: MIT
#include "CanvasStage.h"
#include "LEDEngine/LEDEngine.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "UI/Editor/GraphCanvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>

#include <QTransform>

namespace {

/// Watches what the engine samples. The picture tells the place of each of its pixels: blue is its
/// column, green its row.
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
        // As the window does it: the engine is built anew when elements come or go, and no sooner.
        QObject::connect(&stage.manager, &DeviceManager::mappingsChanged, &engine_, [this] {
            engine_.ReleaseElements();
            const MappedDeviceModel& document = *stage_.manager.GetMappedDeviceModel();
            engine_.CreateElements(document.GetCanvasWidth(), document.GetCanvasHeight());
        });
    }

    /// The first element whose light doesn't come from where the canvas shows it; empty for none.
    [[nodiscard]] std::string Disagreement()
    {
        engine_.UpdateElementBitmaps(*picture_);
        for (const MappedLedItem* element : stage_.manager.GetMappedDeviceModel()->GetAllItems()) {
            const ZenBitmap* light = engine_.FindElementBitmap(*element);
            const MappingRectangle* item = stage_.scene->Find(element->uniqueID);
            if (!light || !item || light->width != 12 || light->height != 4)
                return "the engine has no light for an element";
            for (const QPoint cell : {QPoint(0, 0), QPoint(11, 0), QPoint(4, 2), QPoint(0, 3)}) {
                if (!ComesFrom(*light, cell, PlaceOf(*item, cell)))
                    return "element " + std::to_string(element->uniqueID) +
                           " is lit from elsewhere";
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

    [[nodiscard]] static bool ComesFrom(const ZenBitmap& light, QPoint cell, QPointF place)
    {
        constexpr double edge = 1e-3; // Here it is a matter of rounding whether there is light.
        const auto outside = [](double at) {
            return at < -edge || at > 1 + edge;
        };
        const auto inside = [](double at) {
            return at > edge && at < 1 - edge;
        };
        const std::uint8_t* pixel = light.data + cell.y() * light.bytesPerRow + 4 * cell.x();
        if (outside(place.x()) || outside(place.y()))
            return pixel[2] == 0;
        if (!inside(place.x()) || !inside(place.y()))
            return true;
        return pixel[2] == 255 && std::abs(pixel[0] - std::floor(place.x() * Side)) <= 1 &&
               std::abs(pixel[1] - std::floor(place.y() * Side)) <= 1;
    }

    CanvasStage& stage_;
    LEDEngine engine_;
    std::unique_ptr<ZenBitmap> picture_;
};

} // namespace

TEST(CanvasWalk, KeepsModelCanvasListAndEngineOne)
{
    CanvasStage stage;
    const std::int64_t bar = stage.AddFixture(L"Bar", 12, 4, 144);
    Witness witness(stage);
    constexpr int seed = 20;
    const char* wanted = std::getenv("CANVAS_WALK_STEPS");
    const int steps = wanted ? std::atoi(wanted) : 10000;
    std::mt19937 random(seed);
    const auto pick = [&random](int below) {
        return static_cast<int>(random() % static_cast<unsigned>(below));
    };
    const auto point = [&pick] {
        return QPointF(pick(100), pick(100));
    };
    for (int step = 0; step < steps; ++step) {
        const auto ids = stage.Ids();
        switch (pick(17)) {
        case 0:
        case 1:
            if (ids.size() < 30)
                stage.DropFixture(bar, point());
            break;
        case 2:
        case 3:
            stage.Drag(point(), point());
            break;
        case 4:
        case 5:
            if (!ids.empty()) {
                const auto id = ids[static_cast<std::size_t>(pick(static_cast<int>(ids.size())))];
                stage.Drag(stage.Model(id).placement.centre, point());
            }
            break;
        case 6:
            stage.controller->ActionSelectAll();
            break;
        case 7:
            stage.controller->ActionAlign(static_cast<EditorGeometry::AlignMode>(pick(6)));
            break;
        case 8:
            stage.controller->ActionAlignDistribute(
                static_cast<EditorGeometry::DistributeMode>(pick(2)));
            break;
        case 9:
            stage.controller->ActionRotateLeftRight(static_cast<float>(pick(720) - 360));
            break;
        case 10:
            stage.controller->ActionFlip(pick(2), pick(2) == 0);
            break;
        case 11:
            if (pick(4) == 0)
                stage.Key(Qt::Key_Delete);
            break;
        case 12:
        case 13:
            stage.undo.undo();
            break;
        case 14:
            stage.undo.redo();
            break;
        case 15:
            if (!ids.empty() && pick(3) == 0) {
                stage.scene->GetGestures().RotateGroupGesture(GesturePhase::Start, 0);
                stage.scene->GetGestures().RotateGroupGesture(GesturePhase::Update, pick(360));
                stage.scene->GetGestures().RotateGroupGesture(GesturePhase::End, 0);
            }
            stage.display.snapToGrid = pick(2) == 0;
            break;
        case 16:
            // There and back at once: on a canvas of a few pixels there is little to do.
            if (pick(4) == 0 && !ids.empty()) {
                stage.controller->ActionCropCanvasToSelectedDevices();
                ASSERT_EQ(stage.Disagreement() + witness.Disagreement(), "") << "step " << step;
                stage.undo.undo();
            }
            break;
        default:
            break;
        }
        ASSERT_EQ(stage.Disagreement() + witness.Disagreement(), "") << "after step " << step;
    }
}
