// SPDX-License-Identifier: MIT
#include "UI/Main/OperatorNotices.h"

#include <utility>

OperatorNotices::OperatorNotices(Box box)
    : box_(std::move(box))
{
    soon_.setSingleShot(true);
    QObject::connect(&soon_, &QTimer::timeout, &soon_, [this] { Show(); });
}

void OperatorNotices::Tell(const QString& text)
{
    if (waiting_.contains(text))
        return;
    waiting_.append(text);
    soon_.start();
}

void OperatorNotices::Show()
{
    if (open_)
        return;
    open_ = true;
    while (!waiting_.isEmpty()) {
        box_(QString(waiting_.first()));
        waiting_.removeFirst();
    }
    open_ = false;
}
