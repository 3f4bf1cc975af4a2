// SPDX-License-Identifier: MIT
#include "Model/ElementCopies.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "FixtureModel/PatchRun.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"

namespace {

constexpr std::size_t MostDigitsOfCopies = 3;

bool IsDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

/// How many digits end the text behind a "-" that is not its first character; 0 when none do.
std::size_t DigitsAtEnd(const std::wstring& text)
{
    std::size_t digits = 0;
    while (digits < text.size() && IsDigit(text[text.size() - 1 - digits]))
        ++digits;
    const bool isNumber = digits > 0 && text.size() >= digits + 2;
    return isNumber && text[text.size() - 1 - digits] == L'-' ? digits : 0;
}

std::int64_t ReadNumber(const std::wstring& text, std::size_t digits)
{
    std::int64_t number = 0;
    for (std::size_t i = text.size() - digits; i < text.size(); ++i)
        number = 10 * number + (text[i] - L'0');
    return number;
}

PatchAddress AddressOf(const DMXMappingArtNet& mapping)
{
    return {mapping.GetSubnet(), mapping.GetUniverse(), mapping.GetChannel()};
}

void SetAddress(DMXMappingArtNet& mapping, const PatchAddress& address)
{
    mapping.SetSubnet(address.subnet);
    mapping.SetUniverse(address.universe);
    mapping.SetChannel(address.channel);
}

DMXMappingArtNet AddressOfCopy(const ElementValues& source)
{
    DMXMappingArtNet address;
    if (source.address) {
        SetAddress(address,
                   NextInRun(AddressOf(*source.address), source.fixture->GetChannelCount()));
        address.SetNode(AutoNode, source.address->GetIpName());
    }
    return address;
}

/// A number that no file can hold is none: what a document has at the end of all numbers stays
/// there.
float Moved(float from, float by)
{
    const float to = from + by;
    return std::isfinite(to) ? to : from;
}

/// A copy whose number follows on `name`, which is then the copy's.
ElementValues CopyAs(NumberedName& name, const ElementValues& source, float dx, float dy,
                     std::int64_t counter, const NumbersInUse& inUse)
{
    name.number = inUse.FirstFree(name) + counter;
    ElementValues copy{name.Text(), source.fixture, source.video, AddressOfCopy(source)};
    copy.video.SetCenter({Moved(source.video.centerX, dx), Moved(source.video.centerY, dy)});
    return copy;
}

} // namespace

// ---- Elements and values -----------------------------------------------------------------------

std::vector<ElementValues> ReadElements(const std::vector<const MappedLedItem*>& elements)
{
    std::vector<ElementValues> values;
    values.reserve(elements.size());
    std::unordered_map<std::wstring, std::shared_ptr<const DeviceLedItem>> fixtures;
    for (const MappedLedItem* element : elements) {
        if (!element || !element->GetVideoMapping())
            continue;
        auto& fixture = fixtures[element->GetFixture().product];
        if (!fixture || !(*fixture == element->GetFixture()))
            fixture = std::make_shared<DeviceLedItem>(element->GetFixture());
        const DMXMappingArtNet* address = element->GetArtNetMapping();
        values.push_back({element->description, fixture, *element->GetVideoMapping(),
                          address ? std::optional(*address) : std::nullopt});
    }
    return values;
}

std::vector<std::unique_ptr<MappedLedItem>> MakeElements(std::span<const ElementValues> elements)
{
    std::vector<std::unique_ptr<MappedLedItem>> items;
    items.reserve(elements.size());
    for (const ElementValues& element : elements)
        items.push_back(std::make_unique<MappedLedItem>(
            element.description, *element.fixture, std::make_unique<VideoMapping>(element.video),
            element.address ? &*element.address : nullptr));
    return items;
}

bool BindToLibrary(std::vector<ElementValues>& elements, DeviceModel& library)
{
    bool added = false;
    std::unordered_map<std::wstring, std::shared_ptr<const DeviceLedItem>> bound;
    for (ElementValues& element : elements) {
        auto& fixture = bound[element.fixture->product];
        if (!fixture) {
            const DeviceLedItem* own = library.GetLEDFixtureByProduct(element.fixture->product);
            if (!own) {
                auto item = std::make_unique<DeviceLedItem>(*element.fixture);
                item->uniqueID = 0; // The number of another library, or of an earlier time.
                own = item.get();
                library.AddFixture(std::move(item));
                added = true;
            }
            fixture = std::make_shared<DeviceLedItem>(*own);
        }
        element.fixture = fixture;
    }
    return added;
}

// ---- Descriptions ------------------------------------------------------------------------------

NumberedName::NumberedName(const std::wstring& description)
    : base(description, 0, LongestDescription)
{
    const std::size_t digits = DigitsAtEnd(base);
    if (digits == 0 || digits > MostDigitsOfCopies)
        return;
    number = ReadNumber(base, digits);
    base.resize(base.size() - digits - 1);
}

