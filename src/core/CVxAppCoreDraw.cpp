// The plan of the current floor as the main view, image export and
// thumbnails show it: white ground, room floors, the scan of a paper
// drawing, grid, walls and openings, objects, annotations and the selection.

#include "CVxAppCore.h"

#include "CVxDC.h"
#include "CVxOptions.h"
#include "CVxPicBuf.h"
#include "CVxPictureLoadCache.h"
#include "CVxQtDC.h"
#include "VxGMDraw.h"
#include "VxZoomLadder.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace {
// Openings in the floor show as a pale red cross hatch.
constexpr unsigned kHoleHatchColor = 0xFFD6D6;

unsigned DarkerBy20(unsigned colour)
{
    unsigned result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        unsigned channel = (colour >> shift) & 0xFF;
        if (channel >= 20)
            channel -= 20;
        result |= channel << shift;
    }
    return result;
}
// A length of the sheet in pixels. A huge room at a deep zoom is as good
// as a sheet of a few hundred million pixels, and sums of these stay ints.
int SheetPixels(double pixels)
{
    constexpr double limit = 4e8;
    return static_cast<int>(std::isfinite(pixels) ? std::clamp(pixels, -limit, limit) : 0.0);
}
} // namespace

int CVxAppCore::GetPartDrawFlagsFromOptions() const
{
    const CVxOptions* options = VX_GetOptions();
    int flags = options->m_showCaptions ? drawCaptions : 0;
    if (options->m_drawFloorTextures)
        flags |= drawFloorTextures;
    if (options->m_showGrid)
        flags |= drawGrid;
    if (options->m_showGridLabels)
        flags |= drawGridLabels;
    if (m_drawBlackWhite)
        flags |= drawBlackWhite;
    return flags;
}

void CVxAppCore::DrawProject(CVxDC* dc, int x, int y, const VxRECT& updateRect, int flags)
{
    if (m_drawingPaused)
        return;
    const int oldColorMode = dc->GetColorMode();
    if (flags & drawBlackWhite)
        dc->SetColorMode(CVxDC::colorModeGrey);

    const double zoom = m_zoom;
    const int marginLeft = SheetPixels(m_project.m_spaceLeft * zoom);
    const int marginTop = SheetPixels(m_project.m_spaceTop * zoom);
    const int marginRight = SheetPixels(m_project.m_spaceRight * zoom);
    const int marginBottom = SheetPixels(m_project.m_spaceBottom * zoom);
    const int originX = x + marginLeft;
    const int originY = y + marginTop;
    const int width = SheetPixels(m_project.m_width * zoom) + marginLeft + marginRight;
    const int height = SheetPixels(m_project.m_height * zoom) + marginTop + marginBottom;
    const int clipX = std::max(x, 0);
    const int clipY = std::max(y, 0);
    const VxRECT clip{clipX, clipY, x + width, y + height};
    dc->SetClipRect(clip);
    dc->SetInterpolationQuality(false);
    dc->SelectFont(CVxDC::IsPrinting() ? m_project.m_captionPrintFont : m_project.m_captionFont);
    dc->SetBkMode(CVxDC::bkTransparent);
    CVxPictureLoadCache::ResetDrawnFlags();

    const bool scanShown = DrawRoomFloor(dc, width, height, zoom, originX, originY, x, y, flags, updateRect);
    DrawRoomWalls(dc, zoom, originX, originY, flags, scanShown);
    if (m_activeEditor)
        m_activeEditor->OnDrawBackground(dc, zoom, originX, originY, clip, flags, 2);
    DrawObjects(dc, zoom, originX, originY, updateRect, flags);
    DrawTempObject(dc, zoom, originX, originY);
    DrawGridLabels(dc, zoom, x, y, width, height, flags);

    dc->ClearClipping();
    if (m_activeEditor)
        m_activeEditor->OnDraw(dc, zoom, originX, originY);
    if (m_showAnnotations)
        m_project.GetFloor()->m_annotations.Draw(dc, originX, originY, zoom);
    if (flags & drawHandles)
        DrawSelection(dc, originX, originY);
    dc->SelectOldFont();
    dc->SetColorMode(oldColorMode);
    // Pictures that no object showed in this pass leave memory.
    CVxPictureLoadCache::RemovePicturesNotDrawn();
}

