// SPDX-License-Identifier: MIT
#include "FixtureImport/OpenFixtureMatrix.h"

#include <algorithm>
#include <array>

#include <QJsonArray>
#include <QRegularExpression>

#include "FixtureImport/JsonKeyOrder.h"
#include "LibTools/NaturalOrder.h"

namespace FixtureImport {

namespace {

/// Above real definitions: the most groups that are read, the longest pattern, and how often the
/// constraints of one definition are tried, where a pattern counts as many.
constexpr int MaxGroups = 512;
constexpr int LongestPattern = 200;
constexpr std::size_t MostTries = 20'000'000;
constexpr std::size_t CostOfPattern = 100;

/// "=3", ">=2", "<=8", "even", "odd", "3n", "3n+1" for a position counted from 1.
bool MeetsNumber(const QString& constraint, std::int32_t position)
{
    const auto number = [&](int from) {
        return constraint.mid(from).toInt();
    };
    if (constraint == QLatin1String("even"))
        return position % 2 == 0;
    if (constraint == QLatin1String("odd"))
        return position % 2 == 1;
    if (constraint.startsWith(QLatin1String(">=")))
        return position >= number(2);
    if (constraint.startsWith(QLatin1String("<=")))
        return position <= number(2);
    if (constraint.startsWith(QLatin1Char('=')))
        return position == number(1);
    const auto n = constraint.indexOf(QLatin1Char('n'));
    const int step = n > 0 ? constraint.left(n).toInt() : 0;
    const int rest = n > 0 ? constraint.mid(n + 1).toInt() : 0;
    return step > 0 && position % step == rest % step;
}

/// What a group asks of its pixels: all of its constraints, with all words of each.
class GroupRule
{
public:
    explicit GroupRule(const QJsonObject& constraints)
    {
        for (std::size_t axis = 0; axis < axes_.size(); ++axis) {
            const QString name(QLatin1Char("xyz"[axis]));
            for (const auto& constraint : constraints[name].toArray())
                axes_[axis] += constraint.toString();
        }
        for (const auto& pattern : constraints[QLatin1String("name")].toArray()) {
            // A pattern can be made to search for years. With a limit it finds nothing instead.
            patterns_.emplace_back(QLatin1String("(*LIMIT_MATCH=1000)") +
                                   pattern.toString().left(LongestPattern));
        }
    }

    /// What a rule from these constraints costs for each pixel, before it is made.
    [[nodiscard]] static std::size_t CostOf(const QJsonObject& constraints)
    {
        const auto count = [&](const char* name) {
            return static_cast<std::size_t>(constraints[QLatin1String(name)].toArray().size());
        };
        return 1 + count("x") + count("y") + count("z") + CostOfPattern * count("name");
    }

    [[nodiscard]] bool Holds(const QString& key, std::array<std::int32_t, 3> position) const
    {
        for (std::size_t axis = 0; axis < axes_.size(); ++axis) {
            for (const QString& constraint : axes_[axis]) {
                if (!MeetsNumber(constraint, position[axis]))
                    return false;
            }
        }
        return std::ranges::all_of(patterns_, [&](const QRegularExpression& pattern) {
            return pattern.isValid() && pattern.match(key).hasMatch();
        });
    }

private:
    std::array<QStringList, 3> axes_;
    std::vector<QRegularExpression> patterns_;
};

/// The key of a pixel in a matrix that gives none: its number in a row, else its position.
QString KeyOf(std::array<std::int32_t, 3> position, std::array<std::int32_t, 3> size)
{
    QStringList along;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (size[axis] > 1)
            along += QString::number(position[axis]);
    }
    if (along.size() < 2)
        return along.isEmpty() ? QStringLiteral("1") : along.first();
    return QLatin1Char('(') + along.join(QLatin1String(", ")) + QLatin1Char(')');
}

} // namespace

OpenFixtureMatrix::OpenFixtureMatrix(const QJsonObject& matrix, const QByteArray& file)
{
    if (matrix[QLatin1String("pixelKeys")].isArray())
        ReadKeys(matrix[QLatin1String("pixelKeys")].toArray());
    else
        ReadCount(matrix[QLatin1String("pixelCount")].toArray());
    groups_ = matrix[QLatin1String("pixelGroups")].toObject();
    if (groups_.size() > MaxGroups)
        fault_ = {FaultKind::GridTooLarge, {}};
    if (!groups_.isEmpty() && !fault_) {
        groupOrder_ =
            JsonKeysInOrder(file, {QStringLiteral("matrix"), QStringLiteral("pixelGroups")});
        groupOrder_.removeDuplicates();
        const auto isUnknown = [this](const QString& key) {
            return !groups_.contains(key);
        };
        groupOrder_.erase(std::remove_if(groupOrder_.begin(), groupOrder_.end(), isUnknown),
                          groupOrder_.end());
    }
}

bool OpenFixtureMatrix::SetSize(double columns, double rows, double layers)
{
    const bool isGrid = columns >= 1 && rows >= 1 && layers >= 1;
    if (!isGrid || columns * rows * layers > MaxGridCells) {
        if (isGrid)
            fault_ = {FaultKind::GridTooLarge, {}};
        return false;
    }
    columns_ = static_cast<std::int32_t>(columns);
    rows_ = static_cast<std::int32_t>(rows);
    layers_ = static_cast<std::int32_t>(layers);
    keys_.resize(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(Rows()));
    return true;
}

