// SPDX-License-Identifier: MIT
#include "UI/FixtureEditor/CellWords.h"

#include <cstdint>

#include <QCoreApplication>
#include <QStringList>

namespace {

struct CellTexts
{
    Q_DECLARE_TR_FUNCTIONS(CellTexts)

public:
    static QString Place(const PixelMap& map, int cell)
    {
        return tr("row %1, column %2")
            .arg(cell / map.GetWidth() + 1)
            .arg(cell % map.GetWidth() + 1);
    }
    static QString Channels(std::int64_t start, int count)
    {
        return count == 1 ? tr("channel %1").arg(start)
                          : tr("channels %1 to %2").arg(start).arg(start + count - 1);
    }
    static QString Colours(PixelMapType type)
    {
        QStringList names;
        for (int component = 0; component < ChannelsPerPixel(type); ++component)
            names.append(QString::fromStdWString(PixelComponentName(type, component)));
        return names.join(tr(", "));
    }
    static QStringList Faults(FixtureLayout::CellFault fault, std::int32_t start)
    {
        QStringList faults;
        if (fault.overlaps)
            faults.append(tr("overlaps another pixel"));
        if (fault.beyond)
            faults.append(start < 1 ? tr("before the first channel") : tr("past the last channel"));
        return faults;
    }
    static QString Empty() { return tr("empty"); }
    static QString Line(QString place, const QString& what)
    {
        place[0] = place[0].toUpper();
        return tr("%1: %2").arg(place, what);
    }
    static QString WithColours(const QString& channels, const QString& colours)
    {
        return tr("%1 (%2)").arg(channels, colours);
    }
};

std::int32_t StartOf(const PixelMap& map, int cell)
{
    return map.GetChannels().at(static_cast<std::size_t>(cell));
}

} // namespace

QString WordsForCell(const PixelMap& map, FixtureLayout::CellFault fault, int cell)
{
    const QString place = CellTexts::Place(map, cell);
    const std::int32_t start = StartOf(map, cell);
    if (start == 0)
        return CellTexts::Line(place, CellTexts::Empty());
    const QString channels = CellTexts::WithColours(
        CellTexts::Channels(start, map.GetChannelsPerPixel()), CellTexts::Colours(map.GetType()));
    return CellTexts::Line(
        place,
        (QStringList(channels) + CellTexts::Faults(fault, start)).join(QStringLiteral("; ")));
}

QString SpokenCell(const PixelMap& map, FixtureLayout::CellFault fault, int cell)
{
    const std::int32_t start = StartOf(map, cell);
    const QStringList parts = {CellTexts::Place(map, cell),
                               start == 0 ? CellTexts::Empty() : CellTexts::Channels(start, 1)};
    return (parts + CellTexts::Faults(fault, start)).join(QStringLiteral(", "));
}
