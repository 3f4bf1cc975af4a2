// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

#include <QObject>
#include <QStringList>
#include <QTimer>

#include "FixtureImport/ImportedFixture.h"

/// Reads fixture files on a thread of its own and hands them over on the main thread, a few
/// milliseconds at a time: the output shares that thread. What is handed over slowly is read
/// slowly, so that memory doesn't fill with files that wait.
class ImportReading : public QObject
{
    Q_OBJECT

public:
    using Taker = std::function<void(FixtureImport::ImportedFile)>;

    /// `taker` gets each file, on the main thread; one with many definitions in several pieces.
    explicit ImportReading(Taker taker);
    /// Waits for the end of the file that is being read.
    ~ImportReading() override;

    /// Files and folders, behind those that are being read.
    void Read(const QStringList& paths);
    [[nodiscard]] bool IsReading() const { return reader_.joinable(); }
    /// Ends the reading behind the file that is being read. Nothing more is handed over; ended()
    /// says when it has come to its end, which may take its time on a slow disk.
    void Stop();
    /// Stops and waits for the end, on any thread while the main thread doesn't use this object.
    void StopAndWait();
    /// How many files were found and handed over in all.
    [[nodiscard]] int Found() const { return foundBefore_ + found_; }
    [[nodiscard]] int Given() const { return given_; }

signals:
    /// Some files were handed over.
    void progressed();
    /// There is nothing more to read.
    void ended();

private:
    void Start();
    void ReadAll(const QStringList& paths, const std::stop_token& stop);
    void PutInPieces(FixtureImport::ImportedFile file, const std::stop_token& stop);
    void Put(FixtureImport::ImportedFile file, const std::stop_token& stop);
    [[nodiscard]] bool TakeSome();
    void HandOver();

    Taker taker_;
    QStringList waiting_;
    bool isStopping_ = false;
    QTimer timer_;
    int given_ = 0;
    int foundBefore_ = 0; ///< by readings that ended
    std::atomic<int> found_ = 0;
    std::mutex mutex_; ///< guards the next three
    std::condition_variable_any room_;
    std::vector<FixtureImport::ImportedFile> read_;
    bool isDone_ = false;
    std::jthread reader_; ///< last: it uses all of these
};
