#include "GLWidget.h"

#include "CVxOptions.h"
#include "IVxAppHelperCallback.h"
#include "VxCastleEngine.h"

#include <QCursor>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QOpenGLContext>
#include <QTimer>
#include <QWheelEvent>

#include <cmath>

namespace {

GLWidget* g_pThis = nullptr;

int OpenGlLibraryCallback(int code, int x, int y, const char* text)
{
    if (!g_pThis || !g_pThis->IsAfterInit() || code >= 5)
        return 0;
    return g_pThis->OnEngineCallback(code, x, y, text);
}

int RoundHalfAway(double value)
{
    return static_cast<int>(std::lround(value));
}

// Engine key numbers of the keys that are not letters, digits or F keys.
int MapOtherKey(int key)
{
    switch (key) {
    case 32:
    case 91:
        return key;
    case 39:
        return 6;
    case 43:
        return 107;
    case 44:
        return 188;
    case 45:
        return 109;
    case 46:
        return 190;
    case 47:
        return 10;
    case 59:
        return 7;
    case 61:
        return 14;
    case 92:
        return 15;
    case 93:
        return 92;
    case 96:
        return 11;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Tab:
        return 9;
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Return:
        return 13;
    case Qt::Key_Enter:
        return 161;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_Pause:
        return 5;
    case Qt::Key_Print:
        return 1;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_Shift:
        return 16;
    case Qt::Key_Control:
        return 17;
    case Qt::Key_Alt:
        return 18;
    case Qt::Key_CapsLock:
        return 2;
    case Qt::Key_NumLock:
        return 4;
    case Qt::Key_ScrollLock:
        return 3;
    default:
        return 0;
    }
}

} // namespace

GLWidget::GLWidget(const QSurfaceFormat& format, IVx3dViewerHost* viewer)
    : QOpenGLWindow(QOpenGLWindow::NoPartialUpdate, nullptr), m_viewer(viewer)
{
    g_pThis = this;
    m_dpiRatio = devicePixelRatio();
    resize(200, 200);
    setFormat(format);
    connect(this, &QOpenGLWindow::frameSwapped, this, &GLWidget::OnUpdateTimer);
    m_fpsTimer.start();
}

GLWidget::~GLWidget()
{
    if (m_initialised) {
        EnsureContextCurrent();
        CGE_Close(true);
        CGE_Finalize();
    }
    if (g_pThis == this)
        g_pThis = nullptr;
}

int GLWidget::QKeyToCgeKey(int key)
{
    if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z'))
        return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12)
        return key - 0xFFFFC0;
    return MapOtherKey(key);
}

void GLWidget::initializeGL()
{
    if (!m_viewer->IsViewerLayoutEnabled())
        return;
    m_dpiRatio = devicePixelRatio();
    // The viewer loads the library before it makes this window; without it
    // the window stays empty and the viewer shows why.
    if (!CGE_IsLoaded())
        return;
    IVxAppHelperCallback* helper = VX_GetAppHelper();
    CGE_Initialize(helper->GetFileSystemRepresentation(helper->GetUserAppDataPath()).c_str());
    CGE_Open(1, static_cast<unsigned>(width() * m_dpiRatio), static_cast<unsigned>(height() * m_dpiRatio),
             static_cast<unsigned>(metric(QPaintDevice::PdmDpiX)));
    CGE_SetVariableInt(CGE_VAR_AUTO_REDISPLAY, 0);
    CGE_SetVariableInt(CGE_VAR_UI_SCALING, 1);
    const bool touch = helper->IsTouchInterface();
    CGE_SetAutoTouchInterface(touch);
    CGE_SetWalkNavigationMouseDragMode(touch ? 1 : 0);
    CGE_SetLibraryCallbackProc(OpenGlLibraryCallback);
    m_viewer->Castle3DAfterInitialized();
    m_initialised = true;
    if (!m_sceneFile.IsEmpty())
        OpenScene(m_sceneFile);
    m_viewer->ShowWaiterImage(false);
}

void GLWidget::OpenScene(const CVxStringW& path)
{
    m_sceneFile = path;
    if (!m_initialised)
        return;
    EnsureContextCurrent();
    CGE_LoadSceneFromFile(VX_GetAppHelper()->GetFileSystemRepresentation(path).c_str());
    resizeGL(width(), height());
    m_viewer->Castle3DAfterSceneLoaded();
    m_redrawRequested = true;
}

void GLWidget::EnsureContextCurrent()
{
    if (QOpenGLContext::currentContext() != context())
        makeCurrent();
}

void GLWidget::updateGL()
{
    m_redrawRequested = true;
    update();
}

