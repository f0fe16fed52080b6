// The wall editor driven through the core as the plan view drives it: walls
// drawn by the pointer, split, healed and moved, rooms found again, objects
// and the undo history across accepting and discarding, typed lengths.

#include "CVxWallEditor.h"
#include "CVxAppCore.h"
#include "CVxAppHelperHeadless.h"
#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxPictureLoadCache.h"
#include "VxTestEnv.h"
#include "VxTypedLength.h"

#include <QImage>

#include <gtest/gtest.h>

#include <cmath>

namespace {

// The left button is down whenever the test says so, and questions are
// answered Yes.
class CVxEditorTestHost : public CVxAppHelperHeadless
{
public:
    CVxEditorTestHost()
        : CVxAppHelperHeadless(VxTestTempFolder() + L"appdata/", VxTestTempFolder() + L"docs/")
    {
    }
    int GetKeyState(EVxKey key) override { return key == VX_KEY_LBUTTON && m_left ? 1 : 0; }
    int MsgBox(const CVxStringW&, const CVxStringW&, unsigned, void*, EVxMsgButton, EVxMsgButton) override
    {
        ++m_questions;
        return VX_MBR_YES;
    }
    // The table of numbers: the first corner moves, the first wall thickens.
    bool WallNumericalDlgShowModal(std::vector<CVxDPoint>& corners,
                                   std::vector<SVxWallNumbers>& walls) override
    {
        if (corners.empty() || walls.empty())
            return false;
        m_movedCorner = corners[0];
        corners[0] = corners[0] + CVxDPoint(-50, -30);
        walls[0].thickness = 25;
        walls[1].height = -4; // refused
        return true;
    }
    bool m_left = false;
    int m_questions = 0;
    CVxDPoint m_movedCorner;
};

class WallEditor : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_previous = VX_GetAppHelper();
        VX_SetAppHelperCallback(&m_host);
        core = VX_GetCore();
        core->InitProject();
        core->SetDrawingAllowed(true);
        core->SetZoom(1.0);
        core->SetViewOrigin(VxPOINT{0, 0});
        core->RebuildRoom();
    }
    void TearDown() override
    {
        core->DeactivateActiveEditor(true, true);
        core->InitProject();
        // Pictures of a scan stay cached for the next drawing otherwise.
        CVxPictureLoadCache::Clear();
        VX_SetAppHelperCallback(m_previous);
    }
    CVxFloor* Floor() { return core->GetProject().GetFloor(); }
    int Walls() { return Floor()->m_walls.GetWallCount(); }
    int Rooms() { return core->GetFloorPlan().GetRegionCount(); }
    CVxWallEditor* Open()
    {
        EXPECT_TRUE(core->DoMainToolbarButtonAction(VX_TB_EDIT_WALLS));
        EXPECT_NE(core->GetActiveEditor(), nullptr);
        return core->GetWallEditor();
    }
    // Plan units to pixels of the render area.
    double Px(double x) { return core->GetObjectOrigin().x + x * core->GetZoom(); }
    double Py(double y) { return core->GetObjectOrigin().y + y * core->GetZoom(); }
    void Press(double x, double y, unsigned modifiers = 0)
    {
        m_host.m_left = true;
        bool handled = false;
        core->MainViewMouseDown(CVxAppCore::buttonLeft, modifiers, Px(x), Py(y), 0, &handled);
    }
    void Move(double x, double y, unsigned modifiers = 0)
    {
        core->MainViewMouseMove(modifiers, Px(x), Py(y), 0);
    }
    void Release(double x, double y, unsigned modifiers = 0)
    {
        m_host.m_left = false;
        core->MainViewMouseUp(CVxAppCore::buttonLeft, modifiers, Px(x), Py(y), 0);
    }
    void Drag(double x1, double y1, double x2, double y2)
    {
        Press(x1, y1);
        Move((x1 + x2) / 2, (y1 + y2) / 2);
        Move(x2, y2);
        Release(x2, y2);
    }
    void DrawWall(double x1, double y1, double x2, double y2)
    {
        core->DoMainToolbarButtonAction(VX_TB_NEW_WALL);
        Drag(x1, y1, x2, y2);
    }
    // The corner of the default room nearest to the sheet's origin.
    CVxDPoint TopLeft()
    {
        CVxDPoint best(1e9, 1e9);
        for (const CVxPlanVertex* v : core->GetFloorPlan().vertices)
            if (v->x + v->y < best.x + best.y)
                best = v->Point();
        return best;
    }
    int WallsWithEndAt(const CVxDPoint& p)
    {
        int count = 0;
        for (const CVxWall& wall : Floor()->m_walls.walls)
            count += (wall.start == p) + (wall.end == p);
        return count;
    }

    CVxEditorTestHost m_host;
    IVxAppHelperCallback* m_previous = nullptr;
    CVxAppCore* core = nullptr;
};

} // namespace

