// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace Platform {

// Wide text holds one whole character per element on this system. UTF-16 is used in our files
// alone, UTF-8 towards the operating system and Art-Net. No conversion ever fails: what is broken
// in the source (half a surrogate pair, a stray continuation byte, a number beyond U+10FFFF)
// becomes U+FFFD, one for each broken unit or sequence.

[[nodiscard]] std::wstring Utf8ToWide(std::string_view text);
[[nodiscard]] std::string WideToUtf8(std::wstring_view text);

[[nodiscard]] std::wstring Utf16ToWide(std::u16string_view text);
[[nodiscard]] std::u16string WideToUtf16(std::wstring_view text);

/// UTF-16 straight to UTF-8 and back, for files that are parsed and printed as UTF-8.
[[nodiscard]] std::string Utf16ToUtf8(std::u16string_view text);
[[nodiscard]] std::u16string Utf8ToUtf16(std::string_view text);

/// One character for each byte, as the plain C locale reads a file without a byte-order mark.
[[nodiscard]] std::string Latin1ToUtf8(std::string_view bytes);

} // namespace Platform
