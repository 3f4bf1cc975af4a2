// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include <QString>

/// A text as Qt has it: "text"_q.
[[nodiscard]] inline QString operator""_q(const char* text, std::size_t size)
{
    return QString::fromUtf8(text, static_cast<int>(size));
}
