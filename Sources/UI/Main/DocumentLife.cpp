// SPDX-License-Identifier: MIT
#include "UI/Main/DocumentLife.h"

#include <QDir>
#include <QFileInfo>
#include <QUndoStack>

#include "LEDEngine/GetIPRange.h"
#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Settings/FixtureLibraryPath.h"
#include "Settings/SettingsBlock.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Network/NetworkChoice.h"
#include "UI/Main/OperatorNotices.h"

namespace {

constexpr int DefaultCanvasSize = 100;

/// Elements land where a file puts them, not where the grid would: snapping is off while this
/// lives.
class WithoutSnapping
{
public:
    explicit WithoutSnapping(EditorDisplayState& display)
        : display_(display)
        , snap_(display.snapToGrid)
    {
        display_.snapToGrid = false;
    }
    ~WithoutSnapping() { display_.snapToGrid = snap_; }
    WithoutSnapping(const WithoutSnapping&) = delete;
    WithoutSnapping& operator=(const WithoutSnapping&) = delete;

private:
    EditorDisplayState& display_;
    bool snap_;
};

/// Also for a name in other letters, which a share may take for the same, and through a link.
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
{}

void DocumentLife::LoadFirst()
{
    if (Import(mappingFilePath))
        return;
    const bool exists = QFileInfo::exists(mappingFilePath);
    const QString kept = exists ? KeepUnreadableFile(mappingFilePath) : QString();
    parts_.network.ChooseFirst();
    parts_.network.updateArtNetOutput();
    if (exists)
        parts_.notices.Tell(
            {parts_.window, tr("Mapping Not Read"),
             tr("The mapping %1 could not be read.\n\n%2")
                 .arg(mappingFilePath, kept.isEmpty() ? tr("It stays as it is until you save.")
                                                      : tr("It is kept as %1.").arg(kept))});
    // A file that could not even be renamed is not written over without the operator's wish.
    if (exists && kept.isEmpty())
        parts_.manager.SetDocumentDirty(true);
    else if (!Write())
        parts_.notices.Tell({parts_.window, tr("Mapping Not Saved"),
                             tr("The mapping could not be saved to %1.").arg(mappingFilePath)});
}

bool DocumentLife::Import(const QString& path)
{
    if (parts_.manager.documentDirty &&
        !parts_.boxes.Ask(parts_.window, tr("Unsaved Mapping"),
                          tr("Your current mapping has unsaved changes.\n\nAre you sure you "
                             "want to import the mapping and lose your changes?"),
                          QMessageBox::Cancel))
        return false;
    Reset();
    const WithoutSnapping exactly(parts_.display);
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
    parts_.manager.ClearAll();
    parts_.nodes.Clear();
    emit cleared();
    const QString library = GetFixtureLibraryPath();
    if (library.isEmpty())
        ZEN_LOG_INFO("The Fixture Library file could not be found.");
    else
        parts_.manager.LoadLibrary(library);
    emit cleared();
    UpdateCanvasSize(DefaultCanvasSize, DefaultCanvasSize);
}

bool DocumentLife::Save()
{
    if (Write())
        return true;
    parts_.boxes.Notify(parts_.window, tr("Mapping Not Saved"),
                        tr("The mapping could not be saved to %1.\n\nThe file there is as it was "
                           "before.")
                            .arg(mappingFilePath));
    return false;
}

bool DocumentLife::Write()
{
    if (parts_.manager.SaveMapping(mappingFilePath, parts_.nodes) != 0) {
        ZEN_LOG_ERROR("The mapping could not be saved to %ls",
                      mappingFilePath.toStdWString().c_str());
        return false;
    }
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
        !parts_.boxes.Ask(parts_.window, tr("New Mapping"),
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
    const QString file = parts_.boxes.OpenFile(parts_.window, tr("Import Mapping"),
                                               StartDirectory(), tr("Mapping files (*.wfm)"));
    if (!file.isEmpty())
        ImportFile(file);
}

void DocumentLife::ActionExport()
{
    const QString suffix = QStringLiteral("wfm");
    QString file = parts_.boxes.SaveFile(parts_.window, tr("Export Mapping"), StartDirectory(),
                                         tr("Mapping files (*.wfm)"), suffix);
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().compare(suffix, Qt::CaseInsensitive) != 0)
        file += QLatin1Char('.') + suffix;
    if (IsSameFile(file, mappingFilePath)) {
        parts_.boxes.Notify(parts_.window, tr("Export Mapping Forbidden"),
                            tr("Exporting to the mapping.wfm file is forbidden. Use Save feature "
                               "instead to update this file."));
        return;
    }
    if (parts_.manager.SaveMapping(file, parts_.nodes) != 0) {
        ZEN_LOG_ERROR("The mapping could not be exported to %ls", file.toStdWString().c_str());
        parts_.boxes.Notify(parts_.window, tr("Mapping Not Exported"),
                            tr("The mapping could not be written to %1.").arg(file));
        return;
    }
    parts_.settings.lastFile = file;
    parts_.settings.lastDirectory = QFileInfo(file).dir().canonicalPath();
    parts_.settings.Save();
}

bool DocumentLife::MayClose()
{
    return !parts_.manager.documentDirty ||
           parts_.boxes.Ask(parts_.window, tr("Unsaved Mapping"),
                            tr("The current mapping has changes that you have not saved yet."
                               "\n\nAre you sure you want to exit the Zentri PixelWeft?"),
                            QMessageBox::Cancel);
}

void DocumentLife::UpdateCanvasSize(int width, int height)
{
    parts_.manager.SetCanvasSize(width, height);
    emit canvasSizeChanged();
}
