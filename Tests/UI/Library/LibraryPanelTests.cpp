// SPDX-License-Identifier: MIT
#include "UI/Library/LibraryPanel.h"

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

#include "Model/MappedDeviceModel.h"
#include "UI/Library/FixtureConflictBox.h"
#include "UI/Library/LibraryDesk.h"

namespace {

constexpr auto Arc = "ArcLine 36"; ///< a fixture of the program

std::unique_ptr<DeviceLedItem> Fixture(const wchar_t* maker, const wchar_t* product)
{
    return std::make_unique<DeviceLedItem>(maker, product, PixelMap(1, 1, PixelMapType::RGB), 0, 3);
}

/// The panel on a new user's library: the fixtures of the program.
class Library : public LibraryDesk
{
protected:
    Library() { list->expandAll(); }

    [[nodiscard]] QModelIndexList RowsOf(const char* product) const
    {
        return list->model()->match(list->model()->index(0, 0), Qt::DisplayRole,
                                    QString::fromUtf8(product), -1,
                                    Qt::MatchExactly | Qt::MatchRecursive);
    }
    void Delete(const char* product) const
    {
        ASSERT_EQ(RowsOf(product).size(), 1);
        list->setCurrentIndex(RowsOf(product).front());
        ASSERT_TRUE(erase->isEnabled());
        QTest::mouseClick(erase, Qt::LeftButton);
        QCoreApplication::processEvents(); // what the library reports comes behind it
    }
    /// The manufacturers with their fixtures, as they show; the selected ones in brackets.
    [[nodiscard]] std::string Shown() const
    {
        QStringList rows;
        for (QModelIndex row = list->model()->index(0, 0); row.isValid();
             row = list->indexBelow(row)) {
            const bool selected = list->selectionModel()->isSelected(row);
            rows << (selected ? "[%1]"_q : "%1"_q).arg(row.data().toString());
        }
        return rows.join(QLatin1Char('|')).toStdString();
    }
    /// Another program has written the file, and it is loaded again.
    void Load(const std::string& text)
    {
        Write(GetFixtureLibraryPath(), text);
        manager->LoadLibrary(GetFixtureLibraryPath());
        panel->FollowLibrary();
    }
    void Import(const char* file, const char* answer)
    {
        person.WillChoose(Path(file));
        person.WillPress(QLatin1String(answer));
        window.findChild<QAction*>("actionImport_fixtures"_q)->trigger();
    }

    // A save of ours leaves out the comment and the intensity, and writes two bytes a character.
    const std::string Head = "<LEDFixtureLibrary version=\"7\"><!-- by hand -->";
    const std::string Tile = R"(<LEDFixture manufacturer="Robe" product="Tile" channel_count="3">
<PixelMapping width="1" height="1" type="RGB">1</PixelMapping></LEDFixture></LEDFixtureLibrary>)";

    QPushButton* erase = window.findChild<QPushButton*>("buttonDeleteFixture"_q);
};

/// The panel on a library that was written by hand, with an element of "Bar".
class FixtureEditor : public Library
{
protected:
    FixtureEditor() { Begin(); }

