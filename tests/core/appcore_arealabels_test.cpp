// Room area labels: made for every room, and following the rooms through
// every rebuild of the plan.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxOptions.h"
#include "CVxUnits.h"
#include "VxNumbers.h"

#include <gtest/gtest.h>

namespace {

class AreaLabels : public ::testing::Test
{
protected:
    void SetUp() override { VX_GetCore()->InitProject(); }
    void TearDown() override { VX_GetCore()->InitProject(); }
};

std::vector<CVxPart*> Labels(CVxFloor* floor)
{
    std::vector<CVxPart*> labels;
    for (CVxPart& part : floor->m_objects)
        if (part.inUse && part.type == ptLabel && part.snapRegion >= 0)
            labels.push_back(&part);
    return labels;
}

CVxStringW Area(const CVxFloorRegion* room)
{
    return VX_DblFormatAreaValue(room->innerPolygon.GetArea() / 10000, CVxUnits::UNIT_M);
}

} // namespace

TEST_F(AreaLabels, EveryRoomGetsItsNameAndAreaAndTheLabelsFollowAMovedWall)
{
    CVxAppCore* core = VX_GetCore();
    CVxFloor* floor = core->GetProject().GetFloor();
    int divider = -1;
    floor->m_walls.GetNewWall(&divider)->Set(200, 0, 200, 300, CVxWall::ALIGN_CENTER, 10, 265, 265, true,
                                             false);
    core->UpdateFloorPlan();
    ASSERT_EQ(core->GetFloorPlan().GetRegionCount(), 2);
    CVxFloorPlan& plan = core->GetFloorPlan();
    const int hallIndex = plan.FindRegion(CVxDPoint(50, 50));
    plan.SafeGetRegion(hallIndex)->name = L"Hall";
    floor->SetCommonFloorAppearancesAndSave(plan, true);

    core->InsertAreaLabels(true, -1);
    std::vector<CVxPart*> labels = Labels(floor);
    ASSERT_EQ(labels.size(), 2u);
    for (CVxPart* label : labels) {
        const CVxFloorRegion* room = plan.SafeGetRegion(label->snapRegion);
        ASSERT_NE(room, nullptr);
        if (label->snapRegion == hallIndex)
            EXPECT_EQ(label->caption, L"Hall\r\n" + Area(room));
        else
            EXPECT_EQ(label->caption,
                      CVxStringW().sprintf(L"Room %d\r\n", label->snapRegion + 1) + Area(room));
        // Centred on its room, with a size of its own.
        EXPECT_GT(label->width, 0);
        EXPECT_GT(label->height, 0);
        EXPECT_TRUE(room->PtInRegion(CVxDPoint(label->x + label->width / 2, label->y + label->height / 2)));
    }
    // One undo step brings back the floor without labels.
    ASSERT_TRUE(core->CanUndo());

    const auto hallLabel = [&]() -> CVxPart* {
        for (CVxPart* label : Labels(floor))
            if (label->snapRegion == hallIndex)
                return label;
        return nullptr;
    };
    ASSERT_NE(hallLabel(), nullptr);
    const CVxStringW before = hallLabel()->caption;
    const double hallX = hallLabel()->x;
    // The dividing wall moves right: the hall grows, its label follows at
    // the next rebuild without moving.
    floor->m_walls.SafeGetWall(divider)->Set(300, 0, 300, 300, CVxWall::ALIGN_CENTER, 10, 265, 265, true,
                                             false);
    core->UpdateFloorPlan();
    const int grown = core->GetFloorPlan().FindRegion(CVxDPoint(50, 50));
    ASSERT_EQ(grown, hallIndex);
    for (CVxPart* label : Labels(floor)) {
        const CVxFloorRegion* room = core->GetFloorPlan().SafeGetRegion(label->snapRegion);
        ASSERT_NE(room, nullptr);
        EXPECT_NE(label->caption.Find(Area(room)), -1) << CVxStringA(label->caption).c_str();
    }
    EXPECT_NE(hallLabel()->caption, before);
    EXPECT_TRUE(hallLabel()->caption.StartsWith(L"Hall\r\n"));
    EXPECT_EQ(hallLabel()->x, hallX);
    EXPECT_NE(core->GetFloorStatistics().Find(L"Hall\tDimensions\t"), -1);
}

TEST_F(AreaLabels, ALabelWhoseRoomWentKeepsItsText)
{
    CVxAppCore* core = VX_GetCore();
    CVxFloor* floor = core->GetProject().GetFloor();
    int divider = -1;
    floor->m_walls.GetNewWall(&divider)->Set(200, 0, 200, 300, CVxWall::ALIGN_CENTER, 10, 265, 265, true,
                                             false);
    core->UpdateFloorPlan();
    core->InsertAreaLabels(false, -1);
    ASSERT_EQ(Labels(floor).size(), 2u);
    CVxPart* second = Labels(floor)[1];
    ASSERT_EQ(second->snapRegion, 1);
    const CVxStringW kept = second->caption;
    floor->m_walls.SafeGetWall(divider)->Set(200, 0, 200, 0.5, CVxWall::ALIGN_CENTER, 10, 265, 265, true,
                                             false);
    core->UpdateFloorPlan();
    ASSERT_EQ(core->GetFloorPlan().GetRegionCount(), 1);
    EXPECT_EQ(Labels(floor)[1]->caption, kept);
}

TEST_F(AreaLabels, APastedRoomLabelKeepsItsOwnText)
{
    CVxAppCore* core = VX_GetCore();
    const CVxStringA clip("[Plaveno Clipboard]\r\n\r\n[Room]\r\nUnit=cm\r\n\r\n[Part0]\r\nType=Label\r\n"
                          "Caption=Kitchen\r\nWidth=80\r\nHeight=20\r\nSnapRegion=0\r\n");
    ASSERT_TRUE(core->PasteObjectsFromClipboard(clip));
    // The pasted label hangs on the pointer until it is put down.
    core->MainViewFinishInterAction(true);
    core->UpdateFloorPlan();
    const CVxFloor* floor = core->GetProject().GetFloor();
    int pasted = 0;
    for (const CVxPart& part : floor->m_objects) {
        if (!part.inUse || part.type != ptLabel)
            continue;
        ++pasted;
        EXPECT_EQ(part.caption, CVxStringW(L"Kitchen"));
        EXPECT_EQ(part.snapRegion, -1);
    }
    EXPECT_EQ(pasted, 1);
}
