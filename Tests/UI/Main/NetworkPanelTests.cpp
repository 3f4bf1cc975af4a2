// SPDX-License-Identifier: MIT
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>
#include <QWheelEvent>

#include "HostStandIn/Host.h"
#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Platform/IPv4.h"
#include "Settings/ApplicationMode.h"
#include "Settings/ExternalServerPreferences.h"
#include "Settings/SettingsBlock.h"
#include "Support/LogCapture.h"
#include "Support/Stage.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Main/LiveCanvas.h"
#include "UI/Network/NetworkChoice.h"
#include "UI/Network/NetworkPanel.h"
#include "UI/Main/WEFTMain.h"
#include "UI/Widgets/LedIndicator.h"

namespace {

QStringList EntriesOf(const QComboBox& combo)
{
    QStringList entries;
    for (int i = 0; i < combo.count(); ++i)
        entries.append(combo.itemText(i));
    return entries;
}

/// Opens the list and chooses an entry, as a hand on the keyboard does.
void Pick(QComboBox& combo, const QString& text)
{
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_Down);
    ASSERT_TRUE(combo.view()->isVisible());
    const int row = combo.findText(text);
    ASSERT_GE(row, 0) << text.toStdString();
    combo.view()->setCurrentIndex(combo.model()->index(row, 0));
    QTest::keyClick(combo.view(), Qt::Key_Return);
    QCoreApplication::processEvents();
}

void TypeRange(QDialog& dialog, const QString& range)
{
    const QStringList octets = range.split(QLatin1Char('.'));
    for (int i = 0; i < octets.size(); ++i)
        dialog.findChild<QLineEdit*>(QStringLiteral("octet%1").arg(i + 1))->setText(octets[i]);
}

/// The panel on a machine whose adapters the test plugs and pulls.
class Panel : public testing::Test
{
protected:
    Panel()
    {
        ApplicationMode::Instance().mode = ApplicationMode::BesideLoomTap;
        preferences.mode = ApplicationMode::BesideLoomTap;
        manager.Initialize();
        choice.Choose(QStringLiteral("2.X.X.X"));
        window.addToolBar(&toolBar);
        panel = new NetworkPanel(
            {networks, choice, manager, nodes, engine, preferences, toolBar, &window});
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        window.activateWindow();
        log.Clear();
    }

    static NetworkInterface Adapter(const std::string& ip, const std::string& broadcast,
                                    bool up = true)
    {
        return {ip, Platform::ParseIPv4(ip).value_or(0), broadcast,
                Platform::ParseIPv4(broadcast).value_or(0), up};
    }
    void Place(const std::wstring& node)
    {
        const DMXMappingArtNet address(0, 0, 1, node, L"Node");
        const DeviceLedItem fixture(L"Maker", L"Lamp", PixelMap(1, 1, PixelMapType::RGB), 1, 3);
        manager.GetMappedDeviceModel()->AddMappingElement(
            std::make_unique<MappedLedItem>(L"Lamp", fixture, nullptr, &address));
    }
    [[nodiscard]] std::vector<std::wstring> Addresses() const
    {
        std::vector<std::wstring> found;
        for (const MappedLedItem* element : manager.GetMappedDeviceModel()->GetAllItems())
            found.push_back(element->GetArtNetMapping()->GetIpconf());
        return found;
    }
    [[nodiscard]] QComboBox& Networks() const
    {
        return *toolBar.findChild<QComboBox*>(QStringLiteral("networkCombo"));
    }
    [[nodiscard]] std::uint32_t Broadcast() { return engine.GetOutput().GetBroadcastValue(); }
    [[nodiscard]] bool TakeDirty() { return std::exchange(manager.documentDirty, false); }

    std::vector<NetworkInterface> adapters = {Adapter("10.0.0.1", "10.255.255.255"),
                                              Adapter("2.0.0.1", "2.255.255.255")};
    Support::LogCapture log;
    GetIPRange networks{[this] {
        return adapters;
    }};
    SettingsBlock settings{SettingsBlock::WithoutStore{}};
    DeviceManager manager{QString()};
    LEDEngine engine{manager};
    NetworkChoice choice{networks, settings, manager, engine, [](const QString&) {
                         }};
    ArtNetNodeModel nodes;
    ExternalServerPreferences preferences;
    QMainWindow window;
    QToolBar toolBar;
    NetworkPanel* panel = nullptr;
    Operator person;
};

} // namespace

