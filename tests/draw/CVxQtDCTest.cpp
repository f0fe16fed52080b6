// What the operations paint: pixel centres, shapes, paths, angles, text,
// gradient and texture brushes, clipping and pictures.

#include "VxDrawTestUtil.h"

#include "CVxPicBuf.h"

#include <QPainter>

#include <cmath>
#include <vector>

TEST(CVxQtDCShapes, RectangleCoversTenToNineteen)
{
    CVxTestCanvas canvas(40, 40);
    CVxDC& dc = canvas.dc();
    dc.SelectPen(CVxDC::penSolid, 1, 0);
    dc.SelectBrush(CVxDC::brushNull, 0);
    dc.Rectangle(10, 10, 20, 20);
    canvas.Finish();
    for (int i = 10; i <= 19; ++i) {
        EXPECT_EQ(canvas.Pixel(i, 10), 0u) << "top at " << i;
        EXPECT_EQ(canvas.Pixel(i, 19), 0u) << "bottom at " << i;
        EXPECT_EQ(canvas.Pixel(10, i), 0u) << "left at " << i;
        EXPECT_EQ(canvas.Pixel(19, i), 0u) << "right at " << i;
        EXPECT_TRUE(canvas.IsWhite(i, 9) && canvas.IsWhite(i, 20)) << i;
        EXPECT_TRUE(canvas.IsWhite(9, i) && canvas.IsWhite(20, i)) << i;
    }
    EXPECT_TRUE(canvas.IsWhite(15, 15));

    // A rectangle of minus ones draws nothing.
    CVxTestCanvas empty(20, 20);
    empty.dc().SelectPen(CVxDC::penSolid, 4, 0);
    empty.dc().SelectBrush(CVxDC::brushSolid, 0);
    empty.dc().Rectangle(-1, -1, -1, -1);
    empty.Finish();
    EXPECT_TRUE(empty.IsAllWhite());
}

TEST(CVxQtDCShapes, OnlyOutlinesOfMoreEdgeCrossingsThanPixelsAreThinned)
{
    const QRectF visible(0, 0, 800, 600);
    // A smooth outline of many points is drawn whole.
    std::vector<QPointF> circle;
    for (int k = 0; k < 20000; ++k)
        circle.emplace_back(400 + 250 * std::cos(k * 2 * M_PI / 20000),
                            300 + 250 * std::sin(k * 2 * M_PI / 20000));
    EXPECT_EQ(CVxQtDC::ThinOutline(circle.data(), static_cast<int>(circle.size()), visible), 20000);

    // So is one whose long edges lie beyond the visible part.
    std::vector<QPointF> outside;
    for (int k = 0; k < 2000; ++k)
        outside.emplace_back(-100 - (k % 2) * 5000, k * 0.25);
    EXPECT_EQ(CVxQtDC::ThinOutline(outside.data(), 2000, visible), 2000);

    // A hundred thousand edges across the picture keep a few dozen points,
    // the first of them among them.
    std::vector<QPointF> zigzag;
    for (int k = 0; k < 100000; ++k)
        zigzag.emplace_back(k % 800, (k % 2) * 599);
    const int kept = CVxQtDC::ThinOutline(zigzag.data(), 100000, visible);
    EXPECT_GT(kept, 50);
    EXPECT_LT(kept, 100);
    EXPECT_EQ(zigzag[0], QPointF(0, 0));
    double crossings = 0;
    for (int i = 1; i < kept; ++i)
        crossings +=
            std::fabs(zigzag[i].x() - zigzag[i - 1].x()) + std::fabs(zigzag[i].y() - zigzag[i - 1].y());
    EXPECT_LE(crossings, CVxQtDC::maxOutlineCrossings);

    // Thinned, it still fills the picture.
    CVxTestCanvas canvas(800, 600);
    std::vector<VxPOINT> points;
    for (int k = 0; k < 100000; ++k)
        points.push_back(VxPOINT{k % 800, (k % 2) * 599});
    canvas.dc().SelectPen(CVxDC::penSolid, 1, 0);
    canvas.dc().SelectBrush(CVxDC::brushSolid, 0);
    canvas.dc().Polygon(points.data(), static_cast<int>(points.size()));
    canvas.Finish();
    EXPECT_FALSE(canvas.IsAllWhite());
}

