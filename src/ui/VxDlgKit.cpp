#include "VxDlgKit.h"

#include "CVxLocalize.h"
#include "CVxUnits.h"
#include "VxLocalizeWidgets.h"
#include "VxNumbers.h"
#include "VxTypedLength.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>

#include <cmath>

QString CVxDlgTexts::operator()(int row, const wchar_t* english) const
{
    CVxLocalize* loc = VX_GetLoc();
    return loc->LocalizeDlgString(loc->GetDlgIndex(CVxStringA(m_table)), row, CVxStringW(english))
        .ToQString();
}

QString VX_LengthText(double value, int unit)
{
    return VX_DblFormat(value, VX_DF_FEET, unit == CVxUnits::UNIT_INCH, unit).ToQString();
}

CVxLengthField::CVxLengthField(double value, int unit, bool allowZeroOrLess, QWidget* parent)
    : QLineEdit(parent), m_unit(unit), m_allowZeroOrLess(allowZeroOrLess)
{
    setMaxLength(40);
    // Shown once WithUnit places it beside the field.
    m_unitLabel = new QLabel(this);
    m_unitLabel->hide();
    SetValue(value);
    SetUnit(unit);
}

void CVxLengthField::SetValue(double value)
{
    m_exact = value;
    m_exactText = VX_LengthText(value, m_unit);
    setText(m_exactText);
}

bool CVxLengthField::GetValue(double& value) const
{
    QString t = text().trimmed();
    if (t == m_exactText && std::isfinite(m_exact)) {
        value = m_exact;
        return true;
    }
    bool negative = false;
    if (m_allowZeroOrLess && t.startsWith(QLatin1Char('-'))) {
        negative = true;
        t = t.mid(1).trimmed();
    }
    double read = 0;
    if (!VX_ParseTypedLength(CVxStringW(t), m_unit, read)) {
        // A typed zero is no length, but a fine offset.
        bool ok = false;
        const double zero = t.toDouble(&ok);
        if (!m_allowZeroOrLess || !ok || zero != 0)
            return false;
        read = 0;
    }
    value = negative ? -read : read;
    return std::isfinite(value);
}

void CVxLengthField::SetUnit(int unit)
{
    double value = 0;
    const bool good = GetValue(value);
    const int from = m_unit;
    m_unit = CVxUnits::IsValid(unit) ? unit : CVxUnits::UNIT_CM;
    m_unitLabel->setText(m_unit == CVxUnits::UNIT_INCH ? CVxUnits::GetUnitName(m_unit).ToQString()
                                                       : CVxUnits::GetUnitText(m_unit).ToQString());
    if (good && from != m_unit)
        SetValue(CVxUnits::ConvertLength(value, from, m_unit));
}

QWidget* CVxLengthField::WithUnit()
{
    auto* box = new QWidget(parentWidget());
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(this, 1);
    m_unitLabel->setParent(box);
    row->addWidget(m_unitLabel);
    m_unitLabel->show();
    return box;
}

QDialogButtonBox* VX_OkCancelButtons(QDialog* dialog, bool connectAccept)
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
    LocalizeButtonBox(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    if (connectAccept)
        QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    return buttons;
}

QLabel* VX_ProblemLabel(QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QStringLiteral("LblProblem"));
    label->setStyleSheet(QStringLiteral("color: #c00000;"));
    label->setWordWrap(true);
    label->hide();
    return label;
}

void VX_ShowProblem(QLabel* label, const QString& text)
{
    label->setText(text);
    label->setVisible(!text.isEmpty());
}
