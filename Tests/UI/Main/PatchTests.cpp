// SPDX-License-Identifier: MIT
// The inspector's page for the Art-Net address: nodes and words. Its numbers are judged with the
// other fields.
#include "UI/Main/InspectorDesk.h"

namespace {

ArtNetNodeRecord Node(const char* ip, const char* name, bool manual = false)
{
    return {.ip = ip, .name = name, .manual = manual, .universes = {}};
}

class Patch : public InspectorDesk
{
protected:
    /// Bars of 36 channels, each as name, universe/channel and node, with "-" for no name.
    void StartWithBars(const char* bars)
    {
        QString elements;
        double left = 0.1;
        for (const QString& bar : QString::fromLatin1(bars).split(", "_q)) {
            const QStringList words = bar.split(QLatin1Char(' ')) + QStringList("Auto"_q);
            const QStringList place = words[1].split(QLatin1Char('/'));
            elements +=
                Element({left += 0.01, 0.5}, {0.01, 0.05}, place[0].toInt(), place[1].toInt(),
                        words[2])
                    .replace("\"Bar\""_q, "\"%1\""_q.arg(words[0] == "-"_q ? QString() : words[0]));
        }
        StartWith(elements);
    }
    /// Universe and channel of each bar, with its node when it has one; then the manual nodes.
    [[nodiscard]] std::string Patched() const
    {
        QStringList texts;
        for (const MappedLedItem* element : Document().GetAllItems()) {
            const DMXMappingArtNet& address = *element->GetArtNetMapping();
            QString text = "%1/%2"_q.arg(address.GetPortAddress()).arg(address.GetChannel());
            if (!address.IsAuto())
                text += QString::fromStdWString(L" " + address.GetIpconf() + L" " +
                                                address.GetIpName());
            texts.append(text.trimmed());
        }
        for (const ArtNetNodeRecord& node : Nodes().GetManualNodes())
            texts.append("("_q + QString::fromStdString(node.ip + " " + node.name) + ")"_q);
        return texts.join(", "_q).toStdString();
    }
    [[nodiscard]] QComboBox& List() const { return *Find<QComboBox>("comboBoxsArtnetIP"); }
    /// What can be chosen, with the current one in brackets.
    [[nodiscard]] std::string Choices() const
    {
        QStringList texts;
        for (int row = 0; row < List().count(); ++row)
            texts.append(row == List().currentIndex() ? "[%1]"_q.arg(List().itemText(row))
                                                      : List().itemText(row));
        return texts.join(" "_q).toStdString();
    }
    [[nodiscard]] std::string Words(const char* label = "labelPatchWords") const
    {
        QCoreApplication::processEvents();
        return Find<QLabel>(label)->text().toStdString();
    }
    void ExpectOneStep(const std::function<void()>& edit, const std::string& after) const
    {
        InspectorDesk::ExpectOneStep([&] {
            edit();
            EXPECT_EQ(Patched(), after);
        });
    }
    /// Fills the dialog for a node, of which the network leaves the last three parts open.
    static void Fill(const QDialog& dialog, const char* name, const char* parts)
    {
        dialog.findChild<QLineEdit*>("confName"_q)->setText(QLatin1String(name));
        int place = 2;
        for (const QString& part : QString::fromLatin1(parts).split(QLatin1Char('.')))
            dialog.findChild<QLineEdit*>("octet%1"_q.arg(place++))->setText(part);
    }
    void WithDialog(const char* entry, const std::function<void(QDialog&)>& act)
    {
        person.Will(act);
        Support::Pick(List(), entry);
    }
    static std::string Hint(const QDialog& dialog)
    {
        const bool ready = dialog.findChild<QPushButton*>("okButton"_q)->isEnabled();
        std::string hint = dialog.findChild<QLabel*>("hintLabel"_q)->text().toStdString();
        EXPECT_EQ(ready, hint.empty());
        return hint;
    }
};

} // namespace

