#include "VxTrace.h"

#include "VxUtf8.h"

#include <QString>
#include <QSysInfo>

#include <cstdarg>
#include <ctime>

namespace {
FILE* g_logStream = nullptr;
CVxStringW g_logPath;
} // namespace

bool CVxLogFile::SetLogFile(const CVxStringW& path)
{
    Close();
    CVxStringA native = VX_StringToUTF8(path);
    if (FILE* old = fopen(native.c_str(), "rb")) {
        CVxStringA backup = VX_StringToUTF8(path.ExtractFileFolder() + L"pverrlog.old.txt");
        if (FILE* copy = fopen(backup.c_str(), "wb")) {
            char buffer[4096];
            size_t n;
            while ((n = fread(buffer, 1, sizeof(buffer), old)) > 0)
                fwrite(buffer, 1, n, copy);
            fclose(copy);
        }
        fclose(old);
    }
    // Readable too: a crash report quotes the log's last lines.
    g_logStream = fopen(native.c_str(), "w+b");
    g_logPath = g_logStream ? path : CVxStringW();
    return g_logStream != nullptr;
}

bool CVxLogFile::IsLogged()
{
    return g_logStream != nullptr;
}

void CVxLogFile::Close()
{
    if (g_logStream)
        fclose(g_logStream);
    g_logStream = nullptr;
    g_logPath.Empty();
}

FILE* CVxLogFile::GetStream()
{
    return g_logStream;
}

const CVxStringW& CVxLogFile::GetPath()
{
    return g_logPath;
}

void VxTrace(const char* format, ...)
{
    if (!g_logStream)
        return;
    time_t now = time(nullptr);
    struct tm local;
    localtime_r(&now, &local);
    fprintf(g_logStream, "%d-%02d-%02d %02d:%02d:%02d | ", local.tm_year + 1900, local.tm_mon + 1,
            local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);

    char buffer[2048];
    va_list args;
    va_start(args, format);
    int n = vsnprintf(buffer, sizeof(buffer), format, args);
    va_end(args);
    if (n < 0)
        return;
    if (static_cast<size_t>(n) >= sizeof(buffer)) {
        static const char kTooLong[] = " ---debug message too long--- \n";
        fwrite(buffer, 1, sizeof(buffer) - sizeof(kTooLong), g_logStream);
        fputs(kTooLong, g_logStream);
    } else {
        fputs(buffer, g_logStream);
    }
    fflush(g_logStream);
}

void VxDebugLog(const char* message)
{
    VxTrace("%s\n", message);
}

void TraceAppVersion()
{
    VxTrace("Plaveno version %s\n", PLAVENO_VERSION_TEXT);
}

void TraceWindowsVersion()
{
    VxTrace("System: %s, kernel %s %s, %s\n", QSysInfo::prettyProductName().toUtf8().constData(),
            QSysInfo::kernelType().toUtf8().constData(), QSysInfo::kernelVersion().toUtf8().constData(),
            QSysInfo::currentCpuArchitecture().toUtf8().constData());
}
