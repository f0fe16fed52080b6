#pragma once
// The properties of the selected objects, of one library object, and of a
// label. The dialogues are views of a CVxObjPropEdit: every change shows in
// the plan at once, OK keeps it as one undo step and Cancel takes it back.

#include "CVxObjPropEdit.h"

#include <QDialog>

#include <functional>
#include <utility>
#include <vector>

class CVxAppearanceButton;
class CVxLengthEdit;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QSpinBox;
class QToolButton;

class CVxObjectPropertiesDlg : public QDialog
{
    Q_OBJECT
public:
    CVxObjectPropertiesDlg(CVxObjPropEdit& edit, QWidget* parent = nullptr);
    // What the user changed; fields left alone are unset.
    SVxObjPropValues GetEditedValues() const;
    void done(int result) override;
    // True after OK when anything changed.
    bool IsChanged() const { return m_changed; }

    QLineEdit* GetNameEdit() const { return m_name; }
    CVxLengthEdit* GetWidthEdit() const { return m_width; }
    CVxLengthEdit* GetDepthEdit() const { return m_depth; }
    CVxLengthEdit* GetHeightEdit() const { return m_height; }
    CVxLengthEdit* GetElevationEdit() const { return m_elevation; }
    CVxLengthEdit* GetRotationEdit() const { return m_rotation; }
    CVxAppearanceButton* GetFillButton() const { return m_fill; }
    QComboBox* GetSubTypeCombo() const { return m_subType; }
    // Opens the form of a stairs' or wardrobe's own settings; null for
    // other objects.
    QPushButton* GetPayloadButton() const { return m_payloadButton; }

public slots:
    void OnChanged();
    void OnAdvanced();
    void OnPayload();
    // A locked object offers nothing but its locks.
    void OnLockChanged();

private:
    CVxObjPropEdit& m_edit;
    // The fields that a lock closes, and whether they are open otherwise.
    std::vector<std::pair<QWidget*, bool>> m_lockable;
    SVxObjPropValues m_advanced;
    bool m_ready = false;
    bool m_changed = false;
    QLineEdit* m_name = nullptr;
    CVxLengthEdit* m_width = nullptr;
    CVxLengthEdit* m_depth = nullptr;
    CVxLengthEdit* m_height = nullptr;
    CVxLengthEdit* m_elevation = nullptr;
    CVxLengthEdit* m_rotation = nullptr;
    QComboBox* m_layer = nullptr;
    QCheckBox* m_lock = nullptr;
    QCheckBox* m_lockSize = nullptr;
    CVxAppearanceButton* m_fill = nullptr;
    QCheckBox* m_frontEnabled = nullptr;
    CVxAppearanceButton* m_front = nullptr;
    CVxAppearanceButton* m_line = nullptr;
    QComboBox* m_subType = nullptr;
    QComboBox* m_handleType = nullptr;
    QCheckBox* m_opened = nullptr;
    QCheckBox* m_doorframe = nullptr;
    CVxLengthEdit* m_thickness = nullptr;
    QSpinBox* m_rows = nullptr;
    QSpinBox* m_cols = nullptr;
    QPushButton* m_payloadButton = nullptr;
    // The payload as its form left it, until OK.
    std::optional<CVxStringW> m_payload;
};

// The rarely used fields: comment, article number, price, link, 3D and line.
class CVxObjectAdvancedPropertiesDlg : public QDialog
{
    Q_OBJECT
public:
    CVxObjectAdvancedPropertiesDlg(const SVxObjPropValues& values, const SVxObjPropScope& scope,
                                   QWidget* parent = nullptr);
    SVxObjPropValues GetEditedValues() const;

private:
    SVxObjPropValues m_initial;
    QLineEdit* m_comment = nullptr;
    QLineEdit* m_customID = nullptr;
    QLineEdit* m_price = nullptr;
    QLineEdit* m_link = nullptr;
    QCheckBox* m_no3D = nullptr;
    QLineEdit* m_lineThick = nullptr;
};

class CVxLabelPropertiesDlg : public QDialog
{
    Q_OBJECT
public:
    CVxLabelPropertiesDlg(CVxObjPropEdit& edit, QWidget* parent = nullptr);
    SVxObjPropValues GetEditedValues() const;
    void done(int result) override;
    bool IsChanged() const { return m_changed; }
    QPlainTextEdit* GetTextEdit() const { return m_text; }
    QComboBox* GetAlignCombo() const { return m_align; }

public slots:
    void OnChanged();

private:
    CVxObjPropEdit& m_edit;
    bool m_ready = false;
    bool m_changed = false;
    QPlainTextEdit* m_text = nullptr;
    QComboBox* m_align = nullptr;
    QSpinBox* m_fontSize = nullptr;
    CVxAppearanceButton* m_textColor = nullptr;
    CVxLengthEdit* m_rotation = nullptr;
    QComboBox* m_layer = nullptr;
};

// Tri-state check boxes and combo boxes for values that may differ.
void VX_SetCheck(QCheckBox* box, const std::optional<bool>& value);
std::optional<bool> VX_GetCheckEdit(const QCheckBox* box, const std::optional<bool>& initial);
std::optional<int> VX_GetComboEdit(const QComboBox* combo, const std::optional<int>& initial);
// A menu of the caption variables of a type that writes into a text field.
QToolButton* VX_CreateVariablesButton(int type, QWidget* parent,
                                      const std::function<void(const QString&)>& insert);
