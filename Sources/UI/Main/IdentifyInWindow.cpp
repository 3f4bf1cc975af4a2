// SPDX-License-Identifier: MIT
#include "UI/Main/IdentifyInWindow.h"

#include <QItemSelectionModel>

#include "Model/DeviceManager.h"
#include "Model/MappedObjectListProxy.h"
#include "UI/Editor/EditorController.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Editor/WeftMappedObjectTreeView.h"
#include "UI/Identify/Identify.h"
#include "UI/Identify/IdentifyCanvas.h"
#include "UI/Main/DocumentLife.h"

namespace {

class IdentifiedScene final : public IdentifyCanvas
{
public:
    explicit IdentifiedScene(const IdentifyInWindow::Parts& parts)
        : manager_(parts.manager)
        , scene_(parts.scene)
        , view_(parts.view)
        , list_(parts.list)
    {}

    [[nodiscard]] ElementIds SelectedIds() const override { return scene_.SelectedIds(); }
    void Select(const ElementIds& ids) override
    {
        // In the list: what is selected there, the canvas scrolls to.
        list_.selectionModel()->select(manager_.GetMappedObjectListProxy()->RowsOf(ids),
                                       QItemSelectionModel::ClearAndSelect);
    }
    void EndGesture() override { scene_.GetGestures().Release(); }
    [[nodiscard]] QWidget& View() const override { return view_; }
    [[nodiscard]] QWidget& List() const override { return list_; }

private:
    const DeviceManager& manager_;
    WeftMapEditorScene& scene_;
    WeftMapEditorView& view_;
    WeftMappedObjectTreeView& list_;
};

} // namespace

IdentifyInWindow::IdentifyInWindow(const Parts& parts)
    : canvas_(std::make_unique<IdentifiedScene>(parts))
    , identify_(std::make_unique<Identify>(
          Identify::Parts{parts.manager, parts.engine, *canvas_, parts.window}))
{
    QObject::connect(&parts.editor, &EditorController::selectionHasChanged, identify_.get(),
                     &Identify::SelectionHasChanged);
    QObject::connect(&parts.document, &DocumentLife::cleared, identify_.get(), &Identify::Forget);
}

IdentifyInWindow::~IdentifyInWindow() = default;
