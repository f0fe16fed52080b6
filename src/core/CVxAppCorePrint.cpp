// Printing and drawing exchange export of the current floor: the print
// settings kept in the project, one page of a print through any drawing
// context, and the plan as CAD entities on named layers.

#include "CVxAppCore.h"

#include "CVxDC.h"
#include "CVxDxfDC.h"
#include "CVxOptions.h"
#include "CVxPrintConfig.h"
#include "CVxUnits.h"
#include "VxGMDraw.h"
#include "VxNumbers.h"
#include "VxSafeSave.h"

#include <QFile>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

int SafePixels(double value)
{
    constexpr double limit = 4e8;
    return std::isfinite(value) ? static_cast<int>(std::clamp(value, -limit, limit)) : 0;
}

VxRECT Intersect(const VxRECT& a, const VxRECT& b)
{
    VxRECT r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
             std::min(a.bottom, b.bottom)};
    if (r.right < r.left)
        r.right = r.left;
    if (r.bottom < r.top)
        r.bottom = r.top;
    return r;
}

// Scales of the drawing exchange file: one device pixel is a tenth of a
// millimetre, and texts come out as on a print at 1:50.
constexpr double kDxfPixelsPerCm = 100;
constexpr double kDxfPaperScale = 50;

// The layer of an object's drawing and its colour number.
std::pair<const char*, int> DxfLayerOf(const CVxPart& part)
{
    switch (part.type) {
    case ptDoor:
    case ptWindow:
        return {"DOORS_WINDOWS", 3};
    case ptMeasLine:
    case ptAngle:
        return {"DIMENSIONS", 1};
    case ptLabel:
    case ptTable:
    case ptEnergyLabel:
        return {"TEXT", 5};
    case ptLine:
    case ptArrow:
    case ptPolyline:
        return {"LINES", 8};
    default:
        return {"OBJECTS", 6};
    }
}

} // namespace

void CVxAppCore::LoadPrintConfig(CVxPrintSizeCalculator& config) const
{
    const CVxOptions* options = VX_GetOptions();
    config.method = options->m_printMethod == 1 ? 1 : 0;
    config.scaleBar = options->m_printScale;
    config.landscape = options->m_paperOrientation == 1 ? 1 : 0;
    config.optionBorder = std::clamp(options->m_pageBorder, 0, 10000);
    config.border = config.optionBorder / 100.0;
    config.LoadFromString(m_project.m_printSetup);
    config.titleText = m_project.m_printTitle;
    config.note1Text = m_project.m_printNote1;
    config.note2Text = m_project.m_printNote2;
    config.customLayout = options->m_printCustomLayout && !options->m_printCustomLayoutFile.IsEmpty();
    if (config.customLayout && !CVxPrintSizeCalculator::GetPageContentsBorderRect(
                                   options->m_printCustomLayoutFile, config.pageRect, config.layoutPage))
        config.pageRect = CVxDRect();
}

void CVxAppCore::SavePrintConfig(const CVxPrintConfig& config)
{
    const CVxStringW text = config.SaveToString();
    const bool storedBefore = !m_project.m_printSetup.IsEmpty();
    const bool changed = text != m_project.m_printSetup || config.titleText != m_project.m_printTitle ||
                         config.note1Text != m_project.m_printNote1 ||
                         config.note2Text != m_project.m_printNote2;
    m_project.m_printSetup = text;
    m_project.m_printTitle = config.titleText;
    m_project.m_printNote1 = config.note1Text;
    m_project.m_printNote2 = config.note2Text;
    if (changed && storedBefore)
        m_project.m_modified = true;
    CVxOptions* options = VX_GetOptions();
    options->m_printMethod = config.method;
    options->m_paperOrientation = config.landscape;
    options->m_printScale = config.scaleBar;
}

