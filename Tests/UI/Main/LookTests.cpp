// SPDX-License-Identifier: MIT
#include <cmath>
#include <set>

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

double Contrast(const QColor& one, const QColor& other)
{
    const auto [low, high] = std::minmax({Luminance(one), Luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

/// The contrast between the colour that covers most of a widget and the one that differs most from
/// it, which is its text.
double ContrastOf(QWidget& widget)
{
    const QImage picture = widget.grab().toImage();
    QMap<QRgb, int> colours;
    for (int y = 2; y < picture.height() - 2; ++y) {
        for (int x = 2; x < picture.width() - 2; ++x)
            ++colours[picture.pixel(x, y)];
    }
    const QColor ground(std::max_element(colours.cbegin(), colours.cend()).key());
    double best = 1;
    for (const QRgb colour : colours.keys())
        best = std::max(best, Contrast(ground, QColor(colour)));
    return best;
}

class Look : public Desk
{
protected:
    /// Looks at each dialog in turn, those of the menus and those that others open.
    void AtEachDialog(const std::function<void(QDialog&)>& look)
    {
        for (const char* action : {"actionCanvas_Size", "actionPreferences", "actionAbout"}) {
            person.Will([&look](QDialog& dialog) {
                look(dialog);
                dialog.reject();
            });
            Trigger(action);
        }
        LedDialogAddIPrange range(window.get());
        range.SetUpForEdit("222.222.222.222"_q);
        LEDDialogDMXUniverseMerging merging({}, "192.168.123.123"_q, L"ALL", true, window.get());
        for (QDialog* dialog : {static_cast<QDialog*>(&range), static_cast<QDialog*>(&merging)}) {
            dialog->show();
            look(*dialog);
        }
    }
};

} // namespace

TEST_F(Look, TextIsLegible)
{
    StartWith(Element({0.5, 0.5}, {0.1, 0.1}));
    for (const char* name : {"treeView", "mappedTreeView", "menubar", "networkCombo", "zoomCombo",
                             "buttonCustomFixture", "dockWidgetArtNetNodes"})
        EXPECT_GE(ContrastOf(*Find<QWidget>(name)), 4.5) << name;
    AtEachDialog([](QDialog& dialog) {
        for (auto* label : dialog.findChildren<QLabel*>()) {
            if (label->isVisible() && !label->text().isEmpty()) {
                EXPECT_GE(ContrastOf(*label), 4.5) << label->text().toStdString();
            }
        }
    });
}

TEST_F(Look, EveryIconIsThereOnceAndTwiceTheSize)
{
    const QDir folder(":/bitmaps/Bin/bitmaps"_q);
    std::set<QByteArray> pictures;
    std::size_t icons = 0;
    for (const QString& name : folder.entryList({"icon_*.png"_q})) {
        if (name.contains(QLatin1Char('@')))
            continue;
        const QImage once(folder.filePath(name));
        const QImage twice(folder.filePath(name.chopped(4) + "@2x.png"_q));
        EXPECT_EQ(once.size() * 2, twice.size()) << name.toStdString();
        pictures.insert(QByteArray(reinterpret_cast<const char*>(once.constBits()),
                                   static_cast<int>(once.sizeInBytes())));
        ++icons;
    }
    EXPECT_EQ(icons, 33U);
    EXPECT_EQ(pictures.size(), icons) << "no two are the same";
    Start();
    EXPECT_FALSE(window->windowIcon().isNull());
    for (const QAction* action : Find<QToolBar>("toolBar")->actions())
        EXPECT_EQ(action->icon().isNull(), action->objectName().isEmpty());
}

TEST_F(Look, NothingIsClippedInASmallWindowNorInALargeFont)
{
    {
        const InFont usual(9);
        Start();
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
    }
    const InFont large(14);
    Start();
    AtEachDialog([](QDialog& dialog) {
        for (const auto* widget : dialog.findChildren<QWidget*>()) {
            const std::string name = widget->objectName().toStdString();
            if (const auto* field = qobject_cast<const QLineEdit*>(widget)) {
                EXPECT_GT(field->width(), field->fontMetrics().horizontalAdvance(field->text()));
            }
            if (!widget->isVisible() || !(qobject_cast<const QLabel*>(widget) ||
                                          qobject_cast<const QAbstractButton*>(widget)))
                continue;
            const QSize needed = widget->minimumSizeHint();
            EXPECT_GE(widget->width(), needed.width()) << name;
            EXPECT_GE(widget->height(), widget->hasHeightForWidth()
                                            ? widget->heightForWidth(widget->width())
                                            : needed.height())
                << name;
        }
    });
}

TEST_F(Look, WhatAPersonUsesHasANameAndAPlaceInTheTabOrder)
{
    Start();
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
