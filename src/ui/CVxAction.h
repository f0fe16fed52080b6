#pragma once
// One command of the window: a menu item or a tool button that carries the
// command's number, its item index (recent files, samples), the interfaces it
// appears in and its icon. Texts, tool tip and shortcut come from the core.

#include "VxHostTypes.h"

#include <QAction>
#include <QKeySequence>
#include <QString>

class CVxAction : public QAction
{
    Q_OBJECT
public:
    CVxAction(EVxMainToolbarButtonCode code, int index, QObject* parent);

    EVxMainToolbarButtonCode GetCode() const { return m_code; }
    int GetIndex() const { return m_index; }
    unsigned GetInterfaces() const { return m_interfaces; }
    void SetInterfaces(unsigned interfaces) { m_interfaces = interfaces; }
    const QString& GetIconResource() const { return m_iconResource; }
    void SetIconResource(const QString& resource, bool mirrorable, bool autoDark);
    bool IsMirrorable() const { return m_mirrorable; }
    bool IsAutoDark() const { return m_autoDark; }
    // Recent files and samples are named by the window, not by the table.
    void SetOwnText(bool own) { m_ownText = own; }

    // Text, tool tip with the shortcut, and the key sequence, as the core
    // gives them now.
    void SetActionTexts();

    // The key sequence of a shortcut in the core's terms: modifiers 1 Shift,
    // 2 Ctrl, 4 Alt; a character or an EVxKey.
    static QKeySequence ToKeySequence(unsigned modifiers, unsigned key);

private:
    EVxMainToolbarButtonCode m_code;
    int m_index;
    unsigned m_interfaces = 255;
    QString m_iconResource;
    bool m_mirrorable = false;
    bool m_autoDark = false;
    bool m_ownText = false;
};
