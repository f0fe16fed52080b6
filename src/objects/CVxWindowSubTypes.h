#pragma once
// The built-in designs of windows and doors: the bars of each window model
// and the rails, stiles and panels of each door leaf, shared by the plan, the
// side views and the 3D scene. A model lives in the unit square of the
// opening seen from the room: x from the left jamb (0) to the right one (1),
// y from the head (0) down to the sill or threshold (1).

#include "CVxStringA.h"

#include <vector>

// One straight line of a model. A frame bar (outer frame, mullion, transom,
// meeting rail) is solid timber or profile; other lines are marks: opening
// directions, panel mouldings, glazing bars.
class CVxPart;
struct SVx3DExportPars;

class CVxSubItem
{
public:
    CVxSubItem() = default;
    CVxSubItem(double fromX, double fromY, double toX, double toY, bool isFrame)
        : x1(fromX), y1(fromY), x2(toX), y2(toY), frame(isFrame)
    {
    }

    bool IsVertical() const { return x1 == x2; }
    bool IsHorizontal() const { return y1 == y2; }

    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
    bool frame = false;
};

// A piece of glass of a door leaf, as a rectangle of the unit square.
class CVxGlassPaneItem
{
public:
    CVxGlassPaneItem() = default;
    CVxGlassPaneItem(double l, double t, double r, double b) : left(l), top(t), right(r), bottom(b) {}

    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

class CVxWindowSubTypes
{
public:
    static constexpr int windowModelCount = 27;
    static constexpr int doorModelCount = 20;
    // The first items of every window model are its outer frame.
    static constexpr int outerFrameItemCount = 4;

    // Built on first use, kept to the end of the process.
    static CVxWindowSubTypes& GetInstance();

    // A sub-type out of range gives model 0.
    const std::vector<CVxSubItem>& GetWindowModel(int subType) const;
    // The leaf's lines; panes, when given, receive its glass.
    const std::vector<CVxSubItem>& GetDoorModel(int subType, std::vector<CVxGlassPaneItem>* panes) const;
    // Where the handle of a door model sits across the leaf: near the lock
    // stile, or at the meeting stiles of a pair.
    double GetDoorHandleX(int subType) const;

    // The scene text of a door leaf or a window sash in the unit box, with
    // the appearance text of the part (written by the scene export).
    CVxStringA ExportDoorToVRML(SVx3DExportPars* pars, const CVxPart& part,
                                const CVxStringA& appearance) const;
    CVxStringA ExportWindowToVRML(SVx3DExportPars* pars, const CVxPart& part,
                                  const CVxStringA& appearance) const;

    CVxWindowSubTypes(const CVxWindowSubTypes&) = delete;
    CVxWindowSubTypes& operator=(const CVxWindowSubTypes&) = delete;

private:
    CVxWindowSubTypes();
    void BuildWindows();
    void BuildDoors();

    struct CVxDoorModel
    {
        std::vector<CVxSubItem> items;
        std::vector<CVxGlassPaneItem> panes;
        double handleX = 0.88;
    };

    std::vector<std::vector<CVxSubItem>> m_windows;
    std::vector<CVxDoorModel> m_doors;
};
