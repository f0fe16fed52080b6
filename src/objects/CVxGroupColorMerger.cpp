#include "CVxGroupColorMerger.h"

bool CVxGroupColorMerger::CVxItem::HasSameOriginal(unsigned colour, const CVxAppearance& fill,
                                                   unsigned lineColour, int style, bool filled) const
{
    if (hasFill != filled || lineColor != lineColour || lineStyle != style)
        return false;
    return !filled || (color == colour && appearance == fill);
}

const CVxGroupColorMerger::CVxItem* CVxGroupColorMerger::FindItem(unsigned colour,
                                                                  const CVxAppearance& appearance,
                                                                  unsigned lineColour, int lineStyle,
                                                                  bool hasFill) const
{
    for (const CVxItem& item : m_items)
        if (item.HasSameOriginal(colour, appearance, lineColour, lineStyle, hasFill))
            return &item;
    return nullptr;
}

int CVxGroupColorMerger::AddItem(unsigned colour, const CVxAppearance& appearance, unsigned lineColour,
                                 int lineStyle, bool hasFill)
{
    if (const CVxItem* found = FindItem(colour, appearance, lineColour, lineStyle, hasFill)) {
        const int index = static_cast<int>(found - m_items.data());
        ++m_items[static_cast<size_t>(index)].memberCount;
        return index;
    }
    CVxItem item;
    item.hasFill = hasFill;
    if (hasFill) {
        item.color = colour;
        item.appearance = appearance;
    } else {
        item.color = clrUndefined;
    }
    item.appearance.ClearTileCacheImage(true);
    item.lineColor = lineColour;
    item.lineStyle = lineStyle;
    item.memberCount = 1;
    item.newColor = item.color;
    item.newAppearance = item.appearance;
    item.newLineColor = lineColour;
    item.newLineStyle = lineStyle;
    m_items.push_back(item);
    return static_cast<int>(m_items.size()) - 1;
}

void CVxGroupColorMerger::DetermineSelection()
{
    for (CVxItem& item : m_items) {
        const bool fillChanged =
            item.hasFill && (item.newColor != item.color || item.newAppearance != item.appearance);
        const bool lineChanged = item.newLineColor != item.lineColor || item.newLineStyle != item.lineStyle;
        item.selected = fillChanged || lineChanged;
    }
}

bool CVxGroupColorMerger::ApplyResultToPart(unsigned& colour, CVxAppearance& appearance, unsigned& lineColour,
                                            int& lineStyle, bool hasFill) const
{
    const CVxItem* item = FindItem(colour, appearance, lineColour, lineStyle, hasFill);
    if (!item || !item->selected)
        return false;
    if (hasFill) {
        colour = item->newColor;
        appearance = item->newAppearance;
    }
    lineColour = item->newLineColor;
    lineStyle = item->newLineStyle;
    return true;
}

void CVxGroupColorMerger::SetNonFillParamsToDefault()
{
    for (CVxItem& item : m_items) {
        item.newLineColor = item.lineColor;
        item.newLineStyle = item.lineStyle;
    }
}

CVxGroupColorMerger::CVxItem* CVxGroupColorMerger::SafeGetItem(int index)
{
    if (index < 0 || index >= GetCount())
        return nullptr;
    return &m_items[static_cast<size_t>(index)];
}
