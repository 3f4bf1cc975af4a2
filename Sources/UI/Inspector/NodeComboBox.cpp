// SPDX-License-Identifier: MIT
#include "UI/Inspector/NodeComboBox.h"

#include <algorithm>

#include <QAbstractItemView>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QTextDocument>

#include "FixtureModel/DMXMapping.h"
#include "Language/Language.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/NodeChoices.h"
#include "Platform/IPv4.h"
#include "Platform/Text.h"
#include "UI/Inspector/MultipleItems.h"

const QString NodeComboBox::EnterNode = QStringLiteral("manual");
const QString NodeComboBox::EditNode = QStringLiteral("edit");

namespace {

/// In characters: the names of nodes must not widen the panel.
constexpr int LeastWidth = 12;

} // namespace

NodeComboBox::NodeComboBox(ArtNetNodeModel& nodes, QWidget* parent)
    : SteadyComboBox(parent)
    , nodes_(nodes)
    , shown_{AutoNode, false}
{
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(LeastWidth);
    connect(this, &SteadyComboBox::closed, this, &NodeComboBox::Refill);
    const auto follow = [this] {
        if (isVisible())
            Refill();
    };
    connect(&nodes_, &ArtNetNodeModel::nodesChanged, this, follow);
    connect(&nodes_, &ArtNetNodeModel::usesCounted, this, follow);
    InEachLanguage(this, [this] { Refill(); });
}

void NodeComboBox::SetNetwork(const QString& network)
{
    network_ = network;
    networkValue_ = Platform::ParseIPv4(network.toStdWString());
    Refill();
}

void NodeComboBox::Show(const Shared<std::wstring>& node)
{
    if (node == shown_)
        return;
    shown_ = node;
    Refill();
}

bool NodeComboBox::Offers(const QString& address) const
{
    return std::ranges::count(NodeChoices(nodes_, networkValue_), address, &NodeChoice::address) >
           0;
}

bool NodeComboBox::IsOutside(const std::wstring& address) const
{
    return networkValue_ && address != AutoNode &&
           !Platform::IsInNetwork(*networkValue_, Platform::WideToUtf8(address));
}

QString NodeComboBox::LastAccepted() const
{
    return itemData(nodes_.lastIPIndex).toString();
}

// ---- Filling -----------------------------------------------------------------------------------

std::vector<NodeComboBox::Entry> NodeComboBox::Entries() const
{
    std::vector<Entry> entries;
    if (shown_.mixed)
        entries.push_back({MultipleItemsText(), QVariant()});
    const QString automatic = QString::fromWCharArray(AutoNode);
    entries.push_back({automatic, automatic});
    for (const NodeChoice& node : NodeChoices(nodes_, networkValue_))
        entries.push_back({node.Text() + QStringLiteral("(%1)").arg(node.useCount), node.address});
    entries.push_back({tr("Manual..."), EnterNode});
    const QString node = QString::fromStdWString(shown_.value);
    if (!shown_.mixed && nodes_.IsManualNode(node))
        entries.push_back({tr("Edit..."), EditNode});
    return entries;
}

void NodeComboBox::Refill()
{
    // The list is filled when it closes.
    if (IsOpen())
        return;
    const QSignalBlocker silent(this);
    Fill(Entries());
    if (shown_.mixed) {
        MarkMixedRow();
        setCurrentIndex(0);
        setToolTip(QString());
        return;
    }
    const int found =
        findData(QString::fromStdWString(shown_.value), Qt::UserRole, Qt::MatchFixedString);
    setCurrentIndex(std::max(0, found));
    nodes_.lastIPIndex = currentIndex();
    setToolTip(Qt::convertFromPlainText(currentText())); // a node's name may look like HTML
}

/// Counts change often: entries whose node is the same stay and only get their text.
void NodeComboBox::Fill(const std::vector<Entry>& entries)
{
    const auto isEntry = [this](int row, const Entry& entry) {
        return itemData(row) == entry.data;
    };
    int same = 0;
    const int wanted = static_cast<int>(entries.size());
    while (same < std::min(wanted, count()) &&
           isEntry(same, entries[static_cast<std::size_t>(same)]))
        ++same;
    if (same < wanted || count() > wanted) {
        clear();
        for (const Entry& entry : entries)
            addItem(entry.text, entry.data);
        return;
    }
    for (int row = 0; row < wanted; ++row) {
        const QString& text = entries[static_cast<std::size_t>(row)].text;
        if (itemText(row) != text)
            setItemText(row, text);
    }
}

void NodeComboBox::MarkMixedRow()
{
    SetTone(0, Tone::Mixed);
    QStandardItem* row = qobject_cast<QStandardItemModel*>(model())->item(0);
    row->setFlags(row->flags() & ~Qt::ItemIsSelectable);
}

void NodeComboBox::showEvent(QShowEvent* event)
{
    Refill();
    SteadyComboBox::showEvent(event);
}

void NodeComboBox::showPopup()
{
    // Wide enough for the names, however narrow the panel is.
    const int names =
        view()->sizeHintForColumn(0) + view()->verticalScrollBar()->sizeHint().width();
    view()->setMinimumWidth(std::max(width(), names));
    SteadyComboBox::showPopup();
}
