#pragma once
// When the program dies of a fatal signal or of an exception that nobody
// caught, a short report goes into the crash folder beside the auto-save
// files: the signal, the version, a backtrace and the last lines of the
// trace log. The auto-saved project is left where it is, so the next start
// can offer both.

#include "CVxStringW.h"

#include <cstdint>
#include <vector>

// The folder of the reports, inside the user's application data folder.
CVxStringW VX_GetCrashFolder(const CVxStringW& appDataFolder);

// Prepares everything the handler needs while the process is still sound:
// the report's name, its first lines and the stack it runs on. Later calls
// only change the folder.
void VX_InstallCrashHandler(const CVxStringW& crashFolder);

// The reports in the folder, newest first.
struct SVxCrashReport
{
    CVxStringW path;
    int64_t time = 0; // seconds since the epoch
    CVxStringW title; // the report's first line
};
std::vector<SVxCrashReport> VX_ListCrashReports(const CVxStringW& crashFolder);
