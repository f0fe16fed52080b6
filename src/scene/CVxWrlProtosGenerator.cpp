#include "CVxWrlProtosGenerator.h"

#include "CVxPart.h"
#include "SVx3DExportPars.h"
#include "VxColorWord.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdarg>
#include <list>
#include <unordered_map>

namespace {

struct SVxTexCacheItem
{
    CVxAppearance appearance;
    bool repeat = false;
    CVxStringA name;
};

struct SVxWallColorItem
{
    CVxMaterial material;
    CVxStringA name;
};

// The caches live from one Clear to the next, on the GUI thread only.
struct SVxGeneratorState
{
    std::list<SVxTexCacheItem> floorTexCache;
    std::list<SVxWallColorItem> wallSimpleColorCache;
    std::vector<CVxPartMatCacheItem> partMatCache;
    std::unordered_map<std::string, CVxStringA> entirePartNodes;
    std::map<std::wstring, CVxStringA> externProtos;
    std::vector<bool> stdLibObjPresent = std::vector<bool>(CVxWrlProtosGenerator::maxStdLibObj, false);
    bool defaultNeutralTexMaterialWritten = false;
    bool defaultCollisionProxyWritten = false;
    int partMatCacheNodeCount = 0;
    int doorFrameObjCount = 0;
    int soundClipCount = 0;
    int genericCount = 0;
    int importedCount = 0;
    int partNodeDefs = 0;
    int partNodeUses = 0;
    long long partNodeBytesSaved = 0;
    CVxStringA linesAtEOF;
};

SVxGeneratorState& State()
{
    static SVxGeneratorState state;
    return state;
}

bool HasTexture(const CVxAppearance& appearance)
{
    return appearance.main.HasTexture();
}

} // namespace

bool CVxPartMatCacheItem::Matches(const CVxPartMatCacheItem& other) const
{
    return color == other.color && transparency == other.transparency && specular == other.specular &&
           shininess == other.shininess && emission == other.emission &&
           appearance.main.texture == other.appearance.main.texture;
}

CVxStringA CVxPartMatCacheItem::GetVRMLNode(SVx3DExportPars* pars) const
{
    float r, g, b;
    float sr, sg, sb;
    VxSplitColor(color, r, g, b);
    VxSplitColor(specular, sr, sg, sb);
    const CVxStringA url =
        HasTexture(appearance) ? CVxPart::GetTextureURL(appearance.main.texture, pars) : CVxStringA();
    if (url.IsEmpty()) {
        if (emission == 0xFFFFFF01u && !(pars && pars->shadows))
            return VxFormatA(
                "Appearance {material Material {emissiveColor %.2f %.2f %.2f diffuseColor 0 0 0}}", r, g, b);
        const bool glass = transparency >= 61 && pars && pars->shadows;
        return VxFormatA(
            "Appearance {material Material {diffuseColor %.2f %.2f %.2f transparency %.2f specularColor "
            "%.2f %.2f %.2f shininess %.3f} %s}",
            r, g, b, transparency / 100.0, sr * 0.25, sg * 0.25, sb * 0.25, shininess / 100.0,
            glass ? "shadowCaster FALSE" : "");
    }
    CVxStringA material;
    if (specular == 0 && shininess == 20)
        material = "material " + CVxWrlProtosGenerator::GetDefaultWhiteMaterial();
    else
        material =
            VxFormatA("material Material {diffuseColor 1 1 1 specularColor %.2f %.2f %.2f shininess %.3f}",
                      sr, sg, sb, shininess / 100.0);
    return VxFormatA("Appearance {texture ImageTexture {repeatS FALSE repeatT FALSE url \"%s\"} %s}",
                     url.c_str(), material.c_str());
}

void CVxWrlProtosGenerator::Clear()
{
    State() = SVxGeneratorState();
}

