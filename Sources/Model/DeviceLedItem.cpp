// SPDX-License-Identifier: MIT
#include "Model/DeviceLedItem.h"

#include <utility>

QString SizeText(const PixelMap& map)
{
    return QStringLiteral("%1x%2").arg(map.GetWidth()).arg(map.GetHeight());
}

DeviceLedItem::DeviceLedItem(std::wstring manufacturerName, std::wstring productName, PixelMap map,
                             std::int64_t identifier, std::int32_t channels)
    : LEDFixture(std::move(manufacturerName), std::move(productName), std::move(map), identifier,
                 channels)
{}

DeviceLedItem::DeviceLedItem(const LEDFixture& fixture)
    : LEDFixture(fixture)
{}

DeviceLedItem::DeviceLedItem(const DeviceLedItem& other) = default;

std::unique_ptr<DeviceLedItem> DeviceLedItem::FromXml(const tinyxml2::XMLElement& element,
                                                      std::int64_t identifier)
{
    std::int32_t intensity = 0;
    auto fixture = LEDFixture::FromXml(element, identifier, intensity);
    if (!fixture)
        return nullptr;
    auto item = std::make_unique<DeviceLedItem>(*fixture);
    item->intensityChannel = intensity;
    return item;
}
