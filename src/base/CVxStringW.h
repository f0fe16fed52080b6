#pragma once
// Wide text, the text of the document and of everything a user sees.
// wchar_t is 32 bits here, so one unit is one code point.

#include "VxStringBase.h"

#include <cstdint>

class CVxStringA;
class QString;

class CVxStringW : public CVxStringBase<wchar_t, CVxStringW>
{
public:
    using CVxStringBase::CVxStringBase;
    CVxStringW() = default;
    CVxStringW(const QString& text);
    // The locale text of a number, as FromDoubleUsingLocale(value, -1).
    explicit CVxStringW(double value);
    // ASCII only, through mbstowcs; text it cannot convert gives an empty string.
    explicit CVxStringW(const CVxStringA& narrow);

    operator QString() const;
    QString ToQString() const;

    CVxStringW& sprintf(const wchar_t* format, ...);

    // For what a user typed: reads with the system locale and throws
    // std::invalid_argument("bad_cast") when the text is no number.
    double ToDouble() const;

    static CVxStringW FromDoubleUsingLocale(double value, int precision);
    static CVxStringW IntToHex(unsigned value, int digits, bool prefix);

    // Path pieces, by the last "/" and the last ".".
    CVxStringW ExtractFileFolder() const;
    CVxStringW ExtractFileTitle() const;
    CVxStringW ExtractFileTitleWithoutExt() const;
    CVxStringW ExtractFileExt() const;
    CVxStringW FromWinPath() const;
};
