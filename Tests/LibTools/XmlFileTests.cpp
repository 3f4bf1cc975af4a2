// SPDX-License-Identifier: MIT
// What a file of ours may be. Its bytes, a full disk and a killed save are judged with the
// document and the library.
#include "LibTools/XmlFile.h"

#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"
#include "XmlText/XmlText.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <set>
#include <utility>
#include <vector>

#include <sys/stat.h>

using namespace std::string_literals;
namespace fs = std::filesystem;

TEST(XmlFile, ASaveTakesThePlaceOfTheOldFileAndOfOldLeftoversOnly)
{
    const Support::TemporaryFolder folder;
    const fs::path path = folder.Write("show [1].wfm", "old");
    fs::permissions(path, fs::perms(0640));
    const fs::path link = folder.Path() / "link.wfm";
    fs::create_symlink(path, link);
    std::set<std::string> names = {"show [1].wfm.backup", ".show [1].wfm.backup",
                                   ".other.wfm.saving.AbCdEf"};
    for (const auto& name : names)
        folder.Write(name, "x");
    const fs::path going = folder.Write(".show [1].wfm.saving.GhIjKl", "on its way");
    folder.Write(".show [1].wfm.saving.AbCdEf", "cut off");
    const auto longAgo = fs::file_time_type::clock::now() - std::chrono::minutes(61);
    for (const auto& entry : fs::directory_iterator(folder.Path()))
        fs::last_write_time(entry, longAgo);
    fs::last_write_time(going, longAgo + std::chrono::minutes(5));
    XmlText::Document document;
    XmlText::AddElement(document, "A");
    int waits = 0; // the output goes on
    const DiskWait wait = [&waits](const std::future<SaveResult>& done) {
        done.wait();
        ++waits;
    };
    ASSERT_TRUE(WriteXmlFile(link.wstring(), document, wait));
    EXPECT_EQ(waits, 1);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(Support::ReadBytes(path).size(), 14U);
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));

    fs::create_directory(folder.Path() / "directory.wfm");
    for (const fs::path& bad : {path / "a.wfm", folder.Path() / "directory.wfm", fs::path()}) {
        const Support::LogCapture log;
        EXPECT_FALSE(WriteXmlFile(bad.wstring(), document, wait)) << bad;
        EXPECT_EQ(log.Messages().size(), 1U) << bad;
    }
    names.merge(
        std::set<std::string>{"directory.wfm", path.filename(), "link.wfm", going.filename()});
    for (const auto& entry : fs::directory_iterator(folder.Path()))
        EXPECT_EQ(names.erase(entry.path().filename()), 1U) << entry;
    EXPECT_TRUE(names.empty());
}

TEST(XmlFile, WhatIsNoReadableFileIsRefused)
{
    const Support::TemporaryFolder folder;
    const fs::path pipe = folder.Path() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const fs::path huge = folder.Write("huge", "<a/>");
    fs::resize_file(huge, static_cast<std::uintmax_t>(MaxXmlFileSize) + 1);
    const std::vector<std::pair<fs::path, XmlFault>> cases = {
        {folder.Path() / "missing", XmlFault::Missing},
        {":/no/such/resource", XmlFault::Missing},
        {folder.Path(), XmlFault::NoFile},
        {"/dev/zero", XmlFault::NoFile},
        {pipe, XmlFault::NoFile},
        {huge, XmlFault::TooLarge},
        {folder.Write("empty", ""), XmlFault::Empty},
        {folder.Write("garbage", "\x80\xFF\0\x01<<<>"s), XmlFault::NoXml},
        {folder.Write("half", "\xEF\xBB\xBF\n<A><B>"s), XmlFault::Damaged}};
    for (const auto& [path, fault] : cases) {
        XmlText::Document document;
        XmlText::AddElement(document, "Old");
        EXPECT_EQ(ReadXmlFile(path.wstring(), document), fault) << path;
        EXPECT_EQ(document.FirstChild(), nullptr);
    }
}
