#include "CVxRecordingDC.h"

#include <algorithm>
#include <cstring>

namespace {

enum EVxRecordOp : int32_t
{
    OP_PEN = 1,
    OP_BRUSH,
    OP_BK_MODE,
    OP_BK_COLOR,
    OP_SMOOTHING,
    OP_LINE,
    OP_MOVE_TO,
    OP_LINE_TO,
    OP_RECTANGLE,
    OP_ROUND_RECT,
    OP_ELLIPSE,
    OP_PIE,
    OP_ARC,
    OP_POLYGON,
    OP_POLYLINE,
    OP_POLY_BEZIER,
    OP_POLY_BEZIER_TO,
    OP_PIXEL,
    OP_BEGIN_PATH,
    OP_END_PATH,
    OP_STROKE_AND_FILL
};

// How many coordinate pairs open the words of an operation; the shapes
// with a point list instead start with the count, then the pairs.
int LeadingPairs(int32_t op)
{
    switch (op) {
    case OP_LINE:
    case OP_RECTANGLE:
    case OP_ROUND_RECT:
    case OP_ELLIPSE:
    case OP_PIE:
    case OP_ARC:
        return 2;
    case OP_MOVE_TO:
    case OP_LINE_TO:
    case OP_PIXEL:
        return 1;
    default:
        return 0;
    }
}

bool HasPointList(int32_t op)
{
    return op == OP_POLYGON || op == OP_POLYLINE || op == OP_POLY_BEZIER || op == OP_POLY_BEZIER_TO;
}

int32_t FloatWord(float value)
{
    int32_t word;
    std::memcpy(&word, &value, sizeof(word));
    return word;
}

float WordFloat(int32_t word)
{
    float value;
    std::memcpy(&value, &word, sizeof(value));
    return value;
}

} // namespace

CVxRecordingDC::CVxRecordingDC(CVxDC& target, bool smoothing)
    : CVxDC(target.IsHighQuality()), m_target(target), m_smoothing(smoothing), m_bkMode(target.GetBkMode()),
      m_bkColor(target.GetBkColor()), m_bounds{0, 0, 0, 0}
{
    m_colorMode = target.m_colorMode;
    m_fontResolution = target.m_fontResolution;
    m_keepSameAlpha = target.m_keepSameAlpha;
    m_lastPenAlpha = target.m_lastPenAlpha;
    m_lastBrushAlpha = target.m_lastBrushAlpha;
    m_pens = target.m_pens;
    m_brushes = target.m_brushes;
    m_fonts = target.m_fonts;
    // The state that shapes meet before the drawing chooses its own.
    m_ops.insert(m_ops.end(), {OP_SMOOTHING, 1, smoothing ? 1 : 0});
    m_ops.insert(m_ops.end(), {OP_BK_MODE, 1, m_bkMode});
    m_ops.insert(m_ops.end(), {OP_BK_COLOR, 2, static_cast<int32_t>(m_bkColor), 255});
    m_startPens = m_pens.size();
    m_startBrushes = m_brushes.size();
    m_bounds = VxRECT{0, 0, -1, -1};
}

CVxRecordingDC::~CVxRecordingDC()
{
    // The stacks were copies; nothing is selected anywhere on leaving.
    m_pens.clear();
    m_brushes.clear();
    m_fonts.clear();
}

bool CVxRecordingDC::Refuse()
{
    m_replayable = false;
    return false;
}

VxRECT CVxRecordingDC::GetBounds() const
{
    if (m_bounds.right < m_bounds.left)
        return VxRECT{0, 0, 0, 0};
    const int grow = m_widestPen / 2 + 2;
    return VxRECT{m_bounds.left - grow, m_bounds.top - grow, m_bounds.right + grow + 1,
                  m_bounds.bottom + grow + 1};
}

void CVxRecordingDC::Include(int x, int y)
{
    if (m_bounds.right < m_bounds.left) {
        m_bounds = VxRECT{x, y, x, y};
        return;
    }
    m_bounds.left = std::min(m_bounds.left, x);
    m_bounds.top = std::min(m_bounds.top, y);
    m_bounds.right = std::max(m_bounds.right, x);
    m_bounds.bottom = std::max(m_bounds.bottom, y);
}

