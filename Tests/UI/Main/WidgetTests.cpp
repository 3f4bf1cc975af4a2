// SPDX-License-Identifier: MIT

#include "Model/DeviceListProxy.h"
#include "Model/DeviceManager.h"
#include "UI/Library/LEDDeviceListView.h"
#include "UI/Main/Desk.h"
#include "UI/Widgets/LedIndicator.h"

TEST(LedIndicatorTest, ALampIsLitFromOneCallToTheSecondRunAfterIt)
{
    LedIndicator lamp;
    const auto green = [&lamp] {
        return lamp.grab().toImage().pixelColor(14, 12).green();
    };
    const int dark = green();
    lamp.toggleOn();
    const int lit = green();
    EXPECT_GT(lit, dark + 60);
    // A steady stream keeps it lit.
    for (int i = 0; i < 5; ++i) {
        lamp.toggleOn();
        lamp.toggleOff();
        EXPECT_TRUE(lamp.IsOn());
    }
    lamp.toggleOff();
    EXPECT_FALSE(lamp.IsOn());
    EXPECT_EQ(green(), dark);
    lamp.toggleOn();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !lamp.IsOn(); })) << "it goes out by itself";
    lamp.toggleOn();
    lamp.SetColor(Qt::red);
    EXPECT_LT(green(), lit);
}

TEST(LEDDeviceListViewTest, ADragCarriesTheFixtureAndAManufacturerNone)
{
    DeviceManager manager(QStringLiteral("none.wfl"));
    manager.Initialize();
    manager.LoadLibrary(QStringLiteral(":/wfl/Resources/LEDFixtureLib.wfl"));
    LEDDeviceListView view;
    view.setModel(manager.GetDeviceListProxy());
    view.SetDeviceManager(&manager);
    EXPECT_EQ(view.DragData(), nullptr);
    view.sortByColumn(0, Qt::DescendingOrder);
    view.expandAll();
    view.show();
    const auto press = [&view](QPoint at) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, at);
    };
    const QModelIndex manufacturer = view.model()->index(0, 0);
    press(view.visualRect(manufacturer).center());
    EXPECT_EQ(view.DragData(), nullptr);

    const QModelIndex fixture = view.model()->index(0, 1, manufacturer);
    const QPoint lowerEdge = view.visualRect(fixture).bottomLeft() + QPoint(20, 0);
    press(lowerEdge);
    // On its way the mouse passes over the next row.
    const QPoint next = lowerEdge + QPoint(2, 5);
    QMouseEvent move(QEvent::MouseMove, next, view.viewport()->mapToGlobal(next), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(view.viewport(), &move);
    EXPECT_EQ(view.selectionModel()->selectedRows(1), QModelIndexList{fixture});
    const auto load = view.DragData();
    ASSERT_TRUE(load);
    const QByteArray id = load->data(QStringLiteral("application/zentriledfixture"));
    const DeviceLedItem* item = manager.GetDeviceModel()->GetLEDFixture(id.toLongLong());
    ASSERT_TRUE(item) << id.constData();
    EXPECT_EQ(QString::fromStdWString(item->product), fixture.data().toString());
}
