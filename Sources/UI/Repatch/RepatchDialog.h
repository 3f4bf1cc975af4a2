// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "Model/NodeChoices.h"
#include "Model/Repatch.h"
#include "UI/Dialogs/FixedDialog.h"

class OrderPicture;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QSpinBox;
class QTreeView;
class QVBoxLayout;
class RepatchTable;

/// Asks in which order elements are patched and from where on, and shows beforehand which address
/// each one gets and what would be wrong with it. It can be accepted when there is something to
/// change; problems are said and forbid nothing.
class RepatchDialog final : public FixedDialog
{
    Q_OBJECT

public:
    /// Begins with these options. `repatch` outlives the dialog.
    RepatchDialog(const Repatch& repatch, const RepatchOptions& options, QWidget* parent = nullptr);

    /// The nodes that can be chosen. The choice stays, also when its node is gone. Does nothing
    /// while the operator chooses.
    void OfferNodes(const std::vector<NodeChoice>& nodes);

    [[nodiscard]] RepatchOptions GetOptions() const;
    /// The address of each element, as shown.
    [[nodiscard]] std::vector<ElementAddress> GetAddresses() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] QString AddressAt(int entry) const;
    [[nodiscard]] QGroupBox* MakeOrder();
    [[nodiscard]] QGroupBox* MakeAddresses();
    [[nodiscard]] QVBoxLayout* MakePreview();
    void TakeOptions(const RepatchOptions& options);
    void ConnectOptions();
    void StartBehindTheOthers();
    void ShowNextProblem();
    /// Fits words and picture to the options and plans again.
    void Follow();
    void ShowCurrent();
    void ShowTotals();

    const Repatch& repatch_;
    RepatchTable* table_ = nullptr;

    QComboBox* orderCombo = nullptr;
    QComboBox* cornerCombo = nullptr;
    QCheckBox* snakeCheck = nullptr;
    OrderPicture* orderPicture = nullptr;
    QSpinBox* subnetSpin = nullptr;
    QSpinBox* universeSpin = nullptr;
    QSpinBox* channelSpin = nullptr;
    QPushButton* behindButton = nullptr;
    QSpinBox* gapSpin = nullptr;
    QCheckBox* neverSplitCheck = nullptr;
    QCheckBox* newUniverseCheck = nullptr;
    QComboBox* nodeCombo = nullptr;
    QTreeView* previewList = nullptr;
    QLabel* problemLabel = nullptr;
    QLabel* totalsLabel = nullptr;
    QPushButton* nextProblemButton = nullptr;
    QPushButton* okButton_ = nullptr;
};