void CVxAppCore::EnableSpriteCache(bool on)
{
    m_useSpriteCache = on;
    if (!on)
        m_spriteCache.Clear();
}

void CVxAppCore::PauseDrawing(bool pause)
{
    if (pause)
        ++m_drawingPaused;
    else if (m_drawingPaused > 0)
        --m_drawingPaused;
}

void CVxAppCore::DrawSelection(CVxDC* dc, int x, int y)
{
    // Each selected object gets its outline; the handles lie around it.
    CVxFloor* floor = m_project.GetFloor();
    dc->SelectPen(CVxDC::penSolid | CVxDC::penKeepWidth, 1, 0xC06000);
    dc->SelectBrush(CVxDC::brushNull, 0);
    for (CVxPart& part : floor->m_objects) {
        if (!part.inUse || !part.selected)
            continue;
        const VxPOINT* c = part.GetCachedRect(x, y, m_zoom, nullptr);
        dc->Polygon(c, 4);
    }
    dc->SelectOldBrush();
    dc->SelectOldPen();
    // Undo, another floor or zoom may have changed the objects since the
    // handles were placed.
    if (!m_selection.IsResizing()) {
        m_selection.SetProject(&m_project);
        m_selection.Collect(floor, m_zoom);
    }
    m_selection.DrawToHdc(dc, x, y);
    if (const CVxSelSymbol* touched = m_selection.SafeGetSymbol(m_touchSymbol))
        touched->DrawTouchCircle(dc, x, y);
}

bool CVxAppCore::LoadCurrentBkgFloorScan(CVxPicBuf* picture, bool show)
{
    CVxFloor* floor = m_project.GetFloor();
    m_scanPart = CVxPart();
    m_scanPart.inUse = true;
    m_scanPart.type = ptLogo;
    if (picture) {
        m_scanPart.SetPicture(picture);
    } else {
        m_scanPart.appearFill.main.texture = floor->m_bkgScanFile;
        if (floor->m_bkgScanFile.IsEmpty() || !m_scanPart.LoadPicture()) {
            floor->m_bkgScanFile.Empty();
            ResetBkgFloorScanPart();
            return false;
        }
    }
    CVxDRect place = floor->m_bkgScanRect;
    if (!(place.Width() > 0) || !(place.Height() > 0)) {
        // Fitted into the whole sheet with its own proportions, centred.
        CVxPicBuf* image = m_scanPart.GetPicture();
        const double pictureWidth = std::max(1, image->GetWidth());
        const double pictureHeight = std::max(1, image->GetHeight());
        const double totalWidth = m_project.GetTotalWidth();
        const double totalHeight = m_project.GetTotalHeight();
        const double scale = std::min(totalWidth / pictureWidth, totalHeight / pictureHeight);
        const double left = -m_project.m_spaceLeft + (totalWidth - pictureWidth * scale) / 2;
        const double top = -m_project.m_spaceTop + (totalHeight - pictureHeight * scale) / 2;
        place = CVxDRect(left, top, left + pictureWidth * scale, top + pictureHeight * scale);
    }
    m_scanPart.x = place.left;
    m_scanPart.y = place.top;
    m_scanPart.width = place.Width();
    m_scanPart.height = place.Height();
    m_scanPart.cacheScale = 0;
    if (show)
        m_project.m_bkgScanVisible = true;
    return true;
}

void CVxAppCore::ResetBkgFloorScanPart()
{
    m_scanPart = CVxPart();
}

