// What the record layer does with files that someone else made: references
// to private or special files, containers that unpack to gigabytes, endless
// lines, numbers that size loops, and links planted where a save writes.

#include "CVxCompressIniWriter.h"
#include "CVxCompressedFileReader.h"
#include "CVxUtils.h"
#include "VxContainerTestUtil.h"
#include "VxIniTestUtil.h"
#include "VxReferencedFile.h"
#include "VxSafeSave.h"

#include <QDir>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <cmath>
#include <zlib.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

CVxStringW MakeFifo(const wchar_t* name)
{
    const CVxStringW path = VxTempPath(name);
    ::unlink(VX_StringToUTF8(path).c_str());
    EXPECT_EQ(::mkfifo(VX_StringToUTF8(path).c_str(), 0600), 0);
    return path;
}

} // namespace

TEST(HostileFiles, OnlyPlainFilesWhoseBytesFitTheirUseAreEmbeddable)
{
    const CVxStringW text = VxWriteTempFile(L"notes.wav", "just some text\n");
    const CVxStringW wave = VxWriteTempFile(L"clip.dat", std::string("RIFF\x24\0\0\0WAVEfmt ", 16));
    const CVxStringW png = VxWriteTempFile(L"fake.png", "not a picture at all");
    const CVxStringW fifo = MakeFifo(L"pipe.wav");

    EXPECT_TRUE(VX_IsEmbeddableFile(wave, EVxFileRole::Sound));
    EXPECT_FALSE(VX_IsEmbeddableFile(text, EVxFileRole::Sound));
    EXPECT_FALSE(VX_IsEmbeddableFile(png, EVxFileRole::Picture));
    EXPECT_TRUE(VX_IsEmbeddableFile(text, EVxFileRole::Document));
    // None of these may even be opened: they would block or never end.
    EXPECT_FALSE(VX_IsEmbeddableFile(fifo, EVxFileRole::Document));
    EXPECT_EQ(VX_OpenPlainFileForReading(fifo), nullptr);
    EXPECT_FALSE(VX_IsPlainFile(L"/dev/zero"));
    EXPECT_FALSE(VX_IsPlainFile(L"/proc/self/environ"));
    EXPECT_FALSE(VX_IsPlainFile(VxTempPath(L"../../../../../../../proc/self/environ")));
    EXPECT_FALSE(VX_IsPlainFile(VxTestTempFolder()));

    // A FIFO as the file to read is refused at once instead of waiting for a
    // writer.
    CVxIniFileReader reader(fifo, 0);
    EXPECT_FALSE(reader.IsOpened());
}

TEST(HostileFiles, ReferencesOutsideTheFilesFoldersAreRefusedAndListedAsMissing)
{
    const CVxStringW secret = VxWriteTempFile(L"private.txt", "secret");
    ASSERT_TRUE(QDir().mkpath(VxTempPath(L"project/.hidden").ToQString()));
    const CVxStringW beside = VxWriteTempFile(L"project/tile.png", "\x89PNG\r\n\x1A\n");
    VxWriteTempFile(L"project/.hidden/key", "key");
    ::unlink(VX_StringToUTF8(VxTempPath(L"project/link.png")).c_str());
    ASSERT_EQ(
        ::symlink(VX_StringToUTF8(secret).c_str(), VX_StringToUTF8(VxTempPath(L"project/link.png")).c_str()),
        0);
    CVxIniFileReader reader(VxWriteTempFile(L"project/plan.pvp", "[Room]\r\n"), 0);

    EXPECT_EQ(reader.MakeAbsolutePath(L"tile.png"), beside);
    for (const wchar_t* path : {L"../private.txt", L"link.png", L".hidden/key", L"/etc/passwd"})
        reader.MakeAbsolutePath(path);
    std::vector<std::string> missing;
    for (const CVxMissingFileInfo& info : reader.GetMissingFiles())
        missing.push_back(QFileInfo(info.filePath.ToQString()).fileName().toStdString());
    EXPECT_EQ(missing, (std::vector<std::string>{"private.txt", "link.png", "key", "passwd"}));
    EXPECT_EQ(reader.GetRefusedFiles().size(), 4u);
}

