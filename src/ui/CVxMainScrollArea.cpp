#include "CVxMainScrollArea.h"

#include "CVxAppCore.h"
#include "CVxMainRenderArea.h"

#include <QResizeEvent>
#include <QScrollBar>

namespace {
// Room left around the sheet so that its shadow shows.
constexpr int kSheetMargin = 20;
} // namespace

CVxMainScrollArea::CVxMainScrollArea(QWidget* parent) : QAbstractScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setStyleSheet(QStringLiteral("QAbstractScrollArea { background-image: url(:/icons/BackTileBlue.png); "
                                 "background-position: top left; background-repeat: repeat-xy; }"));
}

void CVxMainScrollArea::SetRenderArea(CVxMainRenderArea* area)
{
    m_renderArea = area;
    area->setParent(viewport());
    area->setGeometry(viewport()->rect());
    UpdateScrollbars();
}

void CVxMainScrollArea::UpdateScrollbars()
{
    if (!m_renderArea)
        return;
    const VxRECT sheet = VX_GetCore()->GetSheetRect();
    const int sheetWidth = sheet.right - sheet.left + 2 * kSheetMargin;
    const int sheetHeight = sheet.bottom - sheet.top + 2 * kSheetMargin;
    const QSize view = maximumViewportSize();

    const bool horizontal = sheetWidth > view.width();
    const bool vertical = sheetHeight > view.height();
    setHorizontalScrollBarPolicy(horizontal ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(vertical ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);

    const QSize visible = viewport()->size();
    horizontalScrollBar()->setRange(0, qMax(0, sheetWidth - visible.width()));
    horizontalScrollBar()->setPageStep(visible.width());
    verticalScrollBar()->setRange(0, qMax(0, sheetHeight - visible.height()));
    verticalScrollBar()->setPageStep(visible.height());
    KeepImageInCenter();
}

void CVxMainScrollArea::KeepImageInCenter()
{
    if (!m_renderArea)
        return;
    CVxAppCore* core = VX_GetCore();
    const VxRECT sheet = core->GetSheetRect();
    const int sheetWidth = sheet.right - sheet.left;
    const int sheetHeight = sheet.bottom - sheet.top;
    const QSize visible = viewport()->size();

    VxPOINT origin;
    origin.x = sheetWidth + 2 * kSheetMargin <= visible.width()
                   ? (visible.width() - sheetWidth) / 2
                   : kSheetMargin - horizontalScrollBar()->value();
    origin.y = sheetHeight + 2 * kSheetMargin <= visible.height()
                   ? (visible.height() - sheetHeight) / 2
                   : kSheetMargin - verticalScrollBar()->value();
    core->SetViewOrigin(origin);
    m_renderArea->update();
}

void CVxMainScrollArea::ScrollToOrigin(const VxPOINT& origin)
{
    horizontalScrollBar()->setValue(kSheetMargin - origin.x);
    verticalScrollBar()->setValue(kSheetMargin - origin.y);
    KeepImageInCenter();
}

void CVxMainScrollArea::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    if (m_renderArea)
        m_renderArea->setGeometry(viewport()->rect());
    UpdateScrollbars();
}

bool CVxMainScrollArea::viewportEvent(QEvent* event)
{
    // The render area covers the whole viewport, whatever the scroll bars
    // leave of it.
    if (event->type() == QEvent::Resize && m_renderArea)
        m_renderArea->setGeometry(viewport()->rect());
    return QAbstractScrollArea::viewportEvent(event);
}

void CVxMainScrollArea::scrollContentsBy(int /*dx*/, int /*dy*/)
{
    KeepImageInCenter();
}
