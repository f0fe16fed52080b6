#include "CVx3dSnapshot.h"

#include "IVxAppHelperCallback.h"
#include "VxCastleEngine.h"

#include <QFileInfo>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>

namespace {

QStringList* g_warnings = nullptr;

int CollectWarnings(int code, int, int, const char* text)
{
    if (code == CGE_CB_WARNING && g_warnings && text)
        g_warnings->append(QString::fromUtf8(text));
    return code == CGE_CB_REDRAW || code == CGE_CB_WARNING ? 1 : 0;
}

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
    CGE_LoadLibrary();
    if (!CGE_IsLoaded()) {
        result.error = QStringLiteral("the 3D engine can't be loaded: ") + CGE_LoadError();
        return result;
    }

    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setDepthBufferSize(24);
    format.setStencilBufferSize(8);
    QOffscreenSurface surface;
    surface.setFormat(format);
    surface.create();
    QOpenGLContext context;
    context.setFormat(format);
    if (!context.create() || !context.makeCurrent(&surface)) {
        result.error = QStringLiteral("no OpenGL context");
        return result;
    }
    {
        QOpenGLFramebufferObject fbo(request.width, request.height,
                                     QOpenGLFramebufferObject::CombinedDepthStencil);
        fbo.bind();
        QStringList warnings;
        g_warnings = &warnings;
        IVxAppHelperCallback* helper = VX_GetAppHelper();
        CGE_Initialize(helper->GetFileSystemRepresentation(helper->GetUserAppDataPath()).c_str());
        CGE_Open(1, static_cast<unsigned>(request.width), static_cast<unsigned>(request.height), 96);
        CGE_SetVariableInt(CGE_VAR_AUTO_REDISPLAY, 0);
        CGE_SetLibraryCallbackProc(CollectWarnings);
        CGE_LoadSceneFromFile(QFile::encodeName(request.scenePath).constData());
        CGE_Resize(static_cast<unsigned>(request.width), static_cast<unsigned>(request.height));
        result.viewpointCount = CGE_GetViewpointsCount();
        if (request.viewpoint > 0 && request.viewpoint < result.viewpointCount)
            CGE_MoveToViewpoint(request.viewpoint, false);
        CGE_Update();
        fbo.bind();
        CGE_Render();
        context.functions()->glFinish();
        result.image = fbo.toImage().convertToFormat(QImage::Format_RGB32);
        CGE_Close(true);
        CGE_Finalize();
        g_warnings = nullptr;
        result.warnings = warnings;
    }
    context.doneCurrent();
    return result;
}
