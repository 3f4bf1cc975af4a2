// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTest>

#include "UI/Dialogs/LEDDialogDMXUniverseMerging.h"
#include "UI/Main/Desk.h"

namespace {

constexpr auto OurSource = MergerDMXSource::PixelWeft;
constexpr auto HostSource = MergerDMXSource::ReelCommand;

/// The dialog as it stands on the screen, reached by the names of its things.
class Merging : public testing::Test
{
protected:
    void Open(std::unique_ptr<LEDDialogDMXUniverseMerging> made)
    {
        dialog = std::move(made);
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }
    void OpenBesideReelCommand(const UniverseMerging& settings, bool offers = true)
    {
        Open(std::make_unique<LEDDialogDMXUniverseMerging>(settings, QStringLiteral("2.X.X.X"),
                                                           L"2.0.0.77", offers));
    }

    template <typename Type = QSpinBox>
    [[nodiscard]] Type& The(const char* name) const
    {
        auto* found = dialog->findChild<Type*>(QLatin1String(name));
        EXPECT_TRUE(found) << name;
        return *found;
    }
    [[nodiscard]] QPushButton& Button(QDialogButtonBox::StandardButton which) const
    {
        return *The<QDialogButtonBox>("buttonBox").button(which);
    }
    /// The same in the buttons and in the warning, or the test fails.
    [[nodiscard]] bool Confirmable() const
    {
        const bool can = Button(QDialogButtonBox::Ok).isEnabled();
        EXPECT_EQ(Button(QDialogButtonBox::Apply).isEnabled(), can);
        EXPECT_EQ(The<QLabel>("universeOverlapWarning").isVisible(), !can);
        EXPECT_TRUE(Button(QDialogButtonBox::Cancel).isEnabled());
        return can;
    }
    void Click(const char* name) const
    {
        QTest::mouseClick(&The<QAbstractButton>(name), Qt::LeftButton, {}, {8, 8});
    }
    [[nodiscard]] MergerDMXSource Source() const
    {
        return dialog->GetUniverseMerging().GetMergerDMXSource();
    }

    const InFont usual{9};
    std::unique_ptr<LEDDialogDMXUniverseMerging> dialog;
};

} // namespace

TEST_F(Merging, OverlappingRunsCanNotBeConfirmed)
{
    OpenBesideReelCommand({});
    EXPECT_EQ(dialog->size(), QSize(467, 545));
    EXPECT_FALSE(Confirmable()) << "equal starts, even with the merger off";
    const int top = The<QLabel>("unicastWarning").y();
    The("ToStartUniverse").setValue(4);
    EXPECT_TRUE(Confirmable());
    EXPECT_EQ(The<QLabel>("unicastWarning").y(), top) << "nothing jumps";
    The("ConsecutiveUniverses").setValue(4);
    EXPECT_TRUE(Confirmable()) << "side by side";
    The("ConsecutiveUniverses").setValue(5);
    EXPECT_FALSE(Confirmable());
    The("FromStartSubnet").setValue(1);
    EXPECT_TRUE(Confirmable()) << "the result may lie below";
    The("ToStartSubnet").setValue(1);
    EXPECT_FALSE(Confirmable());
    The("FromStartUniverse").setValue(9);
    EXPECT_TRUE(Confirmable());
    EXPECT_EQ(dialog->GetUniverseMerging(), UniverseMerging(false, 1, 9, 5, 1, 4, OurSource));

    // The ends of the spin boxes are those of the settings.
    for (const char* name : {"FromStartSubnet", "FromStartUniverse", "ConsecutiveUniverses",
                             "ToStartSubnet", "ToStartUniverse"})
    {
        The(name).setValue(1000);
    }
    EXPECT_EQ(dialog->GetUniverseMerging(), UniverseMerging(false, 15, 15, 64, 15, 15, OurSource));
}

TEST_F(Merging, ApplyTellsAndTheDialogStays)
{
    OpenBesideReelCommand({true, 0, 0, 4, 1, 0, OurSource});
    EXPECT_EQ(The("ConsecutiveUniverses").value(), 4);
    EXPECT_EQ(The("ToStartSubnet").value(), 1);
    std::vector<UniverseMerging> applied;
    QObject::connect(dialog.get(), &LEDDialogDMXUniverseMerging::apply,
                     [&] { applied.push_back(dialog->GetUniverseMerging()); });
    // What one types first replaces the number that is there; Return ends it and nothing else.
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("3\r"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Enter);
    QTest::mouseClick(&Button(QDialogButtonBox::Apply), Qt::LeftButton);
    EXPECT_EQ(The<QLabel>("mergerStatusLabel").text(), QStringLiteral("Merger On"));
    Click("ToggleMergingUniversesButton");
    EXPECT_EQ(The<QLabel>("mergerStatusLabel").text(), QStringLiteral("Merger Off"));
    QTest::mouseClick(&Button(QDialogButtonBox::Apply), Qt::LeftButton);
    EXPECT_EQ(applied, (std::vector{UniverseMerging(true, 3, 0, 4, 1, 0, OurSource),
                                    UniverseMerging(false, 3, 0, 4, 1, 0, OurSource)}));
    EXPECT_TRUE(dialog->isVisible());
    QTest::keyClick(&The("FromStartSubnet"), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    EXPECT_EQ(applied.size(), 2U);
}

TEST_F(Merging, TheSourceIsTheOperatorsEvenWhenItCanNotBeShown)
{
    OpenBesideReelCommand({true, 0, 0, 4, 1, 0, HostSource}, false);
    auto& ours = The<QRadioButton>("DMXSourcePixelWeft");
    auto& host = The<QRadioButton>("DMXSourceReelCommand");
    EXPECT_EQ(The<QLabel>("PixelWeftIP").text(), QStringLiteral("(2.X.X.X)"));
    EXPECT_EQ(The<QLabel>("ReelCommandIP").text(), QStringLiteral("(2.0.0.77)"));
    EXPECT_TRUE(ours.isChecked());
    EXPECT_FALSE(host.isEnabled());
    EXPECT_EQ(Source(), HostSource);

    dialog->ArtNetDMXInputSettingsChanged(true, L"10.0.0.5");
    EXPECT_EQ(The<QLabel>("ReelCommandIP").text(), QStringLiteral("(10.0.0.5)"));
    EXPECT_TRUE(host.isChecked());
    EXPECT_TRUE(host.isEnabled());

    dialog->ArtNetDMXInputSettingsChanged(false, L"10.0.0.5");
    EXPECT_EQ(Source(), HostSource);
    Click("DMXSourcePixelWeft");
    EXPECT_EQ(Source(), OurSource) << "a click on what is checked already";
    dialog->ArtNetDMXInputSettingsChanged(true, L"10.0.0.5");
    EXPECT_TRUE(ours.isChecked());
    QTest::keyClick(&ours, Qt::Key_Down);
    EXPECT_EQ(Source(), HostSource);
}

TEST_F(Merging, BesideLoomTapThereIsNoChoiceOfASource)
{
    Open(std::make_unique<LEDDialogDMXUniverseMerging>(
        UniverseMerging(true, 0, 0, 4, 1, 0, HostSource)));
    EXPECT_FALSE(The<QWidget>("DMXSourceGroup").isVisible());
    EXPECT_EQ(dialog->GetUniverseMerging(), UniverseMerging(true, 0, 0, 4, 1, 0, OurSource));
}
