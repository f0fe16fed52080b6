#pragma once
// Splits a value by one character, as the records of the project file join
// their fields with "|". No quotes, no escapes: empty fields between two
// separators are kept, and a trailing separator yields no empty last field.

#include "CVxStringW.h"

#include <vector>

class CVxStringTokenizer
{
public:
    CVxStringTokenizer(const CVxStringW& text, wchar_t separator);

    bool IsNextToken() const { return m_pos < m_text.GetLength(); }
    CVxStringW GetNextToken();
    // The same into `token`, whose room is used again.
    void GetNextToken(CVxStringW& token);
    std::vector<CVxStringW> GetTokenList();

private:
    CVxStringW m_text;
    wchar_t m_separator;
    int m_pos = 0;
};
