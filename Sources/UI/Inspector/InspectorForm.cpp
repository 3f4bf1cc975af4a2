// SPDX-License-Identifier: MIT
#include "UI/Inspector/InspectorForm.h"

#include <algorithm>

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "Language/Language.h"
#include "UI/Inspector/SharedLineEdit.h"
#include "UI/Inspector/SharedSpinBox.h"
#include "UI/Widgets/LabelledField.h"
#include "UI/Widgets/SteadyComboBox.h"

namespace {

constexpr int LongestSide = 65535;
constexpr int LargestAngle = 360;
constexpr int PreviewHeight = 64;
constexpr int Margin = 6;

/// A label that shows this text of the form, which is untranslated here, in each language.
QLabel* LastingLabel(const char* text)
{
    auto* label = new QLabel;
    InEachLanguage(label, [label, text] { label->setText(InspectorForm::tr(text)); });
    return label;
}

/// The same for the label that leads to a field.
template <class Field>
Field* MakeLasting(const char* objectName, const char* label, QLabel*& buddy)
{
    auto* field = MakeField<Field>(objectName, QString(), buddy);
    InEachLanguage(buddy, [buddy, label] { SetLabel(*buddy, InspectorForm::tr(label)); });
    return field;
}

/// Two fields stand beside each other; `place` counts from the left top one.
template <class Box>
Box* AddBox(QGridLayout& grid, int place, const char* objectName, const char* label, int least,
            int greatest)
{
    constexpr int inRow = 2;
    QLabel* buddy = nullptr;
    auto* box = MakeLasting<Box>(objectName, label, buddy);
    box->setRange(least, greatest);
    const int column = place % inRow * 2;
    grid.addWidget(buddy, place / inRow, column);
    grid.addWidget(box, place / inRow, column + 1);
    return box;
}

QWidget* NamedPage(const char* objectName)
{
    auto* page = new QWidget;
    page->setObjectName(QLatin1String(objectName));
    return page;
}

QFormLayout* RowsIn(QWidget& page)
{
    auto* rows = new QFormLayout(&page);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setRowWrapPolicy(QFormLayout::DontWrapRows);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    return rows;
}

} // namespace

// ---- Pages -------------------------------------------------------------------------------------

PageStack::PageStack(const char* objectName)
{
    setObjectName(QLatin1String(objectName));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void PageStack::ShowPage(int page)
{
    if (page == currentIndex())
        return;
    setCurrentIndex(page);
    updateGeometry();
}

QSize PageStack::sizeHint() const
{
    return {QStackedWidget::sizeHint().width(), currentWidget()->sizeHint().height()};
}

QSize PageStack::minimumSizeHint() const
{
    return {QStackedWidget::minimumSizeHint().width(), currentWidget()->minimumSizeHint().height()};
}

bool PageStack::hasHeightForWidth() const
{
    return currentWidget()->hasHeightForWidth();
}

int PageStack::heightForWidth(int width) const
{
    return currentWidget()->heightForWidth(width);
}

// ---- The form ----------------------------------------------------------------------------------

InspectorForm::InspectorForm(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("inspectorForm"));
    deviceProperties = new PageStack("deviceProperties");
    auto* nothing = NamedPage("empty_page");
    auto* hint = LastingLabel(QT_TR_NOOP("Nothing is selected."));
    hint->setObjectName(QStringLiteral("labelNothingSelected"));
    (new QVBoxLayout(nothing))->addWidget(hint, 0, Qt::AlignTop | Qt::AlignHCenter);
    deviceProperties->addWidget(nothing);
    deviceProperties->addWidget(MakeDevicePage());
    mappinProperties = new PageStack("mappinProperties");
    mappinProperties->addWidget(NamedPage("empty_mapping_page"));
    mappinProperties->addWidget(MakeMappingPage());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Margin, Margin, Margin, Margin);
    column->addWidget(deviceProperties);
    column->addWidget(mappinProperties);
    column->addStretch();
}

QWidget* InspectorForm::MakeDevicePage()
{
    auto* page = NamedPage("device_page");
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    auto* rows = RowsIn(*new QWidget);
    labelFixture = new QLabel;
    labelFixture->setObjectName(QStringLiteral("labelFixture"));
    labelFixture->setWordWrap(true);
    // A long name is no reason for a wide panel.
    labelFixture->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    labelFixture->setTextFormat(Qt::PlainText);
    rows->addRow(LastingLabel(QT_TR_NOOP("Fixture:")), labelFixture);
    QLabel* buddy = nullptr;
    editDescription =
        MakeLasting<SharedLineEdit>("editDescription", QT_TR_NOOP("&Description:"), buddy);
    rows->addRow(buddy, editDescription);
    editDescription->setMinimumWidth(1);
    column->addWidget(rows->parentWidget());
    comboDmxMappingOutput = MakeLasting<SteadyComboBox>("comboDmxMappingOutput",
                                                        QT_TR_NOOP("DMX Mapping &Output:"), buddy);
    auto* output = new QHBoxLayout;
    output->addWidget(buddy);
    output->addWidget(comboDmxMappingOutput, 1);
    column->addLayout(output);
    column->addWidget(MakeAddressGroup());
    return page;
}

