// SPDX-License-Identifier: MIT
// What a frame costs from the picture to the finished universes. Every figure is a ratio of two
// times that were taken in turn in the same run, and of these ratios the median, so that a machine
// that is busy with something else slows both sides alike.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "LEDEngine/LEDEngine.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Timing.h"

namespace {

constexpr int PixelsPerUniverse = 170;
constexpr int Pairs = 301;

/// As large as the pictures that come with the program.
std::unique_ptr<ZenBitmap> Picture()
{
    auto picture = ZenBitmap::Create(640, 360, 4);
    std::uint32_t noise = 1;
    for (std::int32_t i = 0; i < picture->bytesPerRow * picture->height; ++i) {
        noise = noise * 1664525U + 1013904223U;
        picture->data[i] = static_cast<std::uint8_t>(noise >> 24U);
    }
    return picture;
}

/// A document that fills `universes` universes with RGB pixels, with its engine. Universe u is row
/// u of the canvas: as one element, or as 170 elements of one pixel.
class Document
{
public:
    Document(int universes, bool elementPerPixel)
        : manager_(QString())
        , engine_((manager_.Initialize(), manager_))
    {
        MappedDeviceModel& model = *manager_.GetMappedDeviceModel();
        model.SetCanvasSize(PixelsPerUniverse, universes);
        const int pixels = elementPerPixel ? 1 : PixelsPerUniverse;
        PixelMap map(pixels, 1, PixelMapType::RGB);
        for (int i = 0; i < pixels; ++i)
            map.SetCell(i, 0, 1 + 3 * i);
        const DeviceLedItem fixture(L"", L"Row", map, 1, 3 * pixels);
        const PointF cell{1.0F / PixelsPerUniverse, 1.0F / static_cast<float>(universes)};
        std::vector<std::unique_ptr<MappedLedItem>> items;
        for (int universe = 0; universe < universes; ++universe) {
            for (int first = 0; first < PixelsPerUniverse; first += pixels) {
                auto video = std::make_unique<VideoMapping>();
                video->SetSize({cell.x * static_cast<float>(pixels), cell.y});
                video->SetTopLeft(cell.x * static_cast<float>(first),
                                  cell.y * static_cast<float>(universe));
                const DMXMappingArtNet address(universe / 16, universe % 16, 1 + 3 * first,
                                               AutoNode, L"");
                auto item =
                    std::make_unique<MappedLedItem>(L"", fixture, std::move(video), &address);
                item->uniqueID = model.GetNextElementID();
                items.push_back(std::move(item));
            }
        }
        model.AddMappingElements(std::move(items));
        engine_.CreateElements(model.GetCanvasWidth(), model.GetCanvasHeight());
        // Frames are built to the end and not sent.
        engine_.GetOutput().outputSuspended = true;
    }

    void Frame(const ZenBitmap& picture)
    {
        engine_.UpdateElementBitmaps(picture);
        engine_.SendFrame();
        benchmark::ClobberMemory();
    }

    /// True when the last frame has its universes, whole, and not all dark.
    [[nodiscard]] bool IsLit(int universes)
    {
        const auto& table = engine_.GetOutput().GetUniverses().Broadcast();
        const auto whole = [](const auto& entry) {
            const auto& channels = entry.second.channels;
            return channels.size() == 510 && *std::ranges::max_element(channels) > 0;
        };
        return std::ssize(table) == universes && std::ranges::all_of(table, whole);
    }

private:
    DeviceManager manager_;
    LEDEngine engine_;
};

/// The least that any program must do for these pixels: a ready table of source offsets, three
/// loads and three stores a pixel.
class BareLoop
{
public:
    BareLoop(int universes, const ZenBitmap& picture)
        : channels_(static_cast<std::size_t>(universes * PixelsPerUniverse * 3))
    {
        for (int universe = 0; universe < universes; ++universe) {
            const int row = universe * picture.height / universes;
            for (int pixel = 0; pixel < PixelsPerUniverse; ++pixel) {
                const int column = pixel * picture.width / PixelsPerUniverse;
                offsets_.push_back(row * picture.bytesPerRow + column * 4);
            }
        }
    }

    void Run(const ZenBitmap& picture)
    {
        std::uint8_t* out = channels_.data();
        for (const std::int32_t offset : offsets_) {
            const std::uint8_t* pixel = picture.data + offset;
            out[0] = pixel[2];
            out[1] = pixel[1];
            out[2] = pixel[0];
            out += 3;
        }
        benchmark::ClobberMemory();
    }

private:
    std::vector<std::int32_t> offsets_;
    std::vector<std::uint8_t> channels_;
};

void Frame(benchmark::State& state)
{
    const auto universes = static_cast<int>(state.range(0));
    const bool elementPerPixel = state.range(1) != 0;
    const auto picture = Picture();
    Document document(universes, elementPerPixel);
    BareLoop bare(universes, *picture);
    document.Frame(*picture);
    bare.Run(*picture);
    if (!document.IsLit(universes)) {
        state.SkipWithError("the frame is not the one that was to be measured");
        return;
    }
    std::vector<double> ratios;
    std::vector<double> frames;
    std::vector<double> loops;
    for (auto _ : state) {
        frames.push_back(SecondsOf(4, [&] { document.Frame(*picture); }));
        loops.push_back(SecondsOf(4, [&] { bare.Run(*picture); }));
        ratios.push_back(frames.back() / loops.back());
        state.SetIterationTime(frames.back());
    }
    state.counters["ratio"] = Median(ratios);
    state.counters["frame_us"] = Median(frames) * 1e6;
    state.counters["bare_us"] = Median(loops) * 1e6;
}
BENCHMARK(Frame)
    ->ArgNames({"universes", "element_per_pixel"})
    ->Args({256, 0})
    ->Args({256, 1})
    ->Iterations(Pairs)
    ->UseManualTime();

void CostPerUniverse(benchmark::State& state)
{
    constexpr int few = 64;
    constexpr int many = 1024;
    const bool elementPerPixel = state.range(0) != 0;
    const auto picture = Picture();
    Document small(few, elementPerPixel);
    Document large(many, elementPerPixel);
    small.Frame(*picture);
    large.Frame(*picture);
    if (!small.IsLit(few) || !large.IsLit(many)) {
        state.SkipWithError("the frame is not the one that was to be measured");
        return;
    }
    std::vector<double> ratios;
    for (auto _ : state) {
        const double ofFew = SecondsOf(many / few, [&] { small.Frame(*picture); }) / few;
        const double ofMany = SecondsOf(1, [&] { large.Frame(*picture); }) / many;
        ratios.push_back(ofMany / ofFew);
        state.SetIterationTime(ofMany);
    }
    state.counters["ratio"] = Median(ratios);
}
BENCHMARK(CostPerUniverse)
    ->ArgNames({"element_per_pixel"})
    ->Arg(0)
    ->Arg(1)
    ->Iterations(Pairs)
    ->UseManualTime();

} // namespace

BENCHMARK_MAIN();
