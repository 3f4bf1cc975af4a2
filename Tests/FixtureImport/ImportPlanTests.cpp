// SPDX-License-Identifier: MIT
// What comes into a library of what was found: products that are taken, answers, search, counts.
#include "FixtureImport/ImportPlan.h"

#include <gtest/gtest.h>

#include <map>

#include "Support/Literals.h"

namespace {

using FixtureImport::ImportPlan;
using FixtureImport::PlanNode;
using FixtureImport::PlanState;
using FixtureImport::SameProduct;

LEDFixture Lamp(const QString& manufacturer, const QString& product, int width)
{
    return {manufacturer.toStdWString(), product.toStdWString(),
            PixelMap(width, 1, PixelMapType::RGB), 0, LEDFixture::AutomaticChannelCount};
}

/// "A/Par 3ch*2 5ch" has a mode of two pixels and one that is left out, "A/Par *1" is a library's
/// fixture, and "gone" can't be read. An underscore stands for a blank in a name.
FixtureImport::ImportedFile File(const QString& text)
{
    QStringList modes = text.split(QLatin1Char(' '));
    const QString names = modes.takeFirst().replace(QLatin1Char('_'), QLatin1Char(' '));
    FixtureImport::ImportedFile file;
    file.path = "/x/"_q + names;
    if (modes.isEmpty()) {
        file.fault.kind = FixtureImport::FaultKind::Missing;
        return file;
    }
    FixtureImport::ImportedDefinition found;
    found.manufacturer = names.section(QLatin1Char('/'), 0, 0);
    found.name = names.section(QLatin1Char('/'), 1);
    for (const QString& one : modes) {
        FixtureImport::ImportedMode mode;
        mode.name = one.section(QLatin1Char('*'), 0, 0);
        const int width = one.section(QLatin1Char('*'), 1).toInt();
        mode.fault.kind = FixtureImport::FaultKind::NoLight;
        if (width > 0)
            mode.fixture =
                Lamp(found.manufacturer,
                     found.name + (mode.name.isEmpty() ? ""_q : " - "_q) + mode.name, width);
        found.modes.push_back(std::move(mode));
    }
    file.definitions.push_back(std::move(found));
    return file;
}

class ImportPlanTest : public ::testing::Test
{
protected:
    /// A plan of these files ("A/Par 3ch*1|B/Par 3ch*1"), over a library of these fixtures
    /// ("A/Par - 3ch*1").
    void Begin(const char* known, const char* files, SameProduct answer = SameProduct::LeaveOut)
    {
        library.clear();
        for (const QString& text :
             QString::fromUtf8(known).split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
            LEDFixture lamp =
                Lamp(text.section(QLatin1Char('/'), 0, 0),
                     text.section(QLatin1Char('/'), 1).section(QLatin1Char('*'), 0, 0),
                     text.section(QLatin1Char('*'), 1).toInt());
            lamp.SetChannelCount(lamp.GetChannelCount()); // the same on the stage
            library.insert_or_assign(lamp.product, lamp);
        }
        plan = std::make_unique<ImportPlan>([this](const std::wstring& product) {
            ++asked;
            const auto found = library.find(product);
            return found == library.end() ? nullptr : &found->second;
        });
        plan->AnswerAll(answer);
        for (const QString& text : QString::fromUtf8(files).split(QLatin1Char('|')))
            plan->Add(File(text));
    }
    /// Every row that is shown with its state, children in brackets.
    [[nodiscard]] std::string Shown(const PlanNode& node) const
    {
        static const char* const states[] = {" new", " differs", " known", " twice", " left out"};
        QStringList rows;
        for (const PlanNode* child : node.shown) {
            EXPECT_EQ(RowOf(*child), rows.size());
            rows << child->name + (child->IsLeaf()
                                       ? QLatin1String(states[static_cast<int>(child->state)])
                                       : "("_q + QString::fromStdString(Shown(*child)) + ")"_q);
        }
        return rows.join(", "_q).toStdString();
    }
    [[nodiscard]] std::string Shown() const { return Shown(plan->Top()); }
    /// What would come into the library, a "!" before what replaces.
    [[nodiscard]] std::string Chosen() const
    {
        QStringList all;
        for (const ImportPlan::Wanted& wanted : plan->Chosen())
            all << (wanted.replaces ? "!"_q : ""_q) +
                       QString::fromStdWString(wanted.fixture.product);
        EXPECT_EQ(plan->Count().chosen, all.size());
        return all.join(QLatin1Char('|')).toStdString();
    }

