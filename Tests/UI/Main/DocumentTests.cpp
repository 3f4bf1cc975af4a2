// SPDX-License-Identifier: MIT

#include <algorithm>

#include "Model/UnsavedWork.h"
#include "UI/Main/Desk.h"

namespace {

using Support::SeenBox;

const QString Saved = "saved"_q;
const QString Unsaved = "unsaved"_q;

class Document : public Desk
{
protected:
    [[nodiscard]] QString OtherDocument() const
    {
        return WriteDocument("other.wfm"_q, {.width = 320, .height = 200});
    }
    /// Where the unsaved work is kept.
    [[nodiscard]] QString Copy() const { return UnsavedWork::FileFor(DocumentPath()); }
    /// Whether the copy comes within the seconds that a change waits.
    [[nodiscard]] bool CopyComes() const
    {
        return QTest::qWaitFor([this] { return QFile::exists(Copy()); },
                               5 * UnsavedWork::WriteMilliseconds);
    }
    void StartAndPress(const char* answer)
    {
        person.WillPress(QLatin1String(answer));
        Start();
    }
};

} // namespace

TEST_F(Document, UnsavedWorkIsNotLostWithoutAQuestion)
{
    Start();
    EXPECT_EQ(State(), Saved) << "a first start saves what it begins";
    const std::string before = DocumentBytes();
    Import(OtherDocument(), {"OK"});
    EXPECT_EQ(State(), Unsaved);
    EXPECT_EQ(CanvasWidth(), 320);
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_EQ(DocumentBytes(), before) << "only a save writes it";
    person.WillPress("Cancel"_q);
    EXPECT_FALSE(window->close());
    const auto press = [this](const char* answer, const char* action) {
        person.WillPress(QLatin1String(answer));
        Trigger(action);
    };
    struct Case
    {
        const char* question;
        std::function<void(const char*)> attempt;
        int width; ///< of the canvas after Yes
    };
    const std::vector<Case> cases = {
        {"import the mapping and lose your changes?",
         [&](const char* answer) { Import(OtherDocument(), {answer}); }, 320},
        {"start a new mapping and lose your changes?",
         [&](const char* answer) { press(answer, "actionNew"); }, 100},
        {"exit the Zentri PixelWeft?", [&](const char* answer) { press(answer, "actionExit"); },
         77}};
    for (const auto& [question, attempt, width] : cases) {
        SetCanvasWidth(77);
        for (const char* no : {"Cancel", "Escape"}) {
            attempt(no);
            const SeenBox& box = person.seen.back();
            EXPECT_TRUE(
                box.text.contains("\n\nAre you sure you want to "_q + QLatin1String(question)));
            EXPECT_EQ(box.byDefault, "Cancel"_q);
            EXPECT_TRUE(box.hasParent);
            EXPECT_EQ(CanvasWidth(), 77) << no;
        }
        attempt("Yes");
        EXPECT_EQ(State(), Unsaved);
        EXPECT_EQ(CanvasWidth(), width);
    }
    // Without unsaved work nothing asks.
    Start();
    Trigger("actionNew");
    EXPECT_EQ(State(), Unsaved);
}

TEST_F(Document, NodesAndNetworkOfADocumentComeAndGoWithIt)
{
    const QString show = WriteDocument(
        "show.wfm"_q,
        {.elements = Element({0.5, 0.5}, {0.1, 0.1}, 0, 1, "2.0.0.77"_q),
         .before =
             "<ManualNetworkNodes><ManualNode Name=\"Far\" IP=\"9.0.0.9\" /></ManualNetworkNodes>\n"_q});
    home.Write("broken.wfm", "no document");
    Start();
    window->StartTimers();
    const auto* nodes = Find<QTreeView>("artNetNodes")->model();
    const auto shows = [&](int rows) {
        return QTest::qWaitFor([&] { return nodes->rowCount() == rows; });
    };
    Import(show, {"OK"});
    EXPECT_EQ(person.seen.back().text, "This document sends on 2.X.X.X (art0, 2.0.0.1)"_q);
    EXPECT_FALSE(person.seen.back().hasParent);
    EXPECT_EQ(Find<QComboBox>("networkCombo")->currentText(), "2.X.X.X"_q);
    EXPECT_TRUE(shows(2));
    Trigger("actionSave_File");
    Trigger("actionNew");
    EXPECT_TRUE(shows(0));
    Trigger("actionSave_File");
    Import(show);
    EXPECT_TRUE(shows(2));
    Trigger("actionSave_File");
    Import(Path("broken.wfm"_q));
    EXPECT_TRUE(shows(0));
    EXPECT_EQ(PlacedFixtures(), 0);
    EXPECT_EQ(State(), Saved) << "the state it had";
}

