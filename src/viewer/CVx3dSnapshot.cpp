#include "CVx3dSnapshot.h"

#include "IVxAppHelperCallback.h"
#include "VxCastleEngine.h"

#include <QFileInfo>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>

#include <memory>

namespace {

QStringList* g_warnings = nullptr;

int CollectWarnings(int code, int, int, const char* text)
{
    if (code == CGE_CB_WARNING && g_warnings && text)
        g_warnings->append(QString::fromUtf8(text));
    return code == CGE_CB_REDRAW || code == CGE_CB_WARNING ? 1 : 0;
}

// The engine with a scene loaded, drawing into a framebuffer of an offscreen
// context instead of a window; ended by the destructor.
class CVxOffscreenEngine
{
public:
    bool Start(const QString& scenePath, int width, int height, QString& error)
    {
        CGE_LoadLibrary();
        if (!CGE_IsLoaded()) {
            error = QStringLiteral("the 3D engine can't be loaded: ") + CGE_LoadError();
            return false;
        }
        QSurfaceFormat format;
        format.setRenderableType(QSurfaceFormat::OpenGL);
        format.setDepthBufferSize(24);
        format.setStencilBufferSize(8);
        m_surface.setFormat(format);
        m_surface.create();
        m_context.setFormat(format);
        if (!m_context.create() || !m_context.makeCurrent(&m_surface)) {
            error = QStringLiteral("no OpenGL context");
            return false;
        }
        m_fbo = std::make_unique<QOpenGLFramebufferObject>(width, height,
                                                           QOpenGLFramebufferObject::CombinedDepthStencil);
        m_fbo->bind();
        g_warnings = &m_warnings;
        IVxAppHelperCallback* helper = VX_GetAppHelper();
        CGE_Initialize(helper->GetFileSystemRepresentation(helper->GetUserAppDataPath()).c_str());
        CGE_Open(1, static_cast<unsigned>(width), static_cast<unsigned>(height), 96);
        m_open = true;
        CGE_SetVariableInt(CGE_VAR_AUTO_REDISPLAY, 0);
        CGE_SetLibraryCallbackProc(CollectWarnings);
        CGE_LoadSceneFromFile(QFile::encodeName(scenePath).constData());
        CGE_Resize(static_cast<unsigned>(width), static_cast<unsigned>(height));
        return true;
    }

    QImage Render()
    {
        CGE_Update();
        m_fbo->bind();
        CGE_Render();
        m_context.functions()->glFinish();
        return m_fbo->toImage().convertToFormat(QImage::Format_RGB32);
    }

    const QStringList& Warnings() const { return m_warnings; }

    ~CVxOffscreenEngine()
    {
        if (m_open) {
            CGE_Close(true);
            CGE_Finalize();
        }
        g_warnings = nullptr;
        m_fbo.reset();
        if (QOpenGLContext::currentContext() == &m_context)
            m_context.doneCurrent();
    }

private:
    QOffscreenSurface m_surface;
    QOpenGLContext m_context;
    std::unique_ptr<QOpenGLFramebufferObject> m_fbo;
    QStringList m_warnings;
    bool m_open = false;
};

} // namespace

SVx3dSnapshotResult VX_Render3dSnapshot(const SVx3dSnapshotRequest& request)
{
    SVx3dSnapshotResult result;
    if (request.width < 1 || request.height < 1 || request.width > 16384 || request.height > 16384) {
        result.error = QStringLiteral("picture size out of range");
        return result;
    }
    if (!QFileInfo(request.scenePath).isFile()) {
        result.error = QStringLiteral("no such scene file");
        return result;
    }
    CVxOffscreenEngine engine;
    if (!engine.Start(request.scenePath, request.width, request.height, result.error))
        return result;
    result.viewpointCount = CGE_GetViewpointsCount();
    if (request.viewpoint > 0 && request.viewpoint < result.viewpointCount)
        CGE_MoveToViewpoint(request.viewpoint, false);
    result.image = engine.Render();
    result.warnings = engine.Warnings();
    return result;
}

bool VX_Measure3dScene(const QString& scenePath, float box[6], QString& error)
{
    if (!QFileInfo(scenePath).isFile()) {
        error = QStringLiteral("no such scene file");
        return false;
    }
    CVxOffscreenEngine engine;
    if (!engine.Start(scenePath, 256, 256, error))
        return false;
    // An empty scene leaves the box as it was: nothing measured.
    for (int i = 0; i < 6; ++i)
        box[i] = i % 2 == 0 ? 1.0f : -1.0f;
    CGE_GetBoundingBox(&box[0], &box[1], &box[2], &box[3], &box[4], &box[5]);
    if (box[0] > box[1]) {
        error = QStringLiteral("the scene holds nothing to measure");
        return false;
    }
    return true;
}
