// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetSocket.h"

#include <algorithm>

#include "ArtNet/ArtNetPackets.h"
#include "Log/Log.h"
#include "Platform/Adapters.h"
#include "Platform/IPv4.h"

namespace Zen {

namespace {

using Udp = boost::asio::ip::udp;

/// A console may send 256 universes back to back; the default buffer holds 166. A slow cable takes
/// a frame of as many as slowly. The system caps both where it must.
constexpr int BufferSize = 4 * 1024 * 1024;

constexpr std::uint32_t Loopback = 0x7F000001;
constexpr std::uint32_t LimitedBroadcast = 0xFFFFFFFF;
constexpr std::uint16_t AnyPort = 0;

} // namespace

ArtNetSocket::ArtNetSocket(boost::asio::io_service& ioService, std::string interfaceAddress,
                           bool reuseAddress)
    : ioService_(ioService)
    , interfaceAddress_(std::move(interfaceAddress))
    , interfaceValue_(Platform::ParseIPv4(interfaceAddress_).value_or(0))
    , reuseAddress_(reuseAddress)
    , isTied_(!interfaceAddress_.empty() && !Platform::IsLoopback(interfaceValue_))
{}

std::vector<ArtNetSocket::Listener> ArtNetSocket::Mend()
{
    std::vector<Listener> opened;
    if (isTied_)
        FollowAdapter();
    if (isTied_ && adapter_.name.empty()) {
        NoteFailure(std::make_error_code(std::errc::address_not_available));
        return opened;
    }
    if (!bound_)
        OpenMain(opened);
    if (bound_ && isTied_)
        OpenBroadcast(opened);
    if (isTied_ && !loopback_)
        OpenLoopback();
    return opened;
}

void ArtNetSocket::FollowAdapter()
{
    const auto interfaces = Platform::GetNetworkInterfaces();
    if (!interfaces)
        return;
    const auto found = std::ranges::find(*interfaces, interfaceValue_, &NetworkInterface::ipValue);
    // An adapter that was removed and comes back has the same name, and is another one.
    const TiedAdapter now =
        found == interfaces->end()
            ? TiedAdapter()
            : TiedAdapter{found->adapter, found->adapterIndex, found->broadcastValue};
    if (now == adapter_)
        return;
    Close();
    adapter_ = now;
    ++serial_;
}

void ArtNetSocket::Close()
{
    const auto close = [](Listener& socket) {
        if (!socket)
            return;
        boost::system::error_code ignored;
        socket->shutdown(boost::asio::socket_base::shutdown_both, ignored);
        socket->close(ignored);
        socket.reset();
    };
    close(main_);
    for (BroadcastListener& listener : broadcast_)
        close(listener.socket);
    close(loopback_);
    bound_ = false;
}

std::error_code ArtNetSocket::OpenAt(std::uint32_t address, std::uint16_t port, bool share,
                                     Listener& opened)
{
    boost::system::error_code failure;
    auto socket = std::make_shared<Udp::socket>(ioService_);
    socket->open(Udp::v4(), failure);
    if (failure)
        return failure;
    socket->set_option(boost::asio::socket_base::broadcast(true));
    socket->set_option(boost::asio::socket_base::reuse_address(share));
    socket->non_blocking(true);
    socket->set_option(boost::asio::socket_base::receive_buffer_size(BufferSize), failure);
    socket->set_option(boost::asio::socket_base::send_buffer_size(BufferSize), failure);
    // Where the system refuses this, the address alone must keep the socket to its adapter.
    if (isTied_)
        (void)Platform::BindToAdapter(socket->native_handle(), adapter_.name);
    // Our own broadcasts come back; reading them costs a tenth of sending them (measured). Where
    // the system refuses this, they are ignored when they have been read.
    if (isTied_)
        (void)Platform::IgnoreSender(socket->native_handle(), interfaceValue_, ArtNetPackets::Port);
    socket->bind({boost::asio::ip::address_v4(address), port}, failure);
    if (!failure)
        opened = std::move(socket);
    return failure;
}

void ArtNetSocket::OpenMain(std::vector<Listener>& opened)
{
    Listener fresh;
    const std::error_code failure =
        OpenAt(interfaceValue_, ArtNetPackets::Port, reuseAddress_, fresh);
    NoteFailure(failure);
    bound_ = !failure;
    if (bound_) {
        // A program that shares the port with others, as visualisers do, can start after us. What
        // comes to our address stays ours, unless it is bound to the very same one.
        if (isTied_)
            fresh->set_option(boost::asio::socket_base::reuse_address(true));
        main_ = fresh;
        opened.push_back(main_);
    } else if (!main_) {
        // That it is sent matters more than the port that it is sent from.
        (void)OpenAt(interfaceValue_, AnyPort, false, main_);
    }
}

void ArtNetSocket::OpenBroadcast(std::vector<Listener>& opened)
{
    // Each on its own address: a socket on all addresses would keep a visualiser on this machine
    // from its port on 127.0.0.1, and be kept from ours by one that was there first.
    const std::array addresses{adapter_.broadcast, LimitedBroadcast};
    for (std::size_t i = 0; i < addresses.size(); ++i) {
        BroadcastListener& listener = broadcast_[i];
        if (listener.socket || addresses[i] == interfaceValue_)
            continue;
        // Every socket of an address hears what is broadcast to it, so sharing takes from nobody.
        const std::error_code failure =
            OpenAt(addresses[i], ArtNetPackets::Port, true, listener.socket);
        if (!failure)
            opened.push_back(listener.socket);
        else if (failure != listener.failure)
            ZEN_LOG_INFO("Not listening to broadcasts to %s on adapter %s: %s",
                         Platform::FormatIPv4(addresses[i]).c_str(), adapter_.name.c_str(),
                         failure.message().c_str());
        listener.failure = failure;
    }
}

void ArtNetSocket::OpenLoopback()
{
    auto socket = std::make_shared<Udp::socket>(ioService_);
    boost::system::error_code failure;
    socket->open(Udp::v4(), failure);
    if (failure)
        return;
    // Nothing that comes back is read.
    constexpr int smallest = 0;
    socket->set_option(boost::asio::socket_base::receive_buffer_size(smallest), failure);
    loopback_ = std::move(socket);
}

void ArtNetSocket::NoteFailure(const std::error_code& failure)
{
    if (failure && failure != failure_)
        ZEN_LOG_INFO("failed to bind socket: %s", failure.message().c_str());
    failure_ = failure;
}

Platform::SendOutcome ArtNetSocket::Send(std::span<const Platform::Datagram> batch)
{
    if (!main_)
        return {.sent = 0, .untried = 0, .lastError = failure_};
    const auto socketFor = [this](const Platform::Datagram& datagram) {
        return loopback_ && Platform::IsLoopback(datagram.address) ? loopback_.get() : main_.get();
    };
    Platform::SendOutcome outcome;
    while (!batch.empty() && outcome.untried == 0) {
        auto* const socket = socketFor(batch.front());
        const auto end = std::ranges::find_if(batch, [&](const Platform::Datagram& datagram) {
            return socketFor(datagram) != socket;
        });
        const auto run = batch.first(static_cast<std::size_t>(end - batch.begin()));
        batch = batch.subspan(run.size());
        const auto part = Platform::SendDatagrams(socket->native_handle(), run);
        outcome.sent += part.sent;
        outcome.untried = part.untried > 0 ? part.untried + batch.size() : 0;
        if (part.lastError)
            outcome.lastError = part.lastError;
    }
    return outcome;
}

std::uint32_t ArtNetSocket::AddressTowards(std::uint32_t peer) const
{
    return interfaceAddress_.empty() ? Platform::AddressTowards(peer) : interfaceValue_;
}

std::vector<std::uint32_t> ArtNetSocket::Broadcasts() const
{
    return adapter_.name.empty() ? std::vector<std::uint32_t>{}
                                 : std::vector<std::uint32_t>{adapter_.broadcast};
}

std::vector<std::uint32_t> ArtNetSocket::OwnAddresses() const
{
    // Another program can hold the port at another address of this machine.
    if (!interfaceAddress_.empty())
        return {interfaceValue_};
    std::vector<std::uint32_t> addresses{Loopback};
    for (const NetworkInterface& record :
         Platform::GetNetworkInterfaces().value_or(std::vector<NetworkInterface>()))
        addresses.push_back(record.ipValue);
    return addresses;
}

} // namespace Zen
