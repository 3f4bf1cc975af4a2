// SPDX-License-Identifier: MIT
#include "UI/Main/WEFTMain.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include <QApplication>
#include <QCloseEvent>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QTreeView>
#include <QUndoView>

#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "Language/Language.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"
#include "Model/UnsavedWork.h"
#include "Settings/ExternalServerPreferences.h"
#include "Settings/FixtureLibraryPath.h"
#include "UI/Commands/SavedState.h"
#include "UI/Dialogs/OperatorBoxes.h"
#include "UI/Dialogs/WEFTAboutDialog.h"
#include "UI/Dialogs/WEFTDialogPreferences.h"
#include "UI/Editor/EditorActionSet.h"
#include "UI/Editor/EditorController.h"
#include "UI/Editor/WeftMapEditorScene.h"
#include "UI/Editor/WeftMapEditorView.h"
#include "UI/Editor/WeftMappedObjectTreeView.h"
#include "UI/Inspector/InspectorPanel.h"
#include "UI/Library/LibraryPanel.h"
#include "UI/Main/DisplayControls.h"
#include "UI/Main/DocumentLife.h"
#include "UI/Main/ElementList.h"
#include "UI/Main/FilesToOpen.h"
#include "UI/Main/IdentifyInWindow.h"
#include "UI/Main/InspectorInWindow.h"
#include "UI/Main/MainWindowForm.h"
#include "UI/Main/OutputInWindow.h"
#include "UI/Main/PixelInspector.h"
#include "UI/Main/SaveTroubleLabel.h"
#include "UI/Main/SelectionModeButton.h"
#include "UI/Main/Startup.h"
#include "UI/Main/StatusLine.h"
#include "UI/Network/HostSettings.h"
#include "UI/Network/NetworkChoice.h"
#include "UI/Network/NetworkPanel.h"
#include "UI/Network/NodeList.h"
#include "UI/PatchSheet/PatchExport.h"
#include "UI/Repatch/Repatching.h"
#include "UI/TestPattern/LEDTestPatternControl.h"
#include "UI/TestPattern/TestPatternPanel.h"
#include "UI/Widgets/DeskLook.h"
#include "UI/Widgets/ListColumns.h"
#include "UI/Widgets/Version.h"

namespace {

constexpr int NodesMilliseconds = 1000;
constexpr int NetworkMilliseconds = 3000;
/// After a tick the I/O thread still sends the frame, and may have to wait for this processor: the
/// scheduler may leave it to us for 4 ms.
constexpr int PauseAfterTickMilliseconds = 5;
/// As long as it takes to look up from the stage.
constexpr int StatusMilliseconds = 30'000;
constexpr int NewCanvasSize = 100;
constexpr int UndoLimit = 10;
constexpr QPoint DefaultPosition(200, 200);
constexpr QSize DefaultSize(1024, 600);

} // namespace