void CVxAppCore::PrintProjectPage(CVxDC* dc, int pageIndex, CVxPrintSizeCalculator& calc, int flags)
{
    if (!dc)
        return;
    if (flags == -1)
        flags = GetPartDrawFlagsFromOptions() | drawCaptions;
    const bool wasPrinting = CVxDC::IsPrinting();
    CVxDC::SetPrinting(true);
    g_bColorToGray = !calc.inColor;
    const int oldColorMode = dc->GetColorMode();
    if (flags & drawBlackWhite)
        dc->SetColorMode(CVxDC::colorModeGrey);
    const int oldFontResolution = dc->GetFontResolution();
    dc->SetFontResolution(calc.dpiY);
    dc->SelectFont(calc.noteFont);

    const CVxDRect area = calc.GetProjectPrintArea(m_project);
    const double z = area.Width() > 0 ? calc.zoom * (calc.projectW / area.Width()) : 0;
    const double drawW = area.Width() * z;
    const double drawH = area.Height() * z;

    // The bar is an inch on paper, rounded up to whole steps of the grid.
    const double grid = m_project.m_gridSize < 1 ? 50 : m_project.m_gridSize;
    double barLength = grid;
    if (z > 0) {
        const double inch = std::min(calc.dpiX / z, 1e12);
        barLength = std::floor((grid - 1 + std::floor(inch)) / grid) * grid;
    }
    CVxStringW barText;
    if (calc.scaleBarLength) {
        wchar_t number[48];
        swprintf(number, 48, L"%.0f ", barLength);
        barText = CVxStringW(number) + CVxUnits::GetUnitText(m_project.m_unit);
    }
    if (calc.scaleText) {
        if (!barText.IsEmpty())
            barText += L"; ";
        barText += L"1 : ";
        barText +=
            VX_DblFormat(calc.scale > 0 ? calc.scale : DblRound2x(calc.scaleValue), VX_DF_DECIMAL, false);
    }

    const VxRECT pageRect{SafePixels(calc.marginL), SafePixels(calc.marginT),
                          SafePixels(calc.pageW - calc.marginR), SafePixels(calc.pageH - calc.marginB)};
    if (calc.customLayout &&
        (calc.pageRect.Width() != 0 || calc.pageRect.left != 0 || calc.pageRect.top != 0))
        DrawPrintPageLayout(dc, calc);

    const int pagesX = std::max(1, calc.pagesX);
    const int row = pageIndex / pagesX;
    const int column = pageIndex % pagesX;
    const int ox = SafePixels(column * (calc.pageW - calc.marginR - calc.marginL));
    const int oy = SafePixels(row * (calc.pageH - calc.marginB - calc.marginT));
    dc->SetClipRect(pageRect);
    dc->SetBkMode(CVxDC::bkTransparent);

    const int drawLeft = calc.drawX - ox;
    const int drawTop = calc.drawY - oy;
    if (calc.title) {
        dc->SelectFont(calc.titleFont);
        VxRECT box{drawLeft, drawTop - calc.drawTopOffset - calc.titleFontH * 3 / 2,
                   drawLeft + SafePixels(drawW), drawTop - calc.drawTopOffset - calc.titleFontH / 2};
        dc->DrawText(calc.titleText, box,
                     CVxDC::dtCenter | CVxDC::dtVCenter | CVxDC::dtSingleLine | CVxDC::dtNoClip, 0);
        dc->SelectOldFont();
    }

    if (z > 0) {
        dc->SelectFont(m_project.m_captionPrintFont);
        const VxRECT drawing{drawLeft, drawTop, drawLeft + SafePixels(drawW) + 1,
                             drawTop + SafePixels(drawH) + 1};
        dc->SetClipRect(Intersect(drawing, pageRect));
        const int originX = SafePixels(drawLeft - area.left * z);
        const int originY = SafePixels(drawTop - area.top * z);
        const int sheetX = SafePixels(originX - m_project.m_spaceLeft * z);
        const int sheetY = SafePixels(originY - m_project.m_spaceTop * z);
        const int sheetW = SafePixels(m_project.GetTotalWidth() * z);
        const int sheetH = SafePixels(m_project.GetTotalHeight() * z);
        const VxRECT visible = Intersect(drawing, pageRect);
        const bool scanShown = DrawRoomFloor(dc, sheetW, sheetH, z, originX, originY, sheetX, sheetY,
                                             flags & ~drawNoGround, visible);
        DrawRoomWalls(dc, z, originX, originY, flags, scanShown);
        const bool sprites = m_useSpriteCache;
        m_useSpriteCache = false;
        DrawObjects(dc, z, originX, originY, visible, flags);
        m_useSpriteCache = sprites;
        DrawGridLabels(dc, z, sheetX, sheetY, sheetW, sheetH, flags);
        if (m_showAnnotations)
            m_project.GetFloor()->m_annotations.Draw(dc, originX, originY, z);
        dc->SelectOldFont();
    }
    dc->ClearClipping();

    // Under the drawing: scale bar, notes, comments.
    dc->SetClipRect(pageRect);
    int y = SafePixels(calc.projectH * calc.zoom + calc.drawY + calc.noteFontH - oy);
    const int fontH = calc.noteFontH;
    if (calc.scaleBar && z > 0) {
        dc->SelectPen(CVxDC::penSolid, 1, 0);
        const double right = std::min(m_project.m_width, area.right);
        const int x =
            SafePixels((std::floor(right / grid) * grid - area.left - barLength) * z + calc.drawX + 0.5 - ox);
        const int length = SafePixels(barLength * z + 0.5);
        dc->Line(x, y - fontH, x, y - fontH / 2);
        dc->Line(x + length, y - fontH, x + length, y - fontH / 2);
        dc->Line(x, y - 3 * fontH / 4, x + length, y - 3 * fontH / 4);
        dc->SelectOldPen();
        VxSIZE size{0, 0};
        dc->GetTextExtentPoint(barText, size);
        VxRECT box{x + length / 2 - size.cx, y - fontH / 2 + 2, x + length / 2 + size.cx, y + fontH / 2 + 2};
        dc->DrawText(barText, box, CVxDC::dtCenter | CVxDC::dtSingleLine | CVxDC::dtNoClip, 0);
        y += fontH;
    }
    const int textLeft = calc.drawX - ox;
    const int textRight = std::max(textLeft + 1, SafePixels(calc.pageW - calc.marginR));
    for (const auto& [on, text] :
         {std::pair{calc.note1, &calc.note1Text}, std::pair{calc.note2, &calc.note2Text}}) {
        if (!on)
            continue;
        VxRECT box{textLeft, y, textRight, y + fontH};
        dc->DrawText(*text, box, CVxDC::dtSingleLine | CVxDC::dtNoClip, 0);
        y += fontH + fontH / 2;
    }
    if (calc.comments) {
        VxRECT box{textLeft, y, textRight, y + calc.notesH};
        dc->DrawText(calc.commentsText, box, CVxDC::dtWordBreak | CVxDC::dtCalcRect, 0);
        box.right = textRight;
        dc->DrawText(calc.commentsText, box, CVxDC::dtWordBreak, 0);
    }
    dc->ClearClipping();

    if (calc.cropMarks && (calc.pagesX > 1 || calc.pagesY > 1)) {
        // Marks in the margins where the neighbouring sheet's content starts,
        // for cutting and gluing the pages together.
        dc->SelectPen(CVxDC::penSolid | CVxDC::penKeepWidth, 1, 0);
        const int m = static_cast<int>(calc.dpiX / 5.08);
        const auto mark = [dc, m](int x, int y) {
            dc->Line(x - m, y, x + m, y);
            dc->Line(x, y - m, x, y + m);
        };
        const bool top = row > 0 && (std::fabs(calc.marginT) > 1e-7 || std::fabs(calc.unprintable[1]) > 1e-7);
        const bool bottom = row < calc.pagesY - 1;
        const bool left = column > 0;
        const bool right = column < calc.pagesX - 1;
        if (top || left)
            mark(pageRect.left, pageRect.top);
        if (top || right)
            mark(pageRect.right, pageRect.top);
        if (bottom || left)
            mark(pageRect.left, pageRect.bottom);
        if (bottom || right)
            mark(pageRect.right, pageRect.bottom);
        dc->SelectOldPen();
    }

    dc->SelectOldFont();
    dc->SetFontResolution(oldFontResolution);
    dc->SetColorMode(oldColorMode);
    g_bColorToGray = false;
    CVxDC::SetPrinting(wasPrinting);
}

