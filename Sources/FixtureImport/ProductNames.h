// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <unordered_map>

#include "FixtureModel/LEDFixture.h"

namespace FixtureImport {

/// The products of a library that is being filled: it knows a fixture by its product alone, whoever
/// makes it.
class ProductNames
{
public:
    enum class Outcome
    {
        Added,
        Renamed, ///< added under another product, since its own is another fixture's
        Known    ///< the same definition is there already
    };

    /// Takes a fixture in. If its product is another fixture's, it gets its manufacturer behind it,
    /// and a number when that isn't enough.
    Outcome Take(LEDFixture& fixture);

private:
    std::unordered_map<std::wstring, LEDFixture> taken_; ///< by product
};

} // namespace FixtureImport