TEST(CVxQtDCShapes, LinesFallOnPixelCentres)
{
    CVxTestCanvas canvas(40, 40);
    CVxDC& dc = canvas.dc();
    dc.SelectPen(CVxDC::penSolid, 1, 0);
    dc.Line(5, 10, 30, 10);
    dc.MoveTo(VxPOINT{20, 15});
    dc.LineTo(VxPOINT{20, 35});
    canvas.Finish();
    EXPECT_EQ(canvas.Pixel(15, 10), 0u);
    EXPECT_TRUE(canvas.IsWhite(15, 9));
    EXPECT_TRUE(canvas.IsWhite(15, 11));
    EXPECT_EQ(canvas.Pixel(20, 25), 0u);
    EXPECT_TRUE(canvas.IsWhite(19, 25));
    EXPECT_TRUE(canvas.IsWhite(21, 25));
}

TEST(CVxQtDCShapes, ArcRunsClockwiseOutsideAPathAndCounterClockwiseInside)
{
    CVxTestCanvas outside(100, 100);
    outside.dc().SelectPen(CVxDC::penSolid, 3, 0);
    outside.dc().Arc(20, 20, 81, 81, 0, 0, 0, 0, 0.0f, 90.0f);
    outside.Finish();
    // Radius 30 about (50, 50): the 45 degree point is 21 pixels off.
    EXPECT_TRUE(outside.IsInk(71, 71));
    EXPECT_TRUE(outside.IsWhite(71, 29));

    CVxTestCanvas inside(100, 100);
    inside.dc().SelectPen(CVxDC::penSolid, 3, 0);
    inside.dc().SelectBrush(CVxDC::brushNull, 0);
    inside.dc().BeginPath();
    inside.dc().Arc(20, 20, 81, 81, 0, 0, 0, 0, 0.0f, 90.0f);
    inside.dc().EndPath();
    inside.dc().StrokeAndFillPath();
    inside.Finish();
    EXPECT_TRUE(inside.IsInk(71, 29));
    EXPECT_TRUE(inside.IsWhite(71, 71));
}

TEST(CVxQtDCPaths, NothingIsPaintedUntilTheStrokeAndFill)
{
    CVxTestCanvas canvas(60, 60);
    CVxQtDC& dc = canvas.dc();
    dc.SelectPen(CVxDC::penSolid, 1, 0);
    dc.SelectBrush(CVxDC::brushSolid, 0x0000FF);
    dc.BeginPath();
    EXPECT_TRUE(dc.IsPathOpen());
    dc.MoveTo(10, 10);
    dc.LineTo(50, 10);
    dc.LineTo(50, 50);
    dc.LineTo(10, 50);
    dc.Pie(0, 0, 60, 60, 0, 0, 0, 0, 0.0f, 360.0f);
    dc.EndPath();
    EXPECT_TRUE(canvas.IsAllWhite());
    dc.StrokeAndFillPath();
    EXPECT_FALSE(dc.IsPathOpen());
    canvas.Finish();
    EXPECT_EQ(canvas.Pixel(30, 30), 0x0000FFu);
    EXPECT_EQ(canvas.Pixel(50, 30), 0u);
    // The pie inside the path painted nothing.
    EXPECT_TRUE(canvas.IsWhite(5, 30));
}

TEST(CVxQtDCPaths, PolyBezierOutsideAPathIsStrokedNotFilled)
{
    CVxTestCanvas canvas(60, 60);
    CVxDC& dc = canvas.dc();
    dc.SelectPen(CVxDC::penSolid, 2, 0);
    dc.SelectBrush(CVxDC::brushSolid, 0x0000FF);
    const VxPOINT loop[7] = {{10, 30}, {10, 0}, {50, 0}, {50, 30}, {50, 60}, {10, 60}, {10, 30}};
    dc.PolyBezier(loop, 7);
    const VxPOINT tooShort[3] = {{0, 0}, {59, 59}, {0, 59}};
    dc.PolyBezier(tooShort, 3);
    canvas.Finish();
    EXPECT_TRUE(canvas.IsInk(10, 30));
    EXPECT_TRUE(canvas.IsWhite(30, 30));
    EXPECT_TRUE(canvas.IsWhite(5, 55));
}

