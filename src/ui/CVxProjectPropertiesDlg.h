#pragma once
// Project properties (Ctrl+T): unit, unit of room areas, size, defaults of
// new walls, each floor's wall height and thickness, and the comments. OK
// applies all of it as one undo step; Cancel leaves the project alone.

#include "CVxProjectSettings.h"

#include <QDialog>

#include <vector>

class CVxLengthEdit;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QTableWidget;

class CVxProjectPropertiesDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxProjectPropertiesDlg(QWidget* parent = nullptr);
    // What the fields say now; false, with the field focused, while one of
    // them holds no length.
    bool GetSettings(SVxProjectSettings& settings);

public slots:
    void accept() override;

private:
    QLabel* m_problem = nullptr;
    void OnUnitChanged();
    std::vector<CVxLengthEdit*> AllLengths() const;

    SVxProjectSettings m_settings;
    QComboBox* m_unit = nullptr;
    QComboBox* m_statUnit = nullptr;
    CVxLengthEdit* m_width = nullptr;
    CVxLengthEdit* m_depth = nullptr;
    CVxLengthEdit* m_thickness = nullptr;
    CVxLengthEdit* m_height = nullptr;
    QTableWidget* m_floors = nullptr;
    std::vector<CVxLengthEdit*> m_floorHeights;
    std::vector<CVxLengthEdit*> m_floorThicknesses;
    QPlainTextEdit* m_comments = nullptr;
};
