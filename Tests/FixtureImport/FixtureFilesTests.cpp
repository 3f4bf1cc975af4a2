// SPDX-License-Identifier: MIT
// Files and folders: what is found, redirects, manufacturers, names, and bad files of every kind.
#include "FixtureImport/Conversion.h"
#include "FixtureImport/FixtureFiles.h"
#include "FixtureImport/ProductNames.h"
#include "LibTools/XmlFile.h"
#include "Support/ImportedText.h"
#include "Support/Literals.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <filesystem>

namespace {

const std::string Par = R"({"name": "Par", "availableChannels": {
    "R": {"capability": {"type": "ColorIntensity", "color": "Red"}},
    "G": {"capability": {"type": "ColorIntensity", "color": "Green"}},
    "B": {"capability": {"type": "ColorIntensity", "color": "Blue"}}},
    "modes": [{"name": "3ch", "channels": ["R", "G", "B"]}]})";
const std::string Qxf =
    R"(<FixtureDefinition><Manufacturer>Maker &amp; Sons</Manufacturer><Model>Par</Model>
    <Channel Name="D" Preset="IntensityDimmer"/><Channel Name="S" Preset="SpeedPanFastSlow"/>
    <Mode Name="3ch"><Channel Number="0">D</Channel></Mode>
    <Mode Name="No light"><Channel Number="0">S</Channel></Mode></FixtureDefinition>)";

class FixtureFilesTest : public ::testing::Test
{
protected:
    QString Path(const std::string& name = "") const
    {
        return QString::fromStdString((folder.Path() / name).string());
    }
    /// "Manufacturer: product" of each fixture of a file, or its fault.
    std::string Read(const std::string& name)
    {
        const FixtureImport::ImportedFile file = reader.Read(Path(name));
        if (file.fault)
            return InWords(file.fault).toStdString();
        QStringList fixtures;
        for (const auto& definition : file.definitions) {
            for (const auto& mode : definition.modes) {
                fixtures << (mode.fixture ? definition.manufacturer + ": "_q +
                                                QString::fromStdWString(mode.fixture->product)
                                          : InWords(mode.fault));
            }
        }
        return fixtures.join(QLatin1Char('|')).toStdString();
    }

    Support::TemporaryFolder folder;
    FixtureImport::FixtureFileReader reader;
};

TEST_F(FixtureFilesTest, KindsNamesAndRedirects)
{
    folder.Write("ofl/manufacturers.json",
                 R"({"good-light": {"name": "Good Light Ltd."}, "bad": 7})");
    folder.Write("ofl/good-light/par.json", "\xEF\xBB\xBF" + Par);
    folder.Write("ofl/no-name/par.json", Par);
    folder.Write(
        "ofl/no-name/brand.json",
        R"({"name": "Lamp", "redirectTo": "good-light/par", "reason": "SameAsDifferentBrand"})");
    folder.Write("ofl/no-name/old.json",
                 R"({"name": "Old", "redirectTo": "good-light/par", "reason": "FixtureRenamed"})");
    folder.Write("ofl/no-name/lost.json", R"({"name": "Lost", "redirectTo": "good-light/none"})");
    folder.Write("ofl/no-name/out.json", R"({"name": "Out", "redirectTo": "../good-light/par"})");
    folder.Write("ofl/no-name/one.json", R"({"name": "1", "redirectTo": "no-name/two"})");
    folder.Write("ofl/no-name/two.json", R"({"name": "2", "redirectTo": "no-name/one"})");
    for (int left = 17; left > 0; --left) {
        const auto next = left > 1 ? "no-name/far" + std::to_string(left - 1) : "good-light/par";
        folder.Write("ofl/no-name/far" + std::to_string(left) + ".json",
                     R"({"name": "Far", "redirectTo": ")" + next + "\"}");
    }
    folder.Write("x/par.qxf", Qxf);
    folder.Write("x/lib.wfl",
                 R"(<LEDFixtureLibrary version="1"><LEDFixture manufacturer="M" product="P">
                    <PixelMapping width="1" height="1" type="RGB">1</PixelMapping></LEDFixture>
                    <LEDFixture manufacturer="M" product="Q" /></LEDFixtureLibrary>)");
    const std::pair<const char*, const char*> cases[] = {
        {"ofl/good-light/par.json", "Good Light Ltd.: Par - 3ch"},
        {"ofl/no-name/par.json", "No Name: Par - 3ch"},
        {"ofl/no-name/brand.json", "No Name: Lamp - 3ch"},
        {"ofl/no-name/old.json", "Good Light Ltd.: Par - 3ch"},
        {"ofl/no-name/lost.json",
         "The file only points to the fixture good-light/none, which isn't there."},
        {"ofl/no-name/out.json",
         "The file only points to the fixture ../good-light/par, which isn't there."},
        {"ofl/no-name/one.json",
         "The file only points to the fixture no-name/two, which points back to it."},
        {"ofl/no-name/far16.json", "No Name: Far - 3ch"},
        {"ofl/no-name/far17.json",
         "The file only points to the fixture good-light/par, by way of too many others."},
        {"x/par.qxf", "Maker & Sons: Par - 3ch|It has no channels for colours or brightness."},
        {"x/lib.wfl", "M: P|The fixture breaks the rules of a library."},
        {"x/none.qxf", "There is no such file."},
        {"x", "It is no fixture definition that PixelWeft knows."},
    };
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(Read(name), expected) << name;
}

