// SPDX-License-Identifier: MIT
#include "LibTools/SearchWords.h"

#include <algorithm>

QString ForSearch(const QString& text)
{
    QString plain;
    for (const QChar c : text.normalized(QString::NormalizationForm_KD)) {
        if (!c.isMark())
            plain += c;
    }
    return plain.toCaseFolded();
}

QStringList SearchWords(const QString& typed)
{
    return ForSearch(typed).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

bool HasAllWords(const QString& text, const QStringList& words)
{
    return std::ranges::all_of(words, [&text](const QString& word) { return text.contains(word); });
}
