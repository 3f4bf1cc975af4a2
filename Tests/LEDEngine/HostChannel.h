// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ArtNet/ZenArtNetService.h"
#include "HostStandIn/Host.h"
#include "LEDEngine/ArtNetOutput.h"
#include "LEDEngine/ArtNetTrigger.h"
#include "Support/LogCapture.h"

using Bytes = std::vector<std::uint8_t>;
using Lines = std::vector<std::string>;

/// Output and trigger as the engine has them, with a host stand-in beside them and a clock that the
/// test sets.
class HostChannel : public testing::Test
{
protected:
    HostChannel()
    {
        Zen::ArtNetService::SetGlobal(
            std::make_shared<Zen::ArtNetService>("Test", "#0001 [0001] Ready", false));
    }
    ~HostChannel() override
    {
        output.Initialize(L"", L"", L"", {}); // destroys the clients before the service
        Zen::ArtNetService::SetGlobal(nullptr);
    }

    /// Chooses the first network of the stage's desk.
    void ChooseNetwork(const UniverseMerging& merging = {})
    {
        output.Initialize(L"2.0.0.1", L"2.255.255.255", L"2.0.0.1", merging);
    }

    /// Ticks of the program alone. On a busy machine a tick may end before all that waits is read.
    void Poll(int times = 5)
    {
        for (int i = 0; i < times; ++i)
            trigger.Poll();
    }

    /// One tick of the program, then one of the host.
    void Tick(int times = 1)
    {
        for (int i = 0; i < times; ++i) {
            trigger.Poll();
            host.Pump();
        }
    }

    /// Up to the state in which universes go to the host.
    void Connect(const UniverseMerging& merging = {})
    {
        ASSERT_TRUE(host.Start());
        ChooseNetwork(merging);
        for (int i = 0; i < 20 && output.GetState() != OutputState::UsingRemoteSocket; ++i)
            Tick();
        ASSERT_EQ(output.GetState(), OutputState::UsingRemoteSocket);
        (void)Received();
    }

    /// What the host received since the last call, without the messages of every tick.
    Lines Received()
    {
        host.Pump();
        Lines lines = host.TakeLines();
        std::erase(lines, "0x21 stop");
        std::erase(lines, "0x51 universes");
        return lines;
    }

    /// The host is gone, and the program notices.
    void LoseHost()
    {
        host.Die();
        Poll(); // what the host sent before still counts
        now += 5'001'000'000;
        Poll(1);
    }

    inline static std::int64_t now = 1'000'000'000;

    Support::LogCapture log;
    ArtNetTrigger trigger{output, [] {
                              return now;
                          }};
    ArtNetOutput output{trigger};
    HostStandIn::Host host;
};
