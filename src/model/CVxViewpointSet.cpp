#include "CVxViewpointSet.h"

#include "CVxDPoint.h"
#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxProject.h"
#include "CVxStringTokenizer.h"
#include "VxEps.h"
#include "VxNumbers.h"
#include "VxWholeDegrees.h"

#include <cmath>
#include <cstdio>

namespace {
void AppendNumber(CVxStringW& text, double value)
{
    text += L'|';
    text += DblSaveW(value);
}
} // namespace

CVxStringW CVxViewpoint::SaveToString() const
{
    CVxStringW text = m_name;
    AppendNumber(text, m_x);
    AppendNumber(text, m_y);
    AppendNumber(text, m_height);
    AppendNumber(text, m_yaw);
    text += CVxStringW().sprintf(L"|%d|%d|%d", m_navigation, m_floor, m_autoHeight ? 1 : 0);
    AppendNumber(text, m_pitch);
    AppendNumber(text, m_pauseSeconds);
    AppendNumber(text, m_transitionSeconds);
    return text;
}

void CVxViewpoint::LoadFromString(const CVxStringW& text)
{
    CVxStringTokenizer tokens(text, L'|');
    auto next = [&tokens](auto apply) {
        if (tokens.IsNextToken())
            apply(tokens.GetNextToken());
    };
    next([this](const CVxStringW& t) { m_name = t; });
    next([this](const CVxStringW& t) { m_x = DblLoad(t, 0.0); });
    next([this](const CVxStringW& t) { m_y = DblLoad(t, 0.0); });
    next([this](const CVxStringW& t) { m_height = DblLoad(t, 0.0); });
    next([this](const CVxStringW& t) { m_yaw = DblLoad(t, 0.0); });
    next([this](const CVxStringW& t) { m_navigation = t.ToIntDef(0); });
    next([this](const CVxStringW& t) { m_floor = t.ToIntDef(0); });
    next([this](const CVxStringW& t) { m_autoHeight = t.ToIntDef(0) > 0; });
    next([this](const CVxStringW& t) { m_pitch = DblLoad(t, 0.0); });
    next([this](const CVxStringW& t) { m_pauseSeconds = DblLoad(t, 1.0); });
    next([this](const CVxStringW& t) { m_transitionSeconds = DblLoad(t, 2.0); });
}

bool CVxViewpoint::operator==(const CVxViewpoint& other) const
{
    return std::fabs(m_x - other.m_x) < EPS && std::fabs(m_y - other.m_y) < EPS &&
           std::fabs(m_yaw - other.m_yaw) < EPS && std::fabs(m_pitch - other.m_pitch) < EPS &&
           std::fabs(m_height - other.m_height) < EPS &&
           std::fabs(m_pauseSeconds - other.m_pauseSeconds) < EPS &&
           std::fabs(m_transitionSeconds - other.m_transitionSeconds) < EPS &&
           m_autoHeight == other.m_autoHeight && m_navigation == other.m_navigation &&
           m_floor == other.m_floor && m_name == other.m_name;
}

void CVxViewpointSet::Reset()
{
    m_viewpoints.clear();
    m_includeStd = true;
    m_allFloors = true;
}

void CVxViewpointSet::OnReadIniValue(const CVxStringA& key, const CVxStringW& value,
                                     CVxIniFileReader* /*reader*/)
{
    if (key == "IncludeStd") {
        m_includeStd = CVxIniFileReader::ToInt(value, 1) > 0;
    } else if (key == "AllFloors") {
        m_allFloors = CVxIniFileReader::ToInt(value, 1) > 0;
    } else if (key.StartsWith("VP")) {
        CVxViewpoint viewpoint;
        viewpoint.LoadFromString(value);
        m_viewpoints.push_back(viewpoint);
    }
}

void CVxViewpointSet::SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const
{
    writer->StartSection(section);
    char key[32];
    for (int i = 0; i < GetCount(); ++i) {
        snprintf(key, sizeof(key), "VP%d", i);
        writer->WriteString(key, m_viewpoints[static_cast<size_t>(i)].SaveToString());
    }
    writer->WriteInteger("IncludeStd", m_includeStd ? 1 : 0);
    writer->WriteInteger("AllFloors", m_allFloors ? 1 : 0);
}

CVxViewpoint* CVxViewpointSet::SafeGetViewpoint(int index)
{
    return index >= 0 && index < GetCount() ? &m_viewpoints[static_cast<size_t>(index)] : nullptr;
}

const CVxViewpoint* CVxViewpointSet::SafeGetViewpoint(int index) const
{
    return index >= 0 && index < GetCount() ? &m_viewpoints[static_cast<size_t>(index)] : nullptr;
}

void CVxViewpointSet::Move(double dx, double dy, double dz, const CVxProject* project)
{
    for (CVxViewpoint& viewpoint : m_viewpoints) {
        viewpoint.m_x += dx;
        viewpoint.m_y += dy;
        viewpoint.m_height += dz;
        if (project) {
            project->SubUnitCorrection(viewpoint.m_x, viewpoint.m_y, VX_DF_DECIMAL);
            DblRound2(viewpoint.m_height);
        }
    }
}

void CVxViewpointSet::Scale(double sx, double sy, double sz)
{
    for (CVxViewpoint& viewpoint : m_viewpoints) {
        viewpoint.m_x *= sx;
        viewpoint.m_y *= sy;
        viewpoint.m_height *= sz;
    }
}

void CVxViewpointSet::Rotate(int degrees)
{
    for (CVxViewpoint& viewpoint : m_viewpoints) {
        CVxDPoint pos(viewpoint.m_x, viewpoint.m_y);
        pos.Rotate(degrees);
        viewpoint.m_x = pos.x;
        viewpoint.m_y = pos.y;
        viewpoint.m_yaw = VX_AddWholeDegrees(viewpoint.m_yaw, degrees);
    }
}

bool CVxViewpointSet::operator==(const CVxViewpointSet& other) const
{
    return m_viewpoints == other.m_viewpoints && m_includeStd == other.m_includeStd &&
           m_allFloors == other.m_allFloors;
}
