// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include <QRect>
#include <QString>

#include "LEDEngine/IdentifyLight.h"
#include "UI/Dialogs/FixedDialog.h"

class QButtonGroup;
class QCheckBox;
class QHBoxLayout;
class QLabel;
class QPushButton;

/// The small window beside the canvas that says which element is lit, large enough to be read from
/// a step away, and how. It stays open while one works in the main window, whose shortcuts work in
/// it, too.
class IdentifyPanel final : public FixedDialog
{
    Q_OBJECT

public:
    explicit IdentifyPanel(QWidget* parent);

    /// What is said of one element, in words.
    struct Facts
    {
        QString number; ///< "3 of 48"
        QString description;
        QString address;
        QString channels;
        QString node;
        QString trouble; ///< why it may not be seen on the stage; empty when all is well
    };
    void Show(const Facts& facts);

    /// One of the colours, by the key that chooses it.
    struct Colour
    {
        Qt::Key key = Qt::Key_unknown;
        const char* name = nullptr; ///< untranslated
        PixelColour light;
    };
    [[nodiscard]] static std::span<const Colour> Colours();
    /// False when no colour has this key.
    bool ChooseColour(int key);

    [[nodiscard]] PixelColour ChosenColour() const;
    [[nodiscard]] bool MarksEnds() const;
    [[nodiscard]] bool OthersDark() const;

    /// Opens beside the top right corner of this rectangle of the screen, or where it was left.
    void OpenAt(const QRect& canvas);

signals:
    /// By so many elements, forward or back.
    void stepped(int by);
    /// Colour, ends or others.
    void lightChanged();
    /// The panel was closed, by whatever. Minimised it stays open.
    void closed();

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void FollowTexts();
    void ShowElided(QLabel& label, const QString& text);
    [[nodiscard]] QLabel* AddLabel(const char* name, double scale);
    [[nodiscard]] QHBoxLayout* MakeColours();
    [[nodiscard]] QHBoxLayout* MakeSteps();
    [[nodiscard]] QCheckBox* AddSwitch(const char* name, const char* text, bool on);
    QPushButton* MakeStep(const char* name, int by);

    QLabel* number_ = nullptr;
    QLabel* description_ = nullptr;
    QLabel* address_ = nullptr;
    QLabel* channels_ = nullptr;
    QLabel* node_ = nullptr;
    QLabel* trouble_ = nullptr;
    QButtonGroup* colours_ = nullptr;
    QCheckBox* ends_ = nullptr;
    QCheckBox* others_ = nullptr;
    bool placed_ = false;
};
