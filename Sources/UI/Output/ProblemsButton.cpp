// SPDX-License-Identifier: MIT
#include "UI/Output/ProblemsButton.h"

#include <QEvent>

#include "Language/Language.h"
#include "UI/Output/LivePatchCheck.h"
#include "UI/Widgets/TroubleDelegate.h"

namespace {

constexpr int MarkSize = 12;
constexpr int Margins = 12; ///< beside the mark and the text
constexpr int MostShown = 999;

QString CountText(int count)
{
    return count > MostShown ? QStringLiteral("%1+").arg(MostShown) : QString::number(count);
}

} // namespace

ProblemsButton::ProblemsButton(const LivePatchCheck& check)
{
    setObjectName(QStringLiteral("statusProblems"));
    setAutoRaise(true);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setIconSize({MarkSize, MarkSize});
    setFocusPolicy(Qt::TabFocus);
    InEachLanguage(this, [this] { Show(counts_); });
    connect(&check, &LivePatchCheck::problemsChanged, this,
            [this, &check] { Show(ProblemCounts::Of(check.GetProblems())); });
}

void ProblemsButton::Show(const ProblemCounts& counts)
{
    counts_ = counts;
    setText(counts.Problems() == 0 ? tr("OK") : CountText(counts.Problems()));
    const QString details = counts.Details();
    const QString words = details.isEmpty() ? tr("Nothing is wrong with the patch")
                                            : tr("What is wrong with the patch: %1").arg(details);
    setAccessibleName(words);
    setToolTip(words);
    ShowMark();
}

void ProblemsButton::ShowMark()
{
    const int level = static_cast<int>(counts_.Gravest());
    setIcon(level > 0 ? QIcon(TroubleMark(level, devicePixelRatioF())) : QIcon());
}

QSize ProblemsButton::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(CountText(MostShown + 1)) + MarkSize + Margins,
            QToolButton::sizeHint().height()};
}

void ProblemsButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::StyleChange)
        ShowMark();
    QToolButton::changeEvent(event);
}
