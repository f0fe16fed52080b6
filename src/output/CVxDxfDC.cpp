#include "CVxDxfDC.h"

#include <QFont>
#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr double kPi = 3.14159265358979323846;
// Segments of a full turn where a curve becomes a polyline.
constexpr int kCircleSegments = 48;
constexpr int kBezierSegments = 12;

// Text of release 12 files is 8-bit; everything beyond ASCII travels as
// the \U+XXXX escapes that readers of the format decode.
std::string EncodeText(const CVxStringW& text)
{
    std::string out;
    for (wchar_t c : text.Std()) {
        if (c == L'\r' || c == L'\n' || c == L'\t') {
            out += ' ';
        } else if (c >= 32 && c < 127) {
            out += static_cast<char>(c);
        } else if (c > 0 && static_cast<unsigned>(c) <= 0xFFFF) {
            char escape[12];
            snprintf(escape, sizeof(escape), "\\U+%04X", static_cast<unsigned>(c));
            out += escape;
        }
    }
    return out;
}

// Device pixels of damaged drawings reach the ends of int: sums go through
// doubles.
double Middle(int a, int b)
{
    return (static_cast<double>(a) + b) / 2;
}

bool IsRound(int left, int top, int right, int bottom)
{
    return static_cast<double>(right) - left == static_cast<double>(bottom) - top;
}

} // namespace

CVxDxfDC::CVxDxfDC(double originX, double originY, double zoom, int dpi)
    : CVxDC(true), m_originX(originX), m_originY(originY), m_zoom(zoom > 0 ? zoom : 1),
      m_dpi(std::max(1, dpi))
{
    m_fontResolution = m_dpi;
    SetLayer("0", 7);
}

CVxDxfDC::~CVxDxfDC()
{
    ClearOldPensAndBrushes();
}

void CVxDxfDC::SetLayer(const std::string& name, int colour)
{
    m_layer = name;
    for (const auto& layer : m_layers)
        if (layer.first == name)
            return;
    m_layers.emplace_back(name, colour);
}

CVxDxfDC::SVxPoint CVxDxfDC::ToPlan(double x, double y) const
{
    return SVxPoint{(x - m_originX) / m_zoom, -(y - m_originY) / m_zoom};
}

bool CVxDxfDC::Invisible() const
{
    return m_penNull && m_brushNull;
}

void CVxDxfDC::Begin(const char* entity)
{
    m_entitiesText += "  0\n";
    m_entitiesText += entity;
    m_entitiesText += "\n  8\n" + m_layer + "\n";
}

void CVxDxfDC::Number(int code, double value)
{
    char line[64];
    snprintf(line, sizeof(line), "%3d\n%.6f\n", code, std::isfinite(value) ? value : 0.0);
    m_entitiesText += line;
}

void CVxDxfDC::Coordinates(const SVxPoint& point, int first)
{
    Number(first, point.x);
    Number(first + 10, point.y);
    Number(first + 20, 0.0);
    if (m_anyExtent) {
        m_extents.left = std::min(m_extents.left, point.x);
        m_extents.right = std::max(m_extents.right, point.x);
        m_extents.top = std::min(m_extents.top, point.y);
        m_extents.bottom = std::max(m_extents.bottom, point.y);
    } else {
        m_extents = CVxDRect(point.x, point.y, point.x, point.y);
        m_anyExtent = true;
    }
}

void CVxDxfDC::PolylineOf(const std::vector<SVxPoint>& points, bool closed)
{
    if (points.size() < 2 || Invisible())
        return;
    Begin("POLYLINE");
    m_entitiesText += " 66\n1\n";
    Number(10, 0);
    Number(20, 0);
    Number(30, 0);
    m_entitiesText += closed ? " 70\n1\n" : " 70\n0\n";
    for (const SVxPoint& point : points) {
        Begin("VERTEX");
        Coordinates(point, 10);
    }
    Begin("SEQEND");
    ++m_entities;
}

std::vector<CVxDxfDC::SVxPoint> CVxDxfDC::ArcPoints(int left, int top, int right, int bottom, double start,
                                                    double span) const
{
    const double cx = (static_cast<double>(left) + right) / 2;
    const double cy = (static_cast<double>(top) + bottom) / 2;
    const double rx = (static_cast<double>(right) - left) / 2;
    const double ry = (static_cast<double>(bottom) - top) / 2;
    const int steps = std::max(2, static_cast<int>(std::ceil(std::fabs(span) / 360.0 * kCircleSegments)));
    std::vector<SVxPoint> points;
    points.reserve(static_cast<size_t>(steps) + 1);
    for (int i = 0; i <= steps; ++i) {
        const double angle = (start + span * i / steps) * kPi / 180.0;
        points.push_back(ToPlan(cx + rx * std::cos(angle), cy + ry * std::sin(angle)));
    }
    return points;
}

