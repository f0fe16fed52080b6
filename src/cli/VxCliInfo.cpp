// info: what a project holds, as text for people or JSON for scripts.

#include "VxCli.h"

#include "CVxAppCore.h"
#include "CVxFloorPlan.h"
#include "CVxPart.h"
#include "CVxUnits.h"
#include "VxNumbers.h"

#include <QDir>
#include <QFileInfo>

#include <cmath>
#include <cstdio>
#include <map>

namespace {

struct SVxRoomInfo
{
    QString name;
    double area = 0;
    double perimeter = 0;
};

struct SVxFloorInfo
{
    int walls = 0;
    int openings = 0;
    std::vector<SVxRoomInfo> rooms;
    // Sorted by type name, so both outputs list them in a fixed order.
    std::map<QString, int> objects;
};

SVxFloorInfo DescribeFloor(CVxFloor& floor, int unit, int statUnit)
{
    SVxFloorInfo info;
    info.walls = floor.m_walls.GetWallCount();
    info.openings = floor.m_walls.GetHoleCount();
    floor.m_walls.RebuildWalls();
    CVxFloorPlan plan;
    plan.CreatePlan(floor, unit);
    // Rooms are told in the statistical unit: square metres for a plan in
    // centimetres.
    const double factor = CVxUnits::GetUnitCal(unit) / CVxUnits::GetUnitCal(statUnit);
    for (int i = 0; i < plan.GetRegionCount(); ++i) {
        const CVxFloorRegion* region = plan.SafeGetRegion(i);
        SVxRoomInfo room;
        room.name = region->name.ToQString();
        room.area = region->GetAreaWithoutHoles() * factor * factor;
        room.perimeter = region->innerPolygon.GetPerimeter() * factor;
        info.rooms.push_back(room);
    }
    for (const CVxPart& part : floor.m_objects)
        if (part.inUse)
            ++info.objects[CVxPart::TypeNameFromID(part.type).ToQString()];
    return info;
}

// Numbers to four decimals, which is more than any plan is drawn to, and
// no trailing zeros; JSON has no infinity, so those become null.
QString Number(double value)
{
    if (!std::isfinite(value))
        return QStringLiteral("null");
    const double rounded = std::round(value * 10000) / 10000;
    return QString::number(rounded == 0 ? 0.0 : rounded, 'g', 15);
}

// A length for people: to the project's decimals, as the program writes
// lengths on screen (feet and inches where the project asks for them), with
// its unit.
QString Length(double value, int unit, const CVxProject& project)
{
    const double factor = project.m_decimalPrecision == 1 ? 10 : 100;
    CVxStringW text = VX_DblFormat(std::round(value * factor) / factor, VX_DF_FEET, true, unit);
    if (unit != CVxUnits::UNIT_INCH)
        text += L" ";
    if (!text.EndsWith(L"\""))
        text += CVxUnits::GetUnitText(unit);
    return text.ToQString();
}

QString Count(int count, const char* one, const char* many)
{
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

QString JsonString(const QString& text)
{
    QString out = QStringLiteral("\"");
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '"':
            out += QStringLiteral("\\\"");
            break;
        case '\\':
            out += QStringLiteral("\\\\");
            break;
        case '\n':
            out += QStringLiteral("\\n");
            break;
        case '\r':
            out += QStringLiteral("\\r");
            break;
        case '\t':
            out += QStringLiteral("\\t");
            break;
        default:
            if (c.unicode() < 0x20)
                out += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
            else
                out += c;
        }
    }
    return out + QLatin1Char('"');
}

// Text from a project as a terminal shows it: control characters, which
// could move the cursor, retitle the window or hide lines, are shown as
// escapes instead of being sent.
QString Printable(const QString& text)
{
    QString out;
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if (code < 0x20 || (code >= 0x7F && code < 0xA0))
            out += QStringLiteral("\\x%1").arg(static_cast<unsigned>(code), 2, 16, QLatin1Char('0'));
        else
            out += c;
    }
    return out;
}

QString JsonList(const QStringList& items, const QString& indent)
{
    if (items.isEmpty())
        return QStringLiteral("[]");
    QString out = QStringLiteral("[\n");
    for (int i = 0; i < items.size(); ++i)
        out += indent + QStringLiteral("  ") + items[i] + (i + 1 < items.size() ? ",\n" : "\n");
    return out + indent + QLatin1Char(']');
}

} // namespace

