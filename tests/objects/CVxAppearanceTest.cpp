#include "CVxAppearance.h"
#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxPicBuf.h"
#include "CVxPictureLoadCache.h"
#include "CVxStringReader.h"
#include "CVxStringTokenizer.h"
#include "VxPictureCacheScope.h"
#include "VxTestEnv.h"

#include <QDir>
#include <QFile>
#include <QImage>

#include <gtest/gtest.h>

namespace {

CVxAppearance TiledFloor()
{
    CVxAppearance app;
    app.kind = 2;
    app.main = CVxMaterial(VX_RGB(200, 180, 150), 10, L"/textures/stone.jpg");
    app.blend = CVxMaterial(VX_RGB(20, 30, 40), 55, L"/textures/dirt.png");
    app.tileMode = 1;
    app.tilePattern = 2;
    app.tileSizeX = 30.5;
    app.tileSizeY = 60.25;
    app.rotation = 45;
    app.offset = CVxDPoint(1.5, -2.75);
    app.jointWidth = 0.5;
    app.jointColor = VX_RGB(90, 90, 90);
    app.flags = 1;
    app.tileName = L"stone30";
    return app;
}

int TokenCount(const CVxStringW& text)
{
    // The tokenizer drops an empty last field; count separators instead.
    int count = 1;
    for (int i = 0; i < text.GetLength(); ++i)
        count += text[i] == L'|' ? 1 : 0;
    return count;
}

} // namespace

TEST(Appearance, DefaultsOfANewSurface)
{
    CVxAppearance app;
    EXPECT_FALSE(app.HasJoints());
    EXPECT_FALSE(app.IsTiled());
    app = TiledFloor();
    app.Reset();
    EXPECT_EQ(CVxAppearance(), app);
    EXPECT_TRUE(app.tileName.IsEmpty());
    EXPECT_EQ(CVxAppearance::stringTokenCount, TokenCount(app.SaveToString(nullptr)));
}

TEST(Appearance, StringRoundTripKeepsEveryField)
{
    const CVxAppearance app = TiledFloor();
    const CVxStringW text = app.SaveToString(nullptr);
    EXPECT_EQ(CVxAppearance::stringTokenCount, TokenCount(text));

    CVxAppearance back;
    ASSERT_TRUE(back.LoadFromString(text, nullptr));
    EXPECT_EQ(app, back);
    EXPECT_EQ(text, back.SaveToString(nullptr));
    EXPECT_EQ(1, back.flags);
    EXPECT_EQ(CVxStringW(L"stone30"), back.tileName);
}

TEST(Appearance, TokensAreReadByPosition)
{
    CVxAppearance app;
    // Rotation is token 5, joint width 9, main colour 13, the old colour
    // fields 14 and 15 are not read, blend colour is 16.
    ASSERT_TRUE(app.LoadFromString(L"a.jpg||0|1|1|90|77|10|20|2|3|4|99|0x00FF00|0x123456|0x654321|0x0000FF",
                                   nullptr));
    EXPECT_EQ(CVxStringW(L"a.jpg"), app.main.texture);
    EXPECT_EQ(1, app.tileMode);
    EXPECT_EQ(90, app.rotation);
    EXPECT_DOUBLE_EQ(10, app.tileSizeX);
    EXPECT_DOUBLE_EQ(2, app.jointWidth);
    EXPECT_DOUBLE_EQ(3, app.offset.x);
    EXPECT_EQ(0x00FF00u, app.main.color);
    EXPECT_EQ(0x0000FFu, app.blend.color);
}

TEST(Appearance, FourteenTokensKeepTheDefaultJointColour)
{
    CVxAppearance app;
    ASSERT_TRUE(app.LoadFromString(L"||0|1|0|0|-1|10|10|1|0|0|0|0x336699", nullptr));
    EXPECT_EQ(0x336699u, app.main.color);
    EXPECT_EQ(CVxAppearance::defaultJointColor, app.jointColor);
}

