// SPDX-License-Identifier: MIT
#include "UI/Main/DocumentLife.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QUndoStack>

#include "LEDEngine/GetIPRange.h"
#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
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

/// Also through a link, and for a name in other case, which a network share may take for the same.
bool IsSameFile(const QString& one, const QString& other)
{
    const QFileInfo first(one);
    const QFileInfo second(other);
    return first == second ||
           (first.dir() == second.dir() &&
            first.fileName().compare(second.fileName(), Qt::CaseInsensitive) == 0);
}

} // namespace

DocumentLife::DocumentLife(const Parts& parts)
    : parts_(parts)
    , actions_(parts.window)
{
    AddActions();
    connect(&versions_, &SavedVersions::notKept, this,
            [this] { emit versionNotKept(versions_.GetFolder()); });
}

void DocumentLife::SetMappingFilePath(const QString& path)
{
    mappingFilePath = path;
    versions_.SetDocument(path);
}

void DocumentLife::AddActions()
{
    actions_.Add({.objectName = "actionNew",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "&New..."),
                  .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Creates an empty canvas"),
                  .shortcut = "Ctrl+N",
                  .icon = "icon_filenew.png"},
                 this, &DocumentLife::ActionNew);
    QAction* save =
        actions_.Add({.objectName = "actionSave_File",
                      .text = QT_TRANSLATE_NOOP("WEFTMain", "&Save"),
                      .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Save mapping to current file"),
                      .shortcut = "Ctrl+S",
                      .icon = "icon_filesave.png"},
                     this, &DocumentLife::ActionSaveFile);
    connect(&parts_.manager, &DeviceManager::signalDocumentSavedState, save, &QAction::setDisabled);
    actions_.Add({.objectName = "actionImport",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "&Import..."),
                  .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Open an existing mapping file "),
                  .shortcut = "Ctrl+O",
                  .icon = "icon_fileopen.png"},
                 this, &DocumentLife::ActionImport);
    actions_.Add({.objectName = "actionExport",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "&Export..."),
                  .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Save mapping to a mapping file "),
                  .shortcut = "Ctrl+Shift+S",
                  .icon = "icon_filesaveas.png"},
                 this, &DocumentLife::ActionExport);
    actions_.Add({.objectName = "actionVersions",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "&Versions..."),
                  .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Take back a saved version")},
                 this, &DocumentLife::ActionVersions);
}

// ---- The first document of a run ---------------------------------------------------------------

