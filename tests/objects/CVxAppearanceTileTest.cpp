#include "CVxAppearance.h"
#include "CVxAppearanceTileGenCache.h"
#include "CVxPicBuf.h"
#include "CVxPictureLoadCache.h"
#include "VxPictureCacheScope.h"
#include "VxTestEnv.h"

#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

namespace {

const unsigned red = VX_RGB(220, 30, 30);
const unsigned blue = VX_RGB(30, 30, 220);
const unsigned grey = VX_RGB(128, 128, 128);

// A generated picture, read pixel by pixel as colour words.
class CTile
{
public:
    explicit CTile(CVxPicBuf* picture) : m_picture(picture) {}
    ~CTile()
    {
        if (m_picture)
            m_picture->Release();
    }
    CTile(const CTile&) = delete;
    CTile& operator=(const CTile&) = delete;
    int width() const { return m_picture ? m_picture->GetWidth() : 0; }
    int height() const { return m_picture ? m_picture->GetHeight() : 0; }
    unsigned pixel(int x, int y) const { return m_picture->GetPixel(x, y); }

private:
    CVxPicBuf* m_picture;
};

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

CVxPicBuf* Generate(const CVxAppearance& app)
{
    return app.GenerateTilePicture();
}

} // namespace

// Square tiles of 30 with joints of 3: the picture is one tile of 128 pixels,
// the joint 13 pixels along its right and bottom edges.
TEST(AppearanceTile, StackBondHasJointsAtTheTileEdges)
{
    const CTile picture(Generate(Tiled(0, 30, 30, 3)));
    ASSERT_EQ(128, picture.width());
    ASSERT_EQ(128, picture.height());
    EXPECT_EQ(red, picture.pixel(60, 60));
    EXPECT_EQ(red, picture.pixel(114, 114));
    EXPECT_EQ(grey, picture.pixel(115, 60));
    EXPECT_EQ(grey, picture.pixel(60, 115));
    EXPECT_EQ(grey, picture.pixel(127, 127));
    // Rectangular tiles keep their shape.
    const CTile rectangular(Generate(Tiled(0, 20, 10, 0)));
    EXPECT_EQ(128, rectangular.width());
    EXPECT_EQ(64, rectangular.height());
}

// Bricks of 40 by 20 with joints of 2: 128 by 64 pixels each, joints of 6,
// two across and two courses in the picture, the second course shifted by
// half a brick.
TEST(AppearanceTile, RunningBondShiftsEveryOtherCourse)
{
    const CTile picture(Generate(Tiled(1, 40, 20, 2)));
    ASSERT_EQ(256, picture.width());
    ASSERT_EQ(128, picture.height());
    // First course: head joints at the end of each brick.
    EXPECT_EQ(grey, picture.pixel(125, 30));
    EXPECT_EQ(grey, picture.pixel(253, 30));
    EXPECT_EQ(red, picture.pixel(60, 30));
    // Bed joint below each course.
    EXPECT_EQ(grey, picture.pixel(60, 61));
    EXPECT_EQ(grey, picture.pixel(60, 127));
    // Second course: head joints half a brick further.
    EXPECT_EQ(grey, picture.pixel(60, 90));
    EXPECT_EQ(red, picture.pixel(125, 90));
    EXPECT_EQ(red, picture.pixel(253, 90));
}

TEST(AppearanceTile, ChequerAlternatesMainAndBlend)
{
    CVxAppearance app = Tiled(2, 10, 10, 0);
    app.blend.color = blue;
    const CTile picture(Generate(app));
    ASSERT_EQ(256, picture.width());
    EXPECT_EQ(red, picture.pixel(10, 10));
    EXPECT_EQ(blue, picture.pixel(138, 10));
    EXPECT_EQ(blue, picture.pixel(10, 138));
    EXPECT_EQ(red, picture.pixel(138, 138));
}

TEST(AppearanceTile, SwitchedOffJointColourDrawsNoJoints)
{
    CVxAppearance app = Tiled(0, 30, 30, 3);
    app.jointColor = VX_ColorSwitchOff(grey);
    const CTile picture(Generate(app));
    EXPECT_EQ(red, picture.pixel(127, 127));
    EXPECT_EQ(red, picture.pixel(120, 60));
}

TEST(AppearanceTile, HugeJointsLeaveHalfATile)
{
    const CTile picture(Generate(Tiled(0, 10, 10, 1e300)));
    ASSERT_EQ(128, picture.width());
    EXPECT_EQ(red, picture.pixel(63, 63));
    EXPECT_EQ(grey, picture.pixel(64, 64));
}

