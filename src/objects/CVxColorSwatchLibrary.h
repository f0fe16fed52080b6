#pragma once
// The colour catalogues of the colour dialog: those of the table file
// "colorswatch.csv" in the program's data folder, then every "*.pvswatch"
// file of its "Swatches" folder in the order of their names.

#include "CVxColorSwatch.h"
#include "CVxStringW.h"

#include <vector>

class CVxColorSwatchLibrary
{
public:
    static constexpr int maxSwatches = 256;

    // The folder that holds "colorswatch.csv" and the "Swatches" folder; the
    // host sets it at start-up. Ends in "/".
    void SetDataFolder(const CVxStringW& folder);
    const CVxStringW& GetDataFolder() const { return m_dataFolder; }
    CVxStringW GetSwatchFolder() const;

    // Reads the catalogues from the data folder; false when none was found.
    bool InitLibrary();
    bool InitLibrary(const CVxStringW& csvPath, const CVxStringW& swatchFolder);
    bool IsInitialized() const { return m_initialized; }
    void Clear();

    int GetCount() const { return static_cast<int>(m_swatches.size()); }
    // Null for an index out of range.
    CVxColorSwatch* SafeGetSwatch(int index);
    // Null when no catalogue has the name; the case does not count.
    CVxColorSwatch* FindSwatch(const CVxStringW& name);
    // The catalogue named "standard", or null.
    CVxColorSwatch* GetStandardSwatch();

private:
    void AddSwatch(CVxColorSwatch& swatch);
    void LoadCsv(const CVxStringW& csvPath);
    void ScanSwatchFolder(const CVxStringW& folder);

    CVxStringW m_dataFolder;
    std::vector<CVxColorSwatch> m_swatches;
    bool m_initialized = false;
};

// The library of the process, created on first use and not yet read.
CVxColorSwatchLibrary* VX_GetColorSwatchLibrary();