TEST_F(WallEditor, FourWallsDrawnByThePointerMakeOneRoomAndAcceptIsOneUndoStep)
{
    Floor()->m_walls.RemoveAll();
    core->UpdateFloorPlan();
    core->GetUndoManager().Reinitialize(&core->GetProject());
    ASSERT_EQ(Rooms(), 0);
    Open();
    EXPECT_FALSE(core->CanUndo());
    DrawWall(100, 100, 400, 100);
    DrawWall(400, 100, 400, 300);
    DrawWall(400, 300, 100, 300);
    DrawWall(100, 300, 100, 100);
    EXPECT_EQ(Walls(), 4);
    EXPECT_EQ(Rooms(), 1);
    EXPECT_TRUE(core->CanUndo());
    // Ctrl+Enter keeps the result.
    EXPECT_TRUE(core->DoMainToolbarButtonAction(VX_TB_ACCEPT_CLOSE));
    EXPECT_EQ(core->GetActiveEditor(), nullptr);
    EXPECT_EQ(Rooms(), 1);
    EXPECT_TRUE(core->GetProject().IsModified());
    // The whole run is one step of the document.
    ASSERT_TRUE(core->CanUndo());
    core->MakeUndo();
    EXPECT_EQ(Walls(), 0);
    EXPECT_EQ(Rooms(), 0);
    EXPECT_FALSE(core->CanUndo());
}

TEST_F(WallEditor, WallEndingOnAWallSplitsItAndRemovingTheStemHealsTheTJoint)
{
    CVxWallEditor* editor = Open();
    ASSERT_EQ(Rooms(), 1);
    const int before = Walls();
    const CVxDPoint corner = TopLeft();
    CVxDRect dims;
    Floor()->m_walls.GetRoomDims(dims);
    const double midX = (dims.left + dims.right) / 2;
    // From the top wall's line to the bottom wall's: a T at each end.
    DrawWall(midX, dims.top, midX, dims.bottom);
    EXPECT_EQ(Rooms(), 2);
    EXPECT_EQ(Walls(), before + 3);
    EXPECT_EQ(WallsWithEndAt(CVxDPoint(midX, dims.top)), 3);
    (void)corner;

    // Select the stem and remove it: the crossing walls are one again.
    const int stem = [&] {
        for (int i = 0; i < Walls(); ++i) {
            const CVxWall& w = Floor()->m_walls.walls[static_cast<size_t>(i)];
            if (std::fabs(w.start.x - midX) < 1e-6 && std::fabs(w.end.x - midX) < 1e-6)
                return i;
        }
        return -1;
    }();
    ASSERT_GE(stem, 0);
    editor->SetTouchSelection(CVxWallEditor::selWall, stem, 0);
    EXPECT_TRUE(core->DoMainToolbarButtonAction(VX_TB_CTX_REMOVE));
    EXPECT_EQ(Walls(), before);
    EXPECT_EQ(Rooms(), 1);
}

TEST_F(WallEditor, SplitWallByAControlPointHealsOnRemovalAndOnAccept)
{
    CVxWallEditor* editor = Open();
    const int before = Walls();
    editor->SetTouchSelection(CVxWallEditor::selWall, 0, 0);
    EXPECT_TRUE(core->DoMainToolbarButtonAction(VX_TB_CTX_ADD_POINT));
    EXPECT_EQ(Walls(), before + 1);
    ASSERT_EQ(editor->GetTouchSelType(), CVxWallEditor::selVertex);
    // A vertex of two walls in line goes, and leaves one straight wall.
    EXPECT_TRUE(core->DoMainToolbarButtonAction(VX_TB_CTX_REMOVE));
    EXPECT_EQ(Walls(), before);

    editor->SetTouchSelection(CVxWallEditor::selWall, 0, 0);
    core->DoMainToolbarButtonAction(VX_TB_CTX_ADD_POINT);
    EXPECT_EQ(Walls(), before + 1);
    core->DoMainToolbarButtonAction(VX_TB_ACCEPT_CLOSE);
    EXPECT_EQ(Walls(), before);
    EXPECT_EQ(Rooms(), 1);
}

