// The road from the plan to 3D: the scene file with the user's settings.

#include "CVxAppCore.h"
#include "CVxOptions.h"
#include "CVxSceneExport.h"
#include "IVxAppHelperCallback.h"

bool CVxAppCore::CreateWrlExportFile(CVxStringW& path, EVx3dViewerMode mode, bool phong,
                                     bool withUserViewpoints, CVx3DFloorLayerVis* vis,
                                     const CVxStringA& protoUrl, const CVxStringW& textureExportDir,
                                     SVx3DExportReport* report)
{
    if (path.IsEmpty()) {
        CVxStringW folder = VX_GetAppHelper()->GetUserAppDataPath();
        if (!folder.IsEmpty() && !folder.EndsWith(CVxStringW(L"/")))
            folder += L'/';
        path = folder + (mode == VX_3DVIEWER_BUILTIN ? L"pv3d_cs.wrl" : L"pv3d.wrl");
    }
    const CVxOptions* options = VX_GetOptions();
    SVxSceneExportRequest request;
    request.path = path;
    request.mode = mode;
    request.phong = phong;
    request.withUserViewpoints = withUserViewpoints;
    request.vis = vis;
    request.protoUrl = protoUrl;
    request.textureExportDir = textureExportDir;
    request.libraryFolder = GetAppFolder();
    request.currentPlan = &m_floorPlan;
    request.options.zoom = options->m_3DZoom;
    request.options.avatarHeightCm = options->m_3DAvatarHeight;
    request.options.fieldOfViewDeg = options->m_3DFieldOfView;
    request.options.viewRotatedDown = options->m_3DViewRotatedDown;
    request.options.walkThroughWalls = options->m_3DWalkThroughWalls;
    request.options.exportFileLinks = options->m_3DExportFileLinks;
    request.report = report;
    return CVxSceneExport::Write(m_project, request);
}

double CVxAppCore::Get3DSurfacePos(double x, double y, int floor)
{
    return CVxSceneExport::Get3DSurfacePos(m_project, &m_floorPlan, x, y, floor);
}

void CVxAppCore::Init3DViewpoints(CVxViewpointSet* set)
{
    CVxSceneExport::Init3DViewpoints(m_project, set);
}

void CVxAppCore::WriteEdgeEnhanceScreenEffect(FILE* file)
{
    CVxSceneExport::WriteEdgeEnhanceScreenEffect(file);
}
