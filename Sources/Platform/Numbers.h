// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Platform {

// Numbers in files: decimal, with a point, whatever the user's locale is. Blanks around a number
// are allowed; a text with anything else around the number gives nothing.

/// A whole number with an optional sign that fits a signed 32-bit integer.
[[nodiscard]] std::optional<std::int32_t> ParseInt(std::string_view text);

/// The same with automatic base: a leading 0x is hexadecimal, another leading 0 octal.
[[nodiscard]] std::optional<std::int32_t> ParseIntAutoBase(std::string_view text);

/// A finite number; 0 where it is too small for a float. "nan", "inf" and what overflows a float
/// give nothing.
[[nodiscard]] std::optional<float> ParseFloat(std::string_view text);

/// Six decimals, as printf's %f in the C locale. A number that is not finite prints as 0.000000.
[[nodiscard]] std::string FormatFloat(float value);

} // namespace Platform
