// Captions of objects on the plan: the variables a caption may hold and the
// three layouts, an object's name in its rectangle, a label's text and the
// figure of a dimension line.

#include "CVxPart.h"

#include "CVxDC.h"
#include "CVxFont.h"
#include "CVxOptions.h"
#include "CVxProject.h"
#include "CVxStringTokenizer.h"
#include "CVxUnits.h"
#include "IVxAppHelperCallback.h"
#include "VxAngle.h"
#include "VxNumbers.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kDegToRad = kPi / 180.0;
constexpr double kEps = 1e-7;
// Labels never shrink below this point size, however far the plan is zoomed
// out: they stay findable as a blot of text.
constexpr double kLeastLabelPoints = 4.0;

// DrawText flags of an object's name in its rectangle; 0x8000 is an old
// end-ellipsis bit that this surface ignores.
constexpr unsigned kMeasureWrapped = 33813;
constexpr unsigned kDrawWrapped = 32789;
constexpr unsigned kMeasureSingle = 33845;
constexpr unsigned kDrawSingle = 32821;
constexpr unsigned kDrawEllipsis = 293;
constexpr unsigned kDrawUnclipped = 33045;

const CVxProject* Project()
{
    return VX_GetActiveProject();
}

double BaseZoom()
{
    const CVxProject* project = Project();
    return project && project->m_baseZoom > 0 ? project->m_baseZoom : 1.0;
}

CVxFont ProjectFont()
{
    const CVxProject* project = Project();
    if (!project)
        return CVxFont();
    return CVxDC::IsPrinting() ? project->m_captionPrintFont : project->m_captionFont;
}

CVxStringW LengthText(double value, int units)
{
    return VX_DblFormat(DblRound2x(value), VX_DF_FEET_GLYPHS, units == CVxUnits::UNIT_INCH, units);
}

CVxStringW PlainNumber(double value)
{
    return CVxStringW(DblRound2x(value));
}

// An angle folded into 0 up to 90: an opening of 135 degrees rises like one
// of 45.
double FoldedAngle(double degrees)
{
    double a = std::fmod(std::fabs(degrees), 180.0);
    if (a > 90)
        a = 180 - a;
    return a;
}

bool Rotated(double degrees)
{
    return std::fabs(VX_NormalizeAngle(degrees)) > kEps;
}

} // namespace

