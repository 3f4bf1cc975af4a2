// SPDX-License-Identifier: MIT
#include "UI/Main/WEFTMain.h"

#include <cstdlib>
#include <exception>
#include <string>

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>

#include "LEDEngine/GetIPRange.h"
#include "LEDEngine/LEDEngine.h"
#include "LibTools/QSysFileSystem.h"
#include "LibTools/W32BlitterService.h"
#include "LibTools/W32RegistryService.h"
#include "LibTools/W32StringService.h"
#include "LibTools/W32System.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/DeviceModel.h"
#include "Model/MappedDeviceModel.h"
#include "Platform/IPv4.h"
#include "Settings/ApplicationMode.h"
#include "Settings/ExternalServerPreferences.h"
#include "Settings/FixtureLibraryPath.h"
#include "Settings/ModeLogPath.h"
#include "UI/Library/FixtureConflictBox.h"
#include "UI/Main/DocumentLife.h"
#include "UI/Main/HostSettings.h"
#include "UI/Main/NetworkChoice.h"
#include "UI/Main/StagePreview.h"

namespace {

constexpr int NodesMilliseconds = 1000;
constexpr int NetworkMilliseconds = 3000;
constexpr int NewCanvasSize = 100;

QString BareTitle()
{
    return QStringLiteral("Zentri PixelWeft 3.2.5");
}

QString DemoPicture()
{
    return QStringLiteral(":/Resources/DemoPicture.bmp");
}

QString DefaultLibrary()
{
    return QStringLiteral(":/wfl/Resources/LEDFixtureLib.wfl");
}

/// The start can't go on: the log has the reason, no document was touched.
[[noreturn]] void EndProcess()
{
    if (const auto log = Zen::Log::Global())
        log->Flush();
    std::_Exit(EXIT_FAILURE);
}

} // namespace

WEFTMain::WEFTMain()
{
    if (!ApplicationMode::Instance().Load()) {
        ZEN_LOG_ERROR("Cannot determine application mode(mode.xml might be missing).");
        EndProcess();
    }
    InstallServices();
    StartLogOfMode();
    ZEN_LOG_INFO("**************************************************");
    QCoreApplication::setOrganizationName(QStringLiteral("Zentri"));
    QCoreApplication::setOrganizationDomain(QStringLiteral("pixelweft.invalid"));
    QCoreApplication::setApplicationName(QStringLiteral("PixelWeft2"));
    DeviceModel::defaultConflictCallback = AskAboutDocumentFixture;
    BuildParts();
    LoadTestPicture();
    BuildWindow();
    Wire();
    LoadWindowSettings();
    FindDocument();
    deviceManager_->MergeLibrary(DefaultLibrary(), false, AskAboutLibraryUpdate);
    setWindowTitle(BareTitle());
}

WEFTMain::~WEFTMain()
{
    hostSettings_.reset();
    document_.reset();
    frameLoop_.reset();
    engine_.reset();
    // The preview reads the document until it goes.
    delete takeCentralWidget();
    deviceManager_.reset();
    nodeModel_.reset();
}

void WEFTMain::InstallServices()
{
    StringService::global = std::make_unique<W32StringService>();
    System::global = std::make_unique<W32System>();
    SysFileSystem::Install(std::make_unique<QSysFileSystem>());
    BlitterService::Install(std::make_unique<W32BlitterService>());
    RegistryService::Install(
        std::make_unique<W32RegistryService>(ApplicationMode::Instance().RegistryRoot()));
}

void WEFTMain::StartLogOfMode()
{
    const auto path = ModeLogPath(ApplicationMode::Instance().mode);
    if (path.empty())
        return;
    try {
        Zen::Log::SetGlobal(std::make_shared<Zen::Log>(path));
    } catch (const std::exception& failure) {
        // A log that can't be written (a full or read-only home) is no reason to leave the stage
        // dark.
        ZEN_LOG_ERROR("The log file can't be opened: %s", failure.what());
    }
}

