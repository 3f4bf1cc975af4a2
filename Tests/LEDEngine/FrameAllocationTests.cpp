// SPDX-License-Identifier: MIT
// A program of its own, since it replaces the allocator of the process.
#include <chrono>
#include <cstdlib>
#include <new>
#include <thread>

#include <gtest/gtest.h>

#include "ArtNet/ZenArtNetService.h"
#include "Show.h"
#include "Support/LogCapture.h"

namespace {

/// Of this thread: the I/O thread works for adapters and nodes at its own times.
thread_local int allocations = 0;
thread_local bool refuse = false;

} // namespace

// The library's forms for arrays end in these. Those of AddressSanitizer do not, and it wants back
// with one of its own forms what it gave with one: the form that does not throw is needed for that.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    ++allocations;
    return refuse ? nullptr : std::malloc(size > 0 ? size : 1);
}

void* operator new(std::size_t size)
{
    if (void* memory = operator new(size, std::nothrow))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

TEST(FrameAllocation, NoFrameAfterTheFirstTakesMemoryAndOneThatGetsNoneIsLostAlone)
{
    Zen::ArtNetService::SetGlobal(std::make_shared<Zen::ArtNetService>("PixelWeft", "test", false));
    // Rows of pixels, single ones and constants; broadcast, for one node and merged.
    constexpr int strips = 40;
    constexpr int middle = strips / 2 * 3;
    Show show;
    std::vector<std::int32_t> strip;
    for (int i = 0; i < 170; ++i)
        strip.push_back(1 + 3 * i);
    const auto dot = Fixture(PixelMapType::RGBWAmber, {2}, 8, {{1, 200}, {8, -1}});
    for (int universe = 0; universe < strips; ++universe) {
        const VideoMapping place({0.5F, static_cast<float>(universe) / strips}, {0.9F, 0.01F}, 10,
                                 false, false);
        show.Add({Fixture(PixelMapType::RGB, strip), Address(universe), place});
        show.Add({dot, Address(universe, 17, L"2.0.0.10"), place});
        show.Add({dot, Address(universe, 101), place});
    }
    show.SetOutput(Merge(1, 8, 144), L"2.255.255.255");
    EXPECT_TRUE(show.Create());
    const auto picture = Picture(64, 36, std::vector<Rgb>(64 * 36, Rgb{11, 22, 33}));
    const auto mark = Picture(1, 1, {{9, 8, 7}}, 3);
    show.engine.SetIdentified({.element = 1});

    EXPECT_GT(allocations, 0);
    // Packets wait for the I/O thread in two buffers in turn, which grow to the longest wait: on a
    // busy machine that takes a while to settle. A frame that always takes memory never does.
    int taken = -1;
    for (int attempt = 0; attempt < 20 && taken != 0; ++attempt) {
        const int before = allocations;
        for (int frame = 0; frame < 20; ++frame) {
            show.engine.UpdateElementBitmaps(*picture);
            show.engine.UpdateElementBitmap(middle, *mark);
            show.engine.SendFrame();
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        taken = allocations - before;
    }
    EXPECT_EQ(taken, 0);
    EXPECT_EQ(show.Universe(strips / 2)[0], 9);
    EXPECT_EQ(show.Universe(strips / 2)[2], 7);
    // Elements of the merge range are broadcast whatever their node is.
    EXPECT_EQ(show.AllUniverses().size(), 2U * strips - 8);

    // After an edit the next frame makes its lists again, which takes memory.
    *show.Document().GetElement(middle)->EditArtNetMapping() = Address(48);
    Support::LogCapture log;
    refuse = true;
    const int result = show.Frame(*picture);
    refuse = false;
    EXPECT_EQ(result, -1);
    EXPECT_EQ(log.Messages().size(), 1U);
    EXPECT_EQ(show.Frame(*picture), 0);
    EXPECT_EQ(show.AllUniverses().size(), 2U * strips - 7);
    EXPECT_EQ(show.Universe(48).size(), 510U);
    EXPECT_EQ(show.Universe(48)[0], 11) << "a mark holds for one frame";
    Zen::ArtNetService::SetGlobal(nullptr);
}

} // namespace
