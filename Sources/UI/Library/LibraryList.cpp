// SPDX-License-Identifier: MIT
#include "UI/Library/LibraryList.h"

#include <algorithm>
#include <utility>

#include <QDropEvent>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QVBoxLayout>

#include "Language/Language.h"
#include "Log/Log.h"
#include "Model/DeviceListProxy.h"
#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"
#include "Settings/FixtureLibraryPath.h"
#include "UI/FixtureImport/ImportFixturesDialog.h"
#include "UI/Library/LEDDeviceListView.h"
#include "UI/Widgets/ActionSet.h"

namespace {

/// By which a manufacturer is known again: a reload may give it another spelling.
QString KeyOf(const QModelIndex& manufacturer)
{
    return manufacturer.data().toString().toUpper();
}

} // namespace

LibraryList::LibraryList(DeviceManager& manager)
    : manager_(manager)
    , filter_(new QLineEdit)
    , hits_(new QLabel)
    , view_(new LEDDeviceListView)
{
    BuildContents();
    setAcceptDrops(true);
    view_->setModel(&Rows());
    view_->SetDeviceManager(&manager_);
    view_->sortByColumn(DeviceModel::NameColumn, Qt::AscendingOrder);
    connect(&Rows(), &QAbstractItemModel::modelAboutToBeReset, this, &LibraryList::Remember);
    connect(filter_, &QLineEdit::textChanged, this, &LibraryList::Narrow);
}

void LibraryList::Release()
{
    Rows().disconnect(this);
    filter_->disconnect(this);
    filter_->removeEventFilter(this);
    view_->setModel(nullptr);
}

