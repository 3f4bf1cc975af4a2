// SPDX-License-Identifier: MIT
#include "PatchSheet/PatchPdf.h"

#include <algorithm>

#include <QBuffer>
#include <QCoreApplication>
#include <QLocale>
#include <QPainter>
#include <QPdfWriter>

#include "Model/PatchText.h"
#include "PatchSheet/PatchSheet.h"
#include "PatchSheet/SheetDrawing.h"
#include "PatchSheet/SheetFlow.h"

namespace {

/// Of the progress; drawing the pages is the rest.
constexpr double ShareOfLayingOut = 0.5;
constexpr double TableGap = 6;     // millimetres
constexpr double NumberWidth = 18; ///< the share of a column that has room for five figures

struct PdfWords
{
    Q_DECLARE_TR_FUNCTIONS(PatchSheet)
};

QString ChannelsText(int first, int last)
{
    return first == last ? QString::number(first) : PdfWords::tr("%1 - %2").arg(first).arg(last);
}

QString NodeText(const QString& name, const std::wstring& address)
{
    const QString dotted = QString::fromStdWString(address);
    if (address == AutoNode)
        return PdfWords::tr("Auto");
    return name.isEmpty() ? dotted : PdfWords::tr("%1 (%2)").arg(name, dotted);
}

QString FixtureText(const PatchSheet::Element& element)
{
    return PdfWords::tr("%1 %2").arg(element.manufacturer, element.product);
}

QString PixelsText(const PatchSheet::Element& element)
{
    return PdfWords::tr("%1x%2").arg(element.pixels.width()).arg(element.pixels.height());
}

/// Whether the address on paper is not the one that the universe's table stands under.
bool IsSentElsewhere(const PatchSheet::Element& element)
{
    return element.address && (element.address->GetPortAddress() != element.target.portAddress ||
                               element.address->GetIpconf() != element.target.node);
}

class PatchPages
{
public:
    PatchPages(const PatchSheet& sheet, SheetInk& ink, QSizeF paper,
               const std::function<bool(double)>& mayGoOn)
        : sheet_(sheet)
        , ink_(ink)
        , flow_(ink, paper, [this, mayGoOn] {
            return mayGoOn(ShareOfLayingOut * static_cast<double>(flow_.CountRows()) /
                           static_cast<double>(std::max(rows_, flow_.CountRows() + 1)));
        })
    {}

    std::vector<SheetPage> Make(const PatchPdfOptions& options)
    {
        rows_ = sheet_.universes.size() + sheet_.nodes.size();
        for (const bool table : {options.byUniverse, options.byElement})
            rows_ += table ? sheet_.elements.size() : 0;
        AddSummary();
        if (options.layout)
            AddLayout(flow_, ink_, sheet_);
        if (options.byUniverse)
            AddUniverses();
        if (options.byElement)
            AddElements();
        if (flow_.IsEnded())
            return {};
        return flow_.TakePages(sheet_.title, QLocale().toString(sheet_.made, QLocale::ShortFormat));
    }

private:
    void AddSummary()
    {
        flow_.BeginSection(PdfWords::tr("Patch"), QPageLayout::Portrait);
        flow_.AddTitle(sheet_.title);
        flow_.AddText(PdfWords::tr("Elements: %1").arg(sheet_.elements.size()));
        flow_.AddText(PdfWords::tr("Universes: %1").arg(sheet_.universes.size()));
        flow_.AddText(PdfWords::tr("Canvas: %1 x %2 pixels")
                          .arg(sheet_.canvas.width())
                          .arg(sheet_.canvas.height()));
        if (!sheet_.network.isEmpty())
            flow_.AddText(PdfWords::tr("Network: %1").arg(sheet_.network));
        flow_.AddText(sheet_.autoUnicast
                          ? PdfWords::tr("Universes without a node (Auto) go to the nodes that "
                                         "announce them (Auto-Unicast).")
                          : PdfWords::tr("Universes without a node (Auto) go to all nodes "
                                         "(Broadcast)."));
        const UniverseMerging& merging = sheet_.merging;
        const int count = merging.GetConsecutiveUniverses();
        if (merging.IsEnabled())
            flow_.AddText(
                PdfWords::tr("Merged: what is patched to %1 is laid over received DMX and comes "
                             "out on %2.")
                    .arg(UniverseRunText(merging.GetFromStartAddress(), count),
                         UniverseRunText(merging.GetToStartAddress(), count)));
        flow_.AddSpace(TableGap);
        AddUniverseList();
        flow_.AddSpace(TableGap);
        AddNodeList();
    }

