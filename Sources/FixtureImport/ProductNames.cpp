// SPDX-License-Identifier: MIT
#include "FixtureImport/ProductNames.h"

#include <cstdint>
#include <utility>
#include <vector>

#include <QCryptographicHash>

namespace FixtureImport {

namespace {

/// The same for two fixtures that are the same on the stage, whatever they are called: an automatic
/// number of channels is the number that it gives.
QByteArray DigestOf(const LEDFixture& fixture)
{
    const PixelMap& map = fixture.pixelMap;
    std::vector<std::int32_t> numbers = {map.GetWidth(), map.GetHeight(),
                                         static_cast<std::int32_t>(map.GetType()),
                                         fixture.GetChannelCount()};
    const auto& cells = map.GetChannels();
    numbers.insert(numbers.end(), cells.begin(), cells.end());
    for (const StaticChannel& constant : fixture.staticChannels) {
        if (constant.value != StaticChannel::Unassigned)
            numbers.insert(numbers.end(), {constant.channel, constant.value});
    }
    return QCryptographicHash::hash(
        QByteArray(reinterpret_cast<const char*>(numbers.data()),
                   static_cast<int>(numbers.size() * sizeof(std::int32_t))),
        QCryptographicHash::Sha1);
}

} // namespace

std::wstring ProductFor(const std::wstring& product, const std::wstring& manufacturer, int attempt)
{
    if (attempt <= 1)
        return product;
    const std::wstring withMaker = product + L" (" + manufacturer + L")";
    return attempt == 2 ? withMaker : withMaker + L" " + std::to_wstring(attempt - 1);
}

ProductSearch::Place ProductSearch::Find(const LEDFixture& fixture, const Holders& holdersOf)
{
    const auto own = holdersOf(fixture.product);
    if (!own[0] && !own[1])
        return {fixture.product};
    Line& line = lines_[fixture.product + L'\n' + fixture.manufacturer];
    const QByteArray digest = DigestOf(fixture);
    while (true) {
        if (const auto seen = line.fixtures.constFind(digest); seen != line.fixtures.constEnd())
            return {ProductFor(fixture.product, fixture.manufacturer, seen->attempt), seen->attempt,
                    seen->holder};
        const int attempt = line.next++;
        std::wstring product = ProductFor(fixture.product, fixture.manufacturer, attempt);
        const auto holders = holdersOf(product);
        if (!holders[0] && !holders[1]) {
            line.fixtures.insert(digest, {attempt, 0});
            return {std::move(product), attempt};
        }
        // Of the two, what this import has counts.
        for (const std::size_t holder : {std::size_t{1}, std::size_t{0}}) {
            if (holders[holder] && holders[holder]->manufacturer == fixture.manufacturer)
                line.fixtures.insert(DigestOf(*holders[holder]), {attempt, holder});
        }
    }
}

ProductNames::Outcome ProductNames::Take(LEDFixture& fixture)
{
    auto place = search_.Find(fixture, [this](const std::wstring& product) {
        const auto taken = taken_.find(product);
        return std::array<const LEDFixture*, 2>{taken == taken_.end() ? nullptr : &taken->second};
    });
    fixture.product = std::move(place.product);
    if (place.sameOf)
        return Outcome::Known;
    taken_.emplace(fixture.product, fixture);
    return place.attempt == 1 ? Outcome::Added : Outcome::Renamed;
}

} // namespace FixtureImport
