// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

/// A column with a form in it that scrolls up and down: as wide as the form needs beside the scroll
/// bar, so that nothing of it is cut off at the side, and as high as there is room.
class FormScrollArea final : public QScrollArea
{
    Q_OBJECT

public:
    explicit FormScrollArea(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
