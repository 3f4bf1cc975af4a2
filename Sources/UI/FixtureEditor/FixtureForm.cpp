// SPDX-License-Identifier: MIT
#include "UI/FixtureEditor/FixtureForm.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

#include "UI/FixtureEditor/ChannelTable.h"
#include "UI/FixtureEditor/CornerButton.h"
#include "UI/FixtureEditor/ZenPixelMap.h"
#include "UI/Widgets/LabelledField.h"

namespace {

constexpr QSize PixelMapSize(620, 385);
constexpr int Spacing = 5;
constexpr int WideSpacing = 16;
constexpr QMargins GroupMargins(8, 4, 8, 6);
constexpr QMargins TabMargins(6, 6, 6, 6);

QGroupBox* MakeBox(const char* objectName, const QString& title)
{
    auto* group = new QGroupBox(title);
    group->setObjectName(QLatin1String(objectName));
    return group;
}

template <class Layout>
Layout* LayOut(QWidget& widget, const QMargins& margins)
{
    auto* layout = new Layout(&widget);
    layout->setContentsMargins(margins);
    layout->setSpacing(Spacing);
    return layout;
}

QPushButton* MakeButton(const char* objectName, const QString& text)
{
    auto* button = new QPushButton(text);
    button->setObjectName(QLatin1String(objectName));
    return button;
}

} // namespace

FixtureForm::FixtureForm(QDialogButtonBox& buttons, QWidget* parent)
    : QWidget(parent)
{
    auto* product = MakeProduct();
    auto* map = MakePixelMap();
    settingsPeronalityTabWidget = new QTabWidget;
    settingsPeronalityTabWidget->setObjectName(QStringLiteral("settingsPeronalityTabWidget"));
    settingsPeronalityTabWidget->addTab(MakeSettingsTab(), tr("&Settings"));
    settingsPeronalityTabWidget->addTab(MakePersonalityTab(), tr("P&ersonality"));
    auto* left = new QVBoxLayout;
    left->setSpacing(Spacing);
    left->addWidget(product);
    left->addWidget(map);
    left->addStretch();
    auto* right = new QVBoxLayout;
    right->setSpacing(Spacing);
    right->addWidget(settingsPeronalityTabWidget, 1);
    right->addWidget(&buttons);
    auto* columns = LayOut<QHBoxLayout>(*this, {});
    columns->addLayout(left);
    columns->addLayout(right, 1);
}

// ---- Left: names and pixels --------------------------------------------------------------------

QGroupBox* FixtureForm::MakeProduct()
{
    auto* group = MakeBox("groupBox", tr("Product Information"));
    auto* row = LayOut<QHBoxLayout>(*group, GroupMargins);
    QLabel* label = nullptr;
    editProductName = MakeField<QLineEdit>("editProductName", tr("&Product Name:"), label);
    row->addWidget(label);
    row->addWidget(editProductName, 1);
    row->addSpacing(WideSpacing);
    comboManufacturer = MakeField<QComboBox>("comboManufacturer", tr("&Manufacturer:"), label);
    comboManufacturer->setEditable(true);
    comboManufacturer->setInsertPolicy(QComboBox::NoInsert);
    // What is typed is the name, also when a known one begins with it or is spelt differently.
    comboManufacturer->setCompleter(nullptr);
    comboManufacturer->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    row->addWidget(label);
    row->addWidget(comboManufacturer, 1);
    return group;
}

QGroupBox* FixtureForm::MakePixelMap()
{
    auto* group = MakeBox("groupPixelMap", tr("Pixel Mapping"));
    auto* column = LayOut<QVBoxLayout>(*group, GroupMargins);
    QLabel* label = nullptr;
    nextChannel = MakeField<QSpinBox>("nextChannel", tr("&Next Channel:"), label);
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(nextChannel);
    row->addStretch();
    column->addLayout(row);

    pixelMap = new QScrollArea;
    pixelMap->setObjectName(QStringLiteral("pixelMap"));
    pixelMap->setFrameShape(QFrame::NoFrame);
    pixelMap->setFixedSize(PixelMapSize);
    pixelMap->setFocusPolicy(Qt::NoFocus); // the keyboard goes to the cells
    pixelMap->setWidgetResizable(true);
    pixelMapWidget = new ZenPixelMap;
    pixelMap->setWidget(pixelMapWidget);
    column->addWidget(pixelMap);

    cellInfo = new QLabel;
    cellInfo->setObjectName(QStringLiteral("cellInfo"));
    cellInfo->setTextFormat(Qt::PlainText);
    // Neither a long line nor none moves anything. Qt 6 may round the height of a line up once it
    // is drawn.
    cellInfo->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    cellInfo->setFixedHeight(cellInfo->fontMetrics().height() + 1);
    column->addWidget(cellInfo);
    connect(pixelMapWidget, &ZenPixelMap::cellInfoChanged, cellInfo, [this](const QString& words) {
        cellInfo->setText(words);
        cellInfo->setToolTip(words); // in a large font the line may be cut off
    });
    connect(pixelMapWidget, &ZenPixelMap::cellWanted, this, [this](const QRect& place) {
        pixelMap->ensureVisible(place.center().x(), place.center().y(), place.width() / 2 + 1,
                                place.height() / 2 + 1);
    });
    return group;
}

// ---- Right: settings ---------------------------------------------------------------------------

