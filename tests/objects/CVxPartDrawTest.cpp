#include "CVxFloor.h"
#include "CVxPart.h"
#include "CVxPartPayload.h"
#include "CVxQtDC.h"
#include "CVxRoomWalls.h"
#include "CVxWall.h"
#include "CVxWindowSubTypes.h"
#include "VxGMDraw.h"
#include "VxPointInRect.h"

#include <QImage>
#include <QTransform>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <memory>

namespace {

constexpr unsigned kFill = 0x30C0F0; // orange: R F0, G C0, B 30

CVxPart MakePart(int type, double x, double y, double w, double h)
{
    CVxPart part;
    part.type = static_cast<uint16_t>(type);
    part.inUse = true;
    part.x = x;
    part.y = y;
    part.width = w;
    part.height = h;
    part.zHeight = h;
    part.lineColor = 0;
    part.textColor = 0;
    part.SetFillColor(kFill);
    part.fillStyle = 0;
    part.lineStyle = 0;
    return part;
}

QImage Render(CVxPart& part, int size = 300, double zoom = 1.0)
{
    CVxQtDC dc(size, size, true);
    part.InvalidateCache();
    part.DrawToHdc(&dc, nullptr, 1, 0, 0, zoom, 0, 0, 1.0);
    return dc.GetImage()->convertToFormat(QImage::Format_ARGB32);
}

bool Near(QRgb pixel, unsigned colour, int tolerance = 3)
{
    return std::abs(qRed(pixel) - static_cast<int>(VX_GetRValue(colour))) <= tolerance &&
           std::abs(qGreen(pixel) - static_cast<int>(VX_GetGValue(colour))) <= tolerance &&
           std::abs(qBlue(pixel) - static_cast<int>(VX_GetBValue(colour))) <= tolerance;
}

bool Inked(const QImage& image, int x, int y)
{
    return image.valid(x, y) && qAlpha(image.pixel(x, y)) > 128;
}

bool Dark(const QImage& image, int x, int y)
{
    return Inked(image, x, y) && qGray(image.pixel(x, y)) < 100;
}

// Counts pixels whose coverage differs between the rotated drawing and the
// straight one turned by QTransform about the pivot, leaving out the
// antialiased seams: only places that are clearly inside or outside in the
// straight drawing count.
int RotationMismatches(const QImage& straight, const QImage& turned, double degrees, QPointF pivot)
{
    QTransform back;
    back.translate(pivot.x(), pivot.y());
    back.rotate(-degrees);
    back.translate(-pivot.x(), -pivot.y());
    int mismatches = 0;
    for (int y = 0; y < turned.height(); ++y) {
        for (int x = 0; x < turned.width(); ++x) {
            const QPointF p = back.map(QPointF(x + 0.5, y + 0.5));
            const int sx = static_cast<int>(std::floor(p.x()));
            const int sy = static_cast<int>(std::floor(p.y()));
            const bool inside = Inked(straight, sx, sy);
            bool clear = true;
            for (int dy = -2; dy <= 2 && clear; ++dy)
                for (int dx = -2; dx <= 2 && clear; ++dx)
                    clear = Inked(straight, sx + dx, sy + dy) == inside;
            if (clear && Inked(turned, x, y) != inside)
                ++mismatches;
        }
    }
    return mismatches;
}

} // namespace

