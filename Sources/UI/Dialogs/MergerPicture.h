// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "FixtureModel/UniverseMerging.h"

/// What the merger does, drawn with the numbers of its settings: the run that comes in and the
/// same run of our own, laid one over the other and sent as another run. Of more than three
/// universes the first and the last are drawn. Runs that overlap are marked.
class MergerPicture : public QWidget
{
    Q_OBJECT

public:
    explicit MergerPicture(QWidget* parent = nullptr);

    void Show(const UniverseMerging& merging);

    /// Grows with the font.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] double Scale() const;

    UniverseMerging merging_;
};
