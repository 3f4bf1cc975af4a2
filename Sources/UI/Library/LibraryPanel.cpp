// SPDX-License-Identifier: MIT
#include "UI/Library/LibraryPanel.h"

#include <utility>

#include <QApplication>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPushButton>
#include <QUndoStack>
#include <QVBoxLayout>

#include "Language/Language.h"
#include "Log/Log.h"
#include "Model/DeviceListProxy.h"
#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Settings/FixtureLibraryPath.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/FixtureImport/ImportFixturesDialog.h"
#include "UI/Library/FixtureConflictBox.h"
#include "UI/Library/LEDDeviceListView.h"
#include "UI/Library/LibraryList.h"

LibraryPanel::LibraryPanel(const Parts& parts)
    : parts_(parts)
    , actions_(parts.window)
    , contents_(new QWidget)
    , list_(new LibraryList(parts.manager))
    , editing_({parts.manager, parts.undoStack, parts.boxes, *list_, parts.window, parts.wait})
    , importing_({parts.manager, parts.undoStack, parts.boxes, *list_, parts.window, parts.wait})
    , export_({parts.manager, parts.boxes, list_->View(), parts.window, parts.wait})
{
    BuildContents();
    actions_.Add({.objectName = "actionImport_fixtures",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "Import &Fixtures...")},
                 this, &LibraryPanel::ActionImportFixtures);
    actions_.Add({.objectName = "actionImport_fixture_folder",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "Import Fixture Fo&lder...")},
                 this, &LibraryPanel::ActionImportFixtureFolder);
    list_->View().addAction(actions_.Add(
        {.objectName = "actionExport_fixtures",
         .text = QT_TRANSLATE_NOOP("WEFTMain", "Export Fixt&ures..."),
         .toolTip = QT_TRANSLATE_NOOP("WEFTMain", "Write the selected fixtures of the library, or "
                                                  "all of them, to a file of their own")},
        this, [this] { export_.Export(); }));
    list_->View().setContextMenuPolicy(Qt::ActionsContextMenu);
    // Queued: the program that the files come from waits for the end of the drop.
    connect(list_, &LibraryList::filesDropped, this, &LibraryPanel::ImportFixtures,
            Qt::QueuedConnection);
    WatchLibrary();
    AskAboutFixturesOfDocuments();
}

LibraryPanel::~LibraryPanel()
{
    DeviceModel::defaultConflictCallback = {};
    list_->Release();
}

// ---- Building ----------------------------------------------------------------------------------

