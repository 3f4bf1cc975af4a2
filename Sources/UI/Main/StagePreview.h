// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class DeviceManager;
struct EditorDisplayState;

/// The test picture as large as the window allows, with the outline of each placed element on it.
class StagePreview : public QWidget
{
    Q_OBJECT

public:
    /// `manager` and `display` outlive the widget.
    StagePreview(DeviceManager& manager, const EditorDisplayState& display,
                 QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return {640, 400}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QRectF CanvasOnScreen() const;
    void PaintGrid(QPainter& painter, const QRectF& canvas) const;
    void PaintElements(QPainter& painter, const QRectF& canvas) const;

    DeviceManager& manager_;
    const EditorDisplayState& display_;
};
