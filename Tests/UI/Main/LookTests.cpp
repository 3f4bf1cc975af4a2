// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "UI/Dialogs/LEDDialogDMXUniverseMerging.h"
#include "UI/Dialogs/LedDialogAddIPrange.h"
#include "UI/Main/Desk.h"

namespace {

double Luminance(const QColor& colour)
{
    const auto linear = [](double share) {
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// The contrast between the colour that covers most of a widget and the one that differs most from
/// it, which is its text.
double ContrastOf(QWidget& widget)
{
    const QImage picture = widget.grab().toImage();
    QMap<double, int> lights;
    for (int y = 2; y < picture.height() - 2; ++y) {
        for (int x = 2; x < picture.width() - 2; ++x)
            ++lights[Luminance(picture.pixelColor(x, y)) + 0.05];
    }
    const double ground = std::max_element(lights.cbegin(), lights.cend()).key();
    return std::max(lights.lastKey() / ground, ground / lights.firstKey());
}

constexpr double Legible = 4.5;

/// Texts of a dialog can be read and are not clipped.
void ExpectLegible(QDialog& dialog)
{
    for (auto* widget : dialog.findChildren<QWidget*>()) {
        const std::string name = widget->objectName().toStdString();
        const auto* label = qobject_cast<QLabel*>(widget);
        if (const auto* field = qobject_cast<const QLineEdit*>(widget)) {
            EXPECT_GT(field->width(), field->fontMetrics().horizontalAdvance(field->text()));
        }
        if (!widget->isVisible() || !(label || qobject_cast<const QAbstractButton*>(widget)))
            continue;
        if (label && !label->text().isEmpty()) {
            EXPECT_GE(ContrastOf(*widget), Legible) << label->text().toStdString();
        }
        const QSize needed = widget->minimumSizeHint();
        EXPECT_GE(widget->width(), needed.width()) << name;
        EXPECT_GE(widget->height(), widget->hasHeightForWidth()
                                        ? widget->heightForWidth(widget->width())
                                        : needed.height())
            << name;
    }
}

using Look = Desk;

} // namespace

TEST_F(Look, DialogsAreLegibleInALargeFont)
{
    const QFont usual = QApplication::font();
    QApplication::setFont(QFont("DejaVu Sans"_q, 14));
    Start();
    for (const char* action : {"actionCanvas_Size", "actionPreferences", "actionAbout"}) {
        person.Will([](QDialog& dialog) {
            ExpectLegible(dialog);
            dialog.reject();
        });
        Trigger(action);
    }
    LedDialogAddIPrange range(window.get());
    range.SetUpForEdit("222.222.222.222"_q);
    LEDDialogDMXUniverseMerging merging({}, "192.168.123.123"_q, L"ALL", true, window.get());
    for (QDialog* dialog : {static_cast<QDialog*>(&range), static_cast<QDialog*>(&merging)}) {
        dialog->show();
        ExpectLegible(*dialog);
    }
    QApplication::setFont(usual);
}

TEST_F(Look, TheWindowIsLegibleOnASmallScreenAndNamesWhatAPersonUses)
{
    StartWith(Element({0.5, 0.5}, {0.1, 0.1}));
    window->resize(1024, 600);
    const QSize least = window->minimumSizeHint();
    EXPECT_TRUE(least.width() <= 1024 && least.height() <= 600);
    for (const char* name : {"treeView", "mappedTreeView", "artNetNodes", "buttonDeleteFixture",
                             "zoomCombo", "networkCombo", "senderCombo"})
    {
        const auto* widget = Find<QWidget>(name);
        const QRect place(widget->mapTo(window.get(), QPoint()), widget->size());
        EXPECT_TRUE(window->rect().contains(place)) << name;
        EXPECT_GE(widget->height(), widget->fontMetrics().height() + 4) << name;
    }
    for (const char* name : {"treeView", "mappedTreeView", "menubar", "networkCombo", "zoomCombo",
                             "buttonCustomFixture", "dockWidgetArtNetNodes"})
        EXPECT_GE(ContrastOf(*Find<QWidget>(name)), Legible) << name;
    Trigger("actionSelect_All"); // for the fields of the inspector
    for (const auto* widget : window->findChildren<QWidget*>()) {
        const QString name = widget->objectName();
        if (widget->focusPolicy() & Qt::TabFocus && widget->isVisible() && !name.isEmpty() &&
            !name.startsWith("qt_"_q))
        {
            EXPECT_FALSE(widget->accessibleName().isEmpty() &&
                         widget->property("text").toString().isEmpty())
                << name.toStdString();
        }
    }
}
