// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/FreePatch.h"
#include "FixtureModel/VideoMapping.h"
#include "Model/DeviceLedItem.h"

class DeviceModel;
class MappedDeviceModel;
class MappedLedItem;

// How elements multiply: the arithmetic of a wall of duplicates and of a paste. All of it works on
// values, so that a copy outlives its source. Lengths are fractions of the canvas.

/// All there is of an element but its number.
struct ElementValues
{
    std::wstring description;
    std::shared_ptr<const DeviceLedItem> fixture; ///< never null; shared by elements of one kind
    VideoMapping video;
    std::optional<DMXMappingArtNet> address;
};

/// The values of these elements, in their order. Null is passed over, and an element without a
/// place on the canvas.
[[nodiscard]] std::vector<ElementValues>
ReadElements(const std::vector<const MappedLedItem*>& elements);
/// New elements of these values, for DeviceManager::AddMappedItems.
[[nodiscard]] std::vector<std::unique_ptr<MappedLedItem>>
MakeElements(std::span<const ElementValues> elements);

/// Gives copied elements the fixture that the library has of the same product. A product that the
/// library lacks is added to it; true when there was any.
bool BindToLibrary(std::vector<ElementValues>& elements, DeviceModel& library);

// ---- Descriptions ------------------------------------------------------------------------------

/// A description such as Par-7: a base, and the number that its copies count on from.
struct NumberedName
{
    static constexpr std::size_t LongestDescription = 512;

    /// Reads the first LongestDescription characters. A number has one to three digits behind a "-"
    /// that is not the first character; any other text is the base of number 1.
    explicit NumberedName(const std::wstring& description);

    [[nodiscard]] std::wstring Text() const { return base + L'-' + std::to_wstring(number); }

    std::wstring base;
    std::int64_t number = 1;
};

/// The numbers that the descriptions of a document hold, read once for a whole batch of copies.
class NumbersInUse
{
public:
    explicit NumbersInUse(const MappedDeviceModel& document);

    /// The first number from this one on under which the document has no element.
    [[nodiscard]] std::int64_t FirstFree(const NumberedName& name) const;

private:
    struct Run
    {
        std::int64_t first;
        std::int64_t last;
    };
    std::unordered_map<std::wstring, std::vector<Run>> runs_; ///< ascending, with gaps between them
};

// ---- Copies ------------------------------------------------------------------------------------

/// A copy, moved by (dx, dy). Its description takes the next free number of the document, and then
/// as many more as `counter` says: that keeps the copies of a batch apart, which the document does
/// not have yet. Its address is the next in the run behind the source's, without a node; universe
/// 0:0, channel 1 behind a source without address.
[[nodiscard]] ElementValues CopyElement(const ElementValues& source, float dx, float dy,
                                        std::int64_t counter, const NumbersInUse& inUse);

/// A wall of equal elements.
struct DuplicateGrid
{
    /// The most elements of a wall that are made at a time, with the source.
    static constexpr int MostElements = 4096;
    enum Direction : int
    {
        LeftToRight = 0,
        RightToLeft = 1,
        TopToBottom = 2,
        BottomToTop = 3
    };

    int across = 1;
    int down = 1;
    int first = LeftToRight; ///< the Direction of a run
    int then = 0;            ///< where the next run lies: 0 down or right, 1 up or left

    /// What is wrong with the grid, as a line for the log; null when it can be made.
    [[nodiscard]] const char* Fault() const;
};

/// The elements that make a wall of the source, in the order of their addresses. Each is a copy of
/// the one before, so that addresses and numbers run on. They are spaced by the source's size
/// before it is turned. None for a grid with a fault.
[[nodiscard]] std::vector<ElementValues>
Duplicates(const ElementValues& source, const DuplicateGrid& grid, const NumbersInUse& inUse);

/// How far a paste of these elements lies above them. Not for an empty list.
[[nodiscard]] float PasteShift(std::span<const ElementValues> sources);

/// The copies of a paste: above their sources, and with addresses that run on from `first`, which
/// is free for the first of them. Each starts behind all channels of the one before.
[[nodiscard]] std::vector<ElementValues> Pasted(std::span<const ElementValues> sources,
                                                const PatchAddress& first,
                                                const NumbersInUse& inUse);