void LibraryPanel::BuildContents()
{
    auto* column = new QVBoxLayout(contents_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(list_);
    auto* row = new QHBoxLayout;
    AddButton("buttonCustomFixture", QT_TRANSLATE_NOOP("WEFTMain", "New..."), *row,
              &LibraryPanel::ActionOpenCustomFixtureDialog);
    editButton_ = AddButton("buttonEditFixture", QT_TRANSLATE_NOOP("WEFTMain", "Edit..."), *row,
                            &LibraryPanel::ActionEditCustomFixtureDialog);
    deleteButton_ = AddButton("buttonDeleteFixture", QT_TRANSLATE_NOOP("WEFTMain", "Delete"), *row,
                              &LibraryPanel::ActionConfirmDeleteFixtureDialog);
    column->addLayout(row);
    UpdateButtonStatesFromDeviceListSelection();
}

QPushButton* LibraryPanel::AddButton(const char* objectName, const char* text, QLayout& row,
                                     void (LibraryPanel::*slot)())
{
    auto* button = new QPushButton;
    button->setObjectName(QLatin1String(objectName));
    InEachLanguage(button, [button, text] { button->setText(WindowText(text)); });
    connect(button, &QPushButton::clicked, this, slot);
    row.addWidget(button);
    return button;
}

void LibraryPanel::WatchLibrary()
{
    connect(list_->View().selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &LibraryPanel::UpdateButtonStatesFromDeviceListSelection);
    connect(parts_.manager.GetDeviceListProxy(), &QAbstractItemModel::modelReset, this,
            &LibraryPanel::UpdateButtonStatesFromDeviceListSelection);
    // Queued: the library is also saved at the start, before the frames run, and nobody may be
    // there to close the box.
    connect(
        &parts_.manager, &DeviceManager::librarySaveFailed, this,
        [this](const QString& path, const QString& reason) {
            if (std::exchange(isTellingOfFailure_, true))
                return; // A start tries it more than once.
            Notify(tr("Fixture Library Not Saved"),
                   tr("The fixture library could not be written to %1.\n\n%2\n\n%3 They are saved "
                      "with the next change if the file can be written then.")
                       .arg(path, reason,
                            QFileInfo::exists(path)
                                ? tr("The file is as it was; your fixtures are kept until "
                                     "PixelWeft ends.")
                                : tr("PixelWeft works with its built-in fixtures and yours in "
                                     "memory until it ends.")));
            isTellingOfFailure_ = false;
        },
        Qt::QueuedConnection);
    connect(
        &parts_.manager, &DeviceManager::libraryKeptAside, this,
        [this](const QString& path) {
            Notify(tr("Fixture Library Not Read"),
                   tr("A part of the fixture library could not be read.\n\nThe file as it was is "
                      "kept as %1.")
                       .arg(path));
        },
        Qt::QueuedConnection);
}

void LibraryPanel::Notify(const QString& title, const QString& text)
{
    // An open editor would hide the box, and the box would wait for it.
    QWidget* dialog = QApplication::activeModalWidget();
    parts_.boxes.Notify(dialog ? dialog : &parts_.window, title, text);
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
    parts_.manager.MergeLibrary(BuiltInLibraryPath, false,
                                [&boxes = parts_.boxes](const QString&, const QString&) {
                                    return AskAboutLibraryUpdate(boxes);
                                });
}

// ---- The list ----------------------------------------------------------------------------------

void LibraryPanel::FollowLibrary()
{
    list_->FollowLibrary();
}

void LibraryPanel::UpdateButtonStatesFromDeviceListSelection()
{
    const bool isFixture = list_->View().SelectedFixture() != nullptr;
    editButton_->setEnabled(isFixture);
    deleteButton_->setEnabled(isFixture);
}

// ---- What the operator does --------------------------------------------------------------------

void LibraryPanel::ActionOpenCustomFixtureDialog()
{
    editing_.MakeFixture();
}

void LibraryPanel::ActionEditCustomFixtureDialog()
{
    editing_.EditSelected();
}

/// Tells the operator when the document uses the fixture.
bool LibraryPanel::MayDelete(const DeviceLedItem& fixture)
{
    if (!parts_.manager.GetMappedDeviceModel()->IsFixtureUsed(fixture.uniqueID))
        return true;
    parts_.boxes.Notify(&parts_.window, tr("Delete Used Fixture"),
                        tr("This fixture is used in your current mapping file.\n\nIt cannot be "
                           "deleted until you remove it from your mapping."));
    return false;
}

void LibraryPanel::ActionConfirmDeleteFixtureDialog()
{
    LEDDeviceListView& view = list_->View();
    const DeviceLedItem* fixture = view.SelectedFixture();
    if (!fixture || !MayDelete(*fixture))
        return;
    const std::wstring product = fixture->product;
    QPersistentModelIndex row = view.selectionModel()->selectedRows().front();
    const QString text =
        tr("Are you sure you want to delete this fixture from the library?\n\n"
           "Manufacturer: %1\nProduct: %2")
            .arg(QString::fromStdWString(fixture->manufacturer), QString::fromStdWString(product));
    if (!parts_.boxes.Ask(&parts_.window, tr("Delete Fixture"), text, QMessageBox::Cancel))
        return;
    // Behind the question the library may have been loaded again, without the fixture even, or a
    // document that uses it.
    if (!row.isValid())
        row = list_->RowOf(product);
    fixture = view.FixtureAt(row);
    if (!fixture || !MayDelete(*fixture))
        return;
    parts_.manager.RemoveFixture(row);
    view.clearSelection();
    view.update();
    ZEN_LOG_INFO("Writing to WFL file...");
    list_->FollowChange(parts_.manager.SaveLibrary(parts_.wait));
    parts_.undoStack.clear();
    parts_.manager.SetDocumentDirty(true);
}

void LibraryPanel::ActionImportFixtures()
{
    const QStringList files = AskForFixtureFiles(parts_.boxes, &parts_.window);
    if (files.size() == 1 && files.front().endsWith(QLatin1String(".wfl"), Qt::CaseInsensitive))
        ImportLibrary(files.front());
    else if (!files.isEmpty())
        ImportFixtures(files);
}

void LibraryPanel::ImportFixtures(const QStringList& paths)
{
    importing_.Import(paths);
}

void LibraryPanel::ActionImportFixtureFolder()
{
    const QString folder = parts_.boxes.ChooseDirectory(&parts_.window, tr("Import Fixtures"));
    if (!folder.isEmpty())
        ImportFixtures({folder});
}

void LibraryPanel::ImportLibrary(const QString& file)
{
    const QByteArray before = parts_.manager.ReadLibraryFile();
    const bool saved = parts_.manager.MergeLibrary(file, true, {}, parts_.wait);
    const bool whole = parts_.manager.GetDeviceModel()->WasReadWhole();
    list_->FollowChange(saved);
    if (!saved || parts_.manager.ReadLibraryFile() != before)
        parts_.undoStack.clear();
    if (!whole)
        parts_.boxes.Notify(&parts_.window, tr("Import Fixtures"),
                            tr("%1 could not be read whole. The fixtures that could be read are in "
                               "your library.")
                                .arg(file));
}

void LibraryPanel::RestoreBuiltInFixtures()
{
    if (!parts_.manager.ReplaceLibrary(BuiltInLibrary(), parts_.wait))
        return;
    parts_.undoStack.clear();
    list_->FollowLibrary();
}
