// SPDX-License-Identifier: MIT
#include "LEDEngine/FramePlan.h"

#include <algorithm>
#include <utility>

#include "FixtureModel/ChannelUse.h"
#include "Log/Log.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"

namespace {

/// The most pixels of a document. 32,768 universes of 170 pixels are 5.6 million; a document with
/// more than this is broken or hostile.
constexpr std::size_t MaxPixels = 16U << 20U;

/// An element with so many pixels begins a run of its own, so that one scattered fixture doesn't
/// make the packed ones after it scattered too.
constexpr std::size_t PixelsForOwnRun = 16;

/// A packed run shorter than this becomes a scattered one when the next pixel doesn't continue it:
/// many short runs would cost more than they save.
constexpr std::uint32_t ShortRun = 8;

std::uint32_t RoomFor(const PixelMap& map, std::uint32_t valueCount)
{
    const std::int32_t n = map.GetChannelsPerPixel();
    std::uint32_t room = valueCount;
    for (const std::int32_t cell : map.GetChannels()) {
        if (IsPixelConverted(cell, n, static_cast<std::int32_t>(valueCount)))
            room = std::max(room, static_cast<std::uint32_t>(cell - 1 + n));
    }
    return room;
}

} // namespace

bool FramePlan::Build(const MappedDeviceModel& model)
{
    Clear();
    const int rows = model.rowCount();
    elements_.reserve(static_cast<std::size_t>(rows));
    for (int row = 0; row < rows; ++row) {
        const MappedLedItem* item = model.GetElement(row);
        if (!item)
            ZEN_LOG_ERROR("CreateElementBitmap, referenced element has no fixture!");
        if (!item || !Place(*item)) {
            ZEN_LOG_ERROR("CreateElementBitmap returned nullptr");
            return false;
        }
    }
    FollowEdits(model);
    return true;
}

void FramePlan::Clear()
{
    elements_.clear();
    pixels_.clear();
    offsets_.clear();
    values_.clear();
    types_.clear();
    layoutValid_ = false;
    offsetsValid_ = false;
}

bool FramePlan::Place(const MappedLedItem& item)
{
    const PixelMap& map = item.GetFixture().pixelMap;
    const std::size_t pixels =
        static_cast<std::size_t>(map.GetWidth()) * static_cast<std::size_t>(map.GetHeight());
    if (offsets_.size() + pixels > MaxPixels)
        return false;
    Element element;
    element.columns = map.GetWidth();
    element.rows = map.GetHeight();
    element.firstPixel = static_cast<std::uint32_t>(offsets_.size());
    element.firstValue = static_cast<std::uint32_t>(values_.size());
    element.valueCount = static_cast<std::uint32_t>(SentChannelCount(item.GetFixture()));
    element.valueRoom = RoomFor(map, element.valueCount);
    offsets_.resize(offsets_.size() + pixels, ElementSampling::OutsideCanvas);
    pixels_.resize(offsets_.size() * 4);
    values_.resize(values_.size() + element.valueRoom);
    types_.resize(values_.size());
    elements_.push_back(element);
    return true;
}

void FramePlan::FollowEdits(const MappedDeviceModel& model)
{
    if (model.GetRevision() != modelRevision_ || !layoutValid_) {
        for (std::size_t row = 0; row < elements_.size(); ++row) {
            Element& element = elements_[row];
            const MappedLedItem* item = model.GetElement(static_cast<int>(row));
            if (!item || item->GetRevision() == element.revision)
                continue;
            element.revision = item->GetRevision();
            // A place decides where an element is sampled, not what its channels are.
            if (std::exchange(element.patchRevision, item->GetPatchRevision()) !=
                item->GetPatchRevision())
                layoutValid_ = false;
            const VideoMapping* mapping = item->GetVideoMapping();
            if (mapping && !(element.offsetsValid && *mapping == element.mapping)) {
                element.mapping = *mapping;
                element.offsetsValid = false;
                offsetsValid_ = false;
            }
        }
        modelRevision_ = model.GetRevision();
    }
    if (layoutValid_ && copiesMerging_ == model.GetMerging())
        return;
    MakeRuns(model);
    MakeCopies(model, model.GetMerging());
    layoutValid_ = true;
}

// ---- Sampling ----------------------------------------------------------------------------------

std::span<std::int32_t> FramePlan::OffsetsOf(const Element& element)
{
    const auto count =
        static_cast<std::size_t>(element.columns) * static_cast<std::size_t>(element.rows);
    return std::span(offsets_).subspan(element.firstPixel, count);
}

