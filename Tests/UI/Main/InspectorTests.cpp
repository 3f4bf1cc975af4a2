// SPDX-License-Identifier: MIT
// The inspector beside the canvas, by keys and mouse: what it enters, what it shows, and that it
// changes nothing by itself. The page of the Art-Net address has tests of its own.
#include <cmath>

#include <tinyxml2.h>

#include "Model/MappedDeviceModel.h"
#include "UI/Editor/MappingRectangle.h"
#include "UI/Main/Desk.h"

namespace {

class InspectorInTheWindow : public Desk
{
protected:
    enum What
    {
        Left,
        Top,
        Width,
        Height,
        Rotation,
        FlipH,
        FlipV
    };
    static constexpr std::array<const char*, 7> Fields = {
        "spinBoxX",        "spinBoxY",      "spinBoxWidth", "spinBoxHeight",
        "spinBoxRotation", "checkBoxHFlip", "checkBoxVFlip"};

    [[nodiscard]] MappedLedItem& Element(int row) const
    {
        auto* rows = qobject_cast<QAbstractProxyModel*>(Find<QTreeView>("mappedTreeView")->model());
        return *qobject_cast<MappedDeviceModel*>(rows->sourceModel())->GetElement(row);
    }
    using Desk::Element;
    /// In pixels of the canvas, which has 100 x 100, as far as a float keeps them.
    [[nodiscard]] double Of(int row, What what) const
    {
        const VideoMapping& video = *Element(row).GetVideoMapping();
        const std::array<double, 7> values = {100.0 * (video.centerX - video.width / 2),
                                              100.0 * (video.centerY - video.height / 2),
                                              100.0 * video.width,
                                              100.0 * video.height,
                                              1.0 * video.rotation,
                                              1.0 * video.flipHorizontal,
                                              1.0 * video.flipVertical};
        return std::round(values[what] * 1000) / 1000;
    }
    [[nodiscard]] QString Text(const char* field) const
    {
        if (const auto* box = window->findChild<QAbstractSpinBox*>(QLatin1String(field)))
            return box->text();
        return Find<QLineEdit>(field)->text();
    }
    QWidget* Focus(const char* field) const
    {
        auto* widget = Find<QWidget>(field);
        window->activateWindow(); // A box that closed took the keyboard with it.
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        View().setFocus();
        widget->setFocus(Qt::TabFocusReason);
        EXPECT_TRUE(widget->hasFocus()) << field;
        return widget;
    }
    void Enter(const char* field, const char* text) const
    {
        QWidget* widget = Focus(field);
        QTest::keyClicks(widget, QLatin1String(text));
        QTest::keyClick(widget, Qt::Key_Return);
    }
    void SelectOne(int row)
    {
        Scene().UnSelectAll();
        Click(Item(static_cast<std::size_t>(row)).pos());
    }
    /// The elements as the file has them.
    [[nodiscard]] std::string File() const
    {
        tinyxml2::XMLDocument file;
        tinyxml2::XMLElement* root = file.NewElement("Mapping");
        file.InsertEndChild(root);
        for (int row = 0; row < PlacedFixtures(); ++row)
            Element(row).WriteElement(*root);
        tinyxml2::XMLPrinter text;
        file.Print(&text);
        return text.CStr();
    }
    /// Exactly one step was made, which can be taken back to the byte and made again.
    void ExpectOneStepSince(const std::string& before, const char* what)
    {
        const std::string after = File();
        EXPECT_NE(after, before) << what;
        EXPECT_EQ(State(), "unsaved"_q) << what;
        Trigger("actionUndo");
        EXPECT_EQ(File(), before) << what;
        EXPECT_FALSE(Action("actionUndo")->isEnabled()) << what;
        Trigger("actionRedo");
        EXPECT_EQ(File(), after) << what;
        Trigger("actionUndo");
    }
    void ExpectUntouched(const std::string& before, const char* what)
    {
        EXPECT_FALSE(Action("actionUndo")->isEnabled()) << what;
        EXPECT_EQ(File(), before) << what;
        EXPECT_EQ(State(), QString()) << what;
    }
};

} // namespace

