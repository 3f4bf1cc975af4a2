// SPDX-License-Identifier: MIT
// The files that another program writes whenever it likes: the one beside the executable that names
// the host, one of three modes or none, and the preferences of that host.
#include "Fuzz/Fuzz.h"
#include "LibTools/W32System.h"
#include "Settings/ApplicationMode.h"
#include "Settings/ExternalServerPreferences.h"

#include <memory>

namespace {

/// A user whose host keeps its file where hosts do.
struct User
{
    User()
    {
        setenv("XDG_DATA_HOME", home.Path().c_str(), 1);
        System::global = std::make_unique<W32System>();
        ApplicationMode::Instance().mode = ApplicationMode::BesideReelCommand;
        std::filesystem::create_directories(home.Path() / "Zentri ReelCommand 5");
    }

    const Support::TemporaryFolder home;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const User user;
    const auto file = user.home.Write("Zentri ReelCommand 5/Zentri ReelCommand_preferences.xml",
                                      BytesOf(data, size));
    ApplicationMode mode;
    mode.mode = -1;
    const bool understood = mode.LoadFrom(QString::fromStdString(file.string()));
    Require(understood ? mode.mode >= 0 && mode.mode <= 2 : mode.mode == -1);
    ExternalServerPreferences preferences;
    const bool loaded = preferences.Load();
    Require(loaded == preferences.mappingPath.ends_with(L"/PixelWeft/mapping.wfm"));
    Require(preferences.mappingPath.find(L'\\') == std::wstring::npos);
    return 0;
}
