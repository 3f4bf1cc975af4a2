// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <QPersistentModelIndex>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/VideoMapping.h"
#include "Model/DeviceLedItem.h"
#include "Model/LedItem.h"

class DeviceModel;

/// What is wrong with an <Element> of a document.
enum class ElementFault
{
    None,
    NoDescription,
    NoFixture,
    UnknownFixture,
    Place,
    Address
};

/// One element of a document: its name, its own copy of the fixture, where it samples the canvas
/// and the address that it is sent to.
///
/// The engine reads every element 40 times a second and rebuilds its tables only for those that
/// changed. So the three parts are read through Get... and changed through Edit..., which counts
/// the change here and in the document: call Edit... for each change and don't keep its
/// result.
class MappedLedItem : public LedItem
{
public:
    /// `dmx` is cloned. Either mapping may be missing; such an element is kept and neither sampled
    /// nor sent.
    MappedLedItem(std::wstring name, const DeviceLedItem& fixture,
                  std::unique_ptr<VideoMapping> video, const DMXMapping* dmx);
    ~MappedLedItem() override;

    std::wstring description;  ///< unique by convention, such as ArcLine 36-1
    std::int64_t uniqueID = 0; ///< the element's identifier inside the document, from 1
    std::int32_t row = -1;     ///< its row at the time of adding
    QPersistentModelIndex index;

    [[nodiscard]] const DeviceLedItem& GetFixture() const { return fixture_; }
    [[nodiscard]] const VideoMapping* GetVideoMapping() const { return videoMapping_.get(); }
    [[nodiscard]] const DMXMapping* GetDMXMapping() const { return dmxMapping_.get(); }
    /// The mapping in its Art-Net form, null for any other.
    [[nodiscard]] const DMXMappingArtNet* GetArtNetMapping() const;

    [[nodiscard]] DeviceLedItem& EditFixture();
    [[nodiscard]] VideoMapping* EditVideoMapping();
    [[nodiscard]] DMXMappingArtNet* EditArtNetMapping();
    /// Gives the element another address, or none.
    void SetArtNetMapping(const std::optional<DMXMappingArtNet>& address);

    /// Grows with every Edit... of this element; no two elements ever have the same, so an element
    /// in the place of another is seen as a change.
    [[nodiscard]] std::uint64_t GetRevision() const { return revision_; }
    /// As GetRevision, but edits of where the element lies don't count.
    [[nodiscard]] std::uint64_t GetPatchRevision() const { return patchRevision_; }
    /// Edits of this element from now on count in `counter` too, which must outlive the element or
    /// be taken back with null. The document does this when the element is added.
    void CountChangesIn(std::uint64_t* counter) { documentRevision_ = counter; }

    /// An element from an <Element> of a document, with its fixture from the library; nothing,
    /// after one line in the log and with `fault` set, when it is rejected.
    [[nodiscard]] static std::unique_ptr<MappedLedItem>
    FromXml(const tinyxml2::XMLElement& element, const DeviceModel& library, ElementFault& fault);
    [[nodiscard]] static std::unique_ptr<MappedLedItem> FromXml(const tinyxml2::XMLElement& element,
                                                                const DeviceModel& library)
    {
        ElementFault fault = ElementFault::None;
        return FromXml(element, library, fault);
    }

    /// Adds an <Element> at the end of `parent`. Always 0.
    int WriteElement(tinyxml2::XMLElement& parent) const;

private:
    void CountChange();
    void CountPatchChange();

    DeviceLedItem fixture_;
    std::unique_ptr<VideoMapping> videoMapping_;
    std::unique_ptr<DMXMapping> dmxMapping_;
    std::uint64_t revision_;
    std::uint64_t patchRevision_;
    std::uint64_t* documentRevision_ = nullptr;
};
