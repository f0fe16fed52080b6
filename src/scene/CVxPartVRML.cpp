// Objects in the scene: each one a Transform around a unit-sized proto of
// the proto library, or around geometry of its own where a proto can't know
// enough (tiled textures, extrusions, window bars).

#include "CVxPart.h"
#include "CVxPartPayload.h"
#include "CVxRoomWalls.h"
#include "CVxWindowSubTypes.h"
#include "CVxWrlProtosGenerator.h"
#include "SVx3DExportPars.h"
#include "VxSceneText.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

bool OneOfLib(int lib, std::initializer_list<int> list)
{
    return std::find(list.begin(), list.end(), lib) != list.end();
}

// Door leaves of the catalogue that ignore the object's depth.
bool IsThinLeaf(int lib)
{
    return (lib >= 195 && lib <= 200) || lib == 246 || (lib >= 263 && lib <= 266) ||
           (lib >= 280 && lib <= 283);
}

CVxStringA EscapeUrl(const QString& text)
{
    QString out = text;
    out.replace(QLatin1Char('#'), QStringLiteral("%23"));
    out.replace(QLatin1Char(' '), QStringLiteral("%20"));
    out.replace(QLatin1Char('?'), QStringLiteral("%3F"));
    // A quote or a backslash would end or break the scene's string.
    out.replace(QLatin1Char('"'), QStringLiteral("%22"));
    out.replace(QLatin1Char('\\'), QStringLiteral("/"));
    return CVxStringA(out.toUtf8().toStdString());
}

void Note(SVx3DExportPars* pars, int SVx3DExportReport::*counter, const char* format, double a, double b)
{
    VxTrace(format, a, b);
    if (pars && pars->report)
        ++(pars->report->*counter);
}

} // namespace

CVxStringA CVxPart::GetTextureURL(const CVxStringW& path, SVx3DExportPars* pars)
{
    QString text = path.ToQString().trimmed();
    if (text.isEmpty())
        return CVxStringA();
    if (text.startsWith(QStringLiteral("www."), Qt::CaseInsensitive))
        text = QStringLiteral("http://") + text;
    if (text.startsWith(QStringLiteral("http://"), Qt::CaseInsensitive) ||
        text.startsWith(QStringLiteral("https://"), Qt::CaseInsensitive))
        return EscapeUrl(text);
    if (text.startsWith(QStringLiteral("file://")))
        text = text.mid(7);
    QFileInfo info(text);
    if (info.isRelative() && pars && !pars->projectFolder.IsEmpty())
        info.setFile(QDir(pars->projectFolder.ToQString()).filePath(text));
    if (!info.exists() || !info.isFile()) {
        VxTrace("3D: missing file %s\n", text.toUtf8().constData());
        return CVxStringA();
    }
    QString file = info.absoluteFilePath();
    if (pars && !pars->tempDir.IsEmpty() && info.suffix().toLower() == QStringLiteral("webp")) {
        // The viewer can't read WebP: a PNG copy in the working folder,
        // made again only when the picture is newer.
        const QString png =
            QDir(pars->tempDir.ToQString()).filePath(info.completeBaseName() + QStringLiteral(".png"));
        const QFileInfo pngInfo(png);
        if (!pngInfo.exists() || pngInfo.lastModified() < info.lastModified()) {
            QImage image(file);
            if (image.isNull() || !image.save(png, "PNG"))
                return CVxStringA();
        }
        file = png;
    }
    if (pars && !pars->textureExportDir.IsEmpty()) {
        const QString folder = pars->textureExportDir.ToQString();
        QDir().mkpath(folder);
        const QString target = QDir(folder).filePath(QFileInfo(file).fileName());
        if (QFileInfo(target).absoluteFilePath() != QFileInfo(file).absoluteFilePath()) {
            QFile::remove(target);
            QFile::copy(file, target);
        }
        return EscapeUrl(QFileInfo(file).fileName());
    }
    return EscapeUrl(QStringLiteral("file://") + file);
}

void CVxPart::WriteVRMLProto(SVx3DExportPars* pars) const
{
    if (!HasCap(capVisibleIn3D) || HasCap(capHandle) || libObjID == 278 || libObjID == 279)
        return;
    if (type == ptComplexObject)
        for (const CVxPart& member : subParts)
            member.WriteVRMLProto(pars);
    CVxWrlProtosGenerator::WriteExternProto(*this, pars);
}

