// SPDX-License-Identifier: MIT
#include "UI/Main/DocumentLife.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QPointer>
#include <QUndoStack>
#include <QWidget>

#include "LEDEngine/GetIPRange.h"
#include "LibTools/DiskWork.h"
#include "LibTools/SameFile.h"
#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappingFile.h"
#include "Model/UnsavedWork.h"
#include "Settings/FixtureLibraryPath.h"
#include "Settings/SettingsBlock.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Dialogs/OperatorNotices.h"
#include "UI/Dialogs/VersionsDialog.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Network/NetworkChoice.h"

namespace {

constexpr int DefaultCanvasSize = 100;

} // namespace

DocumentLife::DocumentLife(const Parts& parts)
    : parts_(parts)
    , actions_(parts.window)
{
    AddActions();
    connect(&versions_, &SavedVersions::notKept, this,
            [this] { emit versionNotKept(versions_.GetFolder()); });
    connect(&parts_.manager, &DeviceManager::signalDocumentSavedState, this,
            [this] { ++changes_; });
}

void DocumentLife::SetMappingFilePath(const QString& path)
{
    mappingFilePath = path;
    versions_.SetDocument(path);
}

void DocumentLife::AddActions()
{
    const auto add = [this](const ActionRow& row, void (DocumentLife::*act)()) {
        return actions_.Add(row, this, [this, act] {
            TakeWhatIsTyped();
            (this->*act)();
        });
    };
    add({.objectName = "actionNew",
         .text = QT_TRANSLATE_NOOP("WEFTMain", "&New..."),
         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Creates an empty canvas"),
         .shortcut = "Ctrl+N",
         .icon = "icon_filenew.png"},
        &DocumentLife::ActionNew);
    QAction* save = add({.objectName = "actionSave_File",
                         .text = QT_TRANSLATE_NOOP("WEFTMain", "&Save"),
                         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Save mapping to current file"),
                         .shortcut = "Ctrl+S",
                         .icon = "icon_filesave.png"},
                        &DocumentLife::ActionSaveFile);
    connect(&parts_.manager, &DeviceManager::signalDocumentSavedState, save, &QAction::setDisabled);
    add({.objectName = "actionImport",
         .text = QT_TRANSLATE_NOOP("WEFTMain", "&Import..."),
         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Open an existing mapping file "),
         .shortcut = "Ctrl+O",
         .icon = "icon_fileopen.png"},
        &DocumentLife::ActionImport);
    add({.objectName = "actionExport",
         .text = QT_TRANSLATE_NOOP("WEFTMain", "&Export..."),
         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Save mapping to a mapping file "),
         .shortcut = "Ctrl+Shift+S",
         .icon = "icon_filesaveas.png"},
        &DocumentLife::ActionExport);
    add({.objectName = "actionVersions",
         .text = QT_TRANSLATE_NOOP("WEFTMain", "&Versions..."),
         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Take back a saved version")},
        &DocumentLife::ActionVersions);
}

/// A menu leaves the focus, and with it the typing, where it is.
void DocumentLife::TakeWhatIsTyped()
{
    const QPointer<QWidget> field = parts_.window.focusWidget();
    if (!field)
        return;
    field->clearFocus();
    if (field && field->isVisible())
        field->setFocus();
    else if (field) // the editor of a list, which is done
        field->parentWidget()->setFocus();
}

// ---- The first document of a run ---------------------------------------------------------------

void DocumentLife::LoadFirst()
{
    MappingFile file = parts_.manager.ReadMapping(mappingFilePath);
    if (!file.IsReadable()) {
        BeginFirst(file.Fault());
        return;
    }
    const bool whole = file.IsWhole();
    const QString lost = file.Losses();
    // Nothing is sent before this document is there, and nobody may be there to answer.
    WithLibraryOfUser([&file](const DeviceModel& library) { file.SettleConflictsByUse(library); });
    TakeSettled(std::move(file));
    isAnother_ = false;
    versions_.KeepSoon();
    if (whole)
        return;
    // The output waits for nobody: what there is goes on stage, and its file stays until a save.
    fileHasMore_ = true;
    parts_.manager.SetDocumentDirty(true);
    parts_.notices.Add(
        {&parts_.window, tr("Mapping Read in Part"),
         tr("The mapping %1 can't be read whole.\n\n%2\n\nThe rest is open. When you "
            "save it, the file as it is now is kept beside it.")
             .arg(mappingFilePath, lost)});
}

/// A document of its own, for a file that is missing or has this fault.
void DocumentLife::BeginFirst(const QString& fault)
{
    Reset();
    const bool exists = QFileInfo::exists(mappingFilePath);
    const QString kept = exists ? KeepUnreadableFile(mappingFilePath) : QString();
    parts_.network.ChooseFirst();
    parts_.network.updateArtNetOutput();
    if (exists)
        parts_.notices.Add(
            {&parts_.window, tr("Mapping Not Read"),
             tr("The mapping %1 can't be read.\n\n%2\n\n%3")
                 .arg(mappingFilePath, fault,
                      kept.isEmpty() ? tr("It stays there. When you save, it is kept beside your "
                                          "mapping.")
                                     : tr("It is kept as %1.").arg(kept))});
    // A file that could not even be renamed is not overwritten without the operator's consent.
    if (exists && kept.isEmpty()) {
        fileHasMore_ = true;
        parts_.manager.SetDocumentDirty(true);
        return;
    }
    if (const SaveResult saved = Write(); !saved)
        TellNotSaved(saved);
}

void DocumentLife::OfferUnsavedWork()
{
    const QString kept = UnsavedWork::FileFor(mappingFilePath);
    if (!UnsavedWork::IsLeftOver(mappingFilePath)) {
        QFile::remove(kept);
        return;
    }
    const int answer = AskAboutUnsavedWork(kept);
    if (answer == 1)
        QFile::remove(kept);
    if (answer == 0)
        RestoreUnsavedWork(kept);
}

/// 0 restores it, 1 discards it; any other answer leaves it for the next start.
int DocumentLife::AskAboutUnsavedWork(const QString& kept)
{
    const QString when = QLocale().toString(QFileInfo(kept).lastModified(), QLocale::ShortFormat);
    OperatorBoxes::Choice choice;
    choice.icon = QMessageBox::Question;
    choice.title = tr("Unsaved Work Found");
    choice.text = tr("PixelWeft ended before your last changes were saved. They were kept on %1."
                     "\n\nDo you want to go on with them?")
                      .arg(when);
    choice.buttons = QStringList{tr("Restore"), tr("Discard")};
    // Escape loses nothing: what is restored is unsaved until the operator saves it.
    choice.onEscape = 0;
    return parts_.boxes.Choose(choice);
}

/// A copy that can't be read, or not whole, is kept aside: the work of this run takes its place.
void DocumentLife::RestoreUnsavedWork(const QString& kept)
{
    MappingFile file = parts_.manager.ReadMapping(kept);
    if (file.IsReadable() && MayTake(file)) {
        if (!file.IsWhole())
            (void)KeepCopyOfFile(kept); // A disk that is full will be told of soon enough.
        Take(std::move(file));
        parts_.manager.SetDocumentDirty(true);
        return;
    }
    const QString aside = KeepUnreadableFile(kept);
    parts_.boxes.Notify(
        &parts_.window, tr("Unsaved Work Not Restored"),
        tr("%1\n\nYour unsaved work is kept as %2.")
            .arg(file.IsReadable() ? tr("Your mapping is as you saved it last.") : file.Fault(),
                 aside.isEmpty() ? kept : aside));
}

// ---- Import and new ----------------------------------------------------------------------------

bool DocumentLife::MayTake(const MappingFile& file)
{
    if (!file.IsReadable()) {
        parts_.boxes.Notify(&parts_.window, tr("Mapping Not Imported"),
                            tr("%1 can't be imported.\n\n%2\n\nYour mapping is as it was.")
                                .arg(file.Path(), file.Fault()));
        return false;
    }
    if (file.IsWhole())
        return true;
    OperatorBoxes::Choice choice;
    choice.icon = QMessageBox::Warning;
    choice.title = tr("Mapping Read in Part");
    choice.text = tr("%1 can't be read whole.\n\n%2").arg(file.Path(), file.Losses());
    choice.buttons = QStringList{tr("Import the rest"), tr("Cancel")};
    choice.byDefault = choice.onEscape = 1;
    choice.parent = &parts_.window;
    return parts_.boxes.Choose(choice) == 0;
}

bool DocumentLife::MayLetGo(const QString& title, const QString& question)
{
    // A save that fails is told, and the question comes again.
    while (parts_.manager.documentDirty) {
        switch (parts_.boxes.AskToSave(&parts_.window, title, question)) {
        case OperatorBoxes::UnsavedAnswer::Save:
            ActionSaveFile();
            break;
        case OperatorBoxes::UnsavedAnswer::Discard:
            return true;
        case OperatorBoxes::UnsavedAnswer::Cancel:
            return false;
        }
    }
    return true;
}

void DocumentLife::ImportFile(const QString& path)
{
    TakeWhatIsTyped();
    const bool wasUnsaved = parts_.manager.documentDirty;
    MappingFile file = parts_.manager.ReadMapping(path);
    if (!MayTake(file) ||
        !MayLetGo(tr("Unsaved Mapping"), tr("Your current mapping has unsaved changes.\n\nAre you "
                                            "sure you want to import the mapping and lose your "
                                            "changes?")))
        return;
    const bool wasSaved = wasUnsaved && !parts_.manager.documentDirty;
    if (wasSaved && IsSameFile(path, mappingFilePath)) {
        file = parts_.manager.ReadMapping(path);
        if (!MayTake(file))
            return;
    }
    Take(std::move(file));
    parts_.manager.SetDocumentDirty(true);
}

void DocumentLife::OfferImport(const QString& path)
{
    // The box comes over whatever is being typed. Return must not agree, and no letter either: a
    // box takes one for the button that has it as its mnemonic, also without Alt.
    OperatorBoxes::Choice choice;
    choice.icon = QMessageBox::Question;
    choice.title = tr("Import Mapping");
    choice.text = tr("Do you want to import %1 in place of your current mapping?\n\nIt is sent at "
                     "once.")
                      .arg(path);
    choice.buttons = QStringList{tr("Import"), tr("Cancel")};
    choice.byDefault = choice.onEscape = 1;
    choice.parent = &parts_.window;
    ZEN_LOG_INFO("Asking whether to import %ls", path.toStdWString().c_str());
    if (parts_.boxes.Choose(choice) == 0)
        ImportFile(path);
}

void DocumentLife::Take(MappingFile file)
{
    // The questions first: the present document is on stage while they wait for an answer.
    WithLibraryOfUser([&file](const DeviceModel& library) { file.SettleConflicts(library); });
    TakeSettled(std::move(file));
}

void DocumentLife::WithLibraryOfUser(const std::function<void(const DeviceModel&)>& act) const
{
    if (!parts_.manager.IsLibrarySaved())
        return act(*parts_.manager.GetDeviceModel());
    DeviceModel ofUser;
    ofUser.Merge(parts_.manager.GetLibraryPath().toStdWString(), true,
                 [](const QString&, const QString&) { return KeepFixture; });
    act(ofUser);
}

void DocumentLife::TakeSettled(MappingFile file)
{
    Reset();
    parts_.manager.LoadMapping(std::move(file), parts_.nodes);
    emit loaded();
    MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    UpdateCanvasSize(document.GetCanvasWidth(), document.GetCanvasHeight());
    parts_.manager.CreateSceneItems();
    for (const std::wstring& range : document.GetManualIPRanges())
        GetIPRange::Instance().AddManualRange(range);
    parts_.network.ChooseFromDocument(document.GetNetwork());
    parts_.network.updateArtNetOutput();
    emit document.mappingsChanged();
}

void DocumentLife::Reset()
{
    isAnother_ = true;
    parts_.undoStack.clear();
    parts_.scene.ClearAll();
    // Fixtures that are nowhere but in memory stay there.
    const bool libraryIsInFile =
        parts_.manager.IsLibrarySaved() || parts_.manager.SaveLibrary(parts_.wait);
    if (libraryIsInFile)
        parts_.manager.ClearAll();
    else
        parts_.manager.GetMappedDeviceModel()->Clear();
    parts_.nodes.Clear();
    emit cleared();
    const QString library = GetFixtureLibraryPath();
    if (library.isEmpty())
        ZEN_LOG_INFO("The Fixture Library file could not be found.");
    else if (libraryIsInFile)
        parts_.manager.LoadLibrary(library);
    emit cleared();
    UpdateCanvasSize(DefaultCanvasSize, DefaultCanvasSize);
}

// ---- Save and export ---------------------------------------------------------------------------

void DocumentLife::ActionSaveFile()
{
    const SaveResult saved = Write();
    if (saved)
        return;
    TellNotSaved(saved);
    parts_.notices.Show();
}

SaveResult DocumentLife::Write()
{
    // Also what another program wrote there may be the only copy of a show. Where it can't be kept
    // as a version, another document takes its place only when it is kept beside it.
    if (!versions_.Keep(parts_.wait) && isAnother_)
        fileHasMore_ = true;
    SaveResult saved;
    if (fileHasMore_ && QFileInfo::exists(mappingFilePath)) {
        saved = DoOnDisk(parts_.wait, [this] { return KeepCopyOfFile(mappingFilePath); });
        fileHasMore_ = !saved;
    }
    const std::uint64_t changesInFile = changes_;
    if (saved)
        saved = parts_.manager.SaveMapping(mappingFilePath, parts_.nodes, parts_.wait);
    emit saveTrouble(saved.Reason());
    if (!saved) {
        ZEN_LOG_ERROR("The mapping could not be saved to %ls",
                      mappingFilePath.toStdWString().c_str());
        return saved;
    }
    versions_.KeepSoon(); // no version is being written: Keep has waited for it
    isAnother_ = false;
    if (!parts_.manager.IsLibrarySaved())
        parts_.manager.SaveLibrary(parts_.wait);
    // What a tick changed while the disk was waited for is not in the file.
    if (changes_ == changesInFile)
        parts_.manager.SetDocumentDirty(false);
    emit FileSaved();
    return saved;
}

void DocumentLife::TellNotSaved(const SaveResult& saved)
{
    parts_.notices.Add({.parent = &parts_.window,
                        .title = tr("Mapping Not Saved"),
                        .text = tr("The mapping could not be saved to %1.\n\n%2\n\nYour work is "
                                   "still open, and a file that was there is as it was. Export "
                                   "the mapping to another place to be safe.")
                                    .arg(mappingFilePath, saved.Reason()),
                        .offersExport = true});
}

void DocumentLife::TellCopyTrouble(const QString& reason)
{
    if (reason.isEmpty())
        return;
    parts_.notices.Add({.parent = &parts_.window,
                        .title = tr("Unsaved Changes Not Kept"),
                        .text = tr("No copy of your unsaved changes can be kept beside %1.\n\n%2"
                                   "\n\nIf PixelWeft or the computer stops now, your changes are "
                                   "lost. Save the mapping, or export it to another place.")
                                    .arg(mappingFilePath, reason),
                        .offersExport = true});
}

void DocumentLife::ActionNew()
{
    if (!MayLetGo(tr("New Mapping"), tr("Your current mapping has unsaved changes.\n\nAre you sure "
                                        "you want to start a new mapping and lose your changes?")))
        return;
    parts_.manager.SetDocumentDirty(true);
    Reset();
    parts_.network.updateArtNetOutput(); // It still has the settings of the document before.
}

QString DocumentLife::StartDirectory() const
{
    return parts_.settings.lastDirectory.isEmpty() ? QDir::homePath()
                                                   : parts_.settings.lastDirectory;
}

void DocumentLife::ActionImport()
{
    const QString file = parts_.boxes.OpenFile(&parts_.window, tr("Import Mapping"),
                                               StartDirectory(), tr("Mapping files (*.wfm)"));
    if (!file.isEmpty())
        ImportFile(file);
}

void DocumentLife::ActionExport()
{
    const QString suffix = QStringLiteral("wfm");
    QString file = parts_.boxes.SaveFile(&parts_.window, tr("Export Mapping"), StartDirectory(),
                                         tr("Mapping files (*.wfm)"), suffix);
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().compare(suffix, Qt::CaseInsensitive) != 0)
        file += QLatin1Char('.') + suffix;
    if (IsSameFile(file, mappingFilePath)) {
        parts_.boxes.Notify(&parts_.window, tr("Export Mapping Forbidden"),
                            tr("Exporting to the mapping.wfm file is forbidden. Use Save feature "
                               "instead to update this file."));
        return;
    }
    if (const SaveResult saved = parts_.manager.SaveMapping(file, parts_.nodes, parts_.wait);
        !saved) {
        ZEN_LOG_ERROR("The mapping could not be exported to %ls", file.toStdWString().c_str());
        parts_.boxes.Notify(
            &parts_.window, tr("Mapping Not Exported"),
            tr("The mapping could not be written to %1.\n\n%2").arg(file, saved.Reason()));
        return;
    }
    parts_.settings.lastFile = file;
    parts_.settings.lastDirectory = QFileInfo(file).dir().canonicalPath();
    parts_.settings.Save();
}

void DocumentLife::ActionVersions()
{
    VersionsDialog dialog(versions_, &parts_.window);
    if (dialog.exec() == QDialog::Accepted)
        ImportFile(dialog.GetPath());
}

bool DocumentLife::MayClose()
{
    TakeWhatIsTyped();
    return MayLetGo(tr("Unsaved Mapping"),
                    tr("The current mapping has changes that you have not saved yet.\n\nAre you "
                       "sure you want to exit the Zentri PixelWeft?"));
}

void DocumentLife::UpdateCanvasSize(int width, int height)
{
    parts_.manager.SetCanvasSize(width, height);
    emit canvasSizeChanged();
}