TEST(Appearance, TokensThatAreNoNumbersKeepTheField)
{
    CVxAppearance app;
    ASSERT_TRUE(app.LoadFromString(L"||x|1|y|z|-1|big|nan|inf|0|0|0|blue|||0x10|0xZZ|none", nullptr));
    EXPECT_EQ(0, app.kind);
    EXPECT_EQ(1, app.tileMode);
    EXPECT_EQ(0, app.rotation);
    EXPECT_DOUBLE_EQ(0, app.tileSizeX);
    EXPECT_DOUBLE_EQ(0, app.jointWidth);
    EXPECT_EQ(0xFFFFFFu, app.main.color);
    EXPECT_EQ(0x10u, app.blend.color);
    EXPECT_EQ(CVxAppearance::defaultJointColor, app.jointColor);
    EXPECT_EQ(0, app.flags);
}

TEST(Appearance, OldColourFieldsAreDecimalOrHex)
{
    CVxAppearance app;
    ASSERT_TRUE(app.LoadFromString(L"||0|0|0|0|-1|0|0|0|0|0|0|16711680||||-268435456", nullptr));
    EXPECT_EQ(0xFF0000u, app.main.color);
    EXPECT_EQ(0xF0000000u, app.jointColor);
}

TEST(Appearance, StretchedSurfacesIgnoreTheirTiling)
{
    CVxAppearance a, b;
    a.rotation = 0;
    b.rotation = 90;
    b.tileSizeX = 5;
    b.jointColor = 0x123456;
    EXPECT_EQ(a, b);

    a.tileMode = b.tileMode = 1;
    EXPECT_NE(a, b);
    b.rotation = 0;
    b.tileSizeX = 0;
    b.jointColor = a.jointColor;
    EXPECT_EQ(a, b);
    b.offset.x = 1;
    EXPECT_NE(a, b);

    // Materials always count, the tile name never.
    a = b = CVxAppearance();
    b.main.transparency = 20;
    EXPECT_NE(a, b);
    b = a;
    b.blend.texture = L"x.png";
    EXPECT_NE(a, b);
    b = a;
    b.tileName = L"other";
    EXPECT_EQ(a, b);
}

TEST(Appearance, TexturePathsGoThroughWriterAndReader)
{
    const CVxStringW folder = VxTestTempFolder() + L"paths/";
    ASSERT_TRUE(QDir().mkpath((folder + L"tex").ToQString()));
    QImage(4, 4, QImage::Format_RGB32).save((folder + L"tex/wood.png").ToQString());
    const CVxStringW projectPath = folder + L"house.pvp";

    CVxAppearance app;
    app.main.texture = folder + L"tex/wood.png";
    CVxStringW text;
    {
        CVxIniWriter writer(projectPath);
        ASSERT_TRUE(writer.IsOpened());
        text = app.SaveToString(&writer);
        writer.StartSection("Surface");
        writer.WriteString("Appear", text);
        writer.Finalize();
    }
    EXPECT_TRUE(text.StartsWith(CVxStringW(L"tex/wood.png|"))) << text.ToQString().toStdString();

    CVxIniFileReader reader(projectPath, 65001);
    ASSERT_TRUE(reader.IsOpened());
    CVxAppearance back;
    back.LoadFromString(text, &reader);
    EXPECT_EQ(folder + L"tex/wood.png", back.main.texture);
    EXPECT_TRUE(reader.GetMissingFiles().empty());
}

TEST(Appearance, OldFilesLayStretchedTexturesAtRealSize)
{
    const CVxStringW text =
        L"/t/a.jpg||0|0|0|0|-1|0|0|0|0|0|0|0xFFFFFF|0xFFFFFF|0xFFFFFF|0x000000|0xEFDEDEDE|0|0|0|";
    CVxStringReader oldReader(CVxStringA(), 0);
    oldReader.SetProjectVersion(700);
    CVxAppearance app;
    app.LoadFromString(text, &oldReader);
    EXPECT_EQ(CVxAppearance::flagRealTileSize, app.flags);

    CVxStringReader newReader(CVxStringA(), 0);
    newReader.SetProjectVersion(720);
    app.LoadFromString(text, &newReader);
    EXPECT_EQ(0, app.flags);

    // A tiled surface or one without a texture is left alone.
    app.LoadFromString(L"||0|0|0|0|-1", &oldReader);
    EXPECT_EQ(0, app.flags);
    app.LoadFromString(L"/t/a.jpg||0|1|0|0|-1", &oldReader);
    EXPECT_EQ(0, app.flags);
}

