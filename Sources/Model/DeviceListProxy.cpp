// SPDX-License-Identifier: MIT
#include "Model/DeviceListProxy.h"

DeviceListProxy::DeviceListProxy(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setDynamicSortFilter(false);
    setSortCaseSensitivity(Qt::CaseInsensitive);
}