CVxStringA CVxPart::ExportVRMLDoorFrame(SVx3DExportPars* pars, const CVxRoomWalls* walls, double frameWidth,
                                        double depth, double zHeightScene, double px, double py,
                                        double pz) const
{
    if (!doorframe)
        return CVxStringA();
    const double s = pars->scale;
    if (!HasCap(capWindowFrame) && walls)
        if (const CVxWall* wall = walls->SafeGetWall(snapWall))
            if (wall->thickness > 0 && std::isfinite(wall->thickness))
                depth = std::min(wall->thickness * s, kVxSceneLengthLimit);
    const double strip =
        thickness > 0 && width > 0 ? std::min(thickness / width * frameWidth, frameWidth) : 0.07;
    const double w = frameWidth;
    const double h = zHeightScene;
    const double z0 = -0.012;
    const double z1 = depth + 0.012;
    // Outer outline 0..3 and inner outline 4..7 at the front, the same
    // 8..15 at the back; the inner one lies 1 mm inside the opening so the
    // strip covers the wall's reveal.
    const double ox0 = -strip, ox1 = w + strip, oy0 = 0, oy1 = h + strip;
    const double ix0 = -0.001, ix1 = w + 0.001, iy0 = 0, iy1 = h + 0.001;
    const double xy[8][2] = {{ox0, oy0}, {ox1, oy0}, {ox1, oy1}, {ox0, oy1},
                             {ix0, iy0}, {ix1, iy0}, {ix1, iy1}, {ix0, iy1}};
    CVxStringA points;
    for (double zz : {z0, z1})
        for (const auto& p : xy)
            VxAppendF(points, "%.3f %.3f %.3f, ", p[0], p[1], zz);
    CVxStringA faces =
        "1 0 4 5 -1, 8 9 13 12 -1, 5 4 12 13 -1, 3 2 6 7 -1, 10 11 15 14 -1, 7 6 14 15 -1, 0 3 7 4 "
        "-1, 11 8 12 15 -1, 4 7 15 12 -1, 2 1 5 6 -1, 9 10 14 13 -1, 6 5 13 14 -1, ";
    CVxStringA texIndex;
    int faceCount = 12;
    if (HasCap(capWindowFrame)) {
        faces += "0 1 9 8 -1, 2 3 11 10 -1, 3 0 8 11 -1, 1 2 10 9 -1";
        faceCount = 16;
    }
    for (int i = 0; i < faceCount; ++i)
        texIndex += "0 1 3 2 -1, ";
    const CVxStringA appearance = CVxWrlProtosGenerator::GetPartAppearanceNode(*this, pars, 0, 0, 2);
    CVxStringA text = VxFormatA("Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f children [\r\n",
                                px, py, pz, -rotation * kPi / 180);
    VxAppendF(text,
              "   Shape { geometry IndexedFaceSet { coord Coordinate { point [%s]} coordIndex [%s] texCoord "
              "TextureCoordinate { point [%s]} texCoordIndex [%s] solid TRUE } %s}\r\n",
              points.c_str(), faces.c_str(), "0 0, 1 0, 0 1, 1 1", texIndex.c_str(), appearance.c_str());
    if (!HasCap(capWindowFrame) && HasCap(capHandle)) {
        const int n = CVxWrlProtosGenerator::GetIncDoorFrameCounter();
        const CVxStringA fill = CVxWrlProtosGenerator::GetPartAppearanceNode(*this, pars, 0, 0, 1);
        VxAppendF(
            text,
            "  Transform {translation -.01 0 0 scale .02 %.3f %.3f children DEF VXDFR%d Rectangle {%s}}\r\n",
            h, depth, n, fill.c_str());
        VxAppendF(text, "  Transform {translation %.3f 0 0 scale .02 %.3f %.3f children USE VXDFR%d}\r\n",
                  w - 0.01, h, depth, n);
        VxAppendF(text, "  Transform {translation -.01 %.3f 0 scale %.3f .02 %.3f children USE VXDFR%d}\r\n",
                  h - 0.01, w + 0.02, depth, n);
    }
    text += "]}\r\n";
    return text;
}