CVxStringW CVxPart::ProcessCaptionVars(const CVxStringW& text, int units, double scale) const
{
    if (text.IsEmpty())
        return text;
    CVxStringW result = text;
    const int unit = CVxUnits::IsValid(units) ? units : CVxUnits::UNIT_CM;
    const bool measured = type == ptLine || type == ptMeasLine || type == ptPolyline || type == ptPolygon;

    // The length of what the object measures: a line's own length, the
    // outline of a polyline or polygon, the depth of anything else.
    double length = height;
    if (type == ptMeasLine)
        length = width;
    else if ((type == ptPolyline || type == ptPolygon) && polygon.GetVertexCount() > 1)
        length = polygon.GetPerimeter(type == ptPolyline, width / 1000.0, height / 1000.0);
    length *= scale;

    if (result.Contains(CVxStringW(L"%AREA%"))) {
        double factor = 1;
        switch (GetShape(false)) {
        case ptCircle:
        case ptEllipse:
            factor = kPi / 4;
            break;
        case ptTriangle:
            factor = 0.5;
            break;
        case ptHexagon:
            factor = 0.75;
            break;
        case ptOctagon:
            // The four corners cut at 3/10 of each side.
            factor = 1 - 4 * (0.3 * 0.3 / 2);
            break;
        case ptPolygon:
            factor = polygon.GetArea() / 1000000.0;
            break;
        default:
            break;
        }
        const int statUnit = CVxProject::GetStatisticalUnitForUnit(unit);
        const double toStat = CVxUnits::GetUnitCal(unit) / CVxUnits::GetUnitCal(statUnit);
        const double area = width * height * scale * scale * factor * toStat * toStat;
        result = result.ReplaceAll(CVxStringW(L"%AREA%"), VX_DblFormatAreaValue(area, statUnit));
    }
    if (result.Contains(CVxStringW(L"%WIDTH%")))
        result = result.ReplaceAll(CVxStringW(L"%WIDTH%"), LengthText(scale * width, unit));
    if (result.Contains(CVxStringW(L"%LENGTH%")))
        result = result.ReplaceAll(CVxStringW(L"%LENGTH%"), LengthText(length, unit));
    if (result.Contains(CVxStringW(L"%HEIGHT%")))
        result = result.ReplaceAll(CVxStringW(L"%HEIGHT%"), LengthText(scale * zHeight, unit));
    if (measured) {
        const double cm = length * CVxUnits::GetUnitCal(unit);
        result = result.ReplaceAll(CVxStringW(L"%LENGTH_INCH%"), PlainNumber(cm / 2.54));
        result = result.ReplaceAll(CVxStringW(L"%LENGTH_M%"), PlainNumber(cm / 100.0));
        result = result.ReplaceAll(CVxStringW(L"%LENGTH_YD%"), PlainNumber(cm / 91.44));
    }
    if (result.Contains(CVxStringW(L"%DATE%")) || result.Contains(CVxStringW(L"%TIME%")) ||
        result.Contains(CVxStringW(L"%USER%"))) {
        IVxAppHelperCallback* host = VX_GetAppHelper();
        const CVxStringW date = host ? host->SysGetCurrentTime(L"ddddd") : CVxStringW();
        const CVxStringW time = host ? host->SysGetCurrentTime(L"t") : CVxStringW();
        const CVxStringW user = host ? host->SysGetUserName() : CVxStringW();
        result = result.ReplaceAll(CVxStringW(L"%DATE%"), date);
        result = result.ReplaceAll(CVxStringW(L"%TIME%"), time);
        result = result.ReplaceAll(CVxStringW(L"%USER%"), user);
    }
    if (type == ptAngle) {
        const double folded = FoldedAngle(angle);
        const double slope = folded >= 90 - kEps ? 0 : std::tan(folded * kDegToRad) * 100;
        result = result.ReplaceAll(CVxStringW(L"%SLOPE%"), PlainNumber(slope) + L" %");
        // A gradient reads as one unit up for so many along.
        const double run = folded > kEps ? 1 / std::tan(folded * kDegToRad) : 0;
        result = result.ReplaceAll(CVxStringW(L"%GRADIENT%"), L"1:" + PlainNumber(run));
    }
    // The automatic caption of a dimension or angle line: "~" stands for its
    // figure, so "x: ~" reads "x: 120".
    if (type == ptMeasLine && result.Contains(L'~'))
        result = result.ReplaceAll(CVxStringW(L"~"), LengthText(length, unit));
    else if (type == ptAngle && result.Contains(L'~'))
        result = result.ReplaceAll(CVxStringW(L"~"), PlainNumber(angle) + L"\u00B0");
    return result;
}

std::vector<CVxStringW> CVxPart::GetPossibleCaptionVars(int partType, int /*forDialog*/)
{
    std::vector<CVxStringW> vars;
    if (partType == ptLine || partType == ptMeasLine || partType == ptPolygon || partType == ptPolyline) {
        vars.emplace_back(L"%LENGTH_INCH%");
        vars.emplace_back(L"%LENGTH_M%");
        vars.emplace_back(L"%LENGTH_YD%");
    }
    if (partType == ptRectangle || partType == ptLabel) {
        vars.emplace_back(L"%DATE%");
        vars.emplace_back(L"%TIME%");
        vars.emplace_back(L"%USER%");
    }
    if (partType == ptRectangle) {
        vars.emplace_back(L"%WIDTH%");
        vars.emplace_back(L"%LENGTH%");
        vars.emplace_back(L"%HEIGHT%");
    }
    if (partType == ptAngle) {
        vars.emplace_back(L"%SLOPE%");
        vars.emplace_back(L"%GRADIENT%");
    }
    if ((partType >= ptCircle && partType <= ptOctagon) || partType == ptPolygon)
        vars.emplace_back(L"%AREA%");
    return vars;
}

