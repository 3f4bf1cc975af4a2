// SPDX-License-Identifier: MIT
#include "ArtNet/ZenArtNetService.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gsl/narrow>

#include "ArtNet/ZenArtNetServer.h"
#include "Log/Log.h"
#include "Platform/Clock.h"
#include "Platform/IPv4.h"

namespace Zen {

namespace {

constexpr std::size_t AddressLength = 16;
constexpr std::size_t NameLength = 48;
constexpr std::size_t PageSize = 512;

std::mutex globalMutex;
std::shared_ptr<ArtNetService> globalService;

struct ClientRecord
{
    std::string name; ///< for display only
    std::string interfaceAddress;
    std::string pollTarget;
    std::uint32_t id = 0;
    std::uint32_t firstUniverse = 0;
    std::int32_t universeCount = 0;
    bool offered = false;
    int serverIndex = -1;
};

using ServerList = std::vector<std::shared_ptr<ArtNetServer>>;

/// Takes the server of this interface out of the list, null when there is none.
std::shared_ptr<ArtNetServer> TakeServer(ServerList& servers, const std::string& interfaceAddress)
{
    const auto found = std::ranges::find_if(
        servers, [&](const auto& server) { return server->GetInterface() == interfaceAddress; });
    if (found == servers.end())
        return nullptr;
    auto server = *found;
    servers.erase(found);
    return server;
}

void AddUniverses(ArtNetServer& server, const ClientRecord& client)
{
    constexpr std::uint32_t portAddresses = 32768;
    for (std::int32_t i = 0; i < client.universeCount; ++i) {
        const std::uint32_t portAddress = client.firstUniverse + static_cast<std::uint32_t>(i);
        if (portAddress < portAddresses)
            server.Inputs().Add(static_cast<std::int32_t>(portAddress), client.offered);
    }
}

} // namespace

struct ArtNetService::Impl
{
    boost::asio::io_service ioService;
    std::optional<boost::asio::io_service::work> work{ioService};
    std::thread thread;

    std::mutex mutex; ///< guards everything below, and is shared with all servers
    ServerList servers;
    std::vector<ClientRecord> clients;
    std::string shortName;
    std::string nodeReport;
    bool reuseAddress = false;
    std::uint32_t nextClientId = 0;
    std::vector<std::uint8_t> outputUniverses;
    std::uint8_t net = 0;
    std::uint8_t subNet = 0;

    void Run()
    {
        try {
            ioService.run();
        } catch (const std::exception& failure) {
            ZEN_LOG_ERROR("%s", failure.what());
        }
    }

    const ClientRecord* ClientOf(std::uint32_t id) const
    {
        const auto client = std::ranges::find(clients, id, &ClientRecord::id);
        return client == clients.end() || client->serverIndex < 0 ? nullptr : &*client;
    }

    ArtNetServer* ServerOf(std::uint32_t id) const
    {
        const ClientRecord* client = ClientOf(id);
        return client ? servers[static_cast<std::size_t>(client->serverIndex)].get() : nullptr;
    }

    /// The targets of all clients, or of those on one interface, in client order.
    std::vector<std::string> PollTargets(const std::string* interfaceAddress) const
    {
        std::vector<std::string> targets;
        for (const ClientRecord& client : clients) {
            const bool counts = !interfaceAddress || client.interfaceAddress == *interfaceAddress;
            if (counts && !client.pollTarget.empty())
                targets.push_back(client.pollTarget);
        }
        return targets;
    }

    std::shared_ptr<ArtNetServer> MakeServer(const std::string& interfaceAddress, bool share)
    {
        auto server = std::make_shared<ArtNetServer>(
            ioService, mutex,
            ArtNetServer::Settings{interfaceAddress, shortName, nodeReport, share});
        server->SetNodeIdentity(net, subNet, outputUniverses);
        return server;
    }

    void RebuildServers()
    {
        ServerList old;
        old.swap(servers);
        for (ClientRecord& client : clients)
            client.serverIndex = -1;
        const bool everywhere = std::ranges::any_of(
            clients, [](const auto& client) { return client.interfaceAddress.empty(); });
        if (!clients.empty() && (everywhere || reuseAddress))
            RebuildForAllInterfaces(old);
        else
            RebuildForEachInterface(old);
        for (const auto& server : old)
            server->Stop();
    }

    void RebuildForEachInterface(ServerList& old)
    {
        // Servers without a client stop first: their socket may block one that is opened now.
        std::erase_if(old, [this](const auto& server) {
            const bool needed = std::ranges::any_of(clients, [&](const ClientRecord& client) {
                return client.interfaceAddress == server->GetInterface();
            });
            if (!needed)
                server->Stop();
            return !needed;
        });
        for (std::size_t i = 0; i < clients.size(); ++i) {
            ClientRecord& client = clients[i];
            const auto earlier =
                std::find_if(clients.begin(), clients.begin() + static_cast<std::ptrdiff_t>(i),
                             [&](const ClientRecord& other) {
                                 return other.interfaceAddress == client.interfaceAddress;
                             });
            client.serverIndex =
                earlier->id != client.id ? earlier->serverIndex : ProvideServer(client, old);
            ArtNetServer& server = *servers[static_cast<std::size_t>(client.serverIndex)];
            AddUniverses(server, client);
        }
    }

