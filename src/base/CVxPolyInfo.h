#pragma once
// The working list of one outline while a floor opening is subtracted from a
// room: its vertices, and the points where the two outlines cross inserted
// between them in order along the edges.

#include "CVxDPoint.h"

#include <cstdint>
#include <vector>

class CVxDPolygon;

struct CVxPolyInfo
{
    CVxDPoint point;
    // Edge of the outline on which the entry lies; a vertex's own index.
    int32_t edge = 0;
    // Position along that edge, 0..1; 0 for a vertex.
    double param = 0;
    // Outside the other outline.
    bool isOuter = false;
    // On the other outline's boundary.
    bool isOnBoundary = false;
    // The matching entry in the other outline's list, -1 for none.
    int32_t crossIndex = -1;
    bool visited = false;

    using List = std::vector<CVxPolyInfo>;

    // How near the other outline a point may lie and still count as on it.
    static constexpr double kOnLineDistance = 0.001;

    // One entry per vertex.
    static List Build(const CVxDPolygon& polygon);
    // Marks each entry on the other outline (within 0.001 of it, or at one of
    // its vertices) or, if not, inside or outside it.
    static void MarkOuterVertices(List& list, const CVxDPolygon& other);
    // No entry lies outside without being on the boundary.
    static bool IsCompletelyInner(const List& list);
    // Every entry lies outside.
    static bool IsCompletelyOuter(const List& list);
    // The index of the entry at (edge, param): an existing one within EPS, or
    // a new one inserted in order and marked as on the boundary.
    static int InsertPoint(List& list, int edge, double param, const CVxDPoint& point, bool* outIsNew);
    // Raises every cross index at or above from by one, after an insertion
    // into the other list.
    static void ShiftCrossIndices(List& list, int from);
    // Links two entries as the same crossing; neither counts as outside.
    static void MarkCross(List& a, int indexA, List& b, int indexB);
};

using CVxPolyInfoList = CVxPolyInfo::List;
