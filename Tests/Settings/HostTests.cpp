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

TEST_F(Host, ModeFileDecides)
{
    struct Case
    {
        std::string text;
        std::int32_t mode;
    };
    for (const Case& c :
         {Case{"<Mode value=\"RC\"/>", 0}, Case{"\n<any other='1' value='LMT'>x</any>", 1},
          Case{"<Mode value=\"rc\"/>", 2}, Case{"<Mode value=\"RC \"/>", 2},
          Case{"<Mode value=\"\"/>", 2}, Case{"<Mode/>", 2}, Case{"<Mode Value='RC'/>", 2}})
    {
        ApplicationMode mode;
        mode.mode = 7;
        EXPECT_TRUE(mode.LoadFrom(QString::fromStdString(user.Write("mode.xml", c.text).string())));
        EXPECT_EQ(mode.mode, c.mode) << c.text;
    }
    EXPECT_TRUE(log.Messages().empty());
    EXPECT_EQ(&ApplicationMode::Instance(), &ApplicationMode::Instance());
    EXPECT_EQ(ApplicationMode::Instance().mode, 2);
}

TEST_F(Host, ModeFileThatSaysNothingIsRefusedWithItsReason)
{
    const std::string broken = "Could not parse XML file with SL mode";
    std::string tooLong(100'000, ' ');
    tooLong += "<Mode value='RC'/>";
    const std::string noElement = "Could not Get element from resource node";
    struct Case
    {
        std::string text;
        std::string message;
    };
    for (const Case& c :
         {Case{"<?xml version=\"1.0\"?><Mode value=\"RC\"/>", noElement},
          Case{"<!-- x --><Mode value=\"RC\"/>", noElement}, Case{"", broken},
          Case{"<Mode value=\"RC\"", broken}, Case{"garbage", broken}, Case{tooLong, broken}})
    {
        log.Clear();
        ApplicationMode mode;
        EXPECT_FALSE(
            mode.LoadFrom(QString::fromStdString(user.Write("mode.xml", c.text).string())));
        EXPECT_EQ(mode.mode, 2);
        EXPECT_EQ(log.Messages(), std::vector<std::string>{c.message}) << c.text.substr(0, 40);
    }
    log.Clear();
    // Beside the test program there is no such file.
    EXPECT_FALSE(ApplicationMode::Instance().Load());
    EXPECT_TRUE(
        log.Has("Could not specify SL Mode to LMT or RC due to missing resource file, Exiting"));
}

TEST_F(Host, NamesAndPlacesOfAMode)
{
    ApplicationMode mode;
    EXPECT_EQ(mode.HostName() + QString::fromStdWString(mode.RegistryRoot()), QString());
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
        EXPECT_EQ(message, user.Path().string()) << "an unreadable file is no news";

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
    { // Not read-only, as the resource is.
        const auto permissions = fs::status(library).permissions();
        EXPECT_EQ(permissions & fs::perms(0606), fs::perms(0606));
        std::ofstream(library) << "mine";
    }
    EXPECT_EQ(GetFixtureLibraryPath().toStdString(), library.string());
    EXPECT_EQ(Support::ReadBytes(library), "mine");
}

TEST_F(Host, FixtureLibraryThatCantBeMadeIsTold)
{
    user.Write("Zentri PixelWeft2", "a file where the folder should be");
    static QString told;
    told.clear();
    const auto old = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { told += text; });
    const QString path = GetFixtureLibraryPath();
    qInstallMessageHandler(old);
    EXPECT_TRUE(path.endsWith(QStringLiteral("/Zentri PixelWeft2/LEDFixtureLib.wfl")));
    EXPECT_EQ(told.toStdString(), "PixelWeft could not create initial fixture library in " +
                                      (user.Path() / "Zentri PixelWeft2").string() +
                                      ". Please check permissions and re-try.");
}
