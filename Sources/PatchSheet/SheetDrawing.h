// SPDX-License-Identifier: MIT
#pragma once

class SheetFlow;
class SheetInk;
struct PatchSheet;

/// The layout on pages of its own: the canvas with all elements and their numbers, and where the
/// numbers are too many to be read, parts of it in a larger scale behind it.
void AddLayout(SheetFlow& flow, SheetInk& ink, const PatchSheet& sheet);
