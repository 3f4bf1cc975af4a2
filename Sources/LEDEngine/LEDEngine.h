// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <QObject>

#include "LEDEngine/ArtNetOutput.h"
#include "LEDEngine/ArtNetTrigger.h"
#include "LEDEngine/FramePlan.h"
#include "LEDEngine/IdentifyLight.h"
#include "LibTools/ZenBitmap.h"

class ArtNetNodeModel;
class DeviceManager;
class MappedDeviceModel;
class MappedLedItem;

/// From the picture to the wire: samples each element's rectangle of a source, converts the pixels
/// to channel values and sends them as universes. The engine has no timer and no thread: the frame
/// loop calls it on the main thread. An element's index is its row in the document.
///
/// Rebuild (`updateLEDEngine`: ReleaseElements and CreateElements) makes the buffers for a changed
/// set of elements. A tick (`UpdateEngine`) runs every 25 ms, and sends a frame when one is due.
class LEDEngine : public QObject
{
    Q_OBJECT

public:
    /// `manager` outlives the engine.
    explicit LEDEngine(DeviceManager& manager);
    ~LEDEngine() override;

    /// Makes the buffers of all elements, for a canvas of this size in pixels. False, with a line
    /// in the log, when that fails; the engine then has none.
    bool CreateElements(int width, int height);
    void ReleaseElements();

    // The steps of a frame. They do nothing without buffers, and no exception leaves them.

    /// Samples all elements from `source`.
    void UpdateElementBitmaps(const ZenBitmap& source);
    /// Samples one element from another source than the others, such as the mark of a selection.
    void UpdateElementBitmap(int index, const ZenBitmap& source);

    /// Lights an element of the document in all frames from the next one on, whatever is sampled.
    /// One that isn't there lights nothing, and no other gets dark then.
    void SetIdentified(const IdentifyLight& light) { identified_ = light; }
    [[nodiscard]] const IdentifyLight& GetIdentified() const { return identified_; }

    /// Converts all elements and sends one frame. 0, or -1 when not everything was sent.
    int SendFrame();

    /// The pixels of this element of the document, as they were sampled last; null when it is gone
    /// or the buffers don't match the document. Valid until the buffers are released. The name
    /// doesn't count: two elements may have the same one.
    [[nodiscard]] const ZenBitmap* FindElementBitmap(const MappedLedItem& item);

    void InitializeOutput(const std::wstring& interface, const std::wstring& broadcast,
                          const std::wstring& receive, const UniverseMerging& merging);

    /// Fetches the nodes and hands them to the table; true when the rows of it must be rebuilt.
    bool UpdateNodeList(ArtNetNodeModel& table);

    [[nodiscard]] ArtNetOutput& GetOutput() { return output; }
    /// The channel to a host program.
    [[nodiscard]] ArtNetTrigger& GetTrigger() { return *trigger; }

private:
    template <typename Step>
    void KeepFaultsIn(Step step);
    int BuildAndSendFrame();
    void LightIdentified(const MappedDeviceModel& model);
    ArtNetOutput::SendResult SendUniverses();

    DeviceManager& deviceManager;
    // Each has a reference to the other. The trigger is made first and uses the output only when
    // it is polled.
    std::unique_ptr<ArtNetTrigger> trigger;
    ArtNetOutput output;
    FramePlan plan_;
    /// One for each row of the document; the pixels lie in the plan.
    std::vector<std::unique_ptr<ZenBitmap>> elementBitmaps_;
    IdentifyLight identified_;
    bool elementsReady = false;
    int canvasWidth = 0;
    int canvasHeight = 0;
    std::int64_t lostFrameLogTime_ = 0; ///< when a lost frame was last logged
};
