// SPDX-License-Identifier: MIT
#include "FixtureImport/ImportPlan.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QFileInfo>

#include "LibTools/NaturalOrder.h"
#include "LibTools/SearchWords.h"

namespace FixtureImport {

namespace {

using Kind = PlanNode::Kind;

bool ComesBefore(const PlanNode& a, const PlanNode& b)
{
    const bool isLast = a.kind == Kind::UnreadFiles;
    return isLast == (b.kind == Kind::UnreadFiles) ? IsBefore(a.name, b.name) : !isLast;
}

/// `Node` is a PlanNode, const or not.
template <typename Node, typename Act>
void ForEachFixture(Node& node, const Act& act)
{
    if (node.IsLeaf())
        act(node);
    for (const auto& child : node.children)
        ForEachFixture<Node>(*child, act);
}

void NumberRows(PlanNode& parent)
{
    int row = 0;
    for (PlanNode* child : parent.shown)
        child->row = row++;
}

/// Where a node belongs among sorted ones; behind its equals.
template <typename Nodes>
auto PlaceOf(Nodes& nodes, const PlanNode& node)
{
    return std::upper_bound(nodes.begin(), nodes.end(), node,
                            [](const PlanNode& a, const auto& b) { return ComesBefore(a, *b); });
}

} // namespace

QString PlanNode::ProductInLibrary() const
{
    if (!mode.fixture)
        return {};
    return QString::fromStdWString(
        state == PlanState::Differs && !replaces ? otherProduct : mode.fixture->product);
}

int RowOf(const PlanNode& node)
{
    if (!node.parent || node.row < 0)
        return -1;
    const auto& shown = node.parent->shown;
    const auto row = static_cast<std::size_t>(node.row);
    if (row >= shown.size() || shown[row] != &node)
        NumberRows(*node.parent);
    return node.row;
}

ChoiceBelow CountChoice(const PlanNode& node)
{
    if (node.IsLeaf())
        return {node.CanBeChosen() ? 1 : 0, node.isChosen ? 1 : 0};
    ChoiceBelow all;
    for (const PlanNode* child : node.shown) {
        const ChoiceBelow below = CountChoice(*child);
        all.possible += below.possible;
        all.chosen += below.chosen;
    }
    return all;
}

ImportPlan::ImportPlan(Library library)
    : library_(std::move(library))
{}

// ---- Taking in ---------------------------------------------------------------------------------

void ImportPlan::Add(ImportedFile file, const Watcher& watcher)
{
    files_ += file.continues ? 0 : 1;
    if (file.fault) {
        auto node = std::make_unique<PlanNode>();
        node->kind = Kind::UnreadFile;
        node->name = QFileInfo(file.path).fileName();
        node->path = file.path;
        node->searchText = ForSearch(file.path + QLatin1Char(' ') + InWords(file.fault));
        node->mode.fault = std::move(file.fault);
        return Insert({}, Kind::UnreadFiles, std::move(node), watcher);
    }
    for (ImportedDefinition& definition : file.definitions) {
        const QString manufacturer = definition.manufacturer;
        Insert(manufacturer, Kind::Manufacturer, NodeOf(std::move(definition), file.path), watcher);
    }
}

/// The fixtures of a library have no modes.
std::unique_ptr<PlanNode> ImportPlan::NodeOf(ImportedDefinition definition, const QString& path)
{
    const QString names = definition.manufacturer + QLatin1Char(' ') + definition.name;
    if (definition.modes.size() == 1 && definition.modes.front().name.isEmpty()) {
        auto fixture = NodeOf(std::move(definition.modes.front()), path, names);
        fixture->name = definition.name;
        return fixture;
    }
    auto node = std::make_unique<PlanNode>();
    node->kind = Kind::Definition;
    node->name = definition.name;
    node->path = path;
    node->children.reserve(definition.modes.size());
    for (ImportedMode& mode : definition.modes) {
        node->children.push_back(NodeOf(std::move(mode), path, names));
        node->children.back()->parent = node.get();
    }
    return node;
}

std::unique_ptr<PlanNode> ImportPlan::NodeOf(ImportedMode mode, const QString& path,
                                             const QString& names)
{
    auto node = std::make_unique<PlanNode>();
    node->kind = Kind::Fixture;
    node->name = mode.name;
    node->path = path;
    node->mode = std::move(mode);
    Judge(*node);
    node->searchText = ForSearch(names + QLatin1Char(' ') + node->name + QLatin1Char(' ') +
                                 node->ProductInLibrary());
    return node;
}

/// Finds a product for the fixture, unless it is there already.
void ImportPlan::Judge(PlanNode& fixture)
{
    if (!fixture.mode.fixture)
        return;
    LEDFixture& definition = *fixture.mode.fixture;
    const std::wstring wanted = definition.product;
    const auto place = search_.Find(definition, [this](const std::wstring& product) {
        const auto known = products_.find(product);
        return std::array<const LEDFixture*, 2>{
            known == products_.end() ? nullptr : &*known->second->mode.fixture,
            library_ ? library_(product) : nullptr};
    });
    definition.product = place.product;
    if (place.sameOf) {
        fixture.state = *place.sameOf == 0 ? PlanState::Twice : PlanState::Known;
        return;
    }
    fixture.state = PlanState::New;
    fixture.isChosen = true;
    products_.emplace(place.product, &fixture);
    // Of several for one product of the library's, the first may replace it.
    if (products_.emplace(wanted, &fixture).second) {
        fixture.state = PlanState::Differs;
        fixture.otherProduct = std::exchange(definition.product, wanted);
        Answer(fixture, answer_);
    }
}

void ImportPlan::Insert(const QString& manufacturer, Kind kind, std::unique_ptr<PlanNode> node,
                        const Watcher& watcher)
{
    // Spellings of one manufacturer are one, as in the library.
    PlanNode*& parent =
        kind == Kind::UnreadFiles ? unread_ : manufacturers_[manufacturer.toUpper()];
    if (parent)
        return PutInto(*parent, std::move(node), watcher);
    auto added = std::make_unique<PlanNode>();
    parent = added.get();
    parent->kind = kind;
    parent->name = manufacturer;
    node->parent = parent;
    parent->children.push_back(std::move(node));
    PutInto(top_, std::move(added), watcher);
}

void ImportPlan::PutInto(PlanNode& parent, std::unique_ptr<PlanNode> node, const Watcher& watcher)
{
    PlanNode* added = node.get();
    PlanNode* shownIn = &parent;
    added->parent = &parent;
    parent.children.insert(PlaceOf(parent.children, *added), std::move(node));
    if (!Narrow(*added))
        return;
    if (&parent != &top_ && parent.row < 0) { // it comes in with its first child
        parent.shown = {added};
        added->row = 0;
        added = &parent;
        shownIn = &top_;
    }
    const auto place = PlaceOf(shownIn->shown, *added);
    const auto row = static_cast<std::size_t>(place - shownIn->shown.begin());
    if (watcher.before)
        watcher.before(*shownIn, static_cast<int>(row));
    shownIn->shown.insert(place, added);
    added->row = static_cast<int>(row); // RowOf finds that those behind it have moved.
    if (watcher.after)
        watcher.after();
}

// ---- The search --------------------------------------------------------------------------------

void ImportPlan::Search(const QString& text, std::optional<PlanState> state)
{
    words_ = SearchWords(text);
    state_ = state;
    (void)Narrow(top_);
}

/// Whether the node is shown.
bool ImportPlan::Narrow(PlanNode& node) const
{
    node.row = -1;
    if (node.IsLeaf()) {
        const PlanState state = node.state == PlanState::Twice && state_ == PlanState::Known
                                    ? PlanState::Known
                                    : node.state;
        return (!state_ || state == *state_) && HasAllWords(node.searchText, words_);
    }
    node.shown.clear();
    node.shown.reserve(node.children.size());
    for (const auto& child : node.children) {
        if (Narrow(*child))
            node.shown.push_back(child.get());
    }
    NumberRows(node);
    return !node.shown.empty();
}

// ---- The choice --------------------------------------------------------------------------------

void ImportPlan::Choose(PlanNode& node, bool chosen)
{
    if (node.CanBeChosen())
        node.isChosen = chosen;
    for (PlanNode* child : node.shown)
        Choose(*child, chosen);
}

void ImportPlan::Answer(PlanNode& fixture, SameProduct answer)
{
    fixture.isChosen = answer != SameProduct::LeaveOut;
    if (fixture.isChosen)
        fixture.replaces = answer == SameProduct::Replace;
}

void ImportPlan::AnswerAll(SameProduct answer)
{
    answer_ = answer;
    ForEachFixture(top_, [answer](PlanNode& fixture) {
        if (fixture.state == PlanState::Differs)
            Answer(fixture, answer);
    });
}

std::optional<SameProduct> ImportPlan::CommonAnswer() const
{
    std::optional<SameProduct> common;
    bool isCommon = true;
    ForEachFixture(top_, [&](const PlanNode& fixture) {
        if (fixture.state != PlanState::Differs)
            return;
        isCommon = isCommon && common.value_or(fixture.Answer()) == fixture.Answer();
        common = fixture.Answer();
    });
    return isCommon ? common : std::nullopt;
}

ImportPlan::Counts ImportPlan::Count() const
{
    Counts counts;
    counts.files = files_;
    ForEachFixture(top_, [&counts](const PlanNode& node) {
        if (node.kind == Kind::UnreadFile) {
            ++counts.unread;
            return;
        }
        ++counts.fixtures;
        counts.chosen += node.isChosen ? 1 : 0;
        counts.differing += node.state == PlanState::Differs ? 1 : 0;
        const bool isKnown = node.state == PlanState::Known || node.state == PlanState::Twice;
        counts.known += isKnown ? 1 : 0;
        counts.leftOut += node.state == PlanState::LeftOut ? 1 : 0;
    });
    return counts;
}

std::vector<ImportPlan::Wanted> ImportPlan::Chosen() const
{
    std::vector<Wanted> wanted;
    ForEachFixture(top_, [&wanted](const PlanNode& node) {
        if (!node.isChosen)
            return;
        wanted.push_back({*node.mode.fixture, node.replaces});
        if (node.state == PlanState::Differs && !node.replaces)
            wanted.back().fixture.product = node.otherProduct;
    });
    return wanted;
}

} // namespace FixtureImport
