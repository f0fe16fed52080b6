#include "CVxAppearance.h"

#include "CVxIniFileReader.h"
#include "CVxIniWriter.h"
#include "CVxStringTokenizer.h"
#include "VxEps.h"
#include "VxNumbers.h"

#include "CVxPicBuf.h"
#include "CVxPictureLoadCache.h"

#include <QUrl>

#include <charconv>
#include <cmath>
#include <string>
#include <vector>

namespace {

// Files before this version knew no flags; their stretched textures were
// always laid at their real size.
constexpr int versionWithTileFlags = 720;

bool SameDouble(double a, double b)
{
    return a == b || std::fabs(a - b) < EPS;
}

void ReadInt(const CVxStringW& token, int& field)
{
    field = token.ToIntDef(field);
}

// Non-finite numbers would poison every size derived from the field.
void ReadDouble(const CVxStringW& token, double& field)
{
    const double value = DblLoad(token, field);
    if (std::isfinite(value))
        field = value;
}

void ReadColor(const CVxStringW& token, unsigned& field)
{
    unsigned value;
    if (VX_ColorFromText(token, value))
        field = value;
}

// What "%d" writes.
void AppendInteger(std::wstring& out, int value)
{
    char digits[16];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof(digits), value);
    out.append(digits, end.ptr);
}

CVxStringW ColorToken(unsigned colour)
{
    return CVxStringW::IntToHex(colour, 6, true);
}

CVxStringW RelativePath(const CVxStringW& path, CVxIniWriter* writer)
{
    if (!writer || path.IsEmpty())
        return path;
    CVxStringW copy(path);
    return writer->MakeRelativePathAs(copy, EVxFileRole::Picture);
}

CVxStringW AbsolutePath(const CVxStringW& path, CVxIniFileReader* reader)
{
    if (!reader || path.IsEmpty())
        return path;
    return reader->MakeAbsolutePath(path);
}

} // namespace

CVxAppearance::CVxAppearance()
{
    Reset();
}

CVxAppearance::CVxAppearance(unsigned mainColour)
{
    Reset();
    main.color = mainColour;
}

CVxAppearance::~CVxAppearance() = default;

void CVxAppearance::Reset()
{
    kind = 0;
    main.Reset();
    main.color = 0xFFFFFF;
    blend.Reset();
    tileMode = 0;
    tilePattern = 0;
    tileSizeX = 0;
    tileSizeY = 0;
    rotation = 0;
    offset = CVxDPoint();
    jointWidth = 0;
    jointColor = defaultJointColor;
    flags = 0;
    tileName.Empty();
    m_tileCache.Reset();
}

bool CVxAppearance::operator==(const CVxAppearance& other) const
{
    if (main != other.main || blend != other.blend || tileMode != other.tileMode)
        return false;
    // A stretched surface ignores its tiling fields, however they are set.
    if (tileMode == 0)
        return true;
    return tilePattern == other.tilePattern && SameDouble(tileSizeX, other.tileSizeX) &&
           SameDouble(tileSizeY, other.tileSizeY) && rotation == other.rotation &&
           SameDouble(jointWidth, other.jointWidth) && offset == other.offset &&
           jointColor == other.jointColor;
}

CVxStringW CVxAppearance::SaveToString(CVxIniWriter* writer) const
{
    // Built piece by piece into one string: every part of a project writes
    // two of these.
    CVxStringW text = RelativePath(main.texture, writer);
    std::wstring& out = text.Std();
    out.reserve(out.size() + 160);
    out += L'|';
    out += RelativePath(blend.texture, writer).Std();
    out += L'|';
    for (int integer : {kind, tileMode, tilePattern, rotation, -1}) {
        AppendInteger(out, integer);
        out += L'|';
    }
    for (double number : {tileSizeX, tileSizeY, jointWidth, offset.x, offset.y}) {
        out += DblSaveW(number).Std();
        out += L'|';
    }
    out += L"0|";
    out += ColorToken(main.color).Std();
    out += L"|0xFFFFFF|0xFFFFFF|";
    out += ColorToken(blend.color).Std();
    out += L'|';
    out += ColorToken(jointColor).Std();
    out += L'|';
    for (int integer : {flags, main.transparency, blend.transparency}) {
        AppendInteger(out, integer);
        out += L'|';
    }
    out += tileName.Std();
    return text;
}

