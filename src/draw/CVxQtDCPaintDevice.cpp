#include "CVxQtDCPaintDevice.h"

#include <QPainter>

CVxQtDCPaintDevice::CVxQtDCPaintDevice(QPaintDevice* device, bool highQuality)
    : m_painter(std::make_unique<QPainter>())
{
    if (device && m_painter->begin(device))
        m_dc = std::make_unique<CVxQtDC>(m_painter.get(), highQuality);
}

CVxQtDCPaintDevice::~CVxQtDCPaintDevice()
{
    End();
}

bool CVxQtDCPaintDevice::IsActive() const
{
    return m_dc != nullptr && m_painter->isActive();
}

bool CVxQtDCPaintDevice::End()
{
    // The context may still hold pens and paths of the painter.
    m_dc.reset();
    if (!m_painter->isActive())
        return false;
    return m_painter->end();
}