CVxStringA CVxWrlProtosGenerator::WriteExternProto(const CVxPart& part, SVx3DExportPars* pars)
{
    SVxGeneratorState& state = State();
    const int number = part.libObjID;
    CVxStringA name;
    if (number != 0)
        name = VxFormatA("LibraryObject%d", number);
    else
        name = VX_StringToUTF8(CVxPart::TypeNameFromID(part.type));
    if ((number < 0 || number >= maxStdLibObj) && pars && pars->knownProtos &&
        !pars->knownProtos->count(name.Std()))
        return part.type <= ptArrow ? VX_StringToUTF8(CVxPart::TypeNameFromID(part.type))
                                    : CVxStringA("Rectangle");
    if (number < 0 || number >= maxStdLibObj)
        return name;

    if (!part.wrlProto.IsEmpty()) {
        std::wstring key = part.wrlProto.Std();
        if (!part.wrlPrototype.IsEmpty())
            key += L"#" + part.wrlPrototype.Std();
        auto found = state.externProtos.find(key);
        if (found != state.externProtos.end())
            return found->second;
        CVxStringA url = CVxPart::GetTextureURL(part.wrlProto, pars);
        if (url.IsEmpty()) {
            // A model file that went missing: the catalogue's own proto
            // stands in for it.
            if (pars && pars->report)
                ++pars->report->missingFiles;
        } else {
            if (!part.wrlPrototype.IsEmpty())
                url += "#" + VX_StringToUTF8(part.wrlPrototype);
            const CVxStringA imported = VxFormatA("Imported%d", ++state.importedCount);
            state.externProtos[key] = imported;
            if (pars && pars->file) {
                if (!part.wrlProtoStd)
                    fprintf(pars->file, "EXTERNPROTO %s [] \"%s\"\r\n", imported.c_str(), url.c_str());
                else
                    fprintf(pars->file, "EXTERNPROTO %s [field SFNode appearance] \"%s\"\r\n",
                            imported.c_str(), url.c_str());
            }
            return imported;
        }
    }
    if (pars && pars->knownProtos && !pars->knownProtos->count(name.Std())) {
        // The library has no such proto: the basic shape of the object's
        // kind stands in, so that the scene still loads.
        const CVxStringA stand = part.type <= ptArrow ? VX_StringToUTF8(CVxPart::TypeNameFromID(part.type))
                                                      : CVxStringA("Rectangle");
        if (!state.stdLibObjPresent[static_cast<size_t>(number)]) {
            VxTrace("3D: the proto library has no %s, %s stands in\n", name.c_str(), stand.c_str());
            state.stdLibObjPresent[static_cast<size_t>(number)] = true;
            if (pars->report)
                ++pars->report->substitutedProtos;
        }
        return stand;
    }
    if (number == 0 || state.stdLibObjPresent[static_cast<size_t>(number)] || part.type == ptComplexObject)
        return name;
    state.stdLibObjPresent[static_cast<size_t>(number)] = true;
    if (pars && pars->file && !pars->libraryInlined) {
        const CVxStringA url = pars->protoUrl + name;
        if (part.HasCap(capFrontColor))
            fprintf(pars->file,
                    "EXTERNPROTO %s [field SFNode appearance field SFNode appearanceFront] \"%s\"\r\n",
                    name.c_str(), url.c_str());
        else
            fprintf(pars->file, "EXTERNPROTO %s [field SFNode appearance] \"%s\"\r\n", name.c_str(),
                    url.c_str());
    }
    return name;
}

CVxStringA CVxWrlProtosGenerator::GetFloorTextureNode(const CVxAppearance& appearance, bool repeat,
                                                      SVx3DExportPars* pars)
{
    SVxGeneratorState& state = State();
    for (const SVxTexCacheItem& item : state.floorTexCache)
        if (item.repeat == repeat && item.appearance == appearance)
            return "USE " + item.name;
    if (!HasTexture(appearance))
        return CVxStringA();
    const CVxStringA url = CVxPart::GetTextureURL(appearance.main.texture, pars);
    if (url.IsEmpty()) {
        if (pars && pars->report)
            ++pars->report->missingFiles;
        return CVxStringA();
    }
    SVxTexCacheItem item;
    item.appearance = appearance;
    item.repeat = repeat;
    item.name = VxFormatA("VX_WRLTEX_%d", state.partMatCacheNodeCount++);
    state.floorTexCache.push_back(item);
    return VxFormatA("DEF %s ImageTexture {%s url \"%s\"}", item.name.c_str(),
                     repeat ? "repeatS TRUE repeatT TRUE" : "repeatS FALSE repeatT FALSE", url.c_str());
}

CVxStringA CVxWrlProtosGenerator::GetSimpleColorWallApearanceNode(const CVxMaterial& material)
{
    SVxGeneratorState& state = State();
    for (const SVxWallColorItem& item : state.wallSimpleColorCache)
        if (item.material.color == material.color && item.material.transparency == material.transparency &&
            item.material.texture == material.texture)
            return "USE " + item.name;
    float r, g, b;
    VxSplitColor(material.color, r, g, b);
    CVxStringA text;
    if (material.transparency > 0)
        text = VxFormatA("Appearance {material Material { diffuseColor %.2f %.2f %.2f transparency %.2f}}", r,
                         g, b, material.transparency / 100.0);
    else
        text = VxFormatA("Appearance {material Material { diffuseColor %.2f %.2f %.2f}}", r, g, b);
    SVxWallColorItem item;
    item.material = material;
    item.name = VxFormatA("VX_WRLWALLCOL_%d", state.partMatCacheNodeCount++);
    state.wallSimpleColorCache.push_back(item);
    return "DEF " + item.name + " " + text;
}

