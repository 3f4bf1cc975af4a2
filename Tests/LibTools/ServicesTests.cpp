// SPDX-License-Identifier: MIT
#include "LibTools/QSysFileSystem.h"
#include "LibTools/W32RegistryService.h"
#include "LibTools/W32StringService.h"
#include "LibTools/W32System.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

using namespace std::string_literals;
using Support::ReadBytes;
using Support::TemporaryFolder;

TEST(FileSystem, MakesMovesCopiesRemovesAndLists)
{
    const TemporaryFolder folder;
    const auto path = [&](const std::wstring& name) {
        return folder.Path().wstring() + L"/" + name;
    };
    QSysFileSystem files;
    EXPECT_TRUE(files.CreateDirectories(path(L"\u65E5/b")));
    EXPECT_FALSE(files.CreateDirectories(path(L"\u65E5/b")));
    EXPECT_TRUE(files.CreateDirectory(path(L"c")));
    folder.Write("f", "1");
    folder.Write("g", "2");
    EXPECT_TRUE(files.CopyFile(path(L"f"), path(L"g"), true)) << "true is a failure";
    EXPECT_FALSE(files.CopyFile(path(L"f"), path(L"g"), false));
    EXPECT_EQ(ReadBytes(folder.Path() / "g"), "1");
    EXPECT_FALSE(files.Rename(path(L"f"), path(L"h")));
    EXPECT_TRUE(files.Rename(path(L"f"), path(L"h")));
    EXPECT_TRUE(files.Remove(path(L"\u65E5"))) << "not empty";
    EXPECT_FALSE(files.Remove(path(L"c")));
    EXPECT_FALSE(files.Remove(path(L"g")));
    std::vector<DirEntry> entries{{L"old", PathKind::File}};
    files.ListDirectory(path(L""), entries);
    std::ranges::sort(entries, {}, &DirEntry::name);
    EXPECT_EQ(entries,
              (std::vector<DirEntry>{{L"h", PathKind::File}, {L"\u65E5", PathKind::Directory}}));
    EXPECT_EQ(files.GetDirectoryOf(L"/a/b\u00FC/c.d"), L"/a/b\u00FC");
    EXPECT_EQ(files.GetFileName(L"/a/b/c\u00FC.d"), L"c\u00FC.d");
    EXPECT_EQ(files.GetMediaKind(L"x.png.JPEG"), 1);
    EXPECT_EQ(files.GetMediaKind(L"/png"), 0);
}

TEST(FileSystem, FilesHoldUtf16AndReadThreeEncodings)
{
    StringService::global = std::make_unique<W32StringService>();
    const TemporaryFolder folder;
    const std::wstring path = folder.Path().wstring() + L"/file";
    QSysFileSystem files;
    for (const std::wstring& bad : {L""s, folder.Path().wstring(), path + L"/x"})
        EXPECT_EQ(files.Open(bad, L"wb"), nullptr);
    std::wstring text;
    EXPECT_FALSE(files.OpenDevice(path, QIODevice::ReadOnly)->ReadAll(text));
    {
        const auto file = files.Open(path, L"wb");
        ASSERT_TRUE(file);
        EXPECT_EQ(file->Write("\xFF\xFE", 2), 2U);
        EXPECT_TRUE(file->Print(L"%d %ls", 7, L"\U0001F4A1"));
        EXPECT_TRUE(file->PrintText(L"100%% %s%n"));
        EXPECT_TRUE(file->PrintText(std::wstring(16384, L'x')));
        EXPECT_FALSE(file->PrintText(std::wstring(16385, L'x')));
        EXPECT_EQ(file->Tell(), 2 + 2 * (4 + 9 + 16384));
    }
    ASSERT_TRUE(files.Open(path, L"rb")->ReadAll(text));
    EXPECT_EQ(text.substr(0, 12), L"7 \U0001F4A1"
                                  L"100% %s%n");
    for (const auto& [bytes, expected] : {std::pair(""s, L""),
                                          {"\xFF\xFE"
                                           "a\0\x3D\xD8\xA1\xDC"
                                           "b"s,
                                           L"a\U0001F4A1"},
                                          {"\xFE\xFF\0a"s, L""},
                                          {"\xC3\xBC\xFF"s, L"\u00FC\uFFFD"}})
    {
        folder.Write("file", bytes);
        EXPECT_TRUE(files.Open(path, L"rb")->ReadAll(text));
        EXPECT_EQ(text, expected);
    }
    folder.Write("file", "\xFF\xFE"
                         "a\0\r\0\n\0\xFC\0\n\0"s);
    EXPECT_TRUE(files.OpenDevice(path, QIODevice::ReadOnly)->ReadAll(text));
    EXPECT_EQ(text, L"a\u00FC") << "lines are joined";
    StringService::global.reset();
}

TEST(Strings, ConversionsKeepToTheirBuffers)
{
    W32StringService strings;
    const auto narrow = [&](std::size_t room) {
        std::string text = "xxxx";
        const bool good = strings.WideToUtf8(u"\u00FC", 2, text.data(), room);
        return std::tuple(good, room, text);
    };
    EXPECT_EQ(narrow(3), std::tuple(true, 2U, "\xC3\xBC\0x"s));
    EXPECT_EQ(narrow(1), std::tuple(false, 0U, "\0xxx"s));
    const auto wide = [&](std::size_t room) {
        std::u16string text = u"xxxx";
        const bool good = strings.Utf8ToWide("a\xF0\x9F\x92\xA1", 5, text.data(), room);
        return std::tuple(good, room, text);
    };
    EXPECT_EQ(wide(6), std::tuple(true, 6U, u"a\U0001F4A1x"s));
    EXPECT_EQ(wide(5), std::tuple(false, 0U, u"\0\0xx"s));
}

TEST(SystemService, TellsTheUsersFolderAndLogsIt)
{
    const Support::LogCapture log;
    W32System system;
    std::wstring folder;
    ASSERT_TRUE(system.GetUserDataFolder(folder));
    const std::string expected = std::getenv("XDG_DATA_HOME");
    EXPECT_EQ(folder, std::wstring(expected.begin(), expected.end()));
    EXPECT_TRUE(log.Has(expected));
    std::vector<NetworkInterface> interfaces(1);
    system.GetNetworkInterfaces(interfaces);
    ASSERT_GE(interfaces.size(), 1U);
    EXPECT_EQ(interfaces.front(), NetworkInterface()) << "appends";
}

TEST(Registry, KeepsTextsUnderTheirKeys)
{
    const std::wstring odd = L"@a;b=\"c\"\\d,e\n\U0001F4A1";
    W32RegistryService(L"Software\\Zentri").WriteString(L"na\\me", odd);
    W32RegistryService registry(L"Software\\Zentri");
    std::wstring value = L"old";
    EXPECT_FALSE(registry.ReadString(L"name", value));
    EXPECT_EQ(value, L"old");
    EXPECT_TRUE(W32RegistryService(L"").ReadString(L"na\\me", value, L"Software/Zentri"));
    EXPECT_EQ(value, odd);
    for (const auto& [length, good] : {std::pair(999U, true), {1000U, false}}) {
        registry.WriteString(L"long", std::wstring(length, L'x'));
        EXPECT_EQ(registry.ReadString(L"long", value), good);
    }
    EXPECT_TRUE(registry.DeleteValue(L"na\\me"));
    EXPECT_FALSE(registry.DeleteValue(L"na\\me"));
    EXPECT_FALSE(registry.ReadString(L"na\\me", value));
}
