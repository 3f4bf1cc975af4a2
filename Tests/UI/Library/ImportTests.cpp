// SPDX-License-Identifier: MIT
// The import from files to the library, by the dialog that a person sees.
#include <gtest/gtest.h>

#include <QtTest>
#include <QtWidgets>

#include "Model/MappedDeviceModel.h"
#include "UI/Library/LibraryDesk.h"

namespace {

/// Of two modes: red, green, blue behind a dimmer, and one without light.
const std::string Definition =
    R"(<FixtureDefinition><Manufacturer>Maker</Manufacturer><Model>Par %1</Model>
    <Channel Name="D" Preset="IntensityMasterDimmer"/><Channel Name="R" Preset="IntensityRed"/>
    <Channel Name="G" Preset="IntensityGreen"/><Channel Name="B" Preset="IntensityBlue"/>
    <Channel Name="S" Preset="SpeedPanFastSlow"/>
    <Mode Name="4ch"><Channel Number="0">D</Channel><Channel Number="1">R</Channel>
    <Channel Number="2">G</Channel><Channel Number="3">B</Channel></Mode>
    <Mode Name="dark"><Channel Number="0">S</Channel></Mode></FixtureDefinition>)";

std::string FixtureXml(const std::string& product, const std::string& cell)
{
    return R"(<LEDFixture manufacturer="Robe" product=")" + product +
           R"(" channel_count="3"><PixelMapping width="1" height="1" type=")" + cell +
           R"(">1</PixelMapping></LEDFixture>)";
}

std::string LibraryXml(const std::string& fixtures)
{
    return R"(<LEDFixtureLibrary version="7">)" + fixtures + "</LEDFixtureLibrary>";
}

/// A library of two fixtures, "Tile", which an element uses, and "Bar".
class Import : public LibraryDesk
{
protected:
    Import()
        : LibraryDesk(LibraryXml(FixtureXml("Tile", "RGB") + FixtureXml("Bar", "RGB")))
    {
        MappedObjectParams tile;
        tile.fixtureID = manager->GetLEDFixtureByProduct(L"Tile")->uniqueID;
        manager->AddMappedObject(tile);
        before = File();
        QObject::connect(manager.get(), &DeviceManager::librarySaved, [this] { ++saves; });
        home.Write("x/par.qxf", QString::fromStdString(Definition).arg(1).toStdString());
        home.Write("x/broken.qxf", "nothing");
        home.Write("x/other.wfl", LibraryXml(FixtureXml("Tile", "BGR") + FixtureXml("Bar", "RGB") +
                                             FixtureXml("New", "GRB")));
    }

    /// What a file manager lets go of over the list.
    void Drop(const QStringList& paths) const
    {
        QMimeData load;
        QList<QUrl> urls;
        for (const QString& path : paths)
            urls << QUrl::fromLocalFile(path);
        load.setUrls(urls);
        QWidget& target = *list->parentWidget();
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &load, Qt::LeftButton, {});
        QApplication::sendEvent(&target, &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent drop({5, 5}, Qt::CopyAction, &load, Qt::LeftButton, {});
        QApplication::sendEvent(&target, &drop);
        EXPECT_FALSE(QApplication::activeModalWidget()) << "the file manager waits";
        QCoreApplication::processEvents();
        QCoreApplication::processEvents(); // what a failed save tells
    }
    /// The rows of the dialog, "[x]" before what is checked.
    static std::string Rows(const QDialog& dialog)
    {
        const auto& tree = *dialog.findChild<QTreeView*>("importTree"_q);
        QStringList rows;
        for (QModelIndex row = tree.model()->index(0, 0); row.isValid(); row = tree.indexBelow(row))
        {
            const QVariant check = row.data(Qt::CheckStateRole);
            static const char* const marks[] = {"[ ]", "[-]", "[x]"};
            rows << (check.isValid() ? QLatin1String(marks[check.toInt()]) : QLatin1String()) +
                        row.data().toString();
        }
        return rows.join(QLatin1Char('|')).toStdString();
    }
    static QModelIndex RowOf(const QTreeView& tree, const QString& name)
    {
        return tree.model()
            ->match(tree.model()->index(0, 0), Qt::DisplayRole, name, 1,
                    Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }
    static void WaitForFiles(const QDialog& dialog)
    {
        const auto& counts = *dialog.findChild<QLabel*>("importCounts"_q);
        EXPECT_TRUE(QTest::qWaitFor([&] { return counts.text().contains("to import."_q); }));
    }
    [[nodiscard]] std::string Selected() const
    {
        QStringList products;
        for (const QModelIndex& row : list->selectionModel()->selectedRows())
            products << row.data().toString();
        return products.join(QLatin1Char('|')).toStdString();
    }
    /// The pixel type of a fixture of the library as its file has it, "none" without one.
    [[nodiscard]] static std::string TypeOf(const wchar_t* product)
    {
        DeviceModel saved;
        saved.Merge(GetFixtureLibraryPath().toStdWString(), true);
        const DeviceLedItem* fixture = saved.GetLEDFixtureByProduct(product);
        return fixture ? QString::fromWCharArray(PixelMapTypeToText(fixture->pixelMap.GetType()))
                             .toStdString()
                       : "none";
    }

    std::string before;
    int saves = 0;
};

} // namespace

