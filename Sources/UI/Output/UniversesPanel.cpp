// SPDX-License-Identifier: MIT
#include "UI/Output/UniversesPanel.h"

#include <algorithm>
#include <set>
#include <utility>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QSettings>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

#include "LEDEngine/ChannelTrace.h"
#include "LEDEngine/LEDEngine.h"
#include "Language/Language.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Platform/Clock.h"
#include "UI/Output/CellLegend.h"
#include "UI/Output/UniverseDelegate.h"
#include "UI/Output/UniverseGrid.h"
#include "UI/Widgets/DockList.h"

namespace {

constexpr int LookMilliseconds = 100;
constexpr int LooksForFrames = 5;
constexpr int LooksForLine = 2; ///< a text that changes more often can't be read

QString PercentKey()
{
    return QStringLiteral("universes/percent");
}

QString SplitterKey()
{
    return QStringLiteral("universes/splitter");
}

} // namespace

UniversesPanel::UniversesPanel(const Parts& parts)
    : parts_(parts)
    , watch_(*parts.manager.GetMappedDeviceModel(), parts.engine.GetOutput(),
             [&nodes = parts.nodes](const QString& address) { return nodes.GetNodeName(address); })
    , move_(parts.manager)
{
    setObjectName(QStringLiteral("universesPanel"));
    auto* row = new QVBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    splitter_ = new QSplitter(Qt::Horizontal);
    splitter_->setChildrenCollapsible(false);
    BuildList();
    splitter_->addWidget(list_);
    splitter_->addWidget(BuildDetails());
    splitter_->setStretchFactor(1, 1);
    row->addWidget(splitter_);
    Reset();
    WatchDocument();
    WireGrid();
    InEachLanguage(this, [this] { SayTexts(); });
    connect(&timer_, &QTimer::timeout, this, &UniversesPanel::Refresh);
}

/// The list, which goes behind the model, shows nothing from then on.
UniversesPanel::~UniversesPanel()
{
    list_->setModel(nullptr);
}

// ---- Building
// ------------------------------------------------------------------------------------

void UniversesPanel::BuildList()
{
    list_ = new DockList;
    list_->SetNames("universeList", [] { return tr("Universes"); });
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->setSortingEnabled(false); // in the order of their numbers
    list_->setRootIsDecorated(false);
    list_->setAllColumnsShowFocus(true);
    list_->setModel(&table_);
    delegate_ = new UniverseDelegate(list_);
    list_->setItemDelegate(delegate_);
    connect(list_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                const UniverseRow* row = table_.Row(current.row());
                if (!row || bringsRows_)
                    return;
                shown_ = *row;
                ShowUniverse();
            });
}

QWidget* UniversesPanel::BuildDetails()
{
    auto* details = new QWidget;
    auto* column = new QVBoxLayout(details);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    title_ = new QLabel;
    title_->setObjectName(QStringLiteral("universeTitle"));
    title_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    goTo_ = new QLineEdit;
    goTo_->setObjectName(QStringLiteral("universeGoTo"));
    goTo_->setMaximumWidth(goTo_->fontMetrics().averageCharWidth() * 18);
    goTo_->installEventFilter(this);
    connect(goTo_, &QLineEdit::returnPressed, this, &UniversesPanel::GoTo);
    percent_ = new QToolButton;
    percent_->setObjectName(QStringLiteral("universePercent"));
    percent_->setText(QStringLiteral("%"));
    percent_->setCheckable(true);
    auto* head = new QHBoxLayout;
    head->addWidget(title_, 1);
    head->addWidget(new CellLegend);
    head->addWidget(percent_);
    head->addWidget(goTo_);
    grid_ = new UniverseGrid;
    line_ = new QLabel;
    line_->setObjectName(QStringLiteral("universeLine"));
    line_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    line_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    line_->setFocusPolicy(Qt::NoFocus);
    line_->setTextFormat(Qt::PlainText);
    title_->setTextFormat(Qt::PlainText);
    column->addLayout(head);
    column->addWidget(grid_, 1);
    column->addWidget(line_);
    connect(percent_, &QToolButton::toggled, grid_, &UniverseGrid::SetPercent);
    return details;
}

