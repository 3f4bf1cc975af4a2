// SPDX-License-Identifier: MIT
#include "UI/Main/UnsavedWork.h"

#include <QFile>

#include "Log/Log.h"
#include "Model/DeviceManager.h"
#include "Model/MappedDeviceModel.h"

namespace {

QByteArray ContentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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

void UnsavedWork::Watch(const QString& mappingFilePath)
{
    file_ = FileFor(mappingFilePath);
    connect(&manager_, &DeviceManager::signalDocumentSavedState, this, [this](bool saved) {
        if (saved)
            Discard();
        else
            NoteChange();
    });
    // An undone step changes the document and says nothing of its saved state.
    connect(&manager_, &DeviceManager::devicesChangedGeometry, this, &UnsavedWork::NoteChange);
    connect(&manager_, &DeviceManager::mappingsChanged, this, &UnsavedWork::NoteChange);
    connect(manager_.GetMappedDeviceModel(), &QStandardItemModel::itemChanged, this,
            &UnsavedWork::NoteChange);
    if (manager_.documentDirty)
        NoteChange();
}

QString UnsavedWork::FileFor(const QString& mappingFilePath)
{
    return mappingFilePath + QStringLiteral(".unsaved");
}

bool UnsavedWork::IsLeftOver(const QString& mappingFilePath)
{
    const QByteArray kept = ContentsOf(FileFor(mappingFilePath));
    // A run that ended between its save and the removal of the copy has lost nothing.
    return !kept.isEmpty() && kept != ContentsOf(mappingFilePath);
}

void UnsavedWork::Discard()
{
    timer_.stop();
    failed_ = false;
    if (!file_.isEmpty())
        QFile::remove(file_);
}

void UnsavedWork::NoteChange()
{
    // Not started anew by each change: a long drag is kept while it goes on.
    if (!timer_.isActive())
        timer_.start();
}

void UnsavedWork::Write()
{
    if (!manager_.documentDirty)
        return;
    const bool written = manager_.SaveMapping(file_, nodes_) == 0;
    if (!written && !failed_)
        ZEN_LOG_ERROR("Unsaved work can't be kept in %ls", file_.toStdWString().c_str());
    failed_ = !written;
}
