// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetSocket.h"

#include "ArtNet/ArtNetPackets.h"
#include "Log/Log.h"
#include "Platform/Adapters.h"
#include "Platform/Datagrams.h"
#include "Platform/IPv4.h"

namespace Zen {

namespace {

/// A console may send 256 universes back to back; the default buffer holds 166. A slow cable takes
/// a frame of as many as slowly. The system caps both where it must.
constexpr int BufferSize = 4 * 1024 * 1024;

} // namespace

ArtNetSocket::ArtNetSocket(boost::asio::io_service& ioService, std::string interfaceAddress,
                           bool reuseAddress)
    : interfaceAddress_(std::move(interfaceAddress))
    , interfaceValue_(Platform::ParseIPv4(interfaceAddress_).value_or(0))
    , reuseAddress_(reuseAddress)
    , socket_(ioService)
{}

void ArtNetSocket::Open()
{
    ++serial_;
    adapter_.clear();
    if (!OpenUnbound()) {
        status_ = ArtNetServerStatus::OpenFailed;
        return;
    }
    const std::error_code failure = Bind();
    status_ = failure ? ArtNetServerStatus::BindFailed : ArtNetServerStatus::Ready;
    if (failure && failure != bindError_)
        ZEN_LOG_INFO("failed to bind socket: %s", failure.message().c_str());
    bindError_ = failure;
}

void ArtNetSocket::Close()
{
    boost::system::error_code ignored;
    socket_.shutdown(boost::asio::socket_base::shutdown_both, ignored);
    socket_.close(ignored);
}

bool ArtNetSocket::OpenUnbound()
{
    boost::system::error_code failure;
    socket_.close(failure);
    socket_.open(Udp::v4(), failure);
    if (failure) {
        if (bindError_ != failure)
            ZEN_LOG_ERROR("%s", failure.message().c_str());
        bindError_ = failure;
        return false;
    }
    socket_.set_option(boost::asio::socket_base::broadcast(true));
    socket_.set_option(boost::asio::socket_base::reuse_address(reuseAddress_));
    socket_.non_blocking(true);
    socket_.set_option(boost::asio::socket_base::receive_buffer_size(BufferSize), failure);
    socket_.set_option(boost::asio::socket_base::send_buffer_size(BufferSize), failure);
    return true;
}

std::error_code ArtNetSocket::BindTo(const std::string& address)
{
    boost::system::error_code failure;
    socket_.bind({boost::asio::ip::make_address_v4(address), ArtNetPackets::Port}, failure);
    return failure;
}

std::error_code ArtNetSocket::Bind()
{
    const std::string allInterfaces = "0.0.0.0";
    if (interfaceAddress_.empty())
        return BindTo(allInterfaces);
    if (interfaceValue_ == 0)
        return std::make_error_code(std::errc::address_not_available);
    const std::string adapter = Platform::AdapterNameFor(interfaceValue_);
    if (interfaceAddress_.starts_with("127.") || adapter.empty())
        return BindTo(interfaceAddress_);

    // A socket on the interface's own address would hear no broadcast, and nodes and consoles
    // broadcast. One that is tied to the adapter hears both.
    std::error_code failure = Platform::BindToAdapter(socket_.native_handle(), adapter);
    if (!failure)
        failure = BindTo(allInterfaces);
    if (!failure) {
        adapterError_.clear();
        adapter_ = adapter;
        adapterIndex_ = Platform::AdapterIndexOf(adapter);
        return {};
    }
    if (!OpenUnbound())
        return failure;
    const std::error_code plainFailure = BindTo(interfaceAddress_);
    if (!plainFailure && adapterError_ != failure)
        ZEN_LOG_INFO("No socket of our own on adapter %s: %s. Listening to unicast at %s only",
                     adapter.c_str(), failure.message().c_str(), interfaceAddress_.c_str());
    adapterError_ = plainFailure ? std::error_code() : failure;
    return plainFailure;
}

bool ArtNetSocket::IsSound() const
{
    if (status_ != ArtNetServerStatus::Ready)
        return false;
    if (adapter_.empty())
        return true;
    // An adapter that was removed and comes back has the name of the one that the socket is tied
    // to, and is another one. Where only the address has changed the socket still works.
    const std::string adapter = Platform::AdapterNameFor(interfaceValue_);
    return (adapter.empty() || adapter == adapter_) &&
           Platform::AdapterIndexOf(adapter_) == adapterIndex_;
}

bool ArtNetSocket::HearsOneAddress() const
{
    return adapter_.empty() && !interfaceAddress_.empty();
}

std::uint32_t ArtNetSocket::AddressTowards(std::uint32_t peer) const
{
    return HearsOneAddress() ? interfaceValue_ : Platform::AddressTowards(peer, adapter_);
}

std::vector<std::uint32_t> ArtNetSocket::OwnAddresses() const
{
    // Another program can hold the port at another address of this machine.
    auto addresses =
        HearsOneAddress() ? std::vector<std::uint32_t>{} : Platform::AddressesOf(adapter_);
    addresses.push_back(interfaceValue_);
    if (interfaceAddress_.empty()) // and what it sends to another program on this machine
        addresses.push_back(0x7F000001);
    return addresses;
}

std::vector<std::uint32_t> ArtNetSocket::Broadcasts() const
{
    std::vector<std::uint32_t> broadcasts;
    for (const NetworkInterface& interface : Platform::GetNetworkInterfaces()) {
        if (interface.ipValue == interfaceValue_)
            broadcasts.push_back(interface.broadcastValue);
    }
    return broadcasts;
}

int ArtNetSocket::Handle()
{
    return socket_.is_open() ? socket_.native_handle() : -1;
}

} // namespace Zen
