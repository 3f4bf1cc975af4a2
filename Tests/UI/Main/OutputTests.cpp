// SPDX-License-Identifier: MIT
// From the hand on the window to the wire, heard on the rig at the other end of the cable.
#include <algorithm>
#include <chrono>
#include <map>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "HostStandIn/Host.h"
#include "Model/MappedDeviceModel.h"
#include "Support/ArtNetBytes.h"
#include "Support/Stage.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Main/Desk.h"
#include "UI/Widgets/DeskLook.h"
#include "UI/Widgets/LedIndicator.h"

namespace {

using Channels = Stage::Bytes;

constexpr std::int64_t Milliseconds = 1'000'000;
constexpr int Patience = 10'000;

Channels Pixels(int count, std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    Channels channels;
    for (int i = 0; i < count; ++i)
        channels.insert(channels.end(), {red, green, blue});
    return channels;
}

class Output : public Desk
{
protected:
    /// Waits for a frame of universe 2 that `accept` takes; when it arrived, 0 for never.
    std::int64_t Await(const std::function<bool(const Channels&)>& accept)
    {
        std::int64_t arrived = 0;
        static_cast<void>(QTest::qWaitFor(
            [&] {
                while (const auto heard = rig->Next(std::chrono::milliseconds(0))) {
                    if (arrived == 0 && ArtNetBytes::UniverseOf(heard->bytes) == 2 &&
                        accept(ArtNetBytes::ChannelsOf(heard->bytes)))
                        arrived = heard->arrived;
                }
                return arrived != 0;
            },
            Patience));
        return arrived;
    }
    bool Comes(int channel, const Channels& wanted)
    {
        return Await([&](const Channels& channels) {
                   return At(channels, channel, wanted.size()) == wanted;
               }) != 0;
    }
    /// Channels from this one, as numbered on a desk; those that were not sent are 0.
    static Channels At(Channels channels, int channel, std::size_t count)
    {
        channels.resize(512);
        const auto begin = channels.begin() + channel - 1;
        return {begin, begin + static_cast<std::ptrdiff_t>(count)};
    }
    void SendDmx(std::uint16_t universe) const
    {
        rig->Send(Stage::Broadcast0, ArtNetBytes::Dmx(universe, {9, 9}));
    }
    /// How many frames of universe 9 come while the rig sends universe 2 so often.
    int FramesWhileSending(int times)
    {
        int frames = 0;
        for (int i = 0; i < times; ++i) {
            SendDmx(2);
            QTest::qWait(20);
            while (const auto heard = rig->Next(std::chrono::milliseconds(0)))
                frames += ArtNetBytes::UniverseOf(heard->bytes) == 9 ? 1 : 0;
        }
        return frames;
    }
    /// Whether what the rig sends to universe 0 lights the lamp.
    [[nodiscard]] bool Receives() const
    {
        const auto* in = Find<LedIndicator>("inTrafficLamp");
        return QTest::qWaitFor([&] {
            SendDmx(0);
            return in->IsOn();
        });
    }
    /// Whether most of the button that chooses the mark of the selection is amber.
    [[nodiscard]] bool SelectionButtonWarns() const
    {
        const QImage picture = Find<QToolButton>("selectionModeButton")->grab().toImage();
        int amber = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                amber += picture.pixelColor(x, y) == WarningColour() ? 1 : 0;
        }
        return amber * 2 > picture.width() * picture.height();
    }
    void Pick(const char* name, const char* entry) const
    {
        Support::Pick(*Find<QComboBox>(name), entry);
    }

    std::unique_ptr<Stage::Socket> rig = Stage::RigSocket();
};

} // namespace

