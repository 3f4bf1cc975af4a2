// SPDX-License-Identifier: MIT
#include "UI/Commands/RemedyCommands.h"

#include <unordered_map>
#include <utility>

#include "Model/MappedDeviceModel.h"
#include "Model/PatchRemedy.h"
#include "UI/Commands/AddressCommands.h"
#include "UI/Commands/PushStep.h"

namespace {

template <class Entry>
ElementIds IdsOf(const std::vector<Entry>& entries)
{
    ElementIds ids;
    for (const Entry& entry : entries)
        ids.push_back(entry.uniqueID);
    return ids;
}

bool PushAddresses(DeviceManager& manager, QUndoStack& history,
                   const std::vector<ElementAddress>& addresses)
{
    std::unordered_map<std::int64_t, DMXMappingArtNet> wanted;
    for (const ElementAddress& element : addresses)
        wanted.emplace(element.uniqueID, *element.address);
    return PushStep(history, std::make_unique<AddressCommand>(
                                 manager, IdsOf(addresses),
                                 [&wanted](std::int64_t id, DMXMappingArtNet& address) {
                                     address = wanted.at(id);
                                 }));
}

} // namespace

PlaceCommand::PlaceCommand(DeviceManager& manager, std::vector<ElementMapping> places,
                           const QString& text)
    : ElementCommand(manager, IdsOf(places), text)
{
    after_ = std::move(places);
}

FixtureCommand::FixtureCommand(DeviceManager& manager, std::vector<ElementFixture> fixtures,
                               const QString& text)
    : ValueCommand(manager, manager.GetFixtures(IdsOf(fixtures)), &DeviceManager::SetFixtures, text)
{
    after_ = std::move(fixtures);
}

bool PushRemedy(DeviceManager& manager, QUndoStack& history, std::span<const PatchProblem> problems,
                std::span<const std::int32_t> taken)
{
    if (problems.empty())
        return false;
    const MappedDeviceModel& document = *manager.GetMappedDeviceModel();
    switch (RemedyOf(problems.front().rule)) {
    case PatchRemedy::FreeAddress:
    case PatchRemedy::SendToAll:
        return PushAddresses(manager, history, RemedyAddresses(problems, document, taken));
    case PatchRemedy::LibraryDefinition:
        return PushStep(history,
                        std::make_unique<FixtureCommand>(
                            manager, RemedyFixtures(problems, document, *manager.GetDeviceModel()),
                            QObject::tr("Take Library Definition")));
    case PatchRemedy::OntoCanvas:
        return PushStep(history,
                        std::make_unique<PlaceCommand>(manager, RemedyPlaces(problems, document),
                                                       QObject::tr("Bring onto Canvas")));
    case PatchRemedy::FitPixels:
        return PushStep(history,
                        std::make_unique<PlaceCommand>(manager, RemedyPlaces(problems, document),
                                                       QObject::tr("Enlarge to Pixels")));
    default:
        return false;
    }
}