    void AddUniverseList()
    {
        const std::vector<SheetFlow::Column> columns = {
            {PdfWords::tr("Universe"), 17, Qt::AlignLeft, true},
            {PdfWords::tr("Port-Address"), 19, Qt::AlignRight},
            {PdfWords::tr("Sent to"), 52},
            {PdfWords::tr("Elements"), 17, Qt::AlignRight},
            {PdfWords::tr("Channels used"), 22, Qt::AlignRight},
            {PdfWords::tr("free"), 14, Qt::AlignRight}};
        std::vector<SheetFlow::Row> rows;
        for (const PatchSheet::Universe& universe : sheet_.universes)
            rows.push_back({UniverseText(universe.target.portAddress),
                            QString::number(universe.target.portAddress), ReceiverText(universe),
                            QString::number(universe.spans.size()), QString::number(universe.used),
                            universe.merged ? PdfWords::tr("merged")
                                            : QString::number(universe.freeChannels)});
        flow_.AddTable(PdfWords::tr("Universes"), PdfWords::tr("Universes (continued)"), {},
                       columns, rows);
    }

    [[nodiscard]] static QString StateText(PatchSheet::Node::State state)
    {
        switch (state) {
        case PatchSheet::Node::State::Answers:
            return PdfWords::tr("answers");
        case PatchSheet::Node::State::ByHand:
            return PdfWords::tr("entered by hand");
        case PatchSheet::Node::State::Silent:
            return PdfWords::tr("does not answer");
        case PatchSheet::Node::State::Named:
            break;
        }
        return PdfWords::tr("of the patch");
    }

    void AddNodeList()
    {
        if (sheet_.nodes.empty())
            return flow_.AddText(PdfWords::tr("No node is known."));
        const std::vector<SheetFlow::Column> columns = {
            {PdfWords::tr("Address"), 32, Qt::AlignLeft, true},
            {PdfWords::tr("Name"), 40},
            {PdfWords::tr("Ports"), 40},
            {PdfWords::tr("Elements to it alone"), 24, Qt::AlignRight},
            {PdfWords::tr("State"), 26}};
        std::vector<SheetFlow::Row> rows;
        for (const PatchSheet::Node& node : sheet_.nodes) {
            QStringList ports;
            for (const std::uint16_t port : node.ports)
                ports << UniverseText(port);
            rows.push_back({node.address, node.name, ports.join(QStringLiteral(", ")),
                            QString::number(node.elements), StateText(node.state)});
        }
        flow_.AddTable(PdfWords::tr("Nodes"), PdfWords::tr("Nodes (continued)"), {}, columns, rows);
    }

    [[nodiscard]] static QString FreeText(const PatchSheet::Universe& universe)
    {
        if (universe.merged)
            return PdfWords::tr("Merged: the other channels have what is received");
        if (universe.free.empty())
            return PdfWords::tr("Free: none");
        QStringList runs;
        for (const PatchSheet::ChannelRun& run : universe.free)
            runs << ChannelsText(run.first, run.last);
        return PdfWords::tr("Free: %1 (%n channel(s))", nullptr, universe.freeChannels)
            .arg(runs.join(QStringLiteral(", ")));
    }

    /// Who gets a universe.
    [[nodiscard]] QString ReceiverText(const PatchSheet::Universe& universe) const
    {
        if (universe.target.node != AutoNode)
            return NodeText(universe.nodeName, universe.target.node);
        return sheet_.autoUnicast ? PdfWords::tr("its subscribers (Auto)")
                                  : PdfWords::tr("all nodes (Auto)");
    }

    void AddUniverses()
    {
        if (flow_.IsEnded())
            return;
        flow_.BeginSection(PdfWords::tr("By universe"), QPageLayout::Portrait);
        std::vector<SheetFlow::Column> columns = {
            {PdfWords::tr("Channels"), 27, Qt::AlignLeft, true},
            {PdfWords::tr("No."), NumberWidth, Qt::AlignRight, true},
            {PdfWords::tr("Element"), 44},
            {PdfWords::tr("Fixture"), 48},
            {PdfWords::tr("Pixels"), 18, Qt::AlignRight},
            {PdfWords::tr("Patched to"), 22}};
        if (!sheet_.merging.IsEnabled())
            columns.pop_back();
        for (const PatchSheet::Universe& universe : sheet_.universes) {
            if (flow_.IsEnded())
                return;
            AddUniverse(universe, columns);
        }
        AddUnsent();
    }

    void AddUniverse(const PatchSheet::Universe& universe,
                     const std::vector<SheetFlow::Column>& columns)
    {
        const QString name = PdfWords::tr("Universe %1 (%2) to %3")
                                 .arg(UniverseText(universe.target.portAddress))
                                 .arg(universe.target.portAddress)
                                 .arg(ReceiverText(universe));
        std::vector<SheetFlow::Row> rows;
        QStringList notes = {FreeText(universe)};
        bool hasShared = false;
        for (const PatchSheet::Span& span : universe.spans) {
            const PatchSheet::Element& element = sheet_.elements[span.element];
            QString channels = ChannelsText(span.channels.first, span.channels.last);
            if (span.channels.beyond)
                channels = PdfWords::tr("%1, cut").arg(channels);
            hasShared = hasShared || span.shared;
            rows.push_back({span.shared ? PdfWords::tr("%1 !").arg(channels) : channels,
                            QString::number(element.number), element.description,
                            FixtureText(element), PixelsText(element)});
            if (sheet_.merging.IsEnabled())
                rows.back().push_back(IsSentElsewhere(element) ? AddressText(*element.address)
                                                               : QString());
        }
        if (hasShared)
            notes << PdfWords::tr("! shares channels with another element");
        flow_.AddTable(name, PdfWords::tr("%1 (continued)").arg(name), notes, columns, rows);
        flow_.AddSpace(TableGap);
    }

