// SPDX-License-Identifier: MIT
#include "LibTools/NaturalOrder.h"

namespace {

/// Decimal digits of ASCII: those of other scripts are letters here.
bool IsDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/// The digits at `at`, without leading zeros; moves `at` behind them.
QStringView TakeNumber(const QString& text, int& at)
{
    while (at < text.size() && text[at] == QLatin1Char('0'))
        ++at;
    const int first = at;
    while (at < text.size() && IsDigit(text[at]))
        ++at;
    return QStringView(text).mid(first, at - first);
}

} // namespace

bool IsBefore(const QString& a, const QString& b)
{
    int i = 0;
    int j = 0;
    while (i < a.size() && j < b.size()) {
        if (IsDigit(a[i]) && IsDigit(b[j])) {
            const QStringView left = TakeNumber(a, i);
            const QStringView right = TakeNumber(b, j);
            if (left.size() != right.size())
                return left.size() < right.size();
            if (const int order = left.compare(right))
                return order < 0;
            continue;
        }
        const QChar left = a[i++].toCaseFolded();
        const QChar right = b[j++].toCaseFolded();
        if (left != right)
            return left < right;
    }
    if (i < a.size() || j < b.size())
        return i == a.size();
    return a < b;
}
