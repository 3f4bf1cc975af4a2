// SPDX-License-Identifier: MIT
#include "UI/Editor/ArrangeCommands.h"

#include "Model/DeviceManager.h"
#include "UI/Editor/WeftMapEditorScene.h"

namespace {

QString AlignText(EditorGeometry::AlignMode mode)
{
    switch (mode) {
    case EditorGeometry::AlignLeft:
        return QObject::tr("Align Left");
    case EditorGeometry::AlignCenter:
        return QObject::tr("Align Center");
    case EditorGeometry::AlignRight:
        return QObject::tr("Align Right");
    case EditorGeometry::AlignTop:
        return QObject::tr("Align Top");
    case EditorGeometry::AlignMiddle:
        return QObject::tr("Align Middle");
    case EditorGeometry::AlignBottom:
        return QObject::tr("Align Bottom");
    }
    return {};
}

} // namespace

AlignRectangleCommand::AlignRectangleCommand(WeftMapEditorScene& scene,
                                             const std::vector<std::int64_t>& ids,
                                             EditorGeometry::AlignMode mode)
    : ElementCommand(scene, ids)
    , mode_(mode)
{
    setText(AlignText(mode));
}

void AlignRectangleCommand::redo()
{
    if (Before().empty())
        return;
    SetCentres(EditorGeometry::Aligned(PlacementsBefore(), mode_));
    MarkDirty();
}

AlignDistributeRectangleCommand::AlignDistributeRectangleCommand(
    WeftMapEditorScene& scene, const std::vector<std::int64_t>& ids,
    EditorGeometry::DistributeMode mode)
    : ElementCommand(scene, ids)
    , mode_(mode)
{
    setText(mode == EditorGeometry::DistributeHorizontally ? QObject::tr("Distribute Horizontally")
                                                           : QObject::tr("Distribute Vertically"));
}

void AlignDistributeRectangleCommand::redo()
{
    if (Before().size() < 2)
        return;
    SetCentres(EditorGeometry::Distributed(PlacementsBefore(), mode_));
    MarkDirty();
}

CropCanvasToSelectionCommand::CropCanvasToSelectionCommand(
    WeftMapEditorScene& scene, const std::vector<std::int64_t>& selected)
    : ElementCommand(scene, scene.AllIds())
    , selected_(selected)
{
    setText(QObject::tr("Crop Canvas"));
    Manager().GetCanvasSize(oldWidth_, oldHeight_);
}

void CropCanvasToSelectionCommand::redo()
{
    Scene().RemoveOverlays();
    QModelIndexList indexes;
    for (const std::int64_t id : selected_) {
        if (const QModelIndex index = Scene().IndexOf(id); index.isValid())
            indexes.append(index);
    }
    Manager().CropToSelection(indexes);
    int width = 0;
    int height = 0;
    Manager().GetCanvasSize(width, height);
    Scene().SetCanvasSize(width, height);
}

void CropCanvasToSelectionCommand::undo()
{
    Scene().RemoveOverlays();
    Manager().SetCanvasSize(oldWidth_, oldHeight_);
    // Not by rectangles: those would go to whole pixels, and not back to where they were.
    PutPlacementsBack();
    Scene().SetCanvasSize(oldWidth_, oldHeight_);
}