TEST(CVxQtDCClip, ClipRectKeepsPaintInsideUntilCleared)
{
    CVxTestCanvas canvas(100, 20);
    CVxDC& dc = canvas.dc();
    dc.SelectPen(CVxDC::penNull, 1, 0);
    dc.SelectBrush(CVxDC::brushSolid, 0);
    dc.SetClipRect(VxRectMake(0, 0, 50, 20));
    dc.Rectangle(0, 0, 101, 11);
    dc.ClearClipping();
    dc.Rectangle(0, 10, 101, 21);
    canvas.Finish();
    EXPECT_TRUE(canvas.IsInk(40, 5));
    EXPECT_TRUE(canvas.IsWhite(60, 5));
    EXPECT_TRUE(canvas.IsInk(60, 15));
}

TEST(CVxQtDCBrushes, GradientRunsAlongItsAngleAndPopsLikeABrush)
{
    CVxTestCanvas canvas(100, 100);
    CVxDC& dc = canvas.dc();
    dc.SelectPen(CVxDC::penNull, 1, 0);
    VxRECT top = VxRectMake(0, 0, 100, 50);
    dc.SelectGradientBrush(0x000000, 0xFFFFFF, 0.0, top);
    EXPECT_EQ(dc.GetCurrentBrushColor(), 0x7F7F7Fu);
    dc.Rectangle(0, 0, 101, 51);
    dc.SelectOldBrush();
    EXPECT_EQ(dc.GetBrushStackSize(), 0);
    VxRECT bottom = VxRectMake(0, 50, 100, 100);
    dc.SelectGradientBrush(0x000000, 0xFFFFFF, 90.0, bottom);
    dc.Rectangle(0, 50, 101, 101);
    canvas.Finish();
    EXPECT_LT(canvas.Level(5, 25), 30);
    EXPECT_GT(canvas.Level(95, 25), 225);
    EXPECT_NEAR(canvas.Level(50, 10), canvas.Level(50, 40), 3);
    EXPECT_LT(canvas.Level(50, 53), 30);
    EXPECT_GT(canvas.Level(50, 97), 225);
}

TEST(CVxQtDCBrushes, TextureRepeatsTheScaledPicture)
{
    CVxPicBuf picture(2, 2, 3);
    picture.SetPixel(0, 0, 0x0000FF);
    picture.SetPixel(1, 0, 0xFF0000);
    picture.SetPixel(0, 1, 0xFF0000);
    picture.SetPixel(1, 1, 0x0000FF);
    CVxTestCanvas canvas(40, 40);
    CVxDC& dc = canvas.dc();
    dc.SetInterpolationQuality(false);
    dc.SelectPen(CVxDC::penNull, 1, 0);
    dc.SelectTextureBrush(5.0, 0.0, 0, 0, &picture);
    EXPECT_EQ(dc.GetCurrentBrushColor(), 0xC0C0C0u);
    dc.Rectangle(0, 0, 41, 41);
    canvas.Finish();
    EXPECT_EQ(canvas.Pixel(2, 2), 0x0000FFu);
    EXPECT_EQ(canvas.Pixel(7, 2), 0xFF0000u);
    EXPECT_EQ(canvas.Pixel(7, 7), 0x0000FFu);
    EXPECT_EQ(canvas.Pixel(12, 2), 0x0000FFu);
}

TEST(CVxQtDCBrushes, ShrunkTextureKeepsItsSizeOnScreen)
{
    CVxPicBuf picture(100, 100, 3);
    CVxTestCanvas canvas(20, 20);
    canvas.dc().SelectTextureBrush(0.1, 30.0, 4, 6, &picture);
    // A copy 11 pixels wide stands for 10 pixels on screen.
    const QTransform transform = canvas.painter().brush().transform();
    const double scale = std::hypot(transform.m11(), transform.m12());
    EXPECT_NEAR(scale, 10.0 / 11.0, 1e-9);
    EXPECT_NEAR(transform.dx(), 4.0, 1e-9);
    EXPECT_NEAR(transform.dy(), 6.0, 1e-9);
    EXPECT_EQ(canvas.painter().brush().textureImage().width(), 11);
}

