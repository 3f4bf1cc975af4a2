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

RemedyOutcome PushRemedy(DeviceManager& manager, QUndoStack& history,
                         std::span<const PatchProblem> problems,
                         std::span<const std::int32_t> taken)
{
    if (problems.empty())
        return {};
    const MappedDeviceModel& document = *manager.GetMappedDeviceModel();
    const auto concerned = static_cast<int>(RemedyElements(problems, document).size());
    const auto outcome = [concerned](const auto& entries, bool isPushed) -> RemedyOutcome {
        const auto count = static_cast<int>(entries.size());
        return {isPushed ? count : 0, concerned - count};
    };
    const PatchRemedy remedy = RemedyOf(problems.front().rule);
    switch (remedy) {
    case PatchRemedy::FreeAddress:
    case PatchRemedy::SendToAll: {
        const auto addresses = RemedyAddresses(problems, document, taken);
        return outcome(addresses, PushAddresses(manager, history, addresses));
    }
    case PatchRemedy::LibraryDefinition: {
        const auto fixtures = RemedyFixtures(problems, document, *manager.GetDeviceModel());
        return outcome(fixtures, PushStep(history, std::make_unique<FixtureCommand>(
                                                       manager, fixtures,
                                                       QObject::tr("Take Library Definition"))));
    }
    case PatchRemedy::OntoCanvas:
    case PatchRemedy::FitPixels: {
        const auto places = RemedyPlaces(problems, document);
        const QString text = remedy == PatchRemedy::OntoCanvas ? QObject::tr("Bring onto Canvas")
                                                               : QObject::tr("Enlarge to Pixels");
        return outcome(places,
                       PushStep(history, std::make_unique<PlaceCommand>(manager, places, text)));
    }
    default:
        return {0, concerned};
    }
}
