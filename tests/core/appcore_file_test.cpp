// The project as a document: open, save, revert, the recent list, samples,
// and the watch over the open file, on a headless host that answers the
// questions from a script.

#include "CVxAppCore.h"
#include "CVxAppHelperHeadless.h"
#include "CVxAutoSave.h"
#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxOptions.h"
#include "CVxProjectFileCheck.h"
#include "CVxUnits.h"
#include "CVxWallEditor.h"
#include "VxContainerTestUtil.h"
#include "VxTestEnv.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <deque>
#include <functional>

#include <sys/stat.h>

namespace {

class CVxScriptedHost : public CVxAppHelperHeadless
{
public:
    CVxScriptedHost() : CVxAppHelperHeadless(VxTestTempFolder() + L"appdata/", VxTestTempFolder() + L"docs/")
    {
    }

    int MsgBox(const CVxStringW& text, const CVxStringW& /*caption*/, unsigned flags, void* /*parent*/,
               EVxMsgButton /*defaultButton*/, EVxMsgButton /*escapeButton*/) override
    {
        texts.push_back(text);
        lastFlags = flags;
        if (answers.empty())
            return VX_MBR_OTHER;
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }
    CVxStringW GetSaveProjectFileName(const CVxStringW& /*title*/, const CVxStringW& filter,
                                      const CVxStringW& /*suggested*/) override
    {
        lastFilter = filter;
        return savePath;
    }

