// SPDX-License-Identifier: MIT
#include "UI/Main/DocumentLife.h"

#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Settings/FixtureLibraryPath.h"
#include "UI/Main/NetworkChoice.h"

namespace {

constexpr int DefaultCanvasSize = 100;

} // namespace

DocumentLife::DocumentLife(DeviceManager& manager, LEDEngine& engine, ArtNetNodeModel& nodes,
                           NetworkChoice& network)
    : manager_(manager)
    , engine_(engine)
    , nodes_(nodes)
    , network_(network)
{}

void DocumentLife::LoadFirst()
{
    if (Import(mappingFilePath))
        return;
    network_.ChooseFirst();
    network_.updateArtNetOutput();
    Save();
}

bool DocumentLife::Import(const QString& path)
{
    Reset();
    if (!manager_.LoadMapping(path, nodes_))
        return false;
    MappedDeviceModel& document = *manager_.GetMappedDeviceModel();
    manager_.SetCanvasSize(document.GetCanvasWidth(), document.GetCanvasHeight());
    engine_.ReleaseElements();
    for (const std::wstring& range : document.GetManualIPRanges())
        GetIPRange::Instance().AddManualRange(range);
    network_.ChooseFromDocument(document.GetNetwork());
    network_.updateArtNetOutput();
    emit document.mappingsChanged();
    return true;
}

void DocumentLife::Reset()
{
    manager_.ClearAll();
    nodes_.Clear();
    const QString library = GetFixtureLibraryPath();
    if (library.isEmpty())
        ZEN_LOG_INFO("The Fixture Library file could not be found.");
    else
        manager_.LoadLibrary(library);
    manager_.SetCanvasSize(DefaultCanvasSize, DefaultCanvasSize);
}

bool DocumentLife::Save()
{
    if (manager_.SaveMapping(mappingFilePath, nodes_) != 0) {
        ZEN_LOG_ERROR("The mapping could not be saved to %ls",
                      mappingFilePath.toStdWString().c_str());
        emit saveFailed(mappingFilePath);
        return false;
    }
    manager_.documentDirty = false;
    emit manager_.signalDocumentSavedState(true);
    emit FileSaved();
    return true;
}
