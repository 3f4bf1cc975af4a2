// SPDX-License-Identifier: MIT
#include "LibTools/Qt5And6.h"

#include <QDropEvent>
#include <QGuiApplication>
#include <QImageReader>
#include <QLibraryInfo>
#include <QMouseEvent>
#include <QPointF>
#include <QTextStream>

namespace Qt5And6 {

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

QPointF PositionOf(const QMouseEvent& event)
{
    return event.localPos();
}

QPointF PositionOf(const QDropEvent& event)
{
    return event.posF();
}

QPointF GlobalPositionOf(const QMouseEvent& event)
{
    return event.screenPos();
}

void UseUtf8(QTextStream& stream)
{
    stream.setCodec("UTF-8");
}

void FollowScaleOfScreen()
{
    QGuiApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QGuiApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

void AllowLargePictures() {}

QString TranslationsPath()
{
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
}

#else

QPointF PositionOf(const QMouseEvent& event)
{
    return event.position();
}

QPointF PositionOf(const QDropEvent& event)
{
    return event.position();
}

QPointF GlobalPositionOf(const QMouseEvent& event)
{
    return event.globalPosition();
}

void UseUtf8(QTextStream& stream)
{
    stream.setEncoding(QStringConverter::Utf8);
}

void FollowScaleOfScreen() {} // It is the default.

void AllowLargePictures()
{
    constexpr int largest = 2048; // MiB
    QImageReader::setAllocationLimit(largest);
}

QString TranslationsPath()
{
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
}

#endif

} // namespace Qt5And6
