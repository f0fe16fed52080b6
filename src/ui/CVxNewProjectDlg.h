#pragma once
// The start of a new project: an outline for the first rooms, its size and
// the project's unit, and whether to go on drawing walls at once.

#include <QDialog>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

class CVxNewProjectDlg : public QDialog
{
    Q_OBJECT
public:
    CVxNewProjectDlg(double width, double depth, int unit, QWidget* parent = nullptr);

    int GetShape() const;
    void SetShape(int shape);
    // In GetUnit(); valid when IsValid().
    double GetWidth() const { return m_widthValue; }
    double GetDepth() const { return m_depthValue; }
    int GetUnit() const { return m_unit; }
    bool GetStartWallEditor() const;
    bool IsValid() const { return m_widthValue > 0 && m_depthValue > 0; }

    QLineEdit* GetWidthEdit() const { return m_width; }
    QLineEdit* GetDepthEdit() const { return m_depth; }
    QComboBox* GetUnitBox() const { return m_unitBox; }

    // The smallest and largest side, in centimetres.
    static constexpr double minSideCm = 50;
    static constexpr double maxSideCm = 100000;

private:
    void OnUnitChanged();
    void Validate();

    QButtonGroup* m_shapes = nullptr;
    QLineEdit* m_width = nullptr;
    QLineEdit* m_depth = nullptr;
    QComboBox* m_unitBox = nullptr;
    QCheckBox* m_walls = nullptr;
    QPushButton* m_ok = nullptr;
    double m_widthValue = 0;
    double m_depthValue = 0;
    int m_unit = 0;
};
