// SPDX-License-Identifier: MIT

#include "UI/Main/Desk.h"
#include "UI/Main/UnsavedWork.h"

namespace {

const QString Bare;
const QString Saved = QStringLiteral("saved");
const QString Unsaved = QStringLiteral("unsaved");

class Document : public Desk
{
protected:
    [[nodiscard]] QString OtherDocument() const
    {
        return WriteDocument(Path(QStringLiteral("other.wfm")), 320, 200);
    }
    /// Whether the copy of the unsaved work comes within the seconds that a change waits.
    [[nodiscard]] static bool Comes(const QString& file)
    {
        return QTest::qWaitFor([&] { return QFile::exists(file); },
                               5 * UnsavedWork::WriteMilliseconds);
    }
    static void ExpectQuestion(const SeenBox& box, const char* title, const char* text)
    {
        EXPECT_EQ(box.title, QLatin1String(title));
        EXPECT_EQ(box.text, QLatin1String(text));
        EXPECT_EQ(box.buttons, QStringList({QStringLiteral("Cancel"), QStringLiteral("Yes")}));
        EXPECT_EQ(box.byDefault, QStringLiteral("Cancel"));
        EXPECT_TRUE(box.hasParent);
    }
};

} // namespace

TEST_F(Document, TheTitleSaysWhetherItIsSaved)
{
    Start();
    EXPECT_EQ(State(), Saved) << "a first start saves what it begins";
    EXPECT_TRUE(person.seen.empty());
    StartWith(Element({0.5, 0.5}, {0.1, 0.1}), 640, 360);
    EXPECT_EQ(State(), Bare);
    EXPECT_TRUE(Action("actionSave_File")->isEnabled());
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_EQ(CanvasWidth(), 640);
    Edit();
    EXPECT_EQ(State(), Unsaved);
    Trigger("actionSave_File");
    EXPECT_EQ(State(), Saved);
    Start();
    EXPECT_EQ(CanvasWidth(), 101);
}

TEST_F(Document, TheNetworkOfADocumentIsTakenWithItsNotice)
{
    WriteDocument(DocumentPath(), 100, 100);
    person.WillPress(QStringLiteral("OK"));
    Start();
    ASSERT_EQ(person.seen.size(), 1U);
    EXPECT_EQ(person.seen[0].text, QStringLiteral("The broadcast IP has been changed from 0.0.0.0 "
                                                  "to the mapping file IP 2.X.X.X"));
    EXPECT_FALSE(person.seen[0].hasParent);
    EXPECT_TRUE(Find<QWidget>("networkCombo")->toolTip().contains(QStringLiteral("2.0.0.1")));

    Import(WriteDocument(Path(QStringLiteral("none.wfm")), 100, 100, QString()), {"OK"});
    ASSERT_EQ(person.seen.size(), 2U);
    EXPECT_EQ(person.seen[1].text, QStringLiteral("The broadcast IP has been changed from 2.X.X.X "
                                                  "to the mapping file IP 0.0.0.0"));
}

TEST_F(Document, NewAsksOnlyForUnsavedWorkAndIsUnsavedAtOnce)
{
    Start();
    Trigger("actionNew");
    EXPECT_EQ(State(), Unsaved);
    EXPECT_TRUE(person.seen.empty());
    SetCanvasWidth(77);
    for (const char* no : {"Cancel", "Escape"}) {
        person.WillPress(QLatin1String(no));
        Trigger("actionNew");
        ExpectQuestion(person.seen.back(), "New Mapping",
                       "Your current mapping has unsaved changes.\n\nAre you sure you want to "
                       "start a new mapping and lose your changes?");
        EXPECT_EQ(CanvasWidth(), 77) << no;
    }
    person.WillPress(QStringLiteral("Yes"));
    Trigger("actionNew");
    EXPECT_EQ(CanvasWidth(), 100);
    EXPECT_EQ(State(), Unsaved);
}