void UniversesPanel::SayTexts()
{
    goTo_->setAccessibleName(tr("Go to channel"));
    goTo_->setPlaceholderText(tr("Go to: 4/97"));
    goTo_->setToolTip(tr("97 is a channel of this universe, 4/97 one of Port-Address 4, 0/4/97 one "
                         "of sub-net 0, universe 4"));
    percent_->setToolTip(tr("Values in percent, or from 0 to 255"));
    percent_->setAccessibleName(tr("Values in percent"));
    emit table_.headerDataChanged(Qt::Horizontal, 0, UniverseTable::ColumnCount - 1);
    watch_.NoteNodes(); // the rows name the way
    ShowUniverse();
    if (timer_.isActive())
        Refresh(); // at once, not at the next look
}

void UniversesPanel::WatchDocument()
{
    const MappedDeviceModel* document = parts_.manager.GetMappedDeviceModel();
    const auto note = [this] {
        watch_.NoteDocument();
    };
    connect(document, &MappedDeviceModel::rowsInserted, this, note);
    connect(document, &MappedDeviceModel::rowsRemoved, this, note);
    connect(document, &MappedDeviceModel::dataChanged, this, note);
    connect(document, &MappedDeviceModel::modelReset, this, note);
    connect(&parts_.manager, &DeviceManager::elementsPatched, this, note);
    connect(&parts_.manager, &DeviceManager::elementsRefitted, this, note);
    const auto noteNodes = [this] {
        watch_.NoteNodes();
    };
    connect(document, &MappedDeviceModel::faultsChanged, this, noteNodes);
    connect(&parts_.nodes, &ArtNetNodeModel::nodesChanged, this, noteNodes);
}

void UniversesPanel::WireGrid()
{
    connect(grid_, &UniverseGrid::lookedChanged, this, [this] {
        notice_.clear();
        ShowLine();
    });
    connect(grid_, &UniverseGrid::currentMoved, this, [this](int channel) {
        notice_.clear();
        ShowLine();
        grid_->setAccessibleDescription(SpokenCell(channel));
    });
    connect(grid_, &UniverseGrid::pressed, this, &UniversesPanel::Press);
    connect(grid_, &UniverseGrid::clicked, this, &UniversesPanel::Click);
    connect(grid_, &UniverseGrid::doubleClicked, this, [this](int channel) {
        if (const std::int64_t element = grid_->Cell(channel).element; element > 0)
            emit showWanted({element});
    });
    connect(grid_, &UniverseGrid::stepWanted, this, &UniversesPanel::Step);
    connect(grid_, &UniverseGrid::typed, this, [this](const QString& text) {
        goTo_->setText(text);
        goTo_->setFocus();
    });
    connect(grid_, &UniverseGrid::dragged, this, &UniversesPanel::DragTo);
    connect(grid_, &UniverseGrid::dropped, this, [this] {
        move_.Drop(parts_.manager, parts_.undoStack);
        EndDrag();
        Refresh();
        FollowSelection();
    });
    connect(grid_, &UniverseGrid::dragCancelled, this, &UniversesPanel::EndDrag);
}

void UniversesPanel::Read(const QSettings& store)
{
    percent_->setChecked(store.value(PercentKey()).toBool());
    splitter_->restoreState(store.value(SplitterKey()).toByteArray());
}

void UniversesPanel::Write(QSettings& store) const
{
    store.setValue(PercentKey(), percent_->isChecked());
    store.setValue(SplitterKey(), splitter_->saveState());
}

