#include "CVxMainRenderArea.h"

#include "CVxWallEditor.h"

#include <QLineEdit>

#include "CVxAppCore.h"
#include "CVxLibraryForm.h"
#include "CVxMainScrollArea.h"
#include "CVxMainStatusBar.h"
#include "CVxMainWindow.h"
#include "CVxOptions.h"
#include "CVxQtDC.h"

#include <QCursor>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPointingDevice>
#include <QScrollBar>
#include <QWheelEvent>

CVxMainRenderArea::CVxMainRenderArea(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    // The plan takes the keys that no command of the window claims.
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    grabGesture(Qt::PanGesture);
    grabGesture(Qt::PinchGesture);
    m_scrollerTimer.setInterval(30);
    connect(&m_scrollerTimer, &QTimer::timeout, this, &CVxMainRenderArea::OnScrollerTimer);
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
    if (IsMiddleScrolling()) {
        const QPoint anchor = mapFromGlobal(m_scrollAnchor);
        DrawMouseScroller(&dc, anchor.x(), anchor.y());
    }
}

QImage CVxMainRenderArea::DrawToImage() const
{
    CVxAppCore* core = VX_GetCore();
    const VxRECT sheet = core->GetSheetRect();
    // A sheet centred in a larger widget loses the space around it.
    int width = this->width();
    int height = this->height();
    int x = sheet.left;
    int y = sheet.top;
    if (x > 0) {
        width -= 2 * x;
        x = 0;
    }
    if (y > 0) {
        height -= 2 * y;
        y = 0;
    }
    CVxQtDC dc(std::max(1, width), std::max(1, height), VX_GetOptions()->m_antiAliasing);
    core->DrawProject(&dc, x, y, VxRECT{0, 0, width, height}, core->GetPartDrawFlagsFromOptions());
    return *dc.GetImage();
}

CVxMainScrollArea* CVxMainRenderArea::ScrollArea() const
{
    // The render area lives in the scroll area's viewport.
    QWidget* viewport = parentWidget();
    return viewport ? qobject_cast<CVxMainScrollArea*>(viewport->parentWidget()) : nullptr;
}

namespace {
int CoreButton(Qt::MouseButton button)
{
    switch (button) {
    case Qt::LeftButton:
        return CVxAppCore::buttonLeft;
    case Qt::RightButton:
        return CVxAppCore::buttonRight;
    case Qt::MiddleButton:
        return CVxAppCore::buttonMiddle;
    default:
        return 0;
    }
}

int CoreSource(const QMouseEvent* event)
{
    return event->source() == Qt::MouseEventSynthesizedBySystem && event->pointingDevice() &&
                   event->pointingDevice()->type() == QInputDevice::DeviceType::TouchScreen
               ? CVxAppCore::sourceTouch
               : 0;
}
} // namespace

void CVxMainRenderArea::mousePressEvent(QMouseEvent* event)
{
    m_buttonsDown = event->buttons() | event->button();
    if (IsMiddleScrolling()) {
        StopMiddleScrolling();
        event->accept();
        return;
    }
    if (event->button() == Qt::MiddleButton) {
        m_scrollAnchor = event->globalPosition().toPoint();
        m_scrollerTimer.start();
        update();
        event->accept();
        return;
    }
    CVxAppCore* core = VX_GetCore();
    const int button = CoreButton(event->button());
    if (!core->IsDrawingAllowed() || !m_paintable || button == 0) {
        QWidget::mousePressEvent(event);
        return;
    }
    setFocus(Qt::MouseFocusReason);
    bool handled = true;
    const QPointF at = event->position();
    core->MainViewMouseDown(button, ToCoreModifiers(event->modifiers()), at.x(), at.y(), CoreSource(event),
                            &handled);
    event->setAccepted(handled);
}

void CVxMainRenderArea::mouseReleaseEvent(QMouseEvent* event)
{
    m_buttonsDown = event->buttons();
    CVxAppCore* core = VX_GetCore();
    const int button = CoreButton(event->button());
    if (!core->IsDrawingAllowed() || !m_paintable || button == 0 || button == CVxAppCore::buttonMiddle) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    const QPointF at = event->position();
    core->MainViewMouseUp(button, ToCoreModifiers(event->modifiers()), at.x(), at.y(), CoreSource(event));
    event->accept();
}

