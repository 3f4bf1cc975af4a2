// SPDX-License-Identifier: MIT
#include "UI/PatchSheet/PatchExport.h"

#include <exception>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

#include <QAction>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QProgressDialog>
#include <QSettings>

#include "LibTools/SaveResult.h"
#include "LibTools/XmlFile.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "PatchSheet/PatchSheet.h"
#include "Platform/Locale.h"
#include "Settings/SettingsBlock.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Dialogs/OperatorNotices.h"

namespace {

constexpr int ProgressMilliseconds = 500;
constexpr int StepMilliseconds = 100;
constexpr int WholeProgress = 100;

const QString PaperKey = QStringLiteral("patchPaper");
const QString FormatKey = QStringLiteral("patchFormat");
const QString Letter = QStringLiteral("Letter");
const QString A4 = QStringLiteral("A4");
const QString Csv = QStringLiteral("csv");
const QString Pdf = QStringLiteral("pdf");

/// On any thread. Nothing when it was cancelled.
std::optional<QByteArray> BytesOf(const PatchSheet& sheet, const PatchExportChoice& choice,
                                  const std::stop_token& stop, std::atomic<int>& percent)
{
    if (!choice.onPaper)
        return PatchCsv(sheet, choice.order);
    return PatchPdf(sheet, choice.paper, [&](double part) {
        percent = static_cast<int>(part * WholeProgress);
        return !stop.stop_requested();
    });
}

/// On any thread. A sentence for the operator.
QString ReasonOf(const std::exception& error)
{
    if (dynamic_cast<const std::bad_alloc*>(&error))
        return SaveResult(std::make_error_code(std::errc::not_enough_memory)).Reason();
    return PatchExport::tr("An internal error: %1.").arg(QString::fromLocal8Bit(error.what()));
}

} // namespace

PatchExport::PatchExport(const Parts& parts)
    : parts_(parts)
    , actions_(parts.window)
    , action_(actions_.Add(
          {.objectName = "actionExport_Patch",
           .text = QT_TRANSLATE_NOOP("WEFTMain", "Export Patc&h..."),
           .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Write the patch for the crew: on paper (PDF) "
                                                    "or as a table (CSV)")},
          this, &PatchExport::ActionExportPatch))
{
    progressTimer_.setInterval(StepMilliseconds);
    connect(&progressTimer_, &QTimer::timeout, this, &PatchExport::ShowProgress);
}

PatchExport::~PatchExport()
{
    if (writer_.joinable())
        writer_.join(); // Its own end would cancel it.
}

void PatchExport::Read(const QSettings& store)
{
    const QString usual = Platform::UsesLetterPaper() ? Letter : A4;
    choice_.paper.paper = store.value(PaperKey, usual).toString() == Letter
                              ? PatchPdfOptions::Paper::Letter
                              : PatchPdfOptions::Paper::A4;
    choice_.onPaper = store.value(FormatKey, Pdf).toString() != Csv;
}

void PatchExport::Write(QSettings& store) const
{
    store.setValue(PaperKey, choice_.paper.paper == PatchPdfOptions::Paper::Letter ? Letter : A4);
    store.setValue(FormatKey, choice_.onPaper ? Pdf : Csv);
}

void PatchExport::ActionExportPatch()
{
    QString title;
    if (!AskChoice(title))
        return;
    const QString file = AskFile();
    if (file.isEmpty())
        return;
    parts_.settings.lastDirectory = QFileInfo(file).dir().canonicalPath();
    const MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    Start(PatchSheetOf(document, parts_.nodes,
                       {title, QDateTime::currentDateTime(), parts_.settings.networkText,
                        document.KnowsAnsweringNodes()}),
          file);
}

bool PatchExport::AskChoice(QString& title)
{
    const QString usual = SheetTitleOf(*parts_.manager.GetMappedDeviceModel(), mappingFile_);
    PatchSheetDialog dialog(&parts_.window);
    dialog.SetTitle(titleOf_ == usual && !title_.isEmpty() ? title_ : usual);
    dialog.SetChoice(choice_);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    choice_ = dialog.GetChoice();
    title = dialog.GetTitle().isEmpty() ? usual : dialog.GetTitle();
    title_ = title;
    titleOf_ = usual;
    return true;
}

