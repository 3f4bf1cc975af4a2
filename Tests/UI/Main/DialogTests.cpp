// SPDX-License-Identifier: MIT
// Dialogs and controls by themselves, worked as a person does.

#include "UI/Dialogs/LEDDialogDMXUniverseMerging.h"
#include "UI/Dialogs/OperatorNotices.h"
#include "UI/Main/Desk.h"
#include "UI/Widgets/DeskLook.h"
#include "UI/Widgets/IPCtrlManual.h"

namespace {

void Show(QWidget& widget)
{
    widget.setStyleSheet(DeskStyleSheet());
    widget.show();
    widget.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
}

/// Keys go to whatever has the focus then. < and > are the arrows, ^ End, ~ Backspace, @ Tab, #
/// Shift and Tab, ! Shift alone.
void Type(const QString& keys)
{
    static const QMap<QChar, int> special = {
        {QLatin1Char('<'), Qt::Key_Left},   {QLatin1Char('>'), Qt::Key_Right},
        {QLatin1Char('^'), Qt::Key_End},    {QLatin1Char('~'), Qt::Key_Backspace},
        {QLatin1Char('@'), Qt::Key_Tab},    {QLatin1Char('!'), Qt::Key_Shift},
        {QLatin1Char('#'), Qt::Key_Backtab}};
    for (const QChar key : keys) {
        QWidget* target = QApplication::focusWidget();
        if (special.contains(key))
            QTest::keyClick(target, static_cast<Qt::Key>(special[key]));
        else
            QTest::keyClick(target, key.toLatin1());
        QCoreApplication::processEvents();
    }
}

/// The place of the address field with the focus, 1 to 4.
int Place()
{
    return QApplication::focusWidget()->objectName().right(1).toInt();
}

QLineEdit& Field(const QWidget& control, int place)
{
    return *control.findChild<QLineEdit*>("octet%1"_q.arg(place));
}

} // namespace

// ---- Addresses ---------------------------------------------------------------------------------

TEST(AddressTest, TypingMovesOnWhereAFieldIsDone)
{
    IPCtrlManualIPRange range;
    Show(range);
    EXPECT_EQ(range.width(), IPCtrl::MaximumWidth);
    for (const auto& [before, keys, after, place] : {
             // The first field has the focus at first.
             std::tuple("X.X.X.X", "192168019", "192.168.0.19", 4),
             {"X.X.X.X", "19.256", "19.25.X.X", 2},    // 256 is no octet
             {"X.X.X.X", "19,7.255", "19.7.X.X", 4},   // 255 is open
             {"X.X.X.X", "1.2.3.100", "1.2.3.100", 4}, // the last has nowhere to go
             {"X.X.X.X", "100x", "100.X.X.X", 3},
             // A dot behind a field that was left by itself skips nothing.
             {"X.X.X.X", "172.16.", "172.16.X.X", 3},
             {"X.X.X.X", "192!,168!,0!,7", "192.168.0.7", 4},
             {"X.X.X.X", "172..", "172.X.X.X", 3},
             {"X.X.X.X", "172<^.9", "172.9.X.X", 2}, // it was left again meanwhile
             {"...", "0005", "0.0.0.5", 4},          // a 0 is a whole octet in an empty field
             {"...", ".@", "X.X..", 3},              // what is left empty is open
             {"2.255.255.0", "", "2.X.X.0", 1},
             {"2.255.0.1", "!", "2.X.0.1", 1},
             // The cursor leaves a field at its ends, with all of the next one selected.
             {"192.16.8.1", ">", "192.16.8.1", 2},
             {"192.16.8.1", ">7", "192.7.8.1", 2},
             {"192.16.8.1", ">>", "192.16.8.1", 2},
             {"192.16.8.1", ">^><~", "192..8.1", 2},
             {"192.16.8.1", ">^><~~", "192.X.8.1", 1},
             {"X.X.X.X", "!", "X.X.X.X", 1}, // a modifier is no typing
             {"2.3.4", "", "X.X.X.X", 1},
         })
    {
        range.SetIP(QLatin1String(before));
        Type(QLatin1String(keys));
        EXPECT_EQ(range.GetIP(), QLatin1String(after)) << before << " " << keys;
        EXPECT_EQ(Place(), place) << before << " " << keys;
    }
    // A full field holds on to nothing, not to the focus that Shift and Tab take back.
    range.SetIP("1.168.8.1"_q);
    Field(range, 2).setFocus();
    Field(range, 2).end(false);
    Type("#"_q);
    EXPECT_EQ(Place(), 1);
    range.Clear();
    EXPECT_EQ(range.GetIPWithWildcards(), "X.X.X.X"_q);
    QTest::mouseClick(&Field(range, 4), Qt::LeftButton);
    EXPECT_EQ(range.GetIP(), "X..."_q);
}