    std::map<std::wstring, LEDFixture> library;
    int asked = 0; ///< for products of the library
    std::unique_ptr<ImportPlan> plan;
};

} // namespace

TEST_F(ImportPlanTest, EachFixtureGetsAProductOfItsOwn)
{
    struct Case
    {
        const char* known;
        const char* files;
        const char* chosen;   ///< what differs is left out
        const char* replaced; ///< it replaces the library's
        const char* both;     ///< both are kept
    };
    const Case cases[] = {
        {"", "A/Par 3ch*1 5ch 9ch*2", "Par - 3ch|Par - 9ch", "Par - 3ch|Par - 9ch",
         "Par - 3ch|Par - 9ch"},
        {"", "A/Par *1", "Par", "Par", "Par"},
        {"A/Par - 3ch*1", "A/Par 3ch*1", "", "", ""},
        {"A/Par - 3ch*2", "A/Par 3ch*1", "", "!Par - 3ch", "Par - 3ch (A)"},
        {"B/Par - 3ch*1", "A/Par 3ch*1", "", "!Par - 3ch", "Par - 3ch (A)"},
        // The same was kept under another name before.
        {"B/Par - 3ch*1|A/Par - 3ch (A)*1", "A/Par 3ch*1", "", "", ""},
        {"B/Par - 3ch*1|A/Par - 3ch (A)*7", "A/Par 3ch*1", "", "!Par - 3ch", "Par - 3ch (A) 2"},
        // In the import itself.
        {"", "A/Par 3ch*1|B/Par 3ch*1", "Par - 3ch|Par - 3ch (B)", "Par - 3ch|Par - 3ch (B)",
         "Par - 3ch|Par - 3ch (B)"},
        {"", "A/Par 3ch*1|A/Par 3ch*1", "Par - 3ch", "Par - 3ch", "Par - 3ch"},
        {"C/Par - 3ch*1", "A/Par 3ch*1|B/Par 3ch*1|A/Par 3ch*1", "Par - 3ch (B)",
         "!Par - 3ch|Par - 3ch (B)", "Par - 3ch (A)|Par - 3ch (B)"},
        // Of many for one product, each of them twice.
        {"A/Par*9|A/Par (A) 3*2",
         "A/Par *1|A/Par *2|A/Par *3|A/Par *1|A/Par *2|A/Par *3|A/Par *9|B/Par *1|B/Par *1",
         "Par (A) 2|Par (A) 4|Par (B)", "!Par|Par (A) 2|Par (A) 4|Par (B)",
         "Par (A)|Par (A) 2|Par (A) 4|Par (B)"},
    };
    for (const Case& imported : cases) {
        SCOPED_TRACE(std::string(imported.known) + " and " + imported.files);
        const std::pair<SameProduct, const char*> answers[] = {
            {SameProduct::Replace, imported.replaced},
            {SameProduct::KeepBoth, imported.both},
            {SameProduct::LeaveOut, imported.chosen}};
        for (const auto& [answer, expected] : answers) {
            Begin(imported.known, imported.files, answer);
            EXPECT_EQ(Chosen(), expected) << "the answer came first";
            for (const auto& [later, then] : answers) {
                plan->AnswerAll(later);
                EXPECT_EQ(Chosen(), then);
                EXPECT_EQ(plan->CommonAnswer().value_or(later), later);
            }
        }
    }
}

TEST_F(ImportPlanTest, ManyOfOneProductAreNotComparedEachWithEach)
{
    Begin("A/Par*400", "A/Par *400");
    asked = 0;
    for (int width = 1; width < 300; ++width)
        plan->Add(File("A/Par *%1"_q.arg(width)));
    EXPECT_LT(asked, 3 * 300);
    EXPECT_EQ(plan->Count().chosen, 298) << "all but the one that differs";
    EXPECT_EQ(plan->Chosen().back().fixture.product, L"Par (A) 299");
}

