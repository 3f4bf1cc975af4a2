// SPDX-License-Identifier: MIT
// Definitions of the Open Fixture Library: each form of matrix, insert, fine and switching channel,
// and what channels outside of the pixels get. Expected maps and constants are written by hand.
#include "FixtureImport/OpenFixtureReader.h"
#include "Support/ImportedText.h"

#include <gtest/gtest.h>

#include <ctime>

namespace {

/// Channels that the cases choose from, by their keys.
const std::string Available = R"(
"Red": {"fineChannelAliases": ["Red fine"], "capability": {"type": "ColorIntensity", "color": "Red"}},
"Green": {"fineChannelAliases": ["Green fine"], "capability": {"type": "ColorIntensity", "color": "Green"}},
"Blue": {"fineChannelAliases": ["Blue fine"], "capability": {"type": "ColorIntensity", "color": "Blue"}},
"White": {"capability": {"type": "ColorIntensity", "color": "White"}},
"Warm": {"capability": {"type": "ColorIntensity", "color": "Warm White"}},
"Amber": {"capability": {"type": "ColorIntensity", "color": "Amber"}},
"Cyan": {"fineChannelAliases": ["Cyan fine"], "capability": {"type": "ColorIntensity", "color": "Cyan"}},
"Magenta": {"fineChannelAliases": ["Magenta fine"], "capability": {"type": "ColorIntensity", "color": "Magenta"}},
"Yellow": {"fineChannelAliases": ["Yellow fine"], "capability": {"type": "ColorIntensity", "color": "Yellow"}},
"Odd Red": {"capabilities": [{"dmxRange": [0, 199], "type": "ColorIntensity", "color": "Red"},
    {"dmxRange": [200, 255], "type": "Effect", "effectName": "Show"}]},
"Dimmer": {"fineChannelAliases": ["Dimmer fine"], "capability": {"type": "Intensity"}},
"Dimmer 2": {"capability": {"type": "Intensity"}},
"Master": {"capability": {"type": "Intensity"}},
"Dimmer Strobe": {"capabilities": [{"dmxRange": [0, 99], "type": "Intensity"},
    {"dmxRange": [100, 255], "type": "ShutterStrobe", "shutterEffect": "Strobe"}]},
"Dimmer Speed": {"capabilities": [{"dmxRange": [0, 99], "type": "Intensity"},
    {"dmxRange": [100, 255], "type": "StrobeSpeed", "speedStart": "0Hz", "speedEnd": "20Hz"}]},
"Strobe 1": {"capability": {"type": "StrobeSpeed", "speedStart": "slow", "speedEnd": "fast"}},
"Gobo": {"capability": {"type": "Effect", "effectName": "Gobo"}},
"Program": {"defaultValue": 0, "capabilities": [
    {"dmxRange": [0, 9], "type": "NoFunction", "switchChannels": {"Speed or Red": "Red", "Nothing": null}},
    {"dmxRange": [10, 255], "type": "Effect", "effectName": "Show", "switchChannels": {"Speed or Red": "Gobo"}}]}
)";
const std::string Templates = R"(
"R $pixelKey": {"fineChannelAliases": ["r $pixelKey"], "capability": {"type": "ColorIntensity", "color": "Red"}},
"G $pixelKey": {"capability": {"type": "ColorIntensity", "color": "Green"}},
"B $pixelKey": {"capability": {"type": "ColorIntensity", "color": "Blue"}},
"W $pixelKey": {"capability": {"type": "ColorIntensity", "color": "White"}},
"D $pixelKey": {"capability": {"type": "Intensity"}},
"Mode $pixelKey": {"defaultValue": 0, "capabilities": [
    {"dmxRange": [0, 9], "type": "NoFunction", "switchChannels": {"R or D $pixelKey": "R $pixelKey"}},
    {"dmxRange": [10, 255], "type": "Effect", "effectName": "Show", "switchChannels": {"R or D $pixelKey": "D $pixelKey"}}]}
)";

