// SPDX-License-Identifier: MIT
#include <cstdlib>
#include <memory>
#include <string_view>

#include <QSocketNotifier>

#include "Application/PixelWeftApp.h"
#include "ArtNet/ZenArtNetService.h"
#include "DebugVariables/DebugVariables.h"
#include "Log/Log.h"
#include "Platform/EndSignals.h"
#include "Platform/Locale.h"
#include "Platform/SingleInstance.h"

namespace {

void ReadSwitches(int argc, char** argv)
{
    const auto variables = Zen::DebugVariables::Global();
    variables->Set("artnetdebug", false);
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "-artnetdebug")
            variables->Set("artnetdebug", true);
    }
}

/// The process's globals come up in this order and go in the reverse one, whichever way main ends.
struct Globals
{
    Globals()
    {
        Zen::Log::SetGlobal(std::make_shared<Zen::Log>());
        Zen::ArtNetService::SetGlobal(
            std::make_shared<Zen::ArtNetService>("Zentri PixelWeft", "#0001 [0001] Ready", false));
        Zen::DebugVariables::SetGlobal(std::make_shared<Zen::DebugVariables>());
    }
    ~Globals()
    {
        Zen::DebugVariables::SetGlobal(nullptr);
        Zen::ArtNetService::SetGlobal(nullptr);
        Zen::Log::SetGlobal(nullptr);
    }
    Globals(const Globals&) = delete;
    Globals& operator=(const Globals&) = delete;
};

} // namespace

int main(int argc, char** argv)
{
    // A second instance ends here silently: the first one owns the port and the document.
    if (!Platform::ClaimSingleInstance("Global\\PixelWeft"))
        return 0;
    Platform::UseUtf8TextAndPlainNumbers();
    const Globals globals;
    ReadSwitches(argc, argv);

    // Where a desktop asks for 200 percent by its dots per inch, lengths in pixels grow too.
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    PixelWeftApp application(argc, argv);
    bool ended = false;
    QSocketNotifier endSignals(Platform::CatchEndSignals(), QSocketNotifier::Read);
    QObject::connect(&endSignals, &QSocketNotifier::activated, &application, [&] {
        ended = true;
        endSignals.setEnabled(false);
        QCoreApplication::quit();
    });
    WEFTMain& window = application.MainWindow();
    window.showNormal();
    window.LoadFirstDocument();
    // The signal to end may come while a box is open over the first document, and no box opens
    // after it.
    if (ended)
        return EXIT_SUCCESS;
    window.StartTimers();
    window.GuardUnsavedWork();
    return ended ? EXIT_SUCCESS : QApplication::exec();
}
