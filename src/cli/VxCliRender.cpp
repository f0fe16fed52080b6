// render: the plan of one floor as the main view draws it, to a picture or
// a vector file.

#include "VxCli.h"

#include "CVxAppCore.h"
#include "CVxQtDCPaintDevice.h"
#include "CVxUnits.h"

#include <QFileInfo>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <cmath>
#include <cstdlib>

namespace {

// Beyond this an image costs more memory than any plan needs.
constexpr double kMaxPixels = 200.0 * 1000 * 1000;
constexpr int kMaxSide = 32000;
constexpr int kDefaultWidth = 1600;
// Fine enough that whole device pixels don't show on paper.
constexpr int kPdfResolution = 600;
// A house at 1:1 on A4 would run to thousands of pages.
constexpr double kMaxPages = 200;

bool ParseInt(const std::string& text, int low, int high, int& out)
{
    char* end = nullptr;
    const long value = strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || value < low || value > high)
        return false;
    out = static_cast<int>(value);
    return true;
}

bool ParseDouble(const std::string& text, double low, double high, double& out)
{
    char* end = nullptr;
    const double value = strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !std::isfinite(value) || value < low || value > high)
        return false;
    out = value;
    return true;
}

struct SVxRenderSettings
{
    QString input;
    QString output;
    QString format;
    int floor = 1;
    int width = kDefaultWidth;
    double zoom = 0;
    int flags = 0;
    double scale = 0;
    QPageSize::PageSizeId paper = QPageSize::A4;
};

// What the current floor draws, in pixels at zoom from the sheet's corner:
// walls with all their thickness and the boxes of the objects on visible
// layers. Doors swing into the rooms that the walls hold. The sheet's
// margins hold only the grid and are left out; a floor with nothing on it
// gives the room rectangle.
CVxDRect ContentRect(CVxProject& project, double zoom)
{
    const int originX = static_cast<int>(project.m_spaceLeft * zoom);
    const int originY = static_cast<int>(project.m_spaceTop * zoom);
    CVxDRect content(0, 0, project.m_width, project.m_height);
    bool any = false;
    const auto add = [&](const CVxDRect& rect) {
        if (any)
            content.UnionRect(rect);
        else
            content = rect;
        any = true;
    };
    CVxFloor* floor = project.GetFloor();
    for (const CVxWall& wall : floor->m_walls.walls) {
        CVxDRect bounds;
        wall.GetBoundingRect(bounds);
        bounds.InflateRect(wall.thickness, wall.thickness);
        add(bounds);
    }
    content = content * zoom;
    content.OffsetRect(originX, originY);
    for (CVxPart& part : floor->m_objects) {
        if (!part.inUse || !floor->m_layers.IsLayerVisible(part.layer))
            continue;
        VxRECT rect;
        part.GetCachedBoundingRect(&rect, originX, originY, zoom);
        add(CVxDRect(rect.left, rect.top, rect.right, rect.bottom));
    }
    return content;
}

