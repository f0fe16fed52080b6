#include "CVxFloorPlanDef.h"

#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxStringTokenizer.h"
#include "VxNumbers.h"

#include <cmath>
#include <cwchar>
#include <limits>

namespace {

// The fields of the "Room" key.
enum ERoomField
{
    FIELD_NAME,
    FIELD_FLOOR_COLOR,
    FIELD_WALL_COLOR,
    FIELD_FROM_X,
    FIELD_FROM_Y,
    FIELD_TO_X,
    FIELD_TO_Y,
    FIELD_TAG,
    FIELD_TEXTURE,
    FIELD_OUTER,
    FIELD_COUNT
};

CVxStringW HexColor(unsigned colour)
{
    return CVxStringW::IntToHex(colour & 0xffffff, 6, false);
}

// Six hexadecimal digits; an optional "0x" is accepted.
bool ReadHexColor(const CVxStringW& text, unsigned& colour)
{
    unsigned value = 0;
    if (text.IsEmpty() || std::swscanf(text.c_str(), L"%x", &value) != 1)
        return false;
    colour = value & 0xffffff;
    return true;
}

bool ReadCoordinate(const CVxStringW& text, double& value)
{
    value = DblLoad(text, std::numeric_limits<double>::quiet_NaN());
    return std::isfinite(value);
}

bool KeyStarts(const CVxStringA& key, const char* prefix)
{
    return key.StartsWith(CVxStringA(prefix));
}

} // namespace

CVxFloorPlanDef::CFloorPlanItem::CFloorPlanItem()
    : floorAppearance(0xffffff), ceilingAppearance(0xffffff), wallAppearance(0xffffff)
{
}

bool CVxFloorPlanDef::CFloorPlanItem::LoadFromString(const CVxStringW& text, CVxIniFileReader* reader)
{
    const std::vector<CVxStringW> fields = CVxStringTokenizer(text, L'|').GetTokenList();
    if (fields.size() <= FIELD_TO_Y)
        return false;
    CVxDPoint from, to;
    if (!ReadCoordinate(fields[FIELD_FROM_X], from.x) || !ReadCoordinate(fields[FIELD_FROM_Y], from.y) ||
        !ReadCoordinate(fields[FIELD_TO_X], to.x) || !ReadCoordinate(fields[FIELD_TO_Y], to.y))
        return false;
    // An all-zero edge is what an unset record looks like.
    if (from.x == 0 && from.y == 0 && to.x == 0 && to.y == 0)
        return false;

    name = fields[FIELD_NAME];
    unsigned colour = 0;
    if (ReadHexColor(fields[FIELD_FLOOR_COLOR], colour))
        floorAppearance.SetColor(colour);
    if (ReadHexColor(fields[FIELD_WALL_COLOR], colour))
        wallAppearance.SetColor(colour);
    edgeFrom = from;
    edgeTo = to;
    if (fields.size() > FIELD_TAG)
        roomTag = fields[FIELD_TAG].ToIntDef(0);
    if (fields.size() > FIELD_TEXTURE && !fields[FIELD_TEXTURE].IsEmpty())
        floorAppearance.SetTexture(reader ? reader->MakeAbsolutePath(fields[FIELD_TEXTURE])
                                          : fields[FIELD_TEXTURE]);
    if (fields.size() > FIELD_OUTER)
        isOuter = fields[FIELD_OUTER].ToIntDef(0) > 0;
    return true;
}

CVxStringW CVxFloorPlanDef::CFloorPlanItem::SaveToString(CVxIniWriter* writer) const
{
    CVxStringW texture = floorAppearance.GetTexture();
    if (writer && !texture.IsEmpty())
        texture = writer->MakeRelativePathAs(texture, EVxFileRole::Picture);
    CVxStringW text = name;
    text += L"|";
    text += HexColor(floorAppearance.GetColor());
    text += L"|";
    text += HexColor(wallAppearance.GetColor());
    for (double value : {edgeFrom.x, edgeFrom.y, edgeTo.x, edgeTo.y}) {
        text += L"|";
        text += DblSaveW(value);
    }
    text += CVxStringW().sprintf(L"|%d|", roomTag);
    text += texture;
    text += isOuter ? L"|1" : L"|0";
    return text;
}

void CVxFloorPlanDef::SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const
{
    if (!writer)
        return;
    writer->StartSection(section);
    for (size_t i = 0; i < items.size(); ++i) {
        const CFloorPlanItem& item = items[i];
        const int n = static_cast<int>(i);
        auto key = [n](const char* prefix) { return CVxStringA().sprintf("%s%d", prefix, n); };
        writer->WriteString(key("Room"), item.SaveToString(writer));
        writer->WriteString(key("FloorAppear"), item.floorAppearance.SaveToString(writer));
        writer->WriteString(key("CeilingAppear"), item.ceilingAppearance.SaveToString(writer));
        writer->WriteString(key("WallsAppear"), item.wallAppearance.SaveToString(writer));
        writer->WriteString(key("BaseMoldDef"), item.baseMolding.SaveToString());
        writer->WriteString(key("BaseMoldAppear"), item.baseMolding.appearance.SaveToString(writer));
        writer->WriteString(key("CrownMoldDef"), item.crownMolding.SaveToString());
        writer->WriteString(key("CrownMoldAppear"), item.crownMolding.appearance.SaveToString(writer));
    }
}

void CVxFloorPlanDef::LoadFromSection(CVxIniFileReader* reader, int unit)
{
    if (!reader)
        return;
    const size_t before = items.size();
    reader->ReadSection(this);
    // Older files stored no moulding sizes: rooms get the unit's defaults.
    if (reader->GetProjectVersion() < 900) {
        for (size_t i = before; i < items.size(); ++i) {
            items[i].baseMolding.SetDefaultSizeForUnit(unit);
            items[i].crownMolding.SetDefaultSizeForUnit(unit);
        }
    }
}

void CVxFloorPlanDef::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader)
{
    if (KeyStarts(key, "Room")) {
        CFloorPlanItem item;
        if (item.LoadFromString(value, reader))
            items.push_back(item);
        return;
    }
    if (items.empty())
        return;
    CFloorPlanItem& item = items.back();
    if (KeyStarts(key, "FloorAppear"))
        item.floorAppearance.LoadFromString(value, reader);
    else if (KeyStarts(key, "CeilingAppear"))
        item.ceilingAppearance.LoadFromString(value, reader);
    else if (KeyStarts(key, "WallsAppear"))
        item.wallAppearance.LoadFromString(value, reader);
    else if (KeyStarts(key, "BaseMoldDef"))
        item.baseMolding.LoadFromString(value);
    else if (KeyStarts(key, "BaseMoldAppear"))
        item.baseMolding.appearance.LoadFromString(value, reader);
    else if (KeyStarts(key, "CrownMoldDef"))
        item.crownMolding.LoadFromString(value);
    else if (KeyStarts(key, "CrownMoldAppear"))
        item.crownMolding.appearance.LoadFromString(value, reader);
}
