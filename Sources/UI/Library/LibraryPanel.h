// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class DeviceManager;
class LEDDeviceListView;
class OperatorBoxes;
class QPushButton;
class QUndoStack;

/// The operator's side of the fixture library: the list, what may be deleted, import and the way
/// back to the fixtures of the program. Every change is in the library's file at once.
class LibraryPanel : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        DeviceManager& manager;
        LEDDeviceListView& view;
        QPushButton& deleteButton;
        QUndoStack& undoStack;
        OperatorBoxes& boxes;
        QWidget* window; ///< the parent of the boxes
    };
    /// All parts outlive the panel. Gives the view its model.
    explicit LibraryPanel(const Parts& parts);

    /// Loads the list from the user's file and sorts it as it was.
    void Reload();
    /// By manufacturer and, within one, by product.
    void SortByProduct();

public slots:
    void ActionConfirmDeleteFixtureDialog();
    void ActionImportFixtures();
    /// Puts the program's fixtures in place of the user's. The caller begins a new document.
    void RemoveLocalFixtures();

private:
    void UpdateButtonStatesFromDeviceListSelection();

    Parts parts_;
};
