// The state of the drawing context: pen, brush and font stacks, colour
// modes, alpha memory and the brush of stored fills.

#include "VxDrawTestUtil.h"

#include "CVxDC.h"
#include "CVxPicBuf.h"
#include "VxColorWord.h"

#include <QPainter>

TEST(CVxDCStacks, LastPenPopKeepsPainterPenButReportsBlack)
{
    CVxTestCanvas canvas;
    CVxDC& dc = canvas.dc();
    dc.SelectPen(CVxDC::penSolid, 3, 0x0000FF);
    EXPECT_EQ(dc.GetCurrentPenColor(), 0x0000FFu);
    dc.SelectOldPen();
    EXPECT_EQ(dc.GetCurrentPenColor(), 0u);
    EXPECT_FALSE(dc.IsPenNeeded());
    EXPECT_EQ(canvas.painter().pen().color(), QColor(255, 0, 0));
    EXPECT_EQ(canvas.painter().pen().width(), 3);
}

TEST(CVxDCStacks, LastBrushPopPaintsSolidWhite)
{
    CVxTestCanvas canvas;
    CVxDC& dc = canvas.dc();
    canvas.painter().fillRect(0, 0, 100, 100, Qt::black);
    dc.SelectBrush(CVxDC::brushSolid, 0xFF0000);
    dc.SelectOldBrush();
    EXPECT_EQ(dc.GetCurrentBrushColor(), 0xFFFFFFu);
    EXPECT_FALSE(dc.IsBrushNeeded());
    dc.SelectPen(CVxDC::penNull, 1, 0);
    dc.Rectangle(10, 10, 50, 50);
    canvas.Finish();
    EXPECT_EQ(canvas.Pixel(30, 30), 0xFFFFFFu);
    EXPECT_EQ(canvas.Pixel(70, 70), 0x000000u);
}

TEST(CVxDCStacks, PopReselectsThePreviousRecord)
{
    CVxTestCanvas canvas;
    CVxDC& dc = canvas.dc();
    dc.SelectPen(CVxDC::penSolid, 2, 0x00FF00);
    dc.SelectPen(CVxDC::penDot, 5, 0x0000FF);
    dc.SelectBrush(CVxDC::brushSolid, 0x123456, 0, 200);
    dc.SelectBrush(CVxDC::brushNull, 0);
    dc.SelectOldPen();
    dc.SelectOldBrush();
    EXPECT_EQ(canvas.painter().pen().color(), QColor(0, 255, 0));
    EXPECT_EQ(canvas.painter().pen().width(), 2);
    EXPECT_EQ(canvas.painter().pen().style(), Qt::SolidLine);
    EXPECT_EQ(canvas.painter().brush().color(), QColor(0x56, 0x34, 0x12, 200));
    EXPECT_EQ(dc.GetPenStackSize(), 1);
    EXPECT_EQ(dc.GetBrushStackSize(), 1);
}

TEST(CVxDCStacks, FontStackRestoresSizeAndKeepsFontAfterLastPop)
{
    CVxTestCanvas canvas;
    CVxDC& dc = canvas.dc();
    CVxFont big;
    big.m_size = 20;
    CVxFont small;
    small.m_size = 8.9;
    small.m_bold = true;
    dc.SelectFont(big);
    dc.SelectFont(small);
    EXPECT_EQ(canvas.painter().font().pointSize(), 8);
    EXPECT_TRUE(canvas.painter().font().bold());
    CVxFont current;
    ASSERT_TRUE(dc.GetCurrentFont(current));
    EXPECT_TRUE(current.m_bold);
    dc.SelectOldFont();
    EXPECT_EQ(canvas.painter().font().pointSize(), 20);
    EXPECT_FALSE(canvas.painter().font().bold());
    dc.SelectOldFont();
    EXPECT_FALSE(dc.GetCurrentFont(current));
    EXPECT_EQ(canvas.painter().font().pointSize(), 20);
}

TEST(CVxDCColours, PaleGreyAndNormalModes)
{
    CVxTestCanvas canvas;
    CVxDC& dc = canvas.dc();
    dc.SetColorMode(CVxDC::colorModePale);
    EXPECT_EQ(dc.C2G(0x000000), 0xA0A0A0u);
    EXPECT_EQ(dc.C2G(0xFFFFFF), 0xDFDFDFu);
    EXPECT_EQ(dc.C2G(0x0000FF), 0xA0A0DFu);
    // Grey mode takes the mean, normal mode drops the marks.
    dc.SetColorMode(CVxDC::colorModeNormal);
    EXPECT_EQ(dc.C2G(0xEF123456), 0x123456u);
    EXPECT_EQ(dc.SetColorMode(CVxDC::colorModeGrey), CVxDC::colorModeNormal);
    EXPECT_EQ(dc.C2G(0x0000FF), 0x555555u);
    EXPECT_EQ(dc.C2G(0x010203), 0x020202u);
}

