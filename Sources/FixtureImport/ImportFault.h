// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include <QString>

namespace FixtureImport {

/// Why a file, a definition or a mode is left out.
enum class FaultKind : std::uint8_t
{
    None,

    // ---- The file
    Missing,
    NotPermitted,
    Unreadable,
    TooLarge,       ///< above MaxDefinitionFileSize
    Damaged,        ///< breaks the rules of JSON or XML; `detail` is what the reader says and where
    UnknownFormat,  ///< well-formed, but no fixture definition
    NoModes,        ///< a definition without modes, or a library without fixtures
    LibraryUnread,  ///< a .wfl that can't be read; `detail` is why, a sentence
    FixtureUnread,  ///< one fixture of a .wfl breaks its rules
    RedirectLost,   ///< `detail` is the fixture that the file points to, which isn't there
    RedirectCircle, ///< `detail` is the fixture where the circle closes
    RedirectTooLong, ///< `detail` is the fixture that wasn't looked at any more

    // ---- The mode
    TooManyModes,
    TooManyChannels, ///< `detail` is their number
    NoChannels,
    UnknownChannel,  ///< `detail` is the name, which the definition doesn't explain
    UnknownPixel,    ///< `detail` is the pixel or group, which the definition doesn't have
    GridTooLarge,    ///< above MaxGridCells
    NoLight,         ///< no colours and no dimmer
    Machine,         ///< it makes smoke, haze or wind, and has no colours
    NoPixelType,     ///< `detail` are colours of a lamp that no pixel type has
    ColoursApart,    ///< `detail` are the colours with their channels
    FineOrder,       ///< 16-bit colours in an order that no pixel type has; `detail` likewise
    DifferentPixels, ///< the pixels have no common order; `detail` are two that differ
    ColourDoesMore,  ///< `detail` is a colour channel that does more than its colour
    DimmerDoesMore,  ///< `detail` is a dimmer that does more than dim, and nothing else gives light
};

struct ImportFault
{
    FaultKind kind = FaultKind::None;
    QString detail;

    explicit operator bool() const { return kind != FaultKind::None; }
};

/// A sentence for the operator; empty for no fault.
[[nodiscard]] QString InWords(const ImportFault& fault);

} // namespace FixtureImport
