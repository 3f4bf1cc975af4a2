// SPDX-License-Identifier: MIT
#include "UI/TestPattern/LEDTestPatternControl.h"

#include <algorithm>
#include <utility>

#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QSettings>
#include <QVariant>

#include "LibTools/Qt5And6.h"
#include "Log/Log.h"

namespace {

const QLatin1String directoryKey("defaultImgDir");
const QLatin1String userFileKey("usrImgFile");
const QLatin1String selectionKey("imgSelVal");

enum : std::int32_t
{
    DemoPicture = 0,
    ColourBars = 1,
    UserFile = 2,
    BuiltInPictures = 2
};

/// Null for what is no picture; `failure` is then the reason.
std::unique_ptr<QPixmap> LoadPicture(const QString& file, QString* failure = nullptr)
{
    if (file.isEmpty())
        return nullptr;
    Qt5And6::AllowLargePictures();
    QImageReader reader(file);
    reader.setAutoTransform(true); // a camera that was held upright
    auto picture = std::make_unique<QPixmap>(QPixmap::fromImageReader(&reader));
    if (!picture->isNull())
        return picture;
    if (failure)
        *failure = reader.errorString();
    return nullptr;
}

QStringList PicturesIn(const QString& folder)
{
    const QDir directory(folder);
    QStringList files;
    for (const QString& name : directory.entryList(LEDTestPatternControl::NameFilters(),
                                                   QDir::Files | QDir::NoSymLinks | QDir::Readable |
                                                       QDir::Hidden | QDir::NoDotAndDotDot))
        files.append(directory.filePath(name));
    return files;
}

} // namespace

LEDTestPatternControl::LEDTestPatternControl(QObject* parent)
    : QObject(parent)
{}

LEDTestPatternControl::~LEDTestPatternControl() = default;

void LEDTestPatternControl::Update()
{
    Step(0);
}

void LEDTestPatternControl::Step(std::int32_t by)
{
    const std::int32_t before = selection_;
    const bool wasFromDirectory = std::exchange(isFromDirectory_, false);
    selection_ += by;
    auto picture = Make();
    if (!picture) {
        emit directoryHasNone(directory_);
        if (wasFromDirectory) {
            selection_ = before;
            return;
        }
        picture = NearestBuiltIn();
    }
    Show(std::move(picture));
}

void LEDTestPatternControl::Show(std::unique_ptr<QPixmap> picture)
{
    const auto old = std::exchange(pixmap_, std::move(picture));
    emit testPatternChange(pixmap_.get());
}

bool LEDTestPatternControl::SetDirectory(const QString& directory)
{
    const QStringList files = PicturesIn(directory);
    for (std::int32_t index = 0; index < files.size(); ++index) {
        auto picture = LoadPicture(files[index]);
        if (!picture)
            continue;
        directory_ = directory;
        selection_ = BuiltInPictures + (HasUserPicture() ? 1 : 0) + index;
        isFromDirectory_ = true;
        Show(std::move(picture));
        return true;
    }
    return false;
}

QString LEDTestPatternControl::SetFile(const QString& file)
{
    QString failure;
    auto picture = LoadPicture(file, &failure);
    if (picture) {
        userFile_ = file;
        selection_ = UserFile;
        isFromDirectory_ = false;
        Show(std::move(picture));
    }
    return failure;
}

void LEDTestPatternControl::Next()
{
    Step(1);
}

void LEDTestPatternControl::Previous()
{
    Step(-1);
}

void LEDTestPatternControl::ReadSettings(const QSettings& store)
{
    directory_ = store.value(directoryKey).toString();
    userFile_ = store.value(userFileKey).toString();
    // A number from a store edited by hand stays far enough from the ends to be counted from.
    constexpr std::int32_t limit = 1'000'000;
    selection_ = std::clamp(store.value(selectionKey, 0).toInt(), -limit, limit);
    isFromDirectory_ = false;
}

void LEDTestPatternControl::WriteSettings(QSettings& store) const
{
    store.setValue(directoryKey, directory_);
    store.setValue(userFileKey, userFile_);
    store.setValue(selectionKey, selection_);
}

std::unique_ptr<QPixmap> LEDTestPatternControl::Make()
{
    if (selection_ == DemoPicture || selection_ == ColourBars)
        return BuiltIn(selection_);
    const QStringList files = PicturesIn(directory_);
    return files.isEmpty() ? MakeWithoutDirectory() : MakeFromDirectory(files);
}

std::unique_ptr<QPixmap> LEDTestPatternControl::MakeWithoutDirectory()
{
    if (selection_ < 0 || selection_ == UserFile) {
        if (auto picture = LoadPicture(userFile_)) {
            selection_ = UserFile;
            return picture;
        }
    }
    return directory_.isEmpty() ? NearestBuiltIn() : nullptr;
}

std::unique_ptr<QPixmap> LEDTestPatternControl::MakeFromDirectory(const QStringList& files)
{
    if (selection_ == UserFile && HasUserPicture()) {
        if (auto picture = LoadPicture(userFile_))
            return picture;
    }
    const auto count = static_cast<std::int32_t>(files.size());
    const std::int32_t total = count + BuiltInPictures + (HasUserPicture() ? 1 : 0);
    if (selection_ < 0)
        selection_ = total - 1;
    if (selection_ >= total)
        return BuiltIn(DemoPicture);
    for (std::int32_t tries = 0; tries < count; ++tries) {
        const QString& file = files[std::clamp(count - total + selection_, 0, count - 1)];
        ZEN_LOG_INFO("%s", file.toUtf8().constData());
        if (auto picture = LoadPicture(file)) {
            isFromDirectory_ = true;
            return picture;
        }
        if (++selection_ >= total)
            selection_ = total - count;
    }
    return nullptr;
}

bool LEDTestPatternControl::HasUserPicture()
{
    const QFileInfo file(userFile_);
    const TriedFile now{userFile_, file.lastModified(), file.size()};
    if (triedFile_ != now) {
        triedFile_ = now;
        triedFileIsPicture_ = LoadPicture(userFile_) != nullptr;
    }
    return triedFileIsPicture_;
}

std::unique_ptr<QPixmap> LEDTestPatternControl::NearestBuiltIn()
{
    return BuiltIn(selection_ < 0 ? ColourBars : DemoPicture);
}

std::unique_ptr<QPixmap> LEDTestPatternControl::BuiltIn(std::int32_t which)
{
    selection_ = which;
    return std::make_unique<QPixmap>(
        which == ColourBars ? QStringLiteral(":/bitmaps/Resources/DemoPictureCBars.png")
                            : QStringLiteral(":/bitmaps/Resources/DemoPicture.bmp"));
}

QStringList LEDTestPatternControl::NameFilters()
{
    QStringList names;
    for (const QByteArray& format : QImageReader::supportedImageFormats())
        names.append(QStringLiteral("*.") + QString::fromLatin1(format));
    return names;
}
