// SPDX-License-Identifier: MIT
// The .wfm file of the mapping document.
#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeRecord.h"
#include "Model/DeviceModel.h"
#include "Model/DocumentNetwork.h"
#include "Model/MappedDeviceModel.h"
#include "Platform/Text.h"
#include "Settings/SettingsBlock.h"
#include "XmlText/XmlText.h"

#include <QMutexLocker>

#include <filesystem>
#include <utility>

namespace {

constexpr std::size_t LongestNodeAddress = 64;

void ReadManualNodes(const tinyxml2::XMLDocument& document, ManualNodes& nodes)
{
    const auto* list = document.FirstChildElement("ManualNetworkNodes");
    if (!list)
        return;
    for (const auto* child = list->FirstChildElement("ManualNode"); child;
         child = child->NextSiblingElement("ManualNode"))
    {
        const auto nodeName = XmlText::Attribute(*child, "Name");
        if (!nodeName)
            return;
        const auto address = XmlText::Attribute(*child, "IP");
        if (!address)
            continue;
        ArtNetNodeRecord record;
        record.name = Platform::WideToUtf8(*nodeName);
        record.ip = Platform::WideToUtf8(address->substr(0, LongestNodeAddress));
        record.manual = true;
        nodes.AddManualNode(record);
    }
}

void WriteManualNodes(tinyxml2::XMLDocument& document, const ManualNodes& nodes)
{
    auto& list = XmlText::AddElement(document, "ManualNetworkNodes");
    for (const ArtNetNodeRecord& record : nodes.GetManualNodes()) {
        auto& child = XmlText::AddElement(list, "ManualNode");
        XmlText::SetAttribute(child, "Name", Platform::Utf8ToWide(record.name));
        XmlText::SetAttribute(child, "IP", Platform::Utf8ToWide(record.ip));
    }
}

} // namespace

/// The values that a <Mapping> element must have.
struct MappedDeviceModel::Header
{
    XmlText::Pair<std::int32_t> version;
    XmlText::Pair<std::int32_t> resolution;
    std::wstring name;
};

// ---- Loading -----------------------------------------------------------------------------------

int MappedDeviceModel::Load(const std::wstring& path, const DeviceModel& library,
                            ManualNodes& nodes)
{
    return Load(XmlFile(path), library, nodes);
}

int MappedDeviceModel::Load(const XmlFile& file, const DeviceModel& library, ManualNodes& nodes)
{
    Clear();
    if (!file.IsReadable()) {
        ZEN_LOG_ERROR("Could not read mapping XML file");
        return -1;
    }
    const XmlText::Document& document = file.Document();
    ReadManualNodes(document, nodes);
    const auto* mapping = document.FirstChildElement("Mapping");
    if (!mapping) {
        ZEN_LOG_ERROR("No Mapping node found");
        emit mappingsChanged();
        return 0;
    }
    Header header;
    if (!ReadHeader(*mapping, header))
        return -1;
    StoreHeader(*mapping, std::move(header));
    merging = UniverseMerging::FromXml(document).value_or(UniverseMerging());
    ReadElements(*mapping, library);
    ++revision_;
    emit mappingsChanged();
    return 0;
}

bool MappedDeviceModel::ReadHeader(const tinyxml2::XMLElement& mapping, Header& header)
{
    const auto fail = [](const char* message) {
        ZEN_LOG_ERROR("%s", message);
        return false;
    };
    const char* version = mapping.Attribute("version");
    if (!version)
        return fail("Mapping version not defined");
    const auto versionNumbers = XmlText::ParseIntPair(version, '.');
    if (!versionNumbers)
        return fail("Mapping version syntax error");
    const char* resolution = mapping.Attribute("resolution");
    if (!resolution)
        return fail("Mapping resolution not defined");
    const auto size = XmlText::ParseIntPair(resolution, ',');
    if (!size)
        return fail("Mapping resolution syntax error");
    auto documentName = XmlText::Attribute(mapping, "name");
    if (!documentName)
        return fail("Mapping name not defined");
    header = {*versionNumbers, *size, std::move(*documentName)};
    return true;
}

void MappedDeviceModel::StoreHeader(const tinyxml2::XMLElement& mapping, Header header)
{
    autoUnicast = XmlText::ReadInt(mapping, "autoUnicast").value != 0;
    artSync = XmlText::ReadInt(mapping, "artSync").value != 0;
    network = DocumentNetwork(mapping);
    versionMajor = header.version.first;
    versionMinor = header.version.second;
    canvasWidth = CanvasSide(header.resolution.first);
    canvasHeight = CanvasSide(header.resolution.second);
    if (canvasWidth != header.resolution.first || canvasHeight != header.resolution.second)
        ZEN_LOG_ERROR("Mapping resolution %d,%d is taken as %d,%d", header.resolution.first,
                      header.resolution.second, canvasWidth, canvasHeight);
    name = std::move(header.name);
}

void MappedDeviceModel::ReadElements(const tinyxml2::XMLElement& mapping,
                                     const DeviceModel& library)
{
    const QMutexLocker lock(&mutex);
    std::vector<std::unique_ptr<MappedLedItem>> items;
    for (const auto* element = mapping.FirstChildElement("Element"); element;
         element = element->NextSiblingElement("Element"))
    {
        const std::int64_t identifier = ++nextElementID;
        auto item = MappedLedItem::FromXml(*element, library);
        if (!item)
            continue;
        item->uniqueID = identifier;
        items.push_back(std::move(item));
    }
    AddRows(std::move(items), false);
}

// ---- Saving ------------------------------------------------------------------------------------

int MappedDeviceModel::Save(const std::wstring& path, const DeviceModel& library,
                            const ManualNodes& nodes)
{
    const std::filesystem::path file(Platform::WideToUtf8(path));
    std::error_code failure;
    std::filesystem::create_directories(file.parent_path(), failure);
    if (!file.parent_path().empty() && !std::filesystem::is_directory(file.parent_path(), failure))
    {
        ZEN_LOG_ERROR("The folder of the mapping could not be made: %ls", path.c_str());
        return -1;
    }
    XmlText::Document document;
    ToXml(document, library, nodes);
    return WriteXmlFile(path, document) ? 0 : 1;
}

void MappedDeviceModel::ToXml(tinyxml2::XMLDocument& document, const DeviceModel& library,
                              const ManualNodes& nodes) const
{
    library.WriteFixtures(XmlText::AddElement(document, "LEDFixtureLibrary"));
    merging.ToXml(document);
    WriteManualNodes(document, nodes);
    auto& mapping = XmlText::AddElement(document, "Mapping");
    const auto pair = [](int first, wchar_t separator, int second) {
        return std::to_wstring(first) + separator + std::to_wstring(second);
    };
    XmlText::SetAttribute(mapping, "name", name);
    XmlText::SetAttribute(mapping, "version", pair(versionMajor, L'.', versionMinor));
    XmlText::SetAttribute(mapping, "resolution", pair(canvasWidth, L',', canvasHeight));
    XmlText::SetAttribute(mapping, "autoUnicast", autoUnicast ? 1 : 0);
    if (artSync) // Programs that don't know it pass over it.
        XmlText::SetAttribute(mapping, "artSync", 1);
    XmlText::SetAttribute(mapping, "network",
                          settings ? settings->networkText.toStdWString() : network);
    WriteElements(mapping);
}

void MappedDeviceModel::WriteElements(tinyxml2::XMLElement& mapping) const
{
    const QMutexLocker lock(&mutex);
    for (const MappedLedItem* item : byRow_)
        item->WriteElement(mapping);
}
