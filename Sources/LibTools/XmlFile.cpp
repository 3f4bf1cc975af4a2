// SPDX-License-Identifier: MIT
#include "LibTools/XmlFile.h"

#include "Log/Log.h"
#include "XmlText/XmlText.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QString>
#include <QTextStream>

#include <filesystem>
#include <optional>
#include <system_error>

namespace {

std::optional<std::string> ReadResource(QFile& file)
{
    QTextStream stream(&file);
    stream.setAutoDetectUnicode(true);
    QString text;
    for (QString line; stream.readLineInto(&line);)
        text += line;
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text.toStdString();
}

std::optional<std::string> ReadPlainFile(QFile& file)
{
    const qint64 size = file.size();
    const QByteArray bytes = file.read(size);
    if (bytes.size() != size)
        return std::nullopt;
    return XmlText::Decode({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

std::optional<std::string> ReadText(const QString& path)
{
    // Reading a pipe or a device might never end.
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > MaxXmlFileSize)
        return std::nullopt;
    return path.startsWith(QLatin1Char(':')) ? ReadResource(file) : ReadPlainFile(file);
}

/// On a file system without unnamed files, an interrupted save leaves its temporary file. No save
/// takes an hour, so an older one is not in use.
void RemoveLeftovers(const QFileInfo& next)
{
    constexpr qint64 anHour = 3600;
    const QDateTime old = QDateTime::currentDateTimeUtc().addSecs(-anHour);
    const QString beginning = next.fileName() + QLatin1Char('.');
    for (const QFileInfo& file : next.dir().entryInfoList(QDir::Files | QDir::Hidden)) {
        if (file.fileName().startsWith(beginning) && file.lastModified() < old)
            QFile::remove(file.filePath());
    }
}

bool SaveBytes(const QString& path, const std::string& bytes, QString& failure)
{
    const QFileInfo place(path);
    const QFileInfo target(place.isSymLink() ? place.symLinkTarget() : place.filePath());
    // Only our saves use this name, so that their leftovers can be recognised.
    const QFileInfo next(target.path() + QStringLiteral("/.") + target.fileName() +
                         QStringLiteral(".saving"));
    RemoveLeftovers(next);
    // commit() syncs the temporary file to the disk before it renames it. But it misses a disk that
    // is full at the last buffer, and would replace the old file by an empty one.
    QSaveFile file(next.filePath());
    const auto size = static_cast<qint64>(bytes.size());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), size) != size ||
        !file.flush() || !file.commit())
    {
        failure = file.errorString();
        return false;
    }
    if (target.exists())
        QFile::setPermissions(next.filePath(), target.permissions());
    std::error_code error;
    std::filesystem::rename(QFile::encodeName(next.filePath()).toStdString(),
                            QFile::encodeName(target.filePath()).toStdString(), error);
    if (!error)
        return true;
    failure = QString::fromStdString(error.message());
    QFile::remove(next.filePath());
    return false;
}

} // namespace

bool ReadXmlFile(const std::wstring& path, tinyxml2::XMLDocument& document)
{
    document.Clear();
    const auto text = ReadText(QString::fromStdWString(path));
    return text && XmlText::Parse(*text, document);
}

QString KeepUnreadableFile(const QString& path)
{
    QString aside = path + QStringLiteral(".unreadable");
    for (int number = 2; QFileInfo::exists(aside); ++number)
        aside = path + QStringLiteral(".unreadable-%1").arg(number);
    if (!QFile::rename(path, aside))
        return {};
    ZEN_LOG_ERROR("%s could not be read. It is kept as %s", qUtf8Printable(path),
                  qUtf8Printable(aside));
    return aside;
}

bool WriteXmlFile(const std::wstring& path, const tinyxml2::XMLDocument& document)
{
    return WriteWholeFile(path, XmlText::Encode(XmlText::Print(document)));
}

bool WriteWholeFile(const std::wstring& path, const std::string& bytes)
{
    const QString wanted = QString::fromStdWString(path);
    QString failure;
    if (SaveBytes(wanted, bytes, failure))
        return true;
    ZEN_LOG_ERROR("Could not save %s: %s", qUtf8Printable(wanted), qUtf8Printable(failure));
    return false;
}
