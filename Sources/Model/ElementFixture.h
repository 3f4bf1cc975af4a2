// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "FixtureModel/LEDFixture.h"

/// The fixture of an element: its own copy of the definition, with the library's number.
struct ElementFixture
{
    std::int64_t uniqueID = 0; ///< of the element
    LEDFixture fixture;

    bool operator==(const ElementFixture& other) const
    {
        return uniqueID == other.uniqueID && fixture.uniqueID == other.fixture.uniqueID &&
               fixture.HasDefinitionOf(other.fixture);
    }
};
