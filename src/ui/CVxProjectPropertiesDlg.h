#pragma once
// Project properties (Ctrl+T): unit, unit of room areas, size, defaults of
// new walls, each floor's wall height and thickness, and the comments. OK
// applies all of it as one undo step; Cancel leaves the project alone.

#include "CVxProjectSettings.h"

#include <QDialog>

#include <vector>

class CVxLengthField;
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
    std::vector<CVxLengthField*> AllLengths() const;

    SVxProjectSettings m_settings;
    QComboBox* m_unit = nullptr;
    QComboBox* m_statUnit = nullptr;
    CVxLengthField* m_width = nullptr;
    CVxLengthField* m_depth = nullptr;
    CVxLengthField* m_thickness = nullptr;
    CVxLengthField* m_height = nullptr;
    QTableWidget* m_floors = nullptr;
    std::vector<CVxLengthField*> m_floorHeights;
    std::vector<CVxLengthField*> m_floorThicknesses;
    QPlainTextEdit* m_comments = nullptr;
};
