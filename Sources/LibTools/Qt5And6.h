// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QString>
#include <QVariant>

class QDropEvent;
class QMouseEvent;
class QPointF;
class QTextStream;

/// What Qt 5.15 and Qt 6 call differently, one function for both: nothing else in the program asks
/// for the version of Qt that it is built with.
namespace Qt5And6 {

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
using ValueType = QVariant::Type;
#else
using ValueType = QMetaType; ///< of what is asked from a clipboard
#endif

/// `Event` is the event's own class, or it would be cut to its base.
template <typename Event>
[[nodiscard]] std::unique_ptr<Event> CopyOf(const Event& event)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return std::make_unique<Event>(event);
#else
    return std::unique_ptr<Event>(event.clone());
#endif
}

/// In the widget that gets the event.
[[nodiscard]] QPointF PositionOf(const QMouseEvent& event);
[[nodiscard]] QPointF PositionOf(const QDropEvent& event);
/// On the screen.
[[nodiscard]] QPointF GlobalPositionOf(const QMouseEvent& event);

/// What the stream writes or reads is UTF-8, whatever the locale.
void UseUtf8(QTextStream& stream);

/// Lengths in pixels and pictures follow the screen's scale. To be called before the application is
/// made.
void FollowScaleOfScreen();

/// Picture files may take as much memory as a QImage can, 2 GiB, not only the 128 MiB that Qt 6
/// begins with.
void AllowLargePictures();

/// The folder of Qt's own translations.
[[nodiscard]] QString TranslationsPath();

} // namespace Qt5And6
