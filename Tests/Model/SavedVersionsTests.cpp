// SPDX-License-Identifier: MIT
// What stays beside the document of its former contents. Contents are short texts here: no version
// is understood before someone looks at it.
#include "Model/SavedVersions.h"

#include "Model/DocumentSummary.h"
#include "Support/LogCapture.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include <QtTest>

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t MiB = 1024 * 1024;

class SavedVersionsTest : public ::testing::Test
{
protected:
    SavedVersionsTest() { versions.SetDocument(QString::fromStdString(document.string())); }

    /// A minute after the last one.
    bool Save(const std::string& content)
    {
        folder.Write("mapping.wfm", content);
        fs::last_write_time(document, now += std::chrono::minutes(1));
        int waits = 0;
        const bool kept = versions.Keep([&waits](const auto& done) {
            ++waits;
            done.wait();
        });
        EXPECT_EQ(waits, 1) << "the caller's thread waits for the disk";
        return kept;
    }
    /// The contents, the newest first, with blanks between them.
    std::string Kept()
    {
        std::string contents;
        for (const auto& version : versions.List())
            contents += (contents.empty() ? "" : " ") +
                        Support::ReadBytes(version.path.toStdString()).substr(0, 9);
        return contents;
    }
    void Enlarge(std::size_t row, std::uintmax_t bytes)
    {
        fs::resize_file(versions.List().at(row).path.toStdString(), bytes);
    }

    Support::TemporaryFolder folder;
    fs::path document = folder.Path() / "mapping.wfm";
    fs::path history = folder.Path() / "history";
    fs::file_time_type now = fs::file_time_type::clock::now();
    SavedVersions versions;
};

TEST_F(SavedVersionsTest, EachContentIsKeptOnceTheNewestFirst)
{
    EXPECT_TRUE(versions.Keep()) << "no document is no failure";
    EXPECT_FALSE(fs::exists(history));
    for (const auto& [content, kept] : {std::pair("one", "one"),
                                        {"two", "two one"},
                                        {"two", "two one"},
                                        {"", "two one"},
                                        {"one", "one two"},
                                        {"three", "three one two"}})
    {
        EXPECT_TRUE(Save(content));
        EXPECT_EQ(Kept(), kept) << content;
    }
    // What was kept and then removed by hand is kept again.
    fs::remove_all(history);
    EXPECT_TRUE(versions.Keep());
    EXPECT_EQ(Kept(), "three");
    // A clock that was set back doesn't change the order.
    folder.Write("mapping.wfm", "four");
    fs::last_write_time(document, now - std::chrono::hours(9000));
    versions.KeepSoon();
    EXPECT_EQ(Kept(), "four three") << "the list waits for it";
    EXPECT_NEAR(static_cast<double>(versions.List()[0].saved.secsTo(versions.List()[1].saved)),
                9000.0 * 3600, 2 * 3600); // the clock may be an hour off in winter
}

TEST_F(SavedVersionsTest, TheOldestGoAndOthersFilesStay)
{
    const std::vector<const char*> foreign = {"notes.txt",
                                              "mapping.wfm",
                                              "show_2026-11-26_14-03-22_0001.wfm",
                                              "mapping_2026-11-26_14-03-22_0001.wfm.bak",
                                              "mapping_0001.wfm",
                                              ".mapping_2026-11-26_14-03-22_0001.wfm.saving"};
    for (const char* name : foreign)
        folder.Write(history / name, "mine");
    fs::create_directories(history / "mapping_2026-11-26_14-03-22_9999.wfm");
    const fs::path unfinished =
        folder.Write(history / ".mapping_2026-11-26_14-03-22_0002.wfm.saving", "h");
    fs::last_write_time(unfinished, now - std::chrono::hours(2));
    for (int number = 1; number <= 22; ++number)
        EXPECT_TRUE(Save(std::to_string(number)));
    EXPECT_EQ(versions.List().size(), 20U);
    EXPECT_TRUE(Kept().ends_with(" 4 3"));
    for (const char* name : foreign)
        EXPECT_TRUE(fs::exists(history / name)) << name;
    EXPECT_FALSE(fs::exists(unfinished));

    for (std::size_t row = 0; row < 3; ++row)
        Enlarge(row, 30 * MiB);
    EXPECT_TRUE(Save("a"));
    EXPECT_EQ(versions.List().size(), 3U);
    Enlarge(0, 70 * MiB);
    EXPECT_TRUE(Save("b"));
    EXPECT_EQ(versions.List().size(), 2U) << "what was replaced stays, however large";
}

TEST_F(SavedVersionsTest, AFolderThatTakesNothingIsToldOnce)
{
    folder.Write("history", "a file");
    const Support::LogCapture log;
    const QSignalSpy told(&versions, &SavedVersions::notKept);
    EXPECT_FALSE(Save("one"));
    versions.KeepSoon();
    EXPECT_EQ(Kept(), "");
    QCoreApplication::processEvents();
    EXPECT_EQ(log.Messages(), std::vector<std::string>{"No version of " + document.string() +
                                                       " can be kept in " + history.string()});
    fs::remove(history);
    EXPECT_TRUE(Save("one"));
    fs::remove(document);
    fs::create_directory(document);
    EXPECT_FALSE(versions.Keep()) << "nothing to read";
    EXPECT_EQ(told.count(), 2);
}

TEST_F(SavedVersionsTest, AVersionIsReadForALook)
{
    const auto element = [](const std::string& fixture, int subnet, int universe) {
        return "<Element description=\"\" fixture=\"" + fixture +
               "\"><VideoMapping><center>0.5,0.25</center><size>0.1,0.1</size>"
               "<rotation>0</rotation></VideoMapping><DMXMapping type=\"ArtNet\"><ArtNetMapping "
               "subnet=\"" +
               std::to_string(subnet) + "\" universe=\"" + std::to_string(universe) +
               "\" channel=\"1\" ipconf=\"Auto\" /></DMXMapping></Element>";
    };
    EXPECT_TRUE(Save("no mapping"));
    EXPECT_TRUE(Save("<Mapping name=\"\" version=\"1.0\" resolution=\"640,0\" />"));
    EXPECT_TRUE(
        Save("<Mapping name=\"\" version=\"1.0\" resolution=\"640,1\" network=\"2.X.X.X\">" +
             element("Bar", 0, 14) + element("Bar", 0, 15) + element("Dot", 1, 0) +
             element("Bar", 3, 1) + "<Element /></Mapping>"));
    std::vector<std::shared_ptr<const DocumentSummary>> read;
    QObject::connect(&versions, &SavedVersions::summaryRead,
                     [&](const QString&, const auto& summary) { read.push_back(summary); });
    versions.ReadSummaries(versions.List());
    ASSERT_TRUE(QTest::qWaitFor([&] { return read.size() == 3; }));
    ASSERT_TRUE(read[0]);
    EXPECT_EQ(read[0]->canvas, QSize(640, 1));
    EXPECT_EQ(read[0]->elements, 5);
    EXPECT_EQ(read[0]->places.size(), 4U);
    EXPECT_EQ(read[0]->network, QLatin1String("2.X.X.X"));
    EXPECT_EQ(read[0]->fixtures,
              (std::map<QString, int>{{QStringLiteral("Bar"), 3}, {QStringLiteral("Dot"), 1}}));
    EXPECT_EQ(RunsOfPortAddresses(read[0]->portAddresses),
              (std::vector<PortAddressRun>{{14, 16}, {49, 49}}));
    EXPECT_FALSE(read[1] || read[2]) << "an import takes neither";
}

} // namespace
