// SPDX-License-Identifier: MIT
#include "UI/FixtureImport/ImportDetails.h"

#include <algorithm>

#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTreeView>
#include <QVBoxLayout>

#include "UI/FixtureImport/ImportAnswers.h"
#include "UI/FixtureImport/ImportChannelTable.h"
#include "UI/FixtureImport/ImportTreeModel.h"
#include "UI/FixtureImport/MapPicture.h"

using FixtureImport::ImportedMode;
using FixtureImport::PlanNode;
using FixtureImport::PlanState;

namespace {

constexpr int PictureHeight = 150;
constexpr int LinesOfDetail = 3;
constexpr int MeasuredRows = 60;
constexpr int WidestName = 180;

/// The pixels of a fixture, and what the operator has to know of it.
QString FixtureWords(const ImportedMode& mode)
{
    const PixelMap& map = mode.fixture->pixelMap;
    QStringList lines = {
        ImportDetails::tr("%1, %2, %n channel(s)", nullptr, mode.fixture->GetChannelCount())
            .arg(MapInWords(map), QString::fromWCharArray(PixelMapTypeToText(map.GetType())))};
    if (!mode.placed)
        lines << ImportDetails::tr("The definition doesn't say where the pixels are: they are in a "
                                   "row.");
    if (mode.endsBeyondReach)
        lines << ImportDetails::tr("The last pixel is not sent: it ends on channel 512.");
    return lines.join(QLatin1Char('\n'));
}

/// Under which name the operator finds it.
QString TitleOf(const PlanNode& node)
{
    if (node.mode.fixture)
        return node.ProductInLibrary();
    const bool isMode = node.kind == PlanNode::Kind::Fixture && node.parent &&
                        node.parent->kind == PlanNode::Kind::Definition;
    return isMode ? ImportDetails::tr("%1 - %2").arg(node.parent->name, node.name) : node.name;
}

QString WordsFor(const PlanNode& node)
{
    if (node.mode.fixture)
        return FixtureWords(node.mode);
    if (node.IsLeaf())
        return InWords(node.mode.fault) + QLatin1Char('\n') + QDir::toNativeSeparators(node.path);
    return QDir::toNativeSeparators(node.path);
}

} // namespace

ImportDetails::ImportDetails(QWidget* parent)
    : QWidget(parent)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    picture_ = new MapPicture;
    picture_->setObjectName(QStringLiteral("importPicture"));
    picture_->setAccessibleName(tr("Picture of the pixels"));
    picture_->setFixedHeight(PictureHeight);
    column->addWidget(picture_);
    nameLabel_ = AddText("importName");
    QFont bold = nameLabel_->font();
    bold.setBold(true);
    nameLabel_->setFont(bold);
    wordsLabel_ = AddText("importWords");
    wordsLabel_->setMinimumHeight(LinesOfDetail * fontMetrics().lineSpacing());
    answerLabel_ = new QLabel(tr("&The library has another of this name:"));
    answers_ = new ImportAnswers;
    answers_->setObjectName(QStringLiteral("importAnswer"));
    answers_->setAccessibleName(tr("The library has another of this name"));
    answerLabel_->setBuddy(answers_);
    connect(answers_, &ImportAnswers::answered, this, &ImportDetails::answered);
    auto* row = new QHBoxLayout;
    row->addWidget(answerLabel_);
    row->addWidget(answers_, 1);
    column->addLayout(row);
    channels_ = new ImportChannelTable(this);
    channelList_ = new QTreeView;
    channelList_->setObjectName(QStringLiteral("importChannels"));
    channelList_->setAccessibleName(tr("Channels of the fixture"));
    channelList_->setModel(channels_);
    channelList_->setRootIsDecorated(false);
    channelList_->setUniformRowHeights(true);
    channelList_->setAllColumnsShowFocus(true);
    channelList_->setAlternatingRowColors(true);
    channelList_->header()->setSectionsMovable(false);
    channelList_->header()->setResizeContentsPrecision(MeasuredRows);
    FitColumns();
    column->addWidget(channelList_, 1);
    Show(nullptr);
}

QLabel* ImportDetails::AddText(const char* objectName)
{
    auto* label = new QLabel;
    label->setObjectName(QLatin1String(objectName));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    layout()->addWidget(label);
    return label;
}

/// What a column can't hold is read in its tool tip.
void ImportDetails::FitColumns()
{
    for (int column = 0; column < ImportChannelTable::ColumnCount; ++column)
        channelList_->resizeColumnToContents(column);
    const int name = channelList_->columnWidth(ImportChannelTable::NameColumn);
    channelList_->setColumnWidth(ImportChannelTable::NameColumn, std::min(name, WidestName));
}

void ImportDetails::Show(const PlanNode* node)
{
    const bool isFixture = node && node->mode.fixture;
    picture_->Show(isFixture ? std::optional(node->mode.fixture->pixelMap) : std::nullopt);
    nameLabel_->setText(node ? TitleOf(*node) : QString());
    wordsLabel_->setText(node ? WordsFor(*node) : QString());
    const bool differs = isFixture && node->state == PlanState::Differs;
    answerLabel_->setVisible(differs);
    answers_->setVisible(differs);
    if (differs)
        answers_->Show(node->Answer());
    if (isFixture)
        channels_->Show(node->mode);
    else
        channels_->Clear();
    FitColumns();
}