TEST(AppearanceTile, TextureFillsEachTileFace)
{
    const CPictureCacheScope pictures;
    const CVxStringW path = VxTestTempFolder() + L"green.png";
    QImage texture(8, 8, QImage::Format_RGB32);
    texture.fill(qRgb(10, 200, 10));
    ASSERT_TRUE(texture.save(path.ToQString()));
    CVxAppearance app = Tiled(0, 30, 30, 3);
    app.main.texture = path;
    const CTile picture(Generate(app));
    EXPECT_EQ(VX_RGB(10, 200, 10), picture.pixel(60, 60));
    EXPECT_EQ(grey, picture.pixel(127, 60));
}

TEST(AppearanceTile, StretchedSurfaceGivesItsTexture)
{
    const CPictureCacheScope pictures;
    CVxAppearance app(red);
    bool release = true;
    EXPECT_EQ(nullptr, CVxAppearance::GetTilePicture(&app, release, false));
    EXPECT_FALSE(release);
    EXPECT_EQ(nullptr, CVxAppearance::GetTilePicture(nullptr, release, false));

    const CVxStringW path = VxTestTempFolder() + L"stretched.png";
    QImage texture(8, 4, QImage::Format_RGB32);
    texture.fill(qRgb(10, 20, 30));
    ASSERT_TRUE(texture.save(path.ToQString()));
    app.main.texture = path;
    CVxPicBuf* picture = CVxAppearance::GetTilePicture(&app, release, false);
    ASSERT_NE(nullptr, picture);
    EXPECT_TRUE(release);
    EXPECT_EQ(8, picture->GetWidth());
    EXPECT_EQ(VX_RGB(10, 20, 30), picture->GetPixel(1, 1));
    CVxPictureLoadCache::ReleasePicture(picture);
}

TEST(AppearanceTile, PictureIsCachedAndSharedByCopies)
{
    CVxAppearance app = Tiled(0, 30, 30, 3);
    EXPECT_FALSE(app.HasTileCacheImage());
    bool release = true;
    CVxPicBuf* first = CVxAppearance::GetTilePicture(&app, release, false);
    ASSERT_NE(nullptr, first);
    EXPECT_FALSE(release);
    EXPECT_EQ(first, app.GetTileCacheImage());
    EXPECT_EQ(1, first->GetRefCount());
    EXPECT_EQ(first, CVxAppearance::GetTilePicture(&app, release, false));
    {
        CVxAppearance copy = app;
        EXPECT_EQ(first, copy.GetTileCacheImage());
        EXPECT_EQ(2, first->GetRefCount());
        CVxAppearance assigned;
        assigned = copy;
        EXPECT_EQ(3, first->GetRefCount());
        const CVxAppearance& same = assigned;
        assigned = same;
        EXPECT_EQ(3, first->GetRefCount());
        // Changing the size makes the old picture wrong.
        copy.Scale(2, 2);
        EXPECT_FALSE(copy.HasTileCacheImage());
        EXPECT_EQ(2, first->GetRefCount());
    }
    EXPECT_EQ(1, first->GetRefCount());

    CVxPicBuf* regenerated = CVxAppearance::GetTilePicture(&app, release, true);
    EXPECT_NE(nullptr, regenerated);
    EXPECT_EQ(regenerated, app.GetTileCacheImage());

    // Without release the caller takes over the reference.
    app.ClearTileCacheImage(false);
    EXPECT_FALSE(app.HasTileCacheImage());
    EXPECT_EQ(1, regenerated->GetRefCount());
    regenerated->Release();

    // A saved picture is shared.
    auto* picture = new CVxPicBuf(4, 4, 3);
    app.SaveAsTileCacheImage(picture);
    EXPECT_EQ(2, picture->GetRefCount());
    EXPECT_EQ(picture, CVxAppearance::GetTilePicture(&app, release, false));
    app.ClearTileCacheImage(true);
    EXPECT_EQ(1, picture->GetRefCount());
    picture->Release();
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

    bool release = true;
    CVxPicBuf* picture = CVxAppearance::GetTilePicture(&app, release, false);
    ASSERT_NE(nullptr, picture);
    EXPECT_FALSE(release);
    EXPECT_EQ(16, picture->GetWidth());
    EXPECT_EQ(VX_RGB(1, 2, 3), picture->GetPixel(5, 5));
    EXPECT_EQ(128, CVxAppearance::GetTilePicture(&app, release, true)->GetWidth());

    cache.DeleteCacheFiles();
    EXPECT_EQ(0, cache.GetCount());
    EXPECT_FALSE(QFile::exists(file.ToQString()));
}
