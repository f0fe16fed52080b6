// Printing: the settings line kept in the project, the page arithmetic, the
// page range, a printed page whose plan has the exact size on paper that
// the scale asks for, and the header and footer layout around it.

#include "CVxAppCore.h"
#include "CVxDxfDC.h"
#include "CVxFloor.h"
#include "CVxOptions.h"
#include "CVxPageLayoutEditor.h"
#include "CVxPrintConfig.h"
#include "CVxQtDC.h"
#include "CVxUnits.h"
#include "VxTestEnv.h"

#include <QFile>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// A4 at 300 dots per inch.
constexpr int kDpi = 300;
constexpr double kA4W = 2480;
constexpr double kA4H = 3508;

CVxPrintSizeCalculator A4Calculator(double projectW, double projectH)
{
    CVxPrintSizeCalculator calc;
    calc.pageW = kA4W;
    calc.pageH = kA4H;
    calc.dpiX = kDpi;
    calc.dpiY = kDpi;
    calc.projectW = projectW;
    calc.projectH = projectH;
    calc.unitCm = 1;
    calc.titleFontH = 60;
    calc.noteFontH = 40;
    return calc;
}

bool Dark(const QImage& image, int x, int y)
{
    return qGray(image.pixel(x, y)) < 100;
}

// A page's texts, as they are written.
class CVxTextCaptureDC : public CVxQtDC
{
public:
    using CVxQtDC::CVxQtDC;
    int DrawText(const CVxStringW& text, VxRECT& rect, unsigned flags, unsigned colour, bool unused) override
    {
        texts.push_back(text);
        return CVxQtDC::DrawText(text, rect, flags, colour, unused);
    }
    void TextOut(const CVxStringW& text, int x, int y, unsigned flags, unsigned colour) override
    {
        texts.push_back(text);
        CVxQtDC::TextOut(text, x, y, flags, colour);
    }
    std::vector<CVxStringW> texts;
};

} // namespace

TEST(PrintConfig, TextFormKeepsEveryChoiceAndOlderTextsKeepTheirDefaults)
{
    CVxPrintConfig config;
    config.method = 1;
    config.multiPage = true;
    config.inColor = false;
    config.landscape = 1;
    config.border = 2.25;
    config.scale = 50;
    config.centerVert = false;
    config.title = false;
    config.note2 = true;
    config.area = CVxDRect(-10, 20.5, 300, 400);
    config.printArea = true;
    config.comments = true;
    const CVxStringW text = config.SaveToString();
    EXPECT_EQ(text, L"010111225|50|1011001|-10|20.5|300|400|1|1");

    CVxPrintConfig back;
    back.LoadFromString(text);
    EXPECT_EQ(back.SaveToString(), text);

    // Short centring tokens keep the flags they don't hold; an unreadable
    // border is one centimetre; a text under eight characters is no text.
    CVxPrintConfig older;
    older.LoadFromString(CVxStringW(L"101110xx|-1|0000"));
    EXPECT_EQ(older.method, 0);
    EXPECT_FALSE(older.multiPage);
    EXPECT_DOUBLE_EQ(older.border, 1.0);
    EXPECT_DOUBLE_EQ(older.scale, -1);
    EXPECT_FALSE(older.centerHorz);
    EXPECT_FALSE(older.scaleText);
    EXPECT_TRUE(older.title);
    EXPECT_FALSE(older.printArea);
    CVxPrintConfig tooShort;
    tooShort.LoadFromString(CVxStringW(L"0000000"));
    EXPECT_TRUE(tooShort.inColor);
    // Hostile numbers don't get in.
    CVxPrintConfig hostile;
    hostile.LoadFromString(CVxStringW(L"111111999999999|1e300|1111111|nan|inf|1e400|-1e400|1|1"));
    EXPECT_DOUBLE_EQ(hostile.border, 1.0);
    EXPECT_DOUBLE_EQ(hostile.scale, -1);
    EXPECT_TRUE(std::isfinite(hostile.area.left) && std::isfinite(hostile.area.bottom));
}

