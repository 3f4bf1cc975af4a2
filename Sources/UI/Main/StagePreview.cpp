// SPDX-License-Identifier: MIT
#include "UI/Main/StagePreview.h"

#include <QPainter>

#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "UI/Editor/EditorDisplayState.h"

StagePreview::StagePreview(DeviceManager& manager, const EditorDisplayState& display,
                           QWidget* parent)
    : QWidget(parent)
    , manager_(manager)
    , display_(display)
{
    setObjectName(QStringLiteral("stagePreview"));
    setAccessibleName(tr("Test picture with the placed fixtures"));
    connect(manager.GetMappedDeviceModel(), &MappedDeviceModel::mappingsChanged, this,
            qOverload<>(&QWidget::update));
}

QRectF StagePreview::CanvasOnScreen() const
{
    const MappedDeviceModel& document = *manager_.GetMappedDeviceModel();
    const QSizeF canvas(document.GetCanvasWidth(), document.GetCanvasHeight());
    QRectF target(QPointF(), canvas.scaled(size(), Qt::KeepAspectRatio) * display_.zoom);
    target.moveCenter(QRectF(rect()).center());
    return target;
}

void StagePreview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(38, 40, 44));
    const QRectF canvas = CanvasOnScreen();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(canvas, manager_.GetMappedDeviceModel()->GetTestImage());
    if (display_.showGrid)
        PaintGrid(painter, canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    PaintElements(painter, canvas);
}

void StagePreview::PaintElements(QPainter& painter, const QRectF& canvas) const
{
    painter.setBrush(QColor(0, 0, 0, 70));
    painter.setPen(QPen(QColor(255, 255, 255, 220), 1.2));
    const MappedDeviceModel& document = *manager_.GetMappedDeviceModel();
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem* element = document.GetElement(row);
        const VideoMapping* mapping = element ? element->GetVideoMapping() : nullptr;
        if (!mapping)
            continue;
        painter.save();
        painter.translate(canvas.left() + static_cast<double>(mapping->centerX) * canvas.width(),
                          canvas.top() + static_cast<double>(mapping->centerY) * canvas.height());
        painter.rotate(static_cast<double>(mapping->rotation));
        const QSizeF size(static_cast<double>(mapping->width) * canvas.width(),
                          static_cast<double>(mapping->height) * canvas.height());
        painter.drawRect(
            QRectF(-size.width() / 2, -size.height() / 2, size.width(), size.height()));
        painter.restore();
    }
}

void StagePreview::PaintGrid(QPainter& painter, const QRectF& canvas) const
{
    constexpr double closestLines = 4.0;
    const MappedDeviceModel& document = *manager_.GetMappedDeviceModel();
    const double step = canvas.width() / document.GetCanvasWidth();
    if (step < closestLines)
        return;
    painter.setPen(QColor(255, 255, 255, 40));
    for (double x = canvas.left(); x <= canvas.right(); x += step)
        painter.drawLine(QPointF(x, canvas.top()), QPointF(x, canvas.bottom()));
    for (double y = canvas.top(); y <= canvas.bottom(); y += step)
        painter.drawLine(QPointF(canvas.left(), y), QPointF(canvas.right(), y));
}
