// SPDX-License-Identifier: MIT
#include "FixtureImport/ProductNames.h"

namespace FixtureImport {

std::wstring ProductFor(const std::wstring& product, const std::wstring& manufacturer, int attempt)
{
    if (attempt <= 1)
        return product;
    const std::wstring withMaker = product + L" (" + manufacturer + L")";
    return attempt == 2 ? withMaker : withMaker + L" " + std::to_wstring(attempt - 1);
}

ProductNames::Outcome ProductNames::Take(LEDFixture& fixture)
{
    const std::wstring wanted = fixture.product;
    for (int attempt = 1;; ++attempt) {
        fixture.product = ProductFor(wanted, fixture.manufacturer, attempt);
        const auto [taken, isFree] = taken_.try_emplace(fixture.product, fixture);
        if (isFree)
            return attempt == 1 ? Outcome::Added : Outcome::Renamed;
        if (taken->second.HasDefinitionOf(fixture))
            return Outcome::Known;
    }
}

} // namespace FixtureImport
