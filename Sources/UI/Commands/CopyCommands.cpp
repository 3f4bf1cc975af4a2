// SPDX-License-Identifier: MIT
#include "UI/Commands/CopyCommands.h"

#include <utility>

#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

CopiesCommand::CopiesCommand(DeviceManager& manager, std::vector<ElementValues> copies)
    : AddElementsCommand(manager)
    , copies_(std::move(copies))
{}

ElementIds CopiesCommand::Add()
{
    const std::vector<ElementValues> copies = std::exchange(copies_, {});
    ElementIds ids;
    ids.reserve(copies.size());
    for (const QModelIndex& index : Manager().AddMappedItems(MakeElements(copies)))
        ids.push_back(Manager().GetUniqueID(index));
    return ids;
}

DuplicateElementCommand::DuplicateElementCommand(DeviceManager& manager,
                                                 const ElementValues& source,
                                                 const DuplicateGrid& grid)
    : CopiesCommand(manager,
                    Duplicates(source, grid, NumbersInUse(*manager.GetMappedDeviceModel())))
{
    if (const char* fault = grid.Fault())
        ZEN_LOG_INFO("%s", fault);
}

CopyPasteCommand::CopyPasteCommand(DeviceManager& manager, std::span<const ElementValues> sources,
                                   const PatchAddress& first)
    : CopiesCommand(manager, Pasted(sources, first, NumbersInUse(*manager.GetMappedDeviceModel())))
{}
