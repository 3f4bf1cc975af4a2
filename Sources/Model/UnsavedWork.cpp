// SPDX-License-Identifier: MIT
#include "Model/UnsavedWork.h"

#include <exception>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include <tinyxml2.h>

#include <QFile>

#include "LibTools/XmlFile.h"
#include "Log/Log.h"
#include "Model/ArtNetNodeModel.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

namespace {

std::optional<QByteArray> ContentsOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

} // namespace

UnsavedWork::UnsavedWork(DeviceManager& manager, const ArtNetNodeModel& nodes)
    : manager_(manager)
    , nodes_(nodes)
{
    timer_.setSingleShot(true);
    timer_.setInterval(WriteMilliseconds);
    connect(&timer_, &QTimer::timeout, this, &UnsavedWork::Write);
}

UnsavedWork::~UnsavedWork()
{
    WaitForWriter();
    if (timer_.isActive())
        Write();
}

void UnsavedWork::Watch(const QString& mappingFilePath)
{
    file_ = FileFor(mappingFilePath);
    connect(&manager_, &DeviceManager::signalDocumentSavedState, this, [this](bool saved) {
        if (saved)
            Discard();
        else
            NoteChange();
    });
    // A gesture changes the document before it is a step.
    const MappedDeviceModel* document = manager_.GetMappedDeviceModel();
    connect(&manager_, &DeviceManager::devicesChangedGeometry, this, &UnsavedWork::NoteChange);
    connect(&manager_, &DeviceManager::mappingsChanged, this, &UnsavedWork::NoteChange);
    connect(document, &QStandardItemModel::itemChanged, this, &UnsavedWork::NoteChange);
    connect(document, &QStandardItemModel::dataChanged, this, &UnsavedWork::NoteChange);
    connect(&nodes_, &ArtNetNodeModel::nodesChanged, this, &UnsavedWork::NoteChange);
    if (manager_.documentDirty)
        NoteChange();
}

QString UnsavedWork::FileFor(const QString& mappingFilePath)
{
    return mappingFilePath + QStringLiteral(".unsaved");
}

bool UnsavedWork::IsLeftOver(const QString& mappingFilePath)
{
    const QString file = FileFor(mappingFilePath);
    if (!QFile::exists(file))
        return false;
    const auto kept = ContentsOf(file);
    // A run that ended between its save and the removal of the copy has lost nothing.
    return !kept || (!kept->isEmpty() && kept != ContentsOf(mappingFilePath));
}

void UnsavedWork::Discard()
{
    timer_.stop();
    discarded_ = writing_; // a disk may be slow: nobody waits for it here
    if (!writing_ && !file_.isEmpty())
        QFile::remove(file_);
    SetTrouble({});
}

void UnsavedWork::NoteChange()
{
    // Not restarted by each change, so that a long drag is kept while it lasts.
    if (!timer_.isActive())
        timer_.start();
}

void UnsavedWork::Write()
{
    if (!manager_.documentDirty)
        return;
    if (writing_) { // on a disk that is slower than the operator
        timer_.start();
        return;
    }
    try {
        auto document = std::make_unique<tinyxml2::XMLDocument>();
        manager_.MappingToXml(*document, nodes_);
        writing_ = true;
        writer_ = std::jthread([this, file = file_.toStdWString(), document = std::move(document)] {
            const SaveResult written = WriteXmlFile(file, *document);
            QMetaObject::invokeMethod(this, [this, written] { Wrote(written); });
        });
    } catch (const std::exception&) {
        Wrote(std::make_error_code(std::errc::not_enough_memory));
    }
}

void UnsavedWork::Wrote(const SaveResult& written)
{
    WaitForWriter();
    if (!manager_.documentDirty)
        return;
    SetTrouble(written.Reason());
    if (!written)
        NoteChange();
}

void UnsavedWork::SetTrouble(const QString& reason)
{
    if (reason == trouble_)
        return;
    if (trouble_.isEmpty())
        ZEN_LOG_ERROR("Unsaved work can't be kept in %ls", file_.toStdWString().c_str());
    trouble_ = reason;
    emit troubleChanged(reason);
}

void UnsavedWork::WaitForWriter()
{
    if (writer_.joinable())
        writer_.join();
    writing_ = false;
    if (std::exchange(discarded_, false))
        QFile::remove(file_);
}
