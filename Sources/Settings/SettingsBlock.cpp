// SPDX-License-Identifier: MIT
#include "Settings/SettingsBlock.h"

#include "Platform/IPv4.h"

#include <QVariant>

#include <cmath>
#include <utility>

namespace {

const QLatin1String lastFileKey("lastFile");
const QLatin1String visualFileKey("visualFile");
const QLatin1String zoomFactorKey("zoomFactor");
const QLatin1String zoomStyleKey("zoomStyle");
const QLatin1String showGridKey("showGrid");
const QLatin1String snapToGridKey("snapToGrid");
const QLatin1String nightLookKey("nightLook");
const QLatin1String languageKey("language");
const QLatin1String lastDirectoryKey("lastDirectory");
const QLatin1String networkKey("network");

} // namespace

SettingsBlock::SettingsBlock()
{
    Load();
}

SettingsBlock::SettingsBlock(std::unique_ptr<QSettings> store)
    : settings(std::move(store))
{
    Load();
}

SettingsBlock::~SettingsBlock()
{
    Save();
}

QSettings* SettingsBlock::Load()
{
    if (!settings)
        settings =
            std::make_unique<QSettings>(QStringLiteral("Zentri"), QStringLiteral("PixelWeft3"));
    lastFile = settings->value(lastFileKey).toString();
    visualFile = settings->value(visualFileKey).toString();
    zoomFactor = settings->value(zoomFactorKey).toFloat();
    if (!std::isfinite(zoomFactor)) // "nan" and "inf" in a store edited by hand are numbers to Qt.
        zoomFactor = 0.0F;
    zoomStyle = settings->value(zoomStyleKey).toInt();
    showGrid = settings->value(showGridKey, true).toBool();
    snapToGrid = settings->value(snapToGridKey, true).toBool();
    nightLook = settings->value(nightLookKey, false).toBool();
    language = settings->value(languageKey).toString();
    lastDirectory = settings->value(lastDirectoryKey).toString();
    LoadNetworkText();
    return settings.get();
}

void SettingsBlock::LoadNetworkText()
{
    if (settings->contains(networkKey)) {
        networkText = settings->value(networkKey).toString();
        return;
    }
    // Older versions kept the broadcast address of the network as a number. Once a save has written
    // the text, the number is ignored.
    const qint64 range = settings->value(QStringLiteral("dmxRange"), 0).toLongLong();
    const auto broadcast = static_cast<std::uint32_t>(range & 0xFFFFFFFFLL);
    if (broadcast != 0)
        networkText = QString::fromStdString(Platform::FormatIPv4(broadcast));
}

void SettingsBlock::Save()
{
    if (!settings)
        return;
    settings->setValue(lastFileKey, lastFile);
    settings->setValue(visualFileKey, visualFile);
    settings->setValue(zoomFactorKey, zoomFactor);
    settings->setValue(zoomStyleKey, zoomStyle);
    settings->setValue(showGridKey, showGrid);
    settings->setValue(snapToGridKey, snapToGrid);
    settings->setValue(nightLookKey, nightLook);
    settings->setValue(languageKey, language);
    settings->setValue(lastDirectoryKey, lastDirectory);
    settings->setValue(networkKey, networkText);
    settings->sync();
}

QSettings* SettingsBlock::SaveInterfaceKeys()
{
    if (!settings)
        return nullptr;
    settings->setValue(zoomFactorKey, zoomFactor);
    settings->setValue(zoomStyleKey, zoomStyle);
    settings->setValue(showGridKey, showGrid);
    settings->setValue(snapToGridKey, snapToGrid);
    settings->setValue(nightLookKey, nightLook);
    settings->setValue(languageKey, language);
    settings->setValue(visualFileKey, visualFile);
    settings->setValue(networkKey, networkText);
    return settings.get();
}