TEST_F(Output, ADroppedFixtureIsSentAtOnceAtItsAddressInItsColours)
{
    // The first is black: its middle lies left of the canvas.
    StartWith(Element({-0.2, 0.8}, {0.12, 0.01}, 2, 100));
    window->StartTimers();
    ChooseHalves();
    const Channels black(36);
    ASSERT_TRUE(Comes(100, black));

    Channels halves = Pixels(6, 200, 10, 20);
    std::ranges::copy(Pixels(6, 30, 40, 250), std::back_inserter(halves));
    std::vector<std::int64_t> delays;
    for (const int channel : {136, 172, 208}) {
        DragFromLibrary({50, 30.5});
        const std::int64_t arrived = Await([&](const Channels& channels) {
            EXPECT_EQ(At(channels, 100, 36), black);
            const Channels now = At(channels, channel, 36);
            EXPECT_TRUE(now == halves || now == black) << "a colour of nowhere";
            return now == halves;
        });
        ASSERT_NE(arrived, 0) << "nothing at " << channel;
        delays.push_back((arrived - dropped) / Milliseconds);
    }
    std::ranges::sort(delays);
    EXPECT_LE(delays[1], 250) << "of " << delays[0] << " to " << delays[2];

    // It follows the mouse, shows that it is selected, and is no longer sent when it is taken back.
    Drag({50, 30}, {80, 30});
    EXPECT_TRUE(Comes(208, Pixels(12, 30, 40, 250)));
    EXPECT_FALSE(SelectionButtonWarns());
    Trigger("actionSelectionMode_Solid");
    EXPECT_TRUE(SelectionButtonWarns());
    Channels both = halves; // The one before isn't selected.
    std::ranges::copy(Pixels(12, 0, 255, 0), std::back_inserter(both));
    EXPECT_TRUE(Comes(172, both));
    Trigger("actionSelectionMode_Flash");
    for (const Channels& flash : {Pixels(12, 255, 255, 255), black, Pixels(12, 255, 255, 255)})
        EXPECT_TRUE(Comes(208, flash));
    EXPECT_EQ(Find<QToolButton>("selectionModeButton")->defaultAction(),
              Action("actionSelectionMode_Flash"));
    EXPECT_TRUE(SelectionButtonWarns());
    Trigger("actionSelectionMode_None");
    EXPECT_FALSE(SelectionButtonWarns());
    Type(&View(), Qt::Key_Backspace);
    EXPECT_TRUE(Comes(208, black));
    Trigger("actionUndo");
    EXPECT_TRUE(Comes(208, Pixels(12, 30, 40, 250)));
}

TEST_F(Output, ARepatchedFixtureIsSentAtItsNewAddress)
{
    StartWith(Element({0.2, 0.5}, {0.12, 0.01}, 2, 100));
    window->StartTimers();
    ChooseHalves();
    ASSERT_TRUE(Comes(100, Pixels(12, 200, 10, 20)));
    Trigger("actionSelect_All");
    person.Will([](QDialog& dialog) {
        In<QSpinBox>(dialog, "channelSpin")->setValue(301);
        dialog.accept();
    });
    Trigger("actionRepatch");
    EXPECT_TRUE(Comes(301, Pixels(12, 200, 10, 20)));
    EXPECT_TRUE(Comes(100, Channels(36)));
    Trigger("actionUndo");
    EXPECT_TRUE(Comes(100, Pixels(12, 200, 10, 20)));
}

TEST(LedIndicatorTest, ALampIsLitFromOneCallToTheSecondRunAfterIt)
{
    LedIndicator lamp;
    for (int call = 0; call < 3; ++call) {
        lamp.toggleOn();
        lamp.toggleOff();
        EXPECT_TRUE(lamp.IsOn()) << "a steady stream keeps it lit";
    }
    lamp.toggleOff();
    EXPECT_FALSE(lamp.IsOn());
}