TEST(Appearance, ScaleTilesAndJoints)
{
    CVxAppearance app = TiledFloor();
    app.Scale(2.0, 0.5);
    EXPECT_DOUBLE_EQ(61.0, app.tileSizeX);
    EXPECT_DOUBLE_EQ(30.125, app.tileSizeY);
    EXPECT_DOUBLE_EQ(-1.375, app.offset.y);
    EXPECT_DOUBLE_EQ(1.0, app.jointWidth);
}

TEST(Appearance, DifferingFieldsBecomeUndefinedAndAreNotCopied)
{
    CVxAppearance merged = TiledFloor();
    CVxAppearance other = TiledFloor();
    other.main.color = 0x0000FF;
    other.rotation = 10;
    other.tileSizeX = 1;
    EXPECT_FALSE(merged.HasUndefMember());
    merged.CheckDiffToUndef(other);
    EXPECT_TRUE(merged.HasUndefMember());
    EXPECT_EQ(clrUndefined, merged.main.color);
    EXPECT_EQ(CVxAppearance::undefInt, merged.rotation);
    EXPECT_EQ(CVxAppearance::undefDouble, merged.tileSizeX);
    EXPECT_EQ(10, merged.main.transparency);

    // The dialog changes the transparency only; each object keeps its colour,
    // rotation and tile width.
    merged.main.transparency = 70;
    CVxAppearance target = other;
    merged.CopySkipUndef(target);
    EXPECT_EQ(0x0000FFu, target.main.color);
    EXPECT_EQ(10, target.rotation);
    EXPECT_DOUBLE_EQ(1, target.tileSizeX);
    EXPECT_EQ(70, target.main.transparency);
    EXPECT_EQ(CVxStringW(L"stone30"), target.tileName);
}

TEST(Material, UndefinedFieldsAreNotCopied)
{
    CVxMaterial a(0x112233, 10, L"a.png");
    const CVxMaterial b(0x112233, 20, L"b.png");
    a.CheckDiffToUndef(b);
    EXPECT_EQ(0x112233u, a.color);
    EXPECT_TRUE(a.IsTextureUndef());
    EXPECT_FALSE(a.HasTexture());
    EXPECT_TRUE(a.HasUndefMember());
    CVxMaterial target(0x445566, 30, L"c.png");
    a.CopySkipUndef(target);
    EXPECT_EQ(CVxMaterial(0x112233, 30, L"c.png"), target);
    target.Reset();
    EXPECT_EQ(CVxMaterial(), target);
}

TEST(Appearance, TextureFileUrl)
{
    CVxAppearance app;
    EXPECT_TRUE(app.GetTextureFileURL().IsEmpty());
    app.main.texture = L"/home/user/tex/oak floor.jpg";
    EXPECT_EQ(CVxStringW(L"file:///home/user/tex/oak floor.jpg"), app.GetTextureFileURL());
    app.main.texture = L"https://example.org/a.png";
    EXPECT_EQ(app.main.texture, app.GetTextureFileURL());
}

TEST(Appearance, TextureImageIsSharedAndItsPreviewSmall)
{
    const CPictureCacheScope pictures;
    const CVxStringW path = VxTestTempFolder() + L"big.png";
    QImage big(1000, 500, QImage::Format_RGB32);
    big.fill(Qt::red);
    ASSERT_TRUE(big.save(path.ToQString()));
    CVxAppearance app;
    app.main.texture = VxTestTempFolder() + L"nothing-here.png";
    bool release = true;
    EXPECT_EQ(nullptr, app.GetTextureImage(release, false));
    EXPECT_FALSE(release);
    app.main.texture = path;
    CVxPicBuf* full = app.GetTextureImage(release, false);
    ASSERT_NE(nullptr, full);
    EXPECT_TRUE(release);
    EXPECT_EQ(1000, full->GetWidth());
    bool releaseAgain = false;
    CVxPicBuf* again = app.GetTextureImage(releaseAgain, false);
    EXPECT_EQ(full, again);
    CVxPictureLoadCache::ReleasePicture(again);
    CVxPictureLoadCache::ReleasePicture(full);

    CVxPicBuf* preview = app.GetTextureImage(release, true);
    ASSERT_NE(nullptr, preview);
    EXPECT_TRUE(release);
    EXPECT_EQ(256, preview->GetWidth());
    EXPECT_EQ(128, preview->GetHeight());
    EXPECT_EQ(VX_RGB(255, 0, 0), preview->GetPixel(10, 10));
    CVxPictureLoadCache::ReleasePicture(preview);
}
