// The scene file: its frame and reuse of nodes, damaged objects, and the
// gate that every sample and every catalogue object loads in a VRML reader
// without a single warning.

#include "CVx3DPoint.h"
#include "CVxDozamoWardrobePayload.h"
#include "CVxGlobalShadow.h"
#include "CVxIniFileReader.h"
#include "CVxPart.h"
#include "CVxPartPayload.h"
#include "CVxProject.h"
#include "CVxSceneExport.h"
#include "CVxWall.h"
#include "VxTestEnv.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include <gtest/gtest.h>
#include <zlib.h>

#include <cmath>
#include <map>

namespace {

const QRegularExpression kNotANumber(QStringLiteral("\\b(nan|inf)\\b"),
                                     QRegularExpression::CaseInsensitiveOption);

QString ReadAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

int Count(const QString& text, const QString& what)
{
    return static_cast<int>(text.count(what));
}

// The proto library of the tree, or the one named by PLAVENO_PROTO_LIBRARY;
// empty when there is none.
QString ProtoLibrary()
{
    const QString given = qEnvironmentVariable("PLAVENO_PROTO_LIBRARY");
    if (!given.isEmpty() && QFileInfo::exists(given))
        return given;
    const QString tree = QStringLiteral(PLAVENO_SOURCE_DIR "/data/library.wrl");
    return QFileInfo::exists(tree) ? tree : QString();
}

// A folder with the library in both forms: plain, and as the zlib stream
// that the built-in viewer's scene inflates.
QString LibraryFolder(const QString& library)
{
    const QString folder = VxTestTempFolder().ToQString() + QStringLiteral("protos/");
    QDir().mkpath(folder);
    QFile in(library);
    if (!in.open(QIODevice::ReadOnly))
        return folder;
    const QByteArray text = in.readAll();
    QFile::remove(folder + QStringLiteral("library.wrl"));
    QFile::copy(library, folder + QStringLiteral("library.wrl"));
    uLongf size = compressBound(static_cast<uLong>(text.size()));
    QByteArray packed(static_cast<qsizetype>(size), '\0');
    compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
              reinterpret_cast<const Bytef*>(text.constData()), static_cast<uLong>(text.size()), 9);
    packed.resize(static_cast<qsizetype>(size));
    QFile out(folder + QStringLiteral("library_cs.wrl"));
    if (out.open(QIODevice::WriteOnly))
        out.write(packed);
    return folder;
}

bool Export(CVxProject& project, const QString& path, EVx3dViewerMode mode, const QString& libraryFolder,
            SVx3DExportReport* report = nullptr)
{
    SVxSceneExportRequest request;
    request.path = CVxStringW(path);
    request.mode = mode;
    request.libraryFolder = CVxStringW(libraryFolder);
    request.report = report;
    return CVxSceneExport::Write(project, request);
}

// What the reader says on stderr about a scene; "missing" when it can't run.
QString ReaderWarnings(const QString& scene)
{
    QProcess reader;
    reader.start(QStringLiteral("tovrmlx3d"), {scene});
    if (!reader.waitForStarted(10000))
        return QStringLiteral("missing");
    reader.closeWriteChannel();
    reader.waitForFinished(120000);
    const QString errors = QString::fromUtf8(reader.readAllStandardError());
    if (reader.exitStatus() != QProcess::NormalExit || reader.exitCode() != 0)
        return errors + QStringLiteral(" (exit %1)").arg(reader.exitCode());
    return errors;
}

CVxPart* AddBox(CVxFloor& floor, int libId, double x, double y, double w, double d, double h)
{
    CVxPart* part = floor.GetNewObject();
    part->type = ptLibraryObject;
    part->libObjID = libId;
    part->x = x;
    part->y = y;
    part->width = w;
    part->height = d;
    part->zHeight = h;
    return part;
}

