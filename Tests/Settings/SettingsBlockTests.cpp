// SPDX-License-Identifier: MIT
#include "Settings/SettingsBlock.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>

namespace {

class Settings : public testing::Test
{
protected:
    [[nodiscard]] std::unique_ptr<QSettings> Store() const
    {
        return std::make_unique<QSettings>(
            QString::fromStdString((folder.Path() / "store.ini").string()), QSettings::IniFormat);
    }
    void Put(const char* key, const QVariant& value) const
    {
        Store()->setValue(QLatin1String(key), value);
    }
    [[nodiscard]] QString NetworkText() const
    {
        SettingsBlock block(Store());
        // Read only: the test's store must not gain the keys of a save.
        block.settings.reset();
        return block.networkText;
    }

    Support::TemporaryFolder folder;
};

} // namespace

TEST_F(Settings, EverythingOutlivesTheBlock)
{
    const auto fields = [](SettingsBlock& block) {
        return std::tie(block.zoomFactor, block.zoomStyle, block.showGrid, block.snapToGrid,
                        block.nightLook, block.language, block.visualFile, block.lastFile,
                        block.lastDirectory, block.networkText);
    };
    const auto set = std::tuple(1.75F, 1, false, false, true, QStringLiteral("de"),
                                QStringLiteral("/p/\u00FC \"1\";2.bmp"), QStringLiteral("a,b.wfm"),
                                QStringLiteral("/d"), QStringLiteral("2.255.255.255"));
    {
        SettingsBlock block(Store());
        fields(block) = set;
    }
    SettingsBlock block(Store());
    EXPECT_EQ(fields(block), set);
    EXPECT_EQ(Store()->allKeys().size(), 10);

    // Saving what the interface alone changes leaves the stored place of the document.
    const QString changed = QStringLiteral("new");
    fields(block) =
        std::tuple(2.5F, 2, true, true, false, changed, changed, changed, changed, changed);
    ASSERT_EQ(block.SaveInterfaceKeys(), block.settings.get());
    block.Load();
    EXPECT_EQ(fields(block), std::tuple(2.5F, 2, true, true, false, changed, changed,
                                        QStringLiteral("a,b.wfm"), QStringLiteral("/d"), changed));
}

TEST_F(Settings, TheOldRangeBecomesTheNetworkOnce)
{
    EXPECT_EQ(NetworkText(), QString());
    // Only the low half counts.
    for (const auto& [range, text] : {std::pair(qint64{0}, ""),
                                      {0xC0A801FF, "192.168.1.255"},
                                      {0x7'00000000, ""},
                                      {-1, "255.255.255.255"}})
    {
        Put("dmxRange", range);
        EXPECT_EQ(NetworkText(), QLatin1String(text));
    }

    SettingsBlock(Store()).Save();
    Put("dmxRange", 1);
    EXPECT_EQ(NetworkText(), QStringLiteral("255.255.255.255"));
    Put("network", QString());
    EXPECT_EQ(NetworkText(), QString()) << "an empty network is a network";
}

TEST_F(Settings, ValuesOfAnotherTypeReadAsZero)
{
    Put("zoomStyle", QStringLiteral("lots"));
    Put("dmxRange", QStringLiteral("lots"));
    Put("showGrid", QStringLiteral("false"));
    Put("zoomFactor", QStringLiteral("-inf"));
    const SettingsBlock block(Store());
    EXPECT_EQ(block.zoomFactor, 0.0F);
    EXPECT_EQ(block.zoomStyle, 0);
    EXPECT_FALSE(block.showGrid);
    EXPECT_EQ(block.networkText, QString());
}