void CVxDxfDC::Text(const CVxStringW& text, double x, double y, double height, int horizontal, int vertical)
{
    const std::string encoded = EncodeText(text);
    if (encoded.find_first_not_of(' ') == std::string::npos)
        return;
    const SVxPoint at = ToPlan(x, y);
    Begin("TEXT");
    Coordinates(at, 10);
    Number(40, std::max(1e-6, height / m_zoom));
    m_entitiesText += "  1\n" + encoded + "\n";
    if (m_fontRotation != 0)
        Number(50, -m_fontRotation);
    if (horizontal != 0) {
        char line[16];
        snprintf(line, sizeof(line), " 72\n%d\n", horizontal);
        m_entitiesText += line;
    }
    if (horizontal != 0 || vertical != 0)
        Coordinates(at, 11);
    if (vertical != 0) {
        char line[16];
        snprintf(line, sizeof(line), " 73\n%d\n", vertical);
        m_entitiesText += line;
    }
    ++m_entities;
}

std::string CVxDxfDC::GetText() const
{
    std::string out;
    const auto point = [&out](int code, double x, double y) {
        char line[128];
        snprintf(line, sizeof(line), "%3d\n%.6f\n%3d\n%.6f\n%3d\n0.0\n", code, x, code + 10, y, code + 20);
        out += line;
    };
    out += "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1009\n  9\n$INSBASE\n";
    point(10, 0, 0);
    out += "  9\n$EXTMIN\n";
    point(10, m_extents.left, m_extents.top);
    out += "  9\n$EXTMAX\n";
    point(10, m_extents.right, m_extents.bottom);
    out += "  0\nENDSEC\n";
    out += "  0\nSECTION\n  2\nTABLES\n";
    out += "  0\nTABLE\n  2\nLTYPE\n 70\n1\n  0\nLTYPE\n  2\nCONTINUOUS\n 70\n0\n  3\nSolid line\n"
           " 72\n65\n 73\n0\n 40\n0.0\n  0\nENDTAB\n";
    out += "  0\nTABLE\n  2\nLAYER\n 70\n" + std::to_string(m_layers.size()) + "\n";
    for (const auto& [name, colour] : m_layers)
        out +=
            "  0\nLAYER\n  2\n" + name + "\n 70\n0\n 62\n" + std::to_string(colour) + "\n  6\nCONTINUOUS\n";
    out += "  0\nENDTAB\n";
    out += "  0\nTABLE\n  2\nSTYLE\n 70\n1\n  0\nSTYLE\n  2\nSTANDARD\n 70\n0\n 40\n0.0\n 41\n1.0\n"
           " 50\n0.0\n 71\n0\n 42\n2.5\n  3\ntxt\n  4\n\n  0\nENDTAB\n";
    out += "  0\nENDSEC\n";
    out += "  0\nSECTION\n  2\nBLOCKS\n  0\nENDSEC\n";
    out += "  0\nSECTION\n  2\nENTITIES\n";
    out += m_entitiesText;
    out += "  0\nENDSEC\n  0\nEOF\n";
    return out;
}

bool CVxDxfDC::EnableSmoothing(bool enable)
{
    const bool old = m_smoothing;
    m_smoothing = enable;
    return old;
}

bool CVxDxfDC::SetInterpolationQuality(bool smooth)
{
    return !smooth;
}

int CVxDxfDC::SetBkMode(int mode)
{
    const int old = m_bkMode;
    if (mode == bkTransparent || mode == bkOpaque)
        m_bkMode = mode;
    return old;
}

unsigned CVxDxfDC::SetBkColor(unsigned colour, unsigned char)
{
    const unsigned old = m_bkColor;
    m_bkColor = colour;
    return old;
}

void CVxDxfDC::SelectPen_int(int style, int, unsigned, unsigned char alpha)
{
    m_penNull = (style & penStyleMask) == penNull || alpha == 0;
}

void CVxDxfDC::SelectBrush_int(int style, unsigned, int, unsigned char alpha)
{
    m_brushNull = style == brushNull || alpha == 0;
}