TEST(HostileFiles, TheContainerWriterEmbedsNoPrivateOrMismatchedFile)
{
    const CVxStringW output = VxTempPath(L"refs.pvp");
    const CVxStringW fifo = MakeFifo(L"sound.wav");
    {
        CVxCompressIniWriter writer(output, VxTempPath(L"refs.txt"), nullptr);
        ASSERT_TRUE(writer.IsOpened());
        CVxStringW passwd(L"/etc/passwd");
        CVxStringW environ(L"/proc/self/environ");
        CVxStringW pipe = fifo;
        EXPECT_EQ(writer.MakeRelativePathAs(passwd, EVxFileRole::Sound), passwd);
        EXPECT_EQ(writer.MakeRelativePathAs(environ, EVxFileRole::Document), environ);
        EXPECT_EQ(writer.MakeRelativePath(pipe), L"sound.wav");
        writer.Finalize();
        EXPECT_TRUE(writer.Succeeded());
    }
    const std::string written = VxReadWholeFile(output);
    EXPECT_EQ(written.find("Name=passwd"), std::string::npos);
    EXPECT_EQ(written.find("Name=environ"), std::string::npos);
    EXPECT_EQ(written.find("Name=sound.wav"), std::string::npos);
}

TEST(HostileFiles, AContainerUnpacksNoMoreThanItsBudget)
{
    // Three entries of 64 MiB of zeros each fit in a few hundred kilobytes.
    const std::string zeros(64 << 20, '\0');
    const std::string bomb = VxDeflate(zeros, 9);
    std::string container = VxContainerHead() + "\r\n";
    for (const char* name : {"a.bmp", "b.bmp", "c.bmp"})
        container += std::string("[File]\r\nName=") + name + "\r\nUncpSize=" + std::to_string(zeros.size()) +
                     "\r\nDataSize=" + std::to_string(bomb.size()) + "\r\n" + bomb + "\r\n\r\n";
    container += VxDeflatedEntry("project.pvp", "[Room]\r\nWidth=7\r\n");
    const CVxStringW folder = VxTempPath(L"bomb") + L"/";
    QDir(folder.ToQString()).removeRecursively();
    QDir().mkpath(folder.ToQString());

    const CVxStringW path = VxWriteTempFile(L"bomb.pvp", container);
    CVxIniFileReader reader(path, 0);
    const uint64_t budget = CVxCompressedFileReader::UnpackBudgetFor(static_cast<int64_t>(container.size()));
    EXPECT_LT(budget, zeros.size());
    reader.SetUnpackBudget(budget);
    reader.Start();
    CVxStringW main;
    while (!reader.GetSectionName().IsEmpty()) {
        CVxCompressedFileReader entry(folder, CVxStringW(L".pvp"));
        reader.ReadSection(reader.GetSectionName() == "File" ? &entry : nullptr);
        if (!entry.GetMainFile().IsEmpty())
            main = entry.GetMainFile();
    }
    qint64 unpacked = 0;
    for (const QFileInfo& file : QDir(folder.ToQString()).entryInfoList(QDir::Files))
        unpacked += file.size();
    EXPECT_LE(static_cast<uint64_t>(unpacked), budget);
    EXPECT_EQ(main, folder + L"project.pvp");
    EXPECT_EQ(CVxCompressedFileReader::UnpackBudgetFor(int64_t{1} << 40),
              CVxCompressedFileReader::maxUnpackedTotal);
}

