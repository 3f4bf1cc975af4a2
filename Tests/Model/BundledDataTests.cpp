// SPDX-License-Identifier: MIT
// The default library and the demo document that the program carries, through the models that load
// them: nothing in them may be rejected, collide, or change its form when it is saved.
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Support/TemporaryFolder.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

const std::wstring LibraryPath = L":/wfl/Resources/LEDFixtureLib.wfl";
const std::wstring DemoPath = L":/wfm/Resources/DemoMapping.wfm";

std::string ResourceText(const std::wstring& path)
{
    QFile file(QString::fromStdWString(path));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    return XmlText::Decode({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

std::string Without(std::string text, const std::string& part)
{
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part))
        text.erase(at, part.size());
    return text;
}

class DefaultData : public ::testing::Test
{
protected:
    void SetUp() override
    {
        DeviceModel::defaultConflictCallback = [this](const QString&, const QString&) {
            ++conflicts;
            return KeepFixture;
        };
        library.Merge(LibraryPath, true);
    }
    void TearDown() override { DeviceModel::defaultConflictCallback = before; }

    const DeviceLedItem& Fixture(const wchar_t* product) const
    {
        const DeviceLedItem* item = library.GetLEDFixtureByProduct(product);
        if (!item)
            throw std::runtime_error("no such product");
        return *item;
    }

    FixtureConflictCallback before = DeviceModel::defaultConflictCallback;
    int conflicts = 0;
    DeviceModel library;
};

/// The channels that the engine would write, each once: a channel that two pixels share is a fault.
void ExpectSoundChannels(const DeviceLedItem& fixture)
{
    const int size = fixture.pixelMap.GetChannelsPerPixel();
    std::set<int> taken;
    for (const int cell : fixture.pixelMap.GetChannels()) {
        for (int channel = cell; cell > 0 && channel < cell + size; ++channel)
            EXPECT_TRUE(taken.insert(channel).second) << channel;
    }
    // The engine leaves out a pixel that ends on the last channel of a universe.
    EXPECT_LE(fixture.pixelMap.GetHighestChannel(), 511);
    EXPECT_LE(fixture.pixelMap.GetHighestChannel(), fixture.GetChannelCount());
    EXPECT_LE(fixture.staticChannels.GetHighestChannel(), fixture.GetChannelCount());
    EXPECT_LE(fixture.GetChannelCount(), LEDFixture::MaxChannels);
}

TEST_F(DefaultData, EveryFixtureLoadsUnderItsOwnNameAndFits)
{
    EXPECT_EQ(library.GetVersion(), 1);
    ASSERT_EQ(library.GetFixtures().size(), 170);
    EXPECT_EQ(conflicts, 0);
    std::map<PixelMapType, int> types;
    std::set<std::wstring> products;
    int counted = 0;
    int constants = 0;
    for (const DeviceLedItem* fixture : library.GetFixtures()) {
        SCOPED_TRACE(QString::fromStdWString(fixture->product).toStdString());
        ++types[fixture->pixelMap.GetType()];
        products.insert(fixture->product);
        counted += fixture->GetStoredChannelCount() == LEDFixture::AutomaticChannelCount ? 0 : 1;
        for (int channel = 1; channel <= LEDFixture::MaxChannels; ++channel)
            constants += fixture->staticChannels.HasValueInRange(channel, 1) ? 1 : 0;
        ExpectSoundChannels(*fixture);
    }
    EXPECT_EQ(products.size(), 170U);
    EXPECT_EQ(counted, 24);
    EXPECT_EQ(constants, 83);
    const std::map<PixelMapType, int> wanted = {
        {PixelMapType::RGB, 107},     {PixelMapType::RGBL, 15},     {PixelMapType::RGBA, 8},
        {PixelMapType::RGBWPlus, 19}, {PixelMapType::RGBWMinus, 2}, {PixelMapType::L, 8},
        {PixelMapType::RrGgBb, 1},    {PixelMapType::RGBAmber, 8},  {PixelMapType::RGBWAmber, 2}};
    EXPECT_EQ(types, wanted);
}

TEST_F(DefaultData, SaveGivesTheResourceWithoutItsIntensityAttributes)
{
    // "intensity_channel" is read and kept, and a save leaves it out.
    const std::string resource = ResourceText(LibraryPath);
    const std::string expected = Without(resource, " intensity_channel=\"159\"");
    ASSERT_EQ(resource.size() - expected.size(),
              2 * std::string(" intensity_channel=\"159\"").size());
    const Support::TemporaryFolder folder;
    const std::filesystem::path saved = folder.Path() / "saved.wfl";
    ASSERT_EQ(library.Save(saved.wstring()), 0);
    EXPECT_TRUE(Support::ReadBytes(saved) == XmlText::Encode(expected));
    EXPECT_EQ(Fixture(L"LED Pixel Track Pro (Mode 160)").intensityChannel, 159);
}

TEST_F(DefaultData, ChainsAndCutPanelsLightEachPixelOnce)
{
    // The chain runs from neighbour to neighbour, but for the one jump back to the middle.
    const PixelMap& chain = Fixture(L"iFlex").pixelMap;
    std::map<int, std::pair<int, int>> spots;
    for (int y = 0; y < chain.GetHeight(); ++y) {
        for (int x = 0; x < chain.GetWidth(); ++x)
            spots[chain.GetCell(x, y)] = {x, y};
    }
    ASSERT_EQ(spots.size(), 144U);
    EXPECT_EQ(spots.begin()->first, 1);
    EXPECT_EQ(spots.rbegin()->first, 430);
    int jumps = 0;
    for (auto next = std::next(spots.begin()); next != spots.end(); ++next) {
        const auto& [x, y] = std::prev(next)->second;
        jumps += std::abs(next->second.first - x) + std::abs(next->second.second - y) == 1 ? 0 : 1;
    }
    EXPECT_EQ(jumps, 1);

    std::vector<int> lit(24 * 24, 0);
    for (const wchar_t* universe : {L"0", L"1", L"2", L"3", L"4"}) {
        const std::wstring product = std::wstring(L"LED Panel C60-25 Univ") + universe;
        const auto& cells = Fixture(product.c_str()).pixelMap.GetChannels();
        ASSERT_EQ(cells.size(), lit.size());
        for (std::size_t index = 0; index < cells.size(); ++index)
            lit[index] += cells[index] > 0 ? 1 : 0;
    }
    EXPECT_EQ(lit, std::vector<int>(24 * 24, 1));
}

TEST_F(DefaultData, DemoDocumentStandsOnTheLibraryAndKeepsItsForm)
{
    const int known = static_cast<int>(library.GetFixtures().size());
    library.Merge(DemoPath, true);
    EXPECT_EQ(conflicts, 0);
    EXPECT_EQ(library.GetFixtures().size(), known);

    MappedDeviceModel document;
    ArtNetNodeModel nodes;
    ASSERT_EQ(document.Load(DemoPath, library, nodes), 0);
    EXPECT_EQ(document.GetCanvasWidth(), 640);
    EXPECT_EQ(document.GetCanvasHeight(), 360);
    EXPECT_EQ(document.GetNetwork(), L"2.X.X.X");
    ASSERT_EQ(document.rowCount(), 15);
    std::map<int, std::set<int>> universes;
    std::set<std::wstring> names;
    for (const MappedLedItem* element : document.GetAllItems()) {
        const DMXMappingArtNet* address = element->GetArtNetMapping();
        ASSERT_NE(address, nullptr);
        EXPECT_TRUE(address->IsAuto());
        names.insert(element->description);
        std::set<int>& taken = universes[address->GetSubnet() * 16 + address->GetUniverse()];
        for (int channel = 0; channel < element->GetFixture().GetChannelCount(); ++channel)
            EXPECT_TRUE(taken.insert(address->GetChannel() + channel).second);
        EXPECT_LE(*taken.rbegin(), 512);
        const VideoMapping* video = element->GetVideoMapping();
        EXPECT_TRUE(video->centerX > 0 && video->centerX < 1);
        EXPECT_TRUE(video->centerY > 0 && video->centerY < 1);
    }
    EXPECT_EQ(names.size(), 15U);
    EXPECT_GE(universes.size(), 4U);

    // A save carries the whole library; from the merger on, it is what was loaded.
    const Support::TemporaryFolder folder;
    const std::filesystem::path saved = folder.Path() / "saved.wfm";
    ASSERT_EQ(document.Save(saved.wstring(), library, nodes), 0);
    const auto tail = [](const std::string& text) {
        return text.substr(std::min(text.size(), text.find("<UniverseMerging")));
    };
    EXPECT_EQ(tail(XmlText::Decode(Support::ReadBytes(saved))), tail(ResourceText(DemoPath)));
}

TEST(DefaultPictures, AreReadableAndTellTheirSides)
{
    for (const char* name :
         {":/Resources/DemoPicture.bmp", ":/Resources/ColourBars.bmp",
          ":/bitmaps/Resources/DemoPicture.bmp", ":/bitmaps/Resources/DemoPictureCBars.png"})
    {
        SCOPED_TRACE(name);
        const QImage picture(QString::fromLatin1(name));
        ASSERT_EQ(picture.size(), QSize(640, 360));
        // No mirrored or turned picture looks like the upright one.
        EXPECT_NE(picture, picture.mirrored(true, false));
        EXPECT_NE(picture, picture.mirrored(false, true));
        EXPECT_NE(picture, picture.mirrored(true, true));
    }
}

} // namespace
