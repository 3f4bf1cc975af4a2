// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <random>
#include <string>
#include <vector>

/// A host program on the control channel, for tests. It is written from the layout of the messages
/// and shares no line with the program: it judges it, and could not see a mistake that both make.
namespace HostStandIn {

using Bytes = std::vector<std::uint8_t>;

struct Node
{
    std::string name;
    std::string address;
    std::vector<std::uint16_t> universes;
};

/// How well the host behaves.
struct Manners
{
    bool silent = false; ///< answers nothing at all
    bool answersPolls = true;
    bool rebinds = true;                ///< acknowledges 0x91
    int nodeRequests = 1;               ///< how many times it asks with 0x61 after the registration
    bool acknowledges = true;           ///< "stop", "start" and "reload"
    std::uint32_t oldBy = 0;            ///< answers carry a request number that is older by this
    double loss = 0;                    ///< part of its messages that is never sent, 0 to 1
    bool reorders = false;              ///< node and DMX pieces are sent last one first
    std::chrono::milliseconds delay{0}; ///< each message is sent so much later
};

/// One socket on port 6456 that sends to 6455, and a line of text for each message that comes, such
/// as
///     universe address=3 pair=0 to=2.0.0.10 channels=ff0080
class Host
{
public:
    Host() = default;
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// Opens the socket; false, with a line on standard error, when that fails.
    [[nodiscard]] bool Start();
    /// Closes the socket without a message. Start opens it again.
    void Die();
    [[nodiscard]] bool IsAlive() const { return handle_ >= 0; }

    /// Reads and answers what has come in, and sends what is due.
    void Pump();
    /// Waits for the next message, no longer than this.
    void Wait(std::chrono::milliseconds longest) const;

    /// Sends a message with this SubKey and these first bytes of data.
    void Send(std::uint8_t subKey, const Bytes& data = {});
    /// Sends a datagram of exactly these bytes.
    void SendRaw(const Bytes& datagram);

    Manners manners;
    std::vector<Node> nodes; ///< what it answers to 0x61
    std::uint32_t nodesGeneration = 1;
    std::map<std::uint16_t, std::uint8_t>
        input;                        ///< received universes: all channels have this value
    std::uint16_t inputUniverses = 1; ///< how many it sends after 0x71
    Bytes inputSettings;              ///< data of 0x52; empty: none is sent

    /// The lines since the last call. Polls are in them when `withPolls` is set.
    [[nodiscard]] std::vector<std::string> TakeLines();
    bool withPolls = false;
    /// The datagrams since the last call, whole.
    [[nodiscard]] std::vector<Bytes> TakeDatagrams();
    std::uint16_t lastSenderPort = 0;

private:
    struct Waiting
    {
        std::chrono::steady_clock::time_point due;
        Bytes datagram;
    };

    void Take(const Bytes& datagram);
    void Answer(std::uint8_t subKey, const Bytes& data);
    void AnswerNodesWanted(const Bytes& data);
    void AnswerInputWanted(const Bytes& data);
    void AskForNodes();
    void SendAll(std::uint8_t subKey, std::vector<Bytes> messages);
    void SendDue();

    int handle_ = -1;
    std::uint32_t nodeRequest_ = 100;
    std::deque<Waiting> waiting_;
    std::vector<std::string> lines_;
    std::vector<Bytes> datagrams_;
    std::mt19937 random_{1};
};

} // namespace HostStandIn
