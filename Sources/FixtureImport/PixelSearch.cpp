// SPDX-License-Identifier: MIT
#include "FixtureImport/PixelSearch.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <utility>

#include <QStringList>

#include "FixtureImport/PixelGrid.h"

namespace FixtureImport {

namespace {

/// A brightness that has fewer values has something else on most of its channel.
constexpr std::int32_t FewestSteps = 100;

/// So many pixels at least have a background of their own.
constexpr std::size_t FewestOfBackground = 4;

using Colours = std::array<Colour, 3>;

/// The colours, or the dimmers, of one part or of the whole fixture. Indexes are those of the
/// mode's channels, in their order.
struct Lamp
{
    std::int32_t part = -1;
    std::vector<std::int32_t> colours;
    std::vector<std::int32_t> dimmers;
};

/// Where a lamp's pixel lies.
struct PixelPlace
{
    PixelMapType type = PixelMapType::RGB;
    std::int32_t first = 0; ///< index of its first channel
    /// What may follow an RGB pixel directly, so that one type more covers it.
    std::optional<PixelMapType> wider;
};

struct OrderOfColours
{
    std::array<Colour, 3> colours;
    PixelMapType type;
};
constexpr std::array<OrderOfColours, 8> Orders{{
    {{Colour::Red, Colour::Green, Colour::Blue}, PixelMapType::RGB},
    {{Colour::Red, Colour::Blue, Colour::Green}, PixelMapType::RBG},
    {{Colour::Green, Colour::Red, Colour::Blue}, PixelMapType::GRB},
    {{Colour::Green, Colour::Blue, Colour::Red}, PixelMapType::GBR},
    {{Colour::Blue, Colour::Red, Colour::Green}, PixelMapType::BRG},
    {{Colour::Blue, Colour::Green, Colour::Red}, PixelMapType::BGR},
    {{Colour::Cyan, Colour::Magenta, Colour::Yellow}, PixelMapType::CMY},
    {{Colour::Yellow, Colour::Magenta, Colour::Cyan}, PixelMapType::YMC},
}};

bool IsColourOf(const Definition& definition, const ModeChannel& channel)
{
    return channel.channel >= 0 && channel.fineness == 0 &&
           definition.channels[static_cast<std::size_t>(channel.channel)].kind ==
               ChannelKind::Colour;
}

/// A brightness that any value may be sent to: it grows with the value, in one step at least, and
/// nothing else is on its channel.
bool IsDrivable(const ChannelDefinition& channel)
{
    std::int32_t steps = 0;
    for (const ChannelRange& range : channel.ranges) {
        if (range.use == RangeUse::Open || (range.use == RangeUse::Bright && range.rises))
            steps += range.to - range.from + 1;
        else if (range.use != RangeUse::Nothing && range.use != RangeUse::Dark)
            return false;
    }
    return steps >= FewestSteps;
}

bool IsWhite(Colour colour)
{
    return colour == Colour::White || colour == Colour::WarmWhite || colour == Colour::ColdWhite;
}

/// "Dimmer 1" and "Dimmer 12" are lamps of one kind.
QString WithoutNumber(QString name)
{
    const auto isNumber = [](QChar c) {
        return c.isDigit() || c.isSpace();
    };
    name.truncate(
        static_cast<int>(std::remove_if(name.begin(), name.end(), isNumber) - name.begin()));
    return name.toCaseFolded();
}

/// Of a name in a fault's list of channels, which each mode has: a hostile one has MBs.
constexpr int LongestInList = 100;

/// One search. Every step either narrows the lamps or sets the fault.
class Search
{
public:
    Search(const Definition& definition, const DefinitionMode& mode)
        : definition_(definition)
        , mode_(mode)
    {
        FindLamps();
    }

    PixelSearchResult Run()
    {
        PixelSearchResult result;
        const std::vector<PixelPlace> places = FindPlaces();
        result.fault = fault_;
        if (!fault_)
            result.pixels = Lay(places);
        return result;
    }

private:
    // ---- Lamps