WEFTMain::WEFTMain(OperatorBoxes& boxes)
    : boxes_(boxes)
    , notices_([this](const OperatorNotices::Notice& notice) { ShowNotice(notice); })
    , actions_(*this)
    , undoStack_(this)
{
    Language::Instance().Use(settings_.language);
    Startup::ReadApplicationMode();
    services_ = std::make_unique<ServicesInUse>();
    Startup::StartLogOfMode();
    ZEN_LOG_INFO("**************************************************");
    BuildParts();
    QCoreApplication::setOrganizationName(QStringLiteral("Zentri"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("pixelweft.invalid"));
    QCoreApplication::setApplicationName(QStringLiteral("PixelWeft2"));
    UseLook(settings_.nightLook ? NightLook() : GreyLook());
    form_ = std::make_unique<MainWindowForm>(*this);
    BuildTestPattern();
    BuildDocks();
    BuildCanvas();
    BuildDocument();
    WireEngine();
    WireCanvas();
    WireDocument();
    WireSaveTrouble();
    WireHost();
    BuildToolBar();
    LoadWindowSettings();
    FindDocument();
    libraryPanel_->UpdateFromProgram();
    BuildTimers();
    setWindowTitle(ProgramTitle());
    connect(&Language::Instance(), &Language::changed, this, [this] {
        if (windowTitle() != ProgramTitle())
            DocumentSavedStateUpdated(!deviceManager_->documentDirty);
    });
}

// The order of the members is the order of the end.
WEFTMain::~WEFTMain() = default;

// ---- Building ----------------------------------------------------------------------------------

void WEFTMain::BuildParts()
{
    deviceManager_ = std::make_unique<DeviceManager>(GetFixtureLibraryPath());
    deviceManager_->Initialize();
    deviceManager_->LoadLibrary(GetFixtureLibraryPath());
    engine_ = std::make_unique<LEDEngine>(*deviceManager_);
    nodeModel_ = std::make_unique<ArtNetNodeModel>();
    frameLoop_ = std::make_unique<FrameLoop>(*deviceManager_, *engine_, selectionSet);
    pace_ = std::make_unique<EventPace>(*frameLoop_);
    network_ = std::make_unique<NetworkChoice>(GetIPRange::Instance(), settings_, *deviceManager_,
                                               *engine_, [this](const QString& text) {
                                                   notices_.Add({nullptr, tr("Network"), text});
                                               });
    preferences_ = std::make_unique<ExternalServerPreferences>();
    network_->SetHostPreferences(preferences_.get());
    hostSettings_ = std::make_unique<HostSettings>(*preferences_, *network_);
    undoStack_.setUndoLimit(UndoLimit);
    savedState_ = std::make_unique<SavedState>(*deviceManager_, undoStack_);
    undoView_ = std::make_unique<QUndoView>(&undoStack_);
    InEachLanguage(undoView_.get(), [this] { undoView_->setWindowTitle(tr("Command List")); });
    undoView_->setAttribute(Qt::WA_QuitOnClose, false);
}

void WEFTMain::BuildTestPattern()
{
    MappedDeviceModel& document = *deviceManager_->GetMappedDeviceModel();
    document.SetSettings(&settings_);
    const QImage picture(settings_.visualFile);
    if (!picture.isNull())
        document.SetTestImage(picture);
    deviceManager_->SetCanvasSize(NewCanvasSize, NewCanvasSize);
    engine_->CreateElements(NewCanvasSize, NewCanvasSize);
    testPattern_ = std::make_unique<LEDTestPatternControl>();
    testPatternPanel_ = std::make_unique<TestPatternPanel>(*testPattern_, boxes_, *this);
    connect(testPattern_.get(), &LEDTestPatternControl::testPatternChange, this,
            &WEFTMain::SetTestPatternImage);
    connect(testPatternPanel_.get(), &TestPatternPanel::told, statusBar(),
            [this](const QString& words) { statusBar()->showMessage(words, StatusMilliseconds); });
    testPattern_->Update();
}

void WEFTMain::BuildDocks()
{
    libraryPanel_ = std::make_unique<LibraryPanel>(LibraryPanel::Parts{
        *deviceManager_, undoStack_, boxes_, *this, [this](const std::future<SaveResult>& written) {
            TickUntil(written);
        }});
    elementList_ = std::make_unique<ElementList>(*deviceManager_, undoStack_);
    nodeList_ = std::make_unique<NodeList>(*nodeModel_, *deviceManager_, *engine_, *network_);
    output_ = std::make_unique<OutputInWindow>(
        OutputInWindow::Parts{*deviceManager_, *nodeModel_, *engine_, undoStack_});
    const std::array<MainWindowForm::Dock, 3> docks = {{
        {"dockWidgetFixtureLibrary", QT_TR_NOOP("Fixture Library"), QT_TR_NOOP("Fixture &Library"),
         libraryPanel_->Contents(), 3},
        {"dockWidgetMappedFixtures", QT_TR_NOOP("Mapped Fixtures"), QT_TR_NOOP("&Mapped Fixtures"),
         elementList_->View(), 2},
        {"dockWidgetArtNetNodes", QT_TR_NOOP("Fixture Nodes"), QT_TR_NOOP("Fixture &Nodes"),
         nodeList_->View(), 1},
    }};
    form_->AddDocks(docks);
    form_->AddDocks(output_->Docks());
}

void WEFTMain::BuildCanvas()
{
    scene_ = std::make_unique<WeftMapEditorScene>(*deviceManager_, display_, undoStack_);
    scene_->SetTestPatternImage(*testPattern_->GetPixmap());
    scene_->SetCanvasSize(NewCanvasSize, NewCanvasSize);
    form_->mappingEditorView->setScene(scene_.get());
    form_->mappingEditorView->SetUp(display_, *deviceManager_);
    editor_ = std::make_unique<EditorController>(EditorController::Parts{
        *deviceManager_, undoStack_, *scene_, *form_->mappingEditorView, *elementList_->View()});
}

void WEFTMain::BuildDocument()
{
    document_ = std::make_unique<DocumentLife>(DocumentLife::Parts{
        *deviceManager_, *nodeModel_, *network_, settings_, *scene_, undoStack_, boxes_, notices_,
        *this, [this](const std::future<SaveResult>& written) {
            TickUntil(written);
        }});
    patchExport_ = std::make_unique<PatchExport>(
        PatchExport::Parts{*deviceManager_, *nodeModel_, settings_, boxes_, notices_, *this});
    unsavedWork_ = std::make_unique<UnsavedWork>(*deviceManager_, *nodeModel_);
    repatching_ = std::make_unique<Repatching>(
        Repatching::Parts{*deviceManager_, *nodeModel_, undoStack_, *this,
                          [this] {
                              scene_->GetGestures().Release();
                              return scene_->SelectedIds();
                          },
                          [this] {
                              return network_->GetNetworkPattern();
                          }});
    connect(editor_.get(), &EditorController::selectionHasChanged, repatching_.get(),
            &Repatching::FollowSelection);
    editorActions_ = std::make_unique<EditorActionSet>(EditorActionSet::Parts{
        *editor_, *scene_, *elementList_->View(), undoStack_, *this, repatching_->Action()});
    displayControls_ = std::make_unique<DisplayControls>(display_, settings_, *editor_, *this);
    inspector_ = std::make_unique<InspectorInWindow>(InspectorInWindow::Parts{
        *deviceManager_, *nodeModel_, *engine_, *network_, undoStack_, boxes_, *scene_, *editor_,
        display_, *displayControls_, *form_, *this});
    identify_ = std::make_unique<IdentifyInWindow>(
        IdentifyInWindow::Parts{*deviceManager_, *engine_, *scene_, *editor_, *document_,
                                *form_->mappingEditorView, *elementList_->View(), *this});
}

void WEFTMain::BuildToolBar()
{
    new SelectionModeButton(*deviceManager_, *this);
    AddActions();
    form_->PlaceActions();
    networkPanel_ =
        new NetworkPanel({GetIPRange::Instance(), *network_, *deviceManager_, *nodeModel_, *engine_,
                          *preferences_, undoStack_, *form_->toolBar, this});
    statusLine_ = std::make_unique<StatusLine>(StatusLine::Parts{
        *form_->mappingEditorView, *scene_, *deviceManager_, *engine_, *network_, *statusBar()});
    output_->AddCount(*statusBar());
    pixelInspector_ = std::make_unique<PixelInspector>(PixelInspector::Parts{
        *form_->mappingEditorView, *scene_, *deviceManager_, *engine_, *this});
    connect(document_.get(), &DocumentLife::cleared, networkPanel_, &NetworkPanel::ShowMerging);
    connect(document_.get(), &DocumentLife::loaded, networkPanel_, &NetworkPanel::ShowMerging);
    connect(hostSettings_.get(), &HostSettings::artNetDMXInputSettingsChanged, networkPanel_,
            &NetworkPanel::artNetDMXInputSettingsChanged);
}

void WEFTMain::AddActions()
{
    actions_.Add({.objectName = "actionPreferences",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "&Preferences..."),
                  .shortcut = "Ctrl+,"},
                 this, &WEFTMain::ActionPreferences);
    actions_.Add({.objectName = "actionExit",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "E&xit"),
                  .shortcut = "Ctrl+Q"},
                 this, &WEFTMain::ActionQuit);
    actions_.Add({.objectName = "actionReset_Layout",
                  .text = QT_TRANSLATE_NOOP("WEFTMain", "&Reset Layout")},
                 this, &WEFTMain::ActionResetLayout);
    QAction* night = actions_.Add({.objectName = "actionNight_Look",
                                   .text = QT_TRANSLATE_NOOP("WEFTMain", "Ni&ght Look"),
                                   .checkable = true},
                                  this, &WEFTMain::ActionNightLook);
    night->setChecked(settings_.nightLook);
    actions_.Add({.objectName = "actionAbout", .text = QT_TRANSLATE_NOOP("WEFTMain", "&About")},
                 this, &WEFTMain::ActionAbout);
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
    connect(pace_.get(), &EventPace::tickIsDue, this, &WEFTMain::UpdateEngine);
    connect(nodesTimer, &QTimer::timeout, nodeList_.get(), &NodeList::RequestNodes);
    connect(networkTimer, &QTimer::timeout, network_.get(), &NetworkChoice::CheckNetworkUpdates);
}