std::string Import(const std::string& matrix, const std::string& channels,
                   const std::string& categories = "", const std::string& templates = "")
{
    const std::string json = R"({"name": "Bar", "categories": [)" + categories +
                             R"(], "matrix": )" + matrix + R"(, "availableChannels": {)" +
                             Available + R"(}, "templateChannels": {)" + Templates + templates +
                             R"(}, "modes": [{"name": "M", "channels": [)" + channels + "]}]}";
    const auto read = FixtureImport::ReadOpenFixture(QByteArray::fromStdString(json));
    EXPECT_FALSE(read.fault) << InWords(read.fault).toStdString();
    return read.fault ? std::string() : Support::TextOfFirst(read.definition);
}

std::string Insert(const std::string& repeatFor, const std::string& templates,
                   const std::string& order = "perPixel")
{
    return R"({"insert": "matrixChannels", "repeatFor": )" + repeatFor + R"(, "channelOrder": ")" +
           order + R"(", "templateChannels": [)" + templates + "]}";
}

const std::string RGB = R"("R $pixelKey", "G $pixelKey", "B $pixelKey")";

TEST(OpenFixture, LampsOfTheWholeFixture)
{
    const struct
    {
        std::string channels;
        std::string expected;
    } cases[] = {
        {R"("Dimmer", "Red", "Green", "Blue")", "1x1 RGB 2 | 1=255"},
        {R"("Blue", "Red", "Green")", "1x1 BRG 1 |"},
        {R"("Red", "Green", "Blue", "White", "Amber")", "1x1 RGBW+ 1 | 5=0"},
        {R"("Red", "Green", "Blue", "Warm")", "1x1 RGBW+ 1 |"},
        {R"("Red", "Green", "Blue", "White", "Warm")", "1x1 RGB 1 | 4=0 5=0"},
        {R"("Red", "Green", "Blue", "Amber", "White")", "1x1 RGBAmber 1 | 5=0"},
        {R"("Red", "Red fine", "Green", "Green fine", "Blue", "Blue fine", "White")",
         "1x1 RrGgBb 1 | 7=0"},
        {R"("Red", "Green", "Blue", "Red fine", "Green fine", "Blue fine")",
         "1x1 RGB 1 | 4=0 5=0 6=0"},
        {R"("Cyan", "Magenta", "Yellow")", "1x1 CMY 1 |"},
        {R"("Yellow", "Magenta", "Cyan", "Dimmer", "Dimmer fine")", "1x1 YMC 1 | 4=255 5=255"},
        {R"("Red", "Blue")", "1x1 RB 1 |"},
        {R"("Green")", "1x1 G 1 |"},
        {R"("Red", null, "Blue")",
         "left out: No pixel type has these colours in this order: Red (1), Blue (3)."},
        {R"(null, "White")", "1x1 L 2 | 1=0"},
        {R"("Dimmer", "Gobo")", "1x1 L 1 | 2=0"},
        {R"("Master", "Dimmer", "Dimmer 2")", "2x1 L 2 3 | 1=255"},
        {R"("Red", "Green", "Blue", "Red", "Green", "Blue")", "2x1 RGB 1 4 |"},
        {R"("Program", "Speed or Red", "Green", "Blue", "Nothing")", "1x1 RGB 2 | 1=0 5=0"},
        {R"("Red", "White", "Green", "Blue")",
         "left out: The colours of a pixel lie apart: Red (1), Green (3), Blue (4)."},
        {R"("Green", "Green fine", "Red", "Red fine", "Blue", "Blue fine")",
         "left out: No pixel type has 16-bit colours in this order: Green (1), Red (3), Blue (5)."},
        {R"("Magenta", "Cyan", "Yellow")", "left out: No pixel type has these colours in this "
                                           "order: Magenta (1), Cyan (2), Yellow (3)."},
        {R"("Red", "Green", "Blue", "Green", "Red", "Blue")",
         "left out: The pixels have no common order: Red (1), Green (2), Blue (3); Green (4), Red "
         "(5), Blue (6)."},
        {R"("White", "Warm")",
         "left out: No pixel type has these colours in this order: White (1), Warm (2)."},
        {R"("Odd Red", "Green", "Blue")",
         "left out: The colour channel \"Odd Red\" does more than its colour."},
        {R"("Dimmer Strobe")",
         "left out: It has no colours, and its dimmer \"Dimmer Strobe\" does more than dim."},
        {R"("Dimmer Speed")",
         "left out: It has no colours, and its dimmer \"Dimmer Speed\" does more than dim."},
        {R"("Gobo")", "left out: It has no channels for colours or brightness."},
        {R"("Purple")", "left out: The definition doesn't say what the channel \"Purple\" does."},
        {"", "left out: It has no channels."},
    };
    for (const auto& row : cases)
        EXPECT_EQ(Import("{}", row.channels), row.expected) << row.channels;
    EXPECT_EQ(Import("{}", R"("Dimmer")", R"("Smoke")"),
              "left out: It makes smoke or wind and has no colours.");
    EXPECT_EQ(Import("{}", R"("Dimmer", "Red", "Green", "Blue")", R"("Smoke")"),
              "1x1 RGB 2 | 1=255");
}