void OpenFixtureMatrix::ReadCount(const QJsonArray& count)
{
    if (!SetSize(count.at(0).toDouble(), count.at(1).toDouble(), count.at(2).toDouble()))
        return;
    for (std::int32_t z = 0; z < layers_; ++z) {
        for (std::int32_t y = 0; y < rows_; ++y) {
            for (std::int32_t x = 0; x < columns_; ++x)
                AddPixel(KeyOf({x + 1, y + 1, z + 1}, {columns_, rows_, layers_}), x, y, z);
        }
    }
}

void OpenFixtureMatrix::ReadKeys(const QJsonArray& layers)
{
    int rows = 0;
    int columns = 0;
    for (const auto& layer : layers) {
        rows = std::max(rows, static_cast<int>(layer.toArray().size()));
        for (const auto& row : layer.toArray())
            columns = std::max(columns, static_cast<int>(row.toArray().size()));
    }
    if (!SetSize(columns, rows, static_cast<int>(layers.size())))
        return;
    for (std::int32_t z = 0; z < layers_; ++z) {
        const QJsonArray layer = layers[z].toArray();
        for (std::int32_t y = 0; y < layer.size(); ++y) {
            const QJsonArray row = layer[y].toArray();
            for (std::int32_t x = 0; x < row.size(); ++x) {
                if (row[x].isString())
                    AddPixel(row[x].toString(), x, y, z);
            }
        }
    }
}

void OpenFixtureMatrix::AddPixel(const QString& key, std::int32_t x, std::int32_t y, std::int32_t z)
{
    const std::int32_t cell = (z * rows_ + y) * columns_ + x;
    if (cells_.contains(key))
        return;
    cells_[key] = cell;
    keys_[static_cast<std::size_t>(cell)] = key;
}

bool OpenFixtureMatrix::Knows(const QString& key) const
{
    return cells_.contains(key) || groups_.contains(key);
}

std::shared_ptr<const std::vector<std::int32_t>> OpenFixtureMatrix::CellsOf(const QString& key)
{
    if (!Knows(key))
        return nullptr;
    auto& found = found_[key];
    if (!found) {
        const auto pixel = cells_.constFind(key);
        found = std::make_shared<const std::vector<std::int32_t>>(
            pixel != cells_.constEnd() ? std::vector{*pixel} : CellsOfGroup(groups_[key]));
    }
    return found;
}

std::vector<std::int32_t> OpenFixtureMatrix::CellsOfGroup(const QJsonValue& group)
{
    std::vector<std::int32_t> cells;
    if (group.isArray()) {
        // A group of groups would be a way into a circle: only pixels count.
        for (const auto& key : group.toArray()) {
            const auto cell = cells_.constFind(key.toString());
            if (cell != cells_.constEnd())
                cells.push_back(*cell);
        }
        std::ranges::sort(cells);
        cells.erase(std::unique(cells.begin(), cells.end()), cells.end());
        return cells;
    }
    if (!group.isObject() && group.toString() != QLatin1String("all"))
        return cells;
    groupCost_ += GroupRule::CostOf(group.toObject()) * keys_.size();
    if (groupCost_ > MostTries)
        return cells;
    const GroupRule rule(group.toObject());
    for (std::int32_t cell = 0; cell < columns_ * Rows(); ++cell) {
        const QString& key = keys_[static_cast<std::size_t>(cell)];
        const std::int32_t line = cell / columns_;
        if (!key.isNull() &&
            rule.Holds(key, {cell % columns_ + 1, line % rows_ + 1, line / rows_ + 1}))
            cells.push_back(cell);
    }
    return cells;
}

QStringList OpenFixtureMatrix::KeysFor(const QString& repeatFor)
{
    const auto known = repeated_.constFind(repeatFor);
    return known != repeated_.constEnd() ? *known
                                         : *repeated_.insert(repeatFor, FindKeysFor(repeatFor));
}

QStringList OpenFixtureMatrix::FindKeysFor(const QString& repeatFor) const
{
    const QString eachPixel = QStringLiteral("eachPixel");
    if (!repeatFor.startsWith(eachPixel))
        return {};
    const QString order = repeatFor.mid(eachPixel.size());
    if (order == QLatin1String("Group"))
        return groupOrder_;
    if (order != QLatin1String("ABC"))
        return KeysByAxes(order);
    QStringList keys = cells_.keys();
    std::sort(keys.begin(), keys.end(), IsBefore);
    return keys;
}

/// The first axis of the name is the innermost one: "XYZ" reads like a book.
QStringList OpenFixtureMatrix::KeysByAxes(const QString& axes) const
{
    const std::array<std::int32_t, 3> size{columns_, rows_, layers_};
    std::array<std::size_t, 3> order{};
    QString sorted = axes;
    std::sort(sorted.begin(), sorted.end());
    if (sorted != QLatin1String("XYZ"))
        return {};
    for (std::size_t i = 0; i < 3; ++i)
        order[i] = static_cast<std::size_t>(axes[static_cast<int>(i)].unicode() - u'X');
    QStringList keys;
    std::array<std::int32_t, 3> at{};
    for (at[order[2]] = 0; at[order[2]] < size[order[2]]; ++at[order[2]]) {
        for (at[order[1]] = 0; at[order[1]] < size[order[1]]; ++at[order[1]]) {
            for (at[order[0]] = 0; at[order[0]] < size[order[0]]; ++at[order[0]]) {
                const std::int32_t cell = (at[2] * rows_ + at[1]) * columns_ + at[0];
                const QString& key = keys_[static_cast<std::size_t>(cell)];
                if (!key.isNull())
                    keys += key;
            }
        }
    }
    return keys;
}

} // namespace FixtureImport
