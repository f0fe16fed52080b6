#pragma once
// The object listing (F9): every object of the floor or the project with
// count, size and colour; a click on a column head sorts by it. Export
// writes it as CSV or puts it on the clipboard.

#include "CVxPartListing.h"

#include <QDialog>
#include <QWidget>

#include <vector>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTableWidget;

class CVxPartsListForm : public QWidget
{
    Q_OBJECT
public:
    explicit CVxPartsListForm(QWidget* parent = nullptr);
    void Refill();
    void Localize();
    QTableWidget* GetTable() const { return m_table; }
    const std::vector<SVxListingRow>& GetRows() const { return m_rows; }
    void SortBy(int column);

public slots:
    void Export();

private:
    QCheckBox* m_allFloors = nullptr;
    QTableWidget* m_table = nullptr;
    QPushButton* m_export = nullptr;
    std::vector<SVxListingRow> m_rows;
    int m_sortColumn = -1;
    bool m_ascending = true;
};

// How and where the listing goes: the separator, the floors, the clipboard
// or a CSV file.
class CVxPartListExportDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxPartListExportDlg(bool toClipboard, QWidget* parent = nullptr);
    // Writes or copies; false with a message when the file can't be written.
    bool Run();
    // The column heads in the selected language.
    static std::vector<CVxStringW> Headers();

public slots:
    void accept() override;

private:
    void Browse();

    QComboBox* m_separator = nullptr;
    QCheckBox* m_allFloors = nullptr;
    QRadioButton* m_clipboard = nullptr;
    QRadioButton* m_file = nullptr;
    QLineEdit* m_path = nullptr;
};
