// SPDX-License-Identifier: MIT
// The inspector beside the canvas, by keys and mouse: what it enters, what it shows, and that it
// changes nothing by itself. The page of the Art-Net address has tests of its own.
#include "UI/Editor/MappingRectangle.h"
#include "UI/Main/InspectorDesk.h"

using InspectorInTheWindow = InspectorDesk;

TEST_F(InspectorInTheWindow, ValuesAreTypedForAllAndSteppedForEach)
{
    StartWith(Element({0.2, 0.2}, {0.18, 0.1}, 0, 1) +
              Element({0.6, 0.8}, {0.1, 0.18}, 3, 40)
                  .replace("<rotation>0"_q, "<rotation>10"_q)
                  .replace("\"Bar\""_q, "\"Wing\""_q) +
              Element({0.5, 0.5}, {0.1, 0.1}, 3, 470));
    using Case = std::tuple<Rows, const char*, const char*, int, const char*>;
    for (const auto& [rows, field, typed, key, after] : std::initializer_list<Case>{
             {{0}, X, "12", Qt::Key_Return, "12, 55, 45"},
             {{0, 1}, X, "12", Qt::Key_Tab, "12, 12, 45"},
             // The minimum, at which a mixed box is already.
             {{0, 1}, X, "-1000", Qt::Key_Return, "-1000, -1000, 45"},
             {{0, 1}, X, "", Qt::Key_Up, "12, 56, 45"},
             {{0, 1}, Y, "-3", Qt::Key_Return, "-3, -3, 45"},
             {{0}, Y, "", Qt::Key_Down, "14, 71, 45"},
             {{0, 1}, Y, "", Qt::Key_PageDown, "5, 61, 45"},
             {{0}, Width, "30", Qt::Key_Return, "30, 10, 10"},
             {{0, 1}, Width, "0", Qt::Key_Return, "1, 1, 10"},
             {{0}, Width, "", Qt::Key_Up, "19, 10, 10"},
             {{0, 1}, Width, "", Qt::Key_Up, "19, 11, 10"},
             // No side gets shorter than a pixel.
             {{0, 1}, Width, "", Qt::Key_PageDown, "8, 1, 10"},
             {{0, 1}, Height, "7", Qt::Key_Return, "7, 7, 10"},
             {{0, 1}, Height, "", Qt::Key_Down, "9, 17, 10"},
             {{0}, Rotation, "-90", Qt::Key_Return, "270, 10, 0"},
             {{0, 2}, Rotation, "45", Qt::Key_Return, "45, 10, 45"},
             {{0, 1}, Rotation, "", Qt::Key_PageUp, "10, 20, 0"},
             {{0}, FlipH, "", Qt::Key_Space, "1, 0, 0"},
             {{0, 1}, FlipH, "", Qt::Key_Space, "1, 1, 0"},
             {{0}, FlipV, "", Qt::Key_Space, "1, 0, 0"},
             {{0, 1}, FlipV, "", Qt::Key_Space, "1, 1, 0"},
             {{1}, Description, "Left", Qt::Key_Return, "Bar, Left, Bar"},
             {{0, 1}, Description, "Left", Qt::Key_Tab, "Left, Left, Bar"},
             {{0}, Channel, "100", Qt::Key_Return, "100, 40, 470"},
             {{0, 1}, Channel, "477", Qt::Key_Return, "477, 477, 470"},
             {{0, 1}, Channel, "1", Qt::Key_Return, "1, 1, 470"},
             {{0, 1}, Channel, "", Qt::Key_Up, "2, 41, 470"},
             {{0, 1}, Channel, "", Qt::Key_Down, "1, 39, 470"}, // each within its own range
             {{0, 2}, Channel, "", Qt::Key_PageUp, "11, 40, 477"},
             {{0}, Universe, "9", Qt::Key_Return, "9, 3, 3"},
             {{0, 1}, Universe, "0", Qt::Key_Return, "0, 0, 3"},
             {{0, 2}, Universe, "", Qt::Key_Down, "0, 3, 2"},
             {{0, 1}, Subnet, "15", Qt::Key_Return, "15, 15, 0"},
             {{1}, Subnet, "", Qt::Key_Up, "0, 1, 0"},
             // What isn't typed to its end, and what is there already, is no step.
             {{0}, Channel, "7", Qt::Key_Escape, "1, 40, 470"},
             {{0}, Channel, "1", Qt::Key_Return, "1, 40, 470"},
             {{0}, Channel, "", Qt::Key_Down, "1, 40, 470"},
         })
    {
        SCOPED_TRACE(std::string(field) + ' ' + typed + ": " + after);
        const auto values = [this, field = field] {
            return QStringList{Value(0, field), Value(1, field), Value(2, field)};
        };
        const QString wanted = QLatin1String(after);
        Select(rows);
        const auto edit = [&, field = field, typed = typed, key = key] {
            Keys(field, typed, key);
            EXPECT_EQ(values().join(", "_q), wanted);
        };
        ExpectOneStep(
            [&, &rows = rows, field = field] {
                edit();
                const QString first = Value(rows.front(), field);
                EXPECT_EQ(Text(field), first == Value(rows.back(), field) ? first : "Mixed"_q);
            },
            values().join(", "_q) != wanted);
    }
    Select({0, 1});
    // By mouse and wheel, once for each kind of box.
    for (const char* field : {X, Width}) {
        auto* box = Find<QAbstractSpinBox>(field);
        const double first = Value(0, field).toDouble();
        EXPECT_EQ(box->property("singleStep").toDouble(), 0);
        Focus(field);
        EXPECT_EQ(box->text(), QString()) << "the place for a value";
        QTest::mouseClick(box, Qt::LeftButton, {}, {box->width() - 8, box->height() - 6});
        EXPECT_EQ(Value(0, field).toDouble(), first - 1);
        QWheelEvent wheel({5, 5}, box->mapToGlobal(QPoint(5, 5)), {}, {0, 120}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(box, &wheel);
        EXPECT_EQ(Value(0, field).toDouble(), first);
        EXPECT_EQ(box->text(), "Mixed"_q);
    }
    // A mixed box goes to checked.
    Select({1});
    auto* flip = Find<QCheckBox>(FlipV);
    QTest::mouseClick(flip, Qt::LeftButton, {}, {8, 8});
    Select({0, 1});
    EXPECT_EQ(flip->checkState(), Qt::PartiallyChecked);
    QTest::keyClick(flip, Qt::Key_Space);
    EXPECT_EQ(Value(0, FlipV) + Value(1, FlipV), "11"_q);
    EXPECT_EQ(flip->checkState(), Qt::Checked);
    // Two are turned about the middle of both, as far as one turns.
    Select({0, 2});
    Keys(Rotation, "90");
    EXPECT_EQ(Value(0, X) + ", "_q + Value(2, X), "39, 13"_q);
    const std::string turned = File();
    Keys(Rotation, "90");
    EXPECT_EQ(File(), turned) << "the second time";
}

TEST_F(InspectorInTheWindow, WhatIsNotEnteredChangesNothing)
{
    StartWithTwo();
    const std::string before = File();
    for (const bool many : {false, true}) {
        Select(many ? Rows{0, 1} : Rows{0});
        for (const char* field :
             {X, Y, Width, Height, Rotation, Description, Channel, Universe, Subnet}) {
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
            EXPECT_EQ(File(), before) << field;
            EXPECT_FALSE(Action("actionUndo")->isEnabled()) << field;
        }
    }
    // What the model tells comes without a step, and without a signal while others are selected.
    Select({0});
    Press({20, 20});
    MoveTo({25, 25});
    MoveTo({30, 40});
    EXPECT_TRUE(QTest::qWaitFor([this] { return Text(X) == "21"_q; }));
    EXPECT_EQ(Text(Y), "35"_q);
    MoveTo({20, 20});
    Release({20, 20});
    EXPECT_TRUE(QTest::qWaitFor([this] { return Text(X) == "11"_q; }));
    EXPECT_EQ(File(), before);
    EXPECT_FALSE(Action("actionUndo")->isEnabled());
    EXPECT_EQ(State(), QString());
    // What is entered in the middle of a drag is a step behind it.
    Press({20, 20});
    MoveTo({30, 20});
    QTest::keyClick(Focus(Y), Qt::Key_Up);
    EXPECT_EQ(Value(0, X) + ", "_q + Value(0, Y), "21, 16"_q);
    Trigger("actionUndo");
    EXPECT_EQ(Value(0, X) + ", "_q + Value(0, Y), "21, 15"_q);
    Trigger("actionUndo");
    Release({20, 20});
    EXPECT_EQ(File(), before);
    // In a field that holds nothing typed the keys of undo are the document's.
    Keys(X, "13");
    QTest::keyClick(Find<QWidget>(X), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Text(X), "11"_q);
    EXPECT_EQ(File(), before);
}

TEST_F(InspectorInTheWindow, TypingGoesOnUntilTheOperatorEndsIt)
{
    StartWithTwo();
    Select({0});
    const std::string before = File();
    QWidget* description = Focus(Description);
    QTest::keyClicks(description, "L"_q);
    // AltGr, as some systems report it.
    QKeyEvent altGr(QEvent::ShortcutOverride, Qt::Key_Q, Qt::ControlModifier | Qt::AltModifier,
                    "@"_q);
    QApplication::sendEvent(description, &altGr);
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, {}, description->mapToGlobal(QPoint()));
    QApplication::sendEvent(description, &menu);
    ASSERT_TRUE(QApplication::activePopupWidget());
    QApplication::activePopupWidget()->close();
    EXPECT_EQ(Text(Description), "L"_q);
    EXPECT_EQ(File(), before);
    Keys(Description, "Left");
    EXPECT_EQ(Value(0, Description), "Left"_q);
    QTest::keyClicks(Focus(X), "9"_q);
    Trigger("actionSnapToGrid");
    EXPECT_EQ(Value(0, X), "9"_q);

    Select({0, 1});
    Focus(Description);
    EXPECT_FALSE(Find<QLineEdit>(Description)->isModified())
        << "the keys of undo are the document's";
    Trigger("actionActionDelete");
    EXPECT_TRUE(View().hasFocus()) << "there is no field any more";
    QTest::keyClick(&View(), Qt::Key_F2);
    EXPECT_TRUE(View().hasFocus());
}

