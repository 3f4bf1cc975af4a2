// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>

#include <QString>

class QSettings;

/// What the view, the items and the window share about the display of the canvas. Main thread only.
struct EditorDisplayState
{
    /// Zoom In multiplies by this, Zoom Out divides by it: 1.15 in single precision.
    static constexpr double ZoomStep = static_cast<double>(1.15F);
    /// Beyond these the canvas is a dot, or one of its pixels fills the view; SetZoom stays
    /// between.
    static constexpr double MinZoom = static_cast<double>(0.01F);
    static constexpr double MaxZoom = 100.0;

    double gridStepX = 1.0; ///< canvas pixels between two lines of the grid
    double gridStepY = 1.0;
    double zoom = 1.0; ///< 1 is 100 percent of the fit
    /// The entries of the zoom combo, largest first.
    std::array<double, 25> zoomPresets = DefaultPresets();
    double fitScaleX = 1.0; ///< screen pixels for a canvas pixel at zoom 1; both are always equal
    double fitScaleY = 1.0;
    bool showGrid = true;
    bool snapToGrid = false;

    /// Takes the zoom, brought into the range above; a number that is none changes nothing.
    void SetZoom(double wanted);
    void ZoomIn() { SetZoom(zoom * ZoomStep); }
    void ZoomOut() { SetZoom(zoom / ZoomStep); }

    /// The length of one screen pixel on the canvas. What must look the same at every zoom is
    /// measured in it.
    [[nodiscard]] double ScreenPixel() const { return 1.0 / (fitScaleX * zoom); }

    /// Grid and zoom, from and to the user's store. A zoom that no canvas could be seen at reads
    /// as 1.
    void Read(const QSettings& store);
    void Write(QSettings& store) const;

private:
    [[nodiscard]] static std::array<double, 25> DefaultPresets();
};

/// A zoom as the combo shows it: whole percent, cut off.
[[nodiscard]] QString ZoomText(double zoom);

/// The zoom that a text of the combo means, with or without a percent sign; nothing when it is no
/// whole number.
[[nodiscard]] std::optional<double> ZoomFromText(QString text);