TEST(PrintConfig, ScaleFitPagesAndBorders)
{
    // A 1000 by 600 cm plan on A4 with a 1 cm border.
    CVxPrintSizeCalculator fit = A4Calculator(1000, 600);
    fit.border = 1;
    fit.Calculate(false);
    const double freeW = kA4W - 2 * kDpi / 2.54;
    EXPECT_NEAR(fit.zoom, freeW / 1000, 1e-9);
    EXPECT_EQ(fit.GetPageCount(), 1);
    EXPECT_NEAR(fit.scaleValue, kDpi / 2.54 / fit.zoom, 1e-6);

    // 1:100 is smaller than the fit: that scale exactly, one page.
    CVxPrintSizeCalculator small = A4Calculator(1000, 600);
    small.scale = 200;
    small.Calculate(false);
    EXPECT_NEAR(small.zoom, kDpi / 2.54 / 200, 1e-12);
    EXPECT_EQ(small.GetPageCount(), 1);

    // 1:20 needs more than the page: the fit without more pages, a grid
    // of pages at the scale with them.
    CVxPrintSizeCalculator large = A4Calculator(1000, 600);
    large.border = 1;
    large.scale = 20;
    large.Calculate(false);
    EXPECT_NEAR(large.zoom, fit.zoom, 1e-12);
    large.multiPage = true;
    large.Calculate(false);
    EXPECT_NEAR(large.zoom, kDpi / 2.54 / 20, 1e-12);
    // 50 cm by 30 cm of drawing on 18 by 26.7 cm of content per page.
    EXPECT_EQ(large.pagesX, 3);
    EXPECT_EQ(large.pagesY, 2);

    // A scale of 0.001 becomes 0.01; a border eating a third of the page
    // falls back to the option's; a project of no size has no zoom.
    CVxPrintSizeCalculator tiny = A4Calculator(1000, 600);
    tiny.scale = 0.001;
    tiny.border = 8;
    tiny.optionBorder = 150;
    tiny.Calculate(false);
    EXPECT_DOUBLE_EQ(tiny.scale, 0.01);
    EXPECT_NEAR(tiny.marginL, kDpi * 1.5 / 2.54, 1e-9);
    CVxPrintSizeCalculator empty = A4Calculator(0, 0);
    empty.Calculate(false);
    EXPECT_EQ(empty.zoom, 0);
    EXPECT_EQ(empty.GetPageCount(), 1);
}

TEST(PrintConfig, PageRange)
{
    const CVxStringW range(L" 2-4, 7 ");
    std::vector<int> in;
    for (int page = 1; page <= 9; ++page)
        if (VX_IsPageInRange(range, page))
            in.push_back(page);
    EXPECT_EQ(in, (std::vector<int>{2, 3, 4, 7}));
    EXPECT_TRUE(VX_IsPageInRange(CVxStringW(), 5));
    EXPECT_FALSE(VX_IsPageInRange(CVxStringW(L"99999999999999999999"), 5));
}

class PrintPage : public ::testing::Test
{
protected:
    void SetUp() override
    {
        CVxAppCore* core = VX_GetCore();
        core->InitProject();
        CVxProject& project = core->GetProject();
        project.m_width = 600;
        project.m_height = 300;
        CVxFloor* floor = project.GetFloor();
        floor->m_wallsColor = 0x202020;
        floor->m_walls.SetAsBasicRect(600, 300, 10, 250);
        core->UpdateFloorPlan();
    }
    void TearDown() override
    {
        VX_GetCore()->DeactivateActiveEditor(true, true);
        VX_GetOptions()->ResetToDefaults();
        VX_GetCore()->InitProject();
    }

    // One page of the print at 300 dots per inch, on A4.
    QImage Page(CVxPrintSizeCalculator& calc, int page)
    {
        QImage image(static_cast<int>(kA4W), static_cast<int>(kA4H), QImage::Format_RGB32);
        const int dotsPerMeter = static_cast<int>(std::lround(kDpi / 0.0254));
        image.setDotsPerMeterX(dotsPerMeter);
        image.setDotsPerMeterY(dotsPerMeter);
        image.fill(Qt::white);
        QPainter painter(&image);
        CVxQtDC dc(&painter, true);
        VX_GetCore()->PrintProjectPage(&dc, page, calc, CVxAppCore::drawCaptions);
        return image;
    }

