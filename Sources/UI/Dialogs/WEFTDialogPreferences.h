// SPDX-License-Identifier: MIT
#pragma once

#include "UI/Dialogs/FixedDialog.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLayout;
class QRadioButton;
class SettingsBlock;

/// Edits what the user set for the interface and the document's way of sending. It keeps nothing:
/// the window fills it before and reads it after an accept.
class WEFTDialogPreferences : public FixedDialog
{
    Q_OBJECT

public:
    explicit WEFTDialogPreferences(QWidget* parent = nullptr);

    void SetControls(const SettingsBlock& settings, bool autoUnicast, bool artSync);

    [[nodiscard]] bool GetShowGrid() const;
    [[nodiscard]] bool GetSnapToGrid() const;
    /// As SettingsBlock has it.
    [[nodiscard]] QString GetLanguage() const;
    /// The zoom follows 0 the cursor, 1 the selection.
    [[nodiscard]] int GetZoomStyle() const;
    [[nodiscard]] bool GetAutoUnicast() const;
    [[nodiscard]] bool GetArtSync() const;

signals:
    /// At once when the operator confirmed, whatever becomes of the dialog.
    void resetFixturesConfirmed();

public slots:
    void restoreFixtureClicked();

private:
    void AddInterfaceGroup(QLayout& dialog);
    void AddLanguage(QBoxLayout& group);
    void AddFixturesGroup(QLayout& dialog);
    void AddArtNetGroup(QLayout& dialog);

    QComboBox* comboLanguage = nullptr;
    QCheckBox* checkShowGrid = nullptr;
    QCheckBox* checkSnapGrid = nullptr;
    QRadioButton* radioZoomCursor = nullptr;
    QRadioButton* radioZoomSelection = nullptr;
    QRadioButton* artNetBroadcast = nullptr;
    QRadioButton* artNetAutoUnicast = nullptr;
    QCheckBox* artNetSync = nullptr;
};
