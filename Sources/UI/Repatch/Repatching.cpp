// SPDX-License-Identifier: MIT
#include "UI/Repatch/Repatching.h"

#include <memory>
#include <utility>

#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/NodeChoices.h"
#include "Platform/IPv4.h"
#include "UI/Commands/PushStep.h"
#include "UI/Commands/RepatchCommand.h"
#include "UI/Repatch/RepatchDialog.h"

Repatching::Repatching(Parts parts)
    : parts_(std::move(parts))
    , actions_(parts_.window)
{
    repatch_ = actions_.Add(
        {.objectName = "actionRepatch",
         .text = QT_TRANSLATE_NOOP("WEFTMain", "R&epatch..."),
         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Give the selected fixtures new addresses"),
         .shortcut = "Ctrl+Shift+P"},
        this, &Repatching::ActionRepatch);
    repatch_->setEnabled(false); // until something is selected
}

void Repatching::FollowSelection(int count)
{
    repatch_->setEnabled(count > 0);
}

void Repatching::ActionRepatch()
{
    const Repatch repatch(parts_.manager, parts_.takeSelection());
    if (repatch.Elements().empty())
        return;
    options_.rules.start = repatch.LowestAddress();
    RepatchDialog dialog(repatch, options_, &parts_.window);
    OfferNodes(dialog);
    connect(&parts_.nodes, &ArtNetNodeModel::nodesChanged, &dialog, [&] { OfferNodes(dialog); });
    // Another document gives the same numbers to other elements.
    connect(parts_.manager.GetMappedDeviceModel(), &MappedDeviceModel::modelReset, &dialog,
            &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted)
        return;
    options_ = dialog.GetOptions();
    options_.node.reset();
    PushStep(parts_.undoStack,
             std::make_unique<RepatchCommand>(parts_.manager, dialog.GetAddresses()));
}

void Repatching::OfferNodes(RepatchDialog& dialog) const
{
    dialog.OfferNodes(
        NodeChoices(parts_.nodes, Platform::ParseIPv4(parts_.network().toStdWString())));
}
