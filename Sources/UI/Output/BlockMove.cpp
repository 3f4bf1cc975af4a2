// SPDX-License-Identifier: MIT
#include "UI/Output/BlockMove.h"

#include <memory>
#include <unordered_map>
#include <utility>

#include <QCoreApplication>

#include "FixtureModel/UniverseMerging.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/PatchText.h"
#include "UI/Commands/AddressCommands.h"
#include "UI/Commands/PushStep.h"

namespace {

struct MoveWords
{
    Q_DECLARE_TR_FUNCTIONS(BlockMove)
};

} // namespace

void BlockMove::To(const PatchTable& patch, const ElementIds& ids, const PatchShift& shift,
                   const PatchTarget& shown)
{
    const MappedDeviceModel& document = *manager_.GetMappedDeviceModel();
    refused_ =
        shift.to && !MayBePatched(*shift.to, document.GetMerging()) ? shift.to : std::nullopt;
    if (refused_) {
        addresses_.clear();
        move_.reset();
        return;
    }
    addresses_ = ShiftedAddresses(document, patch, ids, shift);
    move_ = PreviewMove(document, patch, addresses_, shown);
}

void BlockMove::Clear()
{
    addresses_.clear();
    move_.reset();
    refused_.reset();
}

QString BlockMove::Words() const
{
    constexpr int lastPortAddress = 255;
    if (refused_) {
        const QString universe = UniverseText(refused_->portAddress);
        return refused_->portAddress > lastPortAddress
                   ? MoveWords::tr("Universe %1 can't be patched: elements go to 0/0 to 15/15")
                         .arg(universe)
                   : MoveWords::tr("Universe %1 is received: drop on the universe that it is sent "
                                   "on as")
                         .arg(universe);
    }
    if (!move_ || addresses_.empty())
        return {};
    const ElementAddress& first = addresses_.front();
    const MappedLedItem* element =
        manager_.GetMappedDeviceModel()->GetItemByUniqueID(first.uniqueID);
    const QString name =
        element ? QString::fromStdWString(element->description).simplified() : QString();
    const QString what = addresses_.size() == 1
                             ? MoveWords::tr("\"%1\" to %2").arg(name, AddressText(*first.address))
                             : MoveWords::tr("%n element(s), \"%1\" to %2", nullptr,
                                             static_cast<int>(addresses_.size()))
                                   .arg(name, AddressText(*first.address));
    if (!move_->fits)
        return MoveWords::tr("%1: reaches beyond channels 1 to 512, and is not moved").arg(what);
    if (move_->shared > 0)
        return MoveWords::tr("%1: shares %n channel(s) with other elements", nullptr, move_->shared)
            .arg(what);
    return MoveWords::tr("%1: free").arg(what);
}

void BlockMove::Drop(DeviceManager& manager, QUndoStack& history)
{
    const std::vector<ElementAddress> wanted = std::exchange(addresses_, {});
    const bool may = MayDrop();
    Clear();
    if (!may)
        return;
    ElementIds ids;
    std::unordered_map<std::int64_t, const DMXMappingArtNet*> places;
    for (const ElementAddress& each : wanted) {
        ids.push_back(each.uniqueID);
        places.emplace(each.uniqueID, &*each.address);
    }
    PushStep(history, std::make_unique<AddressCommand>(
                          manager, ids, [&places](std::int64_t id, DMXMappingArtNet& address) {
                              if (const auto found = places.find(id); found != places.end())
                                  address = *found->second;
                          }));
}
