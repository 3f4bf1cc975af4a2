// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class DeviceManager;

/// The test picture as large as the window allows, with the outline of each placed element on it.
class StagePreview : public QWidget
{
    Q_OBJECT

public:
    /// `manager` outlives the widget.
    explicit StagePreview(DeviceManager& manager, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return {640, 400}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QRectF CanvasOnScreen() const;
    void PaintElements(QPainter& painter, const QRectF& canvas) const;

    DeviceManager& manager_;
};
