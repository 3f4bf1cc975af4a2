// SPDX-License-Identifier: MIT
#include "ArtNet/ZenArtNetServer.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "Log/Log.h"
#include "Platform/Clock.h"
#include "Platform/IPv4.h"

namespace Zen {

namespace {

constexpr auto PollPeriod = std::chrono::microseconds(2'500'000);
constexpr auto WatchPeriod = std::chrono::milliseconds(500);
constexpr auto RetryPeriod = std::chrono::milliseconds(2);
constexpr auto ExpiredPeriod = std::chrono::seconds(1);
/// Later a poller has asked again.
constexpr std::int64_t ReplyLifetime = 25'000'000;
/// A change of what we offer is told everyone at most so often.
constexpr std::int64_t AnnouncePeriod = 1'000'000'000;
/// Our addresses are read again before a new sender counts, at most so often.
constexpr std::int64_t OwnAddressesAge = 10'000'000;
/// A flood must not keep the I/O thread from the sends for long.
constexpr std::size_t DatagramsPerWakeUp = 256;
/// In a flood the I/O thread rests so long between its reads: at 100,000 datagrams a second 50 come
/// in meanwhile, a third of what the smallest buffer of a stock system holds. What we send waits
/// too, far less than a tick.
constexpr auto FloodRest = std::chrono::microseconds(500);

} // namespace

ArtNetServer::ArtNetServer(boost::asio::io_service& ioService, std::mutex& serviceMutex,
                           Settings settings)
    : settings_(std::move(settings))
    , mutex(serviceMutex)
    , socket(ioService, settings_.interfaceAddress, settings_.reuseAddress)
    , watchTimer_(ioService)
    , pollTimer(ioService)
    , ioService_(ioService)
    , sender_([this](std::span<const Platform::Datagram> batch) { return SendAndCount(batch); })
    , spreadTimer_(ioService)
    , retryTimer_(ioService)
{}

ArtNetServer::~ArtNetServer() = default;

// ---- The socket --------------------------------------------------------------------------------

void ArtNetServer::MendSocket()
{
    const std::lock_guard lock(socketMutex_);
    Mend();
}

void ArtNetServer::Mend()
{
    if (stopped)
        return;
    const bool wasBound = socket.IsBound();
    for (const ArtNetSocket::Listener& listener : socket.Mend())
        WaitForDatagrams(listener);
    portError_ = socket.Failure().value();
    if (started_ && !wasBound && socket.IsBound())
        ZEN_LOG_INFO("Port %d is open again%s%s", ArtNetPackets::Port,
                     settings_.interfaceAddress.empty() ? "" : " on ",
                     settings_.interfaceAddress.c_str());
}

void ArtNetServer::Start()
{
    {
        const std::lock_guard lock(socketMutex_);
        Mend();
        started_ = true;
        SchedulePoll();
    }
    boost::asio::post(ioService_, [self = shared_from_this()] { self->Watch(); });
}

void ArtNetServer::Stop()
{
    stopped = true;
    const std::lock_guard lock(socketMutex_);
    boost::system::error_code ignored;
    pollTimer.cancel(ignored);
    watchTimer_.cancel(ignored);
    socket.Close();
}

void ArtNetServer::Watch()
{
    if (stopped)
        return;
    {
        const std::lock_guard lock(socketMutex_);
        Mend();
    }
    ReadOwnAddresses();
    LogConflicts();
    Announce();
    ScheduleWatch();
}

void ArtNetServer::LogConflicts()
{
    std::vector<ArtNetSourceConflict> conflicts;
    {
        const std::lock_guard lock(mutex);
        conflicts = dmxIn.Conflicts(Platform::MonotonicNanoseconds());
    }
    for (const std::string& line : conflictLog_.Take(conflicts))
        ZEN_LOG_INFO("%s", line.c_str());
}

void ArtNetServer::ScheduleWatch()
{
    const std::lock_guard lock(socketMutex_);
    if (stopped)
        return;
    watchTimer_.expires_after(WatchPeriod);
    watchTimer_.async_wait([self = shared_from_this()](const boost::system::error_code& failure) {
        if (failure != boost::asio::error::operation_aborted)
            self->Watch();
    });
}

// ---- What clients set --------------------------------------------------------------------------

void ArtNetServer::SetPollTargets(const std::vector<std::string>& targets)
{
    std::vector<std::uint32_t> addresses;
    for (const std::string& target : targets) {
        if (const auto address = Platform::ParseIPv4(target))
            addresses.push_back(*address);
        else
            ZEN_LOG_ERROR("exception: %s is no address to poll", target.c_str());
    }
    const std::lock_guard lock(socketMutex_);
    pollTargets = std::move(addresses);
    SchedulePoll();
}

void ArtNetServer::SetNodeIdentity(std::uint8_t netValue, std::uint8_t subNetValue,
                                   std::span<const std::uint8_t> universes)
{
    constexpr std::size_t ports = 4;
    net = netValue;
    subNet = subNetValue;
    universes = universes.first(std::min(universes.size(), ports));
    outputUniverses.assign(universes.begin(), universes.end());
}

void ArtNetServer::FeedNodes(std::span<const ArtNetNodeInfo> fed)
{
    for (const ArtNetNodeInfo& node : fed)
        nodes.Feed(node);
    nodes.Age();
}

// ---- Receiving, on the I/O thread --------------------------------------------------------------

void ArtNetServer::WaitForDatagrams(const ArtNetSocket::Listener& listener)
{
    listener->async_wait(
        boost::asio::socket_base::wait_read,
        [self = shared_from_this(), listener](const boost::system::error_code& failure) {
            if (self->stopped || failure == boost::asio::error::operation_aborted)
                return;
            if (failure)
                self->LogError(failure);
            if (self->flood_.IsFlood(self->Drain(*listener), Platform::MonotonicNanoseconds()))
                std::this_thread::sleep_for(FloodRest);
            const std::lock_guard lock(self->socketMutex_);
            if (!self->stopped && listener->is_open())
                self->WaitForDatagrams(listener);
        });
}

std::size_t ArtNetServer::Drain(boost::asio::ip::udp::socket& listener)
{
    std::size_t taken = 0;
    while (taken < DatagramsPerWakeUp && !stopped) {
        std::error_code failure;
        std::span<const Platform::ReceivedDatagram> batch;
        {
            const std::lock_guard lock(socketMutex_);
            if (!listener.is_open())
                break;
            batch = reader_.Read(listener.native_handle(), failure);
        }
        if (failure && !stopped)
            LogError(failure);
        for (const Platform::ReceivedDatagram& datagram : batch)
            HandlePacket(datagram);
        taken += batch.size();
        // Datagrams that have come in since cause another wake-up.
        if (batch.size() < Platform::DatagramReader::MaxCount)
            break;
    }
    SendFurtherPages();
    return taken;
}

void ArtNetServer::ReadOwnAddresses()
{
    const std::lock_guard lock(socketMutex_);
    ownAddresses_ = socket.OwnAddresses();
    ownAddressesRead_ = Platform::MonotonicNanoseconds();
}

bool ArtNetServer::IsOwn(const Platform::ReceivedDatagram& datagram) const
{
    // The port counts too: another program on this machine may send from the same address.
    return datagram.port == ArtNetPackets::Port &&
           std::ranges::find(ownAddresses_, datagram.address) != ownAddresses_.end();
}

void ArtNetServer::HandlePacket(const Platform::ReceivedDatagram& datagram)
{
    using ArtNetPackets::Kind;
    const Kind kind = ArtNetPackets::Classify(datagram.bytes);
    // Our own broadcasts come back to us. Such a packet is no sign of life of the network, and what
    // we send must not be merged into what we send next.
    if (kind == Kind::Other || IsOwn(datagram))
        return;
    if (kind == Kind::Dmx)
        HandleDmx(datagram);
    if (kind == Kind::Poll)
        HandlePoll(datagram.address, datagram.port);
    if (kind != Kind::PollReply)
        return;
    if (const auto reply = ArtNetPackets::ReadPollReply(datagram.bytes, datagram.address)) {
        const std::lock_guard lock(mutex);
        lastReceiveTime = Platform::MonotonicNanoseconds();
        nodes.Hear(*reply);
    }
}

void ArtNetServer::HandleDmx(const Platform::ReceivedDatagram& datagram)
{
    using Verdict = ArtNetInputs::Verdict;
    const auto dmx = ArtNetPackets::ReadDmx(datagram.bytes);
    if (!dmx)
        return;
    const auto take = [&](std::int64_t now, bool known) {
        const std::lock_guard lock(mutex);
        const Verdict verdict = dmxIn.Take(*dmx, datagram.address, now, known);
        if (verdict == Verdict::Taken) {
            lastReceiveTime = now;
            ++taken_;
        }
        return verdict;
    };
    const std::int64_t now = Platform::MonotonicNanoseconds();
    const bool fresh = now - ownAddressesRead_ < OwnAddressesAge;
    if (take(now, fresh || datagram.port != ArtNetPackets::Port) != Verdict::Unheard)
        return;
    // Our own broadcast, from an address that we have got since, must not count as a console.
    ReadOwnAddresses();
    if (!IsOwn(datagram))
        take(now, true);
}

void ArtNetServer::HandlePoll(std::uint32_t poller, std::uint16_t port)
{
    const std::int64_t now = Platform::MonotonicNanoseconds();
    {
        const std::lock_guard lock(mutex);
        lastReceiveTime = now;
    }
    if (replyLimit_.Allow(poller, now))
        SendReplies(poller, port);
}

void ArtNetServer::SendReplies(std::uint32_t address, std::uint16_t port)
{
    // Looked up for each answer, of which there are few: an address that is kept gets wrong.
    const std::uint32_t ownAddress = AddressTowards(address);
    {
        const std::lock_guard lock(mutex);
        WriteReplies(ownAddress);
    }
    const Platform::Datagram first{address, port, replies_.front()};
    SendNow({&first, 1});
    // What is sent to a poller that doesn't exist waits in the system for three seconds, charged to
    // us. One page of each poll may do so.
    for (const auto& reply : std::span(replies_).subspan(1)) {
        ArtNetOutbox::Packet& packet = furtherPages_.emplace_back();
        std::ranges::copy(reply, packet.bytes.begin());
        packet.size = reply.size();
        packet.address = address;
        packet.port = port;
        packet.expires = Platform::MonotonicNanoseconds() + ReplyLifetime;
    }
}

void ArtNetServer::SendFurtherPages()
{
    if (furtherPages_.empty())
        return;
    SendWaiting();
    sender_.Send(furtherPages_);
    furtherPages_.clear();
    RetrySoon();
}

void ArtNetServer::WriteReplies(std::uint32_t ownAddress)
{
    ArtNetPackets::Identity identity{.shortName = settings_.shortName,
                                     .nodeReport = settings_.nodeReport,
                                     .net = net,
                                     .subNet = subNet,
                                     .outputs = outputUniverses,
                                     .address = ownAddress};
    // A console that unicasts sends to those who offer a universe as their output.
    const auto pages = dmxIn.Offered(Platform::MonotonicNanoseconds());
    replies_.resize(std::max<std::size_t>(pages.size(), 1));
    if (pages.empty())
        ArtNetPackets::WritePollReply(replies_.front(), identity);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        identity.net = pages[i].net;
        identity.subNet = pages[i].subNet;
        identity.outputs = std::span(pages[i].outputs).first(pages[i].count);
        identity.bindIndex = static_cast<std::uint8_t>(i + 1);
        identity.dataComesIn = pages[i].dataComesIn;
        ArtNetPackets::WritePollReply(replies_[i], identity);
    }
}

