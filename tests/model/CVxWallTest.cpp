// One wall on its own: canonical direction, the corners of each alignment,
// curves, distances, transforms, the text form and the plan drawing.

#include "CVxWall.h"
#include "CVxQtDC.h"
#include "VxModelTestUtil.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <limits>

namespace {

CVxWall MakeWall(double x1, double y1, double x2, double y2, int align, double thickness)
{
    CVxWall wall;
    wall.Set(x1, y1, x2, y2, align, thickness, 250, 250, true, false);
    return wall;
}

TEST(CVxWall, RightToLeftWallIsStoredReversedInTheSamePlace)
{
    CVxWall wall;
    wall.appearanceA = 1;
    wall.appearanceB = 2;
    EXPECT_TRUE(wall.Set(100, 0, 0, 0, CVxWall::ALIGN_SIDE_A, 10, 200, 300, true, false));
    EXPECT_POINT_NEAR(wall.start, CVxDPoint(0, 0));
    EXPECT_POINT_NEAR(wall.end, CVxDPoint(100, 0));
    EXPECT_EQ(wall.align, CVxWall::ALIGN_SIDE_B);
    EXPECT_EQ(wall.startHeight, 300);
    EXPECT_EQ(wall.appearanceA, 2);
    // Entered leftwards the thickness lay on +y; it still does.
    EXPECT_POINT_NEAR(wall.cornerA0, CVxDPoint(0, 10));
    EXPECT_POINT_NEAR(wall.cornerB1, CVxDPoint(100, 0));
    EXPECT_NEAR(wall.angle, 0, EPS);

    EXPECT_TRUE(wall.Set(0, 50, 0, 0, CVxWall::ALIGN_CENTER, 10, 1, 1, true, false));
    EXPECT_POINT_NEAR(wall.start, CVxDPoint(0, 0));
    EXPECT_NEAR(wall.angle, 90, 1e-9);
    EXPECT_FALSE(wall.Set(0, 0, 10, -10, 1, 0, 1, 1, true, false));
    EXPECT_NEAR(wall.angle, -45, 1e-9);
}

TEST(CVxWall, CornersOfTheFourAlignments)
{
    struct SCase
    {
        int align;
        CVxDPoint a0, b1;
    } cases[] = {{CVxWall::ALIGN_SIDE_A, {0, 0}, {100, -10}},
                 {CVxWall::ALIGN_CENTER, {0, 5}, {100, -5}},
                 {CVxWall::ALIGN_SIDE_B, {0, 10}, {100, 0}},
                 {CVxWall::ALIGN_CUSTOM, {0, 3}, {100, -7}}};
    for (const SCase& c : cases) {
        SCOPED_TRACE(c.align);
        CVxWall wall;
        wall.customOffset = 3;
        wall.Set(0, 0, 100, 0, c.align, 10, 250, 250, true, false);
        EXPECT_POINT_NEAR(wall.cornerA0, c.a0);
        EXPECT_POINT_NEAR(wall.cornerB1, c.b1);
        EXPECT_POINT_NEAR(wall.outline[CVxWall::OUT_A_START], c.a0);
    }
    CVxWall invisible;
    invisible.Set(0, 0, 100, 0, CVxWall::ALIGN_CENTER, 10, 250, 250, false, false);
    EXPECT_POINT_NEAR(invisible.cornerA0, CVxDPoint(0, 0));
    EXPECT_POINT_NEAR(invisible.cornerB1, CVxDPoint(100, 0));
}

TEST(CVxWall, ZeroLengthWallHasADefinedDirection)
{
    const CVxWall wall = MakeWall(5, 5, 5, 5, CVxWall::ALIGN_CENTER, 10);
    EXPECT_EQ(wall.angle, 0);
    EXPECT_EQ(wall.length, 1);
    EXPECT_EQ(wall.cosA, 1);
    EXPECT_POINT_NEAR(wall.cornerA0, CVxDPoint(5, 10));
}

TEST(CVxWall, CurvedWallIsSixteenJoinedChords)
{
    CVxWall wall;
    wall.Set(0, 0, 100, 0, CVxWall::ALIGN_CENTER, 10, 200, 300, true, true);
    const CVxDPoint c0(20, -60), c1(80, -60);
    wall.SetBezierControlPoints(&c0, &c1);
    CVxDPoint back0, back1;
    ASSERT_TRUE(wall.GetBezierControlPoints(back0, back1));
    EXPECT_POINT_NEAR(back0, c0);
    EXPECT_POINT_NEAR(back1, c1);

    ASSERT_EQ(wall.subWalls.size(), 16u);
    EXPECT_POINT_NEAR(wall.subWalls.front().start, wall.start);
    EXPECT_POINT_NEAR(wall.subWalls.back().end, wall.end);
    // The apex of the symmetric arch: 3/4 of the control height.
    EXPECT_POINT_NEAR(wall.GetPointOnLine(0.5), CVxDPoint(50, -45));
    EXPECT_GT(wall.GetBezierLength(), 100);
    // Neighbouring chords meet in a mitre, so no seam shows along the curve.
    const CVxWall& sub = wall.subWalls[3];
    EXPECT_FALSE(std::isnan(sub.interParam[CVxWall::CORNER_A_END]));
    EXPECT_FALSE(std::isnan(sub.interParam[CVxWall::CORNER_B_START]));
    // Both heights of a chord are those at its far sample.
    EXPECT_NEAR(wall.subWalls[0].startHeight, 200 + 100.0 / 16, 1e-9);
    EXPECT_NEAR(wall.subWalls[0].endHeight, 200 + 100.0 / 16, 1e-9);

    double t = -1;
    const double d = wall.GetDistFromWall(50, -45 - 5 - 2, &t);
    // The faces of the chords lie a little inside the true offset curve.
    EXPECT_GE(d, 20000);
    EXPECT_LT(d, 21000);
    EXPECT_NEAR(t, 0.5, 0.01);
}

TEST(CVxWall, DistancesAreToTheNearerFace)
{
    const CVxWall wall = MakeWall(0, 0, 100, 0, CVxWall::ALIGN_CENTER, 10);
    double t = -1;
    EXPECT_EQ(wall.GetDistFromWall(50, 20, &t), 150000);
    EXPECT_NEAR(t, 0.5, EPS);
    EXPECT_EQ(wall.GetDistFromWall(25, -8, &t), 30000);
    EXPECT_NEAR(t, 0.25, EPS);
    // Beyond the end: the distance to the face's end, t clamped.
    EXPECT_EQ(wall.GetDistFromWall(130, 5, &t), 300000);
    EXPECT_EQ(t, 1);
    EXPECT_NEAR(wall.GetDistFromLine(nullptr, nullptr, -3, 4, &t), 5, EPS);
    EXPECT_EQ(t, 0);
}

TEST(CVxWall, HeightsAndBounds)
{
    CVxWall wall;
    wall.Set(0, 0, 100, 0, CVxWall::ALIGN_CENTER, 10, 100, 200, true, false);
    EXPECT_EQ(wall.GetZHeightAtPos(0, 0), 100);
    EXPECT_EQ(wall.GetZHeightAtPos(100, 0), 200);
    EXPECT_NEAR(wall.GetZHeightAtPos(25, 0), 125, EPS);
    EXPECT_EQ(wall.GetMaxZHeight(), 200);
    CVxDRect bounds;
    wall.Set(10, 50, 0, 0, CVxWall::ALIGN_CENTER, 10, 1, 1, true, false);
    wall.GetBoundingRect(bounds);
    EXPECT_EQ(bounds, CVxDRect(0, 0, 10, 50));
}

TEST(CVxWall, TransformsKeepTheWallCanonical)
{
    CVxWall wall;
    wall.appearanceA = 0;
    wall.appearanceB = 1;
    wall.Set(0, 0, 100, 0, CVxWall::ALIGN_SIDE_A, 10, 250, 250, true, false);
    wall.Move(1.004, 2.006);
    EXPECT_POINT_NEAR(wall.start, CVxDPoint(1, 2.01));

    wall.Set(0, 0, 100, 0, CVxWall::ALIGN_SIDE_A, 10, 250, 250, true, false);
    wall.Scale(2, 3, 0.5);
    EXPECT_POINT_NEAR(wall.end, CVxDPoint(200, 0));
    EXPECT_EQ(wall.thickness, 20);
    EXPECT_EQ(wall.startHeight, 125);

    // Mirrored across the y axis the wall runs leftwards and is reversed
    // again: it ends up with its old alignment and the faces in the mirrored
    // places.
    wall.Set(0, 0, 100, 0, CVxWall::ALIGN_SIDE_A, 10, 250, 250, true, false);
    wall.Mirror(false);
    EXPECT_POINT_NEAR(wall.start, CVxDPoint(-100, 0));
    EXPECT_EQ(wall.align, CVxWall::ALIGN_SIDE_A);
    EXPECT_POINT_NEAR(wall.cornerB0, CVxDPoint(-100, -10));

    wall.Rotate(90);
    EXPECT_POINT_NEAR(wall.start, CVxDPoint(0, -100));
    EXPECT_POINT_NEAR(wall.end, CVxDPoint(0, 0));
}

TEST(CVxWall, TextRoundTripAndOldOrDamagedText)
{
    CVxWall wall;
    wall.customOffset = 2.5;
    wall.appearanceA = 3;
    wall.lineStyle = 2;
    wall.fillStyle = 4;
    wall.Set(1.5, -2, 300.25, 40, CVxWall::ALIGN_CUSTOM, 12, 250, 240, false, true);
    const CVxStringW text = wall.SaveToString();
    EXPECT_EQ(text, CVxStringW(L"1.5|-2|300.25|40|3|12|250|240|3|-1|2|4|0|1|0.3|0|0.3|180|2.5"));
    CVxWall back;
    EXPECT_TRUE(back.LoadFromString(text));
    EXPECT_EQ(back.SaveToString(), text);
    EXPECT_EQ(back.subWalls.size(), 16u);

    CVxWall old;
    old.visible = false;
    old.appearanceB = 7;
    EXPECT_TRUE(old.LoadFromString(L"0|0|100|0|1|10|250"));
    EXPECT_EQ(old.endHeight, 250);
    EXPECT_TRUE(old.visible);
    EXPECT_FALSE(old.curved);
    EXPECT_EQ(old.appearanceB, -1);

    CVxWall damaged;
    EXPECT_FALSE(damaged.LoadFromString(L"12|x"));
    EXPECT_FALSE(damaged.LoadFromString(L""));
    EXPECT_TRUE(damaged.LoadFromString(L"nan|1e300|-1e300|inf|9|nan|||||||||||||||||||"));
    EXPECT_EQ(damaged.subWalls.size(), 0u);
}

// A wall drawn through the Qt surface onto an image: the fill inside, the
// outline on the faces, and no seam where two equal walls meet in a line.
class CVxWallDrawTest : public ::testing::Test
{
protected:
    CVxWallDrawTest() : image(200, 100, QImage::Format_ARGB32) { image.fill(Qt::white); }

