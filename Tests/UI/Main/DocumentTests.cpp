// SPDX-License-Identifier: MIT

#include "UI/Main/Desk.h"
#include "UI/Main/UnsavedWork.h"

namespace {

const QString Bare;
const QString Saved = "saved"_q;
const QString Unsaved = "unsaved"_q;

class Document : public Desk
{
protected:
    [[nodiscard]] QString OtherDocument() const
    {
        return WriteDocument(Path("other.wfm"_q), 320, 200);
    }
    /// Whether the copy of the unsaved work comes within the seconds that a change waits.
    [[nodiscard]] static bool Comes(const QString& file)
    {
        return QTest::qWaitFor([&] { return QFile::exists(file); },
                               5 * UnsavedWork::WriteMilliseconds);
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
    Start();
    Import(WriteDocument(Path("show.wfm"_q), 100, 100), {"OK"});
    ASSERT_EQ(person.seen.size(), 2U);
    EXPECT_TRUE(person.seen[1].text.endsWith("from 2.0.0.1 to the mapping file IP 2.X.X.X"_q));
    EXPECT_FALSE(person.seen[1].hasParent);
    EXPECT_EQ(Find<QComboBox>("networkCombo")->currentText(), "2.X.X.X"_q);
}

TEST_F(Document, UnsavedWorkIsNotLostWithoutAQuestion)
{
    Start();
    const QByteArray before = DocumentBytes();
    Import(OtherDocument(), {"OK"});
    EXPECT_EQ(State(), Unsaved);
    EXPECT_EQ(CanvasWidth(), 320);
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_EQ(DocumentBytes(), before) << "only a save writes it";
    SetCanvasWidth(77);
    struct Case
    {
        const char* title;
        QString question;
        std::function<void(const char*)> attempt;
        int width; ///< of the canvas after Yes
    };
    const QString unsaved =
        "Your current mapping has unsaved changes.\n\nAre you sure you want to %1 and lose your "
        "changes?"_q;
    const std::vector<Case> cases = {
        {"Unsaved Mapping", unsaved.arg("import the mapping"_q),
         [this](const char* answer) { Import(OtherDocument(), {answer}); }, 320},
        {"New Mapping", unsaved.arg("start a new mapping"_q),
         [this](const char* answer) {
             person.WillPress(QLatin1String(answer));
             Trigger("actionNew");
         },
         100},
        {"Unsaved Mapping",
         "The current mapping has changes that you have not saved yet.\n\nAre you sure you want to "
         "exit the Zentri PixelWeft?"_q,
         [this](const char* answer) {
             person.WillPress(QLatin1String(answer));
             answer == std::string("Escape") ? Trigger("actionExit")
                                             : static_cast<void>(window->close());
         },
         77}};
    for (const auto& [title, question, attempt, width] : cases) {
        SetCanvasWidth(77);
        for (const char* no : {"Cancel", "Escape"}) {
            attempt(no);
            const SeenBox& box = person.seen.back();
            EXPECT_EQ(box.title, QLatin1String(title));
            EXPECT_EQ(box.text, question);
            EXPECT_EQ(box.buttons, QStringList({"Cancel"_q, "Yes"_q}));
            EXPECT_EQ(box.byDefault, "Cancel"_q);
            EXPECT_TRUE(box.hasParent);
            EXPECT_TRUE(window->isVisible());
            EXPECT_EQ(CanvasWidth(), 77) << no;
        }
        attempt("Yes");
        EXPECT_EQ(State(), Unsaved);
        EXPECT_EQ(window->isVisible(), width != 77);
        if (window->isVisible()) {
            EXPECT_EQ(CanvasWidth(), width);
        }
    }
    // Without unsaved work nothing asks.
    Start();
    Trigger("actionNew");
    EXPECT_EQ(State(), Unsaved);
}

TEST_F(Document, NodesOfADocumentGoWithIt)
{
    const QString manual =
        "<ManualNetworkNodes><ManualNode Name=\"Far\" IP=\"9.0.0.9\" /></ManualNetworkNodes>\n"_q;
    const QString element = Element({0.5, 0.5}, {0.1, 0.1}, 0, 0, 1, "2.0.0.77"_q);
    const QString show = WriteDocument(Path("show.wfm"_q), 200, 100, "2.X.X.X"_q, element, manual);
    const QString broken = WriteBytes(Path("broken.wfm"_q), "no document");
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
    EXPECT_EQ(PlacedFixtures(), 0);
    EXPECT_EQ(CanvasWidth(), 100);
    EXPECT_EQ(State(), Saved) << "the state it had";
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
    EXPECT_EQ(Kept("lastFile"), Path("LOUD.WFM"_q));
    EXPECT_EQ(Kept("lastDirectory"), QString::fromStdString(home.Path().string()));
    Trigger("actionSave_File");
    EXPECT_EQ(Bytes(Path("copy.wfm"_q)), DocumentBytes());

    // Under a bare name it asks for the file that is there.
    WriteBytes(Path("show.wfm"_q), "mine");
    person.WillChoose(Path("show"_q));
    person.WillPress("No"_q);
    person.WillPress("Escape"_q); // the file dialog
    Trigger("actionExport");
    EXPECT_EQ(Bytes(Path("show.wfm"_q)), "mine");
}

TEST_F(Document, ExportToTheWorkingFileIsForbidden)
{
    Start();
    const QByteArray before = DocumentBytes();
    Edit();
    const QString folder = QFileInfo(DocumentPath()).path();
    ASSERT_TRUE(QFile::link(DocumentPath(), Path("link.wfm"_q)));
    for (const QString& name : {folder + "/mapping"_q, folder + "/../PixelWeft/mapping.wfm"_q,
                                folder + "/mapping.WFM"_q, Path("link"_q)})
    {
        person.WillChoose(name);
        if (!name.endsWith("WFM"_q))
            person.WillPress("Yes"_q); // the file dialog's own question
        person.WillPress("OK"_q);
        Trigger("actionExport");
        EXPECT_EQ(person.seen.back().title, "Export Mapping Forbidden"_q);
    }
    EXPECT_EQ(DocumentBytes(), before);
    EXPECT_FALSE(QFile::exists(folder + "/mapping.WFM"_q));
}

TEST_F(Document, AFileThatCantBeReadIsKeptAsideAndNotWrittenOver)
{
    WriteBytes(DocumentPath(), "half a show");
    person.WillPress("OK"_q);
    Start();
    const QString kept = DocumentPath() + ".unreadable"_q;
    EXPECT_EQ(Bytes(kept), QByteArray("half a show"));
    EXPECT_EQ(State(), Saved);
    EXPECT_EQ(person.seen.at(0).title, "Mapping Not Read"_q);
    EXPECT_TRUE(person.seen[0].text.contains(kept));
}

TEST_F(Document, ASaveThatFailsIsReportedAndTheWorkStaysUnsaved)
{
    Start();
    Edit();
    ASSERT_TRUE(QFile::remove(DocumentPath()));
    ASSERT_TRUE(QDir().mkdir(DocumentPath()));
    person.WillPress("OK"_q);
    Trigger("actionSave_File");
    EXPECT_EQ(person.seen.back().title, "Mapping Not Saved"_q);
    EXPECT_EQ(State(), Unsaved);
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
        EXPECT_EQ(person.seen.back().title, "Unsaved Work Found"_q);
        EXPECT_EQ(person.seen.back().byDefault, "Restore"_q);
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
    person.WillPress("Discard"_q);
    Start();
    EXPECT_FALSE(QFile::exists(kept));
    EXPECT_EQ(CanvasWidth(), 100);

    Edit();
    ASSERT_TRUE(Comes(kept));
    person.WillPress("Yes"_q);
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
    person.WillPress("Restore"_q);
    Start();
    EXPECT_EQ(CanvasWidth(), 640);
    EXPECT_FALSE(QFile::exists(kept));
    EXPECT_EQ(Bytes(kept + ".unreadable"_q), QByteArray("half a fi"));
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