    void FindLamps()
    {
        ofParts_.resize(mode_.parts.size());
        for (std::size_t i = 0; i < ofParts_.size(); ++i)
            ofParts_[i].part = static_cast<std::int32_t>(i);
        for (std::size_t i = 0; i < mode_.channels.size(); ++i)
            AddToLamp(static_cast<std::int32_t>(i));
    }

    void AddToLamp(std::int32_t index)
    {
        const ModeChannel& channel = ChannelAt(index);
        if (channel.channel < 0 || channel.fineness > 0)
            return;
        const ChannelKind kind = DefinitionAt(index).kind;
        if (kind == ChannelKind::Other)
            return;
        if (channel.part >= 0) {
            Lamp& lamp = ofParts_[static_cast<std::size_t>(channel.part)];
            (kind == ChannelKind::Colour ? lamp.colours : lamp.dimmers).push_back(index);
        } else if (kind == ChannelKind::Intensity) {
            looseDimmers_.push_back({-1, {}, {index}});
        } else {
            AddInSequence(index, loose_);
        }
    }

    /// A colour that comes again begins the next lamp.
    void AddInSequence(std::int32_t index, std::vector<Lamp>& lamps) const
    {
        if (lamps.empty() || IndexOf(lamps.back(), ColourAt(index)) >= 0)
            lamps.emplace_back();
        lamps.back().colours.push_back(index);
    }

    /// Lamps from all colours of the mode, whatever part they belong to.
    [[nodiscard]] std::vector<Lamp> InSequence() const
    {
        std::vector<Lamp> lamps;
        for (std::size_t i = 0; i < mode_.channels.size(); ++i) {
            if (IsColourOf(definition_, mode_.channels[i]))
                AddInSequence(static_cast<std::int32_t>(i), lamps);
        }
        return lamps;
    }

    [[nodiscard]] const ModeChannel& ChannelAt(std::int32_t index) const
    {
        return mode_.channels[static_cast<std::size_t>(index)];
    }
    [[nodiscard]] const ChannelDefinition& DefinitionAt(std::int32_t index) const
    {
        return definition_.channels[static_cast<std::size_t>(ChannelAt(index).channel)];
    }
    [[nodiscard]] Colour ColourAt(std::int32_t index) const { return DefinitionAt(index).colour; }

    /// The first channel of this colour, -1 for none.
    [[nodiscard]] std::int32_t IndexOf(const Lamp& lamp, Colour colour) const
    {
        const auto at = std::ranges::find(lamp.colours, colour,
                                          [this](std::int32_t index) { return ColourAt(index); });
        return at == lamp.colours.end() ? -1 : *at;
    }
    [[nodiscard]] std::ptrdiff_t CountOf(const Lamp& lamp, Colours colours) const
    {
        return std::ranges::count_if(colours,
                                     [&](Colour colour) { return IndexOf(lamp, colour) >= 0; });
    }
    [[nodiscard]] bool HasTwoOfEach(const Lamp& lamp, Colours colours) const
    {
        return std::ranges::all_of(colours, [&](Colour colour) {
            return std::ranges::count(lamp.colours, colour,
                                      [this](std::int32_t index) { return ColourAt(index); }) > 1;
        });
    }
    [[nodiscard]] bool Has(Colour colour) const
    {
        return std::ranges::any_of(mode_.channels, [&](const ModeChannel& channel) {
            return IsColourOf(definition_, channel) &&
                   definition_.channels[static_cast<std::size_t>(channel.channel)].colour == colour;
        });
    }

    // ---- The kind of pixel

    std::vector<PixelPlace> FindPlaces()
    {
        constexpr Colours rgb{Colour::Red, Colour::Green, Colour::Blue};
        constexpr Colours cmy{Colour::Cyan, Colour::Magenta, Colour::Yellow};
        const auto has = [this](Colour colour) {
            return Has(colour);
        };
        if (std::ranges::all_of(rgb, has))
            return MixedPlaces(rgb);
        if (std::ranges::all_of(cmy, has))
            return MixedPlaces(cmy);
        const bool anyColour =
            std::ranges::any_of(mode_.channels, [this](const ModeChannel& channel) {
                return IsColourOf(definition_, channel);
            });
        return anyColour ? FewColourPlaces() : DimmerPlaces();
    }