    void Begin()
    {
        manager->ClearAll();
        Load(ByHand);
        MappedObjectParams bar;
        bar.fixtureID = manager->GetLEDFixtureByProduct(L"Bar")->uniqueID;
        manager->AddMappedObject(bar);
        list->expandAll();
        manager->SetDocumentDirty(false);
    }
    void Press(const char* button) const
    {
        QTest::mouseClick(window.findChild<QPushButton*>(QLatin1String(button)), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    /// Types names into the editor and presses a button.
    void WillEnter(const QString& manufacturer, const QString& product, const char* button)
    {
        person.Will([=](QDialog& editor) {
            editor.findChild<QComboBox*>("comboManufacturer"_q)->setEditText(manufacturer);
            editor.findChild<QLineEdit*>("editProductName"_q)->setText(product);
            Support::Press(editor, QLatin1String(button));
        });
    }
    void Edit()
    {
        list->setCurrentIndex(RowsOf("Bar").front());
        Press("buttonEditFixture");
        list->expandAll();
    }
    /// The fixtures with stored count, highest channel and a "c" for constants, as the library and
    /// its file have them.
    [[nodiscard]] std::string Fixtures() const
    {
        DeviceModel saved;
        saved.Merge(GetFixtureLibraryPath().toStdWString(), true);
        const auto names = [](const DeviceModel& library) {
            QStringList all;
            for (const DeviceLedItem* fixture : library.GetFixtures())
                all << "%1 %2 %3/%4"_q
                               .arg(QString::fromStdWString(fixture->manufacturer),
                                    QString::fromStdWString(fixture->product))
                               .arg(fixture->GetStoredChannelCount())
                               .arg(fixture->pixelMap.GetHighestChannel()) +
                           (fixture->staticChannels.HasValueInRange(1, 512) ? "c"_q : ""_q);
            return all.join(QLatin1Char('|')).toStdString();
        };
        EXPECT_EQ(names(*manager->GetDeviceModel()), names(saved));
        return names(saved);
    }
    /// The product that the element knows, and whether the library has it so.
    [[nodiscard]] std::string Element() const
    {
        const MappedLedItem* element = manager->GetMappedItemByRow(0);
        if (!element)
            return "none";
        const DeviceLedItem& own = element->GetFixture();
        const auto* fixture = manager->GetDeviceModel()->GetFixtures().value(own.uniqueID);
        EXPECT_TRUE(!fixture || (*fixture == own && fixture->manufacturer == own.manufacturer &&
                                 fixture->staticChannels == own.staticChannels));
        return QString::fromStdWString(own.product).toStdString() + (fixture ? "" : " of none");
    }

    const std::string ByHand = Head +
                               R"(<LEDFixture manufacturer="Elation" product="Bar"
intensity_channel="9"><PixelMapping width="2" height="1" type="L">1 2</PixelMapping>
<StaticChannel channel="4" value="200"/></LEDFixture>)" +
                               Tile;
    const std::string before = "Elation Bar -1/2c|Robe Tile 3/3";
};

} // namespace