TEST(HostileFiles, OfEntriesOfOneNameTheFirstIsUnpackedAndTheRestSkipped)
{
    std::string container = VxContainerHead() + "\r\n";
    container += VxRawEntry("project.pvp", "[Room]\r\nWidth=7\r\n");
    container += VxRawEntry("tile.png", "first");
    container += VxDeflatedEntry("tile.png", "second");
    container += VxRawEntry("project.pvp", "[Room]\r\nWidth=9\r\n");
    // Each of these used to rewrite the one file; the whole took seconds.
    for (int i = 0; i < 20000; ++i)
        container += VxRawEntry("tile.png", "x");
    const CVxStringW folder = VxTempPath(L"repeated") + L"/";
    QDir(folder.ToQString()).removeRecursively();
    QDir().mkpath(folder.ToQString());

    CVxIniFileReader reader(VxWriteTempFile(L"repeated.pvp", container), 0);
    reader.Start();
    CVxStringW main;
    bool damaged = false;
    while (!reader.GetSectionName().IsEmpty()) {
        CVxCompressedFileReader entry(folder, CVxStringW(L".pvp"));
        reader.ReadSection(reader.GetSectionName() == "File" ? &entry : nullptr);
        if (!entry.GetMainFile().IsEmpty())
            main = entry.GetMainFile();
        damaged = damaged || entry.IsDamaged();
    }
    EXPECT_FALSE(damaged);
    EXPECT_EQ(main, folder + L"project.pvp");
    EXPECT_EQ(VxReadWholeFile(folder + L"project.pvp"), "[Room]\r\nWidth=7\r\n");
    EXPECT_EQ(VxReadWholeFile(folder + L"tile.png"), "first");
    EXPECT_EQ(QDir(folder.ToQString()).entryList(QDir::Files).size(), 2);
}

TEST(HostileFiles, AnOverlongLineIsSkippedWhole)
{
    const std::string text = "[Room]\r\nComments=" + std::string(9 << 20, 'x') + "\r\nWidth=5\r\n";
    EXPECT_EQ(VxDumpText(text), "[Room]\nWidth=5\n");
}

TEST(HostileFiles, NumbersThatSizeWorkFallBackToTheirDefault)
{
    for (const wchar_t* value : {L"nan", L"inf", L"-inf", L"1e10", L"1e300", L"-5"})
        EXPECT_EQ(CVxIniFileReader::ToDoubleInRange(value, 50, 0.5, 1e6, "GridSize"), 50) << value;
    EXPECT_EQ(CVxIniFileReader::ToDoubleInRange(L"20", 50, 0.5, 1e6, "GridSize"), 20);
    EXPECT_EQ(CVxIniFileReader::ToIntInRange(L"99999", 2, 0, 16, "DecimalPrecision"), 2);
    EXPECT_EQ(CVxIniFileReader::ToIntInRange(L"3", 2, 0, 16, "DecimalPrecision"), 3);
}

TEST(HostileFiles, ASaveNeverWritesThroughALinkPlantedAtItsTemporaryName)
{
    const CVxStringW victim = VxWriteTempFile(L"victim.txt", "untouched");
    const CVxStringW target = VxTempPath(L"out.png");
    const CVxStringA temp = VX_StringToUTF8(VX_SafeSaveTempPath(target));
    ::unlink(temp.c_str());
    ASSERT_EQ(::symlink(VX_StringToUTF8(victim).c_str(), temp.c_str()), 0);

    ASSERT_TRUE(VX_SafeSaveCreateTemp(target));
    struct stat info
    {
    };
    ASSERT_EQ(::lstat(temp.c_str(), &info), 0);
    EXPECT_TRUE(S_ISREG(info.st_mode));
    EXPECT_EQ(info.st_size, 0);
    EXPECT_EQ(VxReadWholeFile(victim), "untouched");
    VX_SafeSaveAbandon(VX_SafeSaveTempPath(target));

    // A target that is a FIFO or a device is no file to replace.
    EXPECT_FALSE(VX_SafeSaveCreateTemp(MakeFifo(L"fifo.png")));
    EXPECT_FALSE(VX_SafeSaveCreateTemp(L"/dev/null"));
}

TEST(HostileFiles, TemporaryFoldersOfDeadRunsAreRemoved)
{
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0)
        _exit(0);
    waitpid(child, nullptr, 0);
    const QString dead = QDir::tempPath() + QStringLiteral("/Plaveno-%1-AbCdEf").arg(child);
    const QString own = CVxUtils::GetRunTempFolderTemplate().ToQString().replace(QStringLiteral("XXXXXX"),
                                                                                 QStringLiteral("GhIjKl"));
    ASSERT_TRUE(QDir().mkpath(dead + QStringLiteral("/appdata")));
    ASSERT_TRUE(QDir().mkpath(own));

    CVxUtils::RemoveTempFoldersOfDeadRuns();
    EXPECT_FALSE(QFileInfo::exists(dead));
    EXPECT_TRUE(QFileInfo::exists(own));
    QDir(own).removeRecursively();
}