CVxStringA CVxWrlProtosGenerator::GetDefaultWhiteMaterial(bool)
{
    SVxGeneratorState& state = State();
    if (state.defaultNeutralTexMaterialWritten)
        return "USE VX_NEUTRAL_TEX_MAT";
    state.defaultNeutralTexMaterialWritten = true;
    return "DEF VX_NEUTRAL_TEX_MAT Material {diffuseColor 1 1 1}";
}

CVxStringA CVxWrlProtosGenerator::GetDefaultWhiteWallMaterial(bool unused)
{
    return GetDefaultWhiteMaterial(unused);
}

SVxTileTransform VxTileTransform(const CVxAppearance& appearance, double width, int rotationDegrees)
{
    SVxTileTransform out;
    const double tileW = appearance.tileSizeX;
    const double tileH = appearance.tileSizeY >= 1e-7 ? appearance.tileSizeY : tileW;
    if (tileW <= 0 || width <= 0)
        return out;
    const double a = -static_cast<double>(static_cast<int>(rotationDegrees)) * M_PI / 180.0;
    const double reach = width * (std::fabs(std::cos(a)) + std::fabs(std::sin(a)));
    out.scaleU = reach / tileW;
    out.scaleV = reach / tileH;
    if (appearance.tilePattern == 1 || appearance.tilePattern == 2) {
        out.scaleU /= 2;
        out.scaleV /= 2;
    }
    out.rotation = a;
    return out;
}

CVxStringA CVxWrlProtosGenerator::GetPartAppearance_helper(const CVxPart& part,
                                                           const CVxAppearance& appearance, bool front,
                                                           SVx3DExportPars* pars, double width, double depth,
                                                           CVxStringA* outName, unsigned* outColor)
{
    SVxGeneratorState& state = State();
    if (outColor)
        *outColor = appearance.main.color;
    if (part.HasCap(capTileTexture) && appearance.kind == 1 && appearance.tileSizeX > 0) {
        int rotation = appearance.rotation + 180;
        if (part.libObjID == 128)
            rotation -= 180;
        while (rotation < 0)
            rotation += 360;
        while (rotation >= 360)
            rotation -= 360;
        const CVxStringA node = GetFloorTextureNode(appearance, true, pars);
        if (!node.IsEmpty()) {
            const SVxTileTransform tile = VxTileTransform(appearance, std::max(width, depth), rotation);
            CVxStringA text = "Appearance {texture " + node;
            VxAppendF(text, "\r\n    textureTransform TextureTransform {scale %.3f %.3f rotation %.4f}",
                      tile.scaleU, tile.scaleV, tile.rotation);
            if (part.emissive != 0 || part.specular != 0 || part.shininess != 20) {
                float sr, sg, sb;
                VxSplitColor(part.specular, sr, sg, sb);
                VxAppendF(text,
                          "\r\n    material Material {diffuseColor 1 1 1 specularColor %.2f %.2f %.2f "
                          "shininess %.3f}",
                          sr, sg, sb, part.shininess / 100.0);
            } else {
                text += "\r\n    material " + GetDefaultWhiteMaterial();
            }
            text += "}";
            if (!front) {
                const CVxStringA name = VxFormatA("VX_WRLAPP_%d", state.partMatCacheNodeCount++);
                if (outName)
                    *outName = name;
                return "DEF " + name + " " + text;
            }
            return text;
        }
    }
    CVxPartMatCacheItem key;
    key.color = appearance.main.color & 0xFFFFFF;
    key.transparency = std::clamp(appearance.main.transparency, 0, 100);
    key.appearance = appearance;
    key.specular = part.specular;
    key.shininess = std::min(part.shininess, 100u);
    key.emission = part.emissive;
    for (const CVxPartMatCacheItem& item : state.partMatCache)
        if (item.Matches(key)) {
            if (outName)
                *outName = item.name;
            return "USE " + item.name;
        }
    key.name = VxFormatA("VX_WRLAPP_%d", state.partMatCacheNodeCount++);
    state.partMatCache.push_back(key);
    if (outName)
        *outName = key.name;
    return "DEF " + key.name + " " + key.GetVRMLNode(pars);
}

CVxStringA CVxWrlProtosGenerator::GetPartAppearanceNode(const CVxPart& part, SVx3DExportPars* pars,
                                                        double width, double depth, int what)
{
    if (width == 0)
        width = part.width;
    if (depth == 0)
        depth = part.height;
    const bool frontOnly = what == 2;
    const bool useFront = frontOnly && part.frontColorEnable && !VX_IsColorOff(part.appearFront.main.color);
    CVxStringA text = "appearance ";
    CVxStringA fillName;
    if ((what & 1) || frontOnly) {
        const CVxAppearance& first = useFront ? part.appearFront : part.appearFill;
        text += GetPartAppearance_helper(part, first, useFront, pars, width, depth, &fillName, nullptr);
    }
    if (part.HasCap(capFrontColor) && (what & 2) && (what & 1)) {
        text += " appearanceFront ";
        if (!part.frontColorEnable || VX_IsColorOff(part.appearFront.main.color))
            text += "USE " + fillName;
        else
            text +=
                GetPartAppearance_helper(part, part.appearFront, true, pars, width, depth, nullptr, nullptr);
    }
    return text;
}

