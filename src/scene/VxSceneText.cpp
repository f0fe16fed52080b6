#include "VxSceneText.h"
#include "CVxDPolygon.h"
#include "SVx3DExportPars.h"
#include "VxGeometryFunctions.h"

#include <cmath>
#include <cstdarg>

CVxStringA SVx3DExportPars::FloorNodeName(int floor)
{
    return VxFormatA("VX_FLOOR_%02i", floor);
}

CVxStringA SVx3DExportPars::LayerNodeName(int floor, int layer)
{
    return VxFormatA("VX_LAYER_F%02iL%02i", floor, layer);
}

CVxStringA SVx3DExportPars::WallNodeName(int floor, bool upper)
{
    return VxFormatA("VX_WALLS_F%02iH%i", floor, upper ? 1 : 0);
}

bool CVx3DFloorLayerVis::IsCompatible(const CVx3DFloorLayerVis& other) const
{
    if (floors.size() != other.floors.size())
        return false;
    for (size_t i = 0; i < floors.size(); ++i) {
        const SVxFloorVis& a = floors[i];
        const SVxFloorVis& b = other.floors[i];
        if (a.floor != b.floor || a.layers.size() != b.layers.size())
            return false;
        for (size_t k = 0; k < a.layers.size(); ++k)
            if (a.layers[k].layer != b.layers[k].layer)
                return false;
    }
    return true;
}

namespace {

void AppendV(std::string& out, const char* format, va_list args)
{
    char buffer[512];
    va_list copy;
    va_copy(copy, args);
    const int needed = vsnprintf(buffer, sizeof buffer, format, copy);
    va_end(copy);
    if (needed < 0)
        return;
    if (static_cast<size_t>(needed) < sizeof buffer) {
        out.append(buffer, static_cast<size_t>(needed));
        return;
    }
    const size_t at = out.size();
    out.resize(at + static_cast<size_t>(needed) + 1);
    vsnprintf(&out[at], static_cast<size_t>(needed) + 1, format, args);
    out.resize(at + static_cast<size_t>(needed));
}

} // namespace

void VxAppendF(CVxStringA& text, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    AppendV(text.Std(), format, args);
    va_end(args);
}

CVxStringA VxFormatA(const char* format, ...)
{
    CVxStringA text;
    va_list args;
    va_start(args, format);
    AppendV(text.Std(), format, args);
    va_end(args);
    return text;
}

void VxSplitColor(unsigned colour, float& r, float& g, float& b)
{
    r = static_cast<float>(colour & 0xFFu) / 255.0f;
    g = static_cast<float>((colour >> 8) & 0xFFu) / 255.0f;
    b = static_cast<float>((colour >> 16) & 0xFFu) / 255.0f;
}

std::vector<CVxDPoint> VxFlattenPolygon(const CVxDPolygon& polygon, int innerPoints)
{
    std::vector<CVxDPoint> out;
    const int n = polygon.GetVertexCount();
    int controlIndex = 0;
    for (int i = 0; i < n; ++i) {
        out.push_back(polygon.points[static_cast<size_t>(i)]);
        if (!polygon.IsEdgeCurved(i))
            continue;
        CVxDPoint p1, p2, c0, c1;
        polygon.GetBezControlPoints(p1, p2, c0, c1, controlIndex, i, n);
        for (int k = 1; k <= innerPoints; ++k) {
            CVxDPoint at;
            GetBezierInterpolation(at, p1, c0, c1, p2, static_cast<double>(k) / (innerPoints + 1));
            out.push_back(at);
        }
    }
    return out;
}

bool VxIsFinite(double value)
{
    return std::isfinite(value);
}