    /// Pixels of three colours.
    std::vector<PixelPlace> MixedPlaces(Colours colours)
    {
        const auto isWhole = [&](const Lamp& lamp) {
            return CountOf(lamp, colours) == 3;
        };
        const auto isSeveral = [&](const Lamp& lamp) {
            return isWhole(lamp) && HasTwoOfEach(lamp, colours);
        };
        const bool ofParts = std::ranges::any_of(ofParts_, isWhole);
        std::vector<Lamp>& lamps = ofParts ? ofParts_ : loose_;
        std::vector<Lamp> broken;
        std::ranges::copy_if(lamps, std::back_inserter(broken), [&](const Lamp& lamp) {
            return !isWhole(lamp) && CountOf(lamp, colours) > 0;
        });
        std::erase_if(lamps, [&](const Lamp& lamp) { return !isWhole(lamp); });
        if (lamps.empty())
            return Fail(FaultKind::ColoursApart, Describe(FirstOfEach(colours)));
        const bool areParts = broken.empty() && std::ranges::none_of(lamps, isSeveral);
        if (ofParts && !areParts && std::ranges::all_of(InSequence(), isWhole)) {
            // Parts that hold some of a lamp's colours, or several lamps, say less than the order
            // of the channels.
            lamps = InSequence();
            broken.clear();
        }
        if (!broken.empty())
            return Fail(FaultKind::DifferentPixels, DescribeTwo(lamps.front(), broken.front()));
        pixels_ = WithoutMasters(lamps);
        return Places([&](const Lamp& lamp) { return MixedPlace(lamp, colours); });
    }

    std::optional<PixelPlace> MixedPlace(const Lamp& lamp, Colours colours)
    {
        std::vector<std::int32_t> own;
        for (const Colour colour : colours)
            own.push_back(IndexOf(lamp, colour));
        std::ranges::sort(own);
        if (!AreDrivable(own))
            return std::nullopt;
        const std::array<Colour, 3> order{ColourAt(own[0]), ColourAt(own[1]), ColourAt(own[2])};
        const auto* known = std::ranges::find(Orders, order, &OrderOfColours::colours);
        const bool together = own[2] == own[0] + 2;
        if (together && known != Orders.end())
            return PixelPlace{known->type, own[0], WiderType(lamp, known->type, own[2] + 1)};
        const bool interleaved = AreInterleaved(own);
        if (interleaved && known != Orders.end() && known->type == PixelMapType::RGB)
            return PixelPlace{PixelMapType::RrGgBb, own[0], {}};
        Fail(interleaved ? FaultKind::FineOrder
             : together  ? FaultKind::NoPixelType
                         : FaultKind::ColoursApart,
             Describe(own));
        return std::nullopt;
    }

    /// Each colour's first byte and its second one behind it, one colour behind the other.
    [[nodiscard]] bool AreInterleaved(const std::vector<std::int32_t>& own) const
    {
        for (std::size_t i = 0; i < own.size(); ++i) {
            const std::int32_t fine = own[i] + 1;
            if (own[i] != own[0] + 2 * static_cast<std::int32_t>(i) ||
                fine >= static_cast<std::int32_t>(mode_.channels.size()) ||
                ChannelAt(fine).fineness != 1 || ChannelAt(fine).coarse != own[i])
                return false;
        }
        return true;
    }

    /// The type with white or amber, when that lies behind the lamp's RGB. Of a warm and a cold
    /// white neither alone is the lamp's white.
    [[nodiscard]] std::optional<PixelMapType> WiderType(const Lamp& lamp, PixelMapType type,
                                                        std::int32_t next) const
    {
        if (type != PixelMapType::RGB || !std::ranges::count(lamp.colours, next) ||
            !IsDrivable(DefinitionAt(next)))
            return std::nullopt;
        const Colour colour = ColourAt(next);
        const auto whites = std::ranges::count_if(
            lamp.colours, [this](std::int32_t index) { return IsWhite(ColourAt(index)); });
        if (IsWhite(colour) && whites == 1)
            return PixelMapType::RGBWPlus;
        return colour == Colour::Amber ? std::optional(PixelMapType::RGBAmber) : std::nullopt;
    }

