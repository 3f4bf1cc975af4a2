// SPDX-License-Identifier: MIT
#include "Host.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace HostStandIn {

namespace {

constexpr std::uint16_t hostPort = 6456;
constexpr std::uint16_t programPort = 6455;
constexpr std::size_t packetSize = 528;
constexpr std::size_t dataAt = 16;
constexpr std::size_t subKeyAt = 15;
constexpr std::uint8_t head[12] = {'A', 'r', 't', '-', 'N', 'e', 't', 0, 0x00, 0x99, 0x00, 0x0E};

std::uint32_t Number(const Bytes& data, std::size_t at, std::size_t size)
{
    std::uint32_t value = 0;
    for (std::size_t i = size; i-- > 0;)
        value = value << 8 | (at + i < data.size() ? data[at + i] : 0U);
    return value;
}

void Put(Bytes& data, std::size_t at, std::size_t size, std::uint32_t value)
{
    if (data.size() < at + size)
        data.resize(at + size);
    for (std::size_t i = 0; i < size; ++i)
        data[at + i] = static_cast<std::uint8_t>(value >> (8 * i) & 0xFF);
}

void PutText(Bytes& data, std::size_t at, std::size_t size, const std::string& text)
{
    if (data.size() < at + size)
        data.resize(at + size);
    std::copy_n(text.begin(), std::min(size, text.size()),
                data.begin() + static_cast<std::ptrdiff_t>(at));
}

std::string Text(const Bytes& data, std::size_t at, std::size_t size)
{
    std::string text;
    for (std::size_t i = at; i < at + size && i < data.size() && data[i] != 0; ++i)
        text += static_cast<char>(data[i]);
    return text;
}

/// The channels without the zeros that fill the block.
std::string Channels(const Bytes& data, std::size_t size)
{
    std::size_t end = std::min(size, data.size());
    while (end > 0 && data[end - 1] == 0)
        --end;
    std::string text;
    char digits[3];
    for (std::size_t i = 0; i < end; ++i) {
        std::snprintf(digits, sizeof digits, "%02x", data[i]);
        text += digits;
    }
    return text;
}

std::string LineOfNode(const Bytes& data)
{
    std::string line = "node count=" + std::to_string(Number(data, 0, 4)) +
                       " request=" + std::to_string(Number(data, 4, 4)) +
                       " generation=" + std::to_string(Number(data, 8, 4)) +
                       " name=" + Text(data, 12, 64) + " address=" + Text(data, 76, 16) +
                       " universes=";
    bool first = true;
    for (std::size_t at = 92; at < 348; at += 2) {
        const std::uint32_t place = Number(data, at, 2);
        if (place == 0)
            continue;
        line += (first ? "" : ",") + std::to_string(place - 1);
        first = false;
    }
    return line;
}

std::string LineOfUniverse(const char* what, const Bytes& data)
{
    return std::string(what) + " address=" + std::to_string(Number(data, 480, 2)) +
           " pair=" + std::to_string(Number(data, 482, 2)) + " to=" + Text(data, 484, 28) +
           " channels=" + Channels(data, 480);
}

std::string LineOf(std::uint8_t subKey, const Bytes& data)
{
    switch (subKey) {
    case 0x11:
        return "poll";
    case 0x61:
        return "nodes-wanted request=" + std::to_string(Number(data, 0, 4)) +
               " interface=" + Text(data, 4, 64);
    case 0x62:
        return LineOfNode(data);
    case 0x71:
        return "input-wanted first=" + std::to_string(Number(data, 0, 2)) +
               " request=" + std::to_string(Number(data, 2, 4));
    case 0x81:
        return LineOfUniverse("universe", data);
    case 0x82:
        return LineOfUniverse("universe-begin", data);
    case 0x83:
        return LineOfUniverse("universe-end", data);
    case 0xA1:
        return "register first=" + std::to_string(Number(data, 0, 2)) +
               " count=" + std::to_string(Number(data, 2, 2)) + " interface=" + Text(data, 4, 16) +
               " broadcast=" + Text(data, 20, 16) + " receive=" + Text(data, 36, 16) +
               " name=" + Text(data, 52, 64);
    default: {
        char number[8];
        std::snprintf(number, sizeof number, "0x%02x ", subKey);
        return number + Text(data, 0, 512);
    }
    }
}

Bytes Packet(std::uint8_t subKey, const Bytes& data)
{
    Bytes packet(packetSize);
    std::copy(std::begin(head), std::end(head), packet.begin());
    packet[14] = 1;
    packet[subKeyAt] = subKey;
    std::copy_n(data.begin(), std::min<std::size_t>(data.size(), 512), packet.begin() + dataAt);
    return packet;
}

} // namespace

Host::~Host()
{
    Die();
}