void CVxPart::DrawCaption(CVxDC* dc, VxRECT* rect, int units, double zoom, double scale)
{
    if (!dc || !rect)
        return;
    CVxFont font = GetCaptionFont();
    font.m_size = std::max(kLeastLabelPoints, font.m_size * zoom / BaseZoom());
    // The zoom of a print already holds the printer's resolution, and its
    // fonts size by points of that resolution too.
    if (CVxDC::IsPrinting() && dc->GetDPI() > 0)
        font.m_size *= 96.0 / dc->GetDPI();
    font.m_rotation = 0;
    dc->SelectFont(font);

    if (type == ptAngle) {
        CVxDPoint vertex, arm1, arm2;
        GetAnglePartPoints(vertex, arm1, arm2);
        const CVxDPoint at = (arm1 * 2 + arm2 * 2 + vertex) * (1.0 / 5.0);
        // The angle's points are in units; the rectangle gives the origin.
        VxRECT box = *rect;
        CVxDRect bounds;
        GetBoundingRect(&bounds, zoom);
        const double ox = box.left - bounds.left;
        const double oy = box.top - bounds.top;
        dc->TextOut(ProcessCaptionVars(caption, units, scale),
                    static_cast<int>(std::lround(at.x * zoom + ox)),
                    static_cast<int>(std::lround(at.y * zoom + oy)), CVxDC::taBaseline, textColor);
        dc->SelectOldFont();
        return;
    }

    const CVxStringW text = ProcessCaptionVars(caption, units, scale);
    if (type == ptLine || type == ptPolyline) {
        VxRECT box = *rect;
        dc->DrawText(text, box, kDrawUnclipped, textColor);
        dc->SelectOldFont();
        return;
    }
    const int freeWidth = rect->right - rect->left;
    const int freeHeight = rect->bottom - rect->top;
    VxRECT measure = *rect;
    dc->DrawText(text, measure, kMeasureWrapped, textColor);
    if (measure.right - measure.left <= freeWidth && measure.bottom - measure.top <= freeHeight) {
        VxRECT box = *rect;
        dc->DrawText(text, box, kDrawWrapped, textColor);
    } else {
        VxRECT single = *rect;
        dc->DrawText(text, single, kMeasureSingle, textColor);
        VxRECT box = *rect;
        if (single.right - single.left <= freeWidth && single.bottom - single.top <= freeHeight)
            dc->DrawText(text, box, kDrawSingle, textColor);
        else
            dc->DrawText(CVxStringW(L"..."), box, kDrawEllipsis, textColor);
    }
    dc->SelectOldFont();
}

