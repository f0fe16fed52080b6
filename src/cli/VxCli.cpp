#include "VxCli.h"

#include "CVxAppCore.h"
#include "CVxIniFileReader.h"
#include "CVxProjectFileCheck.h"
#include "CVxUnits.h"
#include "VxSafeSave.h"

#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

long long NowMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

bool Refuse(const QString& file, const QString& reason)
{
    VxCliFail(file, reason);
    return false;
}

} // namespace

const std::vector<SVxCliVerb>& VxCliVerbs()
{
    static const std::vector<SVxCliVerb> verbs = {
        {"info", "describe a project: size, floors, rooms, objects, files",
         "Usage: plaveno-cli info FILE [--json]\n"
         "\n"
         "Describes a project: file version, unit, size, and per floor the walls,\n"
         "floor openings, rooms with area and perimeter, and objects by type;\n"
         "then the files stored in the project and the files it refers to that\n"
         "could not be found.\n"
         "\n"
         "Options:\n"
         "  --json      machine-readable output with a fixed key order\n"
         "  -h, --help  show this help\n",
         VxCliInfo},
        {"render", "draw the plan of a floor to PNG, JPEG, SVG, PDF or DXF",
         "Usage: plaveno-cli render FILE -o OUT [options]\n"
         "\n"
         "Draws the plan of a floor as the main view shows it. The format follows\n"
         "OUT's extension: .png, .jpg/.jpeg, .svg or .pdf (vector), or .dxf for CAD\n"
         "programs: walls, rooms, objects, dimension lines and texts on layers of\n"
         "their own, in the project's unit.\n"
         "\n"
         "Options:\n"
         "  -o, --output OUT  the file to write\n"
         "  --floor N         the floor to draw, 1 for the ground floor (default 1)\n"
         "  --width PX        image width in pixels, the sheet fitted to it (default 1600)\n"
         "  --zoom Z          zoom as in the view, 1 for 100 % (instead of --width)\n"
         "  --bw              black and white\n"
         "  --no-grid         leave out the grid and its labels\n"
         "  --no-captions     leave out the captions of objects\n"
         "  --scale 1:N       PDF only: draw at that scale on the paper, over as many\n"
         "                    pages as the plan needs\n"
         "  --paper A4|A3|Letter  PDF only: the paper (default A4)\n"
         "  -h, --help        show this help\n",
         VxCliRender},
        {"print", "print the plan of a floor to PDF, at a scale, over pages",
         "Usage: plaveno-cli print FILE -o OUT.pdf [options]\n"
         "\n"
         "Prints as the program's print dialog does: the title, the plan at the\n"
         "chosen scale over as many pages as it needs, with crop marks where they\n"
         "join, the scale bar and the notes. Settings the project keeps for\n"
         "printing apply; the options below take their place.\n"
         "\n"
         "Options:\n"
         "  -o, --output OUT     the PDF file to write\n"
         "  --floor N            the floor to print, 1 for the ground floor (default 1)\n"
         "  --all-floors         every floor, one after the other\n"
         "  --scale 1:N          the scale on paper; without it the plan fits the page\n"
         "  --paper A4|A3|Letter the paper (default A4)\n"
         "  --landscape          the paper turned on its side\n"
         "  --pages LIST         only these pages, numbered from 1 through the\n"
         "                       printout, as 1-3,5\n"
         "  --layout FILE        a header and footer layout made in the program's\n"
         "                       Page Layout Editor, drawn around the plan\n"
         "  -h, --help           show this help\n",
         VxCliPrint},
        {"convert", "load and save a project again, in the compressed form",
         "Usage: plaveno-cli convert IN OUT [--unit UNIT]\n"
         "\n"
         "Loads a project of either form and saves it in the compressed form with\n"
         "the files it uses. An OUT ending in .pvo writes a single-object file, an\n"
         "ordinary project that object libraries take in.\n"
         "\n"
         "Options:\n"
         "  --unit UNIT  convert every length to the unit first: mm, cm, in, dm,\n"
         "               ft, yd, m or km\n"
         "  -h, --help   show this help\n",
         VxCliConvert},
        {"thumbnail", "draw the small picture of a project to PNG",
         "Usage: plaveno-cli thumbnail FILE -o OUT.png [--size N]\n"
         "\n"
         "Draws the picture of the project that project lists show.\n"
         "\n"
         "Options:\n"
         "  -o, --output OUT  the PNG file to write\n"
         "  --size N          width and height in pixels (default 512)\n"
         "  -h, --help        show this help\n",
         VxCliThumbnail},
        {"library", "list the pages and objects of the object library",
         "Usage: plaveno-cli library [FILE] [--json]\n"
         "\n"
         "Lists the pages of an object library with the number of objects on each,\n"
         "then every object: its library number, name, pages and size in\n"
         "centimetres (width x depth x height). Without FILE the library is the one\n"
         "the program loads: the catalogue beside it and the additional libraries.\n"
         "FILE may be a .pvl library of either form.\n"
         "\n"
         "Options:\n"
         "  --json      machine-readable output\n"
         "  -h, --help  show this help\n",
         VxCliLibrary},
        {"compress-library", "write an object library in the compressed form",
         "Usage: plaveno-cli compress-library IN OUT\n"
         "\n"
         "Reads the library IN and writes it to OUT in the compressed container,\n"
         "with the files its objects use; the build writes the catalogue so.\n"
         "OUT is read back and must hold the same objects and pages.\n"
         "\n"
         "Options:\n"
         "  -h, --help  show this help\n",
         VxCliCompressLibrary},
        {"compress-protos", "write the 3D prototype library in the zlib form of the viewer",
         "Usage: plaveno-cli compress-protos IN OUT\n"
         "\n"
         "Reads the VRML 2.0 prototype library IN (library.wrl) and writes it to OUT\n"
         "(library_cs.wrl) as one zlib stream, the form that the built-in viewer's\n"
         "scene inflates; the build writes it so. OUT must inflate to IN again.\n"
         "\n"
         "Options:\n"
         "  -h, --help  show this help\n",
         VxCliCompressProtos},
        {"stats", "the statistics table of a floor: rooms, wall runs and their areas",
         "Usage: plaveno-cli stats FILE [--floor N] [--json]\n"
         "\n"
         "Prints the table that the program copies to the clipboard: one row per\n"
         "room with its size, floor area, openings and useful area, one row per\n"
         "straight run of its walls, and the room's totals. Columns are divided by\n"
         "tabs, rows end in CR LF; figures are in the project's statistical unit.\n"
         "\n"
         "Options:\n"
         "  --floor N   the floor, 1 for the ground floor (default 1)\n"
         "  --json      the same figures as JSON, room by room\n"
         "  -h, --help  show this help\n",
         VxCliStats},
        {"export-3d", "write the 3D scene of a project as a VRML 2.0 file",
         "Usage: plaveno-cli export-3d FILE -o SCENE.wrl [--mode viewer|external] [--all-floors]\n"
         "\n"
         "Writes the scene that the 3D view shows: walls with their openings, floors,\n"
         "ceilings, objects, lights and viewpoints. The built-in viewer's form holds\n"
         "the proto library; the external form refers to library.wrl beside the\n"
         "program. Objects with unusable sizes or positions are left out with a\n"
         "note on stderr.\n"
         "\n"
         "Options:\n"
         "  -o, --output FILE  the scene file to write\n"
         "  --mode MODE        viewer (default) or external\n"
         "  --all-floors       every floor, not only the current one\n"
         "  -h, --help         show this help\n",
         VxCliExport3D},
        {"snapshot-3d", "draw a 3D scene with the 3D engine to PNG or JPEG",
         "Usage: plaveno-cli snapshot-3d FILE -o OUT.png [options]\n"
         "\n"
         "Draws a project (.pvp) or a VRML or X3D scene (.wrl, .x3d, .x3dv) as the 3D viewer shows it,\n"
         "through the 3D engine library beside the tool, without a window. It needs\n"
         "an OpenGL driver; under a headless X server the software renderer does.\n"
         "\n"
         "Options:\n"
         "  -o, --output OUT  the PNG or JPEG file to write\n"
         "  --viewpoint N     the scene's viewpoint N, 0 for the first (default 0)\n"
         "  --width PX        picture width in pixels (default 800)\n"
         "  --height PX       picture height in pixels (default 600)\n"
         "  --verbose         the number of viewpoints, the time taken and the\n"
         "                    engine's warnings on stderr\n"
         "  -h, --help        show this help\n",
         VxCliSnapshot3d},
    };
    return verbs;
}

