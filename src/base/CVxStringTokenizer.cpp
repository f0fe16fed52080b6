#include "CVxStringTokenizer.h"

CVxStringTokenizer::CVxStringTokenizer(const CVxStringW& text, wchar_t separator)
    : m_text(text), m_separator(separator)
{
}

CVxStringW CVxStringTokenizer::GetNextToken()
{
    if (!IsNextToken())
        return CVxStringW();
    int end = m_text.Find(m_separator, m_pos);
    if (end < 0)
        end = m_text.GetLength();
    CVxStringW token = m_text.Mid(m_pos, end - m_pos);
    m_pos = end + 1;
    return token;
}

void CVxStringTokenizer::GetNextToken(CVxStringW& token)
{
    token.Empty();
    if (!IsNextToken())
        return;
    int end = m_text.Find(m_separator, m_pos);
    if (end < 0)
        end = m_text.GetLength();
    token.Std().assign(m_text.Std(), static_cast<size_t>(m_pos), static_cast<size_t>(end - m_pos));
    m_pos = end + 1;
}

std::vector<CVxStringW> CVxStringTokenizer::GetTokenList()
{
    std::vector<CVxStringW> tokens;
    while (IsNextToken())
        tokens.push_back(GetNextToken());
    return tokens;
}