void UniversesPanel::Reset()
{
    constexpr int listWidth = 290;
    constexpr int gridWidth = 490;
    splitter_->setSizes({listWidth, gridWidth});
    const QFontMetrics metrics(list_->font());
    QHeaderView& header = *list_->header();
    header.setStretchLastSection(false);
    const auto fit = [&](UniverseTable::Column column, const QString& widest) {
        constexpr int room = 10;
        header.resizeSection(column, metrics.horizontalAdvance(widest) + room);
    };
    constexpr int mark = 18;
    fit(UniverseTable::UniverseColumn, QStringLiteral("15/15 (255)"));
    header.resizeSection(UniverseTable::UniverseColumn,
                         header.sectionSize(UniverseTable::UniverseColumn) + mark);
    fit(UniverseTable::UsedColumn, QStringLiteral("512 5128"));
    fit(UniverseTable::FramesColumn, QStringLiteral("40.08"));
    header.setSectionResizeMode(UniverseTable::WayColumn, QHeaderView::Stretch);
}

// ---- What is shown
// -------------------------------------------------------------------------------

void UniversesPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    timer_.start(LookMilliseconds);
    looks_ = 0;
    watch_.ForgetFrames();
    Refresh();
    grid_->ShowSelected(selected_);
    FollowSelection();
}

void UniversesPanel::hideEvent(QHideEvent* event)
{
    timer_.stop();
    QWidget::hideEvent(event);
}

/// Between two frames, which are built in one go on this thread.
void UniversesPanel::Refresh()
{
    const bool follows = std::exchange(followsRows_, false);
    if (watch_.Look()) {
        ShowRows();
        if (follows)
            FollowSelection();
    }
    if (looks_++ % LooksForFrames == 0) {
        watch_.CountFrames(Platform::MonotonicNanoseconds());
        ShowFrames();
    }
    const UniverseRow* row = Shown();
    grid_->ShowValues(row ? watch_.ValuesOf(*row) : std::span<const std::uint8_t>());
    if (looks_ % LooksForLine == 0)
        ShowLine();
}

void UniversesPanel::ShowRows()
{
    {
        // In between, rows and patch are not of the same document.
        const QScopedValueRollback<bool> bringing(bringsRows_, true);
        table_.SetRows(watch_.Rows());
    }
    int row = shown_ ? table_.Find(*shown_) : 0;
    // What is dragged, or where it would go, may be another place now.
    if (std::exchange(patchVersion_, watch_.PatchVersion()) != watch_.PatchVersion() || row < 0)
        grid_->CancelDrag();
    if (row < 0)
        row = std::max(list_->currentIndex().row(), 0); // beside it
    const UniverseRow* chosen = table_.Row(row);
    shown_ = chosen ? std::optional(*chosen) : std::nullopt;
    ChooseRow(row);
    ShowUniverse();
}

void UniversesPanel::ShowFrames()
{
    const int last = table_.rowCount() - 1;
    const QModelIndex below = list_->indexAt(QPoint(0, list_->viewport()->height() - 1));
    const int end = below.isValid() ? below.row() : last;
    for (int row = std::max(list_->indexAt(QPoint(0, 0)).row(), 0); row <= end; ++row)
        table_.SetFrames(row, watch_.FramesOf(*table_.Row(row)));
}

const UniverseRow* UniversesPanel::Shown() const
{
    return shown_ ? table_.Row(table_.Find(*shown_)) : nullptr;
}

const PatchUniverse* UniversesPanel::ShownPatch() const
{
    const UniverseRow* row = Shown();
    if (!row || row->kind == UniverseRow::Kind::Received)
        return nullptr;
    const PatchTable& patch = watch_.Patch();
    const auto found = std::ranges::find(patch, row->target, &PatchUniverse::target);
    return found == patch.end() ? nullptr : &*found;
}