int Draw(const SVxRenderSettings& settings, CVxCliProgress& progress)
{
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    const double totalWidth = project.GetTotalWidth();
    const double totalHeight = project.GetTotalHeight();
    if (!(totalWidth > 0) || !(totalHeight > 0) || !std::isfinite(totalWidth) || !std::isfinite(totalHeight))
        return VxCliFail(settings.input, QStringLiteral("the project has no drawable size"));
    CVxCliOutput output(settings.output);
    progress.Step("drawing");

    if (settings.format == QLatin1String("dxf")) {
        if (output.TempPath().isEmpty() || !core->ExportFloorToDxf(CVxStringW(output.TempPath())))
            return VxCliFail(settings.output, QStringLiteral("could not be written"));
        progress.Step("writing");
        return output.Commit() ? kVxCliOk : kVxCliFailed;
    }

    if (settings.format == QLatin1String("pdf")) {
        QPdfWriter writer(output.TempPath());
        writer.setTitle(QFileInfo(settings.input).completeBaseName());
        writer.setCreator(QStringLiteral("plaveno-cli"));
        writer.setResolution(kPdfResolution);
        writer.setPageSize(QPageSize(settings.paper));
        // At a scale one unit of the plan is its length in centimetres
        // divided by N on paper, and the pages cover what the floor holds;
        // otherwise the whole sheet fills one page.
        const double scaleZoom =
            settings.scale > 0 ? CVxUnits::GetUnitCal(project.m_unit) / settings.scale / 2.54 * kPdfResolution
                               : 0;
        CVxDRect area(0, 0, totalWidth, totalHeight);
        if (scaleZoom > 0) {
            core->SetZoom(scaleZoom);
            core->RebuildRoom();
            area = ContentRect(project, scaleZoom);
        }
        writer.setPageOrientation(area.Width() > area.Height() ? QPageLayout::Landscape
                                                               : QPageLayout::Portrait);
        writer.setPageMargins(QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
        const int pageWidth = writer.width();
        const int pageHeight = writer.height();
        const double zoom =
            scaleZoom > 0 ? scaleZoom : std::min(pageWidth / totalWidth, pageHeight / totalHeight);
        if (scaleZoom <= 0) {
            core->SetZoom(zoom);
            core->RebuildRoom();
            area = CVxDRect(0, 0, totalWidth * zoom, totalHeight * zoom);
        }
        // A plan larger than the paper at its scale is tiled over pages, left
        // to right and then down, each showing its own piece of the plan; the
        // pages together are centred on it.
        const double columns = std::max(1.0, std::ceil(area.Width() / pageWidth));
        const double rows = std::max(1.0, std::ceil(area.Height() / pageHeight));
        if (!(columns * rows <= kMaxPages))
            return VxCliFail(
                settings.input,
                QStringLiteral("at this scale the plan would need %1 pages").arg(columns * rows, 0, 'f', 0));
        const int x = static_cast<int>(std::lround((columns * pageWidth - area.Width()) / 2 - area.left));
        const int y = static_cast<int>(std::lround((rows * pageHeight - area.Height()) / 2 - area.top));
        CVxQtDCPaintDevice device(&writer, true);
        if (!device.IsActive())
            return VxCliFail(settings.output, QStringLiteral("can't be created"));
        for (int row = 0; row < static_cast<int>(rows); ++row) {
            for (int column = 0; column < static_cast<int>(columns); ++column) {
                if ((row > 0 || column > 0) && !writer.newPage())
                    return VxCliFail(settings.output, QStringLiteral("could not be written"));
                core->DrawProject(device.GetDC(), x - column * pageWidth, y - row * pageHeight,
                                  VxRECT{0, 0, pageWidth, pageHeight}, settings.flags);
            }
        }
        if (!device.End())
            return VxCliFail(settings.output, QStringLiteral("could not be written"));
        progress.Step("writing");
        return output.Commit() ? kVxCliOk : kVxCliFailed;
    }

    const double zoom = settings.zoom > 0 ? settings.zoom * project.m_baseZoom : settings.width / totalWidth;
    const double exactWidth = totalWidth * zoom;
    const double exactHeight = totalHeight * zoom;
    if (!std::isfinite(exactWidth * exactHeight) || exactWidth > kMaxSide || exactHeight > kMaxSide ||
        exactWidth * exactHeight > kMaxPixels)
        return VxCliFail(settings.input, QStringLiteral("the image would be too large (%1 x %2 pixels)")
                                             .arg(exactWidth, 0, 'f', 0)
                                             .arg(exactHeight, 0, 'f', 0));
    const int width = std::max(1, static_cast<int>(std::lround(exactWidth)));
    const int height = std::max(1, static_cast<int>(std::lround(exactHeight)));
    core->SetZoom(zoom);
    core->RebuildRoom();
    const VxRECT all{0, 0, width, height};

    if (settings.format == QLatin1String("svg")) {
        QSvgGenerator generator;
        generator.setFileName(output.TempPath());
        generator.setSize(QSize(width, height));
        generator.setViewBox(QRect(0, 0, width, height));
        generator.setTitle(QFileInfo(settings.input).completeBaseName());
        CVxQtDCPaintDevice device(&generator, true);
        if (!device.IsActive())
            return VxCliFail(settings.output, QStringLiteral("can't be created"));
        core->DrawProject(device.GetDC(), 0, 0, all, settings.flags);
        if (!device.End())
            return VxCliFail(settings.output, QStringLiteral("could not be written"));
        progress.Step("writing");
        return output.Commit() ? kVxCliOk : kVxCliFailed;
    }

    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return VxCliFail(settings.input, QStringLiteral("not enough memory for the image"));
    // The sheet is its margins and the room each cut to whole pixels, so it
    // may end a pixel or two short of the picture; the ground goes on to the
    // picture's edges.
    image.fill(settings.flags & CVxAppCore::drawNoGround ? Qt::transparent : Qt::white);
    {
        CVxQtDCPaintDevice device(&image, true);
        if (!device.IsActive())
            return VxCliFail(settings.input, QStringLiteral("the image can't be drawn"));
        core->DrawProject(device.GetDC(), 0, 0, all, settings.flags);
    }
    progress.Step("writing");
    const bool jpeg = settings.format != QLatin1String("png");
    if (jpeg)
        image = image.convertToFormat(QImage::Format_RGB32);
    if (!image.save(output.TempPath(), jpeg ? "JPG" : "PNG", jpeg ? 90 : -1))
        return VxCliFail(settings.output, QStringLiteral("could not be written"));
    return output.Commit() ? kVxCliOk : kVxCliFailed;
}

} // namespace

