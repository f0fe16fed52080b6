// The record form of a part: one section of keys, members in sections of
// their own behind it, and the repairs that older and damaged files need.

#include "CVxPart.h"

#include "CVxFont.h"
#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxLocStrings.h"
#include "CVxLocalize.h"
#include "CVxOptions.h"
#include "CVxPartPayload.h"
#include "CVxProject.h"
#include "CVxStringTokenizer.h"
#include "CVxUnits.h"
#include "CVxUtils.h"
#include "VxNumbers.h"

#include <cmath>
#include <limits>
#include <string_view>
#include <unordered_map>

namespace {

constexpr double kEps = 1e-7;
constexpr unsigned kDefaultShininess = 20;
// Beyond this a coordinate or size can only come from a damaged file.
constexpr double kMaxCoordinate = 1e11;
constexpr double kMaxLineThick = 1000;
// Room reserved for announced members; the rest grows as members arrive.
constexpr int64_t kMaxReservedMembers = 256;
// Old door symbols, from before doors hung in walls.
constexpr unsigned kOldDoorFill = 0xFDFDFD;

// Versions of the project format at which the stored form changed.
constexpr int kVersionWrlProtoJoined = 704;
constexpr int kVersionOldAppearFill = 719;
constexpr int kVersionNoLibWrlFile = 499;
constexpr int kVersionOldFront = 600;
constexpr int kVersionOldHandles = 700;
constexpr int kVersionNoFrameThickness = 850;

CVxStringW ColorText(unsigned colour)
{
    return CVxStringW::IntToHex(colour, 6, true);
}

unsigned ReadColor(const CVxStringW& value, unsigned present)
{
    return static_cast<unsigned>(CVxIniFileReader::ToInt(value, static_cast<int>(present)));
}

// A number that is no finite number keeps the present value.
double ReadDouble(const CVxStringW& value, double present)
{
    const double read = CVxIniFileReader::ToDouble(value, present);
    return std::isfinite(read) ? read : present;
}

float ReadFloat(const CVxStringW& value, float present)
{
    const double read = ReadDouble(value, present);
    if (std::fabs(read) > static_cast<double>(std::numeric_limits<float>::max()))
        return present;
    return static_cast<float>(read);
}

int ClampToInt(double value)
{
    if (!std::isfinite(value))
        return 0;
    if (value >= static_cast<double>(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    if (value <= static_cast<double>(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

// The version of the file being read; a reader that met no "FileVersion"
// (the clipboard) holds text of this program's own version.
int FileVersionOf(const CVxIniFileReader* reader)
{
    const int version = reader ? reader->GetProjectVersion() : 0;
    return version > 0 ? version : CVxProject::fileVersion;
}

CVxStringW AbsolutePath(CVxIniFileReader* reader, const CVxStringW& path)
{
    return reader ? reader->MakeAbsolutePath(path) : path;
}

CVxStringW RelativePath(CVxIniWriter* writer, const CVxStringW& path, EVxFileRole role)
{
    CVxStringW copy = path;
    return writer->MakeRelativePathAs(copy, role);
}

void RepairCoordinate(double& value)
{
    if (!(std::fabs(value) <= kMaxCoordinate))
        value = 100;
}

// The keys of a part's section, looked up once per line in a table rather
// than compared one after the other: a project holds thousands of parts.
enum class EVxPartKey
{
    kType,
    kPosX,
    kPosY,
    kPosZ,
    kWidth,
    kHeight,
    kZHeight,
    kRotation,
    kRotation3D,
    kAngle,
    kCaption,
    kLineColor,
    kTextColor,
    kAppearFill,
    kFillColor,
    kTexture,
    kTransparency,
    kAppearFront,
    kFrontColor,
    kFrontTransp,
    kFrontTexture,
    kOverlayTexture,
    kFrontColorEnable,
    kEmissiveColor,
    kMatSpecular,
    kMatShininess,
    kLineStyle,
    kLineEnds,
    kLineThick,
    kFillStyle,
    kSubType,
    kHandleType,
    kDoorframe,
    kThickness,
    kSnapToWall,
    kOpened,
    kFont,
    kLayer,
    kSnapRegion,
    kWallRotation,
    kLocked,
    kUnlockPassword,
    kSpecificDisability,
    kGroupID,
    kSubPartCount,
    kFileLink,
    kSoundClip,
    kAppTag,
    kPrice,
    kCustomID,
    kComment,
    kPolygon,
    kPayload,
    kLibObjID,
    kLibrary,
    kUserLibID,
    kWrl3dAsBillboard,
    kWrlProto,
    kWrlPrototype,
    kWrlProtoWidth,
    kWrlProtoHeight,
    kWrlProtoZHeight,
    kWrlProtoOffX,
    kWrlProtoOffY,
    kWrlProtoOffZ,
    kWrlProtoStd,
    kLib3DImgIdx,
    kLib3DImgPng,
};

EVxPartKey PartKeyOf(const CVxStringA& key, bool& known)
{
    static const std::unordered_map<std::string_view, EVxPartKey> keys = {
        {"Type", EVxPartKey::kType},
        {"PosX", EVxPartKey::kPosX},
        {"PosY", EVxPartKey::kPosY},
        {"PosZ", EVxPartKey::kPosZ},
        {"Width", EVxPartKey::kWidth},
        {"Height", EVxPartKey::kHeight},
        {"ZHeight", EVxPartKey::kZHeight},
        {"Rotation", EVxPartKey::kRotation},
        {"Rotation3D", EVxPartKey::kRotation3D},
        {"Angle", EVxPartKey::kAngle},
        {"Caption", EVxPartKey::kCaption},
        {"LineColor", EVxPartKey::kLineColor},
        {"TextColor", EVxPartKey::kTextColor},
        {"AppearFill", EVxPartKey::kAppearFill},
        {"FillColor", EVxPartKey::kFillColor},
        {"Texture", EVxPartKey::kTexture},
        {"Transparency", EVxPartKey::kTransparency},
        {"AppearFront", EVxPartKey::kAppearFront},
        {"FrontColor", EVxPartKey::kFrontColor},
        {"FrontTransp", EVxPartKey::kFrontTransp},
        {"FrontTexture", EVxPartKey::kFrontTexture},
        {"OverlayTexture", EVxPartKey::kOverlayTexture},
        {"FrontColorEnable", EVxPartKey::kFrontColorEnable},
        {"EmissiveColor", EVxPartKey::kEmissiveColor},
        {"MatSpecular", EVxPartKey::kMatSpecular},
        {"MatShininess", EVxPartKey::kMatShininess},
        {"LineStyle", EVxPartKey::kLineStyle},
        {"LineEnds", EVxPartKey::kLineEnds},
        {"LineThick", EVxPartKey::kLineThick},
        {"FillStyle", EVxPartKey::kFillStyle},
        {"SubType", EVxPartKey::kSubType},
        {"HandleType", EVxPartKey::kHandleType},
        {"Doorframe", EVxPartKey::kDoorframe},
        {"Thickness", EVxPartKey::kThickness},
        {"SnapToWall", EVxPartKey::kSnapToWall},
        {"Opened", EVxPartKey::kOpened},
        {"Font", EVxPartKey::kFont},
        {"Layer", EVxPartKey::kLayer},
        {"SnapRegion", EVxPartKey::kSnapRegion},
        {"WallRotation", EVxPartKey::kWallRotation},
        {"Locked", EVxPartKey::kLocked},
        {"UnlockPassword", EVxPartKey::kUnlockPassword},
        {"SpecificDisability", EVxPartKey::kSpecificDisability},
        {"GroupID", EVxPartKey::kGroupID},
        {"SubPartCount", EVxPartKey::kSubPartCount},
        {"FileLink", EVxPartKey::kFileLink},
        {"SoundClip", EVxPartKey::kSoundClip},
        {"AppTag", EVxPartKey::kAppTag},
        {"Price", EVxPartKey::kPrice},
        {"CustomID", EVxPartKey::kCustomID},
        {"Comment", EVxPartKey::kComment},
        {"Polygon", EVxPartKey::kPolygon},
        {"Payload", EVxPartKey::kPayload},
        {"LibObjID", EVxPartKey::kLibObjID},
        {"Library", EVxPartKey::kLibrary},
        {"UserLibID", EVxPartKey::kUserLibID},
        {"Wrl3dAsBillboard", EVxPartKey::kWrl3dAsBillboard},
        {"WrlProto", EVxPartKey::kWrlProto},
        {"WrlPrototype", EVxPartKey::kWrlPrototype},
        {"WrlProtoWidth", EVxPartKey::kWrlProtoWidth},
        {"WrlProtoHeight", EVxPartKey::kWrlProtoHeight},
        {"WrlProtoZHeight", EVxPartKey::kWrlProtoZHeight},
        {"WrlProtoOffX", EVxPartKey::kWrlProtoOffX},
        {"WrlProtoOffY", EVxPartKey::kWrlProtoOffY},
        {"WrlProtoOffZ", EVxPartKey::kWrlProtoOffZ},
        {"WrlProtoStd", EVxPartKey::kWrlProtoStd},
        {"Lib3DImgIdx", EVxPartKey::kLib3DImgIdx},
        {"Lib3DImgPng", EVxPartKey::kLib3DImgPng},
    };
    const auto found = keys.find(std::string_view(key.Std()));
    known = found != keys.end();
    return known ? found->second : EVxPartKey::kType;
}

} // namespace

void CVxPart::SaveToFile(CVxIniWriter* writer, CVxStringA section, bool forLibrary,
                         const CVxPart* parent) const
{
    if (writer)
        SaveToFile(writer, section, forLibrary, parent, parent ? parent->groupID : 0, 0);
}

void CVxPart::SaveToFile(CVxIniWriter* writer, const CVxStringA& section, bool forLibrary,
                         const CVxPart* parent, int32_t parentGroupID, int depth) const
{
    writer->StartSection(section);
    writer->WriteString("Type", TypeNameFromID(type));
    if (!caption.IsEmpty())
        writer->WriteString("Caption", CVxLocStrings::AddNewLines(caption));
    writer->WriteDouble("Width", width);
    writer->WriteDouble("Height", height);
    writer->WriteDouble("ZHeight", zHeight);
    // A library object has no place of its own.
    if (!(forLibrary && !parent)) {
        writer->WriteDouble("PosX", x);
        writer->WriteDouble("PosY", y);
        writer->WriteDouble("Rotation", rotation);
    }
    writer->WriteDouble("PosZ", z);
    if (std::fabs(rotation3D) >= kEps)
        writer->WriteDouble("Rotation3D", rotation3D);
    if (type == ptAngle)
        writer->WriteDouble("Angle", angle);
    if (font)
        writer->WriteString("Font", font->SaveToString());
    if (subType != 0)
        writer->WriteInteger("SubType", subType);
    if (HasCap(capHandle))
        writer->WriteInteger("HandleType", handleType);
    if (doorframe)
        writer->WriteInteger("Doorframe", 1);
    if (std::fabs(thickness) >= kEps)
        writer->WriteDouble("Thickness", thickness);

    // A member leaves out what it shares with its group. A reader hands the
    // group's values only to members that carry a group number and are no
    // group or table themselves; the others read what is left out as the
    // fixed defaults, so they write against those.
    const bool inheriting = parent && parentGroupID != 0 && type != ptComplexObject && type != ptTable;
    const unsigned refLineColor = inheriting ? parent->lineColor : 0;
    const unsigned refTextColor = inheriting ? parent->textColor : 0;
    const int32_t refFillStyle = inheriting ? parent->fillStyle : 0;
    const int32_t refLineStyle = inheriting ? parent->lineStyle : static_cast<int32_t>(lsSolid);
    const unsigned refEmissive = inheriting ? parent->emissive : 0;
    const unsigned refSpecular = inheriting ? parent->specular : 0;
    const unsigned refShininess = inheriting ? parent->shininess : kDefaultShininess;
    if (lineColor != refLineColor)
        writer->WriteString("LineColor", ColorText(lineColor));
    if (fillStyle != refFillStyle)
        writer->WriteInteger("FillStyle", fillStyle);
    if (textColor != refTextColor)
        writer->WriteString("TextColor", ColorText(textColor));
    if (emissive != refEmissive)
        writer->WriteInteger("EmissiveColor", static_cast<int>(emissive));
    if (specular != refSpecular)
        writer->WriteString("MatSpecular", ColorText(specular));
    if (shininess != refShininess)
        writer->WriteInteger("MatShininess", static_cast<int>(shininess));

    writer->WriteString("AppearFill", appearFill.SaveToString(writer));
    if (frontColorEnable) {
        writer->WriteInteger("FrontColorEnable", 1);
        writer->WriteString("AppearFront", appearFront.SaveToString(writer));
    }
    if (lineStyle != refLineStyle)
        writer->WriteInteger("LineStyle", lineStyle);
    if (type == ptMeasLine)
        writer->WriteInteger("LineEnds", lineEnds);
    if (lineThick != 1.0f)
        writer->WriteDouble("LineThick", lineThick);
    if (locked != 0)
        writer->WriteInteger("Locked", static_cast<int>(locked));
    if (!unlockPassword.IsEmpty())
        writer->WriteString("UnlockPassword", unlockPassword);

    // Members lie on their group's layer and wall.
    if (!parent) {
        if (layer != 0)
            writer->WriteInteger("Layer", layer);
        if (snapToWall)
            writer->WriteInteger("SnapToWall", 1);
        if (wallRotation != 0)
            writer->WriteDouble("WallRotation", wallRotation);
    }

    writer->WriteString("FileLink", fileLink);
    writer->WriteString("SoundClip", RelativePath(writer, soundClip, EVxFileRole::Sound));
    if (appTag != 0)
        writer->WriteInteger("AppTag", static_cast<int>(appTag));
    if (HasCap(capHandle))
        writer->WriteBool("Opened", opened);
    writer->WriteString("OverlayTexture", RelativePath(writer, overlayTexture, EVxFileRole::Picture));
    if (price != 0)
        writer->WriteInteger("Price", price);
    writer->WriteString("CustomID", customID);
    writer->WriteString("Comment", CVxLocStrings::AddNewLines(comment));

    if (libObjID != 0)
        writer->WriteInteger("LibObjID", libObjID);
    if (forLibrary && userLibID != 0)
        writer->WriteInteger("UserLibID", userLibID);
    if (lib3DImgIdx != -1) {
        writer->WriteInteger("Lib3DImgIdx", lib3DImgIdx);
        if (!lib3DImgPng.IsEmpty())
            writer->WriteString("Lib3DImgPng", RelativePath(writer, lib3DImgPng, EVxFileRole::Picture));
    }

    if (!wrlProto.IsEmpty()) {
        writer->WriteString("WrlProto", RelativePath(writer, wrlProto, EVxFileRole::Model));
        writer->WriteString("WrlPrototype", wrlPrototype);
        writer->WriteBool("WrlProtoStd", wrlProtoStd);
        if (wrlProtoWidth != 1.0f)
            writer->WriteDouble("WrlProtoWidth", wrlProtoWidth);
        if (wrlProtoHeight != 1.0f)
            writer->WriteDouble("WrlProtoHeight", wrlProtoHeight);
        if (wrlProtoZHeight != 1.0f)
            writer->WriteDouble("WrlProtoZHeight", wrlProtoZHeight);
        if (wrlProtoOffX != 0.0f)
            writer->WriteDouble("WrlProtoOffX", wrlProtoOffX);
        if (wrlProtoOffY != 0.0f)
            writer->WriteDouble("WrlProtoOffY", wrlProtoOffY);
        if (wrlProtoOffZ != 0.0f)
            writer->WriteDouble("WrlProtoOffZ", wrlProtoOffZ);
    }
    if (wrl3dAsBillboard)
        writer->WriteInteger("Wrl3dAsBillboard", 1);

    if ((type == ptPolygon || type == ptPolyline) && polygon.GetVertexCount() > 0)
        writer->WriteString("Polygon", polygon.SaveToString());
    if (specificDisability != 0)
        writer->WriteInteger("SpecificDisability", static_cast<int>(specificDisability));
    if (snapRegion != -1)
        writer->WriteInteger("SnapRegion", snapRegion);
    if (payload)
        writer->WriteString("Payload", payload->Serialize());
    else if (!keptPayload.IsEmpty())
        writer->WriteString("Payload", keptPayload);

    // In files a member is known by its group's number: the number that the
    // group itself stands under in the file, which a member group takes from
    // its own group.
    const int32_t writtenGroupID = parent ? parentGroupID : (type == ptComplexObject ? groupID : 0);
    if (writtenGroupID != 0)
        writer->WriteInteger("GroupID", writtenGroupID);

    if (type == ptTable || type == ptComplexObject) {
        // Members deeper than a file may nest are not written, and the count
        // says so, lest a reader take the next object for a member.
        const bool writeMembers = depth + 1 < maxGroupDepth;
        const size_t count = writeMembers ? subParts.size() : 0;
        writer->WriteInteger("SubPartCount", static_cast<int>(count));
        // A table's cells repeat all their values: they have no group.
        const CVxPart* memberParent = type == ptComplexObject ? this : nullptr;
        for (size_t i = 0; i < count; ++i) {
            CVxStringA name;
            name.sprintf("%s.%d", section.c_str(), static_cast<int>(i + 1));
            subParts[i].SaveToFile(writer, name, forLibrary, memberParent, writtenGroupID, depth + 1);
        }
    }
}

bool CVxPart::LoadFromSection(CVxIniFileReader* reader)
{
    if (!reader || reader->GetSectionName().IsEmpty())
        return false;
    Reset();
    // Marks of what the section leaves out, so that a group member can
    // tell it from a value of its own.
    lineColor = clrUndefined;
    SetFillColor(clrUndefined);
    textColor = clrUndefined;
    lineStyle = static_cast<int32_t>(clrUndefined);
    fillStyle = static_cast<int32_t>(clrUndefined);
    emissive = clrUndefined;
    specular = clrUndefined;
    shininess = clrUndefined;
    reader->ReadSection(this);
    RepairAfterLoad(reader);
    return true;
}

void CVxPart::RepairAfterLoad(CVxIniFileReader* reader)
{
    const int version = FileVersionOf(reader);
    const CVxOptions* options = VX_GetOptions();

    // 1. What the section left out. A group member keeps its marks until the
    //    group hands down its own values.
    if (groupID == 0 || type == ptComplexObject) {
        const bool standardLibrary = reader->GetReaderKind() == CVxIniFileReader::VX_READER_STANDARD_LIBRARY;
        auto fill = [](auto& field, auto value) {
            if (static_cast<unsigned>(field) == clrUndefined)
                field = value;
        };
        fill(lineColor, standardLibrary ? options->m_defLineColor : 0u);
        fill(textColor, standardLibrary ? options->m_defTextColor : 0u);
        fill(fillStyle, standardLibrary ? static_cast<int32_t>(options->m_defFillStyle) : 0);
        fill(lineStyle, static_cast<int32_t>(lsSolid));
        if (GetFillColor() == clrUndefined)
            SetFillColor(options->m_defFillColor);
        fill(emissive, 0u);
        fill(specular, 0u);
        fill(shininess, kDefaultShininess);
    }

    // 2.
    if (libraryMask == 0)
        libraryMask = 1;

    // 3. A height left open takes the library's, else a typical one.
    if (zHeight == -1) {
        const double libHeight = libObjID != 0 ? GetLibrary()->GetLibObjZHeight(libObjID) : -1;
        if (libHeight != -1)
            zHeight = libHeight;
        else
            zHeight = type == ptDoor ? 195 : (type == ptWindow ? 130 : 100);
    }

    // 4. A square door is the plan symbol of old files.
    if (type == ptDoor && width == height) {
        SetFillColor(kOldDoorFill);
        height = 3.0;
    }

    // 5. Old files stored the emission as a colour.
    if (emissive >= 256 && emissive != clrUndefined)
        emissive &= 0xFFu;
    if (type == ptComplexObject)
        StoreBaseline();

    // 6. The model file and its prototype once shared one value.
    if (version <= kVersionWrlProtoJoined) {
        const int hash = wrlProto.Find(L'#');
        if (hash >= 0) {
            wrlPrototype = wrlProto.Mid(hash + 1);
            wrlProto = wrlProto.Left(hash);
        }
    }

    // 7.
    if (!overlayTexture.IsEmpty()) {
        overlayTexture = CVxUtils::MakeFullPath(overlayTexture, reader->GetFolder());
        reader->AcceptReference(overlayTexture);
    }
    lib3DImgPng = AbsolutePath(reader, lib3DImgPng);
    wrlProto = AbsolutePath(reader, wrlProto);
    soundClip = AbsolutePath(reader, soundClip);

    // 8. Objects with a model of their own once found it by their number.
    if (version <= kVersionNoLibWrlFile && libObjID > 799 && wrlProto.IsEmpty())
        wrlProto = GetLibrary()->GetLibObjWrlFile(libObjID);

    // 9. A front colour without the off mark is the old form of a front.
    if (version <= kVersionOldFront) {
        if (!VX_IsColorOff(appearFront.GetColor())) {
            frontColorEnable = true;
            appearFront.SetTransparency(appearFill.GetTransparency());
            appearFront.SetTexture(appearFill.GetTexture());
            appearFill.SetTexture(CVxStringW());
        }
        if (type == ptWindow && libObjID == 106)
            type = ptLibraryObject;
    }

    // 10.
    if (version <= kVersionOldHandles && (libObjID == 195 || libObjID == 196 || libObjID == 199))
        handleType = 4;

    // 11. Frames got a thickness, and windows their colours, later.
    if (version < kVersionNoFrameThickness) {
        if (HasCap(capDoorFrame) && thickness < kEps) {
            const double cm = (HasCap(capWindowFrame) && type != ptWindow) ? 2.54 : 7.0;
            thickness = DblRound2x(cm / CVxUnits::GetUnitCal(reader->GetUnit()));
        }
        if (type == ptWindow || libObjID == 278 || libObjID == 279) {
            SetFillColor(lineColor);
            lineColor = 0;
        }
        if (HasCap(capWindowFrame))
            appearFront.SetColor(0);
    }

    // 12.
    GetLibrary()->SetNewLibraryPropsToLegacyPart(version, this);

    // 13.
    if (HasCap(capPicture) && !appearFill.GetTexture().IsEmpty())
        LoadPicture();

    // 14. A temporary dimension line saved by accident is an ordinary one.
    if (type == ptMeasLine)
        appTag &= ~appTagTempDimLine;

    // 15.
    if (HasCap(capPayload) && !payload)
        payload = CVxPartPayload::CreateNew(libObjID);

    // 16.
    if (HasCap(capWindowFrame))
        frontColorEnable = true;

    // 17.
    for (double* value : {&x, &y, &z, &width, &height, &zHeight})
        RepairCoordinate(*value);

    // 18.
    inUse = true;
}

void CVxPart::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader)
{
    bool known = false;
    const EVxPartKey id = PartKeyOf(key, known);
    if (!known)
        return;
    switch (id) {
    case EVxPartKey::kType:
        type = static_cast<uint16_t>(TypeIDFromName(value));
        break;
    case EVxPartKey::kPosX:
        x = ReadDouble(value, x);
        break;
    case EVxPartKey::kPosY:
        y = ReadDouble(value, y);
        break;
    case EVxPartKey::kPosZ:
        z = ReadDouble(value, z);
        break;
    case EVxPartKey::kWidth:
        width = ReadDouble(value, width);
        break;
    case EVxPartKey::kHeight:
        height = ReadDouble(value, height);
        break;
    case EVxPartKey::kZHeight:
        zHeight = ReadDouble(value, zHeight);
        break;
    case EVxPartKey::kRotation:
        rotation = ReadDouble(value, rotation);
        break;
    case EVxPartKey::kRotation3D:
        rotation3D = ReadDouble(value, rotation3D);
        break;
    case EVxPartKey::kAngle:
        angle = ReadDouble(value, angle);
        break;
    case EVxPartKey::kCaption:
        caption = ReplaceNewLinesAndComments(value, false);
        break;
    case EVxPartKey::kLineColor:
        lineColor = ReadColor(value, lineColor);
        break;
    case EVxPartKey::kTextColor:
        textColor = ReadColor(value, textColor);
        break;
    case EVxPartKey::kAppearFill: {
        // Files before 720 wrote the fill colour apart, ahead of this key.
        const unsigned colourBefore = GetFillColor();
        appearFill.LoadFromString(value, reader);
        if (FileVersionOf(reader) <= kVersionOldAppearFill)
            SetFillColor(colourBefore);
        break;
    }
    case EVxPartKey::kFillColor:
        SetFillColor(ReadColor(value, GetFillColor()));
        break;
    case EVxPartKey::kTexture:
        appearFill.SetTexture(AbsolutePath(reader, value));
        break;
    case EVxPartKey::kTransparency: {
        // A fraction in old files; the appearance counts in percent.
        const double fraction = ReadDouble(value, appearFill.GetTransparency() / 100.0);
        appearFill.SetTransparency(ClampToInt(fraction * 100 + 0.5));
        break;
    }
    case EVxPartKey::kAppearFront:
        appearFront.LoadFromString(value, reader);
        break;
    case EVxPartKey::kFrontColor:
        appearFront.SetColor(ReadColor(value, appearFront.GetColor()));
        break;
    case EVxPartKey::kFrontTransp:
        appearFront.SetTransparency(CVxIniFileReader::ToInt(value, appearFront.GetTransparency()));
        break;
    case EVxPartKey::kFrontTexture:
        appearFront.SetTexture(AbsolutePath(reader, value));
        break;
    case EVxPartKey::kOverlayTexture:
        overlayTexture = value;
        break;
    case EVxPartKey::kFrontColorEnable:
        frontColorEnable = CVxIniFileReader::ToBool(value, frontColorEnable);
        break;
    case EVxPartKey::kEmissiveColor:
        emissive = ReadColor(value, emissive);
        break;
    case EVxPartKey::kMatSpecular:
        specular = ReadColor(value, specular);
        break;
    case EVxPartKey::kMatShininess:
        shininess = ReadColor(value, shininess);
        break;
    case EVxPartKey::kLineStyle:
        lineStyle = CVxIniFileReader::ToInt(value, lineStyle);
        break;
    case EVxPartKey::kLineEnds:
        lineEnds = CVxIniFileReader::ToInt(value, lineEnds);
        break;
    case EVxPartKey::kLineThick:
        // Pens are drawn this many pixels wide, times the zoom.
        lineThick = static_cast<float>(
            CVxIniFileReader::ToDoubleInRange(value, lineThick, 0, kMaxLineThick, "LineThick"));
        break;
    case EVxPartKey::kFillStyle:
        fillStyle = CVxIniFileReader::ToInt(value, fillStyle);
        break;
    case EVxPartKey::kSubType:
        subType = static_cast<int16_t>(CVxIniFileReader::ToInt(value, subType));
        break;
    case EVxPartKey::kHandleType:
        handleType = static_cast<int16_t>(CVxIniFileReader::ToInt(value, handleType));
        break;
    case EVxPartKey::kDoorframe:
        doorframe = CVxIniFileReader::ToInt(value, doorframe ? 1 : 0) > 0;
        break;
    case EVxPartKey::kThickness:
        thickness = ReadDouble(value, thickness);
        break;
    case EVxPartKey::kSnapToWall:
        snapToWall = CVxIniFileReader::ToBool(value, snapToWall);
        break;
    case EVxPartKey::kOpened:
        opened = CVxIniFileReader::ToBool(value, opened);
        break;
    case EVxPartKey::kFont:
        CreateFont()->LoadFromString(value);
        break;
    case EVxPartKey::kLayer:
        layer = CVxIniFileReader::ToInt(value, layer);
        break;
    case EVxPartKey::kSnapRegion:
        snapRegion = CVxIniFileReader::ToInt(value, snapRegion);
        break;
    case EVxPartKey::kWallRotation:
        wallRotation = ReadDouble(value, wallRotation);
        break;
    case EVxPartKey::kLocked:
        locked = ReadColor(value, locked);
        break;
    case EVxPartKey::kUnlockPassword:
        unlockPassword = value;
        break;
    case EVxPartKey::kSpecificDisability:
        specificDisability = ReadColor(value, specificDisability);
        break;
    case EVxPartKey::kGroupID:
        groupID = CVxIniFileReader::ToInt(value, groupID);
        break;
    case EVxPartKey::kSubPartCount: {
        // The count only closes the group in the grouper; room is reserved
        // for no more than a plausible number of members.
        const int count = CVxIniFileReader::ToInt(value, 0);
        declaredSubPartCount = count > 0 ? count : 0;
        subParts.reserve(static_cast<size_t>(std::min(declaredSubPartCount, kMaxReservedMembers)));
        break;
    }
    case EVxPartKey::kFileLink:
        fileLink = value;
        break;
    case EVxPartKey::kSoundClip:
        soundClip = value;
        break;
    case EVxPartKey::kAppTag:
        appTag = ReadColor(value, appTag);
        break;
    case EVxPartKey::kPrice:
        price = CVxIniFileReader::ToInt(value, price);
        break;
    case EVxPartKey::kCustomID:
        customID = value;
        break;
    case EVxPartKey::kComment:
        comment = ReplaceNewLinesAndComments(value, false);
        break;
    case EVxPartKey::kPolygon:
        // Reading appends, so a repeated key starts afresh.
        polygon.Zero();
        polygon.LoadFromString(value);
        break;
    case EVxPartKey::kPayload:
        SetPayload(CVxPartPayload::CreateFromString(value));
        if (payload)
            keptPayload.Empty();
        else
            keptPayload = value;
        break;
    case EVxPartKey::kLibObjID:
        libObjID = CVxIniFileReader::ToInt(value, libObjID);
        break;
    case EVxPartKey::kLibrary: {
        library = value;
        CVxStringTokenizer names(value, L'|');
        while (names.IsNextToken()) {
            const int id = GetLibrary()->GetLibIDFromName(names.GetNextToken());
            libraryMask |= 1u << (static_cast<unsigned>(id) & 31u);
        }
        break;
    }
    case EVxPartKey::kUserLibID:
        userLibID = CVxIniFileReader::ToInt(value, userLibID);
        break;
    case EVxPartKey::kWrl3dAsBillboard:
        wrl3dAsBillboard = CVxIniFileReader::ToBool(value, wrl3dAsBillboard);
        break;
    case EVxPartKey::kWrlProto:
        wrlProto = value.FromWinPath();
        break;
    case EVxPartKey::kWrlPrototype:
        wrlPrototype = value;
        break;
    case EVxPartKey::kWrlProtoWidth:
        wrlProtoWidth = ReadFloat(value, wrlProtoWidth);
        break;
    case EVxPartKey::kWrlProtoHeight:
        wrlProtoHeight = ReadFloat(value, wrlProtoHeight);
        break;
    case EVxPartKey::kWrlProtoZHeight:
        wrlProtoZHeight = ReadFloat(value, wrlProtoZHeight);
        break;
    case EVxPartKey::kWrlProtoOffX:
        wrlProtoOffX = ReadFloat(value, wrlProtoOffX);
        break;
    case EVxPartKey::kWrlProtoOffY:
        wrlProtoOffY = ReadFloat(value, wrlProtoOffY);
        break;
    case EVxPartKey::kWrlProtoOffZ:
        wrlProtoOffZ = ReadFloat(value, wrlProtoOffZ);
        break;
    case EVxPartKey::kWrlProtoStd:
        wrlProtoStd = CVxIniFileReader::ToBool(value, wrlProtoStd);
        break;
    case EVxPartKey::kLib3DImgIdx:
        lib3DImgIdx = CVxIniFileReader::ToInt(value, lib3DImgIdx);
        break;
    case EVxPartKey::kLib3DImgPng:
        lib3DImgPng = value;
        break;
    }
}
