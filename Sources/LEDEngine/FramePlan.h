// SPDX-License-Identifier: MIT
#pragma once

#include <bitset>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "FixtureModel/LEDFixture.h"
#include "FixtureModel/PatchTarget.h"
#include "FixtureModel/UniverseMerging.h"
#include "LEDEngine/ArtNetOutput.h"
#include "LEDEngine/ElementDMX.h"
#include "LEDEngine/ElementSampling.h"
#include "LEDEngine/IdentifyLight.h"
#include "LEDEngine/PixelConversion.h"

class MappedDeviceModel;
class MappedLedItem;

/// A document arranged for speed: the pixels of all elements in one block, their channel values in
/// another, and between them flat lists of what to copy where. A frame walks the lists from front
/// to back and allocates nothing. The lists are made again when the document's revision says that
/// an element changed; the blocks only by Build, when the set of elements changes.
class FramePlan
{
public:
    /// Makes the blocks for all elements of the document. False, with a line in the log, for a row
    /// without an element or when the document has too many pixels.
    bool Build(const MappedDeviceModel& model);
    void Clear();

    [[nodiscard]] std::size_t ElementCount() const { return elements_.size(); }

    /// Takes over edits of elements since the last call. The row count is still that of Build.
    void FollowEdits(const MappedDeviceModel& model);

    /// Samples every element from `source`.
    void SampleAll(const MappedDeviceModel& model, const ZenBitmap& source);
    /// Samples one element, from another source than the others.
    void SampleOne(const MappedDeviceModel& model, std::size_t row, const ZenBitmap& source);

    /// Lights one element in place of what was sampled, until it is sampled again.
    void Light(std::size_t row, const IdentifyLight& light, std::int64_t now);

    /// Converts all pixels to channel values.
    void Convert();

    /// Puts the channel values into universes. Later rows win over earlier ones.
    void Assemble(ArtNetOutput& output) const;

    /// The sampled pixels of an element, 4 bytes each, row by row; valid until the next Build or
    /// Clear.
    [[nodiscard]] std::uint8_t* PixelsOf(std::size_t row);
    [[nodiscard]] std::int32_t ColumnsOf(std::size_t row) const { return elements_[row].columns; }
    [[nodiscard]] std::int32_t RowsOf(std::size_t row) const { return elements_[row].rows; }

private:
    struct Element
    {
        std::int32_t columns = 0;
        std::int32_t rows = 0;
        std::uint32_t firstPixel = 0;
        std::uint32_t firstValue = 0;
        std::uint32_t valueCount = 0;
        std::uint32_t valueRoom = 0; ///< the values, and the tail of a pixel that begins among them
        std::uint64_t revision = 0;
        std::uint64_t patchRevision = 0;
        VideoMapping mapping; ///< that the offsets were made from
        bool offsetsValid = false;
        PixelEnds ends;
    };

    /// The copy of an element's channel values into a universe. Elements that follow each other
    /// both in the block and in the universe share one.
    struct ChannelCopy
    {
        std::uint32_t firstValue = 0;
        std::uint32_t count = 0;
        std::uint32_t target = 0;
        std::int32_t firstChannel = 0;
        bool blend = false;
    };

    [[nodiscard]] bool Place(const MappedLedItem& item);
    void MakeRuns(const MappedDeviceModel& model);
    /// Moves the values of an element that needs more of them to the end of the block.
    void MakeRoom(Element& element, std::uint32_t room);
    void AddPixels(Element& element, const MappedLedItem& item);
    void AddSlot(PixelMapType type, std::uint8_t intensity, PixelSlot slot);
    void AddConstants(const Element& element, const MappedLedItem& item);
    void MakeCopies(const MappedDeviceModel& model, const UniverseMerging& merging);
    [[nodiscard]] static bool Continues(const ChannelCopy& last, const ChannelCopy& next);
    void UpdateOffsets(const MappedDeviceModel& model);
    [[nodiscard]] std::span<std::int32_t> OffsetsOf(const Element& element);

    std::vector<Element> elements_;
    std::vector<std::uint8_t> pixels_;
    std::vector<std::int32_t> offsets_;
    std::vector<std::int32_t> singleOffsets_; ///< of SampleOne
    std::vector<std::uint8_t> values_;
    std::vector<ChannelType> types_;

    std::vector<PixelRun> runs_;
    std::vector<PixelSlot> slots_;
    /// Constants under a pixel: written again after each conversion.
    std::vector<std::pair<std::uint32_t, std::uint8_t>> coveredConstants_;
    std::bitset<LEDFixture::MaxChannels + 8>
        underPixel_;                    ///< scratch of AddPixels: channels that a pixel writes
    std::vector<std::size_t> tooLarge_; ///< elements too large to convert

    std::vector<PatchTarget> targets_;
    std::vector<ChannelCopy> copies_;              ///< target by target
    std::optional<UniverseMerging> copiesMerging_; ///< that the copies were made for

    std::uint64_t modelRevision_ = 0;
    bool layoutValid_ = false;
    bool offsetsValid_ = false;
    ElementSampling::SourceShape shape_;
    ElementSampling::CanvasSize canvas_;
};
