// SPDX-License-Identifier: MIT
#include <QtTest>
#include <QtWidgets>

#include "Settings/ApplicationMode.h"
#include "Support/Literals.h"
#include "Support/Operator.h"
#include "UI/Network/Machine.h"
#include "UI/Network/NetworkPanel.h"
#include "UI/Widgets/DeskLook.h"
#include "UI/Widgets/IPCtrl.h"

namespace {

class Panel : public Machine
{
protected:
    Panel()
    {
        ApplicationMode::Instance().mode = ApplicationMode::BesideLoomTap;
        preferences.mode = ApplicationMode::BesideLoomTap;
        choice.Choose("2.X.X.X"_q);
        window.addToolBar(&toolBar);
        panel = new NetworkPanel(
            {networks, choice, manager, nodes, engine, preferences, undo, toolBar, &window});
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        window.activateWindow();
        log.Clear();
    }
    ~Panel() override { EXPECT_TRUE(person.IsDone()); }

    template <typename Type>
    [[nodiscard]] Type& The(const char* name) const
    {
        return *toolBar.findChild<Type*>(QLatin1String(name));
    }
    [[nodiscard]] QComboBox& Networks() const { return The<QComboBox>("networkCombo"); }
    [[nodiscard]] QString Entries() const
    {
        QStringList entries;
        for (int i = 0; i < Networks().count(); ++i)
            entries.append(Networks().itemText(i));
        return entries.join(QLatin1Char(' '));
    }
    void Pick(const char* text) const { Support::Pick(Networks(), text); }
    /// Will type a range into the dialog behind the next pick, which shows `before` until then.
    void WillType(const QString& before, const QString& range)
    {
        person.Will([before, range](QDialog& dialog) {
            auto& control = *dialog.findChild<IPCtrl*>();
            EXPECT_EQ(control.GetIP(), before);
            EXPECT_EQ(dialog.findChild<QPushButton*>("deleteButton"_q)->isVisible(),
                      before != "X.X.X.X"_q);
            control.SetIP(range);
            dialog.accept();
        });
    }
    [[nodiscard]] std::vector<std::wstring> Addresses() const
    {
        std::vector<std::wstring> found;
        for (const MappedLedItem* element : manager.GetMappedDeviceModel()->GetAllItems())
            found.push_back(element->GetArtNetMapping()->GetIpconf());
        return found;
    }

    QMainWindow window;
    QToolBar toolBar;
    QUndoStack undo;
    NetworkPanel* panel = nullptr;
    Support::Operator person;
};

} // namespace

TEST_F(Panel, TheListShowsWhatIsThereAndWhatIsChosen)
{
    for (const wchar_t* range : {L"2.X.X.X", L"7.X.X.X", L"2.X.X.X"}) // each once
        networks.AddManualRange(range);
    adapters[1].up = false;
    choice.CheckNetworkUpdates();
    const std::string address = std::exchange(adapters[1].ip, "");
    choice.CheckNetworkUpdates();
    EXPECT_TRUE(Networks().property("absent").toBool());
    EXPECT_TRUE(Networks().toolTip().contains("No adapter has the network 2.X.X.X now"_q));
    adapters[1].ip = address;
    choice.CheckNetworkUpdates();
    const QComboBox& combo = Networks();
    const QString there = "Adapter art10, our address in it is 10.0.0.1"_q;
    const QString pulled = "Adapter art2, our address in it is 2.0.0.1: not connected"_q;
    EXPECT_EQ(combo.itemData(1, Qt::ToolTipRole), there);
    EXPECT_EQ(combo.itemData(3, Qt::ToolTipRole), pulled);
    EXPECT_EQ(combo.itemData(4, Qt::ToolTipRole), "No adapter has this network now"_q);
    EXPECT_EQ(Entries(), "Disabled 10.0.0.1 2.0.0.1 2.X.X.X 7.X.X.X New... Edit..."_q);
    for (int row = 0; row < combo.count(); ++row)
        EXPECT_EQ(combo.itemData(row, Qt::ForegroundRole).isNull(), row < 2 || row > 4) << row;
    const auto usual = qScopeGuard([] { UseLook(GreyLook()); });
    for (const Look* look : {&NightLook(), &GreyLook()}) {
        UseLook(*look);
        EXPECT_EQ(combo.itemData(4, Qt::ForegroundRole).value<QBrush>().color(),
                  look->listTextFaded);
    }
    for (const auto& [pick, tip, absent, broadcast] :
         {std::tuple("2.X.X.X", "art2, our address in it is 2.0.0.1: not connected", true,
                     0x02FFFFFFU),
          {"Disabled", "nothing is sent", false, 0U}, // none is a choice
          {"10.0.0.1", "art10, our address in it is 10.0.0.1", false, 0x0AFFFFFFU},
          {"7.X.X.X", "No adapter has the network 7.X.X.X", true, 0U}})
    {
        Pick(pick);
        EXPECT_TRUE(TakeDirty());
        EXPECT_EQ(combo.currentText(), QLatin1String(pick));
        EXPECT_TRUE(combo.toolTip().contains(QLatin1String(tip))) << pick;
        EXPECT_EQ(combo.property("absent").toBool(), absent) << pick;
        EXPECT_EQ(Broadcast(), broadcast) << pick;
        EXPECT_EQ(Entries().contains("Edit..."_q), absent) << "only ranges are edited";
    }
}