void GLWidget::OnUpdateTimer()
{
    // One chain of updates runs: a frame swapped while the timer waits
    // belongs to a frame asked for from outside, and the timer goes on.
    if (m_timerPending && sender() == this)
        return;
    m_timerPending = false;
    if (!m_initialised)
        return;
    EnsureContextCurrent();
    if (m_touchDragging)
        CGE_Motion(m_lastTouchPoint.x(), m_lastTouchPoint.y(), 0);
    CGE_Update();
    if (m_saveCPU && !m_redrawRequested) {
        m_timerPending = true;
        QTimer::singleShot(16, this, &GLWidget::OnUpdateTimer);
        return;
    }
    m_redrawRequested = false;
    update();
}

void GLWidget::paintGL()
{
    if (!m_initialised)
        return;
    const qint64 elapsed = m_fpsTimer.elapsed();
    if (elapsed > 1000) {
        emit FpsUpdated(m_frameCount * 1000.0 / static_cast<double>(elapsed));
        m_fpsTimer.restart();
        m_frameCount = 0;
    }
    ++m_frameCount;
    ++m_framesDrawn;
    TrackCameraMotion();
    CGE_Render();
    // The first frame drawn proves that the driver survived the start.
    CVxOptions* options = VX_GetOptions();
    if (options->m_3dViewCrashedLastTime) {
        options->m_3dViewCrashedLastTime = false;
        options->SaveToRegistry();
    }
    emit FrameDrawn();
}

void GLWidget::TrackCameraMotion()
{
    float view[12];
    CGE_GetViewCoords(&view[0], &view[1], &view[2], &view[3], &view[4], &view[5], &view[6], &view[7],
                      &view[8], &view[9], &view[10], &view[11]);
    bool moved = false;
    for (int i = 0; i < 12; ++i) {
        moved = moved || std::fabs(view[i] - m_lastView[i]) > 1e-5f;
        m_lastView[i] = view[i];
    }
    if (!moved)
        return;
    if (!m_restTimer) {
        m_restTimer = new QTimer(this);
        m_restTimer->setSingleShot(true);
        connect(m_restTimer, &QTimer::timeout, this, &GLWidget::OnCameraRest);
    }
    m_restTimer->start(kRestMs);
    if (!m_cameraMoving) {
        m_cameraMoving = true;
        // This frame is drawn the light way already.
        m_viewer->OnCameraMotion(true);
    }
}

void GLWidget::OnCameraRest()
{
    if (!m_cameraMoving || !m_initialised)
        return;
    m_cameraMoving = false;
    EnsureContextCurrent();
    m_viewer->OnCameraMotion(false);
    // The still picture in full quality.
    updateGL();
}

void GLWidget::resizeGL(int w, int h)
{
    if (!m_initialised || w <= 0 || h <= 0)
        return;
    double ratio = devicePixelRatio();
    if (ratio < 1.0 || ratio > 10.0)
        ratio = 1.0;
    m_dpiRatio = ratio;
    EnsureContextCurrent();
    CGE_Resize(static_cast<unsigned>(w * ratio), static_cast<unsigned>(h * ratio));
}

void GLWidget::ResetViewportSize()
{
    resize(width() + 1, height());
}

void GLWidget::UpdateAfterTouchModeChanged(bool touch)
{
    if (m_initialised) {
        EnsureContextCurrent();
        CGE_SetAutoTouchInterface(touch);
        if (touch) {
            CGE_SetWalkNavigationMouseDragMode(1);
        } else {
            CGE_SetWalkNavigationMouseDragMode(0);
            CGE_SetTouchInterface(0);
        }
    }
    m_touchDragging = false;
}

QPoint GLWidget::PointFromMousePoint(QPoint point) const
{
    return PointFromMousePoint(QPointF(point));
}

QPoint GLWidget::PointFromMousePoint(QPointF point) const
{
    // The engine counts from the bottom left, in device pixels.
    const double y = (height() - 1) - point.y();
    return QPoint(RoundHalfAway(point.x() * m_dpiRatio), RoundHalfAway(y * m_dpiRatio));
}

void GLWidget::mousePressEvent(QMouseEvent* event)
{
    if (!m_initialised)
        return;
    const QPointF pos = event->position();
    const QPoint p = PointFromMousePoint(QPoint(RoundHalfAway(pos.x()), RoundHalfAway(pos.y())));
    EnsureContextCurrent();
    CGE_MouseDown(p.x(), p.y(), event->button() == Qt::LeftButton, 0);
}

void GLWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (!m_initialised)
        return;
    const QPointF pos = event->position();
    const QPoint p = PointFromMousePoint(QPoint(RoundHalfAway(pos.x()), RoundHalfAway(pos.y())));
    EnsureContextCurrent();
    CGE_MouseUp(p.x(), p.y(), event->button() == Qt::LeftButton, 0);
}

void GLWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_initialised)
        return;
    const QPoint p = PointFromMousePoint(event->position());
    EnsureContextCurrent();
    CGE_Motion(p.x(), p.y(), 0);
}

void GLWidget::wheelEvent(QWheelEvent* event)
{
    if (!m_initialised)
        return;
    EnsureContextCurrent();
    const QPoint delta = event->angleDelta();
    if (delta.y() != 0)
        CGE_MouseWheel(static_cast<float>(delta.y()), true);
    else
        CGE_MouseWheel(static_cast<float>(delta.x()), false);
    m_redrawRequested = true;
}

void GLWidget::keyPressEvent(QKeyEvent* event)
{
    if (!m_initialised)
        return;
    if (m_viewer->OnKeyPress(event->key()))
        return;
    EnsureContextCurrent();
    CGE_KeyDown(QKeyToCgeKey(event->key()));
}

void GLWidget::keyReleaseEvent(QKeyEvent* event)
{
    if (!m_initialised)
        return;
    EnsureContextCurrent();
    CGE_KeyUp(QKeyToCgeKey(event->key()));
}

void GLWidget::focusOutEvent(QFocusEvent* event)
{
    QOpenGLWindow::focusOutEvent(event);
    if (!m_initialised)
        return;
    // Alt-Tab away must not leave the engine with a pressed modifier.
    EnsureContextCurrent();
    CGE_KeyUp(QKeyToCgeKey(Qt::Key_Alt));
    CGE_KeyUp(QKeyToCgeKey(Qt::Key_Control));
    CGE_KeyUp(QKeyToCgeKey(Qt::Key_Shift));
}

bool GLWidget::event(QEvent* event)
{
    if (event->type() == QEvent::Gesture && m_initialised && m_viewer->OnGestureEvent(event)) {
        event->accept();
        return true;
    }
    return QOpenGLWindow::event(event);
}

void GLWidget::TapAt(QPointF point)
{
    if (!m_initialised)
        return;
    const QPoint p = PointFromMousePoint(point);
    EnsureContextCurrent();
    CGE_MouseDown(p.x(), p.y(), true, 0);
    CGE_MouseUp(p.x(), p.y(), true, 0);
}

void GLWidget::PanTo(QPointF point, bool started, bool finished)
{
    if (!m_initialised)
        return;
    m_lastTouchPoint = PointFromMousePoint(point);
    EnsureContextCurrent();
    if (started) {
        m_touchDragging = true;
        CGE_MouseDown(m_lastTouchPoint.x(), m_lastTouchPoint.y(), true, 0);
    } else if (finished && m_touchDragging) {
        CGE_MouseUp(m_lastTouchPoint.x(), m_lastTouchPoint.y(), true, 0);
        m_touchDragging = false;
    }
}

void GLWidget::ZoomByFactor(double factor)
{
    if (!m_initialised || factor == 1.0 || factor <= 0.0)
        return;
    const double delta = factor > 1.0 ? (factor - 1.0) * 80 * 5 : (1.0 / factor - 1.0) * -80 * 5;
    EnsureContextCurrent();
    CGE_MouseWheel(static_cast<float>(delta), true);
    m_redrawRequested = true;
}

int GLWidget::OnEngineCallback(int code, int x, int y, const char* text)
{
    switch (code) {
    case CGE_CB_REDRAW:
        // Asked for many times a frame; the pacing draws once.
        m_redrawRequested = true;
        return 1;
    case CGE_CB_CURSOR: {
        Qt::CursorShape shape = Qt::ArrowCursor;
        switch (x) {
        case 1:
            shape = Qt::WaitCursor;
            break;
        case 2:
            shape = Qt::PointingHandCursor;
            break;
        case 3:
            shape = Qt::IBeamCursor;
            break;
        case 4:
            shape = Qt::BlankCursor;
            break;
        default:
            break;
        }
        setCursor(QCursor(shape));
        return 0;
    }
    case CGE_CB_NAVIGATION_CHANGED:
        m_viewer->UpdateNavigationButtons(true);
        return 1;
    case CGE_CB_SET_MOUSE_POSITION: {
        const QPoint local(RoundHalfAway(x / m_dpiRatio), RoundHalfAway(height() - y / m_dpiRatio));
        QCursor::setPos(mapToGlobal(local));
        return 0;
    }
    case CGE_CB_WARNING:
        m_viewer->AddNewWarning(QString::fromUtf8(text ? text : ""));
        return 1;
    default:
        return 0;
    }
}