TEST_F(InspectorInTheWindow, WhatIsTypedIsOneStepForAllSelected)
{
    StartWithTwo();
    const std::string before = File();
    struct Row
    {
        const char* typed;
        What what;
        double expected;
    };
    for (const bool many : {false, true}) {
        for (const auto& [typed, what, expected] : std::initializer_list<Row>{
                 {"12", Left, 12},
                 {"-3", Top, -3},
                 {"-1000", Left, -1000}, // the minimum, at which a mixed box is already
                 {"30", Width, 30},
                 {"7", Height, 7},
                 {"0", Width, 1},
                 {"45", Rotation, 45},
                 {"-90", Rotation, 270}})
        {
            many ? Trigger("actionSelect_All") : SelectOne(0);
            const double other = Of(1, what);
            Enter(Fields[what], typed);
            EXPECT_EQ(Of(0, what), expected) << Fields[what] << typed;
            EXPECT_EQ(Of(1, what), many ? expected : other) << Fields[what] << typed;
            EXPECT_EQ(Text(Fields[what]), QString::number(expected));
            ExpectOneStepSince(before, Fields[what]);
        }
        for (const What what : {FlipH, FlipV}) {
            QTest::mouseClick(Focus(Fields[what]), Qt::LeftButton, {}, {8, 8});
            EXPECT_EQ(Of(0, what), 1);
            EXPECT_EQ(Of(1, what), many);
            ExpectOneStepSince(before, Fields[what]);
        }
        Enter("editDescription", "Left wing");
        EXPECT_EQ(Element(0).description, L"Left wing");
        EXPECT_EQ(Element(1).description, many ? L"Left wing" : L"Bar");
        ExpectOneStepSince(before, "editDescription");
    }
    // The two of them turned about the middle of both, as far as one turns.
    Trigger("actionSelect_All");
    Enter("spinBoxRotation", "90");
    EXPECT_GT(Of(0, Left), Of(1, Left));
    Enter("spinBoxRotation", "90");
    Trigger("actionUndo");
    EXPECT_EQ(File(), before) << "the second time nothing changed";
}