    /// Lamps with less than three colours to mix: one colour each, or red and blue.
    std::vector<PixelPlace> FewColourPlaces()
    {
        std::vector<Lamp>& parts = ofParts_;
        std::erase_if(parts, [](const Lamp& lamp) { return lamp.colours.empty(); });
        pixels_ = WithoutMasters(parts.empty() ? loose_ : parts);
        return Places([this](const Lamp& lamp) { return FewColourPlace(lamp); });
    }

    std::optional<PixelPlace> FewColourPlace(const Lamp& lamp)
    {
        if (!AreDrivable(lamp.colours))
            return std::nullopt;
        const std::int32_t first = lamp.colours.front();
        if (lamp.colours.size() == 1)
            return PixelPlace{TypeOfOne(ColourAt(first)), first, {}};
        if (lamp.colours.size() == 2 && lamp.colours[1] == first + 1 &&
            ColourAt(first) == Colour::Red && ColourAt(first + 1) == Colour::Blue)
            return PixelPlace{PixelMapType::RB, first, {}};
        Fail(FaultKind::NoPixelType, Describe(lamp.colours));
        return std::nullopt;
    }

    [[nodiscard]] static PixelMapType TypeOfOne(Colour colour)
    {
        switch (colour) {
        case Colour::Red:
            return PixelMapType::R;
        case Colour::Green:
            return PixelMapType::G;
        case Colour::Blue:
            return PixelMapType::B;
        default:
            return PixelMapType::L;
        }
    }

    /// No colours: the dimmers follow the picture.
    std::vector<PixelPlace> DimmerPlaces()
    {
        if (definition_.isMachine)
            return Fail(FaultKind::Machine, {});
        std::erase_if(ofParts_, [](const Lamp& lamp) { return lamp.dimmers.empty(); });
        std::vector<Lamp>& lamps = ofParts_.empty() ? looseDimmers_ : ofParts_;
        if (lamps.empty())
            return Fail(FaultKind::NoLight, {});
        pixels_ = WithoutMasters(lamps);
        if (ofParts_.empty() && !AreLikeDimmers())
            return {};
        return Places([this](const Lamp& lamp) -> std::optional<PixelPlace> {
            const std::int32_t dimmer = lamp.dimmers.front();
            if (lamp.dimmers.size() > 1) {
                Fail(FaultKind::NoPixelType, Describe(lamp.dimmers));
                return std::nullopt;
            }
            if (!IsDrivable(DefinitionAt(dimmer))) {
                Fail(FaultKind::DimmerDoesMore, ChannelAt(dimmer).name);
                return std::nullopt;
            }
            return PixelPlace{PixelMapType::L, dimmer, {}};
        });
    }

    /// Whether the dimmers of the whole fixture are those of one lamp or of a pack of like lamps.
    /// Left out are what is called a dimmer and does other things, masters by their names, and
    /// single ones beside a pack.
    bool AreLikeDimmers()
    {
        const auto nameOf = [this](const Lamp& lamp) {
            return ChannelAt(lamp.dimmers.front()).name;
        };
        DropUnlessAll(
            [&](const Lamp& lamp) { return !IsDrivable(DefinitionAt(lamp.dimmers.front())); });
        DropUnlessAll([&](const Lamp& lamp) {
            return nameOf(lamp).contains(QLatin1String("master"), Qt::CaseInsensitive);
        });
        std::map<QString, int> byName;
        for (const Lamp& lamp : pixels_)
            ++byName[WithoutNumber(nameOf(lamp))];
        DropUnlessAll([&](const Lamp& lamp) { return byName[WithoutNumber(nameOf(lamp))] == 1; });
        const QString name = WithoutNumber(nameOf(pixels_.front()));
        for (const Lamp& lamp : pixels_) {
            if (WithoutNumber(nameOf(lamp)) != name) {
                Fail(FaultKind::NoPixelType,
                     Describe({pixels_.front().dimmers.front(), lamp.dimmers.front()}));
                return false;
            }
        }
        return true;
    }

