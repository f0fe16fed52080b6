#pragma once
// What a surface looks like: an object's faces, a room's floor, a wall side.
// Up to two material layers and, for tiled surfaces, the tile repeat with its
// joints. The plan and the 3D scene draw from the same record.

#include "CVxDPoint.h"
#include "CVxMaterial.h"
#include "CVxStringW.h"
#include "VxColorConvert.h"

class CVxIniWriter;
class CVxIniFileReader;
class CVxPicBuf;

class CVxAppearance
{
public:
    static constexpr unsigned defaultJointColor = 0xEFDEDEDEu;
    // Bit of flags: the tile size is a real size, so previews scale by it.
    static constexpr int flagRealTileSize = 1;
    // Marks of a field that differs between several selected objects.
    static constexpr int undefInt = -19181;
    static constexpr double undefDouble = -19181.0;
    // Number of "|" separated tokens of the text form.
    static constexpr int stringTokenCount = 22;

    CVxAppearance();
    explicit CVxAppearance(unsigned mainColour);
    CVxAppearance(const CVxAppearance&) = default;
    CVxAppearance& operator=(const CVxAppearance&) = default;
    CVxAppearance(CVxAppearance&&) = default;
    CVxAppearance& operator=(CVxAppearance&&) = default;
    ~CVxAppearance();

    void Reset();

    // Both materials and the tile mode; the tiling fields only count for a
    // tiled surface.
    bool operator==(const CVxAppearance& other) const;
    bool operator!=(const CVxAppearance& other) const { return !(*this == other); }

    void SetColor(unsigned colour) { main.color = colour; }
    unsigned GetColor() const { return main.color; }
    void SetTransparency(int percent) { main.transparency = percent; }
    int GetTransparency() const { return main.transparency; }
    void SetTexture(const CVxStringW& path) { main.texture = path; }
    const CVxStringW& GetTexture() const { return main.texture; }
    void SetBlendColor(unsigned colour) { blend.color = colour; }
    void SetJointColor(unsigned colour) { jointColor = colour; }
    bool IsTiled() const { return tileMode != 0; }
    bool HasJoints() const { return jointWidth > 0 && !VX_IsColorOff(jointColor); }
    bool IsRealTileSize() const { return (flags & flagRealTileSize) != 0; }

    // One line of 22 tokens joined by "|". Texture paths go through the
    // writer's relative form; writer may be null.
    CVxStringW SaveToString(CVxIniWriter* writer) const;
    // Resets, then reads by token number, so missing trailing tokens leave
    // defaults and a token that is no number keeps the field's default.
    // Texture paths are made absolute by the reader; reader may be null.
    // Any text gives an appearance: the result is always true.
    bool LoadFromString(const CVxStringW& text, CVxIniFileReader* reader);

    // Tile size and offset by sx, sy; joint width by sx.
    void Scale(double sx, double sy);

    bool HasUndefMember() const;
    void CheckDiffToUndef(const CVxAppearance& other);
    void CopySkipUndef(CVxAppearance& target) const;

    // A text that identifies the generated tile of this appearance.
    CVxStringW GetTileKey() const;
    // Generated tiles of patterns 1 and 2 hold two tiles across.
    int GetTilesPerPicture() const { return (tilePattern == 1 || tilePattern == 2) ? 2 : 1; }

    // The picture of the main texture from the picture cache, shared with
    // every other user of the file; null when there is no texture or the
    // file cannot be read. When release comes back true the caller gives
    // the picture back with CVxPictureLoadCache::ReleasePicture. A preview
    // is at most 256 pixels wide and high.
    CVxPicBuf* GetTextureImage(bool& release, bool forPreview) const;
    // The picture of one repeat of a tiled surface: the tiles in the main
    // colour (or texture) with joints in the joint colour. The appearance's
    // cached picture, else the tile file registered for the appearance, else
    // a generated one; regenerate always generates. The picture found or made
    // becomes the appearance's cached one and release comes back false: it
    // lives as long as the appearance keeps it. A stretched surface gives its
    // texture as GetTextureImage does.
    //
    // Pattern 0 is a stack bond of one tile, pattern 1 a running bond and
    // pattern 2 a chequer of main and blend colour, the last two two tiles
    // across and two down. A tile's size in project units is its pitch, the
    // joint lying inside it.
    static CVxPicBuf* GetTilePicture(CVxAppearance* appearance, bool& release, bool regenerate);
    // A new tile picture, bypassing every cache, with one reference for the
    // caller.
    CVxPicBuf* GenerateTilePicture() const;
    // Keeps picture as the cached tile, with a reference of its own; the
    // caller keeps its reference. Null clears the cache.
    void SaveAsTileCacheImage(CVxPicBuf* picture);
    CVxPicBuf* GetTileCacheImage() const { return m_tileCache.Get(); }
    bool HasTileCacheImage() const { return m_tileCache.Get() != nullptr; }
    // The main texture as a file URL, empty without a texture.
    CVxStringW GetTextureFileURL() const;
    // Forgets the cached tile. With release the appearance's reference is
    // given back; without, the caller has taken it over.
    void ClearTileCacheImage(bool release);

    int kind = 0;
    CVxMaterial main;
    CVxMaterial blend;
    int tileMode = 0;
    int tilePattern = 0;
    double tileSizeX = 0;
    double tileSizeY = 0;
    int rotation = 0;
    CVxDPoint offset;
    double jointWidth = 0;
    unsigned jointColor = defaultJointColor;
    int flags = 0;
    CVxStringW tileName;

private:
    // A counted reference to a picture: copies of an appearance share the
    // cached tile.
    class CVxPicRef
    {
    public:
        CVxPicRef() = default;
        CVxPicRef(const CVxPicRef& other);
        CVxPicRef& operator=(const CVxPicRef& other);
        ~CVxPicRef();
        CVxPicBuf* Get() const { return m_picture; }
        // Takes a reference of its own to picture.
        void Reset(CVxPicBuf* picture = nullptr);
        // Forgets the picture without giving back the reference.
        void Detach() { m_picture = nullptr; }

    private:
        CVxPicBuf* m_picture = nullptr;
    };

    CVxPicRef m_tileCache;
};
