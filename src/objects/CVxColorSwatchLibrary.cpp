#include "CVxColorSwatchLibrary.h"

#include "IVxAppHelperCallback.h"

#include <algorithm>

void CVxColorSwatchLibrary::SetDataFolder(const CVxStringW& folder)
{
    m_dataFolder = folder;
    if (!m_dataFolder.IsEmpty() && !m_dataFolder.EndsWith(CVxStringW(L"/")))
        m_dataFolder += L"/";
}

CVxStringW CVxColorSwatchLibrary::GetSwatchFolder() const
{
    if (m_dataFolder.IsEmpty())
        return CVxStringW();
    return m_dataFolder + L"Swatches/";
}

bool CVxColorSwatchLibrary::InitLibrary()
{
    if (m_dataFolder.IsEmpty()) {
        Clear();
        m_initialized = true;
        return false;
    }
    return InitLibrary(m_dataFolder + L"colorswatch.csv", GetSwatchFolder());
}

bool CVxColorSwatchLibrary::InitLibrary(const CVxStringW& csvPath, const CVxStringW& swatchFolder)
{
    Clear();
    if (!csvPath.IsEmpty())
        LoadCsv(csvPath);
    if (!swatchFolder.IsEmpty())
        ScanSwatchFolder(swatchFolder);
    m_initialized = true;
    return !m_swatches.empty();
}

void CVxColorSwatchLibrary::Clear()
{
    m_swatches.clear();
    m_initialized = false;
}

void CVxColorSwatchLibrary::AddSwatch(CVxColorSwatch& swatch)
{
    // An empty catalogue would only be an empty page in the dialog.
    if (swatch.GetCount() == 0 || GetCount() >= maxSwatches)
        return;
    swatch.SetStandard(swatch.GetName().IsEqualNoCase(CVxStringW(L"standard")));
    m_swatches.push_back(std::move(swatch));
}

void CVxColorSwatchLibrary::LoadCsv(const CVxStringW& csvPath)
{
    const std::vector<CVxStringW> names = CVxColorSwatch::GetCsvSwatchNames(csvPath);
    bool anyLoaded = false;
    for (const CVxStringW& name : names) {
        CVxColorSwatch swatch;
        swatch.SetName(name);
        if (swatch.LoadValuesFromCsvFile(csvPath)) {
            anyLoaded = true;
            AddSwatch(swatch);
        }
    }
    if (anyLoaded)
        return;
    // A file without a header of named columns may be a plain RAL list.
    CVxColorSwatch swatch;
    if (swatch.LoadValuesFromCsvFileRalClassic(csvPath))
        AddSwatch(swatch);
}

void CVxColorSwatchLibrary::ScanSwatchFolder(const CVxStringW& folder)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host)
        return;
    CVxStringW base(folder);
    if (!base.EndsWith(CVxStringW(L"/")))
        base += L"/";
    std::vector<CVxStringW> paths;
    SVxSearchRec rec;
    if (host->FileFindFirst(base + L"*.pvswatch", false, &rec)) {
        do {
            if (!rec.isFolder)
                paths.push_back(rec.fullPath.IsEmpty() ? base + rec.name : rec.fullPath);
        } while (paths.size() < static_cast<size_t>(maxSwatches) && host->FileFindNext(false, &rec));
    }
    host->FileFindClose(&rec);
    std::sort(paths.begin(), paths.end());
    for (const CVxStringW& path : paths) {
        CVxColorSwatch swatch;
        if (swatch.LoadFromFile(path))
            AddSwatch(swatch);
    }
}

CVxColorSwatch* CVxColorSwatchLibrary::SafeGetSwatch(int index)
{
    if (index < 0 || index >= GetCount())
        return nullptr;
    return &m_swatches[static_cast<size_t>(index)];
}

CVxColorSwatch* CVxColorSwatchLibrary::FindSwatch(const CVxStringW& name)
{
    for (CVxColorSwatch& swatch : m_swatches)
        if (swatch.GetName().IsEqualNoCase(name))
            return &swatch;
    return nullptr;
}

CVxColorSwatch* CVxColorSwatchLibrary::GetStandardSwatch()
{
    for (CVxColorSwatch& swatch : m_swatches)
        if (swatch.IsStandard())
            return &swatch;
    return nullptr;
}

CVxColorSwatchLibrary* VX_GetColorSwatchLibrary()
{
    static CVxColorSwatchLibrary library;
    return &library;
}
