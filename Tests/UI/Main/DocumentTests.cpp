// SPDX-License-Identifier: MIT
#include <QAction>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QSpinBox>
#include <QTest>

#include "UI/Main/Desk.h"
#include "UI/Main/UnsavedWork.h"
#include "UI/Main/WEFTMain.h"

namespace {

const QString Bare = QStringLiteral("Zentri PixelWeft 3.2.5");
const QString Saved = Bare + QStringLiteral(" (saved)");
const QString Unsaved = Bare + QStringLiteral(" (unsaved)");

using Document = Desk;

void ExpectQuestion(const SeenBox& box, const char* title, const char* text)
{
    EXPECT_EQ(box.title, QLatin1String(title));
    EXPECT_EQ(box.text, QLatin1String(text));
    EXPECT_EQ(box.buttons, QStringList({QStringLiteral("Cancel"), QStringLiteral("Yes")}));
    EXPECT_EQ(box.byDefault, QStringLiteral("Cancel"));
    EXPECT_TRUE(box.hasParent);
}

QByteArray Bytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST_F(Document, AFirstStartSavesANewDocumentOnTheFirstNetwork)
{
    Start();
    EXPECT_EQ(Title(), Saved);
    EXPECT_FALSE(SaveIsPossible());
    const QByteArray utf16 = DocumentBytes();
    const QString text = QString::fromUtf16(reinterpret_cast<const char16_t*>(utf16.constData()),
                                            static_cast<int>(utf16.size() / 2));
    EXPECT_TRUE(text.contains(QStringLiteral("resolution=\"100,100\""))) << text.size();
    EXPECT_FALSE(text.contains(QStringLiteral(" network=\"\"")));
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(Document, ADocumentThatWasLoadedHasABareTitleAndCanBeSaved)
{
    WriteDocument(DocumentPath(), 640, 360);
    person.WillPress(QStringLiteral("OK"));
    Start();
    EXPECT_EQ(Title(), Bare);
    EXPECT_TRUE(SaveIsPossible());
    EXPECT_GT(PlacedFixtures(), 10);
    EXPECT_EQ(CanvasWidth(), 640);

    Edit();
    EXPECT_EQ(Title(), Unsaved);
    EXPECT_TRUE(SaveIsPossible());
    Trigger("actionSave_File");
    EXPECT_EQ(Title(), Saved);
    EXPECT_FALSE(SaveIsPossible());
}

TEST_F(Document, TheNetworkOfADocumentIsTakenWithItsNotice)
{
    WriteDocument(DocumentPath(), 100, 100, QStringLiteral("2.X.X.X"));
    person.WillPress(QStringLiteral("OK"));
    Start();
    ASSERT_EQ(person.seen.size(), 1U);
    EXPECT_EQ(person.seen[0].text, QStringLiteral("The broadcast IP has been changed from 0.0.0.0 "
                                                  "to the mapping file IP 2.X.X.X"));
    EXPECT_FALSE(person.seen[0].hasParent);
    EXPECT_EQ(person.seen[0].buttons, QStringList(QStringLiteral("OK")));
    EXPECT_TRUE(Find<QWidget>("networkCombo")->toolTip().contains(QStringLiteral("2.0.0.1")));

    person.seen.clear();
    WriteDocument(Path(QStringLiteral("dark.wfm")), 100, 100, QString());
    person.WillChoose(Path(QStringLiteral("dark.wfm")));
    person.WillPress(QStringLiteral("OK"));
    Trigger("actionImport");
    QCoreApplication::processEvents(); // the light goes first, the notice comes after it
    ASSERT_EQ(person.seen.size(), 2U);
    EXPECT_EQ(person.seen[1].text, QStringLiteral("The broadcast IP has been changed from 2.X.X.X "
                                                  "to the mapping file IP 0.0.0.0"));
}

TEST_F(Document, NewAsksOnlyForUnsavedWorkAndIsUnsavedAtOnce)
{
    Start();
    Trigger("actionNew");
    EXPECT_EQ(Title(), Unsaved);
    EXPECT_TRUE(person.seen.empty());

    for (const char* no : {"Cancel", "Escape"}) {
        person.seen.clear();
        person.Will([](QDialog& dialog) {
            dialog.findChild<QSpinBox*>(QStringLiteral("spinBoxWidth"))->setValue(77);
            dialog.accept();
        });
        Trigger("actionCanvas_Size");
        person.WillPress(QLatin1String(no));
        Trigger("actionNew");
        ASSERT_EQ(person.seen.size(), 2U);
        ExpectQuestion(person.seen[1], "New Mapping",
                       "Your current mapping has unsaved changes.\n\nAre you sure you want to "
                       "start a new mapping and lose your changes?");
        EXPECT_EQ(CanvasWidth(), 77) << no;
    }
    person.WillPress(QStringLiteral("Yes"));
    Trigger("actionNew");
    EXPECT_EQ(CanvasWidth(), 100);
    EXPECT_EQ(Title(), Unsaved);
}

TEST_F(Document, ImportReplacesTheDocumentAndLeavesItsFileAlone)
{
    Start();
    const QByteArray before = DocumentBytes();
    const QString other =
        WriteDocument(Path(QStringLiteral("other.wfm")), 320, 200, QStringLiteral("2.X.X.X"));
    person.WillChoose(other);
    person.WillPress(QStringLiteral("OK")); // the network is written in another way than the list's
    Trigger("actionImport");
    QCoreApplication::processEvents(); // the notice
    EXPECT_EQ(person.seen[0].title, QStringLiteral("Import Mapping"));
    EXPECT_EQ(Title(), Unsaved);
    EXPECT_EQ(CanvasWidth(), 320);
    EXPECT_GT(PlacedFixtures(), 10);
    EXPECT_EQ(DocumentBytes(), before);
    EXPECT_TRUE(Action("actionSnapToGrid")->isChecked());
}

TEST_F(Document, ImportAsksBeforeUnsavedWorkIsLost)
{
    Start();
    Edit();
    const QString other = WriteDocument(Path(QStringLiteral("other.wfm")), 320, 200);
    for (const char* no : {"Cancel", "Escape"}) {
        person.seen.clear();
        person.WillChoose(other);
        person.WillPress(QLatin1String(no));
        Trigger("actionImport");
        ASSERT_EQ(person.seen.size(), 2U);
        ExpectQuestion(person.seen[1], "Unsaved Mapping",
                       "Your current mapping has unsaved changes.\n\nAre you sure you want to "
                       "import the mapping and lose your changes?");
        EXPECT_EQ(CanvasWidth(), 100);
    }
    // A cancelled file dialog asks nothing.
    person.seen.clear();
    person.WillPress(QStringLiteral("Escape"));
    Trigger("actionImport");
    EXPECT_EQ(person.seen.size(), 1U);
}

TEST_F(Document, AFailedImportLeavesAnEmptyDocumentInTheStateItHad)
{
    WriteDocument(DocumentPath(), 640, 360);
    person.WillPress(QStringLiteral("OK"));
    Start();
    QFile broken(Path(QStringLiteral("broken.wfm")));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("no document");
    broken.close();
    person.WillChoose(broken.fileName());
    Trigger("actionImport");
    EXPECT_EQ(PlacedFixtures(), 0);
    EXPECT_EQ(CanvasWidth(), 100);
    EXPECT_EQ(Title(), Bare);
    EXPECT_TRUE(Action("actionSnapToGrid")->isChecked());
}

TEST_F(Document, ExportWritesACopyAndChangesNothingElse)
{
    Start();
    Edit();
    person.WillChoose(Path(QStringLiteral("copy")));
    Trigger("actionExport");
    EXPECT_EQ(person.seen.back().title, QStringLiteral("Export Mapping"));
    EXPECT_EQ(Bytes(Path(QStringLiteral("copy.wfm"))), DocumentBytes());
    EXPECT_EQ(Title(), Unsaved);

    person.WillChoose(Path(QStringLiteral("LOUD.WFM")));
    Trigger("actionExport");
    EXPECT_TRUE(QFile::exists(Path(QStringLiteral("LOUD.WFM"))));
    const QSettings store(QStringLiteral("Zentri"), QStringLiteral("PixelWeft3"));
    EXPECT_EQ(store.value(QStringLiteral("lastFile")), Path(QStringLiteral("LOUD.WFM")));
    EXPECT_EQ(store.value(QStringLiteral("lastDirectory")),
              QString::fromStdString(home.Path().string()));
}

TEST_F(Document, ExportToTheWorkingFileIsForbidden)
{
    Start();
    const QByteArray before = DocumentBytes();
    Edit();
    const QString folder = QFileInfo(DocumentPath()).path();
    ASSERT_TRUE(QFile::link(DocumentPath(), Path(QStringLiteral("link.wfm"))));
    for (const QString& name :
         {folder + QStringLiteral("/mapping"), folder + QStringLiteral("/../PixelWeft/mapping.wfm"),
          folder + QStringLiteral("/mapping.WFM"), Path(QStringLiteral("link"))})
    {
        person.WillChoose(name);
        if (!name.endsWith(QStringLiteral("WFM")))
            person.WillPress(QStringLiteral("Yes")); // the file dialog's own question
        person.WillPress(QStringLiteral("OK"));
        Trigger("actionExport");
        const SeenBox& box = person.seen.back();
        EXPECT_EQ(box.title, QStringLiteral("Export Mapping Forbidden"));
        EXPECT_EQ(box.text,
                  QStringLiteral("Exporting to the mapping.wfm file is forbidden. Use Save feature "
                                 "instead to update this file."));
        EXPECT_EQ(box.buttons, QStringList(QStringLiteral("OK")));
    }
    EXPECT_EQ(DocumentBytes(), before);
    EXPECT_FALSE(QFile::exists(folder + QStringLiteral("/mapping.WFM")));
}

TEST_F(Document, ExportUnderABareNameAsksForTheFileThatIsThere)
{
    Start();
    const QString show = WriteDocument(Path(QStringLiteral("show.wfm")), 320, 200);
    const QByteArray before = Bytes(show);
    person.WillChoose(Path(QStringLiteral("show")));
    person.WillPress(QStringLiteral("No"));
    person.WillPress(QStringLiteral("Escape")); // the file dialog
    Trigger("actionExport");
    EXPECT_EQ(Bytes(show), before);
}

TEST_F(Document, AFileThatCantBeReadIsKeptAsideAndNotWrittenOver)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(DocumentPath()).path()));
    QFile file(DocumentPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("half a show");
    file.close();
    person.WillPress(QStringLiteral("OK"));
    Start();
    const QString kept = DocumentPath() + QStringLiteral(".unreadable");
    EXPECT_EQ(Bytes(kept), QByteArray("half a show"));
    EXPECT_EQ(Title(), Saved);
    ASSERT_TRUE(QTest::qWaitFor([&] { return person.IsDone(); }));
    EXPECT_EQ(person.seen[0].title, QStringLiteral("Mapping Not Read"));
    EXPECT_TRUE(person.seen[0].text.contains(kept));
}