void CVxAppCore::DrawObjects(CVxDC* dc, double zoom, int originX, int originY, const VxRECT& updateRect,
                             int flags)
{
    CVxFloor* floor = m_project.GetFloor();
    const CVxViewLayers& layers = floor->m_layers;
    // On a raster surface small drawings come from kept pictures where the
    // same one was drawn before.
    auto* raster = m_useSpriteCache ? dynamic_cast<CVxQtDC*>(dc) : nullptr;
    if (raster && !raster->CanTakeSprites())
        raster = nullptr;
    // Layer by layer, and within a layer in the order of the object list,
    // which the z-order commands change.
    for (int layer = 0; layer < layers.GetLayerCount(); ++layer) {
        if (!layers.IsLayerVisible(layer))
            continue;
        const int transparency = layers.GetLayerTransparency(layer);
        for (CVxPart& part : floor->m_objects) {
            if (!part.inUse || part.layer != layer)
                continue;
            // Objects outside the repainted area cost a rectangle test; the
            // margin keeps thick pens and captions whole.
            VxRECT box;
            part.GetCullingRect(&box, originX, originY, zoom);
            if (box.right - box.left < 2 && box.bottom - box.top < 2)
                continue;
            const VxRECT area{box.left - 10, box.top - 10, box.right + 10, box.bottom + 10};
            if (area.right <= updateRect.left || area.left >= updateRect.right ||
                area.bottom <= updateRect.top || area.top >= updateRect.bottom)
                continue;
            const auto draw = [&](CVxDC& surface) {
                part.DrawToHdc(&surface, floor, m_project.m_unit, originX, originY, zoom, flags, transparency,
                               1.0);
            };
            if (!raster || !m_spriteCache.Draw(*raster, draw))
                draw(*dc);
        }
    }
}

bool CVxAppCore::DrawRoomFloor(CVxDC* dc, int width, int height, double zoom, int x, int y, int clipX,
                               int clipY, int flags, const VxRECT& visible)
{
    dc->SetBkColor(0xFFFFFF, 255);
    if (!(flags & drawNoGround)) {
        dc->SelectPen(CVxDC::penNull, 0, 0);
        dc->SelectBrush(CVxDC::brushSolid, 0xFFFFFF);
        // A shape's edges fall between pixels and come out half covered; the
        // ground reaches a pixel beyond the sheet on every side and the clip
        // trims it to the sheet, whole pixels to the edge.
        dc->Rectangle(clipX - 1, clipY - 1, clipX + width + 1, clipY + height + 1);
        dc->SelectOldBrush();
        dc->SelectOldPen();
    }
    const VxRECT clip{clipX, clipY, clipX + width, clipY + height};
    if (m_activeEditor)
        m_activeEditor->OnDrawBackground(dc, zoom, x, y, clip, flags, 0);
    const int editor = m_activeEditor ? m_activeEditor->GetID() : 0;
    bool gridUnder = false;
    bool scanShown = false;
    if (editor != VX_EDITOR_SIDE && editor != VX_EDITOR_PAGE_LAYOUT) {
        // Floor textures hide the grid unless it is drawn over them; without
        // textures it goes over the room colours and under the walls.
        gridUnder = (flags & drawFloorTextures) && m_floorPlan.IsFloorTexturePresent();
        if (gridUnder)
            DrawRoomFloorGrid(dc, width, height, zoom, x, y, clipX, clipY, flags, visible);
        dc->SelectPen(CVxDC::penNull, 0, 0);
        m_floorPlan.DrawRegions(dc, x, y, zoom, flags);
        dc->SelectOldPen();
        if (m_project.m_bkgScanVisible && m_scanPart.GetPicture()) {
            m_scanPart.DrawToHdc(dc, m_project.GetFloor(), m_project.m_unit, x, y, zoom, flags, 0, 1.0);
            scanShown = true;
        }
        if (m_activeEditor)
            m_activeEditor->OnDrawBackground(dc, zoom, x, y, clip, flags, 1);
    }
    if (!gridUnder)
        DrawRoomFloorGrid(dc, width, height, zoom, x, y, clipX, clipY, flags, visible);
    return scanShown;
}

