// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>

#include <QMimeData>
#include <QPoint>

#include "UI/Widgets/DockList.h"

class DeviceLedItem;
class DeviceManager;

/// The list of the fixture library, from which fixtures are dragged to the canvas.
class LEDDeviceListView : public DockList
{
    Q_OBJECT

public:
    explicit LEDDeviceListView(QWidget* parent = nullptr);

    /// `manager` outlives the view; its library's proxy is the view's model by then. Names have the
    /// room that the numbers leave; the columns that only the program reads are hidden.
    void SetDeviceManager(DeviceManager* manager);

    /// Null for an index that is no fixture's.
    [[nodiscard]] const DeviceLedItem* FixtureAt(const QModelIndex& index) const;
    /// The fixture of the only selected row; null for several rows, for none and for a
    /// manufacturer.
    [[nodiscard]] const DeviceLedItem* SelectedFixture() const;
    /// Those of all selected rows; a manufacturer's row stands for all that shows under it.
    [[nodiscard]] std::set<const DeviceLedItem*> SelectedFixtures() const;
    /// What a drag from the row that was pressed last carries, null when it can't be dragged.
    [[nodiscard]] std::unique_ptr<QMimeData> DragData() const;

    static constexpr auto FixtureMimeType = "application/zentriledfixture";

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    DeviceManager* deviceManager_ = nullptr;
    QPoint pressPosition_;
    std::optional<std::int64_t> pressedFixture_;
};
