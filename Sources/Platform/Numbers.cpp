// SPDX-License-Identifier: MIT
#include "Platform/Numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace Platform {

namespace {

std::string_view Trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\n\r\f\v";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// std::from_chars accepts no plus sign; in our files a number may begin with one.
std::string_view WithoutPlus(std::string_view text)
{
    const bool plus = text.size() > 1 && text[0] == '+' && text[1] != '-' && text[1] != '+';
    return plus ? text.substr(1) : text;
}

std::optional<std::int32_t> ParseWithBase(std::string_view digits, int base, bool negative)
{
    std::int64_t value = 0;
    const char* end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, value, base);
    if (digits.empty() || digits[0] == '-' || result.ec != std::errc{} || result.ptr != end)
        return std::nullopt;
    if (negative)
        value = -value;
    if (value < INT32_MIN || value > INT32_MAX)
        return std::nullopt;
    return static_cast<std::int32_t>(value);
}

/// Whether a well-formed number outside of the range of a float is too small for one, not too
/// large: its first non-zero digit then lies behind the point.
bool IsTiny(std::string_view number)
{
    const auto mantissa = number.substr(0, number.find_first_of("eE"));
    std::int64_t exponent = 0;
    if (mantissa.size() < number.size()) {
        const auto text = WithoutPlus(number.substr(mantissa.size() + 1));
        const auto result = std::from_chars(text.data(), text.data() + text.size(), exponent);
        if (result.ec == std::errc::result_out_of_range)
            return text.starts_with('-');
    }
    const auto place = [](std::size_t index) {
        return static_cast<std::int64_t>(index);
    };
    const std::int64_t point = place(std::min(mantissa.find('.'), mantissa.size()));
    const std::int64_t first =
        place(std::min(mantissa.find_first_of("123456789"), mantissa.size()));
    return point - first + exponent <= 0;
}

} // namespace

std::optional<std::int32_t> ParseInt(std::string_view text)
{
    std::string_view digits = WithoutPlus(Trimmed(text));
    const bool negative = digits.starts_with('-');
    if (negative)
        digits.remove_prefix(1);
    return ParseWithBase(digits, 10, negative);
}

std::optional<std::int32_t> ParseIntAutoBase(std::string_view text)
{
    std::string_view digits = WithoutPlus(Trimmed(text));
    const bool negative = digits.starts_with('-');
    if (negative)
        digits.remove_prefix(1);
    if (digits.starts_with("0x") || digits.starts_with("0X"))
        return ParseWithBase(digits.substr(2), 16, negative);
    return ParseWithBase(digits, digits.size() > 1 && digits[0] == '0' ? 8 : 10, negative);
}

std::optional<float> ParseFloat(std::string_view text)
{
    const std::string_view digits = WithoutPlus(Trimmed(text));
    float value = 0;
    const char* end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, value);
    if (result.ptr != end || digits.empty())
        return std::nullopt;
    // A number that is too small for a float is 0; one that is too large is none.
    if (result.ec == std::errc::result_out_of_range && IsTiny(digits))
        return 0.0F;
    if (result.ec != std::errc{} || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::string FormatFloat(float value)
{
    std::array<char, 64> buffer{};
    const auto finite = static_cast<double>(std::isfinite(value) ? value : 0.0F);
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), finite,
                                      std::chars_format::fixed, 6);
    return {buffer.data(), result.ptr};
}

} // namespace Platform
