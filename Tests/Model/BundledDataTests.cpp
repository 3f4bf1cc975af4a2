// SPDX-License-Identifier: MIT
// The default library and the demo document that the program carries: nothing in them is rejected,
// collides, or changes its form when it is saved.
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Support/TemporaryFolder.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <QFile>

#include <set>

namespace {

const std::wstring LibraryPath = L":/wfl/Resources/LEDFixtureLib.wfl";
const std::wstring DemoPath = L":/wfm/Resources/DemoMapping.wfm";

class BundledData : public ::testing::Test
{
protected:
    BundledData() { library.Merge(LibraryPath, true); }

    static std::string ResourceText(const std::wstring& path)
    {
        QFile file(QString::fromStdWString(path));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return XmlText::Decode(file.readAll().toStdString());
    }

    Support::TemporaryFolder folder;
    DeviceModel library;
};

/// Takes each channel of a pixel or an element, and none twice.
void Take(std::set<int>& taken, int first, int count)
{
    for (int channel = first; channel < first + count; ++channel)
        EXPECT_TRUE(taken.insert(channel).second) << channel;
}

TEST_F(BundledData, EveryFixtureLoadsUnderItsOwnNameAndFits)
{
    std::set<std::wstring> products;
    for (const DeviceLedItem* fixture : library.GetFixtures()) {
        SCOPED_TRACE(QString::fromStdWString(fixture->product).toStdString());
        products.insert(fixture->product);
        std::set<int> taken;
        for (const int cell : fixture->pixelMap.GetChannels())
            Take(taken, cell, cell > 0 ? fixture->pixelMap.GetChannelsPerPixel() : 0);
        // The engine leaves out a pixel that ends on the last channel of a universe.
        EXPECT_LE(fixture->pixelMap.GetHighestChannel(), 511);
        EXPECT_LE(fixture->pixelMap.GetHighestChannel(), fixture->GetChannelCount());
        EXPECT_LE(fixture->staticChannels.GetHighestChannel(), fixture->GetChannelCount());
        EXPECT_LE(fixture->GetChannelCount(), LEDFixture::MaxChannels);
    }
    EXPECT_EQ(products.size(), 170U);

    // A save gives the resource, but for "intensity_channel", which is read and never written.
    std::string expected = ResourceText(LibraryPath);
    const std::string intensity = " intensity_channel=\"159\"";
    for (int time = 0; time < 2; ++time)
        expected.erase(expected.find(intensity), intensity.size());
    const auto saved = folder.Path() / "saved.wfl";
    ASSERT_EQ(library.Save(saved.wstring()), 0);
    EXPECT_TRUE(Support::ReadBytes(saved) == XmlText::Encode(expected));
    EXPECT_EQ(library.GetLEDFixtureByProduct(L"LED Pixel Track Pro (Mode 160)")->intensityChannel,
              159);
}

TEST_F(BundledData, TheDemoDocumentStandsOnTheLibraryAndKeepsItsForm)
{
    const int known = static_cast<int>(library.GetFixtures().size());
    library.Merge(DemoPath, true);
    EXPECT_EQ(library.GetFixtures().size(), known);
    MappedDeviceModel document;
    ArtNetNodeModel nodes;
    ASSERT_EQ(document.Load(DemoPath, library, nodes), 0);
    ASSERT_EQ(document.rowCount(), 15);
    std::map<int, std::set<int>> universes;
    for (const MappedLedItem* element : document.GetAllItems()) {
        const DMXMappingArtNet* address = element->GetArtNetMapping();
        ASSERT_TRUE(address && address->IsAuto());
        std::set<int>& taken = universes[address->GetPortAddress()];
        Take(taken, address->GetChannel(), element->GetFixture().GetChannelCount());
        EXPECT_LE(*taken.rbegin(), 512);
    }
    // A save carries the whole library; from the merger on, it is what was loaded.
    const auto saved = folder.Path() / "saved.wfm";
    ASSERT_EQ(document.Save(saved.wstring(), library, nodes), 0);
    const std::string demo = ResourceText(DemoPath);
    EXPECT_TRUE(XmlText::Decode(Support::ReadBytes(saved))
                    .ends_with(demo.substr(demo.find("<UniverseMerging"))));
}

} // namespace