TEST_F(Output, LampsTellWhatPassesAndWhatFails)
{
    StartWith(Element({0.5, 0.5}, {0.12, 0.01}));
    auto* in = Find<LedIndicator>("inTrafficLamp");
    auto* out = Find<LedIndicator>("outTrafficLamp");
    const auto colour = [](LedIndicator* lamp) {
        return lamp->grab().toImage().pixelColor(lamp->width() / 2, lamp->height() * 2 / 3);
    };
    // Whether the right lamp comes to light in such a hue, or dark for -1, and its tip says why.
    const auto comes = [&](int hue, const char* why) {
        return QTest::qWaitFor([&] {
            const QColor now = colour(out);
            return out->toolTip().contains(QLatin1String(why)) && out->IsOn() == (hue >= 0) &&
                   (hue >= 0 ? std::abs(now.hsvHue() - hue) < 10 : now.hsvSaturation() < 30);
        });
    };
    constexpr int green = 120;
    constexpr int amber = 35;
    EXPECT_TRUE(comes(-1, "about to begin"));
    window->StartTimers();
    EXPECT_TRUE(comes(green, "Universes: 1, packets a second: "));
    EXPECT_TRUE(out->toolTip().endsWith("No error"_q));
    for (int i = 0; i < 20; ++i) {
        rig->Send(Stage::Broadcast0, ArtNetBytes::Poll());
        rig->Send(Stage::Desk0, ArtNetBytes::Reply("node"));
        QTest::qWait(10);
        ASSERT_FALSE(in->IsOn()) << "no DMX";
    }
    EXPECT_LT(colour(in).hsvSaturation(), 30);
    EXPECT_TRUE(Receives());
    EXPECT_EQ(colour(in).hsvHue(), green);
    EXPECT_TRUE(QTest::qWaitFor([&] { return in->toolTip().contains("Universes: 1 of 0/0,"_q); }));

    ASSERT_TRUE(Stage::Command("hub", "ip link set desk.0 down"));
    EXPECT_TRUE(comes(-1, "not connected"));
    ASSERT_TRUE(Stage::Command("hub", "ip link set desk.0 up"));
    EXPECT_TRUE(comes(green, "No error"));
    const std::string block = " dir out dst 2.255.255.255/32";
    ASSERT_TRUE(Stage::Command("desk", "ip xfrm policy add" + block + " action block"));
    EXPECT_TRUE(comes(amber, "Last error: Operation not permitted, at "));
    ASSERT_TRUE(Stage::Command("desk", "ip xfrm policy del" + block));
    EXPECT_TRUE(comes(green, "Last error"));

    Pick("networkCombo", "Disabled");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !in->IsOn(); }));
    EXPECT_TRUE(comes(-1, "No network"));
}

