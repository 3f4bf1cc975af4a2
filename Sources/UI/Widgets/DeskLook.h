// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

/// All colours of the program by what they are for. Whatever paints takes them from CurrentLook()
/// each time, so that it follows when the operator changes the look. What covers the picture on
/// the canvas is not here: a picture is the same by day and by night.
///
/// A text has a contrast of at least 4.5 to 1 to the grounds that it is written on. What is
/// "faded" can't be used now: it can still be read, and differs from what can be used.
struct Look
{
    QColor window; ///< ground of the window and of the dialogs
    QColor windowText;
    QColor windowTextFaded;
    QColor line; ///< around groups, between parts
    QColor toolBarTop;
    QColor toolBarBottom;
    QColor surroundTop; ///< round the canvas
    QColor surroundBottom;

    QColor bar; ///< ground of menus, titles of docks, headers of lists, status bar, tool tips
    QColor barText;
    QColor barTextFaded;
    QColor barLine;

    QColor list;
    QColor listAlternate;
    QColor listText;
    QColor listTextFaded; ///< what is known and not there now
    QColor listLine;
    QColor scrollBar;
    QColor scrollHandle;
    QColor scrollHandleHover;

    QColor field; ///< ground of what is typed in
    QColor fieldText;
    QColor fieldLine;
    QColor checkLine; ///< round check boxes and radio buttons
    QColor button;
    QColor buttonText;
    QColor buttonHover;
    QColor buttonChosen; ///< pressed, switched on, or pressed by Return
    QColor faded;        ///< ground of a field or a button
    QColor fadedText;

    QColor accent;     ///< what is chosen or has the keyboard
    QColor accentText; ///< on the accent, and on the colour of caution

    // On dark grounds: lists, bars, fields and messages.
    QColor caution; ///< works, and not as it should: amber
    QColor trouble; ///< doesn't work: red
    QColor message; ///< ground of a text in these colours inside of a window

    QColor mixed; ///< the row of a list that stands for several values
    QColor mixedText;

    QColor cellMapped; ///< of the pixel map
    QColor cellEmpty;
    QColor cellFigure;
    QColor cellOverlap;
    QColor cellBeyond;

    // Grounds of the channels that an element is sent on, one for each of neighbours.
    QColor ownerA;
    QColor ownerB;
    QColor ownerC;
    QColor ownerD;
    QColor receivedDots; ///< on the list's ground: channels that are received

    QColor lampOff;
    QColor lampRimDark;
    QColor lampRimLight;
    double lampStrength = 1; ///< share of its light that a lamp shows: above 0, at most 1

    bool operator==(const Look&) const = default;
};

/// The window's middle grey with black text, dark lists and fields with light text.
[[nodiscard]] const Look& GreyLook();
/// For a dark room: dark all over, and nothing brighter than it must be to be read.
[[nodiscard]] const Look& NightLook();

/// The look that the program has now, the grey one at first. Main thread.
[[nodiscard]] const Look& CurrentLook();
/// Gives this look to all that is open and all that opens later. `look` is one of the two. Widgets
/// that keep what they painted are told by QEvent::StyleChange.
void UseLook(const Look& look);

/// Of the current look: what is in trouble, on a dark ground; what needs attention; and what stands
/// on the latter.
[[nodiscard]] inline QColor TroubleColour()
{
    return CurrentLook().trouble;
}
[[nodiscard]] inline QColor WarningColour()
{
    return CurrentLook().caution;
}
[[nodiscard]] inline QColor WarningInk()
{
    return CurrentLook().accentText;
}

[[nodiscard]] inline QColor DarkLampColour()
{
    return CurrentLook().lampOff;
}

/// What UseLook() gives to the program, for a widget without a program around it.
[[nodiscard]] QString DeskStyleSheet(const Look& look = CurrentLook());
/// The same colours for what no style sheet reaches: the style's own lines.
[[nodiscard]] QPalette DeskPalette(const Look& look = CurrentLook());
