// SPDX-License-Identifier: MIT
#include "UI/Commands/RepatchCommand.h"

namespace {

ElementIds IdsOf(const std::vector<ElementAddress>& addresses)
{
    ElementIds ids;
    ids.reserve(addresses.size());
    for (const ElementAddress& each : addresses)
        ids.push_back(each.uniqueID);
    return ids;
}

} // namespace

RepatchCommand::RepatchCommand(DeviceManager& manager, const std::vector<ElementAddress>& addresses)
    : ValueCommand(manager, manager.GetAddresses(IdsOf(addresses)), &DeviceManager::SetAddresses,
                   QObject::tr("Repatch"))
{
    // Both are in one order; those of elements that have gone are missing in after_.
    auto next = addresses.begin();
    for (ElementAddress& element : after_) {
        while (next->uniqueID != element.uniqueID)
            ++next;
        element.address = next->address;
    }
}