TEST_F(Output, IdentifyLightsOneElementAfterTheOtherAndNothingElse)
{
    const QSizeF size(0.12, 0.01);
    StartWith(Element({0.2, 0.5}, size, 2, 100) + Element({0.8, 0.5}, size, 2, 1) +
              Element({0.8, 0.7}, size, 2, 200));
    Trigger("actionSave_File");
    window->StartTimers();
    ChooseHalves();
    // A letter for each element by its address: the first one's is in the right half.
    const auto stateOf = [](const Channels& channels) {
        const std::map<Channels, char> letters = {{Pixels(12, 255, 255, 255), 'W'},
                                                  {Pixels(12, 255, 0, 0), 'R'},
                                                  {Pixels(12, 200, 10, 20), 'l'},
                                                  {Pixels(12, 30, 40, 250), 'r'},
                                                  {Pixels(12, 0, 0, 0), '-'}};
        std::string state;
        for (const int channel : {1, 100, 200}) {
            const auto letter = letters.find(At(channels, channel, 36));
            state += letter == letters.end() ? '?' : letter->second;
        }
        return state;
    };
    const auto becomes = [&](const std::string& wanted) {
        std::string last;
        const bool came = Await([&](const Channels& channels) {
                              last = stateOf(channels);
                              return last == wanted;
                          }) != 0;
        EXPECT_TRUE(came) << "instead of " << wanted << ": " << last;
    };
    becomes("rlr");
    auto* panel = Find<QDialog>("identifyPanel");
    const auto* number = In<QLabel>(*panel, "identifyNumber");
    Type(&View(), Qt::Key_F9);
    ASSERT_TRUE(panel->isVisible());
    for (const bool isOn : {true, false, true}) {
        const std::uint8_t blink = isOn ? 255 : 0;
        Channels ends = Pixels(12, 255, 255, 255);
        std::ranges::copy(Pixels(1, blink, 0, 0), ends.begin());
        std::ranges::copy(Pixels(1, 0, 0, blink), ends.end() - 3);
        EXPECT_TRUE(Comes(1, ends));
    }
    In<QCheckBox>(*panel, "identifyEnds")->click();
    becomes("Wlr");
    struct Case
    {
        QWidget* target;
        Qt::Key key;
        const char* state;
        const char* number;
        std::size_t row; ///< of the document, which is selected
    };
    auto* dark = In<QCheckBox>(*panel, "identifyOthersDark");
    auto* list = Find<QTreeView>("mappedTreeView");
    const Case cases[] = {
        {panel, Qt::Key_Right, "rWr", "2 of 3", 0},   {&View(), Qt::Key_Down, "rlW", "3 of 3", 2},
        {&View(), Qt::Key_Right, "rlW", "3 of 3", 2}, {dark, Qt::Key_R, "rlR", "3 of 3", 2},
        {dark, Qt::Key_Up, "rRr", "2 of 3", 0},       {dark, Qt::Key_Space, "-R-", "2 of 3", 0},
        {&View(), Qt::Key_Home, "R--", "1 of 3", 1},  {panel, Qt::Key_End, "--R", "3 of 3", 2},
        {list, Qt::Key_W, "--W", "3 of 3", 2},        {dark, Qt::Key_Space, "rlW", "3 of 3", 2},
    };
    for (const Case& each : cases) {
        Type(each.target, each.key);
        becomes(each.state);
        EXPECT_EQ(number->text(), QLatin1String(each.number));
        EXPECT_EQ(Scene().SelectedIds(), ElementIds{Item(each.row).GetId()}) << each.number;
    }
    EXPECT_EQ(In<QLabel>(*panel, "identifyAddress")->text(), "0/2/200"_q);
    Click({20, 50});
    becomes("rWr");
    EXPECT_FALSE(Action("actionUndo")->isEnabled()) << "nothing was moved";

    // The next one when it goes; and its going is all that stays.
    Type(&View(), Qt::Key_Backspace);
    becomes("r-W");
    EXPECT_EQ(number->text(), "2 of 2"_q);
    Trigger("actionUndo");
    becomes("rlW");
    EXPECT_EQ(number->text(), "3 of 3"_q);
    QHideEvent minimised;
    QSpontaneKeyEvent::setSpontaneous(&minimised);
    qApp->notify(panel, &minimised);
    becomes("rlW");
    Type(list, Qt::Key_Escape);
    becomes("rlr");
    EXPECT_FALSE(panel->isVisible() || Action("actionIdentify")->isChecked());
    EXPECT_EQ(State(), "saved"_q);

    // Several that are selected, which are selected again at the end; a document that goes.
    const ElementIds two = {Item(0).GetId(), Item(2).GetId()};
    for (const std::int64_t id : two)
        Scene().SetSelected(id, true);
    Trigger("actionIdentify");
    becomes("rWr");
    EXPECT_EQ(number->text(), "1 of 2"_q);
    panel->reject();
    EXPECT_EQ(Scene().SelectedIds(), two);
    becomes("rlr");
    Trigger("actionIdentify");
    Import(DocumentPath());
    becomes("rlr");
    EXPECT_FALSE(panel->isVisible());
}

