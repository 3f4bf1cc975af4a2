// SPDX-License-Identifier: MIT
#include "UI/FixtureEditor/ChannelValueDelegate.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStyle>

#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/FixtureEditor/ChannelTable.h"

namespace {

constexpr int LargestConstant = 255;
constexpr auto TextAtStart = "textAtStart";

/// Shows the item of this text. Nothing happens for any other text.
void GoTo(QComboBox& combo, const QString& text)
{
    const int index = combo.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    const QSignalBlocker blocker(&combo);
    if (index >= 0)
        combo.setCurrentIndex(index);
}

} // namespace

ChannelValueDelegate::ChannelValueDelegate(const FixtureLayout& layout, OperatorBoxes& boxes,
                                           QWidget& dialogOfTable)
    : QItemDelegate(&dialogOfTable)
    , dialog(dialogOfTable)
    , layout_(layout)
    , boxes_(boxes)
{
    items.push_back({tr("Undefined*"), StaticChannel::Unassigned});
    for (int value = 0; value <= LargestConstant; ++value)
        items.push_back({QString::number(value), value});
}

// ---- The editor --------------------------------------------------------------------------------

QWidget* ChannelValueDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                            const QModelIndex& index) const
{
    if (index.data(Qt::UserRole).toInt() >= ChannelTable::FirstPixelValue)
        return nullptr;
    auto* combo = new QComboBox(parent);
    combo->setAccessibleName(tr("Value of channel %1").arg(index.row() + 1));
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setCompleter(nullptr); // it would write in what is being typed
    for (const Item& item : items)
        combo->addItem(item.text, item.value);
    combo->setProperty(TextAtStart, index.data());
    connect(combo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ChannelValueDelegate::channelValueChanged);
    connect(combo, &QComboBox::editTextChanged, this, &ChannelValueDelegate::channelTextChanged);
    combo->lineEdit()->installEventFilter(const_cast<ChannelValueDelegate*>(this));
    combo->lineEdit()->selectAll();
    return combo;
}

void ChannelValueDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* combo = qobject_cast<QComboBox*>(editor);
    const QString text = index.data().toString();
    if (!combo || combo->itemText(combo->currentIndex()) == text)
        return; // what is being typed leads there already, and stays as it is
    GoTo(*combo, text);
    combo->lineEdit()->selectAll();
}

void ChannelValueDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                                const QModelIndex&) const
{
    editor->setGeometry(option.rect);
}

void ChannelValueDelegate::channelValueChanged(int)
{
    emit commitData(qobject_cast<QWidget*>(sender()));
}

void ChannelValueDelegate::channelTextChanged(const QString& text)
{
    auto* combo = qobject_cast<QComboBox*>(sender());
    if (!combo || text.isEmpty())
        return;
    if (text.toUpper().contains(QLatin1Char('U'))) {
        const QSignalBlocker blocker(combo);
        combo->setCurrentIndex(0);
        combo->setEditText(items.front().text);
        combo->lineEdit()->selectAll(); // a figure may be next
    } else {
        GoTo(*combo, text);
    }
    emit commitData(combo);
}

bool ChannelValueDelegate::eventFilter(QObject* watched, QEvent* event)
{
    auto* combo = qobject_cast<QComboBox*>(watched);
    if (auto* line = qobject_cast<QLineEdit*>(watched)) {
        if (event->type() != QEvent::MouseButtonDblClick)
            return false;
        line->selectAll();
        return true;
    }
    if (!combo || event->type() != QEvent::KeyPress)
        return QItemDelegate::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        emit closeEditor(combo);
        return true;
    }
    if (key == Qt::Key_Escape) { // what was typed is in the table already
        GoTo(*combo, combo->property(TextAtStart).toString());
        emit commitData(combo);
    }
    return QItemDelegate::eventFilter(watched, event);
}

// ---- The table ---------------------------------------------------------------------------------

void ChannelValueDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                        const QModelIndex& index) const
{
    auto* combo = qobject_cast<QComboBox*>(editor);
    if (!combo)
        return;
    const int value = combo->currentData().toInt();
    const QString text = combo->itemText(combo->currentIndex());
    if (value == index.data(Qt::UserRole).toInt() || value >= ChannelTable::FirstPixelValue)
        return;
    if (!MayOverride(index.row() + 1))
        return GoTo(*combo, index.data().toString());
    model->setData(index, text);
    model->setData(index, value, Qt::UserRole);
}

bool ChannelValueDelegate::MayOverride(int channel) const
{
    return layout_.GetPixelMap().GetPixelForChannel(channel) < 0 ||
           boxes_.Confirm(&dialog, tr("Warning"),
                          tr("There is a pixel mapped on this channel. Do you want to proceed and "
                             "override?"));
}

void ChannelValueDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const
{
    QStyleOptionViewItem shown = option;
    shown.features |= QStyleOptionViewItem::HasDisplay;
    shown.text = index.data().toString();
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &shown, painter);
}
