// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include <QColor>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

/// A lamp that shows traffic: it lights with toggleOn() and goes out by itself 100 to 200 ms
/// after the last call, so that a steady stream keeps it lit without flicker. Dark it is grey,
/// whatever colour it lights in.
class LedIndicator : public QWidget
{
    Q_OBJECT

public:
    explicit LedIndicator(QWidget* parent = nullptr);

    [[nodiscard]] bool IsOn() const { return on_; }
    void SetColor(const QColor& color);
    /// Lights it until it is no longer steady.
    void SetSteady(bool steady);

    static constexpr QColor Green{0, 255, 0};

    static constexpr int SideLength = 28;
    static constexpr int HoldMilliseconds = 100;

public slots:
    void toggleOn();
    /// Runs by itself: a lamp that was lit since the last run stays lit until the next one.
    void toggleOff();

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Show(bool on);
    [[nodiscard]] QPixmap Draw(bool on) const;

    QColor color_ = Green;
    bool on_ = false;
    bool steady_ = false;
    std::array<QPixmap, 2> pixmaps_; ///< dark and lit, drawn at first need
    QTimer timer_;
    bool holdOn = false;
};