bool CVxCliArgs::Parse(const std::vector<std::string>& args, const std::vector<std::string>& valueOptions,
                       const std::vector<std::string>& switches, std::string& error)
{
    auto known = [](const std::vector<std::string>& list, const std::string& name) {
        for (const std::string& item : list)
            if (item == name)
                return true;
        return false;
    };
    bool onlyPositional = false;
    for (size_t i = 0; i < args.size(); ++i) {
        std::string arg = args[i];
        if (onlyPositional || arg.size() < 2 || arg[0] != '-') {
            m_positional.push_back(arg);
            continue;
        }
        if (arg == "--") {
            onlyPositional = true;
            continue;
        }
        std::string value;
        bool hasValue = false;
        const size_t equals = arg.find('=');
        if (arg.rfind("--", 0) == 0 && equals != std::string::npos) {
            value = arg.substr(equals + 1);
            arg = arg.substr(0, equals);
            hasValue = true;
        }
        if (arg == "-o")
            arg = "--output";
        if (known(switches, arg)) {
            if (hasValue) {
                error = "option '" + arg + "' takes no value";
                return false;
            }
            m_given[arg] = std::string();
        } else if (known(valueOptions, arg)) {
            if (!hasValue) {
                if (i + 1 >= args.size()) {
                    error = "option '" + arg + "' needs a value";
                    return false;
                }
                value = args[++i];
            }
            m_given[arg] = value;
        } else {
            error = "unknown option '" + arg + "'";
            return false;
        }
    }
    return true;
}