TEST_F(Panel, TheListShowsWhatIsThereAndWhatIsChosen)
{
    networks.AddManualRange(L"2.X.X.X");
    networks.AddManualRange(L"7.X.X.X");
    adapters[1].up = false;
    choice.CheckNetworkUpdates();
    QComboBox& combo = Networks();
    EXPECT_EQ(EntriesOf(combo).join(QLatin1Char(' ')),
              QStringLiteral("Disabled 10.0.0.1 2.0.0.1 2.X.X.X 7.X.X.X New... Edit..."));
    EXPECT_EQ(combo.currentText(), QStringLiteral("2.X.X.X"));
    EXPECT_TRUE(combo.toolTip().contains(QStringLiteral("2.0.0.1"))) << "our address in it";
    for (int row = 0; row < combo.count(); ++row) {
        const bool there = row < 2 || row > 4;
        EXPECT_EQ(combo.itemData(row, Qt::ForegroundRole).value<QColor>() == QColor(Qt::lightGray),
                  !there)
            << row;
    }
    EXPECT_TRUE(combo.property("absent").toBool());

    Pick(combo, QStringLiteral("Disabled"));
    EXPECT_TRUE(TakeDirty());
    EXPECT_EQ(Broadcast(), 0U);
    EXPECT_FALSE(EntriesOf(combo).contains(QStringLiteral("Edit..."))) << "it is no range";
    EXPECT_FALSE(combo.property("absent").toBool()) << "none is a choice";
    Pick(combo, QStringLiteral("10.0.0.1"));
    EXPECT_TRUE(TakeDirty());
    EXPECT_EQ(Broadcast(), 0x0AFFFFFFU);
    EXPECT_EQ(combo.currentText(), QStringLiteral("10.0.0.1"));
}

