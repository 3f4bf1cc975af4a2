// SPDX-License-Identifier: MIT
#include "UI/Main/InspectorInWindow.h"

#include "LEDEngine/LEDEngine.h"
#include "UI/Editor/EditorController.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Inspector/ArtNetPatchPage.h"
#include "UI/Inspector/InspectorCanvas.h"
#include "UI/Inspector/InspectorPanel.h"
#include "UI/Main/DisplayControls.h"
#include "UI/Main/MainWindowForm.h"
#include "UI/Network/NetworkChoice.h"

namespace {

class InspectedScene final : public InspectorCanvas
{
public:
    explicit InspectedScene(const InspectorInWindow::Parts& parts)
        : scene_(parts.scene)
        , display_(parts.display)
        , view_(*parts.form.mappingEditorView)
    {}

    [[nodiscard]] ElementIds SelectedIds() const override { return scene_.SelectedIds(); }
    [[nodiscard]] double GroupAngle() const override
    {
        scene_.ShowGroupOverlay(); // which reads it
        return scene_.GetGroupOverlay().GetRotation();
    }
    void TurnGroupBy(double degrees) override
    {
        SceneGestures& gestures = scene_.GetGestures();
        gestures.RotateGroupGesture(GesturePhase::Start, 0);
        gestures.RotateGroupGesture(GesturePhase::Update, degrees);
        gestures.RotateGroupGesture(GesturePhase::End, degrees);
    }
    [[nodiscard]] bool IsDragging() const override { return scene_.GetGestures().IsDragging(); }
    void EndGesture() override { scene_.GetGestures().Release(); }
    [[nodiscard]] bool SnapsToGrid() const override { return display_.snapToGrid; }
    void TakeFocus() override { view_.setFocus(); }

private:
    WeftMapEditorScene& scene_;
    const EditorDisplayState& display_;
    WeftMapEditorView& view_;
};

} // namespace

InspectorInWindow::InspectorInWindow(const Parts& parts)
    : canvas_(std::make_unique<InspectedScene>(parts))
{
    auto* addressPage =
        new ArtNetPatchPage({parts.manager, parts.nodes, parts.undoStack, parts.boxes, *canvas_});
    panel_ = std::make_unique<InspectorPanel>(
        InspectorPanel::Parts{parts.manager, parts.undoStack, *canvas_,
                              [&engine = parts.engine](const MappedLedItem& element) {
                                  return engine.FindElementBitmap(element);
                              },
                              *addressPage, *parts.form.inspectorScrollArea,
                              *parts.form.objectInspectorPannel, parts.window});
    const auto showNetwork = [addressPage, &network = parts.network] {
        addressPage->SetNetwork(network.GetNetworkPattern());
    };
    QObject::connect(&parts.network, &NetworkChoice::networkChanged, addressPage, showNetwork);
    showNetwork();
    Inspector* inspector = &panel_->GetInspector();
    QObject::connect(&parts.editor, &EditorController::selectionHasChanged, inspector,
                     &Inspector::SelectionHasChanged);
    QObject::connect(&parts.controls, &DisplayControls::snapChanged, inspector,
                     &Inspector::SnapHasChanged);
}

InspectorInWindow::~InspectorInWindow() = default;