TEST_F(InspectorInTheWindow, WhatIsBeingTypedBelongsToTheElementsThatWereSelected)
{
    StartWithTwo();
    const std::string before = File();
    Select({0});
    const auto type = [this](const char* field, const char* text) {
        QTest::keyClicks(Focus(field), QLatin1String(text));
    };
    type(X, "40");
    QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, OnScreen(Item(1).pos()));
    EXPECT_EQ(Text(X), "55"_q);
    EXPECT_EQ(Value(0, X), "40"_q);
    EXPECT_EQ(Value(1, X), "55"_q);
    Trigger("actionUndo");
    EXPECT_EQ(File(), before);
    EXPECT_FALSE(Action("actionUndo")->isEnabled());

    // The end of the program and a command with a key take it along; one that takes the elements
    // away drops it.
    type(Description, "Asked");
    person.WillPress("Escape"_q);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(Value(1, Description), "Asked"_q);
    for (const auto& [field, text] : {std::pair(Description, "Kept"), {Width, "6"}}) {
        type(field, text);
        QTest::keyClick(Find<QWidget>(field), Qt::Key_S, Qt::ControlModifier);
        EXPECT_EQ(State(), "saved"_q) << field;
    }
    EXPECT_EQ(Value(1, Description), "Kept"_q);
    EXPECT_EQ(Value(1, Width), "6"_q);
    const std::string saved = File();
    for (const char* field : {Rotation, Height, Description}) {
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
        EXPECT_EQ(State(), "saved"_q) << field;
    }
    Select({0, 1});
    type(Y, "3");
    person.WillPress("Discard"_q); // what was typed
    Trigger("actionNew");
    EXPECT_EQ(PlacedFixtures(), 0);
    EXPECT_EQ(Find<QStackedWidget>("deviceProperties")->currentIndex(), 0);
    EXPECT_FALSE(Action("actionUndo")->isEnabled());
}

