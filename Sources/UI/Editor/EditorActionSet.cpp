// SPDX-License-Identifier: MIT
#include "UI/Editor/EditorActionSet.h"

#include <array>

#include <QMenu>
#include <QUndoStack>

#include "Language/Language.h"
#include "UI/Editor/EditorController.h"
#include "UI/Editor/WeftMapEditorScene.h"

EditorActionSet::EditorActionSet(const Parts& parts)
    : parts_(parts)
    , actions_(parts.window)
{
    shown_.repatch = parts.repatch;
    AddCanvas();
    AddSelection();
    AddFlips();
    AddAligning();
    AddRotating();
    AddCopies();
    AddUndo();
    AddListMenu();
    parts_.scene.SetActions(shown_);
}

void EditorActionSet::AddCanvas()
{
    EditorController* editor = &parts_.editor;
    shown_.canvasSize =
        actions_.Add({.objectName = "actionCanvas_Size",
                      .text = QT_TRANSLATE_NOOP("WEFTMain", "Canvas &Size..."),
                      .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Adjust the canvas dimensions"),
                      .shortcut = "Ctrl+Shift+R",
                      .icon = "icon_canvassize.png"},
                     editor, &EditorController::ActionCanvasSize);
    shown_.crop =
        actions_.Add({.objectName = "actionCrop_Canvas",
                      .text = QT_TRANSLATE_NOOP("WEFTMain", "&Crop to selection"),
                      .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Crop canvas to selected devices"),
                      .shortcut = "Ctrl+Shift+C",
                      .icon = "icon_cropcanvas.png"},
                     editor, &EditorController::ActionCropCanvasToSelectedDevices);
    shown_.crop->setEnabled(false); // until something is selected
}

void EditorActionSet::AddSelection()
{
    actions_.Add({.objectName = "actionSelect_All",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "Select &All"),
                  .shortcut = "Ctrl+A"},
                 &parts_.editor, &EditorController::ActionSelectAll);
    shown_.remove = actions_.Add(
        {.objectName = "actionActionDelete",
         .text = QT_TRANSLATE_NOOP("WEFTMain", "&Delete"),
         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Delete device from the mapping canvas"),
         .shortcut = "Backspace",
         .icon = "icon_delete.png"},
        &parts_.scene, &WeftMapEditorScene::RemoveSelectedRectangle);
    shown_.remove->setEnabled(false); // until something is selected
}

/// The canvas has them, with the state of what is selected.
void EditorActionSet::AddFlips()
{
    for (QAction* flip : parts_.scene.FlipActions())
        flip->setParent(&parts_.window);
}

void EditorActionSet::AddAligning()
{
    using namespace ElementGeometry;
    struct Align
    {
        ActionRow row;
        AlignMode mode = AlignLeft;
    };
    const std::array<Align, 6> aligns = {{
        {{.objectName = "actionAlign_Left",
          .text = QT_TRANSLATE_NOOP("WEFTMain", "Align &Left"),
          .icon = "icon_alignleft.png"},
         AlignLeft},
        {{.objectName = "actionAlign_Center",
          .text = QT_TRANSLATE_NOOP("WEFTMain", "Align &Center"),
          .icon = "icon_aligncenter.png"},
         AlignCenter},
        {{.objectName = "actionAlign_Right",
          .text = QT_TRANSLATE_NOOP("WEFTMain", "Align &Right"),
          .icon = "icon_alignright.png"},
         AlignRight},
        {{.objectName = "actionAlign_Top",
          .text = QT_TRANSLATE_NOOP("WEFTMain", "Align &Top"),
          .icon = "icon_aligntop.png"},
         AlignTop},
        {{.objectName = "actionAlign_Middle",
          .text = QT_TRANSLATE_NOOP("WEFTMain", "Align &Middle"),
          .icon = "icon_aligncmiddle.png"},
         AlignMiddle},
        {{.objectName = "actionAlign_Bottom",
          .text = QT_TRANSLATE_NOOP("WEFTMain", "Align &Bottom"),
          .icon = "icon_alignbottom.png"},
         AlignBottom},
    }};
    EditorController* editor = &parts_.editor;
    std::vector<QAction*> entries;
    for (const Align& align : aligns) {
        if (align.mode == AlignTop)
            entries.push_back(nullptr);
        entries.push_back(actions_.Add(align.row, editor,
                                       [editor, mode = align.mode] { editor->ActionAlign(mode); }));
    }
    entries.push_back(nullptr);
    entries.push_back(
        actions_.Add({.objectName = "actionDistribute_Horizontally",
                      .text = QT_TRANSLATE_NOOP("WEFTMain", "Distribute &Horizontally"),
                      .icon = "icon_aligndistrhorz.png"},
                     editor, [editor] { editor->ActionAlignDistribute(DistributeHorizontally); }));
    entries.push_back(
        actions_.Add({.objectName = "actionDistribute_Vertically",
                      .text = QT_TRANSLATE_NOOP("WEFTMain", "Distribute &Vertically"),
                      .icon = "icon_aligndistrvert.png"},
                     editor, [editor] { editor->ActionAlignDistribute(DistributeVertically); }));
    shown_.align = AddMenu("menuAlign", QT_TRANSLATE_NOOP("WEFTMain", "A&lign"), entries);
}

