// SPDX-License-Identifier: MIT
#pragma once

#include <QSortFilterProxyModel>

/// The library as the view shows it: sorted without regard to case, and only when asked.
class DeviceListProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit DeviceListProxy(QObject* parent = nullptr);
};
