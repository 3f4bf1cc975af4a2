// SPDX-License-Identifier: MIT
#pragma once

#include <thread>

#include <QObject>
#include <QString>
#include <QTimer>

class ArtNetNodeModel;
class DeviceManager;

/// Keeps a copy of unsaved work beside the document, so that a crash or a power cut costs seconds
/// and not the evening. The copy exists only while there is something unsaved; the document's own
/// file is never touched. The operator notices nothing of it: the text is made and brought to the
/// disk beside the frames.
class UnsavedWork : public QObject
{
    Q_OBJECT

public:
    /// Both outlive this object. Nothing is written before Watch.
    UnsavedWork(DeviceManager& manager, const ArtNetNodeModel& nodes);
    /// A change that still waits is kept: this end was not the operator's wish, which begins with
    /// Discard.
    ~UnsavedWork() override;

    /// From now on the unsaved work of the document at `mappingFilePath` is kept.
    void Watch(const QString& mappingFilePath);

    [[nodiscard]] static QString FileFor(const QString& mappingFilePath);
    /// Whether an earlier run left work that differs from the document or can't be read.
    [[nodiscard]] static bool IsLeftOver(const QString& mappingFilePath);

    /// The operator is done with it, in one way or the other.
    void Discard();

    static constexpr int WriteMilliseconds = 3000;

private:
    void NoteChange();
    void Write();
    void Wrote(bool written);
    void WaitForWriter();

    DeviceManager& manager_;
    const ArtNetNodeModel& nodes_;
    QString file_;
    QTimer timer_; ///< runs from the first change to the next writing
    bool writing_ = false;
    bool failed_ = false;
    std::jthread writer_; ///< one at a time
};