TEST_F(Library, OneFixtureThatIsNotInUseIsDeletedWithAQuestion)
{
    list->setCurrentIndex(list->model()->index(0, 0));
    EXPECT_FALSE(erase->isEnabled()) << "a manufacturer";
    list->setCurrentIndex(RowsOf(Arc).front());
    list->selectionModel()->select(list->indexBelow(RowsOf(Arc).front()),
                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
    EXPECT_FALSE(erase->isEnabled()) << "two";

    MappedDeviceModel& document = *manager->GetMappedDeviceModel();
    document.AddMappingElement(std::make_unique<MappedLedItem>(
        L"Bar", *manager->GetLEDFixtureByProduct(L"ArcLine 36"), nullptr, nullptr));
    for (const char* answer : {"OK", "Cancel"}) {
        person.WillPress(QLatin1String(answer));
        Delete(Arc);
        EXPECT_EQ(RowsOf(Arc).size(), 1) << answer;
        EXPECT_TRUE(steps.canUndo());
        EXPECT_FALSE(manager->documentDirty);
        if (document.rowCount() > 0)
            document.RemoveMappingElement(document.GetElement(0)->uniqueID);
    }
    EXPECT_EQ(person.seen[0].title, "Delete Used Fixture"_q);
    EXPECT_TRUE(person.seen[1].text.endsWith("\n\nManufacturer: Anolis\nProduct: ArcLine 36"_q));
    EXPECT_EQ(person.seen[1].byDefault, "Cancel"_q);
    person.WillPress("Yes"_q);
    Delete(Arc);
    EXPECT_TRUE(RowsOf(Arc).isEmpty());
    EXPECT_FALSE(erase->isEnabled());
    EXPECT_FALSE(steps.canUndo());
    EXPECT_TRUE(manager->documentDirty);
    manager->LoadLibrary(GetFixtureLibraryPath());
    EXPECT_TRUE(RowsOf(Arc).isEmpty()) << "it is in the file at once";
    panel->RestoreBuiltInFixtures();
    EXPECT_EQ(RowsOf(Arc).size(), 1) << "the program's fixtures in place of the user's";
}

TEST_F(Library, ImportedFixturesTakeTheirPlacesInTheList)
{
    DeviceModel other;
    other.AddFixture(Fixture(L"Anolis", L"ArcLine 36"));
    other.AddFixture(Fixture(L"Anolis", L"A Lamp"));
    other.AddFixture(Fixture(L"Aaron", L"New Lamp"));
    ASSERT_TRUE(other.Save((home.Path() / "other.wfl").wstring()));
    MappedDeviceModel& document = *manager->GetMappedDeviceModel();
    document.AddMappingElement(std::make_unique<MappedLedItem>(
        L"Bar", *manager->GetLEDFixtureByProduct(L"ArcLine 36"), nullptr, nullptr));
    int refitted = 0;
    QObject::connect(manager.get(), &DeviceManager::elementsRefitted, [&] { ++refitted; });
    Import("other.wfl", "Yes, use the fixture from the mapping file");
    EXPECT_EQ(list->model()->index(0, 0).data().toString(), "Aaron"_q);
    ASSERT_EQ(RowsOf("A Lamp").size(), 1);
    EXPECT_EQ(RowsOf("A Lamp").front().row(), 0) << "before the others of its maker";
    ASSERT_EQ(RowsOf(Arc).size(), 1) << "the imported one alone";
    EXPECT_EQ(manager->GetLEDFixtureByProduct(L"ArcLine 36")->GetChannelCount(), 3);
    EXPECT_FALSE(steps.canUndo());
    EXPECT_EQ(document.GetElement(0)->GetFixture().pixelMap.GetWidth(), 1);
    EXPECT_EQ(refitted, 1);
    EXPECT_TRUE(manager->documentDirty);

    home.Write("broken.wfl", "no library");
    Import("broken.wfl", "OK");
    steps.push(new QUndoCommand);
    Import("broken.wfl", "OK");
    EXPECT_TRUE(steps.canUndo()) << "nothing has changed";
    EXPECT_TRUE(person.seen.back().text.contains("could not be read whole"_q));
    EXPECT_EQ(RowsOf("New Lamp").size(), 1);
}

TEST_F(Library, SelectedFixturesAreExportedToALibraryOfTheirOwn)
{
    const std::string maker = "<LEDFixture manufacturer=\"Elation\" product=\"";
    const std::string lamp = R"(" channel_count="3"><PixelMapping width="2" height="1" type="L">
3 1</PixelMapping><StaticChannel channel="2" value="9"/></LEDFixture>)";
    Load(Head + maker + "Beam" + lamp + maker + "Arc" + lamp + Tile);
    ASSERT_TRUE(QDir().mkdir(Path("folder.1.wfl")));
    home.Write("old<b>.1.wfl", "old");
    const std::string own = manager->GetLibraryPath().toStdString();
    struct Case
    {
        std::vector<const char*> selected;
        const char* filter;
        std::string name;                 ///< as the operator enters it
        std::vector<const char*> answers; ///< to what is asked and told then
        std::string file;                 ///< that is read after it
        const char* products;             ///< in it; null for a file that is as it was
        const char* title;                ///< of the last box
    };
    const char* one = "Export Fixtures: 1 of 3";
    const char* two = "Export Fixtures: 2 of 3";
    const std::vector<Case> cases = {
        {{"Tile", "Arc"}, "", "two", {}, "two.wfl", "Arc Tile ", two},
        {{"Elation"}, "", "maker.WFL", {}, "maker.WFL", "Beam Arc ", two},
        {{"Elation", "Beam"}, "ea", "shown", {}, "shown.wfl", "Beam ", one},
        {{}, "ea", "all", {}, "all.wfl", "Beam Arc Tile ", "Export Fixtures: 3 of 3"},
        {{"Tile"}, "", "old<b>.1", {"No"}, "old<b>.1.wfl", nullptr, one},
        {{"Tile"}, "", "old<b>.1", {"Yes"}, "old<b>.1.wfl", "Tile ", one},
        {{}, "", "folder.1", {"Yes", "OK"}, "old<b>.1.wfl", nullptr, "Fixtures Not Exported"},
        {{"Tile"}, "", own, {"Yes", "OK"}, own, nullptr, "Export Fixtures Forbidden"},
    };
    for (const Case& exported : cases) {
        SCOPED_TRACE(&exported - cases.data());
        const std::string before = Support::ReadBytes(home.Path() / exported.file);
        window.findChild<QLineEdit*>("editLibraryFilter"_q)
            ->setText(QLatin1String(exported.filter));
        list->expandAll();
        list->clearSelection();
        for (const char* row : exported.selected)
            list->selectionModel()->select(RowsOf(row).front(),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
        person.WillChoose(Path(exported.name));
        for (const char* answer : exported.answers)
            person.WillPress(QLatin1String(answer));
        ASSERT_EQ(list->actions().size(), 1) << "in its context menu";
        list->actions().front()->trigger();
        EXPECT_EQ(person.seen.back().title.toStdString(), exported.title);
        if (!exported.products) {
            EXPECT_EQ(Support::ReadBytes(home.Path() / exported.file), before);
            continue;
        }
        DeviceModel read;
        read.Merge((home.Path() / exported.file).wstring(), true);
        std::string products;
        for (const DeviceLedItem* fixture : read.GetFixtures()) {
            products += QString::fromStdWString(fixture->product).toStdString() + ' ';
            EXPECT_TRUE(
                fixture->HasDefinitionOf(*manager->GetLEDFixtureByProduct(fixture->product)));
        }
        EXPECT_EQ(products, exported.products);
        EXPECT_EQ(read.GetVersion(), 7) << "as the library, for whoever imports it";
    }
}

TEST_F(Library, NamesAreOneColumnBesideNumbersAndAlwaysSorted)
{
    const auto heads = [this] {
        QStringList texts;
        for (int column = 0; column < list->header()->count(); ++column) {
            if (!list->isColumnHidden(column))
                texts << list->model()->headerData(column, Qt::Horizontal).toString();
        }
        return texts.join(QLatin1Char(' '));
    };
    EXPECT_EQ(heads(), "Fixture Size Ch."_q);
    const QModelIndex channels = RowsOf(Arc).front().siblingAtColumn(DeviceModel::ChannelsColumn);
    EXPECT_EQ(channels.data().toString(), "36"_q);
    EXPECT_TRUE(channels.data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);

    list->setFixedWidth(300); // its first one
    QCoreApplication::processEvents();
    EXPECT_GT(3 * list->columnWidth(DeviceModel::NameColumn), 2 * list->viewport()->width());
    // However narrow it is, nothing lies aside, and a click moves nothing.
    list->setFixedWidth(220);
    QCoreApplication::processEvents();
    EXPECT_EQ(list->horizontalScrollBar()->maximum(), 0);
    list->setFixedWidth(400);

    // Numbers count by their value, and the manufacturers stay in the order of their names.
    list->sortByColumn(DeviceModel::ChannelsColumn, Qt::DescendingOrder);
    Load(Head + Tile);
    for (const auto& [product, count] : {std::pair(L"Nine", 9), {L"Hundred", 100}, {L"Also 9", 9}})
        manager->GetDeviceModel()->AddFixture(std::make_unique<DeviceLedItem>(
            L"robe", product, PixelMap(1, 1, PixelMapType::RGB), 0, count));
    list->expandAll();
    EXPECT_EQ(Shown(), "Robe|Hundred|Also 9|Nine|Tile");
    manager->GetDeviceModel()->AddFixture(Fixture(L"Aaron", L"Lamp"));
    list->expandAll();
    EXPECT_EQ(Shown(), "Aaron|Lamp|Robe|Hundred|Also 9|Nine|Tile");
    EXPECT_EQ(heads(), "Fixture Size Ch."_q);
}

TEST_F(Library, ADragCarriesTheFixtureAndAManufacturerNone)
{
    const auto pressAt = [this](QPoint at) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    };
    pressAt(list->visualRect(list->model()->index(0, 0)).center());
    EXPECT_EQ(list->DragData(), nullptr);
    const QModelIndex fixture = RowsOf(Arc).front();
    list->scrollTo(fixture);
    const QPoint lowerEdge = list->visualRect(fixture).bottomLeft() + QPoint(20, 0);
    pressAt(lowerEdge);
    // On its way the mouse passes over the next row.
    const QPoint next = lowerEdge + QPoint(2, 5);
    QMouseEvent move(QEvent::MouseMove, next, list->viewport()->mapToGlobal(next), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list->viewport(), &move);
    EXPECT_EQ(list->selectionModel()->selectedRows(), QModelIndexList{fixture});
    const auto load = list->DragData();
    ASSERT_TRUE(load);
    EXPECT_EQ(load->data(QLatin1String(LEDDeviceListView::FixtureMimeType)).toLongLong(),
              manager->GetLEDFixtureByProduct(L"ArcLine 36")->uniqueID);
}

