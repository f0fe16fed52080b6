#include "CVxSceneExport.h"

#include "CVx3DPoint.h"
#include "CVxFloorPlan.h"
#include "CVxGlobalShadow.h"
#include "CVxLocalize.h"
#include "CVxPart.h"
#include "CVxProject.h"
#include "CVxUnits.h"
#include "CVxUtils.h"
#include "CVxViewpointSet.h"
#include "CVxWrlProtosGenerator.h"
#include "VxSafeSave.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr double kPi = 3.14159265358979323846;
long long g_uncompressedLibrarySize = 0;

CVxStringA Loc(int number, const wchar_t* english)
{
    CVxLocalize* loc = VX_GetLoc();
    const CVxStringW text = loc ? loc->LocalizeMessage(number, CVxStringW(english)) : CVxStringW(english);
    return VX_StringToUTF8(text);
}

// A text inside a VRML string.
CVxStringA Quoted(const CVxStringA& text)
{
    CVxStringA out;
    for (char c : text.Std()) {
        if (c == '"' || c == '\\')
            out += '\\';
        if (c == '\r' || c == '\n')
            c = ' ';
        out += c;
    }
    return out;
}

double CentimetresPerUnit(int unit)
{
    static const double table[] = {0.1, 1, 2.54, 10, 30.48, 91.44, 100, 100000};
    return unit >= 0 && unit < 8 ? table[unit] : 1;
}

// The proto library as text: inflated when it is compressed, as it is when
// it is plain. False when it can't be read or inflates badly; what was
// inflated so far stays in text.
bool ReadLibrary(const QString& path, std::string& text)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray head = file.peek(2);
    const bool zlibStream = head.size() == 2 && (static_cast<unsigned char>(head[0]) & 0x0F) == 8 &&
                            ((static_cast<unsigned>(static_cast<unsigned char>(head[0])) << 8) |
                             static_cast<unsigned char>(head[1])) %
                                    31 ==
                                0;
    if (!zlibStream) {
        const QByteArray all = file.readAll();
        text.assign(all.constData(), static_cast<size_t>(all.size()));
        return text.rfind("#VRML", 0) == 0;
    }
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK)
        return false;
    constexpr int chunk = 16384;
    unsigned char in[chunk];
    unsigned char out[chunk];
    int status = Z_OK;
    while (status != Z_STREAM_END) {
        const qint64 got = file.read(reinterpret_cast<char*>(in), chunk);
        if (got <= 0)
            break;
        stream.next_in = in;
        stream.avail_in = static_cast<uInt>(got);
        do {
            stream.next_out = out;
            stream.avail_out = chunk;
            status = inflate(&stream, Z_NO_FLUSH);
            if (status == Z_NEED_DICT || status == Z_DATA_ERROR || status == Z_MEM_ERROR ||
                status == Z_STREAM_ERROR) {
                inflateEnd(&stream);
                return false;
            }
            text.append(reinterpret_cast<char*>(out), chunk - stream.avail_out);
            // A library that inflates beyond reason is no library.
            if (text.size() > (1u << 30)) {
                inflateEnd(&stream);
                return false;
            }
        } while (stream.avail_out == 0);
    }
    inflateEnd(&stream);
    return status == Z_STREAM_END;
}

std::set<std::string> ProtoNames(const std::string& text)
{
    std::set<std::string> names;
    static const QRegularExpression pattern(
        QStringLiteral("(?:^|[\\s\\]}])PROTO\\s+([A-Za-z_][A-Za-z0-9_]*)"));
    const QString all = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    auto it = pattern.globalMatch(all);
    while (it.hasNext())
        names.insert(it.next().captured(1).toStdString());
    return names;
}