TEST(OpenFixture, Matrices)
{
    const std::string row3 = R"({"pixelCount": [3, 1, 1]})";
    const std::string grid = R"({"pixelCount": [2, 2, 1]})";
    const std::string cube = R"({"pixelCount": [2, 1, 2]})";
    const std::string plus = R"({"pixelKeys": [[[null, "Top", null], ["Left", null, "Right"]]]})";
    const std::string halves =
        R"({"pixelCount": [4, 1, 1], "pixelGroups": {"Z half": ["1", "2"], "A half": {"x": [">=3"]},
            "All": "all", "Odd": {"x": ["odd"]}, "Even": {"x": ["2n"]}}})";
    const std::string quarters =
        R"({"pixelCount": [4, 4, 1], "pixelGroups": {
            "D": {"x": [">=3"], "y": [">=3"]}, "A": {"x": ["<=2"], "y": ["<=2"]},
            "C": {"x": ["<=2"], "y": [">=3"]}, "B": {"x": [">=3"], "y": ["<=2"]}}})";
    const std::string rings =
        R"({"pixelKeys": [[["O1", "O2"], ["O3", "C"]]], "pixelGroups": {"Ring": {"name": ["^O\\d$"]}}})";
    const std::string tens = R"({"pixelCount": [11, 1, 1]})";
    const struct
    {
        std::string matrix;
        std::string channels;
        std::string expected;
    } cases[] = {
        {row3, Insert(R"("eachPixelABC")", RGB), "3x1 RGB 1 4 7 |"},
        {row3, Insert(R"(["3", "1"])", RGB), "3x1 RGB 4 0 1 |"},
        {row3, Insert(R"(["2"])", RGB), "1x1 RGB 1 |"},
        {row3, Insert(R"("eachPixelABC")", R"("W $pixelKey", null)"), "3x1 L 1 3 5 | 2=0 4=0 6=0"},
        {row3, Insert(R"("eachPixelABC")", R"("W $pixelKey")", "perChannel"), "3x1 L 1 2 3 |"},
        {row3, Insert(R"("eachPixelABC")", RGB, "perChannel"),
         "left out: The colours of a pixel lie apart: R 1 (1), G 1 (4), B 1 (7)."},
        {row3, Insert(R"("eachPixelABC")", R"("D $pixelKey", )" + RGB),
         "3x1 RGB 2 6 10 | 1=255 5=255 9=255"},
        {row3, Insert(R"("eachPixelABC")", R"("D $pixelKey")") + R"(, "Red", "Green", "Blue")",
         "1x1 RGB 4 | 1=255 2=255 3=255"},
        {row3, R"("R 2", "G 2", "B 2", "R 3", "G 3", "B 3", "D 1")", "3x1 RGB 0 1 4 | 7=0"},
        {row3, R"("Red", "Green", "Blue", )" + Insert(R"("eachPixelABC")", RGB),
         "3x1 RGB 4 7 10 | 1=0 2=0 3=0"},
        {row3,
         Insert(R"(["1"])",
                R"("Mode $pixelKey", "R or D $pixelKey", "G $pixelKey", "B $pixelKey")"),
         "1x1 RGB 2 | 1=0"},
        {row3, R"("Mode 1", "R or D 1", "G 1", "B 1")", "1x1 RGB 2 | 1=0"},
        {row3, R"("R 1", "r 1", "G 1", "B 1")",
         "left out: The colours of a pixel lie apart: R 1 (1), G 1 (3), B 1 (4)."},
        {tens, Insert(R"("eachPixelABC")", R"("W $pixelKey")"), "11x1 L 1 2 3 4 5 6 7 8 9 10 11 |"},
        {grid, Insert(R"("eachPixelXYZ")", RGB), "2x2 RGB 1 4 7 10 |"},
        {grid, Insert(R"("eachPixelYXZ")", RGB), "2x2 RGB 1 7 4 10 |"},
        {grid, Insert(R"("eachPixelZYX")", RGB), "2x2 RGB 1 7 4 10 |"},
        {grid, Insert(R"x(["(2, 1)", "(1, 2)"])x", RGB), "2x2 RGB 0 1 4 0 |"},
        {cube, Insert(R"("eachPixelXZY")", RGB), "2x2 RGB 1 4 7 10 |"},
        {cube, Insert(R"("eachPixelZXY")", RGB), "2x2 RGB 1 7 4 10 |"},
        {plus, Insert(R"("eachPixelABC")", RGB), "3x2 RGB 0 7 0 1 0 4 |"},
        {halves, Insert(R"("eachPixelGroup")", R"("W $pixelKey")"), "2x1 L 1 2 | 3=0 4=0 5=0"},
        {halves, Insert(R"(["A half", "Z half"])", RGB), "2x1 RGB 4 1 |"},
        {halves, Insert(R"(["All"])", RGB) + ", " + Insert(R"(["Even", "Odd"])", RGB),
         "2x1 RGB 7 4 | 1=0 2=0 3=0"},
        {quarters, Insert(R"(["A", "B", "C", "D"])", RGB), "2x2 RGB 1 4 7 10 |"},
        {quarters, Insert(R"("eachPixelGroup")", RGB), "2x2 RGB 4 10 7 1 |"},
        {rings, Insert(R"(["Ring", "C"])", RGB), "2x1 RGB 1 4 |"},
        {row3, Insert(R"(["4"])", RGB),
         "left out: The definition doesn't say where the pixel \"4\" is."},
        {row3, Insert(R"("eachPixelXXZ")", RGB),
         "left out: The definition doesn't say where the pixel \"eachPixelXXZ\" is."},
        {R"({"pixelCount": [1000000000, 1, 1]})", Insert(R"("eachPixelABC")", RGB),
         "left out: The definition has more pixels than any fixture."},
        {R"({"pixelCount": [171, 1, 1]})", Insert(R"("eachPixelABC")", RGB),
         "left out: It has 513 channels. A fixture has 512 at most."},
    };
    for (const auto& row : cases)
        EXPECT_EQ(Import(row.matrix, row.channels), row.expected) << row.matrix << row.channels;
}