void CVxDxfDC::SelectFont_int(const CVxFont& font)
{
    m_fontRotation = font.m_rotation;
    const double pixels = m_fontResolution * font.m_size / 72.0;
    m_fontPixels = std::isfinite(pixels) ? static_cast<int>(std::clamp(pixels, 1.0, 1e6)) : 1;
}

void CVxDxfDC::Line(int x1, int y1, int x2, int y2)
{
    if (m_penNull)
        return;
    Begin("LINE");
    Coordinates(ToPlan(x1, y1), 10);
    Coordinates(ToPlan(x2, y2), 11);
    ++m_entities;
    m_current = VxPOINT{x2, y2};
}

void CVxDxfDC::MoveTo(int x, int y)
{
    m_current = VxPOINT{x, y};
}

void CVxDxfDC::LineTo(int x, int y)
{
    const VxPOINT from = m_current;
    Line(from.x, from.y, x, y);
    m_current = VxPOINT{x, y};
}

void CVxDxfDC::Rectangle(int left, int top, int right, int bottom)
{
    PolylineOf({ToPlan(left, top), ToPlan(right, top), ToPlan(right, bottom), ToPlan(left, bottom)}, true);
}

void CVxDxfDC::RoundRect(int left, int top, int right, int bottom, int)
{
    Rectangle(left, top, right, bottom);
}

void CVxDxfDC::Ellipse(int left, int top, int right, int bottom)
{
    if (Invisible())
        return;
    if (IsRound(left, top, right, bottom)) {
        Begin("CIRCLE");
        Coordinates(ToPlan(Middle(left, right), Middle(top, bottom)), 10);
        Number(40, (static_cast<double>(right) - left) / 2 / m_zoom);
        ++m_entities;
        return;
    }
    std::vector<SVxPoint> points = ArcPoints(left, top, right, bottom, 0, 360);
    points.pop_back();
    PolylineOf(points, true);
}

void CVxDxfDC::Pie(int left, int top, int right, int bottom, int, int, int, int, float startAngle,
                   float spanAngle)
{
    std::vector<SVxPoint> points = ArcPoints(left, top, right, bottom, startAngle, spanAngle);
    points.push_back(ToPlan(Middle(left, right), Middle(top, bottom)));
    PolylineOf(points, true);
}

void CVxDxfDC::Arc(int left, int top, int right, int bottom, int, int, int, int, float startAngle,
                   float spanAngle)
{
    if (m_penNull)
        return;
    // Clockwise on the screen outside a path, counter-clockwise inside one;
    // as screen angles both run clockwise from here on.
    const double start = m_inPath ? -startAngle : startAngle;
    const double span = m_inPath ? -spanAngle : spanAngle;
    if (IsRound(left, top, right, bottom)) {
        // Clockwise on the screen is counter-clockwise with y turned up.
        double from = -(start + span);
        double to = -start;
        if (span < 0)
            std::swap(from, to);
        Begin("ARC");
        Coordinates(ToPlan(Middle(left, right), Middle(top, bottom)), 10);
        Number(40, (static_cast<double>(right) - left) / 2 / m_zoom);
        Number(50, from);
        Number(51, to);
        ++m_entities;
        return;
    }
    PolylineOf(ArcPoints(left, top, right, bottom, start, span), false);
}

void CVxDxfDC::Polygon(const VxPOINT* points, int count)
{
    if (!points || count < 2)
        return;
    std::vector<SVxPoint> plan;
    plan.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        plan.push_back(ToPlan(points[i].x, points[i].y));
    PolylineOf(plan, true);
}

void CVxDxfDC::Polyline(const VxPOINT* points, int count)
{
    if (!points || count < 2 || m_penNull)
        return;
    std::vector<SVxPoint> plan;
    plan.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        plan.push_back(ToPlan(points[i].x, points[i].y));
    PolylineOf(plan, false);
    m_current = points[count - 1];
}

void CVxDxfDC::PolyBezier(const VxPOINT* points, int count)
{
    if (!points || count < 4)
        return;
    m_current = points[0];
    PolyBezierTo(points + 1, count - 1);
}

