// SPDX-License-Identifier: MIT
#include "Settings/ExternalServerPreferences.h"

#include "LibTools/System.h"
#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Settings/ApplicationMode.h"
#include "XmlText/XmlText.h"

#include <algorithm>

namespace {

bool UserDataFolder(std::wstring& folder)
{
    return System::global && System::global->GetUserDataFolder(folder);
}

} // namespace

ExternalServerPreferences::ExternalServerPreferences()
    : mode(ApplicationMode::Instance().mode)
{}

bool ExternalServerPreferences::Load()
{
    switch (mode) {
    case ApplicationMode::BesideReelCommand:
        return LoadReelCommand();
    case ApplicationMode::BesideLoomTap:
        return ComposeLoomTap();
    default:
        mappingPath.clear();
        dmxInterface.clear();
        artNetIPAddress.clear();
        return false;
    }
}

bool ExternalServerPreferences::LoadReelCommand()
{
    std::wstring folder;
    XmlText::Document document;
    if (!UserDataFolder(folder) ||
        ReadXmlFile(folder + L"/Zentri ReelCommand 5/Zentri ReelCommand_preferences.xml",
                    document) != XmlFault::None)
        return false;
    const auto* preferences = document.FirstChildElement("RMS_Preferences");
    if (!preferences) {
        ZEN_LOG_INFO("Could not find preferences master node");
        return false;
    }
    const auto* data = preferences->FirstChildElement("DATA");
    if (!data) {
        ZEN_LOG_INFO("Could not find data element");
        return false;
    }
    dmxInterface = XmlText::Attribute(*data, "DMXINTERFACE").value_or(L"");
    artNetIPAddress = XmlText::Attribute(*data, "ART_NET_IP_ADDRESS").value_or(L"");
    auto library = XmlText::Attribute(*data, "LIBRARYROOTFOLDER");
    if (!library)
        return false;
    std::replace(library->begin(), library->end(), L'\\', L'/');
    mappingPath = *library + L"/PixelWeft/mapping.wfm";
    return true;
}

bool ExternalServerPreferences::ComposeLoomTap()
{
    dmxInterface.clear();
    artNetIPAddress.clear();
    std::wstring folder;
    if (!UserDataFolder(folder))
        return false;
    mappingPath = folder + L"/LoomTap2/PixelWeft/mapping.wfm";
    return true;
}
