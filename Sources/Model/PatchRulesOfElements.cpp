// SPDX-License-Identifier: MIT
#include "Model/PatchRules.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <utility>

#include <QRectF>

#include "FixtureModel/ChannelUse.h"
#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/FreePatch.h"
#include "FixtureModel/PatchOverlaps.h"
#include "Model/DeviceModel.h"
#include "Model/ElementGeometry.h"
#include "Model/MappedLedItem.h"

namespace {

/// Fractions in single precision are off by less than this many pixels on the largest canvas.
constexpr double PixelRounding = 0.02;

/// The channels that an element would have if a universe had no end.
struct Channels
{
    std::int32_t first = 0;
    std::int64_t last = 0;
    SentChannels sent;
};

struct ElementSubject
{
    const MappedLedItem& element;
    QSizeF canvas;
    const DeviceModel* library = nullptr;
    std::optional<Channels> channels; ///< none without an address or channels
};

std::optional<Channels> ChannelsOf(const MappedLedItem& element)
{
    const DMXMappingArtNet* address = element.GetArtNetMapping();
    const std::int32_t count = element.GetFixture().GetChannelCount();
    if (!address || count < 1)
        return std::nullopt;
    return Channels{address->GetChannel(), std::int64_t{address->GetChannel()} + count - 1,
                    ChannelsSent(address->GetChannel(), count)};
}

// ---- Channels ----------------------------------------------------------------------------------

std::int32_t Narrow(std::int64_t channel)
{
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(channel, std::numeric_limits<std::int32_t>::max()));
}

bool BeginsOutside(const ElementSubject& subject, PatchProblem& problem)
{
    const auto& channels = subject.channels;
    if (!channels || !channels->sent.AreNone())
        return false;
    problem.first = channels->first;
    return true;
}

/// The first pixel that begins up to 512 and ends behind it: true with its channels.
bool FindSplitPixel(const MappedLedItem& element, const Channels& channels, PatchProblem& problem)
{
    const PixelMap& map = element.GetFixture().pixelMap;
    const std::int32_t size = map.GetChannelsPerPixel();
    const std::int32_t count = SentChannelCount(element.GetFixture());
    for (const std::int32_t cell : map.GetChannels()) {
        if (!IsPixelConverted(cell, size, count))
            continue;
        const std::int64_t first = std::int64_t{channels.first} + cell - 1;
        if (first > PatchAddress::LastChannel || first + size - 1 <= PatchAddress::LastChannel)
            continue;
        problem.first = Narrow(first);
        problem.last = Narrow(first + size - 1);
        return true;
    }
    return false;
}

bool SplitsAPixel(const ElementSubject& subject, PatchProblem& problem)
{
    const auto& channels = subject.channels;
    return channels && channels->sent.beyond && !channels->sent.AreNone() &&
           FindSplitPixel(subject.element, *channels, problem);
}

bool ReachesBeyond(const ElementSubject& subject, PatchProblem& problem)
{
    const auto& channels = subject.channels;
    PatchProblem pixel;
    if (!channels || !channels->sent.beyond || channels->sent.AreNone() ||
        FindSplitPixel(subject.element, *channels, pixel)) // which says more
        return false;
    problem.first = channels->first;
    problem.last = Narrow(channels->last);
    return true;
}

// ---- Place -------------------------------------------------------------------------------------

/// The upright box round the centres of an element's pixels, which are what is sampled, in pixels
/// of the canvas. Nothing for an element without place or pixels.
std::optional<QRectF> SampledBox(const ElementSubject& subject)
{
    const VideoMapping* video = subject.element.GetVideoMapping();
    const PixelMap& map = subject.element.GetFixture().pixelMap;
    if (!video || map.GetWidth() < 1 || map.GetHeight() < 1)
        return std::nullopt;
    const auto [centre, size] = ElementGeometry::PlacementOf(*video, subject.canvas);
    const double halfWidth = size.width() / 2 * (1 - 1.0 / map.GetWidth());
    const double halfHeight = size.height() / 2 * (1 - 1.0 / map.GetHeight());
    const double angle = static_cast<double>(video->rotation) * std::numbers::pi / 180;
    const double cosine = std::abs(std::cos(angle));
    const double sine = std::abs(std::sin(angle));
    const QPointF reach(halfWidth * cosine + halfHeight * sine,
                        halfWidth * sine + halfHeight * cosine);
    return QRectF(centre - reach, centre + reach);
}

