#include "CVxAnnotation.h"

#include "CVxDC.h"

#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxStringTokenizer.h"
#include "VxEps.h"
#include "VxGMDraw.h"
#include "VxNumbers.h"

#include <algorithm>
#include <cmath>

namespace {
bool SamePolygon(const CVxDPolygon& a, const CVxDPolygon& b)
{
    return a.points == b.points && a.bezierFlags == b.bezierFlags && a.bezierControls == b.bezierControls &&
           a.kind == b.kind;
}
} // namespace

CVxStringW CVxAnnotItem::PropsToString() const
{
    CVxStringW text = CVxStringW::IntToHex(m_color, 6, true);
    text += CVxStringW().sprintf(L"|%d|", m_alpha);
    text += DblSaveW(m_width);
    text += m_scaleWidth ? L"|1" : L"|0";
    return text;
}

void CVxAnnotItem::PropsFromString(const CVxStringW& text)
{
    CVxStringTokenizer tokens(text, L'|');
    if (tokens.IsNextToken())
        m_color = static_cast<unsigned>(tokens.GetNextToken().ToIntDef(static_cast<int>(m_color)));
    if (tokens.IsNextToken())
        m_alpha = tokens.GetNextToken().ToIntDef(m_alpha);
    if (tokens.IsNextToken())
        m_width = DblLoad(tokens.GetNextToken(), m_width);
    if (tokens.IsNextToken())
        m_scaleWidth = tokens.GetNextToken().ToIntDef(m_scaleWidth ? 1 : 0) > 0;
}

bool CVxAnnotItem::operator==(const CVxAnnotItem& other) const
{
    return SamePolygon(m_poly, other.m_poly) && m_color == other.m_color && m_alpha == other.m_alpha &&
           std::fabs(m_width - other.m_width) < EPS && m_scaleWidth == other.m_scaleWidth;
}

void CVxAnnotation::Reset()
{
    m_items.clear();
}

void CVxAnnotation::OnReadIniValue(const CVxStringA& key, const CVxStringW& value,
                                   CVxIniFileReader* /*reader*/)
{
    if (key == "ItemPoly") {
        CVxAnnotItem item;
        if (item.m_poly.LoadFromString(value))
            m_items.push_back(item);
    } else if (key == "ItemProps") {
        if (!m_items.empty())
            m_items.back().PropsFromString(value);
    }
}

void CVxAnnotation::SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const
{
    if (m_items.empty())
        return;
    writer->StartSection(section);
    for (const CVxAnnotItem& item : m_items) {
        writer->WriteString("ItemPoly", item.m_poly.SaveToString());
        writer->WriteString("ItemProps", item.PropsToString());
    }
}

CVxAnnotItem* CVxAnnotation::SafeGetItem(int index)
{
    return index >= 0 && index < GetCount() ? &m_items[static_cast<size_t>(index)] : nullptr;
}

const CVxAnnotItem* CVxAnnotation::SafeGetItem(int index) const
{
    return index >= 0 && index < GetCount() ? &m_items[static_cast<size_t>(index)] : nullptr;
}

void CVxAnnotation::Move(double dx, double dy)
{
    for (CVxAnnotItem& item : m_items)
        item.m_poly.Offset(dx, dy);
}

void CVxAnnotation::Scale(double sx, double sy)
{
    for (CVxAnnotItem& item : m_items)
        item.m_poly.Scale(sx, sy);
}

void CVxAnnotation::Rotate(double degrees)
{
    for (CVxAnnotItem& item : m_items)
        item.m_poly.Rotate(degrees, false);
}

bool CVxAnnotation::operator==(const CVxAnnotation& other) const
{
    return m_items == other.m_items;
}

void CVxAnnotation::Draw(CVxDC* dc, int x, int y, double zoom) const
{
    for (const CVxAnnotItem& item : m_items) {
        const int count = item.m_poly.GetVertexCount();
        const double width = item.m_scaleWidth ? item.m_width * zoom : item.m_width;
        if (count == 0 || !std::isfinite(width))
            continue;
        const int pixels = static_cast<int>(std::clamp(std::lround(width), 1L, 4096L));
        const auto alpha = static_cast<unsigned char>(item.m_alpha < 0 ? 255 : std::min(item.m_alpha, 255));
        if (count == 1) {
            const CVxDPoint& point = item.m_poly.points.front();
            const double cx = point.x * zoom + x;
            const double cy = point.y * zoom + y;
            if (!std::isfinite(cx) || !std::isfinite(cy) || std::fabs(cx) > 1e8 || std::fabs(cy) > 1e8)
                continue;
            const int left = static_cast<int>(std::lround(cx - pixels / 2.0));
            const int top = static_cast<int>(std::lround(cy - pixels / 2.0));
            dc->SelectPen(CVxDC::penNull, 0, 0);
            dc->SelectBrush(CVxDC::brushSolid, item.m_color, 0, alpha);
            dc->Ellipse(left, top, left + pixels + 1, top + pixels + 1);
        } else {
            dc->SelectPen(CVxDC::penSolid, pixels, item.m_color, alpha);
            dc->SelectBrush(CVxDC::brushNull, 0);
            GMDrawBezierPolygon(*dc, item.m_poly, zoom, x, y, true);
        }
        dc->SelectOldBrush();
        dc->SelectOldPen();
    }
}
