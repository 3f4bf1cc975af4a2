// SPDX-License-Identifier: MIT
#include "UI/Commands/ManualNodeCommand.h"

#include <utility>

#include <QString>

#include "Model/ArtNetNodeModel.h"

namespace {

QString AddressOf(const ArtNetNodeRecord& node)
{
    return QString::fromStdString(node.ip);
}

QString TextFor(const ManualNodeCommand::Node& before, const ManualNodeCommand::Node& after)
{
    if (!before)
        return QObject::tr("Add Node");
    return after ? QObject::tr("Edit Node") : QObject::tr("Delete Node");
}

} // namespace

ManualNodeCommand::ManualNodeCommand(DeviceManager& manager, ArtNetNodeModel& nodes, Node before,
                                     Node after, const ElementIds& ids)
    : ValueCommand(manager, manager.GetAddresses(ids), &DeviceManager::SetAddresses,
                   TextFor(before, after))
    , nodes_(nodes)
    , nodeBefore_(std::move(before))
    , nodeAfter_(std::move(after))
{
    const std::wstring address = nodeAfter_ ? AddressOf(*nodeAfter_).toStdWString() : AutoNode;
    const std::wstring name =
        nodeAfter_ ? QString::fromStdString(nodeAfter_->name).toStdWString() : L"";
    for (ElementAddress& element : after_) {
        if (element.address)
            element.address->SetNode(address, name);
    }
}

bool ManualNodeCommand::ChangesNothing() const
{
    const bool sameNode = nodeBefore_ && nodeAfter_ && nodeBefore_->ip == nodeAfter_->ip &&
                          nodeBefore_->name == nodeAfter_->name;
    return sameNode && ValueCommand::ChangesNothing();
}

void ManualNodeCommand::redo()
{
    Replace(nodeBefore_, nodeAfter_);
    ValueCommand::redo();
}

void ManualNodeCommand::undo()
{
    ValueCommand::undo();
    Replace(nodeAfter_, nodeBefore_);
}

void ManualNodeCommand::Replace(const Node& present, const Node& wanted) const
{
    const bool moves = !present || !wanted || present->ip != wanted->ip;
    if (present && moves && nodes_.IsManualNode(AddressOf(*present)))
        nodes_.RemoveNode(AddressOf(*present));
    if (!wanted || nodes_.AddManualNode(*wanted))
        return;
    const QString address = AddressOf(*wanted);
    if (!nodes_.GetOfflineNodes().contains(address)) {
        // It answers, and the document lacks the entry that its file may have.
        manager_.SetDocumentDirty(true);
        return;
    }
    ArtNetNodeRecord& node = *nodes_.GetNode(address);
    node.name = wanted->name;
    node.manual = true;
    nodes_.ReinsertNode(address);
}