TEST_F(Panel, NothingMovesUnderTheHand)
{
    QComboBox& combo = Networks();
    for (const int key : {Qt::Key_1, Qt::Key_End, Qt::Key_PageUp})
        QTest::keyClick(&combo, static_cast<Qt::Key>(key));
    QWheelEvent wheel(QPointF(5, 5), combo.mapToGlobal(QPoint(5, 5)), QPoint(0, -120),
                      QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&combo, &wheel);
    EXPECT_FALSE(TakeDirty()) << "neither the wheel nor a key that passes by chooses";
    EXPECT_EQ(Broadcast(), 0U);

    networks.AddManualRange(L"2.X.X.X");
    panel->RefillNetworks();
    QTest::keyClick(&combo, Qt::Key_Space);
    const QStringList before = EntriesOf(combo);
    combo.view()->setCurrentIndex(combo.model()->index(1, 0));
    adapters.push_back(Adapter("1.0.0.1", "1.255.255.255"));
    choice.CheckNetworkUpdates();
    EXPECT_TRUE(combo.view()->isVisible());
    EXPECT_EQ(EntriesOf(combo), before);
    EXPECT_EQ(combo.view()->currentIndex().row(), 1);
    QTest::keyClick(combo.view(), Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_TRUE(EntriesOf(combo).contains(QStringLiteral("1.0.0.1"))) << "now it is free";
    EXPECT_EQ(combo.currentText(), QStringLiteral("2.X.X.X"));
    EXPECT_FALSE(TakeDirty());
}

TEST_F(Panel, ANewRangeIsTakenAtOnceAndCancelChangesNothing)
{
    Place(L"9.0.0.9");
    choice.updateArtNetOutput();
    log.Clear();
    person.WillPress(QStringLiteral("Cancel"));
    Pick(Networks(), QStringLiteral("New..."));
    EXPECT_EQ(Networks().currentIndex(), 0) << "no entry has the wanted text";
    EXPECT_EQ(settings.networkText, QStringLiteral("2.X.X.X"));
    EXPECT_EQ(Addresses(), (std::vector<std::wstring>{L"9.0.0.9"}));
    EXPECT_TRUE(log.Messages().empty());
    EXPECT_TRUE(TakeDirty());

    person.Will([](QDialog& dialog) {
        EXPECT_FALSE(dialog.findChild<QPushButton*>(QStringLiteral("deleteButton"))->isVisible());
        TypeRange(dialog, QStringLiteral("10.X.X.X"));
        dialog.accept();
    });
    Pick(Networks(), QStringLiteral("New..."));
    EXPECT_TRUE(networks.HasManualRange(L"10.X.X.X"));
    EXPECT_EQ(Networks().currentText(), QStringLiteral("10.X.X.X"));
    EXPECT_EQ(choice.GetNetworkIP(), L"10.0.0.1");
    EXPECT_EQ(Broadcast(), 0x0AFFFFFFU);
    EXPECT_TRUE(TakeDirty());
}

TEST_F(Panel, ARangeIsEditedAndDeletedAndItsNodesAreForgotten)
{
    networks.AddManualRange(L"7.X.X.X");
    choice.Choose(QStringLiteral("7.X.X.X"));
    ArtNetNodeRecord manual;
    manual.ip = "7.0.0.6";
    manual.manual = true;
    nodes.AddManualNode(manual);
    for (const wchar_t* node : {L"7.0.0.5", L"7.0.0.6", L"10.0.0.20", L"Auto"})
        Place(node);
    const auto all = Addresses();

    for (const char* button : {"Cancel", "OK"}) {
        person.Will([button](QDialog& dialog) {
            EXPECT_EQ(dialog.findChild<QLineEdit*>(QStringLiteral("octet1"))->text(),
                      QStringLiteral("7"));
            if (button == std::string("OK"))
                dialog.accept();
            else
                dialog.reject();
        });
        Pick(Networks(), QStringLiteral("Edit..."));
        EXPECT_EQ(Networks().currentText(), QStringLiteral("7.X.X.X"));
        EXPECT_EQ(Addresses(), all) << button;
    }
    person.Will([](QDialog& dialog) {
        TypeRange(dialog, QStringLiteral("2.0.X.X"));
        dialog.accept();
    });
    Pick(Networks(), QStringLiteral("Edit..."));
    EXPECT_FALSE(networks.HasManualRange(L"7.X.X.X"));
    EXPECT_EQ(Networks().currentText(), QStringLiteral("2.0.X.X"));
    EXPECT_EQ(Broadcast(), 0x02FFFFFFU);
    EXPECT_EQ(Addresses(), (std::vector<std::wstring>{L"Auto", L"7.0.0.6", L"10.0.0.20", L"Auto"}));
    EXPECT_TRUE(
        manager.GetMappedDeviceModel()->GetElement(0)->GetArtNetMapping()->GetIpName().empty());

    person.WillPress(QStringLiteral("Delete"));
    Pick(Networks(), QStringLiteral("Edit..."));
    EXPECT_FALSE(networks.HasManualRange(L"2.0.X.X"));
    EXPECT_EQ(Networks().currentText(), QStringLiteral("Disabled"));
    EXPECT_EQ(Broadcast(), 0U);
    EXPECT_TRUE(TakeDirty());
}

TEST_F(Panel, TheMergerIsSetUpAppliedAndTakenBack)
{
    MappedDeviceModel& document = *manager.GetMappedDeviceModel();
    auto& toggle = *toolBar.findChild<QAction*>(QStringLiteral("actionMergerToggle"));
    auto& properties = *toolBar.findChild<QAction*>(QStringLiteral("actionMergerSettings"));
    QSignalSpy toggled(&toggle, &QAction::toggled);
    const auto setUp = [](QDialog& dialog, int toUniverse) {
        dialog.findChild<QSpinBox*>(QStringLiteral("ToStartUniverse"))->setValue(toUniverse);
        dialog.findChild<QPushButton*>(QStringLiteral("ToggleMergingUniversesButton"))
            ->setChecked(true);
    };
    person.Will([&](QDialog& dialog) {
        setUp(dialog, 5);
        EXPECT_FALSE(document.GetMerging().IsEnabled());
        auto* box = dialog.findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
        QTest::mouseClick(box->button(QDialogButtonBox::Apply), Qt::LeftButton);
        EXPECT_EQ(document.GetMerging().GetToStartUniverse(), 5U);
        EXPECT_TRUE(toggle.isChecked());
        EXPECT_TRUE(TakeDirty());
        dialog.reject();
    });
    properties.trigger();
    EXPECT_EQ(document.GetMerging(), UniverseMerging());
    EXPECT_FALSE(toggle.isChecked());
    EXPECT_TRUE(TakeDirty()) << "the file may have it by now";

    person.Will([&](QDialog& dialog) {
        setUp(dialog, 7);
        dialog.accept();
    });
    properties.trigger();
    EXPECT_EQ(document.GetMerging().GetToStartUniverse(), 7U);
    EXPECT_TRUE(toggle.isChecked());
    EXPECT_TRUE(TakeDirty());
    log.Clear();
    person.Will([](QDialog& dialog) { dialog.accept(); });
    properties.trigger();
    EXPECT_FALSE(TakeDirty());
    EXPECT_TRUE(log.Messages().empty()) << "the output goes on undisturbed";
    EXPECT_EQ(toggled.count(), 0) << "the toggle follows and does nothing";

    // Beside ReelCommand it offers the host's input, as the host tells it.
    preferences.mode = ApplicationMode::BesideReelCommand;
    preferences.artNetIPAddress = L"2.0.0.5";
    person.Will([&](QDialog& dialog) {
        const auto* address = dialog.findChild<QLabel*>(QStringLiteral("ReelCommandIP"));
        EXPECT_EQ(address->text(), QStringLiteral("(2.0.0.5)"));
        EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("PixelWeftIP"))->text(),
                  QStringLiteral("(2.X.X.X)"));
        auto* source = dialog.findChild<QWidget*>(QStringLiteral("DMXSourceReelCommand"));
        EXPECT_FALSE(source->isEnabled());
        emit panel->artNetDMXInputSettingsChanged(true, L"ALL");
        EXPECT_TRUE(source->isEnabled());
        EXPECT_EQ(address->text(), QStringLiteral("(ALL)"));
        dialog.reject();
    });
    properties.trigger();
}