// Stairs of every kind, round-tread stairs and a wardrobe, each with a
// payload text of its own, in a row along y = 300.
void AddPayloadObjects(CVxFloor& floor)
{
    CVxPartPayload::RegisterBuiltinClasses();
    for (int kind = 0; kind < 4; ++kind) {
        CVxPart* stairs = AddBox(floor, 65, 20 + kind * 110, 250, 300, 100, 280);
        stairs->subType = static_cast<int16_t>(kind);
        stairs->SetPayload(CVxPartPayload::CreateFromString(CVxStringW(L"StairsPayload:14|")));
        stairs->rotation = 90;
    }
    CVxPart* round = AddBox(floor, 162, 480, 250, 300, 100, 280);
    round->SetPayload(CVxPartPayload::CreateFromString(CVxStringW(L"BanisterStairsPayload:6|0.5")));
    CVxPart* wardrobe = AddBox(floor, 1101, 300, 20, 240, 65, 250);
    wardrobe->SetPayload(CVxPartPayload::CreateFromString(CVxStringW(L"DozamoWardrobe:3|2|1;4;9|")));
    // The middle door's upper panel in red.
    auto* doors = dynamic_cast<CVxDozamoWardrobePayload*>(wardrobe->GetPayload());
    if (doors && doors->appearances.size() == 6)
        doors->appearances[3] = CVxAppearance(0x0000FF);
}

// One floor, a 600 by 400 room in centimetres.
void RoomProject(CVxProject& project)
{
    project.Reset();
    project.m_unit = 1;
    CVxFloor& floor = *project.GetFloor();
    floor.m_walls.SetAsBasicRect(600, 400, 10, 250);
    project.RebuildAllFloorsWalls();
}

// Every catalogue number once, a row after row on one floor.
void CatalogueProject(CVxProject& project, int& numbers)
{
    RoomProject(project);
    CVxFloor& floor = *project.GetFloor();
    std::map<int, CVxPart> byNumber;
    CVxIniFileReader reader(CVxStringW(QStringLiteral(PLAVENO_SOURCE_DIR "/data/Library.pvl")), 0);
    if (reader.Start())
        while (!reader.GetSectionName().IsEmpty()) {
            if (reader.GetSectionName().Left(4) == "Part") {
                CVxPart part;
                part.LoadFromSection(&reader);
                if (part.libObjID > 0)
                    byNumber.emplace(part.libObjID, part);
            } else {
                reader.ReadSection(nullptr);
            }
        }
    numbers = static_cast<int>(byNumber.size());
    int i = 0;
    for (auto& [number, part] : byNumber) {
        CVxPart* placed = floor.GetNewObject();
        *placed = part;
        placed->inUse = true;
        placed->x = 20 + (i % 20) * 28;
        placed->y = 20 + (i / 20) * 28;
        ++i;
    }
}

} // namespace

