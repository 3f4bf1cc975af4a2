// SPDX-License-Identifier: MIT
#include <algorithm>
#include <climits>
#include <random>

#include <gtest/gtest.h>

#include "Model/PatchTable.h"
#include "Show.h"
#include "Support/LogCapture.h"

namespace {

using enum PixelMapType;

/// Parts of documents, of whatever a file could hold and still load.
class Generator
{
public:
    explicit Generator(unsigned seed)
        : random_(seed)
    {}

    int Whole(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }
    float Part() { return std::uniform_real_distribution<float>(-0.2F, 1.2F)(random_); }
    bool Chance(int percent) { return Whole(1, 100) <= percent; }

    std::unique_ptr<ZenBitmap> Source()
    {
        auto source = ZenBitmap::Create(Whole(1, 200), Whole(1, 100), Chance(50) ? 4 : 3);
        for (std::int32_t i = 0; i < source->bytesPerRow * source->height; ++i)
            source->data[i] = static_cast<std::uint8_t>(random_());
        return source;
    }

    StaticChannelList Constants()
    {
        StaticChannelList list;
        for (int i = Chance(40) ? Whole(0, 60) : 0; i > 0; --i)
            list.Set(Whole(1, Chance(50) ? 60 : 512), Chance(40) ? -1 : Whole(0, 255));
        return list;
    }

    DeviceLedItem MakeFixture()
    {
        const auto type = static_cast<PixelMapType>(Whole(-1, 21));
        const int rows = Whole(1, 8);
        const int step = std::max(PixelMap(1, 1, type).GetChannelsPerPixel(), 1);
        const int first = Whole(1, 40);
        const bool packed = Chance(60);
        std::vector<std::int32_t> cells(static_cast<std::size_t>(rows * Whole(1, 20)));
        for (std::size_t i = 0; i < cells.size(); ++i)
            cells[i] = packed && !Chance(2) ? first + static_cast<int>(i) * step : Whole(-3, 530);
        return Fixture(type, cells, Whole(0, Chance(50) ? 60 : 512), Constants(), rows);
    }

    VideoMapping Video()
    {
        const auto angle = Chance(50) ? 0.0F : 400 * Part();
        return {{Part(), Part()}, {Part(), Part()}, angle, Chance(30), Chance(30)};
    }

    DMXMappingArtNet To()
    {
        const wchar_t* nodes[] = {L"Auto", L"Auto", L"2.0.0.10", L"10.1.2.3", L"auto", L""};
        constexpr int edges[] = {INT_MIN, -1, 0, 1, 511, 512, 513, INT_MAX};
        const int channel = Chance(80) ? Whole(1, 400) : edges[Whole(0, 7)];
        return Address(Whole(0, Chance(50) ? 2 : 21), channel, nodes[Whole(0, 5)]);
    }

private:
    std::mt19937 random_;
};

/// A frame of each element alone.
using Parts = std::vector<Universes>;

/// The frame of a document, laid together from its parts by the table of owners.
Universes ByOwners(const MappedDeviceModel& document, Parts& parts)
{
    Universes universes;
    for (const PatchUniverse& universe : PatchTableOf(document)) {
        const ChannelOwners owners = OwnersOf(universe, document);
        const std::pair key(universe.target.node, universe.target.portAddress);
        Bytes& channels = universes[key];
        for (const PatchSpan& span : universe.spans)
            channels.resize(std::max(channels.size(), std::size_t(span.channels.last)));
        for (std::size_t i = 0; i < channels.size(); ++i) {
            if (owners[i].span < 0)
                continue;
            const PatchSpan& span = universe.spans[static_cast<std::size_t>(owners[i].span)];
            channels[i] = parts[static_cast<std::size_t>(span.row)].at(key).at(i);
            if (owners[i].use.kind != ChannelUse::Kind::Pixel) {
                EXPECT_EQ(channels[i], owners[i].use.value) << "channel " << i + 1;
            }
            EXPECT_EQ(owners[i].fixtureChannel, int(i) + 2 - span.channels.first);
        }
    }
    return universes;
}

/// The frame of a document, laid together from its parts channel by channel.
Universes Composed(const MappedDeviceModel& document, const ZenBitmap& source, Parts& parts)
{
    const UniverseMerging& merging = document.GetMerging();
    Universes universes;
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem& item = *document.GetElement(row);
        const DMXMappingArtNet& address = *item.GetArtNetMapping();
        Show show({{item.GetFixture(), address, *item.GetVideoMapping()}});
        show.Document().SetCanvasSize(document.GetCanvasWidth(), document.GetCanvasHeight());
        show.SetOutput(merging);
        show.Frame(source);
        const auto& alone = parts.emplace_back(show.AllUniverses());
        for (const auto& [key, channels] : alone)
            universes[key].resize(std::max(universes[key].size(), channels.size()));

        const int own = address.GetPortAddress();
        const bool merged = merging.IsEnabled() && merging.IsInFromRange(own);
        const int target = merged ? merging.TranslateToOutput(own) : own;
        const std::pair key(merged ? AutoNode : address.GetIpconf(),
                            static_cast<std::uint16_t>(target));
        for (int i = 0; i < item.GetFixture().GetChannelCount(); ++i) {
            const std::int64_t channel = std::int64_t{address.GetChannel()} + i;
            const StaticChannel* constant = item.GetFixture().staticChannels.Find(i + 1);
            const bool free = merged && constant && constant->value < 0;
            if (address.GetChannel() < 1 || channel > 512 || free)
                continue;
            const auto index = static_cast<std::size_t>(channel - 1);
            universes[key].at(index) = alone.at(key).at(index);
        }
    }
    return universes;
}