void DocumentLife::LoadFirst()
{
    if (Import(mappingFilePath)) {
        versions_.KeepSoon();
        return;
    }
    const bool exists = QFileInfo::exists(mappingFilePath);
    const QString kept = exists ? KeepUnreadableFile(mappingFilePath) : QString();
    parts_.network.ChooseFirst();
    parts_.network.updateArtNetOutput();
    if (exists)
        parts_.notices.Add(
            {&parts_.window, tr("Mapping Not Read"),
             tr("The mapping %1 could not be read.\n\n%2")
                 .arg(mappingFilePath, kept.isEmpty() ? tr("It stays as it is until you save.")
                                                      : tr("It is kept as %1.").arg(kept))});
    // A file that could not even be renamed is not overwritten without the operator's consent.
    if (exists && kept.isEmpty())
        parts_.manager.SetDocumentDirty(true);
    else if (!Write())
        parts_.notices.Add({&parts_.window, tr("Mapping Not Saved"),
                            tr("The mapping could not be saved to %1.").arg(mappingFilePath)});
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
    if (answer != 0)
        return;
    if (ImportFile(kept))
        return;
    if (KeepUnreadableFile(kept).isEmpty())
        ZEN_LOG_ERROR("The unsaved work can't be read");
    LoadFirst();
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

// ---- Import and new ----------------------------------------------------------------------------

bool DocumentLife::Import(const QString& path)
{
    if (parts_.manager.documentDirty &&
        !parts_.boxes.Ask(&parts_.window, tr("Unsaved Mapping"),
                          tr("Your current mapping has unsaved changes.\n\nAre you sure you "
                             "want to import the mapping and lose your changes?"),
                          QMessageBox::Cancel))
        return false;
    Reset();
    if (LoadInto(path))
        return true;
    StopMerging();
    return false;
}

/// The output still has the settings of the document before.
void DocumentLife::StopMerging()
{
    parts_.network.updateArtNetOutput();
}

bool DocumentLife::LoadInto(const QString& path)
{
    DeviceManager& manager = parts_.manager;
    if (!manager.LoadMapping(path, parts_.nodes))
        return false;
    emit loaded();
    MappedDeviceModel& document = *manager.GetMappedDeviceModel();
    UpdateCanvasSize(document.GetCanvasWidth(), document.GetCanvasHeight());
    manager.CreateSceneItems();
    for (const std::wstring& range : document.GetManualIPRanges())
        GetIPRange::Instance().AddManualRange(range);
    parts_.network.ChooseFromDocument(document.GetNetwork());
    parts_.network.updateArtNetOutput();
    emit document.mappingsChanged();
    return true;
}

void DocumentLife::Reset()
{
    parts_.undoStack.clear();
    parts_.scene.ClearAll();
    // Fixtures that are nowhere but in memory stay there.
    const bool libraryIsInFile = parts_.manager.IsLibrarySaved() || parts_.manager.SaveLibrary();
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
    if (Write())
        return;
    parts_.boxes.Notify(&parts_.window, tr("Mapping Not Saved"),
                        tr("The mapping could not be saved to %1.\n\nThe file there is as it was "
                           "before.")
                            .arg(mappingFilePath));
}

bool DocumentLife::Write()
{
    // Also what another program wrote there may be the only copy of a show.
    versions_.Keep();
    if (parts_.manager.SaveMapping(mappingFilePath, parts_.nodes) != 0) {
        ZEN_LOG_ERROR("The mapping could not be saved to %ls",
                      mappingFilePath.toStdWString().c_str());
        return false;
    }
    versions_.KeepSoon();
    parts_.undoStack.clear();
    parts_.manager.SetDocumentDirty(false);
    emit FileSaved();
    return true;
}

bool DocumentLife::ImportFile(const QString& path)
{
    if (!Import(path))
        return false;
    parts_.manager.SetDocumentDirty(true);
    return true;
}

void DocumentLife::ActionNew()
{
    if (parts_.manager.documentDirty &&
        !parts_.boxes.Ask(&parts_.window, tr("New Mapping"),
                          tr("Your current mapping has unsaved changes.\n\nAre you sure you "
                             "want to start a new mapping and lose your changes?"),
                          QMessageBox::Cancel))
        return;
    parts_.manager.SetDocumentDirty(true);
    Reset();
    StopMerging();
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
    if (parts_.manager.SaveMapping(file, parts_.nodes) != 0) {
        ZEN_LOG_ERROR("The mapping could not be exported to %ls", file.toStdWString().c_str());
        parts_.boxes.Notify(&parts_.window, tr("Mapping Not Exported"),
                            tr("The mapping could not be written to %1.").arg(file));
        return;
    }
    parts_.settings.lastFile = file;
    parts_.settings.lastDirectory = QFileInfo(file).dir().canonicalPath();
    parts_.settings.Save();
}

void DocumentLife::ActionVersions()
{
    VersionsDialog dialog(versions_, &parts_.window);
    if (dialog.exec() != QDialog::Accepted)
        return;
    // The question about unsaved work may lead to a save, which removes the oldest version.
    versions_.Spare(dialog.GetPath());
    ImportFile(dialog.GetPath());
    versions_.Spare({});
}

bool DocumentLife::MayClose()
{
    return !parts_.manager.documentDirty ||
           parts_.boxes.Ask(&parts_.window, tr("Unsaved Mapping"),
                            tr("The current mapping has changes that you have not saved yet."
                               "\n\nAre you sure you want to exit the Zentri PixelWeft?"),
                            QMessageBox::Cancel);
}

void DocumentLife::UpdateCanvasSize(int width, int height)
{
    parts_.manager.SetCanvasSize(width, height);
    emit canvasSizeChanged();
}
