#pragma once
// Transformations: move, scale, turn and mirror the whole project or the
// current floor. OK applies everything asked for as one undo step.

#include "CVxProjectSettings.h"

#include <QDialog>

class CVxLengthField;
class QCheckBox;
class QLabel;
class QDoubleSpinBox;
class QRadioButton;
class QSpinBox;

class CVxTransformDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxTransformDlg(QWidget* parent = nullptr);
    // False, with the field focused, while a distance is no length.
    bool GetTransform(SVxTransform& transform) const;

public slots:
    void accept() override;

private:
    QLabel* m_problem = nullptr;
    QRadioButton* m_project = nullptr;
    QRadioButton* m_floor = nullptr;
    CVxLengthField* m_dx = nullptr;
    CVxLengthField* m_dy = nullptr;
    QDoubleSpinBox* m_scale = nullptr;
    QSpinBox* m_rotate = nullptr;
    QCheckBox* m_mirrorH = nullptr;
    QCheckBox* m_mirrorV = nullptr;
};