namespace {

// The plan-length sizes of a part in scene metres: its own, or those of a
// member in thousandths of its group.
struct SVxSceneBox
{
    double x = 0, y = 0, z = 0;
    double width = 0, depth = 0, zHeight = 0;
};

CVxStringA ExtrusionText(const CVxPart& part, const CVxStringA& appearance)
{
    CVxDPolygon polygon = part.polygon;
    if (part.type == ptTriangle && polygon.GetVertexCount() == 0) {
        polygon.points = {CVxDPoint(0, 0), CVxDPoint(1000, 0), CVxDPoint(0, 1000)};
    }
    polygon.RemoveDuplicates();
    if (polygon.GetVertexCount() < 3)
        return CVxStringA();
    CVxStringA section;
    const std::vector<CVxDPoint> points = VxFlattenPolygon(polygon, 9);
    for (const CVxDPoint& p : points) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y))
            return CVxStringA();
        VxAppendF(section, "%.3f %.3f ", p.x / 1000, p.y / 1000);
    }
    // The section closes on its first point, so the sides close too.
    VxAppendF(section, "%.3f %.3f ", points[0].x / 1000, points[0].y / 1000);
    bool negative = false;
    polygon.GetArea(&negative);
    return VxFormatA("Shape { %s geometry Extrusion { crossSection [%s] convex FALSE ccw %s }}\r\n",
                     appearance.c_str(), section.c_str(), negative ? "FALSE" : "TRUE");
}

// The appearance text before and after "appearanceFront".
void SplitFront(const CVxStringA& appearance, CVxStringA& fill, CVxStringA& front)
{
    const int at = appearance.Find(" appearanceFront ");
    if (at < 0) {
        fill = appearance;
        front = CVxWrlProtosGenerator::ReuseAppearanceNode(appearance);
        return;
    }
    fill = appearance.Left(at);
    front = "appearance " + appearance.Mid(at + 17);
}

CVxStringA TiledBoxText(const CVxPart& part, const CVxStringA& appearance, const SVxSceneBox& box)
{
    const double r = box.depth > 0 ? box.zHeight / box.depth : 1;
    const double q = box.width > 0 ? box.depth / box.width : 1;
    CVxStringA fill, front;
    SplitFront(appearance, fill, front);
    const int lib = part.libObjID;
    if (lib == 121) {
        const double side =
            std::sqrt(box.width * box.width / 4 + box.zHeight * box.zHeight) / std::max(box.width, 1e-6);
        return VxFormatA(
            "Shape { %s geometry IndexedFaceSet { coord Coordinate { point [0 0 0, 0 0 1, 1 0 1, 1 0 0, "
            ".5 1 .5 ]} coordIndex [3 2 1 0 -1, 0 1 4 -1, 2 3 4 -1, 3 0 4 -1, 1 2 4 -1] texCoord "
            "TextureCoordinate { point [1 1, 0 1, 0 0, 1 0, 0 %.3f, 1 %.3f, %.3f %.3f, %.3f 0, .5 %.3f, "
            ".5 %.3f] } texCoordIndex [3 0 1 2 -1, 6 9 7 -1, 6 9 7 -1, 5 4 8 -1, 5 4 8 -1] solid TRUE "
            "}}\r\n",
            fill.c_str(), q, q, side, 0.0, side, side, side);
    }
    if (lib == 123 || lib == 124) {
        const int n = CVxWrlProtosGenerator::GetIncGenericCounter();
        const bool gable = lib == 124;
        const double run = gable ? box.width / 2 : box.width;
        const double slope = std::sqrt(run * run + box.zHeight * box.zHeight) / std::max(box.width, 1e-6);
        CVxStringA text = "Group { children [";
        if (gable) {
            VxAppendF(
                text,
                "Shape { %s geometry IndexedFaceSet { coord DEF VX_COORD%d Coordinate { point [0 0 0, 0 0 1, "
                "1 0 1, "
                "1 0 0, .5 1 0, .5 1 1 ]} coordIndex [3 2 1 0 -1, 0 4 3 -1, 2 5 1 -1] solid TRUE }}\r\n",
                front.c_str(), n);
            VxAppendF(text,
                      "Shape { %s geometry IndexedFaceSet { coord USE VX_COORD%d coordIndex [0 1 5 4 -1, 2 3 "
                      "4 5 -1] "
                      "texCoord TextureCoordinate { point [0 0, %.3f 0, %.3f %.3f, 0 %.3f] } texCoordIndex "
                      "[0 1 2 3 -1, "
                      "0 1 2 3 -1] solid TRUE }}\r\n",
                      fill.c_str(), n, q, q, slope, slope);
        } else {
            VxAppendF(text,
                      "Shape { %s geometry IndexedFaceSet { coord DEF VX_COORD%d Coordinate { point [0 0 0, "
                      "0 0 1, 1 0 1, "
                      "1 0 0, 0 1 0, 0 1 1 ]} coordIndex [3 2 1 0 -1, 0 4 3 -1, 2 5 1 -1, 0 1 5 4 -1] solid "
                      "TRUE }}\r\n",
                      front.c_str(), n);
            VxAppendF(
                text,
                "Shape { %s geometry IndexedFaceSet { coord USE VX_COORD%d coordIndex [2 3 4 5 -1] texCoord "
                "TextureCoordinate { point [0 0, %.3f 0, %.3f %.3f, 0 %.3f] } texCoordIndex [0 1 2 3 -1] "
                "solid "
                "TRUE }}\r\n",
                fill.c_str(), n, q, q, slope, slope);
        }
        text += "]}";
        return text;
    }
    return VxFormatA(
        "Shape { %s geometry IndexedFaceSet { coord Coordinate { point [0 0 0, 0 0 1, 1 0 1, 1 0 0, 0 1 0, "
        "0 1 1, 1 1 1, 1 1 0 ]} coordIndex [3 2 1 0 -1, 4 5 6 7 -1, 0 1 5 4 -1, 2 3 7 6 -1, 3 0 4 7 -1, 1 "
        "2 6 5 -1] %s %s solid TRUE }}\r\n",
        fill.c_str(),
        VxFormatA("texCoord TextureCoordinate { point [1 1, 0 1, 0 0, 1 0, 0 %.3f, 1 %.3f, %.3f %.3f, %.3f "
                  "0] }",
                  q, q, r, q, r)
            .c_str(),
        "texCoordIndex [3 0 1 2 -1, 3 0 1 2 -1, 6 4 2 7 -1, 6 4 2 7 -1, 5 4 2 3 -1, 5 4 2 3 -1]");
}