TEST_F(WallEditor, DraggedCornerTakesItsWallsAndTheRoomAlong)
{
    // The room's name is kept by its saved edge, which starts at the very
    // corner that is dragged.
    core->GetFloorPlan().regions.front().name = L"Hall";
    Floor()->m_planDef = core->GetFloorPlan().Save();
    Open();
    const CVxDPoint corner = TopLeft();
    const double areaBefore = core->GetFloorPlan().GetArea();
    Drag(corner.x, corner.y, corner.x - 40, corner.y);
    const CVxDPoint moved(corner.x - 40, corner.y);
    EXPECT_EQ(WallsWithEndAt(moved), 2);
    EXPECT_EQ(WallsWithEndAt(corner), 0);
    ASSERT_EQ(Rooms(), 1);
    EXPECT_GT(core->GetFloorPlan().GetArea(), areaBefore);
    EXPECT_EQ(core->GetFloorPlan().regions.front().name, L"Hall");
    // One step, undone inside the editor.
    ASSERT_TRUE(core->CanUndo());
    core->MakeUndo();
    EXPECT_EQ(WallsWithEndAt(corner), 2);
    EXPECT_FALSE(core->CanUndo());
    EXPECT_TRUE(core->CanRedo());

    // Esc in the middle of a drag puts the corner back and keeps the editor.
    Press(corner.x, corner.y);
    Move(corner.x - 20, corner.y - 20);
    EXPECT_EQ(WallsWithEndAt(corner), 0);
    EXPECT_TRUE(core->MainViewKeyDown(VX_KEY_ESC, 0));
    m_host.m_left = false;
    EXPECT_EQ(WallsWithEndAt(corner), 2);
    EXPECT_NE(core->GetActiveEditor(), nullptr);
    EXPECT_FALSE(core->CanUndo());
}

TEST_F(WallEditor, DraggedWallMovesItsWholeRunAcrossTJoints)
{
    Open();
    CVxDRect dims;
    Floor()->m_walls.GetRoomDims(dims);
    const double midX = (dims.left + dims.right) / 2;
    // A stem from the middle of the top wall splits it into two edges.
    DrawWall(midX, dims.top, midX, (dims.top + dims.bottom) / 2);
    core->DoMainToolbarButtonAction(VX_TB_SELECTION_TOOL);
    // Dragging the left half of the top wall takes the right half along.
    const double x = (dims.left + midX) / 2;
    Drag(x, dims.top, x, dims.top - 30);
    int atNewTop = 0;
    for (const CVxWall& wall : Floor()->m_walls.walls)
        if (std::fabs(wall.start.y - (dims.top - 30)) < 1e-6 &&
            std::fabs(wall.end.y - (dims.top - 30)) < 1e-6)
            ++atNewTop;
    EXPECT_EQ(atNewTop, 2);
}