TEST(OpenFixture, OtherChannelsLeaveTheLightOnAndStill)
{
    const auto range = [](int from, int to, const std::string& rest) {
        return R"({"dmxRange": [)" + std::to_string(from) + ", " + std::to_string(to) +
               R"(], "type": )" + rest + "}";
    };
    const struct
    {
        std::string channel; ///< members but its capabilities
        std::string capabilities;
        std::string expected; ///< the constants of channels 4 and 5, "" for free
        FixtureImport::ChannelReason reason;
    } cases[] = {
        {"",
         range(0, 9, R"("ShutterStrobe", "shutterEffect": "Closed")") + "," +
             range(10, 19, R"("ShutterStrobe", "shutterEffect": "Open")") + "," +
             range(20, 255, R"("ShutterStrobe", "shutterEffect": "Strobe")"),
         " 4=14", FixtureImport::ChannelReason::Open},
        {R"("defaultValue": 250, )",
         range(0, 9, R"("ShutterStrobe", "shutterEffect": "Open")") + "," +
             range(10, 239, R"("ShutterStrobe", "shutterEffect": "Strobe")") + "," +
             range(240, 255, R"("ShutterStrobe", "shutterEffect": "Open")"),
         " 4=250", FixtureImport::ChannelReason::Open},
        {"",
         range(0, 189, R"("Intensity")") + "," +
             range(190, 255, R"("Effect", "effectName": "Show")"),
         " 4=189", FixtureImport::ChannelReason::Bright},
        {"", range(0, 255, R"("Intensity", "brightnessStart": "bright", "brightnessEnd": "off")"),
         " 4=0", FixtureImport::ChannelReason::Bright},
        {"",
         range(0, 127, R"("ColorPreset", "comment": "Red")") + "," +
             range(128, 255, R"("NoFunction")"),
         " 4=255", FixtureImport::ChannelReason::Nothing},
        {"",
         range(0, 127, R"("WheelSlot", "wheel": "W", "slotNumber": 2)") + "," +
             range(128, 255, R"("WheelSlot", "wheel": "W", "slotNumber": 1)"),
         " 4=255", FixtureImport::ChannelReason::Clear},
        {R"("fineChannelAliases": ["Fine"], )", range(0, 65535, R"("Pan")"), " 4=128 5=0",
         FixtureImport::ChannelReason::Middle},
        {"",
         range(0, 199, R"("PanContinuous", "speedStart": "fast CW", "speedEnd": "stop")") + "," +
             range(200, 255, R"("PanContinuous", "speed": "fast CCW")"),
         " 4=199", FixtureImport::ChannelReason::Nothing},
        {"", range(0, 255, R"("EffectSpeed", "speedStart": "fast", "speedEnd": "slow")"), " 4=255",
         FixtureImport::ChannelReason::Rest},
        {"", range(0, 255, R"("Iris", "openPercentStart": "closed", "openPercentEnd": "open")"),
         " 4=255", FixtureImport::ChannelReason::Open},
        {"",
         range(0, 9, R"("Iris", "openPercent": "closed")") + "," +
             range(10, 255, R"("Iris", "openPercent": "open")"),
         " 4=255", FixtureImport::ChannelReason::Open},
        {"",
         range(0, 19, R"("Frost", "frostIntensity": "100%")") + "," +
             range(20, 39, R"("Frost", "frostIntensity": "0%")"),
         " 4=29", FixtureImport::ChannelReason::Nothing},
        {"",
         range(0, 125, R"("EffectSpeed", "speedStart": "fast", "speedEnd": "slow")") + "," +
             range(126, 130, R"("EffectSpeed", "speed": "stop")"),
         " 4=128", FixtureImport::ChannelReason::Nothing},
        {R"("defaultValue": 200, )",
         range(0, 255, R"("EffectSpeed", "speedStart": "0Hz", "speedEnd": "9Hz")"), " 4=0",
         FixtureImport::ChannelReason::Nothing},
        {R"("defaultValue": "50%", )",
         range(0, 255, R"("Zoom", "angleStart": "narrow", "angleEnd": "wide")"), "",
         FixtureImport::ChannelReason::Free},
        {"",
         range(0, 9, R"("Maintenance", "comment": "Reset")") + "," +
             range(10, 255, R"("Maintenance", "comment": "Normal")"),
         " 4=255", FixtureImport::ChannelReason::Nothing},
        {"",
         range(0, 9, R"("Maintenance", "comment": "Lamp off")") + "," +
             range(10, 29, R"("Maintenance", "comment": "Fan 2")"),
         " 4=19", FixtureImport::ChannelReason::First},
        {R"("defaultValue": 513, "dmxValueResolution": "16bit", "fineChannelAliases": ["Fine"], )",
         range(0, 65535, R"("Effect", "effectName": "Show")"), " 4=2 5=1",
         FixtureImport::ChannelReason::Default},
        {R"("defaultValue": true, )", R"({"dmxRange": "all", "type": 7}, 5, {"dmxRange": [9, 3]})",
         " 4=0", FixtureImport::ChannelReason::First},
    };
    for (const auto& row : cases) {
        const bool hasFine = row.channel.find("Fine") != std::string::npos;
        const std::string json =
            R"({"wheels": {"W": {"slots": [{"type": "Open"}, {"type": "Gobo"}]}},
                "availableChannels": {)" +
            Available + R"(, "X": {)" + row.channel + R"("capabilities": [)" + row.capabilities +
            R"(]}}, "modes": [{"channels": ["Red", "Green", "Blue", "X")" +
            (hasFine ? R"(, "Fine")" : "") + "]}]}";
        const auto read = FixtureImport::ReadOpenFixture(QByteArray::fromStdString(json));
        ASSERT_FALSE(read.fault) << json << InWords(read.fault).toStdString();
        const auto mode = FixtureImport::Convert(read.definition).modes.at(0);
        EXPECT_EQ(Support::TextOf(mode), "1x1 RGB 1 |" + row.expected) << row.capabilities;
        EXPECT_EQ(mode.channels.at(3).reason, row.reason) << row.capabilities;
    }
}

