// SPDX-License-Identifier: MIT
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

#include <QSocketNotifier>

#include "Application/CommandLine.h"
#include "Application/PixelWeftApp.h"
#include "ArtNet/ZenArtNetService.h"
#include "DebugVariables/DebugVariables.h"
#include "LibTools/Qt5And6.h"
#include "Log/Log.h"
#include "Platform/EndSignals.h"
#include "Platform/Locale.h"
#include "Platform/SingleInstance.h"

namespace {

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

/// The files of later starts go to the window. One message for each turn of the event loop, so that
/// many of them can't hold up a tick.
class LaterStarts
{
public:
    LaterStarts(const Platform::SingleInstance& instance, WEFTMain& window)
        : instance_(instance)
        , window_(window)
    {
        if (instance.Handle() < 0)
            return;
        notifier_.emplace(instance.Handle(), QSocketNotifier::Read);
        QObject::connect(&*notifier_, &QSocketNotifier::activated, &window, [this] { Take(); });
    }

private:
    void Take()
    {
        const auto message = instance_.TakeMessage();
        if (!message)
            return;
        const auto files =
            message->isOfThisUser && message->isWhole ? FilesIn(message->bytes) : std::nullopt;
        if (files)
            window_.OpenFiles(*files);
        else if (++ignored_ <= MaxLogged) // Anybody on the machine may send, all night.
            ZEN_LOG_INFO("A message that is not of a start of this program was ignored");
    }

    static constexpr int MaxLogged = 10;
    const Platform::SingleInstance& instance_;
    WEFTMain& window_;
    std::optional<QSocketNotifier> notifier_;
    int ignored_ = 0;
};

} // namespace

int main(int argc, char** argv)
{
    const CommandLine command(argc, argv);
    if (command.said)
        return std::fputs(command.said->c_str(), stdout) < 0 ? EXIT_FAILURE : EXIT_SUCCESS;
    const Platform::SingleInstance instance("Global\\PixelWeft");
    if (!instance.IsFirst()) {
        // A second instance ends here silently: the first one owns the port and the document.
        if (!command.files.empty())
            instance.LeaveMessage(MessageOf(command.files));
        return EXIT_SUCCESS;
    }
    Platform::UseUtf8TextAndPlainNumbers();
    const Globals globals;
    Zen::DebugVariables::Global()->Set("artnetdebug", command.debugArtNet);

    QGuiApplication::setDesktopFileName(QStringLiteral("pixelweft"));
    // Where a desktop asks for 200 percent by its dots per inch, lengths in pixels grow too.
    Qt5And6::FollowScaleOfScreen();
    PixelWeftApp application(argc, argv);
    bool ended = false;
    QSocketNotifier endSignals(Platform::CatchEndSignals(), QSocketNotifier::Read);
    QObject::connect(&endSignals, &QSocketNotifier::activated, &application, [&] {
        ended = true;
        endSignals.setEnabled(false);
        QCoreApplication::exit();
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
    window.OpenFiles(PathsOf(command.files));
    const LaterStarts laterStarts(instance, window);
    return ended ? EXIT_SUCCESS : QApplication::exec();
}
