// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>

#include <QObject>
#include <QString>

#include "LibTools/DiskWork.h"
#include "LibTools/SaveResult.h"
#include "Model/SavedVersions.h"
#include "UI/Widgets/ActionSet.h"

class ArtNetNodeModel;
class DeviceManager;
class DeviceModel;
class MappingFile;
class NetworkChoice;
class OperatorBoxes;
class OperatorNotices;
class QUndoStack;
class SettingsBlock;
class WeftMapEditorScene;

/// The one mapping document and its fixed file: the first document of a run, new, import, save,
/// export, and the questions that keep unsaved work from being lost.
class DocumentLife : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        DeviceManager& manager;
        ArtNetNodeModel& nodes;
        NetworkChoice& network;
        SettingsBlock& settings;
        WeftMapEditorScene& scene;
        QUndoStack& undoStack;
        OperatorBoxes& boxes;
        OperatorNotices& notices;
        QWidget& window; ///< owns the actions, and is the parent of the boxes
        DiskWait wait;   ///< keeps the output going while a save waits for the disk
    };
    /// All parts outlive this object.
    explicit DocumentLife(const Parts& parts);

    void SetMappingFilePath(const QString& path);
    [[nodiscard]] const QString& GetMappingFilePath() const { return mappingFilePath; }

    /// Loads the document at the mapping file path. Without one, starts a new document on the first
    /// network and saves it at once.
    void LoadFirst();
    /// Asks what becomes of the work that an earlier run left unsaved, if there is any.
    void OfferUnsavedWork();

    /// Whether the program may end. What stands typed in a field counts. Asks the operator when
    /// there is unsaved work, and saves it if that is the answer.
    [[nodiscard]] bool MayClose();

public slots:
    /// Imports a file and marks the document unsaved, for its own file doesn't hold it yet. The
    /// file is read and judged first: one that can't be read, or that the operator does not want as
    /// it is, changes nothing.
    void ImportFile(const QString& path);
    /// Asks first whether to import it: for a file that was opened outside of the window, where
    /// nobody may have meant to change what is sent.
    void OfferImport(const QString& path);
    void ActionNew();
    void ActionImport();
    void ActionExport();
    /// Shows the saved versions, and imports the one that the operator takes back.
    void ActionVersions();
    /// Writes the document. A save that fails leaves the old file whole and the document unsaved,
    /// and the operator gets a notice.
    void ActionSaveFile();
    void UpdateCanvasSize(int width, int height);
    /// Tells the operator why no copy of the unsaved work can be kept; nothing for an empty reason.
    void TellCopyTrouble(const QString& reason);

signals:
    /// The models are empty or were loaded again: their views set up their columns.
    void cleared();
    /// A document is in the model.
    void loaded();
    /// The size of the canvas was set, to another one or the same.
    void canvasSizeChanged();
    /// The file was written: the host reads it again.
    void FileSaved();
    /// Saved versions can't be kept in this folder; the document itself can be saved.
    void versionNotKept(const QString& folder);
    /// Why the last save failed; empty when one went well.
    void saveTrouble(const QString& reason);

private:
    void AddActions();
    /// What stands typed in a field becomes a step of the history first.
    void TakeWhatIsTyped();
    void BeginFirst(const QString& fault);
    [[nodiscard]] int AskAboutUnsavedWork(const QString& kept);
    void RestoreUnsavedWork(const QString& kept);
    /// Whether the file can be read and the operator wants what it has.
    [[nodiscard]] bool MayTake(const MappingFile& file);
    /// Whether the present document may go: it is saved, or the operator has saved it now or gives
    /// its changes up.
    [[nodiscard]] bool MayLetGo(const QString& title, const QString& question);
    /// Lets go of the present document and takes that of the file.
    void Take(MappingFile file);
    /// The library as it will be when the document is taken.
    void WithLibraryOfUser(const std::function<void(const DeviceModel&)>& act) const;
    /// After its conflicts are settled.
    void TakeSettled(MappingFile file);
    /// Empties the document and loads the library again.
    void Reset();
    [[nodiscard]] SaveResult Write();
    void TellNotSaved(const SaveResult& saved);
    [[nodiscard]] QString StartDirectory() const;

    Parts parts_;
    ActionSet actions_;
    SavedVersions versions_;
    QString mappingFilePath;
    /// The document has less than its file: a save keeps the file's bytes beside it.
    bool fileHasMore_ = false;
    /// The document didn't come from its file: a save takes the place of another show.
    bool isAnother_ = false;
    std::uint64_t changes_ = 0; ///< of the document, as far as the manager was told of them
};
