#include "CVxAttachments.h"

#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxProject.h"
#include "CVxStringTokenizer.h"
#include "VxEps.h"
#include "VxNumbers.h"
#include "VxWholeDegrees.h"

#include <cmath>
#include <cstdio>

bool CVxAttachItem::operator==(const CVxAttachItem& other) const
{
    return m_path == other.m_path && m_pos == other.m_pos && std::fabs(m_angle - other.m_angle) < EPS &&
           m_kind == other.m_kind && m_description == other.m_description;
}

void CVxAttachments::Reset()
{
    m_items.clear();
}

void CVxAttachments::OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader)
{
    if (!key.StartsWith("Item"))
        return;
    CVxStringTokenizer tokens(value, L'|');
    CVxAttachItem item;
    item.m_path = tokens.GetNextToken();
    if (reader)
        item.m_path = reader->MakeAbsolutePath(item.m_path);
    item.m_description = tokens.GetNextToken();
    item.m_pos.x = DblLoad(tokens.GetNextToken(), 0.0);
    item.m_pos.y = DblLoad(tokens.GetNextToken(), 0.0);
    item.m_angle = DblLoad(tokens.GetNextToken(), 0.0);
    item.m_kind = static_cast<unsigned>(tokens.GetNextToken().ToIntDef(0));
    m_items.push_back(item);
}

void CVxAttachments::SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const
{
    if (m_items.empty())
        return;
    writer->StartSection(section);
    char key[32];
    for (int i = 0; i < GetCount(); ++i) {
        const CVxAttachItem& item = m_items[static_cast<size_t>(i)];
        CVxStringW path = item.m_path;
        CVxStringW text = writer->MakeRelativePath(path);
        text += L'|';
        text += item.m_description;
        text += L'|';
        text += DblSaveW(item.m_pos.x);
        text += L'|';
        text += DblSaveW(item.m_pos.y);
        text += L'|';
        text += DblSaveW(item.m_angle);
        text += CVxStringW().sprintf(L"|%u", item.m_kind);
        snprintf(key, sizeof(key), "Item%d", i);
        writer->WriteString(key, text);
    }
}

CVxAttachItem* CVxAttachments::SafeGetItem(int index)
{
    return index >= 0 && index < GetCount() ? &m_items[static_cast<size_t>(index)] : nullptr;
}

const CVxAttachItem* CVxAttachments::SafeGetItem(int index) const
{
    return index >= 0 && index < GetCount() ? &m_items[static_cast<size_t>(index)] : nullptr;
}

void CVxAttachments::Move(double dx, double dy)
{
    for (CVxAttachItem& item : m_items)
        item.m_pos.Offset(dx, dy);
}

void CVxAttachments::Scale(double sx, double sy)
{
    for (CVxAttachItem& item : m_items)
        item.m_pos.Scale(sx, sy);
}

void CVxAttachments::Rotate(int degrees, const CVxProject* project)
{
    for (CVxAttachItem& item : m_items) {
        item.m_pos.Rotate(degrees);
        if (project)
            project->SubUnitCorrection(&item.m_pos, VX_DF_DECIMAL);
        item.m_angle = VX_AddWholeDegrees(item.m_angle, degrees);
    }
}

bool CVxAttachments::operator==(const CVxAttachments& other) const
{
    return m_items == other.m_items;
}
