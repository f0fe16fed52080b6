// The compressed container: its entries byte by byte as the writer lays them
// down, and an unpacking reader that a hostile container can't lead out of
// its folder or into filling the disk.

#include "CVxCompressIniWriter.h"
#include "CVxCompressedFileReader.h"
#include "CVxUtils.h"
#include "VxContainerTestUtil.h"
#include "VxIniTestUtil.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

const std::string s_head = VxContainerHead();

// An owner that writes the project head and embeds files where they are.
class CVxPlainOwner : public IVxCompressedFileOwner
{
public:
    void WriteCompressedFileHeader(FILE* file) const override { fputs(s_head.c_str(), file); }
    CVxStringW AddFileToProject(const CVxStringW& path) override { return path; }
};

// Unpacks every entry of `container` into a fresh folder; returns the folder.
CVxStringW Unpack(const std::string& container, const wchar_t* folderName)
{
    const CVxStringW folder = VxTempPath(folderName) + L"/";
    QDir(folder.ToQString()).removeRecursively();
    QDir().mkpath(folder.ToQString());
    CVxIniFileReader reader(VxWriteTempFile(L"hostile.pvp", container), 0);
    reader.Start();
    while (!reader.GetSectionName().IsEmpty()) {
        CVxCompressedFileReader entry(folder, CVxStringW(L".pvp"));
        reader.ReadSection(reader.GetSectionName() == "File" ? &entry : nullptr);
    }
    return folder;
}

