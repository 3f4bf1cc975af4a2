// SPDX-License-Identifier: MIT
#include "UI/Main/StatusLine.h"

#include <cmath>
#include <initializer_list>

#include <QDropEvent>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QStatusBar>

#include "LEDEngine/LEDEngine.h"
#include "Language/Language.h"
#include "LibTools/Qt5And6.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/PatchText.h"
#include "Platform/Clock.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Main/StatusField.h"
#include "UI/Network/NetworkChoice.h"

namespace {

constexpr int PointerMilliseconds = 100;
constexpr int OutputMilliseconds = 500;
constexpr int Gap = 12;

/// A length as the inspector shows it: without needless zeros.
QString Length(double length)
{
    return QString::number(std::round(length * 10) / 10);
}

/// The colour of the picture at a place in fractions of the canvas; none outside of it.
QColor ColourAt(const ZenBitmap* picture, QPointF place)
{
    const auto isInside = [](double share) {
        return share >= 0 && share < 1;
    };
    if (!picture || !isInside(place.x()) || !isInside(place.y()))
        return {};
    const int column = static_cast<int>(place.x() * picture->width);
    const int row = static_cast<int>(place.y() * picture->height);
    const std::uint8_t* pixel =
        picture->data + static_cast<std::ptrdiff_t>(row) * picture->bytesPerRow +
        static_cast<std::ptrdiff_t>(column) * ZenBitmap::BytesPerPixel(picture->format);
    return {pixel[2], pixel[1], pixel[0]};
}

/// Fields side by side, with a gap at each null; the last one takes what is left when it `grows`.
QWidget* RowOf(std::initializer_list<QWidget*> fields, bool grows)
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (QWidget* field : fields) {
        if (field)
            layout->addWidget(field);
        else
            layout->addSpacing(Gap);
    }
    if (grows)
        layout->setStretch(layout->count() - 1, 1);
    return row;
}

} // namespace

StatusLine::StatusLine(const Parts& parts)
    : parts_(parts)
{
    // A window has edges to pull, and the grip takes the room of a name.
    parts_.bar.setSizeGripEnabled(false);
    AddFields();
    pointerTimer_.setSingleShot(true);
    connect(&pointerTimer_, &QTimer::timeout, this, &StatusLine::ShowPointer);
    connect(&outputTimer_, &QTimer::timeout, this, [this] {
        ShowOutput();
        if (!pointerTimer_.isActive())
            ShowPointer(); // what lies under a mouse at rest changes, too
    });
    outputTimer_.start(OutputMilliseconds);
    connect(&parts_.engine.GetOutput(), &ArtNetOutput::dataOutOn, this, [this] {
        if (parts_.choice.IsConnected()) // or the frame gets no further than the adapter
            ++frames_;
    });
    connect(&parts_.choice, &NetworkChoice::networkChanged, this, &StatusLine::ShowOutput);
    parts_.view.viewport()->installEventFilter(this);
    InEachLanguage(this, [this] {
        NameFields();
        ShowOutput();
    });
}

// ---- Building ----------------------------------------------------------------------------------

void StatusLine::AddFields()
{
    position_ = new StatusField("statusPosition");
    swatch_ = new ColourSwatch;
    colour_ = new StatusField("statusColour");
    place_ = new StatusField("statusPlace");
    size_ = new StatusField("statusSize");
    angle_ = new StatusField("statusAngle");
    address_ = new StatusField("statusAddress");
    name_ = new StatusField("statusName");
    parts_.bar.addWidget(
        RowOf({position_, swatch_, colour_, nullptr, place_, size_, angle_, address_, name_}, true),
        1);

    network_ = new StatusField("statusNetwork");
    elements_ = new StatusField("statusElements");
    universes_ = new StatusField("statusUniverses");
    rate_ = new StatusField("statusFrames");
    parts_.bar.addPermanentWidget(RowOf({network_, elements_, universes_, rate_}, false));
}

void StatusLine::NameFields()
{
    const QString numbers = tr("%1, %2");
    position_->SetWords(tr("Pixel under the mouse"), numbers.arg(9999).arg(9999));
    colour_->SetWords(tr("Colour of the picture: red, green, blue"), QStringLiteral("255 255 255"));
    place_->SetWords(tr("Left and top of the element"), numbers.arg(9999.5).arg(9999.5));
    size_->SetWords(tr("Size"), tr("%1 × %2").arg(9999).arg(9999));
    angle_->SetWords(tr("Angle"), tr("%1°").arg(359.5));
    address_->SetWords(tr("Sub-net, universe and channel"), QStringLiteral("15/15/512"));
    name_->SetWords(tr("Element"), QString());
    network_->SetWords(tr("Network"), QStringLiteral("! 255.255.255.X"));
    elements_->SetWords(tr("Elements of the document"), tr("%n element(s)", nullptr, 9999));
    universes_->SetWords(tr("Universes of the last frame"), tr("%n universe(s)", nullptr, 999));
    rate_->SetWords(tr("Frames sent a second, counted over two seconds"),
                    tr("%1 fps").arg(QStringLiteral("40.5")));
}

