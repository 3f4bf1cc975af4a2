// SPDX-License-Identifier: MIT
#include "LEDEngine/GetIPRange.h"

#include <algorithm>
#include <array>
#include <optional>

#include <boost/algorithm/string/replace.hpp>
#include <boost/algorithm/string/split.hpp>

#include "Log/Log.h"
#include "Platform/IPv4.h"
#include "Platform/Text.h"

namespace {

bool IsListed(const std::string& ip)
{
    const auto point = ip.find('.');
    if (point == std::string::npos)
        return false;
    // Loopback, and the addresses that a machine gives itself when no server assigns one.
    const auto firstOctet = std::string_view(ip).substr(0, point);
    return firstOctet != "127" && firstOctet != "169";
}

std::vector<std::wstring> PartsOf(const std::wstring& text)
{
    std::vector<std::wstring> parts;
    boost::split(parts, text, [](wchar_t c) { return c == L'.'; });
    return parts;
}

bool Matches(const std::vector<std::wstring>& pattern, const std::wstring& ip)
{
    const auto parts = PartsOf(ip);
    return parts.size() == 4 &&
           std::ranges::equal(pattern, parts, [](const auto& wanted, const auto& part) {
               return wanted == L"X" || wanted == part;
           });
}

} // namespace

GetIPRange& GetIPRange::Instance()
{
    static GetIPRange instance(&Platform::GetNetworkInterfaces);
    return instance;
}

GetIPRange::GetIPRange(Source source)
    : source_(std::move(source))
{}

std::vector<NetworkChange> GetIPRange::DetectChanges()
{
    auto answer = source_();
    if (!answer)
        return {};
    auto& interfaces = *answer;
    std::ranges::sort(interfaces, [](const NetworkInterface& a, const NetworkInterface& b) {
        return a.ip != b.ip ? a.ip < b.ip : a.up && !b.up;
    });
    std::vector<NetworkChange> changes;
    for (std::size_t i = 0; i < interfaces.size(); ++i) {
        const NetworkInterface& adapter = interfaces[i];
        // Of two adapters with one address only the last counts: otherwise each call would find
        // a change from the one to the other.
        const bool superseded = i + 1 < interfaces.size() && interfaces[i + 1].ip == adapter.ip;
        if (superseded || !IsListed(adapter.ip))
            continue;
        const std::wstring ip = Platform::Utf8ToWide(adapter.ip);
        const KnownNetwork now{adapter.ipValue,
                               Platform::Utf8ToWide(adapter.broadcast),
                               adapter.broadcastValue,
                               adapter.up,
                               true,
                               Platform::Utf8ToWide(adapter.adapter)};
        const auto known = std::ranges::find(networks_, ip, &Entry::first);
        if (known == networks_.end()) {
            ZEN_LOG_INFO("New network detected %s/%s", adapter.ip.c_str(),
                         adapter.broadcast.c_str());
            networks_.emplace_back(ip, now);
            changes.push_back(now);
        } else if (known->second != now) {
            ZEN_LOG_INFO("Network changed %s/%s, state %d", adapter.ip.c_str(),
                         adapter.broadcast.c_str(), adapter.up ? 1 : 0);
            known->second = now;
            changes.push_back(now);
        }
    }
    FindGone(interfaces, changes);
    return changes;
}

void GetIPRange::FindGone(const std::vector<NetworkInterface>& interfaces,
                          std::vector<NetworkChange>& changes)
{
    for (auto& [wideIp, network] : networks_) {
        const std::string ip = Platform::WideToUtf8(wideIp);
        if (!network.present || std::ranges::count(interfaces, ip, &NetworkInterface::ip) > 0)
            continue;
        network.present = network.up = false;
        ZEN_LOG_INFO("Network changed %s/%s, state %d", ip.c_str(),
                     Platform::WideToUtf8(network.broadcast).c_str(), 0);
        changes.push_back(network);
    }
}

std::vector<NetworkListEntry> GetIPRange::GetNetworks() const
{
    std::vector<NetworkListEntry> entries;
    for (const auto& [ip, network] : networks_)
        entries.push_back({ip, network.up});
    for (const std::wstring& range : manualRanges_) {
        const auto matches = FindMatching(range);
        const bool connected =
            std::ranges::any_of(matches, [](const Match& match) { return match.network.up; });
        entries.push_back({range, connected});
    }
    return entries;
}

std::vector<GetIPRange::Match> GetIPRange::FindMatching(const std::wstring& text) const
{
    std::vector<Match> matches;
    const auto pattern = PartsOf(text);
    if (pattern.size() != 4)
        return matches;
    for (const auto& [ip, network] : networks_) {
        if (network.present && Matches(pattern, ip))
            matches.push_back({ip, network});
    }
    return matches;
}

void GetIPRange::AddManualRange(const std::wstring& text)
{
    if (!HasManualRange(text))
        manualRanges_.push_back(text);
}

void GetIPRange::RemoveManualRange(const std::wstring& text)
{
    std::erase(manualRanges_, text);
}

bool GetIPRange::HasManualRange(const std::wstring& text) const
{
    return std::ranges::find(manualRanges_, text) != manualRanges_.end();
}

bool GetIPRange::IsKnownNetwork(const std::wstring& text) const
{
    return HasManualRange(text) || text == L"127.0.0.1" ||
           std::ranges::find(networks_, text, &Entry::first) != networks_.end();
}

bool GetIPRange::IsInKnownNetwork(const std::wstring& address) const
{
    const std::string dotted = Platform::WideToUtf8(address);
    return std::ranges::any_of(networks_,
                               [&](const auto& network) {
                                   return Platform::IsInNetwork(network.second.broadcastValue,
                                                                dotted);
                               }) ||
           std::ranges::any_of(manualRanges_, [&](const std::wstring& range) {
               return Platform::IsInNetwork(
                   Platform::ParseIPv4(RangeToBroadcast(range)).value_or(0), dotted);
           });
}

std::wstring GetIPRange::RangeToBroadcast(const std::wstring& text)
{
    return boost::replace_all_copy(text, L"X", L"255");
}

bool GetIPRange::IsValidRange(const std::wstring& text)
{
    return Platform::ParseIPv4(RangeToBroadcast(text)).value_or(0) != 0;
}