TEST_F(InspectorInTheWindow, AStepOfAMixedBoxChangesEachByAsMuch)
{
    const auto turned = [](QString bar, int degrees) {
        return bar.replace("<rotation>0"_q, "<rotation>%1"_q.arg(degrees));
    };
    StartWith(turned(Element({0.2, 0.2}, {0.18, 0.1}), 10) +
              turned(Element({0.6, 0.8}, {0.1, 0.18}), 20));
    const std::string before = File();
    Trigger("actionSelect_All");
    for (const What what : {Left, Top, Width, Height, Rotation}) {
        auto* box = Find<QAbstractSpinBox>(Fields[what]);
        const double first = Of(0, what);
        const double second = Of(1, what);
        const auto expectStep = [&](double step) {
            EXPECT_EQ(Of(0, what), first + step) << Fields[what];
            EXPECT_EQ(Of(1, what), second + step) << Fields[what];
            EXPECT_EQ(box->text(), "Mixed"_q);
            ExpectOneStepSince(before, Fields[what]);
        };
        EXPECT_EQ(box->text(), "Mixed"_q) << Fields[what];
        EXPECT_EQ(box->property("singleStep").toDouble(), 0);
        Focus(Fields[what]);
        EXPECT_EQ(box->text(), QString()) << "the place for a value";
        QTest::keyClick(box, Qt::Key_Up);
        expectStep(1);
        QTest::keyClick(box, Qt::Key_PageDown);
        // No side gets shorter than a pixel.
        if (what != Width && what != Height)
            expectStep(-10);
        else
            Trigger("actionUndo");
        QTest::mouseClick(box, Qt::LeftButton, {}, {box->width() - 8, box->height() - 6});
        expectStep(-1);
        QWheelEvent wheel({5, 5}, box->mapToGlobal(QPoint(5, 5)), {}, {0, 120}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(box, &wheel);
        expectStep(1);
    }
    // A mixed box goes to checked. Boxes of what is the same step as always.
    SelectOne(1);
    auto* flip = Find<QCheckBox>("checkBoxVFlip");
    QTest::keyClick(flip, Qt::Key_Space);
    Trigger("actionSelect_All");
    EXPECT_EQ(flip->checkState(), Qt::PartiallyChecked);
    QTest::keyClick(flip, Qt::Key_Space);
    EXPECT_TRUE(Of(0, FlipV) == 1 && Of(1, FlipV) == 1);
    EXPECT_EQ(flip->checkState(), Qt::Checked);
    SelectOne(0);
    QTest::keyClick(Focus("spinBoxWidth"), Qt::Key_Up);
    EXPECT_EQ(Of(0, Width), 19);
    EXPECT_EQ(Text("spinBoxWidth"), "19"_q);
}

TEST_F(InspectorInTheWindow, WhatIsNotEnteredChangesNothing)
{
    StartWithTwo();
    const std::string before = File();
    for (const bool many : {false, true}) {
        many ? Trigger("actionSelect_All") : SelectOne(0);
        for (const char* field : {"spinBoxX", "spinBoxY", "spinBoxWidth", "spinBoxHeight",
                                  "spinBoxRotation", "editDescription"})
        {
            const QString shown = Text(field);
            QWidget* widget = Focus(field);
            View().setFocus();
            EXPECT_EQ(Text(field), shown) << field;
            Focus(field);
            QTest::keyClicks(widget, "7"_q);
            QTest::keyClick(widget, Qt::Key_Escape);
            QTest::keyClick(widget, Qt::Key_Return);
            QTest::keyClick(widget, Qt::Key_Escape);
            EXPECT_TRUE(View().hasFocus()) << "the second time it leads to the canvas";
            EXPECT_EQ(Text(field), shown) << field;
            QWheelEvent wheel({5, 5}, widget->mapToGlobal(QPoint(5, 5)), {}, {0, -120},
                              Qt::NoButton, {}, Qt::NoScrollPhase, false);
            QApplication::sendEvent(widget, &wheel);
            EXPECT_FALSE(wheel.isAccepted()) << field << ": the panel scrolls";
            ExpectUntouched(before, field);
        }
    }
    // What the model tells comes without a step, and without a signal while others are selected.
    SelectOne(0);
    Press({20, 20});
    MoveTo({25, 25});
    MoveTo({30, 40});
    EXPECT_TRUE(QTest::qWaitFor([this] { return Text("spinBoxX") == "21"_q; }));
    EXPECT_EQ(Text("spinBoxY"), "35"_q);
    MoveTo({20, 20});
    Release({20, 20});
    EXPECT_TRUE(QTest::qWaitFor([this] { return Text("spinBoxX") == "11"_q; }));
    ExpectUntouched(before, "a drag");
    // What is entered in the middle of a drag is a step behind it.
    Press({20, 20});
    MoveTo({30, 20});
    QTest::keyClick(Focus("spinBoxY"), Qt::Key_Up);
    EXPECT_TRUE(Of(0, Left) == 21 && Of(0, Top) == 16);
    Trigger("actionUndo");
    EXPECT_TRUE(Of(0, Left) == 21 && Of(0, Top) == 15);
    Trigger("actionUndo");
    Release({20, 20});
    EXPECT_EQ(File(), before);
    // In a field that holds nothing typed the keys of undo are the document's.
    Enter("spinBoxX", "13");
    QTest::keyClick(Find<QWidget>("spinBoxX"), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Text("spinBoxX"), "11"_q);
    EXPECT_EQ(File(), before);
}

TEST_F(InspectorInTheWindow, WhatIsBeingTypedBelongsToTheElementsThatWereSelected)
{
    StartWithTwo();
    const std::string before = File();
    SelectOne(0);
    const auto type = [this](const char* field, const char* text) {
        QTest::keyClicks(Focus(field), QLatin1String(text));
    };
    type("spinBoxX", "40");
    QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, OnScreen(Item(1).pos()));
    EXPECT_EQ(Text("spinBoxX"), "55"_q);
    EXPECT_EQ(Of(0, Left), 40);
    EXPECT_EQ(Of(1, Left), 55);
    ExpectOneStepSince(before, "another element was clicked");

    // The end of the program and a command with a key take it along; one that takes the elements
    // away drops it.
    type("editDescription", "Asked");
    person.WillPress("Escape"_q);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(Element(1).description, L"Asked");
    for (const auto& [field, text] : {std::pair("editDescription", "Kept"), {"spinBoxWidth", "6"}})
    {
        type(field, text);
        QTest::keyClick(Find<QWidget>(field), Qt::Key_S, Qt::ControlModifier);
        EXPECT_EQ(State(), "saved"_q) << field;
    }
    EXPECT_EQ(Element(1).description, L"Kept");
    EXPECT_EQ(Of(1, Width), 6);
    const std::string saved = File();
    for (const char* field : {"spinBoxRotation", "spinBoxHeight", "editDescription"}) {
        Trigger("actionSelect_All");
        type(field, "3");
        Trigger("actionActionDelete");
        EXPECT_EQ(PlacedFixtures(), 0);
        Trigger("actionUndo");
        // Nor does it go to others that the program selects, as with a paste.
        Scene().SetSelected(Scene().AllIds().front(), true);
        type(field, "3");
        Scene().SetSelected(Scene().AllIds().back(), true);
        View().setFocus();
        EXPECT_EQ(File(), saved) << field;
        EXPECT_FALSE(Action("actionUndo")->isEnabled()) << field;
    }
    Trigger("actionSelect_All");
    type("spinBoxY", "3");
    person.WillPress("Yes"_q);
    Trigger("actionNew");
    EXPECT_EQ(PlacedFixtures(), 0);
    EXPECT_EQ(Find<QStackedWidget>("deviceProperties")->currentIndex(), 0);
    EXPECT_FALSE(Action("actionUndo")->isEnabled());
}

