// SPDX-License-Identifier: MIT
#include "UI/Widgets/ListColumns.h"

#include <algorithm>
#include <utility>

#include <QDataStream>
#include <QHeaderView>
#include <QIODevice>
#include <QScopedValueRollback>
#include <QSettings>
#include <QTreeView>

#include "Language/Language.h"

namespace {

/// Grows when the columns of a list come, go or mean something else.
constexpr qint32 Version = 1;
constexpr int LeastWidth = 24;
constexpr int GreatestWidth = 800;
/// So many rows are measured: some thousand would delay a frame.
constexpr int MeasuredRows = 200;

} // namespace

ListColumns::ListColumns(QTreeView& view, std::vector<int> shown)
    : QObject(&view)
    , view_(view)
    , shown_(std::move(shown))
{
    QHeaderView& header = *view_.header();
    header.setStretchLastSection(false);
    header.setResizeContentsPrecision(MeasuredRows);
    ShowColumns();
    Reset();
    connect(&header, &QHeaderView::sectionResized, this,
            [this] { keeps_ = keeps_ || !isFitting_; });
    fitsSoon_.setSingleShot(true);
    connect(&fitsSoon_, &QTimer::timeout, this, [this] { Fit(std::exchange(replaced_, false)); });
    connect(view_.model(), &QAbstractItemModel::rowsInserted, &fitsSoon_,
            qOverload<>(&QTimer::start));
    connect(view_.model(), &QAbstractItemModel::dataChanged, &fitsSoon_,
            qOverload<>(&QTimer::start));
    const auto fitAll = [this] {
        replaced_ = true;
        fitsSoon_.start();
    };
    connect(view_.model(), &QAbstractItemModel::modelReset, this, fitAll);
    connect(&Language::Instance(), &Language::changed, this, fitAll);
}

QString ListColumns::Key() const
{
    return QStringLiteral("columns/") + view_.objectName();
}

void ListColumns::ShowColumns()
{
    for (int column = 0; column < view_.model()->columnCount(); ++column)
        view_.setColumnHidden(column, std::ranges::find(shown_, column) == shown_.end());
}

void ListColumns::Fit(bool mayShrink)
{
    if (keeps_)
        return;
    const QScopedValueRollback<bool> guard(isFitting_, true);
    for (const int column : shown_) {
        const int before = view_.columnWidth(column);
        view_.resizeColumnToContents(column);
        const int least = mayShrink ? LeastWidth : before;
        view_.setColumnWidth(column, std::clamp(view_.columnWidth(column), least, GreatestWidth));
    }
}

void ListColumns::Reset()
{
    for (std::size_t place = 0; place < shown_.size(); ++place)
        view_.header()->moveSection(view_.header()->visualIndex(shown_[place]),
                                    static_cast<int>(place));
    keeps_ = false;
    Fit(true);
}

void ListColumns::Read(const QSettings& store)
{
    QDataStream stream(store.value(Key()).toByteArray());
    qint32 version = 0;
    bool keeps = false;
    QByteArray header;
    stream >> version >> keeps >> header;
    const QScopedValueRollback<bool> guard(isFitting_, true);
    if (stream.status() != QDataStream::Ok || version != Version ||
        !view_.header()->restoreState(header))
        return;
    keeps_ = keeps;
    ShowColumns();
    for (const int column : shown_)
        view_.setColumnWidth(column,
                             std::clamp(view_.columnWidth(column), LeastWidth, GreatestWidth));
}

void ListColumns::Write(QSettings& store) const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << Version << keeps_ << view_.header()->saveState();
    store.setValue(Key(), bytes);
}
