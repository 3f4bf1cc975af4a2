// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QSettings>

#include "Support/TemporaryFolder.h"
#include "UI/TestPattern/LEDTestPatternControl.h"

namespace {

/// Pictures of one colour each, so that the picture in force tells itself.
class TestPattern : public testing::Test
{
protected:
    TestPattern() { QDir().mkpath(Directory()); }

    [[nodiscard]] QString Path(const QString& name) const
    {
        return QString::fromStdString(folder.Path().string()) + QLatin1Char('/') + name;
    }
    [[nodiscard]] QString Directory() const { return Path(QStringLiteral("pictures")); }
    void Picture(const QString& path, const QColor& colour) const
    {
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(colour);
        ASSERT_TRUE(image.save(path));
    }
    void ThreePictures() const
    {
        Picture(Directory() + QStringLiteral("/a.png"), Qt::red);
        Picture(Directory() + QStringLiteral("/b.bmp"), Qt::green);
        Picture(Directory() + QStringLiteral("/c.png"), Qt::blue);
        QFile(Directory() + QStringLiteral("/d.txt")).open(QIODevice::WriteOnly);
    }
    void Select(const QString& directory, const QString& file, int selection)
    {
        QSettings store(Path(QStringLiteral("store.ini")), QSettings::IniFormat);
        store.setValue(QStringLiteral("defaultImgDir"), directory);
        store.setValue(QStringLiteral("usrImgFile"), file);
        store.setValue(QStringLiteral("imgSelVal"), selection);
        control.ReadSettings(store);
        control.Update();
    }
    [[nodiscard]] QColor Shown() const { return control.GetPixmap()->toImage().pixelColor(1, 1); }

    Support::TemporaryFolder folder;
    LEDTestPatternControl control;
};

} // namespace

TEST_F(TestPattern, WithoutPicturesOfTheUserTheBuiltInOnesTakeTurns)
{
    Select(Directory(), QString(), 0);
    const QSize demo = control.GetPixmap()->size();
    control.Next();
    EXPECT_EQ(control.GetSelection(), 1);
    control.Next();
    EXPECT_EQ(control.GetSelection(), 0);
    EXPECT_EQ(control.GetPixmap()->size(), demo);
    control.Previous();
    EXPECT_EQ(control.GetSelection(), 1);
}

TEST_F(TestPattern, PreviousGoesToTheUserFileWhereThereIsOne)
{
    Picture(Path(QStringLiteral("own.png")), Qt::cyan);
    Select(Directory(), Path(QStringLiteral("own.png")), 0);
    control.Previous();
    EXPECT_EQ(control.GetSelection(), 2);
    EXPECT_EQ(Shown(), QColor(Qt::cyan));
}

TEST_F(TestPattern, AFolderOfPicturesInOrderAndRound)
{
    ThreePictures();
    Select(Directory(), QString(), 1);
    for (const auto& [selection, colour] :
         {std::pair(2, Qt::red), std::pair(3, Qt::green), std::pair(4, Qt::blue)})
    {
        control.Next();
        EXPECT_EQ(control.GetSelection(), selection);
        EXPECT_EQ(Shown(), QColor(colour));
    }
    control.Next();
    EXPECT_EQ(control.GetSelection(), 0);
    control.Previous();
    EXPECT_EQ(control.GetSelection(), 4);
}

TEST_F(TestPattern, TheUserFileMovesTheFolderUpByOne)
{
    ThreePictures();
    Picture(Path(QStringLiteral("own.png")), Qt::cyan);
    control.SetDirectory(Directory());
    EXPECT_EQ(Shown(), QColor(Qt::green)) << "without a user file 3 is the second picture";
    control.SetFile(Path(QStringLiteral("own.png")));
    EXPECT_EQ(control.GetSelection(), 2);
    EXPECT_EQ(Shown(), QColor(Qt::cyan));
    control.SetDirectory(Directory());
    EXPECT_EQ(Shown(), QColor(Qt::red));
    control.Previous();
    EXPECT_EQ(Shown(), QColor(Qt::cyan));
}

TEST_F(TestPattern, WhatCantBeReadIsPassedOverForward)
{
    ThreePictures();
    QFile broken(Directory() + QStringLiteral("/b.bmp"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
    broken.write("nothing");
    broken.close();
    Select(Directory(), QString(), 2);
    control.Next();
    EXPECT_EQ(Shown(), QColor(Qt::blue));
    control.Previous();
    EXPECT_EQ(Shown(), QColor(Qt::blue)) << "back would be the broken one";
    for (const char* name : {"/a.png", "/c.png"})
        QFile::remove(Directory() + QLatin1String(name));
    control.Next();
    EXPECT_EQ(control.GetSelection(), 0) << "none loads";
}

TEST_F(TestPattern, AFolderThatIsGoneFallsBack)
{
    Select(Path(QStringLiteral("gone")), QString(), 4);
    EXPECT_EQ(control.GetSelection(), 0);
    Picture(Path(QStringLiteral("own.png")), Qt::cyan);
    Select(Path(QStringLiteral("gone")), Path(QStringLiteral("own.png")), 2);
    EXPECT_EQ(control.GetSelection(), 2);
    EXPECT_EQ(Shown(), QColor(Qt::cyan));
}

TEST_F(TestPattern, TheOldPictureLivesUntilTheNewOneIsTaken)
{
    Select(Directory(), QString(), 0);
    const QPixmap* old = control.GetPixmap();
    QSize oldSize;
    QObject::connect(&control, &LEDTestPatternControl::testPatternChange, [&](QPixmap* picture) {
        EXPECT_NE(picture, old);
        oldSize = old->size();
    });
    control.Next();
    EXPECT_FALSE(oldSize.isEmpty());
}

TEST_F(TestPattern, TheCorrectedSelectionIsKept)
{
    Select(Directory(), QString(), 9);
    QSettings store(Path(QStringLiteral("store.ini")), QSettings::IniFormat);
    control.WriteSettings(store);
    EXPECT_EQ(store.value(QStringLiteral("imgSelVal")).toInt(), 0);
    EXPECT_EQ(store.value(QStringLiteral("defaultImgDir")), Directory());
}
