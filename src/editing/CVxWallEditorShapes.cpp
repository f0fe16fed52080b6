#include "CVxRoomWalls.h"
#include "CVxWall.h"
#include "CVxWallEditor.h"

#include <algorithm>
#include <vector>

namespace {

struct SVxFrac
{
    double x, y;
};

struct SVxRoomShape
{
    // Outer outline, clockwise on the screen (y grows downwards), in
    // fractions of the width and depth.
    std::vector<SVxFrac> outline;
    // Inner walls, centred on their line.
    std::vector<SVxFrac> inner;
};

const std::vector<SVxRoomShape>& Shapes()
{
    static const std::vector<SVxRoomShape> shapes = {
        {{{0, 0}, {1, 0}, {1, 1}, {0, 1}}, {}},
        {{{0, 0}, {1, 0}, {1, 1}, {0, 1}}, {{0.5, 0}, {0.5, 1}}},
        {{{0, 0}, {0.7, 0}, {1, 0.3}, {1, 1}, {0, 1}}, {}},
        {{{0, 0}, {0.5, 0}, {0.5, 0.5}, {1, 0.5}, {1, 1}, {0, 1}}, {}},
        {{{0.5, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0.5}, {0.5, 0.5}}, {}},
        {{{0, 0}, {1, 0}, {1, 0.5}, {0.5, 0.5}, {0.5, 1}, {0, 1}}, {}},
        {{{0, 0}, {1, 0}, {1, 1}, {0.5, 1}, {0.5, 0.5}, {0, 0.5}}, {}},
        {{{0, 0}, {1, 0}, {1, 0.4}, {2.0 / 3, 0.4}, {2.0 / 3, 1}, {1.0 / 3, 1}, {1.0 / 3, 0.4}, {0, 0.4}},
         {}},
        {{{0, 0}, {1.0 / 3, 0}, {1.0 / 3, 0.5}, {2.0 / 3, 0.5}, {2.0 / 3, 0}, {1, 0}, {1, 1}, {0, 1}}, {}},
        {{{0, 0}, {1, 0}, {1, 1}, {2.0 / 3, 1}, {2.0 / 3, 0.5}, {1.0 / 3, 0.5}, {1.0 / 3, 1}, {0, 1}}, {}},
        {{{0, 0}, {0.6, 0}, {0.6, 0.4}, {1, 0.4}, {1, 1}, {0.4, 1}, {0.4, 0.6}, {0, 0.6}}, {}},
        {{{0, 0}, {1, 0}, {1, 0.8}, {0.7, 0.8}, {0.6, 1}, {0.4, 1}, {0.3, 0.8}, {0, 0.8}}, {}},
        {{{0.3, 0}, {0.7, 0}, {1, 0.3}, {1, 0.7}, {0.7, 1}, {0.3, 1}, {0, 0.7}, {0, 0.3}}, {}},
    };
    return shapes;
}

} // namespace

void CVxWallEditor::InitNewRoomShape(CVxRoomWalls& walls, int shape, double width, double depth, double thick,
                                     double height)
{
    const std::vector<SVxRoomShape>& shapes = Shapes();
    if (shape < 0 || shape >= static_cast<int>(shapes.size())) {
        walls.SetAsBasicRect(width, depth, thick, height);
        return;
    }
    const SVxRoomShape& outline = shapes[static_cast<size_t>(shape)];
    walls.RemoveAll();
    const size_t n = outline.outline.size();
    // Side A of a wall lies to the left of its direction; walking the
    // outline clockwise puts every wall's thickness outside.
    for (size_t i = 0; i < n; ++i) {
        const SVxFrac& a = outline.outline[i];
        const SVxFrac& b = outline.outline[(i + 1) % n];
        walls.GetNewWall()->Set(a.x * width, a.y * depth, b.x * width, b.y * depth, CVxWall::ALIGN_SIDE_A,
                                thick, height, height, true, false);
    }
    for (size_t i = 0; i + 1 < outline.inner.size(); i += 2) {
        const SVxFrac& a = outline.inner[i];
        const SVxFrac& b = outline.inner[i + 1];
        walls.GetNewWall()->Set(a.x * width, a.y * depth, b.x * width, b.y * depth, CVxWall::ALIGN_CENTER,
                                thick, height, height, true, false);
    }
}
