#pragma once
// The operations that the wide and the 8-bit string share. Indexes are int,
// as everywhere in the document model, and a search that fails gives -1.

#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <string>
#include <type_traits>
#include <vector>

// The scanf family for both character types, for the number readers below.
// The plain forms that make up nearly every number in a file, a few digits
// and what ends them, are read directly: swscanf sets up a stream for every
// call, and projects hold hundreds of thousands of numbers. Whatever scanf
// might read otherwise (blanks, a second "0x", long runs of digits that may
// overflow, a lone sign) still goes to scanf.
namespace VxStringScan {
template <typename Ch>
inline int DigitValue(Ch c, bool hex)
{
    if (c >= Ch('0') && c <= Ch('9'))
        return static_cast<int>(c - Ch('0'));
    if (hex && c >= Ch('a') && c <= Ch('f'))
        return static_cast<int>(c - Ch('a')) + 10;
    if (hex && c >= Ch('A') && c <= Ch('F'))
        return static_cast<int>(c - Ch('A')) + 10;
    return -1;
}

// Decimal: an optional sign and digits; hexadecimal: digits only. False,
// with `v` untouched, for any other form.
template <typename Ch, typename Value>
inline bool Plain(const Ch* s, bool hex, Value* v)
{
    using Digits = std::conditional_t<(sizeof(Value) > 4), unsigned long long, unsigned>;
    // Digits that fit the type whatever they are.
    const int maxDigits = hex ? static_cast<int>(sizeof(Value) * 2) : (sizeof(Value) > 4 ? 18 : 9);
    bool negative = false;
    if (!hex && (*s == Ch('-') || *s == Ch('+')))
        negative = *s++ == Ch('-');
    if (hex && s[0] == Ch('0') && (s[1] == Ch('x') || s[1] == Ch('X')))
        return false;
    Digits digits = 0;
    int count = 0;
    for (int d; (d = DigitValue(*s, hex)) >= 0; ++s) {
        if (++count > maxDigits)
            return false;
        digits = digits * (hex ? 16u : 10u) + static_cast<Digits>(d);
    }
    if (count == 0)
        return false;
    const Value value = static_cast<Value>(digits);
    *v = negative ? static_cast<Value>(-value) : value;
    return true;
}

inline bool Hex(const char* s, unsigned* v)
{
    return Plain(s, true, v) || sscanf(s, "%x", v) == 1;
}
inline bool Hex(const wchar_t* s, unsigned* v)
{
    return Plain(s, true, v) || swscanf(s, L"%x", v) == 1;
}
inline bool Hex(const char* s, unsigned long long* v)
{
    return Plain(s, true, v) || sscanf(s, "%llx", v) == 1;
}
inline bool Hex(const wchar_t* s, unsigned long long* v)
{
    return Plain(s, true, v) || swscanf(s, L"%llx", v) == 1;
}
inline bool Dec(const char* s, int* v)
{
    return Plain(s, false, v) || sscanf(s, "%d", v) == 1;
}
inline bool Dec(const wchar_t* s, int* v)
{
    return Plain(s, false, v) || swscanf(s, L"%d", v) == 1;
}
inline bool Dec(const char* s, long long* v)
{
    return Plain(s, false, v) || sscanf(s, "%lld", v) == 1;
}
inline bool Dec(const wchar_t* s, long long* v)
{
    return Plain(s, false, v) || swscanf(s, L"%lld", v) == 1;
}
} // namespace VxStringScan

template <typename Ch, typename Derived>
class CVxStringBase
{
public:
    using CharType = Ch;

    CVxStringBase() = default;
    CVxStringBase(const Ch* text)
    {
        if (text)
            m_s = text;
    }
    CVxStringBase(const Ch* text, int length)
    {
        if (text && length > 0)
            m_s.assign(text, static_cast<size_t>(length));
    }
    CVxStringBase(std::basic_string<Ch> text) : m_s(std::move(text)) {}

    int GetLength() const { return static_cast<int>(m_s.size()); }
    bool IsEmpty() const { return m_s.empty(); }
    void Empty() { m_s.clear(); }
    const Ch* c_str() const { return m_s.c_str(); }
    operator const Ch*() const { return m_s.c_str(); }
    const std::basic_string<Ch>& Std() const { return m_s; }
    std::basic_string<Ch>& Std() { return m_s; }

