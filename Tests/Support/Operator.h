// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <vector>

#include <QString>
#include <QTimer>

class QComboBox;
class QDialog;

namespace Support {

/// What was to be read in a box.
struct SeenBox
{
    QString title;
    QString text;
    QString byDefault;
    bool hasParent = false;
};

/// Sits before the screen while a box is open: answers the boxes in the order in which the answers
/// were given, and remembers what it read. A box without an answer fails the test and is closed.
class Operator
{
public:
    Operator();

    /// Presses this button, as Press does, in the next box.
    void WillPress(const QString& button);
    /// Does something else with the next dialog.
    void Will(std::function<void(QDialog&)> act);
    /// Chooses this file or folder in the next file dialog.
    void WillChoose(const QString& file);

    [[nodiscard]] bool IsDone() const { return acts_.empty(); }
    std::vector<SeenBox> seen;

private:
    void Look();

    std::vector<std::function<void(QDialog&)>> acts_;
    std::vector<QDialog*> inHand_; ///< those whose acts go on, the innermost last
    QTimer timer_;
};

/// Presses the button with this text in an open dialog. "Escape" presses the key.
void Press(QDialog& dialog, const QString& text);

/// Opens the list of a combo box and chooses an entry, as a hand on the keyboard does.
void Pick(QComboBox& combo, const char* entry);

} // namespace Support
