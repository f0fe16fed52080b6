#pragma once
// The trace log: off unless the program was started with "-log". Every line is
// flushed at once, so the last line written tells how far a run got before it
// crashed.

#include "CVxStringW.h"

#include <cstdio>

class CVxLogFile
{
public:
    // Keeps an existing log as "pverrlog.old.txt" beside it, then starts a new one.
    static bool SetLogFile(const CVxStringW& path);
    static bool IsLogged();
    static void Close();
    static FILE* GetStream();
    static const CVxStringW& GetPath();
};

void VxTrace(const char* format, ...) __attribute__((format(printf, 1, 2)));
// Messages for the developer that are not part of the trace of a run.
void VxDebugLog(const char* message);
void TraceAppVersion();
void TraceWindowsVersion();
