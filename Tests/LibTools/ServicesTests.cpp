// SPDX-License-Identifier: MIT
#include "LibTools/QSysFileSystem.h"
#include "LibTools/W32RegistryService.h"
#include "LibTools/W32StringService.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

using namespace std::string_literals;
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
    EXPECT_EQ(Support::ReadBytes(folder.Path() / "g"), "1");
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
        ASSERT_TRUE(file && file->Print(L"%d %ls", 7, L"\U0001F4A1"));
        EXPECT_TRUE(file->PrintText(L"1%% %s") && file->PrintText(std::wstring(16384, L'x')));
        EXPECT_FALSE(file->PrintText(std::wstring(16385, L'x')));
        EXPECT_EQ(file->Tell(), 2 * (4 + 5 + 16384));
    }
    const auto read = [&](const std::string& bytes, bool asDevice = false) {
        folder.Write("file", bytes);
        const auto file =
            asDevice ? files.OpenDevice(path, QIODevice::ReadOnly) : files.Open(path, L"rb");
        EXPECT_TRUE(file->ReadAll(text));
        return text;
    };
    EXPECT_EQ(read("\xFF\xFE" + Support::ReadBytes(folder.Path() / "file")),
              L"7 \U0001F4A1"
              L"1% %s" +
                  std::wstring(16384, L'x'));
    EXPECT_EQ(read(""), L"");
    EXPECT_EQ(read("\xFE\xFF\0z"s), L"");
    EXPECT_EQ(read("plain"), L"plain");
    EXPECT_EQ(read("\xC3\xBC\xFF"), L"\u00FC\uFFFD");
    EXPECT_EQ(read("\xFF\xFEz\0\r\0\n\0\xFC\0\n\0"s, true), L"z\u00FC") << "lines are joined";
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
    for (const auto& [length, good] : {std::pair(999U, true), {1000U, false}}) {
        registry.WriteString(L"long", std::wstring(length, L'x'));
        EXPECT_EQ(registry.ReadString(L"long", value), good);
    }
    EXPECT_TRUE(registry.DeleteValue(L"na\\me"));
    EXPECT_FALSE(registry.DeleteValue(L"na\\me"));
    EXPECT_FALSE(registry.ReadString(L"na\\me", value));
}
