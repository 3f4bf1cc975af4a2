// SPDX-License-Identifier: MIT
// A program of its own, since it replaces the allocator of the process: a frame after the first
// takes no memory from the heap, and a frame that needs memory and gets none is lost without ending
// the show.
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

void* Allocate(std::size_t size)
{
    ++allocations;
    return refuse ? nullptr : std::malloc(size > 0 ? size : 1);
}

void* AllocateOrThrow(std::size_t size)
{
    if (void* memory = Allocate(size))
        return memory;
    throw std::bad_alloc();
}

} // namespace

// Every form of both: they would not fit to the forms of AddressSanitizer.
void* operator new(std::size_t size)
{
    return AllocateOrThrow(size);
}

void* operator new[](std::size_t size)
{
    return AllocateOrThrow(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {

constexpr int Strips = 40;

/// A show on our own port: many pixels in a row, single ones, constants; broadcast, for one node
/// and into the merge range.
class FrameAllocation : public testing::Test
{
protected:
    FrameAllocation()
    {
        Zen::ArtNetService::SetGlobal(
            std::make_shared<Zen::ArtNetService>("PixelWeft", "test", false));
        show = std::make_unique<Show>();
        std::vector<std::int32_t> strip;
        for (int i = 0; i < 170; ++i)
            strip.push_back(1 + 3 * i);
        const auto dot = Fixture(PixelMapType::RGBWAmber, {2}, 8, {{1, 200}, {8, -1}});
        for (int universe = 0; universe < Strips; ++universe) {
            const VideoMapping place({0.5F, static_cast<float>(universe) / Strips}, {0.9F, 0.01F},
                                     10, false, false);
            show->Add({Fixture(PixelMapType::RGB, strip), Address(universe), place});
            show->Add({dot, Address(universe, 17, L"2.0.0.10"), place});
            show->Add({dot, Address(universe, 101), place});
        }
        const auto merging = Merge(1, 8, 144);
        show->Document().SetMerging(merging);
        show->engine.InitializeOutput(L"2.0.0.1", L"2.255.255.255", L"", merging);
        for (int tick = 0; tick < 12; ++tick)
            show->engine.GetOutput().HandleEvent(OutputEvent::Tick);
        EXPECT_TRUE(show->Create());
    }
    ~FrameAllocation() override
    {
        show.reset();
        Zen::ArtNetService::SetGlobal(nullptr);
    }

    const std::unique_ptr<ZenBitmap> picture =
        Picture(64, 36, std::vector<Rgb>(64 * 36, Rgb{11, 22, 33}));
    const std::unique_ptr<ZenBitmap> mark = Picture(1, 1, {{255, 255, 255}}, 3);
    std::unique_ptr<Show> show;
};

TEST_F(FrameAllocation, NoFrameAfterTheFirstTakesMemory)
{
    int sent = 0;
    QObject::connect(&show->engine.GetOutput(), &ArtNetOutput::dataOutOn, &show->engine,
                     [&sent] { ++sent; });
    ASSERT_GT(allocations, 0);
    // Packets wait for the I/O thread in two buffers in turn, which grow to the longest wait: on a
    // busy machine that takes a while to settle. A frame that always takes memory never does.
    int taken = -1;
    for (int attempt = 0; attempt < 20 && taken != 0; ++attempt) {
        const int before = allocations;
        for (int frame = 0; frame < 20; ++frame) {
            show->engine.UpdateElementBitmaps(*picture);
            show->engine.UpdateElementBitmap(0, *mark);
            show->engine.SendFrame();
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        taken = allocations - before;
    }
    EXPECT_EQ(taken, 0);
    EXPECT_GE(sent, 20);
    // Elements of the merge range are broadcast whatever their node is.
    EXPECT_EQ(show->AllUniverses().size(), 2U * Strips - 8);
}

TEST_F(FrameAllocation, AFrameWithoutMemoryIsLostAndTheNextOneIsNot)
{
    show->Frame(*picture);
    const auto full = show->AllUniverses().size();
    // After the edit the next frame makes its lists again, which takes memory.
    constexpr int middle = Strips / 2 * 3;
    *show->Document().GetElement(middle)->EditArtNetMapping() = Address(48);
    Support::LogCapture log;
    refuse = true;
    show->engine.UpdateElementBitmaps(*picture);
    show->engine.UpdateElementBitmap(middle, *picture);
    const int result = show->engine.SendFrame();
    refuse = false;
    EXPECT_EQ(result, -1);
    EXPECT_EQ(log.Messages().size(), 1U);
    show->Frame(*picture);
    EXPECT_EQ(show->AllUniverses().size(), full + 1);
    EXPECT_EQ(show->Universe(48).size(), 510U);
    EXPECT_EQ(show->Universe(48)[0], 11);
}

} // namespace
