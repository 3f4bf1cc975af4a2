// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "UI/Dialogs/LedDialogAddIPrange.h"
#include "UI/Main/Desk.h"
#include "UI/Widgets/DeskLook.h"
#include "UI/Widgets/IPCtrlManual.h"

namespace {

/// A person at the keyboard before a dialog or a control of its own.
class Address : public testing::Test
{
protected:
    static void Show(QWidget& widget)
    {
        widget.setStyleSheet(DeskStyleSheet());
        widget.show();
        widget.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
    }
    /// Keys go to whatever has the focus then.
    static void Type(const char* keys)
    {
        for (; *keys; ++keys) {
            QTest::keyClick(QApplication::focusWidget(), *keys);
            QCoreApplication::processEvents();
        }
    }
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QCoreApplication::processEvents();
    }
    /// The place of the field with the focus, 1 to 4.
    static int Place()
    {
        const QWidget* focused = QApplication::focusWidget();
        return focused ? focused->objectName().right(1).toInt() : 0;
    }
    static QLineEdit& Field(const QWidget& control, int place)
    {
        return *control.findChild<QLineEdit*>(QStringLiteral("octet%1").arg(place));
    }
    static QLineEdit& Focused() { return *qobject_cast<QLineEdit*>(QApplication::focusWidget()); }

    const InFont usual{9};
};

} // namespace

TEST_F(Address, TypingMovesOnWhereAFieldIsDone)
{
    IPCtrlManualIPRange range;
    Show(range);
    EXPECT_EQ(range.width(), 120);
    range.SetIP(QStringLiteral("X.X.X.X"));
    EXPECT_EQ(Focused().selectedText(), QStringLiteral("X"));
    Type("192168019");
    EXPECT_EQ(range.GetIP(), QStringLiteral("192.168.0.19"));
    EXPECT_EQ(Place(), 4);

    range.SetIP(QStringLiteral("X.X.X.X"));
    Type("19");
    EXPECT_EQ(Place(), 1) << "there could be a third";
    Type(".256");
    EXPECT_EQ(range.GetIP(), QStringLiteral("19.25.X.X")) << "256 is no octet";
    Type(",7.255");
    EXPECT_EQ(range.GetIP(), QStringLiteral("19.25.7.X"));
    EXPECT_EQ(Place(), 4) << "the last field has nowhere to go";

    // A 0 is a whole octet where the field was empty; the next digit goes on.
    range.Clear();
    Field(range, 1).setFocus();
    Type("0005");
    EXPECT_EQ(range.GetIP(), QStringLiteral("0.0.0.5"));
    range.SetIP(QStringLiteral("X.X.X.X"));
    Type("100x");
    EXPECT_EQ(range.GetIP(), QStringLiteral("100.X.X.X"));
    EXPECT_EQ(Place(), 3);
}

TEST_F(Address, WhatIsLeftEmptyIsOpen)
{
    IPCtrlManualIPRange range;
    Show(range);
    range.Clear();
    EXPECT_EQ(range.GetIP(), QStringLiteral("..."));
    EXPECT_EQ(range.GetIPWithWildcards(), QStringLiteral("X.X.X.X"));
    Field(range, 1).setFocus();
    Press(Qt::Key_Period);
    Press(Qt::Key_Tab);
    QTest::mouseClick(&Field(range, 4), Qt::LeftButton);
    EXPECT_EQ(range.GetIP(), QStringLiteral("X.X.X."));

    range.SetIP(QStringLiteral("2.255.255.0"));
    EXPECT_EQ(range.GetIP(), QStringLiteral("2.X.X.0"));
    range.SetIP(QStringLiteral("2.3.4"));
    range.SetIPAndMask(QStringLiteral("1.2.3.4"), QStringLiteral("1.255.255.255"));
    EXPECT_EQ(range.GetIP(), QStringLiteral("2.X.X.0"));
}

