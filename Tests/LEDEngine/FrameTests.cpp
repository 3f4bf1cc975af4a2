// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

#include "Reference.h"
#include "Support/LogCapture.h"

namespace {

void ExpectFrame(Show& show, const ZenBitmap& source)
{
    show.Frame(source);
    const auto expected = Reference::FrameOf(show.Document(), source);
    auto universes = show.AllUniverses();
    ASSERT_EQ(universes.size(), expected.size());
    for (const auto& [key, bytes] : expected)
        ASSERT_EQ(universes[key], bytes) << "universe " << key.second;
}

/// Documents without taste: whatever a file could hold and still load.
class Wild
{
public:
    explicit Wild(unsigned seed)
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
        const int count = Chance(30) ? -1 : Whole(0, 512);
        return FixtureOf(std::move(map), count, Constants());
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
        return {Chance(60),
                static_cast<std::uint32_t>(Whole(0, 1)),
                static_cast<std::uint32_t>(Whole(0, 4)),
                Whole(1, 6),
                static_cast<std::uint32_t>(Whole(0, 15)),
                static_cast<std::uint32_t>(Whole(0, 15)),
                MergerDMXSource::PixelWeft};
    }

private:
    std::mt19937 random_;
};

void SetMerging(Show& show, const UniverseMerging& merging)
{
    show.Document().SetMerging(merging);
    show.engine.InitializeOutput(L"", L"", L"", merging);
}

TEST(Frame, GeneratedDocumentsGiveTheBytesOfThePlainArithmetic)
{
    for (unsigned seed = 1; seed <= 150 && !testing::Test::HasFatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Wild wild(seed);
        Show show;
        show.Document().SetCanvasSize(wild.Whole(1, 1920), wild.Whole(1, 1080));
        const int count = wild.Whole(0, 40);
        for (int i = 0; i < count; ++i)
            show.Add(wild.Fixture(), wild.Video(), wild.To());
        SetMerging(show, wild.Merging());
        ASSERT_TRUE(show.Create());
        ExpectFrame(show, *wild.Source());
        ExpectFrame(show, *wild.Source());
    }
}

TEST(Frame, FollowsAnyEditWithoutARebuild)
{
    for (unsigned seed = 1; seed <= 40 && !testing::Test::HasFatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Wild wild(seed);
        Show show;
        show.Document().SetCanvasSize(640, 360);
        for (int i = 0; i < 12; ++i)
            show.Add(wild.Fixture(), wild.Video(), wild.To());
        SetMerging(show, wild.Merging());
        ASSERT_TRUE(show.Create());
        auto source = wild.Source();
        for (int edit = 0; edit < 40 && !testing::Test::HasFatalFailure(); ++edit) {
            MappedLedItem& item = *show.Document().GetElement(wild.Whole(0, 11));
            const int kind = wild.Whole(0, 8);
            SCOPED_TRACE(kind);
            const PixelMap& map = item.GetFixture().pixelMap;
            switch (kind) {
            case 0:
                *item.EditVideoMapping() = wild.Video();
                break;
            case 1:
                item.EditVideoMapping()->SetCenter({wild.Number(0, 1), wild.Number(0, 1)});
                break;
            case 2:
                *item.EditArtNetMapping() = wild.To();
                break;
            case 3:
                item.EditFixture().pixelMap.SetCell(wild.Whole(0, map.GetWidth() - 1),
                                                    wild.Whole(0, map.GetHeight() - 1),
                                                    wild.Whole(-1, 520));
                break;
            case 4:
                item.EditFixture().staticChannels = wild.Constants();
                break;
            case 5:
                show.Document().SetCanvasSize(wild.Whole(1, 900), wild.Whole(1, 900));
                break;
            case 6:
                SetMerging(show, wild.Merging());
                break;
            case 7: // a pixel of more channels than at the rebuild
                item.EditFixture().pixelMap.SetType(static_cast<PixelMapType>(wild.Whole(0, 20)));
                break;
            default:
                source = wild.Source();
            }
            // An automatic channel count follows its map; the buffers are those of the rebuild.
            if (item.GetFixture().GetStoredChannelCount() == -1) {
                ASSERT_TRUE(show.Create());
            }
            ExpectFrame(show, *source);
        }
    }
}