TEST_F(Document, ExportWritesACopyAndOnlyASaveTheWorkingFile)
{
    Start();
    const std::string before = DocumentBytes();
    Edit();
    const auto exportTo = [this](const QString& file, std::initializer_list<const char*> answers) {
        person.WillChoose(file);
        for (const char* answer : answers)
            person.WillPress(QLatin1String(answer));
        Trigger("actionExport");
    };
    exportTo(Path("copy"_q), {});
    exportTo(Path("LOUD.WFM"_q), {});
    EXPECT_EQ(State(), Unsaved);
    EXPECT_EQ(Kept("lastFile"), Path("LOUD.WFM"_q));
    EXPECT_EQ(Bytes(Path("LOUD.WFM"_q)), Bytes(Path("copy.wfm"_q)));
    EXPECT_EQ(Kept("lastDirectory"), QString::fromStdString(home.Path().string()));

    // Under a bare name it asks for the file that is there.
    home.Write("show.wfm", "mine");
    exportTo(Path("show"_q), {"No", "Escape"}); // the last is the file dialog's
    EXPECT_EQ(Bytes(Path("show.wfm"_q)), "mine");

    const QString folder = QFileInfo(DocumentPath()).path();
    ASSERT_TRUE(QFile::link(DocumentPath(), Path("link.wfm"_q)));
    person.seen.clear();
    exportTo(folder + "/mapping.WFM"_q, {"OK"});
    exportTo(folder + "/../PixelWeft/mapping.wfm"_q, {"Yes", "OK"});
    exportTo(Path("link"_q), {"Yes", "OK"});
    EXPECT_EQ(std::ranges::count(person.seen, "Export Mapping Forbidden"_q, &SeenBox::title), 3);
    EXPECT_EQ(DocumentBytes(), before);
    EXPECT_FALSE(QFile::exists(folder + "/mapping.WFM"_q));
    Trigger("actionSave_File");
    EXPECT_EQ(Bytes(Path("copy.wfm"_q)), DocumentBytes());

    // A save that fails is reported, and the work stays unsaved.
    SetCanvasWidth(102);
    ASSERT_TRUE(QFile::remove(DocumentPath()));
    ASSERT_TRUE(QDir().mkdir(DocumentPath()));
    person.WillPress("OK"_q);
    Trigger("actionSave_File");
    EXPECT_EQ(person.seen.back().title, "Mapping Not Saved"_q);
    EXPECT_EQ(State(), Unsaved);
}

// ---- Saved versions ----------------------------------------------------------------------------

