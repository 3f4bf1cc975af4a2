// SPDX-License-Identifier: MIT
#include "Options.h"

#include <charconv>
#include <cstdio>
#include <map>

namespace Rig {

const char* const usage =
    "rig - Art-Net nodes, a watcher and a console, for tests and for the demonstration\n"
    "\n"
    "  rig [answer|watch|print|send|poll] [OPTION...]\n"
    "\n"
    "  answer  be the nodes, print nothing (the default)\n"
    "  watch   be the nodes and show the received universes in colour\n"
    "  print   be the nodes and print a line for each packet:\n"
    "            dmx universe=3 from=2.0.0.1 to=2.0.0.10 length=512 data=ff0080...\n"
    "            poll from=2.0.0.1 to=2.255.255.255\n"
    "            reply from=2.0.0.10 to=2.0.0.1 bind=1 universes=0,1 name=Rig node\n"
    "  send    send ArtDmx to --to with the universes of -u\n"
    "  poll    send an ArtPoll to --to and print the replies (status 1 when none came)\n"
    "\n"
    "  -a ADDRESS...        answer polls as one node on each of these addresses of this host\n"
    "  --nodes N            as N nodes on consecutive addresses, from the (first) -a on\n"
    "  -u LIST              universes as 15-bit Port-Addresses: 0-3,16\n"
    "  --stride N           node k has its universes k times N higher (default 0)\n"
    "  --name TEXT          name of the nodes; with several, their number follows\n"
    "  --broadcast-replies  answer to 255.255.255.255 or to --to, as older nodes do\n"
    "  --seconds S          end after this time (default: 10; watch and answer 3600)\n"
    "  --count N            print: count ArtDmx only and end after N, status 1 when fewer came\n"
    "  --changes            print: leave out ArtDmx that repeats the universe's last content\n"
    "  --to ADDRESS         where send and poll send to\n"
    "  --values HEX         send: the channels, two digits each (default: 512 zeros)\n"
    "  --rate N             send: frames a second (default 40)\n";

namespace {

template <typename Number>
bool ParseNumber(std::string_view text, Number& number)
{
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && stop == end;
}

bool ParseUniverses(std::string_view text, std::vector<std::uint16_t>& universes)
{
    while (!text.empty()) {
        const std::string_view part = text.substr(0, text.find(','));
        text.remove_prefix(std::min(text.size(), part.size() + 1));
        const auto dash = part.find('-');
        int first = 0;
        int last = 0;
        if (!ParseNumber(part.substr(0, dash), first))
            return false;
        last = first;
        if (dash != std::string_view::npos && !ParseNumber(part.substr(dash + 1), last))
            return false;
        if (first < 0 || last < first || last > 0x7FFF)
            return false;
        for (int universe = first; universe <= last; ++universe)
            universes.push_back(static_cast<std::uint16_t>(universe));
    }
    return !universes.empty();
}

bool ParseHex(std::string_view text, Bytes& bytes)
{
    if (text.size() % 2 != 0 || text.size() > 2 * universeSize)
        return false;
    bytes.clear();
    for (; !text.empty(); text.remove_prefix(2)) {
        std::uint8_t byte = 0;
        const auto [stop, error] = std::from_chars(text.data(), text.data() + 2, byte, 16);
        if (error != std::errc{} || stop != text.data() + 2)
            return false;
        bytes.push_back(byte);
    }
    return true;
}

Address Next(Address address)
{
    for (std::size_t i = address.size(); i-- > 0;) {
        if (++address[i] != 0)
            break;
    }
    return address;
}

/// Reads the words in order, up to the first that makes no sense.
class Parser
{
public:
    explicit Parser(const std::vector<std::string>& words)
        : words_(words)
    {}

    bool Run(Options& options)
    {
        while (next_ < words_.size() && ok_)
            Take(options, words_[next_++]);
        return ok_;
    }

    int nodeCount = 0;

private:
    const std::string& Value()
    {
        static const std::string none;
        ok_ = ok_ && next_ < words_.size();
        return ok_ ? words_[next_++] : none;
    }

    void Take(Options& options, const std::string& word)
    {
        static const std::map<std::string, Mode, std::less<>> modes = {{"answer", Mode::Answer},
                                                                       {"watch", Mode::Watch},
                                                                       {"print", Mode::Print},
                                                                       {"send", Mode::Send},
                                                                       {"poll", Mode::Poll}};
        if (const auto mode = modes.find(word); mode != modes.end() && next_ == 1)
            options.mode = mode->second;
        else if (word == "-a")
            TakeAddresses(options.nodes);
        else if (word == "--nodes")
            Require(ParseNumber(Value(), nodeCount) && nodeCount > 0 && nodeCount <= 4096);
        else if (word == "-u")
            Require(ParseUniverses(Value(), options.universes));
        else if (word == "--stride")
            Require(ParseNumber(Value(), options.stride) && options.stride >= 0);
        else if (word == "--name")
            options.name = Value();
        else if (word == "--broadcast-replies")
            options.broadcastReplies = true;
        else if (word == "--changes")
            options.changesOnly = true;
        else if (word == "--seconds")
            Require(ParseNumber(Value(), options.seconds) && options.seconds > 0 &&
                    options.seconds <= 86400);
        else if (word == "--count")
            Require(ParseNumber(Value(), options.count) && options.count > 0);
        else if (word == "--to")
            Require((options.target = ParseAddress(Value())).has_value());
        else if (word == "--values")
            Require(ParseHex(Value(), options.values));
        else if (word == "--rate")
            Require(ParseNumber(Value(), options.rate) && options.rate > 0 && options.rate <= 1000);
        else
            Require(false);
    }

    void TakeAddresses(std::vector<Address>& addresses)
    {
        do {
            const auto address = ParseAddress(Value());
            Require(address.has_value());
            if (address)
                addresses.push_back(*address);
        } while (ok_ && next_ < words_.size() && !words_[next_].starts_with('-'));
    }

    void Require(bool holds)
    {
        if (ok_ && !holds)
            std::fprintf(stderr, "rig: '%s' makes no sense here\n", words_[next_ - 1].c_str());
        ok_ = ok_ && holds;
    }

    const std::vector<std::string>& words_;
    std::size_t next_ = 0;
    bool ok_ = true;
};

bool Complain(const char* text)
{
    std::fprintf(stderr, "rig: %s\n", text);
    return false;
}

bool Complete(Options& options, int nodeCount)
{
    const bool sends = options.mode == Mode::Send || options.mode == Mode::Poll;
    if (sends && !options.target)
        return Complain("where to? --to ADDRESS");
    if (options.mode == Mode::Send && options.universes.empty())
        return Complain("which universes? -u LIST");
    if (nodeCount > 0 && options.nodes.empty())
        return Complain("--nodes counts from an address: -a ADDRESS");
    if (nodeCount > 0)
        options.nodes.resize(1);
    while (static_cast<int>(options.nodes.size()) < nodeCount)
        options.nodes.push_back(Next(options.nodes.back()));
    if (options.values.empty())
        options.values.assign(universeSize, 0);
    const bool stays = options.mode == Mode::Watch || options.mode == Mode::Answer;
    if (options.seconds <= 0)
        options.seconds = stays ? 3600 : 10;
    return true;
}

} // namespace

std::optional<Options> ParseOptions(const std::vector<std::string>& words)
{
    Options options;
    Parser parser(words);
    if (!parser.Run(options) || !Complete(options, parser.nodeCount))
        return std::nullopt;
    return options;
}

} // namespace Rig
