// SPDX-License-Identifier: MIT
#include "PatchSheet/SheetFlow.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include <QCoreApplication>

namespace {

// Room for the holes of a binder on the left, and for printers that can't print to the edge.
constexpr double LeftMargin = 18;
constexpr double RightMargin = 12;
constexpr double TopMargin = 12;
constexpr double BottomMargin = 12;
constexpr double HeadHeight = 8;
constexpr double FootHeight = 8;
constexpr double CellGap = 2; ///< between the columns of a table
constexpr double RowGap = 1.4;
constexpr double ThinLine = 0.15;
constexpr double ThickLine = 0.5;
constexpr int MostLinesOfCell = 10;
constexpr int MostLinesOfText = 100;

constexpr SheetFont HeadFont = {11, true};
constexpr SheetFont SmallFont = {10, false};
constexpr SheetFont PageNumberFont = {13, true};
constexpr SheetFont TitleFont = {24, true};
constexpr SheetFont HeadingFont = {15, true};
constexpr SheetFont TextFont = {11, false};
constexpr SheetFont ColumnFont = {9, true};
constexpr SheetFont CellFont = {11, false};
constexpr SheetFont LargeFont = {13, true};

struct SheetWords
{
    Q_DECLARE_TR_FUNCTIONS(PatchSheet)
};

const SheetFont& FontOf(const SheetFlow::Column& column)
{
    return column.large ? LargeFont : CellFont;
}

/// The boxes of a table's columns, apart from their heights.
std::vector<QRectF> BoxesOf(std::span<const SheetFlow::Column> columns, const QRectF& rest)
{
    const double shares =
        std::accumulate(columns.begin(), columns.end(), 0.0,
                        [](double sum, const auto& column) { return sum + column.width; });
    std::vector<QRectF> boxes;
    double x = rest.left();
    for (const SheetFlow::Column& column : columns) {
        const double width = rest.width() * column.width / shares;
        boxes.emplace_back(x, rest.top(), width - CellGap, 0);
        x += width;
    }
    return boxes;
}

} // namespace

SheetFlow::SheetFlow(SheetInk& ink, QSizeF paper, std::function<bool()> mayGoOn)
    : ink_(ink)
    , paper_(paper)
    , mayGoOn_(std::move(mayGoOn))
{}

QSizeF SheetFlow::PaperOf(const SheetPage& page) const
{
    return page.orientation == QPageLayout::Landscape ? paper_.transposed() : paper_;
}

QRectF SheetFlow::Rest() const
{
    const QSizeF paper = PaperOf(pages_.back());
    return {LeftMargin, y_, paper.width() - LeftMargin - RightMargin,
            paper.height() - BottomMargin - FootHeight - y_};
}

bool SheetFlow::HasRoom(double height) const
{
    return height <= Rest().height();
}

void SheetFlow::BeginSection(const QString& name, QPageLayout::Orientation orientation)
{
    section_ = name;
    orientation_ = orientation;
    BeginPage();
}

void SheetFlow::BeginPage()
{
    ended_ = ended_ || !mayGoOn_();
    if (ended_ && !pages_.empty())
        pages_.pop_back(); // It isn't shown to anybody: no need to grow.
    pages_.push_back({.orientation = orientation_, .section = section_});
    y_ = TopMargin + HeadHeight;
}

void SheetFlow::AddLines(const QStringList& lines, const SheetFont& font)
{
    const double height = ink_.LineHeight(font);
    for (const QString& line : lines) {
        if (!HasRoom(height))
            BeginPage();
        QRectF box = Rest();
        box.setHeight(height);
        Page().texts.push_back({box, line, font});
        y_ += height;
    }
}

void SheetFlow::AddTitle(const QString& text)
{
    constexpr int mostLines = 3;
    AddLines(ink_.Wrapped(text, Rest().width(), TitleFont, mostLines), TitleFont);
    AddSpace(RowGap);
}

void SheetFlow::AddText(const QString& text)
{
    AddLines(ink_.Wrapped(text, Rest().width(), TextFont, MostLinesOfText), TextFont);
}

void SheetFlow::AddTitles(std::span<const Column> columns)
{
    const double height = ink_.LineHeight(ColumnFont);
    const std::vector<QRectF> boxes = BoxesOf(columns, Rest());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        QRectF box = boxes[i];
        box.setHeight(height);
        Page().texts.push_back(
            {box, columns[i].title, ColumnFont, columns[i].alignment | Qt::AlignVCenter});
    }
    y_ += height + RowGap / 2;
    const QRectF rest = Rest();
    Page().AddLine(rest.left(), rest.right(), y_, ThickLine);
}

