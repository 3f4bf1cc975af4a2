// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include <QWidget>

class ChannelTable;
class CornerButton;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QGroupBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QScrollArea;
class QSpinBox;
class QTabWidget;
class ZenPixelMap;

/// The widgets of the fixture editor, without what they do. Object names are the names of the
/// fields.
class FixtureForm : public QWidget
{
    Q_OBJECT

public:
    /// Takes the buttons into its layout.
    explicit FixtureForm(QDialogButtonBox& buttons, QWidget* parent = nullptr);

    QLineEdit* editProductName = nullptr;
    QComboBox* comboManufacturer = nullptr;

    QSpinBox* nextChannel = nullptr;
    QScrollArea* pixelMap = nullptr;
    ZenPixelMap* pixelMapWidget = nullptr;
    QLabel* cellInfo = nullptr;

    QTabWidget* settingsPeronalityTabWidget = nullptr;
    QLabel* labelFixtureType = nullptr;
    QLabel* labelFixtureWidth = nullptr;
    QLabel* labelFixtureHeight = nullptr;
    QLabel* labelChannelCount = nullptr;
    QPushButton* buttonModify = nullptr;

    QButtonGroup* corner = nullptr; ///< its ids are those of GridCorner
    QComboBox* orientation = nullptr;
    QCheckBox* snake = nullptr;
    QSpinBox* automapStartChannel = nullptr;
    QPushButton* buttonPatch = nullptr;

    QPushButton* buttonResetMapping = nullptr;
    QPushButton* buttonResetConstants = nullptr;

    ChannelTable* personalityTable = nullptr;

private:
    [[nodiscard]] QGroupBox* MakeProduct();
    [[nodiscard]] QGroupBox* MakePixelMap();
    [[nodiscard]] QWidget* MakeSettingsTab();
    [[nodiscard]] QGroupBox* MakeSettings();
    [[nodiscard]] QGroupBox* MakeAutoPatch();
    [[nodiscard]] QLayout* MakeCorners();
    [[nodiscard]] QGroupBox* MakeReset();
    [[nodiscard]] QWidget* MakePersonalityTab();
    void DrawWalks() const;

    std::array<CornerButton*, 4> corners_{};
};