// ---- Wiring ------------------------------------------------------------------------------------

void WEFTMain::WireEngine()
{
    connect(deviceManager_.get(), &DeviceManager::mappingsChanged, this,
            &WEFTMain::updateLEDEngine);
    connect(deviceManager_->GetMappedDeviceModel(), &MappedDeviceModel::mappingsChanged, this,
            &WEFTMain::updateLEDEngine);
    connect(editor_.get(), &EditorController::selectionHasChanged, this, &WEFTMain::ReadSelection);
}

void WEFTMain::WireCanvas()
{
    WeftMapEditorView& view = *form_->mappingEditorView;
    connect(displayControls_.get(), &DisplayControls::zoomChanged, &view,
            &WeftMapEditorView::UpdateMatrix);
    connect(displayControls_.get(), &DisplayControls::gridChanged, scene_.get(),
            &WeftMapEditorScene::RedrawCanvas);
    connect(&view, &WeftMapEditorView::updateZoomWidgets, displayControls_.get(),
            &DisplayControls::UpdateZoomWidgets);
    connect(view.GetNextImageButton(), &QPushButton::clicked, testPatternPanel_.get(),
            &TestPatternPanel::ActionNextTestImage);
    connect(view.GetPreviousImageButton(), &QPushButton::clicked, testPatternPanel_.get(),
            &TestPatternPanel::ActionPreviousTestImage);
    connect(testPattern_.get(), &LEDTestPatternControl::testPatternChange, scene_.get(),
            [this](const QPixmap* picture) {
                if (picture)
                    scene_->SetTestPatternImage(*picture);
            });
    connect(network_.get(), &NetworkChoice::networkChanged, scene_.get(),
            &WeftMapEditorScene::RefreshAutoMarks);
    output_->ConnectCanvas(*editor_, *scene_);
    // Queued: the program that the file is dragged from waits for the end of the drop, not for our
    // questions.
    connect(scene_.get(), &WeftMapEditorScene::importRequested, document_.get(),
            &DocumentLife::ImportFile, Qt::QueuedConnection);
}

