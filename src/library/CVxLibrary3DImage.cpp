#include "CVxLibrary3DImage.h"

#include "CVxPicBuf.h"

CVxLibrary3DImage::~CVxLibrary3DImage()
{
    if (m_picture)
        m_picture->Release();
}

bool CVxLibrary3DImage::LoadPngImage(const CVxStringW& path)
{
    if (m_picture)
        m_picture->Release();
    m_picture = nullptr;
    m_name = path;
    auto* picture = new CVxPicBuf;
    if (path.IsEmpty() || !picture->CreateFromFile(path) || picture->IsEmpty()) {
        picture->Release();
        return false;
    }
    m_picture = picture;
    return true;
}
