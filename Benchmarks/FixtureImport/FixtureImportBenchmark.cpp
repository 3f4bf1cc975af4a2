// SPDX-License-Identifier: MIT
// What an import costs above the bare reading of its files by the same XML and JSON readers. Both
// run as processes of their own, in turn, and the ratio is the median of their pairs. The folder of
// definitions is named by PIXELWEFT_FIXTURE_DATA; without one the benchmark makes definitions.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <vector>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include "FixtureImport/FixtureFiles.h"
#include "Timing.h"

namespace {

/// Reads every file to its end, and keeps nothing. The number of files that could be read.
int ParseAll(const QStringList& folders)
{
    int good = 0;
    for (const QString& path : FixtureImport::FindFixtureFiles(folders)) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray bytes = file.readAll();
        if (path.endsWith(QLatin1String(".json"))) {
            good += static_cast<int>(!QJsonDocument::fromJson(bytes).isNull());
            continue;
        }
        QXmlStreamReader xml(bytes);
        while (!xml.atEnd())
            xml.readNext();
        good += static_cast<int>(!xml.hasError());
    }
    return good;
}

/// Bars of eight pixels with a wheel of colours: much text for few channels, as in real files.
void WriteDefinitions(const QString& folder)
{
    QByteArray channels;
    for (int pixel = 0; pixel < 8; ++pixel) {
        for (const char* colour : {"Red", "Green", "Blue"})
            channels += QStringLiteral(R"(<Channel Name="%1 %2" Preset="Intensity%1"/>)")
                            .arg(QLatin1String(colour))
                            .arg(pixel)
                            .toUtf8();
    }
    channels += R"(<Channel Name="Wheel"><Group Byte="0">Colour</Group>)";
    for (int i = 0; i < 64; ++i)
        channels += QStringLiteral(R"(<Capability Min="%1" Max="%2" Preset="ColorMacro" )"
                                   R"(Res1="#ff0000">Colour macro %3</Capability>)")
                        .arg(4 * i)
                        .arg(4 * i + 3)
                        .arg(i)
                        .toUtf8();
    channels += "</Channel><Mode Name=\"25 channels\">";
    int number = 0;
    for (int pixel = 0; pixel < 8; ++pixel) {
        for (const char* colour : {"Red", "Green", "Blue"})
            channels += QStringLiteral(R"(<Channel Number="%1">%2 %3</Channel>)")
                            .arg(number++)
                            .arg(QLatin1String(colour))
                            .arg(pixel)
                            .toUtf8();
    }
    channels += "<Channel Number=\"24\">Wheel</Channel></Mode>";
    for (int i = 0; i < 1000; ++i) {
        QFile file(QStringLiteral("%1/%2.qxf").arg(folder).arg(i));
        if (file.open(QIODevice::WriteOnly))
            file.write("<FixtureDefinition><Manufacturer>Maker</Manufacturer><Model>Bar " +
                       QByteArray::number(i) + "</Model>" + channels + "</FixtureDefinition>");
    }
}

void Import(benchmark::State& state)
{
    const QTemporaryDir made;
    QString folder = qEnvironmentVariable("PIXELWEFT_FIXTURE_DATA");
    if (folder.isEmpty()) {
        folder = made.path();
        WriteDefinitions(folder);
    }
    const QString out = made.filePath(QStringLiteral("out.wfl"));
    const auto run = [&](const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        process.waitForFinished(-1);
        const int status = process.exitCode();
        if (status != 0 && status != 1)
            state.SkipWithError("a process failed");
    };
    std::vector<double> ratios;
    std::vector<double> imports;
    for (auto _ : state) {
        const double bare = SecondsOf(1, [&] {
            run(QCoreApplication::applicationFilePath(), {QStringLiteral("--parse"), folder});
        });
        imports.push_back(SecondsOf(1, [&] {
            run(QStringLiteral(PIXELWEFT_FIXTURES), {folder, QStringLiteral("-o"), out});
        }));
        ratios.push_back(imports.back() / bare);
        state.SetIterationTime(imports.back());
    }
    state.counters["ratio"] = Median(ratios);
    state.counters["import_ms"] = Median(imports) * 1e3;
}
BENCHMARK(Import)->Iterations(15)->UseManualTime();

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--parse"))
        return ParseAll(arguments.mid(2)) > 0 ? EXIT_SUCCESS : 2;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