void WEFTMain::WireDocument()
{
    connect(deviceManager_.get(), &DeviceManager::signalDocumentSavedState, this,
            &WEFTMain::DocumentSavedStateUpdated);
    connect(editor_.get(), &EditorController::fixturesAdded, libraryPanel_.get(),
            &LibraryPanel::FollowLibrary);
    const DocumentLife* document = document_.get();
    connect(document, &DocumentLife::FileSaved, &engine_->GetTrigger(),
            &ArtNetTrigger::reloadMappingFile);
    connect(document, &DocumentLife::versionNotKept, this, [this](const QString& folder) {
        statusBar()->showMessage(tr("No version of this mapping can be kept in %1: can the folder "
                                    "be written to, and has the disk room?")
                                     .arg(folder),
                                 StatusMilliseconds);
    });
    connect(patchExport_.get(), &PatchExport::exported, this, [this](const QString& path) {
        statusBar()->showMessage(tr("The patch was exported to %1").arg(path), StatusMilliseconds);
    });
    for (const auto replaced : {&DocumentLife::cleared, &DocumentLife::loaded})
        connect(document, replaced, libraryPanel_.get(), &LibraryPanel::FollowLibrary);
    connect(document, &DocumentLife::canvasSizeChanged, form_->mappingEditorView,
            &WeftMapEditorView::CanvasChanged);
    filesToOpen_ = std::make_unique<FilesToOpen>(*this);
    connect(filesToOpen_.get(), &FilesToOpen::mappingOpened, document_.get(),
            &DocumentLife::OfferImport);
    connect(filesToOpen_.get(), &FilesToOpen::fixturesOpened, libraryPanel_.get(),
            &LibraryPanel::ImportFixtures);
}

void WEFTMain::WireSaveTrouble()
{
    statusBar()->addPermanentWidget(
        new SaveTroubleLabel(*document_, *deviceManager_, *unsavedWork_));
    connect(unsavedWork_.get(), &UnsavedWork::troubleChanged, document_.get(),
            &DocumentLife::TellCopyTrouble);
}