TEST(Frame, AnElementInTheMergersRunLandsOnWhatIsThere)
{
    Show show;
    // From 0/2 on, two universes, to 1/0 on.
    SetMerging(show, {true, 0, 2, 2, 1, 0, MergerDMXSource::PixelWeft});
    show.Add(FixtureOf(MapOf(1, 1, PixelMapType::RrGgBb, {1}), 6), WholeCanvas(), Address(0, 2, 1));
    // On top of it, whatever its node: a free channel, a constant 0 and one constant more.
    const auto none = MapOf(1, 1, PixelMapType::RGB, {0});
    show.Add(FixtureOf(none, 4, {{1, -1}, {2, 0}, {3, -1}, {4, 9}}), WholeCanvas(),
             Address(0, 2, 1, L"2.0.0.10"));
    // Straight into the run of the output: the plain way, free channels and all.
    show.Add(FixtureOf(none, 2, {{1, -1}, {2, 7}}), WholeCanvas(), Address(1, 0, 5));
    // One universe behind the run.
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
    EXPECT_EQ(show.UniverseCount(), 1U);
}

TEST(Frame, ElementsTooLargeAreNamedOnEveryFrame)
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
        // They were never converted: their channels are as the rebuild left them.
        EXPECT_EQ(show.Universe(0), Bytes({0, 0, 0, 1, 2, 50, 0, 0, 0}));
        EXPECT_EQ(log.Count("Ridiculous values for bitmap size"), 2 * frame);
    }
}

TEST(Frame, ResultsOfASend)
{
    Show show;
    const auto picture = Picture(1, 1, {{1, 2, 3}});
    EXPECT_EQ(show.engine.SendFrame(), -1) << "no elements laid out";
    ASSERT_TRUE(show.Create());
    EXPECT_TRUE(show.engine.AreElementsReady());
    EXPECT_EQ(show.Frame(*picture), 0) << "an empty frame has nothing that could fail";
    show.engine.GetOutput().outputSuspended = true;
    EXPECT_EQ(show.Frame(*picture), -1);
    show.engine.GetOutput().outputSuspended = false;
    show.Add(FixtureOf(MapOf(1, 1, PixelMapType::RGB, {1}), 3), WholeCanvas(), Address(0, 0, 1));
    ASSERT_TRUE(show.Create());
    int lit = 0;
    QObject::connect(&show.engine.GetOutput(), &ArtNetOutput::dataOutOn, &show.engine,
                     [&lit] { ++lit; });
    EXPECT_EQ(show.Frame(*picture), -1) << "no network";
    EXPECT_EQ(lit, 0);
    EXPECT_EQ(show.Universe(0), Bytes({1, 2, 3})) << "built all the same";
    show.engine.ReleaseElements();
    EXPECT_FALSE(show.engine.AreElementsReady());
    EXPECT_EQ(show.Frame(*picture), -1);
}

TEST(Frame, RowsThatCameOrWentStopTheOutputUntilARebuild)
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

TEST(Frame, ARowReplacedByAnotherElementIsSeen)
{
    Show show;
    const auto fixture = FixtureOf(MapOf(1, 1, PixelMapType::RGB, {1}), 3);
    const auto old = show.Add(fixture, WholeCanvas(), Address(0, 0, 1)).uniqueID;
    ASSERT_TRUE(show.Create());
    const auto picture = Picture(2, 1, {{1, 2, 3}, {4, 5, 6}});
    show.Frame(*picture);
    EXPECT_EQ(show.Universe(0), Bytes({4, 5, 6}));
    ASSERT_TRUE(show.Document().RemoveMappingElement(old));
    show.Add(fixture, {{0.2F, 0.5F}, {0.1F, 0.1F}, 0, false, false}, Address(0, 1, 2));
    show.Frame(*picture);
    EXPECT_EQ(show.Universe(0), Bytes());
    EXPECT_EQ(show.Universe(1), Bytes({0, 1, 2, 3}));
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

TEST(Frame, ADocumentBeyondAllMeasureIsRefusedAndTakesNoMemory)
{
    Support::LogCapture log;
    Show show;
    const PixelMap huge(4000, 4000, PixelMapType::RGB);
    show.Add(FixtureOf(huge, 3), WholeCanvas(), Address(0, 0, 1));
    show.Add(FixtureOf(huge, 3), WholeCanvas(), Address(0, 0, 1));
    EXPECT_FALSE(show.Create());
    EXPECT_FALSE(show.engine.AreElementsReady());
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