    // Out-of-range reads give the terminating zero rather than touching memory.
    Ch GetAt(int i) const { return (i >= 0 && i < GetLength()) ? m_s[static_cast<size_t>(i)] : Ch(0); }
    Ch operator[](int i) const { return GetAt(i); }
    void SetAt(int i, Ch c)
    {
        if (i >= 0 && i < GetLength())
            m_s[static_cast<size_t>(i)] = c;
    }

    int Find(const Derived& what, int start = 0) const { return ToIndex(m_s.find(what.m_s, Pos(start))); }
    int Find(const Ch* what, int start = 0) const { return ToIndex(m_s.find(what, Pos(start))); }
    int Find(Ch what, int start = 0) const { return ToIndex(m_s.find(what, Pos(start))); }
    int ReverseFind(Ch what) const { return ToIndex(m_s.rfind(what)); }
    bool Contains(const Derived& what) const { return Find(what) >= 0; }
    bool Contains(Ch what) const { return Find(what) >= 0; }
    bool StartsWith(const Derived& what) const { return m_s.compare(0, what.m_s.size(), what.m_s) == 0; }
    bool EndsWith(const Derived& what) const
    {
        return m_s.size() >= what.m_s.size() &&
               m_s.compare(m_s.size() - what.m_s.size(), what.m_s.size(), what.m_s) == 0;
    }

    Derived Left(int count) const
    {
        if (count <= 0)
            return Derived();
        return Derived(m_s.substr(0, static_cast<size_t>(count)));
    }
    // A negative count means "to the end of the string".
    Derived Mid(int pos, int count = -1) const
    {
        if (pos < 0)
            pos = 0;
        if (pos >= GetLength() || count == 0)
            return Derived();
        if (count < 0)
            return Derived(m_s.substr(static_cast<size_t>(pos)));
        return Derived(m_s.substr(static_cast<size_t>(pos), static_cast<size_t>(count)));
    }
    Derived Right(int count) const
    {
        if (count <= 0)
            return Derived();
        if (count >= GetLength())
            return Derived(m_s);
        return Derived(m_s.substr(m_s.size() - static_cast<size_t>(count)));
    }

    // Only blanks (code 32) count; tabs and line ends stay.
    Derived& Trim() { return TrimRight().TrimLeft(); }
    Derived& TrimLeft()
    {
        size_t i = 0;
        while (i < m_s.size() && m_s[i] == Ch(' '))
            ++i;
        m_s.erase(0, i);
        return Self();
    }
    Derived& TrimRight()
    {
        size_t n = m_s.size();
        while (n > 0 && m_s[n - 1] == Ch(' '))
            --n;
        m_s.resize(n);
        return Self();
    }

    Derived ReplaceAll(const Derived& from, const Derived& to) const
    {
        Derived result(m_s);
        if (from.m_s.empty())
            return result;
        size_t pos = 0;
        while ((pos = result.m_s.find(from.m_s, pos)) != std::basic_string<Ch>::npos) {
            result.m_s.replace(pos, from.m_s.size(), to.m_s);
            pos += to.m_s.size();
        }
        return result;
    }
    void ReplaceIn(int pos, int count, const Derived& text)
    {
        if (pos < 0 || pos > GetLength())
            return;
        if (count < 0 || pos + count > GetLength())
            count = GetLength() - pos;
        m_s.replace(static_cast<size_t>(pos), static_cast<size_t>(count), text.m_s);
    }
    void Insert(int pos, const Derived& text) { ReplaceIn(pos, 0, text); }
    void Delete(int pos, int count = 1) { ReplaceIn(pos, count, Derived()); }

    Derived& LowerCase()
    {
        for (Ch& c : m_s)
            if (c >= Ch('A') && c <= Ch('Z'))
                c = Ch(c - 'A' + 'a');
        return Self();
    }
    Derived& UpperCase()
    {
        for (Ch& c : m_s)
            if (c >= Ch('a') && c <= Ch('z'))
                c = Ch(c - 'a' + 'A');
        return Self();
    }
    int Compare(const Derived& other) const { return m_s.compare(other.m_s); }
    bool IsEqualNoCase(const Derived& other) const
    {
        Derived a(m_s), b(other.m_s);
        return a.LowerCase().m_s == b.LowerCase().m_s;
    }