TEST_F(Document, ImportReplacesTheDocumentAndLeavesItsFileAlone)
{
    Start();
    const QByteArray before = DocumentBytes();
    Import(OtherDocument(), {"OK"});
    EXPECT_EQ(State(), Unsaved);
    EXPECT_EQ(CanvasWidth(), 320);
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_EQ(DocumentBytes(), before);

    SetCanvasWidth(77);
    for (const char* no : {"Cancel", "Escape"}) {
        Import(OtherDocument(), {no});
        ExpectQuestion(person.seen.back(), "Unsaved Mapping",
                       "Your current mapping has unsaved changes.\n\nAre you sure you want to "
                       "import the mapping and lose your changes?");
        EXPECT_EQ(CanvasWidth(), 77);
    }
    // A cancelled file dialog asks nothing.
    person.WillPress(QStringLiteral("Escape"));
    Trigger("actionImport");
    EXPECT_EQ(CanvasWidth(), 77);
    Import(OtherDocument(), {"Yes"});
    EXPECT_EQ(CanvasWidth(), 320);
}

TEST_F(Document, NodesOfADocumentGoWithIt)
{
    const QString manual = QStringLiteral("<ManualNetworkNodes><ManualNode Name=\"Far\" "
                                          "IP=\"9.0.0.9\" /></ManualNetworkNodes>\n");
    const QString element = Element({0.5, 0.5}, {0.1, 0.1}, 0, 0, 1, QStringLiteral("2.0.0.77"));
    const QString show = WriteDocument(Path(QStringLiteral("show.wfm")), 100, 100,
                                       QStringLiteral("2.X.X.X"), element, manual);
    const QString broken = WriteBytes(Path(QStringLiteral("broken.wfm")), "no document");
    Start();
    window->StartTimers();
    const auto* nodes = Find<QTreeView>("artNetNodes")->model();
    const auto shows = [&](int rows) {
        return QTest::qWaitFor([&] { return nodes->rowCount() == rows; });
    };
    Import(show, {"OK"});
    EXPECT_TRUE(shows(2));
    Trigger("actionSave_File");
    Trigger("actionNew");
    EXPECT_TRUE(shows(0));
    Trigger("actionSave_File");
    Import(show);
    EXPECT_TRUE(shows(2));
    Trigger("actionSave_File");
    Import(broken);
    EXPECT_TRUE(shows(0));
}

TEST_F(Document, AFailedImportLeavesAnEmptyDocumentInTheStateItHad)
{
    StartWith(Element({0.5, 0.5}, {0.1, 0.1}), 640, 360);
    Import(WriteBytes(Path(QStringLiteral("broken.wfm")), "no document"));
    EXPECT_EQ(PlacedFixtures(), 0);
    EXPECT_EQ(CanvasWidth(), 100);
    EXPECT_EQ(State(), Bare);
}

TEST_F(Document, ExportWritesACopyAndChangesNothingElse)
{
    Start();
    const QByteArray before = DocumentBytes();
    Edit();
    for (const auto& [typed, written] :
         {std::pair("copy", "copy.wfm"), std::pair("LOUD.WFM", "LOUD.WFM")})
    {
        person.WillChoose(Path(QLatin1String(typed)));
        Trigger("actionExport");
        EXPECT_FALSE(Bytes(Path(QLatin1String(written))).isEmpty()) << written;
    }
    EXPECT_EQ(State(), Unsaved);
    EXPECT_EQ(DocumentBytes(), before);
    EXPECT_EQ(Kept("lastFile"), Path(QStringLiteral("LOUD.WFM")));
    EXPECT_EQ(Kept("lastDirectory"), QString::fromStdString(home.Path().string()));
    Trigger("actionSave_File");
    EXPECT_EQ(Bytes(Path(QStringLiteral("copy.wfm"))), DocumentBytes());

    // Under a bare name it asks for the file that is there.
    WriteBytes(Path(QStringLiteral("show.wfm")), "mine");
    person.WillChoose(Path(QStringLiteral("show")));
    person.WillPress(QStringLiteral("No"));
    person.WillPress(QStringLiteral("Escape")); // the file dialog
    Trigger("actionExport");
    EXPECT_EQ(Bytes(Path(QStringLiteral("show.wfm"))), "mine");
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
        EXPECT_EQ(person.seen.back().title, QStringLiteral("Export Mapping Forbidden"));
    }
    EXPECT_EQ(DocumentBytes(), before);
    EXPECT_FALSE(QFile::exists(folder + QStringLiteral("/mapping.WFM")));
}

