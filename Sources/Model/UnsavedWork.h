// SPDX-License-Identifier: MIT
#pragma once

#include <thread>

#include <QObject>
#include <QString>
#include <QTimer>

#include "LibTools/SaveResult.h"

class ArtNetNodeModel;
class DeviceManager;

/// Keeps a copy of unsaved work beside the document, so that a crash or a power cut costs
/// seconds of work and not hours. The copy exists only while there is something unsaved; the
/// document's own file is never touched. Writing never delays a frame by much: the text is made in
/// a pause, and a thread of its own writes it to the disk.
class UnsavedWork : public QObject
{
    Q_OBJECT

public:
    /// Both outlive this object. Nothing is written before Watch.
    UnsavedWork(DeviceManager& manager, const ArtNetNodeModel& nodes);
    /// Writes a change that still waits: the operator didn't ask for this end, or Discard would
    /// have come before.
    ~UnsavedWork() override;

    /// From now on the unsaved work of the document at `mappingFilePath` is kept.
    void Watch(const QString& mappingFilePath);

    [[nodiscard]] static QString FileFor(const QString& mappingFilePath);
    /// Whether an earlier run left work that differs from the document or can't be read.
    [[nodiscard]] static bool IsLeftOver(const QString& mappingFilePath);

    /// Removes the copy: the work was saved or given up.
    void Discard();

    static constexpr int WriteMilliseconds = 3000;

signals:
    /// Why the copy can't be written; empty when it is, or needs none, again.
    void troubleChanged(const QString& reason);

private:
    void NoteChange();
    void Write();
    void Wrote(const SaveResult& written);
    void SetTrouble(const QString& reason);
    void WaitForWriter();

    DeviceManager& manager_;
    const ArtNetNodeModel& nodes_;
    QString file_;
    QTimer timer_; ///< runs from the first change to the next writing
    bool writing_ = false;
    bool discarded_ = false; ///< what is being written: it goes when it is whole
    QString trouble_;
    std::jthread writer_; ///< one at a time
};
