// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QList>
#include <QString>
#include <QTimer>

class QWidget;

/// What the operator should read, and need not answer. Nobody may be there, so the program never
/// waits for it: notices appear one after the other when the event loop runs again, and a network
/// that comes and goes all night leaves one box and not a pile.
class OperatorNotices
{
public:
    struct Notice
    {
        QWidget* parent = nullptr;
        QString title;
        QString text;
        bool offersExport = false; ///< beside OK, for work that can't be saved in its place

        bool operator==(const Notice&) const = default;
    };
    /// Shows a notice and returns when it was read.
    using Box = std::function<void(const Notice&)>;
    explicit OperatorNotices(Box box);

    /// Returns at once. A notice that already waits or is shown is not added again.
    void Add(const Notice& notice);
    /// Shows what waits, now, and returns when all of it was read.
    void Show();

private:
    Box box_;
    QList<Notice> waiting_; ///< the first one is in the open box
    bool open_ = false;
    QTimer soon_;
};
