// SPDX-License-Identifier: MIT
#include "LibTools/XmlFile.h"

#include "Log/Log.h"
#include "XmlText/XmlText.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QString>
#include <QTextStream>

#include <optional>

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
    // A pipe or a device would be opened and read for ever.
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > MaxXmlFileSize)
        return std::nullopt;
    return path.startsWith(QLatin1Char(':')) ? ReadResource(file) : ReadPlainFile(file);
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
    const std::string bytes = XmlText::Encode(XmlText::Print(document));
    // commit() syncs the temporary file to the disk before it renames it. But it does not see when
    // the last buffer finds the disk full, and would put an empty file in the place of the old one.
    QSaveFile file(QString::fromStdWString(path));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(bytes.data(), static_cast<qint64>(bytes.size())) !=
            static_cast<qint64>(bytes.size()) ||
        !file.flush() || !file.commit())
    {
        ZEN_LOG_ERROR("Could not save %s: %s", qUtf8Printable(file.fileName()),
                      qUtf8Printable(file.errorString()));
        return false;
    }
    return true;
}
