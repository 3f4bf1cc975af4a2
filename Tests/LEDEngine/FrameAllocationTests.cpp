// SPDX-License-Identifier: MIT
// A program of its own, since it replaces the allocator of the process: a frame after the first
// takes no memory from the heap, and one that gets none when it needs some is lost without ending
// the show.
#include <gtest/gtest.h>

#include <QCoreApplication>

#include <chrono>
#include <cstdlib>
#include <new>
#include <stdexcept>
#include <thread>

#include "ArtNet/ZenArtNetService.h"
#include "Show.h"
#include "Support/LogCapture.h"

namespace {

/// Of this thread: the I/O thread looks after adapters and nodes in its own time.
thread_local int allocations = 0;
thread_local bool refuse = false;

void* Allocate(std::size_t size)
{
    ++allocations;
    if (refuse)
        return nullptr;
    return std::malloc(size > 0 ? size : 1);
}

void* AllocateOrThrow(std::size_t size)
{
    if (void* memory = Allocate(size))
        return memory;
    throw std::bad_alloc();
}

} // namespace

// Every form of both: beside AddressSanitizer's own forms they would not fit together.
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

/// Panels of many pixels, elements of one pixel, scattered ones, constants; for everybody, for one
/// node and into the merger's run.
void Fill(Show& show)
{
    PixelMap strip(170, 1, PixelMapType::RGB);
    for (int i = 0; i < 170; ++i)
        strip.SetCell(i, 0, 1 + 3 * i);
    const auto dot = FixtureOf(MapOf(1, 1, PixelMapType::RGBWAmber, {2}), 8, {{1, 200}, {8, -1}});
    for (int universe = 0; universe < Strips; ++universe) {
        const VideoMapping place({0.5F, static_cast<float>(universe) / Strips}, {0.9F, 0.01F}, 10,
                                 false, false);
        show.Add(FixtureOf(strip, 510), place, Address(universe / 16, universe % 16, 1));
        show.Add(dot, place, Address(universe / 16, universe % 16, 17, L"2.0.0.10"));
        show.Add(dot, place, Address(universe / 16, universe % 16, 101));
    }
}

int AllocationsOf(Show& show, const ZenBitmap& picture, int frames)
{
    const auto mark = Picture(1, 1, {{255, 255, 255}}, 3);
    show.Frame(picture);
    show.engine.UpdateElementBitmap(0, *mark);
    show.Frame(picture);
    const int before = allocations;
    for (int i = 0; i < frames; ++i) {
        show.engine.UpdateElementBitmaps(picture);
        show.engine.UpdateElementBitmap(0, *mark);
        show.engine.SendFrame();
    }
    return allocations - before;
}

std::unique_ptr<ZenBitmap> Noise()
{
    return Picture(64, 36, std::vector<Rgb>(64 * 36, Rgb{11, 22, 33}));
}

TEST(FrameAllocation, NoFrameAfterTheFirstTakesMemory)
{
    const int before = allocations;
    const auto picture = Noise();
    ASSERT_GT(allocations, before) << "it counts";
    for (const bool merged : {false, true}) {
        Show show;
        Fill(show);
        const UniverseMerging merging(merged, 0, 1, 8, 9, 0, MergerDMXSource::PixelWeft);
        show.Document().SetMerging(merging);
        show.engine.InitializeOutput(L"", L"", L"", merging);
        ASSERT_TRUE(show.Create());
        EXPECT_EQ(AllocationsOf(show, *picture, 20), 0) << merged;
        // In the merger's run an element goes to the universe for everybody, whatever its node.
        EXPECT_EQ(show.UniverseCount(), merged ? 2U * Strips - 8 : 2U * Strips);
    }
}

TEST(FrameAllocation, AFrameWithoutMemoryIsLostAndTheNextOneIsNot)
{
    Show show;
    Fill(show);
    const auto picture = Noise();
    ASSERT_TRUE(show.Create());
    show.Frame(*picture);
    const auto full = show.UniverseCount();
    // The edit makes the next frame lay out its lists anew, which takes memory.
    constexpr int middle = Strips / 2 * 3;
    *show.Document().GetElement(middle)->EditArtNetMapping() = Address(3, 0, 1);
    {
        Support::LogCapture log;
        refuse = true;
        show.engine.UpdateElementBitmaps(*picture);
        show.engine.UpdateElementBitmap(middle, *picture);
        const int result = show.engine.SendFrame();
        refuse = false;
        EXPECT_EQ(result, -1);
        EXPECT_EQ(log.Messages().size(), 1U);
    }
    show.Frame(*picture);
    EXPECT_EQ(show.UniverseCount(), full + 1);
    EXPECT_EQ(show.Universe(48).size(), 510U);
    EXPECT_EQ(show.Universe(48)[0], 11);
}

/// These stand on a private network with sockets of their own (Tools/stage-net desk).
class OnStage : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!std::getenv("STAGE_NET"))
            GTEST_SKIP() << "needs a stage network";
        Zen::ArtNetService::SetGlobal(
            std::make_shared<Zen::ArtNetService>("PixelWeft", "test", false));
    }
    void TearDown() override { Zen::ArtNetService::SetGlobal(nullptr); }

    /// A show on our own port.
    void Open(Show& show, const UniverseMerging& merging = {})
    {
        Fill(show);
        show.Document().SetMerging(merging);
        show.engine.InitializeOutput(L"2.0.0.1", L"2.255.255.255", L"", merging);
        for (int tick = 0; tick < 12; ++tick)
            show.engine.GetOutput().HandleEvent(OutputEvent::Tick);
        ASSERT_EQ(show.engine.GetOutput().GetState(), OutputState::UsingLocalSocket);
        ASSERT_TRUE(show.Create());
    }
};

TEST_F(OnStage, SendingTakesNoMemory)
{
    const auto picture = Noise();
    Show show;
    Open(show, {true, 0, 1, 8, 9, 0, MergerDMXSource::PixelWeft});
    int sent = 0;
    QObject::connect(&show.engine.GetOutput(), &ArtNetOutput::dataOutOn, &show.engine,
                     [&sent] { ++sent; });
    // Packets wait for the I/O thread in two buffers in turn, which grow to the longest wait: on a
    // busy machine that takes a while to settle. A frame that always takes memory never does.
    int taken = -1;
    for (int attempt = 0; attempt < 20 && taken != 0; ++attempt) {
        const int before = allocations;
        for (int frame = 0; frame < 20; ++frame) {
            show.engine.UpdateElementBitmaps(*picture);
            show.engine.SendFrame();
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        taken = allocations - before;
    }
    EXPECT_EQ(taken, 0);
    EXPECT_GE(sent, 20);
}

TEST_F(OnStage, ASlotThatThrowsCostsOneFrame)
{
    const auto picture = Noise();
    Show show;
    Open(show);
    Support::LogCapture log;
    const auto fault = QObject::connect(&show.engine.GetOutput(), &ArtNetOutput::dataOutOn,
                                        &show.engine, [] { throw std::runtime_error("no lamp"); });
    EXPECT_EQ(show.Frame(*picture), -1);
    EXPECT_EQ(show.Frame(*picture), -1);
    EXPECT_EQ(log.Count("Frame lost: no lamp"), 1) << "once a second";
    QObject::disconnect(fault);
    EXPECT_EQ(show.Frame(*picture), 0);
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
