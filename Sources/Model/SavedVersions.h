// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include <QDateTime>
#include <QObject>
#include <QString>

#include "LibTools/DiskWork.h"

struct DocumentSummary;

/// The last saved versions of the document: whole mapping files in the folder `history` beside its
/// own, so that neither a save nor the host can destroy the only copy of a show. A version is
/// named after the document, the local time at which its content was written, and a number that
/// grows: mapping_2026-11-26_14-03-22_0017.wfm. The number is the order, since clocks are set back.
/// Files of other names are left alone. Main thread; its own threads do what takes long, so that no
/// frame waits for it.
class SavedVersions : public QObject
{
    Q_OBJECT

public:
    static constexpr int Most = 20;
    static constexpr qint64 MostBytes = 64LL * 1024 * 1024;
    /// What was saved last and what it replaced stay, however large they are.
    static constexpr int Fewest = 2;

    struct Version
    {
        QString path;
        QDateTime saved;
        qint64 number = 0;
        qint64 bytes = 0;
    };

    /// The content of the document's file and the version that has it, empty for none.
    struct Kept
    {
        QString version;
        qint64 bytes = 0;
        QDateTime written;
    };

    SavedVersions();
    /// Waits for a version that is being written.
    ~SavedVersions() override;

    /// From now on the versions are those of the document at this path.
    void SetDocument(const QString& mappingFilePath);
    [[nodiscard]] QString GetFolder() const;

    /// Keeps the content of the document's file as the newest version, and removes the oldest
    /// versions beyond the bounds. A content that a version has already gives that version the
    /// newest number, and is kept once. No file, or an empty one, is nothing to keep. False, after
    /// notKept, when the content could not be kept. With `wait` as DoOnDisk takes it, which calls
    /// nothing of this object.
    bool Keep(const DiskWait& wait = {});
    /// The same on a thread of its own.
    void KeepSoon();

    /// The newest first.
    [[nodiscard]] std::vector<Version> List();
    /// Reads these files one after the other, and emits summaryRead for each. Another call ends the
    /// one before.
    void ReadSummaries(const std::vector<Version>& versions);

signals:
    /// A content could not be kept, after others could; the log has the reason.
    void notKept();
    /// Null for a file that can't be read.
    void summaryRead(const QString& path, const std::shared_ptr<const DocumentSummary>& summary);

private:
    void WaitForKeeper();
    void Took(const std::optional<Kept>& kept);

    QString document_;
    Kept kept_; ///< spares a save to read its file once more
    bool failed_ = false;
    std::jthread keeper_; ///< at most one writes to the folder
    std::jthread reader_;
};
