// SPDX-License-Identifier: MIT
#include "UI/Output/ProblemCounts.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

struct Words
{
    Q_DECLARE_TR_FUNCTIONS(ProblemCounts)
};

} // namespace

ProblemCounts ProblemCounts::Of(std::span<const PatchProblem> problems)
{
    ProblemCounts counts;
    for (const PatchProblem& problem : problems) {
        int& count = problem.trouble == Trouble::Fault     ? counts.faults
                     : problem.trouble == Trouble::Caution ? counts.cautions
                                                           : counts.hints;
        ++count;
    }
    return counts;
}

QString ProblemCounts::Details() const
{
    QStringList parts;
    if (faults > 0)
        parts << Words::tr("Faults: %1").arg(faults);
    if (cautions > 0)
        parts << Words::tr("Cautions: %1").arg(cautions);
    if (hints > 0)
        parts << Words::tr("Hints: %1").arg(hints);
    return parts.join(QStringLiteral("   "));
}