CVxStringA CornerSofaText(const CVxPart& part, const CVxStringA& appearance, const SVxSceneBox& box)
{
    double d = part.thickness;
    if (d <= 0)
        d = part.height / 2;
    else if (d >= part.height)
        d = part.height * 0.9;
    const double b = part.height > 0 ? d / part.height : 0.5;
    const double a = part.width > 0 ? d / part.width : 0.5;
    (void)box;
    CVxStringA first, reuse;
    CVxWrlProtosGenerator::SplitDefUseApprearance(appearance, first, reuse);
    if (part.libObjID == 298)
        return VxFormatA(
            "Group {children [ Transform { translation %.3f 0 0 scale %.3f 1 %.3f children CornerSofaBackL "
            "{%s}}\r\nTransform { translation 0 0 0 scale %.3f 1 %.3f children CornerSofaCornerL "
            "{%s}}\r\nTransform { translation 0 0 %.3f scale %.3f 1 %.3f children CornerSofaExtensionL "
            "{%s}}]}",
            a, 1 - a, b, first.c_str(), a, b, reuse.c_str(), b, a, 1 - b, reuse.c_str());
    return VxFormatA(
        "Group {children [ Transform { translation 0 0 0 scale %.3f 1 %.3f children CornerSofaBackR "
        "{%s}}\r\nTransform { translation %.3f 0 0 scale %.3f 1 %.3f children CornerSofaCornerR "
        "{%s}}\r\nTransform { translation %.3f 0 %.3f scale %.3f 1 %.3f children CornerSofaExtensionR "
        "{%s}}]}",
        1 - a, b, first.c_str(), 1 - a, a, b, reuse.c_str(), 1 - a, b, a, 1 - b, reuse.c_str());
}

// The fill's appearance alone, for forms with one appearance.
CVxStringA FillOnly(const CVxStringA& appearance)
{
    const int front = appearance.Find(" appearanceFront ");
    return front < 0 ? appearance : appearance.Left(front);
}

