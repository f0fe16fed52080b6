#include "CVxPictureLoadCache.h"

#include "CVxPicBuf.h"

#include <QDir>
#include <QFileInfo>

#include <vector>

namespace {

struct CVxLoadedPicture
{
    CVxStringW path;
    // The cache holds one reference of its own; every user holds another.
    CVxPicBuf* picture = nullptr;
    bool drawn = false;
};

// Few distinct files are in use at once (the textures of one project), so a
// plain list is searched faster than it is hashed.
std::vector<CVxLoadedPicture>& Pictures()
{
    static std::vector<CVxLoadedPicture> pictures;
    return pictures;
}

CVxLoadedPicture* FindByPicture(const CVxPicBuf* picture)
{
    for (CVxLoadedPicture& entry : Pictures()) {
        if (entry.picture == picture)
            return &entry;
    }
    return nullptr;
}

CVxLoadedPicture* FindByPath(const CVxStringW& path)
{
    for (CVxLoadedPicture& entry : Pictures()) {
        if (entry.path == path)
            return &entry;
    }
    return nullptr;
}

void Drop(CVxLoadedPicture* entry)
{
    std::vector<CVxLoadedPicture>& pictures = Pictures();
    CVxPicBuf* picture = entry->picture;
    pictures.erase(pictures.begin() + (entry - pictures.data()));
    picture->Release();
}

} // namespace

CVxStringW CVxPictureLoadCache::NormalizePath(const CVxStringW& path)
{
    if (path.IsEmpty())
        return path;
    return CVxStringW(QDir::cleanPath(QFileInfo(path.ToQString()).absoluteFilePath()));
}

CVxPicBuf* CVxPictureLoadCache::GetPicture(const CVxStringW& path)
{
    const CVxStringW key = NormalizePath(path);
    if (key.IsEmpty())
        return nullptr;
    if (CVxLoadedPicture* entry = FindByPath(key)) {
        entry->drawn = true;
        entry->picture->AddRef();
        return entry->picture;
    }
    auto* picture = new CVxPicBuf;
    if (!picture->CreateFromFile(key)) {
        picture->Release();
        return nullptr;
    }
    picture->AddRef();
    Pictures().push_back(CVxLoadedPicture{key, picture, true});
    return picture;
}

void CVxPictureLoadCache::ReleasePicture(CVxPicBuf* picture)
{
    if (!picture)
        return;
    CVxLoadedPicture* entry = FindByPicture(picture);
    picture->Release();
    if (entry && !entry->drawn && picture->GetRefCount() == 1)
        Drop(entry);
}

void CVxPictureLoadCache::MarkDrawn(const CVxPicBuf* picture)
{
    if (CVxLoadedPicture* entry = FindByPicture(picture))
        entry->drawn = true;
}

void CVxPictureLoadCache::ResetDrawnFlags()
{
    for (CVxLoadedPicture& entry : Pictures())
        entry.drawn = false;
}

void CVxPictureLoadCache::RemovePicturesNotDrawn()
{
    std::vector<CVxLoadedPicture>& pictures = Pictures();
    for (size_t i = pictures.size(); i-- > 0;) {
        if (!pictures[i].drawn && pictures[i].picture->GetRefCount() == 1)
            Drop(&pictures[i]);
    }
}

bool CVxPictureLoadCache::IsLoaded(const CVxStringW& path)
{
    return FindByPath(NormalizePath(path)) != nullptr;
}

int CVxPictureLoadCache::GetCount()
{
    return static_cast<int>(Pictures().size());
}

void CVxPictureLoadCache::Clear()
{
    std::vector<CVxLoadedPicture> pictures;
    pictures.swap(Pictures());
    for (CVxLoadedPicture& entry : pictures)
        entry.picture->Release();
}
