// Auto-save on a clock the test moves, and the recovery at the next start.

#include "CVxAppCore.h"
#include "CVxAppHelperHeadless.h"
#include "CVxAutoSave.h"
#include "CVxFloor.h"
#include "CVxOptions.h"
#include "CVxUtils.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

namespace {

// A host with its own data folder, a clock that only the test moves, and a
// user who answers every question with the given button.
class CVxFakeClockHost : public CVxAppHelperHeadless
{
public:
    explicit CVxFakeClockHost(const CVxStringW& folder) : CVxAppHelperHeadless(folder, folder) {}
    int64_t GetTickCount() override { return now; }
    int MsgBox(const CVxStringW& /*text*/, const CVxStringW& /*caption*/, unsigned /*flags*/,
               void* /*parent*/, EVxMsgButton /*defaultButton*/, EVxMsgButton /*escapeButton*/) override
    {
        ++questions;
        return answer;
    }

    int64_t now = 0;
    int questions = 0;
    int answer = VX_MBR_YES;
};

} // namespace

class AutoSave : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_previous = VX_GetAppHelper();
        static int run = 0;
        m_folder = VxTestTempFolder() + L"autosave" + CVxStringW(QString::number(++run)) + L"/";
        m_host = new CVxFakeClockHost(m_folder);
        m_host->CreateFolder(m_folder);
        VX_SetAppHelperCallback(m_host);
        CVxUtils::ForgetAutoSaveFile();
        VX_GetOptions()->m_autoSaveInterval = 2;
        VX_GetCore()->InitProject();
        // A change of the user's: one wall thinner.
        VX_GetCore()->GetProject().GetFloor()->m_walls.walls.front().thickness = 4;
        VX_GetCore()->GetProject().m_modified = true;
    }
    void TearDown() override
    {
        CVxUtils::SetRunFromAnotherInstance(false);
        CVxUtils::ForgetAutoSaveFile();
        VX_GetOptions()->ResetToDefaults();
        VX_GetCore()->SetProjectPath(CVxStringW());
        VX_GetCore()->InitProject();
        VX_SetAppHelperCallback(m_previous);
        delete m_host;
    }
    // The timer's ticks up to the given time, every 20 seconds.
    void RunTimerUntil(int64_t until)
    {
        for (; m_nextTick <= until; m_nextTick += CVxAutoSave::timerPeriodMs) {
            m_host->now = m_nextTick;
            VX_GetAutoSave()->OnAutoSaveTimer(m_lastSaveTick);
        }
    }
    // A new process on the same folder.
    void Restart()
    {
        CVxUtils::ForgetAutoSaveFile();
        VX_GetCore()->InitProject();
    }

    IVxAppHelperCallback* m_previous = nullptr;
    CVxFakeClockHost* m_host = nullptr;
    CVxStringW m_folder;
    int64_t m_lastSaveTick = 0;
    int64_t m_nextTick = 0;
};

TEST_F(AutoSave, WritesOnlyAfterTheIntervalAndKeepsTheModifiedFlag)
{
    const CVxStringW file = CVxUtils::GetAutoSaveFile();
    EXPECT_TRUE(file.StartsWith(m_folder + L"PVSave"));
    EXPECT_TRUE(file.EndsWith(CVxStringW(L".pvp")));
    RunTimerUntil(100000);
    EXPECT_FALSE(m_host->FileExists(file));
    RunTimerUntil(120000);
    EXPECT_TRUE(m_host->FileExists(file));
    EXPECT_FALSE(m_host->FileExists(file + L".new"));
    EXPECT_EQ(m_lastSaveTick, 120000);
    EXPECT_TRUE(VX_GetCore()->GetProject().IsModified());
    // The next save waits for a whole interval again.
    m_host->FileDelete(file);
    RunTimerUntil(220000);
    EXPECT_FALSE(m_host->FileExists(file));
    RunTimerUntil(240000);
    EXPECT_TRUE(m_host->FileExists(file));
    EXPECT_EQ(m_host->questions, 0);
}

TEST_F(AutoSave, NothingWrittenForAnUnchangedProjectOrANegativeInterval)
{
    VX_GetCore()->GetProject().m_modified = false;
    RunTimerUntil(600000);
    EXPECT_FALSE(m_host->FileExists(CVxUtils::GetAutoSaveFile()));
    VX_GetCore()->GetProject().m_modified = true;
    VX_GetOptions()->m_autoSaveInterval = -1;
    RunTimerUntil(6000000);
    EXPECT_FALSE(m_host->FileExists(CVxUtils::GetAutoSaveFile()));
}

