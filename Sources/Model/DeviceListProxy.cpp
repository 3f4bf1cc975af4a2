// SPDX-License-Identifier: MIT
#include "Model/DeviceListProxy.h"

#include <algorithm>

#include "Model/DeviceModel.h"

namespace {

/// As it is compared: without case, and without the accents that Unicode can take off a letter.
QString Plain(const QString& text)
{
    QString plain;
    for (const QChar c : text.normalized(QString::NormalizationForm_KD)) {
        if (!c.isMark())
            plain += c;
    }
    return plain.toCaseFolded();
}

int CountFixtures(const QAbstractItemModel& model)
{
    int count = 0;
    for (int row = 0; row < model.rowCount(); ++row)
        count += model.rowCount(model.index(row, 0));
    return count;
}

} // namespace

DeviceListProxy::DeviceListProxy(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setDynamicSortFilter(false);
    setSortCaseSensitivity(Qt::CaseInsensitive);
    setRecursiveFilteringEnabled(true);
}

void DeviceListProxy::SetFilter(const QString& text)
{
    words_ = Plain(text).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    invalidateFilter();
}

int DeviceListProxy::CountShown() const
{
    return CountFixtures(*this);
}

int DeviceListProxy::CountAll() const
{
    return sourceModel() ? CountFixtures(*sourceModel()) : 0;
}

bool DeviceListProxy::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    if (words_.isEmpty())
        return true;
    if (!parent.isValid()) // A manufacturer shows with any of its fixtures.
        return false;
    const QModelIndex product = sourceModel()->index(row, DeviceModel::ProductColumn, parent);
    const QString name =
        Plain(parent.data().toString() + QLatin1Char(' ') + product.data().toString());
    return std::all_of(words_.begin(), words_.end(),
                       [&name](const QString& word) { return name.contains(word); });
}
