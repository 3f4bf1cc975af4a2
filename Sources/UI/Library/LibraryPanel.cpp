// SPDX-License-Identifier: MIT
#include "UI/Library/LibraryPanel.h"

#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QUndoStack>
#include <QVBoxLayout>

#include "Log/Log.h"
#include "Model/DeviceListProxy.h"
#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Settings/FixtureLibraryPath.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Library/FixtureConflictBox.h"
#include "UI/Library/LEDDeviceListView.h"
#include "UI/Widgets/ListLook.h"

LibraryPanel::LibraryPanel(const Parts& parts)
    : parts_(parts)
    , actions_(parts.window)
    , contents_(new QWidget)
    , view_(new LEDDeviceListView)
{
    BuildContents();
    view_->setModel(parts_.manager.GetDeviceListProxy());
    view_->SetDeviceManager(&parts_.manager);
    view_->sortByColumn(DeviceModel::ProductColumn, Qt::AscendingOrder);
    actions_.Add({.objectName = "actionImport_fixtures",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "Import Fixtures...")},
                 this, &LibraryPanel::ActionImportFixtures);
    WatchLibrary();
    AskAboutFixturesOfDocuments();
}

LibraryPanel::~LibraryPanel()
{
    DeviceModel::defaultConflictCallback = {};
    view_->setModel(nullptr);
}

// ---- Building ----------------------------------------------------------------------------------

