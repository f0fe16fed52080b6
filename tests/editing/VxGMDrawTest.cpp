// The drawing helpers: shapes in object quadrilaterals, curved outlines,
// wall openings, markers, colours and swatches.

#include "VxDrawTestUtil.h"

#include "CVxDPolygon.h"
#include "CVxDRect.h"
#include "CVxFloor.h"
#include "VxGMDraw.h"
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

TEST(VxGMDrawShapes, PointInRectMeasuresFromTheFirstCorner)
{
    const VxPOINT corners[4] = {{10, 10}, {50, 10}, {50, 30}, {10, 30}};
    VxPOINT p;
    GMGetPointInRectL(p, corners, 0, 0);
    EXPECT_EQ(p.x, 10);
    EXPECT_EQ(p.y, 10);
    GMGetPointInRectL(p, corners, 1, 0);
    EXPECT_EQ(p.x, 50);
    EXPECT_EQ(p.y, 10);
    GMGetPointInRectL(p, corners, 0, 1);
    EXPECT_EQ(p.x, 10);
    EXPECT_EQ(p.y, 30);
    GMGetPointInRectL(p, corners, 0.25, 0.5);
    EXPECT_EQ(p.x, 20);
    EXPECT_EQ(p.y, 20);
    GMGetPointInRectL(p, corners, -0.5, 1.5);
    EXPECT_EQ(p.x, -10);
    EXPECT_EQ(p.y, 40);
}

TEST(VxGMDrawShapes, EllipseFillsItsQuadrilateralAndTouchesTheSides)
{
    CVxTestCanvas canvas(121, 121);
    const VxPOINT corners[4] = {{30, 40}, {90, 40}, {90, 80}, {30, 80}};
    DrawFilledEllipse(canvas, corners);
    EXPECT_TRUE(canvas.IsInk(60, 60));
    EXPECT_TRUE(canvas.IsInk(30, 60));
    EXPECT_TRUE(canvas.IsInk(89, 60));
    EXPECT_TRUE(canvas.IsInk(60, 40));
    EXPECT_TRUE(canvas.IsWhite(32, 42));
    EXPECT_TRUE(canvas.IsWhite(88, 78));
    const VxRECT ink = canvas.InkBounds();
    EXPECT_EQ(ink.left, 30);
    EXPECT_EQ(ink.top, 40);
    EXPECT_EQ(ink.right, 91);
    EXPECT_EQ(ink.bottom, 81);
}

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
        CVxTestCanvas canvas(100, 100);
        canvas.dc().SelectPen(CVxDC::penSolid, 1, 0);
        canvas.dc().SelectBrush(CVxDC::brushSolid, 0);
        const VxPOINT corners[4] = {{10, 10}, {90, 10}, {90, 90}, {10, 90}};
        GMDrawRoundRect(canvas.dc(), corners, large);
        canvas.Finish();
        EXPECT_TRUE(canvas.IsWhite(11, 11));
        EXPECT_TRUE(canvas.IsWhite(89, 89));
        EXPECT_TRUE(canvas.IsInk(50, 10));
        EXPECT_TRUE(canvas.IsInk(10, 50));
        EXPECT_TRUE(canvas.IsInk(50, 50));
        // Straight runs stop 8 or 16 per cent from each corner.
        const int straightFrom = large ? 23 : 17;
        EXPECT_TRUE(canvas.IsInk(straightFrom, 10)) << large;
        EXPECT_TRUE(canvas.IsInk(straightFrom, 11)) << large;
        EXPECT_TRUE(canvas.IsInk(14, 14)) << large;
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

