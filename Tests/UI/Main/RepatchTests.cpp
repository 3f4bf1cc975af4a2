// SPDX-License-Identifier: MIT
// The repatch of what is selected, from the keyboard to the document. The order and the addresses
// themselves are judged below the window.
#include "UI/Main/InspectorDesk.h"

namespace {

class RepatchDesk : public InspectorDesk
{
protected:
    /// A and B above C and D, all at 0/0/1, and E at 0/0/100.
    void StartWithFive()
    {
        QString elements;
        const auto add = [&](const char* name, QPointF centre, int channel) {
            elements += Element(centre, {0.18, 0.1}, 0, channel)
                            .replace("\"Bar\""_q, "\"%1\""_q.arg(QLatin1String(name)));
        };
        add("A", {0.2, 0.2}, 1);
        add("B", {0.6, 0.2}, 1);
        add("C", {0.2, 0.6}, 1);
        add("D", {0.6, 0.6}, 1);
        add("E", {0.8, 0.9}, 100);
        StartWith(elements);
        Select({0, 1, 2, 3});
    }
    /// Universe and channel of each element, with the node of one that has any.
    [[nodiscard]] std::string Patched() const
    {
        QStringList texts;
        for (const MappedLedItem* element : Document().GetAllItems()) {
            const DMXMappingArtNet& address = *element->GetArtNetMapping();
            texts << "%1/%2"_q.arg(address.GetPortAddress()).arg(address.GetChannel());
            if (!address.IsAuto())
                texts.back() += QString::fromStdWString(L" " + address.GetIpconf() + L" " +
                                                        address.GetIpName());
        }
        return texts.join(", "_q).toStdString();
    }
    void WithDialog(const std::function<void(QDialog&)>& act)
    {
        person.Will([&act](QDialog& dialog) {
            QApplication::setActiveWindow(&dialog); // as a desktop does
            ASSERT_TRUE(In<QComboBox>(dialog, "orderCombo")->hasFocus());
            act(dialog);
        });
        Type(&View(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_TRUE(person.IsDone());
    }
    static QAbstractButton& Ok(const QDialog& dialog)
    {
        return *dialog.findChild<QDialogButtonBox*>("buttonBox"_q)->button(QDialogButtonBox::Ok);
    }
    /// Description and new address of each row.
    static std::string Preview(const QDialog& dialog)
    {
        const auto* model = In<QTreeView>(dialog, "previewList")->model();
        QStringList texts;
        for (int row = 0; row < model->rowCount(); ++row) {
            EXPECT_EQ(model->index(row, 0).data().toInt(), row + 1);
            texts << model->index(row, 1).data().toString() + QLatin1Char(' ') +
                         model->index(row, 3).data().toString();
        }
        return texts.join(", "_q).toStdString();
    }
    /// Goes to the next field and types.
    static void Next(const char* text, int key = 0)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
        if (key)
            QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
    }
};

} // namespace

TEST_F(RepatchDesk, TheKeyboardAloneGivesTheSelectedTheShownAddressesAsOneStep)
{
    StartWithFive();
    const auto repatch = [this] {
        WithDialog([](QDialog& dialog) {
            EXPECT_EQ(Preview(dialog), "A 0/0/1, B 0/0/37, C 0/0/73, D 0/0/109");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down); // column by column
            Next("", Qt::Key_End);                                      // bottom right
            Next(" ");                                                  // snake
            Next("1");
            Next("2");
            Next("11");
            Next("4");
            EXPECT_EQ(Preview(dialog), "D 1/2/11, B 1/2/51, A 1/2/91, C 1/2/131");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        });
        EXPECT_EQ(Patched(), "18/91, 18/51, 18/131, 18/11, 0/100");
    };
    ExpectOneStep(repatch);
    EXPECT_EQ(Scene().SelectedCount(), 4);
    // The order and the gap of the last time are offered, from the lowest address on.
    ExpectOneStep(
        [this] {
            WithDialog([](QDialog& dialog) {
                EXPECT_EQ(Preview(dialog), "D 0/0/1, B 0/0/41, A 0/0/81, C 0/0/121");
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            });
        },
        false);
}

