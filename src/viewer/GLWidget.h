#pragma once
// The OpenGL window in which the 3D engine draws, and through which it gets
// time, input and size. It lives in a window container of the viewer; at
// most one exists at a time, since the engine has one view per process.
//
// Pacing: with saveCPU the engine is updated about sixty times a second by
// a timer and a frame is drawn only when the engine (through its callback)
// or the user asked for one; without it the window draws as fast as the
// swap interval lets it.

#include "CVxStringW.h"

#include <QElapsedTimer>
#include <QOpenGLWindow>
#include <QPoint>

class QEvent;

// What the window needs of the viewer that owns it.
class IVx3dViewerHost
{
public:
    virtual ~IVx3dViewerHost() = default;
    // False while the viewer lays itself out; the window system may create
    // the window early, and nothing is started then.
    virtual bool IsViewerLayoutEnabled() const { return true; }
    virtual void Castle3DAfterInitialized() {}
    virtual void Castle3DAfterSceneLoaded() {}
    virtual void ShowWaiterImage(bool /*show*/) {}
    virtual void UpdateNavigationButtons(bool /*setOptions*/) {}
    virtual void AddNewWarning(const QString& /*text*/) {}
    // True when the viewer handled the key itself.
    virtual bool OnKeyPress(int /*key*/) { return false; }
    // Gestures belong to the widgets; the viewer turns them into the
    // window's tap, pan and zoom. True when handled.
    virtual bool OnGestureEvent(QEvent* /*event*/) { return false; }
    // The camera started moving, or came to rest a moment ago. While it
    // moves the viewer may draw with less care, to keep the frames coming.
    virtual void OnCameraMotion(bool /*moving*/) {}
};

class GLWidget : public QOpenGLWindow
{
    Q_OBJECT
public:
    GLWidget(const QSurfaceFormat& format, IVx3dViewerHost* viewer);
    ~GLWidget() override;

    // Stores the file and loads it once the engine is up.
    void OpenScene(const CVxStringW& path);
    IVx3dViewerHost* GetViewer() const { return m_viewer; }
    bool IsAfterInit() const { return m_initialised; }
    void EnsureContextCurrent();
    // A frame now, whatever the pacing.
    void updateGL();
    double GetUsedDpiPixRatio() const { return m_dpiRatio; }
    // Forces resizeGL, after a move to a screen with another pixel ratio.
    void ResetViewportSize();
    void UpdateAfterTouchModeChanged(bool touch);
    QPoint PointFromMousePoint(QPoint point) const;
    QPoint PointFromMousePoint(QPointF point) const;

    void SetSaveCPU(bool saveCPU) { m_saveCPU = saveCPU; }
    bool GetSaveCPU() const { return m_saveCPU; }
    int GetFrameCount() const { return m_framesDrawn; }
    bool IsCameraMoving() const { return m_cameraMoving; }
    // How long the camera must stand still to count as at rest.
    static constexpr int kRestMs = 300;

    // Gestures as the viewer hands them on.
    void TapAt(QPointF point);
    void PanTo(QPointF point, bool started, bool finished);
    void ZoomByFactor(double factor);

    // The engine's key number of a Qt key; 0 for keys it doesn't know.
    static int QKeyToCgeKey(int key);
    // What the engine's callback does; public for the callback function.
    int OnEngineCallback(int code, int x, int y, const char* text);

signals:
    void FpsUpdated(double fps);
    // After every frame drawn, for those who wait for one.
    void FrameDrawn();

protected:
    void initializeGL() override;
    void paintGL() override;
    void resizeGL(int w, int h) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

private slots:
    void OnUpdateTimer();

private:
    // Compares the camera with the one of the frame before.
    void TrackCameraMotion();
    void OnCameraRest();

    CVxStringW m_sceneFile;
    bool m_saveCPU = true;
    IVx3dViewerHost* m_viewer;
    bool m_initialised = false;
    bool m_redrawRequested = false;
    double m_dpiRatio = 1.0;
    QPoint m_lastTouchPoint;
    bool m_touchDragging = false;
    QElapsedTimer m_fpsTimer;
    int m_frameCount = 0;
    int m_framesDrawn = 0;
    bool m_timerPending = false;
    float m_lastView[12] = {};
    bool m_cameraMoving = false;
    QTimer* m_restTimer = nullptr;
};
