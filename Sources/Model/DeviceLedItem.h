// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "FixtureModel/LEDFixture.h"
#include "Model/LedItem.h"

namespace tinyxml2 {
class XMLElement;
}

/// Columns and rows as the lists show them: "12x1".
[[nodiscard]] QString SizeText(const PixelMap& map);

/// A fixture as an item of a Qt model. The library's items are owned by the library's tree; each
/// placed element holds a copy.
class DeviceLedItem : public LedItem, public LEDFixture
{
public:
    DeviceLedItem(std::wstring manufacturerName, std::wstring productName, PixelMap map,
                  std::int64_t identifier, std::int32_t channels);
    explicit DeviceLedItem(const LEDFixture& fixture);
    /// A new item with the same data.
    DeviceLedItem(const DeviceLedItem& other);
    DeviceLedItem& operator=(const DeviceLedItem&) = delete;

    /// The number of the file's "intensity_channel", 0 when it had none. Kept for the file's sake:
    /// nothing reads it yet.
    std::int32_t intensityChannel = 0;

    /// Reads an <LEDFixture> element; nothing, after one line in the log, when it is rejected.
    [[nodiscard]] static std::unique_ptr<DeviceLedItem> FromXml(const tinyxml2::XMLElement& element,
                                                                std::int64_t identifier);
};