TEST_F(Document, WhatASaveReplacedCanBeTakenBack)
{
    const QString history = QFileInfo(DocumentPath()).path() + "/history"_q;
    // From another program, and never saved by this one.
    WriteDocument(DocumentPath(), {.width = 640, .height = 200});
    const std::string show = DocumentBytes();
    StartAndPress("OK");
    Trigger("actionNew");
    Trigger("actionSave_File");
    EXPECT_NE(DocumentBytes(), show);
    for (const char* answer : {"Cancel", "Yes"}) { // to the question about what is not saved
        Edit();
        person.Will([&](QDialog& dialog) {
            auto& list = *In<QTreeWidget>(dialog, "versionList");
            ASSERT_EQ(list.topLevelItemCount(), 2);
            QTest::keyClick(&list, Qt::Key_Down);
            const auto& button = *In<QPushButton>(dialog, "takeBackButton");
            ASSERT_TRUE(QTest::qWaitFor([&] { return button.isEnabled(); }));
            EXPECT_EQ(list.currentItem()->text(1), "1"_q);
            EXPECT_EQ(In<QLabel>(dialog, "canvasLabel")->text(), "640 x 200"_q);
            EXPECT_EQ(In<QLabel>(dialog, "universesLabel")->text(), "1: 0/0"_q);
            EXPECT_EQ(In<QLabel>(dialog, "fixturesLabel")->text(), "1 x "_q + Bar);
            EXPECT_FALSE(button.isDefault()) << "Return must not replace the show";
            Support::Press(dialog, "Take Back"_q);
        });
        person.WillPress(QLatin1String(answer));
        Trigger("actionVersions");
    }
    EXPECT_EQ(CanvasWidth(), 640);
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_EQ(State(), Unsaved);

    // A folder that takes no version stops no save.
    ASSERT_TRUE(QDir(history).removeRecursively());
    home.Write(history.toStdString(), "a file");
    Trigger("actionSave_File");
    EXPECT_EQ(State(), Saved);
    EXPECT_TRUE(Find<QStatusBar>("statusbar")->currentMessage().contains(history));
    person.Will([&](QDialog& dialog) {
        EXPECT_EQ(In<QLabel>(dialog, "hintLabel")->text(),
                  "No version is kept yet. Each save keeps one, the last 20 of them, in %1."_q.arg(
                      history));
        Support::Press(dialog, "Close"_q);
    });
    Trigger("actionVersions");
}

// ---- Unsaved work ------------------------------------------------------------------------------

TEST_F(Document, UnsavedWorkOutlivesAnEndThatTheOperatorDidNotWish)
{
    Start();
    const std::string file = DocumentBytes();
    SetCanvasWidth(222);
    EXPECT_FALSE(QFile::exists(Copy()));
    window.reset(); // A log-out does this, within the seconds that a change waits.
    const std::string work = Bytes(Copy());
    EXPECT_FALSE(work.empty());
    // An end of the program under the offer leaves it for the next start.
    person.Will([](QDialog& dialog) { dialog.done(QDialog::Rejected); });
    Start();
    EXPECT_EQ(Bytes(Copy()), work);
    // Still unsaved when the power goes a second time, and Escape keeps it.
    for (const char* answer : {"Restore", "Escape"}) {
        window.reset();
        StartAndPress(answer);
        EXPECT_EQ(person.seen.back().title, "Unsaved Work Found"_q);
        EXPECT_EQ(person.seen.back().byDefault, "Restore"_q);
        EXPECT_EQ(State(), Unsaved);
        EXPECT_EQ(CanvasWidth(), 222);
        EXPECT_EQ(DocumentBytes(), file);
    }
    Trigger("actionSave_File");
    EXPECT_FALSE(QFile::exists(Copy()));
    Start();
    EXPECT_EQ(CanvasWidth(), 222);
    EXPECT_EQ(State(), QString());
}

TEST_F(Document, WorkThatTheOperatorGaveUpIsNotOffered)
{
    Start();
    WriteDocument(Copy(), {.width = 50});
    StartAndPress("Discard");
    EXPECT_FALSE(QFile::exists(Copy()));
    EXPECT_EQ(CanvasWidth(), 100);

    Edit();
    ASSERT_TRUE(CopyComes());
    person.WillPress("Yes"_q);
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(QFile::exists(Copy()));

    // A copy that says what the document says is no work to go on with.
    QFile::copy(DocumentPath(), Copy());
    Start();
    EXPECT_FALSE(QFile::exists(Copy()));
}

TEST_F(Document, WhatCantBeReadIsKeptAsideAndNotWrittenOver)
{
    WriteDocument(DocumentPath(), {.width = 640, .network = QString()});
    home.Write(Copy().toStdString(), "half a fi");
    StartAndPress("Restore");
    EXPECT_EQ(CanvasWidth(), 640);
    EXPECT_FALSE(QFile::exists(Copy()));
    EXPECT_EQ(Bytes(Copy() + ".unreadable"_q), "half a fi");

    home.Write(DocumentPath().toStdString(), "half a show");
    StartAndPress("OK");
    const QString kept = DocumentPath() + ".unreadable"_q;
    EXPECT_EQ(Bytes(kept), "half a show");
    EXPECT_EQ(State(), Saved);
    EXPECT_EQ(person.seen.back().title, "Mapping Not Read"_q);
    EXPECT_TRUE(person.seen.back().text.contains(kept));
}
