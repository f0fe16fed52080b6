#pragma once
// A picture in memory: textures of floors and walls, picture objects, plan
// pictures of 3D objects, floor scans, thumbnails.
//
// Pixels are rows of bytes, top row first, with 1 (grey), 3 (red, green, blue)
// or 4 (red, green, blue, alpha, not premultiplied) components per pixel.
// A buffer is shared by reference count: whoever keeps a pointer holds one
// reference; a new buffer starts with the creator's reference, and the last
// Release deletes it. A buffer on the stack is never released.

#include "CVxStringW.h"

#include <QImage>

#include <vector>

class CVxPicBuf
{
public:
    CVxPicBuf() = default;
    // A buffer of the given size, all bytes zero (transparent black).
    CVxPicBuf(int width, int height, int components);
    explicit CVxPicBuf(const QImage& image) { SetQImage(image); }
    ~CVxPicBuf();

    CVxPicBuf(const CVxPicBuf&) = delete;
    CVxPicBuf& operator=(const CVxPicBuf&) = delete;

    // Shared ownership. Release deletes the buffer when the count reaches zero.
    void AddRef() { ++m_refCount; }
    void Release();
    int GetRefCount() const { return m_refCount; }

    // Replaces the contents; components other than 1, 3 and 4 fail.
    bool Create(int width, int height, int components);
    // Reads any format that Qt reads (png, jpg, bmp, webp when the plug-in is
    // there). Grey files give 1 component, files without alpha 3, others 4.
    bool CreateFromFile(const CVxStringW& path);
    bool CreateFromMemory(const unsigned char* data, size_t size);
    // The format follows the extension; quality -1 is Qt's default.
    bool SaveToFile(const CVxStringW& path, int quality = -1) const;
    // Size of a picture file without reading its pixels.
    static bool GetFileDimensions(const CVxStringW& path, int& width, int& height);

    bool IsEmpty() const { return m_image.isNull(); }
    int GetWidth() const { return m_image.width(); }
    int GetHeight() const { return m_image.height(); }
    int GetComponents() const { return m_components; }
    // Bytes from one row to the next; may exceed width times components.
    int GetBytesPerLine() const { return static_cast<int>(m_image.bytesPerLine()); }
    // The path the pixels came from, when they came from a file.
    const CVxStringW& GetFilePath() const { return m_filePath; }

    // Writable access drops the cached copies, which would be stale.
    unsigned char* GetRow(int y);
    const unsigned char* GetRow(int y) const;
    unsigned char* GetBits() { return GetRow(0); }
    const unsigned char* GetBits() const { return GetRow(0); }

    // Pixel as a colour word 0x00BBGGRR and its alpha; out of range gives 0.
    unsigned GetPixel(int x, int y, unsigned char* alpha = nullptr) const;
    void SetPixel(int x, int y, unsigned colour, unsigned char alpha = 255);
    void Fill(unsigned colour, unsigned char alpha = 255);

    // A copy at the given size for drawing at one zoom. Copies are made only
    // to shrink: at the own size, at a larger size or at an empty size the
    // buffer itself comes back, and the painter scales it. The copy belongs to
    // this buffer and lives until the pixels change, the buffer dies or a few
    // other sizes have pushed it out; use it at once, do not release it.
    CVxPicBuf* CacheForSize(int width, int height, bool smooth);
    // A grey copy (alpha kept) for grey drawing, kept like the sized copies;
    // a buffer that is already grey returns itself.
    CVxPicBuf* CacheGrey();
    void ClearCache();

    // A new buffer (one reference, the caller's) showing the part at
    // (x, y) of size width by height, sharing the pixels as they are now.
    // The part is clipped to the picture; an empty part gives null.
    CVxPicBuf* CreateView(int x, int y, int width, int height) const;
    // A new buffer (one reference) with a deep copy of the pixels.
    CVxPicBuf* Clone() const;

    // The pixels as an image in the layout above (no copy of the pixels).
    const QImage& GetQImage() const { return m_image; }
    // Takes any image; it is converted to the nearest of the three layouts.
    void SetQImage(const QImage& image);
    // The image in a layout that the painter draws fastest, kept until the
    // pixels change.
    const QImage& GetDrawImage() const;

private:
    struct CVxSizedCopy
    {
        int width = 0;
        int height = 0;
        bool smooth = false;
        CVxPicBuf* copy = nullptr;
    };

    void DropDerived();

    QImage m_image;
    // For a view: the source image whose pixels m_image shows.
    QImage m_shared;
    int m_components = 0;
    int m_refCount = 1;
    CVxStringW m_filePath;
    std::vector<CVxSizedCopy> m_sized;
    CVxPicBuf* m_grey = nullptr;
    mutable QImage m_drawImage;
};
