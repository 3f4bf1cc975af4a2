// SPDX-License-Identifier: MIT
// What the view of the universes tells, without a window.
#include "Model/PatchMove.h"
#include "Model/PatchText.h"
#include "Support/Literals.h"
#include "UI/Output/CellGrid.h"
#include "UI/Output/PatchedShow.h"
#include "UI/Output/UniverseCells.h"
#include "UI/Output/UniverseTable.h"
#include "UI/Output/UniverseWatch.h"

namespace {

class Universes : public PatchedShow
{
protected:
    /// "0/4 (4) to broadcast: 6" of each row, with ! for each step of trouble behind it.
    QStringList Rows()
    {
        QStringList texts;
        for (const UniverseRow& row : watch.Rows()) {
            texts << "%1 to %2: %3%4"_q.arg(UniverseLabel(row.target.portAddress), row.way)
                         .arg(row.used)
                         .arg(QString(static_cast<int>(row.trouble), QLatin1Char('!')));
        }
        return texts;
    }
    /// A letter a channel: of tint a to d, a capital where an owner begins; "." free, "~" received,
    /// "x" shared, "!" cut.
    QString Cells(const PatchUniverse& universe, int first, int last, bool hasInput = false)
    {
        const UniverseCells cells = UniverseCells::Of(&universe, hasInput, Document());
        QString text;
        for (int channel = first; channel <= last; ++channel) {
            const UniverseCell& cell = cells.cells[static_cast<std::size_t>(channel - 1)];
            const char letter = static_cast<char>((cell.begins ? 'A' : 'a') + cell.tint);
            const char mark = cell.ground == UniverseCell::Ground::Free       ? '.'
                              : cell.ground == UniverseCell::Ground::Received ? '~'
                              : cell.cut                                      ? '!'
                              : cell.shared                                   ? 'x'
                                                                              : letter;
            text += QLatin1Char(mark);
        }
        return text;
    }
    /// "0/4/97" of each element, and what is in the way: the channels of the universe, those of
    /// them that are taken, and "no" where it doesn't fit.
    std::string Moved(const ElementIds& ids, const PatchShift& shift, const PatchTarget& shown)
    {
        const PatchTable patch = PatchTableOf(Document());
        const auto addresses = ShiftedAddresses(Document(), patch, ids, shift);
        QStringList words;
        for (const ElementAddress& each : addresses)
            words << AddressText(*each.address);
        const PatchMove move = PreviewMove(Document(), patch, addresses, shown);
        words << QString::number(move.channels.count()) << QString::number(move.taken.count());
        if (move.shared != static_cast<int>(move.taken.count()))
            words << QStringLiteral("of %1").arg(move.shared);
        if (!move.fits)
            words << "no"_q;
        return words.join(QLatin1Char(' ')).toStdString();
    }

    UniverseWatch watch{Document(), engine.GetOutput(), [](const QString& address) {
                            return address == "2.0.0.10"_q ? "Stage left"_q : QString();
                        }};
};

} // namespace

TEST_F(Universes, EachIsARowWithItsWay)
{
    EXPECT_TRUE(watch.Look());
    EXPECT_EQ(Rows(), QStringList());
    EXPECT_FALSE(watch.Look());
    Add({.portAddress = 4, .channel = 1});
    Add({.portAddress = 4, .channel = 4, .node = L"2.0.0.10"});
    Add({.portAddress = 20, .channel = 510});
    watch.NoteDocument();
    EXPECT_TRUE(watch.Look());
    const QString nobody = "nobody: no network is chosen, or it is not connected"_q;
    EXPECT_EQ(Rows(),
              (QStringList{"0/4 (4) to %1: 6!!"_q.arg(nobody), "0/4 (4) to %1: 6!!"_q.arg(nobody),
                           "1/4 (20) to %1: 3!!"_q.arg(nobody)}))
        << "in the order of the table: the node's before Auto";
    Connect();
    EXPECT_TRUE(watch.Look());
    EXPECT_EQ(Rows(), (QStringList{"0/4 (4) to Stage left (2.0.0.10): 6!!"_q,
                                   "0/4 (4) to broadcast: 6!!"_q, "1/4 (20) to broadcast: 3!!"_q}));
    EXPECT_FALSE(watch.Look());
    manager.RemoveMappedObjects({2, 3});
    watch.NoteDocument();
    watch.Look();
    EXPECT_EQ(Rows(), QStringList{"0/4 (4) to broadcast: 6"_q});

    // The merger's universes are sent without an element, too.
    Merge(4, 2, 8);
    Connect();
    EXPECT_TRUE(watch.Look());
    EXPECT_EQ(Rows(), (QStringList{"0/8 (8) to broadcast: 6"_q, "0/9 (9) to broadcast: 0"_q}));
    EXPECT_FALSE(watch.Rows()[1].hasInput) << "nobody sends";
    Frame(10, 20, 30);
    const auto values = watch.ValuesOf(watch.Rows()[0]);
    EXPECT_EQ(std::vector<int>(values.begin(), values.begin() + 7),
              (std::vector<int>{10, 20, 30, 10, 20, 30, 0}));
    EXPECT_EQ(values.size(), 512U);
    watch.CountFrames(1);
    EXPECT_EQ(watch.FramesOf(watch.Rows()[0]), std::nullopt);
    watch.CountFrames(2);
    EXPECT_EQ(watch.FramesOf(watch.Rows()[0]), 0);
    watch.ForgetFrames();
    EXPECT_EQ(watch.FramesOf(watch.Rows()[0]), std::nullopt);
    const std::pair<const wchar_t*, QString> ways[] = {
        {L"9.0.0.1", "nobody: 9.0.0.1 is not in the network"_q},
        {L"2.0.0.11", "2.0.0.11"_q},
    };
    for (const auto& [node, way] : ways) {
        const PatchTarget target{node, 0};
        const UniverseRoute route = RouteOf(engine.GetOutput(), true, 0, node);
        EXPECT_EQ(WayText(route, target, [](const QString&) { return QString(); }), way);
    }
}

