// SPDX-License-Identifier: MIT
#include "UI/Inspector/ArtNetPatchPage.h"

#include <algorithm>
#include <utility>

#include <QFormLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "FixtureModel/DMXMapping.h"
#include "FixtureModel/FreePatch.h"
#include "Language/Language.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "UI/Commands/AddressCommands.h"
#include "UI/Commands/PushStep.h"
#include "UI/Inspector/InspectorCanvas.h"
#include "UI/Inspector/ManualNodeEditing.h"
#include "UI/Inspector/NodeComboBox.h"
#include "UI/Inspector/PatchWords.h"
#include "UI/Inspector/SharedSpinBox.h"

namespace {

constexpr int LastUniverse = PatchAddress::UniversesInSubnet - 1;
constexpr int LastSubnet = PatchAddress::SubnetCount - 1;
constexpr int LinesOfWords = 2;

/// A value may lie outside of its range, since a document may hold any: a step never takes it
/// further out.
std::int32_t Stepped(std::int32_t value, int steps, std::int32_t lowest, std::int32_t highest)
{
    if ((steps > 0 && value >= highest) || (steps < 0 && value <= lowest))
        return value;
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(std::int64_t{value} + steps, lowest, highest));
}

} // namespace

ArtNetPatchPage::ArtNetPatchPage(const Parts& parts, QWidget* parent)
    : QWidget(parent)
    , parts_(parts)
{
    setObjectName(QStringLiteral("ArtNetPatchProperties"));
    auto* form = new QFormLayout;
    spinBoxDMXChannel =
        AddBox(*form, "spinBoxDMXChannel", QT_TR_NOOP("D&MX:"), QT_TR_NOOP("First DMX channel"));
    spinBoxArtnetUniv =
        AddBox(*form, "spinBoxArtnetUniv", QT_TR_NOOP("&Universe:"), QT_TR_NOOP("Universe"));
    spinBoxArtnetSubnet =
        AddBox(*form, "spinBoxArtnetSubnet", QT_TR_NOOP("&Sub-Net:"), QT_TR_NOOP("Sub-net"));
    comboBoxsArtnetIP = new NodeComboBox(parts_.nodes);
    comboBoxsArtnetIP->setObjectName(QStringLiteral("comboBoxsArtnetIP"));
    AddRow(*form, *comboBoxsArtnetIP, QT_TR_NOOP("&IP Address:"),
           QT_TR_NOOP("IP address of the node"));

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(form);
    layout->addWidget(errorMessage = AddWords("errorMessage"));
    layout->addWidget(labelPatchWords = AddWords("labelPatchWords"));
    // Most elements need so many lines: what is below must not move with each selection.
    labelPatchWords->setMinimumHeight(LinesOfWords * labelPatchWords->fontMetrics().lineSpacing());
    errorMessage->hide();

    connect(spinBoxDMXChannel, &SharedSpinBox::typed, this, &ArtNetPatchPage::artnetDMXspinChanged);
    connect(spinBoxDMXChannel, &SharedSpinBox::stepped, this, &ArtNetPatchPage::StepChannel);
    connect(spinBoxArtnetUniv, &SharedSpinBox::typed, this,
            &ArtNetPatchPage::artnetUnivSpinChanged);
    connect(spinBoxArtnetUniv, &SharedSpinBox::stepped, this, [this](int steps) {
        StepEach(steps, &DMXMappingArtNet::GetUniverse, &DMXMappingArtNet::SetUniverse, 0,
                 [](std::int64_t) { return LastUniverse; });
    });
    connect(spinBoxArtnetSubnet, &SharedSpinBox::typed, this,
            &ArtNetPatchPage::artnetSubnetSpinChanged);
    connect(spinBoxArtnetSubnet, &SharedSpinBox::stepped, this, [this](int steps) {
        StepEach(steps, &DMXMappingArtNet::GetSubnet, &DMXMappingArtNet::SetSubnet, 0,
                 [](std::int64_t) { return LastSubnet; });
    });
    connect(comboBoxsArtnetIP, qOverload<int>(&QComboBox::activated), this,
            &ArtNetPatchPage::artnetIPcomboChanged);
    manualNodes_ = std::make_unique<ManualNodeEditing>(
        ManualNodeEditing::Parts{parts_.manager, parts_.nodes, parts_.undoStack, parts_.boxes,
                                 parts_.canvas, *comboBoxsArtnetIP});
    WatchDocument();
}

