#pragma once
// UTF-8 is the one 8-bit encoding of the program: files, paths and the
// clipboard. A bad sequence stops the conversion and keeps what came before.

#include "CVxStringA.h"
#include "CVxStringW.h"

CVxStringA VX_StringToUTF8(const CVxStringW& text);
// The code page is accepted for the callers' sake and has no effect.
CVxStringW VX_StringToUnicode(const CVxStringA& text, int codePage);
CVxStringW VX_StringFromUTF8(const CVxStringA& text);
