#pragma once
// Shared pieces of the headless tool's verbs: the verb table, argument
// parsing, error lines, progress, loading a project into the core and
// writing outputs through a temporary file.

#include "CVxMissingFileInfo.h"
#include "CVxStringW.h"

#include <QPageSize>
#include <QString>

#include <list>
#include <map>
#include <string>
#include <vector>

class CVxProject;

// Exit codes of every verb.
constexpr int kVxCliOk = 0;
constexpr int kVxCliFailed = 1;
constexpr int kVxCliUsage = 2;

using VxCliHandler = int (*)(const std::vector<std::string>& args);

struct SVxCliVerb
{
    const char* name;
    const char* summary;
    const char* help;
    VxCliHandler handler;
};

// The verbs, in the order the tool's help lists them.
const std::vector<SVxCliVerb>& VxCliVerbs();

int VxCliInfo(const std::vector<std::string>& args);
int VxCliRender(const std::vector<std::string>& args);
int VxCliPrint(const std::vector<std::string>& args);
int VxCliConvert(const std::vector<std::string>& args);
int VxCliThumbnail(const std::vector<std::string>& args);
int VxCliLibrary(const std::vector<std::string>& args);
int VxCliCompressLibrary(const std::vector<std::string>& args);
int VxCliCompressProtos(const std::vector<std::string>& args);
int VxCliStats(const std::vector<std::string>& args);
int VxCliExport3D(const std::vector<std::string>& args);
int VxCliSnapshot3d(const std::vector<std::string>& args);

// The arguments of one verb: options that take a value, switches, and the
// positional arguments in order. "--name=value" and "--name value" both work.
class CVxCliArgs
{
public:
    // False with a message for an unknown option or a missing value.
    bool Parse(const std::vector<std::string>& args, const std::vector<std::string>& valueOptions,
               const std::vector<std::string>& switches, std::string& error);
    bool Has(const std::string& name) const { return m_given.count(name) != 0; }
    std::string Value(const std::string& name) const;
    const std::vector<std::string>& Positional() const { return m_positional; }

private:
    std::map<std::string, std::string> m_given;
    std::vector<std::string> m_positional;
};

// "plaveno-cli: FILE: reason" on stderr; returns kVxCliFailed.
int VxCliFail(const QString& file, const QString& reason);
// A usage error of a verb with a pointer to its help; returns kVxCliUsage.
int VxCliUsageError(const char* verb, const std::string& message);
// Prints the verb's help when asked; true when it did.
bool VxCliWantsHelp(const std::vector<std::string>& args, const char* verb);

// Progress for work that lasts: shown on stderr only when it is a terminal
// and only once the work has taken more than a second.
class CVxCliProgress
{
public:
    explicit CVxCliProgress(const QString& file);
    ~CVxCliProgress();
    void Step(const char* what);

private:
    QString m_file;
    long long m_start = 0;
    bool m_shown = false;
    bool m_terminal = false;
};

// What loading found besides the project itself.
struct SVxCliLoaded
{
    int fileVersion = 0;
    std::list<CVxMissingFileInfo> missing;
};

// Loads FILE into the core's project with its current floor's plan built.
// On failure writes the error line and returns false; the core then holds a
// new default project.
bool VxCliLoadProject(const QString& path, SVxCliLoaded& loaded);
// Whether an output can be written at all: its folder exists and is not the
// file itself a folder. Writes the error line when not.
bool VxCliCheckOutput(const QString& path);

// An output written beside its target and renamed over it only when it is
// complete; abandoned (and no file left) unless committed.
class CVxCliOutput
{
public:
    explicit CVxCliOutput(const QString& target);
    ~CVxCliOutput();
    const QString& TempPath() const { return m_temp; }
    // Renames the finished temporary over the target; writes the error line
    // and returns false when that fails.
    bool Commit();

private:
    QString m_target;
    QString m_temp;
    bool m_done = false;
};

// Lower-case extension of a path without the dot.
QString VxCliExtension(const QString& path);
// A scale of paper written "1:N", N from 1 to a million.
bool VxCliParseScale(const std::string& text, double& scale);
// A4, A3 or Letter, in any case.
bool VxCliParsePaper(const std::string& text, QPageSize::PageSizeId& paper);
// The tool's name of a unit index: "mm", "cm", "in", "dm", "ft", "yd", "m"
// or "km"; "?" for anything else.
const char* VxCliUnitName(int unit);
// The unit index of one of those names; -1 for anything else.
int VxCliUnitFromName(const std::string& name);