void EditorActionSet::AddRotating()
{
    EditorController* editor = &parts_.editor;
    shown_.rotate =
        AddMenu("menuRotate_2", QT_TRANSLATE_NOOP("WEFTMain", "Ro&tate"),
                {actions_.Add({.objectName = "actionRotate_Right_90",
                               .text = QT_TRANSLATE_NOOP("WEFTMain", "Rotate &Right 90°"),
                               .shortcut = "Ctrl+R",
                               .icon = "icon_rotateright90.png"},
                              editor, &EditorController::ActionRotateRight90),
                 actions_.Add({.objectName = "actionRotate_Left_90",
                               .text = QT_TRANSLATE_NOOP("WEFTMain", "Rotate &Left 90°"),
                               .icon = "icon_rotateleft90.png"},
                              editor, &EditorController::ActionRotateLeft90)});
}

void EditorActionSet::AddCopies()
{
    EditorController* editor = &parts_.editor;
    shown_.duplicate = actions_.Add(
        {.objectName = "actionDuplicate_Element",
         .text = QT_TRANSLATE_NOOP("WEFTMain", "Duplicate Ele&ment..."),
         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Duplicate element to create a wall."),
         .shortcut = "Ctrl+D"},
        editor, &EditorController::ActionDuplicateElement);
    shown_.copy =
        actions_.Add({.objectName = "actionCopy",
                      .text = QT_TRANSLATE_NOOP("WEFTMain", "&Copy"),
                      .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Copy selected element(s)"),
                      .shortcut = "Ctrl+C"},
                     editor, &EditorController::ActionCopySelection);
    shown_.paste = actions_.Add({.objectName = "actionPaste",
                                 .text = QT_TRANSLATE_NOOP("WEFTMain", "&Paste element(s)"),
                                 .shortcut = "Ctrl+V"},
                                editor, &EditorController::ActionPasteSelection);
    // Until something is selected, or copied.
    for (QAction* action : {shown_.duplicate, shown_.copy, shown_.paste})
        action->setEnabled(false);
}

/// The list's own menu, in the order of the canvas'.
void EditorActionSet::AddListMenu()
{
    const auto separator = [this] {
        auto* line = new QAction(&parts_.list);
        line->setSeparator(true);
        return line;
    };
    parts_.list.addActions({shown_.copy, shown_.paste, separator(), shown_.duplicate});
    if (shown_.repatch)
        parts_.list.addAction(shown_.repatch);
    parts_.list.addActions({separator(), shown_.remove});
    parts_.list.setContextMenuPolicy(Qt::ActionsContextMenu);
}

void EditorActionSet::AddUndo()
{
    shown_.undo = AddHistory({.objectName = "actionUndo",
                              .keys = QKeySequence::Undo,
                              .icon = "icon_undo.png",
                              .bare = QT_TRANSLATE_NOOP("WEFTMain", "&Undo"),
                              .named = QT_TRANSLATE_NOOP("WEFTMain", "&Undo %1"),
                              .step = &QUndoStack::undoText,
                              .go = &QUndoStack::undo,
                              .canGo = &QUndoStack::canUndoChanged,
                              .stepChanged = &QUndoStack::undoTextChanged});
    shown_.redo = AddHistory({.objectName = "actionRedo",
                              .keys = QKeySequence::Redo,
                              .icon = "icon_redo.png",
                              .bare = QT_TRANSLATE_NOOP("WEFTMain", "&Redo"),
                              .named = QT_TRANSLATE_NOOP("WEFTMain", "&Redo %1"),
                              .step = &QUndoStack::redoText,
                              .go = &QUndoStack::redo,
                              .canGo = &QUndoStack::canRedoChanged,
                              .stepChanged = &QUndoStack::redoTextChanged});
}

/// Its text names the step, which keeps the words that it was made with.
QAction* EditorActionSet::AddHistory(const History& history)
{
    QUndoStack* stack = &parts_.undoStack;
    auto* action = new QAction(&parts_.window);
    action->setObjectName(QLatin1String(history.objectName));
    action->setShortcut(history.keys);
    action->setIcon(ActionIcon(history.icon));
    action->setEnabled(false);
    const auto say = [stack, action, history] {
        const QString step = (stack->*history.step)();
        action->setText(step.isEmpty() ? WindowText(history.bare)
                                       : WindowText(history.named).arg(step));
    };
    InEachLanguage(action, say);
    QObject::connect(stack, history.stepChanged, action, say);
    QObject::connect(stack, history.canGo, action, &QAction::setEnabled);
    QObject::connect(action, &QAction::triggered, stack, history.go);
    return action;
}

/// A submenu with the icon of its first entry; null entries are separators.
QMenu* EditorActionSet::AddMenu(const char* objectName, const char* title,
                                const std::vector<QAction*>& entries)
{
    auto* menu = new QMenu(&parts_.window);
    menu->setObjectName(QLatin1String(objectName));
    InEachLanguage(menu, [menu, title] { menu->setTitle(WindowText(title)); });
    menu->setIcon(entries.front()->icon());
    for (QAction* entry : entries) {
        if (entry)
            menu->addAction(entry);
        else
            menu->addSeparator();
    }
    return menu;
}
