// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include <QUndoCommand>

#include "Model/ObjectChanges.h"
#include "UI/Editor/ElementState.h"

class DeviceManager;
class WeftMapEditorScene;

/// The numbers that the commands are known by. None of them merges with another.
enum CommandId : int
{
    SizeCommandId = 2,
    RotateCommandId = 3,
    FlipCommandId = 4,
    MoveCommandId = 1234,
    RemoveCommandId = 1235,
    AlignCommandId = 1239,
    DistributeCommandId = 1240,
    CreateCommandId = 1241
};

/// A change of placed elements that are there already. It keeps what they were and finds them again
/// by their numbers; those that have gone are left out. Commands change the model alone: the scene
/// follows the model's signals.
class ElementCommand : public QUndoCommand
{
public:
    bool mergeWith(const QUndoCommand*) override { return false; }

protected:
    /// `scene` outlives the command.
    ElementCommand(WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids);

    [[nodiscard]] const std::vector<ElementState>& Before() const { return before_; }
    [[nodiscard]] std::vector<EditorGeometry::Placement> PlacementsBefore() const;
    [[nodiscard]] WeftMapEditorScene& Scene() const { return scene_; }
    [[nodiscard]] DeviceManager& Manager() const;
    void MarkDirty() const;

    // One value for each element of Before(), in its order.
    void SetCentres(const std::vector<QPointF>& centres) const;
    void SetPlacements(const std::vector<EditorGeometry::Placement>& placements) const;
    void SetRotations(const std::vector<float>& degrees) const;
    void MoveTopLefts(const std::vector<QPointF>& corners, bool final) const;

    void PutCentresBack() const;
    void PutPlacementsBack() const;
    void PutRotationsBack() const;

private:
    template <class Make>
    void ForEachPresent(const Make& make) const;

    WeftMapEditorScene& scene_;
    std::vector<ElementState> before_;
};
