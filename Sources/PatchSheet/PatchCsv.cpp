// SPDX-License-Identifier: MIT
#include "PatchSheet/PatchCsv.h"

#include <algorithm>
#include <numeric>
#include <tuple>

#include <QStringList>

#include "Model/ElementGeometry.h"
#include "PatchSheet/PatchSheet.h"

namespace {

constexpr const char* Header =
    "number,description,manufacturer,product,pixel_columns,pixel_rows,channels,"
    "subnet,universe,port_address,first_channel,last_channel,node,node_name,"
    "sent_subnet,sent_universe,sent_port_address,sent_first_channel,sent_last_channel,sent_node,"
    "centre_x,centre_y,width,height,rotation,flip_horizontal,flip_vertical";
constexpr auto LineEnd = "\r\n";

class Line
{
public:
    void Add(const QString& text)
    {
        static const QString special = QStringLiteral(",\"\r\n");
        const bool quoted =
            std::ranges::any_of(text, [](QChar character) { return special.contains(character); });
        QString cell = text;
        if (quoted)
            cell = QLatin1Char('"') + cell.replace(QLatin1Char('"'), QLatin1String("\"\"")) +
                   QLatin1Char('"');
        cells_ << cell;
    }
    void Add(int number) { cells_ << QString::number(number); }
    /// Thousandths at most: elements are placed to a hundredth of a pixel.
    void Add(double number)
    {
        QString text = QString::number(number, 'f', 3);
        while (text.endsWith(QLatin1Char('0')))
            text.chop(1);
        if (text.endsWith(QLatin1Char('.')))
            text.chop(1);
        cells_ << (text == QLatin1String("-0") ? QStringLiteral("0") : text);
    }
    void AddEmpty(int count)
    {
        while (count-- > 0)
            cells_ << QString();
    }
    [[nodiscard]] QByteArray ToUtf8() const { return cells_.join(QLatin1Char(',')).toUtf8(); }

private:
    QStringList cells_;
};

void AddAddress(Line& line, const PatchSheet::Element& element)
{
    constexpr int columns = 13;
    if (!element.address)
        return line.AddEmpty(columns);
    const DMXMappingArtNet& address = *element.address;
    line.Add(address.GetSubnet());
    line.Add(address.GetUniverse());
    line.Add(int{address.GetPortAddress()});
    line.Add(address.GetChannel());
    if (element.channels > 0)
        line.Add(address.GetChannel() + element.channels - 1);
    else
        line.AddEmpty(1);
    line.Add(QString::fromStdWString(address.GetIpconf()));
    line.Add(element.nodeName);
    constexpr int sentColumns = 6;
    if (element.sent.AreNone())
        return line.AddEmpty(sentColumns);
    const int sent = element.target.portAddress;
    line.Add(sent / 16);
    line.Add(sent % 16);
    line.Add(sent);
    line.Add(element.sent.first);
    line.Add(element.sent.last);
    line.Add(QString::fromStdWString(element.target.node));
}

void AddPlace(Line& line, const PatchSheet::Element& element, QSize canvas)
{
    constexpr int columns = 7;
    if (!element.place)
        return line.AddEmpty(columns);
    const ElementGeometry::Placement place = ElementGeometry::PlacementOf(*element.place, canvas);
    line.Add(place.centre.x());
    line.Add(place.centre.y());
    line.Add(place.size.width());
    line.Add(place.size.height());
    line.Add(double{element.place->rotation});
    line.Add(element.place->flipHorizontal ? 1 : 0);
    line.Add(element.place->flipVertical ? 1 : 0);
}

std::vector<std::size_t> InOrder(const PatchSheet& sheet, PatchOrder order)
{
    std::vector<std::size_t> elements(sheet.elements.size());
    std::iota(elements.begin(), elements.end(), std::size_t{0});
    if (order == PatchOrder::ByUniverse)
        std::ranges::stable_sort(elements, {}, [&sheet](std::size_t index) {
            const PatchSheet::Element& element = sheet.elements[index];
            return std::tuple(element.sent.AreNone(), element.target.portAddress,
                              element.target.node, element.sent.first);
        });
    return elements;
}

} // namespace

QByteArray PatchCsv(const PatchSheet& sheet, PatchOrder order)
{
    QByteArray table = QByteArray(Header) + LineEnd;
    for (const std::size_t index : InOrder(sheet, order)) {
        const PatchSheet::Element& element = sheet.elements[index];
        Line line;
        line.Add(element.number);
        line.Add(element.description);
        line.Add(element.manufacturer);
        line.Add(element.product);
        line.Add(element.pixels.width());
        line.Add(element.pixels.height());
        line.Add(element.channels);
        AddAddress(line, element);
        AddPlace(line, element, sheet.canvas);
        table += line.ToUtf8() + LineEnd;
    }
    return table;
}