TEST_F(Patch, AnElementOutOfRangeShowsWhatItHasUntilItIsEdited)
{
    StartWithBars("High 20/500, Low 3/0");
    Select({0});
    EXPECT_EQ(Find<QSpinBox>(Channel)->value(), 500);
    EXPECT_EQ(Find<QSpinBox>(Universe)->value(), 20);
    EXPECT_EQ(Words(), "0:20, channels 500 to 512, reaches beyond 512");
    Keys(Channel, "500");
    Keys(Channel, "", Qt::Key_Up);
    EXPECT_EQ(Patched(), "20/500, 3/0");
    ExpectOneStep([this] { Keys(Channel, "", Qt::Key_Down); }, "20/477, 3/0");
    ExpectOneStep([this] { Keys(Channel, "490"); }, "20/477, 3/0");
    Select({1});
    EXPECT_EQ(Find<QSpinBox>(Channel)->value(), 0);
    EXPECT_EQ(Words(), "0:3, no channels");
    Select({0, 1});
    EXPECT_EQ(Words(), "Reach beyond 512: 1");
    ExpectOneStep([this] { Keys(Channel, "", Qt::Key_Up); }, "20/500, 3/1");
}

TEST_F(Patch, WordsSayWhatIsOccupiedAndWithWhom)
{
    StartWithBars("One 4/97, Two 4/132, Three 4/133, Four 5/97 2.0.0.20, Five 4/90 2.0.0.20, "
                  "<b>Six</b> 6/97, - 6/98, Far 7/1 10.0.0.9, Nine 9/1, Nine 9/1, Nine 9/1, "
                  "Nine 9/1, Nine 9/1, Nine 9/1, Nine 9/1, Nine 9/1, Nine 9/9, Nine 9/9");
    const std::string conflict = "Universe is used by devices in unicast and broadcast mode";
    using Case = std::tuple<Rows, std::string, bool>;
    for (const auto& [rows, words, inConflict] : std::initializer_list<Case>{
             {{0}, "0:4, channels 97 to 132\nShares channels with: Five, Two", true},
             {{5},
              "0:6, channels 97 to 132\nShares channels with: an element without description",
              false},
             {{7},
              "0:7, channels 1 to 36\n10.0.0.9 is not in the chosen network: nothing is sent to it",
              false},
             {{8},
              "0:9, channels 1 to 36\nShares channels with: Nine, Nine, Nine, Nine, Nine, Nine, "
              "Nine, Nine and 1 more",
              false},
             {{8, 9}, "Shares channels with: Nine, Nine, Nine, Nine and 6 more", false},
         })
    {
        Select(rows);
        EXPECT_EQ(Words(), words);
        EXPECT_EQ(Words("errorMessage"), inConflict ? conflict : "") << words;
    }
    // They follow edits, also of what is not selected.
    Select({7});
    Support::Pick(List(), "Auto");
    EXPECT_EQ(Words(), "0:7, channels 1 to 36");
    Trigger("actionUndo");
    Select({3});
    Keys(Channel, "97");
    Keys(Universe, "6");
    EXPECT_EQ(Words(), "0:6, channels 97 to 132\nShares channels with: <b>Six</b>, an element "
                       "without description");
    EXPECT_EQ(Words("errorMessage"), conflict);
    Trigger("actionUndo");
    EXPECT_EQ(Words(), "0:5, channels 97 to 132");
    EXPECT_EQ(Words("errorMessage"), "");
}