TEST_F(FixtureFilesTest, BadFilesAreALineEach)
{
    std::filesystem::resize_file(folder.Write("huge.json", "{"), 100'000'000);
    const std::string deep(200'000, '[');
    std::string elements;
    for (int i = 0; i < 50'000; ++i)
        elements += "<Channel>";
    std::string laughs = R"(<!DOCTYPE x [<!ENTITY a "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa">)";
    for (char c = 'b'; c < 'k'; ++c) {
        laughs += std::string("<!ENTITY ") + c + " \"";
        for (int i = 0; i < 20; ++i)
            laughs += std::string("&") + static_cast<char>(c - 1) + ";";
        laughs += "\">";
    }
    const std::pair<std::string, std::string> cases[] = {
        {"", "It is no fixture definition"},
        {"lamp", "It is no fixture definition"},
        {std::string("\0\0\0", 3), "It is no fixture definition"},
        {"{}", "It is no fixture definition"},
        {R"({"modes": 5})", "It is no fixture definition"},
        {R"({"modes": []})", "It has no fixtures."},
        {R"({"modes": [7, null, []], "matrix": [], "availableChannels": 3})",
         "It has no channels."},
        {R"({"name": "x)", "The file is cut off or damaged"},
        {R"({"modes": )" + deep, "The file is cut off or damaged"},
        {"<x/>", "It is no fixture definition"},
        {"<FixtureDefinition/>", "It has no fixtures."},
        {"<FixtureDefinition><Mode>", "The file is cut off or damaged"},
        {"<FixtureDefinition><Channel>" + elements, "The file is cut off or damaged"},
        {laughs + "]><FixtureDefinition><Model>&j;</Model></FixtureDefinition>",
         "The file is cut off or damaged"},
        {R"(<!DOCTYPE x SYSTEM "http://127.0.0.1:9/x.dtd"><FixtureDefinition/>)",
         "It has no fixtures."},
    };
    EXPECT_EQ(Read("huge.json"), "It is larger than any fixture definition.");
    for (const auto& [text, expected] : cases) {
        folder.Write("bad", text);
        EXPECT_EQ(Read("bad").substr(0, expected.size()), expected) << text.substr(0, 60);
    }
    std::string modes;
    for (int i = 0; i < 300; ++i)
        modes += R"(<Mode Name="M"><Channel Number="0">D</Channel></Mode>)";
    folder.Write("bad", R"(<FixtureDefinition><Channel Name="D" Preset="IntensityDimmer"/>)" +
                            modes + "</FixtureDefinition>");
    const auto many = reader.Read(Path("bad"));
    ASSERT_EQ(many.definitions.at(0).modes.size(), 257U);
    EXPECT_EQ(Support::TextOf(many.definitions[0].modes.back()),
              "left out: The definition has more modes than any fixture.");
    EXPECT_FALSE(many.IsWhole());
}

TEST_F(FixtureFilesTest, WhatIsQuotedFromAFileIsCleanAndShort)
{
    const std::string raw = R"(\u001b[2J\n)" + std::string(300, 'x');
    const std::string clean = "[2J " + std::string(195, 'x');
    folder.Write("raw.json",
                 R"({"availableChannels": {"W": {"capability": {"type": "Intensity"}}, ")" + raw +
                     R"(": {"capability": {"type": "NoFunction", "comment": ")" + raw +
                     R"("}}}, "modes": [{"channels": ["W", ")" + raw + R"("]}, {"channels": ["?)" +
                     raw + std::string(1000, 'x') + R"("]}]})");
    const auto file = reader.Read(Path("raw.json"));
    ASSERT_EQ(file.definitions.at(0).modes.size(), 2U);
    const auto& channel = file.definitions[0].modes[0].channels.at(1);
    EXPECT_EQ(channel.name.toStdString(), clean);
    EXPECT_EQ(channel.range.toStdString(), clean);
    EXPECT_EQ(file.definitions[0].modes[1].fault.detail.toStdString(),
              "? " + clean + std::string(799, 'x'));
}

TEST_F(FixtureFilesTest, FoldersAreSearchedOnceAndCanBeLeft)
{
    for (const char* name : {"b/2.qxf", "b/1.json", "b/manufacturers.json", "b/read.me", "a.WFL"})
        folder.Write(name, "");
    std::filesystem::create_directory_symlink(folder.Path(), folder.Path() / "b" / "circle");
    const QStringList all{Path("a.WFL"), Path("b/1.json"), Path("b/2.qxf")};
    EXPECT_EQ(FixtureImport::FindFixtureFiles({Path(), Path("b/../b/1.json")}), all);
    const QStringList named{Path("b/read.me"), Path("gone")};
    EXPECT_EQ(FixtureImport::FindFixtureFiles(named), named);
    EXPECT_TRUE(
        FixtureImport::FindFixtureFiles({Path()}, [](int found) { return found < 2; }).isEmpty());
}

