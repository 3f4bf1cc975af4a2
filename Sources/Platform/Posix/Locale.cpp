// SPDX-License-Identifier: MIT
#include "Platform/Locale.h"

#include <clocale>
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

} // namespace Platform
