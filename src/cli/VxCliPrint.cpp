// print: the printout of the program as a PDF, page for page: title, plan
// at the chosen scale over as many sheets as it needs, scale bar, notes.

#include "VxCli.h"

#include "CVxAppCore.h"
#include "CVxOptions.h"
#include "CVxPrintConfig.h"
#include "CVxQtDCPaintDevice.h"

#include <QFileInfo>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QRegularExpression>

#include <cmath>
#include <cstdlib>

namespace {

// Fine enough that whole device pixels don't show on paper.
constexpr int kPdfResolution = 600;
// A house at 1:1 on A4 would run to thousands of pages.
constexpr int kMaxPages = 200;

struct SVxPrintSettings
{
    QString input;
    QString output;
    int floor = 0;
    bool allFloors = false;
    double scale = 0;
    bool landscape = false;
    QPageSize::PageSizeId paper = QPageSize::A4;
    // Pages to print, numbered from 1 through the whole printout, as the
    // print dialog takes them ("1-3, 5"); empty prints all.
    CVxStringW pages;
    // A header and footer layout drawn around the plan on every page.
    QString layout;
};

// The settings that the project keeps, with what the command line asks
// for over them.
CVxPrintSizeCalculator PrintSetup(const SVxPrintSettings& settings, const QPdfWriter& writer)
{
    CVxPrintSizeCalculator calc;
    CVxAppCore* core = VX_GetCore();
    core->LoadPrintConfig(calc);
    if (settings.scale > 0) {
        calc.scale = settings.scale;
        calc.multiPage = true;
    }
    calc.pageW = writer.width();
    calc.pageH = writer.height();
    calc.dpiX = writer.resolution();
    calc.dpiY = writer.resolution();
    calc.SetProjectArea(core->GetProject());
    return calc;
}

int Print(const SVxPrintSettings& settings, CVxCliProgress& progress)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    CVxCliOutput output(settings.output);
    QPdfWriter writer(output.TempPath());
    writer.setTitle(QFileInfo(settings.input).completeBaseName());
    writer.setCreator(QStringLiteral("plaveno-cli"));
    writer.setResolution(kPdfResolution);
    // The border of the print settings is the white around the plan; the
    // PDF's page is the whole sheet.
    CVxPrintSizeCalculator stored;
    core->LoadPrintConfig(stored);
    const bool landscape = settings.landscape || stored.landscape == 1;
    writer.setPageLayout(QPageLayout(
        QPageSize(settings.paper), landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()));

    std::vector<int> floors;
    if (settings.allFloors) {
        for (int i = 0; i < project.GetFloorCount(); ++i)
            floors.push_back(i);
    } else {
        floors.push_back(settings.floor);
    }

    // Every floor's pages are counted before anything is drawn, so that a
    // scale too fine for the paper fails without a half-written file.
    std::vector<CVxPrintSizeCalculator> calcs;
    CVxQtDCPaintDevice device(&writer, true);
    if (!device.IsActive())
        return VxCliFail(settings.output, QStringLiteral("can't be created"));
    long long pages = 0;
    for (int floor : floors) {
        project.m_currentFloor = floor;
        core->UpdateFloorPlan();
        CVxPrintSizeCalculator calc = PrintSetup(settings, writer);
        calc.CalcFontSize(*device.GetDC());
        calc.Calculate(false);
        pages += calc.GetPageCount();
        calcs.push_back(calc);
    }
    if (pages > kMaxPages)
        return VxCliFail(settings.input,
                         QStringLiteral("at this scale the plan would need %1 pages").arg(pages));

    progress.Step("printing");
    bool first = true;
    int number = 0;
    for (size_t i = 0; i < floors.size(); ++i) {
        project.m_currentFloor = floors[i];
        core->UpdateFloorPlan();
        for (int page = 0; page < calcs[i].GetPageCount(); ++page) {
            if (!VX_IsPageInRange(settings.pages, ++number))
                continue;
            if (!first && !writer.newPage())
                return VxCliFail(settings.output, QStringLiteral("could not be written"));
            first = false;
            core->PrintProjectPage(device.GetDC(), page, calcs[i], -1);
        }
    }
    if (first)
        return VxCliFail(
            settings.input,
            QStringLiteral("has no page %1 in its %2 page(s)").arg(settings.pages.ToQString()).arg(number));
    if (!device.End())
        return VxCliFail(settings.output, QStringLiteral("could not be written"));
    progress.Step("writing");
    return output.Commit() ? kVxCliOk : kVxCliFailed;
}

} // namespace

