// SPDX-License-Identifier: MIT
#include "UI/Widgets/TroubleDelegate.h"

#include <QPainter>
#include <QWidget>

#include "UI/Widgets/DeskLook.h"

namespace {

constexpr int MarkSize = 12;

enum Level
{
    Healthy = 0,
    Caution = 1,
    Fault = 2
};

QColor ColourOf(int level)
{
    return level == Fault ? TroubleColour() : WarningColour();
}

} // namespace

QPixmap TroubleMark(int level, qreal ratio)
{
    QPixmap mark(qRound(MarkSize * ratio), qRound(MarkSize * ratio));
    mark.setDevicePixelRatio(ratio);
    mark.fill(Qt::transparent);
    const QColor ink = WarningInk();
    QPainter painter(&mark);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 1));
    painter.setBrush(ColourOf(level));
    if (level == Fault)
        painter.drawEllipse(QRectF(0.5, 0.5, 11, 11));
    else
        painter.drawPolygon(QPolygonF({{6, 0.5}, {11.5, 11}, {0.5, 11}}));
    const qreal top = level == Fault ? 2.5 : 4;
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawRect(QRectF(5.2, top, 1.6, 3.8));
    painter.drawRect(QRectF(5.2, top + 4.6, 1.6, 1.6));
    return mark;
}

TroubleDelegate::TroubleDelegate(int role, int markColumn, QObject* parent)
    : QStyledItemDelegate(parent)
    , role_(role)
    , markColumn_(markColumn)
{}

void TroubleDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const int level = index.data(role_).toInt();
    if (level != Healthy)
        option->palette.setColor(QPalette::Text, ColourOf(level));
    if (index.column() != markColumn_ || index.parent().isValid())
        return;
    // A healthy row keeps the room, so that the texts stand below each other.
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->decorationSize = QSize(MarkSize, MarkSize);
    if (level != Healthy)
        option->icon =
            QIcon(TroubleMark(level, option->widget ? option->widget->devicePixelRatioF() : 1));
}
