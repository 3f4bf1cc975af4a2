// SPDX-License-Identifier: MIT
#include "UI/FixtureImport/ImportTreeDelegate.h"

#include <algorithm>

#include <QFontMetrics>
#include <QPainter>

#include "UI/FixtureImport/ImportTreeModel.h"
#include "UI/FixtureImport/MapPicture.h"

namespace {

constexpr int LeastRowHeight = 32;
constexpr int RowMargin = 2;

} // namespace

void ImportTreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    QStyledItemDelegate::paint(painter, option, index);
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