TEST_F(InspectorInTheWindow, ItShowsWhatTheSelectionHas)
{
    StartWith(Element({0.2, 0.2}, {0.1, 0.1}) + Element({0.6, 0.8037}, {0.1, 0.2}, 7) +
              Element({0.4, 0.4}, {0.1, 0.1}));
    const auto pages = [this] {
        return std::pair(Find<QStackedWidget>("deviceProperties")->currentIndex(),
                         Find<QStackedWidget>("mappinProperties")->currentIndex());
    };
    EXPECT_EQ(pages(), std::pair(0, 0));
    SelectOne(1);
    EXPECT_EQ(pages(), std::pair(1, 1));
    EXPECT_EQ(Find<QLabel>("labelFixture")->text(), Bar);
    EXPECT_EQ(Text("spinBoxY"), "70"_q);
    // Decimals follow the switch at once.
    auto* top = Find<QDoubleSpinBox>("spinBoxY");
    Trigger("actionSnapToGrid");
    EXPECT_EQ(top->text(), "70.37"_q);
    EXPECT_EQ(top->singleStep(), static_cast<double>(0.1F));
    Enter("spinBoxY", "70.5");
    EXPECT_EQ(Of(1, Top), 70.5);
    Trigger("actionSnapToGrid");
    EXPECT_EQ(top->decimals(), 0);
    EXPECT_EQ(top->singleStep(), 1);
    // A turn by hand may leave a negative angle.
    Trigger("actionRotate_Left_90");
    EXPECT_EQ(Of(1, Rotation), -90);
    EXPECT_EQ(Text("spinBoxRotation"), "0"_q);
    QTest::keyClick(Focus("spinBoxRotation"), Qt::Key_Up);
    EXPECT_EQ(Of(1, Rotation), 1);

    Trigger("actionSelect_All");
    EXPECT_EQ(Text("spinBoxWidth"), "10"_q);
    EXPECT_EQ(Find<QSpinBox>("spinBoxWidth")->singleStep(), 1);
    EXPECT_EQ(Text("spinBoxHeight"), "Mixed"_q);
    EXPECT_EQ(Find<QSpinBox>("spinBoxHeight")->value(), 0);
    Enter("spinBoxHeight", "20");
    EXPECT_EQ(Text("spinBoxHeight"), "20"_q);
    // A document may get elements without an address.
    Scene().UnSelectAll();
    Element(2).SetArtNetMapping(std::nullopt);
    Trigger("actionSelect_All");
    auto* output = Find<QComboBox>("comboDmxMappingOutput");
    const auto* address = Find<QStackedWidget>("MappedFixtureProperties");
    EXPECT_EQ(output->currentText(), "(multiple items selected)"_q);
    EXPECT_EQ(address->currentIndex(), 2);
    Support::Pick(*output, "ArtNet");
    EXPECT_EQ(address->currentIndex(), 0);
    EXPECT_EQ(output->count(), 1);
    EXPECT_EQ(*Element(2).GetArtNetMapping(), DMXMappingArtNet(0, 0, 1, L"Auto", L""));
    EXPECT_EQ(Element(1).GetArtNetMapping()->GetUniverse(), 7);
    Trigger("actionUndo");
    EXPECT_EQ(Element(2).GetArtNetMapping(), nullptr);
    EXPECT_EQ(output->count(), 2);
    Scene().UnSelectAll();
    EXPECT_EQ(pages(), std::pair(0, 0));
}

