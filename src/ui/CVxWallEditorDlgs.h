#pragma once
// The wall editor's property dialogues: a wall vertex, a wall, a floor
// opening. Each shows a copy; the caller applies it when OK was pressed.

#include "CVxHoleInFloor.h"
#include "CVxWall.h"
#include "IVxAppHelperCallback.h"

#include <vector>

#include <QDialog>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QTableWidget;

// Beside the plan while the user lays the calibration line on the scan:
// the length that line has in reality scales the picture.
class CVxScanCalibrateDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxScanCalibrateDlg(QWidget* parent = nullptr);
    QLineEdit* GetLengthEdit() const { return m_length; }

public slots:
    // Scales the scan; false for no length.
    bool Apply();

protected:
    void reject() override;

private:
    QLineEdit* m_length = nullptr;
};

// Every corner of the plan and every wall's thickness and height as
// numbers, each typed with or without a unit.
class CVxWallNumericDlg : public QDialog
{
    Q_OBJECT
public:
    CVxWallNumericDlg(const std::vector<CVxDPoint>& corners, const std::vector<SVxWallNumbers>& walls,
                      int unit, QWidget* parent = nullptr);
    QTableWidget* GetCornerTable() const { return m_corners; }
    QTableWidget* GetWallTable() const { return m_walls; }
    // False, with the wrong cells marked, while a cell holds no number.
    bool Read(std::vector<CVxDPoint>& corners, std::vector<SVxWallNumbers>& walls) const;

private:
    QTableWidget* m_corners = nullptr;
    QTableWidget* m_walls = nullptr;
    int m_unit;
};

class CVxWallVertexDlg : public QDialog
{
    Q_OBJECT
public:
    // height -19182 hides the height field: the vertex has no wall end.
    CVxWallVertexDlg(double x, double y, double height, const QString& title, QWidget* parent = nullptr);
    double GetX() const;
    double GetY() const;
    // -19182 when the field was left empty.
    double GetHeight() const;

private:
    QLineEdit* m_x = nullptr;
    QLineEdit* m_y = nullptr;
    QLineEdit* m_height = nullptr;
};

class CVxWallEdgeDlg : public QDialog
{
    Q_OBJECT
public:
    // differ: 1 thickness, 2 heights, 4 ends differ among the selected walls,
    // whose fields are then shown empty.
    CVxWallEdgeDlg(const CVxWall& wall, unsigned differ, const QString& title, QWidget* parent = nullptr);
    // Fields left empty come back as -19182.
    CVxWall GetWall() const;

public slots:
    void BtnOKClick();
    void EdFromXChange();
    void EdRotationChange();
    void on_EdThickness_textEdited();
    void BtnCopyHeightClick();

private:
    CVxWall m_wall;
    QLineEdit* m_fromX = nullptr;
    QLineEdit* m_fromY = nullptr;
    QLineEdit* m_toX = nullptr;
    QLineEdit* m_toY = nullptr;
    QLineEdit* m_length = nullptr;
    QLineEdit* m_rotation = nullptr;
    QLineEdit* m_thickness = nullptr;
    QComboBox* m_align = nullptr;
    QLineEdit* m_sideA = nullptr;
    QLineEdit* m_sideB = nullptr;
    QComboBox* m_lineStyle = nullptr;
    QComboBox* m_fillStyle = nullptr;
    QLineEdit* m_heightFrom = nullptr;
    QLineEdit* m_heightTo = nullptr;
    QCheckBox* m_invisible = nullptr;
    QCheckBox* m_curved = nullptr;
};

class CVxWallHoleDlg : public QDialog
{
    Q_OBJECT
public:
    CVxWallHoleDlg(const CVxHoleInFloor& hole, const QString& title, QWidget* parent = nullptr);
    CVxHoleInFloor GetHole() const;

private:
    CVxHoleInFloor m_hole;
    QLineEdit* m_x = nullptr;
    QLineEdit* m_y = nullptr;
    QLineEdit* m_width = nullptr;
    QLineEdit* m_height = nullptr;
    QLineEdit* m_rotation = nullptr;
};