void FramePlan::UpdateOffsets(const MappedDeviceModel& model)
{
    const ElementSampling::CanvasSize canvas{model.GetCanvasWidth(), model.GetCanvasHeight()};
    const bool all = canvas != canvas_;
    canvas_ = canvas;
    if (offsetsValid_ && !all)
        return;
    for (std::size_t row = 0; row < elements_.size(); ++row) {
        Element& element = elements_[row];
        const MappedLedItem* item = model.GetElement(static_cast<int>(row));
        if (!item || !item->GetVideoMapping() || (element.offsetsValid && !all))
            continue;
        ElementSampling::ComputeOffsets(element.mapping, canvas_, shape_, element.columns,
                                        element.rows, OffsetsOf(element));
        element.offsetsValid = true;
    }
    offsetsValid_ = true;
}

void FramePlan::SampleAll(const MappedDeviceModel& model, const ZenBitmap& source)
{
    FollowEdits(model);
    const auto shape = ElementSampling::ShapeOf(source);
    if (shape != shape_) {
        shape_ = shape;
        offsetsValid_ = false;
        for (Element& element : elements_)
            element.offsetsValid = false;
    }
    UpdateOffsets(model);
    ElementSampling::CopyPixels(source, offsets_, pixels_.data());
}

void FramePlan::SampleOne(const MappedDeviceModel& model, std::size_t row, const ZenBitmap& source)
{
    const Element& element = elements_[row];
    const MappedLedItem* item = model.GetElement(static_cast<int>(row));
    if (!item || !item->GetVideoMapping())
        return;
    singleOffsets_.resize(OffsetsOf(element).size());
    ElementSampling::ComputeOffsets(
        *item->GetVideoMapping(), {model.GetCanvasWidth(), model.GetCanvasHeight()},
        ElementSampling::ShapeOf(source), element.columns, element.rows, singleOffsets_);
    ElementSampling::CopyPixels(source, singleOffsets_, PixelsOf(row));
}

void FramePlan::Light(std::size_t row, const IdentifyLight& light, std::int64_t now)
{
    if (light.othersDark)
        std::ranges::fill(pixels_, std::uint8_t{0});
    const Element& element = elements_[row];
    PaintLight(light, now, element.ends,
               std::span(pixels_).subspan(std::size_t{element.firstPixel} * 4,
                                          OffsetsOf(element).size() * 4));
}

std::uint8_t* FramePlan::PixelsOf(std::size_t row)
{
    return pixels_.data() + std::size_t{elements_[row].firstPixel} * 4;
}

// ---- Conversion --------------------------------------------------------------------------------

void FramePlan::MakeRuns(const MappedDeviceModel& model)
{
    runs_.clear();
    slots_.clear();
    coveredConstants_.clear();
    tooLarge_.clear();
    std::ranges::fill(values_, std::uint8_t{0});
    std::ranges::fill(types_, ChannelType::Pixel);
    for (std::size_t row = 0; row < elements_.size(); ++row) {
        Element& element = elements_[row];
        const MappedLedItem* item = model.GetElement(static_cast<int>(row));
        if (!item)
            continue;
        if (!IsConverted(item->GetFixture())) {
            tooLarge_.push_back(row);
            continue;
        }
        AddPixels(element, *item);
        AddConstants(element, *item);
    }
}

void FramePlan::MakeRoom(Element& element, std::uint32_t room)
{
    if (room <= element.valueRoom)
        return;
    const std::size_t end = values_.size();
    values_.resize(end + room);
    types_.resize(end + room);
    element.firstValue = static_cast<std::uint32_t>(end);
    element.valueRoom = room;
}

void FramePlan::AddPixels(Element& element, const MappedLedItem& item)
{
    underPixel_.reset();
    element.ends = {};
    const PixelMap& map = item.GetFixture().pixelMap;
    // A map that was edited since the last Build may reach further than it did then.
    MakeRoom(element, RoomFor(map, element.valueCount));
    const std::int32_t n = map.GetChannelsPerPixel();
    const auto& cells = map.GetChannels();
    // The blocks are those of the last Build; a map that was edited since may have another size.
    const std::size_t count = std::min(cells.size(), OffsetsOf(element).size());
    if (count >= PixelsForOwnRun)
        runs_.push_back({.type = map.GetType(),
                         .intensity = item.GetFixture().GetIntensity(),
                         .first = {},
                         .firstSlot = 0});
    for (std::size_t cell = 0; cell < count; ++cell) {
        const std::int32_t channel = cells[cell];
        if (!IsPixelConverted(channel, n, static_cast<std::int32_t>(element.valueCount)))
            continue;
        AddSlot(map.GetType(), item.GetFixture().GetIntensity(),
                {element.firstPixel + static_cast<std::uint32_t>(cell),
                 element.firstValue + static_cast<std::uint32_t>(channel - 1)});
        for (std::int32_t i = 0; i < n; ++i)
            underPixel_.set(static_cast<std::size_t>(channel - 1 + i));
        element.ends.Take(cell, channel);
    }
}

