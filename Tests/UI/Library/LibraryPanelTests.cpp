// SPDX-License-Identifier: MIT
#include "UI/Library/LibraryPanel.h"

#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

#include "LibTools/W32System.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Settings/FixtureLibraryPath.h"
#include "Support/Literals.h"
#include "Support/Operator.h"
#include "Support/TemporaryFolder.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Library/FixtureConflictBox.h"
#include "UI/Library/LEDDeviceListView.h"

namespace {

constexpr auto Arc = "ArcLine 36"; ///< a fixture of the program

std::unique_ptr<DeviceLedItem> Fixture(const wchar_t* maker, const wchar_t* product)
{
    return std::make_unique<DeviceLedItem>(maker, product, PixelMap(1, 1, PixelMapType::RGB), 0, 3);
}

/// The panel on a new user's library: the fixtures of the program.
class Library : public testing::Test
{
protected:
    Library()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        home.UseAsHome();
        System::global = std::make_unique<W32System>();
        manager = std::make_unique<DeviceManager>(GetFixtureLibraryPath());
        manager->Initialize();
        manager->LoadLibrary(GetFixtureLibraryPath());
        panel = std::make_unique<LibraryPanel>(LibraryPanel::Parts{*manager, steps, boxes, window});
        window.setCentralWidget(panel->Contents());
        list = window.findChild<LEDDeviceListView*>("treeView"_q);
        erase = window.findChild<QPushButton*>("buttonDeleteFixture"_q);
        panel->SortByProduct();
        list->expandAll();
        window.show();
        steps.push(new QUndoCommand);
    }
    ~Library() override
    {
        EXPECT_TRUE(person.IsDone());
        panel.reset();
        manager.reset();
        System::global.reset();
    }

    [[nodiscard]] QModelIndexList RowsOf(const char* product) const
    {
        return list->model()->match(list->model()->index(0, 1), Qt::DisplayRole,
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
    void Import(const char* file, const char* answer)
    {
        person.WillChoose(QString::fromStdString((home.Path() / file).string()));
        person.WillPress(QLatin1String(answer));
        window.findChild<QAction*>("actionImport_fixtures"_q)->trigger();
    }

    Support::TemporaryFolder home;
    WidgetBoxes boxes;
    Support::Operator person;
    QUndoStack steps;
    QMainWindow window;
    std::unique_ptr<DeviceManager> manager;
    std::unique_ptr<LibraryPanel> panel;
    LEDDeviceListView* list = nullptr;
    QPushButton* erase = nullptr;
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
    EXPECT_EQ(person.seen[1].byDefault, "Yes"_q);
    person.WillPress("Yes"_q);
    Delete(Arc);
    EXPECT_TRUE(RowsOf(Arc).isEmpty());
    EXPECT_FALSE(erase->isEnabled());
    EXPECT_FALSE(steps.canUndo());
    EXPECT_TRUE(manager->documentDirty);
    manager->LoadLibrary(GetFixtureLibraryPath());
    EXPECT_TRUE(RowsOf(Arc).isEmpty()) << "it is in the file at once";
    panel->RemoveLocalFixtures();
    manager->LoadLibrary(GetFixtureLibraryPath());
    EXPECT_EQ(RowsOf(Arc).size(), 1) << "the program's fixtures in place of the user's";
}

TEST_F(Library, AfterASaveThatFailsNothingIsSelectedForTheNextDelete)
{
    ASSERT_TRUE(QFile::remove(GetFixtureLibraryPath()));
    ASSERT_TRUE(QDir().mkdir(manager->GetLibraryPath()));
    person.WillPress("Yes"_q);
    person.WillPress("OK"_q);
    Delete(Arc);
    EXPECT_EQ(person.seen.back().title, "Fixture Library Not Saved"_q);
    EXPECT_TRUE(person.seen.back().text.contains(manager->GetLibraryPath()));
    EXPECT_TRUE(RowsOf(Arc).isEmpty());
    EXPECT_EQ(RowsOf("ArcLine 24").size(), 1) << "the others are still there";
    EXPECT_FALSE(erase->isEnabled());
}

TEST_F(Library, ImportedFixturesTakeTheirPlacesInTheList)
{
    DeviceModel other;
    other.AddFixture(Fixture(L"Anolis", L"ArcLine 36"));
    other.AddFixture(Fixture(L"Anolis", L"A Lamp"));
    other.AddFixture(Fixture(L"Aaron", L"New Lamp"));
    ASSERT_EQ(other.Save((home.Path() / "other.wfl").wstring()), 0);
    Import("other.wfl", "Yes, use the fixture from the mapping file");
    EXPECT_EQ(list->model()->index(0, 0).data().toString(), "Aaron"_q);
    ASSERT_EQ(RowsOf("A Lamp").size(), 1);
    EXPECT_EQ(RowsOf("A Lamp").front().row(), 0) << "before the others of its maker";
    ASSERT_EQ(RowsOf(Arc).size(), 1) << "the imported one alone";
    EXPECT_EQ(manager->GetLEDFixtureByProduct(L"ArcLine 36")->GetChannelCount(), 3);
    EXPECT_FALSE(list->isColumnHidden(1));
    EXPECT_TRUE(list->isColumnHidden(3));
    EXPECT_FALSE(steps.canUndo());

    home.Write("broken.wfl", "no library");
    Import("broken.wfl", "OK");
    EXPECT_TRUE(person.seen.back().text.contains("could not be read whole"_q));
    EXPECT_EQ(RowsOf("New Lamp").size(), 1);
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
    EXPECT_EQ(list->selectionModel()->selectedRows(1), QModelIndexList{fixture});
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