    /// So that nobody looks for them in vain.
    void AddUnsent()
    {
        const std::vector<SheetFlow::Column> columns = {
            {PdfWords::tr("No."), NumberWidth, Qt::AlignRight, true},
            {PdfWords::tr("Element"), 50},
            {PdfWords::tr("Fixture"), 60},
            {PdfWords::tr("Address"), 30}};
        std::vector<SheetFlow::Row> rows;
        for (const PatchSheet::Element& element : sheet_.elements) {
            if (element.sent.AreNone())
                rows.push_back({QString::number(element.number), element.description,
                                FixtureText(element),
                                element.address ? AddressText(*element.address) : QString()});
        }
        if (!rows.empty())
            flow_.AddTable(PdfWords::tr("Not sent"), PdfWords::tr("Not sent (continued)"), {},
                           columns, rows);
    }

    void AddElements()
    {
        if (flow_.IsEnded())
            return;
        flow_.BeginSection(PdfWords::tr("By element"), QPageLayout::Portrait);
        const bool merged = sheet_.merging.IsEnabled();
        std::vector<SheetFlow::Column> columns = {
            {PdfWords::tr("No."), NumberWidth, Qt::AlignRight, true},
            {PdfWords::tr("Element"), 38},
            {PdfWords::tr("Fixture"), 42},
            {PdfWords::tr("Channels"), 19, Qt::AlignRight},
            {PdfWords::tr("Address"), 27, Qt::AlignLeft, true},
            {PdfWords::tr("Comes out on"), 27, Qt::AlignLeft, true},
            {PdfWords::tr("Node"), 34}};
        if (!merged)
            columns.erase(columns.begin() + 5);
        std::vector<SheetFlow::Row> rows;
        for (const PatchSheet::Element& element : sheet_.elements) {
            SheetFlow::Row row = {QString::number(element.number), element.description,
                                  FixtureText(element), QString::number(element.channels),
                                  element.address ? AddressText(*element.address)
                                                  : PdfWords::tr("none")};
            if (merged)
                row.push_back(element.sent.AreNone() || !IsSentElsewhere(element)
                                  ? QString()
                                  : PdfWords::tr("%1/%2")
                                        .arg(UniverseText(element.target.portAddress))
                                        .arg(element.sent.first));
            row.push_back(element.address ? NodeText(element.nodeName, element.address->GetIpconf())
                                          : QString());
            rows.push_back(std::move(row));
        }
        flow_.AddTable(PdfWords::tr("Elements"), PdfWords::tr("Elements (continued)"), {}, columns,
                       rows);
    }

    const PatchSheet& sheet_;
    SheetInk& ink_;
    std::size_t rows_ = 0; ///< that there will be, about
    SheetFlow flow_;
};

} // namespace

std::optional<QByteArray> PatchPdf(const PatchSheet& sheet, const PatchPdfOptions& options,
                                   const std::function<bool(double)>& mayGoOn)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly))
        return std::nullopt;
    QPdfWriter writer(&buffer);
    const QPageSize paper(options.paper == PatchPdfOptions::Paper::A4 ? QPageSize::A4
                                                                      : QPageSize::Letter);
    // Margins are ours, so that a place is the same on every page.
    const auto turnTo = [&](QPageLayout::Orientation orientation) {
        writer.setPageLayout(QPageLayout(paper, orientation, QMarginsF()));
    };
    turnTo(QPageLayout::Portrait);
    writer.setTitle(sheet.title);
    writer.setCreator(QStringLiteral("PixelWeft"));
    SheetInk ink(writer);
    const std::vector<SheetPage> pages =
        PatchPages(sheet, ink, paper.size(QPageSize::Millimeter), mayGoOn).Make(options);
    if (pages.empty())
        return std::nullopt;
    QPainter painter;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const double part = static_cast<double>(i) / static_cast<double>(pages.size());
        if (!mayGoOn(ShareOfLayingOut + (1 - ShareOfLayingOut) * part))
            return std::nullopt;
        turnTo(pages[i].orientation);
        if (i == 0)
            painter.begin(&writer);
        else
            writer.newPage();
        ink.Draw(painter, pages[i]);
    }
    painter.end();
    return bytes;
}
