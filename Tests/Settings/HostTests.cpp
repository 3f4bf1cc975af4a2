// SPDX-License-Identifier: MIT
#include "LibTools/W32System.h"
#include "Settings/ApplicationMode.h"
#include "Settings/ExternalServerPreferences.h"
#include "Settings/FixtureLibraryPath.h"
#include "Settings/ModeLogPath.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <QFile>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

using namespace std::string_literals;
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

    bool LoadPreferences(std::int32_t mode)
    {
        ApplicationMode::Instance().mode = mode;
        preferences = std::make_unique<ExternalServerPreferences>();
        return preferences->Load();
    }
    bool LoadPreferences(const std::string& bytes)
    {
        const fs::path folder = user.Path() / "Zentri ReelCommand 5";
        fs::create_directories(folder);
        std::ofstream(folder / "Zentri ReelCommand_preferences.xml", std::ios::binary) << bytes;
        return LoadPreferences(ApplicationMode::BesideReelCommand);
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
    struct Case
    {
        std::string text;
        std::int32_t mode;
        std::string message = {};
    };
    for (const auto& [text, expected, message] :
         {Case{"<Mode value=\"RC\"/>", 0}, Case{"\n<any other='1' value='LMT'>x</any>", 1},
          Case{"<Mode value=\"rc\"/>", 2}, Case{"<Mode value=\"RC \"/>", 2}, Case{"<Mode/>", 2},
          Case{"<?xml version=\"1.0\"?><Mode value=\"RC\"/>", 7, noElement},
          Case{"<!-- x --><Mode value=\"RC\"/>", 7, noElement}, Case{"", 7, broken},
          Case{"<Mode value=\"RC\"", 7, broken}, Case{tooLong, 7, broken}})
    {
        log.Clear();
        ApplicationMode mode;
        mode.mode = 7;
        const auto file = QString::fromStdString(user.Write("mode.xml", text).string());
        EXPECT_EQ(mode.LoadFrom(file), message.empty());
        EXPECT_EQ(mode.mode, expected) << text.substr(0, 40);
        EXPECT_EQ(log.Messages(), std::vector(message.empty() ? 0 : 1, message));
    }
    EXPECT_EQ(ApplicationMode::Instance().mode, 2);
    // Beside the test program there is no such file.
    EXPECT_FALSE(ApplicationMode::Instance().Load());
    EXPECT_TRUE(
        log.Has("Could not specify SL Mode to LMT or RC due to missing resource file, Exiting"));
}

TEST_F(Host, NamesAndPlacesOfAMode)
{
    ApplicationMode mode;
    EXPECT_EQ(mode.HostName(), QString());
    EXPECT_TRUE(ModeLogPath(2).empty());
    mode.mode = 0;
    EXPECT_EQ(mode.HostName(), QStringLiteral("ReelCommand"));
    EXPECT_EQ(ModeLogPath(0), user.Path() / "Zentri ReelCommand 5" / "PixelWeftLog.txt");
    mode.mode = 1;
    EXPECT_EQ(mode.HostName(), QStringLiteral("LoomTap"));
    EXPECT_EQ(ModeLogPath(1), user.Path() / "LoomTap2" / "PixelWeftLog.txt");
}

TEST_F(Host, LoomTapNeedsNoFile)
{
    EXPECT_TRUE(LoadPreferences(ApplicationMode::BesideLoomTap));
    EXPECT_EQ(preferences->mappingPath,
              (user.Path() / "LoomTap2" / "PixelWeft" / "mapping.wfm").wstring());
    preferences->artNetIPAddress = preferences->dmxInterface = L"old";
    preferences->mode = ApplicationMode::NoHost;
    EXPECT_FALSE(preferences->Load());
    EXPECT_EQ(preferences->mappingPath + preferences->dmxInterface + preferences->artNetIPAddress,
              L"");
    System::global.reset();
    EXPECT_FALSE(LoadPreferences(ApplicationMode::BesideLoomTap));
}

TEST_F(Host, ReelCommandTellsItsLibraryAndArtNet)
{
    const std::string text = "<?xml version=\"1.0\"?>\n<Other/><RMS_Preferences><x/>"
                             "<DATA DMXINTERFACE=\"ArtNet\" ART_NET_IP_ADDRESS=\"2.0.0.7\" "
                             "LIBRARYROOTFOLDER=\"C:\\Shows\\\xFC\"/></RMS_Preferences>";
    ASSERT_TRUE(LoadPreferences(text));
    EXPECT_EQ(preferences->dmxInterface, L"ArtNet");
    EXPECT_EQ(preferences->artNetIPAddress, L"2.0.0.7");
    EXPECT_EQ(preferences->mappingPath, L"C:/Shows/\u00FC/PixelWeft/mapping.wfm");

    ASSERT_TRUE(LoadPreferences(XmlText::Encode(
        "<RMS_Preferences><DATA LIBRARYROOTFOLDER=\"/shows\"/></RMS_Preferences>")));
    EXPECT_EQ(preferences->mappingPath, L"/shows/PixelWeft/mapping.wfm");
    EXPECT_EQ(preferences->dmxInterface + preferences->artNetIPAddress, L"");
}

TEST_F(Host, IncompletePreferencesOfReelCommand)
{
    log.Clear();
    EXPECT_FALSE(LoadPreferences(ApplicationMode::BesideReelCommand)) << "no file";
    EXPECT_FALSE(LoadPreferences("<RMS_Preferences><DATA"s));
    for (const auto& message : log.Messages())
        EXPECT_EQ(message, user.Path().string()) << "an unreadable file costs no line";

    EXPECT_FALSE(LoadPreferences("<rms_preferences/>"s));
    EXPECT_EQ(log.Count("Could not find preferences master node"), 1);
    EXPECT_FALSE(LoadPreferences("<RMS_Preferences><data/></RMS_Preferences><DATA/>"s));
    EXPECT_EQ(log.Count("Could not find data element"), 1);

    EXPECT_FALSE(
        LoadPreferences("<RMS_Preferences><DATA DMXINTERFACE='ArtNet'/></RMS_Preferences>"s));
    EXPECT_EQ(preferences->dmxInterface, L"ArtNet");
    EXPECT_EQ(preferences->mappingPath, L"");
}

TEST_F(Host, FixtureLibraryIsMadeOnceAndThenLeftAlone)
{
    const fs::path library = user.Path() / "Zentri PixelWeft2" / "LEDFixtureLib.wfl";
    ASSERT_EQ(GetFixtureLibraryPath().toStdString(), library.string());
    EXPECT_EQ(Support::ReadBytes(library), "<LEDFixtureLibrary version=\"1\" />\n");
    // Not read-only, as the resource is.
    EXPECT_EQ(fs::status(library).permissions() & fs::perms(0606), fs::perms(0606));
    user.Write("Zentri PixelWeft2/LEDFixtureLib.wfl", "mine");
    (void)GetFixtureLibraryPath();
    EXPECT_EQ(Support::ReadBytes(library), "mine");
}

TEST_F(Host, FixtureLibraryThatCantBeMadeIsReported)
{
    user.Write("Zentri PixelWeft2", "a file where the folder should be");
    static QString said;
    const auto old = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { said += text; });
    const QString path = GetFixtureLibraryPath();
    qInstallMessageHandler(old);
    EXPECT_TRUE(path.endsWith(QStringLiteral("/Zentri PixelWeft2/LEDFixtureLib.wfl")));
    EXPECT_EQ(said.toStdString(), "PixelWeft could not create initial fixture library in " +
                                      (user.Path() / "Zentri PixelWeft2").string() +
                                      ". Please check permissions and re-try.");
}