void CVxPart::DrawLabelCaption(CVxDC* dc, int units, double originX, double originY, double zoom,
                               double scale)
{
    if (!dc)
        return;
    const CVxStringW text = ProcessCaptionVars(caption, units, scale);
    if (text.IsEmpty())
        return;
    CVxFont labelFont = GetCaptionFont();
    labelFont.m_size = std::max(kLeastLabelPoints, labelFont.m_size * zoom / BaseZoom());
    if (CVxDC::IsPrinting() && dc->GetDPI() > 0)
        labelFont.m_size *= 96.0 / dc->GetDPI();
    labelFont.m_rotation = Rotated(rotation) ? VX_NormalizeAngle(rotation) : 0.0;
    dc->SelectFont(labelFont);

    const unsigned align = lineColor & 0xFF;
    const double w = width * zoom;
    const double h = height * zoom;
    if (!Rotated(rotation)) {
        VxRECT box;
        box.left = static_cast<int>(std::lround(originX + x * zoom));
        box.top = static_cast<int>(std::lround(originY + y * zoom));
        box.right = box.left + static_cast<int>(std::lround(w));
        box.bottom = box.top + static_cast<int>(std::lround(h));
        const unsigned horizontal = align == 1 ? CVxDC::dtCenter : align == 2 ? CVxDC::dtRight : 0u;
        dc->DrawText(text, box, CVxDC::dtNoClip | CVxDC::dtVCenter | horizontal, textColor);
        dc->SelectOldFont();
        return;
    }

    // A turned label goes line by line, each placed by its own width, so
    // that the alignment holds on every line.
    std::vector<CVxStringW> lines;
    CVxStringTokenizer parts(text.ReplaceAll(CVxStringW(L"\n"), CVxStringW()), L'\r');
    while (parts.IsNextToken())
        lines.push_back(parts.GetNextToken());
    if (lines.empty())
        lines.push_back(text);
    VxSIZE probe{};
    dc->GetTextExtentPoint(CVxStringW(L"Xg"), probe);
    const double lineHeight = probe.cy;
    const double r = VX_NormalizeAngle(rotation) * kDegToRad;
    const double c = std::cos(r);
    const double s = std::sin(r);
    const double top = (h - lineHeight * static_cast<double>(lines.size())) / 2;
    for (size_t i = 0; i < lines.size(); ++i) {
        VxSIZE size{};
        dc->GetTextExtentPoint(lines[i], size);
        double along = 0;
        if (align == 1)
            along = (w - size.cx) / 2;
        else if (align == 2)
            along = w - size.cx;
        // Each line hangs from its bottom, which the surface places exactly.
        const double across = top + lineHeight * static_cast<double>(i + 1);
        const double px = originX + x * zoom + along * c - across * s;
        const double py = originY + y * zoom + along * s + across * c;
        dc->TextOut(lines[i], static_cast<int>(std::lround(px)), static_cast<int>(std::lround(py)),
                    CVxDC::taBottom, textColor);
    }
    dc->SelectOldFont();
}

void CVxPart::DrawMeasLineCaption(CVxDC* dc, int units, double originX, double originY, double zoom,
                                  double scale)
{
    if (!dc)
        return;
    const CVxStringW text = ProcessCaptionVars(caption, units, scale);
    if (text.IsEmpty())
        return;

    // The line runs along the object's width, through the middle of its
    // depth; its text runs along it and is never upside down: a line that
    // points leftwards is read from its other end.
    double turn = VX_NormalizeAngle(rotation);
    const bool upsideDown = turn > 90 - kEps && turn < 270 - kEps;
    if (upsideDown)
        turn = VX_NormalizeAngle(turn + 180);

    const bool rotatedText = VX_GetOptions()->m_rotatedMeasLineCaption;
    CVxFont lineFont = ProjectFont();
    lineFont.m_rotation = rotatedText ? turn : 0.0;
    dc->SelectFont(lineFont);

    VxSIZE size{};
    dc->GetTextExtentPoint(text, size);
    const double r = VX_NormalizeAngle(rotation) * kDegToRad;
    const double c = std::cos(r);
    const double s = std::sin(r);
    const double depth = height * zoom;
    const double length = width * zoom;
    // The start of the line in pixels, at the middle of the depth.
    const double sx = originX + x * zoom - s * depth / 2;
    const double sy = originY + y * zoom + c * depth / 2;
    double px, py;
    if (!rotatedText) {
        px = sx + c * length / 2 - size.cx / 2.0;
        py = sy + s * length / 2;
    } else if (!upsideDown) {
        const double along = (length - size.cx) / 2;
        px = sx + c * along;
        py = sy + s * along;
    } else {
        const double along = length - (length - size.cx) / 2;
        px = sx + c * along;
        py = sy + s * along;
    }
    dc->TextOut(text, static_cast<int>(std::lround(px)), static_cast<int>(std::lround(py)), CVxDC::taBottom,
                textColor);
    dc->SelectOldFont();
}

CVxFont CVxPart::GetCaptionFont() const
{
    return font ? *font : ProjectFont();
}