TEST_F(Document, ASaveThatFailsIsSaidAndTheWorkStaysUnsaved)
{
    Start();
    Edit();
    ASSERT_TRUE(QFile::remove(DocumentPath()));
    ASSERT_TRUE(QDir().mkdir(DocumentPath()));
    person.WillPress(QStringLiteral("OK"));
    Trigger("actionSave_File");
    EXPECT_EQ(person.seen.back().title, QStringLiteral("Mapping Not Saved"));
    EXPECT_EQ(Title(), Unsaved);
    EXPECT_TRUE(SaveIsPossible());
}

TEST_F(Document, QuitAsksForUnsavedWorkWithAndWithoutAnEvent)
{
    Start();
    Edit();
    for (const char* no : {"Cancel", "Escape"}) {
        person.seen.clear();
        person.WillPress(QLatin1String(no));
        Trigger("actionExit");
        ASSERT_EQ(person.seen.size(), 1U);
        ExpectQuestion(person.seen[0], "Unsaved Mapping",
                       "The current mapping has changes that you have not saved yet.\n\nAre you "
                       "sure you want to exit the Zentri PixelWeft?");
        person.WillPress(QLatin1String(no));
        EXPECT_FALSE(window->close());
        EXPECT_TRUE(window->isVisible());
    }
    person.WillPress(QStringLiteral("Yes"));
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Document, UnsavedWorkOutlivesACrash)
{
    Start();
    const QByteArray file = DocumentBytes();
    const QString kept = UnsavedWork::FileFor(DocumentPath());
    person.Will([](QDialog& dialog) {
        dialog.findChild<QSpinBox*>(QStringLiteral("spinBoxWidth"))->setValue(222);
        dialog.accept();
    });
    Trigger("actionCanvas_Size");
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return QFile::exists(kept); }, 5 * UnsavedWork::WriteMilliseconds));
    EXPECT_EQ(DocumentBytes(), file);

    Crash();
    person.seen.clear();
    person.WillPress(QStringLiteral("Restore"));
    Start();
    ASSERT_EQ(person.seen.size(), 1U);
    EXPECT_EQ(person.seen[0].title, QStringLiteral("Unsaved Work Found"));
    EXPECT_EQ(person.seen[0].byDefault, QStringLiteral("Restore"));
    EXPECT_EQ(Title(), Unsaved);
    EXPECT_EQ(CanvasWidth(), 222);
    EXPECT_EQ(DocumentBytes(), file);

    // Still unsaved when the power goes a second time, and Escape keeps it.
    Crash();
    person.WillPress(QStringLiteral("Escape"));
    Start();
    EXPECT_EQ(CanvasWidth(), 222);
    Trigger("actionSave_File");
    EXPECT_FALSE(QFile::exists(kept));
    Start();
    EXPECT_EQ(CanvasWidth(), 222);
    EXPECT_EQ(Title(), Bare);
}

