// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "FixtureModel/UniverseMerging.h"
#include "UI/Dialogs/FixedDialog.h"

class MergerPicture;
class QAbstractButton;
class QFormLayout;
class QGroupBox;
class QLabel;
class QLayout;
class QRadioButton;
class QSpinBox;

/// Sets up the universe merger on a copy of its settings, which the caller reads after an accept
/// and at each apply(). While the two runs of universes overlap neither is possible; a run that
/// goes beyond the last universe of a fixture is only told.
class LEDDialogDMXUniverseMerging : public FixedDialog
{
    Q_OBJECT

public:
    /// Beside LoomTap: there is no choice of a source, it is PixelWeft.
    explicit LEDDialogDMXUniverseMerging(const UniverseMerging& settings,
                                         QWidget* parent = nullptr);
    /// Beside ReelCommand: where each of the two programs receives DMX, and whether ReelCommand
    /// offers to.
    LEDDialogDMXUniverseMerging(const UniverseMerging& settings, const QString& ownAddress,
                                const std::wstring& reelCommandAddress, bool reelCommandOffers,
                                QWidget* parent = nullptr);

    [[nodiscard]] const UniverseMerging& GetUniverseMerging() const { return merging_; }

signals:
    /// The settings are to take effect now. A later reject takes that back.
    void apply();

public slots:
    void enabledChanged(bool enabled);
    // A value out of its range changes nothing.
    void fromStartSubnetChanged(int subnet);
    void fromStartUniverseChanged(int universe);
    void consecutiveUniversesChanged(int count);
    void toStartSubnetChanged(int subnet);
    void toStartUniverseChanged(int universe);
    void DMXSourceUpdated(QAbstractButton* button);
    /// What ReelCommand offers, which can change while the dialog is open. The source in the copy
    /// is the operator's and stays, even when the dialog can't show it.
    void ArtNetDMXInputSettingsChanged(bool enabled, const std::wstring& ip);

private:
    struct Number;

    void Build();
    [[nodiscard]] QGroupBox* MakeFromGroup();
    [[nodiscard]] QGroupBox* MakeToGroup();
    [[nodiscard]] QLayout* MakeToggle();
    [[nodiscard]] QGroupBox* MakeExplanation();
    [[nodiscard]] QLayout* MakeRunWarnings();
    [[nodiscard]] QLayout* MakeUnicastWarning();
    [[nodiscard]] QGroupBox* MakeSourceGroup();
    QSpinBox* AddNumber(const Number& number, const QGroupBox& group, QFormLayout& form);
    void CheckOverlap();

    UniverseMerging merging_;
    QObject* enterFilter_ = nullptr;
    QSpinBox* FromStartSubnet = nullptr;
    QLabel* mergerStatusLabel = nullptr;
    QLabel* universeOverlapWarning = nullptr;
    QLabel* netWarning = nullptr;
    MergerPicture* picture_ = nullptr;
    QGroupBox* DMXSourceGroup = nullptr;
    QRadioButton* DMXSourcePixelWeft = nullptr;
    QRadioButton* DMXSourceReelCommand = nullptr;
    QLabel* PixelWeftIP = nullptr;
    QLabel* ReelCommandIP = nullptr;
    QDialogButtonBox* buttonBox = nullptr;
};
