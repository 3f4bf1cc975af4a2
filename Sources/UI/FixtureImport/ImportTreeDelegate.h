// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

/// Paints the rows of an import: the picture of each map in its column, two lines for texts.
class ImportTreeDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

private:
    void PaintCheck(QPainter& painter, const QStyleOptionViewItem& option,
                    const QModelIndex& index) const;
};
