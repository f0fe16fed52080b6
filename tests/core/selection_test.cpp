// The selection of the plan and the commands on it, without a window:
// hit order, z-order, duplicates, spacing, the painter and pasted text.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "VxTestEnv.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace {

class Selection : public ::testing::Test
{
protected:
    void SetUp() override
    {
        core = VX_GetCore();
        core->InitProject();
        core->SetZoom(1.0);
        floor = core->GetProject().GetFloor();
        floor->RemoveAllObjects();
        core->GetUndoManager().Reinitialize(&core->GetProject());
    }
    void TearDown() override { core->InitProject(); }

    int Add(double x, double y, double w, double h, int layer = 0)
    {
        int index = -1;
        CVxPart* part = floor->GetNewObject(&index, true);
        part->type = ptRectangle;
        part->x = x;
        part->y = y;
        part->width = w;
        part->height = h;
        part->layer = layer;
        part->InvalidateCache();
        return index;
    }
    CVxPart& Part(int i) { return floor->m_objects[static_cast<size_t>(i)]; }

    CVxAppCore* core = nullptr;
    CVxFloor* floor = nullptr;
};

} // namespace

TEST_F(Selection, HigherLayerBeatsOrderAndSelectedBeatsUnselectedOnTop)
{
    floor->m_layers.AddLayer(L"Second");
    const int upper = Add(0, 0, 100, 100, 1);
    const int lower = Add(0, 0, 100, 100, 0);
    // The later object is on top in its layer, but the other layer wins.
    EXPECT_EQ(core->FindPartFromPoint(50, 50, 0, false), upper);
    core->SetSelection(lower, false);
    EXPECT_EQ(core->FindPartFromPoint(50, 50, 0, true), lower);
    // A touch ignores the preference.
    EXPECT_EQ(core->FindPartFromPoint(50, 50, CVxAppCore::sourceTouch, true), upper);

    // A press on the selected object under the unselected one keeps the
    // selection as it is.
    const VxPOINT o = core->GetObjectOrigin();
    bool handled = false;
    core->MainViewMouseDown(CVxAppCore::buttonLeft, 0, o.x + 50, o.y + 50, 0, &handled);
    EXPECT_TRUE(Part(lower).selected);
    EXPECT_FALSE(Part(upper).selected);
    EXPECT_EQ(core->GetMovingPart(), lower);
    core->MainViewMouseUp(CVxAppCore::buttonLeft, 0, o.x + 50, o.y + 50, 0);
}

TEST_F(Selection, ZOrderCommandsMoveTheSelectionPastItsOverlappingNeighbour)
{
    const int a = Add(0, 0, 50, 50);
    Add(200, 0, 50, 50); // far away: stepping passes over it
    Add(10, 10, 50, 50);
    Part(a).caption = L"A";
    core->SetSelection(a, false);
    core->ZOrderBringForward();
    EXPECT_EQ(floor->m_objects[2].caption, CVxStringW(L"A"));
    core->ZOrderSendToBack();
    EXPECT_EQ(floor->m_objects[0].caption, CVxStringW(L"A"));
    core->ZOrderBringToFront();
    EXPECT_EQ(floor->m_objects[2].caption, CVxStringW(L"A"));
    EXPECT_EQ(core->GetLastSelected(), 2);
    // Just under the object it overlapped, not to the bottom.
    core->ZOrderSendBackward();
    EXPECT_EQ(floor->m_objects[1].caption, CVxStringW(L"A"));
    ASSERT_TRUE(core->MakeUndo());
    // The undo brought back floors of its own; the old one is gone.
    EXPECT_EQ(core->GetProject().GetFloor()->m_objects[2].caption, CVxStringW(L"A"));
}

TEST_F(Selection, DuplicatesAreOffsetSelectedAndUnlocked)
{
    const int a = Add(100, 100, 50, 20);
    const int b = Add(200, 100, 50, 20);
    Part(a).locked = CVxPart::ctxLock;
    core->SetSelection(a, false);
    core->AddToSelection(b, false);
    core->DuplicateSelectedObjects();
    EXPECT_EQ(floor->CountUsedObjects(), 4);
    EXPECT_FALSE(Part(a).selected);
    const CVxPart& copy = Part(2);
    EXPECT_TRUE(copy.selected);
    EXPECT_FALSE(copy.IsLocked());
    // A tenth of the group's width across, and half its height's tenth more
    // down.
    EXPECT_DOUBLE_EQ(copy.x, 115);
    EXPECT_DOUBLE_EQ(copy.y, 116);
}