    template <typename Predicate>
    void DropUnlessAll(Predicate predicate)
    {
        if (!std::ranges::all_of(pixels_, predicate))
            std::erase_if(pixels_, predicate);
    }

    // ---- Common steps

    /// Small parts before large ones; a part that holds cells of one before it is a master.
    [[nodiscard]] std::vector<Lamp> WithoutMasters(std::vector<Lamp> lamps) const
    {
        const auto cellsOf = [this](const Lamp& lamp) -> std::size_t {
            const auto* cells = CellsOf(lamp);
            return cells ? cells->size() : 0;
        };
        std::vector<Lamp> bySize = lamps;
        std::ranges::stable_sort(bySize, {}, cellsOf);
        std::vector<bool> taken(static_cast<std::size_t>(mode_.columns) *
                                static_cast<std::size_t>(mode_.rows));
        std::set<std::int32_t> masters;
        for (const Lamp& lamp : bySize) {
            const auto* cells = CellsOf(lamp);
            if (!cells)
                continue;
            const auto isTaken = [&](std::int32_t cell) {
                return taken[static_cast<std::size_t>(cell)];
            };
            if (std::ranges::any_of(*cells, isTaken)) {
                masters.insert(lamp.part);
                continue;
            }
            for (const std::int32_t cell : *cells)
                taken[static_cast<std::size_t>(cell)] = true;
        }
        std::erase_if(lamps, [&](const Lamp& lamp) { return masters.contains(lamp.part); });
        return lamps;
    }

    [[nodiscard]] const std::vector<std::int32_t>* CellsOf(const Lamp& lamp) const
    {
        return lamp.part < 0 ? nullptr
                             : mode_.parts[static_cast<std::size_t>(lamp.part)].cells.get();
    }

    /// The places of all pixels, which have one type.
    template <typename PlaceOf>
    std::vector<PixelPlace> Places(PlaceOf placeOf)
    {
        std::vector<PixelPlace> places;
        for (const Lamp& lamp : pixels_) {
            const std::optional<PixelPlace> place = placeOf(lamp);
            if (!place)
                return {};
            places.push_back(*place);
        }
        SeparateFineLamp(places);
        for (std::size_t i = 1; i < places.size(); ++i) {
            if (places[i].type != places.front().type)
                return Fail(FaultKind::DifferentPixels, DescribeTwo(pixels_.front(), pixels_[i]));
        }
        const auto wider = places.empty() ? std::nullopt : places.front().wider;
        const bool allWider = std::ranges::all_of(
            places, [&](const PixelPlace& place) { return place.wider == wider; });
        for (PixelPlace& place : places) {
            if (wider && allWider)
                place.type = *wider;
        }
        return places;
    }

    /// A fixture has all its pixels in one resolution. One lamp in 16 bits among others in 8 bits
    /// is the main light beside some effects, or the background of many pixels.
    void SeparateFineLamp(std::vector<PixelPlace>& places)
    {
        const auto isFine = [](const PixelPlace& place) {
            return place.type == PixelMapType::RrGgBb;
        };
        const auto fine = std::ranges::find_if(places, isFine);
        if (places.size() < 2 || std::ranges::count_if(places, isFine) != 1)
            return;
        const auto lamp = pixels_.begin() + (fine - places.begin());
        if (places.size() > FewestOfBackground) {
            pixels_.erase(lamp);
            places.erase(fine);
        } else {
            pixels_ = {*lamp};
            places = {*fine};
        }
    }

    bool AreDrivable(const std::vector<std::int32_t>& indexes)
    {
        for (const std::int32_t index : indexes) {
            if (!IsDrivable(DefinitionAt(index))) {
                Fail(FaultKind::ColourDoesMore, ChannelAt(index).name);
                return false;
            }
        }
        return true;
    }