TEST_F(Panel, WithoutAHostThereIsNobodyElseToSend)
{
    const auto* sender = toolBar.findChild<QComboBox*>(QStringLiteral("senderCombo"));
    const auto* merger = toolBar.findChild<QAction*>(QStringLiteral("actionMergerSettings"));
    EXPECT_TRUE(sender->isEnabled());
    EXPECT_TRUE(merger->isEnabled());

    ApplicationMode::Instance().mode = ApplicationMode::NoHost;
    const ExternalServerPreferences none;
    QToolBar other;
    QWidget parent;
    const NetworkPanel alone({networks, choice, manager, nodes, engine, none, other, &parent});
    sender = other.findChild<QComboBox*>(QStringLiteral("senderCombo"));
    merger = other.findChild<QAction*>(QStringLiteral("actionMergerSettings"));
    EXPECT_EQ(EntriesOf(*sender), (QStringList{QStringLiteral("Pixel Weft"), QString()}));
    EXPECT_FALSE(sender->isEnabled());
    EXPECT_FALSE(merger->isEnabled());
}

// ---- On the real window ------------------------------------------------------------------------

namespace {

class LivePanel : public LiveCanvas
{
protected:
    [[nodiscard]] QComboBox& Combo(const char* name) const { return *Find<QComboBox>(name); }
    [[nodiscard]] QToolButton& MergerButton() const
    {
        return *qobject_cast<QToolButton*>(
            Find<QToolBar>("toolBar")->widgetForAction(Action("actionMergerToggle")));
    }
};

} // namespace

TEST_F(LivePanel, LampsLightOnTraffic)
{
    StartWith(Element({0.5, 0.5}, {0.12, 0.01}));
    auto* in = Find<LedIndicator>("inTrafficLamp");
    auto* out = Find<LedIndicator>("outTrafficLamp");
    window->StartTimers();
    EXPECT_TRUE(QTest::qWaitFor([&] { return out->IsOn(); }));
    EXPECT_FALSE(in->IsOn());
    const auto rig = Stage::RigSocket();
    Stage::Bytes dmx = {'A', 'r', 't', '-', 'N', 'e', 't', 0, 0, 0x50,
                        0,   14,  0,   0,   0,   0,   0,   2, 9, 9};
    EXPECT_TRUE(QTest::qWaitFor([&] {
        rig->Send(Stage::Broadcast0, dmx);
        return in->IsOn();
    }));
    Pick(Combo("networkCombo"), QStringLiteral("Disabled"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !in->IsOn() && !out->IsOn(); }));
}

