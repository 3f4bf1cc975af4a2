// SPDX-License-Identifier: MIT
#include "UI/Repatch/RepatchDialog.h"

#include <algorithm>
#include <set>
#include <utility>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTreeView>
#include <QVBoxLayout>

#include "FixtureModel/DMXMapping.h"
#include "Model/PatchText.h"
#include "UI/Repatch/OrderPicture.h"
#include "UI/Repatch/RepatchTable.h"
#include "UI/Widgets/LabelledField.h"
#include "UI/Widgets/TroubleDelegate.h"

namespace {

constexpr QSize DialogSize(1000, 520);
constexpr QSize LeastPicture(240, 110);
constexpr int ListWidth = 580;
constexpr int CellMargin = 14;
constexpr int LinesOfWords = 2;

/// The entries of the first list.
enum OrderEntry : int
{
    RowByRow,
    ColumnByColumn,
    ByAddress,
    AsListed
};

OrderEntry EntryOf(const RepatchOptions& options)
{
    switch (options.sequence) {
    case RepatchOptions::ByAddress:
        return ByAddress;
    case RepatchOptions::AsListed:
        return AsListed;
    default:
        return options.place.lines == ElementOrder::Rows ? RowByRow : ColumnByColumn;
    }
}

template <class Button>
Button* MakeButton(const char* objectName, const QString& text, const QString& toolTip)
{
    auto* button = new Button(text);
    button->setObjectName(QLatin1String(objectName));
    button->setToolTip(toolTip);
    return button;
}

/// As wide as such texts, whatever the rows have: thousands would have to be measured.
void SetWidths(QTreeView& list)
{
    const QFontMetrics metrics = list.fontMetrics();
    const auto widthOf = [&metrics](const char* text) {
        return metrics.horizontalAdvance(QLatin1String(text)) + CellMargin;
    };
    const int address = widthOf("15/15/512");
    list.setColumnWidth(RepatchTable::NumberColumn, widthOf("0,000"));
    list.setColumnWidth(RepatchTable::DescriptionColumn, widthOf("COLORband PiX-12"));
    list.setColumnWidth(RepatchTable::PresentColumn, address);
    list.setColumnWidth(RepatchTable::NewColumn, address + CellMargin + CellMargin / 2); // a mark
    list.setColumnWidth(RepatchTable::NodeColumn, address);
}

/// A number with its label in a row of several.
QSpinBox* AddNumber(QHBoxLayout& row, const char* objectName, const QString& label, int lowest,
                    int highest)
{
    QLabel* buddy = nullptr;
    auto* box = MakeField<QSpinBox>(objectName, label, buddy);
    box->setRange(lowest, highest);
    row.addWidget(buddy);
    row.addWidget(box, 1);
    return box;
}

} // namespace