TEST_F(WallEditor, ObjectsComeBackOnAcceptAndEverythingOnDiscard)
{
    // A window on the left wall, which the edit doesn't touch.
    CVxFloor* floor = Floor();
    const CVxWall left = [&] {
        for (const CVxWall& w : floor->m_walls.walls)
            if (std::fabs(w.start.x - w.end.x) < 1e-9)
                return w;
        return CVxWall();
    }();
    int index = -1;
    CVxPart* window = floor->GetNewObject(&index, true);
    window->type = ptRectangle;
    window->width = 80;
    window->height = 10;
    window->x = left.start.x;
    window->y = (left.start.y + left.end.y) / 2;
    window->snapToWall = true;
    window->SnapToWall(&floor->m_walls, window->x, window->y, false, false, false);
    const double x = window->x;
    const double y = window->y;
    const int walls = Walls();

    Open();
    EXPECT_EQ(Floor()->CountUsedObjects(), 0);
    const CVxDPoint corner = TopLeft();
    CVxDRect dims;
    Floor()->m_walls.GetRoomDims(dims);
    // The right wall moves out.
    Drag(dims.right, (dims.top + dims.bottom) / 2, dims.right + 50, (dims.top + dims.bottom) / 2);
    core->DoMainToolbarButtonAction(VX_TB_ACCEPT_CLOSE);
    ASSERT_EQ(Floor()->CountUsedObjects(), 1);
    const CVxPart* back = Floor()->SafeGetPart(index);
    ASSERT_TRUE(back && back->inUse);
    EXPECT_NEAR(back->x, x, 1e-6);
    EXPECT_NEAR(back->y, y, 1e-6);

    // Discard: the walls, the objects and the history as they were.
    const CVxDRect acceptedDims = [&] {
        CVxDRect r;
        Floor()->m_walls.GetRoomDims(r);
        return r;
    }();
    Open();
    DrawWall(corner.x, corner.y, corner.x - 100, corner.y - 100);
    EXPECT_EQ(Walls(), walls + 1);
    m_host.m_questions = 0;
    core->DoMainToolbarButtonAction(VX_TB_DISCARD_CLOSE);
    EXPECT_EQ(m_host.m_questions, 1);
    EXPECT_EQ(core->GetActiveEditor(), nullptr);
    EXPECT_EQ(Walls(), walls);
    EXPECT_EQ(Floor()->CountUsedObjects(), 1);
    CVxDRect now;
    Floor()->m_walls.GetRoomDims(now);
    EXPECT_DOUBLE_EQ(now.right, acceptedDims.right);
}

TEST_F(WallEditor, AcceptWithoutChangesLeavesTheHistoryAndTypedWallsTakeTheirLength)
{
    core->GetUndoManager().Reinitialize(&core->GetProject());
    Open();
    EXPECT_FALSE(core->CanUndo());
    core->DoMainToolbarButtonAction(VX_TB_ACCEPT_CLOSE);
    EXPECT_FALSE(core->CanUndo());

    CVxWallEditor* editor = Open();
    const CVxDPoint corner = TopLeft();
    core->DoMainToolbarButtonAction(VX_TB_NEW_WALL);
    Press(corner.x, corner.y);
    Release(corner.x, corner.y);
    Move(corner.x - 30, corner.y);
    ASSERT_TRUE(editor->IsDrawingWall());
    // 1.5 m to the left of the corner: the direction drawn so far holds.
    EXPECT_TRUE(core->ApplyTypedWallLength(L"1.5m", CVxStringW()));
    const CVxDPoint end(corner.x - 150, corner.y);
    EXPECT_EQ(WallsWithEndAt(end), 1);
    // Going on from there straight up (90 degrees, against the clock).
    EXPECT_TRUE(core->ApplyTypedWallLength(L"100", L"90"));
    EXPECT_EQ(WallsWithEndAt(CVxDPoint(end.x, end.y - 100)), 1);
    EXPECT_FALSE(core->ApplyTypedWallLength(L"three", CVxStringW()));
}

TEST_F(WallEditor, DanglingEndLetGoOnAWallJoinsItAndSplitsTheRoom)
{
    Open();
    CVxDRect dims;
    Floor()->m_walls.GetRoomDims(dims);
    const double midX = (dims.left + dims.right) / 2;
    const double midY = (dims.top + dims.bottom) / 2;
    // From the top wall down into the room, ending in the open.
    DrawWall(midX, dims.top, midX, midY);
    core->DoMainToolbarButtonAction(VX_TB_SELECTION_TOOL);
    ASSERT_EQ(Rooms(), 1);
    Drag(midX, midY, midX, dims.bottom);
    EXPECT_EQ(WallsWithEndAt(CVxDPoint(midX, dims.bottom)), 3);
    EXPECT_EQ(Rooms(), 2);
}