TEST_F(Library, AFixtureThatDiffersIsAskedAbout)
{
    person.Will([](QDialog& box) {
        QTest::keyClick(&box, Qt::Key_Escape);
        box.close();
        EXPECT_TRUE(box.isVisible()) << "Escape is no answer";
        QTest::keyClick(&box, Qt::Key_Return);
    });
    person.WillPress("No, use the original fixture from the library"_q);
    for (const int answer : {OverwriteFixture, KeepFixture})
        EXPECT_EQ(DeviceModel::defaultConflictCallback("Kinetix"_q, "%2 & Söhne"_q), answer);
    EXPECT_EQ(person.seen[0].title, "Fixture conflict"_q);
    EXPECT_TRUE(person.seen[0].text.contains("\"Kinetix %2 & Söhne\""_q));
    int expected = 0;
    for (const char* answer : {"Overwrite", "Skip", "Cancel"}) {
        person.WillPress(QLatin1String(answer));
        EXPECT_EQ(AskAboutLibraryUpdate(boxes), expected++) << answer;
        EXPECT_EQ(person.seen.back().byDefault, "Overwrite"_q);
    }
}

TEST_F(Library, TheListIsNarrowedByWordsAndComesBackAsItWas)
{
    auto& filter = *window.findChild<QLineEdit*>("editLibraryFilter"_q);
    const auto& hits = *window.findChild<QLabel*>("labelLibraryHits"_q);
    list->collapseAll();
    list->expand(list->model()->index(3, 0));
    const std::string before = Shown();
    EXPECT_FALSE(hits.isVisible());
    QTest::keyClicks(&filter, "zentri tile 13"_q);
    EXPECT_EQ(Shown(), "Zentri|Brindle Tile 13x13 RGB");
    EXPECT_EQ(hits.text(), "1 of 170"_q);
    QTest::keyClick(&filter, Qt::Key_Return);
    EXPECT_TRUE(list->hasFocus());
    EXPECT_EQ(Shown(), "Zentri|[Brindle Tile 13x13 RGB]");
    // The filter stays through a reload, as does the selection.
    manager->ClearAll();
    panel->FollowLibrary();
    manager->LoadLibrary(GetFixtureLibraryPath());
    panel->FollowLibrary();
    EXPECT_EQ(Shown(), "Zentri|[Brindle Tile 13x13 RGB]");
    filter.setFocus();
    QTest::keyClick(&filter, Qt::Key_Escape);
    EXPECT_TRUE(filter.text().isEmpty() && filter.hasFocus() && !hits.isVisible());
    const std::string after = Shown();
    EXPECT_EQ(after.substr(0, after.find("|Zentri")), before.substr(0, before.find("|Zentri")));
    EXPECT_TRUE(list->visualRect(list->currentIndex()).intersects(list->viewport()->rect()));
    EXPECT_NE(after.find("[Brindle Tile 13x13 RGB]"), std::string::npos);
    QTest::keyClicks(&filter, "nothing like it"_q);
    QTest::keyClick(&filter, Qt::Key_Down);
    EXPECT_EQ(Shown() + hits.text().toStdString(), "No fixture found");
    EXPECT_TRUE(filter.hasFocus());
    EXPECT_FALSE(erase->isEnabled());
}

