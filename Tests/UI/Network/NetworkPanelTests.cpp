// SPDX-License-Identifier: MIT
#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QToolBar>
#include <QWheelEvent>

#include "Settings/ApplicationMode.h"
#include "Support/Literals.h"
#include "Support/Operator.h"
#include "UI/Network/Machine.h"
#include "UI/Network/NetworkPanel.h"

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
            {networks, choice, manager, nodes, engine, preferences, toolBar, &window});
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
    /// Opens the list and chooses an entry, as a hand on the keyboard does.
    void Pick(const char* text) const
    {
        QComboBox& combo = Networks();
        combo.setFocus();
        QTest::keyClick(&combo, Qt::Key_Down);
        ASSERT_TRUE(combo.view()->isVisible());
        const int row = combo.findText(QLatin1String(text));
        ASSERT_GE(row, 0) << text;
        combo.view()->setCurrentIndex(combo.model()->index(row, 0));
        QTest::keyClick(combo.view(), Qt::Key_Return);
        QCoreApplication::processEvents();
    }
    /// Will type a range into the dialog behind the next pick, which shows `before` until then.
    void WillType(const char* before, const char* range)
    {
        person.Will([octets = QString(QLatin1String(range)).split(QLatin1Char('.')),
                     first = QString(QLatin1String(before))](QDialog& dialog) {
            const auto field = [&dialog](int i) {
                return dialog.findChild<QLineEdit*>("octet%1"_q.arg(i + 1));
            };
            EXPECT_EQ(field(0)->text(), first);
            const auto* erase = dialog.findChild<QPushButton*>("deleteButton"_q);
            EXPECT_EQ(erase->isVisible(), first != QLatin1String("X")) << "only what is there goes";
            for (int i = 0; i < octets.size(); ++i)
                field(i)->setText(octets[i]);
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
    NetworkPanel* panel = nullptr;
    Support::Operator person;
};

} // namespace

TEST_F(Panel, TheListShowsWhatIsThereAndWhatIsChosen)
{
    networks.AddManualRange(L"2.X.X.X");
    networks.AddManualRange(L"7.X.X.X");
    adapters[1].up = false;
    choice.CheckNetworkUpdates();
    const QComboBox& combo = Networks();
    EXPECT_EQ(Entries(), "Disabled 10.0.0.1 2.0.0.1 2.X.X.X 7.X.X.X New... Edit..."_q);
    EXPECT_EQ(combo.currentText(), "2.X.X.X"_q);
    EXPECT_TRUE(combo.toolTip().contains("2.0.0.1"_q)) << "our address in it";
    for (int row = 0; row < combo.count(); ++row) {
        const bool there = row < 2 || row > 4;
        EXPECT_EQ(combo.itemData(row, Qt::ForegroundRole).value<QColor>() == QColor(Qt::lightGray),
                  !there)
            << row;
    }
    EXPECT_TRUE(combo.property("absent").toBool());

    Pick("Disabled");
    EXPECT_TRUE(TakeDirty());
    EXPECT_EQ(Broadcast(), 0U);
    EXPECT_FALSE(Entries().contains("Edit..."_q)) << "it is no range";
    EXPECT_FALSE(combo.property("absent").toBool()) << "none is a choice";
    EXPECT_TRUE(combo.toolTip().contains("nothing is sent"_q));
    Pick("10.0.0.1");
    EXPECT_TRUE(TakeDirty());
    EXPECT_EQ(Broadcast(), 0x0AFFFFFFU);
    EXPECT_EQ(combo.currentText(), "10.0.0.1"_q);
    Pick("7.X.X.X");
    EXPECT_TRUE(combo.property("absent").toBool());
    EXPECT_TRUE(combo.toolTip().contains("No adapter has the network 7.X.X.X"_q));
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
    EXPECT_EQ(combo.currentText(), "2.X.X.X"_q);
    EXPECT_FALSE(TakeDirty());
}

TEST_F(Panel, ANewRangeIsTakenAtOnceAndCancelChangesNothing)
{
    Place(L"9.0.0.9");
    choice.updateArtNetOutput();
    log.Clear();
    person.WillPress("Cancel"_q);
    Pick("New...");
    EXPECT_EQ(Networks().currentIndex(), 0) << "no entry has the wanted text";
    EXPECT_EQ(settings.networkText, "2.X.X.X"_q);
    EXPECT_EQ(Addresses(), (std::vector<std::wstring>{L"9.0.0.9"}));
    EXPECT_TRUE(log.Messages().empty());
    EXPECT_TRUE(TakeDirty());

    for (int again = 0; again < 2; ++again) {
        WillType("X", "10.X.X.X");
        Pick("New...");
        EXPECT_TRUE(networks.HasManualRange(L"10.X.X.X"));
        EXPECT_EQ(Networks().currentText(), "10.X.X.X"_q) << again;
        EXPECT_EQ(Broadcast(), 0x0AFFFFFFU);
        EXPECT_TRUE(TakeDirty());
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
    WillType("7", "2.0.X.X");
    Pick("Edit...");
    EXPECT_FALSE(networks.HasManualRange(L"7.X.X.X"));
    EXPECT_EQ(Networks().currentText(), "2.0.X.X"_q);
    EXPECT_EQ(Broadcast(), 0x02FFFFFFU);
    EXPECT_EQ(Addresses(), (std::vector<std::wstring>{L"Auto", L"7.0.0.6", L"10.0.0.20", L"Auto"}));
    EXPECT_TRUE(
        manager.GetMappedDeviceModel()->GetElement(0)->GetArtNetMapping()->GetIpName().empty());

    person.WillPress("Delete"_q);
    Pick("Edit...");
    EXPECT_FALSE(networks.HasManualRange(L"2.0.X.X"));
    EXPECT_EQ(Networks().currentText(), "Disabled"_q);
    EXPECT_EQ(Broadcast(), 0U);
    EXPECT_TRUE(TakeDirty());
}

TEST_F(Panel, TheMergerIsSetUpAppliedAndTakenBack)
{
    MappedDeviceModel& document = *manager.GetMappedDeviceModel();
    auto& toggle = The<QAction>("actionMergerToggle");
    auto& properties = The<QAction>("actionMergerSettings");
    QSignalSpy toggled(&toggle, &QAction::toggled);
    const auto setUp = [](QDialog& dialog, int toUniverse) {
        dialog.findChild<QSpinBox*>("ToStartUniverse"_q)->setValue(toUniverse);
        dialog.findChild<QPushButton*>("ToggleMergingUniversesButton"_q)->setChecked(true);
    };
    person.Will([&](QDialog& dialog) {
        setUp(dialog, 5);
        EXPECT_FALSE(document.GetMerging().IsEnabled());
        auto* box = dialog.findChild<QDialogButtonBox*>("buttonBox"_q);
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
    person.WillPress("OK"_q);
    properties.trigger();
    EXPECT_FALSE(TakeDirty());
    EXPECT_TRUE(log.Messages().empty()) << "the output goes on undisturbed";
    EXPECT_EQ(toggled.count(), 0) << "the toggle follows and does nothing";
    toggle.trigger();
    EXPECT_FALSE(document.GetMerging().IsEnabled());
    EXPECT_TRUE(TakeDirty());
    EXPECT_FALSE(log.Messages().empty()) << "the output is set up again";

    // Beside ReelCommand the dialog offers the host's input, as the host reports it.
    preferences.mode = ApplicationMode::BesideReelCommand;
    preferences.artNetIPAddress = L"2.0.0.5";
    person.Will([&](QDialog& dialog) {
        const auto text = [&dialog](const char* label) {
            return dialog.findChild<QLabel*>(QLatin1String(label))->text();
        };
        EXPECT_EQ(text("ReelCommandIP"), "(2.0.0.5)"_q);
        EXPECT_EQ(text("PixelWeftIP"), "(2.X.X.X)"_q);
        emit panel->artNetDMXInputSettingsChanged(true, L"ALL");
        EXPECT_EQ(text("ReelCommandIP"), "(ALL)"_q);
        dialog.reject();
    });
    properties.trigger();
}

TEST_F(Panel, WithoutAHostThereIsNobodyElseToSend)
{
    EXPECT_TRUE(The<QComboBox>("senderCombo").isEnabled());
    EXPECT_TRUE(The<QAction>("actionMergerSettings").isEnabled());
    ApplicationMode::Instance().mode = ApplicationMode::NoHost;
    const ExternalServerPreferences none;
    QToolBar other;
    QWidget parent;
    const NetworkPanel alone({networks, choice, manager, nodes, engine, none, other, &parent});
    EXPECT_FALSE(other.findChild<QComboBox*>("senderCombo"_q)->isEnabled());
    EXPECT_FALSE(other.findChild<QAction*>("actionMergerSettings"_q)->isEnabled());
}
