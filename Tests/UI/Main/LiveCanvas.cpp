// SPDX-License-Identifier: MIT
#include "UI/Main/LiveCanvas.h"

#include <chrono>

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QTest>
#include <QTreeView>
#include <QWindow>

#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedLedItem.h"
#include "UI/Library/LEDDeviceListView.h"
#include "UI/Main/WEFTMain.h"

namespace {

std::int64_t WallClock()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

} // namespace

void LiveCanvas::StartWith(const QString& elements, int width, int height)
{
    WriteText(DocumentPath(),
              QStringLiteral("<LEDFixtureLibrary>\n</LEDFixtureLibrary>\n<ManualNetworkNodes />\n"
                             "<Mapping name=\"Show\" version=\"1.0\" resolution=\"%1,%2\" "
                             "network=\"2.X.X.X\">\n%3</Mapping>\n")
                  .arg(width)
                  .arg(height)
                  .arg(elements));
    // The network is written in another way than the list's.
    person.WillPress(QStringLiteral("OK"));
    Start();
}

QString LiveCanvas::Element(QPointF centre, QSizeF size, int rotation, int universe, int channel)
{
    static int count = 0;
    return QStringLiteral("<Element description=\"Bar %1\" fixture=\"%2\"><VideoMapping>"
                          "<center>%3,%4</center><size>%5,%6</size><rotation>%7</rotation>"
                          "</VideoMapping><DMXMapping type=\"ArtNet\"><ArtNetMapping subnet=\"0\" "
                          "universe=\"%8\" channel=\"%9\" /></DMXMapping></Element>\n")
        .arg(++count)
        .arg(Bar)
        .arg(centre.x())
        .arg(centre.y())
        .arg(size.width())
        .arg(size.height())
        .arg(rotation)
        .arg(universe)
        .arg(channel);
}

WeftMapEditorView& LiveCanvas::View() const
{
    return *Find<WeftMapEditorView>("mappingEditorView");
}

WeftMapEditorScene& LiveCanvas::Scene() const
{
    return *qobject_cast<WeftMapEditorScene*>(View().scene());
}

QImage LiveCanvas::Picture() const
{
    return View().viewport()->grab().toImage();
}

QColor LiveCanvas::Pixel(QPointF at) const
{
    return Picture().pixelColor(OnScreen(at));
}

std::vector<ElementState> LiveCanvas::Document() const
{
    DeviceManager& manager = Scene().GetManager();
    std::vector<ElementState> states;
    for (const MappedLedItem* element : manager.GetMappedDeviceModel()->GetAllItems())
        states.push_back(*ReadElement(
            manager, manager.GetMappedDeviceModel()->GetIndexOfUniqueID(element->uniqueID)));
    return states;
}

const MappedLedItem& LiveCanvas::Last() const
{
    return *Scene().GetManager().GetMappedDeviceModel()->GetAllItems().last();
}

void LiveCanvas::DragFromLibrary(const QString& product, QPointF to)
{
    auto& list = *Find<QTreeView>("treeView");
    const QModelIndexList found =
        list.model()->match(list.model()->index(0, DeviceModel::ProductColumn), Qt::DisplayRole,
                            product, 1, Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(found.size(), 1) << product.toStdString();
    list.expand(found.front().parent());
    list.scrollTo(found.front());
    const QPoint row = list.visualRect(found.front()).center();

    if (QGuiApplication::platformName() == QLatin1String("offscreen")) {
        // Without a display there are no drags: what this one carries is let fall by hand.
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, row);
        const auto load = Find<LEDDeviceListView>("treeView")->DragData();
        ASSERT_TRUE(load);
        const QString format = QLatin1String(LEDDeviceListView::FixtureMimeType);
        dropped = WallClock();
        DropData(format, load->data(format), to);
        return;
    }
    // The drag has an event loop of its own: the hand moves on from within.
    QWindow* screen = window->windowHandle();
    const QPoint target = View().viewport()->mapTo(window.get(), OnScreen(to));
    QTimer::singleShot(0, window.get(), [this, screen, target] {
        QTest::mouseMove(screen, target - QPoint(30, 30));
        QTest::mouseMove(screen, target);
        dropped = WallClock();
        QTest::mouseRelease(screen, Qt::LeftButton, Qt::NoModifier, target);
    });
    QTest::mousePress(list.viewport(), Qt::LeftButton, Qt::NoModifier, row);
    const QPoint aside = row + QPoint(QApplication::startDragDistance(), 0);
    QMouseEvent move(QEvent::MouseMove, aside, list.viewport()->mapToGlobal(aside), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list.viewport(), &move);
}

void LiveCanvas::ChooseFromMenu(const QString& text, QPointF at)
{
    QTimer::singleShot(0, window.get(), [text] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        for (QAction* action : menu->actions()) {
            if (action->text() == text)
                return QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                                         menu->actionGeometry(action).center());
        }
        ADD_FAILURE() << "no entry " << text.toStdString();
        menu->close();
    });
    const QPoint place = OnScreen(at);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, View().viewport()->mapToGlobal(place));
    QApplication::sendEvent(View().viewport(), &event);
}

void LiveCanvas::Undo()
{
    Type(&View(), Qt::Key_Z, Qt::ControlModifier);
}

void LiveCanvas::Redo()
{
    // Its key is another one from desktop to desktop.
    const int key = QKeySequence(QKeySequence::Redo)[0];
    Type(&View(), key & ~Qt::KeyboardModifierMask,
         Qt::KeyboardModifiers(key & Qt::KeyboardModifierMask));
}
