#pragma once
// 8-bit text: keys, section names, numbers in files, and UTF-8 on its way to
// and from disk.

#include "VxStringBase.h"

#include <cstdint>

class CVxStringW;

class CVxStringA : public CVxStringBase<char, CVxStringA>
{
public:
    using CVxStringBase::CVxStringBase;
    CVxStringA() = default;
    // ASCII only, through wcstombs; text it cannot convert gives an empty string.
    explicit CVxStringA(const CVxStringW& wide);

    CVxStringA& sprintf(const char* format, ...) __attribute__((format(printf, 2, 3)));

    static CVxStringA IntToHex(unsigned value, int digits, bool prefix);
};