QStringList FilesIn(const CVxStringW& folder)
{
    return QDir(folder.ToQString()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

TEST(CompressIniWriter, EntriesInOrderOfFirstMentionRawOrDeflatedByExtension)
{
    const std::string png = "\x89PNG\r\n\x1A\n\0\x01\x02";
    const std::string notes = "Kitchen tiles\r\nordered\r\n";
    CVxStringW pngPath = VxWriteTempFile(L"plan.png", png);
    CVxStringW notesPath = VxWriteTempFile(L"Notes.TXT", notes);
    CVxStringW missing = VxTempPath(L"elsewhere/gone.jpg");
    const CVxStringW output = VxTempPath(L"layout.pvp");
    CVxPlainOwner owner;
    {
        CVxCompressIniWriter writer(output, VxTempPath(L"text.pvp"), &owner);
        ASSERT_TRUE(writer.IsOpened());
        writer.StartSection("Room");
        writer.WriteString("Picture", writer.MakeRelativePath(pngPath));
        writer.WriteString("Notes", writer.MakeRelativePath(notesPath));
        writer.WriteString("Again", writer.MakeRelativePath(pngPath));
        writer.WriteString("Lost", writer.MakeRelativePath(missing));
        writer.Finalize();
        EXPECT_TRUE(writer.Succeeded());
    }
    const std::string text = "\xEF\xBB\xBF\r\n[Room]\r\nPicture=plan.png\r\nNotes=Notes.TXT\r\n"
                             "Again=plan.png\r\nLost=elsewhere/gone.jpg\r\n";
    const std::string expected = s_head + "\r\n" + VxRawEntry("plan.png", png) +
                                 VxDeflatedEntry("Notes.TXT", notes) + VxDeflatedEntry("text.pvp", text);
    EXPECT_TRUE(VxReadWholeFile(output) == expected) << VxReadWholeFile(output);

    const CVxStringW folder = Unpack(expected, L"unpacked");
    EXPECT_EQ(FilesIn(folder), QStringList({"Notes.TXT", "plan.png", "text.pvp"}));
    EXPECT_TRUE(VxReadWholeFile(folder + L"text.pvp") == text);
}

TEST(CompressIniWriter, MissingFilesFollowTheUsersDecision)
{
    std::list<CVxMissingFileInfo> decisions;
    decisions.emplace_back(VxTempPath(L"dropped.png"), CVxMissingFileInfo::VX_MISSING_REMOVE);
    decisions.emplace_back(VxTempPath(L"old.png"), CVxMissingFileInfo::VX_MISSING_REPLACE);
    decisions.back().replacementPath = VxWriteTempFile(L"new.png", "\x89PNG\r\n\x1A\nnew");
    CVxCompressIniWriter writer(VxTempPath(L"decided.pvp"), VxTempPath(L"decided.txt"), nullptr);
    writer.SetMissingFiles(&decisions);
    CVxStringW dropped = VxTempPath(L"dropped.png");
    CVxStringW replaced = VxTempPath(L"old.png");
    EXPECT_TRUE(writer.MakeRelativePath(dropped).IsEmpty());
    EXPECT_EQ(writer.MakeRelativePath(replaced), L"new.png");
    writer.Finalize();
    EXPECT_NE(VxReadWholeFile(VxTempPath(L"decided.pvp")).find("Name=new.png\r\nDataSize=11\r\n\x89PNG"),
              std::string::npos);
}

TEST(CompressedFileReader, HostileNamesAreCutToBareNamesInsideTheFolder)
{
    EXPECT_EQ(CVxCompressedFileReader::SafeEntryName(L"..\\..\\evil.txt"), L"evil.txt");
    EXPECT_EQ(CVxCompressedFileReader::SafeEntryName(L"C:win.png"), L"win.png");
    EXPECT_EQ(CVxCompressedFileReader::SafeEntryName(L"/etc/x/"), L"");
    EXPECT_EQ(CVxCompressedFileReader::SafeEntryName(L".."), L"");
    EXPECT_EQ(CVxCompressedFileReader::SafeEntryName(L"a\tb.png"), L"");

    const std::string container = s_head + "\r\n" + VxRawEntry("../escaped.png", "1") +
                                  VxRawEntry(VxTempPath(L"absolute.png").ToQString().toStdString(), "2") +
                                  VxRawEntry("..", "3") + VxRawEntry("", "4") +
                                  VxRawEntry("C:\\x\\win.png", "5");
    const CVxStringW folder = Unpack(container, L"hostile");
    EXPECT_EQ(FilesIn(folder), QStringList({"absolute.png", "escaped.png", "win.png"}));
    EXPECT_FALSE(QFile::exists(VxTempPath(L"escaped.png").ToQString()));
    EXPECT_FALSE(QFile::exists(VxTempPath(L"absolute.png").ToQString()));
}

TEST(CompressedFileReader, InflatingStopsAtTheAnnouncedSizeAndSizesPastTheEndStopTheRead)
{
    // A megabyte of zeros that claims to be a hundred bytes.
    std::string bomb = VxDeflatedEntry("bomb.txt", std::string(1 << 20, '\0'));
    bomb.replace(bomb.find("UncpSize=") + 9, 7, "100\r\n\r\n");
    const std::string container = s_head + "\r\n" + bomb + VxRawEntry("after.png", "ok") +
                                  "[File]\r\nName=cut.png\r\nDataSize=99999\r\nabc";
    const CVxStringW folder = Unpack(container, L"bomb");
    EXPECT_EQ(QFileInfo((folder + L"bomb.txt").ToQString()).size(), 100);
    EXPECT_TRUE(VxReadWholeFile(folder + L"after.png") == "ok");
    EXPECT_TRUE(VxReadWholeFile(folder + L"cut.png") == "abc");
}

TEST(CVxUtilsFiles, UniqueNamesAndIdenticalFiles)
{
    const CVxStringW first = VxWriteTempFile(L"same.bin", "abc");
    const CVxStringW second = VxWriteTempFile(L"same2.bin", "abc");
    const CVxStringW other = VxWriteTempFile(L"other.bin", "abd");
    EXPECT_TRUE(CVxUtils::CheckTwoFilesIdentical(first, second));
    EXPECT_FALSE(CVxUtils::CheckTwoFilesIdentical(first, other));
    EXPECT_FALSE(CVxUtils::CheckTwoFilesIdentical(first, VxTempPath(L"none.bin")));
    FILE* file = fopen(first.ToQString().toLocal8Bit().constData(), "rb");
    EXPECT_EQ(CVxUtils::CalcCRC(file), 0x352441C2u); // CRC-32 of "abc"
    fclose(file);

    EXPECT_EQ(CVxUtils::GetUniqueFileName(VxTempPath(L"free.bin")), VxTempPath(L"free.bin"));
    const CVxStringW renamed = CVxUtils::GetUniqueFileName(first);
    EXPECT_TRUE(renamed.StartsWith(VxTempPath(L"same_"))) << renamed.ToQString().toStdString();
    EXPECT_TRUE(renamed.EndsWith(CVxStringW(L".bin")));
    EXPECT_FALSE(QFile::exists(renamed.ToQString()));
}
