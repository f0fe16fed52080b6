#pragma once
// Small pieces that the project windows share: the texts of one language
// table, a length field that shows its unit and takes typed units, and the
// OK and Cancel buttons.

#include "CVxStringW.h"

#include <QLineEdit>
#include <QString>

class QDialog;
class QDialogButtonBox;
class QLabel;

// The texts of one table of the language file, found by the table's name.
class CVxDlgTexts
{
public:
    explicit CVxDlgTexts(const char* table) : m_table(table) {}
    QString operator()(int row, const wchar_t* english) const;

private:
    const char* m_table;
};

// A length in a unit, with the unit's short text behind it. "2.5 m",
// "250 cm" and "8' 2\"" are all read and converted into the field's unit.
class CVxLengthField : public QLineEdit
{
    Q_OBJECT
public:
    // allowZeroOrLess for offsets, where 0 and negative values make sense.
    CVxLengthField(double value, int unit, bool allowZeroOrLess, QWidget* parent = nullptr);
    // False while the text is no length; value keeps its last good value.
    // An untouched field gives back the value it was given.
    bool GetValue(double& value) const;
    // Shows the value in another unit, converted.
    void SetUnit(int unit);
    void SetValue(double value);
    int GetUnit() const { return m_unit; }
    // The label with the unit's text, to place behind the field.
    QLabel* GetUnitLabel() const { return m_unitLabel; }
    // The field and its unit in one row.
    QWidget* WithUnit();

private:
    int m_unit;
    bool m_allowZeroOrLess;
    // The value as given, which an untouched field gives back exactly
    // rather than as its rounded text.
    double m_exact = 0;
    QString m_exactText;
    QLabel* m_unitLabel = nullptr;
};

// OK and Cancel, localised; OK runs accept unless the dialog connects it
// elsewhere.
QDialogButtonBox* VX_OkCancelButtons(QDialog* dialog, bool connectAccept = true);
// A line above the buttons that tells, in red, what keeps OK from closing;
// hidden until there is something to tell.
QLabel* VX_ProblemLabel(QWidget* parent);
void VX_ShowProblem(QLabel* label, const QString& text);
// The on-screen text of a length in a unit: feet and inches for inches.
QString VX_LengthText(double value, int unit);
