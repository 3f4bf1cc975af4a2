// SPDX-License-Identifier: MIT
#pragma once

#include <QToolButton>

/// A button that opens the legend of the channels' cells: an example of each with its meaning.
class CellLegend final : public QToolButton
{
    Q_OBJECT

public:
    explicit CellLegend(QWidget* parent = nullptr);
};
