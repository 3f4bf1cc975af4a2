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

template <class Part>
std::unique_ptr<Part> ReadPart(const tinyxml2::XMLElement& element, const char* name,
                               const char* missing)
{
    const auto* part = element.FirstChildElement(name);
    if (part)
        return Part::FromXml(*part);
    ZEN_LOG_ERROR("%s", missing);
    return nullptr;
}

} // namespace

MappedLedItem::MappedLedItem(std::wstring name, const DeviceLedItem& fixture,
                             std::unique_ptr<VideoMapping> video, const DMXMapping* dmx)
    : description(std::move(name))
    , fixture_(fixture)
    , videoMapping_(std::move(video))
    , dmxMapping_(dmx ? dmx->Clone() : nullptr)
    , revision_(NextRevision())
    , patchRevision_(revision_)
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

void MappedLedItem::CountPatchChange()
{
    CountChange();
    patchRevision_ = revision_;
}

DeviceLedItem& MappedLedItem::EditFixture()
{
    CountPatchChange();
    return fixture_;
}

VideoMapping* MappedLedItem::EditVideoMapping()
{
    CountChange();
    return videoMapping_.get();
}

DMXMappingArtNet* MappedLedItem::EditArtNetMapping()
{
    CountPatchChange();
    return dynamic_cast<DMXMappingArtNet*>(dmxMapping_.get());
}

void MappedLedItem::SetArtNetMapping(const std::optional<DMXMappingArtNet>& address)
{
    CountPatchChange();
    dmxMapping_ = address ? address->Clone() : nullptr;
}

std::unique_ptr<MappedLedItem> MappedLedItem::FromXml(const tinyxml2::XMLElement& element,
                                                      const DeviceModel& library,
                                                      ElementFault& fault)
{
    auto name = XmlText::Attribute(element, "description");
    if (!name) {
        ZEN_LOG_ERROR("Element description is not defined");
        fault = ElementFault::NoDescription;
        return nullptr;
    }
    const auto product = XmlText::Attribute(element, "fixture");
    if (!product) {
        ZEN_LOG_ERROR("Element fixture is not defined");
        fault = ElementFault::NoFixture;
        return nullptr;
    }
    const DeviceLedItem* fixture = library.GetLEDFixtureByProduct(*product);
    if (!fixture) {
        ZEN_LOG_ERROR("Element fixture not found in the library, fixture name: %ls",
                      product->c_str());
        fault = ElementFault::UnknownFixture;
        return nullptr;
    }
    auto video = ReadPart<VideoMapping>(element, "VideoMapping", "Video mapping node not found");
    if (!video) {
        fault = ElementFault::Place;
        return nullptr;
    }
    const auto dmx = ReadPart<DMXMapping>(element, "DMXMapping", "DMX mapping node not found");
    if (!dmx) {
        fault = ElementFault::Address;
        return nullptr;
    }
    fault = ElementFault::None;
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
