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

/// Of FreeAddress and SendToAll. A free address is in the element's own universe where there is
/// room, else behind all others; `taken` are Port-Addresses that are not ours to use. Of elements
/// that share channels the first keeps its address. An element for which no address is free stays.
[[nodiscard]] std::vector<ElementAddress> RemedyAddresses(std::span<const PatchProblem> problems,
                                                          const MappedDeviceModel& document,
                                                          std::span<const std::int32_t> taken);

/// Of OntoCanvas and FitPixels.
[[nodiscard]] std::vector<ElementMapping> RemedyPlaces(std::span<const PatchProblem> problems,
                                                       const MappedDeviceModel& document);

/// Of LibraryDefinition.
[[nodiscard]] std::vector<ElementFixture> RemedyFixtures(std::span<const PatchProblem> problems,
                                                         const MappedDeviceModel& document,
                                                         const DeviceModel& library);
