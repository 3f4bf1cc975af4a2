// SPDX-License-Identifier: MIT
#include "UI/Editor/WeftMapEditorView.h"

#include <algorithm>

#include <QIcon>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QWheelEvent>

#include "Model/DeviceManager.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/ScrollbarStyle.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Widgets/DeskLook.h"

namespace {

constexpr double Margin = 10; ///< canvas pixels round the fitted canvas
constexpr int Reach = 100;    ///< canvases that can be scrolled over, on each side
constexpr int WheelStep = 30; ///< of the wheel's delta, before the zoom takes a step
constexpr QSize ImageButtonSize(30, 26);

QPushButton* MakeImageButton(QWidget* parent, const char* name, const QString& icon,
                             const QString& text)
{
    auto* button = new QPushButton(QIcon(icon), QString(), parent);
    button->setObjectName(QLatin1String(name));
    button->setFlat(true);
    button->setFixedSize(ImageButtonSize);
    button->setToolTip(text);
    button->setAccessibleName(text);
    return button;
}

/// A rubber band changes the selection of many elements with each move of the mouse: one event
/// each.
class BatchOf
{
public:
    explicit BatchOf(QGraphicsScene* scene)
    {
        if (auto* editor = qobject_cast<WeftMapEditorScene*>(scene))
            batch_.emplace(*editor);
    }

private:
    std::optional<WeftMapEditorScene::SelectionBatch> batch_;
};

} // namespace

WeftMapEditorView::WeftMapEditorView(QWidget* parent)
    : QGraphicsView(parent)
    , scrollbarStyle_(std::make_unique<ScrollbarStyle>())
{
    setAccessibleName(tr("Canvas"));
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
                                         tr("Previous test image"));
        nextImage_ = MakeImageButton(this, "nextImageButton",
                                     QStringLiteral(":/bitmaps/Bin/bitmaps/icon_imagenext.png"),
                                     tr("Next test image"));
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
    display_->fitScaleX = static_cast<double>(static_cast<float>(scale));
    display_->fitScaleY = display_->fitScaleX;
    const double factor = scale * display_->zoom;
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
    centerOn(QPoint(canvas.width() / 2, canvas.height() / 2));
    UpdateBackground();
}

void WeftMapEditorView::ShowPart(const QRectF& part)
{
    const QSize canvas = CanvasSize();
    const QRectF reach(-Reach * canvas.width(), -Reach * canvas.height(),
                       2.0 * Reach * canvas.width(), 2.0 * Reach * canvas.height());
    if (!reach.contains(part))
        return;
    const QRectF shown = part.adjusted(-Margin, -Margin, Margin, Margin);
    if (!sceneRect().contains(shown))
        setSceneRect(sceneRect().united(shown));
    const QRectF seen(mapToScene(viewport()->rect().topLeft()),
                      mapToScene(viewport()->rect().bottomRight()));
    if (shown.width() > seen.width() || shown.height() > seen.height())
        centerOn(part.center());
    else
        ensureVisible(shown, 0, 0);
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
    UpdateMatrix();
    QGraphicsView::resizeEvent(event);
    PlaceButtons();
}

void WeftMapEditorView::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers() != Qt::ControlModifier || !display_) {
        QGraphicsView::wheelEvent(event);
        return;
    }
    event->accept();
    wheelAccumulator_ += event->angleDelta().y();
    if (wheelAccumulator_ >= -WheelStep && wheelAccumulator_ <= WheelStep)
        return;
    if (wheelAccumulator_ > WheelStep)
        display_->ZoomIn();
    else
        display_->ZoomOut();
    wheelAccumulator_ = 0;
    UpdateMatrix();
    emit updateZoomWidgets();
}

void WeftMapEditorView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::ControlModifier) {
        panStart_ = event->pos();
        panning_ = true;
        viewport()->setCursor(Qt::ClosedHandCursor);
        return;
    }
    const BatchOf batch(scene());
    QGraphicsView::mousePressEvent(event);
}

void WeftMapEditorView::mouseMoveEvent(QMouseEvent* event)
{
    if (!panning_) {
        const BatchOf batch(scene());
        QGraphicsView::mouseMoveEvent(event);
        return;
    }
    const QPoint way = panStart_ - event->pos();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + way.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + way.y());
    panStart_ = event->pos();
}

void WeftMapEditorView::mouseReleaseEvent(QMouseEvent* event)
{
    if (panning_ && event->button() == Qt::LeftButton) {
        viewport()->setCursor(Qt::ArrowCursor);
        panStart_ = QPoint();
        panning_ = false;
    }
    QGraphicsView::mouseReleaseEvent(event);
}
