// SPDX-License-Identifier: MIT
// The default library and the demo document that the program carries: nothing in them is rejected
// or changes its form when it is saved.
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappingFile.h"
#include "Model/PatchText.h"
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

TEST_F(BundledData, EveryFixtureLoadsUnderItsOwnNameAndIsSavedAsItWas)
{
    std::set<std::wstring> products;
    for (const DeviceLedItem* fixture : library.GetFixtures()) {
        products.insert(fixture->product);
        // The engine leaves out a pixel that ends on the last channel of a universe.
        EXPECT_LE(fixture->pixelMap.GetHighestChannel(), std::min(511, fixture->GetChannelCount()));
    }
    EXPECT_EQ(products.size(), 170U);

    // A save gives the resource, but for "intensity_channel", which is read and never written.
    std::string expected = ResourceText(LibraryPath);
    const std::string intensity = " intensity_channel=\"159\"";
    for (int time = 0; time < 2; ++time)
        expected.erase(expected.find(intensity), intensity.size());
    const auto saved = folder.Path() / "saved.wfl";
    ASSERT_TRUE(library.Save(saved.wstring()));
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
    MappingFile demoFile(QString::fromStdWString(DemoPath), library);
    ASSERT_TRUE(demoFile.IsWhole());
    document.Load(std::move(demoFile), library, nodes);
    std::set<QString> addresses;
    for (const MappedLedItem* element : document.GetAllItems())
        addresses.insert(AddressText(*element->GetArtNetMapping()));
    EXPECT_EQ(addresses.size(), 15U);
    // A save carries the whole library; from the merger on, it is what was loaded.
    const auto saved = folder.Path() / "saved.wfm";
    ASSERT_TRUE(document.Save(saved.wstring(), library, nodes));
    const std::string demo = ResourceText(DemoPath);
    EXPECT_TRUE(XmlText::Decode(Support::ReadBytes(saved))
                    .ends_with(demo.substr(demo.find("<UniverseMerging"))));
}

} // namespace
