#include "CVxLocStrings.h"

#include "CVxIniWriter.h"
#include "CVxLocalize.h"

CVxLocStrings::CVxLocStrings(const CVxStringA& name) : m_name(name) {}

bool CVxLocStrings::GetString(int row, CVxStringW& out) const
{
    if (row < 0 || row >= GetCount())
        return false;
    const CVxStringW& text = m_strings[static_cast<size_t>(row)];
    if (text.IsEmpty())
        return false;
    out = text;
    return true;
}

void CVxLocStrings::SetString(int row, const CVxStringW& text)
{
    if (row < 0 || row > kMaxRow)
        return;
    // Translators write rows in any order; the spare rows save regrowing the
    // table for every row that follows in ascending order.
    if (row >= GetCount())
        m_strings.resize(static_cast<size_t>(row) + 10);
    m_strings[static_cast<size_t>(row)] = text;
}

int CVxLocStrings::RowFromKey(const CVxStringA& key)
{
    static const char kPrefix[] = "Item";
    const int prefixLength = static_cast<int>(sizeof(kPrefix)) - 1;
    if (!key.StartsWith(kPrefix) || key.GetLength() == prefixLength)
        return -1;
    long long row = 0;
    for (int i = prefixLength; i < key.GetLength(); ++i) {
        const char c = key[i];
        if (c < '0' || c > '9')
            return -1;
        row = row * 10 + (c - '0');
        if (row > kMaxRow)
            return -1;
    }
    return static_cast<int>(row);
}

void CVxLocStrings::OnReadIniValue(const CVxStringA& key, const CVxStringW& value,
                                   CVxIniFileReader* /*reader*/)
{
    const int row = RowFromKey(key);
    if (row < 0)
        return;
    SetString(row, ReplaceNewLinesAndComments(value, true));
}

bool CVxLocStrings::SynchronizeWith(const CVxLocStrings& other)
{
    if (m_name != other.m_name)
        return false;
    m_strings.resize(other.m_strings.size());
    for (size_t row = 0; row < m_strings.size(); ++row) {
        const CVxStringW& reference = other.m_strings[row];
        const bool toTranslate = !reference.IsEmpty() && reference[reference.GetLength() - 1] == L'#';
        if (m_strings[row].IsEmpty() || toTranslate)
            m_strings[row] = reference;
    }
    return true;
}

void CVxLocStrings::SaveToFile(CVxIniWriter* writer) const
{
    if (!writer)
        return;
    writer->StartSection(m_name);
    for (size_t row = 0; row < m_strings.size(); ++row) {
        if (m_strings[row].IsEmpty())
            continue;
        CVxStringA key;
        key.sprintf("Item%d", static_cast<int>(row));
        writer->WriteString(key.c_str(), AddNewLines(m_strings[row]));
    }
}

CVxStringW CVxLocStrings::AddNewLines(const CVxStringW& text)
{
    return text.ReplaceAll(L"\r\n", L"\\n").ReplaceAll(L"\n", L"\\n");
}