TEST(SceneExportTest, FileFrameNamesAndReuse)
{
    CVxProject project;
    RoomProject(project);
    CVxFloor& floor = *project.GetFloor();
    // A hundred equal chairs are one node defined and 99 reused.
    for (int i = 0; i < 100; ++i)
        AddBox(floor, 20, 30 + (i % 10) * 50, 30 + (i / 10) * 35, 45, 45, 90);
    // A door leaf keeps its thin depth whatever the object's.
    CVxPart* door = AddBox(floor, 195, 200, 200, 90, 40, 200);
    door->opened = false;
    // A folding door's joints sit one panel width along, on the panel's
    // back face, so that the panels fold flat against each other.
    AddBox(floor, 263, 300, 300, 120, 40, 200)->opened = true;
    // Below 0.2 mm in height: not in the scene.
    AddBox(floor, 21, 100, 100, 50, 50, 0.01);

    const QString path = VxTestTempFolder().ToQString() + QStringLiteral("frame.wrl");
    ASSERT_TRUE(Export(project, path, VX_3DVIEWER_EXTERNAL, QStringLiteral("/nonexistent/")));
    const QString text = ReadAll(path);
    ASSERT_TRUE(text.startsWith(QStringLiteral("#VRML V2.0 utf8\r\nWorldInfo {")));
    EXPECT_EQ(Count(text, QStringLiteral("\n")), Count(text, QStringLiteral("\r\n"))) << "bare line feeds";
    // The order of the file: background, viewpoints, lights, protos,
    // marker, floor with its wall halves and layers, routes.
    const QStringList order = {QStringLiteral("DEF VX_BACKGROUND Background"),
                               QStringLiteral("DEF USER_VIEW1 Viewpoint {description \"Start\""),
                               QStringLiteral("DEF PV_VIEW6 Viewpoint"),
                               QStringLiteral("DirectionalLight {direction .05 -.3 -1 intensity .38}"),
                               QStringLiteral("PointLight {radius 500"),
                               QStringLiteral("EXTERNPROTO Rectangle [field SFNode appearance]"),
                               QStringLiteral("EXTERNPROTO CornerSofaExtensionR"),
                               QStringLiteral("EXTERNPROTO LibraryObject20 "),
                               QStringLiteral("\r\n#next floor\r\nDEF VX_FLOOR_00 Switch { whichChoice 0"),
                               QStringLiteral("DEF VX_WALLS_F00H0 Switch"),
                               QStringLiteral("DEF VX_WALLS_F00H1 Switch"),
                               QStringLiteral("DEF VX_LAYER_F00L00 Switch { whichChoice 0")};
    int at = 0;
    for (const QString& item : order) {
        const int found = static_cast<int>(text.indexOf(item, at));
        EXPECT_GE(found, 0) << item.toStdString();
        if (found >= 0)
            at = found;
    }
    EXPECT_EQ(Count(text, QStringLiteral("EXTERNPROTO LibraryObject20 ")), 1);
    EXPECT_EQ(Count(text, QStringLiteral("LibraryObject21 {")), 0);
    EXPECT_EQ(Count(text, QStringLiteral("children DEF VX_PART")), 1);
    EXPECT_EQ(Count(text, QStringLiteral("children USE VX_PART")), 99);
    const int leaf = static_cast<int>(text.indexOf(QStringLiteral("SlidingDoorST {")));
    EXPECT_TRUE(text.mid(leaf).startsWith(
        QStringLiteral("SlidingDoorST {OpenRot 0.00 0 0 ClosedRot -0.81 scale 0.900 "
                       "2.000 0.030")))
        << text.mid(leaf, 80).toStdString();
    const int folding = static_cast<int>(text.indexOf(QStringLiteral("FoldingDoorST3 {")));
    EXPECT_TRUE(text.mid(folding).startsWith(QStringLiteral(
        "FoldingDoorST3 {OpenRot 0 1 0 1.57 ClosedRot 0.00 scale 0.400 2.000 0.030 OpenRot2 0 1 "
        "0 -3.14 shift2 0.400 0 0.030 ")))
        << text.mid(folding, 120).toStdString();
    EXPECT_FALSE(text.contains(kNotANumber)) << "a number that is none";

    // A project without floors: background, viewpoints, lights and marker.
    CVxProject empty;
    RoomProject(empty);
    for (CVxFloor* f : empty.m_floors)
        delete f;
    empty.m_floors.clear();
    CVx3DFloorLayerVis vis;
    vis.floors.resize(3);
    SVxSceneExportRequest request;
    request.path = CVxStringW(VxTestTempFolder().ToQString() + QStringLiteral("empty.wrl"));
    request.mode = VX_3DVIEWER_EXTERNAL;
    request.vis = &vis;
    ASSERT_TRUE(CVxSceneExport::Write(empty, request));
    const QString bare = ReadAll(request.path.ToQString());
    EXPECT_TRUE(bare.contains(QStringLiteral("scale .01 .01 .01 children Rectangle")));
    EXPECT_FALSE(bare.contains(QStringLiteral("#next floor")));
    EXPECT_TRUE(vis.floors.empty());
}