TEST_F(WallEditor, OpeningsDrawnResizedByTheirHandlesAndPolygonsByClicks)
{
    CVxWallEditor* editor = Open();
    core->DoMainToolbarButtonAction(VX_TB_NEW_FLOOR_OPENING);
    Drag(100, 100, 200, 150);
    ASSERT_EQ(Floor()->m_walls.GetHoleCount(), 1);
    const CVxHoleInFloor& hole = Floor()->m_walls.holes.front();
    EXPECT_DOUBLE_EQ(hole.width, 100);
    EXPECT_DOUBLE_EQ(hole.height, 50);
    EXPECT_EQ(editor->GetTouchSelType(), CVxWallEditor::selHole);
    // The right handle: the left side stays.
    Drag(200, 125, 250, 125);
    EXPECT_DOUBLE_EQ(Floor()->m_walls.holes.front().x, 100);
    EXPECT_NEAR(Floor()->m_walls.holes.front().width, 150, 1e-6);

    // A polygon by clicks, ended by a double click; a right click takes the
    // last point back.
    core->DoMainToolbarButtonAction(VX_TB_NEW_POLYGON_OPENING);
    Press(300, 100);
    Release(300, 100);
    for (const CVxDPoint& p : {CVxDPoint(400, 100), CVxDPoint(380, 180), CVxDPoint(350, 250)}) {
        Move(p.x, p.y);
        Press(p.x, p.y);
        Release(p.x, p.y);
    }
    bool handled = false;
    core->MainViewMouseDown(CVxAppCore::buttonRight, 0, Px(350), Py(250), 0, &handled);
    // Ended on the last point that stayed.
    Move(380, 180);
    core->MainViewDblClick(Px(380), Py(180));
    ASSERT_EQ(Floor()->m_walls.GetHoleCount(), 2);
    EXPECT_EQ(Floor()->m_walls.holes.back().type, CVxHoleInFloor::TYPE_POLYGON);
    EXPECT_EQ(Floor()->m_walls.holes.back().polygon.GetVertexCount(), 3);
}

TEST_F(WallEditor, ArrowKeysMoveTheSelectedWallInOneStepAndARubberBandSelectsCorners)
{
    CVxWallEditor* editor = Open();
    CVxDRect dims;
    Floor()->m_walls.GetRoomDims(dims);
    const double midY = (dims.top + dims.bottom) / 2;
    // A click on the right wall selects it.
    Press(dims.right, midY);
    Release(dims.right, midY);
    ASSERT_EQ(editor->GetTouchSelType(), CVxWallEditor::selWall);
    const double step = 1.0 / core->GetRoundedZoom();
    EXPECT_TRUE(core->MainViewKeyDown(VX_KEY_RIGHT, 0));
    EXPECT_TRUE(core->MainViewKeyDown(VX_KEY_RIGHT, 0));
    CVxDRect moved;
    Floor()->m_walls.GetRoomDims(moved);
    EXPECT_NEAR(moved.right, dims.right + 2 * step, 1e-6);
    // Both presses are one step.
    core->MakeUndo();
    Floor()->m_walls.GetRoomDims(moved);
    EXPECT_NEAR(moved.right, dims.right, 1e-6);
    EXPECT_FALSE(core->CanUndo());

    // A band round the top two corners selects their vertices.
    Press(dims.left - 20, dims.top - 20);
    Move(dims.right + 20, dims.top + 20);
    Release(dims.right + 20, dims.top + 20);
    EXPECT_EQ(editor->GetTouchSelType(), CVxWallEditor::selVertex);
    EXPECT_EQ(editor->GetTouchSelItems().size(), 2u);
}

TEST_F(WallEditor, SaveWhileEditingWritesTheWholeProjectAndADiscardLeavesItChanged)
{
    CVxFloor* floor = Floor();
    int index = -1;
    CVxPart* box = floor->GetNewObject(&index, true);
    box->type = ptRectangle;
    box->x = 100;
    box->y = 100;
    box->width = 50;
    box->height = 50;
    floor->m_objectCount = floor->CountUsedObjects();
    const int walls = Walls();
    Open();
    const CVxDPoint corner = TopLeft();
    // Off the corner at a slant: a wall that no other continues in line.
    DrawWall(corner.x, corner.y, corner.x - 100, corner.y - 100);
    const CVxStringW path = VxTestTempFolder() + L"while-editing.pvp";
    ASSERT_TRUE(core->SaveMainProjectToFile(path));
    core->GetProject().m_modified = false;
    // The editor goes on with its floor of walls alone.
    EXPECT_EQ(Floor()->CountUsedObjects(), 0);
    CVxProject saved;
    ASSERT_EQ(CVxAppCore::LoadProjectForUser(path, &saved, nullptr), CVxAppCore::VX_LOAD_OK);
    EXPECT_EQ(saved.GetFloor()->CountUsedObjects(), 1);
    EXPECT_EQ(saved.GetFloor()->m_walls.GetWallCount(), walls + 1);

    core->DoMainToolbarButtonAction(VX_TB_DISCARD_CLOSE);
    EXPECT_EQ(Walls(), walls);
    // The file holds what was thrown away.
    EXPECT_TRUE(core->GetProject().IsModified());
}

