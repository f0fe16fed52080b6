// Room floors, ceilings and the slab edge outside the rooms in the scene.

#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxFloorRegion.h"
#include "CVxPartPayload.h"
#include "CVxRoomWalls.h"
#include "CVxWrlProtosGenerator.h"
#include "SVx3DExportPars.h"
#include "VxSceneText.h"

#include <algorithm>
#include <cmath>

namespace {

// Twice the signed area in plan axes; positive runs counter-clockwise with
// y taken upwards.
double SignedArea(const std::vector<CVxDPoint>& points)
{
    double sum = 0;
    for (size_t i = 0; i < points.size(); ++i) {
        const CVxDPoint& a = points[i];
        const CVxDPoint& b = points[(i + 1) % points.size()];
        sum += a.x * b.y - b.x * a.y;
    }
    return sum;
}

bool AllFinite(const std::vector<CVxDPoint>& points)
{
    return std::all_of(points.begin(), points.end(),
                       [](const CVxDPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y); });
}

} // namespace

CVxStringA CVxFloorRegion::ExportPolyToVRML(const CVxDPolygon& source, SVx3DExportPars* pars, int surface,
                                            bool slab, double level) const
{
    CVxDPolygon polygon = source;
    polygon.RemoveDuplicates();
    if (polygon.GetVertexCount() < 3)
        return CVxStringA();
    const std::vector<CVxDPoint> points = VxFlattenPolygon(polygon, 15);
    if (points.size() < 3 || !AllFinite(points))
        return CVxStringA();
    const double s = pars->scale;
    const size_t n = points.size();
    const double area = SignedArea(points);

    if (slab) {
        if (level <= 0)
            return CVxStringA();
        CVxStringA coords, index;
        for (const CVxDPoint& p : points) {
            VxAppendF(coords, "%.3f %.3f %.3f, ", p.x * s, -level - 0.005, p.y * s);
            VxAppendF(coords, "%.3f 0 %.3f, ", p.x * s, p.y * s);
        }
        // The sides face out and the bottom down, whatever way the outline
        // runs.
        const bool forward = area > 0;
        if (polygon.GetVertexCount() == static_cast<int>(n)) {
            for (size_t i = 0; i < n; ++i) {
                bool noInfo = false;
                const int wall = polygon.IsEdgeOnWall(static_cast<int>(i), &noInfo);
                if (wall >= 0 && !noInfo)
                    continue;
                const int a = static_cast<int>(2 * i), c = static_cast<int>(2 * ((i + 1) % n));
                if (forward)
                    VxAppendF(index, "%d %d %d %d -1, ", a, a + 1, c + 1, c);
                else
                    VxAppendF(index, "%d %d %d %d -1, ", c, c + 1, a + 1, a);
            }
        }
        for (size_t k = 0; k < n; ++k) {
            const size_t i = forward ? k : n - 1 - k;
            VxAppendF(index, "%d ", static_cast<int>(2 * i));
        }
        const CVxAppearance& appearance = GetSurfaceAppearance(SURF_FLOOR);
        float r, g, b;
        VxSplitColor(appearance.main.color, r, g, b);
        const CVxStringA app =
            VxFormatA("Appearance {material Material {diffuseColor %.2f %.2f %.2f}}", r, g, b);
        return VxFormatA(
            "Shape {\r\n appearance %s\r\n geometry %s}\r\n", app.c_str(),
            VxFormatA("IndexedFaceSet { coord Coordinate { point [%s]} coordIndex [%s-1]\r\nsolid TRUE "
                      "convex FALSE\r\n}",
                      coords.c_str(), index.c_str())
                .c_str());
    }

    double left = points[0].x, right = left, top = points[0].y;
    for (const CVxDPoint& p : points) {
        left = std::min(left, p.x);
        right = std::max(right, p.x);
        top = std::min(top, p.y);
    }
    const double w = right - left;
    const CVxAppearance& appearance = GetSurfaceAppearance(surface);
    SVxTileTransform tile;
    if (appearance.kind == 1 && appearance.tileSizeX >= 1e-7)
        tile = VxTileTransform(appearance, w, appearance.rotation);
    const bool scaled = tile.scaleU > 0;
    const CVxStringA node = CVxWrlProtosGenerator::GetFloorTextureNode(appearance, scaled, pars);
    CVxStringA app, texCoords;
    if (node.IsEmpty()) {
        float r, g, b;
        VxSplitColor(appearance.main.color, r, g, b);
        app = VxFormatA("Appearance {material Material {diffuseColor %.2f %.2f %.2f}}", r, g, b);
    } else {
        app = "Appearance {texture " + node;
        if (scaled)
            VxAppendF(app, "\r\n    textureTransform TextureTransform {scale %.3f %.3f rotation %.4f}",
                      tile.scaleU, tile.scaleV, tile.rotation);
        app += "\r\n    material " + CVxWrlProtosGenerator::GetDefaultWhiteWallMaterial() + "}";
        if (w > 0) {
            texCoords = "texCoord TextureCoordinate { point [";
            for (const CVxDPoint& p : points)
                VxAppendF(texCoords, "%.5f %.5f, ", (p.x - left) / w, -(p.y - top) / w);
            texCoords += "]}\r\n ";
        }
    }
    const bool ceiling = surface == SURF_CEILING;
    const double y = ceiling ? level * s - 0.01 : 0;
    CVxStringA geometry = "IndexedFaceSet { coord Coordinate { point [\r\n  ";
    for (const CVxDPoint& p : points)
        VxAppendF(geometry, "%.3f %.3f %.3f, ", p.x * s, y, p.y * s);
    geometry += "]}\r\n coordIndex [";
    // Facing up: the order that runs counter-clockwise seen from above.
    for (size_t k = 0; k < n; ++k)
        VxAppendF(geometry, "%d ", static_cast<int>(area > 0 ? n - 1 - k : k));
    geometry += "-1]\r\n ";
    geometry += texCoords;
    geometry += "solid TRUE convex FALSE";
    if (ceiling)
        geometry += " ccw FALSE";
    geometry += "}";
    CVxStringA shape =
        VxFormatA("Shape {\r\n appearance %s\r\n geometry %s}\r\n", app.c_str(), geometry.c_str());
    if (ceiling)
        return "Collision { collide FALSE children " + shape + "}\r\n";
    return shape;
}

