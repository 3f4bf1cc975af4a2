// SPDX-License-Identifier: MIT
// The .wfm file of the mapping document.
#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeRecord.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappingFile.h"
#include "Platform/Text.h"
#include "Settings/SettingsBlock.h"
#include "XmlText/XmlText.h"

#include <QMutexLocker>

#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

namespace {

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

// ---- Loading -----------------------------------------------------------------------------------

static_assert(MappingFile::MaxCanvasSide == MappedDeviceModel::MaxCanvasSize,
              "a file that is judged good fits the model");

void MappedDeviceModel::Load(MappingFile file, const DeviceModel& library, ManualNodes& nodes)
{
    Clear();
    for (const ArtNetNodeRecord& node : file.Nodes())
        nodes.AddManualNode(node);
    const MappingFile::Header& header = file.GetHeader();
    autoUnicast = header.autoUnicast;
    artSync = header.artSync;
    network = header.network;
    versionMajor = header.version.first;
    versionMinor = header.version.second;
    canvasWidth = header.resolution.first;
    canvasHeight = header.resolution.second;
    name = header.name;
    merging = file.Merging().value_or(UniverseMerging());
    {
        const QMutexLocker lock(&mutex);
        auto elementsOfFile = file.TakeElements();
        for (const auto& element : elementsOfFile)
            TakeFixture(*element, library);
        nextElementID = file.CountElements();
        AddRows(std::move(elementsOfFile), false);
    }
    ++revision_;
    emit mappingsChanged();
}

/// An element has what the library holds, whatever its file says.
void MappedDeviceModel::TakeFixture(MappedLedItem& element, const DeviceModel& library)
{
    DeviceLedItem& own = element.EditFixture();
    const DeviceLedItem* fixture = library.GetLEDFixtureByProduct(own.product);
    own.uniqueID = 0;
    if (!fixture)
        return;
    static_cast<LEDFixture&>(own) = *fixture;
    own.intensityChannel = fixture->intensityChannel;
}

// ---- Saving ------------------------------------------------------------------------------------

SaveResult MappedDeviceModel::Save(const std::wstring& path, const DeviceModel& library,
                                   const ManualNodes& nodes, const DiskWait& wait)
{
    const std::filesystem::path folder =
        std::filesystem::path(Platform::WideToUtf8(path)).parent_path();
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    std::error_code unknown;
    if (!folder.empty() && !std::filesystem::is_directory(folder, unknown)) {
        ZEN_LOG_ERROR("The folder of the mapping could not be made: %ls", path.c_str());
        return failure ? failure : std::make_error_code(std::errc::not_a_directory);
    }
    XmlText::Document document;
    ToXml(document, library, nodes);
    return WriteXmlFile(path, document, wait);
}

void MappedDeviceModel::ToXml(tinyxml2::XMLDocument& document, const DeviceModel& library,
                              const ManualNodes& nodes) const
{
    auto& fixtures = XmlText::AddElement(document, "LEDFixtureLibrary");
    library.WriteFixtures(fixtures);
    WriteOwnFixtures(fixtures, library);
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

/// The fixtures of elements that the library has no longer: without them the elements could not be
/// read again.
void MappedDeviceModel::WriteOwnFixtures(tinyxml2::XMLElement& fixtures,
                                         const DeviceModel& library) const
{
    std::set<std::wstring> written;
    for (const MappedLedItem* element : byRow_) {
        const DeviceLedItem& own = element->GetFixture();
        if (!library.GetLEDFixtureByProduct(own.product) && written.insert(own.product).second)
            own.ToXml(fixtures);
    }
}

void MappedDeviceModel::WriteElements(tinyxml2::XMLElement& mapping) const
{
    const QMutexLocker lock(&mutex);
    for (const MappedLedItem* item : byRow_)
        item->WriteElement(mapping);
}
