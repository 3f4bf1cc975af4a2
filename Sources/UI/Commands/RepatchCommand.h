// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Model/ElementChanges.h"
#include "UI/Commands/ValueCommand.h"

/// Gives each of several elements an address of its own. `manager` outlives the command.
class RepatchCommand final : public ValueCommand<ElementAddress>
{
public:
    /// Elements that have gone are passed over.
    RepatchCommand(DeviceManager& manager, const std::vector<ElementAddress>& addresses);
};
