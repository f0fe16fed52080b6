#include "CVxAppearanceTileGenCache.h"

#include "CVxAppearance.h"
#include "IVxAppHelperCallback.h"

CVxAppearanceTileGenCache& CVxAppearanceTileGenCache::GetInstance()
{
    static CVxAppearanceTileGenCache cache;
    return cache;
}

void CVxAppearanceTileGenCache::RegisterTileCache(const CVxAppearance& appearance, const CVxStringW& file)
{
    const CVxStringW key = appearance.GetTileKey();
    for (CVxItem& item : m_items) {
        if (item.key == key) {
            item.file = file;
            return;
        }
    }
    m_items.push_back(CVxItem{key, file});
}

CVxStringW CVxAppearanceTileGenCache::GetCacheFile(const CVxAppearance& appearance) const
{
    const CVxStringW key = appearance.GetTileKey();
    for (const CVxItem& item : m_items)
        if (item.key == key)
            return item.file;
    return CVxStringW();
}

void CVxAppearanceTileGenCache::DeleteCacheFiles()
{
    if (IVxAppHelperCallback* host = VX_GetAppHelper()) {
        for (const CVxItem& item : m_items)
            if (!item.file.IsEmpty() && host->FileExists(item.file))
                host->FileDelete(item.file);
    }
    m_items.clear();
}
