// thumbnail: the small picture of a project that project lists show.

#include "VxCli.h"

#include "CVxAppCore.h"
#include "CVxQtDC.h"

#include <QImage>

#include <cstdlib>

namespace {
constexpr int kDefaultSize = 512;
constexpr int kMaxSize = 8192;
} // namespace

int VxCliThumbnail(const std::vector<std::string>& args)
{
    CVxCliArgs parsed;
    std::string error;
    if (!parsed.Parse(args, {"--output", "--size"}, {}, error))
        return VxCliUsageError("thumbnail", error);
    if (parsed.Positional().size() != 1)
        return VxCliUsageError("thumbnail", "expects one project file");
    if (!parsed.Has("--output") || parsed.Value("--output").empty())
        return VxCliUsageError("thumbnail", "needs an output file: -o OUT.png");
    const QString input = QString::fromLocal8Bit(parsed.Positional()[0].c_str());
    const QString output = QString::fromLocal8Bit(parsed.Value("--output").c_str());
    if (VxCliExtension(output) != QLatin1String("png"))
        return VxCliUsageError("thumbnail", "the output must end in .png");
    int size = kDefaultSize;
    if (parsed.Has("--size")) {
        const std::string text = parsed.Value("--size");
        char* end = nullptr;
        const long value = strtol(text.c_str(), &end, 10);
        if (text.empty() || *end != '\0' || value < 16 || value > kMaxSize)
            return VxCliUsageError("thumbnail", "--size needs a number of pixels from 16 to 8192");
        size = static_cast<int>(value);
    }
    if (!VxCliCheckOutput(output))
        return kVxCliFailed;

    CVxCliProgress progress(input);
    SVxCliLoaded loaded;
    if (!VxCliLoadProject(input, loaded))
        return kVxCliFailed;
    progress.Step("drawing");
    CVxAppCore* core = VX_GetCore();
    QImage image;
    {
        CVxQtDC dc(size, size, true);
        // The picture draws no ground of its own; lists show it on white.
        dc.SelectPen(CVxDC::penNull, 0, 0);
        dc.SelectBrush(CVxDC::brushSolid, 0xFFFFFF);
        dc.Rectangle(0, 0, size + 1, size + 1);
        dc.SelectOldBrush();
        dc.SelectOldPen();
        core->DrawProjectThumb(&dc, core->GetProject(), size, size, false, nullptr);
        image = *dc.GetImage();
    }
    CVxCliOutput out(output);
    if (!image.save(out.TempPath(), "PNG"))
        return VxCliFail(output, QStringLiteral("could not be written"));
    return out.Commit() ? kVxCliOk : kVxCliFailed;
}
