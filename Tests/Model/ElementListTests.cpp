// SPDX-License-Identifier: MIT
// What the list of elements shows: its order, and what is wrong with each row.
#include "LibTools/NaturalOrder.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

namespace {

class ElementList : public testing::Test
{
protected:
    ElementList() { list.setSourceModel(&document); }

    /// An element of three channels.
    std::unique_ptr<MappedLedItem> Made(int universe, int channel, const wchar_t* node = L"Auto",
                                        const wchar_t* name = L"Bar")
    {
        const DMXMappingArtNet address(universe / 16, universe % 16, channel, node, L"");
        const DeviceLedItem fixture(L"Maker", L"Bar", PixelMap(1, 1, PixelMapType::RGB), 1, 3);
        auto element = std::make_unique<MappedLedItem>(name, fixture, nullptr, &address);
        element->uniqueID = document.GetNextElementID();
        return element;
    }
    [[nodiscard]] std::string Column(int column) const
    {
        QStringList texts;
        for (int row = 0; row < list.rowCount(); ++row)
            texts << list.index(row, column).data().toString();
        return texts.join(QLatin1Char(' ')).toStdString();
    }

    MappedDeviceModel document;
    MappedObjectListProxy list;
};

TEST_F(ElementList, NumbersInTextsCountByTheirValue)
{
    const std::vector<QString> ascending = {QString(),
                                            QStringLiteral("2.0.0.9"),
                                            QStringLiteral("2.0.0.10"),
                                            QStringLiteral("Arc"),
                                            QStringLiteral("bar"),
                                            QStringLiteral("Bar 2"),
                                            QStringLiteral("bar 02 b"),
                                            QStringLiteral("Bar 10"),
                                            QStringLiteral("Bar 99999999999999999999"),
                                            QStringLiteral("Bar x")};
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j)
            EXPECT_EQ(IsBefore(ascending[i], ascending[j]), i < j) << i << ' ' << j;
    }
    document.AddMappingElement(Made(4, 97, L"2.0.0.10"));
    document.AddMappingElement(Made(18, 1));
    document.AddMappingElement(Made(4, 101, L"2.0.0.9"));
    document.AddMappingElement(Made(10, 5));
    list.sort(MappedDeviceModel::AddressColumn);
    EXPECT_EQ(Column(MappedDeviceModel::AddressColumn), "0/4/97 0/4/101 0/10/5 1/2/1");
    EXPECT_EQ(Column(MappedDeviceModel::NodeColumn), "2.0.0.10 2.0.0.9 Auto Auto");
    list.sort(MappedDeviceModel::NodeColumn);
    EXPECT_EQ(Column(MappedDeviceModel::NodeColumn), "2.0.0.9 2.0.0.10 Auto Auto");
}

TEST_F(ElementList, ManyRowsAmongOthersComeAndGoAtOnce)
{
    list.sort(MappedDeviceModel::NameColumn, Qt::DescendingOrder);
    const auto named = [this](int number) {
        return Made(0, 1, L"Auto", std::to_wstring(number).c_str());
    };
    for (int number = 1; number < 40; number += 2)
        document.AddMappingElement(named(number));
    const QSignalSpy came(&list, &QAbstractItemModel::rowsInserted);
    const QSignalSpy went(&list, &QAbstractItemModel::rowsRemoved);
    std::vector<std::unique_ptr<MappedLedItem>> even;
    std::vector<std::int64_t> ids;
    std::string all = "39";
    for (int number = 0; number < 40; number += 2) {
        even.push_back(named(number));
        ids.push_back(even.back()->uniqueID);
    }
    for (int number = 38; number >= 0; --number)
        all += ' ' + std::to_string(number);
    document.AddMappingElements(std::move(even));
    EXPECT_EQ(Column(MappedDeviceModel::NameColumn), all);
    EXPECT_EQ(document.TakeElements(ids).size(), 20U);
    EXPECT_EQ(Column(MappedDeviceModel::NameColumn).substr(0, 8), "39 37 35");
    EXPECT_EQ(came.count() + went.count(), 2) << "not one for each row";
}

TEST_F(ElementList, ARowTellsWhatIsWrongWithItsAddress)
{
    struct Case
    {
        int universe;
        int channel;
        const wchar_t* node;
        Trouble trouble;
        const char* words; ///< of the tool tip, null for none
    };
    const std::vector<Case> cases = {
        {0, 1, L"Auto", Trouble::None, nullptr},
        {0, 4, L"Auto", Trouble::None, nullptr},
        {6, 510, L"Auto", Trouble::None, nullptr},
        {0, 511, L"Auto", Trouble::Fault, "ends at channel 512"},
        {0, 0, L"Auto", Trouble::Fault, "ends at channel 512"},
        {1, 1, L"2.0.0.5", Trouble::None, nullptr},
        {1, 1, L"2.0.0.6", Trouble::None, nullptr}, // another node's channels
        {2, 10, L"2.0.0.5", Trouble::Caution, "Shares channels of universe 0/2"},
        {2, 12, L"2.0.0.5", Trouble::Caution, "Shares channels of universe 0/2"},
        {19, 1, L"Auto", Trouble::Fault, "Universe 1/3 has fixtures with node Auto and others"},
        {19, 4, L"2.0.0.5", Trouble::Fault, "Universe 1/3 has fixtures with node Auto"},
        {5, 1, L"2.0.0.7", Trouble::Fault, "2.0.0.7 does not answer"},
    };
    for (const Case& each : cases)
        document.AddMappingElement(Made(each.universe, each.channel, each.node));
    const QModelIndex silent = document.index(document.rowCount() - 1, 0);
    EXPECT_EQ(silent.data(TroubleRole).toInt(), 0) << "it is not known who answers";
    const QSignalSpy repaints(&document, &MappedDeviceModel::faultsChanged);
    for (int again = 0; again < 2; ++again)
        document.SetAnsweringNodes(std::set<std::wstring>{L"2.0.0.5", L"2.0.0.6"});
    EXPECT_EQ(repaints.count(), 1);
    for (std::size_t row = 0; row < cases.size(); ++row) {
        const QModelIndex cell = document.index(static_cast<int>(row), 0);
        EXPECT_EQ(cell.data(TroubleRole).toInt(), static_cast<int>(cases[row].trouble)) << row;
        const QString words = cell.data(Qt::ToolTipRole).toString();
        EXPECT_EQ(words.isEmpty(), !cases[row].words) << row;
        EXPECT_TRUE(words.contains(QLatin1String(cases[row].words))) << row;
    }
    // What shared the channels is right again when the other one has gone.
    document.RemoveMappingElement(document.GetElement(8)->uniqueID);
    EXPECT_EQ(document.index(7, 0).data(TroubleRole).toInt(), 0);
}

} // namespace
