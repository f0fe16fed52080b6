#include "CVxColorSwatch.h"

#include "CVxIniFileReader.h"
#include "CVxStringReader.h"
#include "VxColorConvert.h"

#include <algorithm>
#include <functional>

namespace {

// Every line of the reader's data; stops early when handler returns false.
void ForEachLine(CVxIniFileReader& reader, const std::function<bool(CVxStringW&)>& handler)
{
    bool eof = false;
    while (!eof) {
        CVxStringW line = reader.ReadLineFromFile(eof);
        if (eof && line.IsEmpty())
            break;
        if (!handler(line))
            break;
    }
}

CVxStringW Trimmed(const CVxStringW& text)
{
    CVxStringW copy(text);
    copy.Trim();
    // Tabs and a CR left by a CR-only line end count as blanks here.
    while (!copy.IsEmpty() && (copy[copy.GetLength() - 1] == L'\t' || copy[copy.GetLength() - 1] == L'\r'))
        copy = copy.Left(copy.GetLength() - 1);
    while (!copy.IsEmpty() && copy[0] == L'\t')
        copy = copy.Mid(1);
    return copy;
}

// 0 to 255, digits only.
bool ParseChannel(const CVxStringW& text, unsigned& channel)
{
    const CVxStringW digits = Trimmed(text);
    if (digits.IsEmpty() || digits.GetLength() > 3)
        return false;
    unsigned value = 0;
    for (int i = 0; i < digits.GetLength(); ++i) {
        const wchar_t c = digits[i];
        if (c < L'0' || c > L'9')
            return false;
        value = value * 10 + static_cast<unsigned>(c - L'0');
    }
    if (value > 255)
        return false;
    channel = value;
    return true;
}

// The web form with or without "#".
bool ParseWebColor(const CVxStringW& text, unsigned& colour)
{
    CVxStringW hex = Trimmed(text);
    if (hex.StartsWith(CVxStringW(L"#")))
        hex = hex.Mid(1);
    return VX_HexToRGB(hex, colour);
}

// "205-186-136", as RAL lists give sRGB.
bool ParseDashedRgb(const CVxStringW& text, unsigned& colour)
{
    const std::vector<CVxStringW> parts = Trimmed(text).Split(L'-');
    unsigned rgb[3];
    if (parts.size() != 3)
        return false;
    for (size_t i = 0; i < 3; ++i)
        if (!ParseChannel(parts[i], rgb[i]))
            return false;
    colour = VX_RGB(rgb[0], rgb[1], rgb[2]);
    return true;
}

wchar_t SeparatorOf(const CVxStringW& line)
{
    return line.Contains(L';') ? L';' : L',';
}

const CVxStringW* FieldAt(const std::vector<CVxStringW>& fields, int index)
{
    if (index < 0 || index >= static_cast<int>(fields.size()))
        return nullptr;
    return &fields[static_cast<size_t>(index)];
}

CVxStringW FieldText(const std::vector<CVxStringW>& fields, int index)
{
    const CVxStringW* field = FieldAt(fields, index);
    return field ? Trimmed(*field) : CVxStringW();
}

// The columns that a table file's header names.
struct SVxCsvColumns
{
    int swatch = -1, code = -1, name = -1, category = -1, hex = -1, red = -1, green = -1, blue = -1;
    wchar_t separator = L';';

    bool Parse(const CVxStringW& header)
    {
        separator = SeparatorOf(header);
        const std::vector<CVxStringW> fields = header.SplitCsvLine(separator);
        for (int i = 0; i < static_cast<int>(fields.size()); ++i) {
            CVxStringW title = Trimmed(fields[static_cast<size_t>(i)]);
            title.LowerCase();
            int* column = nullptr;
            if (title == L"swatch")
                column = &swatch;
            else if (title == L"code")
                column = &code;
            else if (title == L"name")
                column = &name;
            else if (title == L"category")
                column = &category;
            else if (title == L"hex")
                column = &hex;
            else if (title == L"red")
                column = &red;
            else if (title == L"green")
                column = &green;
            else if (title == L"blue")
                column = &blue;
            if (column && *column < 0)
                *column = i;
        }
        return hex >= 0 || (red >= 0 && green >= 0 && blue >= 0);
    }

