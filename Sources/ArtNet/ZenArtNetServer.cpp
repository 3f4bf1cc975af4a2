// SPDX-License-Identifier: MIT
#include "ArtNet/ZenArtNetServer.h"

#include <algorithm>
#include <chrono>
#include <new>

#include "Log/Log.h"
#include "Platform/Adapters.h"
#include "Platform/Clock.h"
#include "Platform/IPv4.h"

namespace Zen {

namespace {

constexpr auto PollPeriod = std::chrono::microseconds(2'500'000);
/// A console may send 256 universes back to back; the default buffer holds 166.
constexpr int ReceiveBufferSize = 4 * 1024 * 1024;
/// A flood must not keep the I/O thread from the sends for long.
constexpr int DatagramsPerWakeUp = 256;
constexpr std::int64_t ErrorLogInterval = 1'000'000'000;

bool IsRefused(const std::error_code& error)
{
    return error == std::errc::connection_refused;
}

/// The handler that empties the outbox, with memory of its own.
template <typename T>
struct FlushAllocator
{
    using value_type = T;
    FlushStorage* storage;

    explicit FlushAllocator(FlushStorage* memory)
        : storage(memory)
    {}
    template <typename U>
    explicit FlushAllocator(const FlushAllocator<U>& other)
        : storage(other.storage)
    {}
    T* allocate(std::size_t count) { return static_cast<T*>(storage->Take(count * sizeof(T))); }
    void deallocate(T* memory, std::size_t) { storage->GiveBack(memory); }
    template <typename U>
    bool operator==(const FlushAllocator<U>& other) const
    {
        return storage == other.storage;
    }
};

template <typename Function>
struct FlushHandler
{
    using allocator_type = FlushAllocator<void*>;
    FlushStorage* storage;
    Function function;

    [[nodiscard]] allocator_type get_allocator() const { return allocator_type(storage); }
    void operator()() { function(); }
};

template <typename Function>
FlushHandler(FlushStorage*, Function) -> FlushHandler<Function>;

} // namespace

void* FlushStorage::Take(std::size_t size)
{
    if (taken_ || size > memory_.size())
        return ::operator new(size);
    taken_ = true;
    return memory_.data();
}

void FlushStorage::GiveBack(void* memory) noexcept
{
    if (memory == memory_.data())
        taken_ = false;
    else
        ::operator delete(memory);
}

ArtNetServer::ArtNetServer(boost::asio::io_service& ioService, std::mutex& serviceMutex,
                           Settings settings)
    : settings_(std::move(settings))
    , interfaceValue_(Platform::ParseIPv4(settings_.interfaceAddress).value_or(0))
    , mutex(serviceMutex)
    , socket(ioService)
    , pollTimer(ioService)
    , ioService_(ioService)
{
    if (!Open())
        return;
    const std::error_code failure = Bind();
    status = failure ? ArtNetServerStatus::BindFailed : ArtNetServerStatus::Ready;
    if (failure)
        ZEN_LOG_INFO("failed to bind socket: %s", failure.message().c_str());
}

ArtNetServer::~ArtNetServer() = default;

bool ArtNetServer::Open()
{
    boost::system::error_code failure;
    socket.close(failure);
    socket.open(Udp::v4(), failure);
    if (failure) {
        ZEN_LOG_ERROR("%s", failure.message().c_str());
        return false;
    }
    socket.set_option(boost::asio::socket_base::broadcast(true));
    socket.non_blocking(true);
    // The system caps the buffer where it must; a smaller one only loses more of a burst.
    socket.set_option(boost::asio::socket_base::receive_buffer_size(ReceiveBufferSize), failure);
    return true;
}

std::error_code ArtNetServer::BindTo(const std::string& address, bool share)
{
    boost::system::error_code failure;
    socket.set_option(boost::asio::socket_base::reuse_address(share));
    socket.bind({boost::asio::ip::make_address_v4(address), ArtNetPackets::Port}, failure);
    return failure;
}

std::error_code ArtNetServer::Bind()
{
    const std::string everywhere = "0.0.0.0";
    const std::string& wanted = settings_.interfaceAddress;
    if (wanted.empty())
        return BindTo(everywhere, settings_.reuseAddress);
    if (interfaceValue_ == 0)
        return std::make_error_code(std::errc::address_not_available);
    const std::string adapter = Platform::AdapterNameOf(interfaceValue_);
    if (wanted.starts_with("127.") || adapter.empty())
        return BindTo(wanted, settings_.reuseAddress);

    // A socket on the interface's own address would hear no broadcast, and nodes and consoles
    // broadcast. One that is tied to the adapter hears both.
    std::error_code failure = Platform::BindToAdapter(socket.native_handle(), adapter);
    if (!failure)
        failure = BindTo(everywhere, settings_.reuseAddress);
    if (!failure || !Open())
        return failure;
    ZEN_LOG_INFO("No socket of our own on adapter %s: %s. Listening to unicast at %s only",
                 adapter.c_str(), failure.message().c_str(), wanted.c_str());
    return BindTo(wanted, settings_.reuseAddress);
}

void ArtNetServer::Start()
{
    const std::lock_guard lock(socketMutex_);
    SchedulePoll();
    if (status == ArtNetServerStatus::Ready)
        WaitForDatagrams();
}

void ArtNetServer::Stop()
{
    stopped = true;
    const std::lock_guard lock(socketMutex_);
    boost::system::error_code ignored;
    pollTimer.cancel(ignored);
    socket.shutdown(boost::asio::socket_base::shutdown_both, ignored);
    socket.close(ignored);
}

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
    socket.async_wait(Udp::socket::wait_read,
                      [self = shared_from_this()](const boost::system::error_code& failure) {
                          if (self->stopped)
                              return;
                          if (failure)
                              ZEN_LOG_ERROR("%s", failure.message().c_str());
                          self->Drain();
                          const std::lock_guard lock(self->socketMutex_);
                          if (!self->stopped)
                              self->WaitForDatagrams();
                      });
}