TEST(VxGMDrawPolygons, MissingControlPointsComeFromTheNeighbours)
{
    // Straight neighbours make the curve leave them tangentially: the top
    // edge between two vertical sides bulges upwards.
    const VxPOINT square[4] = {{20, 40}, {80, 40}, {80, 90}, {20, 90}};
    CVxTestCanvas canvas(100, 100);
    canvas.dc().SelectPen(CVxDC::penSolid, 1, 0);
    canvas.dc().SelectBrush(CVxDC::brushSolid, 0);
    GMDrawBezierPolygon(canvas.dc(), square, 4, {true, false, false, false});
    canvas.Finish();
    EXPECT_TRUE(canvas.IsInk(50, 30));
    EXPECT_TRUE(canvas.IsInk(50, 60));
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

TEST(VxGMDrawPolygons, OnePointIsAPixelInThePenColour)
{
    const VxPOINT point[1] = {{5, 6}};
    CVxTestCanvas canvas(10, 10);
    canvas.dc().SelectPen(CVxDC::penSolid, 1, 0x00FF00);
    GMDrawBezierPolygon(canvas.dc(), point, 1, {});
    canvas.Finish();
    EXPECT_EQ(canvas.Pixel(5, 6), 0x00FF00u);
    EXPECT_TRUE(canvas.IsWhite(6, 6));
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

TEST(VxGMDrawPolygons, PlanOutlineWithACurvedEdgeUsesItsStoredControls)
{
    CVxDPolygon polygon;
    polygon.points = {CVxDPoint(10, 20), CVxDPoint(40, 20), CVxDPoint(40, 40), CVxDPoint(10, 40)};
    polygon.bezierFlags = {false, true, false, false};
    polygon.bezierControls = {CVxDPoint(50, 20), CVxDPoint(50, 40)};
    CVxTestCanvas canvas(100, 100);
    canvas.dc().SelectPen(CVxDC::penSolid, 1, 0);
    canvas.dc().SelectBrush(CVxDC::brushSolid, 0);
    GMDrawBezierPolygon(canvas.dc(), polygon, 2.0, 0.0, 0.0);
    canvas.Finish();
    // The right edge (x = 80) bulges to x = 80 + 0.75 * 20 = 95 halfway.
    EXPECT_TRUE(canvas.IsInk(92, 60));
    EXPECT_TRUE(canvas.IsWhite(97, 60));
}

TEST(VxGMDrawPolygons, OneEdgeIsStrokedAlone)
{
    CVxDPolygon polygon;
    polygon.points = {CVxDPoint(10, 10), CVxDPoint(90, 10), CVxDPoint(90, 90), CVxDPoint(10, 90)};
    CVxTestCanvas canvas(100, 100);
    canvas.dc().SelectPen(CVxDC::penSolid, 1, 0);
    GMDrawBezierPolygonEdge(canvas.dc(), polygon, 3, 1.0, 0.0, 0.0);
    GMDrawBezierPolygonEdge(canvas.dc(), polygon, 4, 1.0, 0.0, 0.0);
    canvas.Finish();
    EXPECT_TRUE(canvas.IsInk(10, 50));
    EXPECT_TRUE(canvas.IsWhite(50, 10));
    EXPECT_TRUE(canvas.IsWhite(90, 50));
}

TEST(VxGMDrawScaled, RectangleIsNormalisedAndGrowsToTheFarEdge)
{
    for (bool reversed : {false, true}) {
        CVxTestCanvas canvas(60, 60);
        canvas.dc().SelectPen(CVxDC::penSolid, 1, 0);
        canvas.dc().SelectBrush(CVxDC::brushNull, 0);
        const CVxDRect rect = reversed ? CVxDRect(4, 4, 1, 1) : CVxDRect(1, 1, 4, 4);
        GMDrawScaledRect(canvas.dc(), rect, 10, 10, 0.2, 0.2);
        GMDrawScaledLine(canvas.dc(), CVxDPoint(1, 5), CVxDPoint(4, 5), 10, 10, 0.2, 0.2);
        canvas.Finish();
        EXPECT_TRUE(canvas.IsInk(10, 25));
        EXPECT_TRUE(canvas.IsInk(40, 25));
        EXPECT_TRUE(canvas.IsWhite(41, 25));
        EXPECT_TRUE(canvas.IsInk(25, 50));
    }
}

TEST(VxGMDrawColours, IntensityGreyAndMixing)
{
    EXPECT_EQ(GMGetIntensity(0x0000FF), 76);
    EXPECT_EQ(GMGetIntensity(0x00FF00), 150);
    EXPECT_EQ(GMGetIntensity(0xFFFFFF), 255);
    EXPECT_EQ(GMC2G(0x0000FF), 0x0000FFu);
    g_bColorToGray = true;
    EXPECT_EQ(GMC2G(0x0000FF), 0x4C4C4Cu);
    EXPECT_EQ(GMC2G(0xEF0000FF), 0xEF4C4C4Cu);
    g_bColorToGray = false;
    EXPECT_EQ(GMCombineColors(0x0000FF, 0xFFFFFF, 0.7), VX_RGB(255, 178, 178));
    EXPECT_EQ(GMCombineColors(0x102030, 0x302010, 0.0), 0x102030u);
    float r = 0;
    float g = 0;
    float b = 0;
    GMSplitColor(0x3366FF, r, g, b);
    EXPECT_FLOAT_EQ(r, 1.0f);
    EXPECT_FLOAT_EQ(g, 0.4f);
    EXPECT_FLOAT_EQ(b, 0.2f);
    EXPECT_EQ(GMTransparencyToAlpha(0), 255);
    EXPECT_EQ(GMTransparencyToAlpha(50), 128);
    EXPECT_EQ(GMTransparencyToAlpha(100), 0);
}

class VxGMDrawOpening : public ::testing::Test
{
protected:
    // An opening across a horizontal wall: faces along the top and bottom.
    const VxPOINT m_corners[4] = {{20, 40}, {80, 40}, {80, 60}, {20, 60}};

    void Draw(CVxTestCanvas& canvas, int flag, const CVxFloor* floor)
    {
        canvas.painter().fillRect(0, 0, 100, 100, Qt::black);
        GMDrawWallOpeningRect(canvas.dc(), m_corners, 0x0000FF, flag, floor);
        canvas.Finish();
    }
};

TEST_F(VxGMDrawOpening, WithoutAFloorTheGapIsWhiteWithRedJambs)
{
    CVxTestCanvas canvas(100, 100);
    Draw(canvas, 0, nullptr);
    EXPECT_EQ(canvas.Pixel(50, 50), 0xFFFFFFu);
    EXPECT_EQ(canvas.Pixel(80, 50), 0x0000FFu);
    EXPECT_EQ(canvas.Pixel(20, 50), 0x0000FFu);
    // Faces: seven tenths of the way from the colour to the ground.
    EXPECT_EQ(canvas.Pixel(50, 40), VX_RGB(255, 178, 178));
    EXPECT_EQ(canvas.Pixel(50, 60), VX_RGB(255, 178, 178));
    EXPECT_EQ(canvas.dc().GetPenStackSize(), 0);
}

TEST_F(VxGMDrawOpening, FloorGivesGroundAndJambColours)
{
    CVxFloor floor;
    floor.m_floorAppear.SetColor(0x80C0E0);
    floor.m_wallsContour = 0x00FF00;
    floor.m_wallsColor = 0x808080;
    CVxTestCanvas canvas(100, 100);
    Draw(canvas, 0, &floor);
    EXPECT_EQ(canvas.Pixel(50, 50), 0x80C0E0u);
    EXPECT_EQ(canvas.Pixel(80, 50), 0x00FF00u);
    EXPECT_EQ(canvas.Pixel(50, 40), GMCombineColors(0x0000FF, 0x80C0E0, 0.7));

    floor.m_wallsContour = 0xEF00FF00;
    CVxTestCanvas offContour(100, 100);
    Draw(offContour, 0, &floor);
    EXPECT_EQ(offContour.Pixel(80, 50), 0x808080u);
}

TEST_F(VxGMDrawOpening, GreyContextIgnoresTheFloor)
{
    CVxFloor floor;
    floor.m_floorAppear.SetColor(0x80C0E0);
    floor.m_wallsContour = 0x00FF00;
    CVxTestCanvas canvas(100, 100, true);
    Draw(canvas, 0, &floor);
    EXPECT_EQ(canvas.Pixel(50, 50), 0xFFFFFFu);
    EXPECT_EQ(canvas.Pixel(80, 50), 0x555555u);
}

TEST_F(VxGMDrawOpening, FlagKeepsTheSelectedPenForTheFaces)
{
    CVxTestCanvas canvas(100, 100);
    canvas.dc().SelectPen(CVxDC::penSolid, 1, 0x00FFFF);
    Draw(canvas, 1, nullptr);
    EXPECT_EQ(canvas.Pixel(50, 40), 0x00FFFFu);
    EXPECT_EQ(canvas.Pixel(80, 50), 0x0000FFu);
}

TEST(VxGMDrawMarkers, IconsComeFromTheDataFolderOrAreDrawnByHand)
{
    const CVxStringW data = CVxStringW(QString::fromUtf8(PLAVENO_SOURCE_DIR)) + L"/data/";
    for (const CVxStringW& folder : {data, VxTestTempFolder() + L"nowhere/"}) {
        GMReleasePartMarkers();
        for (EVxMarkerType type : {VX_MARKER_SOUNDCLIP, VX_MARKER_LINK}) {
            CVxTestCanvas canvas(64, 64);
            GMDrawPartMarker(canvas.dc(), 16, 16, 32, type, folder);
            canvas.Finish();
            const VxRECT ink = canvas.InkBounds();
            EXPECT_GE(ink.left, 16);
            EXPECT_GE(ink.top, 16);
            EXPECT_LE(ink.right, 48);
            EXPECT_LE(ink.bottom, 48);
            EXPECT_GT(ink.right - ink.left, 16);
            EXPECT_EQ(canvas.dc().GetPenStackSize(), 0);
        }
    }
    GMReleasePartMarkers();
}

TEST(VxGMDrawPickers, ColourSwatchFramesAndRestoresSmoothing)
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
}

TEST(VxGMDrawPickers, TranslucentSwatchShowsWhatIsBeneath)
{
    CVxTestCanvas canvas(40, 40);
    GMDrawColorPicker(canvas.dc(), VxRectMake(0, 0, 40, 40), 0x000000, 50);
    canvas.Finish();
    // Half-transparent black over the white and grey chequer.
    const int level = canvas.Level(20, 20);
    EXPECT_GT(level, 90);
    EXPECT_LT(level, 140);
}

TEST(VxGMDrawPickers, DarkSwatchOnADarkWindowGetsAGreyEdge)
{
    // The test host reports black for every theme colour.
    ASSERT_EQ(GMGetSysColor(VX_SYSCOLOR_WINDOW), 0u);
    CVxTestCanvas canvas(40, 40);
    GMDrawColorPicker(canvas.dc(), VxRectMake(0, 0, 40, 40), 0x101010, 0);
    canvas.Finish();
    EXPECT_EQ(canvas.Pixel(2, 20), 0x787878u);
    EXPECT_EQ(canvas.Pixel(20, 20), 0x101010u);
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
        EXPECT_TRUE(canvas.IsWhite(2, 15));
        EXPECT_TRUE(canvas.IsInk(3, 15));
    }
}

