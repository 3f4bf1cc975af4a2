// SPDX-License-Identifier: MIT
// pixelweft-patch DOCUMENT [--csv FILE] [--pdf FILE] [--check]: the patch of a mapping document as
// a table or on paper, and what is wrong with it. For scripts: no window, no network, and nothing
// is written but what is asked for.
#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>

#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QTemporaryDir>

#include "LibTools/W32System.h"
#include "LibTools/XmlFile.h"
#include "Model/PatchCheck.h"
#include "PatchSheet/PatchCsv.h"
#include "PatchSheet/PatchPdf.h"
#include "PatchSheet/PatchSheet.h"
#include "PatchTool/PatchDocument.h"
#include "Platform/Locale.h"

namespace {

constexpr int NoProblems = 0;
constexpr int Problems = 1;
constexpr int Failed = 2;
const QString StandardOutput = QStringLiteral("-");

void Say(std::FILE* stream, const QString& text)
{
    std::fprintf(stream, "%s\n", text.toLocal8Bit().constData());
}

int Fail(const QString& reason)
{
    Say(stderr, QStringLiteral("pixelweft-patch: %1").arg(reason));
    return Failed;
}

QString Text(const char* text)
{
    return QCoreApplication::translate("PatchTool", text);
}

struct Wanted
{
    QString document;
    QString csv; ///< empty for none
    QString pdf;
    PatchPdfOptions::Paper paper = PatchPdfOptions::Paper::A4;
    bool check = false;
};

/// What is wrong with the arguments; empty when nothing is. Ends the program where they ask for
/// help, or for the version.
QString ReadArguments(Wanted& wanted)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        Text("Writes the patch of a PixelWeft mapping document as a table (CSV) or for paper "
             "(PDF), and tells what is wrong with it: with --check, and when no file is asked "
             "for.\n\nStatus: 0 without problems, 1 with problems (hints are none), 2 when the "
             "document can't be read or a file can't be written."));
    const QCommandLineOption csv(QStringLiteral("csv"),
                                 Text("Writes a line for each element; - is the standard output."),
                                 QStringLiteral("FILE"));
    const QCommandLineOption pdf(QStringLiteral("pdf"),
                                 Text("Writes the sheets for the crew; - is the standard output."),
                                 QStringLiteral("FILE"));
    const QCommandLineOption paper(QStringLiteral("paper"), Text("A4 (if not said) or letter."),
                                   QStringLiteral("SIZE"), QStringLiteral("A4"));
    const QCommandLineOption check(QStringLiteral("check"), Text("Tells what is wrong."));
    parser.addOptions({csv, pdf, paper, check});
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("DOCUMENT"), Text("The mapping file (.wfm)."));
    if (!parser.parse(QCoreApplication::arguments()))
        return parser.errorText();
    if (parser.isSet(help))
        parser.showHelp();
    if (parser.isSet(version))
        parser.showVersion();
    if (parser.positionalArguments().size() != 1)
        return Text("Name one document. See --help.");
    for (const QCommandLineOption& file : {csv, pdf}) {
        if (parser.isSet(file) && parser.value(file).isEmpty())
            return Text("--%1 needs the name of a file.").arg(file.names().front());
    }
    const QString size = parser.value(paper).toLower();
    if (size != QLatin1String("a4") && size != QLatin1String("letter"))
        return Text("The paper is A4 or letter.");
    wanted = {.document = parser.positionalArguments().front(),
              .csv = parser.value(csv),
              .pdf = parser.value(pdf),
              .paper = size == QLatin1String("a4") ? PatchPdfOptions::Paper::A4
                                                   : PatchPdfOptions::Paper::Letter,
              .check = parser.isSet(check) || !(parser.isSet(csv) || parser.isSet(pdf))};
    return {};
}

/// Why it could not be written, empty when it was.
QString Write(const QString& name, const QByteArray& bytes)
{
    if (name == StandardOutput) {
        const auto size = static_cast<std::size_t>(bytes.size());
        const bool written =
            std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0;
        return written ? QString() : Text("The standard output takes no more.");
    }
    const QFileInfo present(name);
    if (!present.exists() || present.isFile())
        return WriteWholeFile(name.toStdWString(), bytes.toStdString()).Reason();
    // A device or a pipe is written to, and not replaced.
    QFile device(name);
    const bool written = device.open(QIODevice::WriteOnly | QIODevice::Unbuffered) &&
                         device.write(bytes) == bytes.size();
    return written ? QString() : device.errorString();
}

int Export(const PatchDocument& loaded, const Wanted& wanted)
{
    PatchSheetHead head;
    head.title = SheetTitleOf(loaded.Document(), wanted.document);
    head.made = QDateTime::currentDateTime();
    head.network = QString::fromStdWString(loaded.Document().GetNetwork());
    head.nodesAreLookedFor = false;
    const PatchSheet sheet = PatchSheetOf(loaded.Document(), loaded.Nodes(), head);
    const auto write = [](const QString& name, const QByteArray& bytes) {
        const QString reason = Write(name, bytes);
        return reason.isEmpty() ? NoProblems
                                : Fail(Text("%1 can't be written. %2").arg(name, reason));
    };
    if (!wanted.csv.isEmpty() &&
        write(wanted.csv, PatchCsv(sheet, PatchOrder::ByElement)) == Failed)
        return Failed;
    if (wanted.pdf.isEmpty())
        return NoProblems;
    PatchPdfOptions options;
    options.paper = wanted.paper;
    const auto bytes = PatchPdf(sheet, options, [](double) { return true; });
    return bytes ? write(wanted.pdf, *bytes) : Fail(Text("The sheets can't be made."));
}

int Check(const PatchDocument& loaded, std::FILE* stream)
{
    int status = NoProblems;
    if (!loaded.Losses().isEmpty()) {
        Say(stream, loaded.Losses());
        status = Problems;
    }
    for (const PatchProblem& problem :
         CheckPatch({.document = loaded.Document(), .library = &loaded.Library()}))
    {
        Say(stream, ProblemLine(problem, loaded.Document()));
        if (problem.trouble != Trouble::None)
            status = Problems;
    }
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    Platform::UseUtf8TextAndPlainNumbers();
    // Only sheets need fonts, and those need no display.
    const bool needsFonts = std::any_of(
        argv, argv + argc, [](std::string_view text) { return text.starts_with("--pdf"); });
    std::optional<QTemporaryDir> runtimeFolder;
    std::unique_ptr<QCoreApplication> application;
    if (needsFonts) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // Without one Qt would make a folder, say so, and leave it there.
        if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
            qputenv("XDG_RUNTIME_DIR", runtimeFolder.emplace().path().toLocal8Bit());
        application = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        application = std::make_unique<QCoreApplication>(argc, argv);
    }
    Platform::UseUtf8TextAndPlainNumbers();
    QCoreApplication::setApplicationName(QStringLiteral("pixelweft-patch"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PIXELWEFT_VERSION));
    System::global = std::make_unique<W32System>();

    Wanted wanted;
    if (const QString wrong = ReadArguments(wanted); !wrong.isEmpty())
        return Fail(wrong);
    PatchDocument loaded;
    const QString fault = loaded.Load(wanted.document);
    if (!fault.isEmpty())
        return Fail(Text("%1 can't be read. %2").arg(wanted.document, fault));
    if (Export(loaded, wanted) == Failed)
        return Failed;
    const bool isStreamTaken = wanted.csv == StandardOutput || wanted.pdf == StandardOutput;
    return wanted.check ? Check(loaded, isStreamTaken ? stderr : stdout) : NoProblems;
}
