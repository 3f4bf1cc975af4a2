// SPDX-License-Identifier: MIT
#include "LibTools/W32System.h"
#include "Settings/ApplicationMode.h"
#include "Settings/ExternalServerPreferences.h"
#include "Settings/FixtureLibraryPath.h"
#include "Settings/ModeLogPath.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <sys/stat.h>

namespace fs = std::filesystem;

namespace {

/// A user of the test's own, with the system service that leads there.
class Host : public testing::Test
{
protected:
    Host()
    {
        setenv("XDG_DATA_HOME", user.Path().c_str(), 1);
        System::global = std::make_unique<W32System>();
    }
    ~Host() override
    {
        System::global.reset();
        ApplicationMode::Instance().mode = ApplicationMode::NoHost;
    }

    /// Writes the preferences of ReelCommand, unless there are none, and loads.
    bool LoadPreferences(const char* bytes)
    {
        const std::string folder = "Zentri ReelCommand 5";
        fs::create_directories(user.Path() / folder);
        if (bytes)
            user.Write(folder + "/Zentri ReelCommand_preferences.xml", bytes);
        ApplicationMode::Instance().mode = ApplicationMode::BesideReelCommand;
        preferences = std::make_unique<ExternalServerPreferences>();
        log.Clear();
        return preferences->Load();
    }

    Support::TemporaryFolder user;
    Support::LogCapture log;
    std::unique_ptr<ExternalServerPreferences> preferences;
};

} // namespace

TEST_F(Host, ModeFileDecidesOrIsRefusedWithItsReason)
{
    const std::string broken = "Could not parse XML file with SL mode";
    const std::string noElement = "Could not Get element from resource node";
    std::string tooLong = "<Mode value='RC'/>";
    tooLong.insert(0, 100'000, ' ');
    using Case = std::array<std::string, 3>; // the file, the host, and what is logged
    for (const auto& [text, host, message] :
         {Case{"<Mode value='RC'/>", "ReelCommand"},
          Case{"\n<any other='1' value='LMT'>x</any>", "LoomTap"}, Case{"<Mode value='rc'/>"},
          Case{"<Mode value='RC '/>"}, Case{"<Mode/>"},
          Case{"<?xml version='1.0'?><Mode value='RC'/>", "LoomTap", noElement},
          Case{"<!-- x --><Mode value='RC'/>", "LoomTap", noElement}, Case{"", "LoomTap", broken},
          Case{"<Mode value='RC'", "LoomTap", broken}, Case{tooLong, "LoomTap", broken}})
    {
        log.Clear();
        ApplicationMode mode;
        EXPECT_EQ(mode.HostName(), QString());
        mode.mode = ApplicationMode::BesideLoomTap;
        const auto file = QString::fromStdString(user.Write("mode.xml", text).string());
        EXPECT_EQ(mode.LoadFrom(file), message.empty());
        EXPECT_EQ(mode.HostName().toStdString(), host) << text.substr(0, 40);
        EXPECT_EQ(log.Messages(), std::vector(message.empty() ? 0 : 1, message));
    }
    EXPECT_TRUE(ModeLogPath(ApplicationMode::NoHost).empty());
    // Beside the test program there is no such file.
    EXPECT_FALSE(ApplicationMode::Instance().Load());
    EXPECT_TRUE(
        log.Has("Could not specify SL Mode to LMT or RC due to missing resource file, Exiting"));
}

TEST_F(Host, ReelCommandTellsItsLibraryAndArtNet)
{
    ASSERT_TRUE(LoadPreferences(
        "<?xml version=\"1.0\"?>\n<Other/><RMS_Preferences><x/><DATA DMXINTERFACE='ArtNet' "
        "ART_NET_IP_ADDRESS='2.0.0.7' LIBRARYROOTFOLDER='C:\\Shows\\\xFC'/></RMS_Preferences>"));
    EXPECT_EQ(preferences->dmxInterface, L"ArtNet");
    EXPECT_EQ(preferences->artNetIPAddress, L"2.0.0.7");
    EXPECT_EQ(preferences->mappingPath, L"C:/Shows/\u00FC/PixelWeft/mapping.wfm");
    for (const int mode : {ApplicationMode::BesideLoomTap, ApplicationMode::NoHost}) {
        preferences->mode = mode;
        preferences->artNetIPAddress = preferences->dmxInterface = L"old";
        EXPECT_EQ(preferences->Load(), mode == ApplicationMode::BesideLoomTap);
        EXPECT_EQ(preferences->dmxInterface + preferences->artNetIPAddress, L"");
    }
    EXPECT_EQ(preferences->mappingPath, L"");
    System::global.reset();
    preferences->mode = ApplicationMode::BesideLoomTap;
    EXPECT_FALSE(preferences->Load()) << "a user without a folder";
}

TEST_F(Host, IncompletePreferencesOfReelCommand)
{
    for (const auto& [text, line] : // what is logged behind the user's folder
         {std::pair<const char*, std::string>{nullptr, ""},
          {"<RMS_Preferences><DATA", ""},
          {"<rms_preferences/>", "Could not find preferences master node"},
          {"<RMS_Preferences><data/></RMS_Preferences><DATA/>", "Could not find data element"},
          {"<RMS_Preferences><DATA DMXINTERFACE='ArtNet'/></RMS_Preferences>", ""}})
    {
        EXPECT_FALSE(LoadPreferences(text));
        EXPECT_TRUE(log.Has(line.empty() ? user.Path().string() : line)) << line;
    }
    EXPECT_EQ(preferences->dmxInterface, L"ArtNet");
    EXPECT_EQ(preferences->artNetIPAddress + preferences->mappingPath, L"");
}

TEST_F(Host, FixtureLibraryIsMadeOnceOrItsAbsenceReported)
{
    const std::string folder = "Zentri PixelWeft2";
    user.Write(folder, "a file where the folder should be");
    static QString said;
    const auto old = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { said += text; });
    EXPECT_TRUE(GetFixtureLibraryPath().endsWith(QStringLiteral("2/LEDFixtureLib.wfl")));
    qInstallMessageHandler(old);
    EXPECT_EQ(said.toStdString(), "PixelWeft could not create initial fixture library in " +
                                      (user.Path() / folder).string() +
                                      ". Please check permissions and re-try.");
    fs::remove(user.Path() / folder);
    const mode_t mask = umask(027);
    const fs::path library = GetFixtureLibraryPath().toStdString();
    umask(mask);
    ASSERT_EQ(library, user.Path() / folder / "LEDFixtureLib.wfl");
    EXPECT_EQ(fs::status(library).permissions(), fs::perms(0640));
    // As earlier versions made it, for everybody to write to.
    fs::permissions(library, fs::perms(0606));
    (void)GetFixtureLibraryPath();
    EXPECT_EQ(fs::status(library).permissions(), fs::perms(0604));
    user.Write(folder + "/LEDFixtureLib.wfl", "mine");
    (void)GetFixtureLibraryPath();
    EXPECT_EQ(Support::ReadBytes(library), "mine");
}
