#pragma once
// A drawing context on any Qt paint device that the caller owns: an SVG or
// PDF generator of the headless tool, a printer. The painter lives and ends
// here, so that code outside the drawing surface never handles one.

#include "CVxQtDC.h"

#include <memory>

class QPaintDevice;
class QPainter;

class CVxQtDCPaintDevice
{
public:
    // Begins painting on the device; IsActive says whether that worked (a
    // generator whose file can't be created refuses).
    CVxQtDCPaintDevice(QPaintDevice* device, bool highQuality);
    ~CVxQtDCPaintDevice();
    CVxQtDCPaintDevice(const CVxQtDCPaintDevice&) = delete;
    CVxQtDCPaintDevice& operator=(const CVxQtDCPaintDevice&) = delete;

    bool IsActive() const;
    // Null when painting could not begin.
    CVxQtDC* GetDC() const { return m_dc.get(); }
    // Finishes the device's output; false when it could not be written.
    bool End();

private:
    std::unique_ptr<QPainter> m_painter;
    std::unique_ptr<CVxQtDC> m_dc;
};
