// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <vector>

#include <QSizeF>

#include "Model/ElementChanges.h"
#include "Model/ElementGeometry.h"
#include "UI/Commands/ValueCommand.h"

/// The numbers that the commands are known by. Only moves merge, see MoveCommand.
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

/// An edit of geometry.
class ElementCommand : public ValueCommand<ElementMapping>
{
public:
    /// Shows what the elements become while a gesture still runs. The document counts as changed
    /// only with the step, so that a gesture which ends where it began changes nothing at all.
    void Preview() const { Set(after_); }

protected:
    /// `manager` outlives the command. Ids without element are passed over.
    ElementCommand(DeviceManager& manager, const ElementIds& ids, const QString& text);

    /// Says what each element becomes: `become` changes what the element was, given as its place in
    /// scene pixels before it is turned, and its geometry for all else.
    template <class Become>
    void EachBecomes(const Become& become)
    {
        for (std::size_t i = 0; i < before_.size(); ++i) {
            VideoMapping video = before_[i].video;
            ElementGeometry::Placement place = ElementGeometry::PlacementOf(video, canvas_);
            become(place, video);
            after_[i].video = ElementGeometry::Placed(video, place, canvas_);
        }
    }
    /// New centres, in the order of PlacementsBefore.
    void AllAreCentred(std::span<const QPointF> centres);

    [[nodiscard]] std::vector<ElementGeometry::Placement> PlacementsBefore() const;

private:
    QSizeF canvas_;
};