void CVxMainRenderArea::mouseMoveEvent(QMouseEvent* event)
{
    m_buttonsDown = event->buttons();
    CVxAppCore* core = VX_GetCore();
    CVxMainWindow* window = CVxMainWindow::GetInstance();
    const double zoom = core->GetZoom();
    const QPointF at = event->position();
    if (window && window->GetStatusBar() && zoom > 0) {
        const VxRECT sheet = core->GetSheetRect();
        const CVxProject& project = core->GetProject();
        window->GetStatusBar()->SetMousePosition((at.x() - sheet.left) / zoom - project.m_spaceLeft,
                                                 (at.y() - sheet.top) / zoom - project.m_spaceTop);
    }
    if (core->IsDrawingAllowed() && m_paintable && !IsMiddleScrolling())
        core->MainViewMouseMove(ToCoreModifiers(event->modifiers()), at.x(), at.y(), CoreSource(event));
    QWidget::mouseMoveEvent(event);
}

void CVxMainRenderArea::leaveEvent(QEvent* event)
{
    if (CVxMainWindow* window = CVxMainWindow::GetInstance())
        if (window->GetStatusBar())
            window->GetStatusBar()->ClearMousePosition();
    QWidget::leaveEvent(event);
}

void CVxMainRenderArea::StopMiddleScrolling()
{
    m_scrollerTimer.stop();
    update();
}

void CVxMainRenderArea::OnScrollerTimer()
{
    CVxMainScrollArea* area = ScrollArea();
    if (!area) {
        StopMiddleScrolling();
        return;
    }
    const QPoint offset = (QCursor::pos() - m_scrollAnchor) / 10;
    if (area->horizontalScrollBar()->isVisible())
        area->horizontalScrollBar()->setValue(area->horizontalScrollBar()->value() + offset.x());
    if (area->verticalScrollBar()->isVisible())
        area->verticalScrollBar()->setValue(area->verticalScrollBar()->value() + offset.y());
    area->KeepImageInCenter();
    repaint();
}