void CVxRecordingDC::Shape(int32_t op, std::initializer_list<int32_t> words)
{
    if (!m_replayable)
        return;
    // A shape in whatever the painter held before would look different
    // where the record is played back.
    if (!m_penChosen || !m_brushChosen) {
        Refuse();
        return;
    }
    m_ops.push_back(op);
    m_ops.push_back(static_cast<int32_t>(words.size()));
    m_ops.insert(m_ops.end(), words);
    const int pairs = LeadingPairs(op);
    const int32_t* w = words.begin();
    for (int i = 0; i < pairs; ++i)
        Include(w[2 * i], w[2 * i + 1]);
}

void CVxRecordingDC::Points(int32_t op, const VxPOINT* points, int count)
{
    if (!m_replayable || !points || count <= 0)
        return;
    if (!m_penChosen || !m_brushChosen) {
        Refuse();
        return;
    }
    m_ops.push_back(op);
    m_ops.push_back(1 + 2 * count);
    m_ops.push_back(count);
    for (int i = 0; i < count; ++i) {
        m_ops.push_back(points[i].x);
        m_ops.push_back(points[i].y);
        Include(points[i].x, points[i].y);
    }
}

std::vector<int32_t> CVxRecordingDC::Normalized(int originX, int originY) const
{
    std::vector<int32_t> ops = m_ops;
    for (size_t at = 0; at + 1 < ops.size();) {
        const int32_t op = ops[at];
        const auto words = static_cast<size_t>(ops[at + 1]);
        int32_t* w = ops.data() + at + 2;
        size_t first = 0;
        size_t pairs = static_cast<size_t>(LeadingPairs(op));
        if (HasPointList(op)) {
            first = 1;
            pairs = static_cast<size_t>(w[0]);
        }
        for (size_t i = 0; i < pairs; ++i) {
            w[first + 2 * i] -= originX;
            w[first + 2 * i + 1] -= originY;
        }
        at += 2 + words;
    }
    return ops;
}

void CVxRecordingDC::Replay(const std::vector<int32_t>& ops, CVxDC& dc, int dx, int dy)
{
    std::vector<VxPOINT> points;
    for (size_t at = 0; at + 1 < ops.size();) {
        const int32_t op = ops[at];
        const auto words = static_cast<size_t>(ops[at + 1]);
        const int32_t* w = ops.data() + at + 2;
        at += 2 + words;
        if (HasPointList(op)) {
            const int count = w[0];
            points.resize(static_cast<size_t>(count));
            for (int i = 0; i < count; ++i)
                points[static_cast<size_t>(i)] = VxPOINT{w[1 + 2 * i] + dx, w[2 + 2 * i] + dy};
            if (op == OP_POLYGON)
                dc.Polygon(points.data(), count);
            else if (op == OP_POLYLINE)
                dc.Polyline(points.data(), count);
            else if (op == OP_POLY_BEZIER)
                dc.PolyBezier(points.data(), count);
            else
                dc.PolyBezierTo(points.data(), count);
            continue;
        }
        switch (op) {
        case OP_PEN:
            dc.SelectPen_int(w[0], w[1], static_cast<unsigned>(w[2]), static_cast<unsigned char>(w[3]));
            break;
        case OP_BRUSH:
            dc.SelectBrush_int(w[0], static_cast<unsigned>(w[1]), w[2], static_cast<unsigned char>(w[3]));
            break;
        case OP_BK_MODE:
            dc.SetBkMode(w[0]);
            break;
        case OP_BK_COLOR:
            dc.SetBkColor(static_cast<unsigned>(w[0]), static_cast<unsigned char>(w[1]));
            break;
        case OP_SMOOTHING:
            dc.EnableSmoothing(w[0] != 0);
            break;
        case OP_LINE:
            dc.Line(w[0] + dx, w[1] + dy, w[2] + dx, w[3] + dy);
            break;
        case OP_MOVE_TO:
            dc.MoveTo(w[0] + dx, w[1] + dy);
            break;
        case OP_LINE_TO:
            dc.LineTo(w[0] + dx, w[1] + dy);
            break;
        case OP_RECTANGLE:
            dc.Rectangle(w[0] + dx, w[1] + dy, w[2] + dx, w[3] + dy);
            break;
        case OP_ROUND_RECT:
            dc.RoundRect(w[0] + dx, w[1] + dy, w[2] + dx, w[3] + dy, w[4]);
            break;
        case OP_ELLIPSE:
            dc.Ellipse(w[0] + dx, w[1] + dy, w[2] + dx, w[3] + dy);
            break;
        case OP_PIE:
        case OP_ARC:
            if (op == OP_PIE)
                dc.Pie(w[0] + dx, w[1] + dy, w[2] + dx, w[3] + dy, 0, 0, 0, 0, WordFloat(w[4]),
                       WordFloat(w[5]));
            else
                dc.Arc(w[0] + dx, w[1] + dy, w[2] + dx, w[3] + dy, 0, 0, 0, 0, WordFloat(w[4]),
                       WordFloat(w[5]));
            break;
        case OP_PIXEL:
            dc.SetPixelV(w[0] + dx, w[1] + dy, static_cast<unsigned>(w[2]));
            break;
        case OP_BEGIN_PATH:
            dc.BeginPath();
            break;
        case OP_END_PATH:
            dc.EndPath();
            break;
        case OP_STROKE_AND_FILL:
            dc.StrokeAndFillPath();
            break;
        default:
            break;
        }
    }
}

