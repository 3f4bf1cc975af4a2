// SPDX-License-Identifier: MIT
#include "UI/TestPattern/LEDTestPatternControl.h"

#include <algorithm>
#include <utility>

#include <QDir>
#include <QImageReader>
#include <QSettings>
#include <QVariant>

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
    Show(Make());
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
        selection_ = BuiltInPictures + (LoadPicture(userFile_) ? 1 : 0) + index;
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
        Show(std::move(picture));
    }
    return failure;
}

void LEDTestPatternControl::Next()
{
    ++selection_;
    Update();
}

void LEDTestPatternControl::Previous()
{
    --selection_;
    Update();
}

void LEDTestPatternControl::ReadSettings(const QSettings& store)
{
    directory_ = store.value(directoryKey).toString();
    userFile_ = store.value(userFileKey).toString();
    // A number from a store edited by hand stays far enough from the ends to be counted from.
    constexpr std::int32_t limit = 1'000'000;
    selection_ = std::clamp(store.value(selectionKey, 0).toInt(), -limit, limit);
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
    return BuiltIn(selection_ < 0 ? ColourBars : DemoPicture);
}

std::unique_ptr<QPixmap> LEDTestPatternControl::MakeFromDirectory(const QStringList& files)
{
    auto userPicture = LoadPicture(userFile_);
    if (selection_ == UserFile && userPicture)
        return userPicture;
    const auto count = static_cast<std::int32_t>(files.size());
    const std::int32_t total = count + BuiltInPictures + (userPicture ? 1 : 0);
    if (selection_ < 0)
        selection_ = total - 1;
    if (selection_ >= total)
        return BuiltIn(DemoPicture);
    for (std::int32_t tries = 0; tries < count; ++tries) {
        const QString& file = files[std::clamp(count - total + selection_, 0, count - 1)];
        ZEN_LOG_INFO("%s", file.toUtf8().constData());
        if (auto picture = LoadPicture(file))
            return picture;
        if (++selection_ >= total)
            selection_ = total - count;
    }
    return BuiltIn(DemoPicture);
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
