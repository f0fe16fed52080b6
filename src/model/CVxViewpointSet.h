#pragma once
// Named places to stand in the 3D view, and how the view moves between them.

#include "CVxStringA.h"
#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <vector>

class CVxIniWriter;
class CVxProject;

class CVxViewpoint
{
public:
    enum ENavigation
    {
        NAV_FLY = 0,
        NAV_WALK = 1,
        NAV_EXAMINE = 2
    };
    // The pitch of a viewpoint that looks straight ahead.
    static constexpr double pitchNotSet = -1.0;

    // The "|" separated form of one "VP%d" value: name, x, y, height, yaw,
    // kind, floor, auto height, pitch, pause, transition.
    CVxStringW SaveToString() const;
    // A missing token keeps its field; a number that can't be read gives 0,
    // but 1 for the pause and 2 for the transition.
    void LoadFromString(const CVxStringW& text);

    bool operator==(const CVxViewpoint& other) const;
    bool operator!=(const CVxViewpoint& other) const { return !(*this == other); }

    double m_x = 0;
    double m_y = 0;
    double m_yaw = 0;
    double m_pitch = pitchNotSet;
    bool m_autoHeight = true;
    int m_navigation = NAV_WALK;
    double m_height = 0;
    int m_floor = 0;
    CVxStringW m_name;
    double m_pauseSeconds = 1.0;
    double m_transitionSeconds = 2.0;
};

class CVxViewpointSet : public IVxReadIniClient
{
public:
    CVxViewpointSet() = default;
    CVxViewpointSet(const CVxViewpointSet&) = default;
    CVxViewpointSet& operator=(const CVxViewpointSet&) = default;

    // No viewpoints; standard views included, all floors shown.
    void Reset();

    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    void SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const;

    int GetCount() const { return static_cast<int>(m_viewpoints.size()); }
    CVxViewpoint* SafeGetViewpoint(int index);
    const CVxViewpoint* SafeGetViewpoint(int index) const;

    // Plan position and height. With a project the position gets its
    // sub-unit correction at decimal format and the height two decimals.
    void Move(double dx, double dy, double dz, const CVxProject* project);
    void Scale(double sx, double sy, double sz);
    // About the origin; the yaw turns with the plan in whole degrees.
    void Rotate(int degrees);

    bool operator==(const CVxViewpointSet& other) const;
    bool operator!=(const CVxViewpointSet& other) const { return !(*this == other); }

    std::vector<CVxViewpoint> m_viewpoints;
    bool m_includeStd = true;
    bool m_allFloors = true;
};
