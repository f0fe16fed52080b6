#pragma once
// A typeface as the document stores it: captions, labels and print titles.
// The rotation belongs to the drawing surface and never reaches a file.

#include "CVxStringW.h"

class QFont;

class CVxFont
{
public:
    // Bits of the style word of the text form.
    static constexpr int styleBold = 1;
    static constexpr int styleItalic = 2;
    static constexpr int styleUnderline = 4;
    static constexpr int styleStrikeout = 8;

    CVxFont() = default;
    explicit CVxFont(const CVxStringW& text) { LoadFromString(text); }

    // Name, size, the literals 1 and 0, and the style word, joined by "|".
    CVxStringW SaveToString() const;
    // Missing tokens leave their fields alone; the style flags always follow
    // the style word, which counts as 0 when it is absent.
    void LoadFromString(const CVxStringW& text);

    int GetStyleWord() const;
    void SetStyleWord(int style);

    // For the font dialog: weight 700 when bold, 400 otherwise.
    QFont ToQFont() const;
    void FromQFont(const QFont& font);

    bool operator==(const CVxFont& other) const;
    bool operator!=(const CVxFont& other) const { return !(*this == other); }

    CVxStringW m_name = L"Tahoma";
    double m_size = 11.0;
    bool m_bold = false;
    bool m_italic = false;
    bool m_underline = false;
    bool m_strikeout = false;
    double m_rotation = 0.0;
};
