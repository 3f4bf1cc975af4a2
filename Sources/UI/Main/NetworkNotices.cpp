// SPDX-License-Identifier: MIT
#include "UI/Main/NetworkNotices.h"

#include "UI/Dialogs/OperatorBoxes.h"

NetworkNotices::NetworkNotices(OperatorBoxes& boxes)
    : boxes_(boxes)
{
    soon_.setSingleShot(true);
    QObject::connect(&soon_, &QTimer::timeout, &soon_, [this] { Show(); });
}

void NetworkNotices::Tell(const QString& text)
{
    if (waiting_.contains(text))
        return;
    waiting_.append(text);
    soon_.start();
}

void NetworkNotices::Show()
{
    if (open_)
        return;
    open_ = true;
    while (!waiting_.isEmpty()) {
        boxes_.Notify(nullptr, QString(), waiting_.first());
        waiting_.removeFirst();
    }
    open_ = false;
}