void UniversesPanel::ShowUniverse()
{
    const UniverseRow* row = Shown();
    const MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    grid_->ShowCells(UniverseCells::Of(ShownPatch(), row && row->hasInput, document));
    grid_->ShowValues(row ? watch_.ValuesOf(*row) : std::span<const std::uint8_t>());
    grid_->setEnabled(row != nullptr);
    ShowTitle();
    ShowLine();
    grid_->setAccessibleDescription(SpokenCell(grid_->Current()));
}

void UniversesPanel::ShowTitle()
{
    const UniverseRow* row = Shown();
    QString text = tr("Nothing goes out: no element of the document has an address.");
    if (row)
        text = tr("Universe %1: %2").arg(UniverseLabel(row->target.portAddress), row->way);
    title_->setText(text);
    title_->setToolTip(AsTip(text));
    grid_->setAccessibleName(text);
}

QString UniversesPanel::SpokenCell(int channel) const
{
    const MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    const UniverseCell& cell = grid_->Cell(channel);
    const int value = std::max(grid_->Value(channel), 0);
    const QString text =
        tr("channel %1, value %2").arg(QString::number(channel), QString::number(value));
    if (cell.ground == UniverseCell::Ground::Received)
        return tr("%1, received").arg(text);
    const MappedLedItem* element = document.GetItemByUniqueID(cell.element);
    if (!element)
        return tr("%1, free").arg(text);
    const QString name = QString::fromStdWString(element->description).simplified();
    return cell.shared ? tr("%1, %2 and another element").arg(text, name)
                       : tr("%1, %2").arg(text, name);
}

/// The whole way of the channel, from the picture to the node.
QString UniversesPanel::LineOf(int channel)
{
    const UniverseRow* row = Shown();
    const PatchUniverse* patched = ShownPatch();
    if (!row)
        return {};
    if (row->kind == UniverseRow::Kind::Received)
        return tr("%1, %2").arg(SpokenCell(channel), row->way);
    const MappedDeviceModel& document = *parts_.manager.GetMappedDeviceModel();
    const PatchUniverse universe = patched ? *patched : PatchUniverse{row->target, {}};
    return ChannelTraceText(TraceChannel(parts_.engine, document, universe, channel));
}

void UniversesPanel::ShowLine()
{
    QString text = notice_;
    if (text.isEmpty())
        text = LineOf(grid_->Looked());
    if (text == lineText_)
        return;
    lineText_ = text;
    line_->setToolTip(AsTip(text));
    line_->setText(line_->fontMetrics().elidedText(text, Qt::ElideRight, line_->width()));
}

// ---- Going about
// ---------------------------------------------------------------------------------

void UniversesPanel::ChooseRow(int row)
{
    const QModelIndex index = table_.index(row, 0);
    if (!index.isValid() || list_->currentIndex().row() == row)
        return; // the operator may have scrolled away from it
    list_->setCurrentIndex(index);
    list_->scrollTo(index);
}

void UniversesPanel::Step(int by)
{
    ChooseRow(std::clamp(list_->currentIndex().row() + by, 0, table_.rowCount() - 1));
}

void UniversesPanel::GoTo()
{
    const auto wanted = ReadWantedChannel(goTo_->text());
    int row = list_->currentIndex().row();
    const UniverseRow* shown = Shown();
    if (wanted && wanted->portAddress &&
        !(shown && shown->target.portAddress == *wanted->portAddress)) {
        const UniverseRows& rows = watch_.Rows();
        const auto found = std::ranges::find_if(rows, [&](const UniverseRow& each) {
            return each.target.portAddress == *wanted->portAddress;
        });
        row = found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
    }
    if (!wanted || row < 0) {
        if (!wanted)
            notice_ = tr("\"%1\" is no channel: type 97, 4/97 or 0/4/97, channels 1 to 512.")
                          .arg(goTo_->text());
        else if (wanted->portAddress)
            notice_ = tr("Universe %1 is not in use.")
                          .arg(UniverseLabel(static_cast<std::uint16_t>(*wanted->portAddress)));
        else
            notice_ = tr("No universe is in use: patch an element first.");
        goTo_->selectAll();
        return ShowLine();
    }
    ChooseRow(row);
    grid_->SetCurrent(wanted->channel);
    goTo_->clear();
    grid_->setFocus();
}

