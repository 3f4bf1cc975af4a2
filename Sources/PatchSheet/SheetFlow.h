// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include <QSizeF>

#include "PatchSheet/SheetPage.h"

/// Puts headings, lines and tables on pages, one below the other: what has no room on a page goes
/// to the next one, where a table begins with its heading and its column titles again.
class SheetFlow
{
public:
    struct Column
    {
        QString title;
        double width = 1; ///< its share of the page's width
        Qt::Alignment alignment = Qt::AlignLeft;
        bool large = false; ///< the figures that are looked for
    };
    using Row = std::vector<QString>;

    /// `paper` is upright, in millimetres. `mayGoOn` is asked at each new page; false ends all
    /// work: nothing is put on pages any more.
    SheetFlow(SheetInk& ink, QSizeF paper, std::function<bool()> mayGoOn);

    /// What follows begins on a page of its own; its name stands at the foot.
    void BeginSection(const QString& name, QPageLayout::Orientation orientation);
    void AddTitle(const QString& text);
    void AddText(const QString& text);
    /// The heading stays with the table, and comes again, with `again`, where it goes on.
    /// `notes` are lines between the heading and the table.
    void AddTable(const QString& heading, const QString& again, const QStringList& notes,
                  std::span<const Column> columns, const std::vector<Row>& rows);
    void AddSpace(double millimetres) { y_ += millimetres; }

    /// The page that is being filled, and what is left of it.
    [[nodiscard]] SheetPage& Page() { return pages_.back(); }
    [[nodiscard]] QRectF Rest() const;
    [[nodiscard]] bool IsEnded() const { return ended_; }
    /// How many rows of tables there are so far.
    [[nodiscard]] std::size_t CountRows() const { return rows_; }
    void BeginPage();

    /// Once, at the end, with what stands at the head of each page and "3 / 7" at its foot.
    [[nodiscard]] std::vector<SheetPage> TakePages(const QString& head, const QString& date);

private:
    [[nodiscard]] QSizeF PaperOf(const SheetPage& page) const;
    [[nodiscard]] bool HasRoom(double height) const;
    void AddLines(const QStringList& lines, const SheetFont& font);
    void AddTitles(std::span<const Column> columns);
    struct Cells
    {
        std::vector<QStringList> lines;
        double height = 0;
    };
    [[nodiscard]] Cells Measure(const Row& row, std::span<const Column> columns);
    void AddCells(const Cells& cells, std::span<const Column> columns);

    SheetInk& ink_;
    QSizeF paper_;
    std::function<bool()> mayGoOn_;
    QString section_;
    QPageLayout::Orientation orientation_ = QPageLayout::Portrait;
    std::vector<SheetPage> pages_;
    double y_ = 0;
    std::size_t rows_ = 0;
    bool ended_ = false;
};
