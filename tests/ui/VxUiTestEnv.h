#pragma once
// Widget tests run with their home, data and settings folders in a private
// temporary folder, set before the application object exists. Every window
// starts with the default project, though the settings mark a first start.

#include "CVxMainWindow.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QTemporaryDir>

class CVxUiTestHome
{
public:
    CVxUiTestHome()
    {
        const QString root = m_dir.path();
        QDir().mkpath(root + QStringLiteral("/data"));
        QDir().mkpath(root + QStringLiteral("/config"));
        qputenv("HOME", root.toUtf8());
        qputenv("XDG_DATA_HOME", (root + QStringLiteral("/data")).toUtf8());
        qputenv("XDG_CONFIG_HOME", (root + QStringLiteral("/config")).toUtf8());
        qputenv("XDG_RUNTIME_DIR", root.toUtf8());
        qputenv("LANG", "en_US.UTF-8");
        CVxMainWindow::SetOpenSampleAtFirstStart(false);
    }
    QString Path() const { return m_dir.path(); }
    // Where the window keeps config.ini.
    QString AppDataFolder() const { return m_dir.path() + QStringLiteral("/data/Plaveno/"); }

private:
    QTemporaryDir m_dir;
};

inline QByteArray VxReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// For the program itself, started with a home of its own: a fresh account.
inline QProcessEnvironment VxFreshHomeEnvironment(const QString& home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("HOME"), home);
    environment.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/data"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/config"));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), home);
    environment.insert(QStringLiteral("LANG"), QStringLiteral("en_US.UTF-8"));
    return environment;
}