TEST(VxGMDrawPickers, FillSampleLeavesTheBackgroundAsItFoundIt)
{
    CVxTestCanvas canvas(40, 40);
    GMDrawFillStylePicker(canvas.dc(), VxRectMake(0, 0, 40, 40), 4, 0x0000FF, 0xFF0000);
    EXPECT_EQ(canvas.dc().GetBkMode(), CVxDC::bkTransparent);
    EXPECT_EQ(canvas.dc().GetBkColor(), 0xFFFFFFu);
    canvas.Finish();
    bool red = false;
    bool blue = false;
    for (int x = 3; x < 37; ++x) {
        red = red || canvas.Pixel(x, 20) == 0x0000FFu;
        blue = blue || canvas.Pixel(x, 20) == 0xFF0000u;
    }
    EXPECT_TRUE(red);
    EXPECT_TRUE(blue);
}

TEST(VxGMDrawPickers, DisabledSwatchIsAFaintEmptyFrame)
{
    CVxTestCanvas canvas(40, 40);
    GMDrawDisabledPicker(canvas.dc(), VxRectMake(0, 0, 40, 40));
    canvas.Finish();
    EXPECT_TRUE(VxColorNear(canvas.Pixel(0, 20), 0xD7D7D7, 2));
    EXPECT_TRUE(canvas.IsWhite(20, 20));
}

TEST(VxGMDrawPickers, HueRingShowsRedAtTheTopAndCyanAtTheBottom)
{
    CVxTestCanvas canvas(101, 101);
    GMDrawColorPickerHueRing(canvas.dc(), VxRectMake(0, 0, 101, 101), 120);
    canvas.Finish();
    EXPECT_TRUE(VxColorNear(canvas.Pixel(50, 5), 0x0000FF, 40));
    EXPECT_TRUE(VxColorNear(canvas.Pixel(50, 95), 0xFFFF00, 40));
    EXPECT_TRUE(canvas.IsWhite(50, 50));
}
