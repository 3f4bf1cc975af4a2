// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <QMap>
#include <QStandardItemModel>
#include <QString>

#include "Model/ArtNetNodeRecord.h"
#include "Model/Trouble.h"
#include "Settings/Observable.h"

class DMXMappingArtNet;
class MappedDeviceModel;

/// The nodes that answer on the network, and the addresses that a document or the operator names,
/// as tables and as rows of a tree: a row for each node with its ports below it, and a row for each
/// other address, with the Trouble of what should answer at the moment and does not. An address is
/// either in the table of live nodes or in that of offline ones. Main thread only.
class ArtNetNodeModel : public QStandardItemModel, public Observable, public ManualNodes
{
    Q_OBJECT

public:
    using Table = QMap<QString, ArtNetNodeRecord>;

    enum Column
    {
        NameColumn,
        IpColumn,
        UseCountColumn,
        SubnetColumn,
        UniverseColumn,
        ColumnCount
    };
    /// The model remembers at most so many seen nodes; the least recently heard are forgotten
    /// first.
    static constexpr std::size_t MaxNodes = 4096;
    /// So many top-level rows are written at once, and so many ports below them or those of one
    /// node, which takes less than a tick; the rest waits.
    static constexpr int RowsAtOnce = 64;
    static constexpr std::size_t PortsAtOnce = 256;

    explicit ArtNetNodeModel(QObject* parent = nullptr);
    ~ArtNetNodeModel() override;

    /// Takes the result of the latest discovery, all nodes that answer now. True when nodes or
    /// their ports changed: call Rebuild then.
    bool UpdateNodes(const std::vector<ArtNetNodeRecord>& incoming);
    /// Sets all rows: the addresses that elements of the document use, the other known addresses,
    /// and the seen nodes; each if it is in the network of this broadcast address or was entered by
    /// the operator.
    void Rebuild(const MappedDeviceModel& document, std::uint32_t broadcast);
    /// Writes the next RowsAtOnce of the waiting rows, if any: for callers that schedule the work.
    void WriteWaitingRows();
    /// Makes the table of all nodes from the live and the offline ones.
    void RebuildAllNodes();

    /// Adds an address of the operator with its row. False when the address is known already.
    bool AddManualNode(const ArtNetNodeRecord& record) override;
    [[nodiscard]] std::vector<ArtNetNodeRecord> GetManualNodes() const override;
    /// The record to read or edit, null when there is none. Valid until the tables change.
    [[nodiscard]] ArtNetNodeRecord* GetNode(const QString& address);
    /// Empty when there is no such node.
    [[nodiscard]] QString GetNodeName(const QString& address);
    [[nodiscard]] static QString NameText(const ArtNetNodeRecord& record);
    [[nodiscard]] bool IsManualNode(const QString& address) const;
    /// The addresses of the nodes that answer now, of our own kind too, or were entered by the
    /// operator and need not.
    [[nodiscard]] std::set<std::wstring> GetAnsweringNodes() const;
    /// After an edit of the record in place: moves it from `address` to its present address.
    void ReinsertNode(const QString& address);
    /// Removes an offline node; a live one stays.
    void RemoveNode(const QString& address);
    /// Empties the tables. The nodes seen since the start are still remembered and shown.
    void Clear();

    [[nodiscard]] const Table& GetAllNodes() const { return allNodes; }
    [[nodiscard]] const Table& GetLiveNodes() const { return liveNodes; }
    [[nodiscard]] const Table& GetOfflineNodes() const { return offlineNodes; }

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

signals:
    /// Nodes of the tables came, went, answer now or no longer, or have other names.
    void nodesChanged();
    /// Rebuild has counted the uses of each node.
    void usesCounted();

public:
    /// Last good index of the inspector's list of addresses, which alone reads and writes it.
    std::int32_t lastIPIndex = 0;

private:
    struct Seen
    {
        ArtNetNodeRecord node;
        std::uint64_t lastHeard = 0; ///< counts the updates
    };
    struct Walk;
    /// The texts of a top-level row, and the Port-Addresses of the port rows below it.
    struct RowText
    {
        std::array<QString, ColumnCount> cells;
        std::vector<std::uint16_t> ports;
    };

    bool NoteSeen(const std::vector<ArtNetNodeRecord>& incoming);
    void ForgetOldest();
    [[nodiscard]] bool Answers(const QString& address) const;
    [[nodiscard]] Trouble TroubleOf(const QModelIndex& top) const;
    [[nodiscard]] QString WordsFor(const QModelIndex& top) const;
    [[nodiscard]] ArtNetNodeRecord* FindSeen(const std::string& ip);
    [[nodiscard]] Walk CountUses(const MappedDeviceModel& document);
    void CountUse(Walk& walk, const DMXMappingArtNet& mapping, const std::wstring& description);
    void AddRow(const ArtNetNodeRecord& record);
    void AddNodeRow(const ArtNetNodeRecord& node);
    void WriteRow(int row);
    void WriteCells(QStandardItem& parent, int row,
                    const std::array<QString, ColumnCount>& cells) const;

    Table offlineNodes;
    Table liveNodes;
    Table allNodes;
    std::vector<Seen> nodes; ///< the nodes seen since the start, in the order of first sight
    std::unordered_map<std::string, std::size_t> seen_; ///< index in `nodes` by address
    std::uint64_t updates_ = 0;
    std::vector<std::string> answering_; ///< the addresses of the latest discovery

    std::vector<RowText> rows_; ///< the texts that the tree will have
    int written_ = 0;           ///< how many of them are written
};