RepatchDialog::RepatchDialog(const Repatch& repatch, const RepatchOptions& options, QWidget* parent)
    : FixedDialog(DialogSize, parent)
    , repatch_(repatch)
    , table_(new RepatchTable(repatch, this))
{
    setObjectName(QStringLiteral("RepatchDialog"));
    setWindowTitle(tr("Repatch"));
    auto* left = new QVBoxLayout;
    left->addWidget(MakeOrder(), 1);
    left->addWidget(MakeAddresses());
    auto* columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addLayout(MakePreview(), 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    QDialogButtonBox* buttons = MakeButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    okButton_ = buttons->button(QDialogButtonBox::Ok);
    okButton_->setDefault(true);
    layout->addWidget(buttons);
    OfferNodes({});
    TakeOptions(options);
    ConnectOptions();
    Follow();
}

void RepatchDialog::showEvent(QShowEvent* event)
{
    FixedDialog::showEvent(event);
    orderCombo->setFocus(); // What scrolls on a small screen has lost it.
}

// ---- Building ----------------------------------------------------------------------------------

QGroupBox* RepatchDialog::MakeOrder()
{
    auto* group = new QGroupBox(tr("Order"));
    auto* form = new QFormLayout;
    orderCombo = AddRow<QComboBox>(*form, "orderCombo", tr("&Order:"));
    orderCombo->addItems({tr("By place, row by row"), tr("By place, column by column"),
                          tr("By present address"), tr("As in the list")});
    cornerCombo = AddRow<QComboBox>(*form, "cornerCombo", tr("&From:"));
    cornerCombo->addItems({tr("Top left"), tr("Top right"), tr("Bottom left"), tr("Bottom right")});
    snakeCheck = MakeButton<QCheckBox>("snakeCheck", QString(),
                                       tr("The cable goes on where it ends, and does not return to "
                                          "the side where it began."));
    form->addRow(snakeCheck);
    orderPicture = new OrderPicture;
    orderPicture->setObjectName(QStringLiteral("orderPicture"));
    orderPicture->setMinimumSize(LeastPicture);
    std::vector<QPolygonF> outlines;
    outlines.reserve(repatch_.Elements().size());
    for (const Repatch::Element& element : repatch_.Elements())
        outlines.push_back(element.outline);
    orderPicture->SetOutlines(std::move(outlines));
    auto* layout = new QVBoxLayout(group);
    layout->addLayout(form);
    layout->addWidget(orderPicture, 1);
    return group;
}

QGroupBox* RepatchDialog::MakeAddresses()
{
    auto* group = new QGroupBox(tr("Addresses"));
    auto* start = new QHBoxLayout;
    subnetSpin = AddNumber(*start, "subnetSpin", tr("&Sub-Net:"), 0, PatchAddress::SubnetCount - 1);
    universeSpin =
        AddNumber(*start, "universeSpin", tr("&Universe:"), 0, PatchAddress::UniversesInSubnet - 1);
    channelSpin = AddNumber(*start, "channelSpin", tr("D&MX:"), 1, PatchAddress::LastChannel);
    auto* gap = new QHBoxLayout;
    gapSpin = AddNumber(*gap, "gapSpin", tr("&Gap:"), 0, PatchRules::LargestGap);
    gapSpin->setToolTip(tr("Channels that stay free between two fixtures"));
    behindButton = MakeButton<QPushButton>(
        "behindButton", tr("Start &Behind the Others"),
        tr("Start at the first free address behind all fixtures that are not selected"));
    behindButton->setAutoDefault(false);
    behindButton->setEnabled(repatch_.BehindTheOthers(1).has_value());
    gap->addWidget(behindButton);
    // Its style gives the button a minimum that a large font exceeds.
    behindButton->ensurePolished();
    gap->addStrut(behindButton->sizeHint().height());
    neverSplitCheck = MakeButton<QCheckBox>(
        "neverSplitCheck", tr("&Never split a pixel or a fixture"),
        tr("A fixture is sent in one universe: what reaches beyond channel 512 is not sent.\n"
           "On: a fixture that would reach beyond 512 begins the next universe.\n"
           "Off: addresses run on over the end of a universe, as a controller counts that uses "
           "all 512 channels; the fixture on the end loses the channels beyond 512."));
    newUniverseCheck = MakeButton<QCheckBox>(
        "newUniverseCheck", QString(),
        tr("For a controller with an output for each row: each one begins at channel 1, and the "
           "rest of the universe before it stays free."));
    QLabel* buddy = nullptr;
    nodeCombo = MakeField<QComboBox>("nodeCombo", tr("Nod&e:"), buddy);
    nodeCombo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* node = new QHBoxLayout;
    node->addWidget(buddy);
    node->addWidget(nodeCombo, 1);
    auto* layout = new QVBoxLayout(group);
    layout->addLayout(start);
    layout->addLayout(gap);
    layout->addWidget(neverSplitCheck);
    layout->addWidget(newUniverseCheck);
    layout->addLayout(node);
    return group;
}

QVBoxLayout* RepatchDialog::MakePreview()
{
    previewList = new QTreeView;
    previewList->setObjectName(QStringLiteral("previewList"));
    previewList->setAccessibleName(tr("New addresses"));
    previewList->setRootIsDecorated(false);
    previewList->setUniformRowHeights(true); // Thousands of rows are measured once.
    previewList->setAllColumnsShowFocus(true);
    previewList->setAlternatingRowColors(true);
    previewList->setMinimumWidth(ListWidth);
    previewList->setItemDelegate(
        new TroubleDelegate(TroubleRole, RepatchTable::NewColumn, previewList));
    previewList->setModel(table_);
    previewList->header()->setSectionsMovable(false);
    SetWidths(*previewList);
    connect(previewList->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &RepatchDialog::ShowCurrent);
    problemLabel = new QLabel;
    problemLabel->setObjectName(QStringLiteral("problemLabel"));
    problemLabel->setTextFormat(Qt::PlainText);
    problemLabel->setWordWrap(true);
    problemLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    problemLabel->setMinimumHeight(LinesOfWords * fontMetrics().lineSpacing());
    totalsLabel = new QLabel;
    totalsLabel->setObjectName(QStringLiteral("totalsLabel"));
    nextProblemButton = MakeButton<QPushButton>("nextProblemButton", tr("Next &Problem"), {});
    nextProblemButton->setAutoDefault(false);
    connect(nextProblemButton, &QPushButton::clicked, this, &RepatchDialog::ShowNextProblem);
    auto* below = new QHBoxLayout;
    below->addWidget(totalsLabel, 1);
    below->addWidget(nextProblemButton);
    auto* layout = new QVBoxLayout;
    layout->addWidget(previewList, 1);
    layout->addWidget(problemLabel);
    layout->addLayout(below);
    return layout;
}

void RepatchDialog::ConnectOptions()
{
    for (QComboBox* box : {orderCombo, cornerCombo, nodeCombo})
        connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, &RepatchDialog::Follow);
    for (QSpinBox* box : {subnetSpin, universeSpin, channelSpin, gapSpin})
        connect(box, qOverload<int>(&QSpinBox::valueChanged), this, &RepatchDialog::Follow);
    for (QCheckBox* box : {snakeCheck, neverSplitCheck, newUniverseCheck})
        connect(box, &QCheckBox::toggled, this, &RepatchDialog::Follow);
    connect(behindButton, &QPushButton::clicked, this, &RepatchDialog::StartBehindTheOthers);
}

