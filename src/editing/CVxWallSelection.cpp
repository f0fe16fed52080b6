#include "CVxWallSelection.h"

#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxHitDist.h"

#include <cmath>

namespace {
VxPOINT Pixels(const CVxDPoint& p, double zoom)
{
    return VxPOINT{static_cast<int>(std::lround(p.x * zoom)), static_cast<int>(std::lround(p.y * zoom))};
}
} // namespace

void CVxWallSelection::Collect(CVxFloor* /*floor*/, double /*zoom*/)
{
    // The wall editor always collects with its plan.
}

void CVxWallSelection::Collect(CVxFloor* floor, const CVxFloorPlan* plan, double zoom)
{
    m_symbols.clear();
    m_symbolIdx = -1;
    m_zoom = zoom;
    if (!floor || !plan || zoom <= 0)
        return;
    m_symbols.reserve(plan->vertices.size());
    for (size_t i = 0; i < plan->vertices.size(); ++i) {
        const CVxPlanVertex* vertex = plan->vertices[i];
        CVxSelSymbol symbol;
        symbol.kind = kindWallVertex;
        symbol.isRound = 1;
        symbol.shape = CVxSelSymbol::shapeCircle;
        symbol.hitSize = CVxHitDist::WallCtlPoint();
        symbol.partNo = static_cast<int>(i);
        symbol.pos = Pixels(vertex->Point(), zoom);
        switch (vertex->edges.size()) {
        case 1:
            symbol.color = colorDegree1;
            break;
        case 2:
            break;
        case 3:
            symbol.color = colorDegree3;
            break;
        case 4:
            symbol.color = colorDegree4;
            break;
        default:
            symbol.color = colorDegree5;
            break;
        }
        m_symbols.push_back(symbol);
    }
    const CVxRoomWalls& walls = floor->m_walls;
    for (int i = 0; i < walls.GetWallCount(); ++i) {
        CVxDPoint c0, c1;
        if (!walls.walls[static_cast<size_t>(i)].GetBezierControlPoints(c0, c1))
            continue;
        for (int k = 0; k < 2; ++k) {
            CVxSelSymbol symbol;
            symbol.kind = k == 0 ? kindCtrlPoint0 : kindCtrlPoint1;
            symbol.isRound = 1;
            symbol.shape = CVxSelSymbol::shapeDot;
            symbol.hitSize = CVxHitDist::WallCtlPoint();
            symbol.partNo = i;
            symbol.pos = Pixels(k == 0 ? c0 : c1, zoom);
            m_symbols.push_back(symbol);
        }
    }
    for (int i = 0; i < walls.GetHoleCount(); ++i) {
        const CVxHoleInFloor& hole = walls.holes[static_cast<size_t>(i)];
        if (hole.type != CVxHoleInFloor::TYPE_POLYGON) {
            // Eight handles round a rectangle or an ellipse, by the compass.
            CVxDPoint c[4];
            hole.GetRect(c, zoom);
            const CVxDPoint at[8] = {(c[0] + c[1]) * 0.5, c[1], (c[1] + c[2]) * 0.5, c[2],
                                     (c[2] + c[3]) * 0.5, c[3], (c[3] + c[0]) * 0.5, c[0]};
            for (int k = 0; k < 8; ++k) {
                CVxSelSymbol symbol;
                symbol.kind = kindHoleHandle;
                symbol.isRound = 1;
                symbol.color = colorHole;
                symbol.hitSize = CVxHitDist::WallCtlPoint();
                symbol.partNo = i;
                symbol.subIndex = k;
                symbol.pos =
                    VxPOINT{static_cast<int>(std::lround(at[k].x)), static_cast<int>(std::lround(at[k].y))};
                m_symbols.push_back(symbol);
            }
            continue;
        }
        for (int k = 0; k < hole.polygon.GetVertexCount(); ++k) {
            CVxSelSymbol symbol;
            symbol.kind = kindHolePoint;
            symbol.isRound = 1;
            symbol.shape = CVxSelSymbol::shapeSquare;
            symbol.color = colorHole;
            symbol.hitSize = CVxHitDist::WallCtlPoint();
            symbol.partNo = i;
            symbol.subIndex = k;
            symbol.pos = Pixels(hole.polygon.points[static_cast<size_t>(k)], zoom);
            m_symbols.push_back(symbol);
        }
    }
    m_selectedCount = static_cast<int>(m_symbols.size());
}
