// SPDX-License-Identifier: MIT
// Fixture definitions of other programs become a library, without a window.
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

#include "FixtureImport/FixtureFiles.h"
#include "FixtureImport/ProductNames.h"
#include "FixtureModel/LEDFixture.h"
#include "FixtureTool/ImportReport.h"
#include "LibTools/Qt5And6.h"
#include "LibTools/XmlFile.h"
#include "Platform/Locale.h"
#include "XmlText/XmlText.h"

namespace {

enum ExitStatus : int
{
    EverythingImported = 0,
    SomethingLeftOut = 1,
    NothingRead = 2 ///< also for a wrong command line, and when the library can't be written
};

struct CommandWords
{
    Q_DECLARE_TR_FUNCTIONS(FixtureTool)
};

struct Request
{
    QStringList paths;
    QString output; ///< empty for none
    bool isReportWanted = false;
};

/// Ends the process for help, the version and a wrong command line.
Request ReadCommandLine()
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        CommandWords::tr("Reads fixture definitions (.wfl, .json of the Open Fixture Library, .qxf "
                         "of QLC+) and folders of them, and writes them as a fixture library.\n"
                         "Exit status: 0, 1 when something was left out, 2 when nothing could be "
                         "read."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption output(QStringLiteral("o"), CommandWords::tr("The library to write."),
                                    CommandWords::tr("OUT.wfl"));
    const QCommandLineOption report(
        QStringLiteral("report"),
        CommandWords::tr("List each channel with what it gets and why, and what is left out."));
    parser.addOptions({output, report});
    parser.addPositionalArgument(QStringLiteral("IN"), CommandWords::tr("Files and folders."),
                                 QStringLiteral("IN..."));
    if (!parser.parse(QCoreApplication::arguments())) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(parser.errorText()));
        std::exit(NothingRead);
    }
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp();
    if (parser.positionalArguments().isEmpty())
        parser.showHelp(NothingRead);
    return {parser.positionalArguments(), parser.value(output), parser.isSet(report)};
}

/// The text of a library, which grows fixture by fixture: one tree of thousands of them would be
/// slow to build and to free.
class LibraryText
{
public:
    void Add(const LEDFixture& fixture)
    {
        XmlText::Document document;
        auto& library = XmlText::AddElement(document, "LEDFixtureLibrary");
        XmlText::SetAttribute(library, "version", 1);
        fixture.ToXml(library);
        const std::string lines = XmlText::Print(document);
        if (text_.empty()) {
            text_ = lines;
            return;
        }
        const std::size_t begin = lines.find('\n') + 1;
        text_.insert(text_.rfind(Closing), lines, begin, lines.rfind(Closing) - begin);
    }

    [[nodiscard]] SaveResult Write(const QString& path) const
    {
        return WriteWholeFile(path.toStdWString(), XmlText::Encode(text_));
    }

private:
    /// Of the last line.
    static constexpr std::string_view Closing = "</";

    std::string text_;
};

void Import(const QString& path, FixtureImport::FixtureFileReader& reader,
            FixtureImport::ProductNames& names, LibraryText& library, ImportReport& report)
{
    FixtureImport::ImportedFile file = reader.Read(path);
    report.AddFile(file);
    for (FixtureImport::ImportedDefinition& definition : file.definitions) {
        for (FixtureImport::ImportedMode& mode : definition.modes) {
            if (!mode.fixture) {
                report.NoteLeftOut(mode);
                continue;
            }
            if (names.Take(*mode.fixture) == FixtureImport::ProductNames::Outcome::Known) {
                report.NoteKnown(mode);
                continue;
            }
            library.Add(*mode.fixture);
            report.NoteFixture(mode, QString::fromStdWString(mode.fixture->product));
        }
    }
}

int Run()
{
    const Request request = ReadCommandLine();
    QTextStream out(stdout);
    Qt5And6::UseUtf8(out);
    ImportReport report(out, request.isReportWanted);
    FixtureImport::FixtureFileReader reader;
    FixtureImport::ProductNames names;
    LibraryText library;
    for (const QString& path : FixtureImport::FindFixtureFiles(request.paths))
        Import(path, reader, names, library, report);
    report.WriteSummary();
    if (!report.IsAnythingRead())
        return NothingRead;
    // A library without fixtures would be one that can't be read.
    if (!request.output.isEmpty() && report.Fixtures() > 0) {
        if (const SaveResult saved = library.Write(request.output); !saved) {
            std::fprintf(stderr, "%s: %s\n", qUtf8Printable(request.output),
                         qUtf8Printable(saved.Reason()));
            return NothingRead;
        }
    }
    return report.IsAnythingLeftOut() ? SomethingLeftOut : EverythingImported;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("pixelweft-fixtures"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PIXELWEFT_VERSION));
    Platform::UseUtf8TextAndPlainNumbers();
    return Run();
}