/// Whether the canvas has a part of the box, which may have no extent.
bool IsPartOnCanvas(const QRectF& box, QSizeF canvas)
{
    return box.right() >= 0 && box.bottom() >= 0 && box.left() <= canvas.width() &&
           box.top() <= canvas.height();
}

bool IsOffCanvas(const ElementSubject& subject, PatchProblem&)
{
    const auto box = SampledBox(subject);
    return box && !IsPartOnCanvas(*box, subject.canvas);
}

bool HangsOverEdge(const ElementSubject& subject, PatchProblem&)
{
    const auto box = SampledBox(subject);
    return box && IsPartOnCanvas(*box, subject.canvas) &&
           (box->left() < -PixelRounding || box->top() < -PixelRounding ||
            box->right() > subject.canvas.width() + PixelRounding ||
            box->bottom() > subject.canvas.height() + PixelRounding);
}

/// Along a side with one pixel there are no neighbours to be told apart from.
bool IsTooSmall(const ElementSubject& subject, PatchProblem& problem)
{
    const VideoMapping* video = subject.element.GetVideoMapping();
    const PixelMap& map = subject.element.GetFixture().pixelMap;
    if (!video)
        return false;
    const QSizeF size = ElementGeometry::PlacementOf(*video, subject.canvas).size;
    problem.first = map.GetWidth();
    problem.last = map.GetHeight();
    return (map.GetWidth() > 1 && size.width() < map.GetWidth() - PixelRounding) ||
           (map.GetHeight() > 1 && size.height() < map.GetHeight() - PixelRounding);
}

// ---- Fixture -----------------------------------------------------------------------------------

const DeviceLedItem* InLibrary(const ElementSubject& subject)
{
    return subject.library->GetFixtures().value(subject.element.GetFixture().uniqueID, nullptr);
}

bool HasOldFixture(const ElementSubject& subject, PatchProblem& problem)
{
    const DeviceLedItem* fixture = subject.library ? InLibrary(subject) : nullptr;
    if (!fixture || subject.element.GetFixture().HasDefinitionOf(*fixture))
        return false;
    problem.name = fixture->product;
    return true;
}

bool HasLostFixture(const ElementSubject& subject, PatchProblem& problem)
{
    if (!subject.library || InLibrary(subject))
        return false;
    problem.name = subject.element.GetFixture().product;
    return true;
}

struct ElementRule
{
    PatchRule rule;
    Trouble trouble;
    bool ofUniverse; ///< or of the element, wherever it is sent
    /// True with the numbers and the name of the problem.
    bool (*applies)(const ElementSubject& subject, PatchProblem& problem);
};

constexpr std::array ElementRules = {
    ElementRule{PatchRule::OutsideUniverse, Trouble::Fault, true, &BeginsOutside},
    ElementRule{PatchRule::SplitPixel, Trouble::Fault, true, &SplitsAPixel},
    ElementRule{PatchRule::BeyondUniverse, Trouble::Fault, true, &ReachesBeyond},
    ElementRule{PatchRule::OffCanvas, Trouble::Caution, false, &IsOffCanvas},
    ElementRule{PatchRule::OverEdge, Trouble::None, false, &HangsOverEdge},
    ElementRule{PatchRule::TooSmall, Trouble::Caution, false, &IsTooSmall},
    ElementRule{PatchRule::FixtureChanged, Trouble::Caution, false, &HasOldFixture},
    ElementRule{PatchRule::FixtureGone, Trouble::Caution, false, &HasLostFixture},
};

} // namespace

void JudgeElement(const MappedLedItem& element, QSizeF canvas, const DeviceModel* library,
                  std::vector<PatchProblem>& problems)
{
    const ElementSubject subject{element, canvas, library, ChannelsOf(element)};
    for (const ElementRule& rule : ElementRules) {
        PatchProblem problem;
        if (!rule.applies(subject, problem))
            continue;
        problem.rule = rule.rule;
        problem.trouble = rule.trouble;
        if (rule.ofUniverse)
            problem.universe = element.GetArtNetMapping()->GetPortAddress();
        problem.elements = {element.uniqueID};
        problems.push_back(std::move(problem));
    }
}
