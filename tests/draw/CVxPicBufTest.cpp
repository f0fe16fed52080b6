// The picture buffer that the surface draws and the cache that shares
// picture files by path.

#include "CVxPicBuf.h"
#include "CVxPictureLoadCache.h"
#include "VxTestEnv.h"

#include <QFile>

#include <gtest/gtest.h>

TEST(CVxPicBuf, SizedCopiesAreKeptUntilThePixelsChange)
{
    CVxPicBuf picture(40, 20, 3);
    picture.Fill(0x0000FF);
    EXPECT_EQ(picture.CacheForSize(40, 20, true), &picture);
    EXPECT_EQ(picture.CacheForSize(80, 40, true), &picture);
    EXPECT_EQ(picture.CacheForSize(0, 10, true), &picture);
    CVxPicBuf* small = picture.CacheForSize(10, 5, true);
    ASSERT_NE(small, &picture);
    EXPECT_EQ(small->GetWidth(), 10);
    EXPECT_EQ(small->GetHeight(), 5);
    EXPECT_EQ(small->GetPixel(5, 2), 0x0000FFu);
    EXPECT_EQ(picture.CacheForSize(10, 5, true), small);
    EXPECT_NE(picture.CacheForSize(10, 5, false), small);

    picture.Fill(0xFF0000);
    EXPECT_EQ(picture.CacheForSize(10, 5, true)->GetPixel(5, 2), 0xFF0000u);
}

TEST(CVxPicBuf, ViewSharesThePixelsOfItsPart)
{
    CVxPicBuf picture(10, 10, 3);
    picture.SetPixel(6, 3, 0x123456);
    const CVxPicBuf& source = picture;
    CVxPicBuf* view = source.CreateView(4, 2, 5, 6);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->GetWidth(), 5);
    EXPECT_EQ(view->GetHeight(), 6);
    const CVxPicBuf& constView = *view;
    EXPECT_EQ(constView.GetRow(1), source.GetRow(3) + 4 * 3);
    EXPECT_EQ(view->GetPixel(2, 1), 0x123456u);
    // Writing to the source afterwards leaves the view as it was.
    picture.SetPixel(6, 3, 0xFFFFFF);
    EXPECT_EQ(view->GetPixel(2, 1), 0x123456u);
    view->Release();

    CVxPicBuf* clipped = source.CreateView(8, 8, 10, 10);
    ASSERT_NE(clipped, nullptr);
    EXPECT_EQ(clipped->GetWidth(), 2);
    clipped->Release();
    EXPECT_EQ(source.CreateView(10, 0, 3, 3), nullptr);
}

TEST(CVxPicBuf, FilesRoundTripWithTheirComponents)
{
    const CVxStringW folder = VxTestTempFolder();
    CVxPicBuf opaque(6, 4, 3);
    opaque.Fill(0x204080);
    ASSERT_TRUE(opaque.SaveToFile(folder + L"opaque.png"));
    CVxPicBuf translucent(3, 5, 4);
    translucent.Fill(0x204080, 77);
    ASSERT_TRUE(translucent.SaveToFile(folder + L"translucent.png"));

    CVxPicBuf read;
    ASSERT_TRUE(read.CreateFromFile(folder + L"opaque.png"));
    EXPECT_EQ(read.GetComponents(), 3);
    EXPECT_EQ(read.GetPixel(5, 3), 0x204080u);
    EXPECT_EQ(read.GetFilePath(), folder + L"opaque.png");
    ASSERT_TRUE(read.CreateFromFile(folder + L"translucent.png"));
    EXPECT_EQ(read.GetComponents(), 4);
    unsigned char alpha = 0;
    read.GetPixel(1, 1, &alpha);
    EXPECT_EQ(alpha, 77);

    int width = 0;
    int height = 0;
    ASSERT_TRUE(CVxPicBuf::GetFileDimensions(folder + L"translucent.png", width, height));
    EXPECT_EQ(width, 3);
    EXPECT_EQ(height, 5);
    EXPECT_FALSE(CVxPicBuf::GetFileDimensions(folder + L"missing.png", width, height));
    EXPECT_FALSE(read.CreateFromFile(folder + L"missing.png"));
    EXPECT_EQ(read.GetWidth(), 3);
}

class CVxPictureLoadCacheTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        CVxPictureLoadCache::Clear();
        m_path = VxTestTempFolder() + L"texture.png";
        CVxPicBuf picture(8, 8, 3);
        picture.Fill(0x00FF00);
        ASSERT_TRUE(picture.SaveToFile(m_path));
    }
    void TearDown() override { CVxPictureLoadCache::Clear(); }

    CVxStringW m_path;
};

TEST_F(CVxPictureLoadCacheTest, OneLoadPerPathSharedByAllUsers)
{
    CVxPictureLoadCache::ResetDrawnFlags();
    CVxPicBuf* first = CVxPictureLoadCache::GetPicture(m_path);
    ASSERT_NE(first, nullptr);
    // The file is read once: a second user gets the picture even after the
    // file is gone, and another spelling of the path finds it too.
    QFile::remove(m_path.ToQString());
    CVxPicBuf* second = CVxPictureLoadCache::GetPicture(m_path);
    const CVxStringW folder = VxTestTempFolder();
    CVxPicBuf* third = CVxPictureLoadCache::GetPicture(folder + L"./sub/../texture.png");
    EXPECT_EQ(second, first);
    EXPECT_EQ(third, first);
    EXPECT_EQ(CVxPictureLoadCache::GetCount(), 1);
    EXPECT_EQ(first->GetPixel(3, 3), 0x00FF00u);
    CVxPictureLoadCache::ReleasePicture(first);
    CVxPictureLoadCache::ReleasePicture(second);
    CVxPictureLoadCache::ReleasePicture(third);
}

TEST_F(CVxPictureLoadCacheTest, LastUserReleasesAPictureNotDrawnInThisPass)
{
    CVxPicBuf* a = CVxPictureLoadCache::GetPicture(m_path);
    CVxPicBuf* b = CVxPictureLoadCache::GetPicture(m_path);
    ASSERT_NE(a, nullptr);
    // A new pass begins while both users hold the picture.
    CVxPictureLoadCache::ResetDrawnFlags();
    CVxPictureLoadCache::RemovePicturesNotDrawn();
    EXPECT_TRUE(CVxPictureLoadCache::IsLoaded(m_path));
    CVxPictureLoadCache::ReleasePicture(a);
    EXPECT_TRUE(CVxPictureLoadCache::IsLoaded(m_path));
    CVxPictureLoadCache::ReleasePicture(b);
    EXPECT_FALSE(CVxPictureLoadCache::IsLoaded(m_path));
    EXPECT_EQ(CVxPictureLoadCache::GetCount(), 0);

    // A picture drawn in a pass stays until a pass without it.
    CVxPictureLoadCache::ResetDrawnFlags();
    CVxPicBuf* picture = CVxPictureLoadCache::GetPicture(m_path);
    ASSERT_NE(picture, nullptr);
    CVxPictureLoadCache::ReleasePicture(picture);
    CVxPictureLoadCache::RemovePicturesNotDrawn();
    EXPECT_TRUE(CVxPictureLoadCache::IsLoaded(m_path));

    CVxPictureLoadCache::ResetDrawnFlags();
    CVxPictureLoadCache::RemovePicturesNotDrawn();
    EXPECT_FALSE(CVxPictureLoadCache::IsLoaded(m_path));
}