TEST_F(Universes, RowsThatStayAreTheSameRows)
{
    const auto row = [](int portAddress, const wchar_t* node = L"Auto", const char* way = "") {
        UniverseRow made;
        made.target = {node, static_cast<std::uint16_t>(portAddress)};
        made.way = QLatin1String(way);
        return made;
    };
    UniverseRow received = row(1);
    received.kind = UniverseRow::Kind::Received;
    UniverseTable table;
    const UniverseRows steps[] = {{row(2), row(4), row(6)},
                                  {row(1), row(2), row(4, L"2.0.0.1"), row(4), received},
                                  {row(4, L"Auto", "broadcast"), row(9), received},
                                  {received},
                                  {}};
    QPersistentModelIndex four;
    for (const UniverseRows& rows : steps) {
        table.SetRows(rows);
        ASSERT_EQ(table.rowCount(), static_cast<int>(rows.size()));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(*table.Row(static_cast<int>(i)), rows[i]);
            EXPECT_EQ(table.Find(rows[i]), static_cast<int>(i));
        }
        if (!four.isValid() && rows.size() == 3)
            four = table.index(table.Find(row(4)), 0);
        EXPECT_EQ(four.row(), table.Find(row(4)));
    }
    received.way = "received from <b>"_q;
    received.tip = "of <i>"_q;
    table.SetRows({received});
    const QModelIndex used = table.index(0, UniverseTable::UsedColumn);
    EXPECT_EQ(used.data(Qt::ToolTipRole), "<qt>received from &lt;b&gt;<br>of &lt;i&gt;</qt>"_q);
    EXPECT_EQ(used.data(Qt::AccessibleTextRole).toString(), QString());
}

TEST_F(Universes, CellsTellTheirOwnersApart)
{
    Add({.channel = 2});                                     // a
    Add({.channel = 8, .channels = 9});                      // b
    Add({.channel = 14, .freeChannel = 2});                  // c, over the end of b
    Add({.channel = 20, .channels = 3});                     // d
    Add({.channel = 23, .channels = 3});                     // a
    Add({.channel = 508, .channels = 6});                    // its second pixel is cut
    Add({.portAddress = 1, .channel = 1, .freeChannel = 2}); // merged: its free channel is received
    Merge(1, 1, 5);
    const PatchTable patch = PatchTableOf(Document());
    ASSERT_EQ(patch.size(), 2U);
    EXPECT_EQ(Cells(patch[0], 1, 26), ".AaaaaaBbbbbbxxxcccDddAaa."_q);
    EXPECT_EQ(Cells(patch[0], 506, 512), "..Bbbb!"_q);
    EXPECT_EQ(Cells(patch[1], 1, 8, true), "A~Aaaa~~"_q);
    EXPECT_EQ(patch[1].target.portAddress, 5);
    const struct
    {
        PatchTarget target;
        std::vector<ArtNetReceived> received;
        bool wanted;
    } inputs[] = {{{AutoNode, 5}, {{.portAddress = 1}}, true},
                  {{AutoNode, 5}, {}, false},
                  {{AutoNode, 6}, {{.portAddress = 1}, {.portAddress = 2}}, false},
                  {{L"2.0.0.10", 5}, {{.portAddress = 1}}, false}};
    for (const auto& each : inputs)
        EXPECT_EQ(HasInput(each.target, Document().GetMerging(), each.received), each.wanted);
    const UniverseCells none = UniverseCells::Of(nullptr, false, Document());
    EXPECT_EQ(none.cells, UniverseCells().cells);
}