void ArtNetServer::Drain()
{
    for (int i = 0; i < DatagramsPerWakeUp && !stopped; ++i) {
        Udp::endpoint sender;
        boost::system::error_code failure;
        std::size_t size = 0;
        {
            const std::lock_guard lock(socketMutex_);
            size = socket.receive_from(boost::asio::buffer(receiveBuffer), sender, 0, failure);
        }
        if (failure == boost::asio::error::would_block)
            return;
        if (!failure)
            HandlePacket(std::span<const std::byte>(receiveBuffer).first(size), sender);
        else if (!stopped)
            LogSendError(failure);
    }
}

void ArtNetServer::HandlePacket(std::span<const std::byte> datagram, const Udp::endpoint& sender)
{
    using ArtNetPackets::Kind;
    const std::uint32_t source = sender.address().to_v4().to_uint();
    switch (ArtNetPackets::Classify(datagram)) {
    case Kind::Dmx:
        HandleDmx(datagram);
        break;
    case Kind::Poll: {
        // Our own broadcast comes back to us; it is no sign of life of the network.
        if (source == interfaceValue_ && sender.port() == ArtNetPackets::Port)
            break;
        {
            const std::lock_guard lock(mutex);
            lastReceiveTime = Platform::MonotonicNanoseconds();
        }
        SendPollReply(sender);
        break;
    }
    case Kind::PollReply:
        if (const auto node = ArtNetPackets::ReadPollReply(datagram, source)) {
            const std::lock_guard lock(mutex);
            lastReceiveTime = Platform::MonotonicNanoseconds();
            nodes.Hear(*node);
        }
        break;
    case Kind::Other:
        break;
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

void ArtNetServer::SendPollReply(const Udp::endpoint& poller)
{
    if (stopped)
        return;
    const std::uint32_t target = poller.address().to_v4().to_uint();
    std::array<std::byte, ArtNetPackets::PollReplySize> reply{};
    {
        const std::lock_guard lock(mutex);
        // A server on all interfaces does not know its address towards this poller; the poller
        // reads it from the datagram anyway.
        ArtNetPackets::WritePollReply(reply,
                                      {.shortName = settings_.shortName,
                                       .nodeReport = settings_.nodeReport,
                                       .net = net,
                                       .subNet = subNet,
                                       .outputs = outputUniverses,
                                       .address = interfaceValue_ ? interfaceValue_ : target});
    }
    const Platform::Datagram datagram{target, poller.port(), reply};
    SendNow({&datagram, 1}, false);
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
    {
        const std::lock_guard lock(mutex);
        nodes.Age();
    }
    SendNow(polls, true);
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
    outbox_.Flush([this](std::span<const Platform::Datagram> batch) { SendNow(batch, true); });
}

void ArtNetServer::SendNow(std::span<const Platform::Datagram> batch, bool keepError)
{
    Platform::SendOutcome outcome;
    {
        const std::lock_guard lock(socketMutex_);
        if (stopped)
            return;
        outcome = Platform::SendDatagrams(socket.is_open() ? socket.native_handle() : -1, batch);
    }
    if (!outcome.lastError)
        return;
    LogSendError(outcome.lastError);
    if (!keepError)
        return;
    const std::lock_guard lock(mutex);
    lastSendError = outcome.lastError;
    lastSendErrorTime = Platform::MonotonicNanoseconds();
}

void ArtNetServer::LogSendError(const std::error_code& error)
{
    const std::int64_t now = Platform::MonotonicNanoseconds();
    // A cable that is out fails every send; once a second says enough.
    const bool repeated = error == loggedError_ && now - loggedErrorTime_ < ErrorLogInterval;
    if (IsRefused(error) || repeated)
        return;
    loggedError_ = error;
    loggedErrorTime_ = now;
    ZEN_LOG_ERROR("%s", error.message().c_str());
}

} // namespace Zen