ArtNetPatchPage::~ArtNetPatchPage() = default;

SharedSpinBox* ArtNetPatchPage::AddBox(QFormLayout& form, const char* name, const char* label,
                                       const char* accessibleName)
{
    auto* box = new SharedSpinBox;
    box->setObjectName(QLatin1String(name));
    AddRow(form, *box, label, accessibleName);
    return box;
}

void ArtNetPatchPage::AddRow(QFormLayout& form, QWidget& field, const char* label,
                             const char* accessibleName)
{
    auto* buddy = new QLabel;
    buddy->setBuddy(&field);
    form.addRow(buddy, &field);
    InEachLanguage(&field, [&field, buddy, label, accessibleName] {
        buddy->setText(tr(label));
        field.setAccessibleName(tr(accessibleName));
    });
}

QLabel* ArtNetPatchPage::AddWords(const char* name)
{
    auto* label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

/// The words are about all elements, also those that are not selected.
void ArtNetPatchPage::WatchDocument()
{
    wordsDue_.setSingleShot(true);
    connect(&wordsDue_, &QTimer::timeout, this, &ArtNetPatchPage::RefreshWords);
    // A change of many comes as several of these. What was read of the selected elements follows.
    const MappedDeviceModel* document = parts_.manager.GetMappedDeviceModel();
    const auto soon = [this] {
        wordsDue_.start();
    };
    connect(&Language::Instance(), &Language::changed, this, soon);
    connect(document, &MappedDeviceModel::dataChanged, this, soon);
    connect(document, &MappedDeviceModel::rowsInserted, this, soon);
    connect(document, &MappedDeviceModel::rowsRemoved, this, soon);
    connect(document, &MappedDeviceModel::modelReset, this, [this] {
        manualNodes_->Stop();
        ids_.clear();
    });
}

// ---- Showing -----------------------------------------------------------------------------------

void ArtNetPatchPage::Show(const ElementFields& fields, const ElementIds& ids)
{
    const bool others = ids != ids_;
    if (others) {
        for (SharedSpinBox* box : {spinBoxDMXChannel, spinBoxArtnetUniv, spinBoxArtnetSubnet})
            box->Forget();
        ids_ = ids;
    }
    if (!fields.allArtNet)
        return;
    lastStartChannel_ = fields.lastStartChannel;
    ShowNumber(*spinBoxDMXChannel, fields.channel, 1, lastStartChannel_);
    ShowNumber(*spinBoxArtnetUniv, fields.universe, 0, LastUniverse);
    ShowNumber(*spinBoxArtnetSubnet, fields.subnet, 0, LastSubnet);
    const bool otherNode = !(node_ == fields.nodeText);
    node_ = fields.nodeText;
    comboBoxsArtnetIP->Show(node_);
    if (others || otherNode || wordsDue_.isActive())
        RefreshWords();
}

/// An element outside of the range shows the value that it has.
void ArtNetPatchPage::ShowNumber(SharedSpinBox& box, const Shared<std::int32_t>& value, int lowest,
                                 int highest)
{
    const int low = value.mixed ? lowest : std::min(lowest, value.value);
    const int high = value.mixed ? highest : std::max(highest, value.value);
    {
        const QSignalBlocker silent(&box);
        if (box.minimum() != low || box.maximum() != high)
            box.setRange(low, high);
    }
    box.Show(value);
}

void ArtNetPatchPage::SetNetwork(const QString& network)
{
    comboBoxsArtnetIP->SetNetwork(network);
    wordsDue_.start();
}

void ArtNetPatchPage::showEvent(QShowEvent* event)
{
    RefreshWords();
    QWidget::showEvent(event);
}

void ArtNetPatchPage::RefreshWords()
{
    wordsDue_.stop();
    if (!isVisible())
        return;
    const PatchWords words = WordsForPatch(parts_.manager, ids_);
    errorMessage->setText(words.inConflict
                              ? tr("Universe is used by devices in unicast and broadcast mode")
                              : QString());
    errorMessage->setVisible(words.inConflict);
    QStringList lines{words.occupied, words.overlaps};
    if (!node_.mixed && comboBoxsArtnetIP->IsOutside(node_.value))
        lines.append(tr("%1 is not in the chosen network: nothing is sent to it")
                         .arg(QString::fromStdWString(node_.value)));
    lines.removeAll(QString());
    labelPatchWords->setText(lines.join(QLatin1Char('\n')));
}

// ---- Numbers -----------------------------------------------------------------------------------

void ArtNetPatchPage::artnetDMXspinChanged(int newValue)
{
    // The box goes up to the value of an element that is already too far.
    changeArtNetMappingProperty([newValue, last = lastStartChannel_](DMXMappingArtNet& address) {
        if (address.GetChannel() != newValue)
            address.SetChannel(std::clamp(newValue, 1, last));
    });
}

void ArtNetPatchPage::artnetUnivSpinChanged(int newValue)
{
    changeArtNetMappingProperty([newValue](DMXMappingArtNet& address) {
        if (address.GetUniverse() != newValue)
            address.SetUniverse(std::clamp(newValue, 0, LastUniverse));
    });
}

void ArtNetPatchPage::artnetSubnetSpinChanged(int newValue)
{
    changeArtNetMappingProperty([newValue](DMXMappingArtNet& address) {
        if (address.GetSubnet() != newValue)
            address.SetSubnet(std::clamp(newValue, 0, LastSubnet));
    });
}

void ArtNetPatchPage::StepChannel(int steps)
{
    const MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    StepEach(steps, &DMXMappingArtNet::GetChannel, &DMXMappingArtNet::SetChannel, 1,
             [&document](std::int64_t id) {
                 return PatchAddress::LastStart(
                     document.GetItemByUniqueID(id)->GetFixture().GetChannelCount());
             });
}

void ArtNetPatchPage::StepEach(int steps, Getter get, Setter set, std::int32_t lowest,
                               const std::function<std::int32_t(std::int64_t)>& highestOf)
{
    Push(std::make_unique<AddressCommand>(
        parts_.manager, ids_, [&](std::int64_t id, DMXMappingArtNet& address) {
            (address.*set)(Stepped((address.*get)(), steps, lowest, highestOf(id)));
        }));
}

void ArtNetPatchPage::changeArtNetMappingProperty(
    const std::function<void(DMXMappingArtNet&)>& setter)
{
    Push(std::make_unique<AddressCommand>(parts_.manager, ids_, setter));
}

void ArtNetPatchPage::Push(std::unique_ptr<AddressCommand> command)
{
    parts_.canvas.EndGesture();
    PushStep(parts_.undoStack, std::move(command));
}

// ---- Nodes -------------------------------------------------------------------------------------

void ArtNetPatchPage::artnetIPcomboChanged(int index)
{
    const QVariant choice = comboBoxsArtnetIP->itemData(index);
    const QString address = choice.toString();
    if (address == NodeComboBox::EditNode) {
        manualNodes_->Edit(comboBoxsArtnetIP->LastAccepted());
    } else if (address == NodeComboBox::EnterNode) {
        const ElementIds sent = ids_; // the selection may change behind the dialog
        manualNodes_->Enter(sent);
    } else if (choice.isValid()) {
        parts_.nodes.lastIPIndex = index;
        const QString name = parts_.nodes.GetNodeName(address);
        changeArtNetMappingProperty([&](DMXMappingArtNet& mapping) {
            mapping.SetNode(address.toStdWString(), name.toStdWString());
        });
    }
    // Back to what the elements have, whatever came of it.
    comboBoxsArtnetIP->Refill();
}
