// Undo and redo by snapshots: the slots and their limit, steps that
// coalesce, and what an undo must not take back.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxProject.h"
#include "CVxUndoManager.h"

#include <gtest/gtest.h>

namespace {

// A project told apart by its width.
CVxProject Sized(double width)
{
    CVxProject project;
    project.m_width = width;
    return project;
}

} // namespace

TEST(UndoManager, SlotsLimitAndRedo)
{
    CVxProject live = Sized(0);
    CVxUndoManager undo(&live);
    undo.SetUndoLimit(40);
    for (int i = 1; i <= 45; ++i) {
        undo.AddToUndoList(&live);
        live.m_width = i;
    }
    // The limit counts slots, and one of them stands for the present state.
    EXPECT_EQ(undo.GetSlotCount(), 40);
    int undos = 0;
    const CVxProject* slot = nullptr;
    while (undo.CanUndo()) {
        slot = undo.MakeUndo(undos == 0 ? &live : nullptr);
        ++undos;
    }
    EXPECT_EQ(undos, 39);
    EXPECT_DOUBLE_EQ(slot->m_width, 6);
    // Redo comes back to the state that was live when the undoing began.
    while (undo.CanRedo())
        slot = undo.MakeRedo();
    EXPECT_DOUBLE_EQ(slot->m_width, 45);

    // A change after an undo drops what could have been redone.
    undo.MakeUndo(nullptr);
    undo.AddToUndoList(&live);
    EXPECT_FALSE(undo.CanRedo());

    undo.SetUndoLimit(2);
    EXPECT_EQ(undo.GetUndoLimit(), 3u);
    EXPECT_EQ(undo.GetSlotCount(), 3);
    undo.SetUndoLimit(0);
    for (int i = 0; i < 50; ++i)
        undo.AddToUndoList(&live);
    EXPECT_EQ(undo.GetSlotCount(), 53);
    undo.Reinitialize(nullptr);
    EXPECT_EQ(undo.GetSlotCount(), 1);
    EXPECT_FALSE(undo.CanUndo());
}

class AppCoreUndo : public ::testing::Test
{
protected:
    void SetUp() override
    {
        core = VX_GetCore();
        core->InitProject();
    }
    void TearDown() override { core->InitProject(); }
    CVxAppCore* core = nullptr;
};

TEST_F(AppCoreUndo, ADragIsOneStepAndTransformsAreStepsOfTheirOwn)
{
    CVxProject& project = core->GetProject();
    EXPECT_FALSE(core->CanUndo());
    const double width = project.m_width;
    // A drag: a catch at every move, and the release arms the next step.
    for (int move = 1; move <= 5; ++move) {
        core->CatchUndoRoom(false);
        project.m_width = width + move;
    }
    core->CatchUndoRoom(true);
    EXPECT_TRUE(project.IsModified());
    core->TransformScale(2);
    const int walls = project.GetFloor()->m_walls.GetWallCount();
    ASSERT_GT(walls, 0);

    ASSERT_TRUE(core->MakeUndo());
    EXPECT_DOUBLE_EQ(project.m_width, width + 5);
    ASSERT_TRUE(core->MakeUndo());
    EXPECT_DOUBLE_EQ(project.m_width, width);
    EXPECT_FALSE(core->CanUndo());
    EXPECT_FALSE(core->MakeUndo());
    ASSERT_TRUE(core->MakeRedo());
    ASSERT_TRUE(core->MakeRedo());
    EXPECT_DOUBLE_EQ(project.m_width, 2 * (width + 5));
    EXPECT_EQ(project.GetFloor()->m_walls.GetWallCount(), walls);
    // The plan is found again for the restored walls.
    EXPECT_GT(core->GetFloorPlan().GetRegionCount(), 0);
}

TEST_F(AppCoreUndo, SettingsOfTheDocumentSurviveAndSavedStatesCountAsModified)
{
    CVxProject& project = core->GetProject();
    core->CatchUndoRoom(true);
    project.GetFloor()->m_walls.walls.clear();
    project.m_comments = L"Ask the builder about the beam";
    project.m_printTitle = L"Ground floor";
    ASSERT_TRUE(core->MakeUndo());
    EXPECT_GT(project.GetFloor()->m_walls.GetWallCount(), 0);
    EXPECT_EQ(project.m_comments, L"Ask the builder about the beam");
    EXPECT_EQ(project.m_printTitle, L"Ground floor");

    // As a save does: every kept state differs from the file from now on.
    project.m_modified = false;
    core->GetUndoManager().SetModifiedFlagToAllRooms();
    ASSERT_TRUE(core->MakeRedo());
    EXPECT_TRUE(project.IsModified());
}

TEST_F(AppCoreUndo, FloorsAreAddedSwappedAndRemovedAsStepsAndVisitedWithout)
{
    CVxProject& project = core->GetProject();
    project.GetFloor()->GetNewObject()->width = 77;
    ASSERT_TRUE(core->AddNewFloor());
    EXPECT_EQ(project.GetFloorCount(), 2);
    EXPECT_EQ(project.m_currentFloor, 1);
    // The new floor is walled round, and the plan shows it.
    EXPECT_EQ(project.GetFloor()->CountUsedObjects(), 0);
    EXPECT_GT(core->GetFloorPlan().GetRegionCount(), 0);

    EXPECT_FALSE(core->SwapCurrentFloor(true));
    ASSERT_TRUE(core->SwapCurrentFloor(false));
    EXPECT_EQ(project.m_currentFloor, 0);
    EXPECT_EQ(project.m_floors[1]->CountUsedObjects(), 1);

    // Going to another floor changes no history.
    ASSERT_TRUE(core->GoToFloor(1));
    EXPECT_FALSE(core->GoToFloor(2));
    ASSERT_TRUE(core->RemoveCurrentFloor(false));
    EXPECT_EQ(project.GetFloorCount(), 1);
    EXPECT_EQ(project.GetFloor()->CountUsedObjects(), 0);
    EXPECT_FALSE(core->RemoveCurrentFloor(false));

    ASSERT_TRUE(core->MakeUndo());
    ASSERT_TRUE(core->MakeUndo());
    EXPECT_EQ(project.GetFloorCount(), 2);
    EXPECT_EQ(project.m_floors[1]->CountUsedObjects(), 0);
    ASSERT_TRUE(core->MakeUndo());
    EXPECT_EQ(project.GetFloorCount(), 1);
    EXPECT_FALSE(core->CanUndo());
}