CVxStringA CVxFloorRegion::ExportToVRML(SVx3DExportPars* pars, int surface, bool slab, double level,
                                        const CVxFloor& floor, const CVxRoomWalls* nextWalls) const
{
    const bool ceiling = surface == SURF_CEILING;
    CVxDPolygon outline;
    bool notFlat = false;
    TransformToSimplePolygon(outline, floor.m_walls, ceiling ? level : -1, &notFlat);
    // A room whose walls don't all reach the top gets no ceiling.
    if (ceiling && notFlat)
        return CVxStringA();
    if (outline.GetVertexCount() < 3)
        return CVxStringA();
    std::vector<CVxDPolygon> holes;
    if (ceiling) {
        if (nextWalls)
            const_cast<CVxRoomWalls*>(nextWalls)->GetHolePolygonList(holes);
    } else {
        const_cast<CVxRoomWalls&>(floor.m_walls).GetHolePolygonList(holes);
    }
    std::vector<CVxDPolygon> list{outline};
    if (!holes.empty() && !slab)
        CalculateWithoutHoles(list, holes);
    CVxStringA out;
    for (const CVxDPolygon& polygon : list)
        out += ExportPolyToVRML(polygon, pars, surface, slab, level);
    if (!slab) {
        // Both mouldings go out on the floor pass and again on the ceiling
        // pass: the ceiling's copy sits in the upper walls' switch, so the
        // floor's copy stays when the viewer hides the upper walls.
        if (baseMolding.enabled)
            out += ExportDecorMoldingToVRML(baseMolding, 0, pars, list, floor);
        if (crownMolding.enabled) {
            CVxDPolygon inner, detailed;
            CalcInnerPoly(inner, detailed, floor.m_walls);
            std::vector<CVxDPolygon> innerList{detailed.GetVertexCount() >= 3 ? detailed : inner};
            innerList[0].kind = CVxDPolygon::KIND_ROOM;
            if (ceiling && !holes.empty())
                CalculateWithoutHoles(innerList, holes);
            out += ExportDecorMoldingToVRML(crownMolding,
                                            floor.m_walls.GetMaxWallZHeight() - crownMolding.height, pars,
                                            innerList, floor);
        }
    }
    return out;
}

