// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// The meaning of a message of the control channel. The number is its SubKey.
enum class ControlMessage : std::uint8_t
{
    Poll = 0x11,
    PollAnswer = 0x12,
    Stop = 0x21, ///< we send the DMX: the host is to stop
    StopDone = 0x22,
    Start = 0x31, ///< the host is to send the DMX by itself
    StartDone = 0x32,
    Reload = 0x41, ///< the mapping file was saved
    ReloadDone = 0x42,
    Universes = 0x51,
    InputSettings = 0x52,
    NodesWanted = 0x61,
    Node = 0x62,
    InputWanted = 0x71,
    InputPiece = 0x72,
    Universe = 0x81,
    UniverseBegin = 0x82,
    UniverseEnd = 0x83,
    Rebind = 0x91,
    RebindDone = 0x92,
    Register = 0xA1,
    RegisterDone = 0xA2
};

/// One packet of the control channel: an ArtTrigger header and always 512 bytes of data. Offsets
/// count from the beginning of the data, numbers have their low byte first. A text is padded with
/// zeros to the size of its field, cut to that size, and has no terminator when it fills the field.
/// What would lie behind the data is not written.
class ControlPacket
{
public:
    static constexpr std::size_t DataOffset = 16;
    static constexpr std::size_t DataSize = 512;
    static constexpr std::size_t Size = DataOffset + DataSize;

    explicit ControlPacket(ControlMessage message);

    void SetMessage(ControlMessage message);
    void Put16(std::size_t offset, std::uint16_t value);
    void Put32(std::size_t offset, std::uint32_t value);
    void PutText(std::size_t offset, std::size_t fieldSize, std::string_view text);
    void PutBytes(std::size_t offset, std::span<const std::uint8_t> bytes);

    [[nodiscard]] std::span<const std::byte> Bytes() const
    {
        return std::as_bytes(std::span(bytes_));
    }

private:
    void PutByte(std::size_t offset, std::uint8_t value);

    std::array<std::uint8_t, Size> bytes_{};
};

/// A received packet of any length. What lies behind its end reads as zeros.
class ReceivedControlPacket
{
public:
    /// `datagram` outlives this object.
    explicit ReceivedControlPacket(std::span<const std::uint8_t> datagram);

    /// Whether ID and OpCode are those of the channel; the rest of the header is not checked.
    [[nodiscard]] bool IsControlPacket() const;
    [[nodiscard]] ControlMessage Message() const;

    // Offsets count from the beginning of the data.
    [[nodiscard]] std::uint8_t Byte(std::size_t offset) const;
    [[nodiscard]] std::uint16_t Get16(std::size_t offset) const;
    [[nodiscard]] std::uint32_t Get32(std::size_t offset) const;
    /// Up to the first zero byte of the field.
    [[nodiscard]] std::string_view Text(std::size_t offset, std::size_t fieldSize) const;

private:
    std::span<const std::uint8_t> datagram_;
};