TEST(CVxDCColours, GreyContextPaintsRedAsGrey)
{
    CVxTestCanvas canvas(100, 100, true);
    CVxDC& dc = canvas.dc();
    EXPECT_EQ(dc.GetColorMode(), CVxDC::colorModeGrey);
    dc.SelectPen(CVxDC::penSolid, 1, 0x0000FF);
    dc.SelectBrush(CVxDC::brushSolid, 0x0000FF);
    dc.Rectangle(10, 10, 50, 50);
    dc.SetPixelV(70, 70, 0x00FF00);
    canvas.Finish();
    EXPECT_TRUE(VxColorNear(canvas.Pixel(30, 30), 0x555555, 1));
    EXPECT_TRUE(VxColorNear(canvas.Pixel(10, 30), 0x555555, 1));
    EXPECT_TRUE(VxColorNear(canvas.Pixel(70, 70), 0x555555, 1));
}

TEST(CVxDCAlpha, KeptAlphaReachesOpaqueSelections)
{
    CVxTestCanvas canvas;
    CVxDC& dc = canvas.dc();
    EXPECT_FALSE(dc.SetKeepSameAlpha(true));
    dc.SelectBrush(CVxDC::brushSolid, 0xFF0000, 0, 100);
    dc.SelectPen(CVxDC::penSolid, 1, 0xFF0000, 60);
    dc.SelectBrush(CVxDC::brushSolid, 0x00FF00);
    dc.SelectPen(CVxDC::penSolid, 1, 0x00FF00);
    EXPECT_EQ(canvas.painter().brush().color().alpha(), 100);
    EXPECT_EQ(canvas.painter().pen().color().alpha(), 60);
    dc.SelectBrush(CVxDC::brushSolid, 0x00FF00, 0, 30);
    dc.SelectBrush(CVxDC::brushSolid, 0x00FF00);
    EXPECT_EQ(canvas.painter().brush().color().alpha(), 30);
    // Popping gives back the recorded alpha, not the remembered one.
    dc.SelectOldBrush();
    dc.SelectOldBrush();
    EXPECT_EQ(canvas.painter().brush().color().alpha(), 100);

    EXPECT_TRUE(dc.SetKeepSameAlpha(false));
    dc.SelectBrush(CVxDC::brushSolid, 0x00FF00);
    dc.SelectPen(CVxDC::penSolid, 1, 0x00FF00);
    EXPECT_EQ(canvas.painter().brush().color().alpha(), 255);
    EXPECT_EQ(canvas.painter().pen().color().alpha(), 255);
    // Switching on again starts from opaque.
    dc.SetKeepSameAlpha(true);
    dc.SelectBrush(CVxDC::brushSolid, 0x00FF00);
    EXPECT_EQ(canvas.painter().brush().color().alpha(), 255);
}

TEST(CVxDCHatch, FillStylesMapToHatchesCappedAtDiagonalCross)
{
    CVxTestCanvas canvas;
    CVxDC& dc = canvas.dc();
    const Qt::BrushStyle expected[] = {Qt::HorPattern,      Qt::VerPattern,   Qt::FDiagPattern,
                                       Qt::BDiagPattern,    Qt::CrossPattern, Qt::DiagCrossPattern,
                                       Qt::DiagCrossPattern};
    for (int style = 2; style <= 8; ++style) {
        dc.SelectHatchBrush(0x00FF00, style, 255, clrUndefined);
        EXPECT_EQ(canvas.painter().brush().style(), expected[style - 2]) << "fill style " << style;
        EXPECT_EQ(canvas.painter().brush().color(), QColor(0, 255, 0));
        dc.SelectOldBrush();
    }
    EXPECT_EQ(dc.GetBkMode(), CVxDC::bkTransparent);
    // A switched-off solid fill selects no brush whatever the second colour.
    dc.SelectHatchBrush(0xEF00FF00, 0, 255, 0x0000FF);
    EXPECT_FALSE(dc.IsBrushNeeded());
    EXPECT_EQ(canvas.painter().brush().style(), Qt::NoBrush);
    EXPECT_EQ(dc.GetBkMode(), CVxDC::bkTransparent);
}

