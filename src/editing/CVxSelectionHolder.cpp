#include "CVxSelectionHolder.h"

int CVxSelectionHolder::GetResizingPartNo() const
{
    const CVxSelSymbol* symbol = GetResizingSymbol();
    return symbol ? symbol->partNo : -1;
}

VxPOINT CVxSelectionHolder::GetResizingSymbolPos() const
{
    const CVxSelSymbol* symbol = GetResizingSymbol();
    return symbol ? symbol->pos : VxPOINT{0, 0};
}

void CVxSelectionHolder::EndResizing()
{
    m_resizing = false;
    m_highlightedSymbol = -1;
}

void CVxSelectionHolder::StartResizing(int x, int y)
{
    if (!SafeGetSymbol(m_symbolIdx))
        return;
    m_resizing = true;
    m_resizeStart = CVxDPoint(x, y);
    m_highlightedSymbol = m_symbolIdx;
    OnStartResizing(x, y);
}

bool CVxSelectionHolder::TestStartResizing(int x, int y, int /*source*/)
{
    if (IsOverSymbol(x, y) == 0 && m_symbolIdx < 0)
        return false;
    StartResizing(x, y);
    return m_resizing;
}

int CVxSelectionHolder::IsOverSymbol(int x, int y)
{
    if (m_resizing)
        return 0;
    int best = -1;
    int bestDist = 10000;
    for (int i = static_cast<int>(m_symbols.size()) - 1; i >= 0; --i) {
        const CVxSelSymbol& symbol = m_symbols[static_cast<size_t>(i)];
        if (!symbol.PtInSymbol(x, y))
            continue;
        const int dist = symbol.GetDistanceSq(x, y);
        if (dist < bestDist) {
            bestDist = dist;
            best = i;
        }
    }
    m_symbolIdx = best;
    if (best < 0)
        return 0;
    // A round handle has no cursor of its own, yet the pointer is over it.
    const int shape = m_symbols[static_cast<size_t>(best)].GetCursorShape();
    return shape != vcNone ? shape : vcArrow;
}

void CVxSelectionHolder::Clear()
{
    m_symbols.clear();
    m_resizing = false;
    m_symbolIdx = -1;
    m_selectedCount = 0;
    m_highlightedSymbol = -1;
}

const CVxSelSymbol* CVxSelectionHolder::SafeGetSymbol(int index) const
{
    if (index < 0 || index >= static_cast<int>(m_symbols.size()))
        return nullptr;
    return &m_symbols[static_cast<size_t>(index)];
}

void CVxSelectionHolder::DrawToHdc(CVxDC* dc, int offsetX, int offsetY) const
{
    for (size_t i = 0; i < m_symbols.size(); ++i)
        m_symbols[i].DrawToHdc(dc, offsetX, offsetY, static_cast<int>(i) == m_highlightedSymbol);
}