// Stairs climb the object's height in as many steps as they have; the
// wardrobe's doors wear their own surfaces; none of them falls back to the
// catalogue's box.
TEST(SceneExportTest, PayloadObjectsBuildTheirOwnGeometry)
{
    CVxProject project;
    RoomProject(project);
    AddPayloadObjects(*project.GetFloor());
    const QString path = VxTestTempFolder().ToQString() + QStringLiteral("payloads.wrl");
    ASSERT_TRUE(Export(project, path, VX_3DVIEWER_EXTERNAL, QStringLiteral("/nonexistent/")));
    const QString text = ReadAll(path);
    for (const char* proto : {"LibraryObject65 {", "LibraryObject162 {", "LibraryObject1101 {"})
        EXPECT_FALSE(text.contains(QLatin1String(proto))) << proto;

    // Every flight: 14 steps, the first defined and 13 moved copies whose
    // last stands one step below the top.
    const QRegularExpression def(QStringLiteral("DEF VX_STEP(\\d+) "));
    int flights = 0;
    for (auto it = def.globalMatch(text); it.hasNext();) {
        const QString id = it.next().captured(1);
        ++flights;
        const QRegularExpression copy(
            QStringLiteral("translation ([0-9.]+) ([0-9.]+) 0 children USE VX_STEP%1\\}").arg(id));
        int copies = 0;
        double top = 0;
        for (auto c = copy.globalMatch(text); c.hasNext();) {
            const auto m = c.next();
            ++copies;
            EXPECT_NEAR(m.captured(1).toDouble(), m.captured(2).toDouble(), 1e-9) << "rise equals run";
            top = std::max(top, m.captured(2).toDouble());
        }
        EXPECT_EQ(copies + 1, 14) << "flight " << id.toStdString();
        EXPECT_NEAR(top + 1.0 / 14, 1.0, 0.002) << "flight " << id.toStdString();
    }
    EXPECT_EQ(flights, 4);
    // Scaled to the object: 3 m along, 2.8 m up, 1 m wide; the four flights
    // and the round treads.
    EXPECT_EQ(Count(text, QStringLiteral("scale 3.000 2.800 1.000\r\n children DEF VX_PART")), 5);
    // Cheeks for sub-type 3, stringers for the open treads of 2.
    EXPECT_EQ(Count(text, QStringLiteral("DEF VX_STEP_SIDE")), 2);
    EXPECT_EQ(Count(text, QStringLiteral("children USE VX_BAR")), 5);
    EXPECT_TRUE(text.contains(QStringLiteral("Ellipse_LowPoly {appearance")));
    // The red panel of the middle door.
    EXPECT_TRUE(text.contains(QStringLiteral("diffuseColor 1.00 0.00 0.00")));
    EXPECT_FALSE(text.contains(kNotANumber));
}

TEST(SceneExportTest, WallsAreCutByOpeningsOfShownLayersOnly)
{
    CVxProject project;
    RoomProject(project);
    CVxFloor& floor = *project.GetFloor();
    floor.m_layers.Reset();
    CVxPart* door = floor.GetNewObject();
    door->type = ptDoor;
    door->width = 90;
    door->height = 10;
    door->zHeight = 200;
    door->snapToWall = true;
    door->SnapToWall(&floor.m_walls, 300, -5, true, false, false);
    ASSERT_TRUE(door->snapToWall);

    const QString path = VxTestTempFolder().ToQString() + QStringLiteral("walls.wrl");
    ASSERT_TRUE(Export(project, path, VX_3DVIEWER_EXTERNAL, QStringLiteral("/nonexistent/")));
    const QString cut = ReadAll(path);
    // The doorway reaches 5 mm under the floor face.
    EXPECT_TRUE(cut.contains(QStringLiteral(" -0.005 "))) << "no opening at the floor";
    EXPECT_TRUE(cut.contains(QStringLiteral("convex FALSE}}"))) << "no wall with a hole";

    // The same door on a layer hidden in 3D leaves the wall whole.
    floor.m_layers.SetVisibility3D(false);
    floor.m_layers.SetLayerVisible(0, false);
    ASSERT_TRUE(Export(project, path, VX_3DVIEWER_EXTERNAL, QStringLiteral("/nonexistent/")));
    const QString whole = ReadAll(path);
    EXPECT_FALSE(whole.contains(QStringLiteral(" -0.005 ")));
    EXPECT_TRUE(whole.contains(QStringLiteral("DEF VX_LAYER_F00L00 Switch { whichChoice -1")));
}