TEST_F(LivePanel, TheMergerFollowsTheDocument)
{
    Start();
    EXPECT_FALSE(MergerButton().isChecked());
    QTest::mouseClick(&MergerButton(), Qt::LeftButton);
    EXPECT_TRUE(Scene().GetManager().GetMappedDeviceModel()->GetMerging().IsEnabled());
    EXPECT_TRUE(Title().endsWith(QStringLiteral("(unsaved)")));
    Trigger("actionSave_File");
    Start();
    EXPECT_TRUE(MergerButton().isChecked());
    EXPECT_FALSE(Title().endsWith(QStringLiteral("(unsaved)"))) << "nobody pressed it";
    Trigger("actionNew");
    EXPECT_FALSE(MergerButton().isChecked());
}

TEST_F(LivePanel, WhatTheHostSendsWeDoNot)
{
    HostStandIn::Host host;
    ASSERT_TRUE(host.Start());
    StartWith(Element({0.5, 0.5}, {0.12, 0.01}));
    window->StartTimers();
    // The host is told each tick who sends; a frame is due every fourth.
    constexpr int someTicks = 12;
    int silence = 0;
    int frames = 0;
    const auto listen = [&] {
        host.Pump();
        for (const std::string& line : host.TakeLines()) {
            if (line.starts_with("universe")) {
                ++frames;
                silence = 0;
            } else if (line.starts_with("0x31 start")) {
                ++silence;
            }
        }
    };
    const auto hearsFrames = [&] {
        listen();
        return frames > 2;
    };
    ASSERT_TRUE(QTest::qWaitFor(hearsFrames, 10'000));
    QComboBox& sender = Combo("senderCombo");
    EXPECT_EQ(EntriesOf(sender),
              (QStringList{QStringLiteral("Pixel Weft"), QStringLiteral("LoomTap")}));
    Pick(sender, QStringLiteral("LoomTap"));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        listen();
        return silence > someTicks;
    }));
    Pick(sender, QStringLiteral("Pixel Weft"));
    frames = 0;
    EXPECT_TRUE(QTest::qWaitFor(hearsFrames));
}

TEST_F(LivePanel, AddressesOfADeletedRangeGoFromListAndCanvas)
{
    QString element = Element({0.5, 0.5}, {0.12, 0.01});
    element.replace(QStringLiteral("channel=\"1\""),
                    QStringLiteral("channel=\"1\" ipconf=\"7.0.0.5\" ipName=\"Far\""));
    WriteText(DocumentPath(),
              QStringLiteral("<LEDFixtureLibrary>\n</LEDFixtureLibrary>\n<Mapping name=\"Show\" "
                             "version=\"1.0\" resolution=\"100,100\" network=\"7.X.X.X\">\n") +
                  element + QStringLiteral("</Mapping>\n"));
    person.WillPress(QStringLiteral("OK"));
    person.WillPress(QStringLiteral("OK"));
    Start();
    EXPECT_TRUE(Combo("networkCombo").property("absent").toBool());
    const MappingRectangle& item = *Scene().Find(Scene().AllIds().front());
    EXPECT_FALSE(item.HasAutoMark());
    const QModelIndex address = Find<QTreeView>("mappedTreeView")->model()->index(0, 9);
    EXPECT_TRUE(address.data().toString().contains(QStringLiteral("7.0.0.5")));
    person.WillPress(QStringLiteral("Delete"));
    Pick(Combo("networkCombo"), QStringLiteral("Edit..."));
    EXPECT_TRUE(address.data().toString().contains(QStringLiteral("Auto")));
    EXPECT_TRUE(item.HasAutoMark());
    EXPECT_EQ(Combo("networkCombo").currentText(), QStringLiteral("Disabled"));
}