    CVxPrintSizeCalculator Calculator(double scale, bool multiPage)
    {
        CVxPrintSizeCalculator calc;
        VX_GetCore()->LoadPrintConfig(calc);
        calc.scale = scale;
        calc.multiPage = multiPage;
        calc.pageW = kA4W;
        calc.pageH = kA4H;
        calc.dpiX = kDpi;
        calc.dpiY = kDpi;
        calc.SetProjectArea(VX_GetCore()->GetProject());
        CVxQtDC measure(1, 1, true);
        calc.CalcFontSize(measure);
        calc.Calculate(false);
        return calc;
    }
};

TEST_F(PrintPage, PlanHasItsSizeOnPaperAndPagesJoinAtCropMarks)
{
    // 1:50 fits: the room's inner width of 600 cm is 12 cm on paper.
    CVxPrintSizeCalculator calc = Calculator(50, false);
    ASSERT_EQ(calc.GetPageCount(), 1);
    const QImage page = Page(calc, 0);
    const CVxProject& project = VX_GetCore()->GetProject();
    const int row = static_cast<int>(calc.drawY + (project.m_spaceTop + 150) * calc.zoom);
    int leftInner = -1;
    int rightInner = -1;
    for (int x = 1; x < page.width(); ++x) {
        if (Dark(page, x - 1, row) && !Dark(page, x, row) && leftInner < 0)
            leftInner = x;
        if (!Dark(page, x - 1, row) && Dark(page, x, row))
            rightInner = x;
    }
    const double expected = 600.0 / 50 / 2.54 * kDpi;
    EXPECT_NEAR(rightInner - leftInner, expected, 2.0) << leftInner << " " << rightInner;

    // 1:20 over pages: the first page has crop marks at its right corners,
    // where the next page goes on, and none at its left ones.
    CVxPrintSizeCalculator tiled = Calculator(20, true);
    ASSERT_GT(tiled.pagesX, 1);
    const QImage first = Page(tiled, 0);
    const int m = static_cast<int>(kDpi / 5.08);
    const int right = static_cast<int>(kA4W - tiled.marginR);
    const int left = static_cast<int>(tiled.marginL);
    const int top = static_cast<int>(tiled.marginT);
    EXPECT_TRUE(Dark(first, right + m / 2, top));
    EXPECT_FALSE(Dark(first, left - m / 2, top));
    EXPECT_FALSE(Dark(first, left, top - m / 2));
}

TEST_F(PrintPage, DxfHoldsWallsRoomsAndCaptionsInPlanUnits)
{
    CVxAppCore* core = VX_GetCore();
    CVxFloor* floor = core->GetProject().GetFloor();
    CVxPart* desk = floor->GetNewObject();
    desk->inUse = true;
    desk->type = ptRectangle;
    desk->x = 100;
    desk->y = 100;
    desk->width = 200;
    desk->height = 100;
    desk->caption = L"Desk";
    core->UpdateFloorPlan();
    const CVxStringW path = VxTestTempFolder() + L"plan.dxf";
    ASSERT_TRUE(core->ExportFloorToDxf(path));
    QFile file(path.ToQString());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.startsWith("  0\nSECTION\n  2\nHEADER\n"));
    EXPECT_TRUE(text.endsWith("  0\nEOF\n"));
    EXPECT_TRUE(text.contains("  0\nLAYER\n  2\nWALLS\n"));
    EXPECT_TRUE(text.contains("  0\nTEXT\n  8\nOBJECTS\n"));
    EXPECT_TRUE(text.contains("\nDesk\n"));
    // The caption stands as high as on the screen relative to the plan: a
    // ten point font is 13 plan units at any zoom, not many times that.
    const int at = text.indexOf("\nDesk\n");
    const int height = text.lastIndexOf(" 40\n", at);
    ASSERT_GT(height, 0);
    const double textHeight = text.mid(height + 4, text.indexOf('\n', height + 4) - height - 4).toDouble();
    EXPECT_GT(textHeight, 2);
    EXPECT_LT(textHeight, 30);
}