int CVxRecordingDC::GetDPI()
{
    return m_target.GetDPI();
}

bool CVxRecordingDC::EnableSmoothing(bool enable)
{
    const bool old = m_smoothing;
    m_smoothing = enable;
    m_ops.insert(m_ops.end(), {OP_SMOOTHING, 1, enable ? 1 : 0});
    return old;
}

bool CVxRecordingDC::SetInterpolationQuality(bool)
{
    // Only pictures care, and pictures are not recorded.
    return false;
}

void CVxRecordingDC::SelectGradientBrush(unsigned colour1, unsigned colour2, double angle, VxRECT& rect)
{
    Refuse();
    CVxDC::SelectGradientBrush(colour1, colour2, angle, rect);
}

void CVxRecordingDC::SelectTextureBrush(double scale, double angle, int offsetX, int offsetY,
                                        CVxPicBuf* picture)
{
    Refuse();
    CVxDC::SelectTextureBrush(scale, angle, offsetX, offsetY, picture);
}

int CVxRecordingDC::SetBkMode(int mode)
{
    const int old = m_bkMode;
    if (mode == bkTransparent || mode == bkOpaque) {
        m_bkMode = mode;
        m_ops.insert(m_ops.end(), {OP_BK_MODE, 1, mode});
    }
    return old;
}

unsigned CVxRecordingDC::SetBkColor(unsigned colour, unsigned char alpha)
{
    const unsigned old = m_bkColor;
    m_bkColor = C2G(colour);
    m_ops.insert(m_ops.end(), {OP_BK_COLOR, 2, static_cast<int32_t>(m_bkColor), alpha});
    return old;
}

void CVxRecordingDC::SelectPen_int(int style, int width, unsigned colour, unsigned char alpha)
{
    m_penChosen = true;
    m_widestPen = std::max(m_widestPen, std::min(width, 1 << 16));
    m_ops.insert(m_ops.end(), {OP_PEN, 4, style, width, static_cast<int32_t>(colour), alpha});
}

void CVxRecordingDC::SelectBrush_int(int style, unsigned colour, int hatch, unsigned char alpha)
{
    m_brushChosen = true;
    // A hatch lines up with the surface, not with the shape.
    if (style == brushHatched)
        Refuse();
    m_ops.insert(m_ops.end(), {OP_BRUSH, 4, style, static_cast<int32_t>(colour), hatch, alpha});
}

