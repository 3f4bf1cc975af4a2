// SPDX-License-Identifier: MIT
#include "LEDEngine/ControlPacket.h"

#include <algorithm>

namespace {

constexpr std::size_t SubKeyOffset = 15;
constexpr std::size_t ShortestPacket = 10;

/// Marks our triggers among those of other makers: the letters PW on the wire. No receiver checks
/// it.
constexpr std::uint16_t MakerCode = 0x5750;

// clang-format off
constexpr std::array<std::uint8_t, 15> Head = {
    'A', 'r', 't', '-', 'N', 'e', 't', 0,
    0x00, 0x99, // OpCode ArtTrigger, low byte first
    0x00, 14,   // protocol version, high byte first
    MakerCode & 0xFF, MakerCode >> 8, 1}; // low byte first, then the Key
// clang-format on

} // namespace

ControlPacket::ControlPacket(ControlMessage message)
{
    std::ranges::copy(Head, bytes_.begin());
    SetMessage(message);
}

void ControlPacket::SetMessage(ControlMessage message)
{
    bytes_[SubKeyOffset] = static_cast<std::uint8_t>(message);
}

void ControlPacket::PutByte(std::size_t offset, std::uint8_t value)
{
    if (offset < DataSize)
        bytes_[DataOffset + offset] = value;
}

void ControlPacket::Put16(std::size_t offset, std::uint16_t value)
{
    PutByte(offset, static_cast<std::uint8_t>(value & 0xFFU));
    PutByte(offset + 1, static_cast<std::uint8_t>(value >> 8U));
}

void ControlPacket::Put32(std::size_t offset, std::uint32_t value)
{
    Put16(offset, static_cast<std::uint16_t>(value & 0xFFFFU));
    Put16(offset + 2, static_cast<std::uint16_t>(value >> 16U));
}

void ControlPacket::PutText(std::size_t offset, std::size_t fieldSize, std::string_view text)
{
    for (std::size_t i = 0; i < fieldSize; ++i)
        PutByte(offset + i, i < text.size() ? static_cast<std::uint8_t>(text[i]) : std::uint8_t{0});
}

void ControlPacket::PutBytes(std::size_t offset, std::span<const std::uint8_t> bytes)
{
    const std::size_t room = DataSize - std::min(offset, DataSize);
    std::copy_n(bytes.begin(), std::min(bytes.size(), room),
                bytes_.begin() + static_cast<std::ptrdiff_t>(DataOffset + offset));
}

ReceivedControlPacket::ReceivedControlPacket(std::span<const std::uint8_t> datagram)
    : datagram_(datagram.first(std::min(datagram.size(), ControlPacket::Size)))
{}

bool ReceivedControlPacket::IsControlPacket() const
{
    return datagram_.size() >= ShortestPacket &&
           std::equal(Head.begin(), Head.begin() + ShortestPacket, datagram_.begin());
}

ControlMessage ReceivedControlPacket::Message() const
{
    return static_cast<ControlMessage>(datagram_.size() > SubKeyOffset ? datagram_[SubKeyOffset]
                                                                       : std::uint8_t{0});
}

std::uint8_t ReceivedControlPacket::Byte(std::size_t offset) const
{
    const std::size_t at = ControlPacket::DataOffset + offset;
    return at < datagram_.size() ? datagram_[at] : std::uint8_t{0};
}

std::uint16_t ReceivedControlPacket::Get16(std::size_t offset) const
{
    return static_cast<std::uint16_t>(Byte(offset) | Byte(offset + 1) << 8);
}

std::uint32_t ReceivedControlPacket::Get32(std::size_t offset) const
{
    return Get16(offset) | static_cast<std::uint32_t>(Get16(offset + 2)) << 16U;
}

std::string_view ReceivedControlPacket::Text(std::size_t offset, std::size_t fieldSize) const
{
    const std::size_t begin = std::min(ControlPacket::DataOffset + offset, datagram_.size());
    const auto field = datagram_.subspan(begin, std::min(fieldSize, datagram_.size() - begin));
    const auto end = std::ranges::find(field, std::uint8_t{0});
    return {reinterpret_cast<const char*>(field.data()),
            static_cast<std::size_t>(end - field.begin())};
}
