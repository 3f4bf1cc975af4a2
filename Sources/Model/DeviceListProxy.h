// SPDX-License-Identifier: MIT
#pragma once

#include <QSortFilterProxyModel>
#include <QStringList>

/// The library as the view shows it: sorted without regard to case, and only when asked. Qt's own
/// connections to the source report insertions and changes; slots of our own would report each of
/// them twice.
///
/// It can be narrowed to the fixtures whose manufacturer and product have all words of a text, in
/// any order and without regard to case and accents. Manufacturers without such a fixture go too.
class DeviceListProxy : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit DeviceListProxy(QObject* parent = nullptr);

    /// A text without words shows everything. After a change of the library it is to be set again:
    /// Qt misses that a hidden manufacturer has got a fixture that shows.
    void SetFilter(const QString& text);
    [[nodiscard]] bool IsFiltered() const { return !words_.isEmpty(); }
    /// How many fixtures are shown.
    [[nodiscard]] int CountShown() const;
    /// How many there are.
    [[nodiscard]] int CountAll() const;

protected:
    [[nodiscard]] bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    QStringList words_;
};
