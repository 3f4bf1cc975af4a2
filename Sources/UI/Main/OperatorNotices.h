// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QStringList>
#include <QTimer>

/// What the operator reads about the chosen network. Nobody may be there, so nothing waits for it:
/// a notice comes when the program is done with what it is at, one after the other, and a network
/// that comes and goes all night leaves one box and not a pile.
class OperatorNotices
{
public:
    /// Shows a text and returns when it was read.
    using Box = std::function<void(const QString&)>;
    explicit OperatorNotices(Box box);

    /// Returns at once. A text that waits or stands in an open box is not told twice.
    void Tell(const QString& text);
    /// Shows what waits, now, and returns when all of it was read.
    void Show();

private:
    Box box_;
    QStringList waiting_; ///< the first one stands in the open box
    bool open_ = false;
    QTimer soon_;
};