TEST(AddressTest, OfANodeOnlyTheOpenPartCanBeTyped)
{
    IPCtrlManualNodeIP node;
    Show(node);
    node.SetIP("192.168.1.255"_q);
    Type("~255"_q); // nothing to type in the third
    EXPECT_EQ(node.GetIP(), "192.168.1.255"_q);
    // The same control for another node.
    node.SetIPAndMask("2.17.9.33"_q, "2.255.0.255"_q);
    EXPECT_EQ(node.GetIP(), "2.17.0.33"_q);
    Type("200"_q);
    EXPECT_EQ(Place(), 2) << "the third can't be typed in";
    EXPECT_FALSE(Field(node, 4).isReadOnly());
}

// ---- The merger --------------------------------------------------------------------------------

namespace {

constexpr auto OurSource = MergerDMXSource::PixelWeft;
constexpr auto HostSource = MergerDMXSource::ReelCommand;

template <typename Type = QSpinBox>
Type& In(const QDialog& dialog, const char* name)
{
    return *dialog.findChild<Type*>(QLatin1String(name));
}

void Click(const QDialog& dialog, const char* name)
{
    QTest::mouseClick(&In<QAbstractButton>(dialog, name), Qt::LeftButton, {}, {8, 8});
}

MergerDMXSource SourceIn(const LEDDialogDMXUniverseMerging& dialog)
{
    return dialog.GetUniverseMerging().GetMergerDMXSource();
}

} // namespace

