#pragma once
// What the object dialogues show and change, for one object or for several
// selected together. A field that differs among the objects is unset: the
// dialogue shows it blank, and an unset field leaves every object as it was.
// The edit works on the live floor, so that the plan shows the change while
// the dialogue is open; Cancel puts the floor back exactly, and Commit makes
// the whole change one undo step.

#include "CVxAppearance.h"
#include "CVxPart.h"
#include "CVxStringW.h"

#include <optional>
#include <vector>

class CVxAppCore;

struct SVxObjPropValues
{
    std::optional<CVxStringW> caption;
    // Plan width and depth, 3D height, height of the underside, rotation.
    std::optional<double> width, depth, height, elevation, rotation;
    std::optional<int> layer;
    std::optional<bool> locked, sizeLocked;
    std::optional<CVxAppearance> fill, front;
    std::optional<bool> frontEnabled;
    std::optional<unsigned> lineColor, textColor;
    // The type's own settings: the kind of a door or window, its handle or
    // leaf variant, whether it is shown open, its frame; table cells.
    std::optional<int> subType, handleType;
    std::optional<bool> opened, doorframe;
    std::optional<double> thickness;
    std::optional<int> tableRows, tableCols;
    // The text form of the payload of stairs and wardrobes.
    std::optional<CVxStringW> payload;
    // Advanced.
    std::optional<CVxStringW> comment, customID, fileLink;
    std::optional<int> price;
    std::optional<bool> no3D;
    std::optional<double> lineThick;
    // Labels keep their text alignment in the line colour word.
    std::optional<int> alignment;
    std::optional<double> fontSize;

    bool operator==(const SVxObjPropValues&) const = default;
    // `edited` over this: every field that `edited` sets.
    void Overlay(const SVxObjPropValues& edited);
};

// What all the edited objects can do; a field that not all of them have is
// not offered.
struct SVxObjPropScope
{
    int count = 0;
    // The common type, -1 when the types differ.
    int type = -1;
    int libObjID = 0;
    bool resize = true;
    bool keepAspect = false;
    bool rotate = true;
    bool fill = true;
    bool front = true;
    bool lineColor = true;
    bool lineThick = true;
    bool doorLike = true;
    bool doorframe = true;
    bool thickness = true;
    bool table = true;
    bool label = true;
    bool has3D = true;
    // Kinds and handle variants of the common type; 1 means none to choose.
    int subTypes = 1;
    int handleTypes = 1;
    int layerCount = 1;
};

class CVxObjPropEdit
{
public:
    // The collection of values and their application, on parts given.
    static SVxObjPropValues Collect(const std::vector<const CVxPart*>& parts);
    static SVxObjPropScope ScopeOf(const std::vector<const CVxPart*>& parts);
    // Sets what `values` holds; `layerCount` bounds the layer.
    static void Apply(const SVxObjPropValues& values, CVxPart& part, int layerCount);

    // The selected objects of the current floor; false without one.
    bool BeginSelection(CVxAppCore& core);
    // One part outside the plan, a library object: changes go straight to it,
    // with no undo and no plan.
    bool BeginPart(CVxPart* part);
    bool IsActive() const { return m_core != nullptr || m_single != nullptr; }

    const SVxObjPropValues& GetValues() const { return m_initial; }
    const SVxObjPropScope& GetScope() const { return m_scope; }
    int GetProjectUnit() const { return m_unit; }
    // The first edited object as it was, for pictures of its variants.
    const CVxPart* GetFirstPart() const;
    // Names of the floor's layers.
    const std::vector<CVxStringW>& GetLayerNames() const { return m_layerNames; }

    // The plan shows the edited values; nothing is kept yet.
    void Preview(const SVxObjPropValues& edited);
    // Everything back as it was, the modified flag included.
    void Cancel();
    // The change as one undo step; false when nothing changed.
    bool Commit(const SVxObjPropValues& edited);

private:
    void ApplyToLive(const SVxObjPropValues& edited);
    void Restore();
    void Refresh(bool listing);

    CVxAppCore* m_core = nullptr;
    CVxPart* m_single = nullptr;
    CVxPart m_singleOriginal;
    std::vector<int> m_indexes;
    std::vector<CVxPart> m_originalObjects;
    bool m_wasModified = false;
    bool m_previewed = false;
    int m_unit = 1;
    SVxObjPropValues m_initial;
    SVxObjPropScope m_scope;
    std::vector<CVxStringW> m_layerNames;
};