TEST_F(Universes, MovedBlocksTellWhatIsInTheWay)
{
    const auto first = Add({.portAddress = 0, .channel = 1});
    const auto second = Add({.portAddress = 0, .channel = 11});
    const auto other = Add({.portAddress = 1, .channel = 500, .node = L"2.0.0.10"});
    Add({.portAddress = 2, .channel = 3});
    const PatchTarget here{AutoNode, 0};
    const PatchTarget node{L"2.0.0.10", 1};
    const auto apart = Add({.portAddress = 3, .channel = 4});
    Add({.portAddress = 3, .channel = 13});
    const PatchTarget merged{AutoNode, 9};
    const PatchTarget received{AutoNode, 2};
    const PatchTarget beyond{AutoNode, 256};
    const PatchTarget taken{AutoNode, 2};
    const struct
    {
        ElementIds ids;
        int channels;
        const PatchTarget* to; ///< null: each stays in its universe, and "here" is shown
        const char* wanted;
    } cases[] = {
        {{first}, 0, nullptr, "0/0/1 6 0"},
        {{first}, 4, nullptr, "0/0/5 6 0"},
        {{first}, 5, nullptr, "0/0/6 6 1"},
        {{first, second}, 5, nullptr, "0/0/6 0/0/16 12 0"},
        {{first}, -1, nullptr, "0/0/0 5 0 no"},
        {{first}, 506, nullptr, "0/0/507 6 0"},
        {{first}, 507, nullptr, "0/0/508 5 0 no"},
        {{first, other}, 7, nullptr, "0/0/8 0/1/507 6 3"},
        {{first, other}, 8, nullptr, "0/0/9 0/1/508 6 4 no"},
        {{first}, 0, &taken, "0/2/1 6 4"},
        {{second}, 0, &node, "0/1/11 6 0"},
        {{first}, 0, &here, "0/0/1 6 0"},
        {{first}, 0, &merged, "0/2/1 6 4"}, // what the merger sends on 9 is patched to 2
        {{first}, 0, &beyond, "0 0"},
        {{first, apart}, 0, &taken, "0/2/1 0/2/4 9 6"}, // the two meet, and what is there
        {{apart, first}, 1, nullptr, "0/3/5 0/0/2 6 0"},
        {{apart, first}, 5, nullptr, "0/3/9 0/0/6 6 1 of 3"}, // in the other universe, too
        {{99}, 1, nullptr, "0 0"},
    };
    for (const auto& each : cases) {
        Merge(2, 1, 9, each.to == &merged);
        PatchShift shift{.channels = each.channels, .to = std::nullopt};
        if (each.to)
            shift.to = *each.to;
        EXPECT_EQ(Moved(each.ids, shift, each.to ? *each.to : here), each.wanted);
    }
    EXPECT_TRUE(MayBePatched(received, Document().GetMerging()));
    Merge(2, 1, 9);
    EXPECT_FALSE(MayBePatched(received, Document().GetMerging()));
    EXPECT_FALSE(MayBePatched(beyond, Document().GetMerging()));
    EXPECT_TRUE(MayBePatched(merged, Document().GetMerging()));
    Merge(2, 1, 9, false);
    PatchShift toNode;
    toNode.to = node;
    const auto moved = ShiftedAddresses(Document(), PatchTableOf(Document()), {second}, toNode);
    EXPECT_EQ(moved.front().address->GetIpName(), L"Stage left");
}

TEST(WantedChannels, AreReadAsTheyAreSpoken)
{
    using Wanted = std::optional<WantedChannel>;
    const std::pair<QString, Wanted> cases[] = {
        {"97"_q, WantedChannel{{}, 97}},
        {"4/97"_q, WantedChannel{4, 97}},
        {" 1 / 4 / 512 "_q, WantedChannel{20, 512}},
        {"40/1"_q, WantedChannel{40, 1}},
        {"0/16/1"_q, {}},
        {"4/0"_q, {}},
        {"4/513"_q, {}},
        {"-1/5"_q, {}},
        {"32768/1"_q, {}},
        {"1/2/3/4"_q, {}},
        {"4/"_q, {}},
        {"x"_q, {}},
        {QString(), {}},
    };
    for (const auto& [text, wanted] : cases)
        EXPECT_EQ(ReadWantedChannel(text), wanted) << text.toStdString();
}

TEST(CellGrids, HaveAsManyColumnsAsThereIsRoomFor)
{
    const struct
    {
        int width;
        int columns;
        int cell;
    } cases[] = {{1000, 32, 31}, {960, 32, 30}, {959, 16, 59}, {480, 16, 30},
                 {100, 2, 50},   {10, 1, 30},   {0, 1, 30}};
    for (const auto& each : cases) {
        const CellGrid grid = CellGrid::ForWidth(each.width, {30, 20});
        EXPECT_EQ(grid.Columns(), each.columns) << each.width;
        EXPECT_EQ(grid.CellSize(), QSize(each.cell, 20)) << each.width;
        for (const int channel : {1, each.columns, each.columns + 1, 512}) {
            const QRect cell = grid.RectOf(std::min(channel, 512));
            EXPECT_EQ(grid.ChannelAt(cell.topLeft()), std::min(channel, 512));
            EXPECT_EQ(grid.ChannelAt(cell.bottomRight()), std::min(channel, 512));
        }
        EXPECT_EQ(grid.ChannelAt({each.columns * each.cell, 0}), 0);
        EXPECT_EQ(grid.ChannelAt({0, grid.Height()}), 0);
        EXPECT_EQ(grid.ChannelAt({-1, 5}), 0);
    }
}
