#include "CVxFileChangeMonitor.h"

#include <QCryptographicHash>
#include <QFile>

CVxFileChangeMonitor::CVxFileChangeMonitor() = default;

bool CVxFileChangeMonitor::StartMonitoring(const CVxStringW& path)
{
    if (m_active)
        StopMonitoring();
    m_path = path;
    if (path.ExtractFileFolder().IsEmpty())
        return false;
    m_active = true;
    const QString file = path.ToQString();
    // A file replaced by another program is dropped by the watcher, so it
    // is added afresh each time.
    if (!m_watcher.files().contains(file))
        m_watcher.addPath(file);
    m_hash = GetFileHash(path);
    return true;
}

void CVxFileChangeMonitor::StopMonitoring()
{
    if (!m_path.IsEmpty() && m_watcher.files().contains(m_path.ToQString()))
        m_watcher.removePath(m_path.ToQString());
    m_active = false;
}

bool CVxFileChangeMonitor::IsMonitoringHashIdentical(const CVxStringW& path) const
{
    const CVxStringW hash = GetFileHash(path);
    return !hash.IsEmpty() && hash == m_hash;
}

CVxStringW CVxFileChangeMonitor::GetFileHash(const CVxStringW& path)
{
    QFile file(path.ToQString());
    if (!file.open(QIODevice::ReadOnly))
        return CVxStringW();
    QCryptographicHash hash(QCryptographicHash::Sha3_512);
    if (!hash.addData(&file))
        return CVxStringW();
    return CVxStringW(QString::fromLatin1(hash.result().toHex()));
}
