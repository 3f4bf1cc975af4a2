// SPDX-License-Identifier: MIT
#include "UI/Inspector/PatchWords.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

#include <QCoreApplication>
#include <QStringList>

#include "FixtureModel/PatchOverlaps.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

namespace {

constexpr std::size_t NamesForOne = 8;
constexpr std::size_t NamesForSeveral = 4;
constexpr int LongestName = 40;

struct Words
{
    Q_DECLARE_TR_FUNCTIONS(PatchWords)
};

/// All elements of a document that have an Art-Net address.
struct Patch
{
    std::vector<PatchedElement> elements;
    std::vector<const MappedLedItem*> items;
    std::vector<std::size_t> chosen;
    bool inConflict = false;
};

Patch ReadPatch(const MappedDeviceModel& document, const ElementIds& ids)
{
    const std::unordered_set<std::int64_t> chosen(ids.begin(), ids.end());
    Patch patch;
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem* item = document.GetElement(row);
        const DMXMappingArtNet* address = item ? item->GetArtNetMapping() : nullptr;
        if (!address)
            continue;
        const bool isChosen = chosen.contains(item->uniqueID);
        if (isChosen) {
            patch.chosen.push_back(patch.items.size());
            patch.inConflict =
                patch.inConflict || document.IsUniverseInConflict(document.index(row, 0));
        }
        patch.items.push_back(item);
        patch.elements.push_back(
            {address->GetPortAddress(),
             ChannelsSent(address->GetChannel(), item->GetFixture().GetChannelCount()),
             address->GetIpconf(), isChosen});
    }
    return patch;
}

QString Occupied(const MappedLedItem& item, const PatchedElement& element)
{
    const DMXMappingArtNet& address = *item.GetArtNetMapping();
    const QString universe =
        QStringLiteral("%1:%2").arg(address.GetSubnet()).arg(address.GetUniverse());
    const auto [first, last, beyond] = element.channels;
    QString words;
    if (element.channels.AreNone())
        words = Words::tr("%1, no channels").arg(universe);
    else if (first == last)
        words = Words::tr("%1, channel %2").arg(universe).arg(first);
    else
        words = Words::tr("%1, channels %2 to %3").arg(universe).arg(first).arg(last);
    return beyond ? Words::tr("%1, reaches beyond 512").arg(words) : words;
}

/// What an operator with several elements can't see in the boxes.
QString Beyond(const Patch& patch)
{
    int beyond = 0;
    for (const std::size_t index : patch.chosen)
        beyond += patch.elements[index].channels.beyond ? 1 : 0;
    return beyond == 0 ? QString() : Words::tr("Reach beyond 512: %1").arg(beyond);
}

QString NameOf(const MappedLedItem& item)
{
    const QString name = QString::fromStdWString(item.description).simplified();
    if (name.isEmpty())
        return Words::tr("an element without description");
    return name.size() <= LongestName ? name : name.left(LongestName - 1) + QChar(0x2026);
}

QString Overlaps(const Patch& patch)
{
    const std::vector<std::size_t> overlaps = OverlapsWithChosen(patch.elements);
    const std::size_t limit = patch.chosen.size() == 1 ? NamesForOne : NamesForSeveral;
    QStringList names;
    for (std::size_t i = 0; i < std::min(limit, overlaps.size()); ++i)
        names.append(NameOf(*patch.items[overlaps[i]]));
    if (names.isEmpty())
        return {};
    const QString list = names.join(QStringLiteral(", "));
    return overlaps.size() <= limit ? Words::tr("Shares channels with: %1").arg(list)
                                    : Words::tr("Shares channels with: %1 and %2 more")
                                          .arg(list, QString::number(overlaps.size() - limit));
}

} // namespace

PatchWords WordsForPatch(const DeviceManager& manager, const ElementIds& ids)
{
    const Patch patch = ReadPatch(*manager.GetMappedDeviceModel(), ids);
    PatchWords words;
    if (patch.chosen.empty())
        return words;
    const std::size_t first = patch.chosen.front();
    words.inConflict = patch.inConflict;
    words.occupied = patch.chosen.size() == 1 ? Occupied(*patch.items[first], patch.elements[first])
                                              : Beyond(patch);
    words.overlaps = Overlaps(patch);
    return words;
}
