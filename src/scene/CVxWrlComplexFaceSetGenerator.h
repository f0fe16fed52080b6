#pragma once
// Many boxes written as one Shape: the bars of a window or a door leaf.

#include "CVxStringA.h"

#include <vector>

class CVxWrlComplexFaceSetGenerator
{
public:
    void AddRect(double x, double y, double z, double dx, double dy, double dz);
    // One Shape with every box, or empty text when there is none.
    CVxStringA GetIndexedFaceSet(const CVxStringA& appearance, bool unused) const;

private:
    struct SBox
    {
        double x, y, z, dx, dy, dz;
    };
    std::vector<SBox> m_boxes;
};
