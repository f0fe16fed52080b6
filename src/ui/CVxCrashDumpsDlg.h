#pragma once
// The reports that the crash handler left: each can be read, copied for a
// message to the developers, or deleted.

#include "CVxStringW.h"

#include <QDialog>

class QListWidget;
class QPlainTextEdit;
class QPushButton;

class CVxCrashDumpsDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxCrashDumpsDlg(const CVxStringW& crashFolder, QWidget* parent = nullptr);

    // Reports come up only when the user asks for them from the Help menu.
    static bool checkForCrashSinceLastRun() { return false; }
    // How many reports were written after that moment (seconds since the
    // epoch).
    static int CountReportsSince(const CVxStringW& crashFolder, int64_t time);

    QListWidget* GetList() const { return m_list; }
    QPlainTextEdit* GetText() const { return m_text; }

public slots:
    void OnCopy();
    void OnDelete();
    void OnOpenFolder();

private:
    void Fill();
    void ShowSelected();

    CVxStringW m_folder;
    QListWidget* m_list = nullptr;
    QPlainTextEdit* m_text = nullptr;
    QPushButton* m_copy = nullptr;
    QPushButton* m_delete = nullptr;
};