TEST_F(PrintPage, HeaderLayoutIsDrawnOnItsOwnSheetAndPrintedAroundThePlan)
{
    CVxAppCore* core = VX_GetCore();
    const int walls = core->GetProject().GetFloor()->m_walls.GetWallCount();
    ASSERT_GT(walls, 0);
    CVxPrintPageInfo info;
    info.file = VxTestTempFolder() + L"layout.pvp";

    // A new layout is an A4 sheet without walls, with the page contents
    // inside the header and footer bands.
    ASSERT_TRUE(core->ActivatePageLayoutEditor(true, false, &info, true));
    CVxProject& sheet = core->GetProject();
    EXPECT_EQ(sheet.GetFloor()->m_walls.GetWallCount(), 0);
    EXPECT_NEAR(sheet.m_width * CVxUnits::GetUnitCal(sheet.m_unit), 21.0, 1e-9);
    EXPECT_NEAR(sheet.m_height * CVxUnits::GetUnitCal(sheet.m_unit), 29.7, 1e-9);
    CVxPart* label = sheet.GetFloor()->GetNewObject();
    label->inUse = true;
    label->type = ptLabel;
    label->x = 2;
    label->y = 1;
    label->width = 17;
    label->height = 1.5;
    label->caption = L"House %DATE%";
    const CVxStringW printed = label->ProcessCaptionVars(label->caption, sheet.m_unit, 1.0);
    ASSERT_NE(printed, label->caption);

    // Accepting writes the layout and gives the project back as it was.
    ASSERT_TRUE(core->DeactivateActiveEditor(false, false));
    EXPECT_EQ(core->GetActiveEditor(), nullptr);
    EXPECT_EQ(core->GetProject().GetFloor()->m_walls.GetWallCount(), walls);
    EXPECT_DOUBLE_EQ(core->GetProject().m_width, 600);
    EXPECT_FALSE(core->GetProject().m_modified);
    EXPECT_FALSE(core->CanUndo());
    CVxDRect margins;
    CVxDRect outer;
    ASSERT_TRUE(CVxPrintSizeCalculator::GetPageContentsBorderRect(info.file, margins, outer));
    EXPECT_NEAR(outer.Width(), 210, 1e-6);
    EXPECT_NEAR(outer.Height(), 297, 1e-6);
    EXPECT_NEAR(margins.left, CVxPageLayoutEditor::kSideMm, 1e-6);
    EXPECT_NEAR(margins.top, CVxPageLayoutEditor::kHeaderMm, 1e-6);
    EXPECT_NEAR(margins.right, CVxPageLayoutEditor::kSideMm, 1e-6);
    EXPECT_NEAR(margins.bottom, CVxPageLayoutEditor::kFooterMm, 1e-6);

    // On paper the plan keeps out of the header, and the label is written
    // with its variable filled in.
    CVxOptions* options = VX_GetOptions();
    options->m_printCustomLayout = true;
    options->m_printCustomLayoutFile = info.file;
    CVxPrintSizeCalculator calc = Calculator(-1, false);
    ASSERT_TRUE(calc.customLayout);
    EXPECT_GE(calc.marginT, CVxPageLayoutEditor::kHeaderMm / 25.4 * kDpi - 1);
    EXPECT_GE(calc.drawY, calc.marginT);
    QImage image(static_cast<int>(kA4W), static_cast<int>(kA4H), QImage::Format_RGB32);
    QPainter painter(&image);
    CVxTextCaptureDC dc(&painter, true);
    core->PrintProjectPage(&dc, 0, calc, CVxAppCore::drawCaptions);
    EXPECT_NE(std::find(dc.texts.begin(), dc.texts.end(), printed), dc.texts.end());
    EXPECT_EQ(std::find(dc.texts.begin(), dc.texts.end(), CVxStringW(L"House %DATE%")), dc.texts.end());
    // A layout whose page contents lie off this paper still leaves half of
    // it to the plan.
    calc.pageRect.top = 1e6;
    calc.Calculate(false);
    EXPECT_LE(calc.marginT, kA4H / 2);
    EXPECT_GT(calc.zoom, 0);

    // The layout opens again with its label; a discard gives the project
    // back just the same.
    ASSERT_TRUE(core->ActivatePageLayoutEditor(true, false, &info, false));
    int labels = 0;
    int areas = 0;
    for (const CVxPart& part : core->GetProject().GetFloor()->m_objects) {
        labels += part.inUse && part.type == ptLabel && part.caption == L"House %DATE%";
        areas += part.inUse && part.type == ptPageArea;
    }
    EXPECT_EQ(labels, 1);
    EXPECT_EQ(areas, 1);
    ASSERT_TRUE(core->DeactivateActiveEditor(true, true));
    EXPECT_EQ(core->GetProject().GetFloor()->m_walls.GetWallCount(), walls);
}