TEST(PointInRect, IntegerFractionsInterpolateTheQuadrilateral)
{
    // A skewed quadrilateral: P0 (10,20), P1 (110,30), P2 (100,90), P3 (0,80).
    const VxPOINT c[4] = {{10, 20}, {110, 30}, {100, 90}, {0, 80}};
    VxPOINT p;
    GetPointInRect(p, c, 1, 1, 1, 1);
    EXPECT_EQ(10, p.x);
    EXPECT_EQ(20, p.y);
    GetPointInRect(p, c, 0, 1, 0, 1);
    EXPECT_EQ(100, p.x);
    EXPECT_EQ(90, p.y);
    GetPointInRectL(p, c, 1, 1, 0, 1);
    EXPECT_EQ(110, p.x);
    EXPECT_EQ(30, p.y);
    GetPointInRectL(p, c, 0, 1, 1, 1);
    EXPECT_EQ(0, p.x);
    EXPECT_EQ(80, p.y);
    // The middle: (10 + 110 + 100 + 0) / 4 = 55, (20 + 30 + 90 + 80) / 4 = 55.
    GetPointInRectL(p, c, 1, 2, 1, 2);
    EXPECT_EQ(55, p.x);
    EXPECT_EQ(55, p.y);
    // A divisor of 0 counts as 1 instead of dividing by zero.
    GetPointInRect(p, c, 1, 0, 1, 0);
    EXPECT_EQ(10, p.x);
    EXPECT_EQ(20, p.y);

    // Halves round away from zero: 0 and 1 at a half give 1, -1 and 0 give -1.
    const VxPOINT unit[4] = {{0, 0}, {1, 0}, {1, 0}, {0, 0}};
    GetPointInRectL(p, unit, 1, 2, 0, 1);
    EXPECT_EQ(1, p.x);
    const VxPOINT negative[4] = {{-1, 0}, {0, 0}, {0, 0}, {-1, 0}};
    GetPointInRectL(p, negative, 1, 2, 0, 1);
    EXPECT_EQ(-1, p.x);

    VxPOINT a, b;
    GetPointInRectLM(a, b, c, 1, 4, 1, 2);
    VxPOINT expectMirror;
    GetPointInRectL(expectMirror, c, 3, 4, 1, 2);
    EXPECT_EQ(expectMirror.x, b.x);
    EXPECT_EQ(expectMirror.y, b.y);
    GetPointInRectLMX(a, b, c, 1, 4, 1, 4);
    GetPointInRectL(expectMirror, c, 1, 4, 3, 4);
    EXPECT_EQ(expectMirror.x, b.x);
    EXPECT_EQ(expectMirror.y, b.y);

    // Sub-rectangle corners in the order (x1,y1), (x1,y2), (x2,y2), (x2,y1).
    VxPOINT r[4], m[4];
    GetPointInRectLRcM(r, m, c, 0, 1, 4, 0, 1, 1);
    EXPECT_EQ(c[0].x, r[0].x);
    EXPECT_EQ(c[3].x, r[1].x);
    EXPECT_EQ(c[1].x, m[0].x);
    EXPECT_EQ(c[2].y, m[1].y);
}

TEST(PointInRect, DoubleFractionsMayLieOutsideTheObject)
{
    const CVxDPoint c[4] = {CVxDPoint(0, 0), CVxDPoint(100, 0), CVxDPoint(100, 10), CVxDPoint(0, 10)};
    CVxDPoint p;
    GetPointInRectL(p, c, -0.1, 2.0);
    EXPECT_DOUBLE_EQ(-10, p.x);
    EXPECT_DOUBLE_EQ(20, p.y);
    VxPOINT q;
    GetPointInRectL(q, c, 0.255, 0.5);
    EXPECT_EQ(26, q.x);
    EXPECT_EQ(5, q.y);
    VxPOINT r[4];
    GetPointInRectLRc(r, c, 0.25, 0.33, 0.75, 0.67);
    EXPECT_EQ(25, r[0].x);
    EXPECT_EQ(3, r[0].y);
    EXPECT_EQ(7, r[1].y);
    EXPECT_EQ(75, r[2].x);
}

