// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Adapters.h"

/// A network that this process has seen, as it was seen last.
struct KnownNetwork
{
    std::uint32_t ipValue = 0;
    std::wstring broadcast;
    std::uint32_t broadcastValue = 0;
    bool up = false;

    bool operator==(const KnownNetwork&) const = default;
};

/// A network that is new or differs from what it was.
using NetworkChange = KnownNetwork;

/// A line of the operator's list of networks.
struct NetworkListEntry
{
    std::wstring text;
    bool connected = false;

    bool operator==(const NetworkListEntry&) const = default;
};

/// The IPv4 networks that the machine has and has had, and the ranges that the user typed. A
/// network text is a dotted address or four parts with "X" for any part: 2.X.X.X. Networks are
/// never forgotten: a document that names one which is away waits for it. Main thread only.
class GetIPRange
{
public:
    using Source = std::function<std::vector<NetworkInterface>()>;

    /// The process's own, over the machine's adapters.
    [[nodiscard]] static GetIPRange& Instance();

    explicit GetIPRange(Source source);

    /// Asks the machine again; what is new or changed, in the order of the addresses as text.
    std::vector<NetworkChange> DetectChanges();

    /// All networks, then all ranges, for the operator's list.
    [[nodiscard]] std::vector<NetworkListEntry> GetNetworks();

    struct Match
    {
        std::wstring ip;
        KnownNetwork network;
    };
    /// The networks that the text names, in the order in which they were first seen.
    [[nodiscard]] std::vector<Match> FindMatching(const std::wstring& text);

    void AddManualRange(const std::wstring& text);
    void RemoveManualRange(const std::wstring& text);
    [[nodiscard]] bool HasManualRange(const std::wstring& text) const;
    /// Whether the text is a range of the user, a network, or 127.0.0.1.
    [[nodiscard]] bool IsKnownNetwork(const std::wstring& text);
    /// Whether an address lies in a network or a range of these. Doesn't ask the machine again.
    [[nodiscard]] bool IsInKnownNetwork(const std::wstring& address) const;

    /// Every X becomes 255. A text is a range when the result is an IPv4 address other than
    /// 0.0.0.0.
    [[nodiscard]] static std::wstring RangeToBroadcast(const std::wstring& text);
    [[nodiscard]] static bool IsValidRange(const std::wstring& text);

private:
    [[nodiscard]] std::vector<Match> MatchesOf(const std::wstring& text) const;
    KnownNetwork* Find(const std::wstring& ip);

    Source source_;
    std::vector<std::pair<std::wstring, KnownNetwork>> networks_; ///< by first sight
    std::vector<std::wstring> manualRanges_;
};
