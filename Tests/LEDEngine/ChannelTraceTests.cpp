// SPDX-License-Identifier: MIT
// From a place on the canvas, or from a channel, to the line that tells the whole way.
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include <QImage>

#include "LEDEngine/ChannelTrace.h"
#include "Model/PatchTable.h"
#include "Show.h"

namespace {

using enum PixelMapType;
using ElementSampling::PixelUnder;

TEST(PixelUnder, IsThePixelThatSamplesThere)
{
    constexpr ElementSampling::CanvasSize canvas{300, 200};
    // So fine that the centre of the sampled pixel lies in the element's pixel, too.
    constexpr ElementSampling::SourceShape source{4000, 4000, 16'000, 4};
    constexpr int columns = 5;
    constexpr int rows = 3;
    for (const float angle : {0.0F, 33.0F, 90.0F, 181.0F, -20.0F}) {
        for (const int flips : {0, 1, 2, 3}) {
            const VideoMapping mapping({0.4F, 0.55F}, {0.5F, 0.3F}, angle, (flips & 1) != 0,
                                       (flips & 2) != 0);
            for (int pixel = 0; pixel < columns * rows; ++pixel) {
                const auto at =
                    ElementSampling::SampleOf(mapping, canvas, source, columns, rows, pixel);
                ASSERT_TRUE(at);
                const PointF place{(static_cast<float>(at->x) + 0.5F) / 4000,
                                   (static_cast<float>(at->y) + 0.5F) / 4000};
                EXPECT_EQ(PixelUnder(mapping, canvas, columns, rows, place), pixel)
                    << angle << ' ' << flips;
            }
        }
    }
    struct Case
    {
        VideoMapping mapping;
        PointF place;
        std::optional<std::int32_t> pixel;
    };
    constexpr float nothing = std::numeric_limits<float>::quiet_NaN();
    const Case cases[] = {
        {{{0.5F, 0.5F}, {0.5F, 0.3F}, 0, false, false}, {0.251F, 0.351F}, 0},
        {{{0.5F, 0.5F}, {0.5F, 0.3F}, 0, true, false}, {0.251F, 0.351F}, 4},
        {{{0.5F, 0.5F}, {0.5F, 0.3F}, 0, false, true}, {0.251F, 0.351F}, 10},
        {{{0.5F, 0.5F}, {0.5F, 0.3F}, 0, false, false}, {0.749F, 0.649F}, 14},
        {{{0.5F, 0.5F}, {0.5F, 0.3F}, 0, false, false}, {0.249F, 0.5F}, {}},
        {{{0.5F, 0.5F}, {0.5F, 0.3F}, 0, false, false}, {0.751F, 0.5F}, {}},
        {{{0.5F, 0.5F}, {0.5F, 0.3F}, 0, false, false}, {0.5F, 0.651F}, {}},
        {{{0.5F, 0.5F}, {0, 0}, 0, false, false}, {0.5F, 0.5F}, {}},
        {{{nothing, 0.5F}, {0.5F, 0.3F}, 0, false, false}, {0.5F, 0.5F}, {}},
    };
    for (const Case& each : cases)
        EXPECT_EQ(PixelUnder(each.mapping, canvas, columns, rows, each.place), each.pixel);
}

class Trace : public testing::Test
{
protected:
    Trace()
    {
        show.Document().SetCanvasSize(4, 1);
        QImage picture(4, 1, QImage::Format_RGB32);
        for (int x = 0; x < 4; ++x)
            picture.setPixel(x, 0, qRgb(16 + x, 32 + x, 48 + x));
        show.Document().SetTestImage(picture);
        // Of three pixels from right to left, a constant and a free channel; on the last of them
        // another one; one half off the canvas; one merged, and one whose end is cut off.
        Add({Fixture(RGB, {7, 4, 1}, 11, {{10, 200}, {11, -1}}), Address(4, 97), At(1.5F, 3)});
        Add({Fixture(GRB, {1}), Address(4, 103), At(0.5F, 1)});
        Add({Fixture(L, {1, 2}), Address(5, 1, L"2.0.0.10"), At(4, 2)});
        Add({Fixture(RGBA, {1, 5}), Address(6, 507), At(1, 2)});
        Add({Fixture(R, {1}, 2, {{2, -1}}), Address(17, 5), At(3.5F, 1)});
        show.Document().SetMerging(Merge(17, 1, 40));
        show.Create();
        show.Frame(*show.Document().GetTestBitmap());
    }
    void Add(const Placed& element) { show.Add(element); }
    static VideoMapping At(float centre, float width)
    {
        return {{centre / 4, 0.5F}, {width / 4, 1}, 0, false, false};
    }
    std::string Line(const std::optional<ChannelTrace>& trace)
    {
        return trace ? ChannelTraceText(*trace).toStdString() : "nothing";
    }
    std::string OfPixel(std::int64_t element, std::int32_t cell)
    {
        return Line(TracePixel(show.engine, show.Document(), element, cell));
    }
    std::string OfChannel(std::uint16_t universe, std::int32_t channel,
                          const wchar_t* node = AutoNode)
    {
        const PatchTable table = PatchTableOf(show.Document());
        PatchUniverse none;
        none.target = {node, universe};
        const auto found = std::ranges::find(table, none.target, &PatchUniverse::target);
        return Line(TraceChannel(show.engine, show.Document(), found == table.end() ? none : *found,
                                 channel));
    }

    Show show;
};

TEST_F(Trace, TellsTheWayOfPixelsAndChannels)
{
    const std::string off = ", not sent: no network is chosen, or it is not connected";
    const std::pair<std::string, std::string> lines[] = {
        {OfPixel(1, 0), R"(picture (0, 0) #102030, "Element 1" pixel 3, R 32 G 16 B 48, )"
                        R"(overwritten by "Element 2", universe 0/4 channels 103 to 105)" +
                            off},
        {OfPixel(1, 2), R"(picture (2, 0) #122232, "Element 1" pixel 1, R 18 G 34 B 50, )"
                        "universe 0/4 channels 97 to 99" +
                            off},
        {OfPixel(2, 0), R"(picture (0, 0) #102030, "Element 2" pixel 1, G 32 R 16 B 48, )"
                        "another fixture is patched here, too, universe 0/4 channels 103 to 105" +
                            off},
        {OfPixel(3, 1), R"(outside of the picture, "Element 3" pixel 2 L, value 0, )"
                        "universe 0/5 channel 2" +
                            off},
        {OfPixel(4, 1), R"(picture (1, 0) #112131, "Element 4" pixel 2, R 17 G 33, )"
                        "universe 0/6 channels 511 to 512, "
                        "the rest lies beyond channel 512 and is not sent" +
                            off},
        {OfPixel(5, 0), R"(picture (3, 0) #132333, "Element 5" pixel 1 R, value 19, )"
                        "universe 2/8 channel 5, merged from 1/1" +
                            off},
        {OfPixel(1, 3), "nothing"},
        {OfPixel(9, 0), "nothing"},
        {OfChannel(4, 98), R"(picture (2, 0) #122232, "Element 1" pixel 1 G, value 34, )"
                           "universe 0/4 channel 98" +
                               off},
        {OfChannel(4, 103), R"(picture (0, 0) #102030, "Element 2" pixel 1 G, value 32, )"
                            "another fixture is patched here, too, universe 0/4 channel 103" +
                                off},
        {OfChannel(4, 106), R"("Element 1" channel 10, constant, value 200, )"
                            "universe 0/4 channel 106" +
                                off},
        {OfChannel(4, 107),
         R"("Element 1" channel 11, free, value 0, universe 0/4 channel 107)" + off},
        {OfChannel(4, 108), "no fixture here, universe 0/4 channel 108" + off},
        {OfChannel(5, 2, L"2.0.0.10"),
         R"(outside of the picture, "Element 3" pixel 2 L, value 0, universe 0/5 channel 2)" + off},
        {OfChannel(40, 6), "no fixture here, value 0, universe 2/8 channel 6" + off},
    };
    for (const auto& [line, wanted] : lines)
        EXPECT_EQ(line, wanted);
}

TEST_F(Trace, TellsWhereItGoesAndWhatIsShownInstead)
{
    using Way = UniverseRoute::Way;
    ChannelTrace trace = *TracePixel(show.engine, show.Document(), 5, 0);
    const auto end = [&trace](Way way, std::vector<ChannelTrace::Receiver> receivers) {
        trace.route.way = way;
        trace.receivers = std::move(receivers);
        const QString line = ChannelTraceText(trace);
        return line.mid(line.indexOf(QLatin1String("1/1, ")) + 5).toStdString();
    };
    EXPECT_EQ(end(Way::Broadcast, {}), "to all nodes, not in the last frame");
    trace.age = 12'900'000;
    const std::string age = ", sent 12 ms ago";
    EXPECT_EQ(end(Way::Broadcast, {}), "to all nodes" + age);
    EXPECT_EQ(end(Way::Node, {{"Left %1", "2.0.0.9"}}), R"(to node "Left %1" 2.0.0.9)" + age);
    EXPECT_EQ(end(Way::Node, {{"", "2.0.0.9"}}), "to node 2.0.0.9" + age);
    EXPECT_EQ(end(Way::Subscribers, {{}, {}}), "to the 2 nodes that announced it" + age);
    EXPECT_EQ(end(Way::NoSubscriber, {}), "not sent: no node announced the universe");
    EXPECT_EQ(end(Way::HostSends, {}), "not sent: the media program sends");
    EXPECT_EQ(end(Way::OutsideNetwork, {}), "not sent: Auto is not in the network");
    trace.firstChannel = 513;
    EXPECT_EQ(end(Way::Broadcast, {}), "not sent: a universe has the channels 1 to 512");

    show.engine.SetIdentified({.element = 5});
    show.Frame(*show.Document().GetTestBitmap());
    EXPECT_EQ(OfPixel(5, 0).rfind("picture (3, 0) #132333, shown as #ffffff, ", 0), 0U);
}

} // namespace