/// The text again and again, with commas between.
std::string Many(int count, const std::string& text)
{
    std::string list = text;
    for (int i = 1; i < count; ++i)
        list += ", " + text;
    return list;
}

TEST(OpenFixture, HostileDefinitionsCostNeitherTimeNorMemory)
{
    std::string groups;
    std::string keys;
    for (int i = 0; i < 500; ++i) {
        const std::string key = '"' + std::string("g") + std::to_string(i) + '"';
        groups += (i ? "," : "") + key + R"x(: {"name": ["^(([0-9, ()]+)+)+$x"]})x";
        keys += (i ? "," : "") + key;
    }
    std::string templates;
    for (int i = 0; i < 990; ++i)
        templates += ", \"a" + std::to_string(i) + R"( $pixelKey": {})";
    std::string unknown = R"("x")";
    for (int i = 0; i < 500'000; ++i)
        unknown += ", \"a" + std::to_string(i) + " x\"";
    const std::string large = R"({"pixelCount": [128, 128, 1], "pixelGroups": {)";
    const std::string longKey(2'000'000, 'n');
    const struct
    {
        const char* what;
        std::string matrix;
        std::string channels;
        std::string expected;
    } cases[] = {
        {"patterns that could search for years, in as many groups as there may be",
         large + groups + "}}", Insert("[" + keys + "]", R"("W $pixelKey")"), "500x1 L 1 "},
        {"a million constraints of each pixel",
         large + R"("G": {"x": [)" + Many(1'000'000, R"(">=1")") + "]}}}",
         Insert(R"(["G"])", R"("W $pixelKey")"), "1x1 L 1 |"},
        {"unknown names, each of which may be made of a thousand templates", "{}", unknown,
         "left out: The definition doesn't say what the channel \"x\" does."},
        {"a long name, again and again", R"({"pixelKeys": [[[")" + longKey + R"("]]]})",
         Insert(R"("eachPixelABC")", Many(500, R"("W $pixelKey")")),
         "left out: The definition doesn't say what the channel \"W $pixelKey\" does."},
        {"billions of channels from a few inserts", large + "}}",
         Many(201, Insert(R"("eachPixelABC")", Many(10'001, "null"))),
         "left out: It has 32935133184 channels. A fixture has 512 at most."},
    };
    for (const auto& row : cases) {
        const std::clock_t before = std::clock();
        EXPECT_EQ(Import(row.matrix, row.channels, "", templates).substr(0, row.expected.size()),
                  row.expected)
            << row.what;
        // Without its limit each would take minutes, or all memory.
        EXPECT_LT((std::clock() - before) / CLOCKS_PER_SEC, 20) << row.what;
    }
    const auto ranges = FixtureImport::ReadOpenFixture(QByteArray::fromStdString(
        R"({"modes": [{}], "availableChannels": {"X": {"capabilities": [)" +
        Many(1000, R"({"dmxRange": [0, 0]})") + "]}}}"));
    EXPECT_EQ(ranges.definition.channels.at(0).ranges.size(), 256U);
}

} // namespace
