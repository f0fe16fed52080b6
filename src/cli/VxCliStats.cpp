// stats: the statistics table of one floor, as the program copies it to the
// clipboard, or the same figures as JSON.

#include "VxCli.h"

#include "CVxAppCore.h"
#include "CVxUnits.h"

#include <QStringList>

#include <cstdio>

namespace {

QString JsonText(const QString& text)
{
    QString out = QStringLiteral("\"");
    for (const QChar c : text) {
        const char16_t code = c.unicode();
        if (code == '"' || code == '\\')
            out += QLatin1Char('\\') + c;
        else if (code < 0x20)
            out += QStringLiteral("\\u%1").arg(static_cast<unsigned>(code), 4, 16, QLatin1Char('0'));
        else
            out += c;
    }
    return out + QLatin1Char('"');
}

// A figure of the table, which already has two decimals at most.
QString JsonFigure(const QString& cell)
{
    bool ok = false;
    const double value = cell.toDouble(&ok);
    return ok ? QString::number(value, 'g', 15) : QStringLiteral("null");
}

QString Cell(const QStringList& cells, int column)
{
    return column < cells.size() ? cells[column] : QString();
}

// One row of wall or totals figures: columns 3 to 9 of the table.
QString FiguresObject(const QStringList& cells, bool withSize)
{
    QString out = QStringLiteral("{");
    if (withSize)
        out += QStringLiteral("\"width\": %1, ").arg(JsonFigure(Cell(cells, 2)));
    out += QStringLiteral("\"length\": %1, \"height\": %2, \"area\": %3, \"doorsAndWindows\": %4, "
                          "\"openings\": %5, \"usefulArea\": %6}")
               .arg(JsonFigure(Cell(cells, 3)), JsonFigure(Cell(cells, 4)), JsonFigure(Cell(cells, 5)),
                    JsonFigure(Cell(cells, 6)), JsonFigure(Cell(cells, 7)), JsonFigure(Cell(cells, 8)));
    return out;
}

// The table, room by room: the room's row, its wall runs and its totals,
// with an empty line after each room.
QString TableToJson(const QString& table, const QString& path, int floor, int statUnit)
{
    const QStringList lines = table.split(QStringLiteral("\r\n"));
    QStringList rooms;
    QStringList block;
    auto flush = [&]() {
        if (block.size() < 2) {
            block.clear();
            return;
        }
        const QStringList room = block.front().split(QLatin1Char('\t'));
        const QStringList totals = block.back().split(QLatin1Char('\t'));
        QStringList walls;
        for (int i = 1; i + 1 < block.size(); ++i)
            walls.push_back(QStringLiteral("        ") +
                            FiguresObject(block[i].split(QLatin1Char('\t')), false));
        QString item = QStringLiteral("    {\n      \"name\": %1,\n").arg(JsonText(Cell(room, 0)));
        item += QStringLiteral("      \"width\": %1,\n      \"length\": %2,\n      \"area\": %3,\n"
                               "      \"floorOpenings\": %4,\n      \"usefulArea\": %5,\n")
                    .arg(JsonFigure(Cell(room, 2)), JsonFigure(Cell(room, 3)), JsonFigure(Cell(room, 5)),
                         JsonFigure(Cell(room, 7)), JsonFigure(Cell(room, 8)));
        item += walls.isEmpty() ? QStringLiteral("      \"walls\": [],\n")
                                : QStringLiteral("      \"walls\": [\n%1\n      ],\n").arg(walls.join(",\n"));
        item += QStringLiteral("      \"totals\": %1\n    }").arg(FiguresObject(totals, true));
        rooms.push_back(item);
        block.clear();
    };
    // The first line is the header.
    for (int i = 1; i < lines.size(); ++i) {
        if (lines[i].isEmpty())
            flush();
        else
            block.push_back(lines[i]);
    }
    flush();
    QString out = QStringLiteral("{\n");
    out += QStringLiteral("  \"file\": %1,\n").arg(JsonText(path));
    out += QStringLiteral("  \"floor\": %1,\n").arg(floor);
    out += QStringLiteral("  \"statisticalUnit\": \"%1\",\n").arg(QLatin1String(VxCliUnitName(statUnit)));
    out += rooms.isEmpty() ? QStringLiteral("  \"rooms\": []\n")
                           : QStringLiteral("  \"rooms\": [\n%1\n  ]\n").arg(rooms.join(",\n"));
    out += QStringLiteral("}\n");
    return out;
}

} // namespace

int VxCliStats(const std::vector<std::string>& args)
{
    CVxCliArgs parsed;
    std::string error;
    if (!parsed.Parse(args, {"--floor"}, {"--json"}, error))
        return VxCliUsageError("stats", error);
    if (parsed.Positional().size() != 1)
        return VxCliUsageError("stats", "expects one project file");
    int floor = 1;
    if (parsed.Has("--floor")) {
        bool ok = false;
        floor = QString::fromStdString(parsed.Value("--floor")).toInt(&ok);
        if (!ok || floor < 1 || floor > 10000)
            return VxCliUsageError("stats", "--floor needs a floor number from 1");
    }
    const QString path = QString::fromLocal8Bit(parsed.Positional()[0].c_str());

    SVxCliLoaded loaded;
    if (!VxCliLoadProject(path, loaded))
        return kVxCliFailed;
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    if (floor > project.GetFloorCount())
        return VxCliFail(path,
                         QStringLiteral("has %1 floor(s), not %2").arg(project.GetFloorCount()).arg(floor));
    project.m_currentFloor = floor - 1;
    // Doors and windows find their walls as they do when the program opens
    // the project; the wall figures count them by their wall.
    project.ResnapAllParts();
    core->UpdateFloorPlan();

    const QString table = core->GetFloorStatistics().ToQString();
    const QString out =
        parsed.Has("--json") ? TableToJson(table, path, floor, project.GetStatisticalUnit()) : table;
    const QByteArray bytes = out.toUtf8();
    fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    return kVxCliOk;
}
