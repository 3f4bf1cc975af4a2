// SPDX-License-Identifier: MIT
// What copies of elements are: their places, addresses and names, in the order in which they are
// made, and what of them another document can read.
#include "Model/DeviceManager.h"
#include "Model/ElementText.h"
#include "Model/MappedDeviceModel.h"
#include "Support/LogCapture.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace {

std::shared_ptr<const DeviceLedItem> Fixture(const wchar_t* product, int channels)
{
    return std::make_shared<DeviceLedItem>(L"Maker", product, PixelMap(2, 1, PixelMapType::RGB), 1,
                                           channels);
}

/// 0.25 wide and 0.125 high.
ElementValues Element(const std::wstring& name, float x, float y, PatchAddress address = {},
                      int channels = 170)
{
    VideoMapping video({x, y}, {0.25F, 0.125F}, 30, true, false);
    video.filterMode = VideoFilterMode::NearestNeighbor;
    return {
        name, Fixture(L"Lamp", channels), video,
        DMXMappingArtNet(address.subnet, address.universe, address.channel, L"2.0.0.9", L"Node")};
}

class Copies : public testing::Test
{
protected:
    void Document(std::initializer_list<const wchar_t*> names)
    {
        std::vector<ElementValues> elements;
        for (const wchar_t* name : names)
            elements.push_back(Element(name, 0, 0));
        manager.AddMappedItems(MakeElements(elements));
    }
    [[nodiscard]] NumbersInUse InUse() const
    {
        return NumbersInUse(*manager.GetMappedDeviceModel());
    }
    /// In eighths of the canvas: "x,y sub-net:universe/channel name".
    static std::string Line(const ElementValues& element)
    {
        std::ostringstream line;
        line << element.video.centerX * 8 << ',' << element.video.centerY * 8 << ' '
             << element.address->GetSubnet() << ':' << element.address->GetUniverse() << '/'
             << element.address->GetChannel() << ' '
             << std::string(element.description.begin(), element.description.end());
        return line.str();
    }
    static void Expect(const std::vector<ElementValues>& copies, const std::string& wanted)
    {
        std::string lines;
        for (const ElementValues& copy : copies)
            lines += Line(copy) + '\n';
        EXPECT_EQ(lines, wanted);
    }

    DeviceManager manager{QString()};
    bool ready = manager.Initialize();
};

} // namespace

TEST_F(Copies, TakeTheNextNumberThatTheDocumentHasNot)
{
    Document({L"Par-7", L"Par-8", L"Par-10", L"Par-999", L"-7", L"Par-007", L"Bar-1", L"Bar-2",
              L"Odd-007", L"Odd-99999999999999999999"});
    const std::wstring longest(512, L'x');
    using Case = std::tuple<std::wstring, int, std::wstring>;
    for (const auto& [name, counter, copy] : {
             Case{L"Par-7", 0, L"Par-9"},
             Case{L"Par-7", 4, L"Par-13"},
             Case{L"Par-9", 1, L"Par-10"}, // searched for before the counter alone
             Case{L"Par-007", 0, L"Par-9"},
             Case{L"Par-999", 0, L"Par-1000"},
             Case{L"Par-1234", 0, L"Par-1234-1"},
             Case{L"Par-0", 0, L"Par-0"},
             Case{L"Par-10", 0, L"Par-11"},
             Case{L"Odd-7", 0, L"Odd-7"},
             Case{L"Bar", 0, L"Bar-3"},
             Case{L"Bar-", 0, L"Bar--1"},
             Case{L"Bar--2", 0, L"Bar--2"},
             Case{L"-7", 0, L"-7-1"},
             Case{L"", 0, L"-1"},
             Case{L"A-7b", 0, L"A-7b-1"},
             Case{longest, 0, longest + L"-1"},
             Case{longest + L"-77", 0, longest + L"-1"},
             Case{longest.substr(2) + L"-7", 0, longest.substr(2) + L"-7"},
         })
        EXPECT_TRUE(CopyElement(Element(name, 0, 0), 0, 0, counter, InUse()).description == copy)
            << std::string(name.begin(), name.end());
}

