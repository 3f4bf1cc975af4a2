// SPDX-License-Identifier: MIT
// From the hand on the canvas to the wire, heard on the rig at the other end of the cable.
#include <algorithm>
#include <chrono>

#include <QAction>
#include <QTest>

#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Support/Stage.h"
#include "UI/Main/LiveCanvas.h"
#include "UI/Main/WEFTMain.h"

namespace {

using Channels = Stage::Bytes;

constexpr std::int64_t Milliseconds = 1'000'000;

/// The channels of a packet when it is one of this universe.
std::optional<Channels> DmxOf(const Stage::Heard& heard, int universe)
{
    constexpr std::size_t head = 18;
    const Stage::Bytes& bytes = heard.bytes;
    if (bytes.size() < head || bytes[8] != 0 || bytes[9] != 0x50 ||
        bytes[14] + 256 * bytes[15] != universe)
        return std::nullopt;
    return Channels(bytes.begin() + head, bytes.end());
}

/// The same colour for each of some pixels.
Channels Pixels(int count, std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    Channels channels;
    for (int i = 0; i < count; ++i)
        channels.insert(channels.end(), {red, green, blue});
    return channels;
}

class LiveLight : public LiveCanvas
{
protected:
    void StartOutput(const QString& elements, int width = 100, int height = 100)
    {
        StartWith(elements, width, height);
        window->StartTimers();
        // Left half one colour, right half another.
        QImage picture(100, 100, QImage::Format_RGB32);
        picture.fill(QColor(200, 10, 20));
        for (int y = 0; y < 100; ++y) {
            for (int x = 50; x < 100; ++x)
                picture.setPixel(x, y, qRgb(30, 40, 250));
        }
        const QString file = Path(QStringLiteral("halves.png"));
        ASSERT_TRUE(picture.save(file));
        person.WillChoose(file);
        Trigger("actionChoose_Test_Image");
    }

    /// Waits for a frame of universe 2 that `accept` takes; when it arrived, 0 for never.
    std::int64_t Await(const std::function<bool(const Channels&)>& accept)
    {
        std::int64_t arrived = 0;
        constexpr int patience = 10'000;
        const bool came = QTest::qWaitFor(
            [&] {
                while (const auto heard = rig->Next(std::chrono::milliseconds(0))) {
                    const auto channels = DmxOf(*heard, 2);
                    if (channels && accept(*channels)) {
                        arrived = heard->arrived;
                        return true;
                    }
                }
                return false;
            },
            patience);
        return came ? arrived : 0;
    }
    std::int64_t AwaitAt(int channel, const Channels& wanted)
    {
        return Await([&](const Channels& channels) {
            return At(channels, channel, wanted.size()) == wanted;
        });
    }
    /// Channels from this one, as numbered on a desk; those that were not sent are dark.
    static Channels At(Channels channels, int channel, std::size_t count)
    {
        channels.resize(512);
        const auto begin = channels.begin() + channel - 1;
        return {begin, begin + static_cast<std::ptrdiff_t>(count)};
    }

    std::unique_ptr<Stage::Socket> rig = Stage::RigSocket();
};

} // namespace

TEST_F(LiveLight, ADroppedFixtureLightsUpAtOnceAtItsAddressInItsColours)
{
    // The first is dark: its middle lies left of the canvas.
    StartOutput(Element({-0.2, 0.8}, {0.12, 0.01}, 0, 2, 100));
    ASSERT_TRUE(Await([](const Channels&) { return true; }));

    const Channels dark(36);
    Channels halves = Pixels(6, 200, 10, 20);
    std::ranges::copy(Pixels(6, 30, 40, 250), std::back_inserter(halves));
    std::vector<std::int64_t> delays;
    for (const int channel : {136, 172, 208}) {
        DragFromLibrary(Bar, {56, 30.5});
        const std::int64_t arrived = Await([&](const Channels& channels) {
            EXPECT_EQ(At(channels, 100, 36), dark);
            const Channels now = At(channels, channel, 36);
            EXPECT_TRUE(now == halves || now == dark) << "a colour of nowhere";
            return now == halves;
        });
        ASSERT_NE(arrived, 0) << "no light at " << channel;
        delays.push_back((arrived - dropped) / Milliseconds);
    }
    std::ranges::sort(delays);
    EXPECT_LE(delays[1], 250) << "of " << delays[0] << " to " << delays[2];

    // It follows the mouse, shows that it is selected, and goes dark when it is taken back.
    Drag({50, 30}, {80, 30});
    EXPECT_TRUE(AwaitAt(208, Pixels(12, 30, 40, 250)));
    Trigger("actionSelectionMode_Solid");
    Channels both = halves; // The one before isn't selected.
    std::ranges::copy(Pixels(12, 0, 255, 0), std::back_inserter(both));
    EXPECT_TRUE(AwaitAt(172, both));
    Type(&View(), Qt::Key_Backspace);
    EXPECT_TRUE(AwaitAt(208, dark));
    Undo();
    EXPECT_TRUE(AwaitAt(208, Pixels(12, 30, 40, 250)));
}

TEST_F(LiveLight, TheOutputKeepsItsPaceWhileAThousandElementsAreDragged)
{
    QString elements;
    for (int i = 0; i < 1024; ++i)
        elements += Element({(i % 32 + 0.5) / 32, (i / 32 + 0.5) / 32}, {0.02, 0.004}, 0, 2,
                            i % 14 * 36 + 1);
    StartOutput(elements, 512, 512);
    ASSERT_TRUE(Await([](const Channels&) { return true; }));
    Type(&View(), Qt::Key_A, Qt::ControlModifier);
    ASSERT_EQ(Scene().SelectedCount(), 1024);

    constexpr int seconds = 2;
    const auto way = [](int step) {
        return QPointF(step % 20 + 1, step % 15);
    };
    for (const auto& [merging, framesASecond] : {std::pair(false, 10), std::pair(true, 40)}) {
        UniverseMerging settings;
        settings.SetEnabled(merging);
        Scene().GetManager().GetMappedDeviceModel()->SetMerging(settings);
        const QPointF middle = Document().front().placement.centre;
        Press(middle);
        [[maybe_unused]] const auto before = rig->All(std::chrono::milliseconds(0));
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
        int steps = 0;
        while (std::chrono::steady_clock::now() < end) {
            ++steps;
            MoveTo(middle + way(steps));
            QCoreApplication::processEvents();
        }
        int frames = 0;
        for (const Stage::Heard& heard : rig->All(std::chrono::milliseconds(0)))
            frames += DmxOf(heard, 2) ? 1 : 0;
        Release(middle + way(steps));
        EXPECT_EQ(Scene().SelectedCount(), 1024);
        // Half of the pace, for a machine that has more to do.
        EXPECT_GE(frames, seconds * framesASecond / 2) << "during " << steps << " steps";
        EXPECT_GE(steps, seconds * 10);
    }
}
