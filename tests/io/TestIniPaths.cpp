// File paths in records: relative on writing, absolute on reading, and the
// list of files that a project refers to but that are not there.

#include "CVxIniWriter.h"
#include "CVxUtils.h"
#include "IVxAppHelperCallback.h"
#include "VxCodePages.h"
#include "VxIniTestUtil.h"

#include <gtest/gtest.h>

namespace {

// Each test sets the built-in texture folder it needs; none leaks.
class IniPaths : public ::testing::Test
{
protected:
    void TearDown() override { CVxUtils::SetBuiltInTextureFolder(CVxStringW()); }
};

// Maps "stored:" names to a folder of its own, as a container does with the
// files it unpacks.
class CVxStorageTransformer : public IVxReadIniClient
{
public:
    void OnReadIniValue(const CVxStringA&, const CVxStringW&, CVxIniFileReader*) override {}
    bool OnPathTransformToAbsolute(CVxStringW& result, const CVxStringW& path, const CVxStringW&) override
    {
        if (!path.StartsWith(CVxStringW(L"stored:")))
            return false;
        result = VxTempPath(L"storage/") + path.Mid(7);
        return true;
    }
    bool OnPathTransformToRelative(CVxStringW& result, const CVxStringW& path, const CVxStringW&) override
    {
        result = L"stored:" + path.ExtractFileTitle();
        return true;
    }
};

} // namespace