bool UniversesPanel::eventFilter(QObject* watched, QEvent* event)
{
    // A shortcut of the window must not take the keys from the field.
    if (watched == goTo_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
    {
        goTo_->clear();
        grid_->setFocus();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

// ---- Selecting
// -----------------------------------------------------------------------------------

void UniversesPanel::ShowSelection(const ElementIds& ids)
{
    selected_ = ids;
    if (!isVisible())
        return;
    grid_->ShowSelected(selected_);
    if (selects_)
        return;
    FollowSelection();
    followsRows_ = true; // a new element has no universe before the next look
}

/// Shows the universe of what is selected, when that is one.
void UniversesPanel::FollowSelection()
{
    const std::set<std::int64_t> wanted(selected_.begin(), selected_.end());
    const PatchUniverse* only = nullptr;
    int first = 0;
    for (const PatchUniverse& universe : watch_.Patch()) {
        for (const PatchSpan& span : universe.spans) {
            if (!wanted.contains(span.element))
                continue;
            if (only && only != &universe)
                return;
            first = only ? std::min(first, span.channels.first) : span.channels.first;
            only = &universe;
        }
    }
    if (!only)
        return;
    UniverseRow row;
    row.target = only->target;
    ChooseRow(table_.Find(row));
    grid_->ScrollTo(first);
}

void UniversesPanel::Press(int channel, bool add)
{
    const std::int64_t element = grid_->Cell(channel).element;
    const bool isSelected = std::ranges::find(selected_, element) != selected_.end();
    if (element == 0 || (isSelected && !add))
        return;
    ElementIds wanted = add ? selected_ : ElementIds();
    if (isSelected)
        std::erase(wanted, element);
    else
        wanted.push_back(element);
    Select(wanted);
}

/// On one of several selected ones, which a drag would have moved together.
void UniversesPanel::Click(int channel, bool add)
{
    const std::int64_t element = grid_->Cell(channel).element;
    if (element > 0 && !add && selected_.size() > 1)
        Select({element});
}

void UniversesPanel::Select(const ElementIds& ids)
{
    const QScopedValueRollback<bool> selecting(selects_, true);
    emit selectionWanted(ids);
}

// ---- Dragging
// ------------------------------------------------------------------------------------

void UniversesPanel::DragTo(int from, int over, const QPoint& global)
{
    const UniverseRow* shown = Shown();
    const std::int64_t element = grid_->Cell(from).element;
    if (!shown || element == 0)
        return;
    const bool isSelected = std::ranges::find(selected_, element) != selected_.end();
    const ElementIds ids = isSelected ? selected_ : ElementIds{element};
    const QPoint inList = list_->viewport()->mapFromGlobal(global);
    const bool overList = list_->viewport()->rect().contains(inList);
    int dropRow = overList ? list_->indexAt(inList).row() : -1;
    if (const UniverseRow* row = table_.Row(dropRow))
        move_.To(watch_.Patch(), ids, {.channels = 0, .to = row->target}, row->target);
    else if (over > 0)
        move_.To(watch_.Patch(), ids, {.channels = over - from, .to = std::nullopt}, shown->target);
    else
        move_.Clear();
    if (!move_.Preview())
        dropRow = -1;
    if (delegate_->DropRow() != dropRow) {
        delegate_->SetDropRow(dropRow);
        list_->viewport()->update();
    }
    grid_->ShowMove(dropRow < 0 ? move_.Preview() : nullptr);
    notice_ = move_.Words();
    ShowLine();
}

void UniversesPanel::EndDrag()
{
    move_.Clear();
    notice_.clear();
    grid_->ShowMove(nullptr);
    delegate_->SetDropRow(-1);
    list_->viewport()->update();
    ShowLine();
}
