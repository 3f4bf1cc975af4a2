// SPDX-License-Identifier: MIT
#include "UI/Editor/EditorDisplayState.h"

#include <algorithm>
#include <cmath>

#include <QSettings>
#include <QVariant>

namespace {

const QLatin1String showGridKey("showGrid");
const QLatin1String zoomFactorKey("zoomFactor");

/// A hundredth, rounded up a little, so that a typed whole percentage shows as itself again after
/// single precision and cutting off.
constexpr double Percent = 0.010001000016927719;

} // namespace

std::array<double, 25> EditorDisplayState::DefaultPresets()
{
    // Single precision: what the combo shows for an entry depends on it.
    constexpr std::array<float, 25> entries = {
        32.0F, 24.0F, 16.0F, 12.0F, 8.0F,  7.0F,  6.0F,  5.0F,  4.0F,  3.0F,  2.0F,  1.0F, 0.66F,
        0.5F,  0.33F, 0.25F, 0.16F, 0.12F, 0.08F, 0.06F, 0.05F, 0.04F, 0.03F, 0.02F, 0.01F};
    std::array<double, 25> presets{};
    std::copy(entries.begin(), entries.end(), presets.begin());
    return presets;
}

void EditorDisplayState::SetZoom(double wanted)
{
    if (std::isfinite(wanted))
        zoom = std::clamp(wanted, MinZoom, MaxZoom);
}

void EditorDisplayState::Read(const QSettings& store)
{
    showGrid = store.value(showGridKey, true).toBool();
    const double stored = store.value(zoomFactorKey, 1.0).toDouble();
    // A first start leaves 0 in the store when it ends before the zoom was known.
    zoom = 1.0;
    if (stored > 0)
        SetZoom(stored);
}

void EditorDisplayState::Write(QSettings& store) const
{
    store.setValue(showGridKey, showGrid);
    store.setValue(zoomFactorKey, zoom);
}

QString ZoomText(double zoom)
{
    return QStringLiteral("%1%").arg(static_cast<int>(zoom * 100));
}

std::optional<double> ZoomFromText(QString text)
{
    bool isNumber = false;
    const int percent = text.remove(QLatin1Char('%')).toInt(&isNumber);
    if (!isNumber)
        return std::nullopt;
    return percent * Percent;
}
