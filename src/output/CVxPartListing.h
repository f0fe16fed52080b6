#pragma once
// The object listing: the objects of a project, alike ones counted in one
// row, with their size and colour, sortable, and as text for a spreadsheet
// (CSV) or the clipboard (tab-separated). Sizes are in the project's unit.

#include "CVxStringW.h"

#include <vector>

class CVxProject;

struct SVxListingRow
{
    CVxStringW name;
    int count = 0;
    double width = 0;
    double depth = 0;
    double height = 0;
    // 0x00BBGGRR, without the switched-off mark.
    unsigned color = 0;
    // 0 is the ground floor.
    int floor = 0;
};

class CVxPartListing
{
public:
    enum EVxColumn
    {
        COL_NAME = 0,
        COL_COUNT,
        COL_WIDTH,
        COL_DEPTH,
        COL_HEIGHT,
        COL_COLOR,
        COL_FLOOR,
        COL_COUNT_OF_COLUMNS
    };

    // Every object in use of the current floor, or of all floors; objects
    // of one name, size, colour and floor make one row, in the order of
    // their first appearance.
    static std::vector<SVxListingRow> Build(const CVxProject& project, bool allFloors);
    // Stable, so that a second sort keeps the order of the first among equals.
    static void Sort(std::vector<SVxListingRow>& rows, int column, bool ascending);
    // "#RRGGBB".
    static CVxStringW ColorText(unsigned color);
    // One header line and one line per row, with CR LF line ends. A field
    // that holds the separator, a double quote or a line end is quoted, its
    // quotes doubled. Numbers are plain decimals with a point, as
    // spreadsheets of any language read them.
    static CVxStringW ToText(const std::vector<SVxListingRow>& rows, const std::vector<CVxStringW>& headers,
                             wchar_t separator);
};