bool Host::Start()
{
    Die();
    handle_ = socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int large = 4 * 1024 * 1024;
    setsockopt(handle_, SOL_SOCKET, SO_RCVBUF, &large, sizeof large);
    sockaddr_in own{};
    own.sin_family = AF_INET;
    own.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    own.sin_port = htons(hostPort);
    if (bind(handle_, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0)
        return true;
    std::perror("host-stand-in: port 6456");
    Die();
    return false;
}

void Host::Die()
{
    if (handle_ >= 0)
        close(handle_);
    handle_ = -1;
    waiting_.clear();
}

void Host::Wait(std::chrono::milliseconds longest) const
{
    pollfd waiting{handle_, POLLIN, 0};
    poll(&waiting, handle_ >= 0 ? 1 : 0, static_cast<int>(longest.count()));
}

void Host::Pump()
{
    Bytes buffer(2048);
    for (int i = 0; i < 10000 && handle_ >= 0; ++i) {
        sockaddr_in from{};
        socklen_t size = sizeof from;
        const ssize_t got = recvfrom(handle_, buffer.data(), buffer.size(), 0,
                                     reinterpret_cast<sockaddr*>(&from), &size);
        if (got < 0)
            break;
        lastSenderPort = ntohs(from.sin_port);
        Take(Bytes(buffer.begin(), buffer.begin() + got));
    }
    SendDue();
}

void Host::Take(const Bytes& datagram)
{
    datagrams_.push_back(datagram);
    if (datagram.size() != packetSize ||
        !std::equal(std::begin(head), std::end(head), datagram.begin()))
    {
        lines_.push_back("nonsense of " + std::to_string(datagram.size()) + " bytes");
        return;
    }
    const std::uint8_t subKey = datagram[subKeyAt];
    const Bytes data(datagram.begin() + dataAt, datagram.end());
    if (withPolls || subKey != 0x11)
        lines_.push_back(LineOf(subKey, data));
    if (!manners.silent)
        Answer(subKey, data);
}

void Host::Answer(std::uint8_t subKey, const Bytes& data)
{
    if (subKey == 0x11 && manners.answersPolls)
        Send(0x12);
    else if ((subKey == 0x21 || subKey == 0x31 || subKey == 0x41) && manners.acknowledges)
        Send(static_cast<std::uint8_t>(subKey + 1));
    else if (subKey == 0x51 && !inputSettings.empty())
        Send(0x52, inputSettings);
    else if (subKey == 0x91 && manners.rebinds)
        Send(0x92);
    else if (subKey == 0xA1) {
        Send(0xA2);
        AskForNodes();
    } else if (subKey == 0x61)
        AnswerNodesWanted(data);
    else if (subKey == 0x71)
        AnswerInputWanted(data);
}

void Host::AskForNodes()
{
    for (int i = 0; i < manners.nodeRequests; ++i) {
        Bytes data;
        Put(data, 0, 4, ++nodeRequest_);
        Send(0x61, data);
    }
}

void Host::AnswerNodesWanted(const Bytes& data)
{
    const std::uint32_t request = Number(data, 0, 4) - manners.oldBy;
    std::vector<Bytes> answers;
    for (const Node& node : nodes) {
        Bytes answer;
        Put(answer, 0, 4, static_cast<std::uint32_t>(nodes.size()));
        Put(answer, 4, 4, request);
        Put(answer, 8, 4, nodesGeneration);
        PutText(answer, 12, 64, node.name);
        PutText(answer, 76, 16, node.address);
        for (std::size_t i = 0; i < node.universes.size() && i < 128; ++i)
            Put(answer, 92 + 2 * i, 2, node.universes[i] + 1U);
        answers.push_back(std::move(answer));
    }
    if (nodes.empty()) {
        Bytes answer;
        Put(answer, 0, 4, 0);
        Put(answer, 4, 4, request);
        answers.push_back(std::move(answer));
    }
    SendAll(0x62, std::move(answers));
}

void Host::AnswerInputWanted(const Bytes& data)
{
    const auto first = static_cast<std::uint16_t>(Number(data, 0, 2));
    std::vector<Bytes> pieces;
    for (std::uint16_t piece = 0; piece < 2 * inputUniverses; ++piece) {
        Bytes answer;
        Put(answer, 0, 2, 2U * inputUniverses);
        Put(answer, 2, 2, piece);
        Put(answer, 4, 4, Number(data, 2, 4) - manners.oldBy);
        const auto universe = input.find(static_cast<std::uint16_t>(first + piece / 2));
        answer.resize(8 + 256, universe == input.end() ? std::uint8_t{0} : universe->second);
        pieces.push_back(std::move(answer));
    }
    SendAll(0x72, std::move(pieces));
}

void Host::SendAll(std::uint8_t subKey, std::vector<Bytes> messages)
{
    if (manners.reorders)
        std::reverse(messages.begin(), messages.end());
    for (const Bytes& message : messages)
        Send(subKey, message);
}

void Host::Send(std::uint8_t subKey, const Bytes& data)
{
    SendRaw(Packet(subKey, data));
}

void Host::SendRaw(const Bytes& datagram)
{
    if (std::uniform_real_distribution<>(0, 1)(random_) < manners.loss)
        return;
    waiting_.push_back({std::chrono::steady_clock::now() + manners.delay, datagram});
    SendDue();
}

void Host::SendDue()
{
    sockaddr_in program{};
    program.sin_family = AF_INET;
    program.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    program.sin_port = htons(programPort);
    const auto now = std::chrono::steady_clock::now();
    while (!waiting_.empty() && waiting_.front().due <= now) {
        const Bytes& datagram = waiting_.front().datagram;
        sendto(handle_, datagram.data(), datagram.size(), 0,
               reinterpret_cast<const sockaddr*>(&program), sizeof program);
        waiting_.pop_front();
    }
}

std::vector<std::string> Host::TakeLines()
{
    return std::exchange(lines_, {});
}

std::vector<Bytes> Host::TakeDatagrams()
{
    return std::exchange(datagrams_, {});
}

} // namespace HostStandIn
