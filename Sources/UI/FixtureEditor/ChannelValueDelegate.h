// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include <QItemDelegate>

#include "FixtureModel/FixtureLayout.h"

class OperatorBoxes;

/// Edits the values of a ChannelTable while they are typed or chosen. A channel of a pixel has no
/// editor; a value on a channel that a pixel covers is asked about.
class ChannelValueDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    /// `dialog` is the parent of this and of its boxes. `layout` and `boxes` outlive the delegate.
    ChannelValueDelegate(const FixtureLayout& layout, OperatorBoxes& boxes, QWidget& dialog);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void channelValueChanged(int index);
    void channelTextChanged(const QString& text);

private:
    struct Item
    {
        QString text;
        std::int32_t value;
    };
    [[nodiscard]] bool MayOverride(int channel) const;

    std::vector<Item> items;
    QWidget& dialog;
    const FixtureLayout& layout_;
    OperatorBoxes& boxes_;
};
