// Walls in the scene. A wall is cut in wall space, x along the wall and y
// up, where openings are plain rectangles; only then is each vertex bent
// onto the wall's two faces and its centre line.

#include "CVxDPolygon.h"
#include "CVxFloor.h"
#include "CVxRoomWalls.h"
#include "CVxWall.h"
#include "CVxWrlProtosGenerator.h"
#include "SVx3DExportPars.h"
#include "VxSceneText.h"
#include "VxTrace.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kEps = 1e-7;

CVxDPoint Lerp(const CVxDPoint& a, const CVxDPoint& b, double t)
{
    return CVxDPoint(a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t);
}

double Height(double h, double s)
{
    const double scaled = h * s;
    // Just under the floor faces, so no seam of sky shows at the foot.
    return std::fabs(scaled) < kEps ? -0.002 : scaled;
}

struct SVxWallSide
{
    std::vector<CVxDPoint> plan; // where each vertex stands on this face
    std::vector<double> faceX;   // its distance along the face
    std::vector<double> height;
};

bool WallIsFinite(const CVxWall& wall)
{
    for (double v : {wall.start.x, wall.start.y, wall.end.x, wall.end.y, wall.startHeight, wall.endHeight,
                     wall.thickness, wall.length})
        if (!std::isfinite(v))
            return false;
    return true;
}

// One face of the wall: the polygon and the quads from its edges to the
// centre line, textured so that neighbouring walls line up.
void WriteSide(CVxStringA& out, const SVxWallSide& side, const std::vector<CVxDPoint>& centre,
               const std::vector<double>& centreHeight, const CVxAppearance& appearance, double shift,
               bool first, SVx3DExportPars* pars)
{
    const size_t n = side.plan.size();
    if (n < 3)
        return;
    const double s = pars->scale;
    double left = side.faceX[0], right = left, bottom = side.height[0], top = bottom;
    for (size_t i = 1; i < n; ++i) {
        left = std::min(left, side.faceX[i]);
        right = std::max(right, side.faceX[i]);
        bottom = std::min(bottom, side.height[i]);
        top = std::max(top, side.height[i]);
    }
    const double w = right - left;
    double h = top - bottom;
    if (w < kEps || h < kEps)
        return;
    const bool texture = appearance.main.HasTexture();
    if (texture)
        h = w;
    const CVxDRect bounds(left, bottom, right, top);
    const CVxStringA app = CVxWall::GetVRMLAppearanceNode(appearance, bounds, shift, pars);

    CVxStringA points, centres, coordIndex, texPoints, texIndex;
    for (size_t i = 0; i < n; ++i) {
        VxAppendF(points, "%.3f %.3f %.3f, ", side.plan[i].x * s, Height(side.height[i], s),
                  side.plan[i].y * s);
        VxAppendF(centres, "%.3f %.3f %.3f, ", centre[i].x * s, Height(centreHeight[i], s), centre[i].y * s);
        VxAppendF(coordIndex, "%d ", static_cast<int>(i));
        VxAppendF(texPoints, "%.3f %.3f, ", (side.faceX[i] - left) / w, (side.height[i] - bottom) / h);
        VxAppendF(texIndex, "%d ", static_cast<int>(i));
    }
    coordIndex += "-1, ";
    texIndex += "-1, ";
    int texAt = static_cast<int>(n);
    for (size_t i = 0; i < n; ++i) {
        const size_t j = (i + 1) % n;
        VxAppendF(coordIndex, "%d %d %d %d -1, ", static_cast<int>(j), static_cast<int>(i),
                  static_cast<int>(i + n), static_cast<int>(j + n));
        const double r = std::hypot(side.plan[i].x - centre[i].x, side.plan[i].y - centre[i].y) / w;
        const double du = std::fabs(side.faceX[j] - side.faceX[i]);
        const double dv = std::fabs(side.height[j] - side.height[i]);
        const double vi = (side.height[i] - bottom) / h, vj = (side.height[j] - bottom) / h;
        const double ui = (side.faceX[i] - left) / w, uj = (side.faceX[j] - left) / w;
        if (dv > du)
            VxAppendF(texPoints, "0 %.3f, 0 %.3f, %.3f %.3f, %.3f %.3f, ", vj, vi, r, vi, r, vj);
        else
            VxAppendF(texPoints, "%.3f 0, %.3f 0, %.3f %.3f, %.3f %.3f, ", uj, ui, ui, r, uj, r);
        VxAppendF(texIndex, "%d %d %d %d -1, ", texAt, texAt + 1, texAt + 2, texAt + 3);
        texAt += 4;
    }
    VxAppendF(out,
              "Shape { appearance %s geometry IndexedFaceSet { coord Coordinate { point [%s%s]}\r\n "
              "coordIndex [%s] "
              "texCoord TextureCoordinate { point [%s]} texCoordIndex [%s] solid TRUE ccw %s convex %s}}\r\n",
              app.c_str(), points.c_str(), centres.c_str(), coordIndex.c_str(), texPoints.c_str(),
              texIndex.c_str(), first ? "TRUE" : "FALSE", n <= 4 ? "TRUE" : "FALSE");
}

} // namespace

