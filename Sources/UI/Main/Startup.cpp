// SPDX-License-Identifier: MIT
#include "UI/Main/Startup.h"

#include <cstdlib>
#include <exception>
#include <memory>

#include "LibTools/QSysFileSystem.h"
#include "LibTools/W32BlitterService.h"
#include "LibTools/W32RegistryService.h"
#include "LibTools/W32StringService.h"
#include "LibTools/W32System.h"
#include "Log/Log.h"
#include "Settings/ApplicationMode.h"
#include "Settings/ModeLogPath.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Widgets/ActionSet.h"

namespace {

/// The start can't go on. The log has the reason, and no document was touched.
[[noreturn]] void EndProcess()
{
    if (const auto log = Zen::Log::Global())
        log->Flush();
    std::_Exit(EXIT_FAILURE);
}

} // namespace

void Startup::ReadApplicationMode()
{
    if (ApplicationMode::Instance().Load())
        return;
    ZEN_LOG_ERROR("Cannot determine application mode(mode.xml might be missing).");
    EndProcess();
}

ServicesInUse::ServicesInUse()
{
    StringService::global = std::make_unique<W32StringService>();
    System::global = std::make_unique<W32System>();
    SysFileSystem::Install(std::make_unique<QSysFileSystem>());
    BlitterService::Install(std::make_unique<W32BlitterService>());
    RegistryService::Install(
        std::make_unique<W32RegistryService>(ApplicationMode::Instance().RegistryRoot()));
}

ServicesInUse::~ServicesInUse()
{
    System::global.reset();
    StringService::global.reset();
    SysFileSystem::Install(nullptr);
    BlitterService::Install(nullptr);
}

void Startup::StartLogOfMode()
{
    const auto path = ModeLogPath(ApplicationMode::Instance().mode);
    if (path.empty())
        return;
    try {
        Zen::Log::SetGlobal(std::make_shared<Zen::Log>(path));
    } catch (const std::exception& failure) {
        // A log that can't be written (a full or read-only home) is no reason to send nothing.
        ZEN_LOG_ERROR("The log file can't be opened: %s", failure.what());
    }
}

QString Startup::AskForDocumentPath(OperatorBoxes& boxes)
{
    const QString host = ApplicationMode::Instance().HostName();
    ZEN_LOG_ERROR("%s Library not found", host.toUtf8().constData());
    OperatorBoxes::Choice choice;
    choice.title = WindowText(QT_TRANSLATE_NOOP("WEFTMain", "%1 Library Not Found")).arg(host);
    choice.text = WindowText(QT_TRANSLATE_NOOP(
                                 "WEFTMain", "PixelWeft requires that %1 has an active Library "
                                             "before starting, please choose a working directory"))
                      .arg(host);
    choice.buttons = QStringList{WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Choose")),
                                 WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Quit"))};
    choice.onEscape = 1;
    QString folder;
    while (folder.isEmpty()) {
        if (boxes.Choose(choice) != 0) {
            ZEN_LOG_ERROR("Shutting down because libary is missing");
            EndProcess();
        }
        folder = boxes.ChooseDirectory(
            nullptr, WindowText(QT_TRANSLATE_NOOP("WEFTMain", "working directory")));
    }
    return folder + QStringLiteral("/mapping.wfm");
}
