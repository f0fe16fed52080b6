// The generated picture of one repeat of a tiled surface.

#include "CVxAppearance.h"
#include "CVxAppearanceTileGenCache.h"
#include "CVxPicBuf.h"
#include "CVxPictureLoadCache.h"
#include "VxEps.h"

#include <QImage>

#include <algorithm>
#include <cmath>

namespace {

// The longer side of a tile in pixels; the shorter follows the tile's shape.
constexpr int tilePixels = 128;
constexpr int minTilePixels = 4;

QRgb ToRgb(unsigned colour)
{
    return qRgb(static_cast<int>(VX_GetRValue(colour)), static_cast<int>(VX_GetGValue(colour)),
                static_cast<int>(VX_GetBValue(colour)));
}

// One face: a picture stretched over the tile without its joint, or a plain
// colour.
class CVxTileFace
{
public:
    CVxTileFace(const CVxMaterial& material, int width, int height) : m_color(ToRgb(material.color))
    {
        if (!material.HasTexture())
            return;
        CVxPicBuf* picture = CVxPictureLoadCache::GetPicture(material.texture);
        if (!picture)
            return;
        if (!picture->IsEmpty())
            m_picture = picture->GetQImage()
                            .scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                            .convertToFormat(QImage::Format_RGB32);
        CVxPictureLoadCache::ReleasePicture(picture);
    }
    QRgb At(int x, int y) const
    {
        if (m_picture.isNull() || x >= m_picture.width() || y >= m_picture.height())
            return m_color;
        return m_picture.pixel(x, y);
    }

private:
    QRgb m_color;
    QImage m_picture;
};

int PixelsOf(double size, double scale)
{
    const double pixels = size * scale;
    if (!std::isfinite(pixels))
        return tilePixels;
    return std::clamp(static_cast<int>(std::lround(std::min(pixels, 1e6))), minTilePixels, tilePixels);
}

} // namespace

CVxPicBuf* CVxAppearance::GenerateTilePicture() const
{
    double sizeX = std::isfinite(tileSizeX) && tileSizeX > EPS ? tileSizeX : 0;
    double sizeY = std::isfinite(tileSizeY) && tileSizeY > EPS ? tileSizeY : 0;
    if (sizeX == 0)
        sizeX = sizeY;
    if (sizeY == 0)
        sizeY = sizeX;
    if (sizeX == 0)
        sizeX = sizeY = 1;
    const double scale = tilePixels / std::max(sizeX, sizeY);
    const int pitchX = PixelsOf(sizeX, scale);
    const int pitchY = PixelsOf(sizeY, scale);

    int joint = 0;
    if (HasJoints() && std::isfinite(jointWidth)) {
        const double pixels = std::min(jointWidth * scale, 1e6);
        joint = std::clamp(static_cast<int>(std::lround(pixels)), 1, std::min(pitchX, pitchY) / 2);
    }

    const int across = GetTilesPerPicture();
    const int width = pitchX * across;
    const int height = pitchY * across;
    const bool runningBond = tilePattern == 1;
    const bool chequer = tilePattern == 2;

    const CVxTileFace mainFace(main, pitchX - joint, pitchY - joint);
    const CVxTileFace blendFace(chequer ? blend : main, pitchX - joint, pitchY - joint);
    const QRgb jointRgb = ToRgb(jointColor);

    QImage picture(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        QRgb* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        const int row = y / pitchY;
        const int inY = y % pitchY;
        // Every other course of a running bond is shifted by half a tile.
        const int shift = (runningBond && row % 2 == 1) ? pitchX / 2 : 0;
        for (int x = 0; x < width; ++x) {
            const int shifted = (x - shift + width) % width;
            const int column = shifted / pitchX;
            const int inX = shifted % pitchX;
            if (inX >= pitchX - joint || inY >= pitchY - joint)
                line[x] = jointRgb;
            else if (chequer && (row + column) % 2 == 1)
                line[x] = blendFace.At(inX, inY);
            else
                line[x] = mainFace.At(inX, inY);
        }
    }
    return new CVxPicBuf(picture);
}

CVxPicBuf* CVxAppearance::GetTilePicture(CVxAppearance* appearance, bool& release, bool regenerate)
{
    release = false;
    if (!appearance)
        return nullptr;
    if (!appearance->IsTiled())
        return appearance->GetTextureImage(release, false);
    if (!regenerate) {
        if (CVxPicBuf* cached = appearance->GetTileCacheImage())
            return cached;
        const CVxStringW file = CVxAppearanceTileGenCache::GetInstance().GetCacheFile(*appearance);
        if (!file.IsEmpty()) {
            // Read for this appearance alone: a tile file is nobody else's.
            auto* picture = new CVxPicBuf;
            if (picture->CreateFromFile(file)) {
                appearance->SaveAsTileCacheImage(picture);
                picture->Release();
                return appearance->GetTileCacheImage();
            }
            picture->Release();
        }
    }
    CVxPicBuf* picture = appearance->GenerateTilePicture();
    appearance->SaveAsTileCacheImage(picture);
    picture->Release();
    return appearance->GetTileCacheImage();
}
