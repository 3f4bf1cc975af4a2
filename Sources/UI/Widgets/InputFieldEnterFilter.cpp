// SPDX-License-Identifier: MIT
#include "UI/Widgets/InputFieldEnterFilter.h"

#include <QKeyEvent>

bool InputFieldEnterFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter)
            return true;
    }
    return QObject::eventFilter(watched, event);
}
