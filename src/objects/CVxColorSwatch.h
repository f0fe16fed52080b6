#pragma once
// A catalogue of named colours, such as a paint maker's colour card, shown as
// a grid in the colour dialog.
//
// A ".pvswatch" file is a record file with one section "ColorSwatch":
//
//     [ColorSwatch]
//     Name=Interior
//     Columns=8
//     Lines=5
//     Item=f4f1ea|Chalk white|Walls
//
// Each "Item" holds the colour in the web's hexadecimal form (red, green,
// blue; a leading "#" is allowed), the name and an optional category.
//
// A table file holds a header line that names its columns, separated by ";"
// or ",": "Code", "Name", "Category", "Swatch", and either "Hex" or "Red",
// "Green" and "Blue". Lines starting with "#" ahead of the header are
// comments. With a "Swatch" column one file can hold several catalogues.
//
// A classic RAL list has one colour a line: the code "RAL 1000", the colour
// as "205-186-136", the web form "#CDBA88" and the English name. A header
// line is allowed; the category follows from the code's first digit.

#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <vector>

class CVxStringA;

class CVxColorSwatchItem
{
public:
    CVxStringW code;
    CVxStringW name;
    CVxStringW category;
    unsigned color = 0;
};

class CVxColorSwatch : public IVxReadIniClient
{
public:
    // No catalogue grows beyond this many colours, whatever a file holds.
    static constexpr int maxItems = 20000;
    static constexpr int maxColumns = 64;
    static constexpr int maxLines = 1000;

    // A ".pvswatch" file; false when it can't be opened or holds no colour.
    // The name defaults to the file's title.
    bool LoadFromFile(const CVxStringW& path);
    bool LoadFromText(const CVxStringA& text);
    // A table file; false when its header names no colour column or no line
    // gives a colour.
    bool LoadValuesFromCsvFile(const CVxStringW& path);
    bool LoadValuesFromCsvText(const CVxStringA& text);
    // A classic RAL list; false when no line gives a colour.
    bool LoadValuesFromCsvFileRalClassic(const CVxStringW& path);
    bool LoadValuesFromCsvTextRalClassic(const CVxStringA& text);
    // The names of the catalogues of a table file, in order of appearance;
    // one empty name for a file without a "Swatch" column.
    static std::vector<CVxStringW> GetCsvSwatchNames(const CVxStringW& path);

    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;

    // The index of the item nearest to colour as the eye sees it, or -1 for
    // an empty catalogue. With a category, items of another category are
    // passed over; items without a category always count.
    int GetClosestColor(unsigned colour, const CVxStringW& category = CVxStringW()) const;
    // The distinct categories in order of appearance.
    std::vector<CVxStringW> GetSubCategories() const;

    void AddItem(const CVxColorSwatchItem& item);
    void Clear();
    int GetCount() const { return static_cast<int>(m_items.size()); }
    const CVxColorSwatchItem* SafeGetItem(int index) const;
    const std::vector<CVxColorSwatchItem>& GetItems() const { return m_items; }

    const CVxStringW& GetName() const { return m_name; }
    void SetName(const CVxStringW& name) { m_name = name; }
    const CVxStringW& GetPath() const { return m_path; }
    // The grid of the dialog; 0 lets the dialog choose.
    int GetColumns() const { return m_columns; }
    int GetLines() const { return m_lines; }
    bool IsStandard() const { return m_standard; }
    void SetStandard(bool standard) { m_standard = standard; }

private:
    CVxStringW m_name;
    CVxStringW m_path;
    int m_columns = 0;
    int m_lines = 0;
    bool m_standard = false;
    std::vector<CVxColorSwatchItem> m_items;
};
