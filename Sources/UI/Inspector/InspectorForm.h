// SPDX-License-Identifier: MIT
#pragma once

#include <QStackedWidget>
#include <QWidget>

class QBoxLayout;
class QCheckBox;
class QGridLayout;
class QLabel;
class SharedDoubleSpinBox;
class SharedLineEdit;
class SharedSpinBox;
class SteadyComboBox;

/// Pages of which one shows: as wide as the widest, as high as the present one.
class PageStack final : public QStackedWidget
{
    Q_OBJECT

public:
    explicit PageStack(const char* objectName);

    void ShowPage(int page);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;
};

/// The widgets of the inspector, without any behaviour. Qt parents own them.
class InspectorForm final : public QWidget
{
    Q_OBJECT

public:
    /// The pages of deviceProperties and mappinProperties.
    enum Page
    {
        EmptyPage = 0,
        FilledPage = 1
    };
    /// The pages of MappedFixtureProperties.
    enum AddressPage
    {
        ArtNetPage = 0,
        UnusedPage = 1,
        NoAddressPage = 2
    };

    explicit InspectorForm(QWidget* parent = nullptr);

    /// Puts the widgets of the Art-Net address into their page, and between the others in the tab
    /// order.
    void PlaceAddressPage(QWidget& page);

    /// Drops what is being typed in any of the fields.
    void ForgetTyping();

    // Named as they are found by: the members are the object names.
    PageStack* deviceProperties = nullptr;
    PageStack* mappinProperties = nullptr;
    PageStack* MappedFixtureProperties = nullptr;
    QLabel* labelFixture = nullptr;
    SharedLineEdit* editDescription = nullptr;
    SteadyComboBox* comboDmxMappingOutput = nullptr;
    SharedDoubleSpinBox* spinBoxX = nullptr;
    SharedDoubleSpinBox* spinBoxY = nullptr;
    SharedSpinBox* spinBoxWidth = nullptr;
    SharedSpinBox* spinBoxHeight = nullptr;
    SharedDoubleSpinBox* spinBoxRotation = nullptr;
    QCheckBox* checkBoxHFlip = nullptr;
    QCheckBox* checkBoxVFlip = nullptr;
    QLabel* labelPreview = nullptr;

private:
    [[nodiscard]] QWidget* MakeDevicePage();
    [[nodiscard]] QWidget* MakeAddressGroup();
    [[nodiscard]] QWidget* MakeMappingPage();
    void AddGeometry(QGridLayout& grid);
    void AddFlips(QBoxLayout& row);
};
