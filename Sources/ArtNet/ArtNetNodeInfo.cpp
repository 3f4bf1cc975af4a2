// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetNodeInfo.h"

#include <algorithm>
#include <cstring>

namespace {

template <std::size_t Size>
std::string_view TextOf(const std::array<char, Size>& field)
{
    return {field.data(), strnlen(field.data(), Size)};
}

template <std::size_t Size>
void Store(std::array<char, Size>& field, std::string_view text)
{
    field.fill('\0');
    std::copy_n(text.begin(), std::min(text.size(), Size), field.begin());
}

} // namespace

std::string_view ArtNetNodeInfo::Name() const
{
    return TextOf(name);
}

std::string_view ArtNetNodeInfo::Ip() const
{
    return TextOf(ip);
}

void ArtNetNodeInfo::SetName(std::string_view text)
{
    Store(name, text);
}

void ArtNetNodeInfo::SetIp(std::string_view text)
{
    Store(ip, text);
}

bool ArtNetNodeInfo::operator==(const ArtNetNodeInfo& other) const
{
    return Name() == other.Name() && Ip() == other.Ip() && universes == other.universes;
}
