#pragma once
// A room's properties, the list of the rooms of the floor, and the small
// rename dialogue. Like the object dialogues they are views of an edit in
// the core: the plan follows every change, OK is one undo step.

#include "CVxRoomPropEdit.h"

#include <QDialog>

class CVxAppearanceButton;
class CVxLengthEdit;
class QCheckBox;
class QLabel;
class QLineEdit;
class QTableWidget;

class CVxRoomPropertiesDlg : public QDialog
{
    Q_OBJECT
public:
    CVxRoomPropertiesDlg(CVxRoomPropEdit& edit, QWidget* parent = nullptr);
    SVxRoomPropValues GetEditedValues() const;
    void done(int result) override;

    QLineEdit* GetNameEdit() const { return m_name; }
    CVxAppearanceButton* GetFloorButton() const { return m_floor; }
    CVxLengthEdit* GetSkirtingHeightEdit() const { return m_baseHeight; }
    QCheckBox* GetSkirtingCheck() const { return m_base; }

public slots:
    void OnChanged();

private:
    CVxRoomPropEdit& m_edit;
    bool m_ready = false;
    QLineEdit* m_name = nullptr;
    CVxAppearanceButton* m_floor = nullptr;
    CVxAppearanceButton* m_ceiling = nullptr;
    CVxAppearanceButton* m_walls = nullptr;
    QCheckBox* m_base = nullptr;
    CVxLengthEdit* m_baseHeight = nullptr;
    CVxLengthEdit* m_baseThickness = nullptr;
    CVxAppearanceButton* m_baseLook = nullptr;
    QCheckBox* m_crown = nullptr;
    CVxLengthEdit* m_crownHeight = nullptr;
    CVxLengthEdit* m_crownThickness = nullptr;
    CVxAppearanceButton* m_crownLook = nullptr;
};

// "Rooms in the Project": every room of the floor with its area and
// perimeter; a double click or Properties opens the room, Rename names it.
class CVxRoomMngDlg : public QDialog
{
    Q_OBJECT
public:
    explicit CVxRoomMngDlg(QWidget* parent = nullptr);
    QTableWidget* GetTable() const { return m_table; }
    // The region of the selected row, -1 for none.
    int GetSelectedRegion() const;

public slots:
    void Refill();
    void OnProperties();
    void OnRename();

private:
    QTableWidget* m_table = nullptr;
    QLabel* m_total = nullptr;
};

class CVxRenameDlg : public QDialog
{
    Q_OBJECT
public:
    CVxRenameDlg(const QString& name, QWidget* parent = nullptr);
    QString GetName() const;
    QLineEdit* GetNameEdit() const { return m_name; }

private:
    QLineEdit* m_name = nullptr;
};

// The room dialogue for room `region` of the current floor; true when the
// room was changed.
bool VX_RunRoomPropertiesDlg(int region, QWidget* parent);