TEST(PartDraw, TransparencyDimsTheFillButNeverHidesIt)
{
    CVxPart box = MakePart(ptRectangle, 50, 50, 100, 60);
    box.appearFill.SetTransparency(100);
    const QImage faint = Render(box);
    EXPECT_EQ(76, qAlpha(faint.pixel(100, 80)));
    // The outline keeps its own opacity.
    EXPECT_EQ(255, qAlpha(faint.pixel(50, 80)));

    box.appearFill.SetTransparency(0);
    const QImage solid = Render(box);
    EXPECT_EQ(255, qAlpha(solid.pixel(100, 80)));
    EXPECT_TRUE(Near(solid.pixel(100, 80), kFill));
}

TEST(PartDraw, TiltedBoxShowsItsFacesByTheTilt)
{
    const unsigned shade = GMCombineColors(kFill, 0x808080, 0.2);
    auto shadedRows = [&](const QImage& image, int from, int to) {
        int rows = 0;
        for (int y = from; y < to; ++y) {
            bool found = false;
            for (int x = 60; x < 140 && !found; ++x)
                found = Near(image.pixel(x, y), shade, 2) && !Near(image.pixel(x, y), kFill, 2);
            rows += found ? 1 : 0;
        }
        return rows;
    };

    // On its front: the plan shows only the front, shaded over the whole depth.
    CVxPart box = MakePart(ptRectangle, 50, 50, 100, 40);
    box.zHeight = 80;
    box.rotation3D = 90;
    const QImage front = Render(box);
    EXPECT_EQ(76, shadedRows(front, 53, 129));
    EXPECT_FALSE(Inked(front, 100, 135));

    // Half tilted: the top stays plain, the front below it is shaded.
    box.rotation3D = 45;
    const QImage half = Render(box);
    const int split = 50 + static_cast<int>(std::lround(40 * std::sqrt(0.5)));
    EXPECT_EQ(0, shadedRows(half, 53, split - 2));
    EXPECT_GT(shadedRows(half, split + 2, split + 50), 44);
}

TEST(PartDraw, ShapesTurnWithTheObjectExactly)
{
    for (int type : {ptHexagon, ptArrow, ptOctagon, ptEntrTriangle, ptEllipse}) {
        CVxPart part = MakePart(type, 150, 150, 90, 120);
        const QImage straight = Render(part);
        part.rotation = 33;
        const QImage turned = Render(part);
        EXPECT_LE(RotationMismatches(straight, turned, 33, QPointF(150, 150)), 3) << "type " << type;
    }
}

TEST(PartDraw, EmptyLabelIsFoundOnScreenButNotPrinted)
{
    CVxPart label = MakePart(ptLabel, 40, 40, 120, 50);
    label.SetFillColor(VX_ColorSwitchOff(0xFFFFFF));
    const QImage screen = Render(label);
    int dark = 0;
    for (int x = 40; x < 160; ++x)
        dark += Dark(screen, x, 40) ? 1 : 0;
    EXPECT_GT(dark, 20);
    EXPECT_LT(dark, 110); // dotted, not solid

    CVxDC::SetPrinting(true);
    const QImage paper = Render(label);
    CVxDC::SetPrinting(false);
    int inked = 0;
    for (int y = 0; y < paper.height(); ++y)
        for (int x = 0; x < paper.width(); ++x)
            inked += Inked(paper, x, y) ? 1 : 0;
    EXPECT_EQ(0, inked);

    // A cell of a table has no frame of its own.
    label.appTag = CVxPart::appTagTableCell;
    const QImage cell = Render(label);
    EXPECT_FALSE(Inked(cell, 100, 40));
}