QWidget* InspectorForm::MakeAddressGroup()
{
    auto* group = new QGroupBox;
    InEachLanguage(group, [group] { group->setTitle(tr("DMX Mapping Properties")); });
    group->setObjectName(QStringLiteral("groupDmxMappingProperties"));
    auto* column = new QVBoxLayout(group);
    MappedFixtureProperties = new PageStack("MappedFixtureProperties");
    MappedFixtureProperties->addWidget(NamedPage("EcuePatchProperties"));
    auto* none = NamedPage("NoMappedProperties");
    auto* text = LastingLabel(QT_TR_NOOP("Not all of it has an Art-Net address."));
    text->setWordWrap(true);
    auto* noneColumn = new QVBoxLayout(none);
    noneColumn->setContentsMargins(0, 0, 0, 0);
    noneColumn->addWidget(text);
    MappedFixtureProperties->addWidget(none);
    column->addWidget(MappedFixtureProperties);
    return group;
}

QWidget* InspectorForm::MakeMappingPage()
{
    auto* page = NamedPage("mapping_page");
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    auto* grid = new QGridLayout;
    AddGeometry(*grid);
    column->addLayout(grid);
    auto* flips = new QHBoxLayout;
    AddFlips(*flips);
    column->addLayout(flips);
    column->addWidget(LastingLabel(QT_TR_NOOP("Preview")));
    labelPreview = new QLabel;
    labelPreview->setObjectName(QStringLiteral("labelPreview"));
    InEachLanguage(labelPreview, [this] { labelPreview->setAccessibleName(tr("Preview")); });
    labelPreview->setFixedHeight(PreviewHeight);
    labelPreview->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    column->addWidget(labelPreview);
    return page;
}

void InspectorForm::AddGeometry(QGridLayout& grid)
{
    constexpr int leastPlace = -1000;
    spinBoxX = AddBox<SharedDoubleSpinBox>(grid, 0, "spinBoxX", QT_TR_NOOP("&Left:"), leastPlace,
                                           LongestSide);
    spinBoxY = AddBox<SharedDoubleSpinBox>(grid, 1, "spinBoxY", QT_TR_NOOP("&Top:"), leastPlace,
                                           LongestSide);
    spinBoxWidth =
        AddBox<SharedSpinBox>(grid, 2, "spinBoxWidth", QT_TR_NOOP("&Width:"), 0, LongestSide);
    spinBoxHeight =
        AddBox<SharedSpinBox>(grid, 3, "spinBoxHeight", QT_TR_NOOP("Hei&ght:"), 0, LongestSide);
    spinBoxRotation = AddBox<SharedDoubleSpinBox>(
        grid, 4, "spinBoxRotation", QT_TR_NOOP("&Rotation:"), -LargestAngle, LargestAngle);
    spinBoxRotation->setDecimals(0);
    for (QWidget* box : {static_cast<QWidget*>(spinBoxX), static_cast<QWidget*>(spinBoxY),
                         static_cast<QWidget*>(spinBoxWidth), static_cast<QWidget*>(spinBoxHeight),
                         static_cast<QWidget*>(spinBoxRotation)})
    {
        const int digits = box->fontMetrics().horizontalAdvance(QStringLiteral("4096.25"));
        constexpr int arrows = 30;
        box->setMinimumWidth(digits + arrows);
        box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    }
    grid.setColumnStretch(1, 1);
    grid.setColumnStretch(3, 1);
}

void InspectorForm::AddFlips(QBoxLayout& row)
{
    QLabel* buddy = nullptr;
    checkBoxHFlip = MakeLasting<QCheckBox>("checkBoxHFlip", QT_TR_NOOP("Hori&zontal Flip:"), buddy);
    row.addWidget(buddy);
    row.addWidget(checkBoxHFlip, 1);
    checkBoxVFlip = MakeLasting<QCheckBox>("checkBoxVFlip", QT_TR_NOOP("Vertic&al Flip:"), buddy);
    row.addWidget(buddy);
    row.addWidget(checkBoxVFlip);
}

void InspectorForm::PlaceAddressPage(QWidget& page)
{
    MappedFixtureProperties->insertWidget(ArtNetPage, &page);
    QWidget* before = comboDmxMappingOutput;
    for (auto* field : page.findChildren<QWidget*>()) {
        // The list of a combo box is a window of its own.
        if ((field->focusPolicy() & Qt::TabFocus) == 0 || field->focusProxy() ||
            !page.isAncestorOf(field))
            continue;
        setTabOrder(before, field);
        before = field;
    }
    setTabOrder(before, spinBoxX);
}

void InspectorForm::ForgetTyping()
{
    for (auto* field : findChildren<SharedLineEdit*>())
        field->Forget();
    for (auto* box : findChildren<SharedSpinBox*>())
        box->Forget();
    for (auto* box : findChildren<SharedDoubleSpinBox*>())
        box->Forget();
}