TEST_F(Selection, SpaceEquallyKeepsTheEndsAndEvensTheGaps)
{
    const int a = Add(0, 0, 10, 10);
    const int b = Add(15, 0, 20, 10);
    const int c = Add(100, 0, 10, 10);
    core->SelectAll();
    core->SpaceEquallySelectedObjects(1);
    EXPECT_DOUBLE_EQ(Part(a).x, 0);
    EXPECT_DOUBLE_EQ(Part(c).x, 100);
    EXPECT_DOUBLE_EQ(Part(b).x - 10, 100 - (Part(b).x + 20));
}

TEST_F(Selection, FormatPainterCopiesTheLookOnce)
{
    const int source = Add(0, 0, 10, 10);
    const int target = Add(50, 0, 10, 10);
    Part(source).SetFillColor(0x123456);
    Part(source).lineColor = 0x654321;
    core->SetSelection(source, false);
    core->ActivateFormatPainter(true, false);
    EXPECT_EQ(core->GetMouseState(), int(CVxAppCore::msPainterOnce));
    const VxPOINT o = core->GetObjectOrigin();
    bool handled = true;
    core->MainViewMouseDown(CVxAppCore::buttonLeft, 0, o.x + 55, o.y + 5, 0, &handled);
    EXPECT_EQ(Part(target).GetFillColor(), 0x123456u);
    EXPECT_EQ(Part(target).lineColor, 0x654321u);
    EXPECT_EQ(core->GetMouseState(), int(CVxAppCore::msIdle));
    EXPECT_DOUBLE_EQ(Part(target).x, 50);
}

TEST_F(Selection, PastedTextNamesNoPrivateFile)
{
    const CVxStringA clip("[Plaveno Clipboard]\r\n\r\n[Room]\r\nUnit=cm\r\n\r\n[Part0]\r\nType=Rectangle\r\n"
                          "Width=40\r\nHeight=40\r\nTexture=/etc/passwd\r\nPosX=nan\r\nRotation=1e300\r\n");
    ASSERT_TRUE(core->PasteObjectsFromClipboard(clip));
    const CVxPart& part = Part(core->GetFirstSelected());
    EXPECT_NE(part.appearFill.main.texture, CVxStringW(L"/etc/passwd"));
    EXPECT_TRUE(std::isfinite(part.x));
    EXPECT_TRUE(std::isfinite(part.rotation));
}

TEST_F(Selection, HandlesFollowWhatTheObjectAllows)
{
    const int box = Add(0, 0, 100, 50);
    core->SetSelection(box, false);
    auto kinds = [&] {
        std::vector<int> out;
        for (const CVxSelSymbol& s : core->GetSelectionHandles().GetSymbols())
            out.push_back(s.kind);
        return out;
    };
    EXPECT_EQ(kinds(), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    Part(box).locked = CVxPart::ctxLockSize;
    core->OnSelectionChange();
    EXPECT_EQ(kinds(), (std::vector<int>{8, 9}));
    Part(box).locked = CVxPart::ctxLock;
    core->OnSelectionChange();
    EXPECT_TRUE(kinds().empty());
}

TEST_F(Selection, MovingAPolylinePointRefitsTheFrameAndKeepsTheOthers)
{
    const int index = Add(100, 100, 100, 100);
    CVxPart& line = Part(index);
    line.type = ptPolyline;
    line.rotation = 90;
    line.polygon.points = {CVxDPoint(0, 0), CVxDPoint(1000, 500), CVxDPoint(500, 1000)};
    // Where a point lies in the plan.
    auto plan = [&](int i) {
        const CVxDPoint& p = line.polygon.points[static_cast<size_t>(i)];
        const double u = p.x / 1000 * line.width, v = p.y / 1000 * line.height;
        return CVxDPoint(line.x - v, line.y + u); // turned by 90 degrees
    };
    const CVxDPoint keep1 = plan(1);
    const CVxDPoint keep2 = plan(2);
    CVxPartSelection selection;
    ASSERT_TRUE(selection.MovePolygonPoint(&line, 0, CVxDPoint(300, 40), false));
    EXPECT_NEAR(plan(0).x, 300, 1e-9);
    EXPECT_NEAR(plan(0).y, 40, 1e-9);
    EXPECT_NEAR(plan(1).x, keep1.x, 1e-9);
    EXPECT_NEAR(plan(1).y, keep1.y, 1e-9);
    EXPECT_NEAR(plan(2).x, keep2.x, 1e-9);
    EXPECT_NEAR(plan(2).y, keep2.y, 1e-9);
    for (const CVxDPoint& p : line.polygon.points) {
        EXPECT_GE(p.x, -1e-9);
        EXPECT_LE(p.x, 1000 + 1e-9);
    }
    core->SetSelection(index, false);
    int vertices = 0;
    for (const CVxSelSymbol& s : core->GetSelectionHandles().GetSymbols())
        vertices += s.kind == CVxSelSymbol::kindVertex;
    EXPECT_EQ(vertices, 3);
}
