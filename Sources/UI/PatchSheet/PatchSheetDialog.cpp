// SPDX-License-Identifier: MIT
#include "UI/PatchSheet/PatchSheetDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "UI/Widgets/LabelledField.h"

namespace {

constexpr QSize DialogSize(400, 340);
constexpr int LongestTitle = 200;
constexpr int Indent = 24;

template <class Button>
Button* AddButton(const char* objectName, const QString& text, QLayout& layout)
{
    auto* button = new Button(text);
    button->setObjectName(QLatin1String(objectName));
    layout.addWidget(button);
    return button;
}

} // namespace

PatchSheetDialog::PatchSheetDialog(QWidget* parent)
    : FixedDialog(DialogSize, parent)
{
    setObjectName(QStringLiteral("PatchSheetDialog"));
    setWindowTitle(tr("Export Patch"));
    auto* layout = new QVBoxLayout(this);
    pdf_ = AddButton<QRadioButton>("patchPdf", tr("&PDF, for paper"), *layout);
    layout->addWidget(MakePaperRows());
    csv_ = AddButton<QRadioButton>("patchCsv", tr("&CSV, for spreadsheets and scripts"), *layout);
    layout->addWidget(MakeTableRows());
    layout->addStretch();
    QDialogButtonBox* buttons = MakeButtons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("&Export..."));
    layout->addWidget(buttons);
    connect(pdf_, &QRadioButton::toggled, this, &PatchSheetDialog::ShowRows);
    SetChoice({});
}

QWidget* PatchSheetDialog::MakePaperRows()
{
    paperRows_ = new QWidget;
    auto* rows = new QFormLayout(paperRows_);
    rows->setContentsMargins(Indent, 0, 0, 0);
    title_ = AddRow<QLineEdit>(*rows, "patchTitle", tr("&Title:"));
    title_->setMaxLength(LongestTitle);
    paper_ = AddRow<QComboBox>(*rows, "patchPaper", tr("P&aper:"));
    paper_->addItem(tr("A4"), static_cast<int>(PatchPdfOptions::Paper::A4));
    paper_->addItem(tr("Letter"), static_cast<int>(PatchPdfOptions::Paper::Letter));
    auto* parts = new QVBoxLayout;
    layout_ = AddButton<QCheckBox>("patchLayout", tr("&Drawing of the layout"), *parts);
    byUniverse_ = AddButton<QCheckBox>("patchByUniverse", tr("A table for each &universe"), *parts);
    byElement_ = AddButton<QCheckBox>("patchByElement", tr("All e&lements by number"), *parts);
    rows->addRow(parts);
    return paperRows_;
}

QWidget* PatchSheetDialog::MakeTableRows()
{
    tableRows_ = new QWidget;
    auto* rows = new QFormLayout(tableRows_);
    rows->setContentsMargins(Indent, 0, 0, 0);
    order_ = AddRow<QComboBox>(*rows, "patchOrder", tr("Li&nes:"));
    order_->addItem(tr("By element"), static_cast<int>(PatchOrder::ByElement));
    order_->addItem(tr("By universe"), static_cast<int>(PatchOrder::ByUniverse));
    return tableRows_;
}

void PatchSheetDialog::ShowRows()
{
    // The rows of the one have room for those of the other.
    tableRows_->setVisible(csv_->isChecked());
    paperRows_->setVisible(pdf_->isChecked());
}

void PatchSheetDialog::SetTitle(const QString& title)
{
    title_->setText(title);
}

QString PatchSheetDialog::GetTitle() const
{
    return title_->text().simplified();
}

void PatchSheetDialog::SetChoice(const PatchExportChoice& choice)
{
    (choice.onPaper ? pdf_ : csv_)->setChecked(true);
    paper_->setCurrentIndex(paper_->findData(static_cast<int>(choice.paper.paper)));
    layout_->setChecked(choice.paper.layout);
    byUniverse_->setChecked(choice.paper.byUniverse);
    byElement_->setChecked(choice.paper.byElement);
    order_->setCurrentIndex(order_->findData(static_cast<int>(choice.order)));
    ShowRows();
}

PatchExportChoice PatchSheetDialog::GetChoice() const
{
    return {.onPaper = pdf_->isChecked(),
            .paper = {.paper = static_cast<PatchPdfOptions::Paper>(paper_->currentData().toInt()),
                      .layout = layout_->isChecked(),
                      .byUniverse = byUniverse_->isChecked(),
                      .byElement = byElement_->isChecked()},
            .order = static_cast<PatchOrder>(order_->currentData().toInt())};
}
