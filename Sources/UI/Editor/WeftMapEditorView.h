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
/// the wheel zooms, Control with a drag pans. Two buttons at the bottom left step through the test
/// pictures.
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

    /// Scrolls until this part of the scene is in sight, or its middle when it is larger than the
    /// view. The room that can be scrolled to grows where the part lies beyond it, until
    /// CanvasChanged.
    void ShowPart(const QRectF& part);

    /// The scene pixel that zooming centres on from now on; -1, -1 for the mouse.
    void SetZoomCentre(double x, double y);
    [[nodiscard]] QPoint GetZoomCentre() const { return zoomCentre_.value_or(QPoint(-1, -1)); }

    [[nodiscard]] QPushButton* GetPreviousImageButton() const { return previousImage_; }
    [[nodiscard]] QPushButton* GetNextImageButton() const { return nextImage_; }

signals:
    void updateZoomWidgets();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] double FitScale(QSize canvas) const;
    [[nodiscard]] QSize CanvasSize() const;
    void PlaceButtons();
    void ShowScene(QSize canvas);

    EditorDisplayState* display_ = nullptr;
    const DeviceManager* manager_ = nullptr;
    std::optional<QPoint> zoomCentre_;
    double shownZoom_ = 0;
    QPoint panStart_;
    bool panning_ = false;
    int wheelAccumulator_ = 0;
    QPushButton* previousImage_ = nullptr;
    QPushButton* nextImage_ = nullptr;
    std::unique_ptr<ScrollbarStyle> scrollbarStyle_;
};
