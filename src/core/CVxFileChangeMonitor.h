#pragma once
// Notices that the open project's file was changed by another program. The
// file's hash at the start of monitoring tells a real change from a rewrite
// with the same bytes, which some programs and sync tools do.

#include "CVxStringW.h"

#include <QFileSystemWatcher>

class CVxFileChangeMonitor
{
public:
    CVxFileChangeMonitor();
    CVxFileChangeMonitor(const CVxFileChangeMonitor&) = delete;
    CVxFileChangeMonitor& operator=(const CVxFileChangeMonitor&) = delete;

    // Watches `path` from now on, stopping any earlier watch first. A path
    // without a folder is not watched.
    bool StartMonitoring(const CVxStringW& path);
    void StopMonitoring();
    // True when the file's bytes are still those seen when monitoring began.
    bool IsMonitoringHashIdentical(const CVxStringW& path) const;
    // SHA3-512 of the whole file in lower-case hexadecimal; empty when the
    // file can't be read.
    static CVxStringW GetFileHash(const CVxStringW& path);

    bool IsActive() const { return m_active; }
    const CVxStringW& GetPath() const { return m_path; }
    const CVxStringW& GetHash() const { return m_hash; }
    // The host connects its fileChanged signal.
    QFileSystemWatcher* GetWatcher() { return &m_watcher; }

private:
    CVxStringW m_path;
    bool m_active = false;
    CVxStringW m_hash;
    QFileSystemWatcher m_watcher;
};