TEST_F(Copies, KeepAllButPlaceAddressAndName)
{
    const ElementValues source = Element(L"Par", 0.5F, 0.5F, {15, 15, 343});
    const ElementValues copy = CopyElement(source, 0.25F, -1, 0, InUse());
    VideoMapping moved = source.video;
    moved.SetCenter({0.75F, -0.5F});
    EXPECT_EQ(copy.video, moved);
    EXPECT_TRUE(copy.address == DMXMappingArtNet(0, 0, 1, L"Auto", L"Node"));
    EXPECT_EQ(copy.fixture, source.fixture);
    ElementValues unpatched = source;
    unpatched.address.reset();
    EXPECT_TRUE(CopyElement(unpatched, 0, 0, 0, InUse()).address == DMXMappingArtNet());
}

TEST_F(Copies, MakeAWallInEightDirections)
{
    Document({L"Par-7"});
    const std::string names[] = {"Par-8", "Par-9", "Par-11", "Par-14", "Par-18"};
    const std::string addresses[] = {"0:3/171", "0:3/341", "0:4/1", "0:4/171", "0:4/341"};
    using Case = std::tuple<int, int, std::string>;
    // Three across and two down, from (40, 80): a step is 2 to the side or 1 up or down.
    for (const auto& [first, then, places] : {
             Case{0, 0, "42,80 44,80 40,81 42,81 44,81 "},
             Case{0, 1, "42,80 44,80 40,79 42,79 44,79 "},
             Case{1, 0, "38,80 36,80 40,81 38,81 36,81 "},
             Case{1, 1, "38,80 36,80 40,79 38,79 36,79 "},
             Case{2, 0, "40,81 42,80 42,81 44,80 44,81 "},
             Case{2, 1, "40,81 38,80 38,81 36,80 36,81 "},
             Case{3, 0, "40,79 42,80 42,79 44,80 44,79 "},
             Case{3, 1, "40,79 38,80 38,79 36,80 36,79 "},
         })
    {
        std::string wanted;
        std::istringstream place(places);
        for (int i = 0; i < 5; ++i) {
            std::string at;
            place >> at;
            wanted += at + ' ' + addresses[i] + ' ' + names[i] + '\n';
        }
        SCOPED_TRACE(std::to_string(first) + " then " + std::to_string(then));
        Expect(Duplicates(Element(L"Par-7", 5, 10, {0, 3, 1}), {3, 2, first, then}, InUse()),
               wanted);
    }
    // Each copy has a name of its own, also where the numbers grow past those that are read.
    std::set<std::wstring> all;
    const auto wall = Duplicates(Element(L"Par-7", 0, 0), {64, 64, 0, 0}, InUse());
    for (const ElementValues& copy : wall)
        all.insert(copy.description);
    EXPECT_EQ(all.size(), 4095U);
    EXPECT_TRUE(wall.back().description == L"Par-8382473");
    for (const DuplicateGrid& grid : std::vector<DuplicateGrid>{
             {1, 1}, {0, 5}, {5, -1}, {2, 2, 4}, {2, 2, -1}, {4097, 1}, {1 << 16, 1 << 16}})
        EXPECT_TRUE(Duplicates(wall.front(), grid, InUse()).empty());
}

