// SPDX-License-Identifier: MIT
#include "FixtureImport/FixtureFiles.h"

#include <algorithm>
#include <utility>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include "FixtureImport/Conversion.h"
#include "FixtureImport/OpenFixtureReader.h"
#include "FixtureImport/QxfReader.h"
#include "LibTools/XmlFile.h"

namespace FixtureImport {

namespace {

const QLatin1String ManufacturersFile("manufacturers.json");

/// Real ones take one step. A folder of files that point on and on would be read once for each.
constexpr int MostRedirects = 16;

/// All bytes of a plain file, or why not.
ImportFault ReadWholeFile(const QString& path, QByteArray& bytes)
{
    // Reading a pipe or a device might never end.
    if (const QFileInfo info(path); !info.isFile())
        return {info.exists() ? FaultKind::UnknownFormat : FaultKind::Missing, {}};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {file.error() == QFile::PermissionsError ? FaultKind::NotPermitted
                                                        : FaultKind::Unreadable,
                {}};
    const qint64 size = file.size();
    if (size > MaxDefinitionFileSize)
        return {FaultKind::TooLarge, {}};
    bytes = file.read(size);
    return file.error() == QFile::NoError ? ImportFault{} : ImportFault{FaultKind::Unreadable, {}};
}

/// The first character that is no blank and no byte-order mark.
char FirstCharacter(const QByteArray& bytes)
{
    const auto first = std::find_if(bytes.begin(), bytes.end(), [](char c) {
        return c != '\xEF' && c != '\xBB' && c != '\xBF' && c != ' ' && c != '\t' && c != '\r' &&
               c != '\n';
    });
    return first == bytes.end() ? '\0' : *first;
}

QByteArray WithoutMark(const QByteArray& bytes)
{
    return bytes.startsWith("\xEF\xBB\xBF") ? bytes.mid(3) : bytes;
}

bool IsLibrary(const QString& path)
{
    return path.endsWith(QLatin1String(".wfl"), Qt::CaseInsensitive);
}

bool IsFixtureFile(const QFileInfo& file)
{
    const QString suffix = file.suffix().toLower();
    if (suffix == QLatin1String("json"))
        return file.fileName() != ManufacturersFile;
    return suffix == QLatin1String("qxf") || suffix == QLatin1String("wfl");
}

/// "american-dj" as a name, where nobody has told a better one.
QString NameFromKey(const QString& key)
{
    QStringList words = key.split(QLatin1Char('-'), Qt::SkipEmptyParts);
    for (QString& word : words)
        word[0] = word[0].toUpper();
    return words.join(QLatin1Char(' '));
}

/// What a fault quotes may be anything, and goes to a window or a terminal. The colours of two
/// pixels are some hundred characters.
void CleanDetail(ImportFault& fault)
{
    fault.detail = CleanName(fault.detail, {}, 5 * LongestName);
}

} // namespace

QStringList FindFixtureFiles(const QStringList& paths, const std::function<bool(int)>& goesOn)
{
    QStringList files;
    QSet<QString> known;
    const auto add = [&](const QString& path) {
        const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
        if (!known.contains(absolute)) {
            known.insert(absolute);
            files += absolute;
        }
        return !goesOn || goesOn(static_cast<int>(files.size()));
    };
    for (const QString& path : paths) {
        if (!QFileInfo(path).isDir()) {
            if (!add(path))
                return {};
            continue;
        }
        QStringList inFolder;
        QDirIterator entries(path, QDir::Files, QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            entries.next();
            if (IsFixtureFile(entries.fileInfo()))
                inFolder += entries.filePath();
            if (goesOn && !goesOn(static_cast<int>(files.size() + inFolder.size())))
                return {};
        }
        inFolder.sort();
        for (const QString& file : qAsConst(inFolder)) {
            if (!add(file))
                return {};
        }
    }
    return files;
}

ImportedFile FixtureFileReader::Read(const QString& path)
{
    ImportedFile file = ReadAsItStands(path);
    CleanDetail(file.fault);
    for (ImportedDefinition& definition : file.definitions) {
        for (ImportedMode& mode : definition.modes)
            CleanDetail(mode.fault);
    }
    return file;
}

ImportedFile FixtureFileReader::ReadAsItStands(const QString& path)
{
    ImportedFile file;
    file.path = path;
    if (IsLibrary(path))
        return ReadLibrary(std::move(file));
    QByteArray bytes;
    file.fault = ReadWholeFile(path, bytes);
    if (file.fault)
        return file;
    switch (FirstCharacter(bytes)) {
    case '{':
        return ReadOpenFixtureAt(std::move(file), WithoutMark(bytes));
    case '<': {
        const QxfFile read = ReadQxf(bytes);
        file.fault = read.fault;
        if (!file.fault)
            file.definitions.push_back(Convert(read.definition));
        return file;
    }
    default:
        file.fault = {FaultKind::UnknownFormat, {}};
        return file;
    }
}

/// A library's fixtures are taken as they are, each as a definition of one mode.
ImportedFile FixtureFileReader::ReadLibrary(ImportedFile file) const
{
    const XmlFile library(file.path.toStdWString());
    const auto* top = library.Document().FirstChildElement("LEDFixtureLibrary");
    if (!library.IsReadable() || !top) {
        file.fault = library.IsReadable()
                         ? ImportFault{FaultKind::UnknownFormat, {}}
                         : ImportFault{FaultKind::LibraryUnread, InWords(library.Fault())};
        return file;
    }
    for (const auto* element = top->FirstChildElement("LEDFixture"); element;
         element = element->NextSiblingElement("LEDFixture"))
    {
        std::int32_t intensityChannel = 0;
        ImportedMode mode;
        mode.fixture = LEDFixture::FromXml(*element, 0, intensityChannel);
        mode.placed = true;
        ImportedDefinition definition;
        const char* product = element->Attribute("product");
        definition.name = QString::fromUtf8(product ? product : "");
        if (mode.fixture)
            definition.manufacturer = QString::fromStdWString(mode.fixture->manufacturer);
        else
            mode.fault = {FaultKind::FixtureUnread, {}};
        definition.modes.push_back(std::move(mode));
        file.definitions.push_back(std::move(definition));
    }
    if (file.definitions.empty())
        file.fault = {FaultKind::NoModes, {}};
    return file;
}

ImportedFile FixtureFileReader::ReadOpenFixtureAt(ImportedFile file, const QByteArray& json)
{
    OpenFixtureFile read = ReadOpenFixture(json);
    QString manufacturer = ManufacturerOf(file.path, read.definition.manufacturer);
    QString name = read.definition.name;
    QSet<QString> visited;
    QString path = file.path;
    while (!read.fault && !read.redirectTo.isEmpty()) {
        const QString target = read.redirectTo;
        const bool isRenamed = read.isRenamed;
        // Both parts are keys: nothing outside of the library's own folder is read.
        const QStringList parts = target.split(QLatin1Char('/'));
        const bool isKey = parts.size() == 2 && !target.contains(QLatin1String(".."));
        path = QDir::cleanPath(QFileInfo(file.path).absolutePath() + QLatin1String("/../") +
                               target + QLatin1String(".json"));
        QByteArray bytes;
        if (visited.contains(path))
            read.fault = {FaultKind::RedirectCircle, target};
        else if (visited.size() == MostRedirects)
            read.fault = {FaultKind::RedirectTooLong, target};
        else if (!isKey || ReadWholeFile(path, bytes))
            read.fault = {FaultKind::RedirectLost, target};
        else
            read = ReadOpenFixture(WithoutMark(bytes));
        visited.insert(path);
        // Another brand keeps its own names; a fixture that was renamed has its new ones.
        if (isRenamed && !read.fault) {
            manufacturer = ManufacturerOf(path, read.definition.manufacturer);
            name = read.definition.name;
        }
    }
    file.fault = read.fault;
    if (file.fault)
        return file;
    read.definition.manufacturer = manufacturer;
    read.definition.name = name;
    file.definitions.push_back(Convert(read.definition));
    return file;
}

QString FixtureFileReader::ManufacturerOf(const QString& path, const QString& key)
{
    const QDir folder = QFileInfo(path).absoluteDir();
    const QString known = key.isEmpty() ? folder.dirName() : key;
    return ManufacturersIn(QDir::cleanPath(folder.absoluteFilePath(QStringLiteral(".."))))
        .value(known, NameFromKey(known));
}

const QHash<QString, QString>& FixtureFileReader::ManufacturersIn(const QString& folder)
{
    const auto known = manufacturers_.constFind(folder);
    if (known != manufacturers_.constEnd())
        return *known;
    QHash<QString, QString> names;
    QByteArray bytes;
    if (!ReadWholeFile(folder + QLatin1Char('/') + ManufacturersFile, bytes)) {
        const QJsonObject all = QJsonDocument::fromJson(WithoutMark(bytes)).object();
        for (auto entry = all.begin(); entry != all.end(); ++entry) {
            const QString name = entry.value().toObject()[QLatin1String("name")].toString();
            if (!name.isEmpty())
                names[entry.key()] = name;
        }
    }
    return *manufacturers_.insert(folder, names);
}

} // namespace FixtureImport