TEST_F(RepatchDesk, SaysWhatIsWrongAndForbidsNothing)
{
    StartWithFive();
    WithDialog([this](QDialog& dialog) {
        auto& list = *In<QTreeView>(dialog, "previewList");
        const auto problem = [&list](int row) {
            return list.model()->index(row, 5).data().toString().toStdString();
        };
        auto& next = *In<QPushButton>(dialog, "nextProblemButton");
        const auto& totals = *In<QLabel>(dialog, "totalsLabel");
        EXPECT_EQ(problem(2), "Shares channels with E.");
        EXPECT_EQ(totals.text(), "Fixtures: 4    Universes: 1 (0/0 to 0/0)    Problems: 2"_q);
        next.click();
        EXPECT_EQ(list.currentIndex().row(), 2);
        EXPECT_EQ(In<QLabel>(dialog, "problemLabel")->text(), "Shares channels with E."_q);
        next.click();
        EXPECT_EQ(list.currentIndex().row(), 3);
        next.click();
        EXPECT_EQ(list.currentIndex().row(), 2);
        In<QPushButton>(dialog, "behindButton")->click();
        EXPECT_EQ(Preview(dialog), "A 0/0/136, B 0/0/172, C 0/0/208, D 0/0/244");
        EXPECT_FALSE(next.isEnabled());
        In<QSpinBox>(dialog, "channelSpin")->setValue(450);
        EXPECT_EQ(Preview(dialog), "A 0/0/450, B 0/1/1, C 0/1/37, D 0/1/73");
        In<QCheckBox>(dialog, "newUniverseCheck")->click();
        EXPECT_EQ(Preview(dialog), "A 0/0/450, B 0/1/1, C 0/2/1, D 0/2/37");
        In<QCheckBox>(dialog, "neverSplitCheck")->click();
        In<QSpinBox>(dialog, "channelSpin")->setValue(500);
        EXPECT_EQ(Preview(dialog), "A 0/0/500, B 0/1/24, C 0/2/1, D 0/2/37");
        EXPECT_EQ(problem(0), "Reaches beyond channel 512: the rest is not sent.");
        // A node that is found while one reads.
        Nodes().AddManualNode({.ip = "2.0.0.9", .name = "Left", .manual = true, .universes = {}});
        auto& nodes = *In<QComboBox>(dialog, "nodeCombo");
        nodes.setCurrentIndex(nodes.findText("Left (2.0.0.9)"_q));
        EXPECT_EQ(problem(0),
                  "Reaches beyond channel 512: the rest is not sent. "
                  "Universe 0/0 has fixtures with node Auto and others with a chosen node.");
        Ok(dialog).click();
    });
    EXPECT_EQ(Patched(), "0/500 2.0.0.9 Left, 1/24 2.0.0.9 Left, 2/1 2.0.0.9 Left, "
                         "2/37 2.0.0.9 Left, 0/100");
}

TEST_F(RepatchDesk, NothingToChangeCanNotBeConfirmedAndAnotherDocumentEndsIt)
{
    StartWithFive();
    Select({});
    EXPECT_FALSE(Action("actionRepatch")->isEnabled());
    Select({4});
    WithDialog([](QDialog& dialog) {
        EXPECT_FALSE(Ok(dialog).isEnabled());
        In<QSpinBox>(dialog, "channelSpin")->setValue(101);
        EXPECT_TRUE(Ok(dialog).isEnabled());
        dialog.reject();
    });
    WithDialog([this](QDialog& dialog) {
        In<QSpinBox>(dialog, "channelSpin")->setValue(101);
        Trigger("actionNew");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_FALSE(Action("actionUndo")->isEnabled());
}
