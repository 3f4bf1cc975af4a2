// SPDX-License-Identifier: MIT
#include <algorithm>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "Show.h"
#include "Support/LogCapture.h"

namespace {

void SetMerging(Show& show, const UniverseMerging& merging)
{
    show.Document().SetMerging(merging);
    show.engine.InitializeOutput(L"", L"", L"", merging);
}

// ---- Generated documents ------------------------------------------------------------------------

/// Parts of documents, of whatever a file could hold and still load.
class Generator
{
public:
    explicit Generator(unsigned seed)
        : random_(seed)
    {}

    int Whole(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }
    float Number(float least, float most)
    {
        return std::uniform_real_distribution(least, most)(random_);
    }
    bool Chance(int percent) { return Whole(1, 100) <= percent; }

    std::unique_ptr<ZenBitmap> Source()
    {
        auto source = ZenBitmap::Create(Whole(1, 200), Whole(1, 100), Chance(50) ? 4 : 3);
        for (std::int32_t i = 0; i < source->bytesPerRow * source->height; ++i)
            source->data[i] = static_cast<std::uint8_t>(random_());
        return source;
    }

    PixelMap Map()
    {
        const int type = Chance(5) ? (Chance(50) ? -1 : 21) : Whole(0, 20);
        PixelMap map(Whole(1, 20), Whole(1, 8), static_cast<PixelMapType>(type));
        const int n = std::max(map.GetChannelsPerPixel(), 1);
        const int first = Whole(1, 40);
        const bool packed = Chance(60);
        for (int y = 0; y < map.GetHeight(); ++y) {
            for (int x = 0; x < map.GetWidth(); ++x) {
                const int cell = first + (y * map.GetWidth() + x) * n;
                map.SetCell(x, y, packed && !Chance(2) ? cell : Whole(-3, 530));
            }
        }
        return map;
    }

    StaticChannelList Constants()
    {
        StaticChannelList list;
        for (int i = Chance(40) ? Whole(0, 60) : 0; i > 0; --i)
            list.Set(Whole(1, 512), Whole(-1, 255));
        return list;
    }

    DeviceLedItem Fixture()
    {
        PixelMap map = Map();
        return FixtureOf(std::move(map), Whole(0, 512), Constants());
    }

    VideoMapping Video()
    {
        return {{Number(-0.2F, 1.2F), Number(-0.2F, 1.2F)},
                {Number(0, 1), Number(0, 1)},
                Chance(50) ? 0.0F : Number(-400, 400),
                Chance(30),
                Chance(30)};
    }

    DMXMappingArtNet To()
    {
        const wchar_t* nodes[] = {L"Auto", L"Auto", L"2.0.0.10", L"10.1.2.3", L"auto", L""};
        const int channel = Chance(90) ? Whole(1, 400) : Whole(-5, 520);
        return Address(Whole(0, 1), Whole(0, 5), channel, nodes[Whole(0, 5)]);
    }

    UniverseMerging Merging()
    {
        const auto number = [this](int most) {
            return static_cast<std::uint32_t>(Whole(0, most));
        };
        return {Chance(60),
                number(1),
                number(4),
                Whole(1, 6),
                number(15),
                number(15),
                MergerDMXSource::PixelWeft};
    }

private:
    std::mt19937 random_;
};

/// Whether the fixture leaves this channel, counted from 1, to merged input.
bool IsFree(const LEDFixture& fixture, int channel)
{
    return std::ranges::any_of(fixture.staticChannels, [channel](const StaticChannel& entry) {
        return entry.channel == channel && entry.value < 0;
    });
}

/// The frame of a document, laid together from frames of one element each.
Universes Composed(const MappedDeviceModel& document, const ZenBitmap& source)
{
    Universes universes;
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem& item = *document.GetElement(row);
        const DMXMappingArtNet& address = *item.GetArtNetMapping();
        Show show;
        show.Document().SetCanvasSize(document.GetCanvasWidth(), document.GetCanvasHeight());
        SetMerging(show, document.GetMerging());
        show.Add(item.GetFixture(), *item.GetVideoMapping(), address);
        EXPECT_TRUE(show.Create());
        show.Frame(source);
        const auto alone = show.AllUniverses();
        for (const auto& [key, channels] : alone)
            universes[key].resize(std::max(universes[key].size(), channels.size()));

        const UniverseMerging& merging = document.GetMerging();
        const int own = address.GetPortAddress();
        const bool merged = merging.IsEnabled() && merging.IsInFromRange(own);
        const std::pair key(
            merged ? AutoNode : address.GetIpconf(),
            static_cast<std::uint16_t>(merged ? merging.TranslateToOutput(own) : own));
        for (int i = 1; i <= item.GetFixture().GetChannelCount(); ++i) {
            const int channel = address.GetChannel() + i - 1;
            if (address.GetChannel() < 1 || channel > 512 ||
                (merged && IsFree(item.GetFixture(), i)))
                continue;
            const auto index = static_cast<std::size_t>(channel - 1);
            universes[key].at(index) = alone.at(key).at(index);
        }
    }
    return universes;
}

