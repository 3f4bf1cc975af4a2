// SPDX-License-Identifier: MIT
#include "UI/Output/UniverseDelegate.h"

#include <algorithm>

#include <QPainter>

#include "Model/Trouble.h"
#include "UI/Output/UniverseTable.h"
#include "UI/Widgets/DeskLook.h"

UniverseDelegate::UniverseDelegate(QObject* parent)
    : TroubleDelegate(TroubleRole, UniverseTable::UniverseColumn, parent)
{}

void UniverseDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    TroubleDelegate::paint(painter, option, index);
    const Look& look = CurrentLook();
    const QVariant used = index.data();
    if (index.column() == UniverseTable::UsedColumn && used.isValid()) {
        constexpr int height = 6;
        constexpr int margin = 4;
        constexpr int channels = 512;
        const QRect& cell = option.rect;
        const int left = option.fontMetrics.horizontalAdvance(QStringLiteral("5128"));
        const QRect bar(cell.left() + left, cell.center().y() - height / 2,
                        std::max(cell.width() - left - margin, 0), height);
        const bool isChosen = option.state.testFlag(QStyle::State_Selected);
        painter->fillRect(bar, look.listLine);
        painter->fillRect(
            QRect(bar.topLeft(), QSize(bar.width() * used.toInt() / channels, height)),
            isChosen ? look.accentText : look.accent);
    }
    if (index.row() == dropRow_) {
        painter->fillRect(option.rect.left(), option.rect.top(), option.rect.width(), 2,
                          look.accent);
        painter->fillRect(option.rect.left(), option.rect.bottom() - 1, option.rect.width(), 2,
                          look.accent);
    }
}