CVxStringA CVxWall::GetVRMLAppearanceNode(const CVxAppearance& appearance, const CVxDRect& bounds,
                                          double shift, SVx3DExportPars* pars)
{
    double scaleU = 0, scaleV = 0, rot = 0, tx = 0, ty = 0;
    const double w = bounds.right - bounds.left;
    if (appearance.kind == 1 && appearance.tileSizeX > 0 && w > 0) {
        const SVxTileTransform tile = VxTileTransform(appearance, w, appearance.rotation);
        scaleU = tile.scaleU;
        scaleV = tile.scaleV;
        rot = tile.rotation;
        tx = (bounds.left + shift) / w;
        ty = bounds.top / w;
    }
    const CVxStringA node = CVxWrlProtosGenerator::GetFloorTextureNode(appearance, scaleU > 0, pars);
    if (!node.IsEmpty()) {
        CVxStringA text = "Appearance {texture " + node;
        if (scaleU > 0)
            VxAppendF(text,
                      "\r\n    textureTransform TextureTransform {translation %.3f %.3f scale %.3f %.3f "
                      "rotation %.4f}",
                      tx, ty, scaleU, scaleV, rot);
        text += "\r\n    material " + CVxWrlProtosGenerator::GetDefaultWhiteWallMaterial() + "}";
        return text;
    }
    return CVxWrlProtosGenerator::GetSimpleColorWallApearanceNode(appearance.main);
}

