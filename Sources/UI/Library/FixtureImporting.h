// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include <QObject>
#include <QStringList>
#include <QTimer>

#include "FixtureImport/ImportPlan.h"
#include "LibTools/DiskWork.h"

class DeviceLedItem;
class DeviceManager;
class ImportFixturesDialog;
class LibraryList;
class OperatorBoxes;
class QUndoStack;
class QWidget;

/// Brings fixtures of other libraries and programs into the user's: shows what the files have, and
/// takes what the operator chooses. The user's file is written once, at the end; until then all can
/// be taken back. While thousands of fixtures come in, the output goes on.
class FixtureImporting : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        DeviceManager& manager;
        QUndoStack& undoStack; ///< forgets its steps when a fixture was replaced
        OperatorBoxes& boxes;
        LibraryList& list; ///< shows what came, selected
        QWidget& window;   ///< the parent of the dialog
        DiskWait wait;     ///< keeps the output going while a save waits for the disk
    };
    /// All parts outlive this object.
    explicit FixtureImporting(Parts parts);

    /// Opens the dialog with these files and folders, and returns when it is closed. If it is open
    /// already, it gets them too.
    void Import(const QStringList& paths);

private:
    /// What the library has of the import.
    struct Done
    {
        std::wstring product;
        std::optional<LEDFixture> before; ///< of a fixture that was replaced
    };

    void Begin();
    [[nodiscard]] bool MayReplace() const;
    void DoPortion();
    void TakeSome();
    void Replace(const DeviceLedItem& present, const LEDFixture& fixture);
    void TakeLastBack();
    void End();
    void EndTakenBack();
    [[nodiscard]] bool IsUsed(const DeviceLedItem& fixture) const;

    Parts parts_;
    ImportFixturesDialog* dialog_ = nullptr; ///< while it is open
    std::vector<FixtureImport::ImportPlan::Wanted> wanted_;
    std::size_t taken_ = 0; ///< of these
    std::vector<Done> done_;
    bool isTakingBack_ = false;
    bool changedDocument_ = false;
    QTimer timer_;
};