void CVxRecordingDC::SelectFont_int(const CVxFont&)
{
    // Fonts only matter to text, which is never recorded.
}

void CVxRecordingDC::Line(int x1, int y1, int x2, int y2)
{
    Shape(OP_LINE, {x1, y1, x2, y2});
}

void CVxRecordingDC::MoveTo(int x, int y)
{
    Shape(OP_MOVE_TO, {x, y});
}

void CVxRecordingDC::LineTo(int x, int y)
{
    Shape(OP_LINE_TO, {x, y});
}

void CVxRecordingDC::Rectangle(int left, int top, int right, int bottom)
{
    Shape(OP_RECTANGLE, {left, top, right, bottom});
}

void CVxRecordingDC::RoundRect(int left, int top, int right, int bottom, int radius)
{
    Shape(OP_ROUND_RECT, {left, top, right, bottom, radius});
}

void CVxRecordingDC::Ellipse(int left, int top, int right, int bottom)
{
    Shape(OP_ELLIPSE, {left, top, right, bottom});
}

// The four points of the classic form are not used by any surface, so they
// are not kept and don't tell two drawings apart.
void CVxRecordingDC::Pie(int left, int top, int right, int bottom, int, int, int, int, float startAngle,
                         float spanAngle)
{
    Shape(OP_PIE, {left, top, right, bottom, FloatWord(startAngle), FloatWord(spanAngle)});
}

void CVxRecordingDC::Arc(int left, int top, int right, int bottom, int, int, int, int, float startAngle,
                         float spanAngle)
{
    Shape(OP_ARC, {left, top, right, bottom, FloatWord(startAngle), FloatWord(spanAngle)});
}

void CVxRecordingDC::Polygon(const VxPOINT* points, int count)
{
    Points(OP_POLYGON, points, count);
}

void CVxRecordingDC::Polyline(const VxPOINT* points, int count)
{
    Points(OP_POLYLINE, points, count);
}

void CVxRecordingDC::PolyBezier(const VxPOINT* points, int count)
{
    Points(OP_POLY_BEZIER, points, count);
}

void CVxRecordingDC::PolyBezierTo(const VxPOINT* points, int count)
{
    Points(OP_POLY_BEZIER_TO, points, count);
}

void CVxRecordingDC::SetPixelV(int x, int y, unsigned colour)
{
    Shape(OP_PIXEL, {x, y, static_cast<int32_t>(C2G(colour))});
}

int CVxRecordingDC::DrawText(const CVxStringW& text, VxRECT& rect, unsigned flags, unsigned colour,
                             bool unused)
{
    // Measuring paints nothing, so the target may answer.
    if (flags & dtCalcRect)
        return m_target.DrawText(text, rect, flags, colour, unused);
    Refuse();
    return 0;
}

void CVxRecordingDC::TextOut(const CVxStringW&, int, int, unsigned, unsigned)
{
    Refuse();
}

bool CVxRecordingDC::GetTextExtentPoint(const CVxStringW& text, VxSIZE& size)
{
    return m_target.GetTextExtentPoint(text, size);
}

void CVxRecordingDC::BeginPath()
{
    m_ops.insert(m_ops.end(), {OP_BEGIN_PATH, 0});
}

void CVxRecordingDC::EndPath()
{
    m_ops.insert(m_ops.end(), {OP_END_PATH, 0});
}

void CVxRecordingDC::StrokeAndFillPath()
{
    if (!m_penChosen || !m_brushChosen)
        Refuse();
    m_ops.insert(m_ops.end(), {OP_STROKE_AND_FILL, 0});
}

void CVxRecordingDC::SetClipRect(const VxRECT&)
{
    Refuse();
}

void CVxRecordingDC::ClearClipping()
{
    Refuse();
}

void CVxRecordingDC::DrawPicture(int, int, int, int, double, CVxPicBuf*, bool)
{
    Refuse();
}

void CVxRecordingDC::DrawPictureRect(int, int, int, int, CVxPicBuf*, int, int, int, int, bool)
{
    Refuse();
}
