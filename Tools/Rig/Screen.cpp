// SPDX-License-Identifier: MIT
#include "Screen.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <string>

namespace Rig {
namespace {

constexpr std::size_t cellCount = (universeSize + 2) / 3;
constexpr std::size_t labelWidth = 36;
constexpr int silentAfter = 20; // periods: two seconds

struct Size
{
    std::size_t columns = 80;
    std::size_t lines = 24;
};

Size TerminalSize()
{
    winsize window{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) != 0 || window.ws_col == 0 || window.ws_row == 0)
        return {};
    return {window.ws_col, window.ws_row};
}

std::string Cells(const std::array<std::uint8_t, universeSize>& channels, std::size_t first,
                  std::size_t last)
{
    const auto level = [&](std::size_t channel) {
        return std::to_string(channel < channels.size() ? channels[channel] : 0);
    };
    std::string text;
    for (std::size_t cell = first; cell < last; ++cell)
        text += "\x1b[48;2;" + level(3 * cell) + ';' + level(3 * cell + 1) + ';' +
                level(3 * cell + 2) + "m ";
    return text + "\x1b[0m";
}

void Put(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

} // namespace

Screen::Screen()
{
    Put("\x1b[?25l\x1b[2J");
}

Screen::~Screen()
{
    Put("\x1b[0m\x1b[?25h\n");
}

void Screen::Take(const Dmx& dmx, const Address& source)
{
    Row& row = rows_[dmx.universe];
    row.channels.fill(0); // a short packet blanks what it does not carry
    std::copy(dmx.channels.begin(), dmx.channels.end(), row.channels.begin());
    row.source = source;
    row.length = dmx.channels.size();
    row.silent = 0;
    ++row.slots[slot_];
}

void Screen::Draw()
{
    const Size size = TerminalSize();
    const std::size_t width = size.columns > labelWidth + 8 ? size.columns - labelWidth : 8;
    const std::size_t wrapped = (cellCount + width - 1) / width;
    // Whole universes while they fit; else their first cells only, so that more universes are seen.
    const std::size_t lines = rows_.size() * wrapped + 2 <= size.lines ? wrapped : 1;

    std::string text = "\x1b[H\x1b[1mUniverse  from              packets/s\x1b[0m\x1b[K\r\n";
    if (rows_.empty())
        text += "No ArtDmx yet.\x1b[K\r\n";
    std::size_t room = size.lines > 2 ? size.lines - 2 : 1;
    for (const auto& [universe, row] : rows_) {
        if (room < lines)
            break;
        room -= lines;
        const int rate = std::accumulate(row.slots.begin(), row.slots.end(), 0);
        std::array<char, 64> label{};
        std::snprintf(label.data(), label.size(), "%8u  %-15s  %6d%s  ", unsigned{universe},
                      ToText(row.source).c_str(), rate, row.silent > silentAfter ? "  -" : "   ");
        for (std::size_t line = 0; line < lines; ++line) {
            std::string left = line == 0 ? std::string(label.data()) : std::string();
            left.resize(labelWidth, ' ');
            text += left +
                    Cells(row.channels, line * width, std::min(cellCount, (line + 1) * width)) +
                    "\x1b[K\r\n";
        }
    }
    Put(text + "\x1b[J");

    slot_ = (slot_ + 1) % 10;
    for (auto& [universe, row] : rows_) {
        row.slots[slot_] = 0;
        ++row.silent;
    }
}

} // namespace Rig
