#pragma once
// Picture files in memory, shared by path: a texture used by a hundred walls
// is read once. A picture stays while a user holds it; a picture no one
// holds stays until a drawing pass ends in which nothing drew it.
//
// A drawing pass calls ResetDrawnFlags at its start and RemovePicturesNotDrawn
// at its end; GetPicture marks a picture as drawn in the current pass.

#include "CVxStringW.h"

class CVxPicBuf;

class CVxPictureLoadCache
{
public:
    // The picture of the file with one reference for the caller, who gives it
    // back with ReleasePicture; null when the file can't be read. The path is
    // made absolute and clean, so two spellings of one file share a picture.
    static CVxPicBuf* GetPicture(const CVxStringW& path);
    // Gives back a reference from GetPicture. When it was the last user's and
    // the picture was not drawn in the current pass, it leaves memory at once.
    // A picture that the cache does not know is simply released.
    static void ReleasePicture(CVxPicBuf* picture);

    // Marks a picture that a user keeps across passes as drawn in this one.
    static void MarkDrawn(const CVxPicBuf* picture);
    static void ResetDrawnFlags();
    // Pictures that no user holds and that were not drawn since the last
    // ResetDrawnFlags leave memory.
    static void RemovePicturesNotDrawn();

    static bool IsLoaded(const CVxStringW& path);
    static int GetCount();
    // Drops the cache's hold on every picture; pictures still held by users
    // live on, unshared.
    static void Clear();

    static CVxStringW NormalizePath(const CVxStringW& path);
};
