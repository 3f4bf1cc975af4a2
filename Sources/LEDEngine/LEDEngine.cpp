// SPDX-License-Identifier: MIT
#include "LEDEngine/LEDEngine.h"

#include <exception>

#include <QMutexLocker>

#include <gsl/gsl>

#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "Platform/Clock.h"

namespace {

/// A pixel of an element: blue, green, red and a byte without meaning.
constexpr std::uint32_t ElementFormat = 4;

ArtNetNodeRecord RecordOf(const ArtNetNodeInfo& node)
{
    ArtNetNodeRecord record;
    record.ip = std::string(node.Ip());
    record.name = std::string(node.Name());
    for (const std::uint16_t portAddress : node.universes)
        record.universes.push_back({portAddress, 0});
    return record;
}

} // namespace

LEDEngine::LEDEngine(DeviceManager& manager)
    : deviceManager(manager)
    , trigger(std::make_unique<ArtNetTrigger>(output))
    , output(*trigger)
{}

LEDEngine::~LEDEngine()
{
    ReleaseElements();
}

bool LEDEngine::CreateElements(int width, int height)
{
    canvasWidth = width;
    canvasHeight = height;
    const QMutexLocker lock(&deviceManager.GetMutex());
    ReleaseElements();
    if (!plan_.Build(*deviceManager.GetMappedDeviceModel()))
        return false;
    elementBitmaps_.reserve(plan_.ElementCount());
    for (std::size_t row = 0; row < plan_.ElementCount(); ++row) {
        auto bitmap = std::make_unique<ZenBitmap>();
        bitmap->width = plan_.ColumnsOf(row);
        bitmap->height = plan_.RowsOf(row);
        bitmap->data = plan_.PixelsOf(row);
        bitmap->bytesPerRow = bitmap->width * ZenBitmap::BytesPerPixel(ElementFormat);
        bitmap->format = ElementFormat;
        elementBitmaps_.push_back(std::move(bitmap));
    }
    elementsReady = true;
    return true;
}

void LEDEngine::ReleaseElements()
{
    elementsReady = false;
    elementBitmaps_.clear();
    plan_.Clear();
}

// No fault of one frame may end the show: the next tick makes the next frame. A lasting fault would
// fill the log at the frame rate, so it is logged once a second.
template <typename Step>
void LEDEngine::KeepFaultsIn(Step step)
{
    try {
        step();
    } catch (const std::exception& failure) {
        constexpr std::int64_t second = 1'000'000'000;
        const std::int64_t now = Platform::MonotonicNanoseconds();
        if (now - lostFrameLogTime_ < second)
            return;
        lostFrameLogTime_ = now;
        ZEN_LOG_ERROR("Frame lost: %s", failure.what());
    }
}

void LEDEngine::UpdateElementBitmaps(const ZenBitmap& source)
{
    if (!elementsReady)
        return;
    const MappedDeviceModel& model = *deviceManager.GetMappedDeviceModel();
    const int rows = model.rowCount();
    if (static_cast<std::size_t>(rows) == plan_.ElementCount()) {
        KeepFaultsIn([&] { plan_.SampleAll(model, source); });
        return;
    }
    // Rows were added or removed without a rebuild: elements that have a buffer are sampled.
    for (int row = 0; row < rows; ++row)
        UpdateElementBitmap(row, source);
}

void LEDEngine::UpdateElementBitmap(int index, const ZenBitmap& source)
{
    if (!elementsReady)
        return;
    const MappedDeviceModel& model = *deviceManager.GetMappedDeviceModel();
    if (index < 0 || !model.GetElement(index)) {
        ZEN_LOG_ERROR("LEDEngine lost an element at #%d", index);
        return;
    }
    if (static_cast<std::size_t>(index) >= plan_.ElementCount()) {
        ZEN_LOG_ERROR("LEDEngine lost an element bitmap at #%d", index);
        return;
    }
    KeepFaultsIn([&] { plan_.SampleOne(model, static_cast<std::size_t>(index), source); });
}

int LEDEngine::SendFrame()
{
    if (!elementsReady)
        return -1;
    const QMutexLocker lock(&deviceManager.GetMutex());
    const auto rows = static_cast<std::size_t>(deviceManager.GetMappedDeviceModel()->rowCount());
    if (plan_.ElementCount() != rows || elementBitmaps_.size() != rows) {
        ZEN_LOG_ERROR("Size mismatch dmxValues_=%d, elementBitmaps_=%d, mappedItems=%d",
                      static_cast<int>(plan_.ElementCount()),
                      static_cast<int>(elementBitmaps_.size()), static_cast<int>(rows));
        return -1;
    }
    int result = -1;
    KeepFaultsIn([&] { result = BuildAndSendFrame(); });
    return result;
}

int LEDEngine::BuildAndSendFrame()
{
    const MappedDeviceModel& model = *deviceManager.GetMappedDeviceModel();
    plan_.FollowEdits(model);
    LightIdentified(model);
    plan_.Convert();
    output.ClearUniverses();
    if (model.GetMerging().IsEnabled())
        output.MergeInputUniverses();
    plan_.Assemble(output);
    if (output.outputSuspended)
        return -1;
    ArtNetOutput::SendResult result;
    {
        // Also after a fault: what was sent by then would never leave.
        output.BeginSending();
        const auto end =
            gsl::finally([&] { output.EndSending(model.IsArtSync() && result.anySent); });
        result = SendUniverses();
    }
    if (result.anySent)
        output.NoteFrameSent();
    return result.allSent ? 0 : -1;
}

void LEDEngine::LightIdentified(const MappedDeviceModel& model)
{
    if (identified_.element == 0)
        return;
    const int row = model.GetIndexOfUniqueID(identified_.element).row();
    if (row >= 0 && static_cast<std::size_t>(row) < plan_.ElementCount())
        plan_.Light(static_cast<std::size_t>(row), identified_, Platform::MonotonicNanoseconds());
}

ArtNetOutput::SendResult LEDEngine::SendUniverses()
{
    const auto unicast = output.SendUnicastUniverses();
    const bool byNode =
        deviceManager.GetMappedDeviceModel()->IsAutoUnicast() && output.KnowsNodeInNetwork();
    const auto broadcast =
        byNode ? output.SendAutoUnicastUniverses() : output.SendBroadcastUniverses();
    return {unicast.allSent && broadcast.allSent, unicast.anySent || broadcast.anySent};
}

const ZenBitmap* LEDEngine::FindElementBitmap(const MappedLedItem& item)
{
    const QMutexLocker lock(&deviceManager.GetMutex());
    const MappedDeviceModel& model = *deviceManager.GetMappedDeviceModel();
    const int row = model.GetIndexOfUniqueID(item.uniqueID).row();
    if (row < 0 || elementBitmaps_.size() != static_cast<std::size_t>(model.rowCount()))
        return nullptr;
    return elementBitmaps_[static_cast<std::size_t>(row)].get();
}

void LEDEngine::InitializeOutput(const std::wstring& interface, const std::wstring& broadcast,
                                 const std::wstring& receive, const UniverseMerging& merging)
{
    output.Initialize(interface, broadcast, receive, merging);
}

bool LEDEngine::UpdateNodeList(ArtNetNodeModel& table)
{
    output.RefreshNodes();
    std::vector<ArtNetNodeRecord> records;
    records.reserve(output.GetNodes().size());
    for (const ArtNetNodeInfo& node : output.GetNodes())
        records.push_back(RecordOf(node));
    return table.UpdateNodes(records);
}
