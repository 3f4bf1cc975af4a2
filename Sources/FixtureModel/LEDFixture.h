// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "FixtureModel/PixelMap.h"
#include "FixtureModel/StaticChannelList.h"

/// One kind of lighting device: who makes it, how its pixels lie on its DMX channels, and which
/// other channels hold a constant. Place and address belong to
/// the elements made from it.
class LEDFixture
{
public:
    static constexpr std::int32_t MaxChannels = StaticChannel::LastChannel;
    static constexpr std::int32_t AutomaticChannelCount = -1;
    static constexpr std::uint8_t NeutralIntensity = 255;

    LEDFixture(std::wstring manufacturerName, std::wstring productName, PixelMap map,
               std::int64_t identifier, std::int32_t channels);
    LEDFixture(const LEDFixture&) = default;
    LEDFixture& operator=(const LEDFixture&) = default;
    virtual ~LEDFixture();

    std::int64_t uniqueID; ///< identity while the library stays loaded; in no file
    std::wstring manufacturer;
    std::wstring product; ///< the name by which documents refer to the fixture
    PixelMap pixelMap;
    StaticChannelList staticChannels;

    /// The stored count, or for AutomaticChannelCount the highest channel that a pixel or an entry
    /// of `staticChannels` uses.
    [[nodiscard]] std::int32_t GetChannelCount() const;
    [[nodiscard]] std::int32_t GetStoredChannelCount() const { return channelCount; }
    /// 0 to 512; anything else, AutomaticChannelCount too, is logged and changes nothing.
    void SetChannelCount(std::int32_t count);

    /// What the engine puts on the intensity slot of the types RGBL and RGBWAmber.
    [[nodiscard]] std::uint8_t GetIntensity() const { return intensity; }

    /// Adds an <LEDFixture> element at the end of `parent`. Always 0.
    int ToXml(tinyxml2::XMLElement& parent) const;

    /// Everything but the identity, from an <LEDFixture> element; the text of "intensity_channel"
    /// goes to `intensityChannel`. Nothing, after one line in the log, when the element is
    /// rejected.
    [[nodiscard]] static std::optional<LEDFixture> FromXml(const tinyxml2::XMLElement& element,
                                                           std::int64_t identifier,
                                                           std::int32_t& intensityChannel);

    /// Whether all that a file keeps of the two is the same; free channels count in no order.
    [[nodiscard]] bool HasDefinitionOf(const LEDFixture& other) const;
    /// Documents know a fixture by its product and its pixels alone.
    bool operator==(const LEDFixture& other) const
    {
        return product == other.product && pixelMap == other.pixelMap;
    }

private:
    std::int32_t channelCount;
    std::uint8_t intensity = NeutralIntensity;
};
