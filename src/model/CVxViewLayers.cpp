#include "CVxViewLayers.h"

#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxLocalize.h"
#include "CVxStringTokenizer.h"

#include <cstdio>
#include <utility>

bool CViewLayerItem::operator==(const CViewLayerItem& other) const
{
    return m_visible == other.m_visible && m_name == other.m_name && m_transparency == other.m_transparency &&
           m_locked == other.m_locked;
}

CVxViewLayers::CVxViewLayers()
{
    Reset();
}

void CVxViewLayers::Reset()
{
    m_layers.assign(1, CViewLayerItem());
    m_activeLayer = 0;
    m_visibility3D = true;
}

void CVxViewLayers::OnReadIniValue(const CVxStringA& key, const CVxStringW& value,
                                   CVxIniFileReader* /*reader*/)
{
    if (key == "Count") {
        m_layers.clear();
        m_activeLayer = 0;
    } else if (key == "Active") {
        m_activeLayer = CVxIniFileReader::ToInt(value, 0);
    } else if (key == "Visibility3D") {
        m_visibility3D = CVxIniFileReader::ToInt(value, 1) > 0;
    } else if (key.GetLength() >= 6 && key.StartsWith("Layer")) {
        if (value.GetLength() < 2)
            return;
        CVxStringTokenizer tokens(value, L'|');
        CViewLayerItem layer;
        layer.m_visible = tokens.GetNextToken().ToIntDef(1) > 0;
        layer.m_name = tokens.GetNextToken();
        if (tokens.IsNextToken())
            layer.m_transparency = tokens.GetNextToken().ToIntDef(100);
        if (tokens.IsNextToken())
            layer.m_locked = tokens.GetNextToken().ToIntDef(0) > 0;
        m_layers.push_back(layer);
    }
}

void CVxViewLayers::SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const
{
    writer->StartSection(section);
    writer->WriteInteger("Count", GetLayerCount());
    writer->WriteInteger("Active", m_activeLayer);
    writer->WriteInteger("Visibility3D", m_visibility3D ? 1 : 0);
    char key[32];
    for (int i = 0; i < GetLayerCount(); ++i) {
        const CViewLayerItem& layer = m_layers[static_cast<size_t>(i)];
        CVxStringW text = layer.m_visible ? L"1|" : L"0|";
        text += layer.m_name;
        // A locked layer adds a fourth field; the transparency stands before
        // it even at 0.
        if (layer.m_transparency > 0 || layer.m_locked)
            text += CVxStringW().sprintf(L"|%d", layer.m_transparency);
        if (layer.m_locked)
            text += L"|1";
        snprintf(key, sizeof(key), "Layer%02d", i);
        writer->WriteString(key, text);
    }
}

const CViewLayerItem* CVxViewLayers::SafeGetLayer(int layer) const
{
    return IsValidLayer(layer) ? &m_layers[static_cast<size_t>(layer)] : nullptr;
}

CViewLayerItem* CVxViewLayers::SafeGetLayer(int layer)
{
    return IsValidLayer(layer) ? &m_layers[static_cast<size_t>(layer)] : nullptr;
}

bool CVxViewLayers::IsLayerVisible(int layer) const
{
    const CViewLayerItem* item = SafeGetLayer(layer);
    return item ? item->m_visible : true;
}

void CVxViewLayers::SetLayerVisible(int layer, bool visible)
{
    if (CViewLayerItem* item = SafeGetLayer(layer))
        item->m_visible = visible;
}

bool CVxViewLayers::IsLayerVisible3D(int layer) const
{
    return IsLayerVisible(layer) || m_visibility3D;
}

CVxStringW CVxViewLayers::GetLayerName(int layer) const
{
    const CViewLayerItem* item = SafeGetLayer(layer);
    if (!item)
        return CVxStringW();
    if (item->m_name.IsEmpty())
        return VX_GetLoc()->LocalizeMessage(57, L"General Layer");
    return item->m_name;
}

void CVxViewLayers::SetLayerName(int layer, const CVxStringW& name)
{
    if (CViewLayerItem* item = SafeGetLayer(layer))
        item->m_name = name;
}

int CVxViewLayers::GetLayerTransparency(int layer) const
{
    const CViewLayerItem* item = SafeGetLayer(layer);
    return item ? item->m_transparency : 0;
}

void CVxViewLayers::SetLayerTransparency(int layer, int transparency)
{
    if (CViewLayerItem* item = SafeGetLayer(layer))
        item->m_transparency = transparency;
}

bool CVxViewLayers::IsLayerLocked(int layer) const
{
    const CViewLayerItem* item = SafeGetLayer(layer);
    return item && item->m_locked;
}

void CVxViewLayers::SetLayerLocked(int layer, bool locked)
{
    if (CViewLayerItem* item = SafeGetLayer(layer))
        item->m_locked = locked;
}

void CVxViewLayers::SetActiveLayer(int layer)
{
    if (IsValidLayer(layer))
        m_activeLayer = layer;
}

int CVxViewLayers::GetAnyVisibleLayer() const
{
    if (IsValidLayer(m_activeLayer) && m_layers[static_cast<size_t>(m_activeLayer)].m_visible)
        return m_activeLayer;
    for (int i = 0; i < GetLayerCount(); ++i)
        if (m_layers[static_cast<size_t>(i)].m_visible)
            return i;
    return 0;
}

int CVxViewLayers::GetVisibleLayerCount() const
{
    int count = 0;
    for (const CViewLayerItem& layer : m_layers)
        if (layer.m_visible)
            ++count;
    return count;
}

int CVxViewLayers::AddLayer(const CVxStringW& name, bool visible, int transparency, bool locked)
{
    m_layers.emplace_back(name, visible, transparency, locked);
    return GetLayerCount() - 1;
}

bool CVxViewLayers::RemoveLayer(int layer)
{
    if (!IsValidLayer(layer) || GetLayerCount() < 2)
        return false;
    m_layers.erase(m_layers.begin() + layer);
    if (m_activeLayer > layer)
        --m_activeLayer;
    if (m_activeLayer >= GetLayerCount())
        m_activeLayer = GetLayerCount() - 1;
    if (m_activeLayer < 0)
        m_activeLayer = 0;
    return true;
}

bool CVxViewLayers::SwitchLayers(int a, int b)
{
    if (!IsValidLayer(a) || !IsValidLayer(b))
        return false;
    std::swap(m_layers[static_cast<size_t>(a)], m_layers[static_cast<size_t>(b)]);
    m_activeLayer = b;
    return true;
}

int CVxViewLayers::ReorderedIndex(int index, int from, int to)
{
    if (index == from)
        return to;
    if (from < to && index > from && index <= to)
        return index - 1;
    if (from > to && index >= to && index < from)
        return index + 1;
    return index;
}

bool CVxViewLayers::ReorderLayer(int from, int to)
{
    if (!IsValidLayer(from) || !IsValidLayer(to))
        return false;
    if (from == to)
        return true;
    CViewLayerItem moved = m_layers[static_cast<size_t>(from)];
    m_layers.erase(m_layers.begin() + from);
    m_layers.insert(m_layers.begin() + to, moved);
    m_activeLayer = ReorderedIndex(m_activeLayer, from, to);
    return true;
}

void CVxViewLayers::EnsureValid()
{
    if (m_layers.empty())
        m_layers.emplace_back();
    if (!IsValidLayer(m_activeLayer))
        m_activeLayer = 0;
}

bool CVxViewLayers::operator==(const CVxViewLayers& other) const
{
    return m_layers == other.m_layers && m_activeLayer == other.m_activeLayer &&
           m_visibility3D == other.m_visibility3D;
}