/// The name decides where it says what it is.
QString PatchExport::AskFile()
{
    const QString suffix = choice_.onPaper ? Pdf : Csv;
    const QString folder =
        parts_.settings.lastDirectory.isEmpty() ? QDir::homePath() : parts_.settings.lastDirectory;
    QString file = parts_.boxes.SaveFile(
        &parts_.window, tr("Export Patch"), folder,
        choice_.onPaper ? tr("PDF files (*.pdf)") : tr("CSV files (*.csv)"), suffix);
    if (file.isEmpty())
        return {};
    const QString given = QFileInfo(file).suffix().toLower();
    if (given == Pdf || given == Csv) {
        choice_.onPaper = given == Pdf;
        return file;
    }
    // The file dialog has asked about the name before this.
    file += QLatin1Char('.') + suffix;
    const bool mayWrite =
        !QFileInfo::exists(file) ||
        parts_.boxes.Confirm(&parts_.window, tr("Export Patch"),
                             tr("%1 is there already. Do you want to replace it?").arg(file));
    return mayWrite ? file : QString();
}

void PatchExport::Start(PatchSheet sheet, const QString& file)
{
    action_->setEnabled(false);
    percent_ = 0;
    try {
        writer_ = std::jthread(
            [this, file, choice = choice_, sheet = std::move(sheet)](const std::stop_token& stop) {
                QString fault;
                bool cancelled = false;
                try {
                    const auto bytes = BytesOf(sheet, choice, stop, percent_);
                    cancelled = !bytes;
                    if (bytes)
                        fault = WriteWholeFile(file.toStdWString(), bytes->toStdString()).Reason();
                } catch (const std::exception& error) {
                    fault = ReasonOf(error);
                }
                QMetaObject::invokeMethod(
                    this, [this, file, fault, cancelled] { End(file, fault, cancelled); });
            });
    } catch (const std::exception& error) {
        return End(file, ReasonOf(error), false);
    }
    progressTimer_.start(ProgressMilliseconds);
}

void PatchExport::ShowProgress()
{
    if (!progress_) {
        // Not modal: the show, and the editing, go on.
        progress_ = std::make_unique<QProgressDialog>(
            tr("The patch is being written..."), tr("Cancel"), 0, WholeProgress, &parts_.window);
        progress_->setObjectName(QStringLiteral("patchProgress"));
        progress_->setWindowTitle(tr("Export Patch"));
        progress_->setAutoClose(false);
        progress_->setAutoReset(false);
        connect(progress_.get(), &QProgressDialog::canceled, this,
                [this] { writer_.request_stop(); });
        progress_->show();
        progressTimer_.start(StepMilliseconds);
    }
    if (closesAfter_)
        progress_->setLabelText(
            tr("The patch is being written. The program closes when that is done."));
    progress_->setValue(percent_);
}

bool PatchExport::MayClose()
{
    if (!writer_.joinable())
        return true;
    closesAfter_ = true;
    ShowProgress();
    return false;
}

void PatchExport::End(const QString& file, const QString& fault, bool cancelled)
{
    const bool closes = std::exchange(closesAfter_, false);
    if (writer_.joinable())
        writer_.join();
    progressTimer_.stop();
    progress_.reset();
    action_->setEnabled(true);
    if (fault.isEmpty()) {
        if (!cancelled)
            emit exported(file);
        if (closes)
            parts_.window.close();
        return;
    }
    // The program stays open: whoever closed it has to know that there is no file.
    parts_.notices.Add({.parent = &parts_.window,
                        .title = tr("Patch Not Exported"),
                        .text = tr("The patch could not be written to %1.\n\n%2\n\nA file that was "
                                   "there is as it was.")
                                    .arg(file, fault)});
}
