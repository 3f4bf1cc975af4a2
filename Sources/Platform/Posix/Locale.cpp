// SPDX-License-Identifier: MIT
#include "Platform/Locale.h"

#include <clocale>
#include <cstdint>
#include <cstring>

#include <langinfo.h>

namespace Platform {

void UseUtf8TextAndPlainNumbers() noexcept
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        std::setlocale(LC_CTYPE, "C.UTF-8");
    std::setlocale(LC_NUMERIC, "C");
}

bool UsesLetterPaper() noexcept
{
    // Millimetres; the item's value is the number itself, in the place of a pointer.
    constexpr std::uint32_t letterHeight = 279;
    const auto item = reinterpret_cast<std::uintptr_t>(nl_langinfo(_NL_PAPER_HEIGHT));
    return static_cast<std::uint32_t>(item) == letterHeight;
}

} // namespace Platform
