// SPDX-License-Identifier: MIT
#include "UI/Dialogs/OperatorNotices.h"

#include <utility>

OperatorNotices::OperatorNotices(Box box)
    : box_(std::move(box))
{
    soon_.setSingleShot(true);
    QObject::connect(&soon_, &QTimer::timeout, &soon_, [this] { Show(); });
}

void OperatorNotices::Add(const Notice& notice)
{
    if (waiting_.contains(notice))
        return;
    waiting_.append(notice);
    soon_.start();
}

void OperatorNotices::Show()
{
    if (open_)
        return;
    open_ = true;
    while (!waiting_.isEmpty()) {
        box_(Notice(waiting_.first()));
        waiting_.removeFirst();
    }
    open_ = false;
}