TEST_F(Import, WhatIsChosenComesIntoTheLibraryAtOnce)
{
    struct Case
    {
        const char* answer; ///< to the product that the library has of another fixture
        const char* tile;
        const char* other; ///< "Tile (Robe)"
        const char* selected;
        bool replaces;
    };
    const Case cases[] = {
        {"Leave it out", "RGB", "none", "Par 1 - 4ch|New", false},
        {"Keep both, under a new name", "RGB", "BGR", "Par 1 - 4ch|New|Tile (Robe)", false},
        {"Replace the library's", "BGR", "none", "Par 1 - 4ch|New|Tile", true},
    };
    for (const Case& imported : cases) {
        SCOPED_TRACE(imported.answer);
        Write(GetFixtureLibraryPath(), before);
        manager->LoadLibrary(GetFixtureLibraryPath());
        manager->SetDocumentDirty(false);
        saves = 0;
        person.Will([&](QDialog& dialog) {
            EXPECT_EQ(dialog.objectName(), "importFixturesDialog"_q);
            WaitForFiles(dialog);
            EXPECT_EQ(Rows(dialog),
                      "[x]Maker|[x]Par 1|[x]4ch|dark|[-]Robe|Bar|[x]New|[ ]Tile|Files "
                      "that can't be read|broken.qxf");
            Support::Pick(*dialog.findChild<QComboBox*>("importAnswerAll"_q), imported.answer);
            if (imported.replaces)
                person.WillPress("Yes"_q);
            Support::Press(dialog, "Import"_q);
            EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
        });
        Drop({Path("x")});
        EXPECT_EQ(saves, 1);
        EXPECT_EQ(TypeOf(L"Par 1 - 4ch"), "RGB");
        EXPECT_EQ(TypeOf(L"New"), "GRB");
        EXPECT_EQ(TypeOf(L"Tile"), imported.tile);
        EXPECT_EQ(TypeOf(L"Tile (Robe)"), imported.other);
        EXPECT_EQ(Selected(), imported.selected);
        const auto& element = manager->GetMappedItemByRow(0)->GetFixture();
        EXPECT_EQ(element.pixelMap.GetType(),
                  imported.replaces ? PixelMapType::BGR : PixelMapType::RGB);
        EXPECT_EQ(steps.canUndo(), !imported.replaces);
        EXPECT_EQ(manager->documentDirty, imported.replaces);
    }
}

