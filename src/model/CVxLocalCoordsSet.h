#pragma once
// Named reference points of a floor. With one selected, the status bar and
// the dialogues show positions relative to it.

#include "CVxDPoint.h"
#include "CVxStringA.h"
#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <vector>

class CVxIniWriter;
class CVxProject;

class CLocalCoord
{
public:
    CLocalCoord() = default;
    CLocalCoord(const CVxDPoint& pos, int flags, const CVxStringW& name)
        : m_pos(pos), m_flags(flags), m_name(name)
    {
    }

    bool operator==(const CLocalCoord& other) const;
    bool operator!=(const CLocalCoord& other) const { return !(*this == other); }

    CVxDPoint m_pos;
    int m_flags = 0;
    CVxStringW m_name;
};

class CVxLocalCoordsSet : public IVxReadIniClient
{
public:
    CVxLocalCoordsSet() = default;
    CVxLocalCoordsSet(const CVxLocalCoordsSet&) = default;
    CVxLocalCoordsSet& operator=(const CVxLocalCoordsSet&) = default;

    void Reset();

    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    void SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const;

    int GetCount() const { return static_cast<int>(m_coords.size()); }
    const CLocalCoord* SafeGetCoord(int index) const;
    // Null when the selection is out of range.
    const CLocalCoord* GetSelected() const { return SafeGetCoord(m_selected); }

    // Plan position to and from the selected point's frame; without a valid
    // selection both leave the values alone.
    void AddTo(double& x, double& y) const;
    void SubtractFrom(double& x, double& y) const;

    // Each point, then the project's sub-unit correction at decimal format
    // when a project is given.
    void Move(double dx, double dy, const CVxProject* project);
    void Scale(double sx, double sy, const CVxProject* project);
    void Rotate(double degrees, const CVxProject* project);

    bool operator==(const CVxLocalCoordsSet& other) const;
    bool operator!=(const CVxLocalCoordsSet& other) const { return !(*this == other); }

    std::vector<CLocalCoord> m_coords;
    int m_selected = 0;

private:
    void Correct(const CVxProject* project);
};