TEST_F(InspectorInTheWindow, ThePreviewShowsWhatIsSent)
{
    StartWithTwo();
    QImage picture(100, 100, QImage::Format_RGB32);
    picture.fill(QColor(200, 10, 20));
    QPainter(&picture).fillRect(50, 0, 50, 100, QColor(30, 40, 250));
    ASSERT_TRUE(picture.save(Path("halves.png"_q)));
    person.WillChoose(Path("halves.png"_q));
    Trigger("actionChoose_Test_Image");
    window->StartTimers();
    const auto* preview = Find<QLabel>("labelPreview");
    const auto becomes = [preview](QColor colour) {
        return QTest::qWaitFor([&] {
            const QPixmap shown = preview->pixmap(Qt::ReturnByValue);
            return !shown.isNull() && shown.toImage().pixelColor(10, 10) == colour;
        });
    };
    SelectOne(0);
    EXPECT_TRUE(becomes(QColor(200, 10, 20)));
    Enter("spinBoxX", "70");
    EXPECT_TRUE(becomes(QColor(30, 40, 250)));
    SelectOne(1); // It has the same name.
    Enter("spinBoxX", "5");
    EXPECT_TRUE(becomes(QColor(200, 10, 20)));
    Find<QToolButton>("selectionModeButton")->menu()->actions().at(1)->trigger();
    EXPECT_TRUE(becomes(QColor(0, 255, 0))) << "the mark of the selection";
    Trigger("actionSelect_All");
    EXPECT_TRUE(preview->pixmap(Qt::ReturnByValue).isNull());
}

TEST_F(InspectorInTheWindow, KeysLeadToItAndAllOfItCanBeReached)
{
    StartWithTwo();
    window->resize(1024, 600);
    auto* panel = Find<QWidget>("objectInspectorPannel");
    auto* description = Find<QLineEdit>("editDescription");
    EXPECT_TRUE(panel->isVisible());
    SelectOne(0);
    Enter("editDescription", "Wing");
    QTest::keyClick(Focus("spinBoxX"), Qt::Key_F9);
    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(View().hasFocus());
    SelectOne(1);
    for (const auto& [key, modifier] :
         {std::pair(Qt::Key_Return, Qt::AltModifier), std::pair(Qt::Key_Enter, Qt::AltModifier),
          std::pair(Qt::Key_F2, Qt::NoModifier)})
    {
        View().setFocus();
        Action("actionInspector")->trigger();
        QTest::keyClick(&View(), key, modifier);
        EXPECT_TRUE(panel->isVisible() && description->hasFocus());
    }
    EXPECT_EQ(description->selectedText(), "Bar"_q) << "read again while it was hidden";
    Trigger("actionSelect_All");
    EXPECT_EQ(Text("editDescription"), QString());
    View().setFocus();
    EXPECT_EQ(Text("editDescription"), "(multiple items selected)"_q);

    for (const auto& [key, field] : {std::pair(Qt::Key_D, "editDescription"),
                                     {Qt::Key_O, "comboDmxMappingOutput"},
                                     {Qt::Key_M, "spinBoxDMXChannel"},
                                     {Qt::Key_U, "spinBoxArtnetUniv"},
                                     {Qt::Key_S, "spinBoxArtnetSubnet"},
                                     {Qt::Key_I, "comboBoxsArtnetIP"},
                                     {Qt::Key_L, "spinBoxX"},
                                     {Qt::Key_T, "spinBoxY"},
                                     {Qt::Key_W, "spinBoxWidth"},
                                     {Qt::Key_H, "spinBoxHeight"},
                                     {Qt::Key_R, "spinBoxRotation"},
                                     {Qt::Key_Z, "checkBoxHFlip"},
                                     {Qt::Key_V, "checkBoxVFlip"}})
    {
        View().setFocus();
        QTest::keyClick(&View(), key, Qt::AltModifier);
        EXPECT_TRUE(Find<QWidget>(field)->hasFocus()) << field;
    }

    const auto* area = Find<QScrollArea>("inspectorScrollArea");
    EXPECT_LE(area->widget()->width(), area->viewport()->width());
    const QStringList order = {"editDescription"_q, "comboDmxMappingOutput"_q, "spinBoxX"_q,
                               "spinBoxY"_q,        "spinBoxWidth"_q,          "spinBoxHeight"_q,
                               "spinBoxRotation"_q, "checkBoxHFlip"_q,         "checkBoxVFlip"_q};
    QStringList met;
    description->setFocus();
    for (QWidget* at = description; met.size() < 30 && area->isAncestorOf(at);) {
        const QRect place(at->mapTo(area->viewport(), QPoint()), at->size());
        EXPECT_TRUE(area->viewport()->rect().contains(place)) << qPrintable(at->objectName());
        if (order.contains(at->objectName()))
            met.append(at->objectName());
        QTest::keyClick(at, Qt::Key_Tab);
        at = window->focusWidget();
    }
    EXPECT_EQ(met, order);

    Trigger("actionInspector");
    Trigger("actionSave_File");
    EXPECT_TRUE(window->close());
    Start();
    EXPECT_FALSE(Find<QWidget>("objectInspectorPannel")->isVisible()) << "as it was left";
}
