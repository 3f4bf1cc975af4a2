// SPDX-License-Identifier: MIT
#include "UI/Inspector/ManualNodeEditing.h"

#include <memory>
#include <utility>

#include <QCoreApplication>

#include "FixtureModel/DMXMapping.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "UI/Commands/ManualNodeCommand.h"
#include "UI/Commands/PushStep.h"
#include "UI/Dialogs/LEDDialogManualNode.h"
#include "UI/Inspector/InspectorCanvas.h"
#include "UI/Inspector/NodeComboBox.h"

namespace {

struct AddressWords
{
    Q_DECLARE_TR_FUNCTIONS(ManualNodeEditing)
};

/// The pattern of a network in which each part can be typed.
const QString AllOpen = QStringLiteral("255.255.255.255");

/// What of a node's address is typed: all of it without a network, and in one that leaves no whole
/// part open.
QString ToType(const QString& network)
{
    return network.split(QLatin1Char('.')).contains(QStringLiteral("255")) ? network : AllOpen;
}

} // namespace

ManualNodeEditing::ManualNodeEditing(const Parts& parts)
    : parts_(parts)
{}

void ManualNodeEditing::Enter(const ElementIds& ids)
{
    LEDDialogManualNode dialog(
        parts_.boxes, [this](const QString& address) { return ObjectionTo(address, QString()); },
        parts_.list.window());
    dialog.SetUpForNew(ToType(parts_.list.GetNetwork()));
    if (Ask(dialog) == QDialog::Accepted)
        Replace(std::nullopt, dialog.GetNode(), ids);
}

void ManualNodeEditing::Edit(const QString& address)
{
    if (!parts_.nodes.IsManualNode(address))
        return;
    const ArtNetNodeRecord before = *parts_.nodes.GetNode(address);
    LEDDialogManualNode dialog(
        parts_.boxes, [this, address](const QString& typed) { return ObjectionTo(typed, address); },
        parts_.list.window());
    // A node of another network keeps its address until another one is typed.
    const bool isOutside = parts_.list.IsOutside(address.toStdWString());
    dialog.SetUpForEdit(parts_.nodes.GetNodeName(address), address,
                        isOutside ? AllOpen : ToType(parts_.list.GetNetwork()));
    const int result = Ask(dialog);
    // Meanwhile the node may have answered, which makes it an ordinary one.
    if (result == QDialog::Rejected || !parts_.nodes.IsManualNode(address))
        return;
    const bool deleted = result == LEDDialogManualNode::Deleted;
    Replace(before, deleted ? std::nullopt : std::optional(dialog.GetNode()),
            ElementsSentTo(address));
}

void ManualNodeEditing::Stop()
{
    if (openDialog_)
        std::exchange(openDialog_, nullptr)->reject();
}

int ManualNodeEditing::Ask(LEDDialogManualNode& dialog)
{
    openDialog_ = &dialog;
    const int result = dialog.exec();
    return std::exchange(openDialog_, nullptr) ? result : QDialog::Rejected;
}

/// Why a node can't have this address. `own` is the one that it has.
QString ManualNodeEditing::ObjectionTo(const QString& address, const QString& own) const
{
    if (address == own)
        return {};
    if (address == parts_.list.GetNetwork() || address == AllOpen)
        return AddressWords::tr("%1 is for all nodes of the network, not for one").arg(address);
    // One that the document names and the list doesn't show may become a manual one.
    if (parts_.list.Offers(address) || parts_.nodes.GetLiveNodes().contains(address))
        return AddressWords::tr("%1 is in the list already: %2")
            .arg(address, parts_.nodes.GetNodeName(address));
    return {};
}

void ManualNodeEditing::Replace(const std::optional<ArtNetNodeRecord>& before,
                                const std::optional<ArtNetNodeRecord>& after, const ElementIds& ids)
{
    parts_.canvas.EndGesture();
    PushStep(parts_.undoStack,
             std::make_unique<ManualNodeCommand>(parts_.manager, parts_.nodes, before, after, ids));
}

ElementIds ManualNodeEditing::ElementsSentTo(const QString& address) const
{
    const std::wstring node = address.toStdWString();
    ElementIds ids;
    for (const MappedLedItem* element : parts_.manager.GetMappedDeviceModel()->GetAllItems()) {
        const DMXMappingArtNet* mapping = element->GetArtNetMapping();
        if (mapping && mapping->GetIpconf() == node)
            ids.push_back(element->uniqueID);
    }
    return ids;
}
