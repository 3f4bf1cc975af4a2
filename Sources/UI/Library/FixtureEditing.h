// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "LibTools/DiskWork.h"

class DeviceManager;
class LibraryList;
class OperatorBoxes;
class QUndoStack;
class QWidget;

/// Makes a fixture of the library and changes one, in the dialogs of the fixture editor. What they
/// give is in the user's file at once; the elements that use a changed fixture follow.
///
/// While a dialog is open, a document may be opened and the library loaded again behind it, which
/// ends all fixtures and numbers. So a fixture is known by its product from one moment to the next.
class FixtureEditing : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        DeviceManager& manager;
        QUndoStack& undoStack; ///< forgets its steps when a fixture was changed
        OperatorBoxes& boxes;
        LibraryList& list; ///< follows, with the fixture selected
        QWidget& window;   ///< the parent of the dialogs
        DiskWait wait;     ///< keeps the output going while a save waits for the disk
    };
    /// All parts outlive this object.
    explicit FixtureEditing(Parts parts);

    /// Asks for the size and then for the rest.
    void MakeFixture();
    /// Changes the selected fixture, if one is. What was applied in between is taken back when the
    /// dialog is not accepted, in the user's file to the byte.
    void EditSelected();

private:
    Parts parts_;
};
