#pragma once
// What the user chose for printing the plan, kept in the project as one
// line, and the arithmetic that turns those choices, the paper and the plan
// into device pixels: margins, zoom, the grid of pages and where the
// drawing stands on them. The same numbers serve the printer, a PDF and
// the dialog's small preview.

#include "CVxDRect.h"
#include "CVxFont.h"
#include "CVxStringW.h"

class CVxDC;
class CVxProject;

class CVxPrintConfig
{
public:
    CVxPrintConfig();

    // Nine fields joined by "|": flags and border, scale, centring and
    // texts, the four sides of the area, the area switch, comments.
    CVxStringW SaveToString() const;
    // Fields that are missing or unreadable keep their present values;
    // older, shorter texts therefore keep the defaults of what they lack.
    void LoadFromString(const CVxStringW& text);

    int method = 0;
    bool multiPage = false;
    bool inColor = true;
    bool cropMarks = true;
    bool scaleBar = true;
    int landscape = 0;
    // Centimetres of white around the page.
    double border = 1.5;
    // The n of a scale of 1 : n; not positive fits the page.
    double scale = -1;
    bool centerHorz = true;
    bool centerVert = true;
    bool scaleBarLength = true;
    bool scaleText = true;
    bool title = true;
    bool note1 = false;
    bool note2 = false;
    CVxStringW titleText;
    CVxStringW note1Text;
    CVxStringW note2Text;
    bool comments = false;
    bool printArea = false;
    // Left, top, right, bottom in plan units.
    CVxDRect area;
};

class CVxPrintSizeCalculator : public CVxPrintConfig
{
public:
    // The size of what is printed, the fonts and the comments, from the
    // project.
    void SetProjectArea(const CVxProject& project);
    // The part of the plan on paper: the chosen area, else the whole sheet
    // with the plan's origin where the room rectangle starts.
    CVxDRect GetProjectPrintArea(const CVxProject& project) const;
    // Heights of the title and note fonts on this device.
    void CalcFontSize(CVxDC& dc);
    // Margins, zoom, page grid and the drawing's place; with addUnprintable
    // the margins include what the printer can't reach, for a preview of
    // the whole sheet.
    void Calculate(bool addUnprintable);
    // Every device quantity times the factors, for a smaller preview. Fonts
    // follow through the resolution.
    void Scale(double sx, double sy);
    int GetPageCount() const { return pagesX * pagesY; }
    // The header and footer layout's page is wider or higher than the paper.
    bool IsCustomPageLayoutLargerThenPage() const;
    // Margins of the layout's content area and the layout's page, both in
    // millimetres, from the first page-contents object of the layout file.
    static bool GetPageContentsBorderRect(const CVxStringW& file, CVxDRect& outMargins, CVxDRect& outOuter);

    double projectW = 0;
    double projectH = 0;
    // The layout's content margins in millimetres.
    CVxDRect pageRect;
    bool customLayout = false;
    // The layout's page in millimetres.
    CVxDRect layoutPage;
    double pageW = 0;
    double pageH = 0;
    int dpiX = 96;
    int dpiY = 96;
    // What the printer can't reach on each side, in device pixels.
    double unprintable[4] = {0, 0, 0, 0};
    double zoom = 0;
    double scaleValue = 0;
    double marginL = 0;
    double marginT = 0;
    double marginR = 0;
    double marginB = 0;
    double marginsX = 0;
    double marginsY = 0;
    int titleFontH = 0;
    int noteFontH = 0;
    int drawX = 0;
    int drawY = 0;
    int drawTopOffset = 0;
    int notesH = 0;
    int pagesX = 1;
    int pagesY = 1;
    int sheetW = 0;
    int sheetH = 0;
    CVxFont titleFont;
    CVxFont noteFont;
    CVxStringW commentsText;
    // The option's border in hundredths of a centimetre, the fallback of a
    // border too wide for the paper.
    int optionBorder = 150;
    // Centimetres per plan unit.
    double unitCm = 1;
    // The device's origin is the paper's corner, not that of the printable
    // part: the last Calculate added the unprintable offsets to the margins.
    bool wholeSheet = false;
};

// Whether page (from 1) lies in a range such as "2-4,7"; an empty range
// holds every page.
bool VX_IsPageInRange(const CVxStringW& range, int page);
