// SPDX-License-Identifier: MIT
#include "Settings/FixtureLibraryPath.h"

#include "LibTools/System.h"
#include "LibTools/XmlFile.h"
#include "Platform/Folders.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr QFile::Permissions EverybodyWrites = QFile::ReadOther | QFile::WriteOther;

} // namespace

QByteArray BuiltInLibrary()
{
    QFile file(BuiltInLibraryPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString FindFixtureLibrary()
{
    const std::string userFolder = Platform::FindUserDataFolder();
    if (!System::global || userFolder.empty())
        return {};
    return QStringLiteral("%1/%2/LEDFixtureLib.wfl")
        .arg(QString::fromStdString(userFolder),
             QString::fromStdWString(System::global->GetProductFolderName()));
}

QString GetFixtureLibraryPath()
{
    QString path = FindFixtureLibrary();
    if (path.isEmpty())
        return {};
    const QString folder = QFileInfo(path).path();
    QDir().mkpath(folder);
    if (QFile::exists(path)) {
        // As earlier versions made it.
        if ((QFile::permissions(path) & EverybodyWrites) == EverybodyWrites)
            QFile::setPermissions(path, QFile::permissions(path) & ~QFile::WriteOther);
        return path;
    }
    const std::string library = BuiltInLibrary().toStdString();
    if (library.empty() || !WriteWholeFile(path.toStdWString(), library))
        qDebug().noquote() << QStringLiteral(
                                  "PixelWeft could not create initial fixture library in "
                                  "%1. Please check permissions and re-try.")
                                  .arg(folder);
    return path;
}
