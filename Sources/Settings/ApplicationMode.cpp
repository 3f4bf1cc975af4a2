// SPDX-License-Identifier: MIT
#include "Settings/ApplicationMode.h"

#include "Log/Log.h"

#include <tinyxml2.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <string_view>

namespace {

// The file is one line. What is larger was put there by mistake.
constexpr qint64 maxModeFileSize = 65536;

bool ParseFile(const QString& path, tinyxml2::XMLDocument& document)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > maxModeFileSize ||
        !file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.read(maxModeFileSize);
    return document.Parse(bytes.constData(), static_cast<std::size_t>(bytes.size())) ==
           tinyxml2::XML_SUCCESS;
}

} // namespace

ApplicationMode& ApplicationMode::Instance()
{
    static ApplicationMode instance;
    return instance;
}

bool ApplicationMode::Load()
{
    return LoadFrom(QCoreApplication::applicationDirPath() + QStringLiteral("/mode.xml"));
}

bool ApplicationMode::LoadFrom(const QString& path)
{
    if (!QFileInfo::exists(path)) {
        ZEN_LOG_INFO(
            "Could not specify SL Mode to LMT or RC due to missing resource file, Exiting");
        return false;
    }
    tinyxml2::XMLDocument document;
    if (!ParseFile(path, document)) {
        ZEN_LOG_INFO("Could not parse XML file with SL mode");
        return false;
    }
    const auto* node = document.FirstChild();
    if (!node) {
        ZEN_LOG_INFO("Could not find Mode in resource XML");
        return false;
    }
    const auto* element = node->ToElement();
    if (!element) {
        ZEN_LOG_INFO("Could not Get element from resource node");
        return false;
    }
    const char* attribute = element->Attribute("value");
    const std::string_view value = attribute ? attribute : "";
    if (value == "LMT")
        mode = BesideLoomTap;
    else if (value == "RC")
        mode = BesideReelCommand;
    else
        mode = NoHost;
    return true;
}

QString ApplicationMode::HostName() const
{
    switch (mode) {
    case BesideReelCommand:
        return QStringLiteral("ReelCommand");
    case BesideLoomTap:
        return QStringLiteral("LoomTap");
    default:
        return {};
    }
}

std::wstring ApplicationMode::RegistryRoot() const
{
    switch (mode) {
    case BesideReelCommand:
        return L"Software\\Zentri\\ReelCommand5";
    case BesideLoomTap:
        return L"Software\\Zentri\\LoomTap2";
    default:
        return {};
    }
}