TEST(MergingDialogTest, OverlappingRunsCanNotBeConfirmed)
{
    LEDDialogDMXUniverseMerging dialog(UniverseMerging(true, 0, 0, 4, 1, 0, HostSource));
    Show(dialog);
    EXPECT_FALSE(In<QWidget>(dialog, "DMXSourceGroup").isVisible());
    EXPECT_EQ(SourceIn(dialog), OurSource)
        << "without a host that offers its own there is no choice";
    // What one types first replaces the number that is there; Return ends it and nothing else.
    QTest::keyClicks(QApplication::focusWidget(), "3\r"_q);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter);
    EXPECT_TRUE(dialog.isVisible());
    Click(dialog, "ToggleMergingUniversesButton");
    EXPECT_EQ(In<QLabel>(dialog, "mergerStatusLabel").text(), "Merger Off"_q);
    for (const auto& [box, value, confirmable, leavesNet] :
         {std::tuple("FromStartSubnet", 1, false, false), // equal starts, even with the merger off
          {"ToStartUniverse", 4, true, false},            // side by side
          {"ConsecutiveUniverses", 5, false, false},
          {"FromStartSubnet", 15, true, false},
          {"FromStartUniverse", 12, true, true}, // up to 16/0
          {"FromStartUniverse", 11, true, false},
          {"ToStartSubnet", 15, true, false},
          {"FromStartSubnet", 2, true, false}, // the result may lie above or below
          {"ToStartUniverse", 12, true, true},
          {"FromStartUniverse", 5, true, true},
          {"ToStartUniverse", 4, true, false},
          {"ToStartSubnet", 2, false, false},
          {"FromStartUniverse", 9, true, false}})
    {
        In(dialog, box).setValue(value);
        const auto& buttons = In<QDialogButtonBox>(dialog, "buttonBox");
        EXPECT_EQ(buttons.button(QDialogButtonBox::Ok)->isEnabled(), confirmable) << box << value;
        EXPECT_EQ(buttons.button(QDialogButtonBox::Apply)->isEnabled(), confirmable);
        EXPECT_EQ(In<QLabel>(dialog, "universeOverlapWarning").isVisible(), !confirmable);
        EXPECT_EQ(In<QLabel>(dialog, "netWarning").isVisible(), leavesNet) << box << value;
        EXPECT_EQ(
            leavesNet,
            In<QWidget>(dialog, "mergerPicture").accessibleDescription().contains(" - 1:0/0"_q))
            << box << value;
    }
    EXPECT_TRUE(In<QWidget>(dialog, "mergerPicture")
                    .accessibleDescription()
                    .contains("on 2/9 - 2/13, merged and sent on 2/4 - 2/8"_q));
    EXPECT_EQ(dialog.GetUniverseMerging(), UniverseMerging(false, 2, 9, 5, 2, 4, OurSource));
    // The ends of the spin boxes are those of the settings.
    for (auto* box : dialog.findChildren<QSpinBox*>())
        box->setValue(1000);
    EXPECT_EQ(dialog.GetUniverseMerging(), UniverseMerging(false, 15, 15, 64, 15, 15, OurSource));
}

TEST(MergingDialogTest, TheSourceIsTheOperatorsEvenWhenItCanNotBeShown)
{
    LEDDialogDMXUniverseMerging dialog(UniverseMerging(true, 0, 0, 4, 1, 0, HostSource),
                                       "2.X.X.X"_q, L"2.0.0.77", false);
    Show(dialog);
    auto& ours = In<QRadioButton>(dialog, "DMXSourcePixelWeft");
    auto& host = In<QRadioButton>(dialog, "DMXSourceReelCommand");
    EXPECT_TRUE(ours.isChecked());
    EXPECT_FALSE(host.isEnabled());
    EXPECT_EQ(SourceIn(dialog), HostSource);
    dialog.ArtNetDMXInputSettingsChanged(true, L"10.0.0.5");
    EXPECT_TRUE(host.isChecked());
    EXPECT_TRUE(host.isEnabled());
    dialog.ArtNetDMXInputSettingsChanged(false, L"10.0.0.5");
    Click(dialog, "DMXSourcePixelWeft");
    EXPECT_EQ(SourceIn(dialog), OurSource) << "a click on what is checked already";
    dialog.ArtNetDMXInputSettingsChanged(true, L"10.0.0.5");
    EXPECT_TRUE(ours.isChecked());
    QTest::keyClick(&ours, Qt::Key_Down);
    EXPECT_EQ(SourceIn(dialog), HostSource);
}

// ---- Notices -----------------------------------------------------------------------------------

TEST(OperatorNoticesTest, WaitForNobodyAndNeverPileUp)
{
    QStringList read;
    OperatorNotices* notices = nullptr;
    OperatorNotices shown([&](const OperatorNotices::Notice& notice) {
        read.append(notice.text);
        if (notice.text == "second"_q)
            return;
        notices->Add({nullptr, {}, "first"_q}); // the same network came and went again
        notices->Add({nullptr, {}, "second"_q});
        QCoreApplication::processEvents(); // the box stays open
    });
    notices = &shown;
    shown.Add({nullptr, {}, "first"_q});
    EXPECT_TRUE(read.isEmpty());
    QCoreApplication::processEvents();
    shown.Add({nullptr, {}, "first"_q}); // read, and true again
    shown.Show();
    EXPECT_EQ(read.join(QLatin1Char(' ')), "first second first second"_q);
}