void ArtNetServer::Announce()
{
    const std::int64_t now = Platform::MonotonicNanoseconds();
    if (now - announcedTime_ < AnnouncePeriod)
        return;
    std::vector<ArtNetInputs::Page> offer;
    {
        const std::lock_guard lock(mutex);
        offer = dmxIn.Offered(now);
    }
    // Data that comes and goes is no reason to bother every node: a poll asks for it.
    for (ArtNetInputs::Page& page : offer)
        page.dataComesIn = 0;
    if (offer == announced_)
        return;
    std::vector<std::uint32_t> targets;
    {
        const std::lock_guard lock(socketMutex_);
        if (!socket.IsBound())
            return;
        targets = pollTargets;
        if (targets.empty())
            targets = socket.Broadcasts();
    }
    std::ranges::sort(targets);
    targets.erase(std::unique(targets.begin(), targets.end()), targets.end());
    announced_ = std::move(offer);
    announcedTime_ = now;
    for (const std::uint32_t target : targets)
        SendReplies(target, ArtNetPackets::Port);
    SendFurtherPages();
}

std::uint32_t ArtNetServer::AddressTowards(std::uint32_t peer)
{
    const std::lock_guard lock(socketMutex_);
    return socket.AddressTowards(peer);
}

// ---- Polling -----------------------------------------------------------------------------------

