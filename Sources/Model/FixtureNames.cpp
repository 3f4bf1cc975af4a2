// SPDX-License-Identifier: MIT
#include "Model/FixtureNames.h"

#include <QString>

#include "Model/DeviceModel.h"
#include "XmlText/XmlText.h"

namespace {

bool IsBlank(const std::wstring& name)
{
    return QString::fromStdWString(name).trimmed().isEmpty();
}

} // namespace

NameFault FindNameFault(const DeviceModel& library, const std::wstring& present,
                        const std::wstring& manufacturer, const std::wstring& product)
{
    if (IsBlank(product))
        return NameFault::NoProduct;
    if (IsBlank(manufacturer))
        return NameFault::NoManufacturer;
    return product != present && library.GetLEDFixtureByProduct(product) ? NameFault::ProductTaken
                                                                         : NameFault::None;
}

std::wstring NameInFile(const std::wstring& name)
{
    XmlText::Document written;
    XmlText::SetAttribute(XmlText::AddElement(written, "Fixture"), "name", name);
    XmlText::Document read;
    if (!XmlText::Parse(XmlText::Decode(XmlText::Encode(XmlText::Print(written))), read))
        return {};
    return XmlText::Attribute(*read.FirstChildElement(), "name").value_or(std::wstring());
}
