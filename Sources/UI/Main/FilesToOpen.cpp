// SPDX-License-Identifier: MIT
#include "UI/Main/FilesToOpen.h"

#include <QApplication>
#include <QWidget>

#include <utility>

#include "Log/Log.h"

namespace {

/// Short for the operator, and rare beside the frames.
constexpr int LookMilliseconds = 150;

/// A box would take the keyboard from what the operator is about to do.
bool IsOperatorAtWork()
{
    return QApplication::activeModalWidget() || QApplication::activePopupWidget() ||
           QApplication::mouseButtons() != Qt::NoButton;
}

} // namespace

FilesToOpen::FilesToOpen(QWidget& window)
    : window_(window)
{
    soon_.setInterval(LookMilliseconds);
    connect(&soon_, &QTimer::timeout, this, &FilesToOpen::OpenNext);
}

void FilesToOpen::Add(const QStringList& paths)
{
    waiting_ += paths;
    waiting_.removeDuplicates();
    if (waiting_.size() > MaxWaiting) {
        ZEN_LOG_INFO("%d files are too many to open: only the first %d are",
                     static_cast<int>(waiting_.size()), MaxWaiting);
        waiting_ = waiting_.mid(0, MaxWaiting);
    }
    if (!waiting_.isEmpty())
        soon_.start();
}

QStringList FilesToOpen::Take(const char* ending)
{
    QStringList taken;
    QStringList others;
    for (const QString& path : std::as_const(waiting_))
        (path.endsWith(QLatin1String(ending), Qt::CaseInsensitive) ? taken : others).append(path);
    waiting_ = others;
    return taken;
}

void FilesToOpen::OpenNext()
{
    if (IsOperatorAtWork())
        return;
    window_.setWindowState(window_.windowState() & ~Qt::WindowMinimized);
    window_.raise();
    window_.activateWindow();
    if (const QStringList libraries = Take(".wfl"); !libraries.isEmpty()) {
        emit fixturesOpened(libraries);
        return; // The mapping comes with the next look.
    }
    const QStringList mappings = Take(".wfm");
    waiting_.clear();
    soon_.stop();
    for (const QString& path : mappings.mid(1))
        ZEN_LOG_INFO("Only one mapping is opened at a time: %ls is left out",
                     path.toStdWString().c_str());
    if (!mappings.isEmpty())
        emit mappingOpened(mappings.front());
}
