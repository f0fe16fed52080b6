#include "VxLocalizeWidgets.h"

#include "CVxLocalize.h"

#include <QAbstractButton>
#include <QAction>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace {
QString Localized(int table, int number, const QString& english)
{
    return VX_GetLoc()->LocalizeDlgString(table, number, CVxStringW(english)).ToQString();
}
} // namespace

void LocalizeDlgItem(int table, int number, QLabel* label)
{
    if (label)
        label->setText(Localized(table, number, label->text()));
}

void LocalizeDlgItem(int table, int number, QAbstractButton* button)
{
    if (button)
        button->setText(Localized(table, number, button->text()));
}

void LocalizeDlgItem(int table, int number, QAction* action)
{
    if (action)
        action->setText(Localized(table, number, action->text()));
}

void LocalizeDlgItem(int table, int number, QGroupBox* group)
{
    if (group)
        group->setTitle(Localized(table, number, group->title()));
}

void LocalizeHint(int table, int number, QAbstractButton* button)
{
    if (button)
        button->setToolTip(Localized(table, number, button->toolTip()));
}

void LocalizeButtonBox(QDialogButtonBox* box)
{
    if (!box)
        return;
    CVxLocalize* loc = VX_GetLoc();
    const int messages = loc->GetTableIndex(CVxLocalize::TBL_MESSAGES);
    const int mainMenu = loc->GetTableIndex(CVxLocalize::TBL_MAINMENU);
    // The same rows as the buttons of the program's message boxes.
    const struct
    {
        QDialogButtonBox::StandardButton button;
        int table;
        int number;
    } kRows[] = {
        {QDialogButtonBox::Ok, messages, 1},    {QDialogButtonBox::Cancel, messages, 2},
        {QDialogButtonBox::Yes, messages, 178}, {QDialogButtonBox::No, messages, 179},
        {QDialogButtonBox::Save, mainMenu, 5},
    };
    for (const auto& row : kRows) {
        QPushButton* button = box->button(row.button);
        if (!button)
            continue;
        CVxStringW text;
        if (loc->LocalizeDlgStringEx(row.table, row.number, text))
            button->setText(text.ToQString());
    }
}

QString VX_MessageText(int number, const wchar_t* english)
{
    return VX_GetLoc()->LocalizeMessage(number, CVxStringW(english)).ToQString();
}

QString VX_ToolbarText(int number, const wchar_t* english)
{
    CVxLocalize* loc = VX_GetLoc();
    return Localized(loc->GetTableIndex(CVxLocalize::TBL_TOOLBAR), number, QString::fromWCharArray(english));
}