std::string CVxCliArgs::Value(const std::string& name) const
{
    const auto found = m_given.find(name);
    return found == m_given.end() ? std::string() : found->second;
}

int VxCliFail(const QString& file, const QString& reason)
{
    fprintf(stderr, "plaveno-cli: %s: %s\n", file.toLocal8Bit().constData(),
            reason.toLocal8Bit().constData());
    return kVxCliFailed;
}

int VxCliUsageError(const char* verb, const std::string& message)
{
    fprintf(stderr, "plaveno-cli %s: %s\nTry 'plaveno-cli %s --help'.\n", verb, message.c_str(), verb);
    return kVxCliUsage;
}

bool VxCliWantsHelp(const std::vector<std::string>& args, const char* verb)
{
    for (const std::string& arg : args) {
        if (arg == "--")
            break;
        if (arg == "--help" || arg == "-h") {
            for (const SVxCliVerb& item : VxCliVerbs())
                if (strcmp(item.name, verb) == 0)
                    fputs(item.help, stdout);
            return true;
        }
    }
    return false;
}

CVxCliProgress::CVxCliProgress(const QString& file)
    : m_file(file), m_start(NowMs()), m_terminal(isatty(STDERR_FILENO) != 0)
{
}

CVxCliProgress::~CVxCliProgress()
{
    if (m_shown)
        fputs("\r\033[K", stderr);
}

void CVxCliProgress::Step(const char* what)
{
    if (!m_terminal || NowMs() - m_start < 1000)
        return;
    fprintf(stderr, "\r\033[Kplaveno-cli: %s: %s...", m_file.toLocal8Bit().constData(), what);
    fflush(stderr);
    m_shown = true;
}

