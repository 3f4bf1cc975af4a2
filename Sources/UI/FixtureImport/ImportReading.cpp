// SPDX-License-Identifier: MIT
#include "UI/FixtureImport/ImportReading.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <system_error>
#include <utility>

#include <QElapsedTimer>

#include "FixtureImport/FixtureFiles.h"
#include "Log/Log.h"

namespace {

constexpr int PauseMilliseconds = 5;
/// Less than a tick has to spare.
constexpr qint64 PortionNanoseconds = 4'000'000;
constexpr std::size_t MostWaiting = 256;
/// Of definitions. A library may have all its fixtures in one file, and they are judged one by one.
constexpr std::size_t PieceSize = 32;

} // namespace

ImportReading::ImportReading(Taker taker)
    : taker_(std::move(taker))
{
    timer_.setInterval(PauseMilliseconds);
    connect(&timer_, &QTimer::timeout, this, &ImportReading::HandOver);
}

ImportReading::~ImportReading() = default;

void ImportReading::Read(const QStringList& paths)
{
    waiting_ += paths;
    if (!IsReading())
        Start();
}

void ImportReading::Stop()
{
    isStopping_ = true;
    waiting_.clear();
    (void)reader_.request_stop();
}

void ImportReading::StopAndWait()
{
    (void)reader_.request_stop();
    if (reader_.joinable())
        reader_.join();
}

void ImportReading::Start()
{
    foundBefore_ += found_.exchange(0);
    isDone_ = false;
    isStopping_ = false;
    const QStringList paths = std::exchange(waiting_, {});
    try {
        reader_ = std::jthread([this, paths](const std::stop_token& stop) {
            ReadAll(paths, stop);
            const std::scoped_lock lock(mutex_);
            isDone_ = true;
        });
    } catch (const std::system_error&) {
        ZEN_LOG_ERROR("No thread for the import of fixtures");
        for (const QString& path : paths) {
            FixtureImport::ImportedFile file;
            file.path = path;
            file.fault.kind = FixtureImport::FaultKind::Unreadable;
            taker_(std::move(file));
        }
        emit ended();
        return;
    }
    timer_.start();
}

// ---- On the reader's thread --------------------------------------------------------------------

void ImportReading::ReadAll(const QStringList& paths, const std::stop_token& stop)
{
    FixtureImport::FixtureFileReader reader;
    QString path;
    try {
        const QStringList files = FixtureImport::FindFixtureFiles(paths, [&](int found) {
            found_ = found;
            return !stop.stop_requested();
        });
        for (const QString& file : files) {
            if (stop.stop_requested())
                return;
            path = file;
            PutInPieces(reader.Read(file), stop);
        }
    } catch (const std::exception& error) { // out of memory
        ZEN_LOG_ERROR("The import of %s ended: %s", qUtf8Printable(path), error.what());
        FixtureImport::ImportedFile file;
        file.path = path;
        file.fault.kind = FixtureImport::FaultKind::Unreadable;
        Put(std::move(file), stop);
    }
}

void ImportReading::PutInPieces(FixtureImport::ImportedFile file, const std::stop_token& stop)
{
    std::vector<FixtureImport::ImportedDefinition> all = std::move(file.definitions);
    auto next = all.begin();
    do {
        const auto end = next + std::min<std::ptrdiff_t>(PieceSize, all.end() - next);
        FixtureImport::ImportedFile piece;
        piece.path = file.path;
        piece.fault = file.fault;
        piece.continues = next != all.begin();
        piece.definitions.assign(std::make_move_iterator(next), std::make_move_iterator(end));
        next = end;
        Put(std::move(piece), stop);
    } while (next != all.end() && !stop.stop_requested());
}

void ImportReading::Put(FixtureImport::ImportedFile file, const std::stop_token& stop)
{
    std::unique_lock lock(mutex_);
    (void)room_.wait(lock, stop, [this] { return read_.size() < MostWaiting; });
    read_.push_back(std::move(file));
}

// ---- On the main thread ------------------------------------------------------------------------

/// False when nothing more will come.
bool ImportReading::TakeSome()
{
    QElapsedTimer timer;
    timer.start();
    std::vector<FixtureImport::ImportedFile> files;
    bool isDone = false;
    {
        const std::scoped_lock lock(mutex_);
        files.swap(read_);
        isDone = isDone_;
    }
    room_.notify_one();
    if (isStopping_)
        return !isDone;
    std::size_t taken = 0;
    while (taken < files.size() && timer.nsecsElapsed() < PortionNanoseconds) {
        given_ += files[taken].continues ? 0 : 1;
        taker_(std::move(files[taken++]));
    }
    if (taken == files.size())
        return !isDone;
    const auto rest = files.begin() + static_cast<std::ptrdiff_t>(taken);
    const std::scoped_lock lock(mutex_);
    read_.insert(read_.begin(), std::make_move_iterator(rest),
                 std::make_move_iterator(files.end()));
    return true;
}

void ImportReading::HandOver()
{
    const bool goesOn = TakeSome();
    emit progressed();
    if (goesOn)
        return;
    timer_.stop();
    reader_.join();
    if (!waiting_.isEmpty())
        return Start();
    emit ended();
}