TEST_F(Address, TheCursorLeavesAFieldAtItsEnds)
{
    IPCtrlManualIPRange range;
    Show(range);
    range.SetIP(QStringLiteral("192.16.8.1"));
    Press(Qt::Key_Right);
    EXPECT_EQ(Place(), 2);
    EXPECT_EQ(Focused().selectedText(), QStringLiteral("16"));
    EXPECT_EQ(Focused().cursorPosition(), 0);
    Press(Qt::Key_Right);
    EXPECT_EQ(Place(), 2) << "the cursor was at the beginning";
    Press(Qt::Key_End);
    Press(Qt::Key_Right);
    EXPECT_EQ(Place(), 3);
    Press(Qt::Key_Left);
    EXPECT_EQ(Place(), 2);
    EXPECT_EQ(Focused().cursorPosition(), 2);
    EXPECT_EQ(Focused().selectedText(), QStringLiteral("16"));
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Place(), 2);
    EXPECT_EQ(Focused().text(), QString());
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Place(), 1);
    EXPECT_EQ(range.GetIP(), QStringLiteral("192.X.8.1"));

    // A full field holds on to nothing: not to the focus that Shift+Tab takes back ...
    Press(Qt::Key_Tab);
    Type("168");
    ASSERT_EQ(Place(), 3);
    Field(range, 2).setFocus();
    Field(range, 2).end(false);
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Place(), 1);
    // ... and a modifier is no typing.
    Field(range, 3).setText(QStringLiteral("X"));
    Field(range, 3).setFocus();
    Press(Qt::Key_Shift);
    EXPECT_EQ(Place(), 3);
}

TEST_F(Address, OfANodeOnlyTheOpenPartCanBeTyped)
{
    IPCtrlManualNodeIP node;
    Show(node);
    node.SetIP(QStringLiteral("192.168.1.255"));
    EXPECT_EQ(node.GetIP(), QStringLiteral("192.168.1."));
    EXPECT_EQ(Place(), 4);
    for (int place = 1; place <= 3; ++place) {
        EXPECT_TRUE(Field(node, place).isReadOnly()) << place;
        EXPECT_EQ(Field(node, place).focusPolicy(), Qt::NoFocus) << place;
    }
    Press(Qt::Key_Backspace);
    EXPECT_EQ(Place(), 4) << "nothing to type in the third";
    Type("255");
    EXPECT_EQ(node.GetIP(), QStringLiteral("192.168.1.255"));

    // The same control for another node.
    node.SetIPAndMask(QStringLiteral("2.17.9.33"), QStringLiteral("2.255.0.255"));
    EXPECT_EQ(node.GetIP(), QStringLiteral("2.17.0.33"));
    EXPECT_EQ(Place(), 2);
    EXPECT_FALSE(Field(node, 4).isReadOnly());
    Type("200");
    EXPECT_EQ(Place(), 2);
    EXPECT_EQ(node.GetIP(), QStringLiteral("2.200.0.33"));
}

TEST_F(Address, ARangeIsMadeChangedAndDeleted)
{
    const auto deleteButton = [](const LedDialogAddIPrange& dialog) {
        return dialog.findChild<QPushButton*>(QStringLiteral("deleteButton"));
    };
    LedDialogAddIPrange made;
    made.SetUpForNew();
    Show(made);
    EXPECT_FALSE(deleteButton(made)->isVisible());
    EXPECT_EQ(made.GetRange(), QStringLiteral("X.X.X.X"));
    Type("2.");
    Press(Qt::Key_Return);
    EXPECT_EQ(made.result(), QDialog::Accepted);
    EXPECT_EQ(made.GetRange(), QStringLiteral("2.X.X.X"));

    LedDialogAddIPrange changed;
    changed.SetUpForEdit(QStringLiteral("10.0.X.X"));
    Show(changed);
    EXPECT_EQ(changed.GetRange(), QStringLiteral("10.0.X.X"));
    Type("2");
    Press(Qt::Key_Escape);
    EXPECT_EQ(changed.result(), QDialog::Rejected);

    LedDialogAddIPrange deleted;
    deleted.SetUpForEdit(QStringLiteral("10.0.X.X"));
    Show(deleted);
    QTest::mouseClick(deleteButton(deleted), Qt::LeftButton);
    EXPECT_EQ(deleted.result(), LedDialogAddIPrange::Deleted);
    EXPECT_FALSE(deleted.isVisible());
}
