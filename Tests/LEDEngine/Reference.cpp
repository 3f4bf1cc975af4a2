// SPDX-License-Identifier: MIT
#include "Reference.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>

namespace Reference {

namespace {

struct Vector
{
    float x = 0;
    float y = 0;
};

Vector Turned(Vector v, float degrees)
{
    const double angle = static_cast<double>(degrees) * (3.14159265358979323846 / 180.0);
    const auto cosine = static_cast<float>(std::cos(angle));
    const auto sine = static_cast<float>(std::sin(angle));
    const float x1 = v.x * cosine;
    const float x2 = v.y * sine;
    const float y1 = v.x * sine;
    const float y2 = v.y * cosine;
    return {x1 - x2, y1 + y2};
}

Rgb PixelAt(const ZenBitmap& source, float u, float v)
{
    if (!(u >= 0.0F) || !(u <= 1.0F) || !(v >= 0.0F) || !(v <= 1.0F))
        return {};
    const float across = static_cast<float>(source.width) * u;
    const float down = static_cast<float>(source.height) * v;
    const int x = std::min(std::max(static_cast<int>(across), 0), source.width - 1);
    const int y = std::min(std::max(static_cast<int>(down), 0), source.height - 1);
    const int bytesPerPixel = source.format == 4 ? 4 : 3;
    const std::uint8_t* pixel = source.data + x * bytesPerPixel + y * source.bytesPerRow;
    return {pixel[2], pixel[1], pixel[0]};
}

/// What stands on the channels of one pixel, type by type: red, green, blue; c, m, y their
/// complements; r, g, b what is left of them beside white; w the smallest of the three, a that of
/// red and green; L the brightness, I the fixture's intensity.
constexpr std::string_view Layouts[] = {"RGB",    "RBG",  "GRB",   "GBR", "BRG", "BGR", "RGBI",
                                        "RGB0",   "RGBL", "rgbw",  "L",   "cmy", "ymc", "RGB000",
                                        "RRGGBB", "RGBa", "RGBIa", "RB",  "R",   "G",   "B"};

Bytes SlotsOf(int type, Rgb colour, std::uint8_t intensity)
{
    const int r = colour.r;
    const int g = colour.g;
    const int b = colour.b;
    const int amber = std::min(r, g);
    const int white = std::min(amber, b);
    const std::map<char, int> values{
        {'R', r},         {'G', g},       {'B', b},         {'c', 255 - r},
        {'m', 255 - g},   {'y', 255 - b}, {'r', r - white}, {'g', g - white},
        {'b', b - white}, {'w', white},   {'a', amber},     {'L', (r + g + g / 2 + b / 2) / 3},
        {'I', intensity}, {'0', 0}};
    Bytes bytes;
    if (type >= 0 && type < static_cast<int>(std::size(Layouts))) {
        for (const char slot : Layouts[type])
            bytes.push_back(static_cast<std::uint8_t>(values.at(slot)));
    }
    return bytes;
}

enum Tag
{
    Pixel,
    Constant,
    Free
};

struct Channel
{
    std::uint8_t value = 0;
    Tag tag = Pixel;
};

std::vector<Channel> ChannelsOf(const LEDFixture& fixture, const std::vector<Rgb>& pixels)
{
    std::vector<Channel> room(1024);
    const int size = std::min(fixture.GetChannelCount(), 512);
    const auto& cells = fixture.pixelMap.GetChannels();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const Bytes bytes = SlotsOf(static_cast<int>(fixture.pixelMap.GetType()), pixels[i],
                                    fixture.GetIntensity());
        const std::int64_t cell = cells[i];
        const auto n = static_cast<std::int64_t>(bytes.size());
        if (cell < 1 || cell + n > 512 || cell - 1 >= size)
            continue;
        for (std::int64_t k = 0; k < n; ++k)
            room[static_cast<std::size_t>(cell - 1 + k)] = {bytes[static_cast<std::size_t>(k)],
                                                            Pixel};
    }
    for (const StaticChannel& entry : fixture.staticChannels) {
        if (entry.channel < 1 || entry.channel > size)
            continue;
        room[static_cast<std::size_t>(entry.channel - 1)] =
            entry.value < 0 ? Channel{0, Free}
                            : Channel{static_cast<std::uint8_t>(entry.value), Constant};
    }
    room.resize(static_cast<std::size_t>(size));
    return room;
}

/// Writes what fits of `channels` from `first` on; a free channel stays as it is when merging.
void Write(Bytes& universe, int first, const std::vector<Channel>& channels, bool merging)
{
    if (first < 1)
        return;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const std::int64_t channel = first + static_cast<std::int64_t>(i);
        if (channel > 512)
            return;
        if (static_cast<std::int64_t>(universe.size()) < channel)
            universe.resize(static_cast<std::size_t>(channel));
        if (!merging || channels[i].tag != Free)
            universe[static_cast<std::size_t>(channel - 1)] = channels[i].value;
    }
}

} // namespace