TEST(CVxDCHatch, SecondColourDrawsLinesOverTheFirst)
{
    CVxTestCanvas canvas;
    CVxDC& dc = canvas.dc();
    dc.SelectPen(CVxDC::penNull, 1, 0);
    dc.SelectHatchBrush(0x0000FF, 2, 255, 0xEFFF0000);
    EXPECT_EQ(dc.GetBkMode(), CVxDC::bkOpaque);
    EXPECT_EQ(dc.GetBkColor(), 0x0000FFu);
    EXPECT_EQ(dc.GetCurrentBrushColor(), 0xFF0000u);
    dc.Rectangle(0, 0, 64, 64);
    canvas.Finish();
    // Horizontal hatch: whole rows of blue lines, the rows between red.
    int blueRows = 0;
    int redRows = 0;
    for (int y = 4; y < 60; ++y) {
        bool allBlue = true;
        bool allRed = true;
        for (int x = 4; x < 60; ++x) {
            allBlue = allBlue && VxColorNear(canvas.Pixel(x, y), 0xFF0000, 2);
            allRed = allRed && VxColorNear(canvas.Pixel(x, y), 0x0000FF, 2);
        }
        blueRows += allBlue ? 1 : 0;
        redRows += allRed ? 1 : 0;
    }
    EXPECT_GE(blueRows, 5);
    EXPECT_GE(redRows, 5 * 6);
    EXPECT_EQ(blueRows + redRows, 56);
}

TEST(CVxDCPrinting, PenWidthKeepsItsPhysicalSizeUnlessAskedNotTo)
{
    CVxTestCanvas canvas(50, 50, false, 600);
    CVxDC& dc = canvas.dc();
    EXPECT_EQ(dc.GetDPI(), 600);
    {
        CVxPrintingScope printing;
        dc.SelectPen(CVxDC::penSolid, 2, 0);
        EXPECT_EQ(canvas.painter().pen().width(), 10);
        dc.SelectPen(CVxDC::penSolid | CVxDC::penKeepWidth, 2, 0);
        EXPECT_EQ(canvas.painter().pen().width(), 2);
        dc.SelectPen(CVxDC::penSolid, 0, 0);
        EXPECT_EQ(canvas.painter().pen().width(), 5);
    }
    dc.SelectPen(CVxDC::penSolid, 2, 0);
    EXPECT_EQ(canvas.painter().pen().width(), 2);
}

TEST(CVxDCPrinting, HatchBecomesATextureScaledToTheDevice)
{
    CVxTestCanvas canvas(300, 300, false, 600);
    CVxDC& dc = canvas.dc();
    {
        CVxPrintingScope printing;
        dc.SelectPen(CVxDC::penNull, 1, 0);
        dc.SelectBrush(CVxDC::brushHatched, 0x000000, CVxDC::hatchHorizontal);
        EXPECT_EQ(canvas.painter().brush().style(), Qt::TexturePattern);
        EXPECT_NEAR(canvas.painter().brush().transform().m11(), 600.0 / 112.0, 1e-9);
        dc.Rectangle(0, 0, 300, 300);
    }
    canvas.Finish();
    // Lines eight pattern pixels apart stand about 43 device pixels apart.
    int lineStarts = 0;
    for (int y = 1; y < 299; ++y) {
        if (canvas.Level(150, y) < 128 && canvas.Level(150, y - 1) >= 128)
            ++lineStarts;
    }
    EXPECT_GE(lineStarts, 5);
    EXPECT_LE(lineStarts, 8);
}

TEST(CVxDCMisc, NewContextDrawsOnItsOwnSurface)
{
    std::unique_ptr<CVxDC> dc(CVxDC::CreateNewDC(40, 30, true));
    ASSERT_TRUE(dc);
    EXPECT_TRUE(dc->OwnsPainter());
    EXPECT_EQ(dc->GetColorMode(), CVxDC::colorModeNormal);
    dc->SelectPen(CVxDC::penNull, 1, 0);
    dc->SelectBrush(CVxDC::brushSolid, 0x0000FF);
    dc->Rectangle(0, 0, 21, 31);
    auto* qtdc = dynamic_cast<CVxQtDC*>(dc.get());
    ASSERT_NE(qtdc, nullptr);
    CVxPicBuf picture;
    ASSERT_TRUE(qtdc->CopyToPicture(picture));
    EXPECT_EQ(picture.GetWidth(), 40);
    EXPECT_EQ(picture.GetHeight(), 30);
    unsigned char alpha = 0;
    EXPECT_EQ(picture.GetPixel(5, 15, &alpha), 0x0000FFu);
    EXPECT_EQ(alpha, 255);
    picture.GetPixel(35, 15, &alpha);
    EXPECT_EQ(alpha, 0);
}