TEST(Frame, AnEditedDocumentIsTheSumOfItsElements)
{
    for (unsigned seed = 1; seed <= 40 && !testing::Test::HasFailure(); ++seed) {
        Generator make(seed);
        Show show;
        const int last = 7;
        for (int row = 0; row <= last; ++row)
            show.Add(make.Fixture(), make.Video(), make.To());
        ASSERT_TRUE(show.Create());
        auto source = make.Source();
        for (int edit = 0; edit < 40 && !testing::Test::HasFailure(); ++edit) {
            MappedLedItem& item = *show.Document().GetElement(make.Whole(0, last));
            const PixelMap& map = item.GetFixture().pixelMap;
            const int kind = make.Whole(0, 9);
            SCOPED_TRACE("seed " + std::to_string(seed) + ", edit " + std::to_string(kind));
            switch (kind) {
            case 0:
                *item.EditVideoMapping() = make.Video();
                break;
            case 1:
                item.EditVideoMapping()->SetCenter({make.Number(0, 1), make.Number(0, 1)});
                break;
            case 2:
                *item.EditArtNetMapping() = make.To();
                break;
            case 3:
                item.EditFixture().pixelMap.SetCell(make.Whole(0, map.GetWidth() - 1),
                                                    make.Whole(0, map.GetHeight() - 1),
                                                    make.Whole(-1, 520));
                break;
            case 4:
                item.EditFixture().staticChannels = make.Constants();
                break;
            case 5:
                show.Document().SetCanvasSize(make.Whole(1, 900), make.Whole(1, 900));
                break;
            case 6:
                SetMerging(show, make.Merging());
                break;
            case 7: // a pixel may have more channels than at the rebuild
                item.EditFixture().pixelMap.SetType(static_cast<PixelMapType>(make.Whole(0, 20)));
                break;
            case 8: { // another element in the same row
                const DeviceLedItem fixture = show.Document().GetElement(last)->GetFixture();
                show.Document().RemoveMappingElement(show.Document().GetElement(last)->uniqueID);
                show.Add(fixture, make.Video(), make.To());
                break;
            }
            default:
                source = make.Source();
            }
            show.Frame(*source);
            EXPECT_EQ(show.AllUniverses(), Composed(show.Document(), *source));
        }
    }
}

// ---- Documents by hand --------------------------------------------------------------------------

TEST(Frame, ThePictureOfTheDocumentFromItsFirstRowToItsLast)
{
    Show show;
    QImage picture(2, 3, QImage::Format_ARGB32);
    for (int i = 0; i < 6; ++i)
        picture.setPixel(i % 2, i / 2, qRgb(10 + i, 20 + i, 30 + i));
    show.Document().SetTestImage(picture);
    show.Add(FixtureOf(MapOf(2, 3, PixelMapType::RGB, {1, 4, 7, 10, 13, 16}), 18), WholeCanvas(),
             Address(0, 0, 1));
    ASSERT_TRUE(show.Create());
    show.Frame(*show.Document().GetTestBitmap());
    EXPECT_EQ(show.Universe(0),
              Bytes({10, 20, 30, 11, 21, 31, 12, 22, 32, 13, 23, 33, 14, 24, 34, 15, 25, 35}));
}