    bool ColorOf(const std::vector<CVxStringW>& fields, unsigned& colour) const
    {
        if (const CVxStringW* text = FieldAt(fields, hex))
            if (ParseWebColor(*text, colour))
                return true;
        const CVxStringW* r = FieldAt(fields, red);
        const CVxStringW* g = FieldAt(fields, green);
        const CVxStringW* b = FieldAt(fields, blue);
        unsigned rgb[3];
        if (!r || !g || !b || !ParseChannel(*r, rgb[0]) || !ParseChannel(*g, rgb[1]) ||
            !ParseChannel(*b, rgb[2]))
            return false;
        colour = VX_RGB(rgb[0], rgb[1], rgb[2]);
        return true;
    }
};

bool IsComment(const CVxStringW& line)
{
    const CVxStringW text = Trimmed(line);
    return text.IsEmpty() || text[0] == L'#';
}

// The groups of the RAL classic card, by the first digit of the number.
CVxStringW RalCategory(const CVxStringW& code)
{
    static const wchar_t* const groups[10] = {
        L"",      L"Yellow and beige", L"Orange", L"Red", L"Violet", L"Blue", L"Green", L"Grey",
        L"Brown", L"White and black",
    };
    for (int i = 0; i < code.GetLength(); ++i) {
        const wchar_t c = code[i];
        if (c >= L'0' && c <= L'9')
            return CVxStringW(groups[c - L'0']);
    }
    return CVxStringW();
}

bool StartsWithRal(const CVxStringW& text)
{
    CVxStringW head = Trimmed(text).Left(3);
    head.UpperCase();
    return head == L"RAL";
}

// "RAL1000", "ral 1000" and "RAL  1000" all read as "RAL 1000".
CVxStringW NormalizeRalCode(const CVxStringW& text)
{
    CVxStringW rest = Trimmed(text).Mid(3);
    rest.Trim();
    return CVxStringW(L"RAL ") + rest;
}

int ReadColumnsOrLines(const CVxStringW& value, int limit)
{
    return std::clamp(value.ToIntDef(0), 0, limit);
}

} // namespace

bool CVxColorSwatch::LoadFromFile(const CVxStringW& path)
{
    CVxIniFileReader reader(path, 65001);
    if (!reader.IsOpened())
        return false;
    Clear();
    m_path = path;
    reader.ReadAllSectionsNamed("ColorSwatch", this);
    if (m_name.IsEmpty())
        m_name = path.ExtractFileTitleWithoutExt();
    return !m_items.empty();
}

bool CVxColorSwatch::LoadFromText(const CVxStringA& text)
{
    CVxStringReader reader(text, 65001);
    Clear();
    reader.ReadAllSectionsNamed("ColorSwatch", this);
    return !m_items.empty();
}

void CVxColorSwatch::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader*)
{
    if (key == "Name") {
        m_name = Trimmed(value);
    } else if (key == "Columns") {
        m_columns = ReadColumnsOrLines(value, maxColumns);
    } else if (key == "Lines") {
        m_lines = ReadColumnsOrLines(value, maxLines);
    } else if (key == "Item") {
        const std::vector<CVxStringW> fields = value.Split(L'|');
        CVxColorSwatchItem item;
        if (!ParseWebColor(fields[0], item.color))
            return;
        item.name = FieldText(fields, 1);
        item.category = FieldText(fields, 2);
        AddItem(item);
    }
}

namespace {

bool LoadCsv(CVxColorSwatch& swatch, CVxIniFileReader& reader)
{
    SVxCsvColumns columns;
    bool haveHeader = false;
    bool headerOk = false;
    bool nameFromRows = swatch.GetName().IsEmpty();
    ForEachLine(reader, [&](CVxStringW& line) {
        if (!haveHeader) {
            // Comments stand ahead of the header only: "#" starts a colour
            // in the web form as well.
            if (IsComment(line))
                return true;
            haveHeader = true;
            headerOk = columns.Parse(line);
            return headerOk;
        }
        const std::vector<CVxStringW> fields = line.SplitCsvLine(columns.separator);
        if (columns.swatch >= 0) {
            const CVxStringW swatchName = FieldText(fields, columns.swatch);
            if (nameFromRows) {
                swatch.SetName(swatchName);
                nameFromRows = false;
            }
            if (swatchName != swatch.GetName())
                return true;
        }
        CVxColorSwatchItem item;
        if (!columns.ColorOf(fields, item.color))
            return true;
        item.code = FieldText(fields, columns.code);
        item.name = FieldText(fields, columns.name);
        item.category = FieldText(fields, columns.category);
        swatch.AddItem(item);
        return swatch.GetCount() < CVxColorSwatch::maxItems;
    });
    return headerOk && swatch.GetCount() > 0;
}

bool LoadRalClassic(CVxColorSwatch& swatch, CVxIniFileReader& reader)
{
    int nameColumn = 3;
    bool haveData = false;
    ForEachLine(reader, [&](CVxStringW& line) {
        if (IsComment(line))
            return true;
        const std::vector<CVxStringW> fields = line.SplitCsvLine(SeparatorOf(line));
        if (!StartsWithRal(FieldText(fields, 0))) {
            // A header before the first colour may say where the name stands.
            if (!haveData) {
                for (int i = 0; i < static_cast<int>(fields.size()); ++i) {
                    CVxStringW title = FieldText(fields, i);
                    title.LowerCase();
                    if (title == L"english" || title == L"name") {
                        nameColumn = i;
                        break;
                    }
                }
            }
            return true;
        }
        haveData = true;
        CVxColorSwatchItem item;
        const CVxStringW* dashed = FieldAt(fields, 1);
        const CVxStringW* web = FieldAt(fields, 2);
        if (!(dashed && ParseDashedRgb(*dashed, item.color)) && !(web && ParseWebColor(*web, item.color)))
            return true;
        item.code = NormalizeRalCode(FieldText(fields, 0));
        item.name = FieldText(fields, nameColumn);
        item.category = RalCategory(item.code);
        swatch.AddItem(item);
        return swatch.GetCount() < CVxColorSwatch::maxItems;
    });
    return swatch.GetCount() > 0;
}

} // namespace