void WriteExternProtoList(FILE* f, const CVxStringA& url)
{
    for (int type = 0; type <= 8; ++type) {
        const CVxStringA name = VX_StringToUTF8(CVxPart::TypeNameFromID(type));
        fprintf(f, "EXTERNPROTO %s [field SFNode appearance] \"%s%s\"\r\n", name.c_str(), url.c_str(),
                name.c_str());
    }
    const char* u = url.c_str();
    fprintf(f, "EXTERNPROTO UserPicLibraryObject93  [field SFNode texture] \"%sUserPicLibraryObject93\"\r\n",
            u);
    fprintf(f, "EXTERNPROTO UserPicLibraryObject171 [field SFNode texture] \"%sUserPicLibraryObject171\"\r\n",
            u);
    fprintf(f, "EXTERNPROTO UserPicLibraryObject172 [field SFNode texture] \"%sUserPicLibraryObject172\"\r\n",
            u);
    fprintf(f, "EXTERNPROTO UserPicLibraryObject267 [field SFNode texture] \"%sUserPicLibraryObject267\"\r\n",
            u);
    fprintf(f,
            "EXTERNPROTO OverlayLibraryObject267 [field SFNode appearance field SFNode texture] "
            "\"%sOverlayLibraryObject267\"\r\n",
            u);
    fprintf(f, "EXTERNPROTO UserPicLibraryObject276 [field SFNode texture] \"%sUserPicLibraryObject276\"\r\n",
            u);
    fprintf(f, "EXTERNPROTO BBoxRect [field SFNode geom] \"%sBBoxRect\"\r\n", u);
    fprintf(f, "EXTERNPROTO Ellipse_LowPoly [field SFNode appearance] \"%sEllipse_LowPoly\"\r\n", u);
    fprintf(
        f,
        "EXTERNPROTO TriWall [field SFNode appearL field SFNode appearR field MFVec3f points field MFVec2f "
        "texPoints] \"%sTriWall\"\r\n",
        u);
    fprintf(f,
            "EXTERNPROTO OpenDoorST [field SFRotation OpenRot field SFFloat ClosedRot field SFVec3f scale "
            "field MFNode "
            "doormodel field MFNode handlemodel] \"%sOpenDoorST\"\r\n",
            u);
    fprintf(f,
            "EXTERNPROTO SlidingDoorST [field SFVec3f OpenRot field SFFloat ClosedRot field SFVec3f scale "
            "field MFNode "
            "doormodel field MFNode handlemodel] \"%sSlidingDoorST\"\r\n",
            u);
    for (const char* folding : {"FoldingDoorST", "FoldingDoorST3", "FoldingDoorST4"})
        fprintf(f,
                "EXTERNPROTO %s [field SFRotation OpenRot field SFFloat ClosedRot field SFVec3f scale field "
                "SFRotation "
                "OpenRot2 field SFVec3f shift2 field MFNode doormodel field MFNode handlemodel] \"%s%s\"\r\n",
                folding, u, folding);
    fprintf(f,
            "EXTERNPROTO GarageDoor [field SFRotation OpenRot field SFFloat ClosedRot field SFVec3f scale "
            "field SFNode "
            "appearance] \"%sGarageDoor\"\r\n",
            u);
    for (const char* garage : {"GarageDoor1", "GarageDoor2"})
        fprintf(f,
                "EXTERNPROTO %s [field SFRotation OpenRot field SFFloat ClosedRot field SFVec3f scale field "
                "SFVec3f "
                "shift2 field SFNode appearance] \"%s%s\"\r\n",
                garage, u, garage);
    fprintf(f, "EXTERNPROTO WindowSub0 [field SFNode appearance field SFColor colorW] \"%sWindowSub0\"\r\n",
            u);
    for (int d = 0; d < CVxPart::GetHandleTypeCount(ptDoor, 0); ++d)
        fprintf(f, "EXTERNPROTO DoorHandleModel%d [field SFNode appearance] \"%sDoorHandleModel%d\"\r\n", d,
                u, d);
    for (const char* sofa : {"CornerSofaBackL", "CornerSofaCornerL", "CornerSofaExtensionL",
                             "CornerSofaBackR", "CornerSofaCornerR", "CornerSofaExtensionR"})
        fprintf(f, "EXTERNPROTO %s [field SFNode appearance] \"%s%s\"\r\n", sofa, u, sofa);
}

// The floors of the project and where each stands in the scene.
struct SVxFloorStack
{
    std::vector<double> offset;
    double top = 0;
};

