// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QHash>
#include <QJsonObject>
#include <QStringList>

#include "FixtureImport/Definition.h"

namespace FixtureImport {

/// The matrix of an Open Fixture Library definition: named pixels in a grid of columns, rows and
/// layers, and named groups of them. Layers come one below the other in the grid of the cells,
/// since a map has two directions.
class OpenFixtureMatrix
{
public:
    /// An empty matrix, which knows no pixel.
    OpenFixtureMatrix() = default;
    /// `file` is the whole text of the definition: the order of groups stands only there.
    OpenFixtureMatrix(const QJsonObject& matrix, const QByteArray& file);

    /// Why nothing of the matrix can be used, if so.
    [[nodiscard]] const ImportFault& Fault() const { return fault_; }
    [[nodiscard]] std::int32_t Columns() const { return columns_; }
    /// Of all layers.
    [[nodiscard]] std::int32_t Rows() const { return rows_ * layers_; }

    /// Whether it is the key of a pixel or a group.
    [[nodiscard]] bool Knows(const QString& key) const;
    /// The cells of a pixel or a group, null for an unknown key. A group may have none.
    [[nodiscard]] std::shared_ptr<const std::vector<std::int32_t>> CellsOf(const QString& key);
    /// The keys that an insert's "repeatFor" names in a word: each pixel in an order of axes or of
    /// the alphabet, or each group. Empty for any other word.
    [[nodiscard]] QStringList KeysFor(const QString& repeatFor);

private:
    void ReadCount(const QJsonArray& count);
    void ReadKeys(const QJsonArray& layers);
    void AddPixel(const QString& key, std::int32_t x, std::int32_t y, std::int32_t z);
    [[nodiscard]] bool SetSize(double columns, double rows, double layers);
    [[nodiscard]] QStringList FindKeysFor(const QString& repeatFor) const;
    [[nodiscard]] QStringList KeysByAxes(const QString& axes) const;
    [[nodiscard]] std::vector<std::int32_t> CellsOfGroup(const QJsonValue& group);

    std::int32_t columns_ = 0;
    std::int32_t rows_ = 0;
    std::int32_t layers_ = 0;
    std::vector<QString> keys_;          ///< by cell, null where no pixel is
    QHash<QString, std::int32_t> cells_; ///< by key
    QJsonObject groups_;
    QStringList groupOrder_;
    QHash<QString, QStringList> repeated_; ///< what was found for each word of "repeatFor"
    QHash<QString, std::shared_ptr<const std::vector<std::int32_t>>> found_;
    std::size_t groupCost_ = 0;
    ImportFault fault_;
};

} // namespace FixtureImport
