#pragma once
// One table of a language file: its section name and its texts by row number.
// Rows a translator left out are empty strings.

#include "CVxStringA.h"
#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <vector>

class CVxIniFileReader;
class CVxIniWriter;

class CVxLocStrings : public IVxReadIniClient
{
public:
    // Rows above this number are skipped: no table of the program comes near
    // it, and a mistyped number must not size the table.
    static constexpr int kMaxRow = 100000;

    explicit CVxLocStrings(const CVxStringA& name);

    const CVxStringA& GetName() const { return m_name; }
    int GetCount() const { return static_cast<int>(m_strings.size()); }

    // False for a row beyond the table or an empty row; `out` is then left alone.
    bool GetString(int row, CVxStringW& out) const;
    // Sets one row, growing the table as reading does; rows out of range are ignored.
    void SetString(int row, const CVxStringW& text);
    void Clear() { m_strings.clear(); }

    // Keys "Item<row>"; other keys and rows that are no number are skipped.
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;

    // For a translator's tool: brings this table to the rows of `other`, the
    // reference. A row takes the reference's text when it is empty here, or
    // when the reference's text ends in "#", which marks a row still to be
    // translated. Tables of different names are left alone and give false.
    bool SynchronizeWith(const CVxLocStrings& other);
    // Writes the section and "Item<row>" for every non-empty row, line breaks
    // turned back into "\n".
    void SaveToFile(CVxIniWriter* writer) const;

    // The reverse of reading: CR LF, then a lone LF, become the two characters "\n".
    static CVxStringW AddNewLines(const CVxStringW& text);

private:
    // The row number of a key "Item<digits>", or -1.
    static int RowFromKey(const CVxStringA& key);

    CVxStringA m_name;
    std::vector<CVxStringW> m_strings;
};
