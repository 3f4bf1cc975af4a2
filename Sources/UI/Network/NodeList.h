// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class ArtNetNodeModel;
class DeviceManager;
class LEDEngine;
class ListColumns;
class NetworkChoice;
class QTreeView;

/// The list in the dock "Fixture Nodes": the nodes that answer, with their ports, and the addresses
/// that the document names. The latest discovery and the document's changes reach the list in the
/// pauses after ticks, a portion at a time: what a thousand nodes take, some 8 ms, must not delay a
/// tick. Main thread only.
class NodeList : public QObject
{
    Q_OBJECT

public:
    /// All parts outlive the list.
    NodeList(ArtNetNodeModel& nodes, DeviceManager& manager, LEDEngine& engine,
             const NetworkChoice& choice);
    /// The view, which its dock owns, shows nothing from then on.
    ~NodeList() override;

    [[nodiscard]] QTreeView* View() const { return view_; }
    [[nodiscard]] ListColumns& Columns() const { return *columns_; }

public slots:
    /// The next pause takes the latest discovery.
    void RequestNodes() { nodesDue_ = true; }
    /// The next pause rebuilds the rows: the document may have changed.
    void RequestRows() { rowsDue_ = true; }
    /// Does one portion of what is due.
    void WorkBetweenTicks();

    /// Takes the latest discovery now; the rows follow in a pause.
    void ProcessNodesList();
    /// Rebuilds the rows now.
    void RebuildNodeRows();

private:
    void WatchDocument();
    void JudgeNodes();

    ArtNetNodeModel& nodes_;
    DeviceManager& manager_;
    LEDEngine& engine_;
    const NetworkChoice& choice_;
    QTreeView* view_;
    ListColumns* columns_; ///< the view owns it
    int looks_ = 0;        ///< at the nodes, since another network was chosen
    bool nodesDue_ = false;
    bool rowsDue_ = false;
};
