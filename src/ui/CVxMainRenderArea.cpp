#include "CVxMainRenderArea.h"

#include "CVxAppCore.h"
#include "CVxMainWindow.h"
#include "CVxOptions.h"
#include "CVxQtDC.h"

#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>

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
    dc.SelectPen(CVxDC::penSolid, 0, 0);
    dc.SelectBrush(CVxDC::brushSolid, 0xD4D4D4);
    dc.Rectangle(sheet.left - 1, sheet.top - 1, sheet.right + 1, sheet.bottom + 1);
    dc.SelectOldBrush();
    dc.SelectOldPen();

    const QRect update = event->rect();
    const VxRECT updateRect{update.left(), update.top(), update.right() + 1, update.bottom() + 1};
    core->DrawProject(&dc, sheet.left, sheet.top, updateRect,
                      core->GetPartDrawFlagsFromOptions() | CVxAppCore::drawHandles);
}

void CVxMainRenderArea::wheelEvent(QWheelEvent* event)
{
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    if (!(event->modifiers() & Qt::ControlModifier) || !window) {
        QWidget::wheelEvent(event);
        return;
    }
    const int delta = event->angleDelta().y();
    if (delta > 0)
        window->ZoomIn(true);
    else if (delta < 0)
        window->ZoomOut(true);
    event->accept();
}