QWidget* FixtureForm::MakeSettingsTab()
{
    auto* tab = new QWidget;
    tab->setObjectName(QStringLiteral("settingsTab"));
    auto* column = LayOut<QVBoxLayout>(*tab, TabMargins);
    column->addWidget(MakeSettings());
    column->addWidget(MakeAutoPatch());
    column->addWidget(MakeReset());
    column->addStretch();
    return tab;
}

QGroupBox* FixtureForm::MakeSettings()
{
    auto* group = MakeBox("groupSettings", tr("Fixture Settings"));
    auto* grid = LayOut<QGridLayout>(*group, GroupMargins);
    const auto add = [&](const char* objectName, const QString& title, int row, int column) {
        auto* value = new QLabel;
        value->setObjectName(QLatin1String(objectName));
        grid->addWidget(new QLabel(title), row, column);
        grid->addWidget(value, row, column + 1);
        return value;
    };
    labelFixtureType = add("labelFixtureType", tr("Type:"), 0, 0);
    labelFixtureWidth = add("labelFixtureWidth", tr("Width:"), 1, 0);
    labelFixtureHeight = add("labelFixtureHeight", tr("Height:"), 1, 2);
    labelChannelCount = add("labelChannelCount", tr("Channels:"), 0, 2);
    buttonModify = MakeButton("buttonModify", tr("Mo&dify..."));
    grid->addWidget(buttonModify, 2, 0, 1, 4);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return group;
}

QGroupBox* FixtureForm::MakeAutoPatch()
{
    auto* group = MakeBox("groupAutoPatch", tr("Auto-Mapping"));
    auto* rows = LayOut<QFormLayout>(*group, GroupMargins);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto* cornerLabel = new QLabel(tr("Start &Corner"));
    rows->addRow(cornerLabel, MakeCorners());
    // A label clicks the button that it leads to: it must lead to the chosen one.
    connect(corner, QOverload<QAbstractButton*, bool>::of(&QButtonGroup::buttonToggled),
            cornerLabel, [cornerLabel](QAbstractButton* button, bool checked) {
                if (checked)
                    cornerLabel->setBuddy(button);
            });
    corners_.front()->setChecked(true);
    orientation = AddRow<QComboBox>(*rows, "orientation", tr("O&rientation"));
    orientation->addItems({tr("Horizontal"), tr("Vertical")});
    snake = new QCheckBox(tr("Sna&ke"));
    snake->setObjectName(QStringLiteral("snake"));
    rows->addRow(QString(), snake);
    automapStartChannel = AddRow<QSpinBox>(*rows, "automapStartChannel", tr("S&tart Channel"));
    automapStartChannel->setMinimum(1);
    buttonPatch = MakeButton("buttonPatch", tr("&Auto-Map"));
    rows->addRow(buttonPatch);
    connect(orientation, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &FixtureForm::DrawWalks);
    connect(snake, &QCheckBox::toggled, this, &FixtureForm::DrawWalks);
    DrawWalks();
    return group;
}

QLayout* FixtureForm::MakeCorners()
{
    corner = new QButtonGroup(this);
    corner->setObjectName(QStringLiteral("corner"));
    auto* grid = new QGridLayout;
    grid->setSpacing(Spacing);
    const auto add = [&](GridCorner which, const char* objectName, const QString& name) {
        auto* button = new CornerButton(which);
        button->setObjectName(QLatin1String(objectName));
        button->setAccessibleName(name);
        button->setToolTip(name);
        const int id = static_cast<int>(which);
        corner->addButton(button, id);
        grid->addWidget(button, id / 2, id % 2);
        corners_.at(static_cast<std::size_t>(id)) = button;
    };
    add(GridCorner::TopLeft, "topLeft", tr("Start at the top left"));
    add(GridCorner::TopRight, "topRight", tr("Start at the top right"));
    add(GridCorner::BottomLeft, "bottomLeft", tr("Start at the bottom left"));
    add(GridCorner::BottomRight, "bottomRight", tr("Start at the bottom right"));
    grid->setColumnStretch(2, 1);
    return grid;
}

void FixtureForm::DrawWalks() const
{
    for (CornerButton* button : corners_)
        button->SetWalk(orientation->currentIndex() == 0, snake->isChecked());
}

QGroupBox* FixtureForm::MakeReset()
{
    auto* group = MakeBox("groupBox_2", tr("Reset"));
    auto* column = LayOut<QVBoxLayout>(*group, GroupMargins);
    buttonResetMapping = MakeButton("buttonResetMapping", tr("Reset Mapp&ing"));
    buttonResetConstants = MakeButton("buttonResetConstants", tr("Reset C&onstants"));
    column->addWidget(buttonResetMapping);
    column->addWidget(buttonResetConstants);
    return group;
}

// ---- Right: the channels -----------------------------------------------------------------------

QWidget* FixtureForm::MakePersonalityTab()
{
    auto* tab = new QWidget;
    tab->setObjectName(QStringLiteral("personalityTab"));
    auto* column = LayOut<QVBoxLayout>(*tab, TabMargins);
    personalityTable = new ChannelTable;
    column->addWidget(personalityTable, 1);
    auto* explanation = new QLabel(
        tr("* Undefined channels will output value zero except in the case of a merge where the "
           "value received through DMX input is used."));
    explanation->setObjectName(QStringLiteral("undefinedExplanationLabel"));
    explanation->setWordWrap(true);
    column->addWidget(explanation);
    return tab;
}
