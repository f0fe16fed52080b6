#include "CVxMainRenderArea.h"

#include "CVxAppCore.h"
#include "CVxOptions.h"
#include "CVxQtDC.h"

#include <QPaintEvent>
#include <QPainter>

CVxMainRenderArea::CVxMainRenderArea(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    grabGesture(Qt::PanGesture);
    grabGesture(Qt::PinchGesture);
}

void CVxMainRenderArea::paintEvent(QPaintEvent* event)
{
    CVxAppCore* core = VX_GetCore();
    if (!core->IsDrawingAllowed() || !m_paintable)
        return;
    const VxRECT sheet = core->GetSheetRect();
    QPainter painter(this);
    CVxQtDC dc(&painter, VX_GetOptions()->m_antiAliasing);

    // A soft shadow under the sheet, then the sheet itself.
    dc.SelectPen(CVxDC::penNull, 0, 0);
    dc.SelectBrush(CVxDC::brushSolid, 0xE6D7D2, 0, 110);
    dc.RoundRect(sheet.left - 8, sheet.top - 8, sheet.right + 9, sheet.bottom + 9, 7);
    dc.SelectOldBrush();
    dc.SelectOldPen();

    const QRect update = event->rect();
    const VxRECT updateRect{update.left(), update.top(), update.right() + 1, update.bottom() + 1};
    core->DrawProject(&dc, sheet.left, sheet.top, updateRect,
                      core->GetPartDrawFlagsFromOptions() | CVxAppCore::drawHandles);
}
