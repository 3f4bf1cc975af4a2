// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "Model/ElementFields.h"
#include "UI/Widgets/SteadyComboBox.h"

class ArtNetNodeModel;

/// The node that elements are sent to: "Auto", a node that is known in the chosen network or was
/// entered by the operator, or an entry to enter or change such a one. Follows the nodes as they
/// come, go and are renamed, and goes by their addresses; an open list stays as it is until it is
/// closed.
class NodeComboBox final : public SteadyComboBox
{
    Q_OBJECT

public:
    /// The data of the entries that stand for no node. That of a node is its address, that of
    /// "Auto" is AutoNode.
    static const QString EnterNode;
    static const QString EditNode;

    /// `nodes` outlives the box.
    explicit NodeComboBox(ArtNetNodeModel& nodes, QWidget* parent = nullptr);

    /// The chosen network as dotted text, with 255 for each open part; empty for none.
    void SetNetwork(const QString& network);
    [[nodiscard]] const QString& GetNetwork() const { return network_; }

    /// Shows this node without a signal. One that is not in the list shows as "Auto".
    void Show(const Shared<std::wstring>& node);
    /// Whether the list has a node of this address.
    [[nodiscard]] bool Offers(const QString& address) const;
    /// Whether a network is chosen and this address lies outside of it, so that nothing is sent
    /// there. "Auto" never does.
    [[nodiscard]] bool IsOutside(const std::wstring& address) const;
    /// The address of the last entry that was accepted.
    [[nodiscard]] QString LastAccepted() const;

public slots:
    /// Lists the nodes as they are now and shows the one that the elements have.
    void Refill();

protected:
    void showEvent(QShowEvent* event) override;
    void showPopup() override;

private:
    struct Entry
    {
        QString text;
        QVariant data;
    };
    [[nodiscard]] std::vector<Entry> Entries() const;
    void Fill(const std::vector<Entry>& entries);
    void MarkMixedRow();

    ArtNetNodeModel& nodes_;
    QString network_;
    std::optional<std::uint32_t> networkValue_;
    Shared<std::wstring> shown_;
};
