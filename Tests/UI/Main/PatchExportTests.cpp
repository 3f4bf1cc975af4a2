// SPDX-License-Identifier: MIT
// File, Export Patch: what the files hold is judged by the tests of pixelweft-patch.

#include "UI/Main/Desk.h"

namespace {

class PatchExporting : public Desk
{
protected:
    void Export(const char* format, const QString& file,
                std::initializer_list<const char*> answers = {})
    {
        person.Will([format](QDialog& dialog) {
            In<QRadioButton>(dialog, format)->click();
            Support::Press(dialog, "Export..."_q);
        });
        person.WillChoose(file);
        for (const char* answer : answers)
            person.WillPress(QLatin1String(answer));
        Trigger("actionExport_Patch");
    }
    [[nodiscard]] bool Ends() const
    {
        return QTest::qWaitFor([this] { return Action("actionExport_Patch")->isEnabled(); },
                               60'000);
    }
};

} // namespace

TEST_F(PatchExporting, WritesWhatItsNameSaysAndTellsWhere)
{
    StartWithTwo();
    const struct
    {
        const char* format;
        const char* name;
        const char* written;
        const char* begins;
    } cases[] = {
        {"patchCsv", "patch", "patch.csv", "number,description,"},
        {"patchPdf", "patch", "patch.pdf", "%PDF-"},
        {"patchPdf", "show.v2", "show.v2.pdf", "%PDF-"},
        {"patchPdf", "LOUD.CSV", "LOUD.CSV", "number,description,"},
    };
    for (const auto& each : cases) {
        Export(each.format, Path(QLatin1String(each.name)));
        ASSERT_TRUE(Ends()) << each.name;
        const QString written = Path(QLatin1String(each.written));
        EXPECT_EQ(Bytes(written).rfind(each.begins, 0), 0U) << each.name;
        EXPECT_EQ(window->statusBar()->currentMessage(), "The patch was exported to "_q + written);
    }
    EXPECT_NE(State(), "unsaved"_q);

    // A file that is there is replaced when that is wanted, and what can't be written is told.
    home.Write("show.v2.pdf", "mine");
    Export("patchPdf", Path("show.v2"_q), {"No"});
    EXPECT_EQ(Bytes(Path("show.v2.pdf"_q)), "mine");
    QDir(Path("."_q)).mkdir("folder.csv"_q);
    person.seen.clear();
    Export("patchCsv", Path("folder.csv/no/patch.csv"_q), {"OK"});
    ASSERT_TRUE(QTest::qWaitFor([this] { return person.IsDone(); }));
    EXPECT_EQ(person.seen.back().title, "Patch Not Exported"_q);
    EXPECT_TRUE(person.seen.back().text.contains("The folder is gone."_q));

    // Paper and format are the ones of the last time.
    person.Will([](QDialog& dialog) {
        In<QComboBox>(dialog, "patchPaper")->setCurrentText("Letter"_q);
        Support::Press(dialog, "Export..."_q);
    });
    person.WillChoose(Path("last"_q));
    Trigger("actionExport_Patch");
    ASSERT_TRUE(Ends());
    ASSERT_TRUE(window->close());
    EXPECT_EQ(Kept("patchPaper"), "Letter"_q);
    EXPECT_EQ(Kept("patchFormat"), "csv"_q);
}

TEST_F(PatchExporting, EndsBeforeTheProgramWhichStaysOpenWhenItFailed)
{
    StartWithTwo();
    Export("patchPdf", Path("folder/that/is/gone.pdf"_q), {"OK"});
    EXPECT_FALSE(window->close());
    const auto* progress = window->findChild<QProgressDialog*>("patchProgress"_q);
    ASSERT_TRUE(progress);
    EXPECT_TRUE(progress->labelText().contains("closes when that is done"_q));
    ASSERT_TRUE(QTest::qWaitFor([this] { return person.IsDone(); }));
    EXPECT_EQ(person.seen.back().title, "Patch Not Exported"_q);
    EXPECT_TRUE(window->isVisible());

    Export("patchPdf", Path("patch.pdf"_q));
    EXPECT_FALSE(window->close());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }, 60'000));
    EXPECT_EQ(Bytes(Path("patch.pdf"_q)).rfind("%PDF-", 0), 0U);
}

TEST_F(PatchExporting, LeavesNothingWhenALargeOneIsCancelled)
{
    QString elements;
    for (int i = 0; i < 6000; ++i)
        elements += Element({0.5, i / 6000.0}, {0.18, 0.1}, i / 24, 1 + i % 24 * 20);
    StartWith(elements);
    Export("patchPdf", Path("patch.pdf"_q));
    QPointer<QProgressDialog> progress;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        progress = window->findChild<QProgressDialog*>("patchProgress"_q);
        return progress && progress->isVisible() && progress->value() > 0;
    }));
    EXPECT_FALSE(progress->isModal()) << "the show, and the editing, go on";
    EXPECT_FALSE(Action("actionExport_Patch")->isEnabled()) << "one at a time";
    Support::Press(*progress, "Cancel"_q);
    ASSERT_TRUE(Ends());
    EXPECT_FALSE(progress);
    EXPECT_FALSE(QFile::exists(Path("patch.pdf"_q)));
}
