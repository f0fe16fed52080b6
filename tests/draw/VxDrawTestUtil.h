#pragma once
// A white image with a drawing context on it, and pixel helpers for tests
// that check what a drawing operation painted at chosen places.

#include "CVxQtDC.h"
#include "VxColorWord.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <memory>

class CVxTestCanvas
{
public:
    explicit CVxTestCanvas(int width = 100, int height = 100, bool grey = false, int dpi = 0)
        : m_image(width, height, QImage::Format_ARGB32_Premultiplied)
    {
        m_image.fill(Qt::white);
        if (dpi > 0) {
            const int dotsPerMeter = static_cast<int>(dpi / 0.0254 + 0.5);
            m_image.setDotsPerMeterX(dotsPerMeter);
            m_image.setDotsPerMeterY(dotsPerMeter);
        }
        m_painter = std::make_unique<QPainter>(&m_image);
        m_dc = std::make_unique<CVxQtDC>(m_painter.get(), true, grey);
    }
    ~CVxTestCanvas() { Finish(); }

    CVxQtDC& dc() { return *m_dc; }
    QPainter& painter() { return *m_painter; }

    // Ends drawing; pixels are read from the finished image.
    const QImage& Finish()
    {
        m_dc.reset();
        if (m_painter) {
            m_painter->end();
            m_painter.reset();
        }
        return m_image;
    }
    const QImage& image() const { return m_image; }

    // The colour word (0x00BBGGRR) of a pixel, composed over the white ground.
    unsigned Pixel(int x, int y) const
    {
        const QColor c = m_image.pixelColor(x, y);
        return VX_RGB(static_cast<unsigned>(c.red()), static_cast<unsigned>(c.green()),
                      static_cast<unsigned>(c.blue()));
    }
    // Mean of the three channels.
    int Level(int x, int y) const
    {
        const unsigned c = Pixel(x, y);
        return static_cast<int>((VX_GetRValue(c) + VX_GetGValue(c) + VX_GetBValue(c)) / 3);
    }
    bool IsInk(int x, int y) const { return Level(x, y) < 160; }
    bool IsWhite(int x, int y) const { return Pixel(x, y) == 0xFFFFFF; }

    // Bounding box of the pixels darker than white by more than a trace;
    // right and bottom exclusive, all zero when there is no ink.
    VxRECT InkBounds() const
    {
        VxRECT box{0, 0, 0, 0};
        bool any = false;
        for (int y = 0; y < m_image.height(); ++y) {
            for (int x = 0; x < m_image.width(); ++x) {
                if (Level(x, y) > 200)
                    continue;
                if (!any)
                    box = VxRECT{x, y, x + 1, y + 1};
                box.left = std::min(box.left, x);
                box.top = std::min(box.top, y);
                box.right = std::max(box.right, x + 1);
                box.bottom = std::max(box.bottom, y + 1);
                any = true;
            }
        }
        return box;
    }
    bool IsAllWhite() const
    {
        for (int y = 0; y < m_image.height(); ++y) {
            for (int x = 0; x < m_image.width(); ++x) {
                if (!IsWhite(x, y))
                    return false;
            }
        }
        return true;
    }

private:
    QImage m_image;
    std::unique_ptr<QPainter> m_painter;
    std::unique_ptr<CVxQtDC> m_dc;
};

// Colour words compare channel by channel within a tolerance, and print as
// hexadecimal on failure.
inline ::testing::AssertionResult VxColorNear(unsigned actual, unsigned expected, int tolerance = 8)
{
    const auto near = [&](unsigned a, unsigned b) {
        return std::abs(static_cast<int>(a) - static_cast<int>(b)) <= tolerance;
    };
    if (near(VX_GetRValue(actual), VX_GetRValue(expected)) &&
        near(VX_GetGValue(actual), VX_GetGValue(expected)) &&
        near(VX_GetBValue(actual), VX_GetBValue(expected)))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << std::hex << "colour 0x" << actual << " is not near 0x" << expected;
}

// Turns the printing flag on for one scope.
class CVxPrintingScope
{
public:
    CVxPrintingScope() { CVxDC::SetPrinting(true); }
    ~CVxPrintingScope() { CVxDC::SetPrinting(false); }
    CVxPrintingScope(const CVxPrintingScope&) = delete;
    CVxPrintingScope& operator=(const CVxPrintingScope&) = delete;
};
