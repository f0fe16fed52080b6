#pragma once
// What a surface looks like: an object's faces, a room's floor, a wall side.
// Up to two material layers and, for tiled surfaces, the tile repeat with its
// joints. The plan and the 3D scene draw from the same record.

#include "CVxDPoint.h"
#include "CVxMaterial.h"
#include "CVxStringW.h"
#include "VxColorConvert.h"

#include <memory>

class CVxIniWriter;
class CVxIniFileReader;
class QImage;

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
    // Reads by token number, so missing trailing tokens keep their values;
    // a token that is no number keeps the field. reader may be null.
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

    // Pictures are implicitly shared values: release is always set false,
    // there is nothing for the caller to free.
    //
    // The picture of the main texture; a null image when there is none or
    // the file cannot be read. A preview is at most 256 pixels wide and high.
    QImage GetTextureImage(bool& release, bool forPreview) const;
    // The generated picture of one repeat of a tiled surface: the tiles in
    // the main colour (or texture) with joints in the joint colour. Uses the
    // appearance's cached picture, or a tile file registered for it, unless
    // regenerate; a generated picture becomes the appearance's cached one.
    // Pattern 0 is a stack bond of one tile, pattern 1 a running bond and
    // pattern 2 a chequer of main and blend colour, the last two two tiles
    // across and two down. A tile's size in project units is its pitch, the
    // joint lying inside it.
    static QImage GetTilePicture(CVxAppearance* appearance, bool& release, bool regenerate);
    // The tile picture without any cache.
    QImage GenerateTilePicture() const;
    // Keeps picture as this appearance's cached tile; shared by copies.
    void SaveAsTileCacheImage(const QImage& picture);
    bool HasTileCacheImage() const { return static_cast<bool>(m_tileCache); }
    // The main texture as a file URL, empty without a texture.
    CVxStringW GetTextureFileURL() const;
    // With release, drops this appearance's reference to the cached tile.
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
    std::shared_ptr<const QImage> m_tileCache;
};