void CVxAppCore::DrawRoomFloorGrid(CVxDC* dc, int width, int height, double zoom, int x, int y, int clipX,
                                   int clipY, int flags, const VxRECT& visible)
{
    const double step = m_project.m_gridSize * zoom;
    if (!(flags & drawGrid) || !std::isfinite(step) || step < 3)
        return;
    int style = CVxDC::penSolid;
    if (m_project.m_gridLineStyle == 1)
        style = CVxDC::IsPrinting() ? CVxDC::penDash : CVxDC::penDot;
    else if (m_project.m_gridLineStyle == 2)
        style = CVxDC::penDashDot;
    dc->SelectPen(style, 0, m_project.m_gridColor, 128);
    // Lines are tied to the room's origin and fill the whole sheet.
    const double x0 = x - clipX;
    const double y0 = y - clipY;
    // Lines only where the device shows them: never more than its pixels
    // hold, whatever the zoom and the origin.
    const auto drawLines = [&](double origin, int from, int to, const std::function<void(int)>& line) {
        const double first = std::ceil((from - origin) / step);
        const long long maxLines = static_cast<long long>(std::max(0, to - from) / 3) + 2;
        for (long long n = 0; n < maxLines; ++n) {
            const double at = (first + static_cast<double>(n)) * step + origin;
            if (!(at < to))
                break;
            if (at >= from)
                line(static_cast<int>(at));
        }
    };
    drawLines(x0, std::max(1, visible.left - clipX), std::min(width - 1, visible.right - clipX),
              [&](int px) { dc->Line(clipX + px, clipY + 1, clipX + px, clipY + height - 1); });
    drawLines(y0, std::max(1, visible.top - clipY), std::min(height - 1, visible.bottom - clipY),
              [&](int py) { dc->Line(clipX + 1, clipY + py, clipX + width - 1, clipY + py); });
    dc->SelectOldPen();
}

void CVxAppCore::DrawRoomWalls(CVxDC* dc, double zoom, int x, int y, int flags, bool scanShown)
{
    CVxFloor* floor = m_project.GetFloor();
    CVxRoomWalls& walls = floor->m_walls;
    if (walls.walls.empty() && walls.holes.empty())
        return;
    const bool mono = (flags & drawBlackWhite) != 0;
    const unsigned wallColor = mono ? 0 : floor->m_wallsColor;
    const unsigned lineColor = mono ? 0 : floor->m_wallsContour;
    // A background scan shows through the walls.
    const unsigned char wallAlpha = scanShown ? 172 : 255;

    const int oldBkMode = dc->SetBkMode(CVxDC::bkOpaque);
    dc->SelectPen(CVxDC::penSolid, 0, wallColor, 255);
    dc->SelectBrush(CVxDC::brushSolid, wallColor, 0, wallAlpha);
    walls.Draw(dc, wallColor, lineColor, wallAlpha, x, y, zoom);
    dc->SelectOldBrush();
    dc->SelectOldPen();

    dc->SelectPen(CVxDC::penSolid, 0, DarkerBy20(wallColor));
    dc->SelectBrush(CVxDC::brushHatched, kHoleHatchColor, CVxDC::hatchDiagCross);
    for (CVxHoleInFloor& hole : walls.holes) {
        if (hole.type == CVxHoleInFloor::TYPE_POLYGON) {
            std::vector<VxPOINT> points;
            points.reserve(hole.polygon.points.size());
            for (const CVxDPoint& p : hole.polygon.points)
                points.push_back(VxPOINT{static_cast<int>(std::lround(p.x * zoom)) + x,
                                         static_cast<int>(std::lround(p.y * zoom)) + y});
            if (points.size() > 2)
                dc->Polygon(points.data(), static_cast<int>(points.size()));
            continue;
        }
        const VxPOINT* corners = hole.GetCachedRect(x, y, zoom);
        if (hole.type == CVxHoleInFloor::TYPE_ELLIPSE) {
            GMDrawEllipse(*dc, corners);
        } else {
            dc->Polygon(corners, 4);
        }
    }
    dc->SelectOldBrush();
    dc->SelectOldPen();
    dc->SetBkMode(oldBkMode);
}

namespace {
// Spreadsheet column names: A to Z, then AA, AB and so on.
CVxStringW ColumnName(long long index)
{
    wchar_t letters[8];
    int count = 0;
    for (long long n = index; count < 7; n = n / 26 - 1) {
        letters[count++] = static_cast<wchar_t>(L'A' + n % 26);
        if (n < 26)
            break;
    }
    CVxStringW name;
    while (count > 0)
        name += letters[--count];
    return name;
}
} // namespace