    std::deque<int> answers;
    std::vector<CVxStringW> texts;
    unsigned lastFlags = 0;
    CVxStringW savePath;
    CVxStringW lastFilter;
};

QByteArray ReadAll(const CVxStringW& path)
{
    QFile file(path.ToQString());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void WriteAll(const CVxStringW& path, const QByteArray& bytes)
{
    QFile file(path.ToQString());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

class AppCoreFile : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_previous = VX_GetAppHelper();
        VX_SetAppHelperCallback(&m_host);
        m_folder = VxTestTempFolder() + L"projects/";
        QDir(m_folder.ToQString()).removeRecursively();
        QDir().mkpath(m_folder.ToQString());
        core = VX_GetCore();
        core->SetProjectPath(CVxStringW());
        core->InitProject();
    }
    void TearDown() override
    {
        core->GetFileMonitor().StopMonitoring();
        core->SetProjectPath(CVxStringW());
        core->SetAppFolder(CVxStringW());
        core->InitProject();
        VX_GetOptions()->ResetToDefaults();
        VX_SetAppHelperCallback(m_previous);
    }
    // A saved project of the given width, named and unmodified.
    CVxStringW SaveProject(const wchar_t* name, double width)
    {
        core->GetProject().m_width = width;
        m_host.savePath = m_folder + name;
        EXPECT_TRUE(core->DoProjectSaveAs());
        return m_host.savePath;
    }

    CVxScriptedHost m_host;
    IVxAppHelperCallback* m_previous = nullptr;
    CVxStringW m_folder;
    CVxAppCore* core = nullptr;
};

TEST_F(AppCoreFile, SaveAsNamesTheProjectAndWritesAContainerWithThumbnail)
{
    EXPECT_TRUE(core->ShouldEnableSaveProject());
    const CVxStringW path = SaveProject(L"flat.pvp", 640);
    EXPECT_EQ(core->GetProjectPath(), path);
    EXPECT_FALSE(core->GetProject().IsModified());
    EXPECT_FALSE(core->ShouldEnableSaveProject());
    EXPECT_EQ(m_host.lastFilter, CVxStringW(L"Plaveno projects (*.pvp)"));
    EXPECT_EQ(core->GetRecentFile(0), path);
    const QByteArray bytes = ReadAll(path);
    EXPECT_TRUE(bytes.contains("vx_projt.png"));
    // Nothing is left of the temporary files.
    EXPECT_TRUE(QDir(m_folder.ToQString()).entryList(QDir::Files) == QStringList{QStringLiteral("flat.pvp")});
}

TEST_F(AppCoreFile, CancelledSaveAsKeepsTheProjectUnnamed)
{
    m_host.savePath = CVxStringW();
    core->GetProject().m_modified = true;
    EXPECT_FALSE(core->DoProjectSaveAs());
    EXPECT_TRUE(core->GetProjectPath().IsEmpty());
    EXPECT_TRUE(core->GetProject().IsModified());
}

TEST_F(AppCoreFile, FailedSaveKeepsNameFlagAndOldFile)
{
    const CVxStringW path = SaveProject(L"kept.pvp", 640);
    const QByteArray before = ReadAll(path);
    core->GetProject().m_width = 700;
    core->GetProject().m_modified = true;
    m_host.savePath = m_folder + L"no/such/folder/x.pvp";
    EXPECT_FALSE(core->DoProjectSaveAs());
    EXPECT_EQ(core->GetProjectPath(), path);
    EXPECT_TRUE(core->GetProject().IsModified());
    ASSERT_EQ(m_host.texts.size(), 1u);
    EXPECT_EQ(m_host.texts[0],
              CVxStringW(L"Saving of project failed. Try selecting another file or folder."));
    EXPECT_EQ(ReadAll(path), before);
    EXPECT_TRUE(core->GetFileMonitor().IsActive());
}

TEST_F(AppCoreFile, OpenReadsTheFileAndRevertDropsChanges)
{
    const CVxStringW path = SaveProject(L"a.pvp", 640);
    core->SetProjectPath(CVxStringW());
    core->InitProject();
    EXPECT_TRUE(core->OpenFile(path, false));
    EXPECT_DOUBLE_EQ(core->GetProject().m_width, 640);
    EXPECT_EQ(core->GetProjectPath(), path);
    EXPECT_TRUE(m_host.texts.empty());

    core->GetProject().m_width = 900;
    core->GetProject().m_modified = true;
    m_host.answers = {VX_MBR_NO};
    core->RevertProjectToSaved();
    EXPECT_DOUBLE_EQ(core->GetProject().m_width, 900);
    m_host.answers = {VX_MBR_YES};
    core->RevertProjectToSaved();
    EXPECT_DOUBLE_EQ(core->GetProject().m_width, 640);
    EXPECT_FALSE(core->GetProject().IsModified());
    EXPECT_EQ(m_host.texts.size(), 2u);
}

TEST_F(AppCoreFile, CancelOnTheSaveQuestionLeavesTheProjectAlone)
{
    const CVxStringW other = SaveProject(L"other.pvp", 640);
    core->SetProjectPath(CVxStringW());
    core->GetProject().m_width = 555;
    core->GetProject().m_modified = true;
    m_host.answers = {VX_MBR_CANCEL};
    EXPECT_FALSE(core->OpenFile(other, false));
    EXPECT_DOUBLE_EQ(core->GetProject().m_width, 555);
    EXPECT_TRUE(core->GetProject().IsModified());
    EXPECT_EQ(m_host.lastFlags, 6658u);
    // "Don't save" goes on and opens.
    m_host.answers = {VX_MBR_NO};
    EXPECT_TRUE(core->OpenFile(other, false));
    EXPECT_DOUBLE_EQ(core->GetProject().m_width, 640);
}

TEST_F(AppCoreFile, MissingOrForeignFilesDoNotOpen)
{
    core->GetProject().m_width = 555;
    EXPECT_FALSE(core->OpenFile(m_folder + L"picture.png", false));
    EXPECT_TRUE(m_host.texts.empty());
    EXPECT_FALSE(core->OpenFile(m_folder + L"gone.pvp", false));
    ASSERT_EQ(m_host.texts.size(), 1u);
    EXPECT_TRUE(m_host.texts[0].StartsWith(CVxStringW(L"The file doesn't exist")));
    // A damaged container: the project stays as it was.
    WriteAll(m_folder + L"broken.pvp", QByteArray::fromStdString(VxContainerHead()) + "\x01\x02garbage");
    EXPECT_FALSE(core->OpenFile(m_folder + L"broken.pvp", false));
    EXPECT_DOUBLE_EQ(core->GetProject().m_width, 555);
    ASSERT_EQ(m_host.texts.size(), 2u);
    EXPECT_TRUE(m_host.texts[1].StartsWith(CVxStringW(L"Cannot open file\n")));
}

TEST_F(AppCoreFile, RecentListKeepsTheNewestFirstWithoutDoubles)
{
    for (const wchar_t* name : {L"/a.pvp", L"/b.pvp", L"/c.pvp", L"/d.pvp", L"/e.pvp"})
        core->AddToRecentFiles(CVxStringW(name));
    const CVxStringW* recent = VX_GetOptions()->m_recent;
    EXPECT_EQ(recent[0], L"/e.pvp");
    EXPECT_EQ(recent[3], L"/b.pvp");
    core->AddToRecentFiles(CVxStringW(L"/C.PVP"));
    EXPECT_EQ(recent[0], L"/C.PVP");
    EXPECT_EQ(recent[1], L"/e.pvp");
    EXPECT_EQ(recent[2], L"/d.pvp");
    EXPECT_EQ(recent[3], L"/b.pvp");
    core->RemoveRecentFile(1);
    EXPECT_EQ(recent[1], L"/d.pvp");
    EXPECT_EQ(recent[2], L"/b.pvp");
    EXPECT_TRUE(recent[3].IsEmpty());
    // An entry that doesn't open leaves the list.
    EXPECT_FALSE(core->OpenRecentFile(0));
    EXPECT_EQ(recent[0], L"/d.pvp");
}

TEST_F(AppCoreFile, SampleOpensUntitledAndIsRememberedByMacro)
{
    const CVxStringW app = VxTestTempFolder() + L"app/";
    QDir().mkpath((app + L"samples").ToQString());
    core->SetAppFolder(app);
    core->GetProject().m_width = 321;
    ASSERT_TRUE(core->SaveMainProjectToFile(app + L"samples/Sample.pvp"));
    core->InitProject();
    EXPECT_TRUE(core->OpenFile(app + L"samples/Sample.pvp", false));
    EXPECT_DOUBLE_EQ(core->GetProject().m_width, 321);
    EXPECT_TRUE(core->GetProjectPath().IsEmpty());
    EXPECT_FALSE(core->GetFileMonitor().IsActive());
    EXPECT_EQ(VX_GetOptions()->m_recent[0], L"$SAMPLE$/Sample.pvp");
    EXPECT_EQ(core->GetRecentFile(0), app + L"samples/Sample.pvp");
    // The documents macro of older lists still expands.
    EXPECT_EQ(core->ExpandPathMacros(CVxStringW(L"$DOCS$/x.pvp")), VxTestTempFolder() + L"docs/x.pvp");
}

TEST_F(AppCoreFile, MonitorHashesTheWholeFile)
{
    const CVxStringW path = m_folder + L"watched.pvp";
    WriteAll(path, QByteArray("walls"));
    const CVxStringW hash = CVxFileChangeMonitor::GetFileHash(path);
    // SHA3-512 of "walls", in lower-case hexadecimal.
    EXPECT_EQ(hash.GetLength(), 128);
    EXPECT_EQ(hash.ToQString(), hash.ToQString().toLower());
    EXPECT_NE(hash, CVxFileChangeMonitor::GetFileHash(m_folder + L"x"));
    EXPECT_TRUE(CVxFileChangeMonitor::GetFileHash(m_folder + L"x").IsEmpty());

    CVxFileChangeMonitor monitor;
    EXPECT_FALSE(monitor.StartMonitoring(CVxStringW(L"nofolder.pvp")));
    EXPECT_TRUE(monitor.StartMonitoring(path));
    EXPECT_TRUE(monitor.GetWatcher()->files().contains(path.ToQString()));
    WriteAll(path, QByteArray("walls"));
    EXPECT_TRUE(monitor.IsMonitoringHashIdentical(path));
    WriteAll(path, QByteArray("rooms"));
    EXPECT_FALSE(monitor.IsMonitoringHashIdentical(path));
    monitor.StopMonitoring();
    EXPECT_FALSE(monitor.IsActive());
    EXPECT_TRUE(monitor.GetWatcher()->files().isEmpty());
}

TEST_F(AppCoreFile, ChangedFileOnDiskAsksOnlyForRealChanges)
{
    const CVxStringW path = SaveProject(L"shared.pvp", 640);
    const QByteArray bytes = ReadAll(path);
    // Rewritten with the same bytes: no question.
    WriteAll(path, bytes);
    EXPECT_FALSE(core->OnOpenedFileChangedOnDisk());
    EXPECT_TRUE(m_host.texts.empty());
    // Away for a moment: try again later.
    QFile::rename(path.ToQString(), (path + L".away").ToQString());
    EXPECT_TRUE(core->OnOpenedFileChangedOnDisk());
    QFile::rename((path + L".away").ToQString(), path.ToQString());
    // Changed by another program: the user is asked; No keeps watching.
    core->GetProject().m_width = 800;
    ASSERT_TRUE(core->SaveMainProjectToFile(m_folder + L"newer.pvp"));
    QFile::remove(path.ToQString());
    QFile::copy((m_folder + L"newer.pvp").ToQString(), path.ToQString());
    core->GetProject().m_width = 640;
    m_host.answers = {VX_MBR_NO};
    EXPECT_FALSE(core->OnOpenedFileChangedOnDisk());
    ASSERT_EQ(m_host.texts.size(), 1u);
    EXPECT_TRUE(m_host.texts[0].EndsWith(CVxStringW(L"\n\nshared.pvp")));
    EXPECT_DOUBLE_EQ(core->GetProject().m_width, 640);
    EXPECT_TRUE(core->GetFileMonitor().IsActive());
    // Yes reloads.
    WriteAll(path, ReadAll(m_folder + L"newer.pvp") + QByteArray("\r\n"));
    m_host.answers = {VX_MBR_YES};
    core->OnOpenedFileChangedOnDisk();
    EXPECT_DOUBLE_EQ(core->GetProject().m_width, 800);
}

TEST_F(AppCoreFile, MissingFilesAreRemovedReplacedOrKeptInTheNewFile)
{
    // The program's own sky pictures are proposed for a lost sky box.
    const CVxStringW app = m_folder + L"app/";
    QDir().mkpath((app + L"textures").ToQString());
    WriteAll(app + L"textures/skybox-front.png", "front");
    core->SetAppFolder(app);
    WriteAll(m_folder + L"new.png", "new");
    CVxProject& project = core->GetProject();
    project.m_skyBoxLeft = m_folder + L"gone/left.png";
    project.m_skyBoxRight = m_folder + L"gone/right.png";
    project.m_skyBoxTop = m_folder + L"gone/top.png";
    project.m_skyBoxFront = m_folder + L"gone/skybox-front.png";
    ASSERT_TRUE(project.SaveToFile(m_folder + L"lost.pvp", false, nullptr));
    ASSERT_TRUE(core->OpenFile(m_folder + L"lost.pvp", false));

    std::vector<CVxMissingFileInfo> decided = core->GetMissingFiles();
    ASSERT_EQ(decided.size(), 4u);
    for (CVxMissingFileInfo& info : decided) {
        const CVxStringW name = info.filePath.ExtractFileTitle();
        if (name == L"skybox-front.png") {
            EXPECT_EQ(info.resolution, CVxMissingFileInfo::VX_MISSING_REPLACE);
            EXPECT_EQ(info.replacementPath, app + L"textures/skybox-front.png");
            continue;
        }
        EXPECT_EQ(info.resolution, CVxMissingFileInfo::VX_MISSING_KEEP);
        if (name == L"left.png") {
            info.resolution = CVxMissingFileInfo::VX_MISSING_REMOVE;
        } else if (name == L"right.png") {
            info.resolution = CVxMissingFileInfo::VX_MISSING_REPLACE;
            info.replacementPath = m_folder + L"new.png";
        }
    }
    const CVxStringW fixed = m_folder + L"fixed.pvp";
    ASSERT_TRUE(core->ResolveMissingFiles(decided, fixed));
    EXPECT_EQ(core->GetProjectPath(), fixed);
    EXPECT_TRUE(project.m_skyBoxLeft.IsEmpty());
    EXPECT_EQ(ReadAll(project.m_skyBoxRight), QByteArray("new"));
    EXPECT_EQ(ReadAll(project.m_skyBoxFront), QByteArray("front"));
    // The ignored one is still referred to, and still missing.
    EXPECT_EQ(project.m_skyBoxTop.ExtractFileTitle(), L"top.png");
    ASSERT_EQ(core->GetMissingFiles().size(), 1u);
    EXPECT_EQ(core->GetMissingFiles()[0].filePath.ExtractFileTitle(), L"top.png");
}

TEST_F(AppCoreFile, MergedProjectIsScaledToTheUnitAndBecomesTheModifiedProject)
{
    // A 2 by 1 metre room drawn in millimetres.
    CVxProject other;
    other.m_unit = CVxUnits::UNIT_MM;
    other.GetFloor()->m_walls.SetAsBasicRect(2000, 1000, 100, 2500);
    other.m_width = 2000;
    other.m_height = 1000;
    ASSERT_TRUE(other.SaveToFile(m_folder + L"mm.pvp", false, nullptr));

    core->GetProject().m_unit = CVxUnits::UNIT_CM;
    CVxProject merged;
    core->GetProject().CopyTo(&merged);
    CVxProject second;
    EXPECT_FALSE(CVxAppCore::LoadProjectForMerge(m_folder + L"none.pvp", merged, &second));
    ASSERT_TRUE(CVxAppCore::LoadProjectForMerge(m_folder + L"mm.pvp", merged, &second));
    EXPECT_EQ(second.m_unit, CVxUnits::UNIT_CM);
    EXPECT_NEAR(second.GetFloor()->m_walls.walls[0].thickness, 10, 1e-9);

    const int walls = merged.GetFloor()->m_walls.GetWallCount();
    core->MergeProjects(&merged, &second, CVxDPoint(0, 0), CVxDPoint(0, 0), false);
    EXPECT_EQ(core->GetProject().GetFloor()->m_walls.GetWallCount(), walls + 4);
    EXPECT_TRUE(core->GetProject().IsModified());
}

// Files that are no project, or lost part of themselves, through every way
// in. None of them may change the file on disk, and a refused one leaves the
// open project, its name and the recent list as they were.
class AppCoreOpenSafety : public AppCoreFile
{
protected:
    void SetUp() override
    {
        AppCoreFile::SetUp();
        const QByteArray house = ReadAll(CVxStringW(QStringLiteral(PLAVENO_SOURCE_DIR "/samples/House.pvp")));
        ASSERT_GT(house.size(), 3000);
        QByteArray random(4096, '\0');
        quint32 seed = 12345;
        for (char& byte : random) {
            seed = seed * 1103515245u + 12345u;
            byte = static_cast<char>(seed >> 24);
        }
        // The main text claims fewer bytes than its stream holds.
        QByteArray shortSize = house;
        const int key = shortSize.indexOf("UncpSize=") + 9;
        const int end = shortSize.indexOf('\r', key);
        ASSERT_GT(end, key);
        const int size = shortSize.mid(key, end - key).toInt();
        shortSize.replace(key, end - key, QByteArray::number(size / 2));
        QByteArray corrupt = house;
        for (int i = 2400; i < 2440; ++i)
            corrupt[i] = static_cast<char>(corrupt[i] ^ 0x5A);

        refused = {{L"random.pvp", random},
                   {L"empty.pvp", QByteArray()},
                   {L"head.pvp", house.left(20)},
                   {L"library.pvp", "[LibSetup]\r\nFileVersion=1020\r\nLibName=Mine\r\n"},
                   {L"text.pvp", "Dear Sir,\nplease find the plans attached.\n"}};
        damaged = {{L"cut.pvp", house.left(1500)}, {L"short.pvp", shortSize}, {L"corrupt.pvp", corrupt}};
        for (const auto& [name, bytes] : refused)
            WriteAll(m_folder + name, bytes);
        for (const auto& [name, bytes] : damaged)
            WriteAll(m_folder + name, bytes);
        QDir().mkpath((m_folder + L"folder.pvp").ToQString());
        ASSERT_EQ(mkfifo(QFile::encodeName((m_folder + L"fifo.pvp").ToQString()).constData(), 0600), 0);

        // The open project: named, saved, then changed.
        current = SaveProject(L"current.pvp", 640);
        core->GetProject().m_width = 777;
        core->GetProject().m_modified = true;
        recent0 = VX_GetOptions()->m_recent[0];
        m_host.texts.clear();
    }