void Edit(Show& show, Generator& make, int last)
{
    MappedDeviceModel& document = show.Document();
    MappedLedItem& item = *document.GetElement(make.Whole(0, last));
    const int kind = make.Whole(0, 7);
    if (kind == 0) {
        *item.EditVideoMapping() = make.Video();
    } else if (kind == 1) {
        *item.EditArtNetMapping() = make.To();
    } else if (kind == 2) {
        PixelMap& map = item.EditFixture().pixelMap;
        map.SetCell(make.Whole(0, map.GetWidth() - 1), make.Whole(0, map.GetHeight() - 1),
                    make.Whole(-1, 520));
    } else if (kind == 3) {
        item.EditFixture().staticChannels = make.Constants();
    } else if (kind == 4) { // a pixel may have more channels than at the rebuild
        item.EditFixture().pixelMap.SetType(static_cast<PixelMapType>(make.Whole(0, 20)));
    } else if (kind == 5) {
        document.SetCanvasSize(make.Whole(1, 900), make.Whole(1, 900));
    } else if (kind == 6) {
        const auto from = static_cast<std::uint32_t>(make.Whole(0, make.Chance(50) ? 2 : 20));
        const auto to = static_cast<std::uint32_t>(make.Whole(0, 255));
        const auto merging = Merge(from, make.Whole(1, 6), to);
        show.SetOutput(make.Chance(60) ? merging : UniverseMerging());
    } else { // another element in the same row
        const DeviceLedItem fixture = document.GetElement(last)->GetFixture();
        document.RemoveMappingElement(document.GetElement(last)->uniqueID);
        show.Add({fixture, make.To(), make.Video()});
    }
}

TEST(Frame, AnEditedDocumentIsTheSumOfItsElements)
{
    for (unsigned seed = 1; seed <= 25 && !testing::Test::HasFailure(); ++seed) {
        Generator make(seed);
        std::vector<Placed> elements;
        const int last = make.Whole(0, 9);
        int end = 1;
        for (int row = 0; row <= last; ++row) {
            elements.push_back({make.MakeFixture(), make.To(), make.Video()});
            Placed& element = elements.back();
            if (make.Chance(50)) // on the channels after the element before
                element.address = Address(make.Whole(0, 1), end);
            end = std::clamp(element.address.GetChannel(), 0, 512) +
                  element.fixture.GetChannelCount();
        }
        Show show(elements);
        auto source = make.Source();
        for (int edit = 0; edit < 40 && !testing::Test::HasFailure(); ++edit) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", edit " + std::to_string(edit));
            Edit(show, make, last);
            if (make.Chance(20))
                source = make.Source();
            show.Frame(*source);
            Parts parts;
            const Universes frame = show.AllUniverses();
            EXPECT_EQ(frame, Composed(show.Document(), *source, parts));
            for (auto& [key, channels] : ByOwners(show.Document(), parts)) {
                channels.resize(frame.at(key).size()); // received DMX fills merged universes
                EXPECT_EQ(channels, frame.at(key));
            }
        }
    }
}

TEST(Frame, ElementsThatAreNowhereOrTooLargeAreNotConvertedAndADocumentTooLargeIsRefused)
{
    Support::LogCapture log;
    Show show;
    for (const auto& [width, height] : {std::pair(1001, 1), {1000, 1000}, {1, 1001}}) {
        std::vector<std::int32_t> cells(static_cast<std::size_t>(width * height));
        cells[0] = 1;
        show.Add({Fixture(RGB, cells, 3, {{3, 50}}, height),
                  Address(0, 1 + 3 * show.Document().rowCount())});
    }
    const DMXMappingArtNet address = Address(1);
    show.Document().AddMappingElement(std::make_unique<MappedLedItem>(
        L"no address", Fixture(RGB, {1}), std::make_unique<VideoMapping>(), nullptr));
    show.Document().AddMappingElement(
        std::make_unique<MappedLedItem>(L"no place", Fixture(RGB, {1}), nullptr, &address));
    ASSERT_TRUE(show.Create());
    show.SetOutput({}, L"2.255.255.255");
    EXPECT_EQ(show.Frame(*Picture(1, 1, {{1, 2, 3}})), 0);
    EXPECT_EQ(show.AllUniverses(),
              (Universes{{{AutoNode, 0}, {0, 0, 0, 1, 2, 50, 0, 0, 0}}, {{AutoNode, 1}, Bytes(3)}}))
        << "as the rebuild left them";
    EXPECT_EQ(log.Count("Ridiculous values for bitmap size"), 2);
    show.Add({Fixture(RGB, std::vector<std::int32_t>(16'000'000), 3, {}, 4000)});
    EXPECT_FALSE(show.Create());
    EXPECT_EQ(show.engine.SendFrame(), -1);
    EXPECT_EQ(Show().engine.SendFrame(), 0) << "an empty frame cannot fail";
}

TEST(Frame, RowsAddedOrRemovedStopTheOutputUntilARebuild)
{
    Show show({{Fixture(R, {1}), Address(0)}});
    show.SetOutput({}, L"2.255.255.255");
    const auto picture = Picture(1, 1, {{1, 2, 3}});
    const MappedLedItem& second = show.Add({Fixture(R, {1}), Address(0, 2)});
    EXPECT_EQ(show.Frame(*picture), -1);
    ASSERT_TRUE(show.Create());
    EXPECT_EQ(show.Frame(*picture), 0);
    ASSERT_TRUE(show.Document().RemoveMappingElement(second.uniqueID));
    EXPECT_EQ(show.Frame(*picture), -1);
    Support::LogCapture log;
    for (const int row : {7, -1}) {
        show.engine.UpdateElementBitmap(row, *picture);
        EXPECT_TRUE(log.Has("LEDEngine lost an element at #" + std::to_string(row)));
    }
}

} // namespace