// ---- Options -----------------------------------------------------------------------------------

void RepatchDialog::TakeOptions(const RepatchOptions& options)
{
    orderCombo->setCurrentIndex(EntryOf(options));
    cornerCombo->setCurrentIndex(options.place.from);
    snakeCheck->setChecked(options.place.snake);
    subnetSpin->setValue(options.rules.start.subnet);
    universeSpin->setValue(options.rules.start.universe);
    channelSpin->setValue(options.rules.start.channel);
    gapSpin->setValue(options.rules.gap);
    neverSplitCheck->setChecked(options.rules.neverSplit);
    newUniverseCheck->setChecked(options.rules.lineBeginsUniverse);
}

RepatchOptions RepatchDialog::GetOptions() const
{
    RepatchOptions options;
    const int order = orderCombo->currentIndex();
    options.sequence = order == ByAddress  ? RepatchOptions::ByAddress
                       : order == AsListed ? RepatchOptions::AsListed
                                           : RepatchOptions::ByPlace;
    options.place.lines = order == ColumnByColumn ? ElementOrder::Columns : ElementOrder::Rows;
    options.place.from = static_cast<ElementOrder::Corner>(cornerCombo->currentIndex());
    options.place.snake = snakeCheck->isChecked();
    options.rules.start = {subnetSpin->value(), universeSpin->value(), channelSpin->value()};
    options.rules.gap = gapSpin->value();
    options.rules.neverSplit = neverSplitCheck->isChecked();
    options.rules.lineBeginsUniverse = newUniverseCheck->isChecked();
    if (nodeCombo->currentIndex() > 0) {
        const QStringList node = nodeCombo->currentData().toStringList();
        options.node = {node.front().toStdWString(), node.back().toStdWString()};
    }
    return options;
}

std::vector<ElementAddress> RepatchDialog::GetAddresses() const
{
    return repatch_.AddressesOf(table_->Rows());
}

/// The data of an entry are the address and the name of its node; none for "As it is".
QString RepatchDialog::AddressAt(int entry) const
{
    return nodeCombo->itemData(entry).toStringList().value(0);
}