    void ExpectUntouched(const CVxStringW& file, const QByteArray& bytes)
    {
        SCOPED_TRACE(file.ToQString().toStdString());
        // Reading the pipe here would block the test itself.
        if (QFileInfo((m_folder + file).ToQString()).isFile()) {
            EXPECT_EQ(ReadAll(m_folder + file), bytes);
        }
        EXPECT_DOUBLE_EQ(core->GetProject().m_width, 777);
        EXPECT_TRUE(core->GetProject().IsModified());
        EXPECT_EQ(core->GetProjectPath(), current);
        EXPECT_EQ(VX_GetOptions()->m_recent[0], recent0);
    }

    // Every refused kind, the folder and the pipe included, through `open`;
    // each gives one message that names the file.
    void ExpectAllRefused(const std::function<bool(const CVxStringW&)>& open)
    {
        std::vector<std::pair<CVxStringW, QByteArray>> all = refused;
        all.push_back({L"folder.pvp", QByteArray()});
        all.push_back({L"fifo.pvp", QByteArray()});
        for (const auto& [name, bytes] : all) {
            m_host.texts.clear();
            m_host.answers = {VX_MBR_NO, VX_MBR_NO};
            EXPECT_FALSE(open(m_folder + name)) << name.ToQString().toStdString();
            ExpectUntouched(name, bytes);
            ASSERT_FALSE(m_host.texts.empty()) << name.ToQString().toStdString();
            EXPECT_TRUE(m_host.texts.back().Find(name) >= 0) << m_host.texts.back().ToQString().toStdString();
        }
        // A damaged file whose question is declined changes nothing either.
        for (const auto& [name, bytes] : damaged) {
            m_host.texts.clear();
            m_host.answers = {VX_MBR_NO, VX_MBR_NO};
            EXPECT_FALSE(open(m_folder + name)) << name.ToQString().toStdString();
            ExpectUntouched(name, bytes);
        }
    }

