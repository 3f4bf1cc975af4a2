// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "FixtureModel/DMXMapping.h"

/// A universe as the operator reads it, sub-net and universe: "0/4" for Port-Address 4. Behind
/// 15/15 comes the next net, "1:0/0".
inline QString UniverseText(int portAddress)
{
    const int net = portAddress / 256;
    const QString text = QStringLiteral("%1/%2").arg(portAddress / 16 % 16).arg(portAddress % 16);
    return net == 0 ? text : QStringLiteral("%1:%2").arg(net).arg(text);
}

/// A run of universes: "0/4" for one, "0/4 - 1/3" for more.
inline QString UniverseRunText(int first, int count)
{
    const QString begin = UniverseText(first);
    return count < 2 ? begin
                     : QStringLiteral("%1 - %2").arg(begin, UniverseText(first + count - 1));
}

/// The same of an element's address, as its file has it.
inline QString UniverseText(const DMXMappingArtNet& address)
{
    return QStringLiteral("%1/%2").arg(address.GetSubnet()).arg(address.GetUniverse());
}

/// Where an element is patched: "0/4/97" for channel 97 of universe 0/4.
inline QString AddressText(const DMXMappingArtNet& address)
{
    return UniverseText(address) + QLatin1Char('/') + QString::number(address.GetChannel());
}
