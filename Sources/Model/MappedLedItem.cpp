// SPDX-License-Identifier: MIT
#include "Model/MappedLedItem.h"

#include <utility>

#include "Log/Log.h"
#include "Model/DeviceModel.h"
#include "XmlText/XmlText.h"

namespace {

/// Elements live on the main thread.
std::uint64_t NextRevision()
{
    static std::uint64_t last = 0;
    return ++last;
}

} // namespace

MappedLedItem::MappedLedItem(std::wstring name, const DeviceLedItem& fixture,
                             std::unique_ptr<VideoMapping> video, const DMXMapping* dmx)
    : description(std::move(name))
    , fixture_(fixture)
    , videoMapping_(std::move(video))
    , dmxMapping_(dmx ? dmx->Clone() : nullptr)
    , revision_(NextRevision())
{}

MappedLedItem::~MappedLedItem() = default;

const DMXMappingArtNet* MappedLedItem::GetArtNetMapping() const
{
    return dynamic_cast<const DMXMappingArtNet*>(dmxMapping_.get());
}

void MappedLedItem::CountChange()
{
    revision_ = NextRevision();
    if (documentRevision_)
        ++*documentRevision_;
}

DeviceLedItem& MappedLedItem::EditFixture()
{
    CountChange();
    return fixture_;
}

VideoMapping* MappedLedItem::EditVideoMapping()
{
    CountChange();
    return videoMapping_.get();
}

DMXMappingArtNet* MappedLedItem::EditArtNetMapping()
{
    CountChange();
    return dynamic_cast<DMXMappingArtNet*>(dmxMapping_.get());
}

void MappedLedItem::SetArtNetMapping(const std::optional<DMXMappingArtNet>& address)
{
    CountChange();
    dmxMapping_ = address ? address->Clone() : nullptr;
}

std::unique_ptr<MappedLedItem> MappedLedItem::FromXml(const tinyxml2::XMLElement& element,
                                                      const DeviceModel& library)
{
    auto name = XmlText::Attribute(element, "description");
    if (!name) {
        ZEN_LOG_ERROR("Element description is not defined");
        return nullptr;
    }
    const auto product = XmlText::Attribute(element, "fixture");
    if (!product) {
        ZEN_LOG_ERROR("Element fixture is not defined");
        return nullptr;
    }
    const DeviceLedItem* fixture = library.GetLEDFixtureByProduct(*product);
    if (!fixture) {
        ZEN_LOG_ERROR("Element fixture not found in the library, fixture name: %ls",
                      product->c_str());
        return nullptr;
    }
    const auto* videoElement = element.FirstChildElement("VideoMapping");
    if (!videoElement) {
        ZEN_LOG_ERROR("Video mapping node not found");
        return nullptr;
    }
    auto video = VideoMapping::FromXml(*videoElement);
    if (!video)
        return nullptr;
    const auto* dmxElement = element.FirstChildElement("DMXMapping");
    if (!dmxElement) {
        ZEN_LOG_ERROR("DMX mapping node not found");
        return nullptr;
    }
    const auto dmx = DMXMapping::FromXml(*dmxElement);
    if (!dmx)
        return nullptr;
    return std::make_unique<MappedLedItem>(std::move(*name), *fixture, std::move(video), dmx.get());
}

int MappedLedItem::WriteElement(tinyxml2::XMLElement& parent) const
{
    auto& element = XmlText::AddElement(parent, "Element");
    XmlText::SetAttribute(element, "description", description);
    XmlText::SetAttribute(element, "fixture", fixture_.product);
    if (videoMapping_)
        videoMapping_->ToXml(element);
    else
        ZEN_LOG_INFO("MappedLedItem has no videoMapping!");
    if (dmxMapping_)
        dmxMapping_->ToXml(element);
    else
        ZEN_LOG_INFO("MappedLedItem has no dmxMapping!");
    return 0;
}
