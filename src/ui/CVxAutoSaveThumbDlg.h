#pragma once
// The picture of an auto-saved project, shown beside the recovery question
// so that the user sees which work would come back.

#include "CVxStringW.h"

#include <QDialog>
#include <QImage>
#include <QThread>

class QLabel;

// Reads the picture on a worker thread; it touches no document data.
class CVxAutoSaveThumbreader : public QThread
{
    Q_OBJECT
public:
    explicit CVxAutoSaveThumbreader(const QString& path, QObject* parent = nullptr)
        : QThread(parent), m_path(path)
    {
    }

signals:
    void onThumbLoaded(QImage image);

protected:
    void run() override;

private:
    QString m_path;
};

class CVxAutoSaveThumbDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxAutoSaveThumbDlg(const CVxStringW& autoSaveFile, QWidget* parent = nullptr);
    ~CVxAutoSaveThumbDlg() override;

    // The start-up check: a file of a crashed run is offered for loading
    // while its picture shows. True when a project was recovered.
    static bool CheckForAutoSave(QWidget* parent, bool atStart);

private slots:
    void OnThumbLoaded(const QImage& image);

private:
    QLabel* m_picture = nullptr;
    CVxAutoSaveThumbreader* m_reader = nullptr;
};
