// SPDX-License-Identifier: MIT
#pragma once

#include <map>

#include <QString>
#include <QTextStream>

#include "FixtureImport/ImportedFixture.h"

/// Counts what was read, and writes it for people: a summary, and in the long form each file, mode
/// and channel.
class ImportReport
{
public:
    ImportReport(QTextStream& out, bool isLong)
        : out_(out)
        , isLong_(isLong)
    {}

    void AddFile(const FixtureImport::ImportedFile& file);
    /// A mode that became a fixture of this name.
    void NoteFixture(const FixtureImport::ImportedMode& mode, const QString& product);
    /// A mode whose very fixture another file gave already.
    void NoteKnown(const FixtureImport::ImportedMode& mode);
    void NoteLeftOut(const FixtureImport::ImportedMode& mode);
    void WriteSummary();

    [[nodiscard]] int Fixtures() const { return fixtures_; }
    /// Whether there was a file that could be read, whatever became of its modes.
    [[nodiscard]] bool IsAnythingRead() const { return read_ > 0; }
    [[nodiscard]] bool IsAnythingLeftOut() const { return !leftOut_.empty(); }

private:
    void WriteChannels(const FixtureImport::ImportedMode& mode);

    QTextStream& out_;
    bool isLong_;
    int files_ = 0;
    int read_ = 0; ///< of these without a fault
    int modes_ = 0;
    int fixtures_ = 0;
    int known_ = 0;
    std::map<FixtureImport::FaultKind, int> leftOut_;
};
