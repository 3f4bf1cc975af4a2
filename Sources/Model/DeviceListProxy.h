// SPDX-License-Identifier: MIT
#pragma once

#include <QSortFilterProxyModel>

/// The library as the view shows it: sorted without regard to case, and only when asked. Qt's own
/// connections to the source report insertions and changes; slots of our own would report each of
/// them twice.
class DeviceListProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit DeviceListProxy(QObject* parent = nullptr);
};
