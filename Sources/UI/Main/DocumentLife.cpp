// SPDX-License-Identifier: MIT
#include "UI/Main/DocumentLife.h"

#include <QDir>
#include <QFileInfo>
#include <QUndoStack>

#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Settings/FixtureLibraryPath.h"
#include "Settings/SettingsBlock.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Editor/EditorDisplayState.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Main/NetworkChoice.h"

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

} // namespace

DocumentLife::DocumentLife(const Parts& parts)
    : parts_(parts)
{}

void DocumentLife::LoadFirst()
{
    if (Import(mappingFilePath))
        return;
    parts_.network.ChooseFirst();
    parts_.network.updateArtNetOutput();
    Save();
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
    return LoadInto(path);
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
    parts_.engine.ReleaseElements();
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
    if (parts_.manager.SaveMapping(mappingFilePath, parts_.nodes) != 0) {
        ZEN_LOG_ERROR("The mapping could not be saved to %ls",
                      mappingFilePath.toStdWString().c_str());
        parts_.boxes.Notify(parts_.window, tr("Mapping Not Saved"),
                            tr("The mapping could not be saved to %1.\n\nThe file there is as it "
                               "was before.")
                                .arg(mappingFilePath));
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
    QString file = parts_.boxes.SaveFile(parts_.window, tr("Export Mapping"), StartDirectory(),
                                         tr("Mapping files (*.wfm)"));
    if (file.isEmpty())
        return;
    const QString suffix = QStringLiteral(".wfm");
    if (!file.toLower().endsWith(suffix))
        file += suffix;
    if (QFileInfo(file).absoluteFilePath() == QFileInfo(mappingFilePath).absoluteFilePath()) {
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
    parts_.scene.SetCanvasSize(width, height);
}

void DocumentLife::ResizeCanvas(int width, int height, bool keepPositions)
{
    int oldWidth = 0;
    int oldHeight = 0;
    parts_.manager.GetCanvasSize(oldWidth, oldHeight);
    UpdateCanvasSize(width, height);
    if (keepPositions)
        parts_.scene.RescaleItems(static_cast<float>(width) / static_cast<float>(oldWidth),
                                  static_cast<float>(height) / static_cast<float>(oldHeight));
    else
        parts_.scene.RescaleItems(0, 0);
    parts_.manager.SetDocumentDirty(true);
}