TEST_F(WallEditor, ScanIsScaledByALineLaidOnAKnownLengthAndGoesWithTheFloor)
{
    const CVxStringW file = VxTestTempFolder() + L"scan.png";
    QImage picture(400, 200, QImage::Format_RGB32);
    picture.fill(Qt::white);
    ASSERT_TRUE(picture.save(file.ToQString()));
    CVxWallEditor* editor = Open();
    EXPECT_FALSE(editor->OnPopupBkgScanLoadImage1Click(VxTestTempFolder() + L"no-such-picture.png"));
    EXPECT_EQ(m_host.m_questions, 1);
    ASSERT_TRUE(editor->OnPopupBkgScanLoadImage1Click(file));
    const CVxPart& scan = core->GetBkgScanPart();
    ASSERT_NE(scan.GetPicture(), nullptr);
    // Fitted to the sheet in its own proportions, and shown.
    EXPECT_NEAR(scan.width / scan.height, 2.0, 1e-9);
    EXPECT_TRUE(core->GetProject().m_bkgScanVisible);

    ASSERT_TRUE(core->DoMainToolbarButtonAction(VX_TB_SCAN_SIZE_POSITION));
    ASSERT_EQ(editor->GetOperation(), CVxWallEditor::opCalibrate);
    // The line's end dragged onto a point 100 units from its start, which
    // the drawing says is 250 long.
    const CVxDPoint from = editor->GetCalibrationFrom();
    const CVxDPoint to = editor->GetCalibrationTo();
    Drag(to.x, to.y, from.x + 100, from.y);
    EXPECT_NEAR(editor->GetCalibrationTo().x, from.x + 100, 1e-6);
    const double left = scan.x;
    const double width = scan.width;
    for (double wrong : {0.0, -5.0, std::nan(""), 1e12})
        EXPECT_FALSE(editor->SetCalibrationSize(wrong));
    ASSERT_TRUE(editor->SetCalibrationSize(250));
    EXPECT_NEAR(scan.width, width * 2.5, 1e-6);
    EXPECT_NEAR(scan.x, from.x + (left - from.x) * 2.5, 1e-6);
    EXPECT_NEAR(editor->GetCalibrationTo().x - from.x, 250, 1e-6);

    // Accepted, the floor keeps the picture where it was put.
    editor->CloseCalibrationDialog();
    EXPECT_EQ(editor->GetOperation(), CVxWallEditor::opNone);
    core->DoMainToolbarButtonAction(VX_TB_ACCEPT_CLOSE);
    EXPECT_TRUE(Floor()->m_bkgScanFile == file);
    EXPECT_NEAR(Floor()->m_bkgScanRect.Width(), width * 2.5, 1e-6);
    // A discarded removal brings it back.
    Open();
    core->DoMainToolbarButtonAction(VX_TB_SCAN_REMOVE);
    EXPECT_EQ(core->GetBkgScanPart().GetPicture(), nullptr);
    core->DoMainToolbarButtonAction(VX_TB_DISCARD_CLOSE);
    EXPECT_NE(core->GetBkgScanPart().GetPicture(), nullptr);
    // The saved project shows it again when it is opened.
    const CVxStringW path = VxTestTempFolder() + L"with-scan.pvp";
    ASSERT_TRUE(core->SaveMainProjectToFile(path));
    core->ResetBkgFloorScanPart();
    core->GetProject().m_modified = false;
    ASSERT_TRUE(core->OpenFile(path, false));
    EXPECT_NE(core->GetBkgScanPart().GetPicture(), nullptr);
    EXPECT_NEAR(core->GetBkgScanPart().width, width * 2.5, 1e-6);
}

TEST_F(WallEditor, NumbersMoveACornerWithItsWallsAndSizeWallsInOneStep)
{
    Open();
    const double height = Floor()->m_walls.walls[1].startHeight;
    ASSERT_TRUE(core->DoMainToolbarButtonAction(VX_TB_NUMERICAL_EDITOR));
    const CVxDPoint moved = m_host.m_movedCorner + CVxDPoint(-50, -30);
    // Both walls of the corner end at its new place, and the room stays.
    EXPECT_EQ(WallsWithEndAt(moved), 2);
    EXPECT_EQ(WallsWithEndAt(m_host.m_movedCorner), 0);
    EXPECT_EQ(Rooms(), 1);
    EXPECT_EQ(Floor()->m_walls.walls[0].thickness, 25);
    EXPECT_EQ(Floor()->m_walls.walls[1].startHeight, height);
    core->DoMainToolbarButtonAction(VX_TB_UNDO);
    EXPECT_EQ(WallsWithEndAt(m_host.m_movedCorner), 2);
}