TEST(PartDraw, DoorSwingStaysInItsSquareFrame)
{
    // The plan depth of a door is its width: a square from (50,50) to
    // (150,150), hinge at P3 (50,150).
    CVxPart door = MakePart(ptDoor, 50, 50, 100, 3);
    door.SetFillColor(VX_ColorSwitchOff(0xFFFFFF));
    const QImage image = Render(door);
    int outside = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (Inked(image, x, y) && (x < 48 || x > 152 || y < 48 || y > 152))
                ++outside;
    EXPECT_EQ(0, outside);
    // The swing passes the middle of its cubic near (128, 72), the open
    // leaf runs down the left side and the closed line along the bottom.
    bool onSwing = false;
    for (int dy = -2; dy <= 2; ++dy)
        for (int dx = -2; dx <= 2; ++dx)
            onSwing = onSwing || Dark(image, 128 + dx, 72 + dy);
    EXPECT_TRUE(onSwing);
    EXPECT_TRUE(Dark(image, 50, 100));
    EXPECT_TRUE(Dark(image, 100, 150));
    // Inside the swing, away from the lines, nothing is drawn.
    EXPECT_FALSE(Inked(image, 80, 120));
    EXPECT_FALSE(Inked(image, 145, 55));
}

TEST(PartDraw, WindowShowsItsPaneInTheWallGap)
{
    CVxPart window = MakePart(ptWindow, 50, 50, 120, 30);
    const QImage image = Render(window);
    EXPECT_TRUE(Near(image.pixel(110, 65), 0xFFFFF3, 0));
    EXPECT_TRUE(Near(image.pixel(110, 53), 0xFFFFFF, 0));

    // The left-hand casement opens into the room beyond the wall.
    window.libObjID = 278;
    window.rotation = 0;
    const QImage open = Render(window);
    bool leaf = false;
    // From (167.6, 110) to the near corner of the pane at (170, 70).
    for (int y = 85; y < 105; ++y)
        for (int x = 166; x <= 171; ++x)
            leaf = leaf || Dark(open, x, y);
    EXPECT_TRUE(leaf);

    // A library opening of the simple kind is only its gap.
    window.libObjID = 120;
    const QImage gap = Render(window);
    EXPECT_TRUE(Near(gap.pixel(110, 65), 0xFFFFFF, 0));
}

TEST(PartDraw, GroupMembersLandOnTheirTurnedPlaces)
{
    // A group of 100 by 100 at (200, 100), turned 90 degrees about its first
    // corner. Its member frame is 1000 wide, so a member at (500, 0) of 300
    // by 200 covers 50..80 along and 0..20 across the group.
    CVxPart group = MakePart(ptComplexObject, 200, 100, 100, 100);
    group.rotation = 90;
    CVxPart member = MakePart(ptRectangle, 500, 0, 300, 200);
    group.subParts.push_back(member);
    const QImage image = Render(group);
    // Turned by 90: along the group is +y, across it is -x.
    EXPECT_TRUE(Near(image.pixel(190, 165), kFill));
    EXPECT_FALSE(Inked(image, 265, 110));
    EXPECT_DOUBLE_EQ(0, group.subParts[0].rotation);

    CVxPart empty = MakePart(ptComplexObject, 10, 10, 100, 100);
    const QImage nothing = Render(empty);
    EXPECT_FALSE(Inked(nothing, 60, 60));
}

