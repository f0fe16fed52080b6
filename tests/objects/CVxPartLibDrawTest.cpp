// The plan symbols of the standard objects and the standard library file.

#include "CVxIniFileReader.h"
#include "CVxPart.h"
#include "CVxQtDC.h"
#include "IVxReadIniClient.h"
#include "VxTestEnv.h"

#include <QImage>
#include <QPainter>
#include <QTransform>

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

// The numbers that have a symbol of their own; every other number falls back
// to the outline of its shape.
std::set<int> NumbersWithPlanSymbol()
{
    static const int ranges[][2] = {{20, 35},   {39, 61},   {63, 75},   {77, 77},   {80, 83},   {85, 89},
                                    {91, 112},  {114, 117}, {120, 121}, {123, 124}, {126, 126}, {130, 137},
                                    {139, 171}, {173, 173}, {177, 178}, {182, 184}, {186, 186}, {189, 220},
                                    {222, 234}, {243, 275}, {277, 277}, {280, 286}, {288, 299}, {399, 399},
                                    {801, 801}, {803, 816}, {818, 820}};
    std::set<int> numbers;
    for (const auto& r : ranges)
        for (int id = r[0]; id <= r[1]; ++id)
            numbers.insert(id);
    return numbers;
}

constexpr int kImage = 300;

CVxPart MakeSymbolPart(int libId, double width, double depth)
{
    CVxPart part;
    part.type = ptLibraryObject;
    part.libObjID = libId;
    part.width = width;
    part.height = depth;
    part.x = kImage / 2.0 - width / 2;
    part.y = kImage / 2.0 - depth / 2;
    part.lineColor = 0;
    part.SetFillColor(0xC0E0F0);
    part.InvalidateCache();
    return part;
}

// Draws as the object drawing does: the object's pen and brush first.
bool DrawSymbol(CVxQtDC& dc, CVxPart& part)
{
    dc.SelectBrush(CVxDC::brushSolid, 0xC0E0F0);
    dc.SelectPen(CVxDC::penSolid, 1, 0);
    const bool drawn = part.LibDrawPart(&dc, part.libObjID, 1, 0, 0, 1.0, 0);
    dc.SelectOldPen();
    dc.SelectOldBrush();
    return drawn;
}

// Ink: a pixel that is mostly opaque.
bool Ink(const QImage& image, int x, int y)
{
    return qAlpha(image.pixel(x, y)) > 160;
}

// Share of the ink of `a` that has no ink of `b` within `reach` pixels.
double UnmatchedInk(const QImage& a, const QImage& b, int reach)
{
    int ink = 0;
    int unmatched = 0;
    for (int y = reach; y < a.height() - reach; ++y) {
        for (int x = reach; x < a.width() - reach; ++x) {
            if (!Ink(a, x, y))
                continue;
            ++ink;
            bool found = false;
            for (int dy = -reach; dy <= reach && !found; ++dy)
                for (int dx = -reach; dx <= reach && !found; ++dx)
                    found = Ink(b, x + dx, y + dy);
            if (!found)
                ++unmatched;
        }
    }
    return ink == 0 ? 1.0 : static_cast<double>(unmatched) / ink;
}

