// SPDX-License-Identifier: MIT
#include "LEDEngine/ChannelTrace.h"

#include <algorithm>
#include <span>

#include "LEDEngine/LEDEngine.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Model/PatchTable.h"
#include "Platform/Clock.h"
#include "Platform/Text.h"

namespace {

// ---- The picture -------------------------------------------------------------------------------

PixelColour ColourOf(const ZenBitmap& bitmap, ElementSampling::PicturePixel pixel)
{
    const std::uint8_t* bytes =
        bitmap.data + static_cast<std::ptrdiff_t>(pixel.y) * bitmap.bytesPerRow +
        static_cast<std::ptrdiff_t>(pixel.x) * ZenBitmap::BytesPerPixel(bitmap.format);
    return {bytes[2], bytes[1], bytes[0]};
}

/// How many pixels of the map begin on lower channels, and one for the pixel itself.
std::int32_t PixelNumber(const LEDFixture& fixture, std::int32_t cell)
{
    const PixelMap& map = fixture.pixelMap;
    const std::int32_t channel = map.GetChannels()[static_cast<std::size_t>(cell)];
    return 1 + static_cast<std::int32_t>(
                   std::ranges::count_if(map.GetChannels(), [&](std::int32_t other) {
                       return other < channel && IsPixelConverted(other, map.GetChannelsPerPixel(),
                                                                  SentChannelCount(fixture));
                   }));
}

void AddPixel(ChannelTrace& trace, LEDEngine& engine, const MappedDeviceModel& document,
              const MappedLedItem& element, std::int32_t cell)
{
    const PixelMap& map = element.GetFixture().pixelMap;
    trace.use = ChannelUse::Kind::Pixel;
    trace.pixel = PixelNumber(element.GetFixture(), cell);
    PixelColour expected; // outside of the canvas is black
    const ZenBitmap* picture = document.GetTestBitmap();
    if (picture && element.GetVideoMapping()) {
        const auto place = ElementSampling::SampleOf(
            *element.GetVideoMapping(), {document.GetCanvasWidth(), document.GetCanvasHeight()},
            ElementSampling::ShapeOf(*picture), map.GetWidth(), map.GetHeight(), cell);
        if (place) {
            expected = ColourOf(*picture, *place);
            trace.sample = {*place, expected};
        }
    }
    const ZenBitmap* sampled = engine.FindElementBitmap(element);
    if (!sampled || sampled->width != map.GetWidth() || sampled->height != map.GetHeight())
        return;
    const PixelColour shown = ColourOf(*sampled, {cell % map.GetWidth(), cell / map.GetWidth()});
    if (shown != expected)
        trace.shown = shown;
}

// ---- The wire ----------------------------------------------------------------------------------

const DMXUniverse* FindUniverse(const ArtNetUniverses& universes, const PatchTarget& target)
{
    if (target.node == AutoNode) {
        const auto found = universes.Broadcast().find(target.portAddress);
        return found == universes.Broadcast().end() ? nullptr : &found->second;
    }
    const auto found = universes.Unicast().find(
        ArtNetUniverses::UnicastKey(NodeAddress(target.node), target.portAddress));
    return found == universes.Unicast().end() ? nullptr : &found->second;
}

void AddValues(ChannelTrace& trace, const ArtNetOutput& output)
{
    const DMXUniverse* universe = FindUniverse(output.GetUniverses(), trace.target);
    if (!universe || trace.firstChannel < 1)
        return;
    for (std::int32_t i = 0; i < trace.channels; ++i) {
        const auto index = static_cast<std::size_t>(trace.firstChannel - 1 + i);
        if (index < universe->channels.size())
            trace.values.push_back({{}, universe->channels[index]});
    }
}

void NameValues(ChannelTrace& trace, PixelMapType type, std::int32_t firstComponent)
{
    for (ChannelTrace::Value& value : trace.values)
        value.component = PixelComponentName(type, firstComponent++);
}

ChannelTrace::Receiver ReceiverAt(const ArtNetOutput& output, const std::string& address)
{
    const auto node = std::ranges::find(output.GetNodes(), address, &ArtNetNodeInfo::Ip);
    return {node == output.GetNodes().end() ? std::string() : std::string(node->Name()), address};
}

void AddRoute(ChannelTrace& trace, const ArtNetOutput& output, const MappedDeviceModel& document)
{
    trace.route =
        RouteOf(output, document.IsAutoUnicast(), trace.target.portAddress, trace.target.node);
    for (const std::string& address : trace.route.nodes)
        trace.receivers.push_back(ReceiverAt(output, address));
    if (const std::int64_t last = output.GetLastFrameTime(); last != 0)
        trace.age = Platform::MonotonicNanoseconds() - last;
}

void AddSender(ChannelTrace& trace, const ArtNetOutput& output)
{
    const UniverseMerging& merging = output.GetMerging();
    const std::int32_t own =
        trace.target.portAddress - merging.GetToStartAddress() + merging.GetFromStartAddress();
    for (const ArtNetReceived& received : output.GetReceived()) {
        if (trace.target.node == AutoNode && merging.IsInFromRange(own) &&
            received.portAddress == own)
            trace.sender = received.sender;
    }
}

/// What is known of an element without regard to its pixels.
void AddElement(ChannelTrace& trace, const MappedDeviceModel& document,
                const MappedLedItem& element)
{
    trace.element = element.description;
    const DMXMappingArtNet& address = *element.GetArtNetMapping();
    if (IsMerged(address, document.GetMerging()))
        trace.patched = address.GetPortAddress();
}

} // namespace

