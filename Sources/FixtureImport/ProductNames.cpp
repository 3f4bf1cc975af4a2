// SPDX-License-Identifier: MIT
#include "FixtureImport/ProductNames.h"

namespace FixtureImport {

ProductNames::Outcome ProductNames::Take(LEDFixture& fixture)
{
    const std::wstring wanted = fixture.product;
    const std::wstring withMaker = wanted + L" (" + fixture.manufacturer + L")";
    for (int attempt = 1;; ++attempt) {
        if (attempt == 2)
            fixture.product = withMaker;
        else if (attempt > 2)
            fixture.product = withMaker + L" " + std::to_wstring(attempt - 1);
        const auto [taken, isFree] = taken_.try_emplace(fixture.product, fixture);
        if (isFree)
            return attempt == 1 ? Outcome::Added : Outcome::Renamed;
        if (taken->second.HasDefinitionOf(fixture))
            return Outcome::Known;
    }
}

} // namespace FixtureImport
