// The picture buffer that the surface draws and the cache that shares
// picture files by path.

#include "CVxPicBuf.h"
#include "CVxPictureLoadCache.h"
#include "VxTestEnv.h"

#include <QFile>

#include <gtest/gtest.h>

TEST(CVxPicBuf, CreatesRowsOfOneThreeOrFourComponents)
{
    for (int components : {1, 3, 4}) {
        CVxPicBuf picture(7, 5, components);
        ASSERT_FALSE(picture.IsEmpty()) << components;
        EXPECT_EQ(picture.GetWidth(), 7);
        EXPECT_EQ(picture.GetHeight(), 5);
        EXPECT_EQ(picture.GetComponents(), components);
        EXPECT_GE(picture.GetBytesPerLine(), 7 * components);
        EXPECT_EQ(picture.GetRow(0)[0], 0);
        EXPECT_EQ(picture.GetRow(5), nullptr);
        EXPECT_EQ(picture.GetRow(-1), nullptr);
    }
    CVxPicBuf twoComponents;
    EXPECT_FALSE(twoComponents.Create(4, 4, 2));
    EXPECT_FALSE(twoComponents.Create(0, 4, 3));
    EXPECT_TRUE(twoComponents.IsEmpty());
}

TEST(CVxPicBuf, PixelsAreRedGreenBlueAlphaInTheRow)
{
    CVxPicBuf picture(3, 2, 4);
    picture.SetPixel(1, 1, 0x332211, 200);
    const unsigned char* row = picture.GetRow(1);
    EXPECT_EQ(row[4], 0x11);
    EXPECT_EQ(row[5], 0x22);
    EXPECT_EQ(row[6], 0x33);
    EXPECT_EQ(row[7], 200);
    unsigned char alpha = 0;
    EXPECT_EQ(picture.GetPixel(1, 1, &alpha), 0x332211u);
    EXPECT_EQ(alpha, 200);
    EXPECT_EQ(picture.GetPixel(3, 1, &alpha), 0u);
    EXPECT_EQ(alpha, 0);

    CVxPicBuf grey(2, 2, 1);
    grey.SetPixel(0, 0, 0x0000FF);
    EXPECT_EQ(grey.GetPixel(0, 0), 0x555555u);
}

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
    EXPECT_EQ(small->GetComponents(), 3);
    EXPECT_EQ(small->GetPixel(5, 2), 0x0000FFu);
    EXPECT_EQ(picture.CacheForSize(10, 5, true), small);
    EXPECT_NE(picture.CacheForSize(10, 5, false), small);

    picture.Fill(0xFF0000);
    EXPECT_EQ(picture.CacheForSize(10, 5, true)->GetPixel(5, 2), 0xFF0000u);
}

TEST(CVxPicBuf, SizedCopiesOfManySizesStayUsable)
{
    CVxPicBuf picture(64, 64, 4);
    picture.Fill(0x00FF00, 255);
    for (int size = 8; size < 40; ++size) {
        CVxPicBuf* copy = picture.CacheForSize(size, size, size % 2 == 0);
        ASSERT_EQ(copy->GetWidth(), size);
        EXPECT_EQ(copy->GetPixel(size / 2, size / 2), 0x00FF00u);
    }
}

TEST(CVxPicBuf, GreyCopyTakesTheMeanAndKeepsAlpha)
{
    CVxPicBuf picture(2, 1, 4);
    picture.SetPixel(0, 0, 0x0000FF, 100);
    picture.SetPixel(1, 0, 0x303030, 255);
    CVxPicBuf* grey = picture.CacheGrey();
    ASSERT_NE(grey, &picture);
    unsigned char alpha = 0;
    EXPECT_EQ(grey->GetPixel(0, 0, &alpha), 0x555555u);
    EXPECT_EQ(alpha, 100);
    EXPECT_EQ(picture.CacheGrey(), grey);

    CVxPicBuf rgb(1, 1, 3);
    rgb.SetPixel(0, 0, 0x00FF00);
    EXPECT_EQ(rgb.CacheGrey()->GetComponents(), 1);
    EXPECT_EQ(rgb.CacheGrey()->GetPixel(0, 0), 0x555555u);
    CVxPicBuf alreadyGrey(1, 1, 1);
    EXPECT_EQ(alreadyGrey.CacheGrey(), &alreadyGrey);
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

TEST(CVxPicBuf, ReferencesCountFromOne)
{
    auto* picture = new CVxPicBuf(2, 2, 3);
    EXPECT_EQ(picture->GetRefCount(), 1);
    picture->AddRef();
    EXPECT_EQ(picture->GetRefCount(), 2);
    picture->Release();
    EXPECT_EQ(picture->GetRefCount(), 1);
    picture->Release();
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
}

TEST_F(CVxPictureLoadCacheTest, PictureDrawnInAPassStaysUntilAPassWithoutIt)
{
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

TEST_F(CVxPictureLoadCacheTest, KeptPictureMarkedAsDrawnSurvivesThePass)
{
    CVxPicBuf* picture = CVxPictureLoadCache::GetPicture(m_path);
    ASSERT_NE(picture, nullptr);
    picture->AddRef();
    CVxPictureLoadCache::ReleasePicture(picture);
    CVxPictureLoadCache::ResetDrawnFlags();
    CVxPictureLoadCache::MarkDrawn(picture);
    picture->Release();
    CVxPictureLoadCache::RemovePicturesNotDrawn();
    EXPECT_TRUE(CVxPictureLoadCache::IsLoaded(m_path));
}

TEST_F(CVxPictureLoadCacheTest, UnreadableFileGivesNull)
{
    EXPECT_EQ(CVxPictureLoadCache::GetPicture(VxTestTempFolder() + L"missing.png"), nullptr);
    EXPECT_EQ(CVxPictureLoadCache::GetPicture(L""), nullptr);
    EXPECT_EQ(CVxPictureLoadCache::GetCount(), 0);
}

TEST_F(CVxPictureLoadCacheTest, ClearLeavesHeldPicturesAlive)
{
    CVxPicBuf* picture = CVxPictureLoadCache::GetPicture(m_path);
    ASSERT_NE(picture, nullptr);
    CVxPictureLoadCache::Clear();
    EXPECT_EQ(CVxPictureLoadCache::GetCount(), 0);
    EXPECT_EQ(picture->GetRefCount(), 1);
    EXPECT_EQ(picture->GetPixel(0, 0), 0x00FF00u);
    CVxPictureLoadCache::ReleasePicture(picture);
}
