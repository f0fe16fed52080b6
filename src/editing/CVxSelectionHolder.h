#pragma once
// The handles of a selection and the one being dragged. Objects and walls
// each have a selection of this kind; the derived class knows how to place
// the handles and what dragging one does.

#include "CVxDPoint.h"
#include "CVxSelSymbol.h"

#include <vector>

class CVxDC;
class CVxFloor;

class CVxSelectionHolder
{
public:
    virtual ~CVxSelectionHolder() = default;

    // Drags the handle being resized to (x, y), pixels relative to the view
    // offset; dirty grows by what must be painted again. False when nothing
    // changed.
    virtual bool OnMouseMove(CVxFloor* floor, unsigned modifiers, int x, int y, double zoom, int source,
                             VxRECT* dirty) = 0;
    // Builds the handles anew from the selected items.
    virtual void Collect(CVxFloor* floor, double zoom) = 0;
    virtual int GetResizingSymbolIdx() const { return m_symbolIdx; }

    bool IsResizing() const { return m_resizing; }
    const CVxDPoint& GetResizingStart() const { return m_resizeStart; }
    void EndResizing();
    // The item of the handle being dragged, -1 for none.
    int GetResizingPartNo() const;
    VxPOINT GetResizingSymbolPos() const;
    void SetMovingSymbol(int index) { m_symbolIdx = index; }
    void StartResizing(int x, int y);
    // For a mouse press: the handle under (x, y) becomes the one dragged.
    bool TestStartResizing(int x, int y, int source);
    // The cursor of the nearest handle under (x, y), 0 for none; that
    // handle is remembered as the one to drag.
    int IsOverSymbol(int x, int y);
    void Clear();
    const CVxSelSymbol* SafeGetSymbol(int index) const;
    const CVxSelSymbol* GetResizingSymbol() const { return SafeGetSymbol(m_symbolIdx); }
    void DrawToHdc(CVxDC* dc, int offsetX, int offsetY) const;
    const std::vector<CVxSelSymbol>& GetSymbols() const { return m_symbols; }
    int GetSelectedCount() const { return m_selectedCount; }

protected:
    // A drag of the handle at m_symbolIdx begins at (x, y).
    virtual void OnStartResizing(int /*x*/, int /*y*/) {}

    bool m_resizing = false;
    int m_symbolIdx = -1;
    CVxDPoint m_resizeStart;
    bool m_isActive = false;
    std::vector<CVxSelSymbol> m_symbols;
    int m_selectedCount = 0;
    int m_highlightedSymbol = -1;
};