void WEFTMain::BuildParts()
{
    deviceManager_ = std::make_unique<DeviceManager>(GetFixtureLibraryPath());
    deviceManager_->Initialize();
    deviceManager_->LoadLibrary(GetFixtureLibraryPath());
    deviceManager_->GetMappedDeviceModel()->SetSettings(&settings_);
    deviceManager_->SetCanvasSize(NewCanvasSize, NewCanvasSize);
    engine_ = std::make_unique<LEDEngine>(*deviceManager_);
    engine_->CreateElements(NewCanvasSize, NewCanvasSize);
    nodeModel_ = std::make_unique<ArtNetNodeModel>();
    frameLoop_ = std::make_unique<FrameLoop>(*deviceManager_, *engine_, selectionSet);
    network_ = std::make_unique<NetworkChoice>(GetIPRange::Instance(), settings_, *deviceManager_,
                                               *engine_, [](const QString& text) {
                                                   QMessageBox box;
                                                   box.setText(text);
                                                   box.exec();
                                               });
    document_ = std::make_unique<DocumentLife>(*deviceManager_, *engine_, *nodeModel_, *network_);
}

void WEFTMain::LoadTestPicture()
{
    QImage picture(settings_.visualFile);
    if (picture.isNull())
        picture.load(DemoPicture());
    deviceManager_->GetMappedDeviceModel()->SetTestImage(picture);
}

void WEFTMain::BuildWindow()
{
    setObjectName(QStringLiteral("WEFTMain"));
    preview_ = new StagePreview(*deviceManager_, this);
    setCentralWidget(preview_);
    networkLabel_ = new QLabel(this);
    networkLabel_->setObjectName(QStringLiteral("networkLabel"));
    outputLabel_ = new QLabel(this);
    outputLabel_->setObjectName(QStringLiteral("outputLabel"));
    statusBar()->addWidget(networkLabel_, 1);
    statusBar()->addPermanentWidget(outputLabel_);

    engineTimer = new QTimer(this);
    engineTimer->setTimerType(Qt::PreciseTimer);
    engineTimer->setInterval(FrameLoop::TickMilliseconds);
    nodesTimer = new QTimer(this);
    nodesTimer->setTimerType(Qt::PreciseTimer);
    nodesTimer->setInterval(NodesMilliseconds);
    networkTimer = new QTimer(this);
    networkTimer->setTimerType(Qt::CoarseTimer);
    networkTimer->setInterval(NetworkMilliseconds);
}

void WEFTMain::Wire()
{
    connect(engineTimer, &QTimer::timeout, this, &WEFTMain::UpdateEngine);
    connect(nodesTimer, &QTimer::timeout, this, &WEFTMain::ProcessNodesList);
    connect(networkTimer, &QTimer::timeout, network_.get(), &NetworkChoice::CheckNetworkUpdates);
    connect(deviceManager_.get(), &DeviceManager::mappingsChanged, this,
            &WEFTMain::updateLEDEngine);
    connect(deviceManager_->GetMappedDeviceModel(), &MappedDeviceModel::mappingsChanged, this,
            &WEFTMain::updateLEDEngine);
    connect(deviceManager_.get(), &DeviceManager::signalDocumentSavedState, this,
            &WEFTMain::DocumentSavedStateUpdated);
    connect(network_.get(), &NetworkChoice::networkChanged, this, &WEFTMain::ProcessNodesList);
    connect(document_.get(), &DocumentLife::FileSaved, &engine_->GetTrigger(),
            &ArtNetTrigger::reloadMappingFile);
    connect(document_.get(), &DocumentLife::saveFailed, this, [this](const QString& path) {
        QMessageBox::warning(this, tr("Mapping Not Saved"),
                             tr("The mapping could not be saved to %1.\n\nThe file there is as "
                                "it was before.")
                                 .arg(path));
    });
}

void WEFTMain::LoadWindowSettings()
{
    const QSettings* store = settings_.Load();
    resize(store->value(QStringLiteral("lastSize"), QSize(1024, 600)).toSize());
    move(store->value(QStringLiteral("lastPosition"), QPoint(200, 200)).toPoint());
}

