// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include <boost/asio.hpp>

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include "Platform/Datagrams.h"

namespace Zen {

/// The UDP sockets of one server on the Art-Net port. On an interface there is one for each address
/// that packets come to: the interface's own, by which we send too, and the broadcast addresses.
/// All are tied to the adapter that has the interface, so that nothing is heard or sent by another
/// one; without such an adapter there are none. No lock of its own: its owner guards every call,
/// but those for the interface, which never changes.
class ArtNetSocket
{
public:
    using Listener = std::shared_ptr<boost::asio::ip::udp::socket>;

    /// `interfaceAddress` is dotted, or empty for all interfaces. Opens nothing yet.
    ArtNetSocket(boost::asio::io_service& ioService, std::string interfaceAddress,
                 bool reuseAddress);

    /// Closes what belongs to an adapter that is gone or is another one now, and opens what is
    /// missing; what works is left alone. Gives the sockets that are new, for their owner to wait
    /// on until they close. A failure is logged once, however often it repeats.
    std::vector<Listener> Mend();
    void Close();

    /// Whether we have the Art-Net port. While another program has it, we send from another port
    /// and hear nothing.
    [[nodiscard]] bool IsBound() const { return bound_; }
    /// Why we don't have it; none while we do.
    [[nodiscard]] const std::error_code& Failure() const { return failure_; }
    /// Never waits. A tied socket can't send to this machine's own loopback address: that has a
    /// socket of its own.
    Platform::SendOutcome Send(std::span<const Platform::Datagram> batch);

    /// The first octet in the top byte; 0 for all interfaces.
    [[nodiscard]] std::uint32_t InterfaceValue() const { return interfaceValue_; }
    /// The name of the adapter that the sockets are tied to, empty for none.
    [[nodiscard]] const std::string& Adapter() const { return adapter_.name; }
    /// Grows when the adapter changes, and is never 0.
    [[nodiscard]] std::uint64_t Serial() const { return serial_; }
    /// The addresses that our own packets can come from, as they are now.
    [[nodiscard]] std::vector<std::uint32_t> OwnAddresses() const;
    /// The address that this peer reaches us at, as it is now. 0 when there is no way to it.
    [[nodiscard]] std::uint32_t AddressTowards(std::uint32_t peer) const;
    /// The broadcast address of its interface, as it is now; none for all interfaces.
    [[nodiscard]] std::vector<std::uint32_t> Broadcasts() const;

private:
    struct TiedAdapter
    {
        std::string name;
        unsigned index = 0;
        std::uint32_t broadcast = 0;

        bool operator==(const TiedAdapter&) const = default;
    };
    struct BroadcastListener
    {
        Listener socket;
        std::error_code failure;
    };

    void FollowAdapter();
    void OpenMain(std::vector<Listener>& opened);
    void OpenLoopback();
    void OpenBroadcast(std::vector<Listener>& opened);
    std::error_code OpenAt(std::uint32_t address, std::uint16_t port, bool share, Listener& opened);
    void NoteFailure(const std::error_code& failure);

    boost::asio::io_service& ioService_;
    std::string interfaceAddress_;
    std::uint32_t interfaceValue_ = 0;
    bool reuseAddress_ = false;
    bool isTied_ = false; ///< to an adapter: neither loopback nor all interfaces

    TiedAdapter adapter_;
    std::uint64_t serial_ = 1;
    Listener main_;
    bool bound_ = false;
    std::error_code failure_; ///< why main_ doesn't have the port
    std::array<BroadcastListener, 2> broadcast_;
    Listener loopback_;
};

} // namespace Zen
