// The type table and what each kind of object may do. Library numbers name
// the standard objects of the built-in library: doors of several hands,
// windows, cabinets with fronts, stairs.

#include "CVxPart.h"

#include "CVxLocalize.h"

#include <algorithm>
#include <initializer_list>

namespace {

struct SVxPartTypeRow
{
    const wchar_t* fileName;
    const wchar_t* displayText;
};

constexpr SVxPartTypeRow s_typeTable[ptTypeCount] = {
    {L"Rectangle", L"Rectangle"},
    {L"Circle", L"Circle"},
    {L"Ellipse", L"Ellipse"},
    {L"Triangle", L"Triangle"},
    {L"Hexagon", L"Hexagon"},
    {L"Octagon", L"Octagon"},
    {L"Door", L"Door"},
    {L"Window", L"Window"},
    {L"Arrow", L"Arrow"},
    {L"Line", L"Line"},
    {L"MeasLine", L"Measurement line"},
    {L"Compass", L"Compass"},
    {L"Logo", L"Logo"},
    {L"Polygon", L"Polygon"},
    {L"Angle", L"Angle"},
    {L"EntrTriangle", L"Entrance"},
    {L"QRCode", L"QR Code"},
    {L"Polyline", L"Polyline"},
    {L"Table", L"Table"},
    {L"EnergyLabel", L"Energy label"},
    {L"Label", L"Label"},
    {L"LibraryObject", L"From library"},
    {L"ComplexObject", L"Complex object"},
    {L"Imported", L"Imported"},
    {L"PageArea", L"Page contents"},
};

// The language files translate the display texts in this table, row = type + 1.
const char* const s_typeLocTable = "ObjectTypes";

// The standard library pages by their names in files; the id is the bit of
// a part's library mask.
const wchar_t* const s_standardPages[] = {L"UserDef", L"Basic",    L"Doors",   L"Cabinets", L"Chairs",
                                          L"Tables",  L"Bathroom", L"Bedroom", L"Kitchen",  L"Accessories",
                                          L"Stairs",  L"Garden",   L"Other",   L"Shapes3D", L"Symbols"};

IVxPartLibrary s_emptyLibrary;
IVxPartLibrary* s_library = nullptr;

bool InRange(int value, int low, int high)
{
    return value >= low && value <= high;
}

bool OneOf(int value, std::initializer_list<int> list)
{
    return std::find(list.begin(), list.end(), value) != list.end();
}

// Doors of both hands and the sliding and folding doors of the library.
bool IsDoorFamily(int libId)
{
    return InRange(libId, 195, 200) || InRange(libId, 263, 266) || InRange(libId, 280, 283);
}

// Cabinets, kitchen units and wardrobes whose fronts may have a colour of
// their own.
bool HasFrontInLibrary(int libId)
{
    return InRange(libId, 20, 24) || InRange(libId, 32, 35) ||
           OneOf(libId, {53, 60, 61, 65, 67, 81, 83, 108, 116, 123, 124, 139, 143, 162}) ||
           InRange(libId, 202, 219) || InRange(libId, 228, 234) || OneOf(libId, {270, 271, 274, 277}) ||
           InRange(libId, 840, 943);
}

bool IsPlainRectangle(int type, int libId)
{
    return type == ptRectangle && OneOf(libId, {0, 122, 129});
}

} // namespace

int IVxPartLibrary::GetLibIDFromName(const CVxStringW& name) const
{
    for (int id = 0; id < static_cast<int>(std::size(s_standardPages)); ++id)
        if (name == s_standardPages[id])
            return id;
    return 0;
}

void CVxPart::SetLibrary(IVxPartLibrary* newLibrary)
{
    s_library = newLibrary;
}

const IVxPartLibrary* CVxPart::GetLibrary()
{
    return s_library ? s_library : &s_emptyLibrary;
}

CVxStringW CVxPart::TypeNameFromID(int typeId)
{
    if (typeId < 0 || typeId >= ptTypeCount)
        return s_typeTable[ptRectangle].fileName;
    return s_typeTable[typeId].fileName;
}

CVxStringW CVxPart::TypeLocalNameFromID(int typeId, int libId)
{
    if (libId != 0) {
        const CVxStringW name = GetLibrary()->GetLibObjName(libId);
        if (!name.IsEmpty())
            return name;
    }
    if (typeId < 0 || typeId >= ptTypeCount)
        typeId = ptRectangle;
    const CVxStringW english = s_typeTable[typeId].displayText;
    const CVxLocalize* loc = VX_GetLoc();
    if (!loc)
        return english;
    return loc->LocalizeDlgString(loc->GetDlgIndex(s_typeLocTable), typeId + 1, english);
}

int CVxPart::TypeIDFromName(const CVxStringW& name)
{
    for (int typeId = 0; typeId < ptTypeCount; ++typeId)
        if (name == s_typeTable[typeId].fileName)
            return typeId;
    return ptRectangle;
}

bool CVxPart::IsDoorLike(int typeId, int libId)
{
    return typeId == ptDoor || IsDoorFamily(libId) || libId == 246;
}