TEST_F(Panel, TheInLampNamesTheConsolesOfOneUniverse)
{
    const auto& lamp = The<QWidget>("inTrafficLamp");
    choice.updateArtNetOutput();
    engine.GetOutput().HandleEvent(OutputEvent::ServerStopped);
    std::vector<ArtNetSourceConflict> conflicts{{0x12, 0x0200000A, 0x0200000B}};
    emit engine.GetOutput().sourceConflictsChanged(conflicts);
    EXPECT_TRUE(
        lamp.toolTip().contains("\nSub-net 1, universe 2: 2.0.0.10 counts, 2.0.0.11 is ignored"_q));
    conflicts.resize(64, conflicts.front());
    emit engine.GetOutput().sourceConflictsChanged(conflicts);
    EXPECT_EQ(lamp.toolTip().count("2.0.0.11"_q), 8);
    EXPECT_TRUE(lamp.toolTip().contains("\nand 56 more"_q));
    emit engine.GetOutput().sourceConflictsChanged({});
    EXPECT_FALSE(lamp.toolTip().contains("ignored"_q));
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

    QTest::keyClick(&combo, Qt::Key_Space);
    const QString before = Entries();
    combo.view()->setCurrentIndex(combo.model()->index(1, 0));
    adapters.push_back(Adapter("1.0.0.1", "1.255.255.255"));
    choice.CheckNetworkUpdates();
    EXPECT_TRUE(combo.view()->isVisible());
    EXPECT_EQ(Entries(), before);
    EXPECT_EQ(combo.view()->currentIndex().row(), 1);
    QTest::keyClick(combo.view(), Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_TRUE(Entries().contains("1.0.0.1"_q)) << "now it is free";
    EXPECT_FALSE(TakeDirty());
}

TEST_F(Panel, ANetworkThatAppearsWhileTheListIsOpenIsTaken)
{
    networks.AddManualRange(L"2.X.X.X");
    choice.CheckNetworkUpdates();
    for (const int key : {Qt::Key_Escape, Qt::Key_Return}) {
        const auto all = std::exchange(adapters, {});
        choice.CheckNetworkUpdates();
        EXPECT_EQ(Broadcast(), 0U);
        EXPECT_EQ(Networks().currentText(), "2.X.X.X"_q);
        QTest::keyClick(&Networks(), Qt::Key_Space);
        adapters = all;
        QTest::keyClick(Networks().view(), static_cast<Qt::Key>(key));
        QCoreApplication::processEvents();
        if (key == Qt::Key_Escape)
            choice.CheckNetworkUpdates();
        EXPECT_EQ(Broadcast(), 0x02FFFFFFU) << "by the next look, or the same choice again";
    }
}

TEST_F(Panel, ANewRangeIsTakenAtOnceAndCancelChangesNothing)
{
    Place(L"9.0.0.9");
    choice.updateArtNetOutput();
    log.Clear();
    person.WillPress("Cancel"_q);
    Pick("New...");
    EXPECT_EQ(settings.networkText, "2.X.X.X"_q);
    EXPECT_EQ(Addresses(), (std::vector<std::wstring>{L"9.0.0.9"}));
    EXPECT_TRUE(log.Messages().empty());

    for (int again = 0; again < 2; ++again) {
        WillType("X.X.X.X"_q, "10.X.X.X"_q);
        Pick("New...");
        EXPECT_TRUE(networks.HasManualRange(L"10.X.X.X"));
        EXPECT_EQ(Networks().currentText(), "10.X.X.X"_q) << again;
        EXPECT_EQ(Broadcast(), 0x0AFFFFFFU);
    }
}

TEST_F(Panel, ARangeIsEditedAndDeletedAndItsNodesAreForgotten)
{
    networks.AddManualRange(L"7.X.X.X");
    choice.Choose("7.X.X.X"_q);
    ArtNetNodeRecord manual;
    manual.ip = "7.0.0.6";
    manual.manual = true;
    nodes.AddManualNode(manual);
    for (const wchar_t* node : {L"7.0.0.5", L"7.0.0.6", L"10.0.0.20", L"Auto"})
        Place(node);
    const auto all = Addresses();

    for (const char* button : {"Cancel", "OK"}) {
        person.WillPress(QLatin1String(button));
        Pick("Edit...");
        EXPECT_EQ(Networks().currentText(), "7.X.X.X"_q);
        EXPECT_EQ(Addresses(), all) << button;
    }
    WillType("7.X.X.X"_q, "2.0.X.X"_q);
    Pick("Edit...");
    EXPECT_FALSE(networks.HasManualRange(L"7.X.X.X"));
    EXPECT_EQ(Networks().currentText(), "2.0.X.X"_q);
    EXPECT_EQ(Broadcast(), 0x02FFFFFFU);
    EXPECT_EQ(Addresses(), (std::vector<std::wstring>{L"Auto", L"7.0.0.6", L"10.0.0.20", L"Auto"}));
    undo.undo();
    EXPECT_EQ(Addresses(), all) << "what a wrong choice cleared comes back";
    undo.redo();

    person.WillPress("Delete"_q);
    Pick("Edit...");
    EXPECT_FALSE(networks.HasManualRange(L"2.0.X.X"));
    EXPECT_EQ(Networks().currentText(), "Disabled"_q);
    EXPECT_EQ(Broadcast(), 0U);
    EXPECT_TRUE(TakeDirty());
}

TEST_F(Panel, TheMergerIsSetUpAppliedAndTakenBack)
{
    const MappedDeviceModel& document = *manager.GetMappedDeviceModel();
    auto& toggle = The<QAction>("actionMergerToggle");
    const QSignalSpy toggled(&toggle, &QAction::toggled);
    // Whether the document is changed, the toggle on and the output set up again.
    const auto expect = [&](bool changed, bool on, unsigned toUniverse) {
        EXPECT_EQ(TakeDirty(), changed);
        EXPECT_EQ(!log.Messages().empty(), changed);
        EXPECT_EQ(toggle.isChecked(), on);
        EXPECT_EQ(document.GetMerging().IsEnabled(), on);
        EXPECT_EQ(document.GetMerging().GetToStartUniverse(), toUniverse);
        log.Clear();
    };
    const auto inDialog = [&](const std::function<void(QDialog&)>& act) {
        person.Will(act);
        The<QAction>("actionMergerSettings").trigger();
    };
    const auto setUp = [](QDialog& dialog, int toUniverse) {
        dialog.findChild<QSpinBox*>("ToStartUniverse"_q)->setValue(toUniverse);
        dialog.findChild<QPushButton*>("ToggleMergingUniversesButton"_q)->setChecked(true);
    };
    const unsigned original = document.GetMerging().GetToStartUniverse();
    inDialog([&](QDialog& dialog) {
        setUp(dialog, 5);
        expect(false, false, original);
        auto* box = dialog.findChild<QDialogButtonBox*>("buttonBox"_q);
        QTest::mouseClick(box->button(QDialogButtonBox::Apply), Qt::LeftButton);
        expect(true, true, 5);
        dialog.reject();
    });
    expect(true, false, original); // the file may have it by now
    inDialog([&](QDialog& dialog) {
        setUp(dialog, 7);
        dialog.accept();
    });
    expect(true, true, 7);
    inDialog([](QDialog& dialog) { dialog.accept(); });
    expect(false, true, 7);
    EXPECT_EQ(toggled.count(), 0) << "the toggle follows and does nothing";
    toggle.trigger();
    expect(true, false, 7);

    // While the runs overlap it opens the settings instead, where it is on once they don't.
    inDialog([&](QDialog& dialog) {
        setUp(dialog, 9);
        dialog.findChild<QSpinBox*>("FromStartUniverse"_q)->setValue(1);
        dialog.accept();
    });
    EXPECT_TRUE(TakeDirty());
    UniverseMerging overlapping = document.GetMerging();
    overlapping.SetConsecutiveUniverses(64);
    overlapping.SetEnabled(false);
    manager.GetMappedDeviceModel()->SetMerging(overlapping);
    panel->ShowMerging();
    log.Clear();
    for (const bool mends : {false, true}) {
        person.Will([&](QDialog& dialog) {
            expect(false, false, 9);
            dialog.findChild<QSpinBox*>("ConsecutiveUniverses"_q)->setValue(mends ? 8 : 64);
            mends ? dialog.accept() : dialog.reject();
        });
        toggle.trigger();
        expect(mends, mends, 9);
    }

    // Beside ReelCommand the dialog offers the host's input, as the host reports it.
    preferences.mode = ApplicationMode::BesideReelCommand;
    preferences.artNetIPAddress = L"2.0.0.5";
    inDialog([&](QDialog& dialog) {
        const auto& host = *dialog.findChild<QLabel*>("ReelCommandIP"_q);
        EXPECT_EQ(host.text(), "(2.0.0.5)"_q);
        EXPECT_EQ(dialog.findChild<QLabel*>("PixelWeftIP"_q)->text(), "(2.X.X.X)"_q);
        emit panel->artNetDMXInputSettingsChanged(true, L"ALL");
        EXPECT_EQ(host.text(), "(ALL)"_q);
        dialog.reject();
    });
}

TEST_F(Panel, WithoutAHostThereIsNobodyElseToSend)
{
    EXPECT_TRUE(The<QComboBox>("senderCombo").isEnabled());
    EXPECT_TRUE(The<QAction>("actionMergerSettings").isEnabled());
    ApplicationMode::Instance().mode = ApplicationMode::NoHost;
    const ExternalServerPreferences none;
    QToolBar other;
    const NetworkPanel alone(
        {networks, choice, manager, nodes, engine, none, undo, other, &window});
    EXPECT_FALSE(other.findChild<QComboBox*>("senderCombo"_q)->isEnabled());
    EXPECT_FALSE(other.findChild<QAction*>("actionMergerSettings"_q)->isEnabled());
}
