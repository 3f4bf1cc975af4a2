// SPDX-License-Identifier: MIT
// The preference file of the host beside us, which another program writes whenever it likes.
#include "Fuzz/InputFile.h"
#include "LibTools/W32System.h"
#include "Settings/ApplicationMode.h"
#include "Settings/ExternalServerPreferences.h"

#include <cstdlib>
#include <filesystem>
#include <memory>

namespace {

namespace fs = std::filesystem;

/// A user of our own whose host keeps its file where hosts do.
class User
{
public:
    User()
    {
        std::string pattern = (fs::temp_directory_path() / "hostfileXXXXXX").string();
        if (!mkdtemp(pattern.data()))
            std::abort();
        home_ = pattern;
        setenv("XDG_DATA_HOME", home_.c_str(), 1);
        System::global = std::make_unique<W32System>();
        ApplicationMode::Instance().mode = ApplicationMode::BesideReelCommand;
        const fs::path folder = home_ / "Zentri ReelCommand 5";
        fs::create_directories(folder);
        fs::create_symlink(file.Path(), folder / "Zentri ReelCommand_preferences.xml");
    }
    ~User()
    {
        std::error_code ignored;
        fs::remove_all(home_, ignored);
    }
    User(const User&) = delete;
    User& operator=(const User&) = delete;

    const InputFile file; ///< the host's preferences

private:
    fs::path home_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const User user;
    user.file.Write(data, size);
    ExternalServerPreferences preferences;
    const bool loaded = preferences.Load();
    const bool hasPath = preferences.mappingPath.ends_with(L"/PixelWeft/mapping.wfm");
    if (loaded != hasPath || preferences.mappingPath.find(L'\\') != std::wstring::npos)
        std::abort();
    return 0;
}
