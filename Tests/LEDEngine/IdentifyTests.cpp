// SPDX-License-Identifier: MIT
// One element lit in place of the picture, as it leaves in the universes.
#include <gtest/gtest.h>

#include "Platform/Clock.h"
#include "Show.h"

namespace {

using enum PixelMapType;

constexpr std::int64_t Millisecond = 1'000'000;

class Identified : public testing::Test
{
protected:
    /// The universes 0 and 1 of a frame with this light.
    std::pair<Bytes, Bytes> Frame(std::size_t row, const IdentifyLight& light, std::int64_t now)
    {
        FramePlan plan;
        EXPECT_TRUE(plan.Build(show.Document()));
        plan.SampleAll(show.Document(), *picture);
        plan.Light(row, light, now);
        plan.Convert();
        ArtNetOutput& output = show.engine.GetOutput();
        output.ClearUniverses();
        plan.Assemble(output);
        return {show.Universe(0), show.Universe(1)};
    }

    std::unique_ptr<ZenBitmap> picture = Picture(1, 1, {{7, 8, 9}});
    // The cable comes in on the right; channel 10 is a dimmer, and a fourth pixel is off the end.
    Show show{{{Fixture(RGB, {7, 511, 4, 1}, 10, {{10, 200}})}, {Fixture(G, {1}), Address(1)}}};
};

TEST_F(Identified, TheEndsBlinkAndAllElseOfTheFixtureStays)
{
    const IdentifyLight usual{.element = 1, .since = 100 * Millisecond};
    const Bytes white(9, 255);
    const Bytes marked = {255, 0, 0, 255, 255, 255, 0, 0, 255, 200};
    const Bytes dark = {0, 0, 0, 255, 255, 255, 0, 0, 0, 200};
    const Bytes green = {0, 255, 0, 0, 255, 0, 0, 255, 0, 200};
    struct Case
    {
        std::size_t row = 0;
        IdentifyLight light;
        int milliseconds = 0;
        Bytes first;
        Bytes second;
    };
    IdentifyLight plain = usual;
    plain.marksEnds = false;
    plain.colour = {0, 255, 0};
    IdentifyLight alone = usual;
    alone.othersDark = true;
    const Bytes sampled = {7, 8, 9, 7, 8, 9, 7, 8, 9, 200};
    const Case cases[] = {
        {0, usual, 100, marked, {8}}, {0, usual, 349, marked, {8}},    {0, usual, 350, dark, {8}},
        {0, usual, 599, dark, {8}},   {0, usual, 600, marked, {8}},    {0, plain, 350, green, {8}},
        {0, alone, 100, marked, {0}}, {1, usual, 350, sampled, {255}},
    };
    for (const Case& each : cases) {
        const auto [first, second] = Frame(each.row, each.light, each.milliseconds * Millisecond);
        EXPECT_EQ(first, each.first) << each.milliseconds;
        EXPECT_EQ(second, each.second) << each.milliseconds;
    }
}

TEST_F(Identified, ALightHoldsUntilItIsTakenBackAndAnElementThatIsGoneHasNone)
{
    const auto second = [this](std::int64_t element) {
        show.engine.SetIdentified({.element = element, .othersDark = true});
        EXPECT_EQ(show.Frame(*picture), -1) << "there is no network";
        return show.Universe(1);
    };
    EXPECT_EQ(second(2), Bytes{255});
    EXPECT_EQ(second(2), Bytes{255});
    EXPECT_EQ(second(1), Bytes{0});
    EXPECT_EQ(second(99), Bytes{8});
    EXPECT_EQ(second(0), Bytes{8});
}

} // namespace