CVxStringA CVxFloorPlan::ExportFloorToVRML(SVx3DExportPars* pars, const CVxFloor& floor) const
{
    CVxStringA out;
    for (const CVxFloorRegion& region : regions)
        out += region.ExportToVRML(pars, CVxFloorRegion::SURF_FLOOR, false, 0, floor, nullptr);
    for (const CVxFloorRegion& region : outerRegions)
        out += region.ExportToVRML(pars, CVxFloorRegion::SURF_FLOOR, true,
                                   floor.m_floorThickness * pars->scale, floor, nullptr);
    return out;
}

CVxStringA CVxFloorPlan::ExportCeilingToVRML(SVx3DExportPars* pars, const CVxFloor& floor,
                                             const CVxRoomWalls* nextWalls) const
{
    CVxStringA out;
    const double level = floor.m_walls.GetMaxWallZHeight();
    if (level <= 0)
        return out;
    for (const CVxFloorRegion& region : regions)
        out += region.ExportToVRML(pars, CVxFloorRegion::SURF_CEILING, false, level, floor, nextWalls);
    return out;
}

namespace {

// a less b: up to four rectangles.
void CutRect(const CVxDRect& a, const CVxDRect& b, std::vector<CVxDRect>& out)
{
    if (b.right <= a.left || b.left >= a.right || b.bottom <= a.top || b.top >= a.bottom) {
        out.push_back(a);
        return;
    }
    if (b.left > a.left)
        out.emplace_back(a.left, a.top, b.left, a.bottom);
    if (b.right < a.right)
        out.emplace_back(b.right, a.top, a.right, a.bottom);
    const double l = std::max(a.left, b.left), r = std::min(a.right, b.right);
    if (b.top > a.top)
        out.emplace_back(l, a.top, r, b.top);
    if (b.bottom < a.bottom)
        out.emplace_back(l, b.bottom, r, a.bottom);
}

} // namespace

