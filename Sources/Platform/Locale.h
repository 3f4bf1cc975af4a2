// SPDX-License-Identifier: MIT
#pragma once

namespace Platform {

/// Sets a UTF-8 locale for text (the user's own if it is one), so that wide text prints whole;
/// numbers keep the C locale's point. Call it at the start and again after QApplication is made,
/// which switches the user's whole locale on.
void UseUtf8TextAndPlainNumbers() noexcept;

/// Whether the user's paper is Letter, and not A4, as the system's locale says.
[[nodiscard]] bool UsesLetterPaper() noexcept;

} // namespace Platform