TEST(ProductNames, EachFixtureKeepsAProductOfItsOwn)
{
    using Outcome = FixtureImport::ProductNames::Outcome;
    FixtureImport::ProductNames names;
    const auto take = [&](const wchar_t* maker, int width) {
        LEDFixture fixture(maker, L"Par", PixelMap(width, 1, PixelMapType::RGB), 0, 3);
        const Outcome outcome = names.Take(fixture);
        return std::pair(outcome, QString::fromStdWString(fixture.product).toStdString());
    };
    EXPECT_EQ(take(L"A", 1), std::pair(Outcome::Added, std::string("Par")));
    EXPECT_EQ(take(L"A", 1).first, Outcome::Known);
    EXPECT_EQ(take(L"B", 1), std::pair(Outcome::Renamed, std::string("Par (B)")));
    EXPECT_EQ(take(L"B", 2), std::pair(Outcome::Renamed, std::string("Par (B) 2")));
    EXPECT_EQ(take(L"B", 1).first, Outcome::Known);
    EXPECT_EQ(take(L"B", 2).first, Outcome::Known);
    EXPECT_EQ(take(L"B", 3), std::pair(Outcome::Renamed, std::string("Par (B) 3")));
}

TEST(ProductNames, NamesComeBackFromAFile)
{
    const std::pair<QString, QString> cases[] = {
        {"  A \n\t B "_q, "A B"_q},
        {QString(QChar(0)) + QChar(7) + QChar(0xFFFF), "none"_q},
        {"A&#x41;"_q, "A& #x41;"_q},
        {"Bühne \xF0\x9F\x92\xA1"_q, "Bühne \xF0\x9F\x92\xA1"_q},
        {QString(300, QLatin1Char('x')), QString(200, QLatin1Char('x'))},
    };
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(FixtureImport::CleanName(name, "none"_q), expected);
    EXPECT_EQ(FixtureImport::CleanName(QString(QChar(0xD83D)), "none"_q).size(), 1);
}

TEST_F(FixtureFilesTest, TheCommandWritesALibrary)
{
    folder.Write("in/good/par.json", Par);
    folder.Write("in/par.qxf", Qxf);
    folder.Write("bad/par.json", "{");
    folder.Write("dark/spot.json", R"({"modes": [{"name": "No light"}]})");
    const auto run = [&](const QStringList& arguments) {
        QProcess command;
        command.start(QStringLiteral(PIXELWEFT_FIXTURES), arguments);
        EXPECT_TRUE(command.waitForFinished());
        return std::pair(command.exitCode(), command.readAllStandardOutput().toStdString());
    };
    EXPECT_EQ(run({Path("in/good")}).first, 0);
    EXPECT_EQ(run({Path("bad")}).first, 2);
    EXPECT_EQ(run({Path("none")}).first, 2);
    EXPECT_EQ(run({Path("dark"), Path("bad"), "-o"_q, Path("dark.wfl")}).first, 1);
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "dark.wfl"));
    EXPECT_EQ(run({}).first, 2);
    EXPECT_EQ(run({Path("in/good"), "-o"_q, Path("no/folder.wfl")}).first, 2);
    const auto [status, report] =
        run({Path("in"), Path("bad"), "-o"_q, Path("out.wfl"), "--report"_q});
    EXPECT_EQ(status, 1);
    EXPECT_NE(report.find("Files: 3, modes: 3, imported: 2, known already: 0"), std::string::npos)
        << report;
    EXPECT_NE(report.find("No light: left out. It has no channels for"), std::string::npos);
    EXPECT_NE(report.find("  1   - R (component 1 of pixel 1)"), std::string::npos);
    const std::string written = Support::ReadBytes(folder.Path() / "out.wfl");
    EXPECT_EQ(XmlText::Decode(written), R"x(<LEDFixtureLibrary version="1">
    <LEDFixture manufacturer="Good" product="Par - 3ch" channel_count="3">
        <PixelMapping width="1" height="1" type="RGB">1  </PixelMapping>
    </LEDFixture>
    <LEDFixture manufacturer="Maker &amp; Sons" product="Par - 3ch (Maker &amp; Sons)" channel_count="1">
        <PixelMapping width="1" height="1" type="L">1  </PixelMapping>
    </LEDFixture>
</LEDFixtureLibrary>
)x");
    EXPECT_EQ(run({Path("out.wfl"), "-o"_q, Path("again.wfl")}).first, 0);
    EXPECT_EQ(Support::ReadBytes(folder.Path() / "again.wfl"), written);
}

} // namespace
