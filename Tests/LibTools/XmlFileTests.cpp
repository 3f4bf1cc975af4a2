// SPDX-License-Identifier: MIT
#include "LibTools/XmlFile.h"

#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include <sys/stat.h>

using namespace std::string_literals;
namespace fs = std::filesystem;

namespace {

std::size_t EntriesIn(const fs::path& folder)
{
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

} // namespace

TEST(XmlFile, WritesTheExactBytesAndReadsThemBack)
{
    const Support::TemporaryFolder folder;
    const fs::path path = folder.Write("old.wfm", "what was there before");
    XmlText::Document document;
    XmlText::SetAttribute(XmlText::AddElement(document, "A"), "v", L"\x1F4A1");
    XmlText::AddElement(document, "B");
    ASSERT_TRUE(WriteXmlFile(path.wstring(), document));
    EXPECT_EQ(Support::ReadBytes(path),
              "\xFF\xFE<\0A\0 \0v\0=\0\"\0\x3D\xD8\xA1\xDC\"\0 \0/\0>\0\n\0"
              "<\0B\0 \0/\0>\0\n\0"s);
    EXPECT_EQ(EntriesIn(folder.Path()), 1U) << "no temporary file stays";

    XmlText::Document again;
    ASSERT_TRUE(ReadXmlFile(path.wstring(), again));
    EXPECT_EQ(XmlText::Print(again), XmlText::Print(document));
}

TEST(XmlFile, ASaveTakesThePlaceOfTheOldFileAndOfOldLeftoversOnly)
{
    const Support::TemporaryFolder folder;
    const fs::path path = folder.Write("show [1].wfm", "old");
    fs::permissions(path, fs::perms(0640));
    const fs::path link = folder.Path() / "link.wfm";
    fs::create_symlink(path, link);
    const fs::path ours = folder.Write(".show [1].wfm.saving.AbCdEf", "cut off");
    const fs::path going = folder.Write(".show [1].wfm.saving.GhIjKl", "on its way");
    folder.Write("show [1].wfm.backup", "x");
    folder.Write(".show [1].wfm.backup", "x");
    folder.Write(".other.wfm.saving.AbCdEf", "x");
    const auto longAgo = fs::file_time_type::clock::now() - std::chrono::minutes(61);
    for (const auto& entry : fs::directory_iterator(folder.Path()))
        fs::last_write_time(entry, longAgo);
    fs::last_write_time(going, longAgo + std::chrono::minutes(5));
    folder.Write(".show [1].wfm.saving", "whole, and cut off before it took its place");

    XmlText::Document document;
    XmlText::AddElement(document, "A");
    ASSERT_TRUE(WriteXmlFile(link.wstring(), document));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(Support::ReadBytes(path).size(), 14U);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
    EXPECT_FALSE(fs::exists(ours));
    EXPECT_TRUE(fs::exists(going));
    EXPECT_EQ(EntriesIn(folder.Path()), 6U)
        << "file, link, a save on its way, three files of others";
}

TEST(XmlFile, AFailedSaveKeepsTheOldFileAndSaysWhyOnce)
{
    const Support::TemporaryFolder folder;
    const fs::path file = folder.Write("file", "old");
    fs::create_directory(folder.Path() / "directory.wfm");
    XmlText::Document document;
    XmlText::AddElement(document, "A");
    for (const fs::path& path : {folder.Path() / "missing" / "a.wfm", file / "a.wfm",
                                 folder.Path() / "directory.wfm", fs::path()})
    {
        const Support::LogCapture log;
        EXPECT_FALSE(WriteXmlFile(path.wstring(), document)) << path;
        EXPECT_EQ(log.Messages().size(), 1U) << path;
    }
    EXPECT_EQ(Support::ReadBytes(file), "old");
    EXPECT_EQ(EntriesIn(folder.Path()), 2U);
}

TEST(XmlFile, WhatIsNoReadableFileIsRefused)
{
    const Support::TemporaryFolder folder;
    const fs::path pipe = folder.Path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const fs::path huge = folder.Write("huge", "<a/>");
    fs::resize_file(huge, static_cast<std::uintmax_t>(MaxXmlFileSize) + 1);
    for (const fs::path& path : {folder.Path() / "missing", folder.Path(), fs::path("/dev/zero"),
                                 fs::path(":/no/such/resource"),
                                 folder.Write("garbage", "\x80\xFF\0\x01<<<>"s), huge, pipe})
    {
        XmlText::Document document;
        XmlText::AddElement(document, "Old");
        EXPECT_FALSE(ReadXmlFile(path.wstring(), document)) << path;
        EXPECT_EQ(document.FirstChild(), nullptr);
    }
}
