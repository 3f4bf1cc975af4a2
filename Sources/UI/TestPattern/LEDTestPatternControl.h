// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

#include <QDateTime>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <QStringList>

class QSettings;

/// Which picture the canvas shows and the engine samples: one of two built-in pictures, one file of
/// the user or the pictures of one directory. The selection counts through them in this order, and
/// a picture that can't be read is skipped. Main thread only.
class LEDTestPatternControl : public QObject
{
    Q_OBJECT

public:
    explicit LEDTestPatternControl(QObject* parent = nullptr);
    ~LEDTestPatternControl() override;

    /// The current picture; null before the first Update.
    [[nodiscard]] QPixmap* GetPixmap() const { return pixmap_.get(); }
    [[nodiscard]] std::int32_t GetSelection() const { return selection_; }

    /// Loads the selected picture, corrects a selection that has no picture, and emits
    /// testPatternChange. Where the directory has none any more, a picture of it that is shown
    /// stays; the next step leaves it.
    void Update();

    /// Shows the pictures of this directory, from the first one that can be read. False, with
    /// everything as it was, when there is none.
    [[nodiscard]] bool SetDirectory(const QString& directory);
    /// Shows this file. Why it can't be read, with everything as it was; empty when it is shown.
    [[nodiscard]] QString SetFile(const QString& file);
    void Next();
    void Previous();

    /// The names of files that may be pictures which can be read, such as "*.png".
    [[nodiscard]] static QStringList NameFilters();

    /// A missing key reads as empty and 0. No picture is loaded yet.
    void ReadSettings(const QSettings& store);
    void WriteSettings(QSettings& store) const;

signals:
    /// The old picture lives until all receivers have taken the new one.
    void testPatternChange(QPixmap* newtestpattern);
    /// The selection leads into the directory, in which no picture can be read now.
    void directoryHasNone(const QString& directory);

private:
    /// A file as it was when it was last tried.
    struct TriedFile
    {
        QString path;
        QDateTime changed;
        qint64 size = 0;
        bool operator==(const TriedFile&) const = default;
    };

    void Step(std::int32_t by);
    /// Decodes the user's file only when it has changed.
    [[nodiscard]] bool HasUserPicture();
    /// Null when the selection leads into a directory that has none.
    [[nodiscard]] std::unique_ptr<QPixmap> Make();
    [[nodiscard]] std::unique_ptr<QPixmap> MakeWithoutDirectory();
    [[nodiscard]] std::unique_ptr<QPixmap> MakeFromDirectory(const QStringList& files);
    /// Where the round goes on without a directory.
    [[nodiscard]] std::unique_ptr<QPixmap> NearestBuiltIn();
    [[nodiscard]] std::unique_ptr<QPixmap> BuiltIn(std::int32_t which);
    void Show(std::unique_ptr<QPixmap> picture);

    QString directory_;
    QString userFile_;
    std::unique_ptr<QPixmap> pixmap_;
    std::int32_t selection_ = 0;
    bool isFromDirectory_ = false; ///< the picture, as far as a step keeps it there
    TriedFile triedFile_;
    bool triedFileIsPicture_ = false;
};