void CVxAppCore::DrawPrintPageLayout(CVxDC* dc, const CVxPrintSizeCalculator& calc)
{
    CVxProject layout;
    const CVxStringW& file = VX_GetOptions()->m_printCustomLayoutFile;
    if (file.IsEmpty() || !layout.LoadFromFile(file, nullptr, nullptr, false, 0))
        return;
    const double zoom = calc.dpiX * CVxUnits::GetUnitCal(layout.m_unit) / 2.54;
    // Labels size their fonts by the open project's base zoom and caption
    // font; on the layout's sheet those of the layout hold, so that a text
    // prints as large as it was drawn.
    const double baseZoom = m_project.m_baseZoom;
    const CVxFont captionFont = m_project.m_captionPrintFont;
    if (layout.m_baseZoom > 0)
        m_project.m_baseZoom = layout.m_baseZoom;
    m_project.m_captionPrintFont = layout.m_captionPrintFont;
    // The layout's origin is the paper's corner.
    const double originX = calc.wholeSheet ? 0 : -calc.unprintable[0];
    const double originY = calc.wholeSheet ? 0 : -calc.unprintable[1];
    CVxFloor* floor = layout.GetFloor();
    for (CVxPart& part : floor->m_objects) {
        if (!part.inUse || part.type == ptPageArea)
            continue;
        part.DrawToHdc(dc, floor, layout.m_unit, originX, originY, zoom, drawCaptions, 0, 1.0);
    }
    m_project.m_baseZoom = baseZoom;
    m_project.m_captionPrintFont = captionFont;
    layout.RemoveTempFiles();
}

