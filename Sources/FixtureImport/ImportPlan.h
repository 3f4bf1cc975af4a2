// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <QHash>
#include <QString>
#include <QStringList>

#include "FixtureImport/ImportedFixture.h"
#include "FixtureImport/ProductNames.h"

namespace FixtureImport {

/// How an imported fixture stands to the library, which knows a fixture by its product alone.
enum class PlanState : std::uint8_t
{
    New,     ///< the library has nothing of its product
    Differs, ///< the library has another fixture of its product
    Known,   ///< the library has the very fixture
    Twice,   ///< another file of this import gives the very fixture
    LeftOut  ///< it couldn't be read; its fault says why
};

/// What becomes of a fixture whose product is another one's in the library.
enum class SameProduct : std::uint8_t
{
    LeaveOut, ///< the library's stays
    Replace,  ///< the library's goes
    KeepBoth  ///< the imported one gets another product
};

/// What was found, as a tree: manufacturers with definitions with modes, and behind them the files
/// that could not be read. A definition without modes of its own is a fixture at once.
struct PlanNode
{
    enum class Kind : std::uint8_t
    {
        Manufacturer,
        Definition,
        Fixture,
        UnreadFiles, ///< the parent of those below
        UnreadFile
    };

    Kind kind = Kind::Manufacturer;
    PlanNode* parent = nullptr; ///< null for the top
    QString name;
    QString path; ///< of the file, for a definition, a fixture and an unread file
    std::vector<std::unique_ptr<PlanNode>> children; ///< sorted, modes as they are in their file
    std::vector<PlanNode*> shown;                    ///< those that the search lets through
    /// In the parent's `shown`, -1 when hidden. RowOf knows whether it still holds.
    int row = -1;

    // ---- Of a fixture; an unread file has a fault and LeftOut.
    ImportedMode mode;
    PlanState state = PlanState::LeftOut;
    bool isChosen = false; ///< only for New and Differs
    bool replaces = false; ///< the library's, else both are kept
    /// Under which it comes into the library if both are kept.
    std::wstring otherProduct;
    QString searchText; ///< as ForSearch gives it

    [[nodiscard]] bool IsLeaf() const { return kind == Kind::Fixture || kind == Kind::UnreadFile; }
    [[nodiscard]] bool CanBeChosen() const
    {
        return state == PlanState::New || state == PlanState::Differs;
    }
    [[nodiscard]] SameProduct Answer() const
    {
        if (!isChosen)
            return SameProduct::LeaveOut;
        return replaces ? SameProduct::Replace : SameProduct::KeepBoth;
    }
    /// The product under which the fixture is in the library after the import.
    [[nodiscard]] QString ProductInLibrary() const;
};

/// The row among the parent's shown children; -1 for a hidden node and for the top. What comes in
/// doesn't count the rows behind it: among thousands, only those that are asked for are counted.
[[nodiscard]] int RowOf(const PlanNode& node);

/// The operator's choice among what was found: what is imported, and under which product. It shows
/// nothing and changes no library.
class ImportPlan
{
public:
    /// The library's fixture of a product, null when it has none.
    using Library = std::function<const LEDFixture*(const std::wstring& product)>;
    /// Called before and after a node comes in, at this row of the parent's shown children.
    struct Watcher
    {
        std::function<void(PlanNode& parent, int row)> before;
        std::function<void()> after;
    };
    struct Counts
    {
        int files = 0;
        int fixtures = 0; ///< modes, whatever became of them
        int chosen = 0;
        int differing = 0;
        int known = 0; ///< in the library, or twice
        int leftOut = 0;
        int unread = 0; ///< files
    };
    /// A fixture for the library.
    struct Wanted
    {
        LEDFixture fixture;
        bool replaces = false; ///< the library's fixture of its product
    };

    /// `library` is asked while files are added.
    explicit ImportPlan(Library library);

    /// Takes in what a file gave. New fixtures are chosen; those that differ from the library's
    /// follow the last AnswerAll.
    void Add(ImportedFile file, const Watcher& watcher = {});
    /// Shows what has all words of the text in manufacturer, definition, mode or product, and this
    /// state, if any. Known includes Twice.
    void Search(const QString& text, std::optional<PlanState> state);
    [[nodiscard]] bool IsSearching() const { return !words_.isEmpty() || state_; }

    /// Chooses or leaves out all shown fixtures at and below a node that can be chosen.
    static void Choose(PlanNode& node, bool chosen);
    /// For one fixture that differs.
    static void Answer(PlanNode& fixture, SameProduct answer);
    /// For all that differ, and for those that are yet to come.
    void AnswerAll(SameProduct answer);
    /// The answer that all of them have; nothing when they have several or when there are none.
    [[nodiscard]] std::optional<SameProduct> CommonAnswer() const;

    [[nodiscard]] PlanNode& Top() { return top_; }
    [[nodiscard]] const PlanNode& Top() const { return top_; }
    [[nodiscard]] Counts Count() const;
    /// What is chosen.
    [[nodiscard]] std::vector<Wanted> Chosen() const;

private:
    [[nodiscard]] std::unique_ptr<PlanNode> NodeOf(ImportedDefinition definition,
                                                   const QString& path);
    [[nodiscard]] std::unique_ptr<PlanNode> NodeOf(ImportedMode mode, const QString& path,
                                                   const QString& names);
    void Judge(PlanNode& fixture);
    void Insert(const QString& manufacturer, PlanNode::Kind kind, std::unique_ptr<PlanNode> node,
                const Watcher& watcher);
    void PutInto(PlanNode& parent, std::unique_ptr<PlanNode> node, const Watcher& watcher);
    bool Narrow(PlanNode& node) const;

    Library library_;
    PlanNode top_;
    QStringList words_;
    std::optional<PlanState> state_;
    SameProduct answer_ = SameProduct::LeaveOut;
    int files_ = 0;
    PlanNode* unread_ = nullptr;
    QHash<QString, PlanNode*> manufacturers_;                    ///< by their names without case
    std::unordered_map<std::wstring, const PlanNode*> products_; ///< of this import
    ProductSearch search_;
};

/// How many of the shown fixtures at and below a node can be chosen, and are.
struct ChoiceBelow
{
    int possible = 0;
    int chosen = 0;
};
[[nodiscard]] ChoiceBelow CountChoice(const PlanNode& node);

} // namespace FixtureImport