    std::vector<PixelPlace> Fail(FaultKind kind, const QString& detail)
    {
        fault_ = {kind, detail};
        return {};
    }

    // ---- Words for faults

    [[nodiscard]] std::vector<std::int32_t> FirstOfEach(Colours colours) const
    {
        std::vector<std::int32_t> first;
        for (const Colour colour : colours) {
            for (std::size_t i = 0; i < mode_.channels.size(); ++i) {
                const auto index = static_cast<std::int32_t>(i);
                if (IsColourOf(definition_, mode_.channels[i]) && ColourAt(index) == colour) {
                    first.push_back(index);
                    break;
                }
            }
        }
        return first;
    }

    /// "Red (1), Green (3)": names with their channels.
    [[nodiscard]] QString Describe(const std::vector<std::int32_t>& indexes) const
    {
        QStringList list;
        for (const std::int32_t index : indexes)
            list += QStringLiteral("%1 (%2)")
                        .arg(ChannelAt(index).name.left(LongestInList))
                        .arg(index + 1);
        return list.join(QLatin1String(", "));
    }
    [[nodiscard]] QString DescribeTwo(const Lamp& one, const Lamp& other) const
    {
        return Describe(one.colours) + QLatin1String("; ") + Describe(other.colours);
    }

    // ---- The map

    [[nodiscard]] FoundPixels Lay(const std::vector<PixelPlace>& places) const
    {
        FoundPixels found;
        std::vector<const std::vector<std::int32_t>*> cells;
        for (const Lamp& lamp : pixels_)
            cells.push_back(CellsOf(lamp));
        const PixelGrid grid = GridOf(cells, mode_.columns, mode_.rows);
        found.placed = grid.isKnown;
        found.map = PixelMap(grid.columns, grid.rows, places.front().type);
        found.uses.resize(mode_.channels.size());
        for (std::size_t i = 0; i < places.size(); ++i) {
            const std::int32_t cell = grid.cells[i];
            found.map.SetCell(cell % grid.columns, cell / grid.columns, places[i].first + 1);
            for (std::int32_t n = 0; n < found.map.GetChannelsPerPixel(); ++n)
                found.uses[static_cast<std::size_t>(places[i].first + n)] = {cell, n};
        }
        found.litParts = LitParts(cells);
        return found;
    }

    [[nodiscard]] std::vector<bool>
    LitParts(const std::vector<const std::vector<std::int32_t>*>& pixelCells) const
    {
        std::vector<bool> litCells(static_cast<std::size_t>(mode_.columns) *
                                   static_cast<std::size_t>(mode_.rows));
        for (const auto* cells : pixelCells) {
            for (std::size_t i = 0; cells && i < cells->size(); ++i)
                litCells[static_cast<std::size_t>((*cells)[i])] = true;
        }
        std::vector<bool> lit(mode_.parts.size());
        for (std::size_t i = 0; i < lit.size(); ++i) {
            const auto& cells = mode_.parts[i].cells;
            // Pixels of the whole fixture light all its parts.
            lit[i] = pixels_.front().part < 0 ||
                     (cells && std::ranges::any_of(*cells, [&](std::int32_t cell) {
                          return litCells[static_cast<std::size_t>(cell)];
                      }));
        }
        for (const Lamp& lamp : pixels_) {
            if (lamp.part >= 0)
                lit[static_cast<std::size_t>(lamp.part)] = true;
        }
        return lit;
    }

    const Definition& definition_;
    const DefinitionMode& mode_;
    std::vector<Lamp> ofParts_;
    std::vector<Lamp> loose_;
    std::vector<Lamp> looseDimmers_;
    std::vector<Lamp> pixels_; ///< those that became pixels
    ImportFault fault_;
};

} // namespace

PixelSearchResult FindPixels(const Definition& definition, const DefinitionMode& mode)
{
    return Search(definition, mode).Run();
}

} // namespace FixtureImport