void LibraryPanel::BuildContents()
{
    auto* column = new QVBoxLayout(contents_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    SetUpList(*view_, QStringLiteral("treeView"),
              WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Fixture Library")));
    column->addWidget(view_);
    auto* row = new QHBoxLayout;
    AddButton(QStringLiteral("buttonCustomFixture"),
              WindowText(QT_TRANSLATE_NOOP("WEFTMain", "New...")), *row);
    AddButton(QStringLiteral("buttonEditFixture"),
              WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Edit...")), *row);
    deleteButton_ = AddButton(QStringLiteral("buttonDeleteFixture"),
                              WindowText(QT_TRANSLATE_NOOP("WEFTMain", "Delete")), *row);
    connect(deleteButton_, &QPushButton::clicked, this,
            &LibraryPanel::ActionConfirmDeleteFixtureDialog);
    column->addLayout(row);
}

/// A button that has nothing to act on yet.
QPushButton* LibraryPanel::AddButton(const QString& objectName, const QString& text, QLayout& row)
{
    auto* button = new QPushButton(text);
    button->setObjectName(objectName);
    button->setEnabled(false);
    row.addWidget(button);
    return button;
}

void LibraryPanel::WatchLibrary()
{
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &LibraryPanel::UpdateButtonStatesFromDeviceListSelection);
    connect(parts_.manager.GetDeviceListProxy(), &QAbstractItemModel::modelReset, this,
            &LibraryPanel::UpdateButtonStatesFromDeviceListSelection);
    // An empty list gets all its columns with its first row. Queued: the header must be done first.
    connect(view_->header(), &QHeaderView::sectionCountChanged, this, &LibraryPanel::SetUpColumns,
            Qt::QueuedConnection);
    // Queued: the library is also saved at the start, before the frames run, and nobody may be
    // there to close the box.
    const auto notify = [this](auto signal, const QString& title, const QString& text) {
        connect(
            &parts_.manager, signal, this,
            [this, title, text](const QString& path) {
                parts_.boxes.Notify(&parts_.window, title, text.arg(path));
            },
            Qt::QueuedConnection);
    };
    notify(&DeviceManager::librarySaveFailed, tr("Fixture Library Not Saved"),
           tr("The fixture library could not be saved to %1.\n\nYour change is lost when PixelWeft "
              "ends."));
    notify(&DeviceManager::libraryKeptAside, tr("Fixture Library Not Read"),
           tr("A part of the fixture library could not be read.\n\nThe file as it was is kept as "
              "%1."));
}

void LibraryPanel::AskAboutFixturesOfDocuments()
{
    DeviceModel::defaultConflictCallback = [&boxes = parts_.boxes](const QString& manufacturer,
                                                                   const QString& product) {
        return AskAboutDocumentFixture(boxes, manufacturer, product);
    };
}

void LibraryPanel::UpdateFromProgram()
{
    parts_.manager.MergeLibrary(QStringLiteral(":/wfl/Resources/LEDFixtureLib.wfl"), false,
                                [&boxes = parts_.boxes](const QString&, const QString&) {
                                    return AskAboutLibraryUpdate(boxes);
                                });
}

// ---- The list ----------------------------------------------------------------------------------

void LibraryPanel::SetUpColumns()
{
    view_->SetUpColumns();
}

/// After a fixture went or was replaced. A library that could not be saved stays as it is in
/// memory.
void LibraryPanel::FollowChange(bool saved)
{
    if (saved)
        Reload();
    parts_.undoStack.clear();
}

/// Loads the list from the user's file and sorts it as it was.
void LibraryPanel::Reload()
{
    const QString path = GetFixtureLibraryPath();
    if (path.isEmpty()) {
        ZEN_LOG_INFO("The Fixture Library file could not be found.");
        return;
    }
    parts_.manager.LoadLibrary(path);
    SetUpColumns();
    const int column = view_->header()->sortIndicatorSection();
    const Qt::SortOrder order = view_->header()->sortIndicatorOrder();
    view_->sortByColumn(DeviceModel::ManufacturerColumn, order);
    if (column != DeviceModel::ManufacturerColumn)
        view_->sortByColumn(DeviceModel::ProductColumn, order);
}

void LibraryPanel::SortByProduct()
{
    view_->sortByColumn(DeviceModel::ManufacturerColumn, Qt::AscendingOrder);
    view_->sortByColumn(DeviceModel::ProductColumn, Qt::AscendingOrder);
}

void LibraryPanel::UpdateButtonStatesFromDeviceListSelection()
{
    const QModelIndexList rows = view_->selectionModel()->selectedRows();
    deleteButton_->setEnabled(rows.size() == 1 && rows.first().parent().isValid());
}

// ---- What the operator does --------------------------------------------------------------------

void LibraryPanel::ActionConfirmDeleteFixtureDialog()
{
    const auto fixtureID = view_->CurrentFixtureID();
    const DeviceLedItem* fixture =
        fixtureID ? parts_.manager.GetDeviceModel()->GetLEDFixture(*fixtureID) : nullptr;
    if (!fixture)
        return;
    if (parts_.manager.GetMappedDeviceModel()->IsFixtureUsed(*fixtureID)) {
        parts_.boxes.Notify(&parts_.window, tr("Delete Used Fixture"),
                            tr("This fixture is used in your current mapping file.\n\nIt cannot be "
                               "deleted until you remove it from your mapping."));
        return;
    }
    const QString text = tr("Are you sure you want to delete this fixture from the library?") +
                         tr("\n\nManufacturer: ") + QString::fromStdWString(fixture->manufacturer) +
                         tr("\nProduct: ") + QString::fromStdWString(fixture->product);
    if (!parts_.boxes.Ask(&parts_.window, QString(), text, QMessageBox::Yes))
        return;
    parts_.manager.RemoveFixture(view_->currentIndex());
    view_->clearSelection();
    view_->update();
    ZEN_LOG_INFO("Writing to WFL file...");
    FollowChange(parts_.manager.SaveLibrary());
    parts_.manager.SetDocumentDirty(true);
}

void LibraryPanel::ActionImportFixtures()
{
    const QString file =
        parts_.boxes.OpenFile(&parts_.window, tr("Import Fixtures"), QDir::homePath(),
                              tr("Fixture Library File (*.wfl)"));
    if (file.isEmpty())
        return;
    const bool saved = parts_.manager.MergeLibrary(file, true, {});
    const bool whole = parts_.manager.GetDeviceModel()->WasReadWhole();
    FollowChange(saved);
    if (!whole)
        parts_.boxes.Notify(&parts_.window, tr("Import Fixtures"),
                            tr("%1 could not be read whole. The fixtures that could be read are in "
                               "your library.")
                                .arg(file));
}

void LibraryPanel::RemoveLocalFixtures()
{
    QFile::remove(parts_.manager.GetLibraryPath());
}
