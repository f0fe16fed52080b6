#pragma once
// The made-to-measure sliding wardrobe of the maker Dozamo: a row of
// sliding doors, each of one or more panels with a surface of its own, and
// behind each door an interior chosen from the maker's fittings.

#include "CVxAppearance.h"
#include "CVxPartPayload.h"

#include <vector>

class CVxDozamoWardrobePayload : public CVxPartPayload
{
public:
    static constexpr int libraryNumber = 1101;
    static constexpr int maxDoors = 12;
    static constexpr int maxPanels = 8;
    static constexpr unsigned defaultColor = 0xEEDEDE;
    // The sliding doors run in two tracks in this share of the depth, at
    // the front.
    static constexpr double trackDepth = 0.08;

    // The fittings behind a door. The end fittings open to the side of the
    // wardrobe: even ones to the left, at the first door; odd ones to the
    // right, at the last.
    enum ExInterior : int
    {
        exEmpty = 0,
        exShelves = 1,
        exRailAndShelf = 2,
        exDoubleRail = 3,
        exDrawersAndShelves = 4,
        exRailAndDrawers = 5,
        exEndShelvesLeft = 6,
        exEndShelvesRight = 7,
        exEndRailLeft = 8,
        exEndRailRight = 9,
        exEndDrawersLeft = 10,
        exEndDrawersRight = 11,
        exEndShoesLeft = 12,
        exEndShoesRight = 13,
        exEndOpenLeft = 14,
        exEndOpenRight = 15,
        exLowRail = 16,
        exTallShelves = 17,
        exInteriorCount = 18
    };

    // What a box of the interior is.
    enum ExSubItem : int
    {
        exBoard = 0,
        exRail = 1,
        exDrawer = 2,
        exDoorPanel = 3
    };

    // A box in fractions of the wardrobe: x along the width, y along the
    // depth (0 at the back), z up.
    struct SubItem
    {
        ExSubItem kind;
        double x1, y1, z1, x2, y2, z2;
        int door;
    };

    CVxDozamoWardrobePayload();

    static CVxStringW ClassName() { return L"DozamoWardrobe"; }
    CVxStringW GetClassName() const override { return ClassName(); }
    CVxPartPayload* Duplicate() const override { return new CVxDozamoWardrobePayload(*this); }
    // Doors, panels per door, the interiors joined by ";", then the
    // appearances, each in its own "|"-separated form.
    CVxStringW SaveToString() const override;
    bool LoadFromString(const CVxStringW& text) override;
    bool DrawPart(CVxPart* part, CVxDC* dc, VxPOINT* corners, CVxDPoint* points, bool fill) override;
    bool DrawPartSide(CVxPart* part, CVxDC* dc, EVxObjSide side, int units, VxPOINT* corners, bool front,
                      bool outline, int flags) override;
    bool DrawObjectPreview(CVxPart* part, CVxDC* dc, int width, int height) override;
    CVxStringA ExportToVRML(const CVxPart* part, const CVxStringA& appearance, SVx3DExportPars* pars,
                            const CVxPart* parent) const;

    // The front with the doors taken off, every interior to see, the door
    // `selected` marked (none when -1).
    bool DrawObjectPreviewWithSelection(CVxPart* part, CVxDC* dc, int width, int height, int selected);
    // The boxes of the interiors on the quadrilateral of a front view.
    void DrawInteriorSide(CVxDC* dc, const VxPOINT* corners) const;

    bool AllowInteriorAtDoor(int interior, int door) const;
    // Every box of the wardrobe, door by door, in fractions of the whole.
    void GetSubGeometry(std::vector<SubItem>& list) const;
    // The boxes of one interior in fractions of its door's column.
    static void GetInteriorSubGeometry(std::vector<SubItem>& list, int interior);
    // Interiors to one per door (new ones 2), appearances to one per panel
    // (new ones the default colour).
    void ResizeVectorsWithDefaults();

    int doors = 2;
    int panels = 1;
    std::vector<int> interiors;
    std::vector<CVxAppearance> appearances;
};