    // Splits at every separator; empty pieces between separators are kept.
    std::vector<Derived> Split(Ch separator) const
    {
        std::vector<Derived> parts;
        size_t start = 0;
        for (;;) {
            size_t pos = m_s.find(separator, start);
            if (pos == std::basic_string<Ch>::npos) {
                parts.emplace_back(m_s.substr(start));
                return parts;
            }
            parts.emplace_back(m_s.substr(start, pos - start));
            start = pos + 1;
        }
    }

    // One line of a table export: quoted fields with doubled quotes, separator
    // or tab between fields.
    std::vector<Derived> SplitCsvLine(Ch separator) const
    {
        std::vector<Derived> fields;
        const size_t n = m_s.size();
        size_t i = 0;
        auto isEnd = [&](size_t k) { return m_s[k] == separator || m_s[k] == Ch('\t'); };
        while (i < n) {
            while (i < n && m_s[i] == Ch(' '))
                ++i;
            std::basic_string<Ch> field;
            if (i < n && m_s[i] == Ch('"')) {
                ++i;
                while (i < n) {
                    if (m_s[i] == Ch('"')) {
                        if (i + 1 < n && m_s[i + 1] == Ch('"')) {
                            field += Ch('"');
                            i += 2;
                            continue;
                        }
                        ++i;
                        break;
                    }
                    field += m_s[i++];
                }
                while (i < n && !isEnd(i))
                    ++i;
            } else {
                while (i < n && !isEnd(i))
                    field += m_s[i++];
            }
            fields.emplace_back(std::move(field));
            if (i < n)
                ++i; // the separator
        }
        return fields;
    }

    // Numbers in files: empty text gives `def`; "0x" and at least one more
    // character is hexadecimal, anything else decimal; unreadable text gives
    // `def`.
    int ToIntDef(int def) const
    {
        if (m_s.empty())
            return def;
        if (IsHexText()) {
            unsigned value = 0;
            return VxStringScan::Hex(m_s.c_str() + 2, &value) ? static_cast<int>(value) : def;
        }
        int value = 0;
        return VxStringScan::Dec(m_s.c_str(), &value) ? value : def;
    }
    int64_t ToInt64Def(int64_t def) const
    {
        if (m_s.empty())
            return def;
        if (IsHexText()) {
            unsigned long long value = 0;
            return VxStringScan::Hex(m_s.c_str() + 2, &value) ? static_cast<int64_t>(value) : def;
        }
        long long value = 0;
        return VxStringScan::Dec(m_s.c_str(), &value) ? value : def;
    }
    bool ToBoolDef(bool def) const { return ToIntDef(def ? 1 : 0) > 0; }

    Derived& operator+=(const Derived& other)
    {
        m_s += other.m_s;
        return Self();
    }
    Derived& operator+=(const Ch* other)
    {
        if (other)
            m_s += other;
        return Self();
    }
    Derived& operator+=(Ch c)
    {
        m_s += c;
        return Self();
    }
    friend Derived operator+(const Derived& a, const Derived& b) { return Derived(a.m_s + b.m_s); }
    friend Derived operator+(const Derived& a, const Ch* b) { return a + Derived(b); }
    friend Derived operator+(const Ch* a, const Derived& b) { return Derived(a) + b; }
    friend Derived operator+(const Derived& a, Ch b) { return Derived(a.m_s + b); }
    friend bool operator==(const Derived& a, const Derived& b) { return a.m_s == b.m_s; }
    friend bool operator==(const Derived& a, const Ch* b) { return a.m_s == (b ? b : EmptyText()); }
    friend bool operator!=(const Derived& a, const Derived& b) { return a.m_s != b.m_s; }
    friend bool operator!=(const Derived& a, const Ch* b) { return !(a == b); }
    friend bool operator<(const Derived& a, const Derived& b) { return a.m_s < b.m_s; }

protected:
    std::basic_string<Ch> m_s;

private:
    bool IsHexText() const { return m_s.size() >= 3 && m_s[0] == Ch('0') && m_s[1] == Ch('x'); }
    static const Ch* EmptyText()
    {
        static const Ch empty[1] = {Ch(0)};
        return empty;
    }
    Derived& Self() { return static_cast<Derived&>(*this); }
    size_t Pos(int start) const { return start < 0 ? 0 : static_cast<size_t>(start); }
    static int ToIndex(size_t pos) { return pos == std::basic_string<Ch>::npos ? -1 : static_cast<int>(pos); }
};
