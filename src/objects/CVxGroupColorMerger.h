#pragma once
// The colours of a group as one dialog shows them: every distinct
// combination of fill and line among the members once, however many members
// share it. The user changes some of them, and each member then takes the
// new values of the combination it had.

#include "CVxAppearance.h"

#include <vector>

class CVxGroupColorMerger
{
public:
    class CVxItem
    {
    public:
        // What the members have.
        unsigned color = 0;
        CVxAppearance appearance;
        unsigned lineColor = 0;
        int lineStyle = 0;
        // Members without a fill, such as lines, count by their line only.
        bool hasFill = true;
        int memberCount = 0;
        // What the user chose; the same as the above until changed.
        unsigned newColor = 0;
        CVxAppearance newAppearance;
        unsigned newLineColor = 0;
        int newLineStyle = 0;
        // Set by DetermineSelection for a combination the user changed.
        bool selected = false;

        bool HasSameOriginal(unsigned colour, const CVxAppearance& fill, unsigned lineColour, int style,
                             bool filled) const;
    };

    // Adds one member's colours; gives the index of its combination.
    int AddItem(unsigned colour, const CVxAppearance& appearance, unsigned lineColour, int lineStyle,
                bool hasFill = true);
    // Marks the combinations whose new values differ from the old ones.
    void DetermineSelection();
    // Writes the new values of the member's combination into its fields when
    // that combination is selected; false when nothing changed.
    bool ApplyResultToPart(unsigned& colour, CVxAppearance& appearance, unsigned& lineColour, int& lineStyle,
                           bool hasFill = true) const;
    // Gives up every change of line colour and line style, so that only the
    // fills are applied.
    void SetNonFillParamsToDefault();

    void Clear() { m_items.clear(); }
    int GetCount() const { return static_cast<int>(m_items.size()); }
    // Null for an index out of range.
    CVxItem* SafeGetItem(int index);
    const std::vector<CVxItem>& GetItems() const { return m_items; }

private:
    const CVxItem* FindItem(unsigned colour, const CVxAppearance& appearance, unsigned lineColour,
                            int lineStyle, bool hasFill) const;

    std::vector<CVxItem> m_items;
};
