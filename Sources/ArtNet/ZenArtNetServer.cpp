// SPDX-License-Identifier: MIT
#include "ArtNet/ZenArtNetServer.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "Log/Log.h"
#include "Platform/Adapters.h"
#include "Platform/Clock.h"
#include "Platform/IPv4.h"

namespace Zen {

namespace {

constexpr auto PollPeriod = std::chrono::microseconds(2'500'000);
constexpr auto WatchPeriod = std::chrono::milliseconds(500);
constexpr auto RetryPeriod = std::chrono::milliseconds(2);
/// A console may send 256 universes back to back; the default buffer holds 166. A slow cable takes
/// a frame of as many as slowly. The system caps both where it must.
constexpr int SocketBufferSize = 4 * 1024 * 1024;
/// A flood must not keep the I/O thread from the sends for long.
constexpr std::size_t DatagramsPerWakeUp = 256;
/// In a flood the datagrams wait for each other so long: at 100,000 a second 50 of them, a third of
/// what the smallest buffer of a stock system holds. What we send waits too, far less than a tick.
constexpr auto FloodRest = std::chrono::microseconds(500);

} // namespace

ArtNetServer::ArtNetServer(boost::asio::io_service& ioService, std::mutex& serviceMutex,
                           Settings settings)
    : settings_(std::move(settings))
    , interfaceValue_(Platform::ParseIPv4(settings_.interfaceAddress).value_or(0))
    , mutex(serviceMutex)
    , socket(ioService)
    , watchTimer_(ioService)
    , pollTimer(ioService)
    , ioService_(ioService)
    , sender_([this](std::span<const Platform::Datagram> batch) {
        const auto outcome = SendNow(batch);
        KeepError(outcome.lastError);
        return outcome;
    })
    , retryTimer_(ioService)
{
    OpenAndBind();
}

ArtNetServer::~ArtNetServer() = default;

// ---- The socket --------------------------------------------------------------------------------

bool ArtNetServer::Open()
{
    boost::system::error_code failure;
    socket.close(failure);
    socket.open(Udp::v4(), failure);
    if (failure) {
        if (bindError_ != failure)
            ZEN_LOG_ERROR("%s", failure.message().c_str());
        bindError_ = failure;
        return false;
    }
    socket.set_option(boost::asio::socket_base::broadcast(true));
    socket.set_option(boost::asio::socket_base::reuse_address(settings_.reuseAddress));
    socket.non_blocking(true);
    socket.set_option(boost::asio::socket_base::receive_buffer_size(SocketBufferSize), failure);
    socket.set_option(boost::asio::socket_base::send_buffer_size(SocketBufferSize), failure);
    return true;
}

std::error_code ArtNetServer::BindTo(const std::string& address)
{
    boost::system::error_code failure;
    socket.bind({boost::asio::ip::make_address_v4(address), ArtNetPackets::Port}, failure);
    return failure;
}

std::error_code ArtNetServer::Bind()
{
    const std::string everywhere = "0.0.0.0";
    const std::string& wanted = settings_.interfaceAddress;
    adapter_.clear();
    if (wanted.empty())
        return BindTo(everywhere);
    if (interfaceValue_ == 0)
        return std::make_error_code(std::errc::address_not_available);
    const std::string adapter = Platform::AdapterNameFor(interfaceValue_);
    if (wanted.starts_with("127.") || adapter.empty())
        return BindTo(wanted);

    // A socket on the interface's own address would hear no broadcast, and nodes and consoles
    // broadcast. One that is tied to the adapter hears both.
    std::error_code failure = Platform::BindToAdapter(socket.native_handle(), adapter);
    if (!failure)
        failure = BindTo(everywhere);
    if (!failure) {
        adapterError_.clear();
        adapter_ = adapter;
        adapterIndex_ = Platform::AdapterIndexOf(adapter);
        return {};
    }
    if (!Open())
        return failure;
    const std::error_code plainFailure = BindTo(wanted);
    if (!plainFailure && adapterError_ != failure)
        ZEN_LOG_INFO("No socket of our own on adapter %s: %s. Listening to unicast at %s only",
                     adapter.c_str(), failure.message().c_str(), wanted.c_str());
    adapterError_ = plainFailure ? std::error_code() : failure;
    return plainFailure;
}

void ArtNetServer::OpenAndBind()
{
    ++socketSerial_;
    adapter_.clear();
    if (!Open()) {
        status = ArtNetServerStatus::OpenFailed;
        return;
    }
    const std::error_code failure = Bind();
    status = failure ? ArtNetServerStatus::BindFailed : ArtNetServerStatus::Ready;
    // The same failure again is no news.
    if (failure && failure != bindError_)
        ZEN_LOG_INFO("failed to bind socket: %s", failure.message().c_str());
    bindError_ = failure;
}

bool ArtNetServer::Stands() const
{
    if (status != ArtNetServerStatus::Ready)
        return false;
    if (adapter_.empty())
        return true;
    // An adapter that was removed and came back has the name of the one that the socket is tied to,
    // and is another one. An address alone may change: the socket goes on.
    const std::string adapter = Platform::AdapterNameFor(interfaceValue_);
    return (adapter.empty() || adapter == adapter_) &&
           Platform::AdapterIndexOf(adapter_) == adapterIndex_;
}

void ArtNetServer::MendSocket()
{
    const std::lock_guard lock(socketMutex_);
    if (!Stands() || adapterError_)
        Reopen();
}

void ArtNetServer::Reopen()
{
    if (stopped)
        return;
    OpenAndBind();
    if (status != ArtNetServerStatus::Ready || !started_)
        return;
    if (!adapterError_)
        ZEN_LOG_INFO("Port %d is open again%s%s", ArtNetPackets::Port,
                     settings_.interfaceAddress.empty() ? "" : " on ",
                     settings_.interfaceAddress.c_str());
    WaitForDatagrams();
}

void ArtNetServer::Start()
{
    {
        const std::lock_guard lock(socketMutex_);
        started_ = true;
        SchedulePoll();
        if (status == ArtNetServerStatus::Ready)
            WaitForDatagrams();
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
    socket.shutdown(boost::asio::socket_base::shutdown_both, ignored);
    socket.close(ignored);
}

void ArtNetServer::Watch()
{
    if (stopped)
        return;
    {
        const std::lock_guard lock(socketMutex_);
        if (!Stands())
            Reopen();
        // What our socket may send from. Another program can hold the port at another address.
        const bool plain = adapter_.empty() && !settings_.interfaceAddress.empty();
        ownAddresses_ = plain ? std::vector<std::uint32_t>{} : Platform::AddressesOf(adapter_);
        ownAddresses_.push_back(interfaceValue_);
    }
    ScheduleWatch();
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
        nodes.Hear(node);
    nodes.Age();
}

const ArtNetServer::Universe* ArtNetServer::FindUniverse(std::int32_t portAddress) const
{
    const auto found = dmxIn.find(portAddress);
    return found == dmxIn.end() ? nullptr : &found->second;
}

// ---- Receiving, on the I/O thread --------------------------------------------------------------

void ArtNetServer::WaitForDatagrams()
{
    const std::uint64_t serial = socketSerial_;
    socket.async_wait(Udp::socket::wait_read, [self = shared_from_this(),
                                               serial](const boost::system::error_code& failure) {
        if (self->stopped || failure == boost::asio::error::operation_aborted)
            return;
        if (failure)
            self->LogError(failure);
        if (self->flood_.IsFlood(self->Drain(), Platform::MonotonicNanoseconds()))
            std::this_thread::sleep_for(FloodRest);
        const std::lock_guard lock(self->socketMutex_);
        if (!self->stopped && serial == self->socketSerial_)
            self->WaitForDatagrams();
    });
}

std::size_t ArtNetServer::Drain()
{
    std::size_t taken = 0;
    while (taken < DatagramsPerWakeUp && !stopped) {
        std::error_code failure;
        std::span<const Platform::ReceivedDatagram> batch;
        {
            const std::lock_guard lock(socketMutex_);
            if (!socket.is_open())
                break;
            batch = reader_.Read(socket.native_handle(), failure);
        }
        if (failure && !stopped)
            LogError(failure);
        for (const Platform::ReceivedDatagram& datagram : batch)
            HandlePacket(datagram);
        taken += batch.size();
        // What came in since wakes us again.
        if (batch.size() < Platform::DatagramReader::MaxCount)
            break;
    }
    return taken;
}

bool ArtNetServer::IsOwn(const Platform::ReceivedDatagram& datagram) const
{
    // The port too: another program on this machine is no part of us.
    return datagram.port == ArtNetPackets::Port &&
           std::ranges::find(ownAddresses_, datagram.address) != ownAddresses_.end();
}

void ArtNetServer::HandlePacket(const Platform::ReceivedDatagram& datagram)
{
    using ArtNetPackets::Kind;
    const Kind kind = ArtNetPackets::Classify(datagram.bytes);
    // Our own broadcasts come back to us. They are no sign of life of the network, and what we send
    // must not be merged into what we send next.
    if (kind == Kind::Other || IsOwn(datagram))
        return;
    if (kind == Kind::Dmx)
        HandleDmx(datagram.bytes);
    if (kind == Kind::Poll)
        HandlePoll(datagram.address, datagram.port);
    if (kind != Kind::PollReply)
        return;
    if (const auto node = ArtNetPackets::ReadPollReply(datagram.bytes, datagram.address)) {
        const std::lock_guard lock(mutex);
        lastReceiveTime = Platform::MonotonicNanoseconds();
        nodes.Hear(*node);
    }
}

void ArtNetServer::HandleDmx(std::span<const std::byte> datagram)
{
    const auto dmx = ArtNetPackets::ReadDmx(datagram);
    if (!dmx)
        return;
    const std::lock_guard lock(mutex);
    const auto universe = dmxIn.find(dmx->portAddress);
    if (universe == dmxIn.end())
        return;
    Universe& channels = universe->second;
    const auto rest = std::transform(dmx->channels.begin(), dmx->channels.end(), channels.begin(),
                                     [](std::byte b) { return std::to_integer<std::uint8_t>(b); });
    std::fill(rest, channels.end(), std::uint8_t{0});
    lastReceiveTime = Platform::MonotonicNanoseconds();
}

void ArtNetServer::HandlePoll(std::uint32_t poller, std::uint16_t port)
{
    const std::int64_t now = Platform::MonotonicNanoseconds();
    std::array<std::byte, ArtNetPackets::PollReplySize> reply{};
    {
        const std::lock_guard lock(mutex);
        lastReceiveTime = now;
        if (!replyLimit_.Allow(poller, now))
            return;
        // A server on all interfaces does not know its address towards this poller; the poller
        // reads it from the datagram anyway.
        ArtNetPackets::WritePollReply(reply,
                                      {.shortName = settings_.shortName,
                                       .nodeReport = settings_.nodeReport,
                                       .net = net,
                                       .subNet = subNet,
                                       .outputs = outputUniverses,
                                       .address = interfaceValue_ ? interfaceValue_ : poller});
    }
    const Platform::Datagram datagram{poller, port, reply};
    SendNow({&datagram, 1});
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
    ArtNetNodeTable::Snapshot old; // a long list is freed while nobody waits
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
    if (!outbox_.Add(address, portAddress, channels))
        return;
    boost::asio::post(ioService_, FlushHandler{&flushStorage_, [self = shared_from_this()] {
                                                   self->FlushOutbox();
                                               }});
}

void ArtNetServer::FlushOutbox()
{
    {
        const std::lock_guard lock(socketMutex_);
        if (std::exchange(senderSerial_, socketSerial_) != socketSerial_)
            sender_.UseAdapter(adapter_);
    }
    sender_.SendWaiting();
    outbox_.Flush([this](std::span<const ArtNetOutbox::Packet> packets) { sender_.Send(packets); });
    if (sender_.HasWaiting())
        RetrySoon();
}

void ArtNetServer::RetrySoon()
{
    if (stopped)
        return;
    retryTimer_.expires_after(RetryPeriod);
    retryTimer_.async_wait([self = shared_from_this()](const boost::system::error_code& failure) {
        if (failure == boost::asio::error::operation_aborted)
            return;
        self->sender_.SendWaiting();
        if (self->sender_.HasWaiting())
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
        outcome = Platform::SendDatagrams(socket.is_open() ? socket.native_handle() : -1, batch);
    }
    if (outcome.untried > 0)
        outcome.lastError.clear(); // no room at the moment is no fault
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
    // Refused means that somebody's program is not running: no fault of the network.
    if (error == std::errc::connection_refused)
        return;
    if (errorLimit_.Allow(error, Platform::MonotonicNanoseconds()))
        ZEN_LOG_ERROR("%s", error.message().c_str());
}

} // namespace Zen