void ArtNetServer::SchedulePoll()
{
    const std::uint64_t serial = ++pollSerial_;
    boost::system::error_code ignored;
    pollTimer.cancel(ignored);
    if (pollTargets.empty() || stopped)
        return;
    pollTimer.expires_after(PollPeriod);
    pollTimer.async_wait(
        [self = shared_from_this(), serial](const boost::system::error_code& failure) {
            if (failure != boost::asio::error::operation_aborted && !self->stopped)
                self->PollTick(serial);
        });
}

void ArtNetServer::PollTick(std::uint64_t serial)
{
    std::vector<Platform::Datagram> polls;
    {
        const std::lock_guard lock(socketMutex_);
        if (serial != pollSerial_)
            return;
        for (const std::uint32_t target : pollTargets)
            polls.push_back({target, ArtNetPackets::Port, ArtNetPackets::Poll()});
    }
    ArtNetNodeTable::Snapshot old; // a long list is freed without the mutex
    {
        const std::lock_guard lock(mutex);
        old = nodes.Published();
        nodes.Age();
    }
    KeepError(SendNow(polls).lastError);
    const std::lock_guard lock(socketMutex_);
    if (serial == pollSerial_)
        SchedulePoll();
}

// ---- Sending -----------------------------------------------------------------------------------

