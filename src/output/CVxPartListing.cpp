#include "CVxPartListing.h"

#include "CVxFloor.h"
#include "CVxPart.h"
#include "CVxProject.h"
#include "VxNumbers.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <string>

namespace {
CVxStringW NameOf(const CVxPart& part)
{
    if (!part.caption.IsEmpty())
        return part.caption;
    return CVxPart::TypeLocalNameFromID(part.type, part.libObjID);
}

bool Alike(const SVxListingRow& a, const SVxListingRow& b)
{
    return a.floor == b.floor && a.color == b.color && a.name == b.name &&
           std::fabs(a.width - b.width) < 1e-7 && std::fabs(a.depth - b.depth) < 1e-7 &&
           std::fabs(a.height - b.height) < 1e-7;
}

CVxStringW Field(const CVxStringW& text, wchar_t separator)
{
    const std::wstring raw(static_cast<const wchar_t*>(text));
    if (raw.find_first_of(std::wstring{separator, L'"', L'\r', L'\n'}) == std::wstring::npos)
        return text;
    std::wstring quoted = L"\"";
    for (wchar_t c : raw) {
        if (c == L'"')
            quoted += L'"';
        quoted += c;
    }
    quoted += L'"';
    return CVxStringW(quoted.c_str());
}
} // namespace

std::vector<SVxListingRow> CVxPartListing::Build(const CVxProject& project, bool allFloors)
{
    std::vector<SVxListingRow> rows;
    for (int f = 0; f < project.GetFloorCount(); ++f) {
        const CVxFloor* floor = project.m_floors[static_cast<size_t>(f)];
        // A current floor out of range means the first, as everywhere.
        const int current = project.m_currentFloor >= 0 && project.m_currentFloor < project.GetFloorCount()
                                ? project.m_currentFloor
                                : 0;
        if (!allFloors && f != current)
            continue;
        for (const CVxPart& part : floor->m_objects) {
            if (!part.inUse || part.IsTempDimLine())
                continue;
            SVxListingRow row;
            row.name = NameOf(part);
            row.count = 1;
            row.width = DblRound2x(part.width);
            row.depth = DblRound2x(part.height);
            row.height = DblRound2x(part.zHeight);
            row.color = part.GetFillColor() & 0xFFFFFF;
            row.floor = f;
            auto same =
                std::find_if(rows.begin(), rows.end(), [&](const SVxListingRow& r) { return Alike(r, row); });
            if (same != rows.end())
                ++same->count;
            else
                rows.push_back(row);
        }
    }
    return rows;
}

void CVxPartListing::Sort(std::vector<SVxListingRow>& rows, int column, bool ascending)
{
    auto less = [column](const SVxListingRow& a, const SVxListingRow& b) {
        switch (column) {
        case COL_COUNT:
            return a.count < b.count;
        case COL_WIDTH:
            return a.width < b.width;
        case COL_DEPTH:
            return a.depth < b.depth;
        case COL_HEIGHT:
            return a.height < b.height;
        case COL_COLOR:
            return a.color < b.color;
        case COL_FLOOR:
            return a.floor < b.floor;
        default:
            return a.name.ToQString().compare(b.name.ToQString(), Qt::CaseInsensitive) < 0;
        }
    };
    if (ascending)
        std::stable_sort(rows.begin(), rows.end(), less);
    else
        std::stable_sort(rows.begin(), rows.end(),
                         [&less](const SVxListingRow& a, const SVxListingRow& b) { return less(b, a); });
}

CVxStringW CVxPartListing::ColorText(unsigned color)
{
    const unsigned rgb = ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
    CVxStringW text = CVxStringW::IntToHex(rgb, 6, false);
    return CVxStringW(L"#") + text;
}

CVxStringW CVxPartListing::ToText(const std::vector<SVxListingRow>& rows,
                                  const std::vector<CVxStringW>& headers, wchar_t separator)
{
    const CVxStringW sep(std::wstring(1, separator).c_str());
    CVxStringW text;
    for (size_t i = 0; i < headers.size(); ++i) {
        if (i > 0)
            text += sep;
        text += Field(headers[i], separator);
    }
    text += L"\r\n";
    for (const SVxListingRow& row : rows) {
        text += Field(row.name, separator);
        text += sep;
        text += CVxStringW(std::to_wstring(row.count).c_str());
        for (double value : {row.width, row.depth, row.height}) {
            text += sep;
            text += DblSaveW(value);
        }
        text += sep;
        text += ColorText(row.color);
        text += sep;
        text += CVxStringW(std::to_wstring(row.floor + 1).c_str());
        text += L"\r\n";
    }
    return text;
}
