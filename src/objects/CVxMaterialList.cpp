#include "CVxMaterialList.h"

#include "CVxAppearance.h"
#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "VxColorConvert.h"
#include "VxSafeSave.h"

#include <algorithm>

void CVxMaterialList::StandardColors()
{
    // A grey ramp, then light, clear, deep and dark rows of the hue circle
    // from red over yellow, green and blue to purple, and a row of earth
    // and wood tones that rooms need most.
    static const unsigned rgb[48] = {
        0xFFFFFF, 0xE0E0E0, 0xC0C0C0, 0xA0A0A0, 0x808080, 0x606060, 0x404040, 0x000000, 0xFFC0C0, 0xFFE0C0,
        0xFFFFC0, 0xC0FFC0, 0xC0FFFF, 0xC0E0FF, 0xC0C0FF, 0xFFC0FF, 0xFF0000, 0xFF8000, 0xFFFF00, 0x00C000,
        0x00C0C0, 0x0080FF, 0x0000FF, 0xC000C0, 0xC00000, 0xC06000, 0xC0C000, 0x008000, 0x008080, 0x0060C0,
        0x0000C0, 0x800080, 0x800000, 0x804000, 0x808000, 0x004000, 0x004040, 0x004080, 0x000080, 0x400040,
        0xF5F0E1, 0xE8D8B8, 0xD2B48C, 0xC19A6B, 0xA0522D, 0x8B5A2B, 0x6F4E37, 0x4A3728,
    };
    clear();
    for (unsigned value : rgb)
        push_back(CVxMaterial(VX_RGB(value >> 16, value >> 8, value), 0, CVxStringW()));
}

int CVxMaterialList::IndexOf(const CVxAppearance& appearance) const
{
    return IndexOf(appearance.main);
}

int CVxMaterialList::IndexOf(const CVxMaterial& material) const
{
    const auto it = std::find(begin(), end(), material);
    return it == end() ? -1 : static_cast<int>(it - begin());
}

void CVxMaterialList::AddRecent(const CVxMaterial& material, int maxCount)
{
    const int index = IndexOf(material);
    if (index >= 0)
        erase(begin() + index);
    insert(begin(), material);
    const size_t limit = static_cast<size_t>(std::clamp(maxCount, 0, maxItems));
    if (size() > limit)
        resize(limit);
}

bool CVxMaterialList::LoadFromDisk(const CVxStringW& path)
{
    CVxIniFileReader reader(path, 65001);
    if (!reader.IsOpened())
        return false;
    clear();
    reader.Start();
    while (!reader.GetSectionName().IsEmpty()) {
        const bool ours = reader.GetSectionName() == "MaterialList";
        reader.ReadSection(ours ? this : nullptr);
    }
    return true;
}

bool CVxMaterialList::SaveToDisk(const CVxStringW& path) const
{
    // The colours of earlier sessions stay whole if this save breaks off.
    const CVxStringW temp = VX_SafeSaveTempPath(path);
    if (!VX_SafeSaveCreateTemp(path))
        return false;
    {
        CVxIniWriter writer(temp);
        if (!writer.IsOpened()) {
            VX_SafeSaveAbandon(temp);
            return false;
        }
        writer.StartSection("MaterialList");
        writer.WriteInteger("Count", static_cast<int>(size()));
        for (const CVxMaterial& material : *this)
            writer.WriteString("Item", ItemToString(material));
        writer.Finalize();
    }
    return VX_SafeSaveCommit(temp, path);
}

void CVxMaterialList::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader*)
{
    // The count is informative only: the items themselves decide.
    if (key == "Item" && size() < static_cast<size_t>(maxItems))
        LoadFromString(value);
}

bool CVxMaterialList::LoadFromString(const CVxStringW& text)
{
    const std::vector<CVxStringW> fields = text.Split(L'|');
    if (fields.empty() || fields[0].IsEmpty())
        return false;
    unsigned colour;
    if (!VX_ColorFromText(fields[0], colour))
        return false;
    CVxMaterial material(colour, 0, CVxStringW());
    if (fields.size() > 1)
        material.transparency = std::clamp(fields[1].ToIntDef(0), 0, 100);
    if (fields.size() > 2)
        material.texture = fields[2];
    push_back(material);
    return true;
}

CVxStringW CVxMaterialList::ItemToString(const CVxMaterial& material)
{
    CVxStringW text = CVxStringW::IntToHex(material.color, 6, true);
    CVxStringW transparency;
    transparency.sprintf(L"|%d|", material.transparency);
    return text + transparency + material.texture;
}
