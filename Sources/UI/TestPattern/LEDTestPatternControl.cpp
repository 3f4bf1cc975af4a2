// SPDX-License-Identifier: MIT
#include "UI/TestPattern/LEDTestPatternControl.h"

#include <algorithm>
#include <utility>

#include <QDir>
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
    BuiltInPictures = 2,
    FirstOfDirectoryBehindUserFile = 3
};

std::unique_ptr<QPixmap> LoadPicture(const QString& file)
{
    auto picture = std::make_unique<QPixmap>(file);
    return picture->isNull() ? nullptr : std::move(picture);
}

} // namespace

LEDTestPatternControl::LEDTestPatternControl(QObject* parent)
    : QObject(parent)
{}

LEDTestPatternControl::~LEDTestPatternControl() = default;

void LEDTestPatternControl::Update()
{
    const auto old = std::exchange(pixmap_, Make());
    emit testPatternChange(pixmap_.get());
}

void LEDTestPatternControl::SetDirectory(const QString& directory)
{
    directory_ = directory;
    selection_ = FirstOfDirectoryBehindUserFile;
    Update();
}

void LEDTestPatternControl::SetFile(const QString& file)
{
    userFile_ = file;
    selection_ = UserFile;
    Update();
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
    const QStringList files = ListDirectory();
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

QStringList LEDTestPatternControl::ListDirectory() const
{
    const QDir directory(directory_);
    const QStringList names = directory.entryList(
        {QStringLiteral("*.bmp"), QStringLiteral("*.png"), QStringLiteral("*.gif")},
        QDir::Files | QDir::NoSymLinks | QDir::Readable | QDir::Hidden | QDir::NoDotAndDotDot);
    QStringList files;
    for (const QString& name : names)
        files.append(directory.filePath(name));
    return files;
}