TEST(SceneExportTest, MouldingsStayWhenTheUpperWallsAreHidden)
{
    CVxProject project;
    project.Reset();
    project.m_unit = 1;
    CVxFloor& floor = *project.GetFloor();
    floor.m_crownMolding = CVxDecorativeMolding();
    floor.m_crownMolding.enabled = true;
    floor.m_crownMolding.height = 8;
    floor.m_crownMolding.thickness = 3;
    floor.m_crownMolding.appearance.SetColor(0x3366CC);
    floor.m_walls.SetAsBasicRect(600, 400, 10, 250);
    project.RebuildAllFloorsWalls();

    const QString path = VxTestTempFolder().ToQString() + QStringLiteral("mouldings.wrl");
    ASSERT_TRUE(Export(project, path, VX_3DVIEWER_EXTERNAL, QStringLiteral("/nonexistent/")));
    const QString text = ReadAll(path);
    // The cornice is written with the floor, outside the walls' switches,
    // and again with the ceiling inside the upper walls' switch.
    const int lower = text.indexOf(QStringLiteral("DEF VX_WALLS_F00H0"));
    const int upper = text.indexOf(QStringLiteral("DEF VX_WALLS_F00H1"));
    ASSERT_GT(lower, 0);
    ASSERT_GT(upper, lower);
    const QString colour = QStringLiteral("diffuseColor 0.80 0.40 0.20");
    EXPECT_TRUE(text.left(lower).contains(colour)) << "no cornice with the floor";
}

// The points of every Shape of a wall's text, as scene x, y, z.
static std::vector<std::vector<double>> ShapePoints(const QString& text)
{
    std::vector<std::vector<double>> points;
    static const QRegularExpression list(QStringLiteral("point \\[([^\\]]*)\\]"));
    auto it = list.globalMatch(text);
    while (it.hasNext()) {
        const QString body = it.next().captured(1);
        for (const QString& item : body.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            const QStringList xyz = item.simplified().split(QLatin1Char(' '));
            if (xyz.size() == 3)
                points.push_back({xyz[0].toDouble(), xyz[1].toDouble(), xyz[2].toDouble()});
        }
    }
    return points;
}

TEST(SceneExportTest, SlopedWallKeepsItsSlopeThroughTheJointsAndDropsTheCeiling)
{
    CVxProject project;
    RoomProject(project);
    CVxFloor& floor = *project.GetFloor();
    CVxWall& sloped = floor.m_walls.walls[0];
    sloped.startHeight = 250;
    sloped.endHeight = 200;
    project.RebuildAllFloorsWalls();
    const double slope = (sloped.endHeight - sloped.startHeight) / sloped.length;
    const CVxDPoint dir((sloped.end.x - sloped.start.x) / sloped.length,
                        (sloped.end.y - sloped.start.y) / sloped.length);

    SVx3DExportPars pars;
    pars.scale = 0.01;
    // Whole, and both halves of the split wall: each half stays on its side
    // of the cut, and every vertex above the cut lies on the plane of the
    // sloped top, the mitred corners of both faces too.
    const struct
    {
        double split;
        bool lower;
    } cases[] = {{0, true}, {150, true}, {150, false}};
    for (const auto& c : cases) {
        const CVxStringA text = sloped.ExportToVRMLNew(&pars, floor, 0, true, 0, 10, 0, c.split, c.lower);
        const auto points = ShapePoints(QString::fromUtf8(text.c_str()));
        EXPECT_GE(points.size(), 8u);
        int onTop = 0;
        bool trimmed = false;
        for (const auto& p : points) {
            if (c.split > 0) {
                EXPECT_TRUE(c.lower ? p[1] <= 1.501 : p[1] >= 1.499)
                    << (c.lower ? "lower" : "upper") << " half crosses the cut at " << p[1];
            }
            if (p[1] <= 1.6)
                continue;
            const double along =
                (p[0] / 0.01 - sloped.start.x) * dir.x + (p[2] / 0.01 - sloped.start.y) * dir.y;
            trimmed = trimmed || along < -1 || along > sloped.length + 1;
            EXPECT_NEAR(p[1], (sloped.startHeight + slope * along) * 0.01, 0.0015)
                << "split " << c.split << " at " << along;
            ++onTop;
        }
        if (c.split == 0 || !c.lower) {
            EXPECT_GE(onTop, 6) << c.split;
            EXPECT_TRUE(trimmed) << "no vertex of a mitred corner on the top";
        }
    }

    // A slope that crosses the cut leaves a triangle above it.
    sloped.endHeight = 100;
    project.RebuildAllFloorsWalls();
    const CVxStringA upper = sloped.ExportToVRMLNew(&pars, floor, 0, true, 0, 10, 0, 150, false);
    const auto triangle = ShapePoints(QString::fromUtf8(upper.c_str()));
    EXPECT_EQ(triangle.size(), 12u) << "two faces of three corners and their centres";
    for (const auto& p : triangle)
        EXPECT_GE(p[1], 1.499);
    EXPECT_TRUE(upper.Find("convex TRUE") >= 0);

    // A room with one wall lower than the others has no ceiling; with the
    // walls level again it has one.
    const QString path = VxTestTempFolder().ToQString() + QStringLiteral("sloped.wrl");
    ASSERT_TRUE(Export(project, path, VX_3DVIEWER_EXTERNAL, QStringLiteral("/nonexistent/")));
    EXPECT_FALSE(ReadAll(path).contains(QStringLiteral("ccw FALSE}")));
    sloped.endHeight = 250;
    project.RebuildAllFloorsWalls();
    ASSERT_TRUE(Export(project, path, VX_3DVIEWER_EXTERNAL, QStringLiteral("/nonexistent/")));
    EXPECT_TRUE(ReadAll(path).contains(QStringLiteral("ccw FALSE}")));
}

