// The drawing helpers: shapes in object quadrilaterals, curved outlines,
// wall openings, markers, colours and swatches.

#include "VxDrawTestUtil.h"

#include "CVxDPolygon.h"
#include "CVxDRect.h"
#include "VxGMDraw.h"
#include "VxGMPickers.h"
#include "VxTestEnv.h"

#include <cmath>

namespace {

// The corners of the axis-parallel rectangle turned by degrees (clockwise on
// the screen) about (cx, cy), as an object's quadrilateral.
void TurnedCorners(VxPOINT out[4], double left, double top, double right, double bottom, double degrees,
                   double cx, double cy)
{
    const double a = degrees * M_PI / 180.0;
    const double xs[4] = {left, right, right, left};
    const double ys[4] = {top, top, bottom, bottom};
    for (int i = 0; i < 4; ++i) {
        const double dx = xs[i] - cx;
        const double dy = ys[i] - cy;
        out[i].x = static_cast<int32_t>(std::lround(cx + dx * std::cos(a) - dy * std::sin(a)));
        out[i].y = static_cast<int32_t>(std::lround(cy + dx * std::sin(a) + dy * std::cos(a)));
    }
}

void DrawFilledEllipse(CVxTestCanvas& canvas, const VxPOINT* corners)
{
    canvas.dc().SelectPen(CVxDC::penSolid, 1, 0);
    canvas.dc().SelectBrush(CVxDC::brushSolid, 0);
    GMDrawEllipse(canvas.dc(), corners);
    canvas.Finish();
}

} // namespace

TEST(VxGMDrawShapes, EllipseInATurnedQuadrilateralIsTheTurnedEllipse)
{
    const double cx = 80.5;
    const double cy = 80.5;
    for (double degrees : {30.0, 90.0, 145.0}) {
        VxPOINT upright[4];
        VxPOINT turned[4];
        TurnedCorners(upright, 40, 55, 120, 105, 0, cx, cy);
        TurnedCorners(turned, 40, 55, 120, 105, degrees, cx, cy);
        CVxTestCanvas a(161, 161);
        CVxTestCanvas b(161, 161);
        DrawFilledEllipse(a, upright);
        DrawFilledEllipse(b, turned);
        // Sample the upright drawing at each pixel of the turned one turned
        // back; only pixels whose whole neighbourhood agrees in the upright
        // drawing count, so that edge pixels and rounding do not.
        const double t = -degrees * M_PI / 180.0;
        int compared = 0;
        int wrong = 0;
        int inkInB = 0;
        for (int y = 0; y < 161; ++y) {
            for (int x = 0; x < 161; ++x) {
                const double dx = x + 0.5 - cx;
                const double dy = y + 0.5 - cy;
                const int sx = static_cast<int>(std::floor(cx + dx * std::cos(t) - dy * std::sin(t)));
                const int sy = static_cast<int>(std::floor(cy + dx * std::sin(t) + dy * std::cos(t)));
                inkInB += b.IsInk(x, y) ? 1 : 0;
                if (sx < 2 || sy < 2 || sx > 158 || sy > 158)
                    continue;
                const bool inside = a.IsInk(sx, sy);
                bool uniform = true;
                for (int ny = -2; ny <= 2 && uniform; ++ny) {
                    for (int nx = -2; nx <= 2 && uniform; ++nx)
                        uniform = a.IsInk(sx + nx, sy + ny) == inside;
                }
                if (!uniform)
                    continue;
                ++compared;
                wrong += b.IsInk(x, y) != inside ? 1 : 0;
            }
        }
        EXPECT_GT(compared, 20000) << degrees;
        EXPECT_EQ(wrong, 0) << degrees;
        // Area of an ellipse of half axes 40 and 25.
        EXPECT_NEAR(inkInB, M_PI * 40 * 25, 250) << degrees;
    }
}

