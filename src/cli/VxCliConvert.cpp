// convert: a project loaded and saved again, in the compressed form that
// carries the files it uses, optionally in another unit.

#include "VxCli.h"

#include "CVxAppCore.h"

#include <QFileInfo>

int VxCliConvert(const std::vector<std::string>& args)
{
    CVxCliArgs parsed;
    std::string error;
    if (!parsed.Parse(args, {"--unit"}, {}, error))
        return VxCliUsageError("convert", error);
    if (parsed.Positional().size() != 2)
        return VxCliUsageError("convert", "expects an input and an output file");
    int unit = -1;
    if (parsed.Has("--unit")) {
        unit = VxCliUnitFromName(parsed.Value("--unit"));
        if (unit < 0)
            return VxCliUsageError("convert", "--unit needs mm, cm, in, dm, ft, yd, m or km");
    }
    const QString input = QString::fromLocal8Bit(parsed.Positional()[0].c_str());
    const QString output = QString::fromLocal8Bit(parsed.Positional()[1].c_str());
    if (!VxCliCheckOutput(output))
        return kVxCliFailed;

    CVxCliProgress progress(input);
    SVxCliLoaded loaded;
    if (!VxCliLoadProject(input, loaded))
        return kVxCliFailed;
    CVxAppCore* core = VX_GetCore();
    CVxProject& project = core->GetProject();
    if (unit >= 0 && unit != project.m_unit) {
        progress.Step("converting");
        core->TransformConvertUnit(project.m_unit, unit);
    }
    progress.Step("saving");
    // Saving finishes the file beside the target and renames it into place
    // itself, so a failed save leaves nothing behind.
    if (!project.SaveToFile(CVxStringW(output), true, nullptr))
        return VxCliFail(output, QStringLiteral("could not be written"));
    return kVxCliOk;
}
