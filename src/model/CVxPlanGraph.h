#pragma once
// The planar graph of a floor plan: wall centre lines split at every
// crossing. Each edge has two sides; a walk round a face uses one side of
// each edge it passes.

#include "CVxDPoint.h"

#include <cstdint>
#include <vector>

class CVxPlanEdge;

class CVxPlanVertex
{
public:
    CVxPlanVertex(double px, double py) : x(px), y(py) {}

    // Sorted in whole degrees: the angle is truncated towards zero and taken
    // modulo 360; equal angles keep the order of insertion.
    void AddEdge(CVxPlanEdge* edge, double edgeAngle);
    // The next edge after edge in the angular order (before it when
    // backwards), cyclically; with skipUsed the next whose side in that
    // direction of walk is free. Null if edge isn't here or none is left.
    CVxPlanEdge* GetNextEdge(const CVxPlanEdge* edge, bool backwards, bool skipUsed) const;
    CVxDPoint Point() const { return CVxDPoint(x, y); }

    double x;
    double y;
    std::vector<CVxPlanEdge*> edges;
    int32_t degree = 0;
    int32_t component = -1;
    std::vector<double> edgeAngles;
};

class CVxPlanEdge
{
public:
    CVxPlanEdge(CVxPlanVertex* fromVertex, CVxPlanVertex* toVertex, double wallAngle, int32_t wallIndex)
        : from(fromVertex), to(toVertex), angle(wallAngle), wall(wallIndex)
    {
    }

    // Whether leaving vertex in that kind of walk would use a side already
    // used; with a null vertex, whether both sides are used.
    bool IsUsed(const CVxPlanVertex* vertex, bool outerWalk) const;
    // Uses up that side and returns the other end.
    CVxPlanVertex* GetNextVert(const CVxPlanVertex* vertex, bool outerWalk);

    CVxPlanVertex* from;
    CVxPlanVertex* to;
    bool freeSide0 = true;
    bool freeSide1 = true;
    double angle;
    int32_t wall;
};