TEST_F(Output, IdentifyTellsWhatKeepsAFixtureDarkAndOutlivesItsAddress)
{
    const QSizeF size(0.12, 0.01);
    StartWith(Element({0.2, 0.5}, size, 2, 1, "9.9.9.9"_q) + Element({0.8, 0.5}, size, 2, 100));
    window->StartTimers();
    auto* panel = Find<QDialog>("identifyPanel");
    const auto* number = In<QLabel>(*panel, "identifyNumber");
    const auto* trouble = In<QLabel>(*panel, "identifyTrouble");
    auto* list = Find<QTreeView>("mappedTreeView");
    const auto& document = *qobject_cast<MappedDeviceModel*>(
        qobject_cast<QAbstractProxyModel*>(list->model())->sourceModel());
    const auto tells = [&](const char* text) {
        return QTest::qWaitFor([&] { return trouble->text().contains(QLatin1String(text)); });
    };
    Type(&View(), Qt::Key_F9);
    EXPECT_TRUE(tells("Not sent: 9.9.9.9 is not in the network"));
    EXPECT_FALSE(trouble->text().contains("left to a desk"_q));
    document.GetElement(0)->EditFixture().staticChannels.Set(36, -1);
    EXPECT_TRUE(tells("Channels that are left to a desk are sent as 0"));

    // The drag of the one that was clicked ends with the step to the other one; neither goes on.
    Press({80, 50});
    MoveTo({80, 60});
    const QPointF moved = Item(1).pos();
    EXPECT_GT(moved.y(), 55);
    const QPointF other = Item(0).pos();
    QTest::keyClick(&View(), Qt::Key_Left);
    EXPECT_EQ(number->text(), "1 of 2"_q);
    MoveTo({30, 20});
    Release({30, 20});
    EXPECT_EQ(Item(0).pos(), other);
    EXPECT_EQ(Item(1).pos(), moved);

    // Addresses that go before it is told.
    document.GetElement(0)->SetArtNetMapping(std::nullopt);
    QTest::keyClick(&View(), Qt::Key_Left);
    EXPECT_EQ(number->text(), "1 of 1"_q);
    document.GetElement(1)->SetArtNetMapping(std::nullopt);
    const auto* description = In<QLabel>(*panel, "identifyDescription");
    EXPECT_TRUE(QTest::qWaitFor([&] { return description->text() == "Nothing to identify"_q; }))
        << "and not cut off";
}

TEST_F(Output, TheStatusBarTellsWhatIsUnderTheMouseAndWhatIsSent)
{
    StartWith(Element({0.5, 0.5}, {0.12, 0.01}, 2, 97));
    ChooseHalves();
    const auto comes = [&](std::initializer_list<std::pair<const char*, QString>> wanted) {
        for (const auto& [field, text] : wanted) {
            auto* label = Find<QLabel>(field);
            EXPECT_TRUE(QTest::qWaitFor([&, now = text] { return label->text() == now; }))
                << field << " " << label->text().toStdString();
        }
    };
    const auto places = [&] {
        QVector<QRect> all;
        for (const auto* label : Find<QStatusBar>("statusbar")->findChildren<QLabel*>())
            all.append(label->geometry());
        return all;
    };
    const auto before = places();
    Hover({25.5, 30.5});
    comes({{"statusPosition", "25, 30"_q}, {"statusColour", "200 10 20"_q}, {"statusName", {}}});
    Hover({51.5, 50});
    comes({{"statusColour", "30 40 250"_q},
           {"statusPlace", "44, 49.5"_q},
           {"statusSize", QString::fromUtf8("12 × 1")},
           {"statusAngle", QString::fromUtf8("0°")},
           {"statusAddress", "0/2/97"_q},
           {"statusName", "Bar"_q}});
    Press({51.5, 50});
    MoveTo({61.5, 60.3}); // not on the border between two pixels, wherever the mouse has its own
    comes({{"statusPlace", "54, 60"_q}, {"statusName", "Bar"_q}});
    Release({61.5, 60});
    Hover({5, 5});
    comes({{"statusPlace", {}}, {"statusName", {}}});

    window->StartTimers();
    comes({{"statusNetwork", "2.X.X.X"_q},
           {"statusElements", "1 element"_q},
           {"statusUniverses", "1 universe"_q}});
    const auto* rate = Find<QLabel>("statusFrames");
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return rate->text().startsWith("10."_q) || rate->text().startsWith("9."_q); },
        Patience));
    Pick("networkCombo", "Disabled");
    comes({{"statusNetwork", "No network"_q}, {"statusFrames", "0.0 fps"_q}});
    EXPECT_EQ(places(), before) << "nothing moves";
}

