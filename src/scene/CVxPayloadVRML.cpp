// The 3D geometry of the objects that carry a payload: stairs, stairs with
// round treads and the sliding wardrobe. Everything is written in the
// object's unit box (x along the width, y up, z along the depth); the part's
// Transform scales it to size.

#include "CVxDozamoWardrobePayload.h"
#include "CVxPart.h"
#include "CVxPartPayload.h"
#include "CVxStairsPayload.h"
#include "CVxWrlComplexFaceSetGenerator.h"
#include "CVxWrlProtosGenerator.h"
#include "SVx3DExportPars.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace {

struct SVxXY
{
    double x, y;
};

using VxOutline = std::vector<SVxXY>;

// The fill and the front surface of an object's appearance text; without
// a front of its own the front is the fill again.
void SplitFillFront(const CVxStringA& appearance, CVxStringA& fill, CVxStringA& front)
{
    static const char* const marker = " appearanceFront ";
    const int at = appearance.Find(marker);
    if (at < 0) {
        fill = appearance;
        front = CVxWrlProtosGenerator::ReuseAppearanceNode(appearance);
        return;
    }
    fill = CVxStringA(appearance.Std().substr(0, static_cast<size_t>(at)));
    front = CVxStringA("appearance ") +
            CVxStringA(appearance.Std().substr(static_cast<size_t>(at) + std::strlen(marker)));
}

// A length in metres as a fraction of a side of `size` scene units, for
// boards whose thickness doesn't grow with the object.
double Fraction(double metres, double size, double most)
{
    if (!(size > 0) || !std::isfinite(size))
        return most;
    return std::clamp(metres / size, 0.001, most);
}

// The part of a convex outline where a x + b y <= c.
VxOutline ClipHalfPlane(const VxOutline& in, double a, double b, double c)
{
    VxOutline out;
    const size_t n = in.size();
    for (size_t i = 0; i < n; ++i) {
        const SVxXY& p = in[i];
        const SVxXY& q = in[(i + 1) % n];
        const double dp = a * p.x + b * p.y - c;
        const double dq = a * q.x + b * q.y - c;
        if (dp <= 0)
            out.push_back(p);
        if ((dp < 0 && dq > 0) || (dp > 0 && dq < 0)) {
            const double t = dp / (dp - dq);
            out.push_back({p.x + (q.x - p.x) * t, p.y + (q.y - p.y) * t});
        }
    }
    return out;
}

