#pragma once
// The plan picture of a 3D library object: what its model looks like from
// above, shown as the object's thumbnail instead of its plan symbol. The
// core keeps them by file name and loads each once.

#include "CVxStringW.h"

class CVxPicBuf;

class CVxLibrary3DImage
{
public:
    CVxLibrary3DImage() = default;
    ~CVxLibrary3DImage();
    CVxLibrary3DImage(const CVxLibrary3DImage&) = delete;
    CVxLibrary3DImage& operator=(const CVxLibrary3DImage&) = delete;

    // Loads the picture; false, with no picture, when the file is none.
    bool LoadPngImage(const CVxStringW& path);
    const CVxStringW& GetName() const { return m_name; }
    CVxPicBuf* GetPicture() const { return m_picture; }

private:
    CVxStringW m_name;
    // Owned: one reference.
    CVxPicBuf* m_picture = nullptr;
};
