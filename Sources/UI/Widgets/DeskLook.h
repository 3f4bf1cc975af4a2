// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

/// The look of the desk: the window's middle grey with black text, dark lists and fields with light
/// text, and one accent colour for what is chosen or has the focus. Every text has a contrast of at
/// least 4.5 to 1 to what is behind it.
[[nodiscard]] QString DeskStyleSheet();

/// The same colours for what no style sheet reaches: boxes without a parent, and the style's own
/// lines.
[[nodiscard]] QPalette DeskPalette();

/// What is in trouble, on a dark ground; what needs attention; and what stands on the latter.
[[nodiscard]] QColor TroubleColour();
[[nodiscard]] QColor WarningColour();
[[nodiscard]] QColor WarningInk();