TEST_F(Patch, TheListFollowsTheNodes)
{
    StartWithBars("A 0/1, B 0/40");
    Select({0});
    EXPECT_EQ(Choices(), "[Auto] Manual...");
    Nodes().UpdateNodes({Node("2.0.0.20", "Left"), Node("10.0.0.9", "Far")});
    EXPECT_EQ(Choices(), "[Auto] Left (2.0.0.20)(0) Manual...");
    ExpectOneStep([this] { Support::Pick(List(), "Left (2.0.0.20)(0)"); },
                  "0/1 2.0.0.20 Left, 0/40");
    Trigger("actionRedo");
    EXPECT_EQ(Choices(), "Auto [Left (2.0.0.20)(0)] Manual...");
    // By its address, whatever comes before it.
    Nodes().UpdateNodes({Node("2.0.0.20", "Left"), Node("2.0.0.11", "%1")});
    EXPECT_EQ(Choices(), "Auto %1 (2.0.0.11)(0) [Left (2.0.0.20)(0)] Manual...");
    Nodes().UpdateNodes({});
    EXPECT_EQ(Choices(), "Auto %1 (2.0.0.11)(0) [Left (2.0.0.20)(0)] Manual...");
    Nodes().UpdateNodes({Node("2.0.0.20", "Right")});
    EXPECT_EQ(Choices(), "Auto %1 (2.0.0.11)(0) [Right (2.0.0.20)(0)] Manual...");
    Select({0, 1});
    EXPECT_EQ(Choices(),
              "[(multiple items selected)] Auto %1 (2.0.0.11)(0) Right (2.0.0.20)(0) Manual...");
    EXPECT_FALSE(List().model()->flags(List().model()->index(0, 0)) & Qt::ItemIsSelectable);

    // An open list stays as it is, until it is closed.
    List().setFocus();
    QTest::keyClick(&List(), Qt::Key_Down);
    Nodes().Clear();
    EXPECT_EQ(List().count(), 5);
    QTest::keyClick(List().view(), Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_EQ(Choices(), "[(multiple items selected)] Auto Manual...");

    // Of another network only what the operator entered.
    Nodes().UpdateNodes({Node("2.0.0.20", "Right"), Node("10.0.0.9", "Far")});
    Nodes().AddManualNode(Node("10.0.0.7", "Spare", true));
    Select({0});
    EXPECT_EQ(Choices(), "Auto Spare (10.0.0.7)(0) [Right (2.0.0.20)(0)] Manual...");
    Support::Pick(*Find<QComboBox>("networkCombo"), "Disabled");
    EXPECT_EQ(Choices(), "[Auto] Spare (10.0.0.7)(0) Manual...");
    const std::string patched = "0/1 2.0.0.20 Left, 0/40, (10.0.0.7 Spare)";
    EXPECT_EQ(Patched(), patched) << "what only the list can't show";

    QTest::keyClick(&List(), Qt::Key_Down);
    EXPECT_TRUE(List().view()->isVisible());
    Trigger("actionActionDelete");
    EXPECT_FALSE(List().view()->isVisible()) << "for nothing that is there";
    Trigger("actionUndo");
    EXPECT_EQ(Patched(), patched);
}

TEST_F(Patch, AManualNodeIsEnteredEditedAndDeleted)
{
    StartWithBars("A 0/1, B 0/40, C 0/80 2.0.0.50");
    Nodes().UpdateNodes({Node("2.0.0.20", "Left")});
    Select({0, 1});
    const auto enter = [this] {
        WithDialog("Manual...", [](QDialog& dialog) {
            EXPECT_EQ(Hint(dialog), "Part 2 of the address is missing: a number from 0 to 255");
            Fill(dialog, " Truss ", "0.x.9");
            EXPECT_EQ(Hint(dialog), "Part 3 of the address is missing: a number from 0 to 255");
            Fill(dialog, " Truss ", "0.0.20");
            EXPECT_EQ(Hint(dialog), "2.0.0.20 is in the list already: Left");
            Fill(dialog, " Truss ", "255.255.255");
            EXPECT_EQ(Hint(dialog), "2.255.255.255 is for all nodes of the network, not for one");
            EXPECT_FALSE(dialog.findChild<QPushButton*>("deleteButton"_q)->isVisible());
            Fill(dialog, " Truss ", "0.0.30");
            QTest::keyClick(dialog.findChild<QLineEdit*>("confName"_q), Qt::Key_Return);
        });
    };
    person.WillPress("Cancel"_q);
    Support::Pick(List(), "Manual...");
    const std::string before = "[Auto] Left (2.0.0.20)(0) C (2.0.0.50)(1) Manual...";
    EXPECT_EQ(Choices(), before);
    ExpectOneStep(enter,
                  "0/1 2.0.0.30 Truss, 0/40 2.0.0.30 Truss, 0/80 2.0.0.50, (2.0.0.30 Truss)");
    EXPECT_EQ(Choices(), before);
    Trigger("actionRedo");
    EXPECT_EQ(Choices(),
              "Auto Left (2.0.0.20)(0) [Truss (2.0.0.30)(0)] C (2.0.0.50)(1) Manual... Edit...");
    Select({0, 2});
    EXPECT_EQ(List().findText("Edit..."_q), -1);
    Trigger("actionSave_File"); // which begins a new history
    std::string file = DocumentBytes();
    std::erase(file, '\0'); // half of UTF-16
    EXPECT_NE(file.find("<ManualNode Name=\"Truss\" IP=\"2.0.0.30\""), std::string::npos);

    // Every element of the node follows, selected or not.
    Select({0});
    const auto edit = [this](const char* name, const char* parts) {
        WithDialog("Edit...", [=](QDialog& dialog) {
            EXPECT_EQ(Hint(dialog), "");
            Fill(dialog, name, parts);
            dialog.accept();
        });
    };
    ExpectOneStep([&] { edit("Floor", "0.0.31"); },
                  "0/1 2.0.0.31 Floor, 0/40 2.0.0.31 Floor, 0/80 2.0.0.50, (2.0.0.31 Floor)");
    ExpectOneStep([&] { edit("Floor", "0.0.30"); },
                  "0/1 2.0.0.30 Floor, 0/40 2.0.0.30 Floor, 0/80 2.0.0.50, (2.0.0.30 Floor)");
    Select({1});
    ExpectOneStep(
        [&] {
            person.WillPress("Delete"_q);
            person.WillPress("Yes"_q);
            Support::Pick(List(), "Edit...");
        },
        "0/1, 0/40, 0/80 2.0.0.50");
    // As it was, and as the operator thought better of it.
    person.seen.clear();
    edit("Truss", "0.0.30");
    WithDialog("Edit...", [this](QDialog& dialog) {
        person.WillPress("Cancel"_q);
        QTest::mouseClick(dialog.findChild<QPushButton*>("deleteButton"_q), Qt::LeftButton);
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    });
    EXPECT_EQ(person.seen.back().title, "Delete manual address"_q);
    EXPECT_EQ(person.seen.back().byDefault, "Cancel"_q);
    EXPECT_EQ(State(), "saved"_q) << "all is undone";

    // A node that answers is no manual one: undo can't bring the entry of the file back.
    person.WillPress("Delete"_q);
    person.WillPress("Yes"_q);
    Support::Pick(List(), "Edit...");
    Nodes().UpdateNodes({Node("2.0.0.20", "Left"), Node("2.0.0.30", "Truss")});
    Trigger("actionUndo");
    EXPECT_EQ(Patched(), "0/1 2.0.0.30 Truss, 0/40 2.0.0.30 Truss, 0/80 2.0.0.50");
    EXPECT_EQ(State(), "unsaved"_q);
}

TEST_F(Patch, WhileTheDialogIsOpenTheNetworkAndTheDocumentGoOn)
{
    StartWithBars("A 0/1");
    Select({0});
    WithDialog("Manual...", [this](QDialog& dialog) {
        Fill(dialog, "Truss", "0.0.30");
        Nodes().UpdateNodes({Node("2.0.0.30", "Left")});
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(Hint(dialog), "2.0.0.30 is in the list already: Left");
        Fill(dialog, "Truss", "0.0.31");
        dialog.accept();
    });
    EXPECT_EQ(Patched(), "0/1 2.0.0.31 Truss, (2.0.0.31 Truss)");
    // A manual node that answers is a manual one no longer.
    WithDialog("Edit...", [this](QDialog& dialog) {
        Nodes().UpdateNodes({Node("2.0.0.31", "Own name")});
        Fill(dialog, "Other", "0.0.32");
        dialog.accept();
    });
    EXPECT_EQ(Choices(), "Auto Left (2.0.0.30)(0) [Own name (2.0.0.31)(0)] Manual...");
    Trigger("actionUndo");
    EXPECT_EQ(Patched(), "0/1");
    EXPECT_EQ(Choices(), "[Auto] Left (2.0.0.30)(0) Own name (2.0.0.31)(0) Manual...");

    const QString other = WriteDocument("other.wfm"_q, {});
    WithDialog("Manual...", [&](QDialog& dialog) {
        Fill(dialog, "Truss", "0.0.40");
        DropFile(other, {50, 50});
        QCoreApplication::processEvents();
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(Patched(), "0/1");
    EXPECT_FALSE(Nodes().IsManualNode("2.0.0.40"_q));
    EXPECT_FALSE(Action("actionUndo")->isEnabled());
}