void ArtNetServer::SendDmx(std::uint32_t address, std::uint16_t portAddress,
                           std::span<const std::uint8_t> channels)
{
    if (outbox_.Add(address, portAddress, channels))
        CallFlush();
}

void ArtNetServer::EndFrame(std::uint32_t syncAddress)
{
    if (syncAddress != 0)
        static_cast<void>(outbox_.AddSync(syncAddress)); // EndFrame says whether to call
    if (outbox_.EndFrame())
        CallFlush();
}

void ArtNetServer::CallFlush()
{
    boost::asio::post(ioService_, FlushHandler{&flushStorage_, [self = shared_from_this()] {
                                                   self->FlushOutbox();
                                               }});
}

void ArtNetServer::SendWaiting()
{
    {
        const std::lock_guard lock(socketMutex_);
        if (std::exchange(senderSerial_, socket.Serial()) != socket.Serial())
            sender_.UseAdapter(socket.Adapter(), socket.InterfaceValue());
    }
    sender_.SendWaiting();
}

void ArtNetServer::FlushOutbox()
{
    SendWaiting();
    outbox_.Flush([this](ArtNetSpread::Packets packets) {
        spread_.Add(packets, Platform::MonotonicNanoseconds(),
                    [this](ArtNetSpread::Packets group) { sender_.Send(group); });
    });
    SendNextGroup();
    RetrySoon();
    TellExpired();
}

