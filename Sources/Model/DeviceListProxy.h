// SPDX-License-Identifier: MIT
#pragma once

#include <QSortFilterProxyModel>
#include <QStringList>

/// The library as the view shows it, always sorted: the fixtures of each manufacturer by a column,
/// with numbers by their value, and the manufacturers by their names, from A on if the column is
/// another one.
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
    [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    QStringList words_;
};