TEST(VxGMDrawShapes, RoundRectCutsTheCornersOnly)
{
    for (bool large : {false, true}) {
        CVxTestCanvas canvas(200, 200);
        canvas.dc().SelectPen(CVxDC::penSolid, 1, 0);
        canvas.dc().SelectBrush(CVxDC::brushSolid, 0);
        const VxPOINT corners[4] = {{10, 10}, {190, 10}, {190, 190}, {10, 190}};
        GMDrawRoundRect(canvas.dc(), corners, large);
        canvas.Finish();
        EXPECT_TRUE(canvas.IsWhite(12, 12)) << large;
        EXPECT_TRUE(canvas.IsWhite(188, 188)) << large;
        EXPECT_TRUE(canvas.IsWhite(188, 12)) << large;
        EXPECT_TRUE(canvas.IsInk(20, 20)) << large;
        EXPECT_TRUE(canvas.IsInk(100, 100)) << large;
        // Straight runs start 8 or 16 per cent of the side from each corner.
        const int straightFrom = large ? 40 : 26;
        EXPECT_TRUE(canvas.IsInk(straightFrom, 10)) << large;
        EXPECT_TRUE(canvas.IsInk(10, straightFrom)) << large;
        EXPECT_TRUE(canvas.IsInk(200 - straightFrom, 190)) << large;
        const VxRECT ink = canvas.InkBounds();
        EXPECT_EQ(ink.left, 10);
        EXPECT_EQ(ink.top, 10);
        EXPECT_EQ(ink.right, 191);
        EXPECT_EQ(ink.bottom, 191);
    }
}

TEST(VxGMDrawPolygons, CurvedEdgeBulgesByItsControlPoints)
{
    const VxPOINT square[4] = {{20, 20}, {80, 20}, {80, 80}, {20, 80}};
    const VxPOINT controls[2] = {{35, 0}, {65, 0}};
    CVxTestCanvas curved(100, 100);
    curved.dc().SelectPen(CVxDC::penSolid, 1, 0);
    curved.dc().SelectBrush(CVxDC::brushSolid, 0);
    GMDrawBezierPolygon(curved.dc(), square, 4, {true, false, false, false}, controls, 2);
    curved.Finish();
    EXPECT_TRUE(curved.IsInk(50, 8));
    EXPECT_TRUE(curved.IsWhite(50, 3));
    EXPECT_TRUE(curved.IsInk(50, 50));

    CVxTestCanvas straight(100, 100);
    straight.dc().SelectPen(CVxDC::penSolid, 1, 0);
    straight.dc().SelectBrush(CVxDC::brushSolid, 0);
    // A flag vector of the wrong length means straight edges.
    GMDrawBezierPolygon(straight.dc(), square, 4, {true, false}, controls, 2);
    straight.Finish();
    EXPECT_TRUE(straight.IsWhite(50, 8));
    EXPECT_TRUE(straight.IsInk(50, 50));
}

TEST(VxGMDrawPolygons, OpenFormIsOnlyStroked)
{
    const VxPOINT points[3] = {{10, 80}, {50, 10}, {90, 80}};
    CVxTestCanvas canvas(100, 100);
    CVxDC& dc = canvas.dc();
    dc.SelectPen(CVxDC::penSolid, 2, 0);
    dc.SelectBrush(CVxDC::brushSolid, 0x0000FF);
    GMDrawBezierPolygon(dc, points, 3, {true, false}, nullptr, 0, true);
    EXPECT_EQ(dc.GetBrushStackSize(), 1);
    EXPECT_EQ(dc.GetCurrentBrushColor(), 0x0000FFu);
    canvas.Finish();
    EXPECT_TRUE(canvas.IsWhite(50, 60));
    EXPECT_TRUE(canvas.IsInk(90, 80));
    // No closing edge along the bottom.
    EXPECT_TRUE(canvas.IsWhite(50, 80));
}

