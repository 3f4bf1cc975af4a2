// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <QMap>
#include <QStandardItemModel>
#include <QString>

#include <boost/container/small_vector.hpp>

#include "Settings/Observable.h"

/// A node or an address, held by value.
struct ArtNetNodeRecord
{
    std::string ip;            ///< dotted address, the key everywhere here
    std::int32_t useCount = 0; ///< how many elements send to it
    std::int32_t subnet = 0;   ///< of the element that this record stands for
    std::int32_t universe = 0; ///< of the element that this record stands for
    std::string name;
    bool manual = false; ///< entered by the user or read from a document
    bool mirrorsLiveNode = false;
    /// A Port-Address and its use count for each output, in port order.
    boost::container::small_vector<std::pair<std::uint16_t, std::uint32_t>, 4> universes;
};

/// The nodes that answer on the network, and the addresses that a document or the user names. An
/// address is either alive or not. Main thread only.
class ArtNetNodeModel : public QStandardItemModel, public Observable
{
    Q_OBJECT

public:
    using Table = QMap<QString, ArtNetNodeRecord>;

    explicit ArtNetNodeModel(QObject* parent = nullptr);
    ~ArtNetNodeModel() override;

    /// Takes the latest discovery. True when the rows must be rebuilt.
    bool UpdateNodes(const std::vector<ArtNetNodeRecord>& incoming);
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

private:
    bool NoteSeen(const std::vector<ArtNetNodeRecord>& incoming);

    Table offlineNodes;
    Table liveNodes;
    Table allNodes;
    std::vector<ArtNetNodeRecord> nodes; ///< every node seen since the start, by first sight
};
