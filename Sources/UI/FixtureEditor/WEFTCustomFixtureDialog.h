// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QStringList>

#include "FixtureModel/FixtureLayout.h"
#include "UI/Dialogs/FixedDialog.h"

class OperatorBoxes;
class QComboBox;
class QLineEdit;

/// The fixture editor: lays the pixels of one fixture on its channels and gives the others
/// constants. It works on a copy, which the caller reads after an accept and at each apply().
class WEFTCustomFixtureDialog : public FixedDialog
{
    Q_OBJECT

public:
    struct Content
    {
        QString manufacturer;
        QString product;
        FixtureLayout layout;
        QStringList manufacturers; ///< to choose from
    };
    /// What is wrong with a manufacturer and a product, in words for the operator; empty when both
    /// can be used.
    using NameCheck = std::function<QString(const QString& manufacturer, const QString& product)>;

    /// `boxes` outlives the dialog.
    WEFTCustomFixtureDialog(const Content& content, bool withApply, NameCheck nameCheck,
                            OperatorBoxes& boxes, QWidget* parent = nullptr);

    [[nodiscard]] QString GetManufacturer() const;
    [[nodiscard]] QString GetProduct() const;
    [[nodiscard]] const FixtureLayout& GetLayout() const { return layout_; }

signals:
    /// What the dialog shows is to take effect now. A later reject takes that back.
    void apply();

public slots:
    void accept() override;

private:
    [[nodiscard]] bool NamesCanBeUsed();

    FixtureLayout layout_;
    NameCheck nameCheck_;
    OperatorBoxes& boxes_;
    QLineEdit* editProductName = nullptr;
    QComboBox* comboManufacturer = nullptr;
};