TEST_F(AutoSave, CrashFileRecoveredUntitledAndModifiedAtNextStart)
{
    RunTimerUntil(120000);
    ASSERT_TRUE(m_host->FileExists(CVxUtils::GetAutoSaveFile()));
    VX_GetCore()->SetProjectPath(m_folder + L"mine.pvp");

    Restart();
    EXPECT_FALSE(VX_GetCore()->GetProject().IsModified());
    EXPECT_TRUE(VX_GetAutoSave()->CheckForAutoSave(true));
    EXPECT_EQ(m_host->questions, 1);
    const CVxProject& project = VX_GetCore()->GetProject();
    EXPECT_TRUE(project.IsModified());
    EXPECT_TRUE(VX_GetCore()->GetProjectPath().IsEmpty());
    EXPECT_DOUBLE_EQ(project.m_floors.front()->m_walls.walls.front().thickness, 4);
    // The found file is this run's own now: a normal exit removes it.
    CVxAutoSave::DeleteAutoSaveFile();
    Restart();
    EXPECT_TRUE(CVxUtils::InitAndGetAutoSaveCrashFile().IsEmpty());
}

TEST_F(AutoSave, DeclinedRecoveryLoadsNothing)
{
    RunTimerUntil(120000);
    Restart();
    m_host->answer = VX_MBR_NO;
    EXPECT_FALSE(VX_GetAutoSave()->CheckForAutoSave(true));
    EXPECT_EQ(m_host->questions, 1);
    EXPECT_FALSE(VX_GetCore()->GetProject().IsModified());
}

TEST_F(AutoSave, OldFilesUntouchedWhileAnotherInstanceRuns)
{
    RunTimerUntil(120000);
    const CVxStringW first = CVxUtils::GetAutoSaveFile();
    Restart();
    CVxUtils::SetRunFromAnotherInstance(true);
    EXPECT_TRUE(CVxUtils::InitAndGetAutoSaveCrashFile().IsEmpty());
    EXPECT_FALSE(VX_GetAutoSave()->CheckForAutoSave(true));
    EXPECT_EQ(m_host->questions, 0);
    // Deleting this run's own file leaves the other instance's alone.
    EXPECT_NE(CVxUtils::GetAutoSaveFile(), first);
    CVxAutoSave::DeleteAutoSaveFile();
    EXPECT_TRUE(m_host->FileExists(first));
}

TEST_F(AutoSave, NormalExitLeavesNoFileAndTheNextStartAsksNothing)
{
    RunTimerUntil(120000);
    const CVxStringW file = CVxUtils::GetAutoSaveFile();
    ASSERT_TRUE(m_host->FileExists(file));
    CVxAutoSave::DeleteAutoSaveFile();
    EXPECT_FALSE(m_host->FileExists(file));
    EXPECT_FALSE(m_host->FileExists(CVxAutoSave::GetThumbnailFile(file)));
    Restart();
    EXPECT_FALSE(VX_GetAutoSave()->CheckForAutoSave(true));
    EXPECT_EQ(m_host->questions, 0);
}

TEST_F(AutoSave, WallEditorOpenSavesTheObjectsItKeepsAside)
{
    CVxAppCore* core = VX_GetCore();
    CVxFloor* floor = core->GetProject().GetFloor();
    CVxPart* box = floor->GetNewObject(nullptr, true);
    box->type = ptRectangle;
    box->width = 40;
    box->height = 40;
    floor->m_objectCount = floor->CountUsedObjects();
    ASSERT_TRUE(core->DoMainToolbarButtonAction(VX_TB_EDIT_WALLS));
    ASSERT_EQ(core->GetProject().GetFloor()->CountUsedObjects(), 0);
    core->GetProject().m_modified = true;
    ASSERT_TRUE(VX_GetAutoSave()->SaveProjectToAutoSaveFile(m_lastSaveTick));
    CVxProject saved;
    ASSERT_EQ(CVxAppCore::LoadProjectForUser(CVxUtils::GetAutoSaveFile(), &saved, nullptr),
              CVxAppCore::VX_LOAD_OK);
    EXPECT_EQ(saved.GetFloor()->CountUsedObjects(), 1);
    core->DeactivateActiveEditor(true, true);
}
