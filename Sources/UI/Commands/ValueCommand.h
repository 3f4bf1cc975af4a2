// SPDX-License-Identifier: MIT
#pragma once

#include <utility>
#include <vector>

#include <QUndoCommand>

#include "Model/DeviceManager.h"

/// A change of elements that stay in the document: it keeps one value of each, before and after, to
/// the last bit, and puts the one or the other into the model. Elements that have gone meanwhile
/// are passed over. `Entry` is such a value with the element's identifier.
template <class Entry>
class ValueCommand : public QUndoCommand
{
public:
    /// Whether all elements are as they were, so that there is nothing to undo.
    [[nodiscard]] bool ChangesNothing() const { return before_ == after_; }

    void undo() override { Set(before_); }
    void redo() override { Set(after_); }
    bool mergeWith(const QUndoCommand*) override { return false; }

protected:
    using Entries = std::vector<Entry>;

    /// `set` puts entries into the model. `manager` outlives the command.
    ValueCommand(DeviceManager& manager, Entries before, void (DeviceManager::*set)(const Entries&),
                 const QString& text)
        : QUndoCommand(text)
        , manager_(manager)
        , before_(std::move(before))
        , after_(before_)
        , set_(set)
    {}

    void Set(const Entries& entries) const { (manager_.*set_)(entries); }

    DeviceManager& manager_;
    const Entries before_;
    Entries after_;

private:
    void (DeviceManager::*set_)(const Entries&);
};
