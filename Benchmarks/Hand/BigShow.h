// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cmath>

#include <QEventLoop>
#include <QString>
#include <QTimer>

/// A document of 254 universes with merging on: the received universe 15/15 is sent on 15/14.
namespace BigShow {

inline constexpr int Universes = 254;
inline constexpr int Canvas = 2000;

inline QString Element(int number, int elements)
{
    const int columns = static_cast<int>(std::ceil(std::sqrt(elements / 8.0)));
    const int universe = number % Universes;
    return QStringLiteral(
               "<Element description=\"Bar-%1\" fixture=\"Bar\"><VideoMapping><center>%2,"
               "%3</center><size>%4,%5</size><rotation>0</rotation></VideoMapping>"
               "<DMXMapping type=\"ArtNet\"><ArtNetMapping subnet=\"%6\" universe=\"%7\""
               " channel=\"%8\" ipconf=\"Auto\" /></DMXMapping></Element>")
        .arg(number)
        .arg((number % columns + 0.5) / columns * 0.8 + 0.1)
        .arg((number / columns + 0.5) / (8 * columns) * 0.8 + 0.1)
        .arg(0.7 / columns)
        .arg(0.07 / columns)
        .arg(universe / 16)
        .arg(universe % 16)
        .arg(1 + number / Universes * 30);
}

inline QString Document(int elements)
{
    QString text =
        QStringLiteral(
            "<LEDFixtureLibrary><LEDFixture manufacturer=\"Own\" product=\"Bar\"><PixelMapping "
            "width=\"10\" height=\"1\" type=\"RGB\">1 4 7 10 13 16 19 22 25 28 </PixelMapping>"
            "</LEDFixture></LEDFixtureLibrary><UniverseMerging Enabled=\"1\" "
            "FromStartSubnet=\"15\" "
            "FromStartUniverse=\"15\" ConsecutiveUniverses=\"1\" ToStartSubnet=\"15\" "
            "ToStartUniverse=\"14\" MergerDMXSource=\"PixelWeft\" /><Mapping name=\"Show\" "
            "version=\"1.0\" resolution=\"%1,%1\" network=\"2.X.X.X\">")
            .arg(Canvas);
    for (int i = 0; i < elements; ++i)
        text += Element(i, elements);
    return text + QStringLiteral("</Mapping>");
}

/// Runs the event loop as the program does. QTest::qWait sleeps 10 ms at a time meanwhile.
inline void Pass(std::chrono::milliseconds duration)
{
    QEventLoop loop;
    QTimer::singleShot(duration, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace BigShow
