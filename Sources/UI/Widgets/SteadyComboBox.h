// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

/// A list whose choice takes effect on the output at once, so only a deliberate choice counts: the
/// wheel and other keys change nothing. Arrows, Space and Return open the list; Return in it
/// chooses. It gives its entries the colours of the look.
class SteadyComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit SteadyComboBox(QWidget* parent = nullptr);

    enum class Tone
    {
        Usual,
        Faded, ///< not there at the moment
        Mixed  ///< stands for several values
    };
    /// The colours of an entry from now on, also in another look.
    void SetTone(int row, Tone tone);

    /// While the list is open its entries must not change.
    [[nodiscard]] bool IsOpen() const;

signals:
    /// The list is closed, after the signal of what was chosen in it.
    void closed();

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void Colour(int row);
};
