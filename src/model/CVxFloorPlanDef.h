#pragma once
// What a floor remembers of its rooms across rebuilds: per room its name and
// surfaces, keyed by one boundary edge.

#include "CVxAppearance.h"
#include "CVxDPoint.h"
#include "CVxDecorativeMolding.h"
#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <cstdint>
#include <vector>

class CVxIniWriter;
class CVxIniFileReader;

class CVxFloorPlanDef : public IVxReadIniClient
{
public:
    class CFloorPlanItem
    {
    public:
        CFloorPlanItem();
        // The ten fields of the "Room" key; false if they don't parse or the
        // edge is all zero.
        bool LoadFromString(const CVxStringW& text, CVxIniFileReader* reader);
        CVxStringW SaveToString(CVxIniWriter* writer) const;

        CVxDPoint edgeFrom;
        CVxDPoint edgeTo;
        bool isOuter = false;
        CVxStringW name;
        CVxAppearance floorAppearance;
        CVxAppearance ceilingAppearance;
        CVxAppearance wallAppearance;
        int32_t roomTag = 0;
        CVxDecorativeMolding baseMolding;
        CVxDecorativeMolding crownMolding;
    };

    void Clear() { items.clear(); }
    bool IsEmpty() const { return items.empty(); }

    void SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const;
    // Reads the current section; files before version 900 get the default
    // moulding sizes of the unit.
    void LoadFromSection(CVxIniFileReader* reader, int unit);
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;

    std::vector<CFloorPlanItem> items;
};