TEST(CVxQtDCText, DrawTextKeepsToTheHalvesItIsAlignedTo)
{
    const CVxStringW text = L"Kitchen";
    const struct
    {
        unsigned flags;
        bool right;
        bool bottom;
    } cases[] = {{0, false, false},
                 {CVxDC::dtRight | CVxDC::dtBottom | CVxDC::dtSingleLine, true, true},
                 {CVxDC::dtCenter | CVxDC::dtRight | CVxDC::dtSingleLine, true, false},
                 {CVxDC::dtBottom | CVxDC::dtSingleLine, false, true}};
    for (const auto& c : cases) {
        CVxTestCanvas canvas(240, 80);
        CVxFont font;
        font.m_size = 12;
        canvas.dc().SelectFont(font);
        VxRECT rect = VxRectMake(0, 0, 240, 80);
        EXPECT_GT(canvas.dc().DrawText(text, rect, c.flags, 0x000000), 0);
        canvas.Finish();
        const VxRECT ink = canvas.InkBounds();
        ASSERT_LT(ink.left, ink.right) << "flags " << c.flags;
        if (c.right)
            EXPECT_GE(ink.left, 120) << "flags " << c.flags;
        else
            EXPECT_LE(ink.right, 120) << "flags " << c.flags;
        if (c.bottom)
            EXPECT_GE(ink.top, 40) << "flags " << c.flags;
        else
            EXPECT_LE(ink.bottom, 40) << "flags " << c.flags;
        // The inclusive right and bottom of the text box are two pixels in.
        EXPECT_LE(ink.right, 239);
        EXPECT_LE(ink.bottom, 79);
    }
}

TEST(CVxQtDCText, MeasuringPaintsNothingAndGivesTheNeededRectangle)
{
    CVxTestCanvas canvas(300, 100);
    CVxFont font;
    font.m_size = 12;
    canvas.dc().SelectFont(font);
    VxSIZE extent;
    ASSERT_TRUE(canvas.dc().GetTextExtentPoint(L"Living room", extent));
    VxRECT rect = VxRectMake(10, 10, 300, 100);
    canvas.dc().DrawText(L"Living room", rect, CVxDC::dtCalcRect | CVxDC::dtSingleLine, 0);
    EXPECT_EQ(rect.left, 10);
    EXPECT_EQ(rect.top, 10);
    EXPECT_NEAR(rect.right - rect.left, extent.cx, 2);
    EXPECT_EQ(rect.bottom - rect.top, extent.cy);

    // Word wrap in a narrow box needs more lines.
    VxRECT narrow = VxRectMake(0, 0, extent.cx / 2 + 2, 100);
    canvas.dc().DrawText(L"Living room", narrow, CVxDC::dtCalcRect | CVxDC::dtWordBreak, 0);
    EXPECT_GE(narrow.bottom - narrow.top, 2 * extent.cy - 2);
    canvas.Finish();
    EXPECT_TRUE(canvas.IsAllWhite());
}

TEST(CVxQtDCText, TextIsClippedToItsBoxUnlessAskedNotTo)
{
    const CVxStringW text = L"A rather long caption for a small box";
    CVxTestCanvas clipped(300, 40);
    VxRECT box = VxRectMake(10, 5, 60, 35);
    clipped.dc().DrawText(text, box, CVxDC::dtSingleLine, 0);
    clipped.Finish();
    EXPECT_LE(clipped.InkBounds().right, 59);

    CVxTestCanvas unclipped(300, 40);
    VxRECT rect = VxRectMake(10, 5, 60, 35);
    unclipped.dc().DrawText(text, rect, CVxDC::dtSingleLine | CVxDC::dtNoClip, 0);
    unclipped.Finish();
    EXPECT_GT(unclipped.InkBounds().right, 100);
}