CVxStringA CVxWall::ExportToVRMLNew(SVx3DExportPars* pars, const CVxFloor& floor, int wallIndex,
                                    bool extendBelow, double topZ, double bottomExtent, double topExtent,
                                    double splitHeight, bool lowerHalf) const
{
    CVxStringA out;
    if (thickness < kEps || length < kEps || !visible)
        return out;
    if (!WallIsFinite(*this) || std::fabs(length * pars->scale) > 100 * kVxSceneLengthLimit) {
        VxTrace("3D: wall %d with coordinates that are no numbers or out of reach left out\n", wallIndex);
        if (pars->report)
            ++pars->report->skippedWalls;
        return out;
    }
    const double L = length;
    double b = extendBelow ? -bottomExtent : 0;
    double h0 = startHeight;
    double h1 = endHeight;
    if (topZ > 0) {
        if (std::fabs(h0 - topZ) < kEps)
            h0 += topExtent;
        if (std::fabs(h1 - topZ) < kEps)
            h1 += topExtent;
    }
    const double S = splitHeight;
    const bool flatTop = std::fabs(h0 - h1) < kEps;
    if (S > 0 && flatTop) {
        if (!lowerHalf) {
            b = std::max(S, b);
            if (S > h0)
                return out;
        } else if (h0 > S) {
            h0 = h1 = S;
        }
    }

    // The outline in wall space, one polygon per piece of a curved wall.
    std::vector<CVxDPolygon> polygons;
    std::vector<int> pieceOf;
    const bool curvedWall = IsCurved();
    std::vector<double> pieceStart;
    // The top line of each piece: its height at the piece's start and end.
    std::vector<std::pair<double, double>> pieceTop;
    // The length of the outline in wall space.
    double total = L;
    if (!curvedWall) {
        CVxDPolygon p;
        p.points = {CVxDPoint(0, b), CVxDPoint(0, h0), CVxDPoint(L, h1), CVxDPoint(L, b)};
        polygons.push_back(p);
    } else {
        total = 0;
        for (const CVxWall& sub : subWalls)
            total += sub.length;
        double d = 0;
        for (const CVxWall& sub : subWalls) {
            pieceStart.push_back(d);
            const double e = d + sub.length;
            CVxDPolygon p;
            const double ha = total > 0 ? h0 + d / total * (h1 - h0) : h0;
            const double hb = total > 0 ? h0 + e / total * (h1 - h0) : h1;
            p.points = {CVxDPoint(d, b), CVxDPoint(d, ha), CVxDPoint(e, hb), CVxDPoint(e, b)};
            polygons.push_back(p);
            pieceTop.emplace_back(ha, hb);
            d = e;
        }
    }
    if (S > 0 && !flatTop) {
        CVxDPolygon cut;
        const double x0 = -10 * L - 500, x1 = 10 * L + 500;
        const double y0 = S, y1 = lowerHalf ? 10 * S : -10 * S;
        cut.points = {CVxDPoint(x0, y0), CVxDPoint(x1, y0), CVxDPoint(x1, y1), CVxDPoint(x0, y1)};
        // The subtraction wants the cut to run against the outline; the
        // rectangle below the cut would otherwise run with it.
        if (!lowerHalf)
            std::reverse(cut.points.begin(), cut.points.end());
        CVxDPolygon::RemoveHole(polygons, cut);
    }

    // Openings of the objects on layers shown in 3D.
    std::vector<CVxDPolygon> holes;
    for (const CVxPart& part : floor.m_objects) {
        if (!part.inUse || !floor.m_layers.IsLayerVisible3D(part.layer))
            continue;
        CVxDRect r = part.GetWallOpeningRect(&floor.m_walls, wallIndex, true);
        if (r.IsRectEmpty() || !std::isfinite(r.left) || !std::isfinite(r.right))
            continue;
        if (extendBelow && r.top == 0)
            r.top -= 0.005 / pars->scale;
        CVxDPolygon hole;
        hole.points = {CVxDPoint(r.left, r.top), CVxDPoint(r.right, r.top), CVxDPoint(r.right, r.bottom),
                       CVxDPoint(r.left, r.bottom)};
        holes.push_back(hole);
    }
    if (!holes.empty())
        CVxDPolygon::RemoveHoles(polygons, holes);

    const CVxAppearance* appearA = floor.m_walls.SafeGetAppear(appearanceA);
    const CVxAppearance* appearB = floor.m_walls.SafeGetAppear(appearanceB);
    if (!appearA)
        appearA = &floor.m_walls3DAppear;
    if (!appearB)
        appearB = &floor.m_walls3DAppear;

    for (const CVxDPolygon& polygon : polygons) {
        if (polygon.GetVertexCount() < 3)
            continue;
        // Which piece of a curved wall the polygon lies on: by its middle.
        const CVxWall* w = this;
        double offset = 0;
        bool flipped = false;
        double top0 = h0, top1 = h1;
        std::vector<CVxDPoint> v = polygon.points;
        // Only the wall's own ends meet other walls; the joints between the
        // pieces of a curved wall share their corners.
        std::vector<bool> wallEnd;
        for (const CVxDPoint& point : v)
            wallEnd.push_back(std::fabs(point.x) < kEps || std::fabs(point.x - total) < kEps);
        if (curvedWall) {
            const CVxDRect box = polygon.GetBoundingRect();
            const double mid = (box.left + box.right) / 2;
            size_t i = 0;
            while (i + 1 < pieceStart.size() && pieceStart[i + 1] <= mid)
                ++i;
            w = &subWalls[i];
            offset = pieceStart[i];
            flipped = i < subFlipped.size() && subFlipped[i];
            top0 = pieceTop[i].first;
            top1 = pieceTop[i].second;
            for (CVxDPoint& p : v)
                p.x -= offset;
            if (flipped) {
                std::swap(top0, top1);
                for (CVxDPoint& p : v)
                    p.x = w->length - p.x;
                std::reverse(v.begin(), v.end());
                std::reverse(wallEnd.begin(), wallEnd.end());
            }
        }
        const double len = w->length;
        if (len < kEps)
            continue;
        // The part of the face that survives the joints with other walls.
        const double* p = w->interParam;
        double x0 = 0, x1 = len;
        auto valid = [](double value) { return std::isfinite(value); };
        const bool ignoreA = w->align == ALIGN_SIDE_A;
        const bool ignoreB = w->align == ALIGN_SIDE_B;
        if (valid(p[0]) && !(ignoreA && p[0] < 0))
            x0 = std::max(x0, p[0] * len);
        if (valid(p[3]) && !(ignoreB && p[3] > 1))
            x0 = std::max(x0, (1 - p[3]) * len);
        if (valid(p[1]) && !(ignoreA && p[1] > 1))
            x1 = std::min(x1, p[1] * len);
        if (valid(p[2]) && !(ignoreB && p[2] < 0))
            x1 = std::min(x1, (1 - p[2]) * len);

        // On a sloped top a vertex that a joint moved along the face keeps
        // to the slope, so the top edge runs straight into the mitre.
        const double slope = std::fabs(top1 - top0) < kEps ? 0 : (top1 - top0) / len;
        auto onSlope = [&](size_t i, double faceX) {
            const CVxDPoint& vertex = v[i];
            double y = vertex.y;
            if (slope == 0 || !wallEnd[i] || std::fabs(vertex.y - (top0 + slope * vertex.x)) >= kEps)
                return y;
            y = top0 + slope * faceX;
            // A half of a split wall stays on its side of the cut.
            if (S > 0)
                y = lowerHalf ? std::min(y, S) : std::max(y, S);
            return y;
        };

        SVxWallSide sideB, sideA;
        std::vector<CVxDPoint> centre;
        std::vector<double> centreHeight;
        const CVxDPoint dir((w->end.x - w->start.x) / len, (w->end.y - w->start.y) / len);
        for (size_t i = 0; i < v.size(); ++i) {
            const CVxDPoint& vertex = v[i];
            CVxDPoint pb, pa, pc;
            if (std::fabs(vertex.x) < kEps) {
                pb = w->outline[OUT_B_START];
                pa = w->outline[OUT_A_START];
                pc = w->start;
            } else if (std::fabs(vertex.x - len) < kEps) {
                pb = w->outline[OUT_B_END];
                pa = w->outline[OUT_A_END];
                pc = w->end;
            } else {
                const double x = x0 <= x1 ? std::clamp(vertex.x, x0, x1) : vertex.x;
                const double t = x / len;
                pb = Lerp(w->cornerB0, w->cornerB1, t);
                pa = Lerp(w->cornerA0, w->cornerA1, t);
                pc = CVxDPoint((pa.x + pb.x) / 2, (pa.y + pb.y) / 2);
            }
            sideB.plan.push_back(pb);
            sideA.plan.push_back(pa);
            centre.push_back(pc);
            const double faceB = (pb.x - w->cornerB0.x) * dir.x + (pb.y - w->cornerB0.y) * dir.y;
            const double faceA = (pa.x - w->cornerA0.x) * dir.x + (pa.y - w->cornerA0.y) * dir.y;
            sideB.faceX.push_back(faceB);
            sideA.faceX.push_back(faceA);
            sideB.height.push_back(onSlope(i, faceB));
            sideA.height.push_back(onSlope(i, faceA));
            centreHeight.push_back(vertex.y);
        }
        const CVxAppearance* first = appearA;
        const CVxAppearance* second = appearB;
        if (flipped)
            std::swap(first, second);
        double shiftB = w->cornerB0.x + w->cornerB0.y + offset;
        double shiftA = w->cornerA0.x + w->cornerA0.y + offset;
        if (flipped) {
            shiftB = -shiftB;
            shiftA = -shiftA;
        }
        WriteSide(out, sideB, centre, centreHeight, *first, shiftB, true, pars);
        WriteSide(out, sideA, centre, centreHeight, *second, shiftA, false, pars);
    }
    return out;
}

CVxStringA CVxRoomWalls::ExportToVRML(SVx3DExportPars* pars, const CVxFloor& floor, bool extendBelow,
                                      bool extendToTop, double bottomExtent, double topExtent, bool halved,
                                      bool lowerHalf) const
{
    const double maxHeight = GetMaxWallZHeight();
    const double split = halved ? 0.6 * maxHeight : 0;
    const double top = extendToTop ? maxHeight : 0;
    CVxStringA out;
    for (int i = 0; i < GetWallCount(); ++i)
        out += walls[static_cast<size_t>(i)].ExportToVRMLNew(pars, floor, i, extendBelow, top, bottomExtent,
                                                             topExtent, split, lowerHalf);
    return out;
}
