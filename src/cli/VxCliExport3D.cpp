// export-3d: the scene file of a project, as the built-in viewer or an
// external viewer gets it.

#include "VxCli.h"

#include "CVxAppCore.h"

#include <cstdio>

int VxCliExport3D(const std::vector<std::string>& args)
{
    CVxCliArgs parsed;
    std::string error;
    if (!parsed.Parse(args, {"-o", "--output", "--mode"}, {"--all-floors"}, error))
        return VxCliUsageError("export-3d", error);
    if (parsed.Positional().size() != 1)
        return VxCliUsageError("export-3d", "expects one project file");
    const std::string output = parsed.Has("-o") ? parsed.Value("-o") : parsed.Value("--output");
    if (output.empty())
        return VxCliUsageError("export-3d", "needs an output file: -o scene.wrl");
    EVx3dViewerMode mode = VX_3DVIEWER_BUILTIN;
    if (parsed.Has("--mode")) {
        const std::string value = parsed.Value("--mode");
        if (value == "external")
            mode = VX_3DVIEWER_EXTERNAL;
        else if (value != "viewer")
            return VxCliUsageError("export-3d", "--mode is viewer or external");
    }
    const QString path = QString::fromLocal8Bit(parsed.Positional()[0].c_str());
    const QString target = QString::fromLocal8Bit(output.c_str());
    if (!VxCliCheckOutput(target))
        return kVxCliFailed;

    SVxCliLoaded loaded;
    if (!VxCliLoadProject(path, loaded))
        return kVxCliFailed;
    CVxAppCore* core = VX_GetCore();
    if (parsed.Has("--all-floors"))
        core->GetProject().m_viewpoints.m_allFloors = true;

    CVxStringW scene{target};
    SVx3DExportReport report;
    if (!core->CreateWrlExportFile(scene, mode, false, true, nullptr, CVxStringA(), CVxStringW(), &report))
        return VxCliFail(target, QStringLiteral("can't be written"));
    if (report.skippedObjects > 0)
        fprintf(stderr, "plaveno-cli: %s: %d objects with unusable positions or sizes left out\n",
                path.toLocal8Bit().constData(), report.skippedObjects);
    if (report.clampedObjects > 0)
        fprintf(stderr, "plaveno-cli: %s: %d object sizes cut to 10 km\n", path.toLocal8Bit().constData(),
                report.clampedObjects);
    if (report.skippedWalls > 0)
        fprintf(stderr, "plaveno-cli: %s: %d walls with unusable coordinates left out\n",
                path.toLocal8Bit().constData(), report.skippedWalls);
    if (report.missingFiles > 0)
        fprintf(stderr, "plaveno-cli: %s: %d pictures, sounds or models missing, left out\n",
                path.toLocal8Bit().constData(), report.missingFiles);
    if (report.substitutedProtos > 0)
        fprintf(stderr,
                "plaveno-cli: %s: %d catalogue objects have no proto in the library, shown as basic shapes\n",
                path.toLocal8Bit().constData(), report.substitutedProtos);
    if (!report.libraryInlined && mode == VX_3DVIEWER_BUILTIN)
        fprintf(stderr, "plaveno-cli: %s: the proto library was not found; the scene refers to it instead\n",
                target.toLocal8Bit().constData());
    return kVxCliOk;
}