SVxFloorStack StackFloors(CVxProject& project, bool allFloors, double scale)
{
    SVxFloorStack stack;
    double acc = 0;
    const int count = project.GetFloorCount();
    const int last = allFloors ? count - 1 : std::clamp(project.m_currentFloor, 0, count - 1);
    for (int i = 0; i < count; ++i) {
        CVxFloor* floor = project.m_floors[static_cast<size_t>(i)];
        floor->m_walls.RebuildWalls();
        if (i > 0) {
            const double below =
                std::max(0.0, project.m_floors[static_cast<size_t>(i - 1)]->m_walls.GetMaxWallZHeight());
            const double thick = floor->m_floorThickness;
            acc += (std::isfinite(below) ? below : 0) + (std::isfinite(thick) ? thick : 0);
        }
        stack.offset.push_back(acc * scale);
        if (i == last) {
            const double h = floor->GetTotalZHeight();
            stack.top = (acc + (std::isfinite(h) ? h : 0)) * scale;
        }
    }
    return stack;
}

} // namespace

void CVxSceneExport::WriteEdgeEnhanceScreenEffect(FILE* file)
{
    fprintf(file,
            "DEF %s ScreenEffect { enabled FALSE needsDepth TRUE shaders ComposedShader { language \"GLSL\" "
            "parts "
            "ShaderPart { type \"FRAGMENT\" url \"data:text/plain,\r\n",
            SVx3DExportPars::EffectEdgeEnhanceNodeName().c_str());
    fputs("const float u_near = 1.0;\r\n"
          "const float u_far = 1000.0;\r\n"
          "const float u_edgeThreshold = 0.01;\r\n"
          "float readDepth(ivec2 coord) {\r\n"
          "  float depth = screen_get_depth_fast(coord);\r\n"
          "  return (2.0 * u_near) / (u_far + u_near - depth * (u_far - u_near));\r\n"
          "}\r\n"
          "float computeEdge(ivec2 coord) {\r\n"
          "  float dx = readDepth(coord + ivec2(1, 0)) - readDepth(coord - ivec2(1, 0));\r\n"
          "  float dy = readDepth(coord + ivec2(0, 1)) - readDepth(coord - ivec2(0, 1));\r\n"
          "  float gradient = length(vec2(dx, dy)) / max(readDepth(coord), 1e-5);\r\n"
          "  return smoothstep(u_edgeThreshold, 2.0 * u_edgeThreshold, abs(gradient));\r\n"
          "}\r\n"
          "void main(void) {\r\n"
          "  ivec2 pos = screen_position();\r\n"
          "  float edgeSmoothed = (computeEdge(pos) + computeEdge(pos + ivec2(1, 0)) + computeEdge(pos - "
          "ivec2(1, 0)) +\r\n"
          "    computeEdge(pos + ivec2(0, 1)) + computeEdge(pos - ivec2(0, 1))) / 5.0;\r\n"
          "  vec4 color = screen_get_color(pos);\r\n"
          "  gl_FragColor = vec4(mix(color.rgb, vec3(0.0), edgeSmoothed * 0.1), color.a);\r\n"
          "}\r\n",
          file);
    fputs("\"}}}\r\n", file);
}

void CVxSceneExport::Init3DViewpoints(CVxProject& project, CVxViewpointSet* set)
{
    if (!set)
        set = &project.m_viewpoints;
    if (set->GetCount() > 0)
        return;
    CVxViewpoint start;
    CVxLocalize* loc = VX_GetLoc();
    start.m_name = loc ? loc->LocalizeMessage(49, CVxStringW(L"Start")) : CVxStringW(L"Start");
    start.m_x = project.m_width / 2;
    start.m_y = project.m_height / 2;
    start.m_yaw = 0;
    start.m_height = 0;
    start.m_autoHeight = true;
    start.m_navigation = CVxViewpoint::NAV_WALK;
    start.m_floor = 0;
    set->m_viewpoints.push_back(start);
}

double CVxSceneExport::Get3DSurfacePos(CVxProject& project, const CVxFloorPlan* plan, double x, double y,
                                       int floor)
{
    double result = 0;
    if (floor == 0 && std::isfinite(project.m_groundPosZ))
        result = project.m_groundPosZ;
    if (plan && plan->FindRegion(CVxDPoint(x, y)) >= 0)
        result = 0;
    if (floor >= 0 && floor < project.GetFloorCount()) {
        CVxPart* part = project.m_floors[static_cast<size_t>(floor)]->FindPartAt(x, y, true, true, 1.0);
        // One stands on what stands on the floor, not on a lamp overhead
        // nor on the threshold of a door.
        if (part && part->type != ptDoor && !part->HasCap(capHandle) && part->HasCap(capVisibleIn3D) &&
            std::isfinite(part->z + part->zHeight) && part->z <= 1e-7)
            result = part->z + part->zHeight;
    }
    return result;
}

