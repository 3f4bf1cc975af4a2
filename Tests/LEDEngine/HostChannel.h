// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "HostStandIn/Host.h"
#include "LEDEngine/ArtNetOutput.h"
#include "LEDEngine/ArtNetTrigger.h"
#include "Support/LogCapture.h"

using Bytes = std::vector<std::uint8_t>;
using Lines = std::vector<std::string>;

/// Output and trigger as the engine has them, with a host stand-in beside them and a clock that the
/// test sets. Loopback ports are the machine's own, so these cases run on a private network.
class HostChannel : public testing::Test
{
protected:
    HostChannel() { output.trigger = &trigger; }

    /// Chooses the network of the stage's desk.
    void ChooseNetwork(const UniverseMerging& merging = {})
    {
        output.Initialize(L"2.0.0.1", L"2.255.255.255", L"2.0.0.1", merging);
    }
    void ChooseNoNetwork() { output.Initialize(L"", L"", L"", {}); }

    /// One tick of the program, then one of the host.
    void Tick(int times = 1)
    {
        for (int i = 0; i < times; ++i) {
            trigger.Poll();
            host.Pump();
        }
    }

    /// Up to the state in which universes go to the host. False when that takes too long.
    bool Connect(const UniverseMerging& merging = {})
    {
        if (!host.Start())
            return false;
        ChooseNetwork(merging);
        for (int i = 0; i < 20 && output.GetState() != OutputState::UsingRemoteSocket; ++i)
            Tick();
        return output.GetState() == OutputState::UsingRemoteSocket;
    }

    /// What came to the host since the last look, without the "stop" of every tick.
    Lines Said()
    {
        host.Pump();
        Lines lines = host.TakeLines();
        std::erase(lines, "0x21 stop");
        return lines;
    }

    /// The host dies, and the program notices.
    void KillHost()
    {
        host.Die();
        trigger.Poll(); // what it said before still counts
        Pass(5001);
        trigger.Poll();
    }

    /// Milliseconds later on the program's clock.
    static void Pass(std::int64_t milliseconds) { now += milliseconds * 1'000'000; }

    static std::int64_t now;

    Support::LogCapture log;
    ArtNetOutput output;
    ArtNetTrigger trigger{output, [] {
                              return now;
                          }};
    HostStandIn::Host host;
};

/// A value at an offset of a message's data.
struct Field
{
    std::size_t offset;
    Bytes bytes;
};
[[nodiscard]] Bytes Ascii(const std::string& text);
/// A whole message: the head, and zeros where no field lies.
[[nodiscard]] Bytes Message(std::uint8_t subKey, const std::vector<Field>& fields);
