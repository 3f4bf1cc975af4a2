// SPDX-License-Identifier: MIT
#include "LibTools/QSysFileSystem.h"
#include "LibTools/W32RegistryService.h"
#include "LibTools/W32StringService.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

using namespace std::string_literals;
using Support::TemporaryFolder;

TEST(FileSystem, MakesMovesCopiesRemovesAndLists)
{
    const TemporaryFolder folder;
    const std::wstring path = folder.Path().wstring() + L'/';
    QSysFileSystem files;
    EXPECT_TRUE(files.CreateDirectories(path + L"\u65E5/b") && files.CreateDirectory(path + L"c"));
    folder.Write("f", "1");
    folder.Write("g", "2");
    EXPECT_TRUE(files.CopyFile(path + L"f", path + L"g", true)) << "true is a failure";
    EXPECT_FALSE(files.CopyFile(path + L"f", path + L"g", false));
    EXPECT_EQ(Support::ReadBytes(folder.Path() / "g"), "1");
    EXPECT_FALSE(files.Rename(path + L"f", path + L"h"));
    EXPECT_TRUE(files.Remove(path + L"\u65E5")) << "not empty";
    EXPECT_FALSE(files.Remove(path + L"c") || files.Remove(path + L"g"));
    std::vector<DirEntry> entries{{L"old", PathKind::File}};
    files.ListDirectory(path, entries);
    std::ranges::sort(entries, {}, &DirEntry::name);
    EXPECT_EQ(entries,
              (std::vector<DirEntry>{{L"h", PathKind::File}, {L"\u65E5", PathKind::Directory}}));
}

TEST(FileSystem, FilesHoldUtf16AndReadThreeEncodings)
{
    StringService::global = std::make_unique<W32StringService>();
    const TemporaryFolder folder;
    const std::wstring path = folder.Path().wstring() + L"/file";
    QSysFileSystem files;
    EXPECT_EQ(files.Open(path + L"/x", L"wb"), nullptr);
    EXPECT_TRUE(files.Open(path, L"wb")->Print(L"1%% %d %ls", 7, L"\U0001F4A1"));
    const std::string printed = Support::ReadBytes(folder.Path() / "file");
    for (const auto& [bytes, expected] : {std::pair("\xFF\xFE" + printed, L"1% 7 \U0001F4A1"s),
                                          {""s, L""s},
                                          {"plain"s, L"plain"s},
                                          {"\xC3\xBC\xFF"s, L"\u00FC\uFFFD"s},
                                          {"\xFF\xFEz\0\r\0\n\0\xFC\0\n\0"s, L"z\u00FC"s}})
    {
        folder.Write("file", bytes);
        std::wstring text;
        EXPECT_TRUE(files.OpenDevice(path, QIODevice::ReadOnly)->ReadAll(text));
        EXPECT_EQ(text, expected);
    }
    StringService::global.reset();
}

TEST(Strings, ConversionsKeepToTheirBuffers)
{
    W32StringService strings;
    std::string bytes = "xxxx";
    for (const auto& [room, expected] : {std::pair(3U, "\xC3\xBC\0x"s), {1U, "\0\xBC\0x"s}}) {
        std::size_t size = room;
        EXPECT_EQ(strings.WideToUtf8(u"\u00FC", 2, bytes.data(), size), room == 3);
        EXPECT_EQ(std::tuple(size, bytes), std::tuple(room / 3 * 2, expected));
    }
    std::u16string units = u"xxxx";
    std::size_t size = 5;
    EXPECT_FALSE(strings.Utf8ToWide("abc", 3, units.data(), size));
    EXPECT_EQ(std::tuple(size, units), std::tuple(0U, u"\0\0xx"s));
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
    EXPECT_TRUE(registry.DeleteValue(L"na\\me"));
    EXPECT_FALSE(registry.ReadString(L"na\\me", value));
}