void CVxAppCore::DrawGridLabels(CVxDC* dc, double zoom, int x, int y, int width, int height, int flags)
{
    if ((flags & (drawGrid | drawGridLabels)) != (drawGrid | drawGridLabels))
        return;
    const double step = m_project.m_gridSize * zoom;
    if (!std::isfinite(step) || step < 3 || !std::isfinite(m_project.m_spaceLeft) ||
        !std::isfinite(m_project.m_spaceTop))
        return;
    CVxFont font;
    font.m_size = 8;
    dc->SelectFont(font);
    VxSIZE letter;
    dc->GetTextExtentPoint(CVxStringW(L"M"), letter);
    const int unit =
        std::max(1, static_cast<int>(zoom / (m_project.m_baseZoom > 0 ? m_project.m_baseZoom : 1.0)));
    const unsigned colour = 0x808080;

    // Labels are tied to the grid: counting starts that many cells left of
    // and above the room's origin.
    const long long firstColumn =
        static_cast<long long>(std::floor(m_project.m_spaceLeft / m_project.m_gridSize));
    const long long firstRow =
        static_cast<long long>(std::floor(m_project.m_spaceTop / m_project.m_gridSize));
    const double startX = x + m_project.m_spaceLeft * zoom - firstColumn * step;
    const double startY = y + m_project.m_spaceTop * zoom - firstRow * step;

    // One label per cell the sheet shows, however the numbers came.
    const long long maxLabels = static_cast<long long>(std::max(width, height) / 3) + 2;
    // A cell wider than the sheet is as good as the sheet.
    const int cellSize = static_cast<int>(std::min(step, static_cast<double>(std::max(width, height)) + 1));
    int lastEnd = x - static_cast<int>(100 * zoom);
    for (long long i = 0; i < maxLabels; ++i) {
        const double left = startX + static_cast<double>(i) * step;
        if (left > x + width)
            break;
        const CVxStringW name = ColumnName(i);
        VxSIZE size;
        dc->GetTextExtentPoint(name, size);
        const int cellLeft = static_cast<int>(left);
        if (cellLeft <= lastEnd)
            continue;
        const bool wide = step > size.cx;
        VxRECT rect{cellLeft, y + unit, cellLeft + cellSize, y + unit + letter.cy};
        dc->DrawText(name, rect, (wide ? CVxDC::dtCenter : 0u) | CVxDC::dtSingleLine | CVxDC::dtNoClip,
                     colour);
        lastEnd = wide ? cellLeft + cellSize : cellLeft + size.cx;
    }
    int lastBottom = y - letter.cy;
    for (long long i = 0; i < maxLabels; ++i) {
        const double top = startY + static_cast<double>(i) * step;
        if (top > y + height)
            break;
        const int cellTop = static_cast<int>(top);
        if (cellTop - lastBottom <= letter.cy)
            continue;
        const bool tall = step > letter.cy;
        VxRECT rect{x + 3 * unit, cellTop, x + 50 * unit, cellTop + cellSize};
        CVxStringW number;
        number.sprintf(L"%lld", i + 1);
        dc->DrawText(number, rect, (tall ? CVxDC::dtVCenter : 0u) | CVxDC::dtSingleLine | CVxDC::dtNoClip,
                     colour);
        lastBottom = cellTop;
    }
    dc->SelectOldFont();
}

void CVxAppCore::SetTempObject(int kind, double x1, double y1, double x2, double y2)
{
    m_tempKind = kind;
    m_temp[0] = x1;
    m_temp[1] = y1;
    m_temp[2] = x2;
    m_temp[3] = y2;
}

void CVxAppCore::DrawTempObject(CVxDC* dc, double zoom, int x, int y)
{
    if (m_tempKind < 1 || m_tempKind > 3)
        return;
    const int x1 = VX_RoundToPixel(m_temp[0] * zoom) + x;
    const int y1 = VX_RoundToPixel(m_temp[1] * zoom) + y;
    const int x2 = VX_RoundToPixel(m_temp[2] * zoom) + x;
    const int y2 = VX_RoundToPixel(m_temp[3] * zoom) + y;
    dc->SelectPen(CVxDC::penSolid, 1, 0);
    dc->SelectBrush(CVxDC::brushNull, 0);
    if (m_tempKind == 1)
        dc->Line(x1, y1, x2, y2);
    else if (m_tempKind == 2)
        dc->Rectangle(x1, y1, x2, y2);
    else
        dc->Ellipse(x1, y1, x2, y2);
    dc->SelectOldBrush();
    dc->SelectOldPen();
}

