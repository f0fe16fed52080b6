#pragma once
// The files that the opened project refers to but that were not found: per
// file the user removes the reference, keeps it or names a replacement, and
// the project is saved under a new name with those decisions applied.

#include "CVxMissingFileInfo.h"

#include <QDialog>

#include <vector>

class QDialogButtonBox;
class QTableWidget;

class CVxMissingFilesDlg : public QDialog
{
    Q_OBJECT
public:
    enum EColumn
    {
        COL_MISSING = 0,
        COL_SOLUTION,
        COL_NEW_FILE,
        COL_COUNT
    };

    // Filled from the core's list of the last load.
    explicit CVxMissingFilesDlg(QWidget* parent = nullptr);

    QTableWidget* GetTable() const { return m_table; }
    QDialogButtonBox* GetButtonBox() const { return m_buttonBox; }
    // The list with the choices of the table.
    std::vector<CVxMissingFileInfo> ReadTable() const;
    // The row's new file, as chosen or typed.
    void SetReplacement(int row, const QString& path);

public slots:
    void SetAllToRemove();
    void on_buttonBox_accepted();

private:
    void ChooseReplacement(int row);
    void OnSolutionChanged(int row);

    QTableWidget* m_table = nullptr;
    QDialogButtonBox* m_buttonBox = nullptr;
    std::vector<CVxMissingFileInfo> m_files;
};
