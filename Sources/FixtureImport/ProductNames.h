// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <unordered_map>

#include "FixtureModel/LEDFixture.h"

namespace FixtureImport {

/// The name for a fixture whose own product is taken: with its manufacturer behind it, and from the
/// third attempt on a number, too. Attempt 1 is its own product.
[[nodiscard]] std::wstring ProductFor(const std::wstring& product, const std::wstring& manufacturer,
                                      int attempt);

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

    /// Takes a fixture in. If its product is another fixture's, it gets another (ProductFor).
    Outcome Take(LEDFixture& fixture);

private:
    std::unordered_map<std::wstring, LEDFixture> taken_; ///< by product
};

} // namespace FixtureImport
