// SPDX-License-Identifier: MIT
#include "UI/Editor/WeftMapEditorView.h"

#include <algorithm>

#include <QIcon>
#include <QLinearGradient>
#include <QPushButton>
#include <QResizeEvent>
#include <QScrollBar>

#include "Language/Language.h"
#include "Model/DeviceManager.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/ScrollbarStyle.h"
#include "UI/Widgets/DeskLook.h"

namespace {

constexpr double Margin = 10;     ///< canvas pixels round the fitted canvas
constexpr double PartMargin = 24; ///< screen pixels round a part that is fitted, for its handles
constexpr int Reach = 100;        ///< canvases that can be scrolled over, on each side
constexpr QSize ImageButtonSize(30, 26);

QPushButton* MakeImageButton(QWidget* parent, const char* name, const QString& icon,
                             const char* text)
{
    auto* button = new QPushButton(QIcon(icon), QString(), parent);
    button->setObjectName(QLatin1String(name));
    button->setFlat(true);
    button->setFixedSize(ImageButtonSize);
    InEachLanguage(button, [button, text] {
        button->setToolTip(WeftMapEditorView::tr(text));
        button->setAccessibleName(button->toolTip());
    });
    return button;
}

} // namespace

WeftMapEditorView::WeftMapEditorView(QWidget* parent)
    : QGraphicsView(parent)
    , scrollbarStyle_(std::make_unique<ScrollbarStyle>())
{
    InEachLanguage(this, [this] { setAccessibleName(tr("Canvas")); });
    setDragMode(RubberBandDrag);
    setInteractive(true);
    setTransformationAnchor(AnchorUnderMouse);
    setResizeAnchor(AnchorViewCenter);
    // Qt's default keeps a list of every changed rectangle, which costs more than painting them.
    setViewportUpdateMode(BoundingRectViewportUpdate);
    setOptimizationFlags(DontSavePainterState | DontAdjustForAntialiasing);
    setCacheMode(CacheBackground);
    setFrameShape(NoFrame);
    viewport()->setMouseTracking(true);
    horizontalScrollBar()->setStyle(scrollbarStyle_.get());
    verticalScrollBar()->setStyle(scrollbarStyle_.get());
}

WeftMapEditorView::~WeftMapEditorView()
{
    // The scroll bars outlive the style, which this view owns.
    horizontalScrollBar()->setStyle(nullptr);
    verticalScrollBar()->setStyle(nullptr);
}

void WeftMapEditorView::SetUp(EditorDisplayState& display, const DeviceManager& manager)
{
    display_ = &display;
    manager_ = &manager;
    zoomCentre_.reset();
    if (!previousImage_) {
        previousImage_ = MakeImageButton(this, "previousImageButton",
                                         QStringLiteral(":/bitmaps/Bin/bitmaps/icon_imageprev.png"),
                                         QT_TR_NOOP("Previous test image"));
        nextImage_ = MakeImageButton(this, "nextImageButton",
                                     QStringLiteral(":/bitmaps/Bin/bitmaps/icon_imagenext.png"),
                                     QT_TR_NOOP("Next test image"));
        PlaceButtons();
    }
    ShowScene(CanvasSize());
}

QSize WeftMapEditorView::CanvasSize() const
{
    int width = 0;
    int height = 0;
    if (manager_)
        manager_->GetCanvasSize(width, height);
    return QSize(width, height).expandedTo(QSize(1, 1));
}

void WeftMapEditorView::ShowScene(QSize canvas)
{
    setSceneRect(QRect(-(canvas.width() / 2), -(canvas.height() / 2), 2 * canvas.width(),
                       2 * canvas.height()));
}

double WeftMapEditorView::FitScale(QSize canvas) const
{
    const QSizeF view = width() == 0 ? QSizeF(1, 1) : QSizeF(size());
    const double side = std::min(view.width(), view.height());
    const double w = canvas.width();
    const double h = canvas.height();
    const double across = side * std::min(1.0, w / h) / (w + Margin);
    const double down = side * std::min(1.0, h / w) / (h + Margin);
    return std::min(across, down);
}

void WeftMapEditorView::UpdateMatrix()
{
    if (!display_ || !manager_) {
        setTransform(QTransform());
        return;
    }
    const double scale = FitScale(CanvasSize());
    fittedSize_ = size();
    display_->fitScaleX = static_cast<double>(static_cast<float>(scale));
    display_->fitScaleY = display_->fitScaleX;
    const double factor = scale * display_->zoom;
    middle_.reset();
    setTransform(QTransform::fromScale(factor, factor));
    if (zoomCentre_ && shownZoom_ != display_->zoom)
        centerOn(*zoomCentre_);
    shownZoom_ = display_->zoom;
    UpdateBackground(); // The gradient spans the part of the scene that is visible now.
    viewport()->update();
}