/// Sends the next group of the frame, if there is one, when its time has come.
void ArtNetServer::SendNextGroup()
{
    if (!spread_.HasMore())
        return;
    spreadTimer_.expires_at(
        std::chrono::steady_clock::time_point(std::chrono::nanoseconds(spread_.NextDue())));
    spreadTimer_.async_wait([self = shared_from_this()](const boost::system::error_code& failure) {
        if (failure == boost::asio::error::operation_aborted || self->stopped)
            return;
        self->SendWaiting();
        self->spread_.SendGroup(
            [&self](ArtNetSpread::Packets group) { self->sender_.Send(group); });
        self->SendNextGroup();
        self->RetrySoon();
    });
}

/// Counts frames alone: the answers to polls that the sender hands over, too, are no output.
Platform::SendOutcome ArtNetServer::SendAndCount(std::span<const Platform::Datagram> batch)
{
    const auto isAnswer = [](const Platform::Datagram& datagram) {
        return ArtNetPackets::Classify(datagram.bytes) == ArtNetPackets::Kind::PollReply;
    };
    Platform::SendOutcome whole;
    while (!batch.empty() && whole.untried == 0) {
        const bool answers = isAnswer(batch.front());
        const auto end = std::ranges::find(batch, !answers, isAnswer);
        const auto run = batch.first(static_cast<std::size_t>(end - batch.begin()));
        batch = batch.subspan(run.size());
        const auto outcome = SendNow(run);
        if (!answers) {
            sent_ += outcome.sent;
            failed_ += run.size() - outcome.sent - outcome.untried;
            KeepError(outcome.lastError);
        }
        whole.sent += outcome.sent;
        whole.untried = outcome.untried > 0 ? outcome.untried + batch.size() : 0;
        if (outcome.lastError)
            whole.lastError = outcome.lastError;
    }
    return whole;
}

ArtNetTraffic ArtNetServer::GetTraffic() const
{
    return {.taken = taken_,
            .sent = sent_,
            .failed = failed_,
            .late = late_,
            .sendError = lastSendError,
            .sendErrorTime = lastSendErrorTime,
            .portError = {portError_, std::generic_category()}};
}

void ArtNetServer::TellExpired()
{
    const std::uint64_t expired = sender_.Expired();
    late_ = expired;
    const std::int64_t now = Platform::MonotonicNanoseconds();
    if (expired == expiredTold_ ||
        now - expiredTime_ < std::chrono::nanoseconds(ExpiredPeriod).count())
        return;
    ZEN_LOG_ERROR("%llu packets could not leave in time and were not sent",
                  static_cast<unsigned long long>(expired - expiredTold_));
    expiredTold_ = expired;
    expiredTime_ = now;
}

/// What waits, if anything does, is tried again in a moment.
void ArtNetServer::RetrySoon()
{
    if (stopped || !sender_.HasWaiting())
        return;
    retryTimer_.expires_after(RetryPeriod);
    retryTimer_.async_wait([self = shared_from_this()](const boost::system::error_code& failure) {
        if (failure == boost::asio::error::operation_aborted)
            return;
        self->SendWaiting();
        self->RetrySoon();
    });
}

Platform::SendOutcome ArtNetServer::SendNow(std::span<const Platform::Datagram> batch)
{
    if (batch.empty())
        return {};
    Platform::SendOutcome outcome;
    {
        const std::lock_guard lock(socketMutex_);
        if (stopped)
            return {};
        outcome = socket.Send(batch);
    }
    if (outcome.untried > 0)
        outcome.lastError.clear(); // a full buffer is no fault
    if (outcome.lastError)
        LogError(outcome.lastError);
    return outcome;
}

void ArtNetServer::KeepError(const std::error_code& error)
{
    if (!error)
        return;
    const std::lock_guard lock(mutex);
    lastSendError = error;
    lastSendErrorTime = Platform::MonotonicNanoseconds();
}

void ArtNetServer::LogError(const std::error_code& error)
{
    // "Refused" means that another program is not running: no fault of the network.
    if (error == std::errc::connection_refused)
        return;
    if (errorLimit_.Allow(error, Platform::MonotonicNanoseconds()))
        ZEN_LOG_ERROR("%s", error.message().c_str());
}

} // namespace Zen
