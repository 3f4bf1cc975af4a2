// SPDX-License-Identifier: MIT
#include "ArtNet/ArtNetClient.h"

#include <algorithm>

#include "ArtNet/ZenArtNetService.h"

ArtNetClient::ArtNetClient(std::string_view interfaceAddress, std::string_view pollTarget,
                           std::string_view name)
    : ArtNetClient(interfaceAddress, pollTarget, 0, 0, name)
{}

ArtNetClient::ArtNetClient(std::string_view interfaceAddress, std::string_view pollTarget,
                           std::uint32_t firstUniverse, std::int32_t universeCount,
                           std::string_view name, bool offered)
{
    if (const auto service = Zen::ArtNetService::Global())
        id_ = service->RegisterClient(interfaceAddress, pollTarget, firstUniverse, universeCount,
                                      name, offered);
}

ArtNetClient::~ArtNetClient()
{
    if (const auto service = Zen::ArtNetService::Global())
        service->UnregisterClient(id_);
}

std::uint32_t ArtNetClient::GetNodes(ArtNetNodeList& nodes) const
{
    const auto service = Zen::ArtNetService::Global();
    return service ? service->GetNodes(id_, nodes) : 0;
}

void ArtNetClient::FeedNodes(std::span<const ArtNetNodeInfo> nodes)
{
    if (const auto service = Zen::ArtNetService::Global())
        service->FeedNodes(id_, nodes);
}

ArtNetClient::SendError ArtNetClient::GetLastSendError() const
{
    SendError error;
    if (const auto service = Zen::ArtNetService::Global())
        service->GetLastSendError(id_, error.code, error.time);
    return error;
}

std::int64_t ArtNetClient::GetLastReceiveTime() const
{
    const auto service = Zen::ArtNetService::Global();
    return service ? service->GetLastReceiveTime(id_) : 0;
}

ArtNetTraffic ArtNetClient::GetTraffic() const
{
    const auto service = Zen::ArtNetService::Global();
    return service ? service->GetTraffic(id_) : ArtNetTraffic{};
}

std::vector<ArtNetSourceConflict> ArtNetClient::GetSourceConflicts() const
{
    const auto service = Zen::ArtNetService::Global();
    return service ? service->GetSourceConflicts(id_) : std::vector<ArtNetSourceConflict>{};
}

std::vector<ArtNetReceived> ArtNetClient::GetReceived() const
{
    const auto service = Zen::ArtNetService::Global();
    return service ? service->GetReceived(id_) : std::vector<ArtNetReceived>{};
}

std::vector<ArtNetOtherSender> ArtNetClient::GetOtherSenders() const
{
    const auto service = Zen::ArtNetService::Global();
    return service ? service->GetOtherSenders(id_) : std::vector<ArtNetOtherSender>{};
}

void ArtNetClient::ReadDmx(std::int32_t firstPortAddress, std::span<std::uint8_t> pages) const
{
    if (const auto service = Zen::ArtNetService::Global())
        service->ReadDmx(id_, firstPortAddress, pages);
    else
        std::ranges::fill(pages, std::uint8_t{0});
}

void ArtNetClient::SendDmx(std::string_view address, std::int32_t portAddress,
                           std::span<const std::uint8_t> channels)
{
    if (const auto service = Zen::ArtNetService::Global())
        service->SendDmx(id_, address, portAddress, channels);
}

void ArtNetClient::BeginFrame(std::int64_t lifetime)
{
    if (const auto service = Zen::ArtNetService::Global())
        service->BeginFrame(id_, lifetime);
}

void ArtNetClient::EndFrame(std::string_view syncAddress)
{
    if (const auto service = Zen::ArtNetService::Global())
        service->EndFrame(id_, syncAddress);
}
