// SPDX-License-Identifier: MIT
#include "Settings/FixtureLibraryPath.h"

#include "LibTools/System.h"

#include <QDebug>
#include <QDir>
#include <QFile>

QString GetFixtureLibraryPath()
{
    std::wstring userFolder;
    if (!System::global || !System::global->GetUserDataFolder(userFolder))
        return {};
    const QString folder =
        QString::fromStdWString(userFolder + L"/" + System::global->GetProductFolderName());
    QDir().mkpath(folder);
    QString path = folder + QStringLiteral("/LEDFixtureLib.wfl");
    if (QFile::exists(path))
        return path;
    if (!QFile::copy(QStringLiteral(":/wfl/Resources/LEDFixtureLib.wfl"), path))
        qDebug().noquote() << QStringLiteral(
                                  "PixelWeft could not create initial fixture library in "
                                  "%1. Please check permissions and re-try.")
                                  .arg(folder);
    // A resource is read-only, and so is its copy.
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser |
                                    QFile::WriteUser | QFile::ReadOther | QFile::WriteOther);
    return path;
}