TEST_F(Document, WorkThatTheOperatorGaveUpIsNotOffered)
{
    Start();
    const QString kept = UnsavedWork::FileFor(DocumentPath());
    QFile::copy(WriteDocument(Path(QStringLiteral("o.wfm")), 50, 50), kept);
    person.WillPress(QStringLiteral("Discard"));
    Start();
    EXPECT_FALSE(QFile::exists(kept));
    EXPECT_EQ(CanvasWidth(), 100);

    Edit();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return QFile::exists(kept); }, 5 * UnsavedWork::WriteMilliseconds));
    person.WillPress(QStringLiteral("Yes"));
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(QFile::exists(kept));

    // A copy that says what the document says is no work to go on with.
    QFile::copy(DocumentPath(), kept);
    person.seen.clear();
    Start();
    EXPECT_TRUE(person.seen.empty());
}

TEST_F(Document, UnsavedWorkThatCantBeReadGivesTheDocumentBack)
{
    WriteDocument(DocumentPath(), 640, 360, QString());
    QFile kept(UnsavedWork::FileFor(DocumentPath()));
    ASSERT_TRUE(kept.open(QIODevice::WriteOnly));
    kept.write("half a fi");
    kept.close();
    person.WillPress(QStringLiteral("Restore"));
    Start();
    EXPECT_EQ(CanvasWidth(), 640);
    EXPECT_GT(PlacedFixtures(), 10);
    EXPECT_FALSE(kept.exists());
    EXPECT_EQ(Bytes(kept.fileName() + QStringLiteral(".unreadable")), QByteArray("half a fi"));
}

TEST_F(Document, AnEndThatTheOperatorDidNotWishKeepsTheLastChange)
{
    Start();
    const QString kept = UnsavedWork::FileFor(DocumentPath());
    Edit();
    EXPECT_FALSE(QFile::exists(kept));
    window.reset(); // a log-out does this, within the seconds that a change waits
    const QByteArray work = Bytes(kept);
    EXPECT_FALSE(work.isEmpty());

    // And one that ends the program under the offer leaves it for the next start.
    QFile document(DocumentPath());
    ASSERT_TRUE(document.open(QIODevice::Append));
    document.write("\n\0", 2);
    document.close();
    person.Will([](QDialog& dialog) { dialog.done(QDialog::Rejected); });
    Start();
    EXPECT_EQ(Bytes(kept), work);
}
