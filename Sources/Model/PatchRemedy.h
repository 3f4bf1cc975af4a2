// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "Model/ElementChanges.h"
#include "Model/ElementFixture.h"
#include "Model/PatchProblem.h"

class DeviceModel;
class MappedDeviceModel;

// What elements become by the remedy of their problems, which are all of one rule. An element that
// is gone is in no result.

/// The elements of the problems that the remedy is for, in their order, each once. Of elements that
/// share channels each keeps its address that shares none with those before it that keep theirs.
[[nodiscard]] ElementIds RemedyElements(std::span<const PatchProblem> problems,
                                        const MappedDeviceModel& document);

/// False where the remedy can help no element: there is none, the fixture has more channels than a
/// universe, or the element is larger than the canvas.
[[nodiscard]] bool CanBeRemedied(const PatchProblem& problem, const MappedDeviceModel& document);

/// Of FreeAddress and SendToAll. A free address is in the element's own universe where there is
/// room and Auto and a chosen node don't meet there by it; else in the last universe in use or
/// behind it, else in the first that has room, where all elements have the same node. `taken` are
/// Port-Addresses that are not ours to use. An element for which no address is free is in no
/// result.
[[nodiscard]] std::vector<ElementAddress> RemedyAddresses(std::span<const PatchProblem> problems,
                                                          const MappedDeviceModel& document,
                                                          std::span<const std::int32_t> taken);

/// Of OntoCanvas and FitPixels. One that hangs over the edge and is larger than the canvas is in no
/// result.
[[nodiscard]] std::vector<ElementMapping> RemedyPlaces(std::span<const PatchProblem> problems,
                                                       const MappedDeviceModel& document);

/// Of LibraryDefinition.
[[nodiscard]] std::vector<ElementFixture> RemedyFixtures(std::span<const PatchProblem> problems,
                                                         const MappedDeviceModel& document,
                                                         const DeviceModel& library);
