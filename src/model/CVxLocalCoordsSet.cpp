#include "CVxLocalCoordsSet.h"

#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxProject.h"
#include "CVxStringTokenizer.h"
#include "VxNumbers.h"

#include <cstdio>

bool CLocalCoord::operator==(const CLocalCoord& other) const
{
    return m_pos == other.m_pos && m_flags == other.m_flags && m_name == other.m_name;
}

void CVxLocalCoordsSet::Reset()
{
    m_coords.clear();
    m_selected = 0;
}

void CVxLocalCoordsSet::OnReadIniValue(const CVxStringA& key, const CVxStringW& value,
                                       CVxIniFileReader* /*reader*/)
{
    if (key == "Selected") {
        m_selected = CVxIniFileReader::ToInt(value, 0);
    } else if (key.StartsWith("Coord")) {
        CVxStringTokenizer tokens(value, L'|');
        CLocalCoord coord;
        coord.m_name = tokens.GetNextToken();
        coord.m_pos.x = DblLoad(tokens.GetNextToken(), 0.0);
        coord.m_pos.y = DblLoad(tokens.GetNextToken(), 0.0);
        coord.m_flags = tokens.GetNextToken().ToIntDef(0);
        m_coords.push_back(coord);
    }
}

void CVxLocalCoordsSet::SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const
{
    writer->StartSection(section);
    char key[32];
    for (int i = 0; i < GetCount(); ++i) {
        const CLocalCoord& coord = m_coords[static_cast<size_t>(i)];
        CVxStringW text = coord.m_name;
        text += L'|';
        text += DblSaveW(coord.m_pos.x);
        text += L'|';
        text += DblSaveW(coord.m_pos.y);
        text += CVxStringW().sprintf(L"|%d", coord.m_flags);
        snprintf(key, sizeof(key), "Coord%d", i);
        writer->WriteString(key, text);
    }
    writer->WriteInteger("Selected", m_selected);
}

const CLocalCoord* CVxLocalCoordsSet::SafeGetCoord(int index) const
{
    return index >= 0 && index < GetCount() ? &m_coords[static_cast<size_t>(index)] : nullptr;
}

void CVxLocalCoordsSet::AddTo(double& x, double& y) const
{
    if (const CLocalCoord* coord = GetSelected()) {
        x += coord->m_pos.x;
        y += coord->m_pos.y;
    }
}

void CVxLocalCoordsSet::SubtractFrom(double& x, double& y) const
{
    if (const CLocalCoord* coord = GetSelected()) {
        x -= coord->m_pos.x;
        y -= coord->m_pos.y;
    }
}

void CVxLocalCoordsSet::Move(double dx, double dy, const CVxProject* project)
{
    for (CLocalCoord& coord : m_coords)
        coord.m_pos.Offset(dx, dy);
    Correct(project);
}

void CVxLocalCoordsSet::Scale(double sx, double sy, const CVxProject* project)
{
    for (CLocalCoord& coord : m_coords)
        coord.m_pos.Scale(sx, sy);
    Correct(project);
}

void CVxLocalCoordsSet::Rotate(double degrees, const CVxProject* project)
{
    for (CLocalCoord& coord : m_coords)
        coord.m_pos.Rotate(degrees);
    Correct(project);
}

void CVxLocalCoordsSet::Correct(const CVxProject* project)
{
    if (!project)
        return;
    for (CLocalCoord& coord : m_coords)
        project->SubUnitCorrection(&coord.m_pos, VX_DF_DECIMAL);
}

bool CVxLocalCoordsSet::operator==(const CVxLocalCoordsSet& other) const
{
    return m_coords == other.m_coords && m_selected == other.m_selected;
}
