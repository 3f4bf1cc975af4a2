// SPDX-License-Identifier: MIT
#pragma once

#include "FixtureModel/FixtureLayout.h"
#include "UI/Dialogs/FixedDialog.h"

class OperatorBoxes;
class QCheckBox;
class QComboBox;
class QSpinBox;

/// Asks for a fixture's type, width, height and channel count, and warns when a change would cost
/// pixels or constants. It changes nothing itself.
class WEFTCustomFixtureSizeDialog : public FixedDialog
{
    Q_OBJECT

public:
    enum Form
    {
        Create = 0,
        Modify = 1
    };
    /// `boxes` outlives the dialog. What `layout` has is offered as it is, also where a new fixture
    /// could not have it.
    WEFTCustomFixtureSizeDialog(Form form, FixtureLayout layout, OperatorBoxes& boxes,
                                QWidget* parent = nullptr);

    /// What the dialog shows.
    [[nodiscard]] FixtureSize GetSize() const;

private slots:
    void widthChanged(int value);
    void heightChanged(int value);
    void channelsCountEnabledChanged(int enabled);
    void updateMaxPixels(int value);
    void OKClicked();

private:
    void Build(Form form);
    void ShowSize(const FixtureSize& size);
    void UpdateChannelCount();

    FixtureLayout layout_;
    OperatorBoxes& boxes_;
    QComboBox* comboFixtureType = nullptr;
    QSpinBox* spinFixtureWidth = nullptr;
    QSpinBox* spinFixtureHeight = nullptr;
    QCheckBox* channelsCountEnabled = nullptr;
    QSpinBox* channelCount = nullptr;
};