// The strip of the unit square between the lines y = x + low and
// y = x + high: a board that follows the pitch of a flight of equal rise
// and run.
VxOutline PitchBand(double low, double high)
{
    VxOutline square{{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    square = ClipHalfPlane(square, 1, -1, -low);
    return ClipHalfPlane(square, -1, 1, high);
}

// A convex outline in the x-y plane extruded across z0..z1.
CVxStringA Prism(const CVxStringA& appearance, const VxOutline& outline, double z0, double z1)
{
    const int n = static_cast<int>(outline.size());
    if (n < 3)
        return CVxStringA();
    CVxStringA points, faces;
    for (double z : {z0, z1})
        for (const SVxXY& p : outline)
            VxAppendF(points, "%.4f %.4f %.4f, ", p.x, p.y, z);
    for (int i = n - 1; i >= 0; --i)
        VxAppendF(faces, "%d ", i);
    faces += "-1 ";
    for (int i = 0; i < n; ++i)
        VxAppendF(faces, "%d ", n + i);
    faces += "-1 ";
    for (int i = 0; i < n; ++i) {
        const int j = (i + 1) % n;
        VxAppendF(faces, "%d %d %d %d -1 ", i, j, n + j, n + i);
    }
    return VxFormatA("Shape { %s geometry IndexedFaceSet { coord Coordinate { point [%s]} coordIndex [%s] "
                     "solid FALSE convex TRUE }}",
                     appearance.c_str(), points.c_str(), faces.c_str());
}

} // namespace

CVxStringA CVxPartPayload::ExportRectToVRML(const CVxStringA& appearance, int mask, double u, double v)
{
    static const struct
    {
        int bit;
        const char* face;
        const char* tex;
    } faces[] = {{1, "3 2 1 0 -1, ", "3 0 1 2 -1, "},  {2, "4 5 6 7 -1, ", "3 0 1 2 -1, "},
                 {16, "0 1 5 4 -1, ", "6 4 2 7 -1, "}, {32, "2 3 7 6 -1, ", "6 4 2 7 -1, "},
                 {8, "3 0 4 7 -1, ", "5 4 2 3 -1, "},  {4, "1 2 6 5 -1, ", "5 4 2 3 -1, "}};
    CVxStringA coordIndex, texIndex;
    for (const auto& f : faces)
        if (mask & f.bit) {
            coordIndex += f.face;
            texIndex += f.tex;
        }
    const CVxStringA tex =
        VxFormatA("texCoord TextureCoordinate { point [%.3f %.3f, 0 %.3f, 0 0, %.3f 0,   0 %.3f, "
                  "%.3f %.3f, %.3f %.3f, %.3f 0] }",
                  u, v, v, u, v, u, v, u, v, u);
    return VxFormatA(
        "Shape { %s geometry IndexedFaceSet { coord Coordinate { point [0 0 0, 0 0 1, 1 0 1, 1 0 0, 0 1 0, "
        "0 1 1, 1 1 1, 1 1 0]} coordIndex [%s] %s texCoordIndex[%s] solid TRUE}}\r\n",
        appearance.c_str(), coordIndex.c_str(), tex.c_str(), texIndex.c_str());
}

CVxStringA CVxStairsPayload::ExportToVRML(const CVxPart* part, const CVxStringA& appearance,
                                          SVx3DExportPars* pars, const CVxPart* /*parent*/) const
{
    if (!part)
        return CVxStringA();
    const int n = std::clamp(steps, 1, maxSteps);
    // Rise and run of a step: the flight climbs the whole height over the
    // whole width.
    const double a = 1.0 / n;
    const double s = pars ? pars->scale : 0.01;
    const int kind = part->subType;
    CVxStringA fill, front;
    SplitFillFront(appearance, fill, front);
    const CVxStringA again = CVxWrlProtosGenerator::ReuseAppearanceNode(fill);

    // Boards along both sides: the cheeks of sub-type 3 as the plan draws
    // them, the stringers that carry the open treads of sub-type 2.
    double side = 0;
    if (kind == subTypeSideBoards)
        side = 1.0 / 30;
    else if (kind == subTypeOpen)
        side = Fraction(0.04, part->height * s, 0.1);

    VxOutline step;
    if (kind == subTypeOpen) {
        const double t = std::min(0.3 * a, Fraction(0.04, part->zHeight * s, 0.3 * a));
        step = {{0, a - t}, {a, a - t}, {a, a}, {0, a}};
    } else {
        // A wedge under each tread: the flight is solid above its pitch line.
        step = {{0, 0}, {a, a}, {0, a}};
    }

    const int id = CVxWrlProtosGenerator::GetIncGenericCounter();
    CVxStringA text = "Group { children [\r\n";
    text += VxFormatA("   DEF VX_STEP%d ", id) + Prism(fill, step, side, 1 - side) + "\r\n";
    for (int i = 1; i < n; ++i)
        VxAppendF(text, "   Transform { translation %.3f %.3f 0 children USE VX_STEP%d}\r\n", i * a, i * a,
                  id);
    if (kind == subTypeSolid)
        text += "   " + Prism(again, {{0, 0}, {1, 0}, {1, 1}}, side, 1 - side) + "\r\n";
    if (side > 0) {
        const VxOutline board =
            kind == subTypeOpen ? PitchBand(-0.6 * a, 1.15 * a) : PitchBand(-0.3 * a, 1.3 * a);
        VxAppendF(text, "   DEF VX_STEP_SIDE%d ", id);
        text += Prism(front, board, 0, side) + "\r\n";
        VxAppendF(text, "   Transform { translation 0 0 %.4f children USE VX_STEP_SIDE%d}\r\n", 1 - side, id);
    }
    text += "]}";
    return text;
}

CVxStringA CVxBanisterStairsPayload::ExportToVRML(const CVxPart* part, const CVxStringA& appearance,
                                                  SVx3DExportPars* /*pars*/, const CVxPart* /*parent*/) const
{
    if (!part || !(part->width > 0))
        return CVxStringA();
    const int n = std::clamp(steps, 1, CVxStairsPayload::maxSteps);
    // The treads stand where the plan draws them, each as deep as half the
    // flight is wide.
    const double r = std::clamp(part->height / part->width, 0.0, 1.0);
    const double along = n > 1 ? (1 - r) / (n - 1) : 0;
    const double thick = std::clamp(ratio, minRatio, maxRatio);
    const double rise = 1.0 / (n - 1 + thick);
    CVxStringA fill, front;
    SplitFillFront(appearance, fill, front);

    const int id = CVxWrlProtosGenerator::GetIncGenericCounter();
    CVxStringA text = "Group { children [\r\n";
    VxAppendF(text,
              "   DEF VX_BAR%d Transform {translation %.3f 0 .25 scale %.3f %.3f .5 children Ellipse_LowPoly "
              "{%s}}\r\n",
              id, r / 4, r / 2, thick * rise, fill.c_str());
    for (int i = 1; i < n; ++i)
        VxAppendF(text, "   Transform { translation %.4f %.4f 0 children USE VX_BAR%d}\r\n", i * along,
                  i * rise, id);
    if (n > 1) {
        // The spine under the middle of the treads, from the floor to the
        // last one.
        const double w = r / 8;
        const double first = r / 2;
        const double last = first + (n - 1) * along;
        const double top = (n - 1) * rise;
        text += "   " +
                Prism(front, {{first - w, 0}, {first + w, 0}, {last + w, top}, {last - w, top}}, 0.45, 0.55) +
                "\r\n";
    }
    text += "]}";
    return text;
}

CVxStringA CVxDozamoWardrobePayload::ExportToVRML(const CVxPart* part, const CVxStringA& appearance,
                                                  SVx3DExportPars* pars, const CVxPart* /*parent*/) const
{
    if (!part)
        return CVxStringA();
    const double s = pars ? pars->scale : 0.01;
    CVxStringA fill, front;
    SplitFillFront(appearance, fill, front);
    const double body = 1 - trackDepth;
    // Carcass boards of 19 mm whatever the size.
    const double tx = Fraction(0.019, part->width * s, 0.05);
    const double tz = Fraction(0.008, part->height * s, 0.05);
    const double ty = Fraction(0.019, part->zHeight * s, 0.05);
    const int count = std::clamp(doors, 1, maxDoors);

    CVxWrlComplexFaceSetGenerator carcass, rails;
    carcass.AddRect(0, 0, 0, tx, 1, body);
    carcass.AddRect(1 - tx, 0, 0, tx, 1, body);
    carcass.AddRect(0, 0, 0, 1, 1, tz);
    for (int k = 1; k < count; ++k)
        carcass.AddRect(static_cast<double>(k) / count - tx / 2, 0, 0, tx, 1, body);

    std::vector<SubItem> items;
    GetSubGeometry(items);
    std::vector<size_t> panelOf(static_cast<size_t>(count), 0);
    CVxStringA panels;
    for (const SubItem& item : items) {
        // Boxes of the interior in scene axes: their depth runs along z,
        // their height along y.
        const double dx = item.x2 - item.x1;
        const double dy = item.z2 - item.z1;
        const double dz = item.y2 - item.y1;
        switch (item.kind) {
        case exBoard:
            carcass.AddRect(item.x1, item.z1, item.y1, dx, std::max(dy, ty), dz);
            break;
        case exDrawer:
            carcass.AddRect(item.x1, item.z1, item.y1, dx, dy, dz);
            break;
        case exRail:
            rails.AddRect(item.x1, item.z1, item.y1, dx, dy, dz);
            break;
        case exDoorPanel: {
            const size_t door = static_cast<size_t>(std::clamp(item.door, 0, count - 1));
            const size_t index = door * static_cast<size_t>(std::max(1, this->panels)) + panelOf[door]++;
            const CVxAppearance look =
                index < appearances.size() ? appearances[index] : CVxAppearance(defaultColor);
            CVxWrlComplexFaceSetGenerator panel;
            // A joint of 3 mm around every panel lets the doors read apart.
            const double gx = std::min(Fraction(0.0015, part->width * s, 0.01), dx / 4);
            const double gy = std::min(Fraction(0.0015, part->zHeight * s, 0.01), dy / 4);
            panel.AddRect(item.x1 + gx, item.z1 + gy, item.y1, dx - 2 * gx, dy - 2 * gy, dz);
            const CVxStringA node = CVxWrlProtosGenerator::GetPartAppearance_helper(
                *part, look, false, pars, part->width * dx, part->zHeight * dy, nullptr, nullptr);
            panels += "   " + panel.GetIndexedFaceSet("appearance " + node, false) + "\r\n";
            break;
        }
        }
    }
    const CVxAppearance metal(0xB4B4B8);
    const CVxStringA railLook =
        CVxWrlProtosGenerator::GetPartAppearance_helper(*part, metal, false, pars, 0, 0, nullptr, nullptr);

    CVxStringA text = "Group { children [\r\n";
    text += "   " + carcass.GetIndexedFaceSet(fill, false) + "\r\n";
    const CVxStringA railShape = rails.GetIndexedFaceSet("appearance " + railLook, false);
    if (!railShape.IsEmpty())
        text += "   " + railShape + "\r\n";
    text += panels;
    text += "]}";
    return text;
}

CVxStringA CVxPartPayload::ExportToVRML(const CVxPart* part, const CVxStringA& appearance,
                                        SVx3DExportPars* pars, const CVxPart* parent) const
{
    if (const auto* stairs = dynamic_cast<const CVxStairsPayload*>(this))
        return stairs->ExportToVRML(part, appearance, pars, parent);
    if (const auto* banister = dynamic_cast<const CVxBanisterStairsPayload*>(this))
        return banister->ExportToVRML(part, appearance, pars, parent);
    if (const auto* wardrobe = dynamic_cast<const CVxDozamoWardrobePayload*>(this))
        return wardrobe->ExportToVRML(part, appearance, pars, parent);
    return CVxStringA();
}
