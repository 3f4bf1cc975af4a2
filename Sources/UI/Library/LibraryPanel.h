// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "LibTools/DiskWork.h"
#include "UI/Library/FixtureEditing.h"
#include "UI/Library/FixtureExport.h"
#include "UI/Library/FixtureImporting.h"
#include "UI/Widgets/ActionSet.h"

class DeviceLedItem;
class DeviceManager;
class LibraryList;
class OperatorBoxes;
class QLayout;
class QPushButton;
class QUndoStack;

/// The operator's side of the fixture library, the dock "Fixture Library": the list, new and
/// changed fixtures, what may be deleted, import and the way back to the fixtures of the program.
/// Every change is in the library's file at once. While the panel lives, it asks about fixtures
/// that come with a document and differ.
class LibraryPanel : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        DeviceManager& manager;
        QUndoStack& undoStack; ///< forgets its steps when a fixture goes or is replaced
        OperatorBoxes& boxes;
        QWidget& window; ///< owns the action, and is the parent of boxes and dialogs
        DiskWait wait;   ///< keeps the output going while a save waits for the disk
    };
    /// All parts outlive the panel.
    explicit LibraryPanel(const Parts& parts);
    /// The list, which its dock owns, shows nothing from then on.
    ~LibraryPanel() override;

    /// The list and its buttons. They belong to the dock that takes them.
    [[nodiscard]] QWidget* Contents() const { return contents_; }

    /// Adds the fixtures that came with this version of the program to the user's, with a question
    /// about each one that differs.
    void UpdateFromProgram();
    /// The library was loaded again, or has more fixtures: the list comes back as it was.
    void FollowLibrary();

public slots:
    void ActionOpenCustomFixtureDialog();
    void ActionEditCustomFixtureDialog();
    void ActionConfirmDeleteFixtureDialog();
    /// Of one library that is chosen, asks only about what differs; anything else is shown before.
    void ActionImportFixtures();
    void ActionImportFixtureFolder();
    /// Shows what these files and folders have, for the operator to choose what is brought in.
    void ImportFixtures(const QStringList& paths);
    /// Puts the program's fixtures in place of the user's. The document stays as it is, and keeps
    /// the fixtures that it uses.
    void RestoreBuiltInFixtures();

private:
    void BuildContents();
    QPushButton* AddButton(const char* objectName, const char* text, QLayout& row,
                           void (LibraryPanel::*slot)());
    void WatchLibrary();
    void Notify(const QString& title, const QString& text);
    void AskAboutFixturesOfDocuments();
    void UpdateButtonStatesFromDeviceListSelection();
    void ImportLibrary(const QString& file);
    bool MayDelete(const DeviceLedItem& fixture);

    Parts parts_;
    ActionSet actions_;
    QWidget* contents_;
    LibraryList* list_;
    FixtureEditing editing_;
    FixtureImporting importing_;
    FixtureExport export_;
    QPushButton* editButton_ = nullptr;
    QPushButton* deleteButton_ = nullptr;
    bool isTellingOfFailure_ = false; ///< its box is open
};
