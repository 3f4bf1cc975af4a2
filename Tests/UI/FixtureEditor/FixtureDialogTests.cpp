// SPDX-License-Identifier: MIT
#include <map>

#include "UI/FixtureEditor/EditorDesk.h"
#include "UI/FixtureEditor/WEFTCustomFixtureSizeDialog.h"

namespace {

using enum PixelMapType;

class FixtureDialog : public EditorDesk
{};

struct SizeFields
{
    explicit SizeFields(const QDialog& dialog)
        : type(dialog.findChild<QComboBox*>("comboFixtureType"_q))
        , width(dialog.findChild<QSpinBox*>("spinFixtureWidth"_q))
        , height(dialog.findChild<QSpinBox*>("spinFixtureHeight"_q))
        , custom(dialog.findChild<QCheckBox*>("channelsCountEnabled"_q))
        , count(dialog.findChild<QSpinBox*>("channelCount"_q))
        , ok(dialog.findChild<QDialogButtonBox*>("buttonBox"_q)->button(QDialogButtonBox::Ok))
    {}

    QComboBox* type;
    QSpinBox* width;
    QSpinBox* height;
    QCheckBox* custom;
    QSpinBox* count;
    QPushButton* ok;
};

} // namespace

// ---- Values ------------------------------------------------------------------------------------

