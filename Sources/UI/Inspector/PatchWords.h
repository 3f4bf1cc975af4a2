// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "Model/ElementChanges.h"

class DeviceManager;

/// What elements occupy on the wire, in words.
struct PatchWords
{
    QString occupied; ///< of one element: "0:4, channels 97 to 129"; of several, what is wrong
    QString overlaps; ///< the others that share channels with them, by name; may be empty
    bool inConflict = false; ///< a universe of theirs is broadcast and also sent to a chosen node
};

/// The words for these elements, one or several. Reads every element of the document once.
[[nodiscard]] PatchWords WordsForPatch(const DeviceManager& manager, const ElementIds& ids);