    int ProvideServer(const ClientRecord& client, ServerList& old)
    {
        auto server = TakeServer(old, client.interfaceAddress);
        if (server) {
            ZEN_LOG_INFO("Recycling %s server", server->GetInterface().c_str());
            server->Inputs().Clear();
            server->MendSocket();
            server->SetPollTargets(PollTargets(&client.interfaceAddress));
        } else {
            ZEN_LOG_INFO("Creating new %s server", client.interfaceAddress.c_str());
            server = MakeServer(client.interfaceAddress, false);
            server->SetPollTargets(PollTargets(&client.interfaceAddress));
            server->Start();
        }
        servers.push_back(std::move(server));
        return static_cast<int>(servers.size()) - 1;
    }

    void RebuildForAllInterfaces(ServerList& old)
    {
        auto server = TakeServer(old, {});
        if (server) {
            ZEN_LOG_INFO("Recycling ALL server");
            server->Inputs().Clear();
            server->MendSocket();
            server->SetPollTargets(PollTargets(nullptr));
        } else {
            // The port can't be bound for all interfaces while one of them has it.
            for (const auto& closing : old)
                closing->Stop();
            ZEN_LOG_INFO("Creating new ALL server");
            server = MakeServer({}, reuseAddress);
            server->SetPollTargets(PollTargets(nullptr));
            server->Start();
            for (const auto& known : old) {
                ZEN_LOG_INFO("ALL server taking data from %s server",
                             known->GetInterface().c_str());
                server->TakeNodesFrom(*known);
            }
        }
        for (ClientRecord& client : clients) {
            AddUniverses(*server, client);
            client.serverIndex = 0;
        }
        servers.push_back(std::move(server));
    }
};

ArtNetService::ArtNetService(std::string_view shortName, std::string_view nodeReport,
                             bool reuseAddress)
    : impl(std::make_unique<Impl>())
{
    impl->shortName = shortName.substr(0, 18);
    impl->nodeReport = nodeReport.substr(0, 64);
    impl->reuseAddress = reuseAddress;
    impl->thread = std::thread([this] { impl->Run(); });
}

ArtNetService::~ArtNetService()
{
    {
        const std::lock_guard lock(impl->mutex);
        for (const auto& server : impl->servers)
            server->Stop();
        impl->servers.clear();
    }
    impl->work.reset();
    impl->thread.join();
}

std::shared_ptr<ArtNetService> ArtNetService::Global()
{
    const std::lock_guard lock(globalMutex);
    return globalService;
}

void ArtNetService::SetGlobal(std::shared_ptr<ArtNetService> service)
{
    {
        const std::lock_guard lock(globalMutex);
        globalService.swap(service);
    }
    // The old service, now in `service`, ends outside the lock: it joins its thread.
}

std::uint32_t ArtNetService::RegisterClient(std::string_view interfaceAddress,
                                            std::string_view pollTarget,
                                            std::uint32_t firstUniverse, std::int32_t universeCount,
                                            std::string_view name, bool offered)
{
    const std::lock_guard lock(impl->mutex);
    ClientRecord client;
    client.name = name.substr(0, NameLength);
    client.interfaceAddress = interfaceAddress.substr(0, AddressLength);
    client.pollTarget = pollTarget.substr(0, AddressLength);
    client.id = ++impl->nextClientId;
    client.firstUniverse = firstUniverse;
    client.universeCount = universeCount;
    client.offered = offered;
    impl->clients.push_back(std::move(client));
    impl->RebuildServers();
    return impl->nextClientId;
}

void ArtNetService::UnregisterClient(std::uint32_t id)
{
    const std::lock_guard lock(impl->mutex);
    if (impl->clients.empty()) {
        ZEN_LOG_ERROR("Unregistering with no clients present");
        return;
    }
    if (std::erase_if(impl->clients, [id](const auto& client) { return client.id == id; }) > 0)
        impl->RebuildServers();
}

std::uint32_t ArtNetService::GetNodes(std::uint32_t id, ArtNetNodeList& nodes)
{
    ArtNetNodeTable::Snapshot known;
    std::uint32_t generation = 0;
    {
        const std::lock_guard lock(impl->mutex);
        const ArtNetServer* server = impl->ServerOf(id);
        if (!server)
            return 0;
        known = server->GetNodes().Published();
        generation = server->GetNodes().Generation();
    }
    nodes = *known; // it may be long: the I/O thread need not wait for the copy
    return generation;
}

void ArtNetService::GetLastSendError(std::uint32_t id, std::error_code& code, std::int64_t& time)
{
    const std::lock_guard lock(impl->mutex);
    if (const ArtNetServer* server = impl->ServerOf(id)) {
        code = server->GetLastSendError();
        time = server->GetLastSendErrorTime();
    }
}

std::int64_t ArtNetService::GetLastReceiveTime(std::uint32_t id)
{
    const std::lock_guard lock(impl->mutex);
    const ArtNetServer* server = impl->ServerOf(id);
    return server ? server->GetLastReceiveTime() : 0;
}

ArtNetTraffic ArtNetService::GetTraffic(std::uint32_t id)
{
    const std::lock_guard lock(impl->mutex);
    const ClientRecord* client = impl->ClientOf(id);
    if (!client)
        return {};
    ArtNetServer& server = *impl->ServerOf(id);
    ArtNetTraffic traffic = server.GetTraffic();
    traffic.universesIn = server.Inputs().CountComingIn(
        Platform::MonotonicNanoseconds(), static_cast<std::int32_t>(client->firstUniverse),
        client->universeCount);
    return traffic;
}

std::vector<ArtNetSourceConflict> ArtNetService::GetSourceConflicts(std::uint32_t id)
{
    const std::lock_guard lock(impl->mutex);
    const ClientRecord* client = impl->ClientOf(id);
    if (!client)
        return {};
    return impl->ServerOf(id)->Inputs().Conflicts(Platform::MonotonicNanoseconds(),
                                                  static_cast<std::int32_t>(client->firstUniverse),
                                                  client->universeCount);
}

std::vector<ArtNetReceived> ArtNetService::GetReceived(std::uint32_t id)
{
    const std::lock_guard lock(impl->mutex);
    const ClientRecord* client = impl->ClientOf(id);
    if (!client)
        return {};
    return impl->ServerOf(id)->Inputs().ComingIn(Platform::MonotonicNanoseconds(),
                                                 static_cast<std::int32_t>(client->firstUniverse),
                                                 client->universeCount);
}

std::vector<ArtNetOtherSender> ArtNetService::GetOtherSenders(std::uint32_t id)
{
    const std::lock_guard lock(impl->mutex);
    ArtNetServer* server = impl->ServerOf(id);
    if (!server)
        return {};
    return server->Inputs().OtherSenders(Platform::MonotonicNanoseconds());
}

void ArtNetService::ReadDmx(std::uint32_t id, std::int32_t first, std::span<std::uint8_t> pages)
{
    const std::lock_guard lock(impl->mutex);
    ArtNetServer* server = impl->ServerOf(id);
    for (; pages.size() >= PageSize; pages = pages.subspan(PageSize), ++first) {
        const auto* universe = server ? server->Inputs().Find(first) : nullptr;
        if (universe)
            std::ranges::copy(*universe, pages.begin());
        else
            std::ranges::fill(pages.first(PageSize), std::uint8_t{0});
    }
}

void ArtNetService::SendDmx(std::uint32_t id, std::string_view address, std::int32_t portAddress,
                            std::span<const std::uint8_t> channels)
{
    const auto target = Platform::ParseIPv4(address);
    if (!target)
        throw std::invalid_argument("no IPv4 address: " + std::string(address));
    const auto universe = gsl::narrow<std::uint16_t>(portAddress);
    const std::lock_guard lock(impl->mutex);
    if (ArtNetServer* server = impl->ServerOf(id))
        server->SendDmx(*target, universe, channels);
}

void ArtNetService::BeginFrame(std::uint32_t id, std::int64_t lifetime)
{
    const std::lock_guard lock(impl->mutex);
    if (ArtNetServer* server = impl->ServerOf(id))
        server->BeginFrame(lifetime);
}

void ArtNetService::EndFrame(std::uint32_t id, std::string_view syncAddress)
{
    const std::uint32_t address = Platform::ParseIPv4(syncAddress).value_or(0);
    const std::lock_guard lock(impl->mutex);
    if (ArtNetServer* server = impl->ServerOf(id))
        server->EndFrame(address);
}

void ArtNetService::FeedNodes(std::uint32_t id, std::span<const ArtNetNodeInfo> nodes)
{
    const std::lock_guard lock(impl->mutex);
    if (ArtNetServer* server = impl->ServerOf(id))
        server->FeedNodes(nodes);
}

void ArtNetService::SetNodeIdentity(std::uint8_t net, std::uint8_t subNet,
                                    std::span<const std::uint8_t> universes)
{
    const std::lock_guard lock(impl->mutex);
    impl->net = net;
    impl->subNet = subNet;
    impl->outputUniverses.assign(universes.begin(), universes.end());
    for (const auto& server : impl->servers)
        server->SetNodeIdentity(net, subNet, universes);
}

void ArtNetService::RestartServers()
{
    const std::lock_guard lock(impl->mutex);
    for (const auto& server : impl->servers)
        server->Stop();
    impl->servers.clear();
    impl->RebuildServers();
}

} // namespace Zen