CVxStringA VxDefToUse(const CVxStringA& text)
{
    const std::string& in = text.Std();
    std::string out;
    out.reserve(in.size());
    size_t i = 0;
    while (i < in.size()) {
        const size_t def = in.find("DEF ", i);
        if (def == std::string::npos ||
            (def > 0 && (std::isalnum(static_cast<unsigned char>(in[def - 1])) || in[def - 1] == '_'))) {
            if (def == std::string::npos) {
                out.append(in, i, std::string::npos);
                break;
            }
            out.append(in, i, def + 4 - i);
            i = def + 4;
            continue;
        }
        out.append(in, i, def - i);
        // "DEF name Type {body}" becomes "USE name".
        size_t p = def + 4;
        const size_t nameStart = p;
        while (p < in.size() && in[p] != ' ')
            ++p;
        const std::string name = in.substr(nameStart, p - nameStart);
        size_t open = in.find('{', p);
        if (open == std::string::npos) {
            out.append(in, def, std::string::npos);
            break;
        }
        int depth = 0;
        bool quoted = false;
        size_t q = open;
        for (; q < in.size(); ++q) {
            const char c = in[q];
            if (c == '"' && (q == 0 || in[q - 1] != '\\'))
                quoted = !quoted;
            else if (!quoted && c == '{')
                ++depth;
            else if (!quoted && c == '}' && --depth == 0)
                break;
        }
        out += "USE " + name;
        i = q + 1;
    }
    return CVxStringA(std::move(out));
}

CVxStringA CVxWrlProtosGenerator::CacheEntirePartNode(const CVxStringA& text)
{
    SVxGeneratorState& state = State();
    // The first object of a kind defines its materials inside its node, the
    // next ones name them: both are the same node.
    const CVxStringA key = VxDefToUse(text);
    auto found = state.entirePartNodes.find(key.Std());
    if (found != state.entirePartNodes.end()) {
        ++state.partNodeUses;
        const CVxStringA use = "USE " + found->second;
        state.partNodeBytesSaved += text.GetLength() - use.GetLength();
        return use;
    }
    const CVxStringA name = VxFormatA("VX_PART%d", state.genericCount++);
    state.entirePartNodes.emplace(key.Std(), name);
    ++state.partNodeDefs;
    return "DEF " + name + " " + text;
}

CVxStringA CVxWrlProtosGenerator::ReuseAppearanceNode(const CVxStringA& text)
{
    if (!text.StartsWith("appearance DEF"))
        return text;
    const int start = 15;
    const int blank = text.Find(' ', start);
    if (blank < 0)
        return text;
    return "appearance USE " + text.Mid(start, blank - start);
}

void CVxWrlProtosGenerator::SplitDefUseApprearance(const CVxStringA& text, CVxStringA& outDefOrUse,
                                                   CVxStringA& outUse)
{
    outDefOrUse = text;
    outUse = ReuseAppearanceNode(text);
}

void CVxWrlProtosGenerator::AddLinesToEOF(const CVxStringA& text)
{
    State().linesAtEOF += text;
}

const CVxStringA& CVxWrlProtosGenerator::GetLinesAtEOF()
{
    return State().linesAtEOF;
}

int CVxWrlProtosGenerator::GetIncDoorFrameCounter()
{
    return State().doorFrameObjCount++;
}

int CVxWrlProtosGenerator::GetIncSoundClipCounter()
{
    return State().soundClipCount++;
}

int CVxWrlProtosGenerator::GetIncGenericCounter()
{
    return State().genericCount++;
}

CVxStringA CVxWrlProtosGenerator::GetDefaultCollisionProxy()
{
    SVxGeneratorState& state = State();
    if (state.defaultCollisionProxyWritten)
        return "proxy USE VX_BBOXRECT";
    state.defaultCollisionProxyWritten = true;
    return "proxy DEF VX_BBOXRECT BBoxRect {}";
}

int CVxWrlProtosGenerator::GetPartNodeDefs()
{
    return State().partNodeDefs;
}

int CVxWrlProtosGenerator::GetPartNodeUses()
{
    return State().partNodeUses;
}

long long CVxWrlProtosGenerator::GetPartNodeBytesSaved()
{
    return State().partNodeBytesSaved;
}