NumbersInUse::NumbersInUse(const MappedDeviceModel& document)
{
    std::unordered_map<std::wstring, std::vector<std::int64_t>> numbers;
    for (int row = 0; row < document.rowCount(); ++row) {
        const std::wstring& text = document.GetElement(row)->description;
        const std::size_t digits = DigitsAtEnd(text);
        // Copies are numbered without leading zeros, and never as high as that.
        const bool plain = digits == 1 || (digits > 1 && text[text.size() - digits] != L'0');
        if (plain && digits <= std::numeric_limits<std::int64_t>::digits10)
            numbers[text.substr(0, text.size() - digits - 1)].push_back(ReadNumber(text, digits));
    }
    for (auto& [base, used] : numbers) {
        std::ranges::sort(used);
        std::vector<Run>& runs = runs_[base];
        for (const std::int64_t number : used) {
            if (!runs.empty() && number <= runs.back().last + 1)
                runs.back().last = number;
            else
                runs.push_back({number, number});
        }
    }
}

std::int64_t NumbersInUse::FirstFree(const NumberedName& name) const
{
    const auto known = runs_.find(name.base);
    if (known == runs_.end())
        return name.number;
    const auto run = std::ranges::lower_bound(known->second, name.number, {}, &Run::last);
    return run == known->second.end() || name.number < run->first ? name.number : run->last + 1;
}

// ---- Copies ------------------------------------------------------------------------------------

ElementValues CopyElement(const ElementValues& source, float dx, float dy, std::int64_t counter,
                          const NumbersInUse& inUse)
{
    NumberedName name(source.description);
    return CopyAs(name, source, dx, dy, counter, inUse);
}

const char* DuplicateGrid::Fault() const
{
    if (across < 1 || down < 1)
        return "Ignoring DuplicateElementCommand: The height or width cannot be zero.";
    if (across == 1 && down == 1)
        return "Ignoring DuplicateElementCommand: Height and width are both 1.";
    if (first < LeftToRight || first > BottomToTop)
        return "Ignoring DuplicateElementCommand: An invalid duplication direction was specified.";
    if (std::int64_t{across} * down > MostElements)
        return "Ignoring DuplicateElementCommand: Too many elements were asked for.";
    return nullptr;
}

std::vector<ElementValues> Duplicates(const ElementValues& source, const DuplicateGrid& grid,
                                      const NumbersInUse& inUse)
{
    std::vector<ElementValues> copies;
    if (grid.Fault())
        return copies;
    const bool inRows = grid.first <= DuplicateGrid::RightToLeft;
    const bool backward =
        grid.first == DuplicateGrid::RightToLeft || grid.first == DuplicateGrid::BottomToTop;
    const float along = backward ? -1.0F : 1.0F;
    const float across = grid.then == 1 ? -1.0F : 1.0F;
    const float stepX = (inRows ? along : across) * source.video.width;
    const float stepY = (inRows ? across : along) * source.video.height;
    const int runLength = inRows ? grid.across : grid.down;
    const int runs = inRows ? grid.down : grid.across;
    const auto back = static_cast<float>(1 - runLength);
    const PointF next = inRows ? PointF{stepX, 0} : PointF{0, stepY};
    const PointF nextRun = inRows ? PointF{back * stepX, stepY} : PointF{stepX, back * stepY};

    // The number is carried on and not read again from each copy: above 999 it would be taken for
    // a part of the base, and the descriptions would grow with every element.
    NumberedName name(source.description);
    const int count = runLength * runs;
    copies.reserve(static_cast<std::size_t>(count) - 1);
    for (int i = 1; i < count; ++i) {
        const PointF step = i % runLength == 0 ? nextRun : next;
        const ElementValues& before = copies.empty() ? source : copies.back();
        copies.push_back(CopyAs(name, before, step.x, step.y, i - 1, inUse));
    }
    return copies;
}

float PasteShift(std::span<const ElementValues> sources)
{
    const auto height = [](const ElementValues& element) {
        return element.video.height;
    };
    const auto middle = [](const ElementValues& element) {
        return element.video.centerY;
    };
    const VideoMapping& top = std::ranges::min_element(sources, {}, middle)->video;
    // Of equals the first: std::ranges::max_element gives the first of them too.
    const VideoMapping& bottom = std::ranges::max_element(sources, {}, middle)->video;
    if (top.GetCenter() == bottom.GetCenter())
        return height(*std::ranges::max_element(sources, {}, height));
    return 2 * (bottom.centerY - top.centerY);
}

std::vector<ElementValues> Pasted(std::span<const ElementValues> sources, const PatchAddress& first,
                                  const NumbersInUse& inUse)
{
    std::vector<ElementValues> copies;
    if (sources.empty())
        return copies;
    copies.reserve(sources.size());
    const float shift = PasteShift(sources);
    PatchAddress address = first;
    for (const ElementValues& source : sources) {
        const std::int32_t channels = source.fixture->GetChannelCount();
        if (!copies.empty())
            address = NextInRun(address, copies.back().fixture->GetChannelCount(), channels);
        copies.push_back(
            CopyElement(source, 0, -shift, static_cast<std::int64_t>(copies.size()), inUse));
        SetAddress(*copies.back().address, address);
    }
    return copies;
}
