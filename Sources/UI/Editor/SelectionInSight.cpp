// SPDX-License-Identifier: MIT
#include "UI/Editor/SelectionInSight.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include <QItemSelection>
#include <QScrollBar>
#include <QTransform>
#include <QTreeView>

#include "Model/DeviceManager.h"
#include "Model/ElementGeometry.h"
#include "Model/MappedObjectListProxy.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"

SelectionInSight::SelectionInSight(const Parts& parts)
    : parts_(parts)
{}

void SelectionInSight::Follow(bool canvasToo)
{
    const ElementIds now = parts_.scene.SelectedIds();
    ElementIds added;
    std::ranges::set_difference(now, before_, std::back_inserter(added));
    before_ = now;
    // A click on one of many selects nothing new either.
    const ElementIds& wanted = now.size() == 1 ? now : added;
    if (wanted.empty())
        return;
    ShowRows(wanted);
    if (canvasToo)
        ShowElements(wanted);
}

void SelectionInSight::ShowRows(const ElementIds& ids)
{
    QTreeView& list = parts_.list;
    const QItemSelection rows = parts_.manager.GetMappedObjectListProxy()->RowsOf(ids);
    if (rows.isEmpty())
        return;
    const int first = list.indexAt(QPoint(0, 0)).row();
    const QModelIndex below = list.indexAt(QPoint(0, list.viewport()->height() - 1));
    const int last = below.isValid() ? below.row() : list.model()->rowCount();
    const bool anyInSight = std::ranges::any_of(rows, [=](const QItemSelectionRange& range) {
        return range.bottom() >= first && range.top() <= last;
    });
    if (anyInSight)
        return;
    const int across = list.horizontalScrollBar()->value();
    list.scrollTo(list.model()->index(rows.front().top(), 0));
    list.horizontalScrollBar()->setValue(across);
}

void SelectionInSight::ShowElements(const ElementIds& ids)
{
    const QSizeF canvas = parts_.manager.CanvasPixels();
    const auto toScene = QTransform::fromScale(canvas.width(), canvas.height());
    const std::vector<ElementMapping> elements = parts_.manager.GetVideoMappings(ids);
    if (elements.empty())
        return;
    const QRectF seen = parts_.view.PartInSight();
    const auto boxOf = [&toScene](const ElementMapping& element) {
        return toScene.mapRect(ElementGeometry::Bounds(element.video));
    };
    const bool anyInSight = std::ranges::any_of(elements, [&](const ElementMapping& element) {
        return seen.contains(boxOf(element).center());
    });
    if (anyInSight)
        return;
    const QRectF all = toScene.mapRect(ElementGeometry::Bounds(elements));
    const bool fits = all.width() <= seen.width() && all.height() <= seen.height();
    parts_.view.ShowPart(fits ? all : boxOf(elements.front()));
}