void WEFTMain::WireHost()
{
    connect(&engine_->GetTrigger(), &ArtNetTrigger::artNetDMXInputSettingsReceived,
            hostSettings_.get(), &HostSettings::artNetDMXInputSettingsReceived);
    connect(hostSettings_.get(), &HostSettings::usedUniversesReceived, scene_.get(),
            &WeftMapEditorScene::usedUniversesChanged);
    output_->ConnectHost(*hostSettings_);
}

// ---- Start and end -----------------------------------------------------------------------------

void WEFTMain::LoadWindowSettings()
{
    const QSettings* store = settings_.Load();
    resize(store->value(QStringLiteral("lastSize"), DefaultSize).toSize());
    move(store->value(QStringLiteral("lastPosition"), DefaultPosition).toPoint());
    // The screen of the last run may be gone.
    if (!QGuiApplication::screenAt(geometry().center()))
        move(DefaultPosition);
    form_->RestoreLayout(store->value(QStringLiteral("windowLayout")).toByteArray());
    elementList_->Columns().Read(*store);
    nodeList_->Columns().Read(*store);
    testPattern_->ReadSettings(*store);
    display_.Read(*store);
    displayControls_->TakeSettings();
    inspector_->Panel().Read(*store);
    patchExport_->Read(*store);
    output_->Read(*store);
    editor_->SetZoomStyle(settings_.zoomStyle);
    form_->mappingEditorView->UpdateMatrix();
    testPattern_->Update();
}

void WEFTMain::SaveWindowSettings()
{
    QSettings* store = settings_.SaveInterfaceKeys();
    if (!store)
        return;
    store->setValue(QStringLiteral("lastPosition"), pos());
    store->setValue(QStringLiteral("lastSize"), size());
    store->setValue(QStringLiteral("lastInnerSize"), form_->centralwidget->width());
    store->setValue(QStringLiteral("windowLayout"), form_->SaveLayout());
    elementList_->Columns().Write(*store);
    nodeList_->Columns().Write(*store);
    testPattern_->WriteSettings(*store);
    display_.Write(*store);
    inspector_->Panel().Write(*store);
    patchExport_->Write(*store);
    output_->Write(*store);
    store->sync();
}

void WEFTMain::FindDocument()
{
    document_->SetMappingFilePath(preferences_->Load()
                                      ? QString::fromStdWString(preferences_->mappingPath)
                                      : Startup::AskForDocumentPath(boxes_));
    patchExport_->SetDocument(document_->GetMappingFilePath());
}

void WEFTMain::LoadFirstDocument()
{
    document_->LoadFirst();
    libraryPanel_->FollowLibrary();
}

void WEFTMain::GuardUnsavedWork()
{
    notices_.Show(); // in the order in which they came up
    document_->OfferUnsavedWork();
    unsavedWork_->Watch(document_->GetMappingFilePath());
}

void WEFTMain::StartTimers()
{
    engineTimer->start();
    nodesTimer->start();
    networkTimer->start();
    network_->FollowAdapters();
}

void WEFTMain::OpenFiles(const QStringList& paths)
{
    filesToOpen_->Add(paths);
}

void WEFTMain::closeEvent(QCloseEvent* event)
{
    if (!patchExport_->MayClose() || !document_->MayClose()) {
        if (event)
            event->ignore();
        return;
    }
    unsavedWork_->Discard();
    SaveWindowSettings();
    if (event)
        event->accept();
    QCoreApplication::exit();
}

void WEFTMain::DocumentSavedStateUpdated(bool saved)
{
    setWindowTitle(
        QStringLiteral("%1 (%2)").arg(ProgramTitle(), saved ? tr("saved") : tr("unsaved")));
}

// ---- Actions -----------------------------------------------------------------------------------

void WEFTMain::ActionQuit()
{
    closeEvent(nullptr);
}

void WEFTMain::ActionAbout()
{
    WEFTAboutDialog(this).exec();
}

void WEFTMain::ActionResetLayout()
{
    form_->ResetLayout();
    elementList_->Columns().Reset();
    nodeList_->Columns().Reset();
    output_->Reset();
    inspector_->Panel().ActionInspector(true);
}

