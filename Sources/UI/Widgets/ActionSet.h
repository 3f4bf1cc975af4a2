// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>

#include <QAction>
#include <QIcon>

class QWidget;

/// All there is to know of an action but what it does. The texts are the untranslated ones, in the
/// context of the window.
struct ActionRow
{
    const char* objectName = nullptr; ///< never null
    const char* text = nullptr;       ///< untranslated, never null
    const char* toolTip = nullptr;    ///< null: the text; the shortcut is added to it
    const char* shortcut = nullptr;   ///< portable text, null for none
    const char* icon = nullptr;       ///< as ActionIcon takes it, null for none
    bool checkable = false;
};

/// The icon of this file among the program's bitmaps ("icon_undo.png").
[[nodiscard]] QIcon ActionIcon(const char* file);

/// A text of the window in the user's language.
[[nodiscard]] QString WindowText(const char* text);

/// Lets the action's keys work only while one of these widgets has the focus: in another place they
/// type, or mean something else. Menus go on showing them.
void KeepKeysTo(QAction& action, std::initializer_list<QWidget*> widgets);

/// The actions of one room, which adds each one beside what performs it. Where an action goes in
/// menus and tool bar is decided in UI/Main, by its object name.
class ActionSet
{
public:
    /// `window` owns the actions. Shortcuts work anywhere in it, also when the bar that shows their
    /// action is hidden.
    explicit ActionSet(QWidget& window);

    /// `slot` runs while `room` lives: a member of it, or anything callable without arguments.
    template <typename Room, typename Slot>
    QAction* Add(const ActionRow& row, Room* room, Slot slot)
    {
        QAction* action = AddWithoutSlot(row);
        QObject::connect(action, &QAction::triggered, room, slot);
        action->setEnabled(true);
        return action;
    }
    /// An action that nothing performs yet shows in its place and is disabled.
    QAction* AddWithoutSlot(const ActionRow& row);

private:
    QWidget& window_;
};
