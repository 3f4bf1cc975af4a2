// SPDX-License-Identifier: MIT
#include "Model/SavedVersions.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include "LibTools/DiskWork.h"
#include "LibTools/SaveResult.h"
#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Model/DocumentSummary.h"

namespace {

using Version = SavedVersions::Version;
using Kept = SavedVersions::Kept;

// No colons: network shares refuse them.
const QString TimeInName = QStringLiteral("yyyy-MM-dd_HH-mm-ss");

QString FolderOfVersions(const QString& document)
{
    return QFileInfo(document).path() + QStringLiteral("/history");
}

/// Captures time and number of a version's name.
QRegularExpression NameOfVersion(const QString& document)
{
    return QRegularExpression(
        QStringLiteral("%1_(\\d{4}-\\d\\d-\\d\\d_\\d\\d-\\d\\d-\\d\\d)_(\\d{4,9})\\.wfm")
            .arg(QRegularExpression::escape(QFileInfo(document).completeBaseName())));
}

QString PathOfVersion(const QString& document, const QDateTime& saved, qint64 number)
{
    // In one step: a folder's own name may have a %1 in it.
    return QStringLiteral("%1/%2_%3_%4.wfm")
        .arg(FolderOfVersions(document), QFileInfo(document).completeBaseName(),
             saved.toString(TimeInName), QStringLiteral("%1").arg(number, 4, 10, QLatin1Char('0')));
}

std::vector<Version> VersionsOf(const QString& document)
{
    const QRegularExpression name(
        QRegularExpression::anchoredPattern(NameOfVersion(document).pattern()));
    std::vector<Version> versions;
    for (const QFileInfo& file : QDir(FolderOfVersions(document)).entryInfoList(QDir::Files)) {
        const auto match = name.match(file.fileName());
        if (match.hasMatch())
            versions.push_back({file.filePath(),
                                QDateTime::fromString(match.captured(1), TimeInName),
                                match.captured(2).toLongLong(), file.size()});
    }
    std::ranges::sort(versions, std::ranges::greater(), &Version::number);
    return versions;
}

std::optional<QByteArray> BytesOf(const QString& path)
{
    QFile file(path);
    // Reading a pipe or a device might never end.
    if (!QFileInfo(path).isFile() || file.size() > MaxXmlFileSize ||
        !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

void RemoveBeyondBounds(const QString& document)
{
    int count = 0;
    qint64 bytes = 0;
    for (const Version& version : VersionsOf(document)) {
        ++count;
        bytes += version.bytes;
        const bool tooMany = count > SavedVersions::Most || bytes > SavedVersions::MostBytes;
        if (tooMany && count > SavedVersions::Fewest)
            QFile::remove(version.path);
    }
}

/// Whether the document's file is still the one whose content was kept.
bool IsKept(const QString& document, const Kept& kept)
{
    const QFileInfo file(document);
    return !kept.version.isEmpty() && file.size() == kept.bytes &&
           file.lastModified() == kept.written && QFileInfo(kept.version).size() == kept.bytes;
}

/// Nothing when the content could not be kept.
std::optional<Kept> KeepContent(const QString& document)
{
    const QFileInfo file(document);
    if (!file.exists() || (file.isFile() && file.size() == 0))
        return Kept();
    const QDateTime written = file.lastModified(); // before it is read: it may change
    const auto bytes = BytesOf(document);
    if (!bytes)
        return std::nullopt;
    const auto versions = VersionsOf(document);
    const auto same = std::ranges::find_if(versions, [&](const Version& version) {
        return version.bytes == bytes->size() && BytesOf(version.path) == bytes;
    });
    const qint64 number = versions.empty() ? 1 : versions.front().number + 1;
    const QString next = PathOfVersion(document, written, number);
    if (same != versions.end()) {
        const bool stays = same == versions.begin() || !QFile::rename(same->path, next);
        return Kept{stays ? same->path : next, bytes->size(), written};
    }
    if (!QDir().mkpath(FolderOfVersions(document)) ||
        !WriteWholeFile(next.toStdWString(), bytes->toStdString()))
        return std::nullopt;
    RemoveBeyondBounds(document);
    // A killed process may have left one that no later version is named after.
    RemoveUnfinishedSaves(QDir(FolderOfVersions(document)), NameOfVersion(document).pattern());
    return Kept{next, bytes->size(), written};
}

} // namespace

SavedVersions::SavedVersions() = default;

SavedVersions::~SavedVersions() = default;

void SavedVersions::SetDocument(const QString& mappingFilePath)
{
    WaitForKeeper();
    document_ = mappingFilePath;
    kept_ = {};
}

QString SavedVersions::GetFolder() const
{
    return FolderOfVersions(document_);
}

bool SavedVersions::Keep(const DiskWait& wait)
{
    std::optional<Kept> kept = kept_;
    (void)DoOnDisk(wait, [&] {
        WaitForKeeper();
        if (!IsKept(document_, kept_))
            kept = KeepContent(document_);
        return SaveResult();
    });
    Took(kept);
    return !failed_;
}

void SavedVersions::KeepSoon()
{
    WaitForKeeper();
    keeper_ = std::jthread([this, document = document_] {
        const auto kept = KeepContent(document);
        QMetaObject::invokeMethod(this, [this, kept] { Took(kept); });
    });
}

std::vector<Version> SavedVersions::List()
{
    WaitForKeeper();
    return VersionsOf(document_);
}

void SavedVersions::ReadSummaries(const std::vector<Version>& versions)
{
    reader_ = std::jthread([this, versions](const std::stop_token& stop) {
        for (const Version& version : versions) {
            if (stop.stop_requested())
                return;
            const auto summary = ReadDocumentSummary(version.path);
            QMetaObject::invokeMethod(
                this, [this, path = version.path, summary] { emit summaryRead(path, summary); });
        }
    });
}

void SavedVersions::WaitForKeeper()
{
    if (keeper_.joinable())
        keeper_.join();
}

void SavedVersions::Took(const std::optional<Kept>& kept)
{
    kept_ = kept.value_or(Kept());
    if (std::exchange(failed_, !kept) || kept)
        return;
    ZEN_LOG_ERROR("No version of %ls can be kept in %ls", document_.toStdWString().c_str(),
                  GetFolder().toStdWString().c_str());
    emit notKept();
}
