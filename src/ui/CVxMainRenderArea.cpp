#include "CVxMainRenderArea.h"

#include "CVxAppCore.h"

#include <QPainter>
#include <QPainterPath>

namespace {
QColor ColorFromWord(unsigned bgr, int alpha = 255)
{
    return QColor(static_cast<int>(bgr & 0xFF), static_cast<int>((bgr >> 8) & 0xFF),
                  static_cast<int>((bgr >> 16) & 0xFF), alpha);
}
} // namespace

CVxMainRenderArea::CVxMainRenderArea(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    grabGesture(Qt::PanGesture);
    grabGesture(Qt::PinchGesture);
}

void CVxMainRenderArea::paintEvent(QPaintEvent* /*event*/)
{
    CVxAppCore* core = VX_GetCore();
    if (!core->IsDrawingAllowed() || !m_paintable)
        return;
    const VxRECT sheet = core->GetSheetRect();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, true);

    // A soft shadow under the sheet.
    QPainterPath shadow;
    shadow.addRoundedRect(QRectF(sheet.left - 8, sheet.top - 8, sheet.right - sheet.left + 8 + 9,
                                 sheet.bottom - sheet.top + 8 + 9),
                          7, 7);
    painter.fillPath(shadow, ColorFromWord(0xE6D7D2, 110));

    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(QRect(sheet.left, sheet.top, sheet.right - sheet.left + 1, sheet.bottom - sheet.top + 1),
                     ColorFromWord(0xD4D4D4));
}