int VxCliInfo(const std::vector<std::string>& args)
{
    CVxCliArgs parsed;
    std::string error;
    if (!parsed.Parse(args, {}, {"--json"}, error))
        return VxCliUsageError("info", error);
    if (parsed.Positional().size() != 1)
        return VxCliUsageError("info", "expects one project file");
    const QString path = QString::fromLocal8Bit(parsed.Positional()[0].c_str());

    CVxCliProgress progress(path);
    SVxCliLoaded loaded;
    if (!VxCliLoadProject(path, loaded))
        return kVxCliFailed;
    progress.Step("finding rooms");

    CVxProject& project = VX_GetCore()->GetProject();
    const int unit = project.m_unit;
    const int statUnit = project.GetStatisticalUnit();
    std::vector<SVxFloorInfo> floors;
    for (CVxFloor* floor : project.m_floors)
        floors.push_back(DescribeFloor(*floor, unit, statUnit));
    // The files a container brought along lie unpacked in the project's
    // folder beside its own text; files taken in since loading are listed by
    // the project.
    QStringList stored;
    if (!project.m_storagePath.IsEmpty()) {
        const QDir folder(project.m_storagePath.ToQString());
        for (const QString& name : folder.entryList(QDir::Files, QDir::Name))
            if (QFileInfo(name).suffix().toLower() != QLatin1String("pvp"))
                stored.push_back(name);
    }
    for (const auto& [source, storedPath] : project.m_storedFiles) {
        const QString name = QFileInfo(storedPath.ToQString()).fileName();
        if (!stored.contains(name))
            stored.push_back(name);
    }
    QStringList missing;
    for (const CVxMissingFileInfo& file : loaded.missing)
        missing.push_back(file.filePath.ToQString());

    QString out;
    if (!parsed.Has("--json")) {
        out += QStringLiteral("File:           %1\n").arg(Printable(path));
        out += QStringLiteral("File version:   %1\n").arg(loaded.fileVersion);
        out += QStringLiteral("Unit:           %1\n").arg(QLatin1String(VxCliUnitName(unit)));
        out += QStringLiteral("Size:           %1 x %2\n")
                   .arg(Length(project.m_width, unit, project), Length(project.m_height, unit, project));
        out += QStringLiteral("Floors:         %1\n").arg(floors.size());
        for (size_t i = 0; i < floors.size(); ++i) {
            const SVxFloorInfo& floor = floors[i];
            out += QStringLiteral("Floor %1: %2, %3, %4\n")
                       .arg(i + 1)
                       .arg(Count(floor.walls, "wall", "walls"),
                            Count(floor.openings, "floor opening", "floor openings"),
                            Count(static_cast<int>(floor.rooms.size()), "room", "rooms"));
            for (const SVxRoomInfo& room : floor.rooms)
                out += QStringLiteral("  Room %1: %2, perimeter %3\n")
                           .arg(room.name.isEmpty() ? QStringLiteral("(unnamed)") : Printable(room.name),
                                VX_DblFormatAreaValue(room.area, statUnit).ToQString(),
                                Length(room.perimeter, statUnit, project));
            for (const auto& [type, count] : floor.objects)
                out += QStringLiteral("  Objects %1: %2\n").arg(type).arg(count);
        }
        out += QStringLiteral("Embedded files: %1\n").arg(stored.size());
        for (const QString& name : stored)
            out += QStringLiteral("  %1\n").arg(Printable(name));
        out += QStringLiteral("Missing files:  %1\n").arg(missing.size());
        for (const QString& name : missing)
            out += QStringLiteral("  %1\n").arg(Printable(name));
    } else {
        QStringList floorItems;
        for (size_t i = 0; i < floors.size(); ++i) {
            const SVxFloorInfo& floor = floors[i];
            QStringList rooms;
            for (const SVxRoomInfo& room : floor.rooms)
                rooms.push_back(QStringLiteral("{\"name\": %1, \"area\": %2, \"perimeter\": %3}")
                                    .arg(JsonString(room.name), Number(room.area), Number(room.perimeter)));
            QStringList objects;
            for (const auto& [type, count] : floor.objects)
                objects.push_back(
                    QStringLiteral("{\"type\": %1, \"count\": %2}").arg(JsonString(type)).arg(count));
            floorItems.push_back(QStringLiteral("{\n"
                                                "      \"index\": %1,\n"
                                                "      \"walls\": %2,\n"
                                                "      \"floorOpenings\": %3,\n"
                                                "      \"rooms\": %4,\n"
                                                "      \"objects\": %5\n"
                                                "    }")
                                     .arg(i + 1)
                                     .arg(floor.walls)
                                     .arg(floor.openings)
                                     .arg(JsonList(rooms, QStringLiteral("      ")),
                                          JsonList(objects, QStringLiteral("      "))));
        }
        QStringList storedItems;
        for (const QString& name : stored)
            storedItems.push_back(JsonString(name));
        QStringList missingItems;
        for (const QString& name : missing)
            missingItems.push_back(JsonString(name));
        out += QStringLiteral("{\n");
        out += QStringLiteral("  \"file\": %1,\n").arg(JsonString(path));
        out += QStringLiteral("  \"fileVersion\": %1,\n").arg(loaded.fileVersion);
        out += QStringLiteral("  \"unit\": \"%1\",\n").arg(QLatin1String(VxCliUnitName(unit)));
        out += QStringLiteral("  \"size\": {\"width\": %1, \"height\": %2},\n")
                   .arg(Number(project.m_width), Number(project.m_height));
        out += QStringLiteral("  \"statisticalUnit\": \"%1\",\n").arg(QLatin1String(VxCliUnitName(statUnit)));
        out += QStringLiteral("  \"floors\": %1,\n").arg(JsonList(floorItems, QStringLiteral("  ")));
        out += QStringLiteral("  \"embeddedFiles\": %1,\n").arg(JsonList(storedItems, QStringLiteral("  ")));
        out += QStringLiteral("  \"missingFiles\": %1\n").arg(JsonList(missingItems, QStringLiteral("  ")));
        out += QStringLiteral("}\n");
    }
    const QByteArray bytes = out.toUtf8();
    fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    return kVxCliOk;
}
