// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Zen {

/// A fixed table of named run-time switches. Reading takes no lock and no hashing: a reader passes
/// the key, which is a compile-time constant. The calls may be made on any thread.
class DebugVariables
{
public:
    enum class Type : std::uint8_t
    {
        None = 0,
        Int = 1,
        Float = 2,
        Bool = 3,
        Duration = 4
    };

    struct Duration
    {
        std::int32_t count = 0;
        bool operator==(const Duration&) const = default;
    };
    using Tagged = std::variant<std::int32_t, float, bool, Duration>;

    /// A variable as it is stored: its bits and their type. Type None when there is no variable.
    struct Value
    {
        std::uint32_t bits = 0;
        Type type = Type::None;

        [[nodiscard]] bool AsBool() const;
        [[nodiscard]] std::int32_t AsInt() const;
        [[nodiscard]] float AsFloat() const;
    };

    /// The key of a name: its MurmurHash3 (x86, 32 bits), always computed by the compiler. 0 is no
    /// key: it marks a free slot.
    [[nodiscard]] static consteval std::uint32_t Key(std::string_view name) { return Hash(name); }

    // At most 126 distinct names may enter the table; a further one is refused.
    void Set(std::string_view name, std::int32_t value);
    void Set(std::string_view name, float value);
    void Set(std::string_view name, bool value);
    void Set(std::string_view name, Duration value);

    [[nodiscard]] Value Get(std::uint32_t key) const;
    [[nodiscard]] bool GetBool(std::uint32_t key) const { return Get(key).AsBool(); }
    /// An absent variable gives the int 0.
    [[nodiscard]] Tagged Get(std::string_view name) const;

    /// Appends each name in use, in slot order.
    void ListNames(std::vector<std::string>& list) const;
    /// Writes a JSON-like object of name and type, or of name and value, and gives the bytes
    /// written. Ends early, with "}", where an item does not fit. 0 for a table without names or
    /// fewer than two bytes of room.
    std::size_t DumpTypes(std::span<char> out) const;
    std::size_t DumpValues(std::span<char> out) const;

    [[nodiscard]] static std::shared_ptr<DebugVariables> Global();
    static void SetGlobal(std::shared_ptr<DebugVariables> variables);

private:
    static constexpr std::size_t SlotCount = 127;
    static constexpr std::size_t NameLength = 32;

    struct Slot
    {
        std::atomic<std::uint64_t> word{0}; ///< the bits, and above them the type
        std::atomic<std::uint32_t> key{0};
    };

    [[nodiscard]] static constexpr std::uint32_t Hash(std::string_view name);
    void Store(std::string_view name, std::uint32_t bits, Type type);
    Slot* Claim(std::string_view name);
    [[nodiscard]] std::string_view NameOf(std::size_t slot) const;
    template <typename Format>
    std::size_t Dump(std::span<char> out, Format format) const;

    std::array<Slot, SlotCount> slots_;
    std::array<std::array<char, NameLength>, SlotCount> names{};
    std::size_t used_ = 0;
    mutable std::mutex mutex; ///< guards names, used_ and the dumps
};

constexpr std::uint32_t DebugVariables::Hash(std::string_view name)
{
    constexpr std::uint32_t seed = 0x38ED27D8;
    constexpr std::uint32_t c1 = 0xCC9E2D51;
    constexpr std::uint32_t c2 = 0x1B873593;
    const auto byte = [&](std::size_t i) {
        return std::uint32_t{static_cast<unsigned char>(name[i])};
    };
    const auto scramble = [](std::uint32_t k) {
        return std::rotl(k * c1, 15) * c2;
    };
    std::uint32_t h = seed;
    const std::size_t whole = name.size() / 4 * 4;
    for (std::size_t i = 0; i < whole; i += 4) {
        const std::uint32_t k = byte(i) | byte(i + 1) << 8 | byte(i + 2) << 16 | byte(i + 3) << 24;
        h = std::rotl(h ^ scramble(k), 13) * 5 + 0xE6546B64;
    }
    std::uint32_t tail = 0;
    for (std::size_t i = name.size(); i > whole; --i)
        tail = tail << 8 | byte(i - 1);
    if (name.size() > whole)
        h ^= scramble(tail);
    h ^= static_cast<std::uint32_t>(name.size());
    h = (h ^ h >> 16) * 0x85EBCA6B;
    h = (h ^ h >> 13) * 0xC2B2AE35;
    return h ^ h >> 16;
}

static_assert(DebugVariables::Key("artnetdebug") == 0x61DF7AAE);

} // namespace Zen
