// SPDX-License-Identifier: MIT
#include "Options.h"
#include "Screen.h"
#include "Socket.h"
#include "Wire.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <map>
#include <memory>

namespace {

using namespace Rig;
using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

volatile std::sig_atomic_t stopped = 0;

void Stop(int)
{
    stopped = 1;
}

std::string List(const std::vector<std::uint16_t>& universes)
{
    std::string text;
    for (const std::uint16_t universe : universes) {
        if (!text.empty())
            text += ',';
        text += std::to_string(universe);
    }
    return text;
}

/// The run of one rig: what is received is answered, shown, printed and counted here.
class Station
{
public:
    explicit Station(const Options& options)
        : options_(options)
    {
        if (options.mode == Mode::Watch)
            screen_ = std::make_unique<Screen>();
        for (std::size_t i = 0; i < options.nodes.size(); ++i)
            AddNode(i);
    }

    int Run(Socket& socket)
    {
        const auto end = Clock::now() + milliseconds(static_cast<long>(options_.seconds * 1000));
        auto tick = Clock::now();
        const auto period = options_.mode == Mode::Send
                                ? std::chrono::nanoseconds(static_cast<long>(1e9 / options_.rate))
                                : std::chrono::nanoseconds(Screen::period);
        if (options_.mode == Mode::Poll)
            socket.Send(WritePoll(), {}, *options_.target, artNetPort);
        while (stopped == 0 && Clock::now() < end && !Enough()) {
            if (Clock::now() >= tick) {
                tick += period;
                Tick(socket);
            }
            const auto rest = std::min(tick, end) - Clock::now();
            socket.Wait(std::max(milliseconds(0), std::chrono::ceil<milliseconds>(rest)));
            // Bounded, so that a flood cannot keep the ticks and the end away.
            for (int i = 0; i < 256 && !Enough(); ++i) {
                const auto datagram = socket.Receive();
                if (!datagram)
                    break;
                Take(socket, *datagram);
            }
        }
        return Result();
    }

private:
    struct Node
    {
        Address address;
        std::vector<Bytes> replies;
    };

    void AddNode(std::size_t index)
    {
        std::vector<std::uint16_t> universes = options_.universes;
        for (std::uint16_t& universe : universes)
            universe = static_cast<std::uint16_t>(
                (universe + index * static_cast<std::size_t>(options_.stride)) & 0x7FFFU);
        std::string name = options_.name;
        if (options_.nodes.size() > 1)
            name.append(1, ' ').append(std::to_string(index + 1));
        Node node{options_.nodes[index], {}};
        for (const Reply& reply : RepliesOf(node.address, name, universes))
            node.replies.push_back(WriteReply(reply));
        nodes_.push_back(std::move(node));
    }

    [[nodiscard]] bool Enough() const
    {
        return options_.mode == Mode::Print && options_.count > 0 && dmxCount_ >= options_.count;
    }

    [[nodiscard]] int Result() const
    {
        if (options_.mode == Mode::Print && dmxCount_ < options_.count)
            return 1;
        if (options_.mode == Mode::Poll && replyCount_ == 0)
            return 1;
        return failed_ ? 1 : 0;
    }

    void Tick(Socket& socket)
    {
        if (screen_)
            screen_->Draw();
        if (options_.mode != Mode::Send)
            return;
        sequence_ = static_cast<std::uint8_t>(sequence_ == 255 ? 1 : sequence_ + 1);
        for (const std::uint16_t universe : options_.universes)
            Send(socket, WriteDmx(universe, options_.values, sequence_), {}, *options_.target,
                 artNetPort);
    }

    void Send(Socket& socket, const Bytes& packet, const Address& from, const Address& to,
              std::uint16_t port)
    {
        if (socket.Send(packet, from, to, port) || failed_)
            return;
        failed_ = true; // the first one is reported, and fails the run
        std::fprintf(stderr, "rig: the system refused to send from %s to %s\n",
                     ToText(from).c_str(), ToText(to).c_str());
    }

    void Take(Socket& socket, const Datagram& datagram)
    {
        switch (Classify(datagram.bytes)) {
        case Kind::Poll:
            if (options_.mode == Mode::Print)
                std::printf("poll from=%s to=%s\n", ToText(datagram.source).c_str(),
                            ToText(datagram.destination).c_str());
            Answer(socket, datagram);
            break;
        case Kind::PollReply:
            TakeReply(datagram);
            break;
        case Kind::Dmx:
            TakeDmx(datagram);
            break;
        case Kind::Other:
            break;
        }
        if (options_.mode == Mode::Print || options_.mode == Mode::Poll)
            std::fflush(stdout);
    }

    void Answer(Socket& socket, const Datagram& poll)
    {
        const Address everyone = options_.target.value_or(Address{255, 255, 255, 255});
        for (const Node& node : nodes_) {
            if (!poll.broadcast && node.address != poll.destination)
                continue;
            for (const Bytes& reply : node.replies)
                if (options_.broadcastReplies)
                    Send(socket, reply, node.address, everyone, artNetPort);
                else
                    Send(socket, reply, node.address, poll.source, poll.sourcePort);
        }
    }

    void TakeReply(const Datagram& datagram)
    {
        const auto reply = ReadReply(datagram.bytes);
        if (!reply || (options_.mode != Mode::Print && options_.mode != Mode::Poll))
            return;
        ++replyCount_;
        std::printf("reply from=%s to=%s bind=%d universes=%s name=%s\n",
                    ToText(datagram.source).c_str(), ToText(datagram.destination).c_str(),
                    int{reply->bindIndex}, List(reply->universes).c_str(),
                    (reply->longName.empty() ? reply->shortName : reply->longName).c_str());
    }

    void TakeDmx(const Datagram& datagram)
    {
        const auto dmx = ReadDmx(datagram.bytes);
        if (!dmx)
            return;
        if (screen_)
            screen_->Take(*dmx, datagram.source);
        if (options_.mode != Mode::Print)
            return;
        if (options_.changesOnly) {
            const auto [entry, fresh] = last_.try_emplace(dmx->universe, dmx->channels);
            if (!fresh && entry->second == dmx->channels)
                return;
            entry->second = dmx->channels;
        }
        ++dmxCount_;
        std::printf("dmx universe=%u from=%s to=%s length=%zu data=", unsigned{dmx->universe},
                    ToText(datagram.source).c_str(), ToText(datagram.destination).c_str(),
                    dmx->channels.size());
        for (const std::uint8_t channel : dmx->channels)
            std::printf("%02x", unsigned{channel});
        std::puts("");
    }

    const Options& options_;
    std::vector<Node> nodes_;
    std::unique_ptr<Screen> screen_;
    std::map<std::uint16_t, Bytes> last_;
    int dmxCount_ = 0;
    int replyCount_ = 0;
    std::uint8_t sequence_ = 0;
    bool failed_ = false;
};

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.empty() || words[0] == "-h" || words[0] == "--help") {
        std::fputs(usage, words.empty() ? stderr : stdout);
        return words.empty() ? 64 : 0;
    }
    const auto options = ParseOptions(words);
    if (!options)
        return 64;

    struct sigaction action
    {};
    action.sa_handler = Stop;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);

    Socket socket;
    if (!socket.Open(artNetPort))
        return 1;
    return Station(*options).Run(socket);
}