TEST(VxGMDrawPolygons, PlanOutlineIsScaledAndMoved)
{
    CVxDPolygon polygon;
    polygon.points = {CVxDPoint(0, 0), CVxDPoint(30, 0), CVxDPoint(30, 30), CVxDPoint(0, 30)};
    CVxTestCanvas canvas(100, 100);
    canvas.dc().SelectPen(CVxDC::penSolid, 1, 0);
    canvas.dc().SelectBrush(CVxDC::brushSolid, 0);
    GMDrawBezierPolygon(canvas.dc(), polygon, 2.0, 10.0, 20.0);
    canvas.Finish();
    const VxRECT ink = canvas.InkBounds();
    EXPECT_EQ(ink.left, 10);
    EXPECT_EQ(ink.top, 20);
    EXPECT_EQ(ink.right, 71);
    EXPECT_EQ(ink.bottom, 81);
}

TEST(VxGMDrawColours, MonochromeGreyKeepsTheMarksAndMixingWeighsTheSecond)
{
    EXPECT_EQ(GMC2G(0x0000FF), 0x0000FFu);
    g_bColorToGray = true;
    EXPECT_EQ(GMC2G(0x0000FF), 0x4C4C4Cu);
    EXPECT_EQ(GMC2G(0xEF0000FF), 0xEF4C4C4Cu);
    g_bColorToGray = false;
    EXPECT_EQ(GMCombineColors(0x0000FF, 0xFFFFFF, 0.7), VX_RGB(255, 178, 178));
    EXPECT_EQ(GMTransparencyToAlpha(50), 128);
}

class VxGMDrawOpening : public ::testing::Test
{
protected:
    // An opening across a horizontal wall: faces along the top and bottom.
    const VxPOINT m_corners[4] = {{20, 40}, {80, 40}, {80, 60}, {20, 60}};

    void Draw(CVxTestCanvas& canvas, int flag, const SVxOpeningShade* shade)
    {
        canvas.painter().fillRect(0, 0, 100, 100, Qt::black);
        const int pens = canvas.dc().GetPenStackSize();
        const int brushes = canvas.dc().GetBrushStackSize();
        GMDrawWallOpeningRect(canvas.dc(), m_corners, 0x0000FF, flag, shade);
        EXPECT_EQ(canvas.dc().GetPenStackSize(), pens);
        EXPECT_EQ(canvas.dc().GetBrushStackSize(), brushes);
        canvas.Finish();
    }
};

TEST_F(VxGMDrawOpening, WithoutAShadeTheGapIsWhiteWithRedJambs)
{
    CVxTestCanvas canvas(100, 100);
    Draw(canvas, 0, nullptr);
    EXPECT_EQ(canvas.Pixel(50, 50), 0xFFFFFFu);
    EXPECT_EQ(canvas.Pixel(80, 50), 0x0000FFu);
    EXPECT_EQ(canvas.Pixel(20, 50), 0x0000FFu);
    // Faces: seven tenths of the way from the colour to the ground.
    EXPECT_EQ(canvas.Pixel(50, 40), VX_RGB(255, 178, 178));
    EXPECT_EQ(canvas.Pixel(50, 60), VX_RGB(255, 178, 178));

    // The flag keeps the selected pen for the faces.
    CVxTestCanvas flagged(100, 100);
    flagged.dc().SelectPen(CVxDC::penSolid, 1, 0x00FFFF);
    Draw(flagged, 1, nullptr);
    EXPECT_EQ(flagged.Pixel(50, 40), 0x00FFFFu);
    EXPECT_EQ(flagged.Pixel(80, 50), 0x0000FFu);
}

