// SPDX-License-Identifier: MIT
#include "UI/Inspector/InspectorPanel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QSettings>

#include "UI/Inspector/ArtNetPatchPage.h"
#include "UI/Inspector/InspectorCanvas.h"
#include "UI/Inspector/InspectorForm.h"
#include "UI/Inspector/SharedLineEdit.h"
#include "UI/Widgets/FormScrollArea.h"

namespace {

const QString& ShownKey()
{
    static const QString key = QStringLiteral("showInspector");
    return key;
}

} // namespace

InspectorPanel::InspectorPanel(const Parts& parts)
    : parts_(parts)
    , form_(new InspectorForm)
    , preview_(parts.manager, parts.pixels, *form_->labelPreview)
    , inspector_({parts.manager, parts.undoStack, parts.canvas, *form_, preview_})
    , actions_(parts.window)
{
    form_->PlaceAddressPage(parts.addressPage);
    connect(&inspector_, &Inspector::fieldsRead, &parts.addressPage, &ArtNetPatchPage::Show);
    form_->installEventFilter(this);
    parts_.area.setWidget(form_);
    AddActions();
}

InspectorPanel::~InspectorPanel()
{
    // The fields live a little longer: what was typed must not be told any more.
    form_->ForgetTyping();
}

void InspectorPanel::AddActions()
{
    shown_ = actions_.Add({.objectName = "actionInspector",
                           .text = QT_TRANSLATE_NOOP("WEFTMain", "&Inspector"),
                           .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Show the inspector"),
                           .shortcut = "Ctrl+I",
                           .checkable = true},
                          this, [this] { ActionInspector(shown_->isChecked()); });
    shown_->setChecked(true);
    QAction* properties =
        actions_.Add({.objectName = "actionEdit_Properties",
                      .text = QT_TRANSLATE_NOOP("WEFTMain", "Edit Pr&operties"),
                      .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Go to the inspector")},
                     this, &InspectorPanel::ActionEditProperties);
    properties->setShortcuts(
        {QKeySequence(QStringLiteral("Alt+Return")), QKeySequence(QStringLiteral("Alt+Enter"))});
    actions_.Add({.objectName = "actionEdit_Description",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "Edit De&scription"),
                  .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Go to the description"),
                  .shortcut = "F2"},
                 this, &InspectorPanel::ActionEditDescription);
}

void InspectorPanel::Read(const QSettings& store)
{
    ActionInspector(store.value(ShownKey(), true).toBool());
}

void InspectorPanel::Write(QSettings& store) const
{
    store.setValue(ShownKey(), shown_->isChecked());
}

void InspectorPanel::ActionInspector(bool shown)
{
    shown_->setChecked(shown);
    if (!shown && parts_.frame.isAncestorOf(QApplication::focusWidget()))
        parts_.canvas.TakeFocus();
    parts_.frame.setVisible(shown);
}

void InspectorPanel::ActionEditProperties()
{
    GoTo(*form_->editDescription);
}

void InspectorPanel::ActionEditDescription()
{
    GoTo(*form_->editDescription);
    form_->editDescription->selectAll();
}

void InspectorPanel::GoTo(QWidget& field)
{
    ActionInspector(true);
    if (!field.isVisibleTo(form_)) // Nothing is selected.
        return;
    field.setFocus(Qt::ShortcutFocusReason);
    parts_.area.ensureWidgetVisible(&field);
}

/// Escape that no field has a use for leads back to the canvas.
bool InspectorPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        parts_.canvas.TakeFocus();
        return true;
    }
    return QObject::eventFilter(watched, event);
}
