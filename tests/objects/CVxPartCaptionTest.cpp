// Captions: the variables they may hold, and dimension line figures that
// stay readable whichever way the line was drawn.

#include "CVxAppCore.h"
#include "CVxOptions.h"
#include "CVxPart.h"
#include "CVxQtDC.h"
#include "CVxUnits.h"

#include <QImage>

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

CVxPart MakePart(int type, double w, double h)
{
    CVxPart part;
    part.type = static_cast<uint16_t>(type);
    part.inUse = true;
    part.x = 0;
    part.y = 0;
    part.width = w;
    part.height = h;
    part.zHeight = 80;
    return part;
}

// A dimension line from a to b, laid as the measuring tool lays one: its
// length along the width, a frame 10 deep centred on the line.
CVxPart MeasLine(double ax, double ay, double bx, double by, const wchar_t* caption)
{
    const double degrees = std::atan2(by - ay, bx - ax) * 180 / kPi;
    const double r = degrees * kPi / 180;
    CVxPart line = MakePart(ptMeasLine, std::hypot(bx - ax, by - ay), 10);
    line.rotation = degrees < 0 ? degrees + 360 : degrees;
    line.x = ax + std::sin(r) * 5;
    line.y = ay - std::cos(r) * 5;
    line.caption = caption;
    line.lineColor = 0;
    line.textColor = 0;
    return line;
}

QImage Render(CVxPart& part)
{
    CVxQtDC dc(400, 300, true);
    part.InvalidateCache();
    part.DrawToHdc(&dc, nullptr, 1, 0, 0, 1.0, 0, 0, 1.0);
    return dc.GetImage()->convertToFormat(QImage::Format_ARGB32);
}

struct SInk
{
    int count = 0;
    double x = 0;
    double y = 0;
};

// The pixels that the caption adds to the line alone, and their centre.
SInk TextInk(CVxPart line)
{
    const QImage with = Render(line);
    line.caption.Empty();
    const QImage without = Render(line);
    SInk ink;
    for (int y = 0; y < with.height(); ++y)
        for (int x = 0; x < with.width(); ++x)
            if (qAlpha(with.pixel(x, y)) > 128 && qAlpha(without.pixel(x, y)) <= 128) {
                ++ink.count;
                ink.x += x;
                ink.y += y;
            }
    if (ink.count > 0) {
        ink.x /= ink.count;
        ink.y /= ink.count;
    }
    return ink;
}

} // namespace

TEST(CaptionVars, AreaFollowsTheShapeInTheStatisticalUnit)
{
    // 100 by 100 cm: a circle covers pi/4 of it, 0.785 m², shown to two
    // decimals below 1 m².
    CVxPart circle = MakePart(ptCircle, 100, 100);
    EXPECT_EQ(circle.ProcessCaptionVars(L"A=%AREA%", CVxUnits::UNIT_CM, 1.0), CVxStringW(L"A=0.79 m\u00B2"));
    CVxPart square = MakePart(ptRectangle, 100, 100);
    EXPECT_EQ(square.ProcessCaptionVars(L"%AREA%", CVxUnits::UNIT_CM, 1.0), CVxStringW(L"1 m\u00B2"));
    CVxPart triangle = MakePart(ptTriangle, 400, 100);
    EXPECT_EQ(triangle.ProcessCaptionVars(L"%AREA%", CVxUnits::UNIT_CM, 1.0), CVxStringW(L"2 m\u00B2"));
}