bool CVxAppearance::LoadFromString(const CVxStringW& text, CVxIniFileReader* reader)
{
    Reset();
    CVxStringTokenizer tokenizer(text, L'|');
    int index = 0;
    CVxStringW token;
    while (tokenizer.IsNextToken() && index < stringTokenCount) {
        tokenizer.GetNextToken(token);
        switch (index) {
        case 0:
            main.texture = AbsolutePath(token, reader);
            break;
        case 1:
            blend.texture = AbsolutePath(token, reader);
            break;
        case 2:
            ReadInt(token, kind);
            break;
        case 3:
            ReadInt(token, tileMode);
            break;
        case 4:
            ReadInt(token, tilePattern);
            break;
        case 5:
            ReadInt(token, rotation);
            break;
        case 7:
            ReadDouble(token, tileSizeX);
            break;
        case 8:
            ReadDouble(token, tileSizeY);
            break;
        case 9:
            ReadDouble(token, jointWidth);
            break;
        case 10:
            ReadDouble(token, offset.x);
            break;
        case 11:
            ReadDouble(token, offset.y);
            break;
        case 13:
            ReadColor(token, main.color);
            break;
        case 16:
            ReadColor(token, blend.color);
            break;
        case 17:
            ReadColor(token, jointColor);
            break;
        case 18:
            ReadInt(token, flags);
            break;
        case 19:
            ReadInt(token, main.transparency);
            break;
        case 20:
            ReadInt(token, blend.transparency);
            break;
        case 21:
            tileName = token;
            break;
        default:
            // Reserved fields and the old colour fields are not read.
            break;
        }
        ++index;
    }
    if (reader && reader->GetProjectVersion() > 0 && reader->GetProjectVersion() < versionWithTileFlags &&
        !main.texture.IsEmpty() && tileMode == 0)
        flags = flagRealTileSize;
    return true;
}

void CVxAppearance::Scale(double sx, double sy)
{
    tileSizeX *= sx;
    tileSizeY *= sy;
    offset.x *= sx;
    offset.y *= sy;
    jointWidth *= sx;
    m_tileCache.Reset();
}

bool CVxAppearance::HasUndefMember() const
{
    return main.HasUndefMember() || blend.HasUndefMember() || kind == undefInt || tileMode == undefInt ||
           tilePattern == undefInt || rotation == undefInt || flags == undefInt || tileSizeX == undefDouble ||
           tileSizeY == undefDouble || jointWidth == undefDouble || offset.x == undefDouble ||
           offset.y == undefDouble || jointColor == clrUndefined || tileName == CVxMaterial::UndefTexture();
}

namespace {

template <typename T>
void UndefIfDiffers(T& field, const T& other, const T& undef)
{
    if (field != other)
        field = undef;
}

template <typename T>
void CopyIfDefined(const T& field, T& target, const T& undef)
{
    if (field != undef)
        target = field;
}

} // namespace

void CVxAppearance::CheckDiffToUndef(const CVxAppearance& other)
{
    main.CheckDiffToUndef(other.main);
    blend.CheckDiffToUndef(other.blend);
    UndefIfDiffers(kind, other.kind, undefInt);
    UndefIfDiffers(tileMode, other.tileMode, undefInt);
    UndefIfDiffers(tilePattern, other.tilePattern, undefInt);
    UndefIfDiffers(rotation, other.rotation, undefInt);
    UndefIfDiffers(flags, other.flags, undefInt);
    if (!SameDouble(tileSizeX, other.tileSizeX))
        tileSizeX = undefDouble;
    if (!SameDouble(tileSizeY, other.tileSizeY))
        tileSizeY = undefDouble;
    if (!SameDouble(jointWidth, other.jointWidth))
        jointWidth = undefDouble;
    if (!SameDouble(offset.x, other.offset.x))
        offset.x = undefDouble;
    if (!SameDouble(offset.y, other.offset.y))
        offset.y = undefDouble;
    UndefIfDiffers(jointColor, other.jointColor, clrUndefined);
    UndefIfDiffers(tileName, other.tileName, CVxStringW(CVxMaterial::UndefTexture()));
    m_tileCache.Reset();
}