TEST(Frame, AnElementInTheMergeRangeIsLaidOnTheReceivedUniverse)
{
    Show show;
    // From 0/2 on, two universes, to 1/0 on.
    SetMerging(show, {true, 0, 2, 2, 1, 0, MergerDMXSource::PixelWeft});
    show.Add(FixtureOf(MapOf(1, 1, PixelMapType::RrGgBb, {1}), 6), WholeCanvas(), Address(0, 2, 1));
    // On top of it, whatever its node: a free channel, a constant 0 and a further constant.
    const auto none = MapOf(1, 1, PixelMapType::RGB, {0});
    show.Add(FixtureOf(none, 4, {{1, -1}, {2, 0}, {3, -1}, {4, 9}}), WholeCanvas(),
             Address(0, 2, 1, L"2.0.0.10"));
    // Addressed to the merge output itself: a plain copy, free channels too.
    show.Add(FixtureOf(none, 2, {{1, -1}, {2, 7}}), WholeCanvas(), Address(1, 0, 5));
    // One universe behind the merge range.
    show.Add(FixtureOf(MapOf(1, 1, PixelMapType::RGB, {1}), 3), WholeCanvas(),
             Address(0, 4, 1, L"2.0.0.10"));
    ASSERT_TRUE(show.Create());
    show.Frame(*Picture(1, 1, {{1, 2, 3}}));
    Bytes merged{1, 0, 2, 9, 0, 7};
    merged.resize(512);
    EXPECT_EQ(show.AllUniverses(), (Universes{{{L"Auto", 16}, merged},
                                              {{L"Auto", 17}, Bytes(512)},
                                              {{L"2.0.0.10", 4}, {1, 2, 3}}}));
    show.Document().SetMerging({});
    show.Frame(*Picture(1, 1, {{1, 2, 3}}));
    EXPECT_EQ(show.AllUniverses(), (Universes{{{L"Auto", 2}, {1, 1, 2, 2, 3, 3}},
                                              {{L"Auto", 16}, {0, 0, 0, 0, 0, 7}},
                                              {{L"2.0.0.10", 2}, {0, 0, 0, 9}},
                                              {{L"2.0.0.10", 4}, {1, 2, 3}}}));
}

TEST(Frame, StartChannelsAtTheEndsOfTheUniverse)
{
    Show show;
    const auto fixture = FixtureOf(MapOf(1, 1, PixelMapType::RGB, {1}), 3);
    constexpr int most = std::numeric_limits<int>::max();
    int universe = 0;
    for (const int channel : {511, 512, 513, 0, -1, most, std::numeric_limits<int>::min(), 1, 3})
        show.Add(fixture, WholeCanvas(), Address(0, std::min(universe++, 7), channel));
    ASSERT_TRUE(show.Create());
    show.Frame(*Picture(1, 1, {{1, 2, 3}}));
    Bytes cut(512);
    cut[510] = 1;
    cut[511] = 2;
    EXPECT_EQ(show.Universe(0), cut);
    cut[510] = 0;
    cut[511] = 1;
    EXPECT_EQ(show.Universe(1), cut);
    for (const int beyond : {2, 3, 4, 5, 6})
        EXPECT_EQ(show.Universe(beyond), Bytes()) << beyond;
    EXPECT_EQ(show.Universe(7), Bytes({1, 2, 1, 2, 3}));
}

TEST(Frame, TheSelectionsMarkHoldsForOneElementAndOneFrame)
{
    Show show;
    const auto fixture = FixtureOf(MapOf(2, 1, PixelMapType::RGB, {1, 4}), 6);
    show.Add(fixture, {{0.0F, 0.5F}, {1, 1}, 0, false, false}, Address(0, 0, 1));
    show.Add(fixture, WholeCanvas(), Address(0, 0, 7));
    ASSERT_TRUE(show.Create());
    const auto picture = Picture(1, 1, {{1, 2, 3}});
    show.engine.UpdateElementBitmaps(*picture);
    show.engine.UpdateElementBitmap(0, *Picture(1, 1, {{9, 8, 7}}, 3));
    show.engine.SendFrame();
    EXPECT_EQ(show.Universe(0), Bytes({0, 0, 0, 9, 8, 7, 1, 2, 3, 1, 2, 3}));
    show.Frame(*picture);
    EXPECT_EQ(show.Universe(0), Bytes({0, 0, 0, 1, 2, 3, 1, 2, 3, 1, 2, 3}));
}