TEST_F(Document, AFileThatCantBeReadIsKeptAsideAndNotWrittenOver)
{
    WriteBytes(DocumentPath(), "half a show");
    person.WillPress(QStringLiteral("OK"));
    Start();
    const QString kept = DocumentPath() + QStringLiteral(".unreadable");
    EXPECT_EQ(Bytes(kept), QByteArray("half a show"));
    EXPECT_EQ(State(), Saved);
    EXPECT_EQ(person.seen.at(0).title, QStringLiteral("Mapping Not Read"));
    EXPECT_TRUE(person.seen[0].text.contains(kept));
}

TEST_F(Document, ASaveThatFailsIsReportedAndTheWorkStaysUnsaved)
{
    Start();
    Edit();
    ASSERT_TRUE(QFile::remove(DocumentPath()));
    ASSERT_TRUE(QDir().mkdir(DocumentPath()));
    person.WillPress(QStringLiteral("OK"));
    Trigger("actionSave_File");
    EXPECT_EQ(person.seen.back().title, QStringLiteral("Mapping Not Saved"));
    EXPECT_EQ(State(), Unsaved);
}

TEST_F(Document, QuitAsksForUnsavedWorkWithAndWithoutAnEvent)
{
    Start();
    Edit();
    for (const char* no : {"Cancel", "Escape"}) {
        person.WillPress(QLatin1String(no));
        Trigger("actionExit");
        ExpectQuestion(person.seen.back(), "Unsaved Mapping",
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

// ---- Unsaved work ------------------------------------------------------------------------------

TEST_F(Document, UnsavedWorkOutlivesACrash)
{
    Start();
    const QByteArray file = DocumentBytes();
    const QString kept = UnsavedWork::FileFor(DocumentPath());
    SetCanvasWidth(222);
    ASSERT_TRUE(Comes(kept));
    // Still unsaved when the power goes a second time, and Escape keeps it.
    for (const char* answer : {"Restore", "Escape"}) {
        window.reset();
        person.WillPress(QLatin1String(answer));
        Start();
        EXPECT_EQ(person.seen.back().title, QStringLiteral("Unsaved Work Found"));
        EXPECT_EQ(person.seen.back().byDefault, QStringLiteral("Restore"));
        EXPECT_EQ(State(), Unsaved);
        EXPECT_EQ(CanvasWidth(), 222);
        EXPECT_EQ(DocumentBytes(), file);
    }
    Trigger("actionSave_File");
    EXPECT_FALSE(QFile::exists(kept));
    Start();
    EXPECT_EQ(CanvasWidth(), 222);
    EXPECT_EQ(State(), Bare);
}

TEST_F(Document, WorkThatTheOperatorGaveUpIsNotOffered)
{
    Start();
    const QString kept = UnsavedWork::FileFor(DocumentPath());
    WriteDocument(kept, 50, 50);
    person.WillPress(QStringLiteral("Discard"));
    Start();
    EXPECT_FALSE(QFile::exists(kept));
    EXPECT_EQ(CanvasWidth(), 100);

    Edit();
    ASSERT_TRUE(Comes(kept));
    person.WillPress(QStringLiteral("Yes"));
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(QFile::exists(kept));

    // A copy that says what the document says is no work to go on with.
    QFile::copy(DocumentPath(), kept);
    Start();
    EXPECT_FALSE(QFile::exists(kept));
}

TEST_F(Document, UnsavedWorkThatCantBeReadGivesTheDocumentBack)
{
    WriteDocument(DocumentPath(), 640, 360, QString());
    const QString kept = WriteBytes(UnsavedWork::FileFor(DocumentPath()), "half a fi");
    person.WillPress(QStringLiteral("Restore"));
    Start();
    EXPECT_EQ(CanvasWidth(), 640);
    EXPECT_FALSE(QFile::exists(kept));
    EXPECT_EQ(Bytes(kept + QStringLiteral(".unreadable")), QByteArray("half a fi"));
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
    person.Will([](QDialog& dialog) { dialog.done(QDialog::Rejected); });
    Start();
    EXPECT_EQ(Bytes(kept), work);
}