bool CVxPart::HasCap(int capability) const
{
    const int lib = libObjID;
    switch (capability) {
    case capHandle:
    case capDoorSwing:
        return IsDoorLike(type, lib);
    case capWindowShape:
        return type == ptWindow || lib == 106;
    case capRotate:
    case capResize:
        if (type == ptPageArea)
            return false;
        return type != ptWindow || lib == 278 || lib == 279;
    case capSkew:
        return IsPlainRectangle(type, lib) || OneOf(type, {ptCircle, ptEllipse, ptTriangle, ptPolygon});
    case capResizeAnyDirection:
        return type != ptLabel;
    case capDuplicate:
        return type != ptPageArea;
    case capMirror:
        return OneOf(type, {ptPolygon, ptPolyline, ptComplexObject});
    case capGroup:
        if (type == ptPageArea || type == ptAngle)
            return false;
        // A door or window that hangs on a wall belongs to the wall.
        return !((type == ptDoor || type == ptWindow) && snapToWall);
    case capLineColor:
        if (type == ptLabel)
            return false;
        // A picture has no outline, except the framed picture of the library.
        if (picture && HasCap(capPicture))
            return lib == 267;
        return true;
    case capFillColor:
        return !OneOf(type,
                      {ptLine, ptMeasLine, ptAngle, ptCompass, ptLogo, ptQRCode, ptPolyline, ptPageArea});
    case capFrontColor:
        return HasCap(capDoorFrame) || HasFrontInLibrary(lib);
    case capLineThickness:
        return IsPlainRectangle(type, lib) ||
               OneOf(type, {ptLine, ptMeasLine, ptPolyline, ptCircle, ptEllipse, ptTriangle, ptHexagon,
                            ptOctagon, ptCompass, ptPolygon, ptAngle, ptTable});
    case capVisibleIn3D:
        return HasCap(capHas3D) && !VX_IsColorOff(GetFillColor()) && inUse;
    case capHas3D:
        if (OneOf(type, {ptLabel, ptLine, ptMeasLine, ptCompass, ptLogo, ptAngle, ptEntrTriangle, ptQRCode,
                         ptPolyline, ptTable, ptEnergyLabel, ptPageArea}))
            return false;
        return lib != 226 && (specificDisability & disable3D) == 0;
    case capDoorFrame:
        return type == ptDoor || type == ptWindow || IsDoorFamily(lib) || OneOf(lib, {93, 106, 272});
    case capWindowFrame:
        return type == ptWindow || lib == 93 || lib == 272;
    case capThickness:
        return HasCap(capDoorFrame) || lib == 298 || lib == 299;
    case capPicture:
        return type == ptLogo || type == ptQRCode || lib == 171 || lib == 267;
    case capTileTexture:
        return type == ptTriangle || type == ptPolygon ||
               (type == ptComplexObject && appearFill.tileMode == 1) || IsPlainRectangle(type, lib) ||
               OneOf(lib, {65, 121, 123, 124, 128, 1101});
    case capPayload:
        return OneOf(lib, {65, 162, 1101});
    default:
        // Capabilities that a newer program asks for are not forbidden here.
        return capability > capPayload;
    }
}

int CVxPart::GetSubTypeCount(int typeId, int libId)
{
    if (typeId == ptDoor || IsDoorFamily(libId))
        return 20;
    if (typeId == ptWindow)
        return 27;
    if (typeId == ptCompass)
        return 4;
    if (typeId == ptAngle)
        return 2;
    if (libId == 246)
        return 3;
    if (libId == 69)
        return 2;
    if (libId == 65)
        return 4;
    return 1;
}

bool CVxPart::AreSubTypesForFrontView(int typeId, int libId)
{
    return !(typeId == ptAngle || typeId == ptCompass || libId == 69);
}

int CVxPart::GetHandleTypeCount(int typeId, int libId)
{
    return (typeId == ptDoor || IsDoorFamily(libId)) ? 9 : 1;
}

int CVxPart::LibGetShape(int libId)
{
    if (OneOf(libId, {26, 27, 33, 81, 104, 118, 294}) || InRange(libId, 95, 99))
        return ptCircle;
    if (OneOf(libId, {50, 51, 102, 103, 120}) || InRange(libId, 248, 251))
        return ptEllipse;
    if (libId == 68 || libId == 152)
        return ptHexagon;
    if (OneOf(libId, {25, 69, 101, 107}))
        return ptOctagon;
    return ptRectangle;
}

int CVxPart::GetShape(bool plain) const
{
    if (plain)
        return ptRectangle;
    if (type == ptLibraryObject && libObjID != 0)
        return LibGetShape(libObjID);
    return type;
}

bool CVxPart::KeepAspect() const
{
    return KeepAspect(0);
}

bool CVxPart::KeepAspect(int depth) const
{
    if (OneOf(type, {ptCircle, ptCompass, ptLogo, ptAngle, ptQRCode}) || libObjID == 274)
        return true;
    // Pictures keep the proportions of their image.
    if ((libObjID == 171 || libObjID == 172) && !appearFill.main.texture.IsEmpty())
        return true;
    if (type != ptComplexObject || depth >= maxGroupDepth)
        return false;
    // A member turned by anything but a half turn would be sheared by a
    // change of the group's aspect.
    for (const CVxPart& member : subParts)
        if (member.KeepAspect(depth + 1) || (member.rotation != 0 && member.rotation != 180))
            return true;
    return false;
}

bool CVxPart::KeepXZAspect(bool billboardCounts) const
{
    const bool hasTexture = !appearFill.main.texture.IsEmpty();
    if (libObjID == 93 || libObjID == 276)
        return hasTexture;
    return billboardCounts && wrl3dAsBillboard && hasTexture;
}

int CVxPart::GetSnapMirrorPartId() const
{
    static constexpr int pairs[][2] = {{195, 196}, {197, 198}, {263, 264},
                                       {265, 266}, {278, 279}, {280, 281}};
    for (const auto& pair : pairs) {
        if (libObjID == pair[0])
            return pair[1];
        if (libObjID == pair[1])
            return pair[0];
    }
    return -1;
}
