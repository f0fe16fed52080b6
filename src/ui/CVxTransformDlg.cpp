#include "CVxTransformDlg.h"

#include "CVxAppCore.h"
#include "VxDlgKit.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {
const CVxDlgTexts T("TransformDlg");
}

CVxTransformDlg::CVxTransformDlg(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("TransformDlg"));
    setWindowTitle(T(1, L"Transformations"));
    const int unit = VX_GetCore()->GetProject().m_unit;
    auto* column = new QVBoxLayout(this);

    auto* target = new QGroupBox(T(2, L"Apply to"), this);
    auto* targetRow = new QHBoxLayout(target);
    m_project = new QRadioButton(T(3, L"Entire project"), target);
    m_floor = new QRadioButton(T(4, L"Current floor"), target);
    m_project->setObjectName(QStringLiteral("RbProject"));
    m_floor->setObjectName(QStringLiteral("RbFloor"));
    m_project->setChecked(true);
    targetRow->addWidget(m_project);
    targetRow->addWidget(m_floor);
    column->addWidget(target);

    auto* move = new QGroupBox(T(5, L"Move"), this);
    auto* moveForm = new QFormLayout(move);
    m_dx = new CVxLengthField(0, unit, true, move);
    m_dy = new CVxLengthField(0, unit, true, move);
    m_dx->setObjectName(QStringLiteral("EdMoveX"));
    m_dy->setObjectName(QStringLiteral("EdMoveY"));
    moveForm->addRow(T(6, L"To the right:"), m_dx->WithUnit());
    moveForm->addRow(T(7, L"Down:"), m_dy->WithUnit());
    column->addWidget(move);

    auto* shape = new QGroupBox(T(8, L"Scale and Rotate"), this);
    auto* shapeForm = new QFormLayout(shape);
    m_scale = new QDoubleSpinBox(shape);
    m_scale->setObjectName(QStringLiteral("EdScale"));
    m_scale->setRange(1, 10000);
    m_scale->setDecimals(1);
    m_scale->setValue(100);
    m_scale->setSuffix(QStringLiteral(" %"));
    shapeForm->addRow(T(9, L"Scale:"), m_scale);
    m_rotate = new QSpinBox(shape);
    m_rotate->setObjectName(QStringLiteral("EdRotate"));
    m_rotate->setRange(-359, 359);
    m_rotate->setSingleStep(90);
    m_rotate->setSuffix(QStringLiteral("\u00B0"));
    shapeForm->addRow(T(10, L"Rotate clockwise:"), m_rotate);
    m_mirrorH = new QCheckBox(T(11, L"Mirror horizontally"), shape);
    m_mirrorV = new QCheckBox(T(12, L"Mirror vertically"), shape);
    m_mirrorH->setObjectName(QStringLiteral("CbMirrorH"));
    m_mirrorV->setObjectName(QStringLiteral("CbMirrorV"));
    shapeForm->addRow(m_mirrorH);
    shapeForm->addRow(m_mirrorV);
    column->addWidget(shape);

    m_problem = VX_ProblemLabel(this);
    column->addWidget(m_problem);
    column->addWidget(VX_OkCancelButtons(this));
}

bool CVxTransformDlg::GetTransform(SVxTransform& transform) const
{
    transform = SVxTransform();
    transform.currentFloorOnly = m_floor->isChecked();
    for (auto [edit, value] : {std::pair{m_dx, &transform.dx}, std::pair{m_dy, &transform.dy}}) {
        if (!edit->GetValue(*value)) {
            edit->setFocus();
            return false;
        }
    }
    transform.scale = m_scale->value() / 100.0;
    transform.rotate = m_rotate->value();
    transform.mirrorHorizontally = m_mirrorH->isChecked();
    transform.mirrorVertically = m_mirrorV->isChecked();
    return true;
}

void CVxTransformDlg::accept()
{
    SVxTransform transform;
    if (!GetTransform(transform)) {
        VX_ShowProblem(m_problem, T(13, L"Please enter a distance, such as 50 cm or -2' 6\"."));
        return;
    }
    VX_GetCore()->ApplyTransform(transform);
    QDialog::accept();
}