long long CVxSceneExport::GetUncompressedLibrarySize()
{
    return g_uncompressedLibrarySize;
}

void CVxSceneExport::GetSunPlacement(CVxProject& project, CVxGlobalShadow* shadow, int zoom, double place[3],
                                     double direction[3])
{
    const double s = std::clamp(zoom, 1, 100000) * CentimetresPerUnit(project.m_unit) / 10000.0;
    const double TW = project.GetTotalWidth() * s;
    const double TH = project.GetTotalHeight() * s;
    CVx3DPoint d;
    project.GetSunDirection(d, shadow);
    // Far enough out that the shadow map's view takes in the whole plan.
    const double D = 10 * (TW + TH);
    place[0] = d.x * D + TW / 2;
    place[1] = d.z * D;
    place[2] = d.y * D + TH / 2;
    direction[0] = -d.x;
    direction[1] = -d.z;
    direction[2] = -d.y;
}

bool CVxSceneExport::Write(CVxProject& project, const SVxSceneExportRequest& request)
{
    const SVx3DSceneOptions& options = request.options;
    const int mode = request.mode;
    VxTrace("3D: Preparing scene to file %s\n", VX_StringToUTF8(request.path).c_str());
    Init3DViewpoints(project, nullptr);
    CVxWrlProtosGenerator::Clear();

    const CVxStringW temp = VX_SafeSaveTempPath(request.path);
    if (!VX_SafeSaveCreateTemp(request.path))
        return false;
    FILE* f = fopen(QFile::encodeName(temp.ToQString()).constData(), "wb");
    if (!f) {
        VX_SafeSaveAbandon(temp);
        return false;
    }

    // The proto library: compressed for the built-in viewer, plain for the
    // others; either form is taken when only one is there.
    const QString folder = request.libraryFolder.ToQString();
    QString libraryPath =
        folder + (mode == 0 ? QStringLiteral("library_cs.wrl") : QStringLiteral("library.wrl"));
    if (!QFileInfo::exists(libraryPath)) {
        const QString other =
            folder + (mode == 0 ? QStringLiteral("library.wrl") : QStringLiteral("library_cs.wrl"));
        if (QFileInfo::exists(other) && (mode == 0 || !other.endsWith(QStringLiteral("_cs.wrl"))))
            libraryPath = other;
    }
    CVxStringA protoUrl = request.protoUrl;
    const bool ownLibrary = protoUrl.IsEmpty();
    if (ownLibrary)
        protoUrl = CVxStringA(
            (QStringLiteral("file://") + QFileInfo(libraryPath).absoluteFilePath()).toUtf8().toStdString());
    protoUrl += "#";

    CVxGlobalShadow shadow;
    shadow.LoadFromKept(project.m_globalShadow);

    SVx3DExportPars pars;
    pars.file = f;
    pars.protoUrl = protoUrl;
    pars.textureExportDir = request.textureExportDir;
    pars.unit = project.m_unit;
    pars.scale = std::clamp(options.zoom, 1, 100000) * CentimetresPerUnit(project.m_unit) / 10000.0;
    pars.mode = request.mode;
    pars.shadows = mode == 0 && shadow.enabled;
    pars.phong = request.phong || pars.shadows;
    pars.options = options;
    pars.report = request.report;
    const double s = pars.scale;
    if (!request.path.IsEmpty())
        pars.projectFolder = CVxStringW(QFileInfo(request.path.ToQString()).absolutePath());
    if (!project.m_storagePath.IsEmpty()) {
        pars.projectFolder = project.m_storagePath;
        QString tmp = project.m_storagePath.ToQString();
        if (!tmp.endsWith(QLatin1Char('/')))
            tmp += QLatin1Char('/');
        tmp += QStringLiteral("tmp");
        if (QDir().mkpath(tmp))
            pars.tempDir = CVxStringW(tmp);
    }

    // Which protos the library holds, so that an object whose proto is
    // missing still gives a scene that loads.
    std::string libraryText;
    const bool libraryRead = ReadLibrary(libraryPath, libraryText);
    std::set<std::string> known;
    if (libraryRead) {
        known = ProtoNames(libraryText);
        pars.knownProtos = &known;
    } else {
        VxTrace("3D: proto library %s can't be read\n", libraryPath.toUtf8().constData());
    }

    // Header.
    fputs("#VRML V2.0 utf8\r\nWorldInfo {\r\n  title \"Plaveno 3D scene\"\r\n  info [\"Author: Plaveno, "
          "https://www.plaveno.example\"]\r\n}\r\n",
          f);

    // Background.
    fprintf(f, "DEF %s Background {\r\n", SVx3DExportPars::BackgroundNodeName().c_str());
    float r, g, b;
    VxSplitColor(project.m_skyColor, r, g, b);
    fprintf(f, "skyColor [%.2f %.2f %.2f, %.2f %.2f %.2f, 1 1 1] skyAngle [1.5, 1.57]\r\n", r, g, b,
            0.6 + 0.4 * r, 0.8 + 0.2 * g, 0.7 + 0.3 * b);
    VxSplitColor(project.m_groundAppear.main.color, r, g, b);
    fprintf(f, "  groundColor [%.2f %.2f %.2f, %.2f %.2f %.2f] groundAngle [1.57]\r\n", r, g, b, r, g, b);
    const std::pair<const CVxStringW*, const char*> sky[] = {
        {&project.m_skyBoxLeft, "  leftUrl [\"%s\"]\r\n"},
        {&project.m_skyBoxRight, "  rightUrl [\"%s\"]\r\n"},
        {&project.m_skyBoxFront, "  frontUrl [\"%s\"]\r\n"},
        {&project.m_skyBoxBack, "  backUrl [\"%s\"]\r\n"},
        {&project.m_skyBoxTop, "  topUrl [\"%s\"]\r\n"},
        {&project.m_skyBoxBottom, "  bottomUrl [\"%s\"]\r\n"}};
    for (const auto& [file, format] : sky) {
        const CVxStringA url = CVxPart::GetTextureURL(*file, &pars);
        if (!url.IsEmpty())
            fprintf(f, format, url.c_str());
    }
    fputs("}\r\n", f);

    if (mode == 0)
        WriteEdgeEnhanceScreenEffect(f);

    // The floor stack.
    const bool allFloors = project.m_viewpoints.m_allFloors;
    const SVxFloorStack stack = StackFloors(project, allFloors, s);
    const double top = stack.top;
    const int floorCount = project.GetFloorCount();
    const int activeFloor = std::clamp(project.m_currentFloor, 0, std::max(0, floorCount - 1));

    // Navigation.
    CVxStringA navPrefix = "headlight FALSE";
    if (mode == 0)
        navPrefix += " blendingSort \"3D\"";
    const double W = project.m_width * s;
    const double H = project.m_height * s;
    CVxStringA viewPrefix = "jump FALSE";
    if (mode == 0)
        VxAppendF(viewPrefix, " centerOfRotation %.2f %.2f %.2f", W / 2, top / 2, H / 2);
    const double avatar = std::clamp(options.avatarHeightCm, 1.0, 100000.0) / 100.0;
    const double fov = std::clamp(options.fieldOfViewDeg, 1.0, 179.0) * kPi / 180 / 2;

    if (request.withUserViewpoints) {
        int i = 0;
        for (const CVxViewpoint& vp : project.m_viewpoints.m_viewpoints) {
            ++i;
            if (!allFloors && vp.m_floor != activeFloor)
                continue;
            if (!std::isfinite(vp.m_x) || !std::isfinite(vp.m_y) || !std::isfinite(vp.m_height) ||
                !std::isfinite(vp.m_yaw) || !std::isfinite(vp.m_pitch))
                continue;
            CVxStringA description = VX_StringToUTF8(vp.m_name);
            if (description.IsEmpty())
                description = Loc(1100, L"Viewpoint") + VxFormatA(" %d", i);
            double height =
                vp.m_autoHeight
                    ? Get3DSurfacePos(project, request.currentPlan, vp.m_x, vp.m_y, vp.m_floor) * s
                    : vp.m_height * s;
            if (vp.m_floor >= 0 && vp.m_floor < static_cast<int>(stack.offset.size()))
                height += stack.offset[static_cast<size_t>(vp.m_floor)];
            height += avatar;
            const double yawRad = vp.m_yaw * kPi / 180;
            double axis[3] = {0, 1, 0};
            double angle = -yawRad;
            double pitchRad = 0;
            bool pitched = false;
            if (vp.m_navigation == CVxViewpoint::NAV_WALK && options.viewRotatedDown && vp.m_pitch == -1) {
                pitchRad = -0.1745329;
                pitched = true;
            } else if (vp.m_pitch != -1 && vp.m_pitch != 0) {
                pitchRad = -vp.m_pitch * kPi / 180;
                pitched = true;
            }
            if (pitched)
                CVxUtils::MultiplyVRMLRotation(angle, axis, 'x', pitchRad, 'y', -yawRad);
            fprintf(f,
                    "DEF USER_VIEW%d Viewpoint {description \"%s\" %s position %.2f %.2f %.2f orientation "
                    "%.3f %.3f %.3f "
                    "%.3f fieldOfView %.3f}\r\n",
                    i, Quoted(description).c_str(), viewPrefix.c_str(), vp.m_x * s, height, vp.m_y * s,
                    axis[0], axis[1], axis[2], angle, fov);
            if (vp.m_navigation == CVxViewpoint::NAV_FLY)
                fprintf(f,
                        "DEF FLY_NAV%d NavigationInfo { %s avatarSize [.05, %.2f, .60]  type [\"FLY\", "
                        "\"ANY\"]}\r\nROUTE "
                        "USER_VIEW%d.isBound TO FLY_NAV%d.set_bind\r\n",
                        i, navPrefix.c_str(), avatar, i, i);
            else if (vp.m_navigation == CVxViewpoint::NAV_WALK)
                fprintf(f,
                        "DEF WALK_NAV%d NavigationInfo { %s avatarSize [.05, %.2f, .60] type [\"WALK\", "
                        "\"ANY\"]}\r\nROUTE "
                        "USER_VIEW%d.isBound TO WALK_NAV%d.set_bind\r\n",
                        i, navPrefix.c_str(), avatar, i, i);
            else
                fprintf(f,
                        "DEF EXAM_NAV%d NavigationInfo { %s avatarSize [.05, %.2f, .60]  type [\"%s\", "
                        "\"ANY\"]}\r\nROUTE "
                        "USER_VIEW%d.isBound TO EXAM_NAV%d.set_bind\r\n",
                        i, navPrefix.c_str(), avatar, mode == 0 ? "ARCHITECTURE" : "EXAMINE", i, i);
        }
    }

    if (project.m_viewpoints.m_includeStd) {
        const double V = std::max(W, H) / 2 + top + 2;
        const char* vp = viewPrefix.c_str();
        fprintf(f,
                "DEF PV_VIEW2 Viewpoint {description \"%s\" %s position %.2f %.2f %.2f orientation 1 0 0 -1 "
                "fieldOfView "
                "%.3f}\r\n",
                Quoted(Loc(50, L"Front View")).c_str(), vp, W / 2, V, H + 2, fov);
        fprintf(
            f,
            "DEF PV_VIEW3 Viewpoint {description \"%s\" %s position -2 %.2f %.2f orientation .5 1 .5 -1.77 "
            "fieldOfView %.3f}\r\n",
            Quoted(Loc(51, L"Left View")).c_str(), vp, V, H / 2, fov);
        fprintf(
            f,
            "DEF PV_VIEW4 Viewpoint {description \"%s\" %s position %.2f %.2f -2 orientation 0 1 .5 -3.14 "
            "fieldOfView %.3f}\r\n",
            Quoted(Loc(52, L"Back View")).c_str(), vp, W / 2, V, fov);
        fprintf(
            f,
            "DEF PV_VIEW5 Viewpoint {description \"%s\" %s position %.2f %.2f %.2f orientation -.5 1 .5 1.77 "
            "fieldOfView %.3f}\r\n",
            Quoted(Loc(53, L"Right View")).c_str(), vp, W + 2, V, H / 2, fov);
        fprintf(
            f,
            "DEF PV_VIEW6 Viewpoint {description \"%s\" %s position %.2f %.2f %.2f orientation 1 0 0 -1.45 "
            "fieldOfView %.3f}\r\n",
            Quoted(Loc(54, L"Center View")).c_str(), vp, W / 2, V + 2, H / 2 + 0.4, fov);
        for (int n = 2; n <= 6; ++n)
            fprintf(f,
                    "DEF FLY_NAV_STD%d NavigationInfo { %s avatarSize [.05, %.2f, .60] type [\"%s\", "
                    "\"ANY\"]}\r\nROUTE "
                    "PV_VIEW%d.isBound TO FLY_NAV_STD%d.set_bind\r\n",
                    n, navPrefix.c_str(), avatar, mode == 0 ? "ARCHITECTURE" : "FLY", n, n);
    }

    // Lights.
    const double TW = project.GetTotalWidth() * s;
    const double TH = project.GetTotalHeight() * s;
    static const char* const directions[] = {".05 -.3 -1", "2 -.5 1",   "-2 -.7 1", "-.05 -.5 1",
                                             "-2 -1.1 -1", "2 -1.2 -1", "0 1 0"};
    static const char* const withSun[] = {".32", ".27", ".33", ".29", ".36", ".34", ".62"};
    static const char* const withoutSun[] = {".38", ".37", ".43", ".38", ".47", ".45", ".68"};
    for (int i = 0; i < 7; ++i)
        fprintf(f, "DirectionalLight {direction %s intensity %s}\r\n", directions[i],
                pars.shadows ? withSun[i] : withoutSun[i]);
    fprintf(f, "PointLight {radius 500 intensity .26 location %.2f -4 %.2f}\r\n", -10.0, -20.0);
    fprintf(f, "PointLight {radius 500 intensity .19 location %.2f -3 %.2f}\r\n", TW, TH + 5);

    if (pars.shadows) {
        double place[3], dir[3];
        GetSunPlacement(project, nullptr, options.zoom, place, dir);
        const CVxDRect box = project.GetCoveringBBox();
        const double R = std::max(box.right - box.left, box.bottom - box.top) * s + 10;
        const double px = place[0], py = place[1], pz = place[2];
        fprintf(f,
                "DEF %s DirectionalLight {projectionLocation %.2f %.2f %.2f projectionRectangle %.2f %.2f "
                "%.2f %.2f "
                "direction %.2f %.2f %.2f intensity .36\r\n",
                SVx3DExportPars::SunNodeName().c_str(), px, py, pz, -R, -R, R, R, dir[0], dir[1], dir[2]);
        fputs("  shadows TRUE defaultShadowMap GeneratedShadowMap { update \"ALWAYS\" size 2048 scale 8 bias "
              "12 } }\r\n",
              f);
        fprintf(
            f,
            "DEF %s Switch { whichChoice %i choice [ DEF %s Transform {translation %.2f %.2f %.2f children "
            "Shape { "
            "appearance Appearance {material Material {diffuseColor 0 0 0 emissiveColor 1 1 .7}} geometry "
            "Sphere{}}}]}\r\n",
            SVx3DExportPars::SunSwitchNodeName().c_str(), (shadow.showSunObject ? 1 : 0) - 1,
            SVx3DExportPars::SunSphereNodeName().c_str(), px, py, pz);
    }

    // The proto library itself, or the references to it.
    g_uncompressedLibrarySize = 0;
    if (mode == 0 && ownLibrary && libraryRead) {
        fwrite(libraryText.data(), 1, libraryText.size(), f);
        fputs("\r\n", f);
        g_uncompressedLibrarySize = static_cast<long long>(libraryText.size());
        pars.libraryInlined = true;
    }
    if (!pars.libraryInlined)
        WriteExternProtoList(f, pars.protoUrl);
    if (pars.report)
        pars.report->libraryInlined = pars.libraryInlined;

    // What stretches the bounding box upwards.
    fprintf(f,
            "Transform {translation 0 %.2f 0 scale .01 .01 .01 children Rectangle {appearance Appearance "
            "{material "
            "Material {transparency 1}}}}\r\n",
            2 + top + std::max(TW, TH) / 4);

    auto exported = [&](int index) { return allFloors || index == activeFloor; };
    for (int i = 0; i < floorCount; ++i)
        if (exported(i))
            for (const CVxPart& part : project.m_floors[static_cast<size_t>(i)]->m_objects)
                if (part.inUse)
                    part.WriteVRMLProto(&pars);
    if (request.vis) {
        request.vis->floors.clear();
        request.vis->wallsMode = project.m_walls3DStyle;
    }

    const int wallsMode = project.m_walls3DStyle;
    for (int fl = 0; fl < floorCount; ++fl) {
        if (!exported(fl))
            continue;
        CVxFloor& floor = *project.m_floors[static_cast<size_t>(fl)];
        fprintf(f,
                "\r\n#next floor\r\nDEF %s Switch { whichChoice 0 choice [ Transform {translation 0 %.3f 0 "
                "children [\r\n",
                SVx3DExportPars::FloorNodeName(fl).c_str(), stack.offset[static_cast<size_t>(fl)]);
        CVxFloorPlan plan;
        plan.CreatePlan(floor, project.m_unit);
        floor.ResnapAllParts(&plan);
        fputs(plan.ExportFloorToVRML(&pars, floor).c_str(), f);
        if (options.walkThroughWalls)
            fputs("Collision { collide FALSE children [\r\n", f);
        const double thickness = std::isfinite(floor.m_floorThickness) ? floor.m_floorThickness : 0;
        fprintf(f, "\r\nDEF %s Switch { whichChoice %i choice [ Group { children [",
                SVx3DExportPars::WallNodeName(fl, false).c_str(), wallsMode == 1 ? -1 : 0);
        fputs(floor.m_walls.ExportToVRML(&pars, floor, true, false, thickness, 0, true, true).c_str(), f);
        fputs("]}]}\r\n", f);
        int upper = 0;
        if (wallsMode == 1)
            upper = -1;
        else if (wallsMode == 2) {
            int lastExported = allFloors ? floorCount - 1 : fl;
            upper = (allFloors && fl != lastExported) ? 0 : -1;
        }
        fprintf(f, "\r\nDEF %s Switch { whichChoice %i choice [ Group { children [",
                SVx3DExportPars::WallNodeName(fl, true).c_str(), upper);
        fputs(floor.m_walls.ExportToVRML(&pars, floor, true, false, thickness, 0, true, false).c_str(), f);
        const CVxRoomWalls* next =
            fl + 1 < floorCount ? &project.m_floors[static_cast<size_t>(fl + 1)]->m_walls : nullptr;
        fputs(plan.ExportCeilingToVRML(&pars, floor, next).c_str(), f);
        fputs("]}]}\r\n", f);

        SVxFloorVis floorVis;
        floorVis.floor = fl;
        for (int l = 0; l < floor.m_layers.GetLayerCount(); ++l) {
            const bool visible = floor.m_layers.IsLayerVisible3D(l);
            fprintf(f, "\r\n#next layer\r\nDEF %s Switch { whichChoice %i choice [ Group { children [\r\n",
                    SVx3DExportPars::LayerNodeName(fl, l).c_str(), visible ? 0 : -1);
            for (const CVxPart& part : floor.m_objects)
                if (part.inUse && part.layer == l)
                    fputs(part.ExportToVRML(&pars, &floor.m_walls, nullptr, 0, 0).c_str(), f);
            fputs("]}]}\r\n", f);
            floorVis.layers.push_back({l, visible});
        }
        if (options.walkThroughWalls)
            fputs("]}\r\n", f);
        fputs("]}]}\r\n", f);
        if (request.vis)
            request.vis->floors.push_back(floorVis);
    }

    fputs(CVxWrlProtosGenerator::GetLinesAtEOF().c_str(), f);
    if (pars.report) {
        pars.report->partNodesDefined = CVxWrlProtosGenerator::GetPartNodeDefs();
        pars.report->partNodesReused = CVxWrlProtosGenerator::GetPartNodeUses();
        pars.report->partNodeBytesSaved = CVxWrlProtosGenerator::GetPartNodeBytesSaved();
    }
    const bool written = fflush(f) == 0 && !ferror(f);
    fclose(f);
    CVxWrlProtosGenerator::Clear();
    if (!written) {
        VX_SafeSaveAbandon(temp);
        return false;
    }
    return VX_SafeSaveCommit(temp, request.path);
}
