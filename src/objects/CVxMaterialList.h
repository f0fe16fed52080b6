#pragma once
// A list of colours with transparency and texture: the recent colours and
// the standard colours of the colour dialog.

#include "CVxMaterial.h"
#include "IVxReadIniClient.h"

#include <vector>

class CVxAppearance;

class CVxMaterialList : public std::vector<CVxMaterial>, public IVxReadIniClient
{
public:
    // No list on disk grows beyond this.
    static constexpr int maxItems = 1024;

    // Replaces the items by the standard colours: six rows of eight.
    void StandardColors();
    // The index of the item equal to the main material of appearance, or -1.
    int IndexOf(const CVxAppearance& appearance) const;
    int IndexOf(const CVxMaterial& material) const;
    // Puts material first, removing an equal item, and keeps at most
    // maxCount items.
    void AddRecent(const CVxMaterial& material, int maxCount);

    // A section "MaterialList" with one key "Item" per material. Loading
    // replaces the items; false when the file can't be opened.
    bool LoadFromDisk(const CVxStringW& path);
    bool SaveToDisk(const CVxStringW& path) const;
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    // Appends one item given as colour, transparency and texture joined by
    // "|"; false for a text without a colour.
    bool LoadFromString(const CVxStringW& text);
    static CVxStringW ItemToString(const CVxMaterial& material);
};