TEST_F(Output, WithAltThePixelUnderTheMouseTellsItsWay)
{
    StartWith(Element({0.5, 0.5}, {0.12, 0.01}, 2, 97));
    window->StartTimers();
    ChooseHalves();
    const auto tells = [](const char* line) {
        return QTest::qWaitFor([line] {
            static const QRegularExpression age("sent [0-9]{1,3} ms"_q);
            return QToolTip::isVisible() &&
                   QToolTip::text().replace(age, "sent 7 ms"_q).contains(QLatin1String(line));
        });
    };
    const auto isSilent = [] {
        return QTest::qWaitFor([] { return !QToolTip::isVisible(); });
    };
    QTest::keyPress(&View(), Qt::Key_Alt, Qt::AltModifier);
    MoveTo({44.5, 50}, Qt::AltModifier, Qt::NoButton);
    EXPECT_TRUE(
        tells(">picture (44, 50) #c80a14, &quot;Bar&quot; pixel 1, R 200 G 10 B 20, universe "
              "0/2 channels 97 to 99, to all nodes, sent 7 ms ago<"))
        << qPrintable(QToolTip::text());
    MoveTo({55.5, 50}, Qt::AltModifier, Qt::NoButton);
    EXPECT_TRUE(tells("pixel 12, R 30 G 40 B 250, universe 0/2 channels 130 to 132"));
    MoveTo({20, 20}, Qt::AltModifier, Qt::NoButton);
    EXPECT_TRUE(isSilent());
    Hover({50.5, 50});
    QTest::keyPress(Find<QTreeView>("mappedTreeView"), Qt::Key_Alt, Qt::AltModifier);
    EXPECT_TRUE(tells("&quot;Bar&quot; pixel 7,")) << "the mouse rests";
    QTest::keyRelease(Find<QTreeView>("mappedTreeView"), Qt::Key_Alt);
    EXPECT_TRUE(isSilent());

    // Where it told something, Alt doesn't lead to the menus; where it didn't, it does.
    const QMenuBar& menus = *window->menuBar();
    EXPECT_FALSE(menus.activeAction());
    Hover({20, 20});
    QTest::keyPress(&View(), Qt::Key_Alt, Qt::AltModifier);
    QTest::keyRelease(&View(), Qt::Key_Alt);
    EXPECT_TRUE(menus.activeAction());
    QTest::keyClick(window->menuBar(), Qt::Key_Escape);
    // A menu gets the release.
    Hover({50.5, 50});
    QTest::keyPress(&View(), Qt::Key_Alt, Qt::AltModifier);
    EXPECT_TRUE(tells("&quot;Bar&quot; pixel 7,"));
    QMenu menu;
    menu.addAction("Entry"_q);
    menu.popup({});
    QTest::qWait(150);
    menu.close();
    QTest::qWait(150);
    EXPECT_FALSE(QToolTip::isVisible()) << "until Alt is pressed again";
}

TEST_F(Output, MergingFollowsTheDocument)
{
    const QString merging =
        "<UniverseMerging Enabled=\"1\" FromStartSubnet=\"0\" FromStartUniverse=\"2\" ConsecutiveUniverses=\"1\" ToStartSubnet=\"0\" ToStartUniverse=\"9\" MergerDMXSource=\"PixelWeft\" />\n"_q;
    const QString show = WriteDocument(
        "show.wfm"_q, {.network = "2.0.0.1"_q, .elements = QString(), .before = merging});
    home.Write("broken.wfm", "no document");
    Start();
    window->StartTimers();
    const auto* toggle = Action("actionMergerToggle");
    EXPECT_FALSE(toggle->isChecked());
    Import(show);
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_GT(FramesWhileSending(100), 0);
    Trigger("actionSave_File");
    person.seen.clear();
    person.WillChoose(Path("broken.wfm"_q));
    int behindTheBox = 0;
    person.Will([&](QDialog& box) {
        behindTheBox = FramesWhileSending(20);
        Support::Press(box, "OK"_q);
    });
    Trigger("actionImport");
    EXPECT_EQ(person.seen.back().title, "Mapping Not Imported"_q);
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_GT(behindTheBox, 0);
    EXPECT_GT(FramesWhileSending(20), 0) << "as if nothing had been";
    Trigger("actionNew");
    EXPECT_FALSE(toggle->isChecked());
    FramesWhileSending(10); // what is still on its way
    EXPECT_EQ(FramesWhileSending(20), 0) << "nothing of the document before";
    // Nor is its run of universes received: a new document's begins at 0.
    const auto* in = Find<LedIndicator>("inTrafficLamp");
    EXPECT_TRUE(QTest::qWaitFor([in] { return !in->IsOn(); }));
    EXPECT_TRUE(Receives());

    person.WillPress("Discard"_q); // the new document
    Start();
    EXPECT_TRUE(Action("actionMergerToggle")->isChecked());
    EXPECT_EQ(State(), QString()) << "no one pressed it";
    Trigger("actionMergerToggle");
    EXPECT_EQ(State(), "unsaved"_q);
}

