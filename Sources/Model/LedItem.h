// SPDX-License-Identifier: MIT
#pragma once

#include <QStandardItem>

/// The common base of the items that the library and the document hold.
class LedItem : public QStandardItem
{
public:
    using QStandardItem::QStandardItem;

    /// 0 for all items of today; operations on elements act on items of type 0 only.
    [[nodiscard]] virtual int GetItemType() const { return itemType; }

protected:
    int itemType = 0;
};
