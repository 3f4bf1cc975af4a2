// SPDX-License-Identifier: MIT

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <tuple>

#include <sys/mount.h>

#include "Model/UnsavedWork.h"
#include "UI/Main/Desk.h"

namespace {

using Support::SeenBox;

const QString Saved = "saved"_q;
const QString Unsaved = "unsaved"_q;

/// A small disk that is mounted over a folder, on this stage alone.
class FullDisk
{
public:
    explicit FullDisk(const QString& folder)
        : folder_(folder.toStdString())
    {
        EXPECT_EQ(mount("none", folder_.c_str(), "tmpfs", 0, "size=8m"), 0);
    }
    ~FullDisk() { umount2(folder_.c_str(), MNT_DETACH); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

    void Fill() const
    {
        std::ofstream filler(folder_ + "/filler", std::ios::binary);
        const std::string page(4096, 'x');
        while (filler << page << std::flush) {
        }
    }
    void Free() const { std::filesystem::remove(folder_ + "/filler"); }

private:
    std::string folder_;
};

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
        int width; ///< of the canvas afterwards, 0 for what it was
    };
    const std::vector<Case> cases = {
        {"import the mapping and lose your changes?",
         [&](const char* answer) { Import(OtherDocument(), {answer}); }, 320},
        {"start a new mapping and lose your changes?",
         [&](const char* answer) { press(answer, "actionNew"); }, 100},
        {"exit the Zentri PixelWeft?", [&](const char* answer) { press(answer, "actionExit"); },
         0}};
    int edited = 70;
    for (const auto& [question, attempt, width] : cases) {
        const bool ends = question[0] == 'e';
        for (const std::string answer : {"Save", "Discard"}) {
            SCOPED_TRACE(question + answer);
            SetCanvasWidth(++edited);
            for (const char* no : {"Cancel", "Escape"}) {
                attempt(no);
                const SeenBox& box = person.seen.back();
                EXPECT_TRUE(
                    box.text.contains("\n\nAre you sure you want to "_q + QLatin1String(question)));
                EXPECT_EQ(box.byDefault, "Cancel"_q);
                EXPECT_TRUE(box.hasParent);
                EXPECT_EQ(CanvasWidth(), edited) << no;
            }
            const std::string file = DocumentBytes();
            attempt(answer.c_str());
            EXPECT_EQ(CanvasWidth(), width > 0 ? width : edited);
            EXPECT_EQ(DocumentBytes() == file, answer == "Discard");
            EXPECT_EQ(State(), ends && answer == "Save" ? Saved : Unsaved);
            if (ends)
                Start();
        }
    }
    // Without unsaved work nothing asks.
    Start();
    Trigger("actionNew");
    EXPECT_EQ(State(), Unsaved);
}

TEST_F(Document, UndoBackToWhatIsInTheFileSaysSaved)
{
    Start();
    int width = 100;
    const auto edit = [&] {
        SetCanvasWidth(++width);
    };
    const auto synchronise = [this] { // no step takes it back
        person.Will([](QDialog& dialog) {
            In<QCheckBox>(dialog, "artNetSync")->toggle();
            dialog.accept();
        });
        Trigger("actionPreferences");
    };
    const auto trigger = [this](const char* action) {
        return [this, action] {
            Trigger(action);
        };
    };
    const auto undo = trigger("actionUndo");
    const auto redo = trigger("actionRedo");
    const auto save = trigger("actionSave_File");
    const std::vector<std::pair<std::function<void()>, QString>> steps = {
        {edit, Unsaved}, {undo, Saved},   {redo, Unsaved}, {save, Saved},          {undo, Unsaved},
        {redo, Saved},   {edit, Unsaved}, {undo, Saved},   {undo, Unsaved},        {edit, Unsaved},
        {undo, Unsaved}, {save, Saved},   {edit, Unsaved}, {synchronise, Unsaved}, {undo, Unsaved},
        {save, Saved},   {redo, Unsaved}, {undo, Saved}};
    for (std::size_t i = 0; i < steps.size(); ++i) {
        steps[i].first();
        EXPECT_EQ(State(), steps[i].second) << i;
    }
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
    Import(Path("broken.wfm"_q), {"OK"});
    EXPECT_TRUE(shows(2));
    EXPECT_EQ(State(), Saved) << "the state it had";
}