TEST_F(InspectorInTheWindow, ItShowsWhatTheSelectionHas)
{
    const QString smaller = "ArcLine 24"_q; // channels
    StartWith(Element({0.2, 0.2}, {0.1, 0.1}) +
              Element({0.6, 0.8037}, {0.1, 0.2}, 7).replace(Bar, smaller) +
              Element({0.20202, 0.4}, {0.104, 0.1051}));
    const auto pages = [this] {
        return std::pair(Find<QStackedWidget>("deviceProperties")->currentIndex(),
                         Find<QStackedWidget>("mappinProperties")->currentIndex());
    };
    EXPECT_EQ(pages(), std::pair(0, 0));
    Select({1});
    EXPECT_EQ(pages(), std::pair(1, 1));
    EXPECT_EQ(Find<QLabel>("labelFixture")->text(), smaller);
    EXPECT_EQ(Text(Y), "70"_q);
    // Decimals follow the switch at once.
    auto* top = Find<QDoubleSpinBox>(Y);
    Trigger("actionSnapToGrid");
    EXPECT_EQ(top->text(), "70.37"_q);
    EXPECT_EQ(top->singleStep(), static_cast<double>(0.1F));
    Keys(Y, "70.5");
    EXPECT_EQ(Value(1, Y), "70.5"_q);
    Trigger("actionSnapToGrid");
    EXPECT_EQ(top->decimals(), 0);
    EXPECT_EQ(top->singleStep(), 1);
    // A turn by hand may leave a negative angle.
    Trigger("actionRotate_Left_90");
    EXPECT_EQ(Value(1, Rotation), "-90"_q);
    EXPECT_EQ(Text(Rotation), "0"_q);
    QTest::keyClick(Focus(Rotation), Qt::Key_Up);
    EXPECT_EQ(Value(1, Rotation), "1"_q);

    // The widest element has the say in where all of them can start.
    for (const auto& [rows, last] : {std::pair(Rows{1}, 489), {{0, 1}, 477}, {{1, 2}, 477}}) {
        Select(rows);
        EXPECT_EQ(Find<QSpinBox>(Channel)->maximum(), last);
    }
    // A difference counts where it shows.
    Select({0, 2});
    EXPECT_EQ(Text(X) + ", "_q + Text(Width) + ", "_q + Text(Height), "15, 10, Mixed"_q);
    Trigger("actionSelect_All");
    EXPECT_EQ(Text(Width), "10"_q);
    EXPECT_EQ(Find<QSpinBox>(Width)->singleStep(), 1);
    EXPECT_EQ(Text(Height), "Mixed"_q);
    EXPECT_EQ(Find<QSpinBox>(Height)->value(), 0);
    Keys(Height, "20");
    EXPECT_EQ(Text(Height), "20"_q);
    // A document may get elements without an address.
    Scene().UnSelectAll();
    Document().GetElement(2)->SetArtNetMapping(std::nullopt);
    Trigger("actionSelect_All");
    auto* output = Find<QComboBox>("comboDmxMappingOutput");
    const auto* address = Find<QStackedWidget>("MappedFixtureProperties");
    EXPECT_EQ(output->currentText(), "(multiple items selected)"_q);
    EXPECT_EQ(address->currentIndex(), 2);
    Support::Pick(*output, "ArtNet");
    EXPECT_EQ(address->currentIndex(), 0);
    EXPECT_EQ(output->count(), 1);
    EXPECT_EQ(*Document().GetElement(2)->GetArtNetMapping(),
              DMXMappingArtNet(0, 0, 1, L"Auto", L""));
    EXPECT_EQ(Value(1, Universe), "7"_q);
    Trigger("actionUndo");
    EXPECT_EQ(Document().GetElement(2)->GetArtNetMapping(), nullptr);
    EXPECT_EQ(output->count(), 2);
    Scene().UnSelectAll();
    EXPECT_EQ(pages(), std::pair(0, 0));
}

