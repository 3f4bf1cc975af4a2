// SPDX-License-Identifier: MIT
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include "UI/Main/Desk.h"
#include "UI/Main/WEFTMain.h"

namespace {

class SettingsOrder : public Desk
{
protected:
    [[nodiscard]] static std::unique_ptr<QSettings> Store()
    {
        return std::make_unique<QSettings>(QStringLiteral("Zentri"), QStringLiteral("PixelWeft3"));
    }
    static QVariant Kept(const char* key) { return Store()->value(QLatin1String(key)); }
    static void Put(const char* key, const QVariant& value)
    {
        Store()->setValue(QLatin1String(key), value);
    }
};

} // namespace

TEST_F(SettingsOrder, AFirstStartShowsTheDefaults)
{
    Start();
    EXPECT_EQ(window->size(), QSize(1024, 600));
    EXPECT_EQ(window->pos(), QPoint(200, 200));
    EXPECT_EQ(Find<QComboBox>("zoomCombo")->currentText(), QStringLiteral("100%"));
    EXPECT_TRUE(Action("actionDisplay_Pixel_Grid")->isChecked());
    EXPECT_TRUE(Action("actionSnapToGrid")->isChecked());
    // The zoom that is shown went over the 0 of the empty store at once.
    EXPECT_EQ(Kept("zoomFactor").toDouble(), 1.0);
}

TEST_F(SettingsOrder, WhatTheUserSetComesBack)
{
    Put("lastSize", QSize(1100, 700));
    Put("lastPosition", QPoint(30, 40));
    Put("zoomFactor", 2.5);
    Put("showGrid", false);
    Put("snapToGrid", false);
    Put("imgSelVal", 1);
    Start();
    EXPECT_EQ(window->size(), QSize(1100, 700));
    EXPECT_EQ(window->pos(), QPoint(30, 40));
    EXPECT_EQ(Find<QComboBox>("zoomCombo")->currentText(), QStringLiteral("250%"));
    EXPECT_FALSE(Action("actionDisplay_Pixel_Grid")->isChecked());
    EXPECT_FALSE(Action("actionSnapToGrid")->isChecked());

    window->resize(1200, 640);
    window->move(50, 60);
    Trigger("actionDisplay_Pixel_Grid");
    Trigger("actionZoom_In");
    EXPECT_TRUE(window->close());
    EXPECT_EQ(Kept("lastSize").toSize(), QSize(1200, 640));
    EXPECT_EQ(Kept("lastPosition").toPoint(), QPoint(50, 60));
    EXPECT_EQ(Kept("lastInnerSize").toInt(), Find<QWidget>("centralwidget")->width());
    EXPECT_TRUE(Kept("showGrid").toBool());
    EXPECT_FALSE(Kept("snapToGrid").toBool());
    EXPECT_EQ(Kept("imgSelVal").toInt(), 1);
    EXPECT_NEAR(Kept("zoomFactor").toDouble(), 2.875, 1e-6);
}
