// SPDX-License-Identifier: MIT
#include "LibTools/QSysFileSystem.h"
#include "LibTools/W32StringService.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

using namespace std::string_literals;
namespace fs = std::filesystem;

namespace {

class Files : public testing::Test
{
protected:
    Files() { StringService::global = std::make_unique<W32StringService>(); }
    ~Files() override { StringService::global.reset(); }

    [[nodiscard]] std::wstring Path(const std::wstring& name) const
    {
        return folder.Path().wstring() + L"/" + name;
    }
    [[nodiscard]] std::pair<bool, std::wstring> ReadBack(const std::string& bytes)
    {
        folder.Write("text", bytes);
        std::wstring text = L"old";
        const bool good = files.Open(Path(L"text"), L"rb")->ReadAll(text);
        return {good, text};
    }

    Support::TemporaryFolder folder;
    QSysFileSystem files;
};

} // namespace

TEST_F(Files, KindsAndNames)
{
    folder.Write("a.txt", "x");
    EXPECT_EQ(files.GetPathKind(Path(L"a.txt")), PathKind::File);
    EXPECT_EQ(files.GetPathKind(Path(L"")), PathKind::Directory);
    EXPECT_EQ(files.GetPathKind(Path(L"none")), PathKind::Other);
    EXPECT_EQ(files.GetDirectoryOf(L"/a/b\u00FC/c.d"), L"/a/b\u00FC");
    EXPECT_EQ(files.GetFileName(L"/a/b/c\u00FC.d"), L"c\u00FC.d");
    EXPECT_EQ(files.GetMediaKind(L"x.JPEG"), 1);
    EXPECT_EQ(files.GetMediaKind(L"x.bmp"), 2);
    EXPECT_EQ(files.GetMediaKind(L"x.png.gif"), 3);
    EXPECT_EQ(files.GetMediaKind(L"x.png"), 4);
    EXPECT_GT(files.GetMediaKind(L"x.mp4"), 4);
    EXPECT_EQ(files.GetMediaKind(L"/png"), 0);
}

TEST_F(Files, MakeMoveCopyRemoveList)
{
    EXPECT_TRUE(files.CreateDirectories(Path(L"\u65E5/b")));
    EXPECT_FALSE(files.CreateDirectories(Path(L"\u65E5/b")));
    EXPECT_TRUE(files.CreateDirectory(Path(L"c")));
    EXPECT_FALSE(files.CreateDirectory(Path(L"x/y")));
    folder.Write("f", "1");
    folder.Write("g", "2");
    EXPECT_TRUE(files.CopyFile(Path(L"f"), Path(L"g"), true)) << "a failure";
    EXPECT_EQ(Support::ReadBytes(folder.Path() / "g"), "2");
    EXPECT_FALSE(files.CopyFile(Path(L"f"), Path(L"g"), false));
    EXPECT_EQ(Support::ReadBytes(folder.Path() / "g"), "1");
    EXPECT_FALSE(files.Rename(Path(L"f"), Path(L"h")));
    EXPECT_TRUE(files.Rename(Path(L"f"), Path(L"h")));
    EXPECT_TRUE(files.Remove(Path(L"\u65E5"))) << "not empty";
    EXPECT_TRUE(files.Remove(Path(L"none")));
    EXPECT_FALSE(files.Remove(Path(L"c")));

    std::vector<DirEntry> entries{{L"old", PathKind::File}};
    files.ListDirectory(Path(L""), entries);
    std::sort(entries.begin(), entries.end(),
              [](const auto& a, const auto& b) { return a.name < b.name; });
    EXPECT_EQ(entries, (std::vector<DirEntry>{{L"g", PathKind::File},
                                              {L"h", PathKind::File},
                                              {L"\u65E5", PathKind::Directory}}));
    files.ListDirectory(Path(L"g"), entries);
    EXPECT_TRUE(entries.empty());
}

TEST_F(Files, OpenFailsAsNullAndDevicesNever)
{
    EXPECT_EQ(files.Open(Path(L"none"), L"rb"), nullptr);
    EXPECT_EQ(files.Open(Path(L""), L"rb"), nullptr);
    EXPECT_EQ(files.Open(Path(L"none/x"), L"wb"), nullptr);
    std::wstring text;
    const auto missing = files.OpenDevice(Path(L"none"), QIODevice::ReadOnly);
    ASSERT_TRUE(missing);
    EXPECT_FALSE(missing->ReadAll(text));
    folder.Write("lines", "\xFF\xFE"
                          "a\0\r\0\n\0\xFC\0\n\0"s);
    EXPECT_TRUE(files.OpenDevice(Path(L"lines"), QIODevice::ReadOnly)->ReadAll(text));
    EXPECT_EQ(text, L"a\u00FC");
}

TEST_F(Files, PrintWritesRawUtf16)
{
    {
        const auto file = files.Open(Path(L"out"), L"wb");
        ASSERT_TRUE(file);
        EXPECT_EQ(file->Write("\xFF\xFE", 2), 2U);
        EXPECT_TRUE(file->Print(L"%d %ls", 7, L"\U0001F4A1"));
        EXPECT_TRUE(file->PrintText(L"100%% %s%n"));
        EXPECT_EQ(file->Tell(), 2 + 2 * (4 + 9));
        EXPECT_TRUE(file->PrintText(std::wstring(16384, L'x')));
        EXPECT_FALSE(file->PrintText(std::wstring(16385, L'x')));
        EXPECT_EQ(file->Tell(), 2 + 2 * (4 + 9 + 16384));
    }
    std::wstring text;
    ASSERT_TRUE(files.Open(Path(L"out"), L"rb")->ReadAll(text));
    EXPECT_EQ(text.substr(0, 12), L"7 \U0001F4A1"
                                  L"100% %s%n");
}

TEST_F(Files, ReadAllKnowsThreeEncodings)
{
    using Result = std::pair<bool, std::wstring>;
    EXPECT_EQ(ReadBack(""), Result(true, L""));
    EXPECT_EQ(ReadBack("\xFF\xFE"
                       "a\0\x3D\xD8\xA1\xDC"s),
              Result(true, L"a\U0001F4A1"));
    EXPECT_EQ(ReadBack("\xFF\xFE"
                       "a\0b"s),
              Result(true, L"a"))
        << "half a unit";
    EXPECT_EQ(ReadBack("\xFE\xFF\0a"s), Result(true, L""));
    EXPECT_EQ(ReadBack("\xC3\xBC\xFF"), Result(true, L"\u00FC\uFFFD"));
    EXPECT_EQ(ReadBack("\xFF"), Result(true, L"\uFFFD"));
}
