// SPDX-License-Identifier: MIT
#include "UI/Main/ElementList.h"

#include <QHeaderView>

#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"
#include "UI/Editor/WeftMappedObjectTreeView.h"
#include "UI/Widgets/ActionSet.h"
#include "UI/Widgets/ListLook.h"

ElementList::ElementList(DeviceManager& manager)
    : view_(new WeftMappedObjectTreeView)
{
    SetUpList(*view_, QStringLiteral("mappedTreeView"),
              WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Mapped Fixtures")));
    view_->setRootIsDecorated(false);
    view_->setAllColumnsShowFocus(true);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->setModel(manager.GetMappedObjectListProxy());
    view_->sortByColumn(MappedDeviceModel::ManufacturerColumn, Qt::AscendingOrder);
    // An empty list gets all its columns with its first row. Queued: the header must be done first.
    connect(view_->header(), &QHeaderView::sectionCountChanged, this, &ElementList::SetUpColumns,
            Qt::QueuedConnection);
    SetUpColumns();
}

ElementList::~ElementList()
{
    view_->setModel(nullptr);
}

void ElementList::SetUpColumns()
{
    for (int column = 0; column <= MappedDeviceModel::AddressColumn; ++column)
        view_->setColumnHidden(column, column >= MappedDeviceModel::SizeColumn &&
                                           column < MappedDeviceModel::AddressColumn);
    view_->setColumnWidth(MappedDeviceModel::SizeColumn, 50);
}