TEST_F(Import, NothingChangesUntilThen)
{
    for (int i = 0; i < 300; ++i)
        home.Write("many/" + std::to_string(i) + ".qxf",
                   QString::fromStdString(Definition).arg(i).toStdString());
    // While it reads, and when all is shown.
    for (const bool isRead : {false, true}) {
        person.Will([&](QDialog& dialog) {
            if (isRead)
                WaitForFiles(dialog);
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        Drop({Path("many")});
    }
    person.WillChoose(Path("x/broken.qxf"));
    person.Will([&](QDialog& dialog) {
        WaitForFiles(dialog);
        EXPECT_FALSE(dialog.findChild<QPushButton*>("importButton"_q)->isEnabled());
        QTest::keyClick(&dialog, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        // More comes while it is open, by a button and by a drop.
        person.WillChoose(Path("x/par.qxf"));
        QTest::mouseClick(dialog.findChild<QPushButton*>("importAddFiles"_q), Qt::LeftButton);
        WaitForFiles(dialog);
        EXPECT_EQ(Rows(dialog),
                  "[x]Maker|[x]Par 1|[x]4ch|dark|Files that can't be read|broken.qxf");
        Support::Press(dialog, "Cancel"_q);
    });
    window.findChild<QAction*>("actionImport_fixtures"_q)->trigger();
    EXPECT_EQ(saves, 0);
    EXPECT_EQ(File(), before);
    EXPECT_EQ(manager->GetDeviceModel()->GetFixtures().size(), 2);
    EXPECT_TRUE(steps.canUndo());
}

TEST_F(Import, CancelWaitsForTheFileThatIsRead)
{
    std::string fixtures;
    for (int i = 0; i < 20'000; ++i)
        fixtures += FixtureXml("Lamp " + std::to_string(i), "RGB");
    home.Write("large.wfl", LibraryXml(fixtures));
    person.Will([](QDialog& dialog) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_TRUE(dialog.isVisible()) << "the output would wait for the reader";
        EXPECT_EQ(dialog.findChild<QLabel*>("importCounts"_q)->text(), "Cancelling..."_q);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
        EXPECT_EQ(Rows(dialog), "");
    });
    Drop({Path("large.wfl")});
    EXPECT_EQ(File(), before);
}

TEST_F(Import, WhatIsCancelledIsTakenBack)
{
    std::string fixtures = FixtureXml("Tile", "BGR");
    for (int i = 0; i < 100; ++i)
        fixtures += FixtureXml("Lamp " + std::to_string(i), "RGB");
    home.Write("y/many.wfl", LibraryXml(fixtures));
    home.Write("y/par.qxf", Definition); // of a manufacturer of its own
    manager->SetDocumentDirty(false);
    person.Will([&](QDialog& dialog) {
        WaitForFiles(dialog);
        EXPECT_TRUE(dialog.findChild<QLabel*>("importCounts"_q)->text().startsWith("101 of 103"_q));
        Support::Pick(*dialog.findChild<QComboBox*>("importAnswerAll"_q), "Replace the library's");
        person.WillPress("No"_q);
        Support::Press(dialog, "Import"_q);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(manager->GetDeviceModel()->GetFixtures().size(), 2);
        // The placed fixture changes last of all.
        const auto watch = QObject::connect(manager.get(), &DeviceManager::elementsRefitted, [&] {
            EXPECT_EQ(manager->GetDeviceModel()->GetFixtures().size(), 103);
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        person.WillPress("Yes"_q);
        Support::Press(dialog, "Import"_q);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
        QObject::disconnect(watch);
    });
    Drop({Path("y")});
    EXPECT_EQ(person.seen.back().byDefault, "No"_q);
    EXPECT_EQ(manager->GetDeviceModel()->GetFixtures().size(), 2);
    EXPECT_EQ(manager->GetDeviceModel()->rowCount(), 1) << "of manufacturers";
    EXPECT_EQ(manager->GetMappedItemByRow(0)->GetFixture().pixelMap.GetType(), PixelMapType::RGB);
    EXPECT_EQ(saves, 0);
    EXPECT_EQ(File(), before);
    EXPECT_TRUE(steps.canUndo());
    EXPECT_FALSE(manager->documentDirty);
}

TEST_F(Import, AFailedSaveIsToldAndLosesNothing)
{
    ASSERT_TRUE(QFile::remove(GetFixtureLibraryPath()) && QDir().mkdir(manager->GetLibraryPath()));
    person.Will([&](QDialog& dialog) {
        WaitForFiles(dialog);
        Support::Press(dialog, "Import"_q);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
    });
    person.WillPress("OK"_q);
    Drop({Path("x/par.qxf")});
    EXPECT_EQ(person.seen.back().title, "Fixture Library Not Saved"_q);
    EXPECT_EQ(Selected(), "Par 1 - 4ch");
}

TEST_F(Import, TheKeyboardIsEnough)
{
    person.WillChoose(Path("x"));
    person.Will([&](QDialog& dialog) {
        WaitForFiles(dialog);
        auto& tree = *dialog.findChild<QTreeView*>("importTree"_q);
        auto& search = *dialog.findChild<QLineEdit*>("importSearch"_q);
        const auto& words = *dialog.findChild<QLabel*>("importWords"_q);
        const auto& channels = *dialog.findChild<QTreeView*>("importChannels"_q)->model();
        EXPECT_TRUE(tree.hasFocus());
        QTest::keyClick(&dialog, Qt::Key_F, Qt::ControlModifier);
        EXPECT_TRUE(search.hasFocus());
        QTest::keyClicks(&search, "PAR maker"_q);
        EXPECT_EQ(Rows(dialog), "[x]Maker|[x]Par 1|[x]4ch|dark");
        QTest::keyClick(&search, Qt::Key_Down);
        EXPECT_TRUE(tree.hasFocus());
        // Wherever in the row a click was, Space checks.
        tree.setCurrentIndex(RowOf(tree, "4ch"_q).siblingAtColumn(2));
        EXPECT_EQ(words.text(), "1x1, RGB, 4 channels"_q);
        EXPECT_EQ(channels.index(0, 3).data().toString(), "full"_q);
        EXPECT_EQ(channels.index(3, 3).data().toString(), "pixel 1, B"_q);
        QTest::keyClick(&tree, Qt::Key_Space);
        EXPECT_EQ(Rows(dialog), "[ ]Maker|[ ]Par 1|[ ]4ch|dark");
        QTest::keyClick(&tree, Qt::Key_Down);
        EXPECT_EQ(channels.rowCount(), 0);
        EXPECT_TRUE(words.text().startsWith("It has no channels for colours"_q));
        search.setFocus();
        QTest::keyClick(&search, Qt::Key_Escape);
        EXPECT_TRUE(dialog.isVisible() && search.text().isEmpty());
        EXPECT_EQ(tree.currentIndex(), RowOf(tree, "dark"_q));
        tree.setCurrentIndex(RowOf(tree, "Tile"_q));
        QTest::keyClick(&tree, Qt::Key_Space);
        EXPECT_EQ(dialog.findChild<QLabel*>("importName"_q)->text(), "Tile (Robe)"_q);
        QTest::keyClick(&tree, Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
    });
    window.findChild<QAction*>("actionImport_fixture_folder"_q)->trigger();
    EXPECT_EQ(Selected(), "New|Tile (Robe)");
}
