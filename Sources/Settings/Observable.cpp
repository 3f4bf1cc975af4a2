// SPDX-License-Identifier: MIT
#include "Settings/Observable.h"

void Observable::Notify(const ObservableData* data)
{
    if (!changed)
        return;
    // Copies: an observer may leave or join during its update.
    const auto first = observers;
    const auto second = lateObservers;
    for (Observer* observer : first)
        observer->Update(*this, data);
    for (Observer* observer : second)
        observer->Update(*this, data);
    changed = false;
}