    std::vector<std::pair<CVxStringW, QByteArray>> refused;
    std::vector<std::pair<CVxStringW, QByteArray>> damaged;
    CVxStringW current;
    CVxStringW recent0;
};

TEST_F(AppCoreOpenSafety, TheLookTellsKindsApart)
{
    using Check = CVxProjectFileCheck;
    for (const auto& [name, bytes] : refused) {
        if (name == L"head.pvp")
            continue;
        EXPECT_TRUE(Check::Check(m_folder + name).IsRefused()) << name.ToQString().toStdString();
    }
    // A head alone is a project cut short; the load then finds nothing in it.
    EXPECT_TRUE(Check::Check(m_folder + L"head.pvp").IsDamaged());
    EXPECT_EQ(Check::Check(m_folder + L"random.pvp").GetReason(), Check::VX_REASON_NOT_PROJECT);
    EXPECT_EQ(Check::Check(m_folder + L"empty.pvp").GetReason(), Check::VX_REASON_EMPTY);
    EXPECT_EQ(Check::Check(m_folder + L"library.pvp").GetReason(), Check::VX_REASON_LIBRARY);
    EXPECT_EQ(Check::Check(m_folder + L"folder.pvp").GetReason(), Check::VX_REASON_FOLDER);
    EXPECT_EQ(Check::Check(m_folder + L"fifo.pvp").GetReason(), Check::VX_REASON_SPECIAL);
    EXPECT_EQ(Check::Check(m_folder + L"cut.pvp").GetVerdict(), Check::VX_FILE_DAMAGED);
    EXPECT_EQ(Check::Check(current).GetVerdict(), Check::VX_FILE_GOOD);
    // The library loader asks the same question the other way round.
    EXPECT_EQ(Check::Check(m_folder + L"library.pvp", Check::VX_EXPECT_LIBRARY).GetVerdict(),
              Check::VX_FILE_GOOD);
    EXPECT_EQ(Check::Check(current, Check::VX_EXPECT_LIBRARY).GetReason(), Check::VX_REASON_NOT_LIBRARY);
    EXPECT_TRUE(Check::Check(m_folder + L"random.pvp", Check::VX_EXPECT_LIBRARY).IsRefused());
    // What only unpacking shows is reported by the load.
    for (const wchar_t* name : {L"short.pvp", L"corrupt.pvp"}) {
        CVxProject project;
        project.LoadFromFile(m_folder + name, nullptr, nullptr, false, 0);
        EXPECT_TRUE(project.WasDamagedOnLoad()) << name;
        project.RemoveTempFiles();
    }
    CVxProject whole;
    ASSERT_TRUE(whole.LoadFromFile(current, nullptr, nullptr, false, 0));
    EXPECT_FALSE(whole.WasDamagedOnLoad());
    whole.RemoveTempFiles();
}

TEST_F(AppCoreOpenSafety, OpenAndCommandLineRefuseAndAsk)
{
    // The save question comes first and is answered "Don't save".
    for (const bool atStart : {false, true}) {
        ExpectAllRefused([&](const CVxStringW& path) {
            m_host.answers.push_front(VX_MBR_NO);
            return core->OpenFile(path, atStart);
        });
    }
    // Taken: the project opens untitled and modified, and saving asks for
    // a name; cancelling that leaves the damaged original alone.
    for (const auto& [name, bytes] : damaged) {
        SCOPED_TRACE(name.ToQString().toStdString());
        core->GetProject().m_modified = false;
        m_host.texts.clear();
        m_host.answers = {VX_MBR_YES};
        ASSERT_TRUE(core->OpenFile(m_folder + name, false));
        EXPECT_EQ(m_host.texts.size(), 1u);
        EXPECT_TRUE(m_host.texts[0].StartsWith(CVxStringW(L"The file is damaged; open what could be read?")));
        EXPECT_TRUE(core->GetProjectPath().IsEmpty());
        EXPECT_TRUE(core->GetProject().IsModified());
        EXPECT_FALSE(core->GetProject().HoldsNothing());
        EXPECT_FALSE(core->GetFileMonitor().IsActive());
        EXPECT_EQ(VX_GetOptions()->m_recent[0], recent0);
        m_host.savePath = CVxStringW();
        EXPECT_FALSE(core->DoProjectSave());
        EXPECT_EQ(ReadAll(m_folder + name), bytes);
    }
}

TEST_F(AppCoreOpenSafety, MergeRecoveryAndReloadFollowTheSameRules)
{
    CVxProject merged;
    core->GetProject().CopyTo(&merged);
    ExpectAllRefused([&](const CVxStringW& path) {
        CVxProject second;
        const bool loaded = CVxAppCore::LoadProjectForMerge(path, merged, &second);
        second.RemoveTempFiles();
        return loaded;
    });
    // Recovery: "load it?" is answered Yes, the damaged question No.
    ExpectAllRefused([&](const CVxStringW& path) {
        m_host.answers.push_front(VX_MBR_YES);
        return VX_GetAutoSave()->AskAndRecover(path, false);
    });
    // Reload: the open file is replaced by each kind, and the reload question
    // is answered Yes. The project keeps its changes, name and watch.
    const QByteArray saved = ReadAll(current);
    for (const auto& [name, bytes] : refused) {
        SCOPED_TRACE(name.ToQString().toStdString());
        WriteAll(current, bytes);
        m_host.answers = {VX_MBR_YES, VX_MBR_NO};
        core->OnOpenedFileChangedOnDisk();
        EXPECT_EQ(ReadAll(current), bytes);
        EXPECT_DOUBLE_EQ(core->GetProject().m_width, 777);
        EXPECT_TRUE(core->GetProject().IsModified());
        EXPECT_EQ(core->GetProjectPath(), current);
        EXPECT_TRUE(core->GetFileMonitor().IsActive());
    }
    WriteAll(current, saved);
}

TEST_F(AppCoreFile, NewProjectOutlinesMakeRoomsOfTheirSizeWithWallsOutside)
{
    // Share of the width-by-depth box inside each outline.
    const double shares[] = {1, 0, 0.955, 0.75, 0.75, 0.75, 0.75, 0.6, 5.0 / 6, 5.0 / 6, 0.68, 0.86, 0.82};
    ASSERT_EQ(std::size(shares), size_t(CVxWallEditor::GetNewRoomShapesCount()));
    const double width = 600;
    const double depth = 400;
    for (int shape = 0; shape < CVxWallEditor::GetNewRoomShapesCount(); ++shape) {
        SCOPED_TRACE(shape);
        core->StartNewProject(width, depth, CVxUnits::UNIT_CM, false, shape);
        const CVxFloorPlan& plan = core->GetFloorPlan();
        const double thick = core->GetProject().GetFloor()->m_defWallThickness;
        if (shape == 1) {
            // Two rooms on either side of a wall centred in the box.
            ASSERT_EQ(plan.GetRegionCount(), 2);
            EXPECT_NEAR(plan.GetArea(), (width - thick) * depth, 1e-6);
        } else {
            ASSERT_EQ(plan.GetRegionCount(), 1);
            EXPECT_NEAR(plan.GetArea(), shares[shape] * width * depth, 1e-6);
        }
        EXPECT_TRUE(core->GetProjectPath().IsEmpty());
    }
    // With the wall editor, the pen is in hand at once.
    core->StartNewProject(width, depth, CVxUnits::UNIT_CM, true, 3);
    CVxWallEditor* editor = core->GetWallEditor();
    ASSERT_TRUE(editor && core->GetActiveEditor());
    EXPECT_EQ(editor->GetOperation(), CVxWallEditor::opNewWallStart);
    core->DeactivateActiveEditor(true, true);
}