TEST_F(FixtureDialog, AValueTakesEffectWhileItIsTyped)
{
    const std::tuple<QString, int, std::vector<int>> cases[] = {
        {"7"_q, 7, {}},
        {"u"_q, -1, {}},
        {"255"_q, 255, {}},
        {"300"_q, 30, {}},
        {"U"_q, -1, {}},
        {"u12"_q, 12, {}},
        {"x"_q, 12, {}},
        {""_q, 12, {Qt::Key_Backspace}},
        {"3"_q, 12, {Qt::Key_Escape}},
        {"9"_q, 9, {Qt::Key_Return}},
        {"0"_q, 0, {Qt::Key_Enter}},
        {"4"_q, 4, {Qt::Key_Tab}},
    };
    for (const auto& [typed, value, keys] : cases) {
        const QPointer<QComboBox> editor = EditValue(11, typed);
        ASSERT_TRUE(editor);
        Keys(editor, keys);
        EXPECT_EQ(dialog->GetLayout().GetConstants().Find(11)->value, value) << typed.toStdString();
        EXPECT_EQ(table->item(10, 1)->data(Qt::UserRole).toInt(), value);
        EXPECT_TRUE(dialog->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const bool tabbed = !keys.empty() && keys.front() == Qt::Key_Tab;
        EXPECT_EQ(!editor, !keys.empty() && keys.front() != Qt::Key_Backspace);
        EXPECT_EQ(table->viewport()->findChild<QComboBox*>() != nullptr, editor || tabbed);
        EXPECT_EQ(table->currentRow(), tabbed ? 11 : 10);
        grid->setFocus();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    EXPECT_EQ(Values(), "R1 G1 B1 R2 G2 B2 * * * * 4 9");
    table->setCurrentCell(6, 1);
    table->setFocus();
    QTest::keyClick(table, Qt::Key_Tab);
    EXPECT_FALSE(table->hasFocus()) << "Tab doesn't stay in it";
}

TEST_F(FixtureDialog, AValueIsOpenedByADoubleClickAndOneOfAPixelIsNot)
{
    EXPECT_FALSE(EditValue(4));
    EXPECT_TRUE(dialog->isVisible());
    for (const int column : {0, 1}) {
        const QPoint place = table->visualItemRect(table->item(8, column)).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
        auto* editor = table->viewport()->findChild<QComboBox*>();
        ASSERT_TRUE(editor);
        EXPECT_EQ(editor->accessibleName(), "Value of channel 9"_q);
        EXPECT_EQ(editor->count(), 257);
        QTest::keyClicks(editor, "12"_q);
        QTest::mouseDClick(editor->lineEdit(), Qt::LeftButton);
        EXPECT_EQ(editor->lineEdit()->selectedText(), "12"_q);
        editor->setCurrentIndex(column + 1); // chosen in its list
        EXPECT_EQ(table->item(8, 1)->text(), QString::number(column));
        grid->setFocus();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(FixtureDialog, APixelThatCameUnderAnOpenEditorIsOnlyOverriddenWithYes)
{
    for (const char* answer : {"No", "Yes"}) {
        SetNext(9);
        QComboBox* editor = EditValue(9);
        QMetaObject::invokeMethod(dialog.get(), "mapPixel", Q_ARG(int, 2));
        person.WillPress(QLatin1String(answer));
        QTest::keyClicks(editor, "5"_q);
        EXPECT_EQ(person.seen.back().text, "There is a pixel mapped on this channel. Do you want "
                                           "to proceed and override?"_q);
        EXPECT_EQ(person.seen.back().byDefault, "No"_q);
        const bool may = answer == std::string("Yes");
        EXPECT_EQ(Values(),
                  may ? "R1 G1 B1 R2 G2 B2 * * 5 * * 9" : "R1 G1 B1 R2 G2 B2 * * R3 G3 B3 9");
        EXPECT_EQ(Cells(), may ? "1 4 0 0 0 0" : "1 4 9 0 0 0");
        Press(2, Qt::RightButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// ---- Size --------------------------------------------------------------------------------------

TEST_F(FixtureDialog, ModifyWarnsOfWhatIsLostAndGivesTheNewSize)
{
    const QString all =
        "Modifying fixture size will reset the current pixel mapping and eventually "
        "remove channels with constants. Do you want to continue anyway?"_q;
    const QString removed = "You are decreasing the Channel count and will lose any pixel or "
                            "constant defined on those removed channels. Do you want to continue "
                            "anyway?"_q;
    const std::string kept = "R1 G1 B1 R2 G2 B2 * * * * * 9";
    const std::tuple<FixtureSize, QString, bool, std::string, std::string> cases[] = {
        {{3, 2, L, 12}, all, false, "1 4 0 0 0 0", kept},
        {{3, 2, L, 6}, all, true, "0 0 0 0 0 0", "* * * * * *"},
        {{1, 2, RGB, 12}, all, true, "0 0", "* * * * * * * * * * * 9"},
        {{3, 2, RGB, 14}, {}, true, "1 4 0 0 0 0", kept + " * *"},
        {{3, 2, RGB, 11}, removed, true, "1 4 0 0 0 0", "R1 G1 B1 R2 G2 B2 * * * * *"},
        {{3, 2, RGB, 5}, removed, true, "1 0 0 0 0 0", "R1 G1 B1 * *"},
        {{3, 2, RGB, 5}, removed, false, "1 4 0 0 0 0", kept},
        {{3, 2, RGB, 12}, {}, true, "1 4 0 0 0 0", kept},
    };
    for (const auto& [size, warning, answer, cells, values] : cases) {
        SCOPED_TRACE(values);
        Open(Fixture({3, 2, RGB, 12}, {1, 4}, {{12, 9}}));
        SetNext(7);
        person.seen.clear();
        person.Will([wanted = size, may = answer](QDialog& box) {
            SizeFields fields(box);
            fields.type->setCurrentIndex(static_cast<int>(wanted.type));
            fields.width->setValue(wanted.width);
            fields.count->setValue(wanted.channelCount);
            EXPECT_EQ(fields.ok->text(), "Modify"_q);
            QTest::mouseClick(fields.ok, Qt::LeftButton);
            EXPECT_EQ(box.isVisible(), !may) << "No stays in it";
            if (box.isVisible())
                box.reject();
        });
        if (!warning.isEmpty())
            person.WillPress(answer ? "Yes"_q : "No"_q);
        Click("buttonModify");
        ASSERT_EQ(person.seen.size(), warning.isEmpty() ? 1U : 2U);
        EXPECT_EQ(person.seen.front().title, "Modify Fixture Settings"_q);
        EXPECT_EQ(person.seen.back().text, warning);
        EXPECT_EQ(Cells(), cells);
        EXPECT_EQ(Values(), values);
        EXPECT_EQ(Next(), cells.front() == '0' ? 1 : 10) << "also when nothing changed";
        const FixtureSize present = dialog->GetLayout().GetSize();
        EXPECT_EQ(Find<QSpinBox>("nextChannel")->maximum(), present.channelCount);
        const std::pair<const char*, QString> shown[] = {
            {"labelFixtureType", present.type == L ? "L"_q : "RGB"_q},
            {"labelFixtureWidth", QString::number(present.width)},
            {"labelFixtureHeight", "2"_q},
            {"labelChannelCount", QString::number(present.channelCount)},
        };
        for (const auto& [label, text] : shown)
            EXPECT_EQ(Find<QLabel>(label)->text(), text);
        EXPECT_EQ(Find<QAbstractButton>("buttonPatch")->isEnabled(),
                  present.type == L || present.width == 1);
        Press(present.width, Qt::RightButton); // the second row, wherever it is now
        EXPECT_EQ(Info(), "Row 2, column 1: empty");
    }
}

TEST(FixtureSize, TheChannelsFollowUntilTheyAreTheOperators)
{
    WidgetBoxes boxes;
    const FixtureSize sizes[] = {
        {10, 1, RGB, 30}, {4, 4, RGB, 0}, {1000, 700, B, 512}, {2, 3, RGBXXX, 5}};
    for (const FixtureSize& size : sizes) {
        WEFTCustomFixtureSizeDialog dialog(WEFTCustomFixtureSizeDialog::Modify, FixtureLayout(size),
                                           boxes);
        EXPECT_EQ(dialog.GetSize(), size) << "untouched";
        EXPECT_EQ(dialog.findChild<QCheckBox*>()->isChecked(), size.channelCount != 30);
    }
    WEFTCustomFixtureSizeDialog dialog(WEFTCustomFixtureSizeDialog::Create, FixtureLayout(sizes[0]),
                                       boxes);
    dialog.setWindowModality(Qt::NonModal);
    dialog.show();
    EXPECT_EQ(dialog.windowTitle(), "Create New Fixture"_q);
    const auto& [type, width, height, custom, count, ok] = SizeFields(dialog);
    EXPECT_EQ(type->count(), 21);
    EXPECT_EQ(type->itemText(9), "RGBWM (RGBW-/RGBW)"_q);
    EXPECT_EQ(type->itemText(16), "RGBW+Amber"_q);
    type->setCurrentIndex(static_cast<int>(RGBL));
    EXPECT_EQ(count->value(), 40);
    height->setValue(2);
    EXPECT_EQ(count->value(), 80);
    EXPECT_FALSE(count->isEnabled());
    custom->click();
    EXPECT_TRUE(count->isEnabled());
    width->setValue(11);
    EXPECT_EQ(count->value(), 80);
    count->setValue(1);
    EXPECT_EQ(count->value(), 4);
    type->setCurrentIndex(static_cast<int>(RrGgBb));
    EXPECT_EQ(count->value(), 6);
    custom->click();
    width->setValue(513);
    height->setValue(513);
    EXPECT_EQ(dialog.GetSize(), (FixtureSize{512, 512, RrGgBb, 512}));
    for (QSpinBox* box : {width, height, count})
        QTest::keyClick(box, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(ok->text(), "Create"_q);
    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_EQ(dialog.result(), QDialog::Accepted) << "there is nothing to lose";
}

// ---- The dialog --------------------------------------------------------------------------------

TEST_F(FixtureDialog, NamesThatCannotBeUsedKeepItOpen)
{
    const auto button = [this](QDialogButtonBox::StandardButton which) {
        return Find<QDialogButtonBox>("buttonBox")->button(which);
    };
    EXPECT_FALSE(button(QDialogButtonBox::Apply)->isVisible());
    int applied = 0;
    Open(Fixture({3, 2, RGB, 12}, {}), true,
         [](const QString& manufacturer, const QString& product) {
             return product == "Lamp"_q ? manufacturer + " has it"_q : QString();
         });
    QObject::connect(dialog.get(), &WEFTCustomFixtureDialog::apply, [&applied] { ++applied; });
    auto* product = Find<QLineEdit>("editProductName");
    EXPECT_TRUE(product->hasFocus());
    EXPECT_EQ(product->selectedText(), "Lamp"_q);
    EXPECT_EQ(Find<QTabWidget>("settingsPeronalityTabWidget")->currentIndex(), 0);
    for (const auto which : {QDialogButtonBox::Ok, QDialogButtonBox::Apply}) {
        grid->setFocus();
        person.WillPress("OK"_q);
        QTest::mouseClick(button(which), Qt::LeftButton);
        EXPECT_EQ(person.seen.back().text, "Maker has it"_q);
        EXPECT_TRUE(dialog->isVisible());
        EXPECT_EQ(dialog->focusWidget(), product);
    }
    EXPECT_EQ(applied, 0);
    EXPECT_TRUE(button(QDialogButtonBox::Ok)->isDefault());
    QTest::keyClicks(product, "Bar"_q);
    auto* maker = Find<QComboBox>("comboManufacturer");
    EXPECT_EQ(maker->count(), 2);
    maker->lineEdit()->selectAll();
    QTest::keyClicks(maker, "Me"_q);
    const std::initializer_list<QWidget*> fields = {product, maker, Find<QWidget>("nextChannel"),
                                                    Find<QWidget>("automapStartChannel")};
    for (QWidget* field : fields) {
        field->setFocus();
        Keys(field, {Qt::Key_Return, Qt::Key_Enter});
        EXPECT_TRUE(dialog->isVisible()) << field->objectName().toStdString();
    }
    QTest::mouseClick(button(QDialogButtonBox::Apply), Qt::LeftButton);
    EXPECT_EQ(applied, 1);
    EXPECT_TRUE(dialog->isVisible());
    QTest::mouseClick(button(QDialogButtonBox::Ok), Qt::LeftButton);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->GetManufacturer(), "Me"_q);
    EXPECT_EQ(dialog->GetProduct(), "Bar"_q);
    dialog->show();
    Keys(grid, {Qt::Key_Escape});
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
}

TEST_F(FixtureDialog, EveryFieldIsReachedByAKeyOfItsOwn)
{
    std::map<QChar, QString> taken;
    const auto take = [&](const QString& text) {
        const auto mark = text.indexOf("&"_q);
        if (mark < 0)
            return;
        QString& other = taken[text[mark + 1].toUpper()];
        EXPECT_EQ(other, QString()) << text.toStdString();
        other = text;
    };
    for (const auto* label : dialog->findChildren<QLabel*>())
        take(label->buddy() ? label->text() : QString());
    for (const auto* button : dialog->findChildren<QAbstractButton*>())
        take(button->text());
    const auto* tabs = Find<QTabWidget>("settingsPeronalityTabWidget");
    take(tabs->tabText(0));
    take(tabs->tabText(1));
    EXPECT_EQ(taken.size(), 13U);
    Click("bottomRight");
    QTest::keyClick(dialog.get(), Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(Find<QWidget>("bottomRight")->hasFocus());
    QTest::keyClick(Find<QWidget>("bottomRight"), Qt::Key_Up);
    EXPECT_TRUE(Find<QAbstractButton>("topRight")->isChecked());
    for (const char* name : {"editProductName", "comboManufacturer", "nextChannel", "topLeft",
                             "orientation", "automapStartChannel", "personalityTable"})
        EXPECT_FALSE(Find<QWidget>(name)->accessibleName().isEmpty()) << name;
}
