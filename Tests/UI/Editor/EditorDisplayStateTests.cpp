// SPDX-License-Identifier: MIT
#include "Support/TemporaryFolder.h"
#include "UI/Editor/EditorDisplayState.h"

#include <gtest/gtest.h>

#include <cmath>

#include <QSettings>
#include <QStringList>

TEST(EditorDisplayState, ZoomsReadAsTheOperatorKnowsThem)
{
    QStringList texts;
    for (const double preset : EditorDisplayState().zoomPresets)
        texts.append(ZoomText(preset));
    EXPECT_EQ(texts.join(QLatin1Char(' ')),
              QStringLiteral("3200% 2400% 1600% 1200% 800% 700% 600% 500% 400% 300% 200% 100% 66% "
                             "50% 33% 25% 15% 11% 7% 5% 5% 3% 2% 1% 0%"));
    EXPECT_NEAR(*ZoomFromText(QStringLiteral("150")), 1.5001500025, 1e-9);
    EXPECT_EQ(ZoomFromText(QStringLiteral("%1%5%0")), ZoomFromText(QStringLiteral("150")));
    for (const char* text : {"", "%", "1.5", "wide", "1e2", "99999999999"})
        EXPECT_FALSE(ZoomFromText(QLatin1String(text))) << text;
    // What was typed is what the combo shows afterwards, also after the store's single precision.
    for (int percent = 1; percent <= 3200; ++percent) {
        const auto stored = static_cast<float>(*ZoomFromText(QString::number(percent)));
        ASSERT_EQ(ZoomText(static_cast<double>(stored)), QStringLiteral("%1%").arg(percent));
    }
}

TEST(EditorDisplayState, ZoomStaysWhereACanvasCanBeSeen)
{
    EditorDisplayState display;
    for (int i = 0; i < 500; ++i)
        display.ZoomIn();
    EXPECT_EQ(display.zoom, EditorDisplayState::MaxZoom);
    display.SetZoom(std::nan(""));
    EXPECT_EQ(display.zoom, EditorDisplayState::MaxZoom);
    display.SetZoom(0);
    EXPECT_EQ(display.zoom, EditorDisplayState::MinZoom);
}

TEST(EditorDisplayState, AStoreWithoutAZoomGivesTheWholeCanvas)
{
    const Support::TemporaryFolder folder;
    QSettings store(QString::fromStdString((folder.Path() / "store.ini").string()),
                    QSettings::IniFormat);
    EditorDisplayState display;
    for (const char* broken : {"0", "-3", "nan", "inf", "wide"}) {
        store.setValue(QStringLiteral("zoomFactor"), QLatin1String(broken));
        display.Read(store);
        EXPECT_EQ(display.zoom, 1.0) << broken;
    }
}