void CVxMainRenderArea::DrawMouseScroller(CVxDC* dc, int x, int y) const
{
    CVxMainScrollArea* area = ScrollArea();
    const bool horizontal = area && area->horizontalScrollBar()->isVisible();
    const bool vertical = area && area->verticalScrollBar()->isVisible();
    dc->SelectPen(CVxDC::penSolid, 1, 0);
    dc->SelectBrush(CVxDC::brushSolid, 0xFFFFFF, 0, 128);
    dc->Ellipse(x - 14, y - 14, x + 15, y + 15);
    dc->SelectOldBrush();
    dc->SelectBrush(CVxDC::brushSolid, 0x808080);
    dc->SelectOldPen();
    dc->SelectPen(CVxDC::penNull, 0, 0);
    dc->Ellipse(x - 2, y - 2, x + 3, y + 3);
    // Small arrow heads from 6 to 11 pixels out, towards each way that
    // can scroll.
    auto arrow = [&](int dx, int dy) {
        const VxPOINT tip{x + 11 * dx, y + 11 * dy};
        const VxPOINT a{x + 6 * dx - 3 * dy, y + 6 * dy - 3 * dx};
        const VxPOINT b{x + 6 * dx + 3 * dy, y + 6 * dy + 3 * dx};
        const VxPOINT points[3] = {tip, a, b};
        dc->Polygon(points, 3);
    };
    dc->SelectOldBrush();
    dc->SelectBrush(CVxDC::brushSolid, 0);
    if (horizontal) {
        arrow(-1, 0);
        arrow(1, 0);
    }
    if (vertical) {
        arrow(0, -1);
        arrow(0, 1);
    }
    dc->SelectOldBrush();
    dc->SelectOldPen();
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

unsigned CVxMainRenderArea::ToCoreModifiers(Qt::KeyboardModifiers modifiers)
{
    unsigned result = 0;
    if (modifiers & Qt::ShiftModifier)
        result |= CVxAppCore::modShift;
    if (modifiers & Qt::ControlModifier)
        result |= CVxAppCore::modCtrl;
    if (modifiers & Qt::AltModifier)
        result |= CVxAppCore::modAlt;
    return result;
}

unsigned CVxMainRenderArea::ToCoreKey(const QKeyEvent* event)
{
    const int key = event->key();
    switch (key) {
    case Qt::Key_Left:
        return VX_KEY_LEFT;
    case Qt::Key_Right:
        return VX_KEY_RIGHT;
    case Qt::Key_Up:
        return VX_KEY_UP;
    case Qt::Key_Down:
        return VX_KEY_DOWN;
    case Qt::Key_Escape:
        return VX_KEY_ESC;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return VX_KEY_ENTER;
    case Qt::Key_Delete:
        return VX_KEY_DELETE;
    case Qt::Key_Shift:
        return VX_KEY_SHIFT;
    case Qt::Key_Control:
        return VX_KEY_CTRL;
    case Qt::Key_PageUp:
        return VX_KEY_PGUP;
    case Qt::Key_PageDown:
        return VX_KEY_PGDN;
    default:
        break;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12)
        return VX_KEY_F1 + static_cast<unsigned>(key - Qt::Key_F1);
    // Qt numbers the printable keys by their upper-case character.
    if (key > 32 && key < 127)
        return static_cast<unsigned>(key);
    return 0;
}

void CVxMainRenderArea::keyPressEvent(QKeyEvent* event)
{
    CVxWallEditor* walls = VX_GetCore()->GetWallEditor();
    const QString typed = event->text();
    if (VX_GetCore()->GetActiveEditor() == walls && walls->IsDrawingWall() && typed.size() == 1 &&
        (typed[0].isDigit() || typed[0] == QLatin1Char('.') || typed[0] == QLatin1Char(','))) {
        ShowTypedLength(typed);
        event->accept();
        return;
    }
    const unsigned key = ToCoreKey(event);
    if (key == 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    CVxAppCore* core = VX_GetCore();
    const unsigned modifiers = ToCoreModifiers(event->modifiers());
    // Right and down do not pass the core's key dispatch; they come here
    // straight to the arrow handling.
    const bool used = (key == VX_KEY_RIGHT || key == VX_KEY_DOWN)
                          ? core->MainViewKeyArrowsPressed(key, modifiers)
                          : core->MainViewKeyDown(key, modifiers);
    if (used)
        event->accept();
    else
        QWidget::keyPressEvent(event);
}

void CVxMainRenderArea::keyReleaseEvent(QKeyEvent* event)
{
    const unsigned key = ToCoreKey(event);
    if (key != 0 && VX_GetCore()->MainViewKeyUp(key, ToCoreModifiers(event->modifiers())))
        event->accept();
    else
        QWidget::keyReleaseEvent(event);
}

bool CVxMainRenderArea::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && VX_GetCore()->GetActiveEditor()) {
        auto* keyEvent = static_cast<QKeyEvent*>(event);
        const int key = keyEvent->key();
        const bool plain = (keyEvent->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (plain && (key == Qt::Key_Escape || key == Qt::Key_Delete || key == Qt::Key_Return ||
                      key == Qt::Key_Enter)) {
            event->accept();
            return true;
        }
    }
    return QWidget::event(event);
}

void CVxMainRenderArea::mouseDoubleClickEvent(QMouseEvent* event)
{
    CVxAppCore* core = VX_GetCore();
    if (event->button() == Qt::LeftButton && core->IsDrawingAllowed() && m_paintable) {
        const QPointF at = event->position();
        core->MainViewDblClick(at.x(), at.y());
        event->accept();
        return;
    }
    QWidget::mouseDoubleClickEvent(event);
}

bool CVxMainRenderArea::eventFilter(QObject* watched, QEvent* event)
{
    // A line edit lets Return travel on to its parent after it used it;
    // here the plan would take it for closing the editor.
    if ((watched == m_lengthEdit || watched == m_angleEdit) && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            ApplyTypedLength();
            return true;
        }
    }
    if ((watched == m_lengthEdit || watched == m_angleEdit) &&
        (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        event->accept();
        if (event->type() == QEvent::KeyPress)
            HideTypedLength();
        return event->type() == QEvent::KeyPress;
    }
    return QWidget::eventFilter(watched, event);
}

void CVxMainRenderArea::ShowTypedLength(const QString& first)
{
    if (!m_lengthEdit) {
        m_lengthEdit = new QLineEdit(this);
        m_angleEdit = new QLineEdit(this);
        m_lengthEdit->setObjectName(QStringLiteral("TypedWallLength"));
        m_angleEdit->setObjectName(QStringLiteral("TypedWallAngle"));
        for (QLineEdit* edit : {m_lengthEdit, m_angleEdit}) {
            edit->setMaxLength(32);
            edit->setFixedWidth(90);
            edit->installEventFilter(this);
        }
        m_angleEdit->setPlaceholderText(QStringLiteral("\u00B0"));
        setTabOrder(m_lengthEdit, m_angleEdit);
    }
    const QPoint at = mapFromGlobal(QCursor::pos()) + QPoint(16, 16);
    m_lengthEdit->move(at);
    m_angleEdit->move(at + QPoint(m_lengthEdit->width() + 4, 0));
    m_lengthEdit->setText(first);
    m_angleEdit->clear();
    m_lengthEdit->show();
    m_angleEdit->show();
    m_lengthEdit->setFocus(Qt::OtherFocusReason);
    m_lengthEdit->deselect();
    m_lengthEdit->end(false);
}

void CVxMainRenderArea::HideTypedLength()
{
    if (!m_lengthEdit || !m_lengthEdit->isVisible())
        return;
    m_lengthEdit->hide();
    m_angleEdit->hide();
    setFocus(Qt::OtherFocusReason);
}

void CVxMainRenderArea::ApplyTypedLength()
{
    if (!m_lengthEdit)
        return;
    const bool applied =
        VX_GetCore()->ApplyTypedWallLength(CVxStringW(m_lengthEdit->text()), CVxStringW(m_angleEdit->text()));
    if (applied) {
        HideTypedLength();
        return;
    }
    // A text that is no length stays for correcting.
    m_lengthEdit->selectAll();
    m_lengthEdit->setFocus(Qt::OtherFocusReason);
}

void CVxMainRenderArea::dragEnterEvent(QDragEnterEvent* event)
{
    CVxAppCore* core = VX_GetCore();
    const int libIndex = CVxLibraryForm::LibIndexFromMimeData(event->mimeData());
    const QPoint at = event->position().toPoint();
    if (libIndex < 0 || !core->IsDrawingAllowed() || !m_paintable ||
        !core->LibStartCreatingObjectByDropAtPos(libIndex, at.x(), at.y(), false)) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void CVxMainRenderArea::dragMoveEvent(QDragMoveEvent* event)
{
    CVxAppCore* core = VX_GetCore();
    if (CVxLibraryForm::LibIndexFromMimeData(event->mimeData()) < 0 ||
        core->GetMouseState() != CVxAppCore::msDropping) {
        event->ignore();
        return;
    }
    const QPointF at = event->position();
    core->MainViewMouseMove(ToCoreModifiers(event->modifiers()), at.x(), at.y(), 0);
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void CVxMainRenderArea::dragLeaveEvent(QDragLeaveEvent* event)
{
    // The drag went elsewhere, or was given up: the object goes. One that
    // hangs on the pointer after a click stays.
    CVxAppCore* core = VX_GetCore();
    if (core->GetMouseState() == CVxAppCore::msDropping)
        core->LibCancelCreatingObject();
    event->accept();
}

void CVxMainRenderArea::dropEvent(QDropEvent* event)
{
    CVxAppCore* core = VX_GetCore();
    const int libIndex = CVxLibraryForm::LibIndexFromMimeData(event->mimeData());
    if (libIndex < 0 || !core->IsDrawingAllowed() || !m_paintable) {
        event->ignore();
        return;
    }
    const QPointF at = event->position();
    if (core->GetMouseState() == CVxAppCore::msDropping) {
        core->MainViewMouseMove(ToCoreModifiers(event->modifiers()), at.x(), at.y(), 0);
        core->MainViewMouseUp(CVxAppCore::buttonLeft, 0, at.x(), at.y(), 0);
    } else if (!core->LibStartCreatingObjectByDropAtPos(libIndex, static_cast<int>(at.x()),
                                                        static_cast<int>(at.y()), true)) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setFocus(Qt::OtherFocusReason);
}
