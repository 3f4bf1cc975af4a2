// SPDX-License-Identifier: MIT
#include "LibTools/Installable.h"
#include "LibTools/W32RegistryService.h"
#include "LibTools/W32StringService.h"
#include "LibTools/W32System.h"
#include "Support/LogCapture.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>

namespace {

struct Probe : T_Installable<Probe>
{
    explicit Probe(int& livingProbes)
        : living(livingProbes)
    {
        ++living;
    }
    ~Probe() override { --living; }
    int& living;
};

} // namespace

TEST(Installable, OwnsOneInstance)
{
    int living = 0;
    EXPECT_EQ(Probe::Get(), nullptr);
    Probe::Install(std::make_unique<Probe>(living));
    auto second = std::make_unique<Probe>(living);
    const Probe* expected = second.get();
    Probe::Install(std::move(second));
    EXPECT_EQ(Probe::Get(), expected);
    EXPECT_EQ(living, 1);
    Probe::Uninstall();
    EXPECT_EQ(Probe::Get(), nullptr);
    EXPECT_EQ(living, 0);
    Probe::Uninstall();
}

TEST(Strings, ConversionsKeepToTheirBuffers)
{
    W32StringService strings;
    std::array<char16_t, 4> wide{u'x', u'x', u'x', u'x'};
    std::size_t size = 3 * sizeof(char16_t);
    EXPECT_TRUE(strings.Utf8ToWide("a\xF0\x9F\x92\xA1", 5, wide.data(), size));
    EXPECT_EQ(size, 6U);
    EXPECT_EQ(wide, (std::array<char16_t, 4>{u'a', 0xD83D, 0xDCA1, u'x'}));

    size = 2 * sizeof(char16_t);
    EXPECT_FALSE(strings.Utf8ToWide("abc", 3, wide.data(), size));
    EXPECT_EQ(size, 0U);
    EXPECT_EQ(wide, (std::array<char16_t, 4>{0, 0, 0xDCA1, u'x'}));

    std::array<char, 4> narrow{'x', 'x', 'x', 'x'};
    size = 3;
    EXPECT_TRUE(strings.WideToUtf8(u"\u00FC", 2, narrow.data(), size));
    EXPECT_EQ(size, 2U);
    EXPECT_EQ(std::string(narrow.data(), 4), std::string("\xC3\xBC\0x", 4));
    size = 3;
    EXPECT_FALSE(strings.WideToUtf8(u"\u65E5\u672C", 4, narrow.data(), size));
    EXPECT_EQ(size, 0U);
    size = 3;
    EXPECT_TRUE(strings.WideToUtf8(u"", 0, narrow.data(), size));
    EXPECT_EQ(size, 0U);

    size = 3;
    EXPECT_TRUE(strings.WideToWide("abcdef", 6, narrow.data(), size));
    EXPECT_EQ(size, 3U);
    EXPECT_EQ(std::string(narrow.data(), 3), "abc");
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
    EXPECT_EQ(system.GetPlatformName(), L"WIN");
    EXPECT_EQ(system.GetProductFolderName(), L"Zentri PixelWeft2");

    std::vector<NetworkInterface> interfaces(1);
    system.GetNetworkInterfaces(interfaces);
    ASSERT_GE(interfaces.size(), 1U);
    EXPECT_EQ(interfaces.front(), NetworkInterface()) << "appends";
}

TEST(Registry, KeepsTextsUnderTheirKeys)
{
    const std::wstring odd = L"@a;b=\"c\"\\d,e\n\U0001F4A1";
    {
        W32RegistryService registry(L"Software\\Zentri\\Tests");
        registry.WriteString(L"na\\me", odd);
        registry.WriteString(L"name", L"other");
    }
    W32RegistryService registry(L"Software\\Zentri\\Tests");
    std::wstring value = L"old";
    EXPECT_TRUE(registry.ReadString(L"na\\me", value));
    EXPECT_EQ(value, odd);
    EXPECT_TRUE(W32RegistryService(L"").ReadString(L"name", value, L"Software/Zentri/Tests"));
    EXPECT_EQ(value, L"other");
    EXPECT_FALSE(registry.ReadString(L"name", value, L"Software"));
    EXPECT_EQ(value, L"other");

    registry.WriteString(L"long", std::wstring(999, L'x'));
    EXPECT_TRUE(registry.ReadString(L"long", value));
    registry.WriteString(L"long", std::wstring(1000, L'x'));
    EXPECT_FALSE(registry.ReadString(L"long", value));

    EXPECT_TRUE(registry.DeleteValue(L"name"));
    EXPECT_FALSE(registry.DeleteValue(L"name"));
    EXPECT_FALSE(registry.ReadString(L"name", value));
    EXPECT_TRUE(registry.ReadString(L"na\\me", value));
}
