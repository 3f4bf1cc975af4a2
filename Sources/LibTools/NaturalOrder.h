// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Whether `a` comes before `b` for a reader: numbers in the texts by their value ("Bar 2" before
/// "Bar 10", "2.0.0.9" before "2.0.0.10"), letters without regard to case. Texts that are equal in
/// this way come in the order of their characters.
[[nodiscard]] bool IsBefore(const QString& a, const QString& b);