void WEFTMain::ActionNightLook(bool on)
{
    settings_.nightLook = on;
    settings_.Save();
    UseLook(on ? NightLook() : GreyLook());
}

void WEFTMain::ActionPreferences()
{
    const MappedDeviceModel& document = *deviceManager_->GetMappedDeviceModel();
    WEFTDialogPreferences dialog(this);
    connect(&dialog, &WEFTDialogPreferences::resetFixturesConfirmed, libraryPanel_.get(),
            &LibraryPanel::RestoreBuiltInFixtures);
    dialog.SetControls(settings_, document.IsAutoUnicast(), document.IsArtSync());
    if (dialog.exec() == QDialog::Accepted)
        ApplyPreferences(dialog);
}

void WEFTMain::ApplyPreferences(const WEFTDialogPreferences& dialog)
{
    displayControls_->SnapToGrid(dialog.GetSnapToGrid());
    if (dialog.GetShowGrid() != settings_.showGrid)
        displayControls_->ShowGrid(dialog.GetShowGrid());
    settings_.zoomStyle = dialog.GetZoomStyle();
    settings_.language = dialog.GetLanguage();
    settings_.Save();
    Language::Instance().Use(settings_.language);
    editor_->SetZoomStyle(settings_.zoomStyle);
    MappedDeviceModel& document = *deviceManager_->GetMappedDeviceModel();
    const bool autoUnicast = dialog.GetAutoUnicast();
    const bool artSync = dialog.GetArtSync();
    if (autoUnicast != document.IsAutoUnicast() || artSync != document.IsArtSync()) {
        document.SetAutoUnicast(autoUnicast);
        document.SetArtSync(artSync);
        deviceManager_->SetDocumentDirty(true);
    }
}

void WEFTMain::ShowNotice(const OperatorNotices::Notice& notice)
{
    if (!notice.offersExport) {
        boxes_.Notify(notice.parent, notice.title, notice.text);
        return;
    }
    OperatorBoxes::Choice choice;
    choice.icon = QMessageBox::Warning;
    choice.title = notice.title;
    choice.text = notice.text;
    choice.buttons = QStringList{tr("Export..."), tr("OK")};
    choice.onEscape = 1;
    choice.parent = notice.parent;
    if (boxes_.Choose(choice) == 0)
        document_->ActionExport();
}

// ---- The run loop ------------------------------------------------------------------------------

void WEFTMain::UpdateEngine()
{
    // A tick that came late may be over its time, and what it lets others do may ask for the next.
    if (ticking_)
        return;
    const QScopedValueRollback<bool> ticking(ticking_, true);
    engineTimer->setInterval(frameLoop_->Tick());
    pace_->TickEnded();
    QTimer::singleShot(PauseAfterTickMilliseconds, nodeList_.get(), &NodeList::WorkBetweenTicks);
    output_->WorkAfter(PauseAfterTickMilliseconds);
}

void WEFTMain::TickUntil(const std::future<SaveResult>& written)
{
    using std::chrono::nanoseconds;
    static constexpr std::int64_t shortest = 1'000'000; // should a tick be under way already
    const auto pause = [this] {
        return nanoseconds(std::clamp(frameLoop_->TimeToTick(), shortest, TickGrid::Interval));
    };
    while (written.wait_for(pause()) != std::future_status::ready) {
        if (frameLoop_->TimeToTick() <= 0)
            UpdateEngine();
    }
}

void WEFTMain::updateLEDEngine()
{
    const MappedDeviceModel& document = *deviceManager_->GetMappedDeviceModel();
    const bool created =
        engine_->CreateElements(document.GetCanvasWidth(), document.GetCanvasHeight());
    // Once, however often the document reports its changes.
    if (!created && !std::exchange(engineFailed_, true))
        boxes_.Notify(this, tr("DMX Output Not Started"),
                      tr("The DMX output engine could not be initialised. Is there another "
                         "instance running?"));
    engineFailed_ = !created;
}

void WEFTMain::SetTestPatternImage(QPixmap* picture)
{
    if (picture)
        deviceManager_->GetMappedDeviceModel()->SetTestImage(*picture);
    updateLEDEngine();
}

void WEFTMain::ReadSelection()
{
    selectionSet.clear();
    for (const QPersistentModelIndex& index : scene_->SelectedIndexes())
        selectionSet.insert(index);
}
