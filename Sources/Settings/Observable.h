// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

class Observable;

/// The data of a notification; its kinds derive from it.
class ObservableData
{
public:
    ObservableData() = default;
    ObservableData(const ObservableData&) = default;
    ObservableData& operator=(const ObservableData&) = default;
    virtual ~ObservableData() = default;
};

class WEFTObservableData : public ObservableData
{
public:
    std::int32_t kind = 2;
    std::int64_t value = 0;
};

/// Is notified of changes.
class Observer
{
public:
    Observer() = default;
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;
    virtual ~Observer() = default;

    virtual void Update(Observable& observable, const ObservableData* data) = 0;
};

/// Notifies observers of its changes. It doesn't own them: they outlive it or leave its lists.
class Observable
{
public:
    Observable() = default;
    Observable(const Observable&) = delete;
    Observable& operator=(const Observable&) = delete;
    virtual ~Observable() = default;

    /// If a change is set: updates the observers of the first list, then of the second, and clears
    /// the change. `data` may be null.
    void Notify(const ObservableData* data);
    void SetChanged() { changed = true; }
    void ClearChanged() { changed = false; }

    std::vector<Observer*> observers;
    bool changed = false;
    std::vector<Observer*> lateObservers;
};
