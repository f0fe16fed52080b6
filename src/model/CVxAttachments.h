#pragma once
// Files attached to the project at places on the plan: documents, pictures,
// links. A compressed project carries the files inside.

#include "CVxDPoint.h"
#include "CVxStringA.h"
#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <vector>

class CVxIniWriter;
class CVxProject;

class CVxAttachItem
{
public:
    bool operator==(const CVxAttachItem& other) const;
    bool operator!=(const CVxAttachItem& other) const { return !(*this == other); }

    CVxStringW m_path;
    CVxDPoint m_pos;
    // Degrees.
    double m_angle = 0;
    unsigned m_kind = 0;
    CVxStringW m_description;
};

class CVxAttachments : public IVxReadIniClient
{
public:
    CVxAttachments() = default;
    CVxAttachments(const CVxAttachments&) = default;
    CVxAttachments& operator=(const CVxAttachments&) = default;

    void Reset();

    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    // Writes no section at all for an empty list.
    void SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const;

    int GetCount() const { return static_cast<int>(m_items.size()); }
    CVxAttachItem* SafeGetItem(int index);
    const CVxAttachItem* SafeGetItem(int index) const;

    void Move(double dx, double dy);
    void Scale(double sx, double sy);
    // About the origin, with the project's sub-unit correction at decimal
    // format when a project is given; the angle turns in whole degrees.
    void Rotate(int degrees, const CVxProject* project);

    bool operator==(const CVxAttachments& other) const;
    bool operator!=(const CVxAttachments& other) const { return !(*this == other); }

    std::vector<CVxAttachItem> m_items;
};
