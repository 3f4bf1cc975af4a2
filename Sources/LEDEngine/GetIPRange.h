// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Adapters.h"

/// A network that this process has seen, in its last seen state.
struct KnownNetwork
{
    std::uint32_t ipValue = 0;
    std::wstring broadcast;
    std::uint32_t broadcastValue = 0;
    bool up = false;
    bool present = false; ///< an adapter has the address now; otherwise the network is not up
    std::wstring adapter; ///< the name of the adapter that has it, or had it last

    bool operator==(const KnownNetwork&) const = default;
};

/// A network that is new or has changed, in its present state.
using NetworkChange = KnownNetwork;

/// A line of the operator's list of networks.
struct NetworkListEntry
{
    std::wstring text;
    bool connected = false;

    bool operator==(const NetworkListEntry&) const = default;
};

/// The IPv4 networks that the machine has and has had, and the ranges that the user typed. A
/// network text is a dotted address, or four parts with "X" for any part: 2.X.X.X. Networks are
/// never forgotten: one whose adapter is gone stays in the operator's list. Only DetectChanges
/// reads the adapters, so that no other reader takes a change from the one who acts on it. Main
/// thread only.
class GetIPRange
{
public:
    using Source = std::function<std::optional<std::vector<NetworkInterface>>()>;

    /// The one of the process, which reads the machine's adapters.
    [[nodiscard]] static GetIPRange& Instance();

    /// `source` lists the adapters each time that it is called; nothing when that fails.
    explicit GetIPRange(Source source);

    /// Reads the adapters. Gives what is new or changed since the last call, in the order of the
    /// addresses as text, and then what is gone.
    std::vector<NetworkChange> DetectChanges();

    /// All networks, then all ranges, for the operator's list.
    [[nodiscard]] std::vector<NetworkListEntry> GetNetworks() const;

    struct Match
    {
        std::wstring ip;
        KnownNetwork network;
    };
    /// The networks that the text names and adapters have, in the order in which they were first
    /// seen; none for a text that isn't four parts.
    [[nodiscard]] std::vector<Match> FindMatching(const std::wstring& text) const;

    void AddManualRange(const std::wstring& text);
    void RemoveManualRange(const std::wstring& text);
    [[nodiscard]] bool HasManualRange(const std::wstring& text) const;
    /// Whether the text is a range of the user, a network, or 127.0.0.1.
    [[nodiscard]] bool IsKnownNetwork(const std::wstring& text) const;
    /// Whether an address lies in a known network or a range.
    [[nodiscard]] bool IsInKnownNetwork(const std::wstring& address) const;

    /// Every X becomes 255. A text is a range when the result is an IPv4 address other than
    /// 0.0.0.0.
    [[nodiscard]] static std::wstring RangeToBroadcast(const std::wstring& text);
    [[nodiscard]] static bool IsValidRange(const std::wstring& text);

private:
    void FindGone(const std::vector<NetworkInterface>& interfaces,
                  std::vector<NetworkChange>& changes);

    using Entry = std::pair<std::wstring, KnownNetwork>;

    Source source_;
    std::vector<Entry> networks_; ///< in the order first seen
    std::vector<std::wstring> manualRanges_;
};