TEST_F(Library, AReloadLeavesTheListWhereItWas)
{
    list->sortByColumn(DeviceModel::SizeColumn, Qt::DescendingOrder);
    list->collapse(list->model()->index(2, 0));
    list->scrollTo(RowsOf("InLED AT10").front());
    const int place = list->verticalScrollBar()->value();
    ASSERT_GT(place, 3);
    std::string before = Shown();
    before.erase(before.find("InLED AT10|"), 11);
    person.WillPress("Yes"_q);
    Delete("InLED AT10");
    EXPECT_EQ(Shown(), before) << "and nothing is selected";
    EXPECT_EQ(list->verticalScrollBar()->value(), place);
}

TEST_F(FixtureEditor, WhatIsAppliedStaysOrComesBackToTheByte)
{
    struct Case
    {
        std::vector<std::array<const char*, 3>> entered; ///< manufacturer, product, button
        std::string fixtures;
        std::string shown;
        std::string element;
    };
    const std::string rows = "Elation|[Bar]|Robe|Tile";
    const std::vector<Case> cases = {
        {{{"M", "X", "Cancel"}}, before, rows, "Bar"},
        {{{"Elation", "Bar", "Apply"}, {"M", "X", "Cancel"}}, before, rows, "Bar"},
        {{{"Robe", "Rod", "Apply"}, {"A", "Bar", "Apply"}, {"", "", "Escape"}},
         before,
         rows,
         "Bar"},
        {{{"Robe", "Rod", "Apply"}, {"robe", "Zip", "OK"}},
         "robe Zip 4/2c|Robe Tile 3/3",
         "robe|Tile|[Zip]",
         "Zip"},
        {{{"Elation", "Bar", "OK"}}, "Elation Bar 4/2c|Robe Tile 3/3", rows, "Bar"},
    };
    for (const Case& edited : cases) {
        Begin();
        steps.clear();
        steps.push(new QUndoCommand);
        person.WillPress("Yes"_q);
        for (const auto& [manufacturer, product, button] : edited.entered)
            WillEnter(QLatin1String(manufacturer), QLatin1String(product), button);
        Edit();
        const std::string button = edited.entered.back()[2];
        SCOPED_TRACE(button);
        EXPECT_EQ(Fixtures(), edited.fixtures);
        EXPECT_EQ(Shown(), edited.shown);
        EXPECT_EQ(Element(), edited.element);
        EXPECT_EQ(File() != ByHand, button == "OK");
        EXPECT_EQ(steps.canUndo(), button != "OK");
        EXPECT_EQ(manager->documentDirty, button == "OK");
    }
    EXPECT_EQ(person.seen[0].title + person.seen[0].byDefault, "Edit Used FixtureYes"_q);
    EXPECT_EQ(person.seen[0].text, "This fixture is used in your current mapping file.\n\nEditing "
                                   "the fixture will affect your current document."_q);
    person.WillPress("Cancel"_q);
    Edit();
    manager->RemoveMappedObjects({1});
    WillEnter("M"_q, "X"_q, "Cancel"); // without a question
    Edit();
}

