// SPDX-License-Identifier: MIT
#include "UI/Commands/AddressCommands.h"

AddressCommand::AddressCommand(DeviceManager& manager, const ElementIds& ids,
                               const std::function<void(DMXMappingArtNet&)>& edit)
    : AddressCommand(manager, ids,
                     [&edit](std::int64_t, DMXMappingArtNet& address) { edit(address); })
{}

AddressCommand::AddressCommand(DeviceManager& manager, const ElementIds& ids,
                               const std::function<void(std::int64_t, DMXMappingArtNet&)>& edit)
    : ValueCommand(manager, manager.GetAddresses(ids), &DeviceManager::SetAddresses,
                   QObject::tr("Change Address"))
{
    for (ElementAddress& element : after_) {
        if (element.address)
            edit(element.uniqueID, *element.address);
    }
}

AddressCommand::AddressCommand(DeviceManager& manager, const ElementIds& ids, ToElementsWithout)
    : ValueCommand(manager, manager.GetAddresses(ids), &DeviceManager::SetAddresses,
                   QObject::tr("Change Address"))
{
    for (ElementAddress& element : after_) {
        if (!element.address)
            element.address.emplace(0, 0, 1, AutoNode, std::wstring());
    }
}

DescriptionCommand::DescriptionCommand(DeviceManager& manager, const ElementIds& ids,
                                       const std::wstring& text)
    : ValueCommand(manager, manager.GetDescriptions(ids), &DeviceManager::SetDescriptions,
                   QObject::tr("Change Description"))
{
    for (ElementDescription& element : after_)
        element.description = text;
}
