// SPDX-License-Identifier: MIT
#include "UI/Main/WEFTMain.h"

#include <utility>

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>
#include <QUndoStack>
#include <QUndoView>

#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Model/MappedObjectListProxy.h"
#include "Platform/IPv4.h"
#include "Settings/ApplicationMode.h"
#include "Settings/ExternalServerPreferences.h"
#include "Settings/FixtureLibraryPath.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Editor/EditorActions.h"
#include "UI/Editor/EditorController.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Editor/WeftMappedObjectTreeView.h"
#include "UI/Library/FixtureConflictBox.h"
#include "UI/Library/LEDDeviceListView.h"
#include "UI/Library/LibraryPanel.h"
#include "UI/Main/DocumentLife.h"
#include "UI/Network/HostSettings.h"
#include "UI/Network/NetworkChoice.h"
#include "UI/Network/NetworkPanel.h"
#include "UI/Main/SelectionModeButton.h"
#include "UI/Main/Startup.h"
#include "UI/Main/UnsavedWork.h"
#include "UI/Main/ZoomControls.h"
#include "UI/TestPattern/LEDTestPatternControl.h"

namespace {

constexpr int NodesMilliseconds = 1000;
constexpr int NetworkMilliseconds = 3000;
/// After a tick the frame is still on its way through the I/O thread, which may wait for the very
/// processor that we run on: the system may leave it to us for 4 ms.
constexpr int PauseAfterTickMilliseconds = 5;
constexpr int NewCanvasSize = 100;
constexpr int UndoLimit = 10;
constexpr QPoint DefaultPosition(200, 200);

QString BareTitle()
{
    return QStringLiteral("Zentri PixelWeft 3.2.5");
}

QString DefaultLibrary()
{
    return QStringLiteral(":/wfl/Resources/LEDFixtureLib.wfl");
}

} // namespace

