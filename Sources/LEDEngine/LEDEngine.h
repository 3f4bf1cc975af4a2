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
#include "LibTools/ZenBitmap.h"

class ArtNetNodeModel;
class DeviceManager;
class MappedLedItem;

/// From the picture to the wire: samples each placed element's rectangle of a source, turns the
/// pixels into channel values and sends them as universes. It has no timer and no thread: the frame
/// loop calls it on the main thread. An element's index is its row in the document.
class LEDEngine : public QObject
{
    Q_OBJECT

public:
    /// `manager` outlives the engine.
    explicit LEDEngine(DeviceManager& manager);
    ~LEDEngine() override;

    /// Lays out the buffers of all elements. False when that fails; the engine then has none.
    bool CreateElements(int width, int height);
    void ReleaseElements();
    [[nodiscard]] bool AreElementsReady() const { return elementsReady; }

    // No exception leaves the three steps of a frame.

    /// Samples all elements from `source`.
    void UpdateElementBitmaps(const ZenBitmap& source);
    /// Samples one element, for a source of its own such as the mark of a selection.
    void UpdateElementBitmap(int index, const ZenBitmap& source);

    /// Converts all elements and sends one frame. 0, or -1 when not everything went out.
    int SendFrame();

    /// The pixels of the first element with the name of `item`; null when the buffers don't match
    /// the document. Good until the buffers are released.
    [[nodiscard]] const ZenBitmap* FindElementBitmap(const MappedLedItem& item);

    void InitializeOutput(const std::wstring& interface, const std::wstring& broadcast,
                          const std::wstring& receive, const UniverseMerging& merging);

    /// Fetches the nodes and hands them to the table; true when its rows must be rebuilt.
    bool UpdateNodeList(ArtNetNodeModel& table);

    [[nodiscard]] ArtNetOutput& GetOutput() { return output; }
    /// The channel to a host program.
    [[nodiscard]] ArtNetTrigger& GetTrigger() { return *trigger; }

private:
    template <typename Step>
    void KeepFaultsIn(Step step);
    int BuildAndSendFrame();
    ArtNetOutput::SendResult SendUniverses();

    DeviceManager& deviceManager;
    ArtNetOutput output;
    std::unique_ptr<ArtNetTrigger> trigger; ///< the output uses it
    FramePlan plan_;
    /// One for each row of the document; the pixels lie in the plan.
    std::vector<std::unique_ptr<ZenBitmap>> elementBitmaps_;
    bool elementsReady = false;
    int canvasWidth = 0;
    int canvasHeight = 0;
    std::int64_t lostFrameTold_ = 0; ///< when the log was last told of one
};
