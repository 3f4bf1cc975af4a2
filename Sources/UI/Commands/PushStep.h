// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QUndoStack>

/// Makes `command` the next step of the history; false for one that changes nothing, which would be
/// a step that undoes nothing.
template <class Command>
bool PushStep(QUndoStack& history, std::unique_ptr<Command> command)
{
    if (command->ChangesNothing())
        return false;
    history.push(command.release());
    return true;
}
