// SPDX-License-Identifier: MIT
#include "Settings/Observable.h"
#include "Settings/SettingsBlock.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

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

TEST_F(Settings, AnEmptyStoreReplacesTheDefaults)
{
    const SettingsBlock loaded(Store());
    EXPECT_EQ(loaded.zoomFactor, 0.0F);
    EXPECT_EQ(loaded.zoomStyle, 0);
    EXPECT_TRUE(loaded.showGrid);
    EXPECT_TRUE(loaded.snapToGrid);
    EXPECT_EQ(loaded.visualFile + loaded.lastFile + loaded.lastDirectory + loaded.networkText,
              QString());
}

TEST_F(Settings, WithoutAStoreNothingIsSaved)
{
    SettingsBlock block{SettingsBlock::WithoutStore()};
    EXPECT_EQ(block.zoomFactor, 0.5F);
    EXPECT_EQ(block.visualFile, QStringLiteral(":/Resources/DemoPicture.bmp"));
    EXPECT_EQ(block.lastFile, QStringLiteral(":/wfm/Resources/DemoMapping.wfm"));
    block.Save();
    EXPECT_EQ(block.SaveInterfaceKeys(), nullptr);
    EXPECT_EQ(block.settings, nullptr);
}

TEST_F(Settings, AStoreThatCantBeWrittenStopsNobody)
{
    const auto file = folder.Write("file", "where the user's folder should be");
    SettingsBlock block(std::make_unique<QSettings>(
        QString::fromStdString((file / "store.ini").string()), QSettings::IniFormat));
    block.networkText = QStringLiteral("2.X.X.X");
    block.Save();
    EXPECT_EQ(block.settings->status(), QSettings::AccessError);
    EXPECT_EQ(block.networkText, QStringLiteral("2.X.X.X"));
    EXPECT_EQ(Support::ReadBytes(file), "where the user's folder should be");
}

TEST_F(Settings, EverythingOutlivesTheBlock)
{
    {
        SettingsBlock block(Store());
        block.zoomFactor = 1.75F;
        block.zoomStyle = 1;
        block.showGrid = false;
        block.snapToGrid = false;
        block.visualFile = QStringLiteral("/p/\u00FC \"1\";2.bmp");
        block.lastFile = QStringLiteral("a,b.wfm");
        block.lastDirectory = QStringLiteral("/d");
        block.networkText = QStringLiteral("2.255.255.255");
    }
    SettingsBlock block(Store());
    EXPECT_EQ(block.zoomFactor, 1.75F);
    EXPECT_EQ(block.zoomStyle, 1);
    EXPECT_FALSE(block.showGrid);
    EXPECT_FALSE(block.snapToGrid);
    EXPECT_EQ(block.visualFile, QStringLiteral("/p/\u00FC \"1\";2.bmp"));
    EXPECT_EQ(block.lastFile, QStringLiteral("a,b.wfm"));
    EXPECT_EQ(block.lastDirectory, QStringLiteral("/d"));
    EXPECT_EQ(block.networkText, QStringLiteral("2.255.255.255"));
    EXPECT_EQ(Store()->allKeys().size(), 8);

    // What the interface alone changes leaves the document's place as it is stored.
    block.lastFile = QStringLiteral("new");
    block.visualFile = QStringLiteral("new");
    ASSERT_EQ(block.SaveInterfaceKeys(), block.settings.get());
    EXPECT_EQ(block.settings->value(QStringLiteral("lastFile")), QStringLiteral("a,b.wfm"));
    EXPECT_EQ(block.settings->value(QStringLiteral("visualFile")), QStringLiteral("new"));
}

TEST_F(Settings, TheOldRangeBecomesTheNetworkOnce)
{
    EXPECT_EQ(NetworkText(), QString());
    Put("dmxRange", 0);
    EXPECT_EQ(NetworkText(), QString());
    Put("dmxRange", qint64{0xC0A801FF});
    EXPECT_EQ(NetworkText(), QStringLiteral("192.168.1.255"));
    Put("dmxRange", qint64{0x02FFFFFF});
    EXPECT_EQ(NetworkText(), QStringLiteral("2.255.255.255"));
    Put("dmxRange", qint64{0x7'00000000});
    EXPECT_EQ(NetworkText(), QString()) << "only the low half counts";
    Put("dmxRange", qint64{-1});
    EXPECT_EQ(NetworkText(), QStringLiteral("255.255.255.255"));

    SettingsBlock(Store()).Save();
    Put("dmxRange", 1);
    EXPECT_EQ(NetworkText(), QStringLiteral("255.255.255.255"));
    Put("network", QString());
    EXPECT_EQ(NetworkText(), QString()) << "an empty network is a network";
}

TEST_F(Settings, ValuesOfAnotherTypeReadAsZero)
{
    for (const char* key : {"zoomFactor", "zoomStyle", "dmxRange"})
        Put(key, QStringLiteral("lots"));
    Put("showGrid", QStringLiteral("false"));
    const SettingsBlock block(Store());
    EXPECT_EQ(block.zoomFactor, 0.0F);
    EXPECT_EQ(block.zoomStyle, 0);
    EXPECT_FALSE(block.showGrid);
    EXPECT_EQ(block.networkText, QString());
    for (const char* number : {"nan", "inf", "-inf"}) {
        Put("zoomFactor", QString::fromLatin1(number));
        EXPECT_EQ(SettingsBlock(Store()).zoomFactor, 0.0F) << number;
    }
}

TEST(UserSettings, LieInTheUsersOwnStore)
{
    {
        SettingsBlock block;
        block.lastDirectory = QStringLiteral("/mine");
    }
    const QSettings store(QStringLiteral("Zentri"), QStringLiteral("PixelWeft3"));
    EXPECT_EQ(store.value(QStringLiteral("lastDirectory")), QStringLiteral("/mine"));
    EXPECT_TRUE(store.fileName().startsWith(qEnvironmentVariable("XDG_CONFIG_HOME")));
}

TEST(Observers, HearOfAChangeOnceAndInOrder)
{
    struct Listener : Observer
    {
        Listener(std::string listenerName, std::string& listenerHeard)
            : name(std::move(listenerName))
            , heard(listenerHeard)
        {}
        void Update(Observable& observable, const ObservableData* data) override
        {
            const auto* weft = dynamic_cast<const WEFTObservableData*>(data);
            heard += name + (weft ? std::to_string(weft->kind) + std::to_string(weft->value) : "-");
            observable.observers.clear(); // Leaving while being told is allowed.
        }
        std::string name;
        std::string& heard;
    };
    std::string heard;
    Listener a("a", heard);
    Listener b("b", heard);
    Listener late("c", heard);
    Observable observable;
    observable.observers = {&a, &b};
    observable.lateObservers = {&late};
    const WEFTObservableData data;

    observable.Notify(&data);
    EXPECT_EQ(heard, "");
    EXPECT_FALSE(observable.changed);
    observable.SetChanged();
    observable.Notify(&data);
    EXPECT_EQ(heard, "a20b20c20");
    observable.Notify(&data);
    observable.SetChanged();
    observable.ClearChanged();
    observable.Notify(nullptr);
    EXPECT_EQ(heard, "a20b20c20");
}
