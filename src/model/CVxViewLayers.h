#pragma once
// The view layers of a floor. Every object lies in one layer by index; a
// hidden layer is left out of the plan, and out of the 3D view unless the
// floor's 3D visibility keeps hidden layers there.

#include "CVxStringA.h"
#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <vector>

class CVxIniWriter;

class CViewLayerItem
{
public:
    CViewLayerItem() = default;
    explicit CViewLayerItem(const CVxStringW& name, bool visible = true, int transparency = 0,
                            bool locked = false)
        : m_visible(visible), m_name(name), m_transparency(transparency), m_locked(locked)
    {
    }

    bool operator==(const CViewLayerItem& other) const;
    bool operator!=(const CViewLayerItem& other) const { return !(*this == other); }

    bool m_visible = true;
    // Empty for the general layer, which shows under its localised name.
    CVxStringW m_name;
    // Percent; 0 draws the layer's objects opaque.
    int m_transparency = 0;
    // The layer's objects are drawn but can't be selected or changed.
    bool m_locked = false;
};

class CVxViewLayers : public IVxReadIniClient
{
public:
    CVxViewLayers();
    CVxViewLayers(const CVxViewLayers&) = default;
    CVxViewLayers& operator=(const CVxViewLayers&) = default;

    // One general layer, active, and hidden layers still shown in 3D.
    void Reset();

    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    void SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const;

    int GetLayerCount() const { return static_cast<int>(m_layers.size()); }
    bool IsValidLayer(int layer) const { return layer >= 0 && layer < GetLayerCount(); }
    const CViewLayerItem* SafeGetLayer(int layer) const;
    CViewLayerItem* SafeGetLayer(int layer);

    // An index out of range reads as visible; setters ignore it.
    bool IsLayerVisible(int layer) const;
    void SetLayerVisible(int layer, bool visible);
    // The layer's own visibility, or, for a hidden one, the 3D visibility flag.
    bool IsLayerVisible3D(int layer) const;
    bool GetVisibility3D() const { return m_visibility3D; }
    void SetVisibility3D(bool visible) { m_visibility3D = visible; }
    // The name as shown: an empty name is the general layer's. Empty for an
    // index out of range.
    CVxStringW GetLayerName(int layer) const;
    void SetLayerName(int layer, const CVxStringW& name);
    // 0 for an index out of range.
    int GetLayerTransparency(int layer) const;
    // False for an index out of range.
    bool IsLayerLocked(int layer) const;
    void SetLayerLocked(int layer, bool locked);
    void SetLayerTransparency(int layer, int transparency);

    int GetActiveLayer() const { return m_activeLayer; }
    void SetActiveLayer(int layer);
    // The active layer if it is visible, else the first visible one, else 0.
    int GetAnyVisibleLayer() const;
    int GetVisibleLayerCount() const;

    // Appends a layer and returns its index.
    int AddLayer(const CVxStringW& name, bool visible = true, int transparency = 0, bool locked = false);
    // False for an index out of range and for the last remaining layer. The
    // active layer keeps pointing at the same layer, or at its neighbour
    // when that one was removed.
    bool RemoveLayer(int layer);
    // Swaps two layers in the list and makes b active.
    bool SwitchLayers(int a, int b);
    // Moves a layer to another place in the list; the active layer follows
    // its layer.
    bool ReorderLayer(int from, int to);
    // Where a layer index lands when the layer `from` moves to `to`; objects
    // are renumbered with it so that each stays in its layer.
    static int ReorderedIndex(int index, int from, int to);

    // After reading a file: at least one layer, and the active one in the list.
    void EnsureValid();

    bool operator==(const CVxViewLayers& other) const;
    bool operator!=(const CVxViewLayers& other) const { return !(*this == other); }

    std::vector<CViewLayerItem> m_layers;
    int m_activeLayer = 0;
    bool m_visibility3D = true;
};
