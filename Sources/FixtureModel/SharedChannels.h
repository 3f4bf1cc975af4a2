// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "FixtureModel/PatchOverlaps.h"

/// For each chosen element, in the order of `elements`, the first other one that shares channels
/// with it, as an index in `elements`: by its first channel, then by its index. Nothing for an
/// element that shares none, and for one that isn't chosen. Elements share channels as in
/// OverlapsWithChosen.
[[nodiscard]] std::vector<std::optional<std::size_t>>
FirstSharing(std::span<const PatchedElement> elements);