void RepatchDialog::OfferNodes(const std::vector<NodeChoice>& nodes)
{
    if (nodeCombo->view()->isVisible())
        return; // An open list stays as it is.
    const QStringList chosen = nodeCombo->currentData().toStringList();
    const QString chosenText = nodeCombo->currentText();
    {
        const QSignalBlocker silent(nodeCombo);
        nodeCombo->clear();
        nodeCombo->addItem(tr("As it is"), QStringList());
        const QString automatic = QString::fromWCharArray(AutoNode);
        nodeCombo->addItem(automatic, QStringList{automatic, QString()});
        for (const NodeChoice& node : nodes)
            nodeCombo->addItem(node.Text(), QStringList{node.address, node.name});
        int entry = 0;
        while (entry < nodeCombo->count() && AddressAt(entry) != chosen.value(0))
            ++entry;
        if (entry == nodeCombo->count()) // A node that is silent now stays chosen.
            nodeCombo->addItem(chosenText, chosen);
        nodeCombo->setCurrentIndex(entry);
    }
    if (okButton_ && nodeCombo->currentData().toStringList() != chosen)
        Follow();
}

void RepatchDialog::StartBehindTheOthers()
{
    const auto& rows = table_->Rows();
    const auto free =
        repatch_.BehindTheOthers(repatch_.Elements()[rows.front().element].channelCount);
    if (!free)
        return;
    {
        const QSignalBlocker silentSubnet(subnetSpin);
        const QSignalBlocker silentUniverse(universeSpin);
        const QSignalBlocker silentChannel(channelSpin);
        subnetSpin->setValue(free->subnet);
        universeSpin->setValue(free->universe);
        channelSpin->setValue(free->channel);
    }
    Follow();
}

// ---- Showing -----------------------------------------------------------------------------------

void RepatchDialog::Follow()
{
    const RepatchOptions options = GetOptions();
    const bool byPlace = options.sequence == RepatchOptions::ByPlace;
    const bool columns = options.place.lines == ElementOrder::Columns;
    for (QWidget* widget :
         std::initializer_list<QWidget*>{cornerCombo, snakeCheck, newUniverseCheck})
        widget->setEnabled(byPlace);
    snakeCheck->setText(columns ? tr("Sna&ke: every second column runs back")
                                : tr("Sna&ke: every second row runs back"));
    newUniverseCheck->setText(columns ? tr("Start each column on a new uni&verse")
                                      : tr("Start each row on a new uni&verse"));
    table_->Show(repatch_.Plan(options));
    std::vector<OrderPicture::Stop> path;
    path.reserve(table_->Rows().size());
    for (const RepatchRow& row : table_->Rows())
        path.push_back({row.element, row.beginsLine});
    orderPicture->ShowPath(std::move(path));
    ShowCurrent();
    ShowTotals();
}

/// The whole of what the list has no room for, and the place in the picture.
void RepatchDialog::ShowCurrent()
{
    const int row = previewList->currentIndex().row();
    orderPicture->Mark(row);
    problemLabel->setText(row < 0 ? QString()
                                  : table_->Rows()[static_cast<std::size_t>(row)].Words());
}

void RepatchDialog::ShowTotals()
{
    std::set<int> universes;
    int problems = 0;
    bool changes = false;
    for (const RepatchRow& row : table_->Rows()) {
        if (row.address)
            universes.insert(row.address->GetPortAddress());
        problems += row.faults ? 1 : 0;
        changes = changes || repatch_.Changes(row);
    }
    const QLocale locale;
    QStringList totals{tr("Fixtures: %1").arg(locale.toString(table_->rowCount()))};
    if (!universes.empty())
        totals << tr("Universes: %1 (%2 to %3)")
                      .arg(locale.toString(static_cast<int>(universes.size())),
                           UniverseText(*universes.begin()), UniverseText(*universes.rbegin()));
    totals << tr("Problems: %1").arg(locale.toString(problems));
    totalsLabel->setText(totals.join(QStringLiteral("    ")));
    nextProblemButton->setEnabled(problems > 0);
    okButton_->setEnabled(changes);
}

void RepatchDialog::ShowNextProblem()
{
    const int row = table_->NextInTrouble(previewList->currentIndex().row());
    if (row >= 0)
        previewList->setCurrentIndex(table_->index(row, RepatchTable::NumberColumn));
}
