// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// A universe as the operator reads it, sub-net and universe: "0/4" for Port-Address 4.
inline QString UniverseText(int portAddress)
{
    return QStringLiteral("%1/%2").arg(portAddress / 16).arg(portAddress % 16);
}

/// A run of universes: "0/4" for one, "0/4 - 1/3" for more.
inline QString UniverseRunText(int first, int count)
{
    const QString begin = UniverseText(first);
    return count < 2 ? begin
                     : QStringLiteral("%1 - %2").arg(begin, UniverseText(first + count - 1));
}
