// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

/// Does the work and paints what it changed. The window is told to paint at once: left to itself it
/// waits some milliseconds for more, and the wait, or another window's painting, would count here.
template <class Work>
double MillisecondsOf(QWidget& window, const Work& work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    QCoreApplication::sendPostedEvents();
    QEvent update(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(&window, &update);
    const auto end = std::chrono::steady_clock::now();
    return std::chrono::duration<double, std::milli>(end - begin).count();
}