TEST(WallFaces, EachRoomSideOfAWallCarriesItsRoomsAppearance)
{
    CVxFloor floor;
    floor.m_walls.SetAsBasicRect(400, 300, 10, 250);
    // A wall across the middle: two rooms.
    floor.m_walls.GetNewWall()->Set(200, 0, 200, 300, 1, 10, 250, 250, true, false);
    CVxFloorPlan plan;
    plan.CreatePlan(floor, -1);
    CVxWallEditor::SplitWallsToEdges(floor, plan, true);
    plan.CreatePlan(floor, -1);
    ASSERT_EQ(plan.GetRegionCount(), 2);
    plan.regions[0].wallAppearance.main.color = 0x0000ff;
    plan.regions[1].wallAppearance.main.color = 0x00ff00;
    CVxWallEditor::ChangeRegionAppearances(floor, plan.regions[0], -1);
    CVxWallEditor::ChangeRegionAppearances(floor, plan.regions[1], -1);
    for (int r = 0; r < 2; ++r) {
        const CVxFloorRegion& room = plan.regions[static_cast<size_t>(r)];
        for (int k = 0; k < room.GetVertexCount(); ++k) {
            const CVxAppearance* face =
                floor.m_walls.SafeGetAppear(CVxWallEditor::GetRegionWallAppearance(floor.m_walls, room, k));
            ASSERT_NE(face, nullptr);
            EXPECT_EQ(face->main.color, room.wallAppearance.main.color);
        }
    }
    // The dividing wall has one colour on each side.
    int divider = -1;
    for (int i = 0; i < floor.m_walls.GetWallCount(); ++i)
        if (std::fabs(floor.m_walls.walls[static_cast<size_t>(i)].start.x - 200) < 1e-9 &&
            std::fabs(floor.m_walls.walls[static_cast<size_t>(i)].end.x - 200) < 1e-9)
            divider = i;
    ASSERT_GE(divider, 0);
    const CVxWall& wall = floor.m_walls.walls[static_cast<size_t>(divider)];
    EXPECT_NE(wall.appearanceA, wall.appearanceB);
}

TEST(TypedLength, UnitsFeetAndInchesAndRefusals)
{
    double value = 0;
    const int cm = 1;
    const int inches = 2;
    ASSERT_TRUE(VX_ParseTypedLength(L"3.5m", cm, value));
    EXPECT_NEAR(value, 350, 1e-9);
    ASSERT_TRUE(VX_ParseTypedLength(L"3,5 m", cm, value));
    EXPECT_NEAR(value, 350, 1e-9);
    ASSERT_TRUE(VX_ParseTypedLength(L"12' 6\"", cm, value));
    EXPECT_NEAR(value, 381, 1e-9);
    ASSERT_TRUE(VX_ParseTypedLength(L"12' 6\"", inches, value));
    EXPECT_NEAR(value, 150, 1e-9);
    ASSERT_TRUE(VX_ParseTypedLength(L"6 1/2\"", inches, value));
    EXPECT_NEAR(value, 6.5, 1e-9);
    ASSERT_TRUE(VX_ParseTypedLength(L"25mm", cm, value));
    EXPECT_NEAR(value, 2.5, 1e-9);
    ASSERT_TRUE(VX_ParseTypedLength(L"350", cm, value));
    EXPECT_NEAR(value, 350, 1e-9);
    EXPECT_FALSE(VX_ParseTypedLength(L"", cm, value));
    EXPECT_FALSE(VX_ParseTypedLength(L"-3", cm, value));
    EXPECT_FALSE(VX_ParseTypedLength(L"0", cm, value));
    EXPECT_FALSE(VX_ParseTypedLength(L"3..5", cm, value));
    EXPECT_FALSE(VX_ParseTypedLength(L"3 parsecs", cm, value));
    EXPECT_FALSE(VX_ParseTypedLength(L"1/0\"", cm, value));
}
