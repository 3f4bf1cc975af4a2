// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Platform {

/// The claim of one process to be the only one of its name (at most 107 bytes of it count) on this
/// machine, in this network namespace, for as long as the object lives. The kernel frees the name
/// with the process, however that ends, so a claim is never stale. Other starts can leave messages
/// for the process that has it.
class SingleInstance
{
public:
    /// A longer message is not sent.
    static constexpr std::size_t MaxMessage = 65'536;

    explicit SingleInstance(std::string_view name);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    /// Whether no other process has the name. True as well where the system refuses the socket
    /// behind it: a program that runs twice is better than one that never starts.
    [[nodiscard]] bool IsFirst() const { return isFirst_; }

    /// Leaves a message for the process that has the name, which reads it when it can. Never waits.
    /// False when the system doesn't take it: too many wait already.
    bool LeaveMessage(std::string_view message) const;

    /// A descriptor that can be read when a message waits; -1 where there is none.
    [[nodiscard]] int Handle() const { return isFirst_ ? socket_ : -1; }
    struct Message
    {
        std::string bytes;
        bool isOfThisUser = false; ///< as the kernel says
        bool isWhole = false;
    };
    /// The next message that waits; nothing when none does. Never waits.
    [[nodiscard]] std::optional<Message> TakeMessage() const;

private:
    std::string name_;
    int socket_ = -1;
    bool isFirst_ = true;
};

} // namespace Platform
