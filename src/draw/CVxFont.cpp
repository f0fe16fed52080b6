#include "CVxFont.h"

#include "CVxIniFileReader.h"
#include "CVxStringTokenizer.h"
#include "VxNumbers.h"

#include <QFont>

#include <vector>

namespace {
// Points; text is laid out glyph by glyph at this size times the zoom.
constexpr double kMaxFontSize = 1000;
} // namespace

CVxStringW CVxFont::SaveToString() const
{
    CVxStringW text = m_name;
    text += L'|';
    text += DblSaveW(m_size);
    text += L"|1|0|";
    text += CVxStringW().sprintf(L"%d", GetStyleWord());
    return text;
}

void CVxFont::LoadFromString(const CVxStringW& text)
{
    const std::vector<CVxStringW> tokens = CVxStringTokenizer(text, L'|').GetTokenList();
    if (tokens.size() > 0)
        m_name = tokens[0];
    if (tokens.size() > 1)
        m_size = CVxIniFileReader::ToDoubleInRange(tokens[1], m_size, 0, kMaxFontSize, "FontSize");
    SetStyleWord(tokens.size() > 4 ? tokens[4].ToIntDef(0) : 0);
}

int CVxFont::GetStyleWord() const
{
    int style = 0;
    if (m_bold)
        style |= styleBold;
    if (m_italic)
        style |= styleItalic;
    if (m_underline)
        style |= styleUnderline;
    if (m_strikeout)
        style |= styleStrikeout;
    return style;
}

void CVxFont::SetStyleWord(int style)
{
    m_bold = (style & styleBold) != 0;
    m_italic = (style & styleItalic) != 0;
    m_underline = (style & styleUnderline) != 0;
    m_strikeout = (style & styleStrikeout) != 0;
}

QFont CVxFont::ToQFont() const
{
    QFont font(m_name.ToQString());
    if (m_size > 0)
        font.setPointSizeF(m_size);
    font.setWeight(m_bold ? QFont::Bold : QFont::Normal);
    font.setItalic(m_italic);
    font.setUnderline(m_underline);
    font.setStrikeOut(m_strikeout);
    return font;
}

void CVxFont::FromQFont(const QFont& font)
{
    m_name = CVxStringW(font.family());
    // A font given in pixels has no point size; the size then stays.
    if (font.pointSizeF() > 0)
        m_size = font.pointSizeF();
    m_bold = font.weight() > 699;
    m_italic = font.italic();
    m_underline = font.underline();
    m_strikeout = font.strikeOut();
}

bool CVxFont::operator==(const CVxFont& other) const
{
    return m_name == other.m_name && m_size == other.m_size && m_bold == other.m_bold &&
           m_italic == other.m_italic && m_underline == other.m_underline &&
           m_strikeout == other.m_strikeout && m_rotation == other.m_rotation;
}
