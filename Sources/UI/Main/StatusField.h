// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QLabel>
#include <QWidget>

/// One fact in the status bar, named by its tool tip. It is as wide as the widest text that it can
/// have, so that nothing beside it moves; a longer one ends in dots and stands whole in the tool
/// tip. In a narrow window it gets narrower and doesn't hold the window open.
class StatusField : public QLabel
{
    Q_OBJECT

public:
    explicit StatusField(const char* objectName);

    /// `widest` is the widest text that is usual.
    void SetWords(const QString& name, const QString& widest);

    void Show(const QString& text);
    /// In the colour of what needs attention, or as usual.
    void SetWarns(bool warns);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Fit();

    QString widest_;
    QString whole_;
};

/// A small square in a colour, or nothing.
class ColourSwatch : public QWidget
{
    Q_OBJECT

public:
    ColourSwatch();

    /// An invalid colour is nothing.
    void Show(const QColor& colour);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor colour_;
};
