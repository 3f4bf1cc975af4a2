// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

#include <QByteArray>
#include <QHash>

#include "FixtureModel/LEDFixture.h"

namespace FixtureImport {

/// The name for a fixture whose own product is taken: with its manufacturer behind it, and from the
/// third attempt on a number, too. Attempt 1 is its own product.
[[nodiscard]] std::wstring ProductFor(const std::wstring& product, const std::wstring& manufacturer,
                                      int attempt);

/// Finds free products. It remembers what it has seen on the way: thousands of fixtures of one
/// product are not compared each with each.
class ProductSearch
{
public:
    /// The fixtures that have a product: one of this import, and one of the library that it comes
    /// into. Null for none. What was taken once stays taken.
    using Holders = std::function<std::array<const LEDFixture*, 2>(const std::wstring& product)>;
    struct Place
    {
        std::wstring product;
        int attempt = 1; ///< as ProductFor counts
        /// Which of the Holders has this very fixture at the product already. Without one, the
        /// product is free, and the caller takes it.
        std::optional<std::size_t> sameOf = std::nullopt;
    };

    [[nodiscard]] Place Find(const LEDFixture& fixture, const Holders& holdersOf);

private:
    /// The attempts of one product of one manufacturer.
    struct Line
    {
        struct Seen
        {
            int attempt;
            std::size_t holder;
        };
        int next = 1;                     ///< all before it are taken
        QHash<QByteArray, Seen> fixtures; ///< by the digests of what they are on the stage
    };
    std::unordered_map<std::wstring, Line> lines_; ///< by product and manufacturer
};

/// The products of a library that is being filled: it knows a fixture by its product alone, whoever
/// makes it.
class ProductNames
{
public:
    enum class Outcome
    {
        Added,
        Renamed, ///< added under another product, since its own is another fixture's
        Known    ///< the same fixture is there already
    };

    /// Takes a fixture in. If its product is another fixture's, it gets another (ProductFor).
    Outcome Take(LEDFixture& fixture);

private:
    std::unordered_map<std::wstring, LEDFixture> taken_; ///< by product
    ProductSearch search_;
};

} // namespace FixtureImport