std::vector<Rgb> Sample(const VideoMapping& mapping, int canvasWidth, int canvasHeight, int columns,
                        int rows, const ZenBitmap& source)
{
    const auto W = static_cast<float>(canvasWidth);
    const auto H = static_cast<float>(canvasHeight);
    const float px = mapping.width * 0.5F * W;
    const float py = mapping.height * 0.5F * H;
    const auto corner = [&](float sx, float sy) {
        const Vector r = Turned({sx * px, sy * py}, mapping.rotation);
        const float dx = r.x / W;
        const float dy = r.y / H;
        return Vector{mapping.centerX + dx, mapping.centerY + dy};
    };
    Vector topLeft = corner(-1, -1);
    Vector topRight = corner(1, -1);
    Vector bottomLeft = corner(-1, 1);
    Vector bottomRight = corner(1, 1);
    if (mapping.flipHorizontal) {
        std::swap(topLeft, topRight);
        std::swap(bottomLeft, bottomRight);
    }
    if (mapping.flipVertical) {
        std::swap(topLeft, bottomLeft);
        std::swap(topRight, bottomRight);
    }
    std::vector<Rgb> pixels;
    for (int j = 0; j < rows; ++j) {
        for (int i = 0; i < columns; ++i) {
            const float fx = static_cast<float>(i) + 0.5F;
            const float fy = static_cast<float>(j) + 0.5F;
            const auto dw = static_cast<float>(columns);
            const auto dh = static_cast<float>(rows);
            const float u = topLeft.x + fx * (topRight.x - topLeft.x) / dw +
                            fy * (bottomLeft.x - topLeft.x) / dh;
            const float v = topLeft.y + fx * (topRight.y - topLeft.y) / dw +
                            fy * (bottomLeft.y - topLeft.y) / dh;
            pixels.push_back(PixelAt(source, u, v));
        }
    }
    return pixels;
}

Universes FrameOf(const MappedDeviceModel& document, const ZenBitmap& source)
{
    Universes universes;
    const UniverseMerging& merging = document.GetMerging();
    const int from = merging.GetFromStartAddress();
    const int to = merging.GetToStartAddress();
    for (int i = 0; merging.IsEnabled() && i < merging.GetConsecutiveUniverses(); ++i)
        universes[{L"Auto", static_cast<std::uint16_t>(to + i)}].resize(512);
    for (int row = 0; row < document.rowCount(); ++row) {
        const MappedLedItem& item = *document.GetElement(row);
        const DMXMappingArtNet* address = item.GetArtNetMapping();
        if (!address)
            continue;
        const PixelMap& map = item.GetFixture().pixelMap;
        std::vector<Rgb> pixels(map.GetChannels().size());
        if (item.GetVideoMapping())
            pixels = Sample(*item.GetVideoMapping(), document.GetCanvasWidth(),
                            document.GetCanvasHeight(), map.GetWidth(), map.GetHeight(), source);
        const auto channels = ChannelsOf(item.GetFixture(), pixels);
        const int own = address->GetSubnet() * 16 + address->GetUniverse();
        const bool merged =
            merging.IsEnabled() && from <= own && own < from + merging.GetConsecutiveUniverses();
        const std::wstring ipconf = merged ? L"Auto" : address->GetIpconf();
        const auto port = static_cast<std::uint16_t>(merged ? to - from + own : own);
        Write(universes[{ipconf, port}], address->GetChannel(), channels, merged);
    }
    return universes;
}

} // namespace Reference