bool CVxColorSwatch::LoadValuesFromCsvFile(const CVxStringW& path)
{
    CVxIniFileReader reader(path, 65001);
    if (!reader.IsOpened())
        return false;
    m_items.clear();
    m_path = path;
    const bool loaded = LoadCsv(*this, reader);
    if (m_name.IsEmpty())
        m_name = path.ExtractFileTitleWithoutExt();
    return loaded;
}

bool CVxColorSwatch::LoadValuesFromCsvText(const CVxStringA& text)
{
    CVxStringReader reader(text, 65001);
    m_items.clear();
    return LoadCsv(*this, reader);
}

bool CVxColorSwatch::LoadValuesFromCsvFileRalClassic(const CVxStringW& path)
{
    CVxIniFileReader reader(path, 65001);
    if (!reader.IsOpened())
        return false;
    m_items.clear();
    m_path = path;
    if (m_name.IsEmpty())
        m_name = L"RAL Classic";
    return LoadRalClassic(*this, reader);
}

bool CVxColorSwatch::LoadValuesFromCsvTextRalClassic(const CVxStringA& text)
{
    CVxStringReader reader(text, 65001);
    m_items.clear();
    if (m_name.IsEmpty())
        m_name = L"RAL Classic";
    return LoadRalClassic(*this, reader);
}

std::vector<CVxStringW> CVxColorSwatch::GetCsvSwatchNames(const CVxStringW& path)
{
    std::vector<CVxStringW> names;
    CVxIniFileReader reader(path, 65001);
    if (!reader.IsOpened())
        return names;
    SVxCsvColumns columns;
    bool haveHeader = false;
    ForEachLine(reader, [&](CVxStringW& line) {
        if (!haveHeader) {
            if (IsComment(line))
                return true;
            haveHeader = true;
            return columns.Parse(line) && columns.swatch >= 0;
        }
        const CVxStringW name = FieldText(line.SplitCsvLine(columns.separator), columns.swatch);
        if (std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
        return names.size() < 256;
    });
    if (names.empty())
        names.emplace_back();
    return names;
}

int CVxColorSwatch::GetClosestColor(unsigned colour, const CVxStringW& category) const
{
    const unsigned rgb = colour & 0xFFFFFFu;
    double L, a, b;
    VX_RGBtoLab(rgb, L, a, b);
    int best = -1;
    double bestDistance = 100000.0;
    for (int i = 0; i < GetCount(); ++i) {
        const CVxColorSwatchItem& item = m_items[static_cast<size_t>(i)];
        if (!category.IsEmpty() && !item.category.IsEmpty() && item.category != category)
            continue;
        if ((item.color & 0xFFFFFFu) == rgb)
            return i;
        double itemL, itemA, itemB;
        VX_RGBtoLab(item.color, itemL, itemA, itemB);
        const double distance =
            (itemL - L) * (itemL - L) + (itemA - a) * (itemA - a) + (itemB - b) * (itemB - b);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = i;
        }
    }
    return best;
}

std::vector<CVxStringW> CVxColorSwatch::GetSubCategories() const
{
    std::vector<CVxStringW> categories;
    for (const CVxColorSwatchItem& item : m_items)
        if (!item.category.IsEmpty() &&
            std::find(categories.begin(), categories.end(), item.category) == categories.end())
            categories.push_back(item.category);
    return categories;
}

void CVxColorSwatch::AddItem(const CVxColorSwatchItem& item)
{
    if (GetCount() < maxItems)
        m_items.push_back(item);
}

void CVxColorSwatch::Clear()
{
    m_name.Empty();
    m_path.Empty();
    m_columns = 0;
    m_lines = 0;
    m_standard = false;
    m_items.clear();
}

const CVxColorSwatchItem* CVxColorSwatch::SafeGetItem(int index) const
{
    if (index < 0 || index >= GetCount())
        return nullptr;
    return &m_items[static_cast<size_t>(index)];
}
