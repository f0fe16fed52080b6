#pragma once
// One layer of a surface: a colour, how much light passes through, and an
// optional picture laid over it.

#include "CVxStringW.h"
#include "VxColorWord.h"

class CVxMaterial
{
public:
    // The marks of a field that differs between several selected objects.
    static constexpr int undefTransparency = -19181;
    static const wchar_t* UndefTexture();

    CVxMaterial() = default;
    CVxMaterial(unsigned colour, int transparency, const CVxStringW& path)
        : texture(path), color(colour), transparency(transparency)
    {
    }

    void Reset();

    bool operator==(const CVxMaterial& other) const;
    bool operator!=(const CVxMaterial& other) const { return !(*this == other); }

    void SetColor(unsigned colour) { color = colour; }
    unsigned GetColor() const { return color; }
    void SetTransparency(int percent) { transparency = percent; }
    void SetTexture(const CVxStringW& path) { texture = path; }
    bool HasTexture() const { return !texture.IsEmpty() && !IsTextureUndef(); }

    bool IsTextureUndef() const;
    bool HasUndefMember() const;
    // Makes every field that differs from other's undefined.
    void CheckDiffToUndef(const CVxMaterial& other);
    // Copies the defined fields into target and leaves the others alone.
    void CopySkipUndef(CVxMaterial& target) const;

    CVxStringW texture;
    unsigned color = 0;
    int transparency = 0;
};
