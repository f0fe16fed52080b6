// snapshot-3d: one picture of a 3D scene, drawn by the engine library
// beside the tool without a window.

#include "VxCli.h"

#include "CVx3dSnapshot.h"
#include "CVxAppCore.h"

#include <QElapsedTimer>
#include <QImage>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kMaxPixels = 8192;

bool ParsePixels(const std::string& text, int& value)
{
    char* end = nullptr;
    const long number = strtol(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || number < 16 || number > kMaxPixels)
        return false;
    value = static_cast<int>(number);
    return true;
}

} // namespace

int VxCliSnapshot3d(const std::vector<std::string>& args)
{
    CVxCliArgs parsed;
    std::string error;
    if (!parsed.Parse(args, {"--output", "--viewpoint", "--width", "--height"}, {"--verbose"}, error))
        return VxCliUsageError("snapshot-3d", error);
    if (parsed.Positional().size() != 1)
        return VxCliUsageError("snapshot-3d", "expects one scene file");
    if (!parsed.Has("--output") || parsed.Value("--output").empty())
        return VxCliUsageError("snapshot-3d", "needs an output file: -o OUT.png");
    const QString input = QString::fromLocal8Bit(parsed.Positional()[0].c_str());
    const QString output = QString::fromLocal8Bit(parsed.Value("--output").c_str());
    const QString inputExtension = VxCliExtension(input);
    const bool project = inputExtension == QLatin1String("pvp");
    if (!project && inputExtension != QLatin1String("wrl") && inputExtension != QLatin1String("x3d") &&
        inputExtension != QLatin1String("x3dv"))
        return VxCliUsageError("snapshot-3d",
                               "the input must be a project (.pvp) or a .wrl, .x3d or .x3dv scene");
    const QString outputExtension = VxCliExtension(output);
    if (outputExtension != QLatin1String("png") && outputExtension != QLatin1String("jpg") &&
        outputExtension != QLatin1String("jpeg"))
        return VxCliUsageError("snapshot-3d", "the output must end in .png or .jpg");

    SVx3dSnapshotRequest request;
    request.scenePath = input;
    if (parsed.Has("--width") && !ParsePixels(parsed.Value("--width"), request.width))
        return VxCliUsageError("snapshot-3d", "--width needs a number of pixels from 16 to 8192");
    if (parsed.Has("--height") && !ParsePixels(parsed.Value("--height"), request.height))
        return VxCliUsageError("snapshot-3d", "--height needs a number of pixels from 16 to 8192");
    if (parsed.Has("--viewpoint")) {
        const std::string text = parsed.Value("--viewpoint");
        char* end = nullptr;
        const long number = strtol(text.c_str(), &end, 10);
        if (text.empty() || *end != '\0' || number < 0 || number > 100000)
            return VxCliUsageError("snapshot-3d",
                                   "--viewpoint needs the index of a viewpoint, 0 for the first");
        request.viewpoint = static_cast<int>(number);
    }
    if (!VxCliCheckOutput(output))
        return kVxCliFailed;

    // A project is drawn through the scene that "Explore in 3D" shows.
    QTemporaryDir sceneFolder;
    SVxCliLoaded loaded;
    if (project) {
        if (!sceneFolder.isValid())
            return VxCliFail(input, QStringLiteral("no temporary folder for its scene"));
        if (!VxCliLoadProject(input, loaded))
            return kVxCliFailed;
        CVxStringW scene(sceneFolder.filePath(QStringLiteral("scene.wrl")));
        if (!VX_GetCore()->CreateWrlExportFile(scene, VX_3DVIEWER_BUILTIN, false, true, nullptr, CVxStringA(),
                                               CVxStringW()))
            return VxCliFail(input, QStringLiteral("its scene could not be written"));
        request.scenePath = scene.ToQString();
    }

    QElapsedTimer timer;
    timer.start();
    const SVx3dSnapshotResult result = VX_Render3dSnapshot(request);
    if (result.image.isNull())
        return VxCliFail(input, result.error);
    if (parsed.Has("--verbose")) {
        fprintf(stderr, "viewpoints: %d\ntime: %lld ms\n", result.viewpointCount,
                static_cast<long long>(timer.elapsed()));
        for (const QString& warning : result.warnings)
            fprintf(stderr, "engine: %s\n", warning.toLocal8Bit().constData());
    }
    if (request.viewpoint >= result.viewpointCount && request.viewpoint > 0)
        return VxCliFail(input, QStringLiteral("has no viewpoint %1").arg(request.viewpoint));

    CVxCliOutput out(output);
    const char* format = outputExtension == QLatin1String("png") ? "PNG" : "JPEG";
    if (!result.image.save(out.TempPath(), format))
        return VxCliFail(output, QStringLiteral("could not be written"));
    return out.Commit() ? kVxCliOk : kVxCliFailed;
}
