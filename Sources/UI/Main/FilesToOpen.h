// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

class QWidget;

/// Files that were opened outside of the window: by a double click in a file manager, or on the
/// command line. They come at any time, so they wait until no box, no menu and no drag is under way
/// that they could disturb, and are then asked about one after the other.
class FilesToOpen : public QObject
{
    Q_OBJECT

public:
    /// More than so many that wait are left out.
    static constexpr int MaxWaiting = 100;

    /// The window, which outlives this object, comes to the front for what is asked in it.
    explicit FilesToOpen(QWidget& window);

    /// Mappings (.wfm) and libraries (.wfl). Returns at once.
    void Add(const QStringList& paths);

signals:
    /// All libraries that waited.
    void fixturesOpened(const QStringList& paths);
    /// One mapping. It comes after the libraries, and of several that waited alone: each would take
    /// the place of the one before.
    void mappingOpened(const QString& path);

private:
    void OpenNext();
    [[nodiscard]] QStringList Take(const char* ending);

    QWidget& window_;
    QStringList waiting_;
    QTimer soon_;
};
