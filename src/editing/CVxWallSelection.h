#pragma once
// The handles of the wall editor: one round symbol on every vertex of the
// plan's graph, coloured by how many walls meet there, the control points
// of curved walls, and the points of floor openings.

#include "CVxSelectionHolder.h"

class CVxFloorPlan;

class CVxWallSelection : public CVxSelectionHolder
{
public:
    // What a symbol stands for, in its kind.
    static constexpr int kindWallVertex = 8;
    static constexpr int kindCtrlPoint0 = 6;
    static constexpr int kindCtrlPoint1 = 7;
    static constexpr int kindHolePoint = 10;
    static constexpr int kindHoleHandle = 11;

    // Vertex colours by degree; two walls keep the default.
    static constexpr unsigned colorDegree1 = 9281023;
    static constexpr unsigned colorDegree3 = 9301759;
    static constexpr unsigned colorDegree4 = 13500301;
    static constexpr unsigned colorDegree5 = 255;
    static constexpr unsigned colorHole = 16761485;

    void Collect(CVxFloor* floor, double zoom) override;
    // Symbols in pixels relative to the object origin: the vertex symbols
    // carry the vertex's index in partNo, the control points the wall's
    // index, hole points the hole's index with the point in subIndex.
    void Collect(CVxFloor* floor, const CVxFloorPlan* plan, double zoom);
    bool OnMouseMove(CVxFloor*, unsigned, int, int, double, int, VxRECT*) override { return false; }
    std::vector<CVxSelSymbol>& Symbols() { return m_symbols; }
    // The zoom the symbols were placed at.
    double GetZoom() const { return m_zoom; }

private:
    double m_zoom = 0;
};