    void DrawWalls(const std::vector<CVxWall*>& walls)
    {
        QPainter painter(&image);
        CVxQtDC dc(&painter, false);
        dc.EnableSmoothing(false);
        dc.SelectPen(CVxDC::penSolid, 1, kFill);
        dc.SelectBrush(CVxDC::brushSolid, kFill);
        for (CVxWall* wall : walls)
            wall->Draw(&dc, kFill, kLine, 255, 0, 0, 1.0);
        dc.SelectOldBrush();
        dc.SelectOldPen();
    }
    QRgb At(int x, int y) const { return image.pixel(x, y) & 0xFFFFFF; }

    static constexpr unsigned kFill = 0x0000FF; // red as 0x00BBGGRR
    static constexpr unsigned kLine = 0x000000;
    static constexpr QRgb kRed = 0xFF0000;
    QImage image;
};

TEST_F(CVxWallDrawTest, FillOutlineAndSeams)
{
    CVxWall left = MakeWall(20, 50, 100, 50, CVxWall::ALIGN_CENTER, 20);
    CVxWall right = MakeWall(100, 50, 180, 50, CVxWall::ALIGN_CENTER, 20);
    DrawWalls({&left});
    EXPECT_EQ(At(60, 50), kRed);
    EXPECT_EQ(At(60, 40), 0u);
    EXPECT_EQ(At(60, 60), 0u);
    EXPECT_EQ(At(20, 50), 0u);
    EXPECT_EQ(At(60, 30), 0xFFFFFFu);
    EXPECT_EQ(At(10, 50), 0xFFFFFFu);

    // Joined in a line, the two walls read as one.
    image.fill(Qt::white);
    left.CalculateIntersection(right, false);
    left.FinishIntersections();
    right.FinishIntersections();
    DrawWalls({&left, &right});
    EXPECT_EQ(At(100, 45), kRed);
    EXPECT_EQ(At(100, 40), 0u);
    EXPECT_EQ(At(180, 50), 0u);
}

TEST_F(CVxWallDrawTest, HatchedAndInvisibleWalls)
{
    CVxWall hatched = MakeWall(20, 50, 180, 50, CVxWall::ALIGN_CENTER, 40);
    hatched.fillStyle = 3; // vertical hatch
    DrawWalls({&hatched});
    int red = 0, white = 0;
    for (int x = 40; x < 160; ++x) {
        red += At(x, 50) == kRed;
        white += At(x, 50) == 0xFFFFFF;
    }
    EXPECT_GT(red, 5);
    EXPECT_GT(white, 5);

    image.fill(Qt::white);
    CVxWall invisible;
    invisible.Set(20, 50, 180, 50, CVxWall::ALIGN_CENTER, 20, 250, 250, false, false);
    DrawWalls({&invisible});
    EXPECT_EQ(At(100, 50), 0u);
    EXPECT_EQ(At(100, 45), 0xFFFFFFu);
}

} // namespace