bool VxCliLoadProject(const QString& path, SVxCliLoaded& loaded)
{
    // Anything without the project head would load as a new default
    // project, and a file that lost its end as a smaller one; a batch tool
    // takes neither.
    const CVxProjectFileCheck check = CVxProjectFileCheck::Check(CVxStringW(path));
    if (check.GetVerdict() != CVxProjectFileCheck::VX_FILE_GOOD)
        return Refuse(path, QString::fromWCharArray(CVxProjectFileCheck::ReasonText(check.GetReason())));
    loaded.fileVersion = check.GetFileVersion();

    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    CVxProject& project = core->GetProject();
    const bool read = project.LoadFromFile(CVxStringW(path), &loaded.missing, nullptr, false,
                                           CVxIniFileReader::VX_READ_NO_NEWER_VERSION_WARNING);
    if (!read || project.WasDamagedOnLoad()) {
        core->InitProject();
        return Refuse(path, QString::fromWCharArray(
                                CVxProjectFileCheck::ReasonText(CVxProjectFileCheck::VX_REASON_CORRUPT)));
    }
    core->SetProjectPath(CVxStringW(path));
    project.RebuildAllFloorsWalls();
    if (project.m_currentFloor < 0 || project.m_currentFloor >= project.GetFloorCount())
        project.m_currentFloor = 0;
    core->UpdateFloorPlan();
    return true;
}

bool VxCliCheckOutput(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir())
        return Refuse(path, QStringLiteral("is a folder"));
    const QFileInfo folder(info.absolutePath());
    if (!folder.isDir())
        return Refuse(path, QStringLiteral("its folder does not exist"));
    if (!folder.isWritable())
        return Refuse(path, QStringLiteral("its folder can't be written"));
    return true;
}

CVxCliOutput::CVxCliOutput(const QString& target)
    : m_target(target), m_temp(VX_SafeSaveTempPath(CVxStringW(target)).ToQString())
{
    // Writers open the temporary by its name; it must be a fresh file of
    // ours, not a link planted there.
    if (!VX_SafeSaveCreateTemp(CVxStringW(target)))
        m_temp.clear();
}

CVxCliOutput::~CVxCliOutput()
{
    if (!m_done)
        VX_SafeSaveAbandon(CVxStringW(m_temp));
}

bool CVxCliOutput::Commit()
{
    m_done = true;
    if (m_temp.isEmpty() || !QFileInfo::exists(m_temp))
        return Refuse(m_target, QStringLiteral("could not be written"));
    if (!VX_SafeSaveCommit(CVxStringW(m_temp), CVxStringW(m_target)))
        return Refuse(m_target, QStringLiteral("could not be renamed into place"));
    return true;
}

QString VxCliExtension(const QString& path)
{
    return QFileInfo(path).suffix().toLower();
}

bool VxCliParseScale(const std::string& text, double& scale)
{
    if (text.rfind("1:", 0) != 0)
        return false;
    char* end = nullptr;
    const double value = strtod(text.c_str() + 2, &end);
    if (!end || end == text.c_str() + 2 || *end != '\0' || !std::isfinite(value) || value < 1 || value > 1e6)
        return false;
    scale = value;
    return true;
}

bool VxCliParsePaper(const std::string& text, QPageSize::PageSizeId& paper)
{
    const QString name = QString::fromStdString(text).toUpper();
    if (name == QLatin1String("A4"))
        paper = QPageSize::A4;
    else if (name == QLatin1String("A3"))
        paper = QPageSize::A3;
    else if (name == QLatin1String("LETTER"))
        paper = QPageSize::Letter;
    else
        return false;
    return true;
}

namespace {

// Unit names as the tool spells them, by unit index; inches are "in" where
// files use the inch mark.
const char* const kUnitNames[CVxUnits::UNIT_COUNT] = {"mm", "cm", "in", "dm", "ft", "yd", "m", "km"};

} // namespace

const char* VxCliUnitName(int unit)
{
    return CVxUnits::IsValid(unit) ? kUnitNames[unit] : "?";
}

int VxCliUnitFromName(const std::string& name)
{
    for (int unit = 0; unit < CVxUnits::UNIT_COUNT; ++unit)
        if (name == kUnitNames[unit])
            return unit;
    return -1;
}
