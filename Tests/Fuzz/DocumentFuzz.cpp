// SPDX-License-Identifier: MIT
// Mapping documents, all the way: the library inside, the elements, and a frame made of them.
#include "Fuzz/Fuzz.h"
#include "LEDEngine/LEDEngine.h"
#include "LibTools/ZenBitmap.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/DocumentSummary.h"
#include "Model/MappedDeviceModel.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const auto picture = ZenBitmap::Create(64, 48, 4);
    const std::string path = InputFile(BytesOf(data, size)).string();
    DeviceModel::defaultConflictCallback = [](const QString&, const QString&) {
        return OverwriteFixture;
    };
    DeviceManager manager{QString()};
    manager.Initialize();
    ArtNetNodeModel nodes;
    if (!manager.LoadMapping(QString::fromStdString(path), nodes))
        return 0;
    const MappedDeviceModel& document = *manager.GetMappedDeviceModel();
    Require(document.GetCanvasWidth() >= 1 && document.GetCanvasHeight() >= 1);
    // Who looks at the file before an import sees what comes.
    if (const auto summary = ReadDocumentSummary(QString::fromStdString(path)))
        Require(summary->canvas == QSize(document.GetCanvasWidth(), document.GetCanvasHeight()) &&
                summary->elements >= document.rowCount());
    LEDEngine engine(manager);
    if (!engine.CreateElements(document.GetCanvasWidth(), document.GetCanvasHeight()))
        return 0;
    engine.UpdateElementBitmaps(*picture);
    engine.SendFrame();
    return 0;
}
