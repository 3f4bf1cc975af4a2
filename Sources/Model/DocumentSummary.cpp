// SPDX-License-Identifier: MIT
#include "Model/DocumentSummary.h"

#include "FixtureModel/DMXMapping.h"
#include "LibTools/XmlFile.h"
#include "Model/DocumentNetwork.h"
#include "Model/MappingFile.h"
#include "XmlText/XmlText.h"

namespace {

void AddElement(const tinyxml2::XMLElement& element, DocumentSummary& summary)
{
    ++summary.elements;
    if (const auto product = XmlText::Attribute(element, "fixture"))
        ++summary.fixtures[QString::fromStdWString(*product)];
    if (const auto* place = element.FirstChildElement("VideoMapping")) {
        if (const auto video = VideoMapping::FromXml(*place))
            summary.places.push_back(*video);
    }
    if (const auto* address = element.FirstChildElement("DMXMapping")) {
        const auto dmx = DMXMapping::FromXml(*address);
        if (const auto* artNet = dynamic_cast<const DMXMappingArtNet*>(dmx.get()))
            summary.portAddresses.insert(artNet->GetPortAddress());
    }
}

} // namespace

std::shared_ptr<const DocumentSummary> ReadDocumentSummary(const QString& path)
{
    const XmlFile file(path.toStdWString());
    const auto* mapping = file.Document().FirstChildElement("Mapping");
    const char* resolution = mapping ? mapping->Attribute("resolution") : nullptr;
    const auto canvas = XmlText::ParseIntPair(resolution ? resolution : "", ',');
    if (!canvas || !MappingFile::IsCanvasSide(canvas->first) ||
        !MappingFile::IsCanvasSide(canvas->second))
        return nullptr;
    auto summary = std::make_shared<DocumentSummary>();
    summary->canvas = {canvas->first, canvas->second};
    summary->network = QString::fromStdWString(DocumentNetwork(*mapping));
    for (const auto* element = mapping->FirstChildElement("Element"); element;
         element = element->NextSiblingElement("Element"))
        AddElement(*element, *summary);
    return summary;
}

std::vector<PortAddressRun> RunsOfPortAddresses(const std::set<std::uint16_t>& portAddresses)
{
    std::vector<PortAddressRun> runs;
    for (const std::uint16_t each : portAddresses) {
        if (!runs.empty() && runs.back().second + 1 == each)
            runs.back().second = each;
        else
            runs.emplace_back(each, each);
    }
    return runs;
}
