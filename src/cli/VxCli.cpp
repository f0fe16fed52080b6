#include "VxCli.h"

#include "CVxAppCore.h"
#include "CVxIniFileReader.h"
#include "CVxUnits.h"
#include "IVxReadIniClient.h"
#include "VxSafeSave.h"

#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

long long NowMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

// Takes the version from the head of a project file without loading it.
class CVxCliHeadReader : public IVxReadIniClient
{
public:
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader*) override
    {
        if (key == "FileVersion")
            version = CVxIniFileReader::ToInt(value, 0);
        else if (key == "Compression")
            compressed = true;
    }
    int version = 0;
    bool compressed = false;
};

// Walks the entries of a container without unpacking them. The loader takes
// a cut-off entry as far as it goes, so a container that lost its end would
// open as a smaller project; a block that ends before its announced size
// shows the loss.
class CVxCliEntryCheck : public IVxReadIniClient
{
public:
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override
    {
        if (key != "DataSize" || !reader)
            return;
        const int size = CVxIniFileReader::ToInt(value, -1);
        if (size < 0 || !reader->SkipDataBlock(static_cast<unsigned>(size)))
            complete = false;
        ++entries;
    }
    bool complete = true;
    int entries = 0;
};

// The run of sections of a plain project: every "Floor" closes with an
// "EndFloor", and the writer's last section is the picture cache. A file
// cut anywhere before that would load as a smaller project without a word.
struct SVxCliPlainRun
{
    void Section(const CVxStringA& name)
    {
        if (name == "Floor") {
            if (openFloor)
                unclosedFloor = true;
            openFloor = true;
        } else if (name == "EndFloor") {
            openFloor = false;
            ++endFloors;
        }
        last = name;
    }
    bool IsCutShort(int version) const
    {
        // Files of older versions may know neither closing section.
        if (endFloors > 0 && (openFloor || unclosedFloor))
            return true;
        return version >= CVxProject::fileVersion && last != "PictureResizeCache";
    }
    CVxStringA last;
    int endFloors = 0;
    bool openFloor = false;
    bool unclosedFloor = false;
};

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
        {"render", "draw the plan of a floor to PNG, JPEG, SVG or PDF",
         "Usage: plaveno-cli render FILE -o OUT [options]\n"
         "\n"
         "Draws the plan of a floor as the main view shows it. The format follows\n"
         "OUT's extension: .png, .jpg/.jpeg, .svg or .pdf (vector).\n"
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
         "  --paper A4|A3     PDF only: the paper (default A4)\n"
         "  -h, --help        show this help\n",
         VxCliRender},
        {"convert", "load and save a project again, in the compressed form",
         "Usage: plaveno-cli convert IN OUT [--unit mm|cm|in|ft|m]\n"
         "\n"
         "Loads a project of either form and saves it in the compressed form with\n"
         "the files it uses. An OUT ending in .pvo writes a single-object file, an\n"
         "ordinary project that object libraries take in.\n"
         "\n"
         "Options:\n"
         "  --unit U    convert every length to the unit first\n"
         "  -h, --help  show this help\n",
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
    const QFileInfo info(path);
    if (!info.exists())
        return Refuse(path, QStringLiteral("no such file"));
    if (info.isDir())
        return Refuse(path, QStringLiteral("is a folder, not a project file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Refuse(path, QStringLiteral("can't be read: ") + file.errorString());
    file.close();
    if (info.size() == 0)
        return Refuse(path, QStringLiteral("empty file, not a project"));

    // Anything without the project head would load as a new default project;
    // the head tells a project from any other file before loading starts.
    {
        CVxIniFileReader reader{CVxStringW(path), 0};
        if (!reader.IsOpened())
            return Refuse(path, QStringLiteral("can't be read"));
        reader.Start();
        if (reader.GetSectionName() == "LibSetup")
            return Refuse(path, QStringLiteral("an object library, not a project"));
        if (reader.GetSectionName() != "Room")
            return Refuse(path, QStringLiteral("not a Plaveno project"));
        CVxCliHeadReader head;
        reader.ReadSection(&head);
        loaded.fileVersion = head.version;
        if (head.compressed) {
            CVxCliEntryCheck entries;
            while (!reader.GetSectionName().IsEmpty())
                reader.ReadSection(reader.GetSectionName() == "File" ? &entries : nullptr);
            if (!entries.complete || entries.entries == 0)
                return Refuse(path, QStringLiteral("damaged or incomplete project file (cut short)"));
        } else {
            SVxCliPlainRun run;
            while (!reader.GetSectionName().IsEmpty()) {
                run.Section(reader.GetSectionName());
                reader.ReadSection(nullptr);
            }
            if (run.IsCutShort(head.version))
                return Refuse(path, QStringLiteral("damaged or incomplete project file (cut short)"));
        }
    }

    CVxAppCore* core = VX_GetCore();
    core->InitProject();
    CVxProject& project = core->GetProject();
    if (!project.LoadFromFile(CVxStringW(path), &loaded.missing, nullptr, false,
                              CVxIniFileReader::VX_READ_NO_NEWER_VERSION_WARNING)) {
        core->InitProject();
        return Refuse(path, QStringLiteral("damaged or incomplete project file"));
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

int VxCliUnitFromName(const std::string& name)
{
    if (name == "mm")
        return CVxUnits::UNIT_MM;
    if (name == "cm")
        return CVxUnits::UNIT_CM;
    if (name == "in")
        return CVxUnits::UNIT_INCH;
    if (name == "ft")
        return CVxUnits::UNIT_FT;
    if (name == "m")
        return CVxUnits::UNIT_M;
    return -1;
}
