#include "CVxAppearance.h"
#include "CVxAppearanceTileGenCache.h"
#include "VxTestEnv.h"

#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

namespace {

const unsigned red = VX_RGB(220, 30, 30);
const unsigned blue = VX_RGB(30, 30, 220);
const unsigned grey = VX_RGB(128, 128, 128);

QRgb Rgb(unsigned colour)
{
    return qRgb(int(VX_GetRValue(colour)), int(VX_GetGValue(colour)), int(VX_GetBValue(colour)));
}

CVxAppearance Tiled(int pattern, double sizeX, double sizeY, double joint)
{
    CVxAppearance app(red);
    app.tileMode = 1;
    app.tilePattern = pattern;
    app.tileSizeX = sizeX;
    app.tileSizeY = sizeY;
    app.jointWidth = joint;
    app.jointColor = grey;
    return app;
}

QImage Generate(CVxAppearance app)
{
    bool release = true;
    QImage picture = CVxAppearance::GetTilePicture(&app, release, true);
    EXPECT_FALSE(release);
    return picture;
}

} // namespace

// Square tiles of 30 with joints of 3: the picture is one tile of 128 pixels,
// the joint 13 pixels along its right and bottom edges.
TEST(AppearanceTile, StackBondHasJointsAtTheTileEdges)
{
    const QImage picture = Generate(Tiled(0, 30, 30, 3));
    ASSERT_EQ(128, picture.width());
    ASSERT_EQ(128, picture.height());
    EXPECT_EQ(Rgb(red), picture.pixel(60, 60));
    EXPECT_EQ(Rgb(red), picture.pixel(0, 0));
    EXPECT_EQ(Rgb(red), picture.pixel(114, 114));
    EXPECT_EQ(Rgb(grey), picture.pixel(115, 60));
    EXPECT_EQ(Rgb(grey), picture.pixel(127, 10));
    EXPECT_EQ(Rgb(grey), picture.pixel(60, 115));
    EXPECT_EQ(Rgb(grey), picture.pixel(10, 127));
    EXPECT_EQ(Rgb(grey), picture.pixel(127, 127));
}

TEST(AppearanceTile, RectangularTilesKeepTheirShape)
{
    const QImage picture = Generate(Tiled(0, 20, 10, 0));
    EXPECT_EQ(128, picture.width());
    EXPECT_EQ(64, picture.height());
}

// Bricks of 40 by 20 with joints of 2: 128 by 64 pixels each, joints of 6,
// two across and two courses in the picture, the second course shifted by
// half a brick.
TEST(AppearanceTile, RunningBondShiftsEveryOtherCourse)
{
    const QImage picture = Generate(Tiled(1, 40, 20, 2));
    ASSERT_EQ(256, picture.width());
    ASSERT_EQ(128, picture.height());
    // First course: head joints at the end of each brick.
    EXPECT_EQ(Rgb(grey), picture.pixel(125, 30));
    EXPECT_EQ(Rgb(grey), picture.pixel(253, 30));
    EXPECT_EQ(Rgb(red), picture.pixel(60, 30));
    EXPECT_EQ(Rgb(red), picture.pixel(188, 30));
    // Bed joint below each course.
    EXPECT_EQ(Rgb(grey), picture.pixel(60, 61));
    EXPECT_EQ(Rgb(grey), picture.pixel(60, 127));
    // Second course: head joints half a brick further.
    EXPECT_EQ(Rgb(grey), picture.pixel(60, 90));
    EXPECT_EQ(Rgb(grey), picture.pixel(188, 90));
    EXPECT_EQ(Rgb(red), picture.pixel(125, 90));
    EXPECT_EQ(Rgb(red), picture.pixel(253, 90));
}

TEST(AppearanceTile, ChequerAlternatesMainAndBlend)
{
    CVxAppearance app = Tiled(2, 10, 10, 0);
    app.blend.color = blue;
    const QImage picture = Generate(app);
    ASSERT_EQ(256, picture.width());
    EXPECT_EQ(Rgb(red), picture.pixel(10, 10));
    EXPECT_EQ(Rgb(blue), picture.pixel(138, 10));
    EXPECT_EQ(Rgb(blue), picture.pixel(10, 138));
    EXPECT_EQ(Rgb(red), picture.pixel(138, 138));
}

