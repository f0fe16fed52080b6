// The headless tool run as a process: exit codes and error lines, the
// description of a project, drawings in every format, conversion, and files
// that are missing, damaged or can't be written.

#include "CVxAppCore.h"
#include "CVxFloor.h"
#include "CVxFloorPlan.h"
#include "CVxFont.h"
#include "CVxProject.h"
#include "VxTestEnv.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QXmlStreamReader>
#include <gtest/gtest.h>
#include <zlib.h>

namespace {

struct SRun
{
    int exitCode = -1;
    QByteArray out;
    QByteArray err;
};

SRun RunCli(const QStringList& args)
{
    QProcess process;
    process.start(QStringLiteral(PLAVENO_CLI_PATH), args);
    SRun run;
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
        process.kill();
        process.waitForFinished();
        run.err = "crashed or hung";
        return run;
    }
    run.exitCode = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

QString Temp(const QString& name)
{
    return (VxTestTempFolder() + CVxStringW(name)).ToQString();
}

// Living (BGR 0x3060C0) left of a wall at 400, Study right of it with a green
// box, dark walls; an upper floor with one box.
constexpr unsigned kLivingColour = 0x3060C0;
constexpr unsigned kBoxColour = 0x00C000;

CVxPart Box(double x, double y, unsigned colour)
{
    CVxPart part;
    part.inUse = true;
    part.type = ptRectangle;
    part.x = x;
    part.y = y;
    part.width = 80;
    part.height = 60;
    part.fillStyle = 0;
    part.SetFillColor(colour);
    part.appearFill.SetTransparency(0);
    return part;
}

QString SaveHouse(const QString& name, bool compressed)
{
    CVxProject project;
    project.m_width = 600;
    project.m_height = 300;
    CVxFloor* floor = project.GetFloor();
    floor->m_wallsColor = 0x202020;
    floor->m_walls.SetAsBasicRect(600, 300, 10, 250);
    floor->m_walls.GetNewWall()->Set(400, 0, 400, 300, CVxWall::ALIGN_CENTER, 10, 250, 250, true, false);
    floor->m_walls.RebuildWalls();
    CVxFloorPlan plan;
    plan.CreatePlan(*floor, project.m_unit);
    for (CVxFloorRegion& room : plan.regions) {
        const bool living = room.GetInnerBoundingRect().left < 200;
        room.name = living ? L"Living" : L"Study";
        room.floorAppearance.SetColor(living ? kLivingColour : 0xE0E0E0);
    }
    floor->SetCommonFloorAppearancesAndSave(plan, true);
    *floor->GetNewObject() = Box(450, 100, kBoxColour);
    *floor->GetNewObject() = Box(450, 200, 0x808080);
    CVxFloor upper;
    upper.Reset(&project);
    *upper.GetNewObject() = Box(30, 30, 0xFF0000);
    project.m_floors.push_back(new CVxFloor(upper));
    const QString path = Temp(name);
    EXPECT_TRUE(project.SaveToFile(CVxStringW(path), compressed, nullptr));
    return path;
}

QByteArray ReadAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void WriteAll(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QJsonObject InfoJson(const QString& path)
{
    const SRun run = RunCli({"info", path, "--json"});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(run.out, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << run.out.toStdString();
    return doc.object();
}

// A failure the user can act on: exit 1 and one line naming the file.
void ExpectFileError(const SRun& run, const QString& file)
{
    EXPECT_EQ(run.exitCode, 1) << run.err.toStdString();
    EXPECT_EQ(run.err.count('\n'), 1) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(file.toUtf8())) << run.err.toStdString();
}

unsigned Rgb(const QImage& image, int x, int y)
{
    return image.pixel(x, y) & 0xFFFFFF;
}

} // namespace

TEST(Cli, UsageHelpAndVersion)
{
    EXPECT_EQ(RunCli({}).exitCode, 2);
    EXPECT_EQ(RunCli({"--frobnicate"}).exitCode, 2);
    const SRun version = RunCli({"--version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(version.out.startsWith("plaveno-cli ")) << version.out.toStdString();
    const SRun help = RunCli({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (const char* verb : {"info", "render", "convert", "thumbnail", "stats"}) {
        EXPECT_TRUE(help.out.contains(verb)) << verb;
        const SRun verbHelp = RunCli({verb, "--help"});
        EXPECT_EQ(verbHelp.exitCode, 0) << verb;
        EXPECT_TRUE(verbHelp.out.startsWith(QByteArray("Usage: plaveno-cli ") + verb)) << verb;
    }
    const QString house = SaveHouse("usage.pvp", true);
    EXPECT_EQ(RunCli({"render", house}).exitCode, 2) << "no output";
    EXPECT_EQ(RunCli({"render", house, "-o", Temp("x.bmp")}).exitCode, 2);
    EXPECT_EQ(RunCli({"render", house, "-o", Temp("x.png"), "--width", "10", "--zoom", "1"}).exitCode, 2);
    EXPECT_EQ(RunCli({"render", house, "-o", Temp("x.png"), "--scale", "1:50"}).exitCode, 2);
    EXPECT_EQ(RunCli({"convert", house, Temp("y.pvp"), "--unit", "parsec"}).exitCode, 2);
    EXPECT_EQ(RunCli({"info", house, "--bogus"}).exitCode, 2);
    EXPECT_FALSE(QFile::exists(Temp("x.png")));
}

TEST(Cli, InfoJsonDescribesTheHouse)
{
    const QString house = SaveHouse("info.pvp", true);
    const QJsonObject info = InfoJson(house);
    EXPECT_EQ(info.keys().size(), 8);
    EXPECT_EQ(info["file"].toString(), house);
    EXPECT_EQ(info["fileVersion"].toInt(), CVxProject::fileVersion);
    EXPECT_EQ(info["unit"].toString(), "cm");
    EXPECT_EQ(info["statisticalUnit"].toString(), "m");
    EXPECT_DOUBLE_EQ(info["size"]["width"].toDouble(), 600);
    EXPECT_DOUBLE_EQ(info["size"]["height"].toDouble(), 300);
    const QJsonArray floors = info["floors"].toArray();
    ASSERT_EQ(floors.size(), 2);
    const QJsonObject ground = floors[0].toObject();
    EXPECT_EQ(ground["index"].toInt(), 1);
    EXPECT_EQ(ground["walls"].toInt(), 5);
    EXPECT_EQ(ground["floorOpenings"].toInt(), 0);
    const QJsonArray rooms = ground["rooms"].toArray();
    ASSERT_EQ(rooms.size(), 2);
    double total = 0;
    for (const QJsonValue& room : rooms) {
        const QString name = room["name"].toString();
        EXPECT_TRUE(name == "Living" || name == "Study") << name.toStdString();
        // Square metres of a plan in centimetres: the living room is about
        // four by three metres.
        if (name == "Living") {
            EXPECT_NEAR(room["area"].toDouble(), 12, 0.5);
            EXPECT_NEAR(room["perimeter"].toDouble(), 14, 0.5);
        }
        total += room["area"].toDouble();
    }
    EXPECT_NEAR(total, 18, 1);
    const QJsonArray objects = ground["objects"].toArray();
    ASSERT_EQ(objects.size(), 1);
    EXPECT_EQ(objects[0]["count"].toInt(), 2);
    EXPECT_FALSE(objects[0]["type"].toString().isEmpty());
    EXPECT_EQ(floors[1]["objects"][0]["count"].toInt(), 1);
    EXPECT_TRUE(info["embeddedFiles"].isArray());
    EXPECT_TRUE(info["missingFiles"].toArray().isEmpty());

    // The key order is part of the format.
    const SRun run = RunCli({"info", house, "--json"});
    const QByteArray text = run.out;
    EXPECT_LT(text.indexOf("\"file\""), text.indexOf("\"fileVersion\""));
    EXPECT_LT(text.indexOf("\"size\""), text.indexOf("\"floors\""));
    EXPECT_LT(text.indexOf("\"embeddedFiles\""), text.indexOf("\"missingFiles\""));
}

TEST(Cli, StatsPrintsTheTableAndTheSameFiguresAsJson)
{
    const QString house = SaveHouse("stats.pvp", true);
    // Living is 395 by 300 inside its walls, Study 195 by 300; walls 250 high.
    const SRun table = RunCli({"stats", house});
    ASSERT_EQ(table.exitCode, 0) << table.err.toStdString();
    const QString text = QString::fromUtf8(table.out);
    EXPECT_TRUE(text.startsWith(QStringLiteral("Room\tID\tWidth [m]\t"))) << table.out.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("\r\nLiving\tDimensions\t3.95\t3\t\t11.85\t\t0\t11.85\r\n")))
        << table.out.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("\r\nStudy\tDimensions\t1.95\t3\t\t5.85\t\t0\t5.85\r\n")));
    // Study: floor 5.85 and walls (1.95 + 3) x 2.5 twice.
    EXPECT_TRUE(text.contains(QStringLiteral("\tTotals\t1.95\t3\t2.5\t30.6\t0\t0\t30.6\r\n")));

    const SRun json = RunCli({"stats", house, "--json", "--floor", "1"});
    ASSERT_EQ(json.exitCode, 0) << json.err.toStdString();
    QJsonParseError error;
    const QJsonObject stats = QJsonDocument::fromJson(json.out, &error).object();
    ASSERT_EQ(error.error, QJsonParseError::NoError) << json.out.toStdString();
    EXPECT_EQ(stats["statisticalUnit"].toString(), "m");
    const QJsonArray rooms = stats["rooms"].toArray();
    ASSERT_EQ(rooms.size(), 2);
    for (const QJsonValue& room : rooms) {
        if (room["name"].toString() != "Study")
            continue;
        EXPECT_DOUBLE_EQ(room["area"].toDouble(), 5.85);
        EXPECT_EQ(room["walls"].toArray().size(), 4);
        EXPECT_DOUBLE_EQ(room["totals"]["area"].toDouble(), 30.6);
    }
    // The upper floor is a new floor's walled rectangle: one room without a
    // name, numbered. There is no third floor.
    const SRun upper = RunCli({"stats", house, "--floor", "2", "--json"});
    EXPECT_EQ(upper.out.count("\"name\""), 1);
    EXPECT_TRUE(upper.out.contains("\"name\": \"Room 1\"")) << upper.out.toStdString();
    ExpectFileError(RunCli({"stats", house, "--floor", "3"}), house);
    EXPECT_EQ(RunCli({"stats", house, "--floor", "0"}).exitCode, 2);
}

TEST(Cli, InfoTextCountsAndMeasuresAsTheProgramDoes)
{
    const QString house = SaveHouse("info-text.pvp", true);
    const SRun run = RunCli({"info", house});
    EXPECT_EQ(run.exitCode, 0);
    const QString text = QString::fromUtf8(run.out);
    EXPECT_TRUE(text.contains("Size:           600 cm x 300 cm\n")) << text.toStdString();
    EXPECT_TRUE(text.contains("Floor 1: 5 walls, 0 floor openings, 2 rooms\n")) << text.toStdString();
    EXPECT_TRUE(text.contains("Floor 2: 4 walls, 0 floor openings, 1 room\n")) << text.toStdString();
    // Areas to the decimals their size calls for, lengths to the project's
    // hundredths, each with its unit.
    EXPECT_TRUE(text.contains(QString::fromUtf8("  Room Living: 11.9 m\u00B2, perimeter 13.9 m\n")))
        << text.toStdString();
}

TEST(Cli, InfoListsStoredAndMissingFiles)
{
    const QString texture = Temp("wood.png");
    QImage wood(8, 8, QImage::Format_RGB32);
    wood.fill(Qt::darkYellow);
    ASSERT_TRUE(wood.save(texture));
    const QString gone = Temp("gone/stone.png");
    CVxProject project;
    CVxPart table = Box(50, 50, 0x808080);
    table.appearFill.SetTexture(CVxStringW(texture));
    *project.GetFloor()->GetNewObject() = table;
    const QString stored = Temp("stored.pvp");
    ASSERT_TRUE(project.SaveToFile(CVxStringW(stored), true, nullptr));
    CVxPart wall = Box(200, 50, 0x808080);
    wall.appearFill.SetTexture(CVxStringW(gone));
    *project.GetFloor()->GetNewObject() = wall;
    const QString plain = Temp("refers.pvp");
    ASSERT_TRUE(project.SaveToFile(CVxStringW(plain), false, nullptr));

    EXPECT_EQ(InfoJson(stored)["embeddedFiles"].toArray(), QJsonArray{"wood.png"});
    const QJsonArray missing = InfoJson(plain)["missingFiles"].toArray();
    ASSERT_EQ(missing.size(), 1);
    EXPECT_TRUE(missing[0].toString().endsWith("stone.png")) << missing[0].toString().toStdString();
}

TEST(Cli, RenderPngShowsWallsRoomsAndObjects)
{
    const QString house = SaveHouse("render.pvp", true);
    const QString png = Temp("plan.png");
    const SRun run = RunCli({"render", house, "-o", png, "--zoom", "1", "--no-grid", "--no-captions"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QImage image(png);
    ASSERT_EQ(image.width(), 720);
    ASSERT_EQ(image.height(), 420);
    EXPECT_EQ(Rgb(image, 55, 210), 0x202020u) << "wall";
    EXPECT_EQ(Rgb(image, 110, 310), 0xC06030u) << "living room floor";
    EXPECT_EQ(Rgb(image, 550, 190), 0x00C000u) << "box";
    EXPECT_EQ(Rgb(image, 5, 5), 0xFFFFFFu) << "ground";

    // Black and white turns the colours grey.
    ASSERT_EQ(RunCli({"render", house, "-o", png, "--zoom", "1", "--no-grid", "--bw"}).exitCode, 0);
    const QColor grey = QImage(png).pixelColor(110, 310);
    EXPECT_TRUE(grey.red() == grey.green() && grey.green() == grey.blue()) << grey.name().toStdString();

    // Default width; the upper floor has no room colour but its red box.
    ASSERT_EQ(RunCli({"render", house, "-o", png, "--floor", "2"}).exitCode, 0);
    const QImage upper(png);
    EXPECT_EQ(upper.width(), 1600);
    EXPECT_EQ(Rgb(upper, (60 + 70) * 1600 / 720, (60 + 60) * 1600 / 720), 0x0000FFu);
    ExpectFileError(RunCli({"render", house, "-o", png, "--floor", "3"}), house);

    const QString jpeg = Temp("plan.jpg");
    ASSERT_EQ(RunCli({"render", house, "-o", jpeg, "--width", "400"}).exitCode, 0);
    EXPECT_EQ(QImage(jpeg).width(), 400);

    const QString thumb = Temp("thumb.png");
    ASSERT_EQ(RunCli({"thumbnail", house, "-o", thumb, "--size", "128"}).exitCode, 0);
    const QImage small(thumb);
    EXPECT_EQ(small.size(), QSize(128, 128));
    int dark = 0;
    for (int y = 0; y < 128; ++y)
        for (int x = 0; x < 128; ++x)
            dark += qGray(small.pixel(x, y)) < 80;
    EXPECT_GT(dark, 50) << "walls in the thumbnail";
}

TEST(Cli, RenderedPicturesAreOpaqueToTheirEdges)
{
    const QString house = SaveHouse("edges.pvp", true);
    const QString png = Temp("edges.png");
    // Widths at which the sheet's size in pixels is not a whole number.
    for (const char* width : {"777", "1001", "1600"}) {
        SCOPED_TRACE(width);
        ASSERT_EQ(RunCli({"render", house, "-o", png, "--width", width}).exitCode, 0);
        const QImage image(png);
        ASSERT_FALSE(image.isNull());
        int seeThrough = 0;
        for (int x = 0; x < image.width(); ++x)
            seeThrough += qAlpha(image.pixel(x, 0)) < 255 || qAlpha(image.pixel(x, image.height() - 1)) < 255;
        for (int y = 0; y < image.height(); ++y)
            seeThrough += qAlpha(image.pixel(0, y)) < 255 || qAlpha(image.pixel(image.width() - 1, y)) < 255;
        EXPECT_EQ(seeThrough, 0);
        EXPECT_EQ(Rgb(image, image.width() - 1, image.height() - 1), 0xFFFFFFu);
    }
}

TEST(Cli, RenderSvgAndPdfAreVector)
{
    const QString house = SaveHouse("vector.pvp", true);
    const QString svg = Temp("plan.svg");
    ASSERT_EQ(RunCli({"render", house, "-o", svg}).exitCode, 0);
    QXmlStreamReader xml(ReadAll(svg));
    int paths = 0;
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("path"))
            ++paths;
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_GT(paths, 5);

    const QString pdf = Temp("plan.pdf");
    ASSERT_EQ(RunCli({"render", house, "-o", pdf, "--scale", "1:50", "--paper", "A3"}).exitCode, 0);
    const QByteArray bytes = ReadAll(pdf);
    ASSERT_TRUE(bytes.startsWith("%PDF"));
    EXPECT_FALSE(bytes.contains("/Subtype /Image")) << "the plan must not be one picture";
    // Page content is deflated: inflate every stream and look for the path
    // operators that draw the walls.
    QByteArray content;
    for (qsizetype at = bytes.indexOf("stream\n"); at >= 0; at = bytes.indexOf("stream\n", at + 1)) {
        if (at > 2 && bytes.mid(at - 3, 3) == "end")
            continue;
        const qsizetype start = at + 7;
        const qsizetype end = bytes.indexOf("endstream", start);
        if (end < 0)
            break;
        std::vector<unsigned char> out(4 << 20);
        uLongf size = out.size();
        if (uncompress(out.data(), &size, reinterpret_cast<const Bytef*>(bytes.constData() + start),
                       static_cast<uLong>(end - start)) == Z_OK)
            content += QByteArray(reinterpret_cast<const char*>(out.data()), static_cast<qsizetype>(size));
    }
    EXPECT_TRUE(content.contains(" m\n") && content.contains(" l\n")) << content.left(400).toStdString();
    EXPECT_TRUE(content.contains("\nf\n") || content.contains(" f\n") || content.contains("\nB\n"));
}

TEST(Cli, PdfAtScaleTilesPagesThatThePlanNeeds)
{
    const QString house = SaveHouse("tiles.pvp", true);
    const auto pages = [](const QByteArray& pdf) {
        return pdf.count("/Type /Page\n") + pdf.count("/Type /Page\r");
    };
    const QString one = Temp("one.pdf");
    ASSERT_EQ(RunCli({"render", house, "-o", one, "--scale", "1:100"}).exitCode, 0);
    EXPECT_EQ(pages(ReadAll(one)), 1);
    // Six metres by three and the sheet's margins at 1:10 are over 60 by
    // 30 cm: at least three A4 pages across in landscape and two down.
    const QString many = Temp("many.pdf");
    ASSERT_EQ(RunCli({"render", house, "-o", many, "--scale", "1:10"}).exitCode, 0);
    EXPECT_GE(pages(ReadAll(many)), 6);
    EXPECT_LE(pages(ReadAll(many)), 9);
    // The sheet's margins hold only the grid and need no page of their own:
    // the two-storey sample with its margins is over 25 by 21 cm at 1:50,
    // the house itself 21 by 17.
    const QString sample = QStringLiteral(PLAVENO_SOURCE_DIR "/samples/House.pvp");
    ASSERT_EQ(RunCli({"render", sample, "-o", one, "--scale", "1:50"}).exitCode, 0);
    EXPECT_EQ(pages(ReadAll(one)), 1);
    ExpectFileError(RunCli({"render", house, "-o", Temp("huge.pdf"), "--scale", "1:1"}), house);
    EXPECT_FALSE(QFile::exists(Temp("huge.pdf")));
}

namespace {

// A program that the test may start, or empty when it isn't installed.
QString Tool(const QString& name)
{
    return QStandardPaths::findExecutable(name);
}

// A Python with the CAD file module, or empty.
QString PythonWithEzdxf()
{
    for (const QString& candidate : {Tool(QStringLiteral("python3")), QStringLiteral("/usr/bin/python3")}) {
        if (candidate.isEmpty() || !QFileInfo(candidate).isExecutable())
            continue;
        QProcess probe;
        probe.start(candidate, {QStringLiteral("-c"), QStringLiteral("import ezdxf")});
        if (probe.waitForFinished(30000) && probe.exitStatus() == QProcess::NormalExit &&
            probe.exitCode() == 0)
            return candidate;
    }
    return QString();
}

} // namespace

// A wall of known length printed at 1:50 is its length divided by fifty on
// the PDF's paper, read back as pixels of the page at a known resolution.
TEST(Cli, PrintAtScaleHasThePlanAtItsSizeOnPaper)
{
    const QString house = SaveHouse("print.pvp", true);
    const QString pdf = Temp("print.pdf");
    const SRun run = RunCli({"print", house, "-o", pdf, "--scale", "1:50", "--paper", "A4"});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    ASSERT_TRUE(ReadAll(pdf).startsWith("%PDF"));
    EXPECT_EQ(RunCli({"print", house, "-o", Temp("bad.pdf"), "--paper", "B9"}).exitCode, 2);
    EXPECT_EQ(RunCli({"print", house, "-o", Temp("bad.png")}).exitCode, 2);
    const SRun floors = RunCli({"print", house, "-o", Temp("floors.pdf"), "--all-floors", "--landscape"});
    ASSERT_EQ(floors.exitCode, 0) << floors.err.toStdString();
    EXPECT_EQ(ReadAll(Temp("floors.pdf")).count("/Type /Page\n"), 2);
    // Pages are numbered through the whole printout.
    const SRun second = RunCli({"print", house, "-o", Temp("second.pdf"), "--all-floors", "--pages", "2"});
    ASSERT_EQ(second.exitCode, 0) << second.err.toStdString();
    EXPECT_EQ(ReadAll(Temp("second.pdf")).count("/Type /Page\n"), 1);
    EXPECT_EQ(RunCli({"print", house, "-o", Temp("none.pdf"), "--pages", "7"}).exitCode, 1);
    EXPECT_FALSE(QFileInfo::exists(Temp("none.pdf")));
    EXPECT_EQ(RunCli({"print", house, "-o", Temp("none.pdf"), "--pages", "one"}).exitCode, 2);

    // A header and footer layout: a page of its own with a label above the
    // area that the plan goes into.
    {
        CVxProject layout;
        layout.m_width = 21;
        layout.m_height = 29.7;
        // As the layout editor makes a sheet: a centimetre is as many
        // pixels as on a 96 dpi screen.
        layout.m_baseZoom = 96 / 2.54;
        layout.GetFloor()->m_walls.RemoveAll();
        CVxPart area = Box(1.5, 4, 0xFFFFFF);
        area.type = ptPageArea;
        area.width = 18;
        area.height = 22;
        CVxPart head = Box(2, 1, 0xFFFFFF);
        head.type = ptLabel;
        head.caption = L"Plan by Anna Berg";
        head.width = 12;
        head.height = 1.5;
        head.CreateFont()->m_size = 14;
        *layout.GetFloor()->GetNewObject() = area;
        *layout.GetFloor()->GetNewObject() = head;
        ASSERT_TRUE(layout.SaveToFile(CVxStringW(Temp("layout.pvp")), false, nullptr));
    }
    const SRun headed = RunCli({"print", house, "-o", Temp("headed.pdf"), "--layout", Temp("layout.pvp")});
    ASSERT_EQ(headed.exitCode, 0) << headed.err.toStdString();
    const QString pdftotext = Tool(QStringLiteral("pdftotext"));
    if (!pdftotext.isEmpty()) {
        QProcess text;
        text.start(pdftotext, {Temp("headed.pdf"), QStringLiteral("-")});
        ASSERT_TRUE(text.waitForFinished(60000));
        EXPECT_TRUE(text.readAllStandardOutput().simplified().contains("Plan by Anna Berg"));
    }

    const QString pdftoppm = Tool(QStringLiteral("pdftoppm"));
    if (pdftoppm.isEmpty())
        GTEST_SKIP() << "pdftoppm is not installed";
    constexpr int kDpi = 200;
    QProcess raster;
    raster.start(pdftoppm, {QStringLiteral("-r"), QString::number(kDpi), QStringLiteral("-png"),
                            QStringLiteral("-singlefile"), pdf, Temp("print-page")});
    ASSERT_TRUE(raster.waitForFinished(60000));
    const QImage page(Temp("print-page.png"));
    ASSERT_FALSE(page.isNull());
    // A4 portrait.
    EXPECT_NEAR(page.width(), 210 / 25.4 * kDpi, 1.5);
    EXPECT_NEAR(page.height(), 297 / 25.4 * kDpi, 1.5);
    // The longest dark run across the page is the outside of the top wall:
    // 600 cm of room and two walls of 10 cm.
    int longest = 0;
    for (int y = 0; y < page.height(); ++y) {
        int run = 0;
        for (int x = 0; x < page.width(); ++x) {
            run = qGray(page.pixel(x, y)) < 80 ? run + 1 : 0;
            longest = std::max(longest, run);
        }
    }
    const double expected = 620.0 / 50 / 2.54 * kDpi;
    EXPECT_NEAR(longest, expected, 3.0) << "pixels at " << kDpi << " dpi";
}

// The plan as a CAD file that a CAD library opens and audits without
// errors, with each kind of drawing on its layer where the plan has it.
TEST(Cli, RenderDxfOpensInCadWithPlanOnLayers)
{
    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    CVxProject& project = core->GetProject();
    project.m_width = 600;
    project.m_height = 300;
    CVxFloor* floor = project.GetFloor();
    floor->m_walls.SetAsBasicRect(600, 300, 10, 250);
    floor->m_walls.GetNewWall()->Set(400, 0, 400, 300, CVxWall::ALIGN_CENTER, 10, 250, 250, true, false);
    *floor->GetNewObject() = Box(450, 100, kBoxColour);
    CVxPart* label = floor->GetNewObject();
    *label = Box(100, 120, 0xFFFFFF);
    label->type = ptLabel;
    label->caption = L"Living";
    core->UpdateFloorPlan();
    ASSERT_TRUE(core->DoMainToolbarButtonAction(VX_TB_DIMENSION_ALL_WALLS));
    const QString path = Temp("dxf.pvp");
    ASSERT_TRUE(project.SaveToFile(CVxStringW(path), true, nullptr));
    core->InitProject();

    const QString dxf = Temp("plan.dxf");
    const SRun run = RunCli({"render", path, "-o", dxf});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    ASSERT_TRUE(ReadAll(dxf).startsWith("  0\nSECTION"));

    const QString python = PythonWithEzdxf();
    if (python.isEmpty())
        GTEST_SKIP() << "no Python with ezdxf";
    const char* script = R"(
import json, sys, ezdxf
from ezdxf import bbox
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
msp = doc.modelspace()
layers = {}
for e in msp:
    layer = layers.setdefault(e.dxf.layer, {"count": 0, "types": {}, "texts": []})
    layer["count"] += 1
    layer["types"][e.dxftype()] = layer["types"].get(e.dxftype(), 0) + 1
    if e.dxftype() == "TEXT":
        layer["texts"].append(e.dxf.text)
for name, layer in layers.items():
    ext = bbox.extents(msp.query('*[layer=="%s"]' % name))
    layer["ext"] = [ext.extmin.x, ext.extmin.y, ext.extmax.x, ext.extmax.y]
print(json.dumps({"errors": len(auditor.errors), "version": doc.dxfversion, "layers": layers}))
)";
    QProcess check;
    check.start(python, {QStringLiteral("-c"), QString::fromLatin1(script), dxf});
    ASSERT_TRUE(check.waitForFinished(60000));
    ASSERT_EQ(check.exitCode(), 0) << check.readAllStandardError().toStdString();
    const QJsonObject result = QJsonDocument::fromJson(check.readAllStandardOutput()).object();
    EXPECT_EQ(result["errors"].toInt(), 0);
    EXPECT_EQ(result["version"].toString(), QStringLiteral("AC1009"));
    const QJsonObject layers = result["layers"].toObject();
    const auto extents = [&](const char* name) {
        QJsonArray ext = layers[QLatin1String(name)].toObject()["ext"].toArray();
        return std::vector<double>{ext[0].toDouble(), ext[1].toDouble(), ext[2].toDouble(),
                                   ext[3].toDouble()};
    };
    // Plan units, y upwards: the walls stand outside the room's 600 by 300.
    const std::vector<double> walls = extents("WALLS");
    const std::vector<double> wallsExpected{-10, -310, 610, 10};
    for (size_t i = 0; i < 4; ++i)
        EXPECT_NEAR(walls[i], wallsExpected[i], 0.5) << "wall extent " << i;
    const QJsonObject rooms = layers["ROOMS"].toObject();
    EXPECT_EQ(rooms["types"].toObject()["POLYLINE"].toInt(), 2);
    const std::vector<double> roomExtents = extents("ROOMS");
    EXPECT_NEAR(roomExtents[0], 0, 0.5);
    EXPECT_NEAR(roomExtents[2], 600, 0.5);
    const std::vector<double> box = extents("OBJECTS");
    EXPECT_NEAR(box[0], 450, 0.5);
    EXPECT_NEAR(box[3], -100, 0.5);
    const QJsonObject dimensions = layers["DIMENSIONS"].toObject();
    EXPECT_GE(dimensions["count"].toInt(), 5);
    EXPECT_FALSE(dimensions["texts"].toArray().isEmpty());
    EXPECT_TRUE(layers["TEXT"].toObject()["texts"].toArray().contains(QStringLiteral("Living")));
}

// The samples that ship with the program, through every verb.
TEST(Cli, SamplesGoThroughEveryVerb)
{
    const QDir samples(QStringLiteral(PLAVENO_SOURCE_DIR "/samples"));
    const QStringList files = samples.entryList({"*.pvp"}, QDir::Files);
    ASSERT_GE(files.size(), 3);
    for (const QString& name : files) {
        SCOPED_TRACE(name.toStdString());
        const QString path = samples.filePath(name);
        const QJsonObject info = InfoJson(path);
        const QJsonArray floors = info["floors"].toArray();
        ASSERT_FALSE(floors.isEmpty());
        int rooms = 0;
        int objects = 0;
        for (const QJsonValue& floor : floors) {
            EXPECT_GT(floor["walls"].toInt(), 3);
            rooms += floor["rooms"].toArray().size();
            for (const QJsonValue& kind : floor["objects"].toArray())
                objects += kind["count"].toInt();
        }
        EXPECT_GT(rooms, 0);
        EXPECT_GT(objects, 5);
        EXPECT_TRUE(info["missingFiles"].toArray().isEmpty());
        // Every room of the ground floor has its row in the statistics.
        const SRun stats = RunCli({"stats", path});
        ASSERT_EQ(stats.exitCode, 0) << stats.err.toStdString();
        EXPECT_EQ(stats.out.count("\tDimensions\t"), floors[0]["rooms"].toArray().size());

        const QString png = Temp(name + ".png");
        ASSERT_EQ(RunCli({"render", path, "-o", png, "--width", "800"}).exitCode, 0);
        const QImage image(png);
        ASSERT_EQ(image.width(), 800);
        int dark = 0;
        for (int y = 0; y < image.height(); y += 2)
            for (int x = 0; x < image.width(); x += 2)
                dark += qGray(image.pixel(x, y)) < 80;
        EXPECT_GT(dark, 200) << "walls and symbols are drawn";
        const QString thumb = Temp(name + ".thumb.png");
        ASSERT_EQ(RunCli({"thumbnail", path, "-o", thumb, "--size", "128"}).exitCode, 0);
        EXPECT_FALSE(QImage(thumb).isNull());
        const QString copy = Temp("copy-" + name);
        ASSERT_EQ(RunCli({"convert", path, copy}).exitCode, 0);
        QJsonObject again = InfoJson(copy);
        QJsonObject before = info;
        for (QJsonObject* object : {&again, &before}) {
            object->remove("file");
            object->remove("embeddedFiles");
        }
        EXPECT_EQ(again, before);
    }
}

TEST(Cli, ConvertPlainToCompressedKeepsTheHouseAndScalesUnits)
{
    const QString plain = SaveHouse("plain.pvp", false);
    ASSERT_FALSE(ReadAll(plain).contains("Compression=zlib"));
    const QString packed = Temp("packed.pvp");
    const SRun run = RunCli({"convert", plain, packed});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_TRUE(ReadAll(packed).contains("Compression=zlib"));
    QJsonObject before = InfoJson(plain);
    QJsonObject after = InfoJson(packed);
    before.remove("file");
    after.remove("file");
    EXPECT_EQ(before, after);

    const QString metres = Temp("metres.pvp");
    ASSERT_EQ(RunCli({"convert", plain, metres, "--unit", "m"}).exitCode, 0);
    const QJsonObject converted = InfoJson(metres);
    EXPECT_EQ(converted["unit"].toString(), "m");
    EXPECT_NEAR(converted["size"]["width"].toDouble(), 6, 1e-6);
    EXPECT_NEAR(converted["size"]["height"].toDouble(), 3, 1e-6);
    EXPECT_EQ(converted["floors"], after["floors"]) << "areas are told in square metres either way";

    // A single-object file is an ordinary project under another name, and
    // comes back unchanged.
    const QString object = Temp("object.pvo");
    ASSERT_EQ(RunCli({"convert", plain, object}).exitCode, 0);
    const QString back = Temp("back.pvp");
    ASSERT_EQ(RunCli({"convert", object, back}).exitCode, 0);
    QJsonObject again = InfoJson(back);
    again.remove("file");
    EXPECT_EQ(again, after);
    const QString library = Temp("library.pvo");
    WriteAll(library, "[LibSetup]\r\nFileVersion=1020\r\nLibName=Mine\r\n[Part0]\r\nType=1\r\n");
    ExpectFileError(RunCli({"info", library}), library);
}

TEST(Cli, ConvertTakesEveryUnitAndComesBackToTheSameSize)
{
    // The studio's walls are centred 10 cm inside its room rectangle.
    const QString studio = QStringLiteral(PLAVENO_SOURCE_DIR "/samples/Studio.pvp");
    const struct
    {
        const char* name;
        double cm;
    } units[] = {{"mm", 0.1},   {"in", 2.54}, {"dm", 10},    {"ft", 30.48},
                 {"yd", 91.44}, {"m", 100},   {"km", 100000}};
    const QString converted = Temp("studio-unit.pvp");
    const QString back = Temp("studio-back.pvp");
    for (const auto& unit : units) {
        SCOPED_TRACE(unit.name);
        ASSERT_EQ(RunCli({"convert", studio, converted, "--unit", unit.name}).exitCode, 0);
        const QJsonObject info = InfoJson(converted);
        EXPECT_EQ(info["unit"].toString(), unit.name);
        EXPECT_NEAR(info["size"]["width"].toDouble(), 670 / unit.cm, 1e-4);
        EXPECT_NEAR(info["size"]["height"].toDouble(), 500 / unit.cm, 1e-4);
        ASSERT_EQ(RunCli({"convert", converted, back, "--unit", "cm"}).exitCode, 0);
        const QJsonObject again = InfoJson(back);
        EXPECT_DOUBLE_EQ(again["size"]["width"].toDouble(), 670);
        EXPECT_DOUBLE_EQ(again["size"]["height"].toDouble(), 500);
    }
}

TEST(Cli, DamagedMissingAndEmptyFilesAreOneLineErrors)
{
    const QString house = SaveHouse("whole.pvp", true);
    const QByteArray whole = ReadAll(house);
    const QString truncated = Temp("truncated.pvp");
    WriteAll(truncated, whole.left(whole.size() / 2));
    const QString empty = Temp("empty.pvp");
    WriteAll(empty, QByteArray());
    const QString text = Temp("notes.pvp");
    WriteAll(text, "shopping list\nmilk\n");
    const QString binary = Temp("noise.pvp");
    QByteArray noise;
    for (int i = 0; i < 5000; ++i)
        noise += static_cast<char>((i * 7919) % 251);
    WriteAll(binary, noise);
    const QString hostile = Temp("hostile.pvp");
    WriteAll(hostile, "[Room]\r\nFileVersion=1020\r\nCompression=zlib\r\n[File]\r\nName=../../x\r\n"
                      "DataSize=4000000000\r\nUncpSize=4000000000\r\n\r\nxx");
    // A plain project cut inside its last floor, or just before its closing
    // section, would read as a smaller project.
    const QByteArray plain = ReadAll(SaveHouse("plain-whole.pvp", false));
    const QString cutFloor = Temp("cut-floor.pvp");
    WriteAll(cutFloor, plain.left(plain.lastIndexOf("[EndFloor]")));
    const QString cutEnd = Temp("cut-end.pvp");
    WriteAll(cutEnd, plain.left(plain.indexOf("[PictureResizeCache]")));
    for (const QString& bad :
         {Temp("missing.pvp"), empty, text, binary, truncated, hostile, cutFloor, cutEnd}) {
        SCOPED_TRACE(bad.toStdString());
        ExpectFileError(RunCli({"info", bad}), bad);
        ExpectFileError(RunCli({"render", bad, "-o", Temp("bad.png")}), bad);
        ExpectFileError(RunCli({"thumbnail", bad, "-o", Temp("bad.png")}), bad);
        ExpectFileError(RunCli({"convert", bad, Temp("bad.pvp")}), bad);
    }
    EXPECT_FALSE(QFile::exists(Temp("bad.png")));
    EXPECT_FALSE(QFile::exists(Temp("bad.pvp")));
}

TEST(Cli, UnwritableOutputLeavesNoFile)
{
    const QString house = SaveHouse("out.pvp", true);
    const QString folder = Temp("target.png");
    QDir().mkpath(folder);
    for (const QString& out : {Temp("no/such/folder/plan.png"), folder}) {
        SCOPED_TRACE(out.toStdString());
        ExpectFileError(RunCli({"render", house, "-o", out}), out);
        ExpectFileError(RunCli({"thumbnail", house, "-o", out}), out);
    }
    ExpectFileError(RunCli({"convert", house, Temp("no/such/folder/x.pvp")}), Temp("no/such/folder/x.pvp"));
    const QStringList left = QDir(VxTestTempFolder().ToQString()).entryList({"*saving*"}, QDir::Files);
    EXPECT_TRUE(left.isEmpty()) << left.join(' ').toStdString();
    EXPECT_TRUE(QDir(folder).isEmpty());
}

TEST(Cli, LibraryListsTheCatalogueAndItsCompressedForm)
{
    // The program's own library: the catalogue beside the tool.
    const SRun listed = RunCli({"library", "--json"});
    ASSERT_EQ(listed.exitCode, 0) << listed.err.toStdString();
    const QJsonObject library = QJsonDocument::fromJson(listed.out).object();
    EXPECT_EQ(library.value("objects").toInt(), 293);
    const QJsonArray pages = library.value("pages").toArray();
    ASSERT_EQ(pages.size(), 15);
    EXPECT_EQ(pages[2].toObject().value("title").toString(), QStringLiteral("Doors and Windows"));
    for (int i = 1; i < pages.size(); ++i)
        EXPECT_GT(pages[i].toObject().value("objects").toInt(), 0) << i;
    const QJsonArray items = library.value("items").toArray();
    ASSERT_EQ(items.size(), 293);
    bool chair = false;
    for (const QJsonValue& item : items)
        chair = chair || (item.toObject().value("number").toInt() == 39 &&
                          item.toObject().value("name").toString() == QStringLiteral("Chair") &&
                          item.toObject().value("height").toDouble() == 90);
    EXPECT_TRUE(chair);

    // The compressed form lists as the plain one.
    const QString source = QStringLiteral(PLAVENO_SOURCE_DIR "/data/Library.pvl");
    const QString packed = Temp("catalogue.pvlz");
    const SRun written = RunCli({"compress-library", source, packed});
    ASSERT_EQ(written.exitCode, 0) << written.err.toStdString();
    EXPECT_LT(QFileInfo(packed).size(), QFileInfo(source).size() / 4);
    const SRun plainText = RunCli({"library", source});
    const SRun packedText = RunCli({"library", packed});
    EXPECT_EQ(plainText.exitCode, 0);
    EXPECT_EQ(plainText.out, packedText.out);
    EXPECT_TRUE(plainText.out.startsWith("Library Standard, version 1: 293 objects on 15 pages"));

    // Files that are no library.
    const QString text = Temp("notalibrary.pvl");
    WriteAll(text, "just words\n");
    ExpectFileError(RunCli({"library", text}), text);
    ExpectFileError(RunCli({"compress-library", text, Temp("out.pvlz")}), text);
    EXPECT_FALSE(QFileInfo::exists(Temp("out.pvlz")));
    EXPECT_EQ(RunCli({"library", source, packed}).exitCode, 2);
    EXPECT_EQ(RunCli({"compress-library", source}).exitCode, 2);

    // The 3D prototype library as one zlib stream that inflates to the text.
    const QString protos = QStringLiteral(PLAVENO_SOURCE_DIR "/data/library.wrl");
    const QString packedProtos = Temp("library_cs.wrl");
    const SRun deflated = RunCli({"compress-protos", protos, packedProtos});
    ASSERT_EQ(deflated.exitCode, 0) << deflated.err.toStdString();
    const QByteArray plain = ReadAll(protos);
    const QByteArray stream = ReadAll(packedProtos);
    QByteArray inflated(plain.size(), '\0');
    uLongf inflatedSize = static_cast<uLongf>(inflated.size());
    ASSERT_EQ(uncompress(reinterpret_cast<Bytef*>(inflated.data()), &inflatedSize,
                         reinterpret_cast<const Bytef*>(stream.constData()),
                         static_cast<uLong>(stream.size())),
              Z_OK);
    EXPECT_EQ(inflatedSize, static_cast<uLongf>(plain.size()));
    EXPECT_TRUE(inflated == plain);
    EXPECT_LT(stream.size(), plain.size() / 4);
    ExpectFileError(RunCli({"compress-protos", text, Temp("out_cs.wrl")}), text);
    EXPECT_FALSE(QFileInfo::exists(Temp("out_cs.wrl")));
    EXPECT_EQ(RunCli({"compress-protos", protos}).exitCode, 2);
}