TEST_F(Output, GoesOnWhileASaveWaitsForTheDisk)
{
    Start();
    window->StartTimers();
    Import(WriteDocument("other.wfm"_q, {.elements = Element({0.5, 0.5}, {0.12, 0.01}, 2)}),
           {"OK"});
    // The save first copies what another document is to replace: a pipe that gives nothing yet.
    const std::string file = DocumentPath().toStdString();
    ASSERT_TRUE(QFile::remove(DocumentPath()));
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    ASSERT_NE(Await([](const Channels&) { return true; }), 0);
    std::ptrdiff_t frames = 0;
    std::jthread disk([&] {
        frames = std::ranges::count_if(rig->All(std::chrono::seconds(2)), [](const auto& heard) {
            return ArtNetBytes::UniverseOf(heard.bytes) == 2;
        });
        EXPECT_TRUE(Stage::ComesTrue([&] {
            const int end = open(file.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
            return end >= 0 && close(end) == 0;
        })) << "the save doesn't read it";
    });
    Trigger("actionSave_File");
    disk.join();
    EXPECT_GE(frames, 10);
    EXPECT_EQ(State(), "saved"_q);
    EXPECT_TRUE(QFileInfo(DocumentPath()).isFile());
}

TEST_F(Output, WhatTheHostSendsWeDoNot)
{
    HostStandIn::Host host;
    ASSERT_TRUE(host.Start());
    StartWith(Element({0.5, 0.5}, {0.12, 0.01}));
    window->StartTimers();
    // Each tick the host reads who sends; a frame is due every fourth.
    int ticksWithoutFrame = 0;
    int frames = 0;
    const auto hears = [&](const int& count, int wanted) {
        return QTest::qWaitFor(
            [&] {
                host.Pump();
                for (const std::string& line : host.TakeLines()) {
                    if (line.starts_with("universe")) {
                        ++frames;
                        ticksWithoutFrame = 0;
                    } else if (line.starts_with("0x31 start")) {
                        ++ticksWithoutFrame;
                    }
                }
                return count > wanted;
            },
            Patience);
    };
    ASSERT_TRUE(hears(frames, 2));
    Pick("senderCombo", "LoomTap");
    EXPECT_TRUE(hears(ticksWithoutFrame, 12));
    Pick("senderCombo", "PixelWeft");
    frames = 0;
    EXPECT_TRUE(hears(frames, 2));
}

TEST_F(Output, AddressesOfADeletedRangeGoFromListAndCanvas)
{
    WriteDocument(
        DocumentPath(),
        {.network = "7.X.X.X"_q, .elements = Element({0.5, 0.5}, {0.12, 0.01}, 0, 1, "7.0.0.5"_q)});
    person.WillPress("OK"_q);
    Start();
    EXPECT_FALSE(Item(0).HasAutoMark());
    const QModelIndex address =
        Find<QTreeView>("mappedTreeView")->model()->index(0, MappedDeviceModel::NodeColumn);
    EXPECT_EQ(address.data().toString(), "7.0.0.5"_q);
    person.WillPress("Delete"_q);
    Pick("networkCombo", "Edit...");
    EXPECT_EQ(address.data().toString(), "Auto"_q);
    EXPECT_TRUE(Item(0).HasAutoMark());
}
