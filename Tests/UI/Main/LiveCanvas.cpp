// SPDX-License-Identifier: MIT
#include "UI/Main/LiveCanvas.h"

#include <chrono>

#include "Model/DeviceModel.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Library/LEDDeviceListView.h"

namespace {

std::int64_t WallClock()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

} // namespace

WeftMapEditorView& LiveCanvas::View() const
{
    return *Find<WeftMapEditorView>("mappingEditorView");
}

WeftMapEditorScene& LiveCanvas::Scene() const
{
    return *qobject_cast<WeftMapEditorScene*>(View().scene());
}

const MappingRectangle& LiveCanvas::Item(std::size_t row) const
{
    return *Scene().Find(Scene().AllIds().at(row));
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
        // Without a display there are no drags: what this one carries is dropped by hand.
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