TEST_F(Document, AFileThatCantBeReadChangesNothing)
{
    StartWithTwo();
    const QPointF place = Item(0).pos();
    Type(&View(), Qt::Key_A, Qt::ControlModifier);
    Drag({20, 20}, {30, 30});
    const std::string before = DocumentBytes();
    const std::string good = Bytes(OtherDocument());
    const std::vector<std::tuple<const char*, std::string, const char*>> cases = {
        {"cut.wfm", good.substr(0, good.size() / 2), "The file is cut off or damaged."},
        {"garbage.wfm", "half a fi", "It is no file of PixelWeft."},
        {"empty.wfm", "", "The file is empty."},
        {"huge.wfm", Bytes(WriteDocument("w.wfm"_q, {.width = 2'000'000'000})),
         "pixels is impossible: a canvas has 1 to 100,000 pixels on each side."}};
    for (const auto& [name, bytes, reason] : cases) {
        home.Write(name, bytes);
        // No question comes about the unsaved work, which is not in danger.
        Import(Path(QLatin1String(name)), {"OK"});
        const SeenBox& box = person.seen.back();
        EXPECT_EQ(box.title, "Mapping Not Imported"_q);
        EXPECT_TRUE(box.text.contains(QLatin1String(name)) &&
                    box.text.contains(QLatin1String(reason)))
            << box.text.toStdString();
        EXPECT_EQ(PlacedFixtures(), 2);
        EXPECT_EQ(State(), Unsaved);
        EXPECT_TRUE(Action("actionUndo")->isEnabled());
    }
    Trigger("actionUndo");
    EXPECT_LT((Item(0).pos() - place).manhattanLength(), 1e-3);
    EXPECT_EQ(DocumentBytes(), before);
}

TEST_F(Document, TheOldOneIsThereUntilTheLastQuestionAboutTheNewOneIsAnswered)
{
    StartWithTwo();
    std::string other = Bytes(OtherDocument());
    const std::string library = "<LEDFixtureLibrary>\n";
    other.insert(other.find(library) + library.size(),
                 "<LEDFixture manufacturer=\"Chauvet\" product=\"" + Bar.toStdString() +
                     "\"><PixelMapping width=\"1\" height=\"1\" type=\"RGB\">1"
                     "</PixelMapping></LEDFixture>\n");
    home.Write("other.wfm", other);
    person.WillChoose(Path("other.wfm"_q));
    person.Will([this](QDialog& box) {
        EXPECT_EQ(box.windowTitle(), "Fixture conflict"_q);
        EXPECT_EQ(PlacedFixtures(), 2);
        Support::Press(box, "No, use the original fixture from the library"_q);
    });
    Trigger("actionImport");
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_EQ(CanvasWidth(), 320);

    // At the start nobody is asked, and the output is as the document has it.
    window.reset();
    QFile::remove(Copy());
    QFile::remove(DocumentPath());
    ASSERT_TRUE(QFile::copy(Path("other.wfm"_q), DocumentPath()));
    const std::size_t seen = person.seen.size();
    Start();
    EXPECT_EQ(person.seen.size(), seen);
    EXPECT_EQ(PlacedFixtures(), 1);
    Edit();
    Trigger("actionSave_File");
    std::string saved = DocumentBytes(); // two bytes for each character
    std::erase(saved, '\0');
    EXPECT_NE(saved.find("width=\"1\" height=\"1\""), std::string::npos);
}

TEST_F(Document, WhatCanBeReadOnlyInPartIsTakenIfTheOperatorWantsIt)
{
    const QString lamp = Element({0.5, 0.5}, {0.1, 0.1}).replace(Bar, "Lost lamp"_q);
    const Show show = {.width = 320,
                       .network = QString(),
                       .elements = lamp + Element({0.2, 0.2}, {0.1, 0.1}) + lamp};
    const QString told =
        "2 of its 3 elements can't be read:\n\nBar: its fixture \"Lost lamp\" is unknown\nBar"_q;
    const QString file = WriteDocument("part.wfm"_q, show);
    Start();
    for (const char* answer : {"Escape", "Cancel", "Import the rest"}) {
        EXPECT_EQ(PlacedFixtures(), 0);
        EXPECT_EQ(State(), Saved);
        if (answer[0] == 'I')
            Import(file, {answer, "OK"});
        else
            Import(file, {answer});
        EXPECT_EQ(person.seen[1].title, "Mapping Read in Part"_q);
        EXPECT_TRUE(person.seen[1].text.contains(told)) << person.seen[1].text.toStdString();
        EXPECT_EQ(person.seen[1].byDefault, "Cancel"_q);
    }
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_EQ(State(), Unsaved);

    // Work that is restored is asked about too, and what can't come is kept.
    for (const char* answer : {"Cancel", "Import the rest"}) {
        Trigger("actionSave_File");
        WriteDocument(Copy(), show);
        const std::string work = Bytes(Copy());
        person.seen.clear();
        person.WillPress("Restore"_q);
        person.WillPress(QLatin1String(answer));
        if (answer[0] == 'C')
            person.WillPress("OK"_q);
        Start();
        EXPECT_EQ(person.seen[1].title, "Mapping Read in Part"_q);
        const QString aside = answer[0] == 'C' ? ".unreadable"_q : ".replaced"_q;
        EXPECT_EQ(Bytes(Copy() + aside), work);
        EXPECT_EQ(State(), answer[0] == 'C' ? QString() : Unsaved);
    }

    // At the start nothing waits for an answer, and the file keeps what did not come.
    Trigger("actionSave_File");
    const std::string whole = Bytes(WriteDocument(DocumentPath(), show));
    StartAndPress("OK");
    EXPECT_EQ(person.seen.back().title, "Mapping Read in Part"_q);
    EXPECT_TRUE(person.seen.back().text.contains(told));
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_EQ(State(), Unsaved);
    EXPECT_EQ(DocumentBytes(), whole);
    Trigger("actionSave_File");
    EXPECT_NE(DocumentBytes(), whole);
    EXPECT_EQ(Bytes(DocumentPath() + ".replaced"_q), whole);
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
}

// ---- A disk that takes nothing -----------------------------------------------------------------

TEST_F(Document, ASaveThatFailsSaysWhyOffersAnotherPlaceAndAsksAgain)
{
    Start();
    const auto* line = Find<QLabel>("saveTroubleLabel");
    const QString full = "There is no space left on the disk."_q;
    const std::string before = DocumentBytes();
    const FullDisk disk(QFileInfo(DocumentPath()).path());
    home.Write(DocumentPath().toStdString(), before);
    disk.Fill();
    SetCanvasWidth(102);
    EXPECT_FALSE(line->isVisible());
    // The copy of unsaved work comes first to the wall. One copy elsewhere is offered.
    person.WillPress("OK"_q);
    EXPECT_TRUE(QTest::qWaitFor([&] { return person.IsDone() && line->isVisible(); },
                                5 * UnsavedWork::WriteMilliseconds));
    EXPECT_EQ(line->text(), "Unsaved changes not kept: "_q + full);
    EXPECT_EQ(person.seen.back().title, "Unsaved Changes Not Kept"_q);
    EXPECT_TRUE(person.seen.back().text.contains(full));
    person.WillPress("Export..."_q);
    person.WillChoose(Path("safe.wfm"_q));
    Trigger("actionSave_File");
    const SeenBox& box = person.seen[person.seen.size() - 2];
    EXPECT_EQ(box.title, "Mapping Not Saved"_q);
    EXPECT_TRUE(box.text.contains(full));
    EXPECT_EQ(line->text(), "Mapping not saved: "_q + full);
    EXPECT_TRUE(QFile::exists(Path("safe.wfm"_q)));
    EXPECT_EQ(DocumentBytes(), before);
    // A save that fails in the question leaves the question.
    for (const char* answer : {"Save", "OK", "Cancel"})
        person.WillPress(QLatin1String(answer));
    EXPECT_FALSE(window->close());
    EXPECT_EQ(person.seen.back().title, "Unsaved Mapping"_q);
    EXPECT_EQ(State(), Unsaved);
    disk.Free();
    Trigger("actionSave_File");
    EXPECT_EQ(State(), Saved);
    EXPECT_FALSE(line->isVisible());
    EXPECT_EQ(Bytes(Path("safe.wfm"_q)), DocumentBytes());
}

TEST_F(Document, AFirstStartOnAFullDiskHasTheFixturesOfTheProgram)
{
    ASSERT_TRUE(QDir().mkpath(Path("data"_q)));
    const FullDisk disk(Path("data"_q));
    disk.Fill();
    person.WillPress("OK"_q);
    person.WillPress("OK"_q);
    Start();
    QCoreApplication::processEvents();
    std::vector<QString> titles;
    for (const SeenBox& box : person.seen) {
        titles.push_back(box.title);
        EXPECT_TRUE(box.text.contains("There is no space left on the disk."_q));
    }
    std::ranges::sort(titles);
    EXPECT_EQ(titles, (std::vector{"Fixture Library Not Saved"_q, "Mapping Not Saved"_q}));
    DragFromLibrary({50, 50});
    EXPECT_EQ(PlacedFixtures(), 1);
    EXPECT_TRUE(Find<QLabel>("saveTroubleLabel")->isVisible());
    disk.Free();
    Trigger("actionSave_File");
    EXPECT_EQ(State(), Saved);
    EXPECT_FALSE(Find<QLabel>("saveTroubleLabel")->isVisible()) << "the library is saved, too";
}

// ---- Saved versions ----------------------------------------------------------------------------

TEST_F(Document, WhatASaveReplacedCanBeTakenBack)
{
    const QString history = QFileInfo(DocumentPath()).path() + "/history"_q;
    // Never saved by this program, and then overwritten by another one.
    WriteDocument(DocumentPath(), {.width = 640, .height = 200});
    StartAndPress("OK");
    WriteDocument(DocumentPath(), {.width = 320, .elements = QString()});
    Trigger("actionNew");
    Trigger("actionSave_File");
    for (const char* answer : {"Cancel", "Discard"}) { // to the question about what is not saved
        Edit();
        person.Will([&](QDialog& dialog) {
            auto& list = *In<QTreeWidget>(dialog, "versionList");
            ASSERT_EQ(list.topLevelItemCount(), 3);
            QTest::keyClick(&list, Qt::Key_End);
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

    // A folder that takes no version stops no save. What another show replaces is kept beside it.
    const std::string replaced = DocumentBytes();
    ASSERT_TRUE(QDir(history).removeRecursively());
    home.Write(history.toStdString(), "a file");
    Trigger("actionSave_File");
    EXPECT_EQ(State(), Saved);
    EXPECT_EQ(Bytes(DocumentPath() + ".replaced"_q), replaced);
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
    person.WillPress("Discard"_q);
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
    person.WillPress("Restore"_q);
    StartAndPress("OK");
    EXPECT_EQ(person.seen.back().title, "Unsaved Work Not Restored"_q);
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
