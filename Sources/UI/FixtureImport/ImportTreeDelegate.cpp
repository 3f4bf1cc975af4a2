// SPDX-License-Identifier: MIT
#include "UI/FixtureImport/ImportTreeDelegate.h"

#include <algorithm>

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include "UI/FixtureImport/ImportTreeModel.h"
#include "UI/FixtureImport/MapPicture.h"
#include "UI/Widgets/DeskLook.h"

namespace {

constexpr int LeastRowHeight = 32;
constexpr int RowMargin = 8;

} // namespace

/// On the ground of a selected row the style's own mark can't be seen.
void ImportTreeDelegate::PaintCheck(QPainter& painter, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const
{
    const QVariant state = index.data(Qt::CheckStateRole);
    if (!state.isValid())
        return;
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QStyle& style = option.widget ? *option.widget->style() : *QApplication::style();
    const QRectF box =
        style.subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item, option.widget);
    const Look& look = CurrentLook();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(look.listTextFaded, 1));
    painter.setBrush(look.field);
    painter.drawRect(box.adjusted(0.5, 0.5, -0.5, -0.5));
    painter.setPen(QPen(look.fieldText, 2));
    const double side = box.width();
    if (state.toInt() == Qt::Checked)
        painter.drawPolyline(QPolygonF({box.topLeft() + QPointF(0.25, 0.5) * side,
                                        box.topLeft() + QPointF(0.45, 0.72) * side,
                                        box.topLeft() + QPointF(0.78, 0.28) * side}));
    else if (state.toInt() == Qt::PartiallyChecked)
        painter.drawLine(box.topLeft() + QPointF(0.25, 0.5) * side,
                         box.topLeft() + QPointF(0.75, 0.5) * side);
    painter.restore();
}

void ImportTreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    if (index.column() == ImportTreeModel::NameColumn)
        PaintCheck(*painter, option, index);
    if (index.column() != ImportTreeModel::MapColumn)
        return;
    const auto* model = qobject_cast<const ImportTreeModel*>(index.model());
    const FixtureImport::PlanNode* node = model ? model->NodeAt(index) : nullptr;
    if (node && node->mode.fixture)
        PaintMap(*painter, option.rect, node->mode.fixture->pixelMap);
}

/// Without a look at the texts: all rows are of one height, and there are thousands.
QSize ImportTreeDelegate::sizeHint(const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    const QSize usual = QStyledItemDelegate::sizeHint(option, index);
    const int lines = 2 * option.fontMetrics.lineSpacing() + RowMargin;
    return {usual.width(), std::max(LeastRowHeight, lines)};
}
