#pragma once
// Free-hand marks of the highlighter over a floor's plan: curved strokes, and
// dots where a stroke has a single point.

#include "CVxDPolygon.h"
#include "CVxStringA.h"
#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <vector>

class CVxDC;
class CVxIniWriter;

class CVxAnnotItem
{
public:
    // Colour, alpha, width and the zoom flag as "|" separated text, the
    // colour in hexadecimal with "0x".
    CVxStringW PropsToString() const;
    // Missing or unreadable fields keep their values.
    void PropsFromString(const CVxStringW& text);

    bool operator==(const CVxAnnotItem& other) const;
    bool operator!=(const CVxAnnotItem& other) const { return !(*this == other); }

    CVxDPolygon m_poly;
    unsigned m_color = 255;
    // -1 draws opaque.
    int m_alpha = -1;
    double m_width = 3;
    // The width grows with the zoom; it also picks the line's style.
    bool m_scaleWidth = false;
};

class CVxAnnotation : public IVxReadIniClient
{
public:
    CVxAnnotation() = default;
    CVxAnnotation(const CVxAnnotation&) = default;
    CVxAnnotation& operator=(const CVxAnnotation&) = default;

    void Reset();

    // "ItemPoly" adds an item when its polygon can be read; "ItemProps" sets
    // the properties of the last item.
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    // Writes no section at all for an empty list.
    void SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const;

    int GetCount() const { return static_cast<int>(m_items.size()); }
    CVxAnnotItem* SafeGetItem(int index);
    const CVxAnnotItem* SafeGetItem(int index) const;

    // Over the plan with pixel = coordinate * zoom + (x, y): a one-point
    // item as a disc as wide as its line, others as open curves. Widths are
    // pixels, or plan units when the item's width grows with the zoom.
    void Draw(CVxDC* dc, int x, int y, double zoom) const;

    // Every polygon, without any unit correction.
    void Move(double dx, double dy);
    void Scale(double sx, double sy);
    // About the origin.
    void Rotate(double degrees);

    bool operator==(const CVxAnnotation& other) const;
    bool operator!=(const CVxAnnotation& other) const { return !(*this == other); }

    std::vector<CVxAnnotItem> m_items;
};
