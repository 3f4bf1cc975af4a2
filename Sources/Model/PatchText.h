// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "FixtureModel/DMXMapping.h"

/// The number by which the crew finds an element on paper: its place in the document, from 1. The
/// file keeps that order, so that the program, a script and tomorrow's print say the same number; a
/// new element gets the next one. Only when an element is removed do those behind it move up. (The
/// identifier inside of the document is no such number: it is given again at each loading.)
inline int ElementNumber(int row)
{
    return row + 1;
}

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
