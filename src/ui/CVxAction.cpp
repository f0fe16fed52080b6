#include "CVxAction.h"

#include "CVxAppCore.h"

#include <QChar>

CVxAction::CVxAction(EVxMainToolbarButtonCode code, int index, QObject* parent)
    : QAction(parent), m_code(code), m_index(index)
{
}

void CVxAction::SetIconResource(const QString& resource, bool mirrorable, bool autoDark)
{
    m_iconResource = resource;
    m_mirrorable = mirrorable;
    m_autoDark = autoDark;
}

void CVxAction::SetActionTexts()
{
    CVxAppCore* core = VX_GetCore();
    if (!m_ownText) {
        // A "&" in a command's text is a character of the text, not an
        // accelerator ("Draw in Black & White").
        // The item shows the first line; further lines are for the tool tip.
        QString text =
            core->GetMainToolbarButtonHint(m_code, false).ToQString().section(QLatin1Char('\n'), 0, 0);
        setText(text.replace(QLatin1Char('&'), QStringLiteral("&&")));
        setToolTip(core->GetMainToolbarButtonHint(m_code, true).ToQString());
    }
    unsigned modifiers = 0;
    unsigned key = 0;
    if (core->GetMainToolbarButtonShortcut(m_code, modifiers, key))
        setShortcut(ToKeySequence(modifiers, key));
    else
        setShortcut(QKeySequence());
}

QKeySequence CVxAction::ToKeySequence(unsigned modifiers, unsigned key)
{
    int qtKey = 0;
    switch (key) {
    case VX_KEY_LEFT:
        qtKey = Qt::Key_Left;
        break;
    case VX_KEY_RIGHT:
        qtKey = Qt::Key_Right;
        break;
    case VX_KEY_UP:
        qtKey = Qt::Key_Up;
        break;
    case VX_KEY_DOWN:
        qtKey = Qt::Key_Down;
        break;
    case VX_KEY_ESC:
        qtKey = Qt::Key_Escape;
        break;
    case VX_KEY_ENTER:
        qtKey = Qt::Key_Return;
        break;
    case VX_KEY_DELETE:
        qtKey = Qt::Key_Delete;
        break;
    case VX_KEY_PGUP:
        qtKey = Qt::Key_PageUp;
        break;
    case VX_KEY_PGDN:
        qtKey = Qt::Key_PageDown;
        break;
    default:
        if (key >= VX_KEY_F1 && key <= VX_KEY_F12)
            qtKey = Qt::Key_F1 + static_cast<int>(key - VX_KEY_F1);
        else if (key > 32 && key < 127)
            // Qt numbers the printable keys by their upper-case character.
            qtKey = QChar(static_cast<char16_t>(key)).toUpper().unicode();
        break;
    }
    if (qtKey == 0)
        return QKeySequence();
    int combined = qtKey;
    if (modifiers & CVxAppCore::modShift)
        combined |= Qt::SHIFT;
    if (modifiers & CVxAppCore::modCtrl)
        combined |= Qt::CTRL;
    if (modifiers & CVxAppCore::modAlt)
        combined |= Qt::ALT;
    return QKeySequence(combined);
}
