#pragma once
// Pieces the property dialogues share: a length field that takes typed
// units, a button that shows and picks a surface's appearance, and the
// look-up of a dialogue's texts in its own table.

#include "CVxAppearance.h"
#include "CVxLocalize.h"

#include <QString>
#include <QToolButton>
#include <QWidget>

#include <optional>

class QLabel;
class QLineEdit;

// Row `row` of table `table`, or the English text.
QString VX_DlgText(CVxLocalize::EVxLocTable table, int row, const wchar_t* english);
QString VX_MsgText(int row, const wchar_t* english);

// A length in the project's unit with the unit behind it. The user may type
// another unit: "2.5 m", "8' 2\"", "250". A field that showed several
// differing values is blank and stays out of the change until typed into.
class CVxLengthEdit : public QWidget
{
    Q_OBJECT
public:
    enum EKind
    {
        // Above zero.
        LENGTH,
        // Zero and below allowed: a height above the floor.
        OFFSET,
        // Degrees.
        ANGLE
    };
    CVxLengthEdit(EKind kind, int unit, QWidget* parent = nullptr);
    void SetValue(const std::optional<double>& value);
    // The typed value when the text was changed and reads well; nothing
    // for an untouched or blank field.
    std::optional<double> GetEditedValue() const;
    // False while the text can't be read.
    bool IsValid() const;
    QLineEdit* GetLineEdit() const { return m_edit; }

signals:
    void valueEdited();

private:
    bool Parse(const QString& text, double& out) const;
    void OnTextEdited();

    EKind m_kind;
    int m_unit;
    QLineEdit* m_edit = nullptr;
    QLabel* m_unitLabel = nullptr;
    QString m_initialText;
};

// Shows a surface's colour, or its texture's name; a click opens the colour
// and texture picker. Blank while the edited objects differ.
class CVxAppearanceButton : public QToolButton
{
    Q_OBJECT
public:
    explicit CVxAppearanceButton(QWidget* parent = nullptr);
    void SetAppearance(const std::optional<CVxAppearance>& appearance);
    const std::optional<CVxAppearance>& GetAppearance() const { return m_appearance; }
    // True once the user picked something.
    bool IsPicked() const { return m_picked; }
    // Sets as the picker would, for the keyboard and for tests.
    void Pick(const CVxAppearance& appearance);

signals:
    void appearancePicked();

private:
    void OnClicked();
    void UpdateLook();

    std::optional<CVxAppearance> m_appearance;
    bool m_picked = false;
};

// A colour word as a Qt colour, and back.
QColor VX_ToQColor(unsigned colour);
unsigned VX_FromQColor(const QColor& colour);

class CVxDRect;
class QDialog;
// Moves a dialogue beside a part of the plan, given in plan coordinates, so
// that the plan shows what the dialogue changes; where no side has room it
// stays where it is.
void VX_PlaceBesidePlanRect(QDialog* dialog, const CVxDRect& planRect);
// The bounding rectangle of the selected objects of the current floor.
bool VX_GetSelectionPlanRect(CVxDRect& out);