TEST(SceneExportTest, DamagedObjectsAreLeftOutOrCut)
{
    CVxProject project;
    RoomProject(project);
    CVxFloor& floor = *project.GetFloor();
    AddBox(floor, 20, std::nan(""), 50, 45, 45, 90);
    AddBox(floor, 20, 50, 50, 1e12, 45, 90);
    AddBox(floor, 20, 1e15, 50, 45, 45, 90);
    CVxPart* pictured = AddBox(floor, 93, 100, 100, 100, 2, 80);
    pictured->appearFill.main.texture = CVxStringW(L"/nonexistent/picture.png");
    CVxPart* sounding = AddBox(floor, 20, 150, 150, 45, 45, 90);
    sounding->soundClip = CVxStringW(L"/nonexistent/bell.wav");

    SVx3DExportReport report;
    const QString path = VxTestTempFolder().ToQString() + QStringLiteral("damaged.wrl");
    ASSERT_TRUE(Export(project, path, VX_3DVIEWER_EXTERNAL, QStringLiteral("/nonexistent/"), &report));
    EXPECT_EQ(report.skippedObjects, 2);
    EXPECT_EQ(report.clampedObjects, 1);
    EXPECT_GE(report.missingFiles, 1);
    const QString text = ReadAll(path);
    EXPECT_FALSE(text.contains(kNotANumber)) << "a number that is none";
    EXPECT_FALSE(text.contains(QStringLiteral("picture.png")) || text.contains(QStringLiteral("bell.wav")));
    EXPECT_TRUE(text.contains(QStringLiteral("scale 10000.000 0.900 0.450")));
}