TEST_F(VxGMDrawOpening, ShadeGivesGroundAndJambColours)
{
    SVxOpeningShade shade;
    shade.floorColour = 0x80C0E0;
    shade.jambColour = 0x00FF00;
    CVxTestCanvas canvas(100, 100);
    Draw(canvas, 0, &shade);
    EXPECT_EQ(canvas.Pixel(50, 50), 0x80C0E0u);
    EXPECT_EQ(canvas.Pixel(80, 50), 0x00FF00u);
    EXPECT_EQ(canvas.Pixel(50, 40), GMCombineColors(0x0000FF, 0x80C0E0, 0.7));
}

TEST(VxGMDrawMarkers, IconsComeFromTheDataFolderOrAreDrawnByHand)
{
    const CVxStringW data = CVxStringW(QString::fromUtf8(PLAVENO_SOURCE_DIR)) + L"/data/";
    for (const CVxStringW& folder : {data, VxTestTempFolder() + L"nowhere/"}) {
        GMReleasePartMarkers();
        for (EVxMarkerType type : {VX_MARKER_SOUNDCLIP, VX_MARKER_LINK}) {
            CVxTestCanvas canvas(64, 64);
            GMDrawPartMarker(canvas.dc(), 16, 16, 32, type, folder);
            EXPECT_EQ(canvas.dc().GetPenStackSize(), 0);
            canvas.Finish();
            const VxRECT ink = canvas.InkBounds();
            EXPECT_GE(ink.left, 16);
            EXPECT_GE(ink.top, 16);
            EXPECT_LE(ink.right, 48);
            EXPECT_LE(ink.bottom, 48);
            EXPECT_GT(ink.right - ink.left, 16);
        }
    }
    GMReleasePartMarkers();
}

TEST(VxGMDrawPickers, ColourSwatchFramesRestoresSmoothingAndEdgesDarkColours)
{
    CVxTestCanvas canvas(40, 40);
    GMDrawColorPicker(canvas.dc(), VxRectMake(0, 0, 40, 40), 0x0000FF, 0);
    EXPECT_TRUE(canvas.painter().testRenderHint(QPainter::Antialiasing));
    EXPECT_EQ(canvas.dc().GetBkMode(), CVxDC::bkTransparent);
    EXPECT_EQ(canvas.dc().GetPenStackSize() + canvas.dc().GetBrushStackSize(), 0);
    canvas.Finish();
    EXPECT_EQ(canvas.Pixel(0, 20), 0xB0B0B0u);
    EXPECT_EQ(canvas.Pixel(39, 20), 0xB0B0B0u);
    EXPECT_EQ(canvas.Pixel(20, 20), 0x0000FFu);

    // A dark swatch on a dark window (the test host reports black for every
    // theme colour) gets a grey edge.
    ASSERT_EQ(GMGetSysColor(VX_SYSCOLOR_WINDOW), 0u);
    CVxTestCanvas dark(40, 40);
    GMDrawColorPicker(dark.dc(), VxRectMake(0, 0, 40, 40), 0x101010, 0);
    dark.Finish();
    EXPECT_EQ(dark.Pixel(2, 20), 0x787878u);
    EXPECT_EQ(dark.Pixel(20, 20), 0x101010u);
}

TEST(VxGMDrawPickers, LineSampleIsThickerThanTheLine)
{
    const struct
    {
        double thickness;
        int rows;
    } cases[] = {{2.5, 4}, {-19181.0, 2}, {5.0, 8}};
    for (const auto& c : cases) {
        CVxTestCanvas canvas(60, 30);
        GMDrawLineStylePicker(canvas.dc(), VxRectMake(0, 0, 60, 30), 0, c.thickness, 0x000000);
        canvas.Finish();
        int rows = 0;
        for (int y = 1; y < 29; ++y)
            rows += canvas.Level(30, y) < 128 ? 1 : 0;
        EXPECT_EQ(rows, c.rows) << c.thickness;
        EXPECT_TRUE(canvas.IsInk(3, 15));
        EXPECT_TRUE(canvas.IsInk(56, 15));
        EXPECT_EQ(canvas.Pixel(0, 15), 0xB0B0B0u);
    }
}
