#include "CVxPrintConfig.h"

#include "CVxDC.h"
#include "CVxFloor.h"
#include "CVxPart.h"
#include "CVxProject.h"
#include "CVxStringTokenizer.h"
#include "CVxUnits.h"
#include "VxNumbers.h"
#include "VxStringBase.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// Pages in a row or a column; their product still counts in an int.
constexpr int kMaxPagesAcross = 10000;

// A sample with ascenders and descenders, so that a line's height is a
// whole line's.
const wchar_t* const kFontSample = L"Ag";

bool Flag(const CVxStringW& token, int index, bool current)
{
    const wchar_t c = token.GetAt(index);
    return c == L'0' ? false : c == L'1' ? true : current;
}

// Device pixels are kept in ints; a scale of one to a hundredth over a city
// must not wrap them, nor the sums of a few of them.
int SafeInt(double value)
{
    constexpr double limit = 4e8;
    return std::isfinite(value) ? static_cast<int>(std::clamp(value, -limit, limit)) : 0;
}

} // namespace

CVxPrintConfig::CVxPrintConfig() = default;

CVxStringW CVxPrintConfig::SaveToString() const
{
    std::wstring text;
    const auto digit = [&text](bool on) { text += on ? L'1' : L'0'; };
    digit(method == 0);
    digit(multiPage);
    digit(inColor);
    digit(cropMarks);
    digit(scaleBar);
    digit(landscape == 1);
    text += std::to_wstring(SafeInt(std::round(border * 100)));
    text += L'|';
    text += DblSaveW(scale).Std();
    text += L'|';
    for (bool on : {centerHorz, centerVert, scaleBarLength, scaleText, title, note1, note2})
        digit(on);
    for (double side : {area.left, area.top, area.right, area.bottom}) {
        text += L'|';
        text += DblSaveW(side).Std();
    }
    text += L'|';
    digit(printArea);
    text += L'|';
    digit(comments);
    return CVxStringW(text);
}

void CVxPrintConfig::LoadFromString(const CVxStringW& text)
{
    if (text.GetLength() < 8)
        return;
    CVxStringTokenizer tokenizer(text, L'|');
    const std::vector<CVxStringW> tokens = tokenizer.GetTokenList();
    const auto token = [&tokens](size_t i) { return i < tokens.size() ? tokens[i] : CVxStringW(); };

    const CVxStringW flags = token(0);
    method = Flag(flags, 0, method == 0) ? 0 : 1;
    multiPage = Flag(flags, 1, multiPage);
    inColor = Flag(flags, 2, inColor);
    cropMarks = Flag(flags, 3, cropMarks);
    scaleBar = Flag(flags, 4, scaleBar);
    landscape = Flag(flags, 5, landscape == 1) ? 1 : 0;
    int hundredths = 100;
    const CVxStringW borderText(flags.Std().size() > 6 ? flags.Std().substr(6) : std::wstring());
    if (!VxStringScan::Dec(borderText.c_str(), &hundredths) || hundredths < 0 || hundredths > 10000)
        hundredths = 100;
    border = hundredths / 100.0;

    const double readScale = DblLoad(token(1), -1);
    scale = std::isfinite(readScale) && readScale <= 1e9 ? readScale : -1;

    const CVxStringW centring = token(2);
    if (centring.GetLength() > 3) {
        centerHorz = Flag(centring, 0, centerHorz);
        centerVert = Flag(centring, 1, centerVert);
        scaleBarLength = Flag(centring, 2, scaleBarLength);
        scaleText = Flag(centring, 3, scaleText);
    }
    if (centring.GetLength() > 6) {
        title = Flag(centring, 4, title);
        note1 = Flag(centring, 5, note1);
        note2 = Flag(centring, 6, note2);
    }
    double sides[4] = {area.left, area.top, area.right, area.bottom};
    for (size_t i = 0; i < 4; ++i) {
        const double value = DblLoad(token(3 + i), sides[i]);
        if (std::isfinite(value) && std::fabs(value) < 1e12)
            sides[i] = value;
    }
    area = CVxDRect(sides[0], sides[1], sides[2], sides[3]);
    printArea = Flag(token(7), 0, printArea);
    comments = Flag(token(8), 0, comments);
}

CVxDRect CVxPrintSizeCalculator::GetProjectPrintArea(const CVxProject& project) const
{
    if (printArea && area.Width() > 0 && area.Height() > 0)
        return area;
    return CVxDRect(-project.m_spaceLeft, -project.m_spaceTop, project.GetTotalWidth() - project.m_spaceLeft,
                    project.GetTotalHeight() - project.m_spaceTop);
}

