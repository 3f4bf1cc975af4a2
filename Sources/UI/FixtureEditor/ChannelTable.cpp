// SPDX-License-Identifier: MIT
#include "UI/FixtureEditor/ChannelTable.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>

namespace {

constexpr int RowHeight = 25;

} // namespace

ChannelTable::ChannelTable(QWidget* parent)
    : QTableWidget(0, 2, parent)
{
    setObjectName(QStringLiteral("personalityTable"));
    setAccessibleName(tr("Channels and their values"));
    setStyleSheet(QStringLiteral("QTableWidget { background-color: transparent; }"));
    setHorizontalHeaderLabels({tr("Channel"), tr("Value")});
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false); // Tab leads on to the buttons
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(RowHeight);
    verticalHeader()->setDefaultSectionSize(RowHeight);
    horizontalHeader()->setFixedHeight(RowHeight);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(ChannelColumn, QHeaderView::Fixed);
    horizontalHeader()->setStretchLastSection(true);
}

void ChannelTable::Show(const FixtureLayout& layout)
{
    const QSignalBlocker blocker(this);
    // A layout loses its pixels when its type changes: a use that is the same has the same name.
    const std::vector<FixtureLayout::ChannelUse> uses = layout.GetChannelUses();
    const PixelMapType type = layout.GetPixelMap().GetType();
    ChangeRows(static_cast<int>(uses.size()));
    for (std::size_t row = 0; row < uses.size(); ++row) {
        if (row >= shown_.size() || uses[row] != shown_[row])
            ShowUse(static_cast<int>(row), uses[row], type);
    }
    shown_ = uses;
}

void ChannelTable::ChangeRows(int count)
{
    const int present = rowCount();
    setRowCount(count);
    for (int row = present; row < count; ++row) {
        auto* channel = new QTableWidgetItem(QString::number(row + 1));
        channel->setFlags(channel->flags() & ~Qt::ItemIsEditable);
        setItem(row, ChannelColumn, channel);
        setItem(row, ValueColumn, new QTableWidgetItem);
    }
}

void ChannelTable::ShowUse(int row, const FixtureLayout::ChannelUse& use, PixelMapType type)
{
    QTableWidgetItem* shown = item(row, ValueColumn);
    if (use.pixel >= 0) {
        const QString name = QString::fromStdWString(PixelComponentName(type, use.component));
        shown->setText(QStringLiteral("%1%2").arg(name).arg(use.pixel + 1));
        shown->setData(Qt::UserRole,
                       ChannelsPerPixel(type) * use.pixel + FirstPixelValue + use.component);
        return;
    }
    shown->setText(use.value == StaticChannel::Unassigned ? tr("Undefined*")
                                                          : QString::number(use.value));
    shown->setData(Qt::UserRole, use.value);
}

// ---- Keyboard and mouse ------------------------------------------------------------------------

/// Of a row only the value can be edited, wherever the operator begins.
bool ChannelTable::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event)
{
    return QTableWidget::edit(index.siblingAtColumn(ValueColumn), trigger, event);
}

/// Return would close the dialog under an operator who goes from value to value.
void ChannelTable::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReturn)
        return QTableWidget::keyPressEvent(event);
    edit(currentIndex(), EditKeyPressed, event);
    event->accept();
}

/// Tab in an editor goes on to the next value that can be edited.
QModelIndex ChannelTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (action != MoveNext && action != MovePrevious)
        return QTableWidget::moveCursor(action, modifiers);
    const int step = action == MoveNext ? 1 : -1;
    for (int row = currentRow() + step; row >= 0 && row < rowCount(); row += step) {
        if (item(row, ValueColumn)->data(Qt::UserRole).toInt() < FirstPixelValue)
            return model()->index(row, ValueColumn);
    }
    return {};
}