WEFTMain::WEFTMain(OperatorBoxes& boxes)
    : boxes_(boxes)
    , notices_([&boxes](const OperatorNotices::Notice& notice) {
        boxes.Notify(notice.parent, notice.title, notice.text);
    })
    , preferencesDialog_(this)
{
    Startup::ReadApplicationMode();
    Startup::InstallServices();
    Startup::StartLogOfMode();
    ZEN_LOG_INFO("**************************************************");
    DeviceModel::defaultConflictCallback = [&boxes](const QString& manufacturer,
                                                    const QString& product) {
        return AskAboutDocumentFixture(boxes, manufacturer, product);
    };
    BuildParts();
    QCoreApplication::setOrganizationName(QStringLiteral("Zentri"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("pixelweft.invalid"));
    QCoreApplication::setApplicationName(QStringLiteral("PixelWeft2"));
    form_.SetUp(*this);
    LoadTestPicture();
    BuildTestPattern();
    BuildUndo();
    BuildCanvas();
    BuildLists();
    BuildEditor();
    BuildDocument();
    Wire();
    BuildToolBar();
    LoadWindowSettings();
    FindDocument();
    deviceManager_->MergeLibrary(DefaultLibrary(), false, [&boxes](const QString&, const QString&) {
        return AskAboutLibraryUpdate(boxes);
    });
    BuildTimers();
    setWindowTitle(BareTitle());
}

WEFTMain::~WEFTMain()
{
    form_.treeView->setModel(nullptr);
    testPattern_.reset();
    undoView_.reset();
    unsavedWork_.reset();
    Startup::FreeServices();
    hostSettings_.reset();
    document_.reset();
    frameLoop_.reset();
    engine_->ReleaseElements();
    network_.reset();
    engine_.reset();
    undoStack_->clear();
    editor_.reset();
    scene_.reset();
    // The view reads the size of the canvas until it goes.
    delete takeCentralWidget();
    libraryPanel_.reset();
    form_.mappedTreeView->setModel(nullptr);
    form_.artNetNodes->setModel(nullptr);
    deviceManager_.reset();
    nodeModel_.reset();
    DeviceModel::defaultConflictCallback = {};
}

// ---- Building ----------------------------------------------------------------------------------

void WEFTMain::BuildParts()
{
    deviceManager_ = std::make_unique<DeviceManager>(GetFixtureLibraryPath());
    deviceManager_->Initialize();
    deviceManager_->LoadLibrary(GetFixtureLibraryPath());
    engine_ = std::make_unique<LEDEngine>(*deviceManager_);
    nodeModel_ = std::make_unique<ArtNetNodeModel>();
    frameLoop_ = std::make_unique<FrameLoop>(*deviceManager_, *engine_, selectionSet);
    network_ = std::make_unique<NetworkChoice>(GetIPRange::Instance(), settings_, *deviceManager_,
                                               *engine_, [this](const QString& text) {
                                                   notices_.Tell({nullptr, QString(), text});
                                               });
    preferences_ = std::make_unique<ExternalServerPreferences>();
    network_->SetHostPreferences(preferences_.get());
    hostSettings_ = std::make_unique<HostSettings>(*preferences_, *network_);
}

void WEFTMain::LoadTestPicture()
{
    MappedDeviceModel& document = *deviceManager_->GetMappedDeviceModel();
    document.SetSettings(&settings_);
    const QImage picture(settings_.visualFile);
    if (!picture.isNull())
        document.SetTestImage(picture);
    deviceManager_->SetCanvasSize(NewCanvasSize, NewCanvasSize);
    engine_->CreateElements(NewCanvasSize, NewCanvasSize);
}

void WEFTMain::BuildTestPattern()
{
    testPattern_ = std::make_unique<LEDTestPatternControl>();
    connect(testPattern_.get(), &LEDTestPatternControl::testPatternChange, this,
            &WEFTMain::SetTestPatternImage);
    testPattern_->Update();
}

void WEFTMain::BuildUndo()
{
    undoStack_ = new QUndoStack(this);
    undoStack_->setUndoLimit(UndoLimit);
    undoView_ = std::make_unique<QUndoView>(undoStack_);
    undoView_->setWindowTitle(tr("Command List"));
    undoView_->setAttribute(Qt::WA_QuitOnClose, false);

    undoAction_ = undoStack_->createUndoAction(this, tr("&Undo"));
    undoAction_->setObjectName(QStringLiteral("actionUndo"));
    undoAction_->setShortcut(QKeySequence::Undo);
    undoAction_->setIcon(ActionIcon("icon_undo.png"));
    redoAction_ = undoStack_->createRedoAction(this, tr("&Redo"));
    redoAction_->setObjectName(QStringLiteral("actionRedo"));
    redoAction_->setShortcut(QKeySequence::Redo);
    redoAction_->setIcon(ActionIcon("icon_redo.png"));
    QAction* selectAll = form_.Action(ActionId::SelectAll);
    form_.menuEdit->insertAction(selectAll, redoAction_);
    form_.menuEdit->insertAction(selectAll, undoAction_);
    form_.menuEdit->insertSeparator(selectAll);
}

void WEFTMain::BuildCanvas()
{
    scene_ = std::make_unique<WeftMapEditorScene>(*deviceManager_, display_, *undoStack_);
    scene_->SetTestPatternImage(*testPattern_->GetPixmap());
    scene_->SetCanvasSize(NewCanvasSize, NewCanvasSize);
    form_.mappingEditorView->setScene(scene_.get());
    form_.mappingEditorView->SetUp(display_, *deviceManager_);
}

void WEFTMain::BuildLists()
{
    libraryPanel_ = std::make_unique<LibraryPanel>(LibraryPanel::Parts{
        *deviceManager_, *form_.treeView, *form_.buttonDeleteFixture, *undoStack_, boxes_, this});
    form_.mappedTreeView->setModel(deviceManager_->GetMappedObjectListProxy());
    form_.mappedTreeView->sortByColumn(MappedDeviceModel::ManufacturerColumn, Qt::AscendingOrder);
    form_.artNetNodes->setModel(nodeModel_.get());
    form_.artNetNodes->sortByColumn(1, Qt::AscendingOrder);
    // A list that was empty has all its columns with its first row, and no use for them before the
    // header is done.
    for (const QTreeView* list :
         std::initializer_list<const QTreeView*>{form_.treeView, form_.mappedTreeView})
        connect(list->header(), &QHeaderView::sectionCountChanged, this,
                &WEFTMain::SetUpListColumns, Qt::QueuedConnection);
    SetUpListColumns();
}

void WEFTMain::BuildEditor()
{
    editor_ = std::make_unique<EditorController>(EditorController::Parts{
        *deviceManager_, *undoStack_, *scene_, *form_.mappingEditorView, *form_.mappedTreeView});
    EditorActions actions;
    actions.canvasSize = form_.Action(ActionId::CanvasSize);
    actions.copy = form_.Action(ActionId::Copy);
    actions.paste = form_.Action(ActionId::Paste);
    actions.duplicate = form_.Action(ActionId::DuplicateElement);
    actions.remove = form_.Action(ActionId::Delete);
    actions.align = form_.menuAlign;
    actions.rotate = form_.menuRotate_2;
    actions.undo = undoAction_;
    actions.redo = redoAction_;
    scene_->SetActions(actions);
    actions.remove->setEnabled(false);
}

void WEFTMain::SetUpListColumns()
{
    form_.treeView->SetUpColumns();
    QTreeView& mapped = *form_.mappedTreeView;
    for (int column = 0; column <= MappedDeviceModel::AddressColumn; ++column)
        mapped.setColumnHidden(column, column >= MappedDeviceModel::SizeColumn &&
                                           column < MappedDeviceModel::AddressColumn);
    mapped.setColumnWidth(MappedDeviceModel::SizeColumn, 50);
}

void WEFTMain::BuildDocument()
{
    document_ = std::make_unique<DocumentLife>(
        DocumentLife::Parts{*deviceManager_, *nodeModel_, *network_, settings_, display_, *scene_,
                            *undoStack_, boxes_, notices_, this});
    unsavedWork_ = std::make_unique<UnsavedWork>(*deviceManager_, *nodeModel_);
}

void WEFTMain::BuildToolBar()
{
    selectionModeButton_ =
        new SelectionModeButton(*deviceManager_, {form_.Action(ActionId::SelectionModeNone),
                                                  form_.Action(ActionId::SelectionModeSolid),
                                                  form_.Action(ActionId::SelectionModeFlash)});
    form_.toolBar->insertWidget(form_.Action(ActionId::DisplayPixelGrid), selectionModeButton_);
    networkPanel_ = new NetworkPanel({GetIPRange::Instance(), *network_, *deviceManager_,
                                      *nodeModel_, *engine_, *preferences_, *form_.toolBar, this});
    connect(document_.get(), &DocumentLife::cleared, networkPanel_, &NetworkPanel::ShowMerging);
    connect(document_.get(), &DocumentLife::loaded, networkPanel_, &NetworkPanel::ShowMerging);
    connect(hostSettings_.get(), &HostSettings::artNetDMXInputSettingsChanged, networkPanel_,
            &NetworkPanel::artNetDMXInputSettingsChanged);
}

void WEFTMain::BuildTimers()
{
    engineTimer = new QTimer(this);
    engineTimer->setTimerType(Qt::PreciseTimer);
    engineTimer->setInterval(FrameLoop::TickMilliseconds);
    nodesTimer = new QTimer(this);
    nodesTimer->setTimerType(Qt::PreciseTimer);
    nodesTimer->setInterval(NodesMilliseconds);
    networkTimer = new QTimer(this);
    networkTimer->setTimerType(Qt::CoarseTimer);
    networkTimer->setInterval(NetworkMilliseconds);
    connect(engineTimer, &QTimer::timeout, this, &WEFTMain::UpdateEngine);
    connect(nodesTimer, &QTimer::timeout, this, [this] { nodesDue_ = true; });
    connect(networkTimer, &QTimer::timeout, network_.get(), &NetworkChoice::CheckNetworkUpdates);
}

void WEFTMain::Wire()
{
    for (const ActionRow& row : ActionTable()) {
        if (row.slot)
            connect(form_.Action(row.id), &QAction::triggered, this,
                    [this, slot = row.slot] { (this->*slot)(); });
    }
    connect(deviceManager_.get(), &DeviceManager::mappingsChanged, this,
            &WEFTMain::updateLEDEngine);
    connect(deviceManager_->GetMappedDeviceModel(), &MappedDeviceModel::mappingsChanged, this,
            &WEFTMain::updateLEDEngine);
    connect(deviceManager_.get(), &DeviceManager::signalDocumentSavedState, this,
            &WEFTMain::DocumentSavedStateUpdated);
    connect(network_.get(), &NetworkChoice::networkChanged, this, &WEFTMain::RebuildNodeRows);
    connect(network_.get(), &NetworkChoice::networkChanged, this, &WEFTMain::ProcessNodesList);
    // The ports of a node are always in sight.
    connect(nodeModel_.get(), &ArtNetNodeModel::rowsInserted, form_.artNetNodes,
            [this](const QModelIndex& parent, int first, int last) {
                form_.artNetNodes->expand(parent);
                for (int row = first; row <= last; ++row)
                    form_.artNetNodes->expand(nodeModel_->index(row, 0, parent));
            });
    connect(&preferencesDialog_, &WEFTDialogPreferences::resetFixturesConfirmed, this,
            &WEFTMain::RemoveLocalFixturesAndReset);
    zoom_ = new ZoomControls(display_, settings_, this);
    form_.toolBar->insertWidget(form_.Action(ActionId::ZoomIn), zoom_->Combo());
    WireCanvas();
    WireDocument();
    WireHost();
}

void WEFTMain::WireCanvas()
{
    WeftMapEditorView& view = *form_.mappingEditorView;
    connect(zoom_, &ZoomControls::zoomChanged, &view, &WeftMapEditorView::UpdateMatrix);
    connect(&view, &WeftMapEditorView::updateZoomWidgets, zoom_, &ZoomControls::UpdateZoomWidgets);
    connect(view.GetNextImageButton(), &QPushButton::clicked, this, &WEFTMain::ActionNextTestImage);
    connect(view.GetPreviousImageButton(), &QPushButton::clicked, this,
            &WEFTMain::ActionPreviousTestImage);
    connect(testPattern_.get(), &LEDTestPatternControl::testPatternChange, scene_.get(),
            [this](const QPixmap* picture) {
                if (picture)
                    scene_->SetTestPatternImage(*picture);
            });
    connect(editor_.get(), &EditorController::selectionHasChanged, this, &WEFTMain::ReadSelection);
    connect(network_.get(), &NetworkChoice::networkChanged, scene_.get(),
            &WeftMapEditorScene::RefreshAutoMarks);
    // Queued: the program that the file is dragged from waits for the end of the drop, not for our
    // questions.
    connect(scene_.get(), &WeftMapEditorScene::importRequested, document_.get(),
            &DocumentLife::ImportFile, Qt::QueuedConnection);
}

void WEFTMain::WireDocument()
{
    connect(document_.get(), &DocumentLife::FileSaved, &engine_->GetTrigger(),
            &ArtNetTrigger::reloadMappingFile);
    connect(document_.get(), &DocumentLife::cleared, this, &WEFTMain::SetUpListColumns);
    connect(document_.get(), &DocumentLife::loaded, this, [this] {
        libraryPanel_->SortByProduct();
        SetUpListColumns();
    });
    connect(document_.get(), &DocumentLife::canvasSizeChanged, form_.mappingEditorView,
            &WeftMapEditorView::CanvasChanged);
}

void WEFTMain::WireHost()
{
    connect(&engine_->GetTrigger(), &ArtNetTrigger::artNetDMXInputSettingsReceived,
            hostSettings_.get(), &HostSettings::artNetDMXInputSettingsReceived);
    connect(hostSettings_.get(), &HostSettings::usedUniversesReceived, scene_.get(),
            &WeftMapEditorScene::usedUniversesChanged);
}

// ---- Start and end -----------------------------------------------------------------------------

void WEFTMain::LoadWindowSettings()
{
    const QSettings* store = settings_.Load();
    resize(store->value(QStringLiteral("lastSize"), QSize(1024, 600)).toSize());
    move(store->value(QStringLiteral("lastPosition"), DefaultPosition).toPoint());
    // The screen that it stood on may be gone.
    if (!QGuiApplication::screenAt(geometry().center()))
        move(DefaultPosition);
    testPattern_->ReadSettings(*store);
    display_.Read(*store);
    zoom_->UpdateZoomWidgets();
    display_.showGrid = settings_.showGrid;
    form_.Action(ActionId::DisplayPixelGrid)->setChecked(settings_.showGrid);
    display_.snapToGrid = settings_.snapToGrid;
    form_.Action(ActionId::SnapToGrid)->setChecked(settings_.snapToGrid);
    editor_->SetZoomStyle(settings_.zoomStyle);
    form_.mappingEditorView->UpdateMatrix();
    testPattern_->Update();
}

void WEFTMain::SaveWindowSettings()
{
    QSettings* store = settings_.SaveInterfaceKeys();
    if (!store)
        return;
    store->setValue(QStringLiteral("lastPosition"), pos());
    store->setValue(QStringLiteral("lastSize"), size());
    store->setValue(QStringLiteral("lastInnerSize"), form_.centralwidget->width());
    testPattern_->WriteSettings(*store);
    display_.Write(*store);
    store->sync();
}

QString WEFTMain::GetHostName() const
{
    return ApplicationMode::Instance().HostName();
}

void WEFTMain::FindDocument()
{
    document_->SetMappingFilePath(preferences_->Load()
                                      ? QString::fromStdWString(preferences_->mappingPath)
                                      : Startup::AskForDocumentPath(boxes_));
}

void WEFTMain::LoadFirstDocument()
{
    document_->LoadFirst();
    libraryPanel_->SortByProduct();
}

void WEFTMain::GuardUnsavedWork()
{
    notices_.Show(); // in the order in which they came up
    OfferUnsavedWork();
    unsavedWork_->Watch(document_->GetMappingFilePath());
}

void WEFTMain::OfferUnsavedWork()
{
    const QString path = document_->GetMappingFilePath();
    const QString kept = UnsavedWork::FileFor(path);
    if (!UnsavedWork::IsLeftOver(path)) {
        QFile::remove(kept);
        return;
    }
    const QString when = QLocale().toString(QFileInfo(kept).lastModified(), QLocale::ShortFormat);
    OperatorBoxes::Choice choice;
    choice.icon = QMessageBox::Question;
    choice.title = tr("Unsaved Work Found");
    choice.text = tr("PixelWeft ended before your last changes were saved. They were kept on %1."
                     "\n\nDo you want to go on with them?")
                      .arg(when);
    choice.buttons = QStringList{tr("Restore"), tr("Discard")};
    // Escape loses nothing: what is restored is unsaved until the operator saves it.
    choice.onEscape = 0;
    const int answer = boxes_.Choose(choice);
    if (answer == 1)
        QFile::remove(kept);
    if (answer != 0)
        return;
    if (document_->ImportFile(kept))
        return;
    if (KeepUnreadableFile(kept).isEmpty())
        ZEN_LOG_ERROR("The unsaved work can't be read");
    document_->LoadFirst();
}

void WEFTMain::StartTimers()
{
    engineTimer->start();
    nodesTimer->start();
    networkTimer->start();
}

void WEFTMain::closeEvent(QCloseEvent* event)
{
    if (!document_->MayClose()) {
        if (event)
            event->ignore();
        return;
    }
    unsavedWork_->Discard();
    SaveWindowSettings();
    if (event)
        event->accept();
    QCoreApplication::quit();
}

void WEFTMain::ActionQuit()
{
    closeEvent(nullptr);
}

// ---- The run loop ------------------------------------------------------------------------------

void WEFTMain::UpdateEngine()
{
    engineTimer->setInterval(frameLoop_->Tick());
    QTimer::singleShot(PauseAfterTickMilliseconds, this, &WEFTMain::WorkBetweenTicks);
}

// What a thousand nodes take, some 8 ms at a time, must not stand in the way of a tick.
void WEFTMain::WorkBetweenTicks()
{
    if (std::exchange(nodesDue_, false))
        ProcessNodesList();
    else if (std::exchange(nodeRowsDue_, false))
        RebuildNodeRows();
    else
        nodeModel_->WriteWaitingRows();
}

void WEFTMain::RebuildNodeRows()
{
    nodeModel_->Rebuild(*deviceManager_->GetMappedDeviceModel(), form_.artNetNodes,
                        Platform::ParseIPv4(network_->GetNetworkBroadcast()).value_or(0));
}

void WEFTMain::ProcessNodesList()
{
    nodeRowsDue_ = engine_->UpdateNodeList(*nodeModel_) || nodeRowsDue_;
}

void WEFTMain::updateLEDEngine()
{
    const MappedDeviceModel& document = *deviceManager_->GetMappedDeviceModel();
    const bool created =
        engine_->CreateElements(document.GetCanvasWidth(), document.GetCanvasHeight());
    // Once, however often the document tells its changes.
    if (!created && !std::exchange(engineFailed_, true))
        boxes_.Notify(this, QString(),
                      tr("The DMX output engine could not be initialised. Is there another "
                         "instance running?"));
    engineFailed_ = !created;
}

void WEFTMain::ReadSelection()
{
    selectionSet.clear();
    for (const QPersistentModelIndex& index : scene_->SelectedIndexes())
        selectionSet.insert(index);
}

void WEFTMain::DocumentSavedStateUpdated(bool saved)
{
    setWindowTitle(QStringLiteral("%1 (%2)").arg(BareTitle(), saved ? tr("saved") : tr("unsaved")));
    form_.Action(ActionId::Save)->setEnabled(!saved);
}