void WEFTMain::SaveWindowSettings()
{
    QSettings* store = settings_.SaveInterfaceKeys();
    if (!store)
        return;
    store->setValue(QStringLiteral("lastPosition"), pos());
    store->setValue(QStringLiteral("lastSize"), size());
    store->setValue(QStringLiteral("lastInnerSize"), preview_->width());
    store->sync();
}

QString WEFTMain::GetHostName() const
{
    return ApplicationMode::Instance().HostName();
}

void WEFTMain::FindDocument()
{
    preferences_ = std::make_unique<ExternalServerPreferences>();
    network_->SetHostPreferences(preferences_.get());
    hostSettings_ = std::make_unique<HostSettings>(*preferences_, *network_);
    connect(&engine_->GetTrigger(), &ArtNetTrigger::artNetDMXInputSettingsReceived,
            hostSettings_.get(), &HostSettings::artNetDMXInputSettingsReceived);
    document_->SetMappingFilePath(preferences_->Load()
                                      ? QString::fromStdWString(preferences_->mappingPath)
                                      : AskForDocumentFolder());
}

QString WEFTMain::AskForDocumentFolder()
{
    const QString host = GetHostName();
    ZEN_LOG_ERROR("%s Library not found", host.toUtf8().constData());
    QString folder;
    while (folder.isEmpty()) {
        QMessageBox box(
            QMessageBox::NoIcon, tr("%1 Library Not Found").arg(host),
            tr("PixelWeft requires that %1 has an active Library before starting, please choose "
               "a working directory")
                .arg(host));
        const auto* choose = box.addButton(tr("Choose"), QMessageBox::AcceptRole);
        box.addButton(tr("Quit"), QMessageBox::RejectRole);
        box.exec();
        if (box.clickedButton() != choose) {
            ZEN_LOG_ERROR("Shutting down because libary is missing");
            EndProcess();
        }
        folder = QFileDialog::getExistingDirectory(nullptr, tr("working directory"));
    }
    return folder + QStringLiteral("/mapping.wfm");
}

void WEFTMain::LoadFirstDocument()
{
    document_->LoadFirst();
}

void WEFTMain::StartTimers()
{
    engineTimer->start();
    nodesTimer->start();
    networkTimer->start();
}

void WEFTMain::UpdateEngine()
{
    engineTimer->setInterval(frameLoop_->Tick());
}

void WEFTMain::ProcessNodesList()
{
    if (engine_->UpdateNodeList(*nodeModel_))
        nodeModel_->Rebuild(*deviceManager_->GetMappedDeviceModel(), nullptr,
                            Platform::ParseIPv4(network_->GetNetworkBroadcast()).value_or(0));
    const QString chosen = settings_.networkText.isEmpty() ? tr("Disabled") : settings_.networkText;
    const QString address = QString::fromStdWString(network_->GetNetworkIP());
    networkLabel_->setText(address.isEmpty() ? tr("Network %1, not connected").arg(chosen)
                                             : tr("Network %1 at %2").arg(chosen, address));
    outputLabel_->setText(
        tr("%n fixture(s)", nullptr, deviceManager_->GetMappedDeviceModel()->rowCount()) +
        QStringLiteral(", ") +
        tr("%n node(s)", nullptr, static_cast<int>(engine_->GetOutput().GetNodes().size())));
}

void WEFTMain::updateLEDEngine()
{
    engine_->ReleaseElements();
    const MappedDeviceModel& document = *deviceManager_->GetMappedDeviceModel();
    if (!engine_->CreateElements(document.GetCanvasWidth(), document.GetCanvasHeight()))
        QMessageBox::warning(this, QString(),
                             tr("The DMX output engine could not be initialised. Is there "
                                "another instance running?"));
    updatePreviewWindow();
}

void WEFTMain::updatePreviewWindow()
{
    preview_->update();
}

void WEFTMain::DocumentSavedStateUpdated(bool saved)
{
    setWindowTitle(QStringLiteral("%1 (%2)").arg(BareTitle(), saved ? tr("saved") : tr("unsaved")));
}

void WEFTMain::closeEvent(QCloseEvent* event)
{
    SaveWindowSettings();
    if (event)
        event->accept();
    QCoreApplication::quit();
}