void FramePlan::AddSlot(PixelMapType type, std::uint8_t intensity, PixelSlot slot)
{
    const bool same =
        !runs_.empty() && runs_.back().type == type && runs_.back().intensity == intensity;
    if (same && runs_.back().packed) {
        PixelRun& run = runs_.back();
        const auto n = static_cast<std::uint32_t>(ChannelsPerPixel(type));
        if (run.count == 0)
            run.first = slot;
        if (run.first.pixel + run.count == slot.pixel &&
            run.first.channel + run.count * n == slot.channel) {
            ++run.count;
            return;
        }
        if (run.count < ShortRun) {
            run.packed = false;
            run.firstSlot = static_cast<std::uint32_t>(slots_.size());
            for (std::uint32_t i = 0; i < run.count; ++i)
                slots_.push_back({run.first.pixel + i, run.first.channel + i * n});
        }
    }
    if (same && !runs_.back().packed) {
        slots_.push_back(slot);
        ++runs_.back().count;
        return;
    }
    runs_.push_back(
        {.type = type, .intensity = intensity, .count = 1, .first = slot, .firstSlot = 0});
}

void FramePlan::AddConstants(const Element& element, const MappedLedItem& item)
{
    for (const StaticChannel& entry : item.GetFixture().staticChannels) {
        if (entry.channel < 1 || static_cast<std::uint32_t>(entry.channel) > element.valueCount)
            continue;
        const auto channel = static_cast<std::uint32_t>(entry.channel - 1);
        const std::uint32_t index = element.firstValue + channel;
        const bool free = entry.value < 0;
        const auto value = static_cast<std::uint8_t>(free ? 0 : entry.value);
        values_[index] = value;
        types_[index] = free ? ChannelType::Free : ChannelType::Constant;
        if (underPixel_.test(channel))
            coveredConstants_.emplace_back(index, value);
    }
}

void FramePlan::Convert()
{
    for (std::size_t i = 0; i < tooLarge_.size(); ++i)
        ZEN_LOG_ERROR("Ridiculous values for bitmap size");
    for (const PixelRun& run : runs_)
        ConvertRun(run, slots_, pixels_.data(), values_.data());
    for (const auto& [index, value] : coveredConstants_)
        values_[index] = value;
}

// ---- Universes ---------------------------------------------------------------------------------

void FramePlan::MakeCopies(const MappedDeviceModel& model, const UniverseMerging& merging)
{
    std::vector<std::pair<PatchTarget, ChannelCopy>> wanted;
    wanted.reserve(elements_.size());
    for (std::size_t row = 0; row < elements_.size(); ++row) {
        const MappedLedItem* item = model.GetElement(static_cast<int>(row));
        const DMXMappingArtNet* mapping = item ? item->GetArtNetMapping() : nullptr;
        if (!mapping)
            continue;
        wanted.push_back({TargetOf(*mapping, merging),
                          {.firstValue = elements_[row].firstValue,
                           .count = elements_[row].valueCount,
                           .target = 0,
                           .firstChannel = mapping->GetChannel(),
                           .blend = IsMerged(*mapping, merging)}});
    }

    // Universe by universe, and within one the rows in their order.
    std::ranges::stable_sort(wanted, {}, &std::pair<PatchTarget, ChannelCopy>::first);
    targets_.clear();
    copies_.clear();
    for (auto& [target, copy] : wanted) {
        if (targets_.empty() || targets_.back() != target)
            targets_.push_back(target);
        copy.target = static_cast<std::uint32_t>(targets_.size() - 1);
        ChannelCopy* last = copies_.empty() ? nullptr : &copies_.back();
        if (last && Continues(*last, copy))
            last->count += copy.count;
        else
            copies_.push_back(copy);
    }
    copiesMerging_ = merging;
}

bool FramePlan::Continues(const ChannelCopy& last, const ChannelCopy& next)
{
    return !last.blend && !next.blend && last.target == next.target && last.firstChannel >= 1 &&
           next.firstChannel <= LEDFixture::MaxChannels &&
           last.firstValue + last.count == next.firstValue &&
           std::int64_t{last.firstChannel} + last.count == next.firstChannel;
}

void FramePlan::Assemble(ArtNetOutput& output) const
{
    // In sorted order, so that each universe is added at the end of its table.
    auto copy = copies_.begin();
    for (std::uint32_t i = 0; i < targets_.size(); ++i) {
        DMXUniverse& universe = output.GetUniverse(targets_[i].portAddress, targets_[i].node);
        for (; copy != copies_.end() && copy->target == i; ++copy) {
            const auto part = [&copy](const auto& all) {
                return std::span(all).subspan(copy->firstValue, copy->count);
            };
            if (copy->blend)
                BlendChannels(universe, copy->firstChannel, {part(values_), part(types_)});
            else
                CopyChannels(universe, copy->firstChannel, part(values_));
        }
    }
}
