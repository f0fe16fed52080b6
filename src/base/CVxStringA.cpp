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
    std::string text;
    do {
        text.insert(text.begin(), kDigits[value & 15u]);
        value >>= 4;
    } while (value != 0);
    if (digits > 16)
        digits = 16;
    while (static_cast<int>(text.size()) < digits)
        text.insert(text.begin(), '0');
    if (prefix)
        text.insert(0, "0x");
    return CVxStringA(text);
}
