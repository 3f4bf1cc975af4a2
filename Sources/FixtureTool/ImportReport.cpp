// SPDX-License-Identifier: MIT
#include "FixtureTool/ImportReport.h"

#include <QCoreApplication>

namespace {

struct ReportWords
{
    Q_DECLARE_TR_FUNCTIONS(ImportReport)
};

/// The sentence for all faults of a kind: without what was found in one of them.
QString KindInWords(FixtureImport::FaultKind kind)
{
    return FixtureImport::InWords({kind, QStringLiteral("…")});
}

QString SizeInWords(const PixelMap& map)
{
    return QStringLiteral("%1x%2 %3")
        .arg(map.GetWidth())
        .arg(map.GetHeight())
        .arg(QString::fromWCharArray(PixelMapTypeToText(map.GetType())));
}

} // namespace

void ImportReport::AddFile(const FixtureImport::ImportedFile& file)
{
    ++files_;
    if (file.fault)
        ++leftOut_[file.fault.kind];
    else
        ++read_;
    if (isLong_ || file.fault)
        out_ << (file.fault
                     ? ReportWords::tr("%1: %2").arg(file.path, FixtureImport::InWords(file.fault))
                     : file.path)
             << '\n';
}

void ImportReport::NoteFixture(const FixtureImport::ImportedMode& mode, const QString& product)
{
    ++modes_;
    ++fixtures_;
    if (!isLong_)
        return;
    out_ << "  "
         << ReportWords::tr("%1: %2, %3 channels")
                .arg(product, SizeInWords(mode.fixture->pixelMap))
                .arg(mode.fixture->GetChannelCount())
         << '\n';
    WriteChannels(mode);
}

void ImportReport::WriteChannels(const FixtureImport::ImportedMode& mode)
{
    if (!mode.placed)
        out_ << "    " << ReportWords::tr("Pixels in a row: no layout is given.") << '\n';
    if (mode.endsBeyondReach)
        out_ << "    " << ReportWords::tr("The last pixel is not sent: it ends on channel 512.")
             << '\n';
    int number = 0;
    for (const FixtureImport::ImportedChannel& channel : mode.channels) {
        const QString value =
            channel.value < 0 ? QStringLiteral("-") : QString::number(channel.value);
        out_ << QStringLiteral("    %1 %2 %3 (%4)")
                    .arg(++number, 3)
                    .arg(value, 3)
                    .arg(channel.name, FixtureImport::InWords(channel))
             << '\n';
    }
}

void ImportReport::NoteKnown(const FixtureImport::ImportedMode& mode)
{
    ++modes_;
    ++known_;
    if (isLong_)
        out_ << "  " << ReportWords::tr("%1: known already").arg(mode.name) << '\n';
}

void ImportReport::NoteLeftOut(const FixtureImport::ImportedMode& mode)
{
    ++modes_;
    ++leftOut_[mode.fault.kind];
    if (isLong_)
        out_ << "  "
             << ReportWords::tr("%1: left out. %2")
                    .arg(mode.name, FixtureImport::InWords(mode.fault))
             << '\n';
}

void ImportReport::WriteSummary()
{
    out_ << ReportWords::tr("Files: %1, modes: %2, imported: %3, known already: %4")
                .arg(files_)
                .arg(modes_)
                .arg(fixtures_)
                .arg(known_)
         << '\n';
    for (const auto& [kind, count] : leftOut_)
        out_ << ReportWords::tr("Left out: %1. %2").arg(count).arg(KindInWords(kind)) << '\n';
    out_.flush();
}
