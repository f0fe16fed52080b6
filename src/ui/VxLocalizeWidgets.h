#pragma once
// Localisation of widgets: the text a form was built with is the English one,
// and the row of the table replaces it when the selected language has it.
// `table` is an index from CVxLocalize::GetDlgIndex or GetTableIndex.

#include <QString>

class QAbstractButton;
class QAction;
class QDialogButtonBox;
class QGroupBox;
class QLabel;

void LocalizeDlgItem(int table, int number, QLabel* label);
void LocalizeDlgItem(int table, int number, QAbstractButton* button);
void LocalizeDlgItem(int table, int number, QAction* action);
void LocalizeDlgItem(int table, int number, QGroupBox* group);
// The tool tip of a button.
void LocalizeHint(int table, int number, QAbstractButton* button);
// The standard buttons OK, Cancel, Yes, No and Save, with the texts of the
// message box buttons.
void LocalizeButtonBox(QDialogButtonBox* box);

// A row of the table "Messages" or "Toolbar" in the selected language, the
// English text where the language has none.
QString VX_MessageText(int number, const wchar_t* english);
QString VX_ToolbarText(int number, const wchar_t* english);