TEST(CaptionVars, SizesLengthsAndTheAutomaticFigure)
{
    CVxPart box = MakePart(ptRectangle, 120, 45.5);
    EXPECT_EQ(box.ProcessCaptionVars(L"%WIDTH% x %LENGTH% x %HEIGHT%", CVxUnits::UNIT_CM, 1.0),
              CVxStringW(L"120 x 45.5 x 80"));
    // The scale multiplies the lengths: a plan drawn at a tenth.
    EXPECT_EQ(box.ProcessCaptionVars(L"%WIDTH%", CVxUnits::UNIT_CM, 10.0), CVxStringW(L"1200"));

    CVxPart line = MeasLine(0, 0, 250, 0, L"x: ~");
    EXPECT_EQ(line.ProcessCaptionVars(line.caption, CVxUnits::UNIT_CM, 1.0), CVxStringW(L"x: 250"));
    EXPECT_EQ(line.ProcessCaptionVars(L"%LENGTH_M% m", CVxUnits::UNIT_CM, 1.0), CVxStringW(L"2.5 m"));
    EXPECT_EQ(line.ProcessCaptionVars(L"%LENGTH_INCH%", CVxUnits::UNIT_CM, 1.0), CVxStringW(L"98.43"));
    // A rectangle has no "~" figure: the text stays as typed.
    EXPECT_EQ(box.ProcessCaptionVars(L"~", CVxUnits::UNIT_CM, 1.0), CVxStringW(L"~"));

    CVxPart slope = MakePart(ptAngle, 100, 100);
    slope.angle = 45;
    EXPECT_EQ(slope.ProcessCaptionVars(L"%SLOPE%", CVxUnits::UNIT_CM, 1.0), CVxStringW(L"100 %"));
    slope.angle = 135; // folded to 45
    EXPECT_EQ(slope.ProcessCaptionVars(L"%SLOPE%", CVxUnits::UNIT_CM, 1.0), CVxStringW(L"100 %"));
}

TEST(CaptionVars, DialogsOfferWhatTheTypeCanShow)
{
    const auto has = [](int type, const wchar_t* var) {
        for (const CVxStringW& v : CVxPart::GetPossibleCaptionVars(type, 0))
            if (v == CVxStringW(var))
                return true;
        return false;
    };
    EXPECT_TRUE(has(ptCircle, L"%AREA%"));
    EXPECT_TRUE(has(ptPolygon, L"%AREA%"));
    EXPECT_FALSE(has(ptLabel, L"%AREA%"));
    EXPECT_TRUE(has(ptLabel, L"%DATE%"));
    EXPECT_TRUE(has(ptRectangle, L"%HEIGHT%"));
    EXPECT_TRUE(has(ptMeasLine, L"%LENGTH_YD%"));
    EXPECT_TRUE(has(ptAngle, L"%GRADIENT%"));
    EXPECT_FALSE(has(ptMeasLine, L"%WIDTH%"));
}

TEST(MeasLineCaption, ReadsUprightWhicheverWayTheLineWasDrawn)
{
    ASSERT_TRUE(VX_GetOptions()->m_rotatedMeasLineCaption);
    // The same segment, drawn rightwards (rotation 20) and leftwards
    // (rotation 200). "F" has no turned twin, so a text upside down would
    // stand on the other side of the line.
    const double ax = 100, ay = 120;
    const double bx = ax + 200 * std::cos(20 * kPi / 180);
    const double by = ay + 200 * std::sin(20 * kPi / 180);
    const CVxPart forwards = MeasLine(ax, ay, bx, by, L"FFFF");
    const CVxPart backwards = MeasLine(bx, by, ax, ay, L"FFFF");
    ASSERT_NEAR(backwards.rotation, 200, 1e-9);

    const SInk a = TextInk(forwards);
    const SInk b = TextInk(backwards);
    ASSERT_GT(a.count, 20);
    ASSERT_GT(b.count, 20);
    // Above the line on the screen: on the side of the normal (sin, -cos)
    // of the rightwards direction.
    const double nx = std::sin(20 * kPi / 180);
    const double ny = -std::cos(20 * kPi / 180);
    const double mx = (ax + bx) / 2;
    const double my = (ay + by) / 2;
    EXPECT_GT((b.x - mx) * nx + (b.y - my) * ny, 2.0);
    // And the same text in the same place as the line drawn rightwards.
    EXPECT_NEAR(a.x, b.x, 3.0);
    EXPECT_NEAR(a.y, b.y, 3.0);
    EXPECT_NEAR(a.count, b.count, a.count / 5);
}

TEST(LabelCaption, StaysFindableFarOut)
{
    CVxPart label = MakePart(ptLabel, 300, 40);
    label.caption = L"Hall";
    label.textColor = 0;
    label.CreateFont()->m_size = 11;
    // At a hundredth of the base zoom the font would be 0.11 points; it
    // stays at 4, so some text is still drawn.
    CVxQtDC dc(400, 100, true);
    label.DrawLabelCaption(&dc, CVxUnits::UNIT_CM, 100, 50, 0.01, 1.0);
    const QImage image = dc.GetImage()->convertToFormat(QImage::Format_ARGB32);
    int ink = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 0)
                ++ink;
    // Four points of "Hall" cover a few dozen pixels; the font of one point
    // that the zoom alone would give, a handful.
    EXPECT_GT(ink, 15);
}