TEST(WindowSubTypes, ModelsStayInTheOpening)
{
    const CVxWindowSubTypes& models = CVxWindowSubTypes::GetInstance();
    auto inside = [](const CVxSubItem& item) {
        return item.x1 >= 0 && item.x1 <= 1 && item.x2 >= 0 && item.x2 <= 1 && item.y1 >= 0 && item.y1 <= 1 &&
               item.y2 >= 0 && item.y2 <= 1;
    };
    auto same = [](const std::vector<CVxSubItem>& a, const std::vector<CVxSubItem>& b) {
        if (a.size() != b.size())
            return false;
        for (size_t k = 0; k < a.size(); ++k)
            if (a[k].x1 != b[k].x1 || a[k].y1 != b[k].y1 || a[k].x2 != b[k].x2 || a[k].y2 != b[k].y2 ||
                a[k].frame != b[k].frame)
                return false;
        return true;
    };
    for (int i = 0; i < CVxWindowSubTypes::windowModelCount; ++i) {
        const std::vector<CVxSubItem>& model = models.GetWindowModel(i);
        ASSERT_GE(model.size(), 4u);
        for (int k = 0; k < 4; ++k)
            EXPECT_TRUE(model[static_cast<size_t>(k)].frame);
        for (const CVxSubItem& item : model)
            EXPECT_TRUE(inside(item)) << "window " << i;
        for (int j = 0; j < i; ++j)
            EXPECT_FALSE(same(models.GetWindowModel(j), model)) << "windows " << j << " and " << i;
    }
    EXPECT_EQ(&models.GetWindowModel(0), &models.GetWindowModel(27));
    int glazed = 0;
    for (int i = 0; i < CVxWindowSubTypes::doorModelCount; ++i) {
        std::vector<CVxGlassPaneItem> panes;
        for (const CVxSubItem& item : models.GetDoorModel(i, &panes))
            EXPECT_TRUE(inside(item)) << "door " << i;
        for (const CVxGlassPaneItem& pane : panes)
            EXPECT_TRUE(pane.left < pane.right && pane.top < pane.bottom);
        glazed += panes.empty() ? 0 : 1;
    }
    EXPECT_GE(glazed, 8);
    EXPECT_EQ(&models.GetDoorModel(0, nullptr), &models.GetDoorModel(-3, nullptr));
}

TEST(PartDraw, FrontViewOfAWindowShowsItsModel)
{
    // Model 7: two lights on a mullion at the middle of the width.
    CVxPart window = MakePart(ptWindow, 50, 50, 120, 60);
    window.subType = 7;
    CVxQtDC dc(300, 300, true);
    window.DrawSideToHdc(&dc, 0, 1, 0, 0, 1.0, 0);
    const QImage image = dc.GetImage()->convertToFormat(QImage::Format_ARGB32);
    EXPECT_TRUE(Dark(image, 110, 80) || Dark(image, 111, 80));
    EXPECT_TRUE(Dark(image, 80, 50) || Dark(image, 80, 51));
    // The opening marks of the casements meet at the jambs' middles.
    EXPECT_FALSE(Dark(image, 80, 100));
    EXPECT_EQ(0, dc.GetPenStackSize());
    EXPECT_EQ(0, dc.GetBrushStackSize());
}

TEST(PartDraw, DoorOnAWallCutsItsGapAndFrame)
{
    // A wall of 20 along y = 150, faces at 140 and 160; the door's square
    // stands on the face at 140 with its hinge at (100, 140).
    CVxFloor floor;
    CVxWall wall;
    wall.Set(0, 150, 300, 150, CVxWall::ALIGN_CENTER, 20, 250, 250, true, false);
    wall.ResetIntersections();
    wall.FinishIntersections();
    floor.m_walls.walls.assign(1, wall);
    floor.m_floorAppear.SetColor(0x00C000);
    CVxPart door = MakePart(ptDoor, 100, 60, 80, 20);
    door.snapToWall = true;
    door.snapWall = 0;
    door.snapWallSide = 0;

    auto render = [&](CVxPart& part) {
        CVxQtDC dc(300, 300, true);
        part.InvalidateCache();
        part.DrawToHdc(&dc, &floor, 1, 0, 0, 1.0, 0, 0, 1.0);
        return dc.GetImage()->convertToFormat(QImage::Format_ARGB32);
    };
    const QImage plain = render(door);
    EXPECT_TRUE(Near(plain.pixel(140, 150), 0x00C000, 0));
    EXPECT_FALSE(Inked(plain, 140, 166));
    EXPECT_FALSE(Inked(plain, 90, 150));
    EXPECT_FALSE(Inked(plain, 97, 150));

    // The frame's jambs flank the gap and stand an inch proud of both faces.
    door.doorframe = true;
    door.thickness = 5;
    const QImage framed = render(door);
    EXPECT_TRUE(Inked(framed, 97, 150));
    EXPECT_TRUE(Inked(framed, 183, 150));
    EXPECT_TRUE(Inked(framed, 97, 161));
    EXPECT_FALSE(Inked(framed, 97, 166));
}