void CVxDxfDC::PolyBezierTo(const VxPOINT* points, int count)
{
    if (!points || count < 3)
        return;
    std::vector<SVxPoint> plan{ToPlan(m_current.x, m_current.y)};
    VxPOINT p0 = m_current;
    for (int i = 0; i + 2 < count; i += 3) {
        const VxPOINT& p1 = points[i];
        const VxPOINT& p2 = points[i + 1];
        const VxPOINT& p3 = points[i + 2];
        for (int step = 1; step <= kBezierSegments; ++step) {
            const double t = static_cast<double>(step) / kBezierSegments;
            const double u = 1 - t;
            const double x =
                u * u * u * p0.x + 3 * u * u * t * p1.x + 3 * u * t * t * p2.x + t * t * t * p3.x;
            const double y =
                u * u * u * p0.y + 3 * u * u * t * p1.y + 3 * u * t * t * p2.y + t * t * t * p3.y;
            plan.push_back(ToPlan(x, y));
        }
        p0 = p3;
    }
    m_current = p0;
    PolylineOf(plan, false);
}

void CVxDxfDC::SetPixelV(int, int, unsigned) {}

int CVxDxfDC::DrawText(const CVxStringW& text, VxRECT& rect, unsigned flags, unsigned, bool)
{
    // Lines one under the other, each aligned in the rectangle as asked.
    std::vector<CVxStringW> lines;
    std::wstring line;
    for (wchar_t c : text.Std()) {
        if (c == L'\n') {
            lines.emplace_back(line);
            line.clear();
        } else if (c != L'\r') {
            line += c;
        }
    }
    lines.emplace_back(line);
    if (flags & dtSingleLine)
        lines.resize(1);
    const int lineHeight = m_fontPixels;
    // Heights stay within what a device rectangle can hold.
    const double height = std::min(static_cast<double>(lineHeight) * static_cast<double>(lines.size()), 4e8);
    if (flags & dtCalcRect) {
        int width = 0;
        for (const CVxStringW& each : lines) {
            VxSIZE size{0, 0};
            GetTextExtentPoint(each, size);
            width = std::max(width, size.cx);
        }
        rect.right = static_cast<int>(std::clamp(static_cast<double>(rect.left) + width, -2e9, 2e9));
        rect.bottom = static_cast<int>(std::clamp(static_cast<double>(rect.top) + height, -2e9, 2e9));
        return static_cast<int>(height);
    }
    int horizontal = 0;
    double x = rect.left;
    if (flags & dtCenter) {
        horizontal = 1;
        x = Middle(rect.left, rect.right);
    } else if (flags & dtRight) {
        horizontal = 2;
        x = rect.right;
    }
    double top = rect.top;
    if (flags & dtVCenter)
        top = Middle(rect.top, rect.bottom) - height / 2.0;
    else if (flags & dtBottom)
        top = static_cast<double>(rect.bottom) - height;
    for (size_t i = 0; i < lines.size(); ++i) {
        // Anchored at the middle of each line: no font's ascent is needed.
        const double middle = top + lineHeight * (static_cast<double>(i) + 0.5);
        Text(lines[i], x, middle, lineHeight * 0.7, horizontal, 2);
    }
    return static_cast<int>(height);
}

void CVxDxfDC::TextOut(const CVxStringW& text, int x, int y, unsigned flags, unsigned)
{
    if ((flags & taBaseline) == taBaseline)
        Text(text, x, y, m_fontPixels * 0.7, 0, 0);
    else if (flags & taBottom)
        Text(text, x, y, m_fontPixels * 0.7, 0, 1);
    else
        Text(text, x, y, m_fontPixels * 0.7, 0, 3);
}

bool CVxDxfDC::GetTextExtentPoint(const CVxStringW& text, VxSIZE& size)
{
    CVxFont font;
    GetCurrentFont(font);
    QFont qfont(font.m_name.ToQString());
    qfont.setPixelSize(m_fontPixels);
    qfont.setBold(font.m_bold);
    qfont.setItalic(font.m_italic);
    const QFontMetricsF metrics(qfont);
    size.cx = static_cast<int>(std::clamp(std::ceil(metrics.horizontalAdvance(text.ToQString())), 0.0, 4e8));
    size.cy = m_fontPixels;
    return true;
}

void CVxDxfDC::BeginPath()
{
    m_inPath = true;
}

void CVxDxfDC::EndPath()
{
    m_inPath = false;
}

void CVxDxfDC::StrokeAndFillPath() {}

void CVxDxfDC::SetClipRect(const VxRECT&) {}

void CVxDxfDC::ClearClipping() {}

void CVxDxfDC::DrawPicture(int, int, int, int, double, CVxPicBuf*, bool) {}