// Whether a number read from a file can stand in a scene.
bool Finite(const CVxPart& part)
{
    for (double v :
         {part.x, part.y, part.z, part.width, part.height, part.zHeight, part.rotation, part.rotation3D})
        if (!std::isfinite(v))
            return false;
    return true;
}

} // namespace

CVxStringA CVxPart::ExportToVRML(SVx3DExportPars* pars, const CVxRoomWalls* walls, const CVxPart* parent,
                                 double parentWidth, double parentZHeight) const
{
    if (!HasCap(capVisibleIn3D) || width <= 0 || height <= 0 || zHeight <= 0)
        return CVxStringA();
    if (!Finite(*this)) {
        Note(pars, &SVx3DExportReport::skippedObjects,
             "3D: object with a position or size that is no number (%g, %g) "
             "left out\n",
             x, y);
        return CVxStringA();
    }
    const double s = pars->scale;
    const int lib = libObjID;

    // Link and sound around the object.
    CVxStringA prefix, suffix, eofLines;
    if (!fileLink.IsEmpty() && pars->options.exportFileLinks) {
        const QString link = fileLink.ToQString();
        QString url = link;
        if (!link.contains(QStringLiteral("http://")) && !link.contains(QStringLiteral("https://"))) {
            url = QStringLiteral("file://") + link;
            url.replace(QStringLiteral("\\"), QStringLiteral("\\\\"));
        }
        url.replace(QLatin1Char('"'), QStringLiteral("%22"));
        prefix = VxFormatA("Anchor { url \"%s\" parameter \"target=_blank\" children\r\n",
                           url.toUtf8().constData());
        suffix = "}\r\n";
    } else if (!parent && !soundClip.IsEmpty()) {
        const CVxStringA url = GetTextureURL(soundClip, pars);
        if (!url.IsEmpty()) {
            const int n = CVxWrlProtosGenerator::GetIncSoundClipCounter();
            prefix = VxFormatA(
                "Group { children [\r\n DEF VX_SNDTOUCH_%d TouchSensor {}\r\n Sound { source DEF VX_SND_%d "
                "AudioClip { url \"%s\"}}\r\n ",
                n, n, url.c_str());
            suffix = "]}\r\n";
            eofLines = VxFormatA("ROUTE VX_SNDTOUCH_%d.touchTime TO VX_SND_%d.startTime\r\n", n, n);
        } else if (pars->report) {
            ++pars->report->missingFiles;
        }
    }

    // Size in scene units.
    SVxSceneBox box;
    double f = s;
    double fz = s;
    if (parent) {
        f = parentWidth * s / 1000;
        fz = parentZHeight * s / 1000;
    }
    box.x = x * f;
    box.y = y * f;
    box.width = width * f;
    box.depth = height * f;
    box.z = z * fz;
    box.zHeight = zHeight * fz;
    for (double* v : {&box.width, &box.depth, &box.zHeight})
        if (*v > kVxSceneLengthLimit) {
            Note(pars, &SVx3DExportReport::clampedObjects, "3D: object size %g m cut to %g m\n", *v,
                 kVxSceneLengthLimit);
            *v = kVxSceneLengthLimit;
        }
    for (double v : {box.x, box.y, box.z})
        if (std::fabs(v) > 100 * kVxSceneLengthLimit) {
            Note(pars, &SVx3DExportReport::skippedObjects, "3D: object far off the plan (%g, %g) left out\n",
                 box.x, box.y);
            return CVxStringA();
        }
    const bool thin = IsThinLeaf(lib);
    if (thin)
        box.depth = 0.03;
    if (static_cast<int>(5000 * box.width) < 1 || static_cast<int>(5000 * box.zHeight) < 1 ||
        (!thin && static_cast<int>(5000 * box.depth) < 1))
        return CVxStringA();

    const bool fillTexture = appearFill.main.HasTexture();
    const bool billboard = (wrl3dAsBillboard && fillTexture) || lib == 276;
    const bool model = !wrlProto.IsEmpty() && !billboard;
    const double rot = -rotation * kPi / 180;

    // A group: its members in its frame.
    if (type == ptComplexObject && !model && !billboard) {
        if (subParts.empty())
            return CVxStringA();
        CVxStringA members;
        for (const CVxPart& member : subParts)
            if (member.inUse)
                members += member.ExportToVRML(pars, walls, this, box.width / s, box.zHeight / s);
        if (members.IsEmpty())
            return CVxStringA();
        CVxStringA text = prefix;
        VxAppendF(text, "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f children [\r\n", box.x,
                  box.z, box.y, rot);
        text += members;
        text += "]}\r\n";
        text += suffix;
        if (!eofLines.IsEmpty())
            CVxWrlProtosGenerator::AddLinesToEOF(eofLines);
        return text;
    }

    // Picture objects.
    const bool pictureObject = OneOfLib(lib, {93, 267, 171, 172}) || billboard;
    CVxStringA pictureUrl, overlayUrl;
    if (pictureObject) {
        if (fillTexture)
            pictureUrl = GetTextureURL(appearFill.main.texture, pars);
        else if (lib == 267)
            overlayUrl = GetTextureURL(overlayTexture, pars);
        if (billboard) {
            CVxDPoint corners[4];
            GetRect(corners, f, false);
            box.x = (corners[0].x + corners[2].x) / 2;
            box.y = (corners[0].y + corners[2].y) / 2;
            box.depth = box.width;
        }
    }
    const bool hasPicture = !pictureUrl.IsEmpty() || !overlayUrl.IsEmpty();

    double appearW = box.width / s;
    double appearD = box.depth / s;
    if (lib == 128)
        std::swap(appearW, appearD), appearD *= 1.4142;
    CVxStringA appearance;
    if (!hasPicture && (!model || wrlProtoStd))
        appearance = CVxWrlProtosGenerator::GetPartAppearanceNode(*this, pars, appearW, appearD,
                                                                  HasCap(capDoorFrame) ? 1 : 3);

    CVxDPoint c[4];
    GetRect(c, f, false);
    CVxStringA body;
    bool done = false;
    const double ww = box.width, hh = box.zHeight, dd = box.depth;
    const double open = kPi / 2;

    auto leaf = [&](const CVxStringA& app) {
        return CVxWrlProtosGenerator::CacheEntirePartNode(
            CVxWindowSubTypes::GetInstance().ExportDoorToVRML(pars, *this, app));
    };
    auto handle = [&]() {
        return CVxWrlProtosGenerator::CacheEntirePartNode(
            VxFormatA("DoorHandleModel%d {}", std::clamp<int>(handleType, 0, 8)));
    };
    auto frame = [&](double frameWidth, const CVxDPoint& at) {
        if (parent)
            return CVxStringA();
        return ExportVRMLDoorFrame(pars, walls, frameWidth, dd, hh, at.x, box.z, at.y);
    };

    if (type == ptDoor || (lib >= 280 && lib <= 282)) {
        CVxDPoint hinge = (lib == 280 || lib == 282) ? c[0] : c[3];
        double r = rot;
        double angle = lib == 281 ? -open : open;
        if (snapToWall) {
            if (snapWallSide == 90) {
                angle = -open;
            } else if (snapWallSide == 180 || snapWallSide == 270) {
                // Turned round: the hinge goes to the opposite corner so the
                // leaf stays inside the opening.
                r -= kPi;
                hinge = (lib == 280 || lib == 282) ? c[2] : c[1];
                angle = snapWallSide == 180 ? open : -open;
            }
        }
        const double openRot = opened ? angle : 0;
        const double closedRot = opened ? 0 : angle;
        VxAppendF(body,
                  "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f\r\n children OpenDoorST "
                  "{OpenRot 0 1 0 %.2f "
                  "ClosedRot %.2f, scale %.3f %.3f %.3f\r\n doormodel %s handlemodel %s }}\r\n",
                  hinge.x, box.z, hinge.y, r, openRot, closedRot, ww, hh, dd, leaf(appearance).c_str(),
                  handle().c_str());
        body += frame(ww, c[0]);
        done = true;
    } else if (lib == 200 || lib == 283) {
        const double half = ww / 2;
        VxAppendF(body,
                  "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f\r\n children OpenDoorST "
                  "{OpenRot 0 1 0 %.2f "
                  "ClosedRot %.2f scale %.3f %.3f %.3f doormodel %s handlemodel %s}}\r\n",
                  c[0].x, box.z, c[0].y, rot, opened ? open : 0.0, opened ? 0.0 : open, half, hh, dd,
                  leaf(appearance).c_str(), handle().c_str());
        VxAppendF(body,
                  "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f\r\n children OpenDoorST "
                  "{OpenRot 0 1 0 %.2f "
                  "ClosedRot %.2f scale %.3f %.3f %.3f doormodel %s handlemodel %s}}\r\n",
                  c[2].x, box.z, c[2].y, rot - kPi, opened ? -open : 0.0, opened ? 0.0 : -open, half, hh, dd,
                  leaf(CVxWrlProtosGenerator::ReuseAppearanceNode(appearance)).c_str(), handle().c_str());
        body += frame(ww, c[0]);
        done = true;
    } else if (lib == 195 || lib == 196 || lib == 199) {
        CVxDPoint base = c[0];
        if (lib == 196)
            base = c[3];
        else if (lib == 199)
            base = CVxDPoint((c[0].x + c[3].x) / 2, (c[0].y + c[3].y) / 2);
        const double travel = -0.9 * ww;
        VxAppendF(body,
                  "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f\r\n children SlidingDoorST "
                  "{OpenRot %.2f 0 0 "
                  "ClosedRot %.2f scale %.3f %.3f %.3f doormodel %s handlemodel %s}}\r\n",
                  base.x, box.z, base.y, rot, opened ? travel : 0.0, opened ? 0.0 : travel, ww, hh, dd,
                  leaf(appearance).c_str(), handle().c_str());
        body += frame(ww, c[0]);
        done = true;
    } else if (lib == 246) {
        const char* suffixName = subType <= 0 ? "" : (subType == 1 ? "1" : "2");
        const double openRot = opened ? -open : 0;
        const double closedRot = opened ? 0 : -open;
        if (subType <= 0)
            VxAppendF(body,
                      "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f\r\n children GarageDoor%s "
                      "{OpenRot 1 0 0 "
                      "%.2f ClosedRot %.2f scale %.3f %.3f %.3f %s}}\r\n",
                      box.x, box.z + hh, box.y, rot, suffixName, openRot, closedRot, ww, hh, dd,
                      FillOnly(appearance).c_str());
        else
            VxAppendF(body,
                      "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f\r\n children GarageDoor%s "
                      "{OpenRot 1 0 0 "
                      "%.2f ClosedRot %.2f scale %.3f %.3f %.3f shift2 0 %.3f 0 %s}}\r\n",
                      box.x, box.z + hh, box.y, rot, suffixName, openRot, closedRot, ww, hh, dd, hh / 4,
                      FillOnly(appearance).c_str());
        body += frame(ww, c[0]);
        done = true;
    } else if (lib == 197 || lib == 198 || (lib >= 263 && lib <= 266)) {
        const int panels = (lib == 263 || lib == 264) ? 3 : ((lib == 265 || lib == 266) ? 4 : 2);
        const char* proto =
            panels == 3 ? "FoldingDoorST3" : (panels == 4 ? "FoldingDoorST4" : "FoldingDoorST");
        const double panel = ww / panels;
        const bool right = lib == 198 || lib == 264 || lib == 266;
        const CVxDPoint base = right ? c[3] : c[0];
        const double a = (right ? 90.0 : -90.0) * kPi / 180;
        const double openRot = opened ? -a : 0;
        const double closedRot = opened ? 0 : -a;
        // Each joint folds the next panel back against the one before it;
        // the joint sits a panel's width along, on the panel's back face.
        const double openRot2 = opened ? 2 * a : 0;
        VxAppendF(
            body,
            "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f\r\n children %s {OpenRot 0 1 0 %.2f "
            "ClosedRot %.2f scale %.3f %.3f %.3f OpenRot2 0 1 0 %.2f shift2 %.3f 0 %.3f doormodel %s "
            "handlemodel "
            "%s}}\r\n",
            base.x, box.z, base.y, rot, proto, openRot, closedRot, panel, hh, dd, openRot2, panel, dd,
            leaf(appearance).c_str(), handle().c_str());
        body += frame(panel * panels, c[0]);
        done = true;
    } else if (type == ptWindow) {
        const CVxStringA sash = CVxWrlProtosGenerator::CacheEntirePartNode(
            CVxWindowSubTypes::GetInstance().ExportWindowToVRML(pars, *this, appearance));
        VxAppendF(body,
                  "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f scale %.3f %.3f %.3f\r\n "
                  "children %s}\r\n",
                  box.x, box.z, box.y, rot, ww, hh, dd, sash.c_str());
        body += frame(ww, c[0]);
        done = true;
    }

    CVxStringA child;
    if (!done) {
        if (HasCap(capPayload) && GetPayload() && !model && !billboard)
            child = GetPayload()->ExportToVRML(this, appearance, pars, parent);
        if (child.IsEmpty() && (lib == 298 || lib == 299) && !model && !billboard)
            child = CornerSofaText(*this, FillOnly(appearance), box);
        if (child.IsEmpty() && (type == ptPolygon || type == ptTriangle) && !model && !billboard)
            child = ExtrusionText(*this, FillOnly(appearance));
        if (child.IsEmpty() && appearFill.kind == 1 && appearFill.tileSizeX > 0 && !model &&
            HasCap(capTileTexture))
            child = TiledBoxText(*this, appearance, box);
        if (child.IsEmpty() && !hasPicture) {
            const CVxStringA name = CVxWrlProtosGenerator::WriteExternProto(*this, pars);
            CVxStringA own = appearance;
            // The basic shapes take one appearance only.
            if (!name.StartsWith("LibraryObject") && !name.StartsWith("Imported")) {
                const int front = own.Find(" appearanceFront ");
                if (front >= 0)
                    own = own.Left(front);
            }
            child = name + " {" + own + "}";
        }
        if (model && wrlProtoWidth > 0 && wrlProtoHeight > 0 && wrlProtoZHeight > 0 &&
            (wrlProtoWidth != 1 || wrlProtoHeight != 1 || wrlProtoZHeight != 1 || wrlProtoOffX != 0 ||
             wrlProtoOffY != 0 || wrlProtoOffZ != 0))
            child = VxFormatA("Transform {translation %.3f %.3f %.3f scale %.3f %.3f %.3f children %s }",
                              -wrlProtoOffX / wrlProtoWidth, -wrlProtoOffZ / wrlProtoZHeight,
                              -wrlProtoOffY / wrlProtoHeight, 1.0 / wrlProtoWidth, 1.0 / wrlProtoZHeight,
                              1.0 / wrlProtoHeight, child.c_str());
        if (!overlayUrl.IsEmpty()) {
            const CVxStringA app = CVxWrlProtosGenerator::GetPartAppearanceNode(*this, pars, 0, 0, 1);
            VxAppendF(body,
                      "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f scale %.3f %.3f %.3f\r\n  "
                      "children "
                      "Overlay%s {%s texture ImageTexture { repeatS FALSE repeatT FALSE url \"%s\"}}}\r\n",
                      box.x, box.z, box.y, rot, ww, hh, dd, VxFormatA("LibraryObject%d", lib).c_str(),
                      app.c_str(), overlayUrl.c_str());
        } else if (!pictureUrl.IsEmpty()) {
            const int pictureLib = billboard ? 276 : lib;
            VxAppendF(body,
                      "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f scale %.3f %.3f %.3f\r\n  "
                      "children "
                      "UserPic%s {texture ImageTexture { repeatS FALSE repeatT FALSE url \"%s\" }}}\r\n",
                      box.x, box.z, box.y, rot, ww, hh, dd, VxFormatA("LibraryObject%d", pictureLib).c_str(),
                      pictureUrl.c_str());
        } else {
            if (lib != 272 && !HasCap(capHandle))
                child = CVxWrlProtosGenerator::CacheEntirePartNode(child);
            if (std::fabs(rotation3D) < 1e-7)
                VxAppendF(body,
                          "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f scale %.3f %.3f "
                          "%.3f\r\n children "
                          "%s}\r\n",
                          box.x, box.z, box.y, rot, ww, hh, dd, child.c_str());
            else
                VxAppendF(body,
                          "Transform {translation %.3f %.3f %.3f rotation 0 1 0 %.4f\r\n children Transform "
                          "{rotation 1 0 "
                          "0 %.4f scale %.3f %.3f %.3f\r\n  children %s}}\r\n",
                          box.x, box.z, box.y, rot, rotation3D * kPi / 180, ww, hh, dd, child.c_str());
        }
        if (HasCap(capDoorFrame))
            body += frame(ww, c[0]);
    }
    if (!eofLines.IsEmpty())
        CVxWrlProtosGenerator::AddLinesToEOF(eofLines);
    return prefix + body + suffix;
}