TEST(PartDraw, OpeningsTurnedToTheRoomOpenIntoItOnEveryWall)
{
    // A room from (40, 40) to (240, 190) with walls 10 thick about their
    // lines, entered clockwise: the lower and the left wall are stored
    // reversed.
    CVxRoomWalls walls;
    const double ends[4][4] = {
        {40, 40, 240, 40}, {240, 40, 240, 190}, {240, 190, 40, 190}, {40, 190, 40, 40}};
    for (const auto& e : ends)
        walls.GetNewWall()->Set(e[0], e[1], e[2], e[3], CVxWall::ALIGN_CENTER, 10, 250, 250, true, false);
    ASSERT_EQ(walls.walls[2].angle, 0);
    ASSERT_EQ(walls.walls[3].angle, 90);

    struct SSide
    {
        double x, y;   // the middle of the wall
        double nx, ny; // towards the room
        double turn;   // a window facing the room
    };
    const SSide sides[4] = {
        {140, 40, 0, 1, 0}, {240, 115, -1, 0, 90}, {140, 190, 0, -1, 180}, {40, 115, 1, 0, 270}};

    // Dark pixels of the image beside the wall within the window's reach,
    // 8 to 14 from the wall's line on the room side (or outside with -1).
    auto darkBeside = [](const QImage& image, const SSide& side, int sense) {
        int dark = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const double across = ((x + 0.5 - side.x) * side.nx + (y + 0.5 - side.y) * side.ny) * sense;
                const double along = (x + 0.5 - side.x) * side.ny - (y + 0.5 - side.y) * side.nx;
                if (across >= 8 && across <= 14 && std::fabs(along) < 45 && Dark(image, x, y))
                    ++dark;
            }
        }
        return dark;
    };

    for (int i = 0; i < 4; ++i) {
        const SSide& side = sides[i];
        // The casement of a window and the leaf of a library door stand out
        // of the wall on the side the object faces, whichever way the wall
        // was entered.
        for (const int lib : {278, 280}) {
            for (int away = 0; away < 2; ++away) {
                CVxPart opening = MakePart(lib == 278 ? ptWindow : ptLibraryObject, 0, 0, 60, 5);
                opening.libObjID = lib;
                opening.snapToWall = true;
                opening.rotation = side.turn + 180 * away;
                opening.SnapToWall(&walls, side.x, side.y, true, false, false);
                ASSERT_EQ(opening.snapWall, i);
                const QImage image = Render(opening, 280);
                const int sense = away ? -1 : 1;
                EXPECT_GT(darkBeside(image, side, sense), 5)
                    << "wall " << i << " lib " << lib << " away " << away;
                EXPECT_EQ(darkBeside(image, side, -sense), 0)
                    << "wall " << i << " lib " << lib << " away " << away;
            }
        }

        // The plain door shape swings on the side its back is turned to:
        // facing out of the room, its square lies in the room.
        CVxPart door = MakePart(ptDoor, 0, 0, 80, 5);
        door.snapToWall = true;
        door.rotation = side.turn + 180;
        door.SnapToWall(&walls, side.x, side.y, true, false, false);
        ASSERT_EQ(door.snapWall, i);
        CVxDRect box;
        door.GetBoundingRect(&box, 1.0);
        const CVxDPoint centre = box.CenterPoint();
        EXPECT_NEAR((centre.x - side.x) * side.nx + (centre.y - side.y) * side.ny, 45, 1e-6) << "wall " << i;
    }
}