bool CVxAppCore::ExportFloorToDxf(const CVxStringW& path)
{
    if (path.IsEmpty())
        return false;
    const double unitCm = CVxUnits::GetUnitCal(m_project.m_unit);
    const double zoom = kDxfPixelsPerCm * unitCm;
    // Device pixels are ints: the sheet's far corner must stay well inside.
    const double extent =
        std::max({std::fabs(m_project.m_spaceLeft), std::fabs(m_project.m_spaceTop),
                  std::fabs(m_project.GetTotalWidth()), std::fabs(m_project.GetTotalHeight())});
    if (!std::isfinite(extent) || extent * zoom > 1e9)
        return false;
    const int dpi = static_cast<int>(std::lround(kDxfPixelsPerCm * 2.54 * kDxfPaperScale));
    const int originX = 0;
    const int originY = 0;
    CVxDxfDC dxf(originX, originY, zoom, dpi);
    const bool wasPrinting = CVxDC::IsPrinting();
    CVxDC::SetPrinting(true);
    const int flags = (GetPartDrawFlagsFromOptions() | drawCaptions) & ~(drawGrid | drawGridLabels);
    dxf.SelectFont(m_project.m_captionPrintFont);

    dxf.SetLayer("ROOMS", 4);
    dxf.SelectPen(CVxDC::penNull, 0, 0);
    m_floorPlan.DrawRegions(&dxf, originX, originY, zoom, flags & ~drawFloorTextures);
    dxf.SelectOldPen();

    dxf.SetLayer("WALLS", 7);
    CVxFloor* floor = m_project.GetFloor();
    dxf.SelectPen(CVxDC::penSolid, 0, 0);
    dxf.SelectBrush(CVxDC::brushSolid, 0);
    floor->m_walls.Draw(&dxf, 0, 0, 255, originX, originY, zoom);
    dxf.SelectOldBrush();
    dxf.SelectOldPen();

    dxf.SetLayer("FLOOR_OPENINGS", 2);
    dxf.SelectPen(CVxDC::penSolid, 0, 0);
    dxf.SelectBrush(CVxDC::brushNull, 0);
    for (CVxHoleInFloor& hole : floor->m_walls.holes) {
        if (hole.type == CVxHoleInFloor::TYPE_POLYGON) {
            std::vector<VxPOINT> points;
            for (const CVxDPoint& p : hole.polygon.points)
                points.push_back(VxPOINT{static_cast<int>(std::lround(p.x * zoom)) + originX,
                                         static_cast<int>(std::lround(p.y * zoom)) + originY});
            if (points.size() > 2)
                dxf.Polygon(points.data(), static_cast<int>(points.size()));
            continue;
        }
        const VxPOINT* corners = hole.GetCachedRect(originX, originY, zoom);
        if (hole.type == CVxHoleInFloor::TYPE_ELLIPSE)
            GMDrawEllipse(dxf, corners);
        else
            dxf.Polygon(corners, 4);
    }
    dxf.SelectOldBrush();
    dxf.SelectOldPen();

    const CVxViewLayers& layers = floor->m_layers;
    for (int layer = 0; layer < layers.GetLayerCount(); ++layer) {
        if (!layers.IsLayerVisible(layer))
            continue;
        for (CVxPart& part : floor->m_objects) {
            if (!part.inUse || part.layer != layer)
                continue;
            const auto [name, colour] = DxfLayerOf(part);
            dxf.SetLayer(name, colour);
            part.DrawToHdc(&dxf, floor, m_project.m_unit, originX, originY, zoom, flags, 0, 1.0);
        }
    }
    if (m_showAnnotations && floor->m_annotations.GetCount() > 0) {
        dxf.SetLayer("ANNOTATIONS", 1);
        floor->m_annotations.Draw(&dxf, originX, originY, zoom);
    }
    dxf.SelectOldFont();
    CVxDC::SetPrinting(wasPrinting);
    // Object caches were made at the export's zoom.
    RebuildRoom();

    const std::string text = dxf.GetText();
    if (!VX_SafeSaveCreateTemp(path))
        return false;
    const CVxStringW temp = VX_SafeSaveTempPath(path);
    QFile file(temp.ToQString());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        file.write(text.data(), static_cast<qint64>(text.size())) != static_cast<qint64>(text.size()) ||
        !file.flush()) {
        file.close();
        VX_SafeSaveAbandon(temp);
        return false;
    }
    file.close();
    return VX_SafeSaveCommit(temp, path);
}