TEST_F(FixtureEditor, TheEditorOutlivesWhatHappensBehindIt)
{
    const auto reload = [this] {
        Load(File());
    };
    const auto lose = [this] {
        Load(Head + Tile);
    };
    const auto begin = [this] {
        manager->ClearAll();
        Load(ByHand);
    };
    const auto import = [this] {
        manager->GetDeviceModel()->AddFixture(Fixture(L"Robe", L"Bar"));
    };
    struct Case
    {
        const char* applied; ///< the product, null: Apply is not pressed
        std::function<void()> behind;
        const char* button;
        std::string fixtures;
        std::string element;
    };
    const std::string renamed = "Elation Rod 4/2c|Robe Tile 3/3";
    const std::string anew = "Robe Tile 3/3|Elation Rod 4/2c";
    const std::vector<Case> cases = {
        {nullptr, reload, "OK", renamed, "Rod"},
        {nullptr, reload, "Cancel", before, "Bar"},
        {"Zip", reload, "OK", renamed, "Rod"},
        {"Zip", reload, "Cancel", before, "Bar"},
        {nullptr, lose, "OK", anew, "Rod"},
        {nullptr, lose, "Cancel", "Robe Tile 3/3", "Bar of none"},
        {"Zip", lose, "OK", anew, "Rod"},
        {"Zip", lose, "Cancel", "Robe Tile 3/3|" + before.substr(0, before.find('|')), "Bar"},
        {nullptr, begin, "OK", renamed, "none"},
        {"Zip", begin, "Cancel", before, "none"},
        {"Zip", import, "Cancel", before, "Bar"},
    };
    for (const Case& edited : cases) {
        SCOPED_TRACE(&edited - cases.data());
        Begin();
        person.WillPress("Yes"_q);
        if (edited.applied)
            WillEnter("Elation"_q, QLatin1String(edited.applied), "Apply");
        person.Will([&](QDialog&) { edited.behind(); });
        WillEnter("Elation"_q, "Rod"_q, edited.button);
        Edit();
        EXPECT_EQ(Fixtures(), edited.fixtures);
        EXPECT_EQ(Element(), edited.element);
    }
    // Behind a question, too.
    Begin();
    for (const char* button : {"buttonEditFixture", "buttonDeleteFixture"}) {
        list->setCurrentIndex(RowsOf("Tile").front());
        person.Will([&](QDialog& box) {
            manager->LoadLibrary(GetFixtureLibraryPath());
            Support::Press(box, box.windowTitle() == "Delete Fixture"_q ? "Yes"_q : "Cancel"_q);
        });
        Press(button);
    }
    EXPECT_EQ(Fixtures(), "Elation Bar -1/2c");
}

