// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <set>

#include "UI/Dialogs/LEDDialogDMXUniverseMerging.h"
#include "UI/Dialogs/LedDialogAddIPrange.h"
#include "UI/Main/Desk.h"

namespace {

using Look = Desk;

double Linear(int level)
{
    const double share = level / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour)
{
    return 0.2126 * Linear(colour.red()) + 0.7152 * Linear(colour.green()) +
           0.0722 * Linear(colour.blue());
}

double Contrast(const QColor& one, const QColor& other)
{
    const auto [low, high] = std::minmax({Luminance(one), Luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

QMap<QRgb, int> ColoursOf(const QImage& picture)
{
    QMap<QRgb, int> colours;
    for (int y = 2; y < picture.height() - 2; ++y) {
        for (int x = 2; x < picture.width() - 2; ++x)
            ++colours[picture.pixel(x, y)];
    }
    return colours;
}

/// The colour that covers most of a picture.
QColor GroundOf(const QImage& picture)
{
    const auto colours = ColoursOf(picture);
    return QColor(std::max_element(colours.cbegin(), colours.cend()).key());
}

/// The contrast between what covers most of a widget and what differs most from it: its text.
double ContrastOf(QWidget& widget)
{
    const QImage picture = widget.grab().toImage();
    const auto colours = ColoursOf(picture);
    const QColor ground = GroundOf(picture);
    double best = 1;
    for (auto it = colours.cbegin(); it != colours.cend(); ++it)
        best = std::max(best, Contrast(ground, QColor(it.key())));
    return best;
}

void ExpectLabelsLegible(const QDialog& dialog)
{
    for (auto* child : dialog.findChildren<QLabel*>()) {
        if (child->isVisible() && !child->text().isEmpty()) {
            EXPECT_GE(ContrastOf(*child), 4.5) << child->text().toStdString();
        }
    }
}

void ExpectNothingClipped(const QDialog& dialog)
{
    for (const auto* widget : dialog.findChildren<QWidget*>()) {
        if (!widget->isVisible() ||
            !(qobject_cast<const QLabel*>(widget) || qobject_cast<const QAbstractButton*>(widget)))
            continue;
        const QSize needed = widget->minimumSizeHint();
        const std::string name = widget->objectName().toStdString();
        EXPECT_GE(widget->width(), needed.width()) << name;
        EXPECT_GE(widget->height(), widget->hasHeightForWidth()
                                        ? widget->heightForWidth(widget->width())
                                        : needed.height())
            << name;
    }
}

} // namespace

TEST_F(Look, TextIsLegible)
{
    StartWith(Element({0.5, 0.5}, {0.1, 0.1}));
    for (const char* name : {"treeView", "mappedTreeView", "menubar", "networkCombo", "zoomCombo",
                             "buttonCustomFixture", "dockWidgetArtNetNodes"})
        EXPECT_GE(ContrastOf(*Find<QWidget>(name)), 4.5) << name;
    person.Will([](QDialog& dialog) {
        ExpectLabelsLegible(dialog);
        dialog.reject();
    });
    Trigger("actionAbout");
    LEDDialogDMXUniverseMerging merging({}, QStringLiteral("2.X.X.X"), L"ALL", false, window.get());
    merging.show();
    EXPECT_TRUE(merging.findChild<QLabel*>(QStringLiteral("universeOverlapWarning"))->isVisible());
    ExpectLabelsLegible(merging);
    // The colours of an address that has none, or shares its universe, are read on the list's
    // ground.
    const QColor ground = GroundOf(Find<QTreeView>("mappedTreeView")->viewport()->grab().toImage());
    EXPECT_GE(Contrast(QColor(255, 0, 0), ground), 4.5);
    EXPECT_GE(Contrast(QColor(255, 102, 0), ground), 4.5);
}

TEST_F(Look, EveryIconIsThereOnceAndTwiceTheSize)
{
    const QDir folder(QStringLiteral(":/bitmaps/Bin/bitmaps"));
    std::set<QByteArray> pictures;
    int icons = 0;
    for (const QString& name : folder.entryList({QStringLiteral("icon_*.png")})) {
        if (name.contains(QLatin1Char('@')))
            continue;
        const QImage once(folder.filePath(name));
        const QImage twice(
            folder.filePath(QString(name).replace(QLatin1Char('.'), QStringLiteral("@2x."))));
        EXPECT_FALSE(once.isNull()) << name.toStdString();
        EXPECT_EQ(once.size() * 2, twice.size()) << name.toStdString();
        pictures.insert(QByteArray(reinterpret_cast<const char*>(once.constBits()),
                                   static_cast<int>(once.sizeInBytes())));
        ++icons;
    }
    EXPECT_EQ(icons, 33);
    EXPECT_EQ(pictures.size(), static_cast<std::size_t>(icons)) << "no two are the same";
    Start();
    EXPECT_FALSE(window->windowIcon().isNull());
    // An action of the tool bar shows its icon and not its text.
    for (const QAction* action : Find<QToolBar>("toolBar")->actions())
        EXPECT_EQ(action->icon().isNull(), action->objectName().isEmpty())
            << action->objectName().toStdString();
}

TEST_F(Look, NothingIsClippedInASmallWindow)
{
    Start();
    window->resize(1024, 600);
    EXPECT_LE(window->minimumSizeHint().width(), 1024);
    EXPECT_LE(window->minimumSizeHint().height(), 600);
    const QRect inside = window->rect();
    for (const char* name :
         {"treeView", "mappedTreeView", "artNetNodes", "buttonCustomFixture", "buttonEditFixture",
          "buttonDeleteFixture", "zoomCombo", "networkCombo", "senderCombo"})
    {
        const auto* widget = Find<QWidget>(name);
        const QRect place(widget->mapTo(window.get(), QPoint()), widget->size());
        EXPECT_TRUE(inside.contains(place)) << name;
        EXPECT_GE(widget->height(), widget->fontMetrics().height() + 4) << name;
        if (const auto* button = qobject_cast<const QPushButton*>(widget)) {
            EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(button->text()) + 8)
                << name;
        }
    }
}

TEST_F(Look, NoTextIsClippedInALargeFont)
{
    const InFont large(14);
    Start();
    for (const char* action : {"actionCanvas_Size", "actionPreferences", "actionAbout"}) {
        person.Will([](QDialog& dialog) {
            ExpectNothingClipped(dialog);
            dialog.reject();
        });
        Trigger(action);
    }
    LedDialogAddIPrange range(window.get());
    LEDDialogDMXUniverseMerging merging({}, QStringLiteral("192.168.123.123"), L"ALL", true,
                                        window.get());
    range.SetUpForEdit(QStringLiteral("222.222.222.222"));
    for (QDialog* dialog : {static_cast<QDialog*>(&range), static_cast<QDialog*>(&merging)}) {
        dialog->show();
        ExpectNothingClipped(*dialog);
    }
    for (const auto* field : range.findChildren<QLineEdit*>())
        EXPECT_GE(field->width(), field->fontMetrics().horizontalAdvance(field->text()) + 1);
}

TEST_F(Look, WhatAPersonUsesHasANameAndAPlaceInTheTabOrder)
{
    Start();
    for (const auto* widget : window->findChildren<QWidget*>()) {
        if (widget->focusPolicy() & Qt::TabFocus && widget->isVisible() &&
            !widget->objectName().isEmpty() &&
            !widget->objectName().startsWith(QLatin1String("qt_")))
        {
            const bool named = !widget->accessibleName().isEmpty() ||
                               widget->property("text").toString().size() > 0;
            EXPECT_TRUE(named) << widget->objectName().toStdString();
        }
    }
}
