#include "CVxMaterial.h"

const wchar_t* CVxMaterial::UndefTexture()
{
    // No file system allows "*" and "?" in a name, so no real path matches.
    return L"*?undefined?*";
}

void CVxMaterial::Reset()
{
    texture.Empty();
    color = 0;
    transparency = 0;
}

bool CVxMaterial::operator==(const CVxMaterial& other) const
{
    return color == other.color && transparency == other.transparency && texture == other.texture;
}

bool CVxMaterial::IsTextureUndef() const
{
    return texture == CVxStringW(UndefTexture());
}

bool CVxMaterial::HasUndefMember() const
{
    return color == clrUndefined || transparency == undefTransparency || IsTextureUndef();
}

void CVxMaterial::CheckDiffToUndef(const CVxMaterial& other)
{
    if (color != other.color)
        color = clrUndefined;
    if (transparency != other.transparency)
        transparency = undefTransparency;
    if (texture != other.texture)
        texture = UndefTexture();
}

void CVxMaterial::CopySkipUndef(CVxMaterial& target) const
{
    if (color != clrUndefined)
        target.color = color;
    if (transparency != undefTransparency)
        target.transparency = transparency;
    if (!IsTextureUndef())
        target.texture = texture;
}