CVxStringA CVxFloorRegion::ExportDecorMoldingToVRML(const CVxDecorativeMolding& molding, double z,
                                                    SVx3DExportPars* pars,
                                                    const std::vector<CVxDPolygon>& polygons,
                                                    const CVxFloor& floor) const
{
    const double s = pars->scale;
    double height = molding.height * s;
    double thick = molding.thickness * s;
    if (!std::isfinite(height) || !std::isfinite(thick) || (height < 0.004 && thick < 0.004))
        return CVxStringA();
    height = std::min(std::max(height, 0.004), 10.0);
    thick = std::min(std::max(thick, 0.004), 10.0);
    const int mask = thick < 0.005 ? 4 : (z > 0 ? 55 : 54);
    CVxPart scratch;
    scratch.appearFill = molding.appearance;
    const CVxStringA appearance =
        "appearance " + CVxWrlProtosGenerator::GetPartAppearance_helper(scratch, molding.appearance, false,
                                                                        pars, 0, 0, nullptr, nullptr);
    CVxStringA box = CVxPartPayload::ExportRectToVRML(appearance, mask, 1, 1);
    const CVxStringA reuseBox =
        CVxPartPayload::ExportRectToVRML(CVxWrlProtosGenerator::ReuseAppearanceNode(appearance), mask, 1, 1);
    bool firstBox = true;
    CVxStringA out;
    for (const CVxDPolygon& polygon : polygons) {
        const int n = polygon.GetVertexCount();
        if (n < 3 || !AllFinite(polygon.points))
            continue;
        // Walk with the room on the left, so that the box grows into it.
        const bool reversed = SignedArea(polygon.points) < 0;
        for (int k = 0; k < n; ++k) {
            const int i = reversed ? n - 1 - k : k;
            const int j = reversed ? (i - 1 + n) % n : (i + 1) % n;
            const int edge = reversed ? j : i;
            bool noInfo = false;
            const int onWall = polygon.IsEdgeOnWall(edge, &noInfo);
            if (onWall < 0 || noInfo)
                continue;
            const CVxWall* wall = floor.m_walls.SafeGetWall(onWall & 0xFFFF);
            if (!wall)
                continue;
            const CVxDPoint a = polygon.points[static_cast<size_t>(i)];
            const CVxDPoint b = polygon.points[static_cast<size_t>(j)];
            const double len = std::hypot(b.x - a.x, b.y - a.y);
            if (len < 1e-7)
                continue;
            const CVxDPoint dir((b.x - a.x) / len, (b.y - a.y) / len);
            const CVxDPoint left(dir.y, -dir.x);
            const CVxDPoint inward(-left.x, -left.y);
            // Where the edge's start lies along its wall, and which way.
            const CVxDPoint wallDir(wall->end.x - wall->start.x, wall->end.y - wall->start.y);
            const double wallLen = std::hypot(wallDir.x, wallDir.y);
            if (wallLen < 1e-7)
                continue;
            const double along =
                ((a.x - wall->start.x) * wallDir.x + (a.y - wall->start.y) * wallDir.y) / wallLen;
            const bool with = (dir.x * wallDir.x + dir.y * wallDir.y) > 0;
            std::vector<CVxDRect> run{CVxDRect(0, z, len, z + molding.height)};
            for (const CVxPart& part : floor.m_objects) {
                if (!part.inUse || !floor.m_layers.IsLayerVisible3D(part.layer))
                    continue;
                CVxDRect r = part.GetWallOpeningRect(&floor.m_walls, onWall & 0xFFFF, true);
                if (r.IsRectEmpty())
                    continue;
                if (part.HasCap(capDoorFrame) && part.doorframe) {
                    const double frame = part.thickness > 0 ? part.thickness : 0.07 / s;
                    r.left -= frame;
                    r.right += frame;
                    r.bottom += frame;
                }
                const CVxDRect cut = with ? CVxDRect(r.left - along, r.top, r.right - along, r.bottom)
                                          : CVxDRect(along - r.right, r.top, along - r.left, r.bottom);
                std::vector<CVxDRect> next;
                for (const CVxDRect& piece : run)
                    CutRect(piece, cut, next);
                run.swap(next);
            }
            const double half = wall->thickness / 2;
            for (const CVxDRect& piece : run) {
                if (piece.right - piece.left < 1e-7 || piece.bottom - piece.top < 1e-7)
                    continue;
                const CVxDPoint at(a.x + dir.x * piece.left + inward.x * half,
                                   a.y + dir.y * piece.left + inward.y * half);
                VxAppendF(out,
                          "Transform { translation %.3f %.3f %.3f rotation 0 1 0 %.3f scale %.3f %.3f "
                          "%.3f\r\n  children",
                          at.x * s, piece.top * s, at.y * s, -std::atan2(dir.y, dir.x),
                          (piece.right - piece.left) * s, (piece.bottom - piece.top) * s, thick);
                out += " " + (firstBox ? box : reuseBox) + "}\r\n";
                firstBox = false;
            }
        }
    }
    return out;
}
