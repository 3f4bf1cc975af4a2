// SPDX-License-Identifier: MIT
#include "UI/Output/BlockMove.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <QCoreApplication>

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
    addresses_ = ShiftedAddresses(document, patch, ids, shift);
    move_ = PreviewMove(document, patch, addresses_, shown);
}

void BlockMove::Clear()
{
    addresses_.clear();
    move_.reset();
}

QString BlockMove::Words() const
{
    if (!move_ || addresses_.empty())
        return {};
    const ElementAddress& first = addresses_.front();
    const MappedLedItem* element =
        manager_.GetMappedDeviceModel()->GetItemByUniqueID(first.uniqueID);
    const QString name =
        element ? QString::fromStdWString(element->description).simplified() : QString();
    const QString what =
        addresses_.size() == 1
            ? MoveWords::tr("\"%1\" to %2").arg(name, AddressText(*first.address))
            : MoveWords::tr("%1 elements, \"%2\" to %3")
                  .arg(QString::number(addresses_.size()), name, AddressText(*first.address));
    if (!move_->fits)
        return MoveWords::tr("%1: reaches beyond channels 1 to 512, and is not moved").arg(what);
    if (move_->taken.any())
        return MoveWords::tr("%1: shares %2 channels with other elements")
            .arg(what, QString::number(move_->taken.count()));
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
    for (const ElementAddress& each : wanted)
        ids.push_back(each.uniqueID);
    PushStep(history, std::make_unique<AddressCommand>(
                          manager, ids, [&wanted](std::int64_t id, DMXMappingArtNet& address) {
                              const auto found =
                                  std::ranges::find(wanted, id, &ElementAddress::uniqueID);
                              if (found != wanted.end())
                                  address = *found->address;
                          }));
}
