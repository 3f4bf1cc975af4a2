// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Model/ArtNetNodeRecord.h"
#include "Model/ElementChanges.h"
#include "UI/Commands/ValueCommand.h"

class ArtNetNodeModel;

/// The operator adds, changes or deletes a manual node, and elements are sent to the node as it is
/// then, or to no chosen node when it is deleted. A node that answers is no manual one: where the
/// node has answered meanwhile, only the elements change, and the document is unsaved, also when
/// undo comes back to the step of the last save.
class ManualNodeCommand final : public ValueCommand<ElementAddress>
{
public:
    using Node = std::optional<ArtNetNodeRecord>;

    /// `before` is nothing for a new node and `after` for one that is deleted. `manager` and
    /// `nodes` outlive the command.
    ManualNodeCommand(DeviceManager& manager, ArtNetNodeModel& nodes, Node before, Node after,
                      const ElementIds& ids);

    [[nodiscard]] bool ChangesNothing() const;

    void undo() override;
    void redo() override;

private:
    void Replace(const Node& present, const Node& wanted) const;

    ArtNetNodeModel& nodes_;
    Node nodeBefore_;
    Node nodeAfter_;
};
