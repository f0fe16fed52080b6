#pragma once
// Configure -> Options: the user's settings on pages, built from the list of
// settings that the core keeps. OK applies them at once and writes
// config.ini; Cancel changes nothing.

#include <QDialog>

#include <vector>

class QLabel;
class QTabWidget;
class QWidget;

class CVxOptionsDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxOptionsDlg(QWidget* parent = nullptr);
    // The field of a setting by its key in config.ini, for tests and for
    // focusing a bad value; null for none.
    QWidget* FieldOf(const char* key) const;

public slots:
    void accept() override;

private:
    QLabel* m_problem = nullptr;
    // False, with the field focused, when a field holds no valid value.
    bool Store();

    QTabWidget* m_pages = nullptr;
    // One per setting, in the order of the list.
    std::vector<QWidget*> m_fields;
};