void WeftMapEditorView::UpdateBackground()
{
    // Exactly upright: a gradient that leans by a rounding is painted pixel by pixel, which is
    // slow.
    QLinearGradient gradient(0, mapToScene(0, 0).y(), 0, mapToScene(0, height()).y());
    gradient.setColorAt(0, CurrentLook().surroundTop);
    gradient.setColorAt(1, CurrentLook().surroundBottom);
    setBackgroundBrush(gradient);
}

void WeftMapEditorView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::StyleChange)
        UpdateBackground();
    QGraphicsView::changeEvent(event);
}

void WeftMapEditorView::CanvasChanged()
{
    if (!display_ || !manager_)
        return;
    const QSize canvas = CanvasSize();
    ShowScene(canvas);
    UpdateMatrix();
    ShowInTheMiddle(QPointF(canvas.width(), canvas.height()) / 2);
}

// ---- What is in sight --------------------------------------------------------------------------

void WeftMapEditorView::ShowInTheMiddle(QPointF place)
{
    centerOn(place);
    middle_ = place; // to the last bit, where scrolling goes in whole pixels
    UpdateBackground();
}

bool WeftMapEditorView::MakeReachable(const QRectF& part)
{
    const QSize canvas = CanvasSize();
    const QRectF reach(-Reach * canvas.width(), -Reach * canvas.height(),
                       2.0 * Reach * canvas.width(), 2.0 * Reach * canvas.height());
    if (!reach.contains(part))
        return false;
    if (!sceneRect().contains(part))
        setSceneRect(sceneRect().united(part));
    return true;
}

QRectF WeftMapEditorView::PartInSight() const
{
    return {mapToScene(viewport()->rect().topLeft()), mapToScene(viewport()->rect().bottomRight())};
}

void WeftMapEditorView::ShowPart(const QRectF& part)
{
    const QRectF shown = part.adjusted(-Margin, -Margin, Margin, Margin);
    if (!MakeReachable(shown))
        return;
    const QRectF seen = PartInSight();
    if (shown.width() > seen.width() || shown.height() > seen.height())
        centerOn(part.center());
    else
        ensureVisible(shown, 0, 0);
}

void WeftMapEditorView::FitCanvas()
{
    const QSize canvas = CanvasSize();
    ZoomTo(1);
    ShowInTheMiddle(QPointF(canvas.width(), canvas.height()) / 2);
}

void WeftMapEditorView::FitPart(const QRectF& part)
{
    if (!display_ || !MakeReachable(part))
        return;
    const double across = (viewport()->width() - 2 * PartMargin) / std::max(part.width(), 1.0);
    const double down = (viewport()->height() - 2 * PartMargin) / std::max(part.height(), 1.0);
    ZoomTo(std::min(across, down) / display_->fitScaleX);
    QRectF seen = PartInSight();
    seen.moveCenter(part.center());
    MakeReachable(seen);
    ShowInTheMiddle(part.center());
}

void WeftMapEditorView::ShowActualPixels()
{
    if (display_)
        ZoomTo(1 / (display_->fitScaleX * devicePixelRatioF()));
}

void WeftMapEditorView::ZoomTo(double zoom)
{
    if (!display_)
        return;
    display_->SetZoom(zoom);
    UpdateMatrix();
    emit updateZoomWidgets();
}

void WeftMapEditorView::SetZoomCentre(double x, double y)
{
    const QPoint centre(static_cast<int>(x), static_cast<int>(y));
    zoomCentre_ = centre == QPoint(-1, -1) ? std::nullopt : std::optional(centre);
}

void WeftMapEditorView::PlaceButtons()
{
    if (!previousImage_ || !nextImage_)
        return;
    const int bar = horizontalScrollBar()->isVisible() ? horizontalScrollBar()->height() : 0;
    const int top = height() - bar;
    previousImage_->move(0, top - previousImage_->height());
    nextImage_->move(previousImage_->width() - 2, top - nextImage_->height());
}

void WeftMapEditorView::resizeEvent(QResizeEvent* event)
{
    // Also when a scroll bar comes or goes, which changes the viewport alone.
    const bool isResized = size() != fittedSize_;
    // What is in the middle stays there, wherever the mouse is, and to the last bit while a window
    // is dragged larger in many steps.
    std::optional<QPointF> middle = middle_;
    if (!middle && isResized && event->oldSize().isValid())
        middle = mapToScene(QRect(QPoint(), event->oldSize()).center());
    if (isResized) {
        setTransformationAnchor(NoAnchor);
        UpdateMatrix();
        setTransformationAnchor(AnchorUnderMouse);
    }
    QGraphicsView::resizeEvent(event);
    if (middle)
        ShowInTheMiddle(*middle);
    PlaceButtons();
}

void WeftMapEditorView::scrollContentsBy(int dx, int dy)
{
    middle_.reset();
    QGraphicsView::scrollContentsBy(dx, dy);
}