TEST(Frame, ElementsWithoutAMappingAreKeptAndPassedOver)
{
    Show show;
    const auto fixture = FixtureOf(MapOf(1, 1, PixelMapType::RGB, {1}), 3, {});
    const DMXMappingArtNet address = Address(0, 0, 1);
    show.Document().AddMappingElement(std::make_unique<MappedLedItem>(
        L"no address", fixture, std::make_unique<VideoMapping>(WholeCanvas()), nullptr));
    show.Document().AddMappingElement(
        std::make_unique<MappedLedItem>(L"no place", fixture, nullptr, &address));
    ASSERT_TRUE(show.Create());
    show.Frame(*Picture(1, 1, {{1, 2, 3}}));
    EXPECT_EQ(show.Universe(0), Bytes(3));
    EXPECT_EQ(show.AllUniverses().size(), 1U);
}

TEST(Frame, ElementsTooLargeAreLoggedOnEveryFrame)
{
    Support::LogCapture log;
    Show show;
    int channel = 1;
    for (const auto& [width, height] :
         {std::pair(1001, 1), std::pair(1000, 1000), std::pair(1, 1001)}) {
        PixelMap map(width, height, PixelMapType::RGB);
        map.SetCell(0, 0, 1);
        show.Add(FixtureOf(map, 3, {{3, 50}}), WholeCanvas(), Address(0, 0, channel));
        channel += 3;
    }
    ASSERT_TRUE(show.Create());
    for (const int frame : {1, 2}) {
        show.Frame(*Picture(1, 1, {{1, 2, 3}}));
        // They are never converted: their channels are as the rebuild left them.
        EXPECT_EQ(show.Universe(0), Bytes({0, 0, 0, 1, 2, 50, 0, 0, 0}));
        EXPECT_EQ(log.Count("Ridiculous values for bitmap size"), 2 * frame);
    }
}

TEST(Frame, ResultsOfASend)
{
    Show show;
    const auto picture = Picture(1, 1, {{1, 2, 3}});
    EXPECT_EQ(show.engine.SendFrame(), -1) << "no buffers";
    ASSERT_TRUE(show.Create());
    EXPECT_EQ(show.Frame(*picture), 0) << "an empty frame cannot fail";
    show.engine.GetOutput().outputSuspended = true;
    EXPECT_EQ(show.Frame(*picture), -1);
    show.engine.GetOutput().outputSuspended = false;
    show.Add(FixtureOf(MapOf(1, 1, PixelMapType::RGB, {1}), 3), WholeCanvas(), Address(0, 0, 1));
    ASSERT_TRUE(show.Create());
    QObject::connect(&show.engine.GetOutput(), &ArtNetOutput::dataOutOn, &show.engine,
                     [] { ADD_FAILURE() << "nothing was sent"; });
    EXPECT_EQ(show.Frame(*picture), -1) << "no network";
    EXPECT_EQ(show.Universe(0), Bytes({1, 2, 3})) << "built all the same";
    show.engine.ReleaseElements();
    EXPECT_EQ(show.Frame(*picture), -1);
}

TEST(Frame, RowsAddedOrRemovedStopTheOutputUntilARebuild)
{
    Support::LogCapture log;
    Show show;
    const auto fixture = FixtureOf(MapOf(1, 1, PixelMapType::RGB, {1}), 3);
    const auto picture = Picture(1, 1, {{1, 2, 3}});
    MappedLedItem& first = show.Add(fixture, WholeCanvas(), Address(0, 0, 1), L"first");
    const std::int64_t identifier = first.uniqueID;
    ASSERT_TRUE(show.Create());
    show.Frame(*picture);
    MappedLedItem& second = show.Add(fixture, WholeCanvas(), Address(0, 0, 4), L"second");
    const std::string grown = "Size mismatch dmxValues_=1, elementBitmaps_=1, mappedItems=2";
    for (int frame = 1; frame <= 2; ++frame) {
        EXPECT_EQ(show.Frame(*picture), -1);
        EXPECT_EQ(log.Count(grown), frame);
        EXPECT_EQ(log.Count("LEDEngine lost an element bitmap at #1"), frame);
    }
    EXPECT_EQ(show.engine.FindElementBitmap(second), nullptr);
    ASSERT_TRUE(show.Create());
    show.Frame(*picture);
    EXPECT_EQ(show.Universe(0), Bytes({1, 2, 3, 1, 2, 3}));
    ASSERT_TRUE(show.Document().RemoveMappingElement(identifier));
    show.Frame(*picture);
    EXPECT_TRUE(log.Has("Size mismatch dmxValues_=2, elementBitmaps_=2, mappedItems=1"));
    show.engine.UpdateElementBitmap(7, *picture);
    EXPECT_TRUE(log.Has("LEDEngine lost an element at #7"));
    show.engine.UpdateElementBitmap(-1, *picture);
    EXPECT_TRUE(log.Has("LEDEngine lost an element at #-1"));
}

