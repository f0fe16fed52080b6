// Door leaves and window sashes in the scene: the pane proto of the library
// with the bars of the model as one face set, and a door's solid leaf as an
// extrusion of its outline less its glass.

#include "CVxDPolygon.h"
#include "CVxPart.h"
#include "CVxWindowSubTypes.h"
#include "CVxWrlComplexFaceSetGenerator.h"
#include "CVxWrlProtosGenerator.h"
#include "SVx3DExportPars.h"

#include <algorithm>

void CVxWrlComplexFaceSetGenerator::AddRect(double x, double y, double z, double dx, double dy, double dz)
{
    m_boxes.push_back({x, y, z, dx, dy, dz});
}

CVxStringA CVxWrlComplexFaceSetGenerator::GetIndexedFaceSet(const CVxStringA& appearance, bool) const
{
    if (m_boxes.empty())
        return CVxStringA();
    CVxStringA points, faces;
    int base = 0;
    for (const SBox& b : m_boxes) {
        const double xs[2] = {b.x, b.x + b.dx};
        const double ys[2] = {b.y, b.y + b.dy};
        const double zs[2] = {b.z, b.z + b.dz};
        // Bottom ring 0..3, top ring 4..7.
        for (int k = 0; k < 2; ++k) {
            VxAppendF(points, "%.3f %.3f %.3f, ", xs[0], ys[k], zs[0]);
            VxAppendF(points, "%.3f %.3f %.3f, ", xs[0], ys[k], zs[1]);
            VxAppendF(points, "%.3f %.3f %.3f, ", xs[1], ys[k], zs[1]);
            VxAppendF(points, "%.3f %.3f %.3f, ", xs[1], ys[k], zs[0]);
        }
        const int q[6][4] = {{0, 1, 2, 3}, {7, 6, 5, 4}, {4, 5, 1, 0},
                             {6, 7, 3, 2}, {7, 4, 0, 3}, {5, 6, 2, 1}};
        for (const auto& f : q)
            VxAppendF(faces, "%d %d %d %d -1 ", base + f[0], base + f[1], base + f[2], base + f[3]);
        base += 8;
    }
    return VxFormatA(
        "Shape { %s geometry IndexedFaceSet { coord Coordinate { point [%s]} coordIndex [%s] solid TRUE ccw "
        "FALSE}}",
        appearance.c_str(), points.c_str(), faces.c_str());
}

namespace {

constexpr double kBar = 0.035;

// The model's frame bars as boxes of the unit box: x across, y up from the
// sill, z through the wall; the bars sit in the middle third of the depth.
void AddBars(CVxWrlComplexFaceSetGenerator& bars, const std::vector<CVxSubItem>& items)
{
    for (const CVxSubItem& item : items) {
        if (!item.frame)
            continue;
        const double x0 = std::clamp(std::min(item.x1, item.x2), 0.0, 1.0);
        const double x1 = std::clamp(std::max(item.x1, item.x2), 0.0, 1.0);
        const double y0 = std::clamp(1 - std::max(item.y1, item.y2), 0.0, 1.0);
        const double y1 = std::clamp(1 - std::min(item.y1, item.y2), 0.0, 1.0);
        const double left = std::clamp(x0 - kBar / 2, 0.0, 1.0 - kBar);
        const double bottom = std::clamp(y0 - kBar / 2, 0.0, 1.0 - kBar);
        const double dx = std::max(x1 - x0, kBar);
        const double dy = std::max(y1 - y0, kBar);
        bars.AddRect(left, bottom, 0.35, std::min(dx, 1.0 - left), std::min(dy, 1.0 - bottom), 0.3);
    }
}

// The pane proto takes the fill alone.
CVxStringA FillOnly(const CVxStringA& appearance)
{
    const int front = appearance.Find(" appearanceFront ");
    return front < 0 ? appearance : appearance.Left(front);
}

CVxStringA Head(const CVxStringA& appearance)
{
    float r, g, b;
    VxSplitColor(0xFFFFF3, r, g, b);
    return VxFormatA("Collision { %s children [\r\n  WindowSub0 {%s colorW %.2f %.2f %.2f}\r\n",
                     CVxWrlProtosGenerator::GetDefaultCollisionProxy().c_str(), FillOnly(appearance).c_str(),
                     r, g, b);
}

} // namespace

CVxStringA CVxWindowSubTypes::ExportWindowToVRML(SVx3DExportPars*, const CVxPart& part,
                                                 const CVxStringA& appearance) const
{
    CVxStringA text = Head(appearance);
    CVxWrlComplexFaceSetGenerator bars;
    AddBars(bars, GetWindowModel(part.subType));
    const CVxStringA shape =
        bars.GetIndexedFaceSet(CVxWrlProtosGenerator::ReuseAppearanceNode(appearance), false);
    if (!shape.IsEmpty())
        text += shape + "\r\n";
    text += "]}\r\n";
    return text;
}

CVxStringA CVxWindowSubTypes::ExportDoorToVRML(SVx3DExportPars*, const CVxPart& part,
                                               const CVxStringA& appearance) const
{
    CVxStringA text = Head(appearance);
    std::vector<CVxGlassPaneItem> panes;
    const std::vector<CVxSubItem>& items = GetDoorModel(part.subType, &panes);
    // The leaf: the unit square less its glass, in the leaf's plane.
    CVxDPolygon outline;
    outline.points = {CVxDPoint(0, 0), CVxDPoint(1, 0), CVxDPoint(1, 1), CVxDPoint(0, 1)};
    std::vector<CVxDPolygon> pieces{outline};
    std::vector<CVxDPolygon> holes;
    for (const CVxGlassPaneItem& pane : panes) {
        CVxDPolygon hole;
        const double l = std::clamp(pane.left, 0.0, 1.0), r = std::clamp(pane.right, 0.0, 1.0);
        const double t = std::clamp(1 - pane.bottom, 0.0, 1.0), b = std::clamp(1 - pane.top, 0.0, 1.0);
        if (r - l < 1e-3 || b - t < 1e-3)
            continue;
        hole.points = {CVxDPoint(l, t), CVxDPoint(l, b), CVxDPoint(r, b), CVxDPoint(r, t)};
        holes.push_back(hole);
    }
    if (!holes.empty())
        CVxDPolygon::RemoveHoles(pieces, holes);
    const CVxStringA reuse = CVxWrlProtosGenerator::ReuseAppearanceNode(appearance);
    for (const CVxDPolygon& piece : pieces) {
        if (piece.GetVertexCount() < 3)
            continue;
        CVxStringA section;
        for (const CVxDPoint& p : piece.points)
            VxAppendF(section, "%.3f %.3f ", p.x, p.y);
        VxAppendF(section, "%.3f %.3f ", piece.points[0].x, piece.points[0].y);
        VxAppendF(
            text,
            "Transform { translation 0 0 1 rotation 1 0 0 -1.5708 children Shape { %s geometry Extrusion { "
            "crossSection [%s] convex FALSE ccw TRUE }}}\r\n",
            reuse.c_str(), section.c_str());
    }
    CVxWrlComplexFaceSetGenerator bars;
    AddBars(bars, items);
    const CVxStringA shape = bars.GetIndexedFaceSet(reuse, false);
    if (!shape.IsEmpty())
        text += shape + "\r\n";
    text += "]}\r\n";
    return text;
}
