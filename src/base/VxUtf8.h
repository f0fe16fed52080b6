#pragma once
// UTF-8 is the one 8-bit encoding of the program: files, paths and the
// clipboard. A bad sequence stops the conversion and keeps what came before.

#include "CVxStringA.h"
#include "CVxStringW.h"

#include <string>

CVxStringA VX_StringToUTF8(const CVxStringW& text);
// The code page is accepted for the callers' sake and has no effect.
CVxStringW VX_StringToUnicode(const CVxStringA& text, int codePage);
CVxStringW VX_StringFromUTF8(const CVxStringA& text);
// Decodes the UTF-8 bytes from `begin` to `end` onto the end of `out`.
void VX_AppendUnicodeFromUTF8(const char* begin, const char* end, std::wstring& out);
