// SPDX-License-Identifier: MIT
#pragma once

#include "PatchSheet/PatchCsv.h"
#include "PatchSheet/PatchPdf.h"
#include "UI/Dialogs/FixedDialog.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;
class QWidget;

/// What becomes of a patch that is exported.
struct PatchExportChoice
{
    bool onPaper = true; ///< PDF, else CSV
    PatchPdfOptions paper;
    PatchOrder order = PatchOrder::ByElement; ///< of the lines of the table
};

/// Asks how the patch is to be exported; the file is asked for afterwards.
class PatchSheetDialog : public FixedDialog
{
    Q_OBJECT

public:
    explicit PatchSheetDialog(QWidget* parent);

    void SetTitle(const QString& title);
    [[nodiscard]] QString GetTitle() const;
    void SetChoice(const PatchExportChoice& choice);
    [[nodiscard]] PatchExportChoice GetChoice() const;

private:
    [[nodiscard]] QWidget* MakePaperRows();
    [[nodiscard]] QWidget* MakeTableRows();
    void ShowRows();

    QLineEdit* title_ = nullptr;
    QRadioButton* pdf_ = nullptr;
    QRadioButton* csv_ = nullptr;
    QWidget* paperRows_ = nullptr;
    QComboBox* paper_ = nullptr;
    QCheckBox* layout_ = nullptr;
    QCheckBox* byUniverse_ = nullptr;
    QCheckBox* byElement_ = nullptr;
    QWidget* tableRows_ = nullptr;
    QComboBox* order_ = nullptr;
};