void CVxPrintSizeCalculator::SetProjectArea(const CVxProject& project)
{
    if (printArea && area.Width() > 0 && area.Height() > 0) {
        projectW = area.Width();
        projectH = area.Height();
    } else {
        projectW = project.GetTotalWidth();
        projectH = project.GetTotalHeight();
    }
    if (!std::isfinite(projectW) || projectW < 0)
        projectW = 0;
    if (!std::isfinite(projectH) || projectH < 0)
        projectH = 0;
    if (!project.m_printTitleFont.IsEmpty())
        titleFont.LoadFromString(project.m_printTitleFont);
    else
        titleFont.m_size = 16;
    if (!project.m_printNotesFont.IsEmpty())
        noteFont.LoadFromString(project.m_printNotesFont);
    else
        noteFont.m_size = 10;
    commentsText = project.m_comments;
    unitCm = CVxUnits::GetUnitCal(project.m_unit);
}

void CVxPrintSizeCalculator::CalcFontSize(CVxDC& dc)
{
    VxSIZE size{0, 0};
    // Fonts size by the paper's resolution, as the page itself draws them.
    const int oldResolution = dc.GetFontResolution();
    dc.SetFontResolution(dpiY);
    dc.SelectFont(titleFont);
    dc.GetTextExtentPoint(CVxStringW(kFontSample), size);
    titleFontH = size.cy;
    dc.SelectOldFont();
    dc.SelectFont(noteFont);
    dc.GetTextExtentPoint(CVxStringW(kFontSample), size);
    noteFontH = size.cy;
    dc.SelectOldFont();
    dc.SetFontResolution(oldResolution);
}

void CVxPrintSizeCalculator::Calculate(bool addUnprintable)
{
    wholeSheet = addUnprintable;
    if (scale > 0 && scale < 0.01)
        scale = 0.01;
    if (titleText.IsEmpty())
        title = false;
    if (note1Text.IsEmpty())
        note1 = false;
    if (note2Text.IsEmpty())
        note2 = false;
    if (commentsText.IsEmpty())
        comments = false;
    pagesX = 1;
    pagesY = 1;

    double bx = dpiX * border / 2.54;
    double by = dpiY * border / 2.54;
    if (3 * bx > pageW)
        bx = dpiX * optionBorder / 254.0;
    if (3 * by > pageH)
        by = dpiY * optionBorder / 254.0;
    const double borders[4] = {bx, by, bx, by};
    double margins[4];
    for (int side = 0; side < 4; ++side) {
        margins[side] = std::max(0.0, borders[side] - unprintable[side]);
        if (addUnprintable)
            margins[side] += unprintable[side];
    }
    const double contentRect[4] = {pageRect.left, pageRect.top, pageRect.right, pageRect.bottom};
    const bool anyContent =
        contentRect[0] != 0 || contentRect[1] != 0 || contentRect[2] != 0 || contentRect[3] != 0;
    if (customLayout && anyContent) {
        for (int side = 0; side < 4; ++side) {
            const int dpi = side % 2 == 0 ? dpiX : dpiY;
            // The layout's millimetres count from the paper's edge, where
            // a preview of the whole sheet starts too. A layout that leaves
            // no room on this paper leaves half of it.
            double content = contentRect[side] * dpi / 25.4 - (addUnprintable ? 0 : unprintable[side]);
            const double half = (side % 2 == 0 ? pageW : pageH) / 2;
            content = std::isfinite(content) ? std::clamp(content, 0.0, std::max(0.0, half)) : 0;
            margins[side] = std::max(margins[side], content);
        }
    }
    marginL = margins[0];
    marginT = margins[1];
    marginR = margins[2];
    marginB = margins[3];
    marginsX = marginL + marginR;
    marginsY = marginT + marginB;
    drawX = SafeInt(marginL);
    drawY = SafeInt(marginT);
    drawTopOffset = 0;
    notesH = 0;
    if (title)
        drawY += titleFontH + titleFontH / 2;

    int h = SafeInt(pageH - marginB - drawY);
    if (scaleBar)
        h -= 2 * noteFontH;
    else if (note1 || note2 || comments)
        h -= noteFontH;
    if (note1 && note2)
        h -= noteFontH + noteFontH + noteFontH / 2;
    else if (note1 || note2)
        h -= noteFontH;
    if (comments) {
        const auto lines = 1 + std::count(commentsText.Std().begin(), commentsText.Std().end(), L'\n');
        notesH = SafeInt(std::ceil(static_cast<double>(lines) * noteFontH * 1.3));
        h -= notesH;
        if (note1 || note2)
            h -= noteFontH / 2;
    }

    const double freeW = pageW - marginsX;
    zoom = 0;
    if (projectW > 0 && projectH > 0)
        zoom = std::max(0.0, std::min(freeW / projectW, h / projectH));
    sheetW = SafeInt(projectW * zoom + marginsX);
    sheetH = SafeInt(pageH);
    scaleValue = zoom > 0 ? (dpiX / 2.54) * (projectW * unitCm) / (projectW * zoom) : 0;

    if (scale > 0 && projectW > 0 && projectH > 0) {
        const double z = (projectW * unitCm / scale) * (dpiX / 2.54) / projectW;
        if (zoom > z) {
            zoom = z;
        } else if (multiPage) {
            zoom = z;
            const int w = SafeInt(projectW * z);
            const int hh = SafeInt(projectH * z + pageH - h - marginsY);
            const double stepX = pageW - marginsX;
            const double stepY = pageH - marginsY;
            pagesX = stepX > 0 ? std::clamp(SafeInt(std::ceil(w / stepX)), 1, kMaxPagesAcross) : 1;
            pagesY = stepY > 0 ? std::clamp(SafeInt(std::ceil(hh / stepY)), 1, kMaxPagesAcross) : 1;
            sheetW = SafeInt(w + marginsX);
            sheetH = SafeInt(hh + marginsY);
        }
    }

    const double totalW = pagesX * pageW - (pagesX - 1) * marginsX;
    const double totalH = pagesY * pageH - (pagesY - 1) * marginsY;
    if (centerHorz) {
        if (pagesX == 1)
            drawX += SafeInt((pageW - marginsX - projectW * zoom) / 2);
        else
            drawX += SafeInt((totalW - sheetW) / 2);
    }
    if (centerVert) {
        if (pagesY == 1)
            drawTopOffset = SafeInt((h - zoom * projectH) / 2);
        else
            drawTopOffset = SafeInt((totalH - marginsY - sheetH) / 2);
        drawTopOffset = std::max(0, drawTopOffset);
    }
    drawY += drawTopOffset;
}

