#pragma once
// The files of generated tile pictures, by the key of the appearance they
// were made for, so that a tiled surface seen again needs no new picture and
// the scene export can point at a file.

#include "CVxStringW.h"

#include <vector>

class CVxAppearance;

class CVxAppearanceTileGenCache
{
public:
    class CVxItem
    {
    public:
        CVxStringW key;
        CVxStringW file;
    };

    // The cache of the process.
    static CVxAppearanceTileGenCache& GetInstance();

    // A second file for the same appearance replaces the first.
    void RegisterTileCache(const CVxAppearance& appearance, const CVxStringW& file);
    // Empty when no file is registered.
    CVxStringW GetCacheFile(const CVxAppearance& appearance) const;
    // Deletes every registered file through the host and empties the list.
    void DeleteCacheFiles();

    int GetCount() const { return static_cast<int>(m_items.size()); }
    const std::vector<CVxItem>& GetItems() const { return m_items; }

private:
    std::vector<CVxItem> m_items;
};