TEST(SceneExportTest, SamplesAndEveryCatalogueObjectLoadWithoutWarnings)
{
    if (QStandardPaths::findExecutable(QStringLiteral("tovrmlx3d")).isEmpty())
        GTEST_SKIP() << "tovrmlx3d is not installed";
    const QString library = ProtoLibrary();
    if (library.isEmpty())
        GTEST_SKIP() << "no proto library in data/library.wrl";
    const QString folder = LibraryFolder(library);

    QStringList samples = QDir(QStringLiteral(PLAVENO_SOURCE_DIR "/samples"))
                              .entryList({QStringLiteral("*.pvp")}, QDir::Files, QDir::Name);
    ASSERT_FALSE(samples.isEmpty());
    for (const EVx3dViewerMode mode : {VX_3DVIEWER_BUILTIN, VX_3DVIEWER_EXTERNAL}) {
        const QString tag =
            mode == VX_3DVIEWER_BUILTIN ? QStringLiteral("viewer") : QStringLiteral("external");
        for (const QString& sample : samples) {
            CVxProject project;
            ASSERT_TRUE(
                project.LoadFromFile(CVxStringW(QStringLiteral(PLAVENO_SOURCE_DIR "/samples/") + sample),
                                     nullptr, nullptr, false, 0));
            project.RebuildAllFloorsWalls();
            project.m_viewpoints.m_allFloors = true;
            // The sun with its shadow map and its visible sphere.
            CVxGlobalShadow sun;
            sun.LoadFromKept(project.m_globalShadow);
            sun.enabled = true;
            sun.showSunObject = true;
            sun.StoreToKept(project.m_globalShadow);
            SVx3DExportReport report;
            const QString scene = VxTestTempFolder().ToQString() + sample + QLatin1Char('-') + tag + ".wrl";
            ASSERT_TRUE(Export(project, scene, mode, folder, &report)) << sample.toStdString();
            EXPECT_EQ(report.libraryInlined, mode == VX_3DVIEWER_BUILTIN);
            EXPECT_EQ(ReadAll(scene).contains(QStringLiteral("DEF VX_THE_SUN DirectionalLight")),
                      mode == VX_3DVIEWER_BUILTIN);
            EXPECT_EQ(ReaderWarnings(scene), QString()) << sample.toStdString() << " " << tag.toStdString();
            project.RemoveTempFiles();
        }

        CVxProject catalogue;
        int numbers = 0;
        CatalogueProject(catalogue, numbers);
        EXPECT_GT(numbers, 200);
        // A number the library does not know, as a newer file may bring.
        AddBox(*catalogue.GetFloor(), 1187, 300, 300, 50, 50, 50);
        AddPayloadObjects(*catalogue.GetFloor());
        const QString scene = VxTestTempFolder().ToQString() + "catalogue-" + tag + ".wrl";
        ASSERT_TRUE(Export(catalogue, scene, mode, folder));
        EXPECT_EQ(ReaderWarnings(scene), QString()) << "catalogue " << tag.toStdString();
    }
}

TEST(SunTest, DefaultDateCompassAndDaylightSaving)
{
    CVxProject project;
    RoomProject(project);
    CVx3DPoint first;
    ASSERT_TRUE(project.GetSunDirection(first, nullptr));
    CVxGlobalShadow stored;
    stored.LoadFromKept(project.m_globalShadow);
    EXPECT_EQ(stored.day, 110);
    EXPECT_EQ(stored.time, 600);
    EXPECT_NEAR(first.x * first.x + first.y * first.y + first.z * first.z, 1, 1e-9);

    // Daylight saving takes exactly one hour off.
    CVxGlobalShadow summer = stored;
    summer.latitude = 48;
    summer.longitude = 16;
    summer.timeZone = 1;
    summer.daylightSaving = true;
    CVxGlobalShadow winter = summer;
    winter.daylightSaving = false;
    winter.time -= 60;
    CVx3DPoint a, b;
    project.GetSunDirection(a, &summer);
    project.GetSunDirection(b, &winter);
    EXPECT_NEAR(a.x, b.x, 1e-12);
    EXPECT_NEAR(a.y, b.y, 1e-12);
    // Mid-morning in spring at 48 degrees north: up, to the south-east,
    // which is +x and +y on a plan whose top is north.
    EXPECT_GT(a.z, 0.4);
    EXPECT_GT(a.x, 0);
    EXPECT_GT(a.y, 0);

    // A compass turned by 90 degrees turns the sun with it.
    CVxPart* compass = project.GetFloor()->GetNewObject();
    compass->type = ptCompass;
    compass->rotation = 90;
    CVx3DPoint turned;
    project.GetSunDirection(turned, &summer);
    EXPECT_NEAR(turned.x, -a.y, 1e-9);
    EXPECT_NEAR(turned.y, a.x, 1e-9);
    EXPECT_NEAR(turned.z, a.z, 1e-9);
}
