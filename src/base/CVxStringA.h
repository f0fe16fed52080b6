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

    int ToIntDef(int def) const;
    int64_t ToInt64Def(int64_t def) const;
    bool ToBoolDef(bool def) const { return ToIntDef(def ? 1 : 0) > 0; }

    static CVxStringA IntToHex(unsigned value, int digits, bool prefix);
};