TEST(CVxQtDCText, TextOutBaselinesOrderTopBaselineBottom)
{
    int centres[3] = {0, 0, 0};
    const unsigned flags[3] = {CVxDC::taTop, CVxDC::taBaseline, CVxDC::taBottom};
    for (int i = 0; i < 3; ++i) {
        CVxTestCanvas canvas(200, 120);
        CVxFont font;
        font.m_size = 14;
        canvas.dc().SelectFont(font);
        const QPen before = canvas.painter().pen();
        canvas.dc().TextOut(L"Hall", 20, 60, flags[i], 0x000000);
        EXPECT_EQ(canvas.painter().pen(), before);
        canvas.Finish();
        const VxRECT ink = canvas.InkBounds();
        ASSERT_LT(ink.top, ink.bottom);
        EXPECT_GE(ink.left, 19);
        centres[i] = (ink.top + ink.bottom) / 2;
    }
    EXPECT_GT(centres[0], centres[1]);
    EXPECT_GT(centres[1], centres[2]);
    // On the baseline the letters stand above y.
    EXPECT_LT(centres[1], 60);
}

TEST(CVxQtDCText, RotatedFontTurnsTheText)
{
    CVxTestCanvas canvas(120, 200);
    CVxFont font;
    font.m_size = 14;
    font.m_rotation = 90;
    canvas.dc().SelectFont(font);
    EXPECT_EQ(canvas.dc().GetFontRotation(), 90.0);
    canvas.dc().TextOut(L"Corridor", 60, 20, CVxDC::taBaseline, 0);
    canvas.Finish();
    const VxRECT ink = canvas.InkBounds();
    EXPECT_GT(ink.bottom - ink.top, 2 * (ink.right - ink.left));
    // Turned clockwise about (60, 20): the line runs down and the letters
    // stand to the right of it.
    EXPECT_GE(ink.top, 18);
    EXPECT_GE(ink.left, 58);
    EXPECT_LE(ink.right, 82);
}

class CVxQtDCPictures : public ::testing::Test
{
protected:
    // A 20 by 10 picture: red, with a blue right half.
    CVxQtDCPictures() : m_picture(20, 10, 4)
    {
        m_picture.Fill(0x0000FF);
        for (int y = 0; y < 10; ++y) {
            for (int x = 10; x < 20; ++x)
                m_picture.SetPixel(x, y, 0xFF0000);
        }
    }
    CVxPicBuf m_picture;
};

TEST_F(CVxQtDCPictures, RotatedPictureTurnsAboutItsTopLeftCorner)
{
    // 450 degrees is a quarter turn clockwise: the picture hangs down to the
    // left of (50, 50), its red half on top.
    for (double angle : {90.0, 450.0, -270.0}) {
        CVxTestCanvas canvas(100, 100);
        canvas.dc().DrawPicture(50, 50, 20, 10, angle, &m_picture, false);
        canvas.Finish();
        EXPECT_EQ(canvas.Pixel(45, 55), 0x0000FFu) << "angle " << angle;
        EXPECT_EQ(canvas.Pixel(45, 65), 0xFF0000u) << "angle " << angle;
        EXPECT_TRUE(canvas.IsWhite(55, 55)) << "angle " << angle;
        EXPECT_TRUE(canvas.IsWhite(45, 45)) << "angle " << angle;
    }
}

TEST_F(CVxQtDCPictures, GreyContextGreysThePicture)
{
    CVxTestCanvas canvas(40, 40, true);
    canvas.dc().DrawPicture(0, 0, 20, 10, 0.0, &m_picture, false);
    canvas.Finish();
    EXPECT_TRUE(VxColorNear(canvas.Pixel(5, 5), 0x555555, 1));
}

TEST_F(CVxQtDCPictures, PartOfAPictureIsDrawnFromItsOwnPixels)
{
    CVxTestCanvas canvas(40, 40);
    canvas.dc().DrawPictureRect(0, 0, 30, 30, &m_picture, 10, 0, 10, 10, false);
    canvas.Finish();
    EXPECT_EQ(canvas.Pixel(1, 1), 0xFF0000u);
    EXPECT_EQ(canvas.Pixel(28, 28), 0xFF0000u);
    EXPECT_TRUE(canvas.IsWhite(31, 15));
}
