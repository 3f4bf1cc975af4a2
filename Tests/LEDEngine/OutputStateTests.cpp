// SPDX-License-Identifier: MIT
#include <array>
#include <string>

#include <gtest/gtest.h>

#include "LEDEngine/OutputState.h"

namespace {

/// What an event leads to: '-' ignored, '.' logged and nothing else, 'c' new local clients, '+' the
/// tick is counted, a digit the state that is entered.
char OutcomeOf(const OutputSituation& now, OutputEvent event)
{
    const OutputTransition transition = TransitionOf(now, event);
    if (transition.enters)
        return static_cast<char>('0' + static_cast<int>(transition.next));
    EXPECT_EQ(transition.next, now.state);
    EXPECT_EQ(transition.reason, nullptr);
    if (transition.retryCounter != now.retryCounter)
        return transition.retryCounter == now.retryCounter + 1 ? '+' : '?';
    if (transition.action != OutputAction::None)
        return transition.action == OutputAction::CreateLocalClients ? 'c' : '?';
    return transition.event ? '.' : '-';
}

TEST(OutputState, EachEventInEachState)
{
    // Initialize with a network and without one, the 11th and the 12th tick of a wait,
    // ServerDetected, ServerStopped, SocketRebound, ClientRegistered, DevicesSent, unknown.
    constexpr std::array<const char*, 8> table = {
        "2.--------", // Disabled
        "c0--3-----", // UsingLocalSocket
        ".0+141----", // DetermineSocketType
        ".0+3-14---", // RebindRemoteSocket
        "40+4-1-5--", // RegisteringToRemoteSocket
        "40+4-1--6-", // SynchronizingRemoteDeviceList
        "40---1----", // UsingRemoteSocket
        "----------", // unknown
    };
    for (std::uint32_t number = 0; number < table.size(); ++number) {
        const auto state = static_cast<OutputState>(number);
        std::string row{OutcomeOf({state, true, 10}, OutputEvent::Initialize),
                        OutcomeOf({state, false, 10}, OutputEvent::Initialize),
                        OutcomeOf({state, true, 10}, OutputEvent::Tick),
                        OutcomeOf({state, true, 11}, OutputEvent::Tick)};
        for (std::uint32_t event = 2; event <= 7; ++event)
            row += OutcomeOf({state, true, 11}, static_cast<OutputEvent>(event));
        EXPECT_EQ(row, table[number]) << number;
        // Synchronizing goes on with the wait of the registration.
        EXPECT_EQ(EntryOf(state).restartsWait, number >= 2 && number <= 4) << number;
    }
}

} // namespace