TEST_F(IniPaths, RelativeAndFullPathsMirrorEachOther)
{
    CVxUtils::SetBuiltInTextureFolder(L"/opt/plaveno/textures");
    const CVxStringW project = L"/home/u/plans/";
    const struct
    {
        const wchar_t* full;
        const wchar_t* stored;
    } cases[] = {
        {L"/home/u/plans/pics/a.png", L"pics/a.png"},
        {L"/opt/plaveno/textures/wood/oak.jpg", L"{$BT}wood/oak.jpg"},
        {L"/elsewhere/b.png", L"/elsewhere/b.png"},
        {L"https://example.com/c.png", L"https://example.com/c.png"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(CVxUtils::MakeRelativePath(c.full, project), CVxStringW(c.stored)) << c.stored;
        EXPECT_EQ(CVxUtils::MakeFullPath(c.stored, project), CVxStringW(c.full)) << c.stored;
    }
    EXPECT_EQ(CVxUtils::MakeFullPath(L"pics\\d.png", project), CVxStringW(L"/home/u/plans/pics/d.png"));
    EXPECT_EQ(CVxUtils::MakeRelativePath(L"", project), CVxStringW());
}

TEST_F(IniPaths, BuiltInTexturesWinWhereverTheProjectLies)
{
    CVxUtils::SetBuiltInTextureFolder(L"/opt/plaveno/textures/");
    // A project inside the texture folder still stores its textures by the mark.
    EXPECT_EQ(CVxUtils::MakeRelativePath(L"/opt/plaveno/textures/wood/oak.jpg", L"/opt/plaveno/"),
              CVxStringW(L"{$BT}wood/oak.jpg"));
    CVxUtils::SetBuiltInTextureFolder(CVxStringW());
    EXPECT_EQ(CVxUtils::MakeRelativePath(L"/opt/plaveno/textures/wood/oak.jpg", L"/opt/plaveno/"),
              CVxStringW(L"textures/wood/oak.jpg"));
}

TEST_F(IniPaths, ContainsPathNeedsAStrictPrefix)
{
    EXPECT_TRUE(CVxUtils::ContainsPath(L"/a/b/c.png", L"/a/"));
    EXPECT_FALSE(CVxUtils::ContainsPath(L"/a/", L"/a/"));
    EXPECT_FALSE(CVxUtils::ContainsPath(L"/a/b", L"/"));
    EXPECT_FALSE(CVxUtils::ContainsPath(L"/A/b", L"/a/"));
}

TEST_F(IniPaths, WriterStoresPathsRelativeToItsFile)
{
    CVxIniWriter plain(VxTempPath(L"rel.pvp"));
    CVxStringW inside = VxTempPath(L"pics/a.png");
    CVxStringW empty;
    EXPECT_EQ(plain.MakeRelativePath(inside), CVxStringW(L"pics/a.png"));
    EXPECT_EQ(plain.MakeRelativePath(empty), CVxStringW());

    CVxStorageTransformer transformer;
    CVxIniWriter transformed(VxTempPath(L"rel2.pvp"), &transformer);
    EXPECT_EQ(transformed.MakeRelativePath(inside), CVxStringW(L"stored:a.png"));
}

TEST_F(IniPaths, AbsolutePathsOfFoundFilesAndTheMissingList)
{
    VxWriteTempFile(L"here.png", "png");
    CVxIniFileReader reader(VxWriteTempFile(L"paths.pvp", "[Room]\r\n"), 0);
    EXPECT_EQ(reader.MakeAbsolutePath(L"here.png"), VxTempPath(L"here.png"));
    EXPECT_EQ(reader.MakeAbsolutePath(L""), CVxStringW());
    EXPECT_EQ(reader.MakeAbsolutePath(L"gone.png"), VxTempPath(L"gone.png"));
    EXPECT_EQ(reader.MakeAbsolutePath(L"gone.png"), VxTempPath(L"gone.png"));
    EXPECT_EQ(reader.MakeAbsolutePath(L"/nowhere/else.jpg"), CVxStringW(L"/nowhere/else.jpg"));
    // Resize cache pictures are made again on demand; never missing.
    EXPECT_EQ(reader.MakeAbsolutePath(L"pic_rXrsz_128.png"), CVxStringW());

    ASSERT_EQ(reader.GetMissingFiles().size(), 2u);
    EXPECT_EQ(reader.GetMissingFiles().front().filePath, VxTempPath(L"gone.png"));
    EXPECT_EQ(reader.GetMissingFiles().front().resolution, CVxMissingFileInfo::VX_MISSING_KEEP);
    EXPECT_EQ(reader.GetMissingFiles().back().filePath, CVxStringW(L"/nowhere/else.jpg"));
}

TEST_F(IniPaths, AlternativeBaseFolderAndTransformer)
{
    CVxIniFileReader reader(VxWriteTempFile(L"alt.pvp", ""), 0);
    reader.SetAltBaseFolder(L"/source/folder/");
    EXPECT_EQ(reader.MakeAbsolutePath(L"x.png"), CVxStringW(L"/source/folder/x.png"));

    VxWriteTempFile(L"storage/y.png", "");
    CVxStorageTransformer transformer;
    reader.SetPathTransformer(&transformer);
    EXPECT_EQ(reader.MakeAbsolutePath(L"stored:y.png"), VxTempPath(L"storage/y.png"));
    EXPECT_EQ(reader.MakeAbsolutePath(L"z.png"), CVxStringW(L"/source/folder/z.png"));
}

TEST_F(IniPaths, LongForeignPathsAreLookedForByTheirTail)
{
    ASSERT_TRUE(VX_GetAppHelper()->CreateFolder(VxTempPath(L"tex")));
    VxWriteTempFile(L"tex/found.png", "png");
    const CVxStringW prefix = L"/mnt/old/" + CVxStringW(std::wstring(230, L'd'));
    CVxIniFileReader reader(VxWriteTempFile(L"long.pvp", ""), 0);

    EXPECT_EQ(reader.MakeAbsolutePath(prefix + L"/tex/found.png"), VxTempPath(L"tex/found.png"));
    EXPECT_TRUE(reader.GetMissingFiles().empty());

    EXPECT_EQ(reader.MakeAbsolutePath(prefix + L"\\tex\\lost.png"), VxTempPath(L"tex/lost.png"));
    // 200 characters or fewer: taken as they stand.
    const CVxStringW shortPath = L"/mnt/" + CVxStringW(std::wstring(180, L'e')) + L"/f.png";
    EXPECT_EQ(reader.MakeAbsolutePath(shortPath), shortPath);
    ASSERT_EQ(reader.GetMissingFiles().size(), 2u);
    EXPECT_EQ(reader.GetMissingFiles().front().filePath, VxTempPath(L"tex/lost.png"));
}

TEST(IniCodePages, EncodingNamesMapToTheirPages)
{
    EXPECT_EQ(VX_EncodingToCodePage(L"utf-8"), 65001u);
    EXPECT_EQ(VX_EncodingToCodePage(L"UTF-8"), 0u); // names match exactly
    EXPECT_EQ(VX_EncodingToCodePage(L"iso-8859-1"), 1252u);
    EXPECT_EQ(VX_EncodingToCodePage(L"big5"), 10002u);
    EXPECT_EQ(VX_EncodingToCodePage(L"gb2312"), 20936u);
    EXPECT_EQ(VX_EncodingToCodePage(L"windows-874"), 874u);
    EXPECT_EQ(VX_EncodingToCodePage(L"utf-16"), 0u);
    EXPECT_EQ(VX_EncodingToCodePage(nullptr), 0u);
}
