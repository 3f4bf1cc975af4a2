// SPDX-License-Identifier: MIT
#pragma once

#include <QSortFilterProxyModel>

/// The library as the view shows it: sorted without regard to case, and only when asked. It hears
/// of insertions and changes in the source by Qt's own connections; slots of ours that announced
/// them would announce them twice.
class DeviceListProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit DeviceListProxy(QObject* parent = nullptr);
};