TEST_F(FixtureEditor, ASaveThatFailsLosesNothing)
{
    ASSERT_TRUE(QFile::remove(manager->GetLibraryPath()));
    ASSERT_TRUE(QDir().mkdir(manager->GetLibraryPath()));
    for (const std::string button : {"Cancel", "OK"}) {
        person.WillPress("Yes"_q);
        WillEnter("Robe"_q, "Zip"_q, "Apply");
        person.Will([&](QDialog& box) {
            EXPECT_EQ(box.windowTitle(), "Fixture Library Not Saved"_q);
            ASSERT_TRUE(box.parentWidget());
            EXPECT_EQ(box.parentWidget()->objectName(), "WEFTCustomFixtureDialog"_q);
            Support::Press(box, "OK"_q);
        });
        WillEnter("Anolis"_q, "A Bar"_q, button.c_str());
        if (button == "OK")
            person.WillPress("OK"_q);
        Edit();
        EXPECT_EQ(Shown(), button == "OK" ? "Anolis|[A Bar]|Robe|Tile" : "Elation|[Bar]|Robe|Tile");
        EXPECT_EQ(Element(), button == "OK" ? "A Bar" : "Bar");
    }
    person.WillPress("Yes"_q);
    person.WillPress("OK"_q);
    Delete("Tile");
    EXPECT_TRUE(person.seen.back().text.contains(manager->GetLibraryPath()));
    EXPECT_EQ(Shown(), "Anolis|A Bar|Robe");
    EXPECT_FALSE(erase->isEnabled()) << "nothing is selected for the next one";
    ASSERT_TRUE(QDir().rmdir(manager->GetLibraryPath()) && manager->SaveLibrary(wait));
    EXPECT_EQ(Fixtures(), "Anolis A Bar 4/2c");
}

TEST_F(FixtureEditor, ANewFixtureIsEnteredWhenItsNamesCanBeUsed)
{
    auto& filter = *window.findChild<QLineEdit*>("editLibraryFilter"_q);
    filter.setText("tile"_q);
    person.WillPress("Escape"_q);
    Press("buttonCustomFixture");
    for (const char* button : {"Create", "Cancel"})
        person.WillPress(QLatin1String(button));
    Press("buttonCustomFixture");
    EXPECT_EQ(File(), ByHand);
    person.WillPress("Create"_q);
    person.Will([this](QDialog& editor) {
        EXPECT_EQ(editor.findChild<QComboBox*>()->currentText(), "Manufacturer"_q);
        EXPECT_EQ(editor.findChild<QLineEdit*>("editProductName"_q)->text(), "Product"_q);
        for (const auto* button : editor.findChildren<QPushButton*>())
            EXPECT_FALSE(button->isVisible() && button->text() == "Apply"_q);
        Load(File()); // The numbers begin again.
    });
    const std::vector<std::array<const char*, 3>> refused = {
        {"ROBE", " \u00A0", "name of the product"},
        {" ", "X", "name of the manufacturer"},
        {"M", "Tile", "already, from \"Robe\""}};
    for (const auto& [manufacturer, product, words] : refused) {
        WillEnter(QString::fromUtf8(manufacturer), QString::fromUtf8(product), "OK");
        person.WillPress("OK"_q);
    }
    const QString name = " 💡 \""_q + QString(500, QLatin1Char('x')) + "\" &#x4D; "_q;
    WillEnter("ROBE"_q, name, "OK");
    Press("buttonCustomFixture");
    ASSERT_EQ(person.seen.size(), 12U);
    for (std::size_t i = 0; i < refused.size(); ++i)
        EXPECT_TRUE(person.seen[6 + 2 * i].text.contains(QLatin1String(refused[i][2])));
    const std::string kept = QString(name).replace("&#x4D;"_q, "M"_q).toStdString();
    EXPECT_EQ(Fixtures(), before + "|ROBE " + kept + " 48/0");
    EXPECT_EQ(Shown(), "Elation|Bar|Robe|[" + kept + "]|Tile") << "the filter hid it";
    EXPECT_TRUE(manager->documentDirty);
}
