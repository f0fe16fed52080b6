#pragma once
// The facts of every user command that do not depend on the state of the
// program: English text, icon, shortcut, whether it can be checked, and in
// which interfaces it appears.

#include "VxHostTypes.h"

struct SVxCommandFacts
{
    // English text, the fallback of the localised one; null for the codes
    // without a text of their own.
    const wchar_t* text;
    // Icon resource name without folder and extension, or null.
    const char* icon;
    // Shortcut, and the one for hosts that prefer the Cmd key; modifiers
    // are 1 Shift, 2 Ctrl, 4 Alt, the key a character or an EVxKey.
    unsigned modifiers, key;
    unsigned cmdModifiers, cmdKey;
    unsigned char presence;
    bool checkable;
    // Mirrored in a right-to-left language.
    bool mirrorable;
    // Drawn in the ink colour, which a dark colour scheme lightens.
    bool autoDark;
};

// Null for 0 and for any code outside the table.
const SVxCommandFacts* VX_GetCommandFacts(int code);
