// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include <QGraphicsView>
#include <QPoint>

class DeviceManager;
class QPushButton;
class ScrollbarStyle;
struct EditorDisplayState;

/// Shows the canvas: fits it into the widget and multiplies by the operator's zoom. Control with
/// the wheel zooms; Control or Space with a drag and the middle button pan. Two buttons at the
/// bottom left step through the test pictures.
class WeftMapEditorView : public QGraphicsView
{
    Q_OBJECT

public:
    explicit WeftMapEditorView(QWidget* parent = nullptr);
    ~WeftMapEditorView() override;

    /// Both outlive the view. Until then nothing is scaled.
    void SetUp(EditorDisplayState& display, const DeviceManager& manager);

    /// Fits the canvas into the widget at the present zoom.
    void UpdateMatrix();
    void UpdateBackground();
    /// After a change of the canvas' size: centres the view on the canvas.
    void CanvasChanged();

    /// The part of the scene that is in sight now.
    [[nodiscard]] QRectF PartInSight() const;
    /// Scrolls until this part of the scene is in sight, or its middle when it is larger than the
    /// view. The room that can be scrolled to grows where the part lies beyond it, until
    /// CanvasChanged.
    void ShowPart(const QRectF& part);

    // What changes the zoom tells of it by updateZoomWidgets().

    /// Zooms to 1, with the canvas in the middle.
    void FitCanvas();
    /// Makes this part of the scene as large as the view and the range of the zoom allow, in the
    /// middle.
    void FitPart(const QRectF& part);
    /// Shows each pixel of the canvas on one pixel of the screen.
    void ShowActualPixels();

    /// The scene pixel that zooming centres on from now on; -1, -1 for the mouse.
    void SetZoomCentre(double x, double y);
    [[nodiscard]] QPoint GetZoomCentre() const { return zoomCentre_.value_or(QPoint(-1, -1)); }

    [[nodiscard]] QPushButton* GetPreviousImageButton() const { return previousImage_; }
    [[nodiscard]] QPushButton* GetNextImageButton() const { return nextImage_; }

signals:
    void updateZoomWidgets();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    /// The mouse moves the view.
    struct Pan
    {
        Qt::MouseButton button;
        QPoint at;
        bool mayBeClick; ///< until the mouse has moved
    };

    [[nodiscard]] double FitScale(QSize canvas) const;
    [[nodiscard]] QSize CanvasSize() const;
    void PlaceButtons();
    void ShowScene(QSize canvas);
    void ZoomTo(double zoom);
    /// Brings this place of the scene to the middle, where it stays when the view is resized.
    void ShowInTheMiddle(QPointF place);
    /// Lets the view be scrolled to this part of the scene; false when it is too far away for that.
    bool MakeReachable(const QRectF& part);

    bool BeginPan(const QMouseEvent& event);
    void GoOnPanning(const QMouseEvent& event);
    void EndPan();
    void ClickWithControl(const QMouseEvent& release);
    void LetGoOfSpace();

    EditorDisplayState* display_ = nullptr;
    const DeviceManager* manager_ = nullptr;
    std::optional<QPoint> zoomCentre_;
    double shownZoom_ = 0;
    QSize fittedSize_;              ///< of the widget, when the canvas was fitted into it
    std::optional<QPointF> middle_; ///< of the view; none after it was moved by hand
    std::optional<Pan> pan_;
    bool spaceIsDown_ = false;
    int wheelAccumulator_ = 0;
    QPushButton* previousImage_ = nullptr;
    QPushButton* nextImage_ = nullptr;
    std::unique_ptr<ScrollbarStyle> scrollbarStyle_;
};