TEST(PartDraw, EnergyLabelWritesTheGradesOnItsBarsAndTurnsThem)
{
    // Seven bars of 30 rows each; the letters sit at the left end of the
    // bars, white on the grade colours.
    CVxPart label = MakePart(ptEnergyLabel, 60, 40, 150, 210);
    auto whiteIn = [](const QImage& image, const QTransform& toImage, int row) {
        int white = 0;
        for (int v = row * 30 + 5; v < row * 30 + 26; ++v)
            for (int u = 9; u < 40; ++u) {
                const QPoint p = toImage.map(QPointF(u + 0.5, v + 0.5)).toPoint();
                white += Near(image.pixel(p), 0xFFFFFF, 60) ? 1 : 0;
            }
        return white;
    };
    QTransform straight;
    straight.translate(60, 40);
    const QImage image = Render(label);
    int letters[7];
    for (int row = 0; row < 7; ++row) {
        letters[row] = whiteIn(image, straight, row);
        EXPECT_GT(letters[row], 15) << "row " << row;
    }
    // The bar itself keeps its colour past the letter.
    EXPECT_TRUE(Near(image.pixel(60 + 45, 40 + 15), 0x409600, 0));
    // "<B" marks the row and shows only its letter: no more ink than "C".
    EXPECT_LT(letters[1], letters[2] * 3 / 2);

    label.rotation = 90;
    label.x = 270;
    const QImage turned = Render(label);
    QTransform rotated;
    rotated.translate(270, 40);
    rotated.rotate(90);
    for (int row = 0; row < 7; ++row)
        EXPECT_NEAR(whiteIn(turned, rotated, row), letters[row], letters[row] / 4 + 4) << "row " << row;
}

namespace {
// A payload that draws its own plan and elevation: a green square in the
// middle of the part, or declines and lets the symbol draw.
class CSquarePayload : public CVxPartPayload
{
public:
    explicit CSquarePayload(bool draws) : m_draws(draws) {}
    CVxStringW GetClassName() const override { return L"SquarePayload"; }
    CVxPartPayload* Duplicate() const override { return new CSquarePayload(*this); }
    bool DrawPart(CVxPart*, CVxDC* dc, VxPOINT* corners, CVxDPoint*, bool) override
    {
        return Square(dc, corners);
    }
    bool DrawPartSide(CVxPart*, CVxDC* dc, EVxObjSide, int, VxPOINT* corners, bool, bool, int) override
    {
        return Square(dc, corners);
    }

private:
    bool Square(CVxDC* dc, const VxPOINT* corners)
    {
        ++calls;
        if (!m_draws)
            return false;
        const int x = (corners[0].x + corners[2].x) / 2;
        const int y = (corners[0].y + corners[2].y) / 2;
        dc->SelectPen(CVxDC::penNull, 0, 0);
        dc->SelectBrush(CVxDC::brushSolid, 0x00FF00);
        dc->Rectangle(x - 5, y - 5, x + 5, y + 5);
        dc->SelectOldBrush();
        dc->SelectOldPen();
        return true;
    }
    bool m_draws;

public:
    int calls = 0;
};
} // namespace

TEST(PartDrawPayload, APayloadDrawsPlanAndSidesBeforeTheSymbol)
{
    for (const bool draws : {true, false}) {
        SCOPED_TRACE(draws ? "payload draws" : "payload declines");
        CVxPart stairs = MakePart(ptLibraryObject, 50, 50, 100, 80);
        stairs.libObjID = 21;
        auto* payload = new CSquarePayload(draws);
        stairs.SetPayload(payload);
        const QImage plan = Render(stairs);
        EXPECT_EQ(Near(plan.pixel(100, 90), 0x00FF00), draws);
        EXPECT_EQ(Near(plan.pixel(60, 60), kFill), !draws) << "the symbol's own fill";

        CVxQtDC dc(300, 300, true);
        stairs.DrawSideToHdc(&dc, 0, 1, 0, 0, 1.0, 0);
        const QImage side = dc.GetImage()->convertToFormat(QImage::Format_ARGB32);
        EXPECT_EQ(Near(side.pixel(100, 90), 0x00FF00), draws);
        EXPECT_EQ(payload->calls, 2);
    }
}
