#include "CVxStringA.h"

#include "CVxStringW.h"

#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

CVxStringA::CVxStringA(const CVxStringW& wide)
{
    if (wide.IsEmpty())
        return;
    // A code point may need up to MB_CUR_MAX bytes in the current locale.
    std::string out(static_cast<size_t>(wide.GetLength()) * MB_LEN_MAX + 1, '\0');
    size_t n = wcstombs(out.data(), wide.c_str(), out.size());
    if (n == static_cast<size_t>(-1))
        return;
    out.resize(n);
    m_s = std::move(out);
}

CVxStringA& CVxStringA::sprintf(const char* format, ...)
{
    char small[512];
    va_list args;
    va_start(args, format);
    int n = vsnprintf(small, sizeof(small), format, args);
    va_end(args);
    if (n < 0) {
        m_s.clear();
        return *this;
    }
    if (static_cast<size_t>(n) < sizeof(small)) {
        m_s.assign(small, static_cast<size_t>(n));
        return *this;
    }
    std::string exact(static_cast<size_t>(n) + 1, '\0');
    va_start(args, format);
    vsnprintf(exact.data(), exact.size(), format, args);
    va_end(args);
    exact.resize(static_cast<size_t>(n));
    m_s = std::move(exact);
    return *this;
}

CVxStringA CVxStringA::IntToHex(unsigned value, int digits, bool prefix)
{
    static const char kDigits[] = "0123456789ABCDEF";
    // Filled from the end: "0x", at most 16 digits.
    char buffer[18];
    char* const end = buffer + sizeof(buffer);
    char* first = end;
    do {
        *--first = kDigits[value & 15u];
        value >>= 4;
    } while (value != 0);
    if (digits > 16)
        digits = 16;
    while (end - first < digits)
        *--first = '0';
    if (prefix) {
        *--first = 'x';
        *--first = '0';
    }
    return CVxStringA(std::string(first, end));
}
