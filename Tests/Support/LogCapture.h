// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Support/TemporaryFolder.h"

namespace Support {

/// While it lives, the process's log is written to a file of its own, whose messages a test can
/// read.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// The messages so far, without time, thread, source and line.
    [[nodiscard]] std::vector<std::string> Messages() const;
    /// How many messages are exactly this text.
    [[nodiscard]] int Count(const std::string& message) const;
    [[nodiscard]] bool Has(const std::string& message) const { return Count(message) > 0; }
    /// Forgets the messages so far.
    void Clear();

private:
    TemporaryFolder folder_;
    std::size_t skip_ = 0;
};

} // namespace Support
