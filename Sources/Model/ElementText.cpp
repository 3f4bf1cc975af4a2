// SPDX-License-Identifier: MIT
#include "Model/ElementText.h"

#include <set>

#include "Log/Log.h"
#include "Model/DeviceModel.h"
#include "Model/MappedLedItem.h"
#include "XmlText/XmlText.h"

namespace {

constexpr const char* LibraryName = "LEDFixtureLibrary";
constexpr const char* FixtureName = "LEDFixture";
constexpr const char* MappingName = "Mapping";
constexpr const char* ElementName = "Element";

/// Elements take some 1.3 KB each. Reading the most of it must not stop the output for long.
constexpr std::size_t MostBytes = 64UL * 1024 * 1024;
constexpr int MostElements = 32'768;
constexpr int MostFixtures = 1'024;

/// Reads the children of this name below the first `parent` of the document. False when one is
/// refused, or when there are too many.
template <class Read>
bool ReadEach(const XmlText::Document& document, const char* parent, const char* name, int most,
              const Read& read)
{
    const auto* list = document.FirstChildElement(parent);
    if (!list)
        return false;
    int count = 0;
    for (const auto* child = list->FirstChildElement(name); child;
         child = child->NextSiblingElement(name))
    {
        if (++count > most || !read(*child))
            return false;
    }
    return true;
}

bool ReadFixtures(const XmlText::Document& document, DeviceModel& library)
{
    return ReadEach(document, LibraryName, FixtureName, MostFixtures,
                    [&library](const tinyxml2::XMLElement& element) {
                        auto fixture = DeviceLedItem::FromXml(element, library.GetNextUniqueID());
                        if (!fixture)
                            return false;
                        library.AddFixture(std::move(fixture), [](const QString&, const QString&) {
                            return KeepFixture;
                        });
                        return true;
                    });
}

} // namespace

std::string WriteElementText(std::span<const ElementValues> elements)
{
    XmlText::Document document;
    auto& library = XmlText::AddElement(document, LibraryName);
    auto& mapping = XmlText::AddElement(document, MappingName);
    std::set<std::wstring> written;
    for (const ElementValues& element : elements) {
        if (written.insert(element.fixture->product).second)
            element.fixture->ToXml(library);
        MakeElements({&element, 1}).front()->WriteElement(mapping);
    }
    return XmlText::Encode(XmlText::Print(document));
}

std::vector<ElementValues> ReadElementText(std::string_view bytes)
{
    const auto refused = [] {
        ZEN_LOG_ERROR("The elements on the clipboard can't be read");
        return std::vector<ElementValues>();
    };
    XmlText::Document document;
    DeviceModel library;
    if (bytes.size() > MostBytes || !XmlText::Parse(XmlText::Decode(bytes), document) ||
        !ReadFixtures(document, library))
        return refused();
    std::vector<std::unique_ptr<MappedLedItem>> items;
    const bool good = ReadEach(document, MappingName, ElementName, MostElements,
                               [&](const tinyxml2::XMLElement& element) {
                                   items.push_back(MappedLedItem::FromXml(element, library));
                                   return items.back() != nullptr;
                               });
    if (!good || items.empty())
        return refused();
    std::vector<const MappedLedItem*> elements;
    elements.reserve(items.size());
    for (const auto& item : items)
        elements.push_back(item.get());
    return ReadElements(elements);
}
