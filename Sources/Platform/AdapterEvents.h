// SPDX-License-Identifier: MIT
#pragma once

namespace Platform {

/// The system's word that an adapter, its cable or one of its addresses came, went or changed. What
/// it is now, GetNetworkInterfaces tells.
class AdapterEvents
{
public:
    AdapterEvents();
    ~AdapterEvents();
    AdapterEvents(const AdapterEvents&) = delete;
    AdapterEvents& operator=(const AdapterEvents&) = delete;

    /// A descriptor that can be read when something has changed; -1 where the system refuses.
    [[nodiscard]] int Handle() const { return handle_; }
    /// Takes what has been said so far. Never waits.
    void Clear();

private:
    int handle_ = -1;
};

} // namespace Platform
