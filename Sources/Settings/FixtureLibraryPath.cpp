// SPDX-License-Identifier: MIT
#include "Settings/FixtureLibraryPath.h"

#include "LibTools/System.h"
#include "LibTools/XmlFile.h"

#include <QDebug>
#include <QDir>
#include <QFile>

namespace {

constexpr QFile::Permissions EverybodyWrites = QFile::ReadOther | QFile::WriteOther;

} // namespace

QByteArray BuiltInLibrary()
{
    QFile file(BuiltInLibraryPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString GetFixtureLibraryPath()
{
    std::wstring userFolder;
    if (!System::global || !System::global->GetUserDataFolder(userFolder))
        return {};
    const QString folder =
        QString::fromStdWString(userFolder + L"/" + System::global->GetProductFolderName());
    QDir().mkpath(folder);
    QString path = folder + QStringLiteral("/LEDFixtureLib.wfl");
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
