// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace tinyxml2 {
class XMLDocument;
}

enum class MergerDMXSource : std::int32_t
{
    PixelWeft = 0,
    ReelCommand = 1
};

/// The settings of the universe merger: a run of universes on which received DMX and our own output
/// are merged, and the first universe on which the result is sent. Both runs are equally long.
class UniverseMerging
{
public:
    static constexpr std::int32_t MaxConsecutiveUniverses = 64;

    UniverseMerging() = default;
    /// What a document begins with: the runs don't overlap, so that the merger can be switched on.
    [[nodiscard]] static UniverseMerging OfNewDocument();
    /// A value out of its range leaves that field at its default.
    UniverseMerging(bool on, std::uint32_t fromSubnet, std::uint32_t fromUniverse,
                    std::int32_t consecutive, std::uint32_t toSubnet, std::uint32_t toUniverse,
                    MergerDMXSource source);

    [[nodiscard]] bool IsEnabled() const { return enabled; }
    [[nodiscard]] std::uint32_t GetFromStartSubnet() const { return fromStartSubnet; }
    [[nodiscard]] std::uint32_t GetFromStartUniverse() const { return fromStartUniverse; }
    [[nodiscard]] std::int32_t GetConsecutiveUniverses() const { return consecutiveUniverses; }
    [[nodiscard]] std::uint32_t GetToStartSubnet() const { return toStartSubnet; }
    [[nodiscard]] std::uint32_t GetToStartUniverse() const { return toStartUniverse; }
    [[nodiscard]] MergerDMXSource GetMergerDMXSource() const { return mergerDMXSource; }

    void SetEnabled(bool on) { enabled = on; }
    void SetMergerDMXSource(MergerDMXSource source) { mergerDMXSource = source; }
    // A value out of its range (below 16; 1 to 64 for the count) changes nothing.
    void SetFromStartSubnet(std::uint32_t value);
    void SetFromStartUniverse(std::uint32_t value);
    void SetConsecutiveUniverses(std::int32_t value);
    void SetToStartSubnet(std::uint32_t value);
    void SetToStartUniverse(std::uint32_t value);

    /// Port-Addresses, 0 to 255.
    [[nodiscard]] std::int32_t GetFromStartAddress() const;
    [[nodiscard]] std::int32_t GetToStartAddress() const;
    [[nodiscard]] bool IsInFromRange(std::int32_t portAddress) const;
    /// The address moved by the distance between the two starts.
    [[nodiscard]] std::int32_t TranslateToOutput(std::int32_t portAddress) const;
    [[nodiscard]] bool RangesOverlap() const;
    /// Whether a run goes beyond Port-Address 255, the last one that an element can have.
    [[nodiscard]] bool LeavesNet() const;

    /// The first top-level <UniverseMerging> element; nothing, without a line in the log, when
    /// there is none or one of its six numbers is missing or no number.
    [[nodiscard]] static std::optional<UniverseMerging>
    FromXml(const tinyxml2::XMLDocument& document);

    /// Adds the element at the end of the document. True when it was added.
    bool ToXml(tinyxml2::XMLDocument& document) const;

    bool operator==(const UniverseMerging&) const = default;

private:
    bool enabled = false;
    std::uint32_t fromStartSubnet = 0;
    std::uint32_t fromStartUniverse = 0;
    std::int32_t consecutiveUniverses = 1;
    std::uint32_t toStartSubnet = 0;
    std::uint32_t toStartUniverse = 0;
    MergerDMXSource mergerDMXSource = MergerDMXSource::PixelWeft;
};