QImage RotatedAboutCentre(const QImage& image, double degrees)
{
    QImage out(image.size(), QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    QPainter painter(&out);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QTransform turn;
    turn.translate(kImage / 2.0, kImage / 2.0);
    turn.rotate(degrees);
    turn.translate(-kImage / 2.0, -kImage / 2.0);
    painter.setTransform(turn);
    painter.drawImage(0, 0, image);
    painter.end();
    return out;
}

TEST(CVxPartLibDrawTest, EveryNumberDrawsOrDeclinesAndLeavesTheStacksAsFound)
{
    const std::set<int> withSymbol = NumbersWithPlanSymbol();
    for (int id = 0; id <= 830; ++id) {
        CVxQtDC dc(kImage, kImage, true);
        CVxPart part = MakeSymbolPart(id, 120, 80);
        const int pens = dc.GetPenStackSize();
        const int brushes = dc.GetBrushStackSize();
        const bool drawn = part.LibDrawPart(&dc, id, 1, 0, 0, 1.0, 0);
        EXPECT_EQ(drawn, withSymbol.count(id) == 1) << "number " << id;
        EXPECT_EQ(dc.GetPenStackSize(), pens) << "number " << id;
        EXPECT_EQ(dc.GetBrushStackSize(), brushes) << "number " << id;
    }
}

TEST(CVxPartLibDrawTest, SymbolsStayInsideTheirObjectAndShowSomething)
{
    // Door-like things swing out of their opening; all else keeps to its
    // rectangle, give or take the pen and the smoothing.
    static const std::set<int> swinging = {195, 196, 197, 198, 199, 200, 246, 263,
                                           264, 265, 266, 280, 281, 282, 283, 192};
    for (int id : NumbersWithPlanSymbol()) {
        CVxQtDC dc(kImage, kImage, true);
        CVxPart part = MakeSymbolPart(id, 120, 80);
        ASSERT_TRUE(DrawSymbol(dc, part)) << "number " << id;
        const QImage& image = *dc.GetImage();
        int inside = 0;
        int outside = 0;
        for (int y = 0; y < kImage; ++y) {
            for (int x = 0; x < kImage; ++x) {
                if (!Ink(image, x, y))
                    continue;
                const bool in = x >= 88 && x <= 212 && y >= 108 && y <= 192;
                (in ? inside : outside)++;
            }
        }
        EXPECT_GT(inside, 100) << "number " << id << " draws almost nothing";
        if (swinging.count(id) == 0) {
            EXPECT_EQ(outside, 0) << "number " << id << " draws beyond its object";
        }
    }
}

TEST(CVxPartLibDrawTest, ASymbolAt33DegreesIsTheRotationOfTheOneAt0)
{
    for (int id : {21, 23, 28, 48, 56, 63, 65, 70, 85, 87, 96, 105, 203, 213, 277, 298}) {
        CVxQtDC straight(kImage, kImage, true);
        CVxPart part = MakeSymbolPart(id, 160, 100);
        ASSERT_TRUE(DrawSymbol(straight, part)) << "number " << id;

        CVxQtDC turned(kImage, kImage, true);
        part.RotateAroundCenter(33);
        ASSERT_TRUE(DrawSymbol(turned, part)) << "number " << id;

        const QImage expected = RotatedAboutCentre(*straight.GetImage(), 33);
        const QImage& actual = *turned.GetImage();
        // Rounding to whole pixels and antialiased edges move ink by a
        // pixel or so; a wrong part of a symbol moves it by far more.
        EXPECT_LT(UnmatchedInk(actual, expected, 2), 0.02) << "number " << id;
        EXPECT_LT(UnmatchedInk(expected, actual, 2), 0.02) << "number " << id;
    }
}

TEST(CVxPartLibDrawTest, AnAxisAlignedRectangleWouldNotTurn)
{
    // The comparison above must see a symbol that ignores rotation.
    CVxQtDC straight(kImage, kImage, true);
    straight.SelectBrush(CVxDC::brushSolid, 0xC0E0F0);
    straight.Rectangle(70, 100, 230, 200);
    CVxQtDC turned(kImage, kImage, true);
    turned.SelectBrush(CVxDC::brushSolid, 0xC0E0F0);
    turned.Rectangle(70, 100, 230, 200);
    const QImage expected = RotatedAboutCentre(*straight.GetImage(), 33);
    EXPECT_GT(UnmatchedInk(*turned.GetImage(), expected, 2), 0.1);
}

TEST(CVxPartLibDrawTest, TheFrontColourShowsOnlyWhenTheFrontDiffers)
{
    auto frontPixels = [](bool enable, int flags, bool grey) {
        CVxQtDC dc(kImage, kImage, true);
        if (grey)
            dc.SetColorMode(CVxDC::colorModeGrey);
        CVxPart part = MakeSymbolPart(21, 160, 100);
        part.frontColorEnable = enable;
        part.appearFront.SetColor(0x0000FF);
        dc.SelectBrush(CVxDC::brushSolid, 0xFFFFFF);
        dc.SelectPen(CVxDC::penSolid, 1, 0);
        part.LibDrawPart(&dc, 21, 1, 0, 0, 1.0, flags);
        int red = 0;
        const QImage& image = *dc.GetImage();
        for (int y = 0; y < kImage; ++y)
            for (int x = 0; x < kImage; ++x)
                red += qRed(image.pixel(x, y)) > 200 && qGreen(image.pixel(x, y)) < 60 ? 1 : 0;
        return red;
    };
    EXPECT_GT(frontPixels(true, 0, false), 300);
    EXPECT_EQ(frontPixels(false, 0, false), 0);
    EXPECT_EQ(frontPixels(true, 128, true), 0);
}

// The keys of one section as written.
class CVxKeyCollector : public IVxReadIniClient
{
public:
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader*) override
    {
        keys[std::string(key.c_str())] = value;
    }
    std::map<std::string, CVxStringW> keys;
};

