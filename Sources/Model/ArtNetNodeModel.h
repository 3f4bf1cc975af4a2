// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <QMap>
#include <QStandardItemModel>
#include <QString>

#include <boost/container/small_vector.hpp>

#include "Settings/Observable.h"

class DMXMappingArtNet;
class MappedDeviceModel;
class QTreeView;

/// A node or an address, held by value.
struct ArtNetNodeRecord
{
    using Port = std::pair<std::uint16_t, std::uint32_t>;

    std::string ip;            ///< dotted address, the key everywhere here
    std::int32_t useCount = 0; ///< how many elements send to it
    std::int32_t subnet = 0;   ///< of the element that this record stands for
    std::int32_t universe = 0; ///< of the element that this record stands for
    std::string name;
    bool manual = false; ///< entered by the user or read from a document
    bool mirrorsLiveNode = false;
    /// A Port-Address and its use count for each output, in port order.
    boost::container::small_vector<Port, 4> universes;
};

/// The nodes that answer on the network, and the addresses that a document or the user names, as
/// tables and as rows of a tree: a row for each node with its ports below it, and a row for each
/// other address. What isn't answering shows in red. An address is either alive or not. Main thread
/// only.
class ArtNetNodeModel : public QStandardItemModel, public Observable
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
    /// Nodes that were seen are kept up to so many; then those go that were heard least recently.
    static constexpr std::size_t MaxNodes = 1024;
    /// So many top-level rows are written at once, less than a tick has room for; the rest waits.
    static constexpr int RowsAtOnce = 64;

    explicit ArtNetNodeModel(QObject* parent = nullptr);
    ~ArtNetNodeModel() override;

    /// Takes the latest discovery. True when the rows must be rebuilt.
    bool UpdateNodes(const std::vector<ArtNetNodeRecord>& incoming);
    /// Sets all rows: what the elements of the document use, what else is known, and what was seen,
    /// each when it lies in the network of this broadcast address or is the user's own. The columns
    /// of `view`, which may be null, keep their widths.
    void Rebuild(const MappedDeviceModel& document, QTreeView* view, std::uint32_t broadcast);
    /// Writes the next portion of the rows that wait, if any do: for who knows when there is time.
    void WriteWaitingRows();
    void RebuildAllNodes();

    /// False when the address is known already, alive or not.
    bool AddManualNode(const ArtNetNodeRecord& record);
    /// Null when there is none. Good until the tables change.
    [[nodiscard]] ArtNetNodeRecord* GetNode(const QString& address);
    [[nodiscard]] QString GetNodeName(const QString& address);
    [[nodiscard]] bool IsManualNode(const QString& address) const;
    /// After an edit of a record in place: puts it under its present address.
    void ReinsertNode(const QString& address);
    void RemoveNode(const QString& address);
    /// Empties the tables. What was seen since the start is still known.
    void Clear();

    [[nodiscard]] const Table& GetAllNodes() const { return allNodes; }
    [[nodiscard]] const Table& GetLiveNodes() const { return liveNodes; }
    [[nodiscard]] const Table& GetOfflineNodes() const { return offlineNodes; }

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

    /// Last good index of the inspector's list of addresses, which alone reads and writes it.
    std::int32_t lastIPIndex = 0;

private:
    struct Seen
    {
        ArtNetNodeRecord node;
        std::uint64_t lastHeard = 0; ///< counts the updates
    };
    struct Walk;
    /// What a top-level row and the rows of its ports say.
    struct RowText
    {
        std::array<QString, ColumnCount> cells;
        std::vector<std::uint16_t> ports;
    };

    bool NoteSeen(const std::vector<ArtNetNodeRecord>& incoming);
    void ForgetOldest();
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
    bool columnsSized = false;
    std::vector<Seen> nodes; ///< every node seen since the start, by first sight
    std::unordered_map<std::string, std::size_t> seen_; ///< where each address stands there
    std::uint64_t updates_ = 0;

    std::vector<RowText> rows_; ///< all that the tree is to say
    int written_ = 0;           ///< so many of them stand there
};
