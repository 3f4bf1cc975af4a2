// SPDX-License-Identifier: MIT
#include "UI/Library/LibraryPanel.h"

#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QPushButton>
#include <QUndoStack>

#include "Log/Log.h"
#include "Model/DeviceListProxy.h"
#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Settings/FixtureLibraryPath.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Library/LEDDeviceListView.h"

LibraryPanel::LibraryPanel(const Parts& parts)
    : parts_(parts)
{
    LEDDeviceListView& view = parts_.view;
    view.setModel(parts_.manager.GetDeviceListProxy());
    view.SetDeviceManager(&parts_.manager);
    view.sortByColumn(DeviceModel::ProductColumn, Qt::AscendingOrder);
    connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &LibraryPanel::UpdateButtonStatesFromDeviceListSelection);
    connect(parts_.manager.GetDeviceListProxy(), &QAbstractItemModel::modelReset, this,
            &LibraryPanel::UpdateButtonStatesFromDeviceListSelection);
    connect(&parts_.deleteButton, &QPushButton::clicked, this,
            &LibraryPanel::ActionConfirmDeleteFixtureDialog);
    // Queued: the library is also saved at the start, before the frames run, and nobody may be
    // there to press the button.
    const auto tellOf = [this](auto signal, const QString& title, const QString& text) {
        connect(
            &parts_.manager, signal, this,
            [this, title, text](const QString& path) {
                parts_.boxes.Notify(parts_.window, title, text.arg(path));
            },
            Qt::QueuedConnection);
    };
    tellOf(&DeviceManager::librarySaveFailed, tr("Fixture Library Not Saved"),
           tr("The fixture library could not be saved to %1.\n\nYour change is lost when PixelWeft "
              "ends."));
    tellOf(&DeviceManager::libraryKeptAside, tr("Fixture Library Not Read"),
           tr("A part of the fixture library could not be read.\n\nThe file as it was is kept as "
              "%1."));
}

void LibraryPanel::Reload()
{
    const QString path = GetFixtureLibraryPath();
    if (path.isEmpty()) {
        ZEN_LOG_INFO("The Fixture Library file could not be found.");
        return;
    }
    parts_.manager.LoadLibrary(path);
    parts_.view.SetUpColumns();
    const int column = parts_.view.header()->sortIndicatorSection();
    const Qt::SortOrder order = parts_.view.header()->sortIndicatorOrder();
    parts_.view.sortByColumn(DeviceModel::ManufacturerColumn, order);
    if (column != DeviceModel::ManufacturerColumn)
        parts_.view.sortByColumn(DeviceModel::ProductColumn, order);
}

void LibraryPanel::SortByProduct()
{
    parts_.view.sortByColumn(DeviceModel::ManufacturerColumn, Qt::AscendingOrder);
    parts_.view.sortByColumn(DeviceModel::ProductColumn, Qt::AscendingOrder);
}

void LibraryPanel::UpdateButtonStatesFromDeviceListSelection()
{
    const QModelIndexList rows = parts_.view.selectionModel()->selectedRows();
    parts_.deleteButton.setEnabled(rows.size() == 1 && rows.first().parent().isValid());
}

void LibraryPanel::ActionConfirmDeleteFixtureDialog()
{
    const auto fixtureID = parts_.view.CurrentFixtureID();
    const DeviceLedItem* fixture =
        fixtureID ? parts_.manager.GetDeviceModel()->GetLEDFixture(*fixtureID) : nullptr;
    if (!fixture)
        return;
    if (parts_.manager.GetMappedDeviceModel()->IsFixtureUsed(*fixtureID)) {
        parts_.boxes.Notify(parts_.window, tr("Delete Used Fixture"),
                            tr("This fixture is used in your current mapping file.\n\nIt cannot be "
                               "deleted until you remove it from your mapping."));
        return;
    }
    const QString text = tr("Are you sure you want to delete this fixture from the library?") +
                         tr("\n\nManufacturer: ") + QString::fromStdWString(fixture->manufacturer) +
                         tr("\nProduct: ") + QString::fromStdWString(fixture->product);
    if (!parts_.boxes.Ask(parts_.window, QString(), text, QMessageBox::Yes))
        return;
    parts_.manager.RemoveFixture(parts_.view.currentIndex());
    parts_.view.clearSelection();
    parts_.view.update();
    ZEN_LOG_INFO("Writing to WFL file...");
    if (parts_.manager.SaveLibrary())
        Reload();
    parts_.undoStack.clear();
    parts_.manager.SetDocumentDirty(true);
}

void LibraryPanel::ActionImportFixtures()
{
    const QString file = parts_.boxes.OpenFile(
        parts_.window, tr("Import Fixtures"), QDir::homePath(), tr("Fixture Library File (*.wfl)"));
    if (file.isEmpty())
        return;
    parts_.manager.MergeLibrary(file, true, {});
    if (!parts_.manager.GetDeviceModel()->WasReadWhole())
        parts_.boxes.Notify(parts_.window, tr("Import Fixtures"),
                            tr("%1 could not be read whole. The fixtures that could be read are in "
                               "your library.")
                                .arg(file));
}

void LibraryPanel::RemoveLocalFixtures()
{
    QFile::remove(parts_.manager.GetLibraryPath());
}