void CVxAppearance::CopySkipUndef(CVxAppearance& target) const
{
    main.CopySkipUndef(target.main);
    blend.CopySkipUndef(target.blend);
    CopyIfDefined(kind, target.kind, undefInt);
    CopyIfDefined(tileMode, target.tileMode, undefInt);
    CopyIfDefined(tilePattern, target.tilePattern, undefInt);
    CopyIfDefined(rotation, target.rotation, undefInt);
    CopyIfDefined(flags, target.flags, undefInt);
    CopyIfDefined(tileSizeX, target.tileSizeX, undefDouble);
    CopyIfDefined(tileSizeY, target.tileSizeY, undefDouble);
    CopyIfDefined(jointWidth, target.jointWidth, undefDouble);
    CopyIfDefined(offset.x, target.offset.x, undefDouble);
    CopyIfDefined(offset.y, target.offset.y, undefDouble);
    CopyIfDefined(jointColor, target.jointColor, clrUndefined);
    CopyIfDefined(tileName, target.tileName, CVxStringW(CVxMaterial::UndefTexture()));
    target.m_tileCache.Reset();
}

CVxStringW CVxAppearance::GetTileKey() const
{
    // Everything that changes the generated picture, and nothing else.
    CVxStringW key;
    key.sprintf(L"t%d;%d;%08X;%08X;%08X;", tileMode, tilePattern, main.color, blend.color, jointColor);
    key += DblSaveW(tileSizeX) + L";" + DblSaveW(tileSizeY) + L";" + DblSaveW(jointWidth) + L";";
    key += main.texture;
    key += L";";
    key += tileName;
    return key;
}

CVxPicBuf* CVxAppearance::GetTextureImage(bool& release, bool forPreview) const
{
    release = false;
    if (!main.HasTexture())
        return nullptr;
    CVxPicBuf* picture = CVxPictureLoadCache::GetPicture(main.texture);
    if (!picture)
        return nullptr;
    release = true;
    constexpr int previewSize = 256;
    if (forPreview && (picture->GetWidth() > previewSize || picture->GetHeight() > previewSize)) {
        auto* preview = new CVxPicBuf(picture->GetQImage().scaled(
            previewSize, previewSize, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        CVxPictureLoadCache::ReleasePicture(picture);
        return preview;
    }
    return picture;
}

void CVxAppearance::SaveAsTileCacheImage(CVxPicBuf* picture)
{
    m_tileCache.Reset(picture);
}

CVxStringW CVxAppearance::GetTextureFileURL() const
{
    if (!main.HasTexture())
        return CVxStringW();
    if (main.texture.Find(L"://") > 0)
        return main.texture;
    return CVxStringW(QUrl::fromLocalFile(main.texture.ToQString()).toString());
}

void CVxAppearance::ClearTileCacheImage(bool release)
{
    if (release)
        m_tileCache.Reset();
    else
        m_tileCache.Detach();
}

CVxAppearance::CVxPicRef::CVxPicRef(const CVxPicRef& other) : m_picture(other.m_picture)
{
    if (m_picture)
        m_picture->AddRef();
}

CVxAppearance::CVxPicRef& CVxAppearance::CVxPicRef::operator=(const CVxPicRef& other)
{
    Reset(other.m_picture);
    return *this;
}

CVxAppearance::CVxPicRef::~CVxPicRef()
{
    Reset();
}

void CVxAppearance::CVxPicRef::Reset(CVxPicBuf* picture)
{
    // The new reference first: picture may be the one held.
    if (picture)
        picture->AddRef();
    if (m_picture)
        m_picture->Release();
    m_picture = picture;
}
