// SPDX-License-Identifier: MIT
#include "LibTools/XmlFile.h"

#include "Log/Log.h"
#include "Platform/WholeFiles.h"
#include "XmlText/XmlText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QString>
#include <QTextStream>

#include <atomic>
#include <optional>
#include <system_error>
#include <utility>

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

XmlFault ReadText(const QString& path, std::string& text)
{
    const QFileInfo info(path);
    if (!info.exists())
        return XmlFault::Missing;
    // Reading a pipe or a device might never end.
    if (!info.isFile())
        return XmlFault::NoFile;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return file.error() == QFile::PermissionsError ? XmlFault::NotPermitted
                                                       : XmlFault::Unreadable;
    if (file.size() > MaxXmlFileSize)
        return XmlFault::TooLarge;
    if (file.size() == 0)
        return XmlFault::Empty;
    auto read = path.startsWith(QLatin1Char(':')) ? ReadResource(file) : ReadPlainFile(file);
    if (!read)
        return XmlFault::Unreadable;
    text = std::move(*read);
    return XmlFault::None;
}

bool BeginsWithMarkup(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t\n");
    return first != std::string::npos && text[first] == '<';
}

SaveResult SaveBytes(const QString& path, const std::string& bytes)
{
    static std::atomic<unsigned> saves = 0;
    const QFileInfo place(path);
    const QFileInfo target(place.isSymLink() ? place.symLinkTarget() : place.filePath());
    // Only our saves use this name, so that their leftovers can be recognised.
    RemoveUnfinishedSaves(target.dir(), QRegularExpression::escape(target.fileName()));
    const QString next =
        target.path() + QStringLiteral("/.") + target.fileName() +
        QStringLiteral(".saving.%1-%2").arg(QCoreApplication::applicationPid()).arg(++saves);
    const auto native = [](const QString& name) {
        return QFile::encodeName(name).toStdString();
    };
    return Platform::ReplaceFile(native(target.filePath()), native(next), bytes);
}

QString FreeNameAside(const QString& path, const char* why)
{
    const QString first = path + QLatin1Char('.') + QLatin1String(why);
    QString aside = first;
    for (int number = 2; QFileInfo::exists(aside); ++number)
        aside = first + QLatin1Char('-') + QString::number(number);
    return aside;
}

} // namespace

QString InWords(XmlFault fault)
{
    const auto words = [](const char* text) {
        return QCoreApplication::translate("XmlFault", text);
    };
    switch (fault) {
    case XmlFault::Missing:
        return words(QT_TRANSLATE_NOOP("XmlFault", "There is no such file."));
    case XmlFault::NoFile:
        return words(QT_TRANSLATE_NOOP("XmlFault", "It is a folder or a device, and no file."));
    case XmlFault::NotPermitted:
        return words(QT_TRANSLATE_NOOP("XmlFault", "You are not permitted to read it."));
    case XmlFault::TooLarge:
        return words(QT_TRANSLATE_NOOP("XmlFault", "It is larger than any file of PixelWeft."));
    case XmlFault::Unreadable:
        return words(QT_TRANSLATE_NOOP("XmlFault", "The disk can't read it."));
    case XmlFault::Empty:
        return words(QT_TRANSLATE_NOOP("XmlFault", "The file is empty."));
    case XmlFault::NoXml:
        return words(QT_TRANSLATE_NOOP("XmlFault", "It is no file of PixelWeft."));
    case XmlFault::Damaged:
        return words(QT_TRANSLATE_NOOP("XmlFault", "The file is cut off or damaged."));
    case XmlFault::None:
        break;
    }
    return {};
}

XmlFault ReadXmlFile(const std::wstring& path, tinyxml2::XMLDocument& document)
{
    document.Clear();
    std::string text;
    const XmlFault fault = ReadText(QString::fromStdWString(path), text);
    if (fault != XmlFault::None || XmlText::Parse(text, document))
        return fault;
    return BeginsWithMarkup(text) ? XmlFault::Damaged : XmlFault::NoXml;
}

void RemoveUnfinishedSaves(const QDir& folder, const QString& names)
{
    constexpr qint64 anHour = 3600;
    const QRegularExpression name(QStringLiteral("^\\.(?:%1)\\.saving").arg(names));
    const QDateTime old = QDateTime::currentDateTimeUtc().addSecs(-anHour);
    for (const QFileInfo& file : folder.entryInfoList(QDir::Files | QDir::Hidden)) {
        if (name.match(file.fileName()).hasMatch() && file.lastModified() < old)
            QFile::remove(file.filePath());
    }
}

QString KeepUnreadableFile(const QString& path)
{
    QString aside = FreeNameAside(path, "unreadable");
    if (!QFile::rename(path, aside))
        return {};
    ZEN_LOG_ERROR("%s could not be read. It is kept as %s", qUtf8Printable(path),
                  qUtf8Printable(aside));
    return aside;
}

SaveResult KeepCopyOfFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::make_error_code(file.error() == QFile::PermissionsError
                                        ? std::errc::permission_denied
                                        : std::errc::io_error);
    const QString aside = FreeNameAside(path, "replaced");
    SaveResult kept = WriteWholeFile(aside.toStdWString(), file.readAll().toStdString());
    if (kept)
        ZEN_LOG_INFO("What a save of %s replaces is kept as %s", qUtf8Printable(path),
                     qUtf8Printable(aside));
    return kept;
}

SaveResult WriteXmlFile(const std::wstring& path, const tinyxml2::XMLDocument& document)
{
    return WriteWholeFile(path, XmlText::Encode(XmlText::Print(document)));
}

SaveResult WriteXmlFile(const std::wstring& path, const tinyxml2::XMLDocument& document,
                        const DiskWait& wait)
{
    return DoOnDisk(wait, [&] { return WriteXmlFile(path, document); });
}

SaveResult WriteWholeFile(const std::wstring& path, const std::string& bytes)
{
    const QString wanted = QString::fromStdWString(path);
    const SaveResult saved = SaveBytes(wanted, bytes);
    if (!saved)
        ZEN_LOG_ERROR("Could not save %s: %s", qUtf8Printable(wanted),
                      qUtf8Printable(saved.Reason()));
    return saved;
}