TEST_F(InspectorInTheWindow, ThePreviewShowsWhatIsSent)
{
    StartWithTwo();
    ChooseHalves();
    window->StartTimers();
    const auto* preview = Find<QLabel>("labelPreview");
    const auto becomes = [preview](QColor colour) {
        return QTest::qWaitFor([&] {
            const QPixmap shown = preview->pixmap(Qt::ReturnByValue);
            return !shown.isNull() && shown.toImage().pixelColor(10, 10) == colour;
        });
    };
    Select({0});
    EXPECT_TRUE(becomes(LeftColour));
    Keys(X, "70");
    EXPECT_TRUE(becomes(RightColour));
    Select({1}); // It has the same name.
    Keys(X, "5");
    EXPECT_TRUE(becomes(LeftColour));
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
    auto* description = Find<QLineEdit>(Description);
    EXPECT_TRUE(panel->isVisible());
    Select({0});
    Keys(Description, "Wing");
    QTest::keyClick(Focus(X), Qt::Key_I, Qt::ControlModifier);
    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(View().hasFocus());
    Select({1});
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
    EXPECT_EQ(Text(Description), QString());
    View().setFocus();
    EXPECT_EQ(Text(Description), "(multiple items selected)"_q);

    QStringList order;
    for (const auto& [key, field] : {std::pair(Qt::Key_D, Description),
                                     {Qt::Key_O, "comboDmxMappingOutput"},
                                     {Qt::Key_M, Channel},
                                     {Qt::Key_U, Universe},
                                     {Qt::Key_S, Subnet},
                                     {Qt::Key_I, "comboBoxsArtnetIP"},
                                     {Qt::Key_L, X},
                                     {Qt::Key_T, Y},
                                     {Qt::Key_W, Width},
                                     {Qt::Key_G, Height},
                                     {Qt::Key_R, Rotation},
                                     {Qt::Key_Z, FlipH},
                                     {Qt::Key_A, FlipV}})
    {
        View().setFocus();
        QTest::keyClick(&View(), key, Qt::AltModifier);
        EXPECT_TRUE(Find<QWidget>(field)->hasFocus()) << field;
        order.append(QLatin1String(field));
    }
    // Tab goes the same way.
    const auto* area = Find<QScrollArea>("inspectorScrollArea");
    EXPECT_LE(area->widget()->width(), area->viewport()->width());
    QStringList met;
    description->setFocus();
    for (QWidget* at = description; met.size() < 30 && area->isAncestorOf(at);) {
        const QRect place(at->mapTo(area->viewport(), QPoint()), at->size());
        EXPECT_TRUE(area->viewport()->rect().contains(place)) << qPrintable(at->objectName());
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
