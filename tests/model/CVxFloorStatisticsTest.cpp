// The statistics table of a floor against figures worked out by hand.

#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxHoleInFloor.h"
#include "CVxUnits.h"

#include <gtest/gtest.h>

namespace {

// A room 500 by 300 inside walls 10 thick and 250 high, a floor opening of
// 100 by 100 and a window 100 wide and 120 high in the top wall.
void BuildRoom(CVxFloor& floor, CVxFloorPlan& plan)
{
    floor.m_walls.SetAsBasicRect(500, 300, 10, 250);
    CVxHoleInFloor hole;
    hole.type = CVxHoleInFloor::TYPE_RECTANGLE;
    hole.x = 200;
    hole.y = 100;
    hole.width = 100;
    hole.height = 100;
    floor.m_walls.holes.push_back(hole);
    floor.m_walls.RebuildWalls();
    plan.CreatePlan(floor, CVxUnits::UNIT_CM);
    floor.ResetWallSnapSegments(&plan);
    CVxPart* window = floor.GetNewObject();
    window->type = ptWindow;
    window->width = 100;
    window->zHeight = 120;
    window->snapToWall = true;
    window->SnapToWall(&floor.m_walls, 200, 2, false, false, false);
}

std::vector<CVxStringW> Rows(const CVxStringW& text)
{
    std::vector<CVxStringW> rows;
    int from = 0;
    for (int at = text.Find(L"\r\n", from); at >= 0; at = text.Find(L"\r\n", from)) {
        rows.push_back(text.Mid(from, at - from));
        from = at + 2;
    }
    return rows;
}

} // namespace

TEST(FloorStatistics, TableMatchesTheRoomWorkedOutByHand)
{
    CVxFloor floor;
    CVxFloorPlan plan;
    BuildRoom(floor, plan);
    ASSERT_EQ(plan.GetRegionCount(), 1);
    ASSERT_GE(floor.SafeGetPart(0)->snapWall, 0);

    const std::vector<CVxStringW> rows =
        Rows(floor.GetFloorStatisticalString(plan, CVxUnits::UNIT_CM, CVxUnits::UNIT_M));
    ASSERT_EQ(rows.size(), 8u);
    EXPECT_EQ(rows[0], CVxStringW(L"Room\tID\tWidth [m]\tLength [m]\tHeight [m]\tArea [m\u00B2]\t"
                                  L"Doors and Windows [m\u00B2]\tFloor and wall openings [m\u00B2]\t"
                                  L"Total useful area [m\u00B2]"));
    // A room without a name is numbered: 15 m² of floor, 1 m² of it open.
    EXPECT_EQ(rows[1], CVxStringW(L"Room 1\tDimensions\t5\t3\t\t15\t\t1\t14"));
    // Four wall runs: 5 x 2.5 and 3 x 2.5 twice; the window's 1.2 m² in
    // the top one.
    int withWindow = 0;
    for (int i = 2; i < 6; ++i) {
        if (rows[static_cast<size_t>(i)] == CVxStringW(L"\tWall\t\t5\t2.5\t12.5\t1.2\t0\t11.3"))
            ++withWindow;
        else
            EXPECT_TRUE(rows[static_cast<size_t>(i)] == CVxStringW(L"\tWall\t\t5\t2.5\t12.5\t0\t0\t12.5") ||
                        rows[static_cast<size_t>(i)] == CVxStringW(L"\tWall\t\t3\t2.5\t7.5\t0\t0\t7.5"))
                << CVxStringA(rows[static_cast<size_t>(i)]).c_str();
    }
    EXPECT_EQ(withWindow, 1);
    // Totals: floor and walls 15 + 40, useful 14 + 40 - 1.2.
    EXPECT_EQ(rows[6], CVxStringW(L"\tTotals\t5\t3\t2.5\t55\t1.2\t1\t52.8"));
    EXPECT_TRUE(rows[7].IsEmpty());

    // The room manager's figures of the same room.
    const CVxStringW info =
        floor.GetFloorInfoString(&plan.regions[0], CVxUnits::UNIT_CM, CVxUnits::UNIT_CM, CVxUnits::UNIT_M,
                                 plan.regions[0].GetAreaWithoutHoles(), plan.GetOuterArea());
    EXPECT_NE(info.Find(L"Total useful area: 14.0000 m\u00B2"), -1) << CVxStringA(info).c_str();
    EXPECT_NE(info.Find(L"Perimeter: 16.0 m"), -1) << CVxStringA(info).c_str();
}

TEST(FloorStatistics, AFloorWithoutRoomsHasOnlyTheHeader)
{
    CVxFloor floor;
    floor.m_walls.RemoveAll();
    CVxFloorPlan plan;
    plan.CreatePlan(floor, CVxUnits::UNIT_CM);
    const std::vector<CVxStringW> rows =
        Rows(floor.GetFloorStatisticalString(plan, CVxUnits::UNIT_CM, CVxUnits::UNIT_M));
    EXPECT_EQ(rows.size(), 1u);
}

TEST(FloorStatistics, ASlopedWallGivesATrapezoidFace)
{
    CVxFloor floor;
    CVxFloorPlan plan;
    floor.m_walls.SetAsBasicRect(400, 400, 10, 250);
    for (CVxWall& wall : floor.m_walls.walls) {
        wall.startHeight = 200;
        wall.endHeight = 300;
    }
    floor.m_walls.RebuildWalls();
    plan.CreatePlan(floor, CVxUnits::UNIT_CM);
    double height = 0, area = 0;
    floor.GetWallsInfoString(&plan.regions[0], CVxFloor::statTable, CVxUnits::UNIT_CM, CVxUnits::UNIT_M, -1,
                             &height, nullptr, nullptr, &area, nullptr, nullptr);
    // Each face is 4 long; its heights lie between 200 and 300, and the four
    // faces together average 250.
    EXPECT_NEAR(area, 4 * 400 * 250, 4 * 400 * 10);
    EXPECT_GT(height, 280);
}