// ---- The canvas --------------------------------------------------------------------------------

bool StatusLine::eventFilter(QObject*, QEvent* event)
{
    NotePointer(*event);
    return false;
}

void StatusLine::NotePointer(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        pointer_ = static_cast<const QMouseEvent&>(event).pos();
        break;
    case QEvent::DragMove:
        pointer_ = Qt5And6::PositionOf(static_cast<const QDragMoveEvent&>(event)).toPoint();
        break;
    case QEvent::Leave:
    case QEvent::DragLeave:
        pointer_.reset();
        break;
    case QEvent::Drop:
    case QEvent::Wheel:
        break;
    default:
        return;
    }
    if (!pointerTimer_.isActive())
        pointerTimer_.start(PointerMilliseconds);
}

void StatusLine::ShowPointer()
{
    std::optional<QPointF> at;
    if (pointer_)
        at = parts_.view.mapToScene(*pointer_);
    const auto pixel = [](double length) {
        return static_cast<int>(std::floor(length));
    };
    position_->Show(at ? tr("%1, %2").arg(pixel(at->x())).arg(pixel(at->y())) : QString());
    ShowColour(at);
    ShowTarget(at);
}

void StatusLine::ShowColour(std::optional<QPointF> at)
{
    const MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    QColor colour;
    if (at)
        colour = ColourAt(document.GetTestBitmap(), {at->x() / document.GetCanvasWidth(),
                                                     at->y() / document.GetCanvasHeight()});
    swatch_->Show(colour);
    colour_->Show(
        colour.isValid()
            ? QStringLiteral("%1 %2 %3").arg(colour.red()).arg(colour.green()).arg(colour.blue())
            : QString());
}

/// What is dragged comes first: the mouse may be beside it.
void StatusLine::ShowTarget(std::optional<QPointF> at)
{
    WeftMapEditorScene& scene = parts_.scene;
    const std::int64_t dragged = scene.GetGestures().DraggedId();
    const MappingRectangle* frame = scene.GetGroupOverlay().GetFrame();
    const QRect band = parts_.view.rubberBandRect();
    if (const MappingRectangle* preview = scene.GetDragPreview())
        ShowPart(preview->GetPlacement().Rect(), 0, tr("New element"));
    else if (dragged == MappingRectangle::OverlayId && frame)
        ShowPart(frame->GetPlacement().Rect(), frame->rotation(),
                 tr("%n element(s)", nullptr, scene.SelectedCount()));
    else if (const MappingRectangle* element = dragged > 0 ? scene.Find(dragged) : nullptr)
        ShowElement(*element);
    else if (!band.isNull())
        ShowPart(parts_.view.mapToScene(band).boundingRect(), 0,
                 tr("%1 selected").arg(scene.SelectedCount()));
    else if (const MappingRectangle* under = at ? scene.ElementAt(*at) : nullptr)
        ShowElement(*under);
    else
        ShowNoElement();
}

void StatusLine::ShowPart(const QRectF& part, double angle, const QString& name)
{
    place_->Show(tr("%1, %2").arg(Length(part.left()), Length(part.top())));
    size_->Show(tr("%1 × %2").arg(Length(part.width()), Length(part.height())));
    angle_->Show(tr("%1°").arg(Length(angle)));
    address_->Show(QString());
    name_->Show(name);
}

void StatusLine::ShowElement(const MappingRectangle& item)
{
    const MappedLedItem* element =
        parts_.manager.GetMappedDeviceModel()->GetItemByUniqueID(item.GetId());
    if (!element) {
        ShowNoElement();
        return;
    }
    ShowPart(item.GetPlacement().Rect(), item.rotation(),
             QString::fromStdWString(element->description));
    if (const DMXMappingArtNet* address = element->GetArtNetMapping())
        address_->Show(AddressText(*address));
}

void StatusLine::ShowNoElement()
{
    for (StatusField* field : {place_, size_, angle_, address_, name_})
        field->Show(QString());
}

// ---- The output --------------------------------------------------------------------------------

void StatusLine::ShowOutput()
{
    const QString network = parts_.choice.GetNetworkText();
    const bool isTrouble = !network.isEmpty() && !parts_.choice.IsConnected();
    network_->Show(network.isEmpty() ? tr("No network")
                                     : (isTrouble ? QStringLiteral("! ") : QString()) + network);
    network_->SetWarns(isTrouble);
    const int elements = parts_.manager.GetMappedDeviceModel()->rowCount();
    elements_->Show(tr("%n element(s)", nullptr, elements));
    const auto universes = static_cast<int>(parts_.engine.GetOutput().GetUniverses().Count());
    universes_->Show(tr("%n universe(s)", nullptr, universes));
    frameRate_.Read(frames_, Platform::MonotonicNanoseconds());
    rate_->Show(tr("%1 fps").arg(frameRate_.PerSecond(), 0, 'f', 1));
}
