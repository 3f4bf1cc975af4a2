// SPDX-License-Identifier: MIT
#include "UI/Main/ElementList.h"

#include <memory>

#include <QKeyEvent>
#include <QLineEdit>

#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"
#include "Model/Trouble.h"
#include "UI/Commands/AddressCommands.h"
#include "UI/Commands/PushStep.h"
#include "UI/Editor/WeftMappedObjectTreeView.h"
#include "UI/Inspector/DocumentKeys.h"
#include "UI/Widgets/ActionSet.h"
#include "UI/Widgets/ListColumns.h"
#include "UI/Widgets/TroubleDelegate.h"

namespace {

/// The only column that can be edited is that of the descriptions.
class ElementDelegate final : public TroubleDelegate
{
public:
    ElementDelegate(DeviceManager& manager, QUndoStack& undoStack, QObject* parent)
        : TroubleDelegate(TroubleRole, MappedDeviceModel::AddressColumn, parent)
        , manager_(manager)
        , undoStack_(undoStack)
    {}

    /// The document is changed by the command, not by the model of the view.
    void setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const override
    {
        const QModelIndex number = index.siblingAtColumn(MappedDeviceModel::IdentifierColumn);
        const auto* field = qobject_cast<QLineEdit*>(editor);
        if (field)
            PushStep(undoStack_, std::make_unique<DescriptionCommand>(
                                     manager_, ElementIds{number.data(Qt::UserRole).toLongLong()},
                                     field->text().toStdWString()));
    }

protected:
    /// As in the inspector, a key that is a command comes after what was typed.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* editor = qobject_cast<QWidget*>(watched);
        if (!editor || event->type() != QEvent::ShortcutOverride ||
            !DocumentKeys::IsCommand(static_cast<QKeyEvent&>(*event)))
            return TroubleDelegate::eventFilter(watched, event);
        watched->event(event); // which accepts the keys that it has a use for
        if (!event->isAccepted()) {
            emit commitData(editor);
            emit closeEditor(editor);
        }
        return true;
    }

private:
    DeviceManager& manager_;
    QUndoStack& undoStack_;
};

} // namespace

ElementList::ElementList(DeviceManager& manager, QUndoStack& undoStack)
    : view_(new WeftMappedObjectTreeView)
{
    view_->SetNames("mappedTreeView",
                    [] { return WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Mapped Fixtures")); });
    view_->setRootIsDecorated(false);
    view_->setAllColumnsShowFocus(true);
    view_->setModel(manager.GetMappedObjectListProxy());
    view_->setItemDelegate(new ElementDelegate(manager, undoStack, view_));
    QObject::connect(manager.GetMappedDeviceModel(), &MappedDeviceModel::faultsChanged,
                     view_->viewport(), qOverload<>(&QWidget::update));
    view_->sortByColumn(MappedDeviceModel::NameColumn, Qt::AscendingOrder);
    columns_ =
        new ListColumns(*view_, {MappedDeviceModel::NameColumn, MappedDeviceModel::AddressColumn,
                                 MappedDeviceModel::NodeColumn, MappedDeviceModel::ProductColumn,
                                 MappedDeviceModel::ManufacturerColumn});
}

ElementList::~ElementList()
{
    view_->setModel(nullptr);
}
