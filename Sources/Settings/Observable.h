// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

class Observable;

/// What a notification carries; the kinds derive from it.
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

/// Somebody who wants to hear of changes.
class Observer
{
public:
    Observer() = default;
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;
    virtual ~Observer() = default;

    virtual void Update(Observable& observable, const ObservableData* data) = 0;
};

/// Something whose changes are told to observers, which it doesn't own: they must outlive it or
/// leave its lists.
class Observable
{
public:
    Observable() = default;
    Observable(const Observable&) = delete;
    Observable& operator=(const Observable&) = delete;
    virtual ~Observable() = default;

    /// Tells the observers of the first list, then of the second, when there is a change to tell,
    /// and forgets the change. `data` may be null.
    void Notify(const ObservableData* data);
    void SetChanged() { changed = true; }
    void ClearChanged() { changed = false; }

    std::vector<Observer*> observers;
    bool changed = false;
    std::vector<Observer*> lateObservers;
};