int VxCliRender(const std::vector<std::string>& args)
{
    CVxCliArgs parsed;
    std::string error;
    if (!parsed.Parse(args, {"--output", "--floor", "--width", "--zoom", "--scale", "--paper"},
                      {"--bw", "--no-grid", "--no-captions"}, error))
        return VxCliUsageError("render", error);
    if (parsed.Positional().size() != 1)
        return VxCliUsageError("render", "expects one project file");
    if (!parsed.Has("--output") || parsed.Value("--output").empty())
        return VxCliUsageError("render", "needs an output file: -o OUT");

    SVxRenderSettings settings;
    settings.input = QString::fromLocal8Bit(parsed.Positional()[0].c_str());
    settings.output = QString::fromLocal8Bit(parsed.Value("--output").c_str());
    settings.format = VxCliExtension(settings.output);
    if (settings.format == QLatin1String("jpeg"))
        settings.format = QStringLiteral("jpg");
    if (settings.format != QLatin1String("png") && settings.format != QLatin1String("jpg") &&
        settings.format != QLatin1String("svg") && settings.format != QLatin1String("pdf") &&
        settings.format != QLatin1String("dxf"))
        return VxCliUsageError("render", "the output must end in .png, .jpg, .jpeg, .svg, .pdf or .dxf");
    if (parsed.Has("--floor") && !ParseInt(parsed.Value("--floor"), 1, 10000, settings.floor))
        return VxCliUsageError("render", "--floor needs a floor number from 1");
    if (parsed.Has("--width") && parsed.Has("--zoom"))
        return VxCliUsageError("render", "give either --width or --zoom");
    if (parsed.Has("--width") && !ParseInt(parsed.Value("--width"), 1, kMaxSide, settings.width))
        return VxCliUsageError("render", "--width needs a number of pixels from 1 to 32000");
    if (parsed.Has("--zoom") && !ParseDouble(parsed.Value("--zoom"), 0.001, 1000, settings.zoom))
        return VxCliUsageError("render", "--zoom needs a number above 0, 1 for 100 %");
    const bool pdf = settings.format == QLatin1String("pdf");
    if ((parsed.Has("--scale") || parsed.Has("--paper")) && !pdf)
        return VxCliUsageError("render", "--scale and --paper are for PDF output");
    if (parsed.Has("--scale") && !VxCliParseScale(parsed.Value("--scale"), settings.scale))
        return VxCliUsageError("render", "--scale needs the form 1:N, for example 1:100");
    if (parsed.Has("--paper") && !VxCliParsePaper(parsed.Value("--paper"), settings.paper))
        return VxCliUsageError("render", "--paper needs A4, A3 or Letter");
    if (!VxCliCheckOutput(settings.output))
        return kVxCliFailed;

    CVxCliProgress progress(settings.input);
    SVxCliLoaded loaded;
    if (!VxCliLoadProject(settings.input, loaded))
        return kVxCliFailed;
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    if (settings.floor > project.GetFloorCount())
        return VxCliFail(
            settings.input,
            QStringLiteral("has %1 floor(s), not %2").arg(project.GetFloorCount()).arg(settings.floor));
    project.m_currentFloor = settings.floor - 1;
    core->UpdateFloorPlan();

    settings.flags = core->GetPartDrawFlagsFromOptions() & ~CVxAppCore::drawBlackWhite;
    if (parsed.Has("--bw"))
        settings.flags |= CVxAppCore::drawBlackWhite;
    if (parsed.Has("--no-grid"))
        settings.flags &= ~(CVxAppCore::drawGrid | CVxAppCore::drawGridLabels);
    if (parsed.Has("--no-captions"))
        settings.flags &= ~CVxAppCore::drawCaptions;
    return Draw(settings, progress);
}
