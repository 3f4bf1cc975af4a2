// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "Model/ElementChanges.h"
#include "UI/Commands/ValueCommand.h"

// The edits of what an element is called and where it is sent. `manager` outlives each command.

/// Sends elements elsewhere.
class AddressCommand final : public ValueCommand<ElementAddress>
{
public:
    /// `edit` changes each address; elements without one are passed over.
    AddressCommand(DeviceManager& manager, const ElementIds& ids,
                   const std::function<void(DMXMappingArtNet&)>& edit);

    /// The same for an edit that differs from element to element.
    AddressCommand(DeviceManager& manager, const ElementIds& ids,
                   const std::function<void(std::int64_t, DMXMappingArtNet&)>& edit);

    /// Gives an Art-Net address to the elements that have none: universe 0:0, channel 1, no node.
    struct ToElementsWithout
    {};
    AddressCommand(DeviceManager& manager, const ElementIds& ids, ToElementsWithout);
};

/// Gives all these elements the same description.
class DescriptionCommand final : public ValueCommand<ElementDescription>
{
public:
    DescriptionCommand(DeviceManager& manager, const ElementIds& ids, const std::wstring& text);
};