ChannelTrace TraceChannel(LEDEngine& engine, const MappedDeviceModel& document,
                          const PatchUniverse& universe, std::int32_t channel)
{
    const ArtNetOutput& output = engine.GetOutput();
    ChannelTrace trace;
    trace.target = universe.target;
    trace.firstChannel = channel;
    AddValues(trace, output);
    AddRoute(trace, output, document);
    const ChannelOwner owner =
        channel >= 1 && channel <= 512
            ? OwnersOf(universe, document)[static_cast<std::size_t>(channel - 1)]
            : ChannelOwner();
    const MappedLedItem* element =
        owner.span < 0
            ? nullptr
            : document.GetElement(universe.spans[static_cast<std::size_t>(owner.span)].row);
    if (!element || !element->GetArtNetMapping()) {
        AddSender(trace, output);
        return trace;
    }
    AddElement(trace, document, *element);
    trace.use = owner.use.kind;
    trace.shared = owner.shared;
    trace.fixtureChannel = owner.fixtureChannel;
    if (owner.use.kind == ChannelUse::Kind::Pixel) {
        AddPixel(trace, engine, document, *element, owner.use.cell);
        NameValues(trace, element->GetFixture().pixelMap.GetType(), owner.use.component);
    }
    return trace;
}

namespace {

/// Who writes the channel of an element, when others write it, too.
void AddOthers(ChannelTrace& trace, const MappedDeviceModel& document, std::int64_t element)
{
    const PatchTable table = PatchTableOf(document);
    const auto universe = std::ranges::find(table, trace.target, &PatchUniverse::target);
    if (universe == table.end() || trace.firstChannel < 1)
        return;
    const ChannelOwners owners = OwnersOf(*universe, document);
    for (std::int32_t i = 0; i < trace.channels && trace.firstChannel + i <= 512; ++i) {
        const ChannelOwner& owner = owners[static_cast<std::size_t>(trace.firstChannel - 1 + i)];
        if (owner.span < 0)
            continue;
        const PatchSpan& span = universe->spans[static_cast<std::size_t>(owner.span)];
        trace.shared = trace.shared || owner.shared;
        if (span.element != element)
            trace.winner = document.GetElement(span.row)->description;
    }
}

} // namespace

std::optional<ChannelTrace> TracePixel(LEDEngine& engine, const MappedDeviceModel& document,
                                       std::int64_t elementId, std::int32_t cell)
{
    const MappedLedItem* element = document.GetItemByUniqueID(elementId);
    const DMXMappingArtNet* address = element ? element->GetArtNetMapping() : nullptr;
    if (!address)
        return std::nullopt;
    const LEDFixture& fixture = element->GetFixture();
    const PixelMap& map = fixture.pixelMap;
    const auto& cells = map.GetChannels();
    if (cell < 0 || static_cast<std::size_t>(cell) >= cells.size() || !IsConverted(fixture))
        return std::nullopt;
    const std::int32_t start = cells[static_cast<std::size_t>(cell)];
    if (!IsPixelConverted(start, map.GetChannelsPerPixel(), SentChannelCount(fixture)))
        return std::nullopt;
    ChannelTrace trace;
    AddElement(trace, document, *element);
    AddPixel(trace, engine, document, *element, cell);
    trace.fixtureChannel = start;
    trace.target = TargetOf(*address, document.GetMerging());
    trace.firstChannel = address->GetChannel() + start - 1;
    trace.channels = map.GetChannelsPerPixel();
    AddValues(trace, engine.GetOutput());
    NameValues(trace, map.GetType(), 0);
    AddRoute(trace, engine.GetOutput(), document);
    AddOthers(trace, document, elementId);
    return trace;
}
