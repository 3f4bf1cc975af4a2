// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "UI/Inspector/ElementPreview.h"
#include "UI/Inspector/Inspector.h"
#include "UI/Widgets/ActionSet.h"

class ArtNetPatchPage;
class FormScrollArea;
class InspectorCanvas;
class InspectorForm;
class QSettings;
class QUndoStack;

/// The inspector as a part of the window: its parts, and the actions that show it, hide it and lead
/// to its fields.
class InspectorPanel final : public QObject
{
    Q_OBJECT

public:
    /// All of them outlive the panel.
    struct Parts
    {
        DeviceManager& manager;
        QUndoStack& undoStack;
        InspectorCanvas& canvas;
        PixelsOfElement pixels;
        ArtNetPatchPage& addressPage; ///< the form owns it from then on
        FormScrollArea& area;         ///< gets the form
        QWidget& frame;               ///< is shown and hidden
        QWidget& window;              ///< owns the actions
    };

    explicit InspectorPanel(const Parts& parts);
    ~InspectorPanel() override;

    [[nodiscard]] Inspector& GetInspector() { return inspector_; }

    /// Whether the panel is shown, from and to the user's store.
    void Read(const QSettings& store);
    void Write(QSettings& store) const;

public slots:
    void ActionInspector(bool shown);
    /// Shows the panel and puts the keyboard into its first field.
    void ActionEditProperties();
    /// The same for the description, with its text selected.
    void ActionEditDescription();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void AddActions();
    void GoTo(QWidget& field);

    Parts parts_;
    InspectorForm* form_; ///< owned by the scroll area
    ElementPreview preview_;
    Inspector inspector_;
    ActionSet actions_;
    QAction* shown_ = nullptr;
};