int VxCliPrint(const std::vector<std::string>& args)
{
    CVxCliArgs parsed;
    std::string error;
    if (!parsed.Parse(args, {"--output", "--floor", "--scale", "--paper", "--pages", "--layout"},
                      {"--landscape", "--all-floors"}, error))
        return VxCliUsageError("print", error);
    if (parsed.Positional().size() != 1)
        return VxCliUsageError("print", "expects one project file");
    if (!parsed.Has("--output") || parsed.Value("--output").empty())
        return VxCliUsageError("print", "needs an output file: -o OUT.pdf");

    SVxPrintSettings settings;
    settings.input = QString::fromLocal8Bit(parsed.Positional()[0].c_str());
    settings.output = QString::fromLocal8Bit(parsed.Value("--output").c_str());
    if (VxCliExtension(settings.output) != QLatin1String("pdf"))
        return VxCliUsageError("print", "the output must end in .pdf");
    if (parsed.Has("--floor") && parsed.Has("--all-floors"))
        return VxCliUsageError("print", "give either --floor or --all-floors");
    if (parsed.Has("--floor")) {
        const std::string text = parsed.Value("--floor");
        char* end = nullptr;
        const long value = strtol(text.c_str(), &end, 10);
        if (text.empty() || *end != '\0' || value < 1 || value > 10000)
            return VxCliUsageError("print", "--floor needs a floor number from 1");
        settings.floor = static_cast<int>(value) - 1;
    }
    settings.allFloors = parsed.Has("--all-floors");
    settings.landscape = parsed.Has("--landscape");
    if (parsed.Has("--scale") && !VxCliParseScale(parsed.Value("--scale"), settings.scale))
        return VxCliUsageError("print", "--scale needs the form 1:N, for example 1:100");
    if (parsed.Has("--paper") && !VxCliParsePaper(parsed.Value("--paper"), settings.paper))
        return VxCliUsageError("print", "--paper needs A4, A3 or Letter");
    if (parsed.Has("--pages")) {
        settings.pages = CVxStringW(QString::fromLocal8Bit(parsed.Value("--pages").c_str()).trimmed());
        const bool wellFormed =
            !settings.pages.IsEmpty() &&
            settings.pages.ToQString().contains(QRegularExpression(QStringLiteral("^[0-9][0-9 ,-]*$")));
        if (!wellFormed)
            return VxCliUsageError("print", "--pages needs page numbers from 1, for example 1-3,5");
    }
    if (parsed.Has("--layout")) {
        settings.layout = QString::fromLocal8Bit(parsed.Value("--layout").c_str());
        if (!QFileInfo(settings.layout).isFile())
            return VxCliFail(settings.layout, QStringLiteral("is not a layout file"));
    }
    if (!VxCliCheckOutput(settings.output))
        return kVxCliFailed;

    // The layout is the user's choice for this run only; the settings file
    // is not written by the command-line tool.
    CVxOptions* options = VX_GetOptions();
    options->m_printCustomLayout = !settings.layout.isEmpty();
    options->m_printCustomLayoutFile = CVxStringW(settings.layout);

    CVxCliProgress progress(settings.input);
    SVxCliLoaded loaded;
    if (!VxCliLoadProject(settings.input, loaded))
        return kVxCliFailed;
    CVxProject& project = VX_GetCore()->GetProject();
    if (settings.floor >= project.GetFloorCount())
        return VxCliFail(
            settings.input,
            QStringLiteral("has %1 floor(s), not %2").arg(project.GetFloorCount()).arg(settings.floor + 1));
    return Print(settings, progress);
}