TEST(AppearanceTile, SwitchedOffJointColourDrawsNoJoints)
{
    CVxAppearance app = Tiled(0, 30, 30, 3);
    app.jointColor = VX_ColorSwitchOff(grey);
    const QImage picture = Generate(app);
    EXPECT_EQ(Rgb(red), picture.pixel(127, 127));
    EXPECT_EQ(Rgb(red), picture.pixel(120, 60));
}

TEST(AppearanceTile, HugeJointsLeaveHalfATile)
{
    const QImage picture = Generate(Tiled(0, 10, 10, 1e300));
    ASSERT_EQ(128, picture.width());
    EXPECT_EQ(Rgb(red), picture.pixel(63, 63));
    EXPECT_EQ(Rgb(grey), picture.pixel(64, 64));
}

TEST(AppearanceTile, TextureFillsEachTileFace)
{
    const CVxStringW path = VxTestTempFolder() + L"green.png";
    QImage texture(8, 8, QImage::Format_RGB32);
    texture.fill(qRgb(10, 200, 10));
    ASSERT_TRUE(texture.save(path.ToQString()));
    CVxAppearance app = Tiled(0, 30, 30, 3);
    app.main.texture = path;
    const QImage picture = Generate(app);
    EXPECT_EQ(qRgb(10, 200, 10), picture.pixel(60, 60));
    EXPECT_EQ(Rgb(grey), picture.pixel(127, 60));
}

TEST(AppearanceTile, StretchedSurfaceGivesItsTexture)
{
    CVxAppearance app(red);
    bool release = true;
    EXPECT_TRUE(CVxAppearance::GetTilePicture(&app, release, false).isNull());
    EXPECT_TRUE(CVxAppearance::GetTilePicture(nullptr, release, false).isNull());
}

TEST(AppearanceTile, PictureIsCachedAndSharedByCopies)
{
    CVxAppearance app = Tiled(0, 30, 30, 3);
    EXPECT_FALSE(app.HasTileCacheImage());
    bool release = false;
    const QImage first = CVxAppearance::GetTilePicture(&app, release, false);
    ASSERT_TRUE(app.HasTileCacheImage());
    CVxAppearance copy = app;
    EXPECT_TRUE(copy.HasTileCacheImage());
    EXPECT_EQ(first.cacheKey(), CVxAppearance::GetTilePicture(&copy, release, false).cacheKey());

    app.ClearTileCacheImage(true);
    EXPECT_FALSE(app.HasTileCacheImage());
    EXPECT_TRUE(copy.HasTileCacheImage());
    // Changing the size makes the old picture wrong.
    copy.Scale(2, 2);
    EXPECT_FALSE(copy.HasTileCacheImage());
}

TEST(AppearanceTile, RegisteredFileStandsForTheGeneratedTile)
{
    CVxAppearanceTileGenCache& cache = CVxAppearanceTileGenCache::GetInstance();
    cache.DeleteCacheFiles();
    CVxAppearance app = Tiled(0, 30, 30, 3);

    const CVxStringW file = VxTestTempFolder() + L"tile_cache.png";
    QImage stored(16, 16, QImage::Format_RGB32);
    stored.fill(qRgb(1, 2, 3));
    ASSERT_TRUE(stored.save(file.ToQString()));
    cache.RegisterTileCache(app, file);
    cache.RegisterTileCache(app, file);
    EXPECT_EQ(1, cache.GetCount());
    EXPECT_EQ(file, cache.GetCacheFile(app));

    CVxAppearance other = app;
    other.jointColor = blue;
    EXPECT_TRUE(cache.GetCacheFile(other).IsEmpty());

    bool release = false;
    const QImage picture = CVxAppearance::GetTilePicture(&app, release, false);
    EXPECT_EQ(16, picture.width());
    EXPECT_EQ(qRgb(1, 2, 3), picture.pixel(5, 5));
    EXPECT_EQ(128, CVxAppearance::GetTilePicture(&app, release, true).width());

    cache.DeleteCacheFiles();
    EXPECT_EQ(0, cache.GetCount());
    EXPECT_FALSE(QFile::exists(file.ToQString()));
}