TEST_F(Copies, ArePastedAboveTheirSourcesAndPatchedBehindEachOther)
{
    Document({L"Par-1", L"Par-2"});
    const auto paste = [this](std::vector<ElementValues> sources) {
        return Pasted(sources, {2, 15, 100}, InUse());
    };
    Expect(paste({}), "");
    // One, or several side by side: as far as the highest of them is high.
    Expect(paste({Element(L"Par-2", 1, 1)}), "8,7 2:15/100 Par-3\n");
    for (const ElementValues& far : paste({Element(L"A", 0, 3e38F), Element(L"B", 0, -3e38F)}))
        EXPECT_TRUE(std::isfinite(far.video.centerY)) << "no file holds it";
    std::vector<ElementValues> row = {Element(L"Par-1", 1, 1), Element(L"Par-2", 2, 1)};
    row[1].video.height = 0.5F;
    Expect(paste(row), "8,4 2:15/100 Par-3\n16,4 2:15/270 Par-4\n");
    // Otherwise twice the distance from the highest to the lowest. A fixture of another size starts
    // behind the whole one before, and a universe further where it would not fit.
    Expect(paste({Element(L"Par-1", 0, 2, {}, 36), Element(L"Par-2", 0, 1, {}, 3),
                  Element(L"Bar", 0, 1.5F, {}, 400), Element(L"Bar", 0, 1.5F, {}, 512)}),
           "0,0 2:15/100 Par-3\n0,-8 2:15/136 Par-4\n0,-4 3:0/1 Bar-3\n0,-4 3:1/1 Bar-4\n");
}

TEST_F(Copies, TakeTheLibrarysFixtureOrBringTheirOwn)
{
    DeviceModel& library = *manager.GetDeviceModel();
    auto own = std::make_unique<DeviceLedItem>(*Fixture(L"Lamp", 6));
    own->uniqueID = 0; // The library gives its numbers as another one gives them.
    library.AddFixture(std::move(own));
    std::vector<ElementValues> elements = {Element(L"Par", 0, 0, {}, 170)};
    EXPECT_FALSE(BindToLibrary(elements, library));
    EXPECT_EQ(elements[0].fixture->GetChannelCount(), 6);
    for (int i = 0; i < 2; ++i)
        elements.push_back({L"New", Fixture(L"New", 12), {}, {}});
    EXPECT_TRUE(BindToLibrary(elements, library));
    EXPECT_EQ(library.GetFixtures().size(), 2);
    EXPECT_EQ(library.GetFixtures().value(elements[2].fixture->uniqueID)->product, L"New");
}

// ---- To another document -----------------------------------------------------------------------

TEST_F(Copies, AreReadFromTheTextOfADocumentOrNotAtAll)
{
    const std::vector<ElementValues> elements = {
        Element(L"Ünder & \"über\"-7", 0.5F, -3, {1, 2, 3}), Element(L"Par", 0, 0)};
    const std::string bytes = WriteElementText(elements);
    const auto again = ReadElementText(bytes);
    ASSERT_EQ(again.size(), 2U);
    EXPECT_TRUE(again[0].description == elements[0].description);
    EXPECT_EQ(again[0].video, elements[0].video);
    EXPECT_EQ(again[0].address, elements[0].address);
    EXPECT_EQ(*again[0].fixture, *elements[0].fixture);
    EXPECT_EQ(WriteElementText(again), bytes);
    const std::string text = XmlText::Decode(bytes);
    EXPECT_EQ(text.find("<LEDFixture "), text.rfind("<LEDFixture ")) << "one of each kind";

    const Support::LogCapture log;
    const auto with = [&text](std::string_view old, const std::string& wanted) {
        std::string changed = text;
        return changed.replace(changed.find(old), old.size(), wanted);
    };
    std::string deep;
    for (int i = 0; i < 100'000; ++i)
        deep += "<Mapping>";
    std::string many = text;
    const std::size_t fixture = text.find("<LEDFixture ");
    for (int i = 0; i < 1'024; ++i)
        many.insert(fixture, text, fixture, text.find("</LEDFixtureLibrary>") - fixture);
    for (const std::string& broken :
         {std::string(), std::string("no document"), text.substr(0, text.size() / 2), deep,
          with("0.500000", "nan"), with("0.500000", "1e999"), with("Lamp", "Other"),
          with("<DMXMapping", "<Nothing"),
          with("<LEDFixtureLibrary>", "<LEDFixtureLibrary><LEDFixture />"),
          std::string("<LEDFixtureLibrary /><Mapping />"), many,
          text + std::string(65UL << 20U, ' ')})
        EXPECT_TRUE(ReadElementText("\xEF\xBB\xBF" + broken).empty()) << broken.substr(0, 400);
    EXPECT_EQ(log.Count("The elements on the clipboard can't be read"), 12);
}
