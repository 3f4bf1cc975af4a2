// SPDX-License-Identifier: MIT
#include "LibTools/SameFile.h"

#include <QDir>
#include <QFileInfo>

bool IsSameFile(const QString& one, const QString& other)
{
    const QFileInfo first(one);
    const QFileInfo second(other);
    return first == second ||
           (first.dir() == second.dir() &&
            first.fileName().compare(second.fileName(), Qt::CaseInsensitive) == 0);
}