TEST(Frame, FindsTheBitmapOfTheFirstElementOfAName)
{
    Show show;
    const auto fixture = FixtureOf(MapOf(2, 1, PixelMapType::RGB, {1, 4}), 6);
    show.Add(fixture, WholeCanvas(), Address(0, 0, 1), L"twice");
    show.Add(FixtureOf(MapOf(1, 3, PixelMapType::RGB, {1, 4, 7}), 9), WholeCanvas(),
             Address(0, 1, 1), L"other");
    MappedLedItem& again = show.Add(fixture, WholeCanvas(), Address(0, 2, 1), L"twice");
    EXPECT_EQ(show.engine.FindElementBitmap(again), nullptr);
    ASSERT_TRUE(show.Create());
    const auto picture = Picture(2, 1, {{1, 2, 3}, {4, 5, 6}});
    show.Frame(*picture);
    const ZenBitmap* bitmap = show.engine.FindElementBitmap(again);
    ASSERT_NE(bitmap, nullptr);
    EXPECT_EQ(bitmap->width, 2);
    EXPECT_EQ(bitmap->height, 1);
    EXPECT_EQ(bitmap->bytesPerRow, 8);
    EXPECT_EQ(bitmap->format, 4U);
    EXPECT_EQ(Bytes(bitmap->data, bitmap->data + 3), Bytes({3, 2, 1}));
    EXPECT_EQ(Bytes(bitmap->data + 4, bitmap->data + 7), Bytes({6, 5, 4}));
    again.description = L"other";
    EXPECT_EQ(show.engine.FindElementBitmap(again)->height, 3);
    again.description = L"nobody";
    EXPECT_EQ(show.engine.FindElementBitmap(*show.Document().GetElement(0))->width, 2);
}

TEST(Frame, ADocumentWithTooManyPixelsIsRefused)
{
    Support::LogCapture log;
    Show show;
    const PixelMap huge(4000, 4000, PixelMapType::RGB);
    show.Add(FixtureOf(huge, 3), WholeCanvas(), Address(0, 0, 1));
    show.Add(FixtureOf(huge, 3), WholeCanvas(), Address(0, 0, 1));
    EXPECT_FALSE(show.Create());
    EXPECT_TRUE(log.Has("CreateElementBitmap returned nullptr"));
    EXPECT_EQ(show.engine.SendFrame(), -1);
}

// ---- Channels on top of a universe --------------------------------------------------------------

TEST(BlendChannels, TagsDecideAndTheUniverseEndsAtItsLastChannel)
{
    Support::LogCapture log;
    DMXUniverse universe;
    const Bytes values{1, 2, 3, 4};
    const std::vector<ChannelType> types{ChannelType::Pixel, ChannelType::Constant,
                                         ChannelType::Free, static_cast<ChannelType>(3)};
    for (const int nowhere : {513, 514, 0, -1})
        BlendChannels(universe, nowhere, {values, types});
    EXPECT_TRUE(universe.channels.empty());
    BlendChannels(universe, 2, {values, types});
    EXPECT_EQ(Bytes(universe.channels.begin(), universe.channels.end()), Bytes({0, 1, 2, 0, 0}));
    CopyChannels(universe, 1, Bytes{10, 20, 30, 40, 50, 60});
    BlendChannels(universe, 2, {values, types});
    EXPECT_EQ(Bytes(universe.channels.begin(), universe.channels.end()),
              Bytes({10, 1, 2, 40, 50, 60}));
    EXPECT_EQ(log.Count("Unhandled channel type"), 2);
    BlendChannels(universe, 511, {values, types});
    EXPECT_EQ(universe.channels.size(), 512U);
    EXPECT_EQ(universe.channels[511], 2);
}

} // namespace
