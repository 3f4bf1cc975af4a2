// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QStringList>

#include "FixtureModel/FixtureLayout.h"
#include "UI/Dialogs/FixedDialog.h"

class FixtureForm;
class OperatorBoxes;
class QTableWidgetItem;

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

    /// `boxes` outlives the dialog. Without a name check every name can be used.
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

private slots:
    void updatePixelMap();
    void resetPixelMap();
    void resetConstants();
    void autoMap();
    void nextChannelChanged(int channel);
    void mapPixel(int pixel);
    void unmapPixel(int pixel);
    void channelItemChanged(QTableWidgetItem* item);

private:
    void ShowNames(const Content& content);
    [[nodiscard]] QDialogButtonBox* MakeDialogButtons(bool withApply);
    void Connect();
    [[nodiscard]] bool Confirm(const QString& text);
    [[nodiscard]] bool ConfirmOverride();
    [[nodiscard]] bool NamesCanBeUsed();
    void ShowSize();
    void ShowLayout();

    FixtureLayout layout_;
    NameCheck nameCheck_;
    OperatorBoxes& boxes_;
    FixtureForm* form_ = nullptr;
};