TEST(CVxPartLibDrawTest, EveryCatalogueEntryReadsBackWithItsNameAndSize)
{
    const CVxStringW path = CVxStringW(QString::fromUtf8(PLAVENO_SOURCE_DIR)) + L"/data/Library.pvl";
    CVxIniFileReader raw(path, 65001);
    CVxIniFileReader parts(path, 65001);
    ASSERT_TRUE(raw.IsOpened());
    ASSERT_TRUE(parts.IsOpened());
    parts.SetReaderKind(CVxIniFileReader::VX_READER_STANDARD_LIBRARY);
    raw.Start();
    parts.Start();
    ASSERT_EQ(raw.GetSectionName(), CVxStringA("LibSetup"));
    const std::set<int> withSymbol = NumbersWithPlanSymbol();
    int count = 0;
    std::set<std::string> captions;
    while (!raw.GetSectionName().IsEmpty()) {
        const CVxStringA section = raw.GetSectionName();
        CVxKeyCollector written;
        raw.ReadSection(&written);
        if (!section.StartsWith("Part")) {
            parts.ReadSection(nullptr);
            continue;
        }
        CVxPart part;
        ASSERT_TRUE(part.LoadFromSection(&parts)) << section.c_str();
        ++count;
        const std::string where = section.c_str();
        EXPECT_EQ(part.caption, written.keys["Caption"]) << where;
        EXPECT_FALSE(part.caption.IsEmpty()) << where;
        captions.insert(std::string(part.caption.ToQString().toUtf8().constData()));
        EXPECT_DOUBLE_EQ(part.width, CVxIniFileReader::ToDouble(written.keys["Width"], -1)) << where;
        EXPECT_DOUBLE_EQ(part.height, CVxIniFileReader::ToDouble(written.keys["Height"], -1)) << where;
        EXPECT_DOUBLE_EQ(part.zHeight, CVxIniFileReader::ToDouble(written.keys["ZHeight"], -1)) << where;
        EXPECT_GT(part.zHeight, 0) << where;
        // On a standard page, never only on the user's.
        EXPECT_NE(part.libraryMask & ~1u, 0u) << where;
        if (part.type == ptLibraryObject && withSymbol.count(part.libObjID) == 1) {
            CVxQtDC dc(64, 64, false);
            EXPECT_TRUE(part.LibDrawPart(&dc, part.libObjID, 1, 0, 0, 0.1, 0)) << where;
        }
        // Whatever opens a wall hangs in one.
        if (CVxPart::IsDoorLike(part.type, part.libObjID) || part.type == ptWindow) {
            EXPECT_TRUE(part.snapToWall) << where;
        }
    }
    EXPECT_GE(count, 150);
    EXPECT_EQ(captions.size(), static_cast<size_t>(count)) << "two objects share a name";
}

} // namespace
