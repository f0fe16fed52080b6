// Kept pictures of small drawings must give the pixels that painting gives,
// wherever on the surface they are put down, and must refuse what they can't
// reproduce.

#include "CVxSpriteCache.h"
#include "CVxRecordingDC.h"
#include "VxDrawTestUtil.h"

#include <algorithm>
#include <cstdlib>

namespace {

// A little of everything symbols draw: outlines over fills, curves through
// a path, a translucent fill, dashes, an arc, a thick line and a pixel.
void Symbol(CVxDC& dc, int x, int y)
{
    dc.SelectPen(CVxDC::penSolid, 1, 0x202020);
    dc.SelectBrush(CVxDC::brushSolid, 0x80C0E0);
    const VxPOINT outline[4] = {{x, y}, {x + 37, y + 9}, {x + 30, y + 41}, {x - 4, y + 30}};
    dc.Polygon(outline, 4);
    dc.Rectangle(x + 5, y + 5, x + 15, y + 12);
    dc.SelectBrush(CVxDC::brushSolid, 0x0000FF, 0, 120);
    dc.BeginPath();
    const VxPOINT curve[7] = {{x + 8, y + 20},  {x + 8, y + 12}, {x + 24, y + 12}, {x + 24, y + 20},
                              {x + 24, y + 28}, {x + 8, y + 28}, {x + 8, y + 20}};
    dc.PolyBezier(curve, 7);
    dc.EndPath();
    dc.StrokeAndFillPath();
    dc.Ellipse(x + 20, y + 22, x + 33, y + 33);
    dc.SelectOldBrush();
    dc.SelectPen(CVxDC::penDash, 1, 0x00A000);
    dc.Line(x, y + 36, x + 36, y + 44);
    dc.Arc(x + 2, y + 2, x + 20, y + 20, 0, 0, 0, 0, 30, 200);
    dc.SelectOldPen();
    dc.SelectPen(CVxDC::penSolid, 3, 0x000080);
    dc.Line(x + 30, y, x + 40, y + 20);
    dc.SelectOldPen();
    dc.SetPixelV(x + 2, y + 2, 0xFF00FF);
    dc.SelectOldBrush();
    dc.SelectOldPen();
}

int MaxDifference(const QImage& a, const QImage& b)
{
    int worst = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QColor p = a.pixelColor(x, y);
            const QColor q = b.pixelColor(x, y);
            worst = std::max({worst, std::abs(p.red() - q.red()), std::abs(p.green() - q.green()),
                              std::abs(p.blue() - q.blue())});
        }
    }
    return worst;
}

} // namespace

TEST(CVxSpriteCache, KeptPicturesGiveThePaintedPixelsAnywhere)
{
    CVxTestCanvas painted(160, 120);
    Symbol(painted.dc(), 10, 10);
    Symbol(painted.dc(), 93, 61);

    CVxSpriteCache cache;
    CVxTestCanvas kept(160, 120);
    EXPECT_TRUE(cache.Draw(kept.dc(), [](CVxDC& dc) { Symbol(dc, 10, 10); }));
    EXPECT_TRUE(cache.Draw(kept.dc(), [](CVxDC& dc) { Symbol(dc, 93, 61); }));
    EXPECT_EQ(cache.GetCount(), 1) << "the second symbol is the first one moved";
    // The drawing's own pens and brushes are gone again.
    EXPECT_EQ(kept.dc().GetPenStackSize(), 0);
    EXPECT_LE(MaxDifference(painted.Finish(), kept.Finish()), 1);

    // Without smoothing the kept picture is made without it too.
    CVxTestCanvas jagged(80, 80);
    CVxTestCanvas jaggedKept(80, 80);
    jagged.dc().EnableSmoothing(false);
    jaggedKept.dc().EnableSmoothing(false);
    Symbol(jagged.dc(), 20, 20);
    ASSERT_TRUE(cache.Draw(jaggedKept.dc(), [](CVxDC& dc) { Symbol(dc, 20, 20); }));
    EXPECT_EQ(cache.GetCount(), 1) << "a drawing seen once gets no picture yet";
    ASSERT_TRUE(cache.Draw(jaggedKept.dc(), [](CVxDC& dc) { Symbol(dc, 20, 20); }));
    EXPECT_EQ(cache.GetCount(), 2);
    Symbol(jagged.dc(), 20, 20);
    EXPECT_EQ(MaxDifference(jagged.Finish(), jaggedKept.Finish()), 0);
}

TEST(CVxSpriteCache, RefusesWhatARecordCannotHold)
{
    CVxSpriteCache cache;
    CVxTestCanvas canvas(100, 100);
    CVxDC& target = canvas.dc();
    const auto refused = [&](const std::function<void(CVxDC&)>& draw) {
        return !cache.Draw(canvas.dc(), draw);
    };
    EXPECT_TRUE(refused([](CVxDC& dc) {
        dc.SelectPen(CVxDC::penSolid, 1, 0);
        dc.TextOut(L"Chair", 10, 10, CVxDC::taTop, 0);
        dc.SelectOldPen();
    }));
    EXPECT_TRUE(refused([](CVxDC& dc) {
        dc.SelectPen(CVxDC::penSolid, 1, 0);
        dc.SelectHatchBrush(0x808080, 4, 255, 0xFFFFFFFF);
        dc.Rectangle(10, 10, 30, 30);
        dc.SelectOldBrush();
        dc.SelectOldPen();
    }));
    // A shape in a pen chosen before the drawing began.
    target.SelectPen(CVxDC::penSolid, 1, 0);
    target.SelectBrush(CVxDC::brushSolid, 0);
    EXPECT_TRUE(refused([](CVxDC& dc) { dc.Rectangle(10, 10, 30, 30); }));
    // Pens left selected would be missing from the target afterwards.
    EXPECT_TRUE(refused([](CVxDC& dc) { dc.SelectPen(CVxDC::penSolid, 1, 0); }));
    target.SelectOldBrush();
    target.SelectOldPen();
    EXPECT_EQ(cache.GetCount(), 0);
    EXPECT_TRUE(canvas.Finish() == CVxTestCanvas(100, 100).Finish()) << "refusing paints nothing";

    // Drawings larger than a kept picture may be are played back directly.
    CVxTestCanvas large(400, 300);
    CVxTestCanvas largePainted(400, 300);
    const auto big = [](CVxDC& dc) {
        dc.SelectPen(CVxDC::penSolid, 2, 0x203040);
        dc.SelectBrush(CVxDC::brushSolid, 0xC0E0C0);
        dc.Ellipse(10, 10, 390, 290);
        dc.SelectOldBrush();
        dc.SelectOldPen();
    };
    EXPECT_TRUE(cache.Draw(large.dc(), big));
    big(largePainted.dc());
    EXPECT_EQ(cache.GetCount(), 0);
    EXPECT_EQ(MaxDifference(large.Finish(), largePainted.Finish()), 0);
}
