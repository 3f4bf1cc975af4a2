// SPDX-License-Identifier: MIT
#include "UI/Main/PixelInspector.h"

#include <algorithm>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QToolTip>

#include "LEDEngine/ChannelTrace.h"
#include "LEDEngine/LEDEngine.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"

namespace {

constexpr int UpdateMilliseconds = 100;
constexpr int TipMilliseconds = 10'000; ///< more than any update takes
constexpr int TipMargin = 24;           ///< of the screen, beside a line that fills it

} // namespace

PixelInspector::PixelInspector(const Parts& parts)
    : parts_(parts)
{
    timer_.setInterval(UpdateMilliseconds);
    connect(&timer_, &QTimer::timeout, this, &PixelInspector::Show);
    parts_.view.viewport()->installEventFilter(this);
    parts_.window.installEventFilter(this);
}

bool PixelInspector::eventFilter(QObject* watched, QEvent* event)
{
    const bool onCanvas = watched == parts_.view.viewport();
    switch (event->type()) {
    case QEvent::MouseMove:
        if (onCanvas) {
            const auto& move = *static_cast<QMouseEvent*>(event);
            pointer_ = move.pos();
            HoldAlt(move.modifiers() == Qt::AltModifier && move.buttons() == Qt::NoButton);
        }
        break;
    case QEvent::Leave:
        if (onCanvas)
            pointer_.reset();
        Follow();
        break;
    case QEvent::ShortcutOverride: {
        // From here on the menu bar would wait for the release of Alt, and take the keyboard.
        const auto& key = *static_cast<QKeyEvent*>(event);
        return key.key() == Qt::Key_Alt && pointer_ && !WordsUnder(*pointer_).isEmpty();
    }
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        // No field has a use for the key alone, so it comes here wherever the keyboard is.
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt)
            HoldAlt(event->type() == QEvent::KeyPress);
        break;
    case QEvent::WindowDeactivate:
        HoldAlt(false); // Its release goes to another window.
        break;
    default:
        break;
    }
    return false;
}

void PixelInspector::HoldAlt(bool held)
{
    altIsDown_ = held;
    Follow();
}

void PixelInspector::Follow()
{
    const bool wanted = altIsDown_ && pointer_;
    if (wanted == timer_.isActive())
        return;
    if (wanted) {
        timer_.start();
        Show();
    } else {
        timer_.stop();
        QToolTip::hideText();
    }
}

void PixelInspector::Show()
{
    const bool altIsUp = !QGuiApplication::keyboardModifiers().testFlag(Qt::AltModifier);
    if (altIsUp || QApplication::activePopupWidget()) {
        HoldAlt(false); // A menu that Alt opened has got the release.
        return;
    }
    const QString words = WordsUnder(*pointer_);
    if (words.isEmpty()) {
        QToolTip::hideText();
        return;
    }
    const int room = parts_.view.screen()->availableSize().width() - TipMargin;
    const QString line =
        QFontMetrics(QToolTip::font()).elidedText(words, Qt::ElideRight, std::max(room, TipMargin));
    // As HTML, or a description with a "<" in it might be taken for that.
    QToolTip::showText(parts_.view.viewport()->mapToGlobal(*pointer_),
                       QStringLiteral("<div style=\"white-space: nowrap\">") +
                           line.toHtmlEscaped() + QStringLiteral("</div>"),
                       &parts_.view, {}, TipMilliseconds);
}

QString PixelInspector::WordsUnder(QPoint pointer) const
{
    const QPointF place = parts_.view.mapToScene(pointer);
    const MappingRectangle* item = parts_.scene.ElementAt(place);
    const MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    const MappedLedItem* element = item ? document.GetItemByUniqueID(item->GetId()) : nullptr;
    if (!element || !element->GetVideoMapping())
        return {};
    const PixelMap& map = element->GetFixture().pixelMap;
    const ElementSampling::CanvasSize canvas{document.GetCanvasWidth(), document.GetCanvasHeight()};
    const auto cell = ElementSampling::PixelUnder(*element->GetVideoMapping(), canvas,
                                                  map.GetWidth(), map.GetHeight(),
                                                  {static_cast<float>(place.x() / canvas.width),
                                                   static_cast<float>(place.y() / canvas.height)});
    if (!cell)
        return {};
    const auto trace = TracePixel(parts_.engine, document, element->uniqueID, *cell);
    return trace ? ChannelTraceText(*trace)
                 : tr("\"%1\" sends no pixel here")
                       .arg(QString::fromStdWString(element->description));
}