SheetFlow::Cells SheetFlow::Measure(const Row& row, std::span<const Column> columns)
{
    Cells cells;
    const std::vector<QRectF> boxes = BoxesOf(columns, Rest());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const SheetFont& font = FontOf(columns[i]);
        cells.lines.push_back(ink_.Wrapped(row[i], boxes[i].width(), font, MostLinesOfCell));
        const int further = static_cast<int>(cells.lines.back().size()) - 1;
        cells.height = std::max(cells.height, ink_.LineHeight(LargeFont) +
                                                  further * ink_.LineHeight(font) + RowGap);
    }
    return cells;
}

void SheetFlow::AddCells(const Cells& cells, std::span<const Column> columns)
{
    const std::vector<QRectF> boxes = BoxesOf(columns, Rest());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const SheetFont& font = FontOf(columns[i]);
        QRectF box = boxes[i];
        box.translate(0, RowGap / 2);
        box.setHeight(ink_.LineHeight(LargeFont)); // so that first lines stand beside each other
        for (const QString& line : cells.lines[i]) {
            Page().texts.push_back({box, line, font, columns[i].alignment | Qt::AlignVCenter});
            box.translate(0, ink_.LineHeight(font));
        }
    }
    y_ += cells.height;
    const QRectF rest = Rest();
    Page().AddLine(rest.left(), rest.right(), y_, ThinLine);
}

void SheetFlow::AddTable(const QString& heading, const QString& again, const QStringList& notes,
                         std::span<const Column> columns, const std::vector<Row>& rows)
{
    const QStringList headingLines = ink_.Wrapped(heading, Rest().width(), HeadingFont, 2);
    QStringList noteLines;
    for (const QString& note : notes)
        noteLines << ink_.Wrapped(note, Rest().width(), TextFont, MostLinesOfText);
    const double headingHeight =
        static_cast<int>(headingLines.size()) * ink_.LineHeight(HeadingFont);
    const double notesHeight = static_cast<int>(noteLines.size()) * ink_.LineHeight(TextFont);
    const double titlesHeight = rows.empty() ? 0 : ink_.LineHeight(ColumnFont) + RowGap;
    const double firstRow = rows.empty() ? 0 : Measure(rows.front(), columns).height;
    if (!HasRoom(headingHeight + notesHeight + titlesHeight + firstRow))
        BeginPage();
    AddLines(headingLines, HeadingFont);
    AddLines(noteLines, TextFont);
    if (!rows.empty())
        AddTitles(columns);
    for (const Row& row : rows) {
        if (ended_)
            return;
        const Cells cells = Measure(row, columns);
        if (!HasRoom(cells.height)) {
            BeginPage();
            AddLines(ink_.Wrapped(again, Rest().width(), HeadingFont, 2), HeadingFont);
            AddTitles(columns);
        }
        AddCells(cells, columns);
        ++rows_;
    }
}

std::vector<SheetPage> SheetFlow::TakePages(const QString& head, const QString& date)
{
    const int count = static_cast<int>(pages_.size());
    for (int i = 0; i < count; ++i) {
        SheetPage& page = pages_[static_cast<std::size_t>(i)];
        const QSizeF paper = PaperOf(page);
        const double right = paper.width() - RightMargin;
        const double width = right - LeftMargin;
        const double dateWidth = ink_.WidthOf(date, SmallFont) + CellGap;
        const double lineHeight = ink_.LineHeight(HeadFont);
        page.texts.push_back({QRectF(LeftMargin, TopMargin, width - dateWidth, lineHeight),
                              ink_.Wrapped(head, width - dateWidth - CellGap, HeadFont, 1).front(),
                              HeadFont});
        page.texts.push_back({QRectF(right - dateWidth, TopMargin, dateWidth, lineHeight), date,
                              SmallFont, Qt::AlignRight | Qt::AlignVCenter});
        page.AddLine(LeftMargin, right, TopMargin + lineHeight + RowGap / 2, ThinLine);
        const double foot = paper.height() - BottomMargin - FootHeight;
        page.texts.push_back({QRectF(LeftMargin, foot + 1, width, FootHeight), page.section,
                              SmallFont, Qt::AlignLeft | Qt::AlignBottom});
        page.texts.push_back({QRectF(LeftMargin, foot + 1, width, FootHeight),
                              SheetWords::tr("%1 / %2").arg(i + 1).arg(count), PageNumberFont,
                              Qt::AlignRight | Qt::AlignBottom});
    }
    return std::exchange(pages_, {});
}
