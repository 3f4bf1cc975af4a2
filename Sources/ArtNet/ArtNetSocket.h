// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include <boost/asio.hpp>

#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

namespace Zen {

/// Outcome of opening a server's socket.
enum class ArtNetServerStatus : std::int32_t
{
    Ready = 0,
    BindFailed = 1,
    OpenFailed = 2
};

/// The UDP socket of one server on the Art-Net port. It is tied to its interface's adapter, so that
/// it hears unicast and broadcast, and can be opened again when adapters or addresses change. No
/// lock of its own: its owner guards every call, but those for the interface, which never changes.
class ArtNetSocket
{
public:
    /// `interfaceAddress` is dotted, or empty for all interfaces. Opens nothing yet.
    ArtNetSocket(boost::asio::io_service& ioService, std::string interfaceAddress,
                 bool reuseAddress);

    /// Opens and binds, and closes what was open. A failure is logged once, however often it
    /// repeats; Status tells it.
    void Open();
    void Close();

    [[nodiscard]] ArtNetServerStatus Status() const { return status_; }
    /// Whether it is bound, to the adapter that has the interface now.
    [[nodiscard]] bool IsSound() const;
    /// Whether another program keeps it from its adapter, so that it hears no broadcast.
    [[nodiscard]] bool HearsUnicastOnly() const { return static_cast<bool>(adapterError_); }

    [[nodiscard]] const std::string& InterfaceAddress() const { return interfaceAddress_; }
    /// The name of the adapter that it is tied to, empty for none.
    [[nodiscard]] const std::string& Adapter() const { return adapter_; }
    /// The addresses that its own packets can come from, as they are now.
    [[nodiscard]] std::vector<std::uint32_t> OwnAddresses() const;

    /// The address that this peer reaches us at, as it is now. 0 when there is no way to it.
    [[nodiscard]] std::uint32_t AddressTowards(std::uint32_t peer) const;

    /// The broadcast address of its interface, as it is now; none for all interfaces.
    [[nodiscard]] std::vector<std::uint32_t> Broadcasts() const;

    /// Grows with each Open.
    [[nodiscard]] std::uint64_t Serial() const { return serial_; }
    /// The system's number for the socket, -1 while it is closed.
    [[nodiscard]] int Handle();

    /// Calls the handler (of an error code) on the I/O thread when a datagram is there to be read.
    template <typename Handler>
    void WaitForDatagrams(Handler handler)
    {
        socket_.async_wait(Udp::socket::wait_read, std::move(handler));
    }

private:
    using Udp = boost::asio::ip::udp;

    [[nodiscard]] bool OpenUnbound();
    [[nodiscard]] std::error_code Bind();
    [[nodiscard]] bool HearsOneAddress() const;
    [[nodiscard]] std::error_code BindTo(const std::string& address);

    std::string interfaceAddress_;
    std::uint32_t interfaceValue_ = 0;
    bool reuseAddress_ = false;
    Udp::socket socket_;
    ArtNetServerStatus status_ = ArtNetServerStatus::OpenFailed;
    std::uint64_t serial_ = 0;
    std::string adapter_;
    unsigned adapterIndex_ = 0; ///< of adapter_, when the socket was tied to it
    std::error_code bindError_;
    std::error_code adapterError_; ///< why the socket is not tied to its adapter
};

} // namespace Zen