TEST_F(ImportPlanTest, TheTreeIsSortedAndNarrowed)
{
    Begin("A/Bar 2 - 3ch*1|A/Known*1",
          "gone|A/Bar_10 3ch*1|b/Été 3ch*1 no|a/Bar_2 3ch*5|A/Known *1|B/Bar_2 *2|lost");
    EXPECT_EQ(Shown(), "A(Bar 2(3ch differs), Bar 10(3ch new), Known known), "
                       "b(Bar 2 new, Été(3ch new, no left out)), (gone left out, lost left out)");
    struct Case
    {
        const char* text;
        std::optional<PlanState> state;
        const char* shown;
    };
    const Case cases[] = {
        {"BAR 3c", {}, "A(Bar 2(3ch differs), Bar 10(3ch new))"},
        {"ete 3CH", {}, "b(Été(3ch new))"},
        {"nothing", {}, ""},
        {"lost", {}, "(lost left out)"},
        {"", PlanState::LeftOut, "b(Été(no left out)), (gone left out, lost left out)"},
        {"", PlanState::Known, "A(Known known)"},
        {"b", PlanState::Differs, "A(Bar 2(3ch differs))"},
    };
    for (const Case& search : cases) {
        plan->Search(QString::fromUtf8(search.text), search.state);
        EXPECT_EQ(Shown(), search.shown) << search.text;
    }
    // What comes while a search is on: told of only when it shows, and with its parents.
    plan->Search("new"_q, {});
    QStringList told;
    const ImportPlan::Watcher watcher = {
        [&](PlanNode& parent, int row) {
            told << "%1 %2 %3"_q.arg(parent.name).arg(row).arg(parent.shown.size());
        },
        [&] {
            told << "."_q;
        }};
    for (const char* file : {"C/New 1ch*1", "A/Old 1ch*1", "A/New_2 *3", "A/New *3"})
        plan->Add(File(QString::fromUtf8(file)), watcher);
    EXPECT_EQ(told.join(QLatin1Char('|')).toStdString(), " 0 0|.| 0 1|.|A 0 1|.");
    EXPECT_EQ(Shown(), "A(New new, New 2 new), C(New(1ch new))");
    plan->Search({}, {});
    EXPECT_EQ(Shown(), "A(Bar 2(3ch differs), Bar 10(3ch new), Known known, New new, New 2 new, "
                       "Old(1ch new)), b(Bar 2 new, Été(3ch new, no left out)), C(New(1ch new)), "
                       "(gone left out, lost left out)");
}

TEST_F(ImportPlanTest, ChoicesAreOfWhatIsShown)
{
    Begin("A/Bar - 3ch*9", "A/Bar 3ch*1 5ch*1 no|B/Par 3ch*1|gone|A/Bar 5ch*1");
    const ImportPlan::Counts counts = plan->Count();
    EXPECT_EQ(counts.files, 4);
    EXPECT_EQ(counts.fixtures, 5);
    EXPECT_EQ(counts.differing, 1);
    EXPECT_EQ(counts.known, 1);
    EXPECT_EQ(counts.leftOut, 1);
    EXPECT_EQ(counts.unread, 1);
    EXPECT_EQ(Chosen(), "Bar - 5ch|Par - 3ch");
    plan->Search("bar"_q, {});
    ImportPlan::Choose(plan->Top(), false);
    EXPECT_EQ(Chosen(), "Par - 3ch") << "it is hidden";
    EXPECT_EQ(CountChoice(plan->Top()).possible, 2);
    ImportPlan::Choose(plan->Top(), true);
    EXPECT_EQ(Chosen(), "Bar - 3ch (A)|Bar - 5ch|Par - 3ch") << "nothing of the library is lost";
    PlanNode& differing = *plan->Top().shown.front()->shown.front()->shown.front();
    ImportPlan::Answer(differing, SameProduct::Replace);
    EXPECT_EQ(Chosen(), "!Bar - 3ch|Bar - 5ch|Par - 3ch");
    ImportPlan::Choose(differing, false);
    EXPECT_EQ(differing.Answer(), SameProduct::LeaveOut);
    ImportPlan::Choose(differing, true);
    EXPECT_EQ(differing.Answer(), SameProduct::Replace) << "as it was answered";
}