bool CVxAppCore::DrawProjectThumb(CVxDC* dc, CVxProject& project, int width, int height, bool cropToObjects,
                                  const bool* cancel)
{
    CVxFloor* floor = project.GetFloor();
    floor->m_walls.RebuildWalls();
    CVxFloorPlan plan;
    plan.CreatePlan(*floor, project.m_unit);
    floor->ResnapAllParts(&plan);

    CVxDRect area(-project.m_spaceLeft, -project.m_spaceTop, project.m_width + project.m_spaceRight,
                  project.m_height + project.m_spaceBottom);
    if (cropToObjects) {
        bool any = false;
        for (const CVxPart& part : floor->m_objects) {
            CVxDRect box;
            part.GetBoundingRect(&box, 1.0);
            if (!any)
                area = box;
            else
                area.UnionRect(area, box);
            any = true;
        }
        if (any) {
            const double growX = area.Width() / 10;
            const double growY = area.Height() / 10;
            area = CVxDRect(area.left - growX, area.top - growY, area.right + growX, area.bottom + growY);
        }
    }
    if (area.Width() <= 0 || area.Height() <= 0 || width <= 0 || height <= 0)
        return true;
    const double scale = area.Width() > area.Height() ? width / area.Width() : height / area.Height();
    const int originX = VX_RoundToPixel((width - area.Width() * scale) / 2 - area.left * scale);
    const int originY = VX_RoundToPixel((height - area.Height() * scale) / 2 - area.top * scale);

    plan.DrawRegions(dc, originX, originY, scale, 0);
    dc->SelectPen(CVxDC::penSolid, 0, floor->m_wallsContour);
    dc->SelectBrush(CVxDC::brushSolid, floor->m_wallsColor);
    for (const CVxWall& wall : floor->m_walls.walls) {
        if (cancel && *cancel) {
            dc->SelectOldBrush();
            dc->SelectOldPen();
            return false;
        }
        wall.Draw(dc, floor->m_wallsColor, floor->m_wallsContour, 255, originX, originY, scale);
    }
    dc->SelectOldBrush();
    dc->SelectOldPen();
    for (CVxPart& part : floor->m_objects) {
        if (cancel && *cancel)
            return false;
        if (!part.inUse || part.type == ptMeasLine || part.type == ptLogo || part.type == ptLabel)
            continue;
        part.DrawToHdc(dc, floor, project.m_unit, originX, originY, scale, 0, 0, 1.0);
    }
    return true;
}

const CVxFloor* CVxAppCore::LocalCoordsFloor() const
{
    if (!m_showLocalCoords || m_project.m_floors.empty())
        return nullptr;
    const int current = m_project.m_currentFloor;
    return m_project
        .m_floors[current >= 0 && current < m_project.GetFloorCount() ? static_cast<size_t>(current) : 0];
}

void CVxAppCore::TranslateCoordImageToLocal(double& x, double& y) const
{
    const CVxFloor* floor = LocalCoordsFloor();
    if (floor)
        floor->m_localCoords.SubtractFrom(x, y);
    if (m_absoluteCoords)
        return;
    if (m_localOriginSignX < 0)
        x = m_project.m_width - x;
    if (m_localOriginSignY < 0)
        y = m_project.m_height - y;
    x += m_localOriginX;
    y += m_localOriginY;
}

void CVxAppCore::TranslateCoordLocalToImage(double& x, double& y) const
{
    const CVxFloor* floor = LocalCoordsFloor();
    if (!m_absoluteCoords) {
        x -= m_localOriginX;
        y -= m_localOriginY;
        if (m_localOriginSignX < 0)
            x = m_project.m_width - x;
        if (m_localOriginSignY < 0)
            y = m_project.m_height - y;
    }
    if (floor)
        floor->m_localCoords.AddTo(x, y);
}

bool CVxAppCore::DrawProjectThumbOnWhite(CVxDC* dc, CVxProject& project, int width, int height)
{
    dc->EnableSmoothing(true);
    dc->SelectPen(CVxDC::penNull, 0, 0);
    dc->SelectBrush(CVxDC::brushSolid, 0xFFFFFF);
    dc->Rectangle(0, 0, width + 1, height + 1);
    dc->SelectOldBrush();
    dc->SelectOldPen();
    return DrawProjectThumb(dc, project, width, height, false, nullptr);
}
