// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <QDateTime>
#include <QPoint>
#include <QSize>
#include <QString>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/PatchOverlaps.h"
#include "FixtureModel/PatchTarget.h"
#include "FixtureModel/UniverseMerging.h"
#include "FixtureModel/VideoMapping.h"

class ArtNetNodeModel;
class MappedDeviceModel;

/// A patch as the crew needs it on paper or in a table: a copy of what the document and the nodes
/// say, which any thread can write to a file while the document goes on changing.
struct PatchSheet
{
    struct Element
    {
        int number = 0; ///< see ElementNumber
        QString description;
        QString manufacturer;
        QString product;
        QSize pixels; ///< columns and rows
        int channels = 0;
        QPoint firstPixel = {-1, -1}; ///< column and row of the pixel on the lowest channel

        std::optional<DMXMappingArtNet> address; ///< as it is patched
        QString nodeName;                        ///< of the address, empty for Auto
        PatchTarget target;                      ///< where it comes out, merger included
        SentChannels sent;                       ///< none without an address, or beyond 512

        std::optional<VideoMapping> place;
    };

    /// Element and channels on a universe.
    struct Span
    {
        std::size_t element = 0; ///< index in `elements`
        SentChannels channels;
        bool shared = false; ///< another element is sent on some of these channels
    };
    struct ChannelRun
    {
        int first = 1;
        int last = 512;

        bool operator==(const ChannelRun&) const = default;
    };
    struct Universe
    {
        PatchTarget target;
        QString nodeName;
        std::vector<Span> spans; ///< by first channel
        int used = 0;            ///< channels of elements, 0 to 512
        /// Where no receiver gets the channels of another element; none where the merger sends.
        std::vector<ChannelRun> free;
        int freeChannels = 0;
        bool merged = false; ///< sent by the merger: what no element has is received DMX
    };

    struct Node
    {
        enum class State : std::uint8_t
        {
            Answers,
            ByHand, ///< entered by the operator: it need not answer
            Silent, ///< elements are sent to it, and it doesn't answer
            Named   ///< elements are sent to it, and nobody looked for it
        };

        QString name;
        QString address;
        State state = State::Named;
        std::vector<std::uint16_t> ports; ///< Port-Addresses of its outputs
        int elements = 0;                 ///< that are sent to it alone
    };

    QString title;
    QDateTime made;
    QString network;
    QSize canvas;
    UniverseMerging merging;
    bool autoUnicast = false;
    std::vector<Element> elements;   ///< in the order of the document
    std::vector<Universe> universes; ///< as in PatchTable, with all of the merger's output
    std::vector<Node> nodes;         ///< by address
};

/// What the document can't tell of itself.
struct PatchSheetHead
{
    QString title;
    QDateTime made;
    QString network;
    bool nodesAreLookedFor = true; ///< so that one which does not answer is silent
};

/// `nodes` tells names and ports. Some milliseconds for thousands of elements.
[[nodiscard]] PatchSheet PatchSheetOf(const MappedDeviceModel& document,
                                      const ArtNetNodeModel& nodes, const PatchSheetHead& head);

/// What a sheet of this document is called: by its own name, or by its file's where it has none.
[[nodiscard]] QString SheetTitleOf(const MappedDeviceModel& document, const QString& path);
