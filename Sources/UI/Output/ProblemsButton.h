// SPDX-License-Identifier: MIT
#pragma once

#include <QToolButton>

#include "UI/Output/ProblemCounts.h"

class LivePatchCheck;

/// The number of problems in the status bar, with the mark of the gravest. As wide as it ever gets,
/// so that nothing beside it moves.
class ProblemsButton final : public QToolButton
{
    Q_OBJECT

public:
    /// `check` outlives the button.
    explicit ProblemsButton(const LivePatchCheck& check);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void Show(const ProblemCounts& counts);
    void ShowMark();

    ProblemCounts counts_;
};