void LibraryList::BuildContents()
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    filter_->setObjectName(QStringLiteral("editLibraryFilter"));
    filter_->setClearButtonEnabled(true);
    filter_->installEventFilter(this);
    hits_->setObjectName(QStringLiteral("labelLibraryHits"));
    hits_->setContentsMargins(0, 0, 4, 0);
    hits_->hide();
    auto* line = new QHBoxLayout;
    line->addWidget(filter_, 1);
    line->addWidget(hits_);
    column->addLayout(line);
    view_->SetNames("treeView",
                    [] { return WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Fixture Library")); });
    column->addWidget(view_);
    InEachLanguage(filter_, [this] {
        filter_->setPlaceholderText(tr("Find fixtures"));
        filter_->setAccessibleName(tr("Find fixtures"));
    });
    connect(&Language::Instance(), &Language::changed, this, &LibraryList::ShowHits);
}

DeviceListProxy& LibraryList::Rows() const
{
    return *manager_.GetDeviceListProxy();
}

QModelIndex LibraryList::RowOf(const std::wstring& product) const
{
    const DeviceLedItem* fixture = manager_.GetLEDFixtureByProduct(product);
    return fixture ? Rows().mapFromSource(fixture->index().siblingAtColumn(DeviceModel::NameColumn))
                   : QModelIndex();
}

void LibraryList::ShowFixture(const std::wstring& product)
{
    ShowFixtures({product});
}

void LibraryList::ShowFixtures(const std::vector<std::wstring>& products)
{
    const auto isHidden = [this](const std::wstring& product) {
        return !RowOf(product).isValid();
    };
    if (std::ranges::any_of(products, isHidden))
        filter_->clear();
    std::vector<QModelIndex> rows;
    rows.reserve(products.size());
    for (const std::wstring& product : products) {
        const QModelIndex row = RowOf(product);
        if (row.isValid())
            rows.push_back(row);
    }
    if (rows.empty())
        return;
    std::ranges::sort(rows, [](const QModelIndex& a, const QModelIndex& b) {
        return std::pair(a.parent().row(), a.row()) < std::pair(b.parent().row(), b.row());
    });
    // Thousands of rows as few ranges: the view walks through these for each row that it paints.
    QItemSelection selection;
    for (auto from = rows.begin(); from != rows.end();) {
        auto last = from;
        while (last + 1 != rows.end() && (last + 1)->parent() == from->parent() &&
               (last + 1)->row() == last->row() + 1)
            ++last;
        selection.select(*from, *last);
        view_->expand(from->parent());
        from = last + 1;
    }
    Select(rows.front(), QItemSelectionModel::ClearAndSelect);
    view_->selectionModel()->select(selection,
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

/// The row becomes the current one and comes into sight.
void LibraryList::Select(const QModelIndex& row, QItemSelectionModel::SelectionFlags how)
{
    view_->selectionModel()->setCurrentIndex(row, how | QItemSelectionModel::Rows);
    view_->scrollTo(row);
}

// ---- Loading again -----------------------------------------------------------------------------

void LibraryList::FollowChange(bool saved)
{
    if (saved)
        Load();
    FollowLibrary();
}

void LibraryList::Load()
{
    const QString path = GetFixtureLibraryPath();
    if (path.isEmpty())
        ZEN_LOG_INFO("The Fixture Library file could not be found.");
    else
        manager_.LoadLibrary(path);
}

/// Before a reset. A library that is cleared first and then loaded is reset twice.
void LibraryList::Remember()
{
    if (manager_.GetDeviceModel()->rowCount() == 0)
        return;
    if (!Rows().IsFiltered())
        expanded_ = ExpandedManufacturers();
    selected_.clear();
    for (const QModelIndex& row : view_->selectionModel()->selectedRows(DeviceModel::ProductColumn))
        selected_ << row.data().toString();
    scrolled_ = view_->verticalScrollBar()->value();
    isLost_ = true;
}

void LibraryList::FollowLibrary()
{
    Filter();
    if (manager_.GetDeviceModel()->rowCount() == 0)
        return;
    const bool restore = std::exchange(isLost_, false);
    if (restore || Rows().IsFiltered())
        Expand();
    if (restore)
        SelectAgain();
}

void LibraryList::SelectAgain()
{
    for (const QString& product : qAsConst(selected_)) {
        const QModelIndex row = RowOf(product.toStdWString());
        if (row.isValid())
            Select(row, QItemSelectionModel::Select);
    }
    view_->doItemsLayout(); // which the scroll bar gets its range from
    view_->verticalScrollBar()->setValue(scrolled_);
}

// ---- The filter --------------------------------------------------------------------------------

void LibraryList::Filter()
{
    Rows().SetFilter(filter_->text());
    ShowHits();
}

/// The operator has typed.
void LibraryList::Narrow()
{
    const bool before = Rows().IsFiltered();
    if (!before)
        expanded_ = ExpandedManufacturers();
    Filter();
    if (before || Rows().IsFiltered())
        Expand();
    const QModelIndex current = view_->currentIndex();
    if (before && !Rows().IsFiltered() && view_->selectionModel()->isSelected(current))
        Select(current, QItemSelectionModel::Select);
}

QStringList LibraryList::ExpandedManufacturers() const
{
    QStringList expanded;
    for (int row = 0; row < Rows().rowCount(); ++row) {
        const QModelIndex manufacturer = Rows().index(row, 0);
        if (view_->isExpanded(manufacturer))
            expanded << KeyOf(manufacturer);
    }
    return expanded;
}

/// All manufacturers while a filter is on, and otherwise those that were.
void LibraryList::Expand()
{
    if (Rows().IsFiltered()) {
        view_->expandAll();
        return;
    }
    for (int row = 0; row < Rows().rowCount(); ++row) {
        const QModelIndex manufacturer = Rows().index(row, 0);
        view_->setExpanded(manufacturer, expanded_.contains(KeyOf(manufacturer)));
    }
}

void LibraryList::ShowHits()
{
    const int shown = Rows().CountShown();
    const QString words =
        shown == 0 ? tr("No fixture found") : tr("%1 of %2").arg(shown).arg(Rows().CountAll());
    hits_->setText(words);
    hits_->setVisible(Rows().IsFiltered());
    filter_->setAccessibleDescription(Rows().IsFiltered() ? words : QString());
}

void LibraryList::GoToFirstHit()
{
    QModelIndex row = view_->currentIndex();
    if (Rows().IsFiltered())
        row = Rows().index(0, 0, Rows().index(0, 0));
    else if (!row.isValid())
        row = Rows().index(0, 0);
    if (!row.isValid())
        return;
    view_->setFocus(Qt::OtherFocusReason);
    Select(row, QItemSelectionModel::ClearAndSelect);
}

void LibraryList::dragEnterEvent(QDragEnterEvent* event)
{
    if (!LocalPaths(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void LibraryList::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    emit filesDropped(LocalPaths(*event->mimeData()));
}

bool LibraryList::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != filter_ || event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Escape:
        filter_->clear();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        GoToFirstHit();
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}
