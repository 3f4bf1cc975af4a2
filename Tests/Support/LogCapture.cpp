// SPDX-License-Identifier: MIT
#include "Support/LogCapture.h"

#include <algorithm>
#include <fstream>

#include "Log/Log.h"

namespace Support {

LogCapture::LogCapture()
{
    Zen::Log::SetGlobal(std::make_shared<Zen::Log>(folder_.Path() / "capture.txt"));
    Clear();
}

LogCapture::~LogCapture()
{
    Zen::Log::SetGlobal(nullptr);
}

std::vector<std::string> LogCapture::Messages() const
{
    if (const auto log = Zen::Log::Global())
        log->Flush();
    std::vector<std::string> messages;
    std::ifstream file(folder_.Path() / "capture.txt");
    for (std::string line; std::getline(file, line);) {
        // [time T:thread][source:line] message
        const auto source = line.find("][");
        const auto end = source == std::string::npos ? source : line.find("] ", source + 2);
        if (end == std::string::npos) {
            if (!messages.empty())
                messages.back() += '\n' + line;
        } else {
            messages.push_back(line.substr(end + 2));
        }
    }
    messages.erase(messages.begin(), messages.begin() + static_cast<std::ptrdiff_t>(
                                                            std::min(skip_, messages.size())));
    return messages;
}

int LogCapture::Count(const std::string& message) const
{
    return static_cast<int>(std::ranges::count(Messages(), message));
}

void LogCapture::Clear()
{
    skip_ += Messages().size();
}

} // namespace Support