void CVxPrintSizeCalculator::Scale(double sx, double sy)
{
    pageW *= sx;
    pageH *= sy;
    dpiX = std::max(1, SafeInt(dpiX * sx));
    dpiY = std::max(1, SafeInt(dpiY * sy));
    unprintable[0] *= sx;
    unprintable[1] *= sy;
    unprintable[2] *= sx;
    unprintable[3] *= sy;
    marginL *= sx;
    marginR *= sx;
    marginT *= sy;
    marginB *= sy;
    marginsX *= sx;
    marginsY *= sy;
    zoom *= sx;
    titleFontH = SafeInt(titleFontH * sy);
    noteFontH = SafeInt(noteFontH * sy);
    notesH = SafeInt(notesH * sy);
    drawX = SafeInt(drawX * sx);
    drawY = SafeInt(drawY * sy);
    drawTopOffset = SafeInt(drawTopOffset * sy);
    sheetW = SafeInt(sheetW * sx);
    sheetH = SafeInt(sheetH * sy);
}

bool CVxPrintSizeCalculator::IsCustomPageLayoutLargerThenPage() const
{
    if (!customLayout)
        return false;
    const auto pixels = [](double mm, int dpi, double offset) {
        return std::trunc(mm * dpi / 25.4 - offset);
    };
    const double w = pixels(layoutPage.Width(), dpiX, unprintable[0] + unprintable[2]);
    const double h = pixels(layoutPage.Height(), dpiY, unprintable[1] + unprintable[3]);
    return w > pageW || h > pageH;
}

bool CVxPrintSizeCalculator::GetPageContentsBorderRect(const CVxStringW& file, CVxDRect& outMargins,
                                                       CVxDRect& outOuter)
{
    CVxProject layout;
    if (file.IsEmpty() || !layout.LoadFromFile(file, nullptr, nullptr, false, 0))
        return false;
    // Only the numbers are wanted; the layout's pictures go with its folder.
    layout.RemoveTempFiles();
    const double mm = CVxUnits::GetUnitCal(layout.m_unit) * 10;
    CVxFloor* floor = layout.GetFloor();
    for (const CVxPart& part : floor->m_objects) {
        if (!part.inUse || part.type != ptPageArea)
            continue;
        outOuter = CVxDRect(0, 0, layout.m_width * mm, layout.m_height * mm);
        outMargins = CVxDRect(part.x * mm, part.y * mm, (layout.m_width - part.x - part.width) * mm,
                              (layout.m_height - part.y - part.height) * mm);
        return true;
    }
    return false;
}

bool VX_IsPageInRange(const CVxStringW& range, int page)
{
    const std::wstring& text = range.Std();
    bool any = false;
    int previous = -1;
    bool dash = false;
    for (size_t i = 0; i < text.size();) {
        const wchar_t c = text[i];
        if (c >= L'0' && c <= L'9') {
            long long number = 0;
            while (i < text.size() && text[i] >= L'0' && text[i] <= L'9') {
                number = std::min<long long>(number * 10 + (text[i] - L'0'), 1000000000LL);
                ++i;
            }
            any = true;
            if (number == page)
                return true;
            if (dash && previous >= 0 && page > previous && page < number)
                return true;
            previous = static_cast<int>(number);
            dash = false;
            continue;
        }
        if (c == L'-')
            dash = true;
        else if (c != L' ' && c != L'\t')
            dash = false;
        ++i;
    }
    return !any;
}
