// SPDX-License-Identifier: MIT
#include "Support/Literals.h"
#include "UI/Network/Machine.h"

namespace {

using Lines = std::vector<std::string>;

const std::string Checking = "Checking if new matching network is detected";

class NetworkChoiceTest : public Machine
{
protected:
    NetworkChoiceTest()
    {
        QObject::connect(&choice, &NetworkChoice::networkChanged, [this] { ++changes; });
    }

    void Choose(const char* text)
    {
        choice.Choose(QLatin1String(text));
        choice.updateArtNetOutput();
        changes = 0;
    }
    /// What the 3-second look said, without the lines of others.
    Lines Look()
    {
        log.Clear();
        choice.CheckNetworkUpdates();
        Lines lines = log.Messages();
        std::erase_if(lines, [](const std::string& line) {
            return line.starts_with("New network") || line.starts_with("Network changed") ||
                   line.starts_with("Exiting") || line.starts_with("Entering");
        });
        return lines;
    }

    int changes = 0;
};

} // namespace

TEST_F(NetworkChoiceTest, ThePatternOfANetworkIsWhatANodeOfItMayHave)
{
    for (const auto& [text, pattern] :
         std::initializer_list<std::pair<const char*, const char*>>{{"10.0.0.1", "10.255.255.255"},
                                                                    {"2.X.X.X", "2.255.255.255"},
                                                                    {"7.X.0.X", "7.255.0.255"},
                                                                    {"7.0.0.1", ""},
                                                                    {"", ""}})
    {
        Choose(text);
        EXPECT_EQ(choice.GetNetworkPattern(), QLatin1String(pattern)) << text;
    }
}

TEST_F(NetworkChoiceTest, AdaptersThatComeAndGoAreFollowed)
{
    const NetworkInterface other = adapters[0];
    const NetworkInterface there = Adapter("2.0.0.7", "2.255.255.255");
    const NetworkInterface away = Adapter("2.0.0.7", "2.255.255.255", false);
    const NetworkInterface third = Adapter("3.0.0.1", "3.255.255.255");
    struct Step
    {
        std::vector<NetworkInterface> adapters;
        Lines said;
        std::uint32_t broadcast;
    };
    adapters = {other};
    Choose("2.X.X.X");
    for (const auto& [now, said, broadcast] : std::initializer_list<Step>{
             {{other}, {}, 0},
             {{other, third}, {Checking}, 0},
             {{other, third, away},
              {Checking, "Found matching network", "Initialize in Disabled state"},
              0x02FFFFFF},
             {{other, third, there},
              {"Current network connected", "Initialize in Determine socket type state"},
              0x02FFFFFF},
             // Pulled, it isn't given up: it usually comes back.
             {{other, third, away}, {"Current network disconnected"}, 0x02FFFFFF},
             {{third, away}, {}, 0x02FFFFFF},
             {{other, Adapter("3.0.0.1", "3.255.255.255", false), away}, {}, 0x02FFFFFF},
             // An address that is gone is nowhere to send from.
             {{other},
              {"Current network disconnected", "Initialize in Determine socket type state"},
              0},
             {{third}, {Checking}, 0},
             {{other, there},
              {Checking, "Found matching network", "Initialize in Disabled state"},
              0x02FFFFFF},
             // The network changes with its address, its mask or its adapter.
             {{other, Adapter("2.0.0.9", "2.255.255.255")},
              {"Current network connected", "Initialize in Determine socket type state"},
              0x02FFFFFF},
             {{other, Adapter("2.0.0.9", "2.0.255.255")},
              {"Initialize in Determine socket type state"},
              0x0200FFFF},
             {{there},
              {"Current network disconnected", "Initialize in Determine socket type state"},
              0x02FFFFFF}})
    {
        adapters = now;
        changes = 0;
        EXPECT_EQ(Look(), said);
        EXPECT_EQ(Broadcast(), broadcast);
        EXPECT_EQ(changes > 0, !log.Messages().empty()) << "the list is filled again";
    }
    EXPECT_EQ(choice.GetNetworkIP(), L"2.0.0.7");
    EXPECT_EQ(notices, QStringList("No network interfaces match network 2.X.X.X"_q))
        << "only at the choice";
    adapters = {there, Adapter("2.0.0.8", "2.255.255.255"), other};
    Choose("2.X.X.X");
    EXPECT_EQ(notices.back(), "More than one network adapter matches network 2.X.X.X"_q);
    EXPECT_EQ(choice.GetNetworkIP(), L"2.0.0.7") << "the first";
    Choose("");
    EXPECT_EQ(choice.GetNetworkIP(), L"");
    adapters.push_back(Adapter("4.0.0.1", "4.255.255.255"));
    EXPECT_EQ(Look(), Lines({Checking}));
    EXPECT_EQ(Broadcast(), 0U) << "no network stays none";
}

TEST_F(NetworkChoiceTest, ADocumentNamesItsNetwork)
{
    for (const auto& [old, document, chosen, expected] : {
             std::tuple("2.0.0.1", L"2.0.0.1", "2.0.0.1", ""),
             {"", L"2.0.0.1", "2.0.0.1", "This document sends on 2.0.0.1 (art2, 2.0.0.1)"},
             {"2.0.0.1", L"", "", "This document sends on no network:"},
             {"2.0.0.1", L"10.X.X.X", "10.X.X.X",
              "This document sends on 10.X.X.X (art10, 10.0.0.1)"},
             {"2.0.0.1", L"7.X.X.X", "7.X.X.X", "No network interfaces match network 7.X.X.X"},
             {"", L"9.9", "",
              "Mapping file has an invalid braodcast IP specified 9.9|"
              "This document sends on no network:"},
         })
    {
        Choose(old);
        notices.clear();
        choice.ChooseFromDocument(document);
        EXPECT_EQ(choice.GetNetworkText(), QLatin1String(chosen));
        notices.replaceInStrings(" choose one in the tool bar to send."_q, QString());
        EXPECT_EQ(notices.join(QLatin1Char('|')), QLatin1String(expected)) << old;
    }
    EXPECT_TRUE(networks.HasManualRange(L"10.X.X.X"));
    choice.ChooseFirst();
    EXPECT_EQ(choice.GetNetworkText(), "10.0.0.1"_q) << "the first in the list";
}
