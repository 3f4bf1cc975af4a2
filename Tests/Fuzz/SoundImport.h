// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>

#include "FixtureImport/Conversion.h"
#include "Fuzz/Fuzz.h"
#include "XmlText/XmlText.h"

/// What holds of every import: a mode has a fixture or a fault. A fixture's pixels lie on its
/// channels, none on another, each channel has a pixel, a constant or is free, and a library gives
/// the fixture back as it is.
inline void RequireSoundImport(const FixtureImport::Definition& definition)
{
    for (const FixtureImport::ImportedMode& mode : FixtureImport::Convert(definition).modes) {
        Require(mode.fixture.has_value() != static_cast<bool>(mode.fault));
        Require(!mode.fault || !InWords(mode.fault).isEmpty());
        if (!mode.fixture)
            continue;
        const LEDFixture& fixture = *mode.fixture;
        const PixelMap& map = fixture.pixelMap;
        const auto count = static_cast<std::size_t>(fixture.GetChannelCount());
        const auto pixels = std::ranges::count_if(map.GetChannels(), [](auto c) { return c != 0; });
        const auto covered = map.GetCoveredChannels().count();
        Require(count <= 512 && count == mode.channels.size() && pixels > 0);
        Require(static_cast<std::size_t>(map.GetHighestChannel()) <= count);
        Require(covered == static_cast<std::size_t>(pixels * map.GetChannelsPerPixel()));
        Require(covered + fixture.staticChannels.size() == count);

        XmlText::Document document;
        fixture.ToXml(XmlText::AddElement(document, "L"));
        XmlText::Document again;
        Require(XmlText::Parse(XmlText::Decode(XmlText::Encode(XmlText::Print(document))), again));
        std::int32_t intensity = 0;
        const auto read =
            LEDFixture::FromXml(*again.FirstChildElement()->FirstChildElement(), 0, intensity);
        Require(read && read->HasDefinitionOf(fixture));
        Require(read->staticChannels == fixture.staticChannels);
    }
}
