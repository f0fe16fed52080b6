#pragma once
// The library files that come on top of the standard catalogue: each can
// be switched off, removed, and new ones added from a file.

#include <QDialog>

class QListWidget;
class QListWidgetItem;
class QPushButton;

class CVxAdditionalLibrariesDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxAdditionalLibrariesDlg(QWidget* parent = nullptr);
    QListWidget* GetList() const { return m_list; }

public slots:
    // Adds the file, or asks for one when path is empty.
    bool OnAdd(const QString& path = QString());
    void OnRemove();

private:
    void Fill();
    void OnItemChanged(QListWidgetItem* item);

    QListWidget* m_list = nullptr;
    QPushButton* m_remove = nullptr;
    bool m_filling = false;
};
