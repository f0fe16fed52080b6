#pragma once
// The draw flags that travel through all drawing of the plan: the main
// view, image export, thumbnails and printing.

enum EVxDrawFlag : int
{
    // Captions of objects.
    VX_DRAW_CAPTIONS = 1,
    // The caller has selected pen and brush; the object only traces its shape.
    VX_DRAW_OUTLINE_PASS = 2,
    // Link and sound markers of objects.
    VX_DRAW_MARKERS = 4,
    // Selection handles: the screen, not image export.
    VX_DRAW_HANDLES = 8,
    VX_DRAW_FLOOR_TEXTURES = 16,
    VX_DRAW_GRID = 32,
    // Grid labels show only together with the grid.
    VX_DRAW_GRID_LABELS = 64,
    VX_DRAW_BLACK_WHITE = 128,
    VX_DRAW_NO_CAPTIONS = 0x100,
    // The white ground is not painted.
    VX_DRAW_NO_GROUND = 0x200
};
