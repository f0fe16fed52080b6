#include "CVxPicBuf.h"

#include "VxReferencedFile.h"

#include <QImageReader>
#include <QString>

#include <algorithm>

namespace {

// Resized copies kept per picture: enough for a texture seen at the plan's
// zoom, in a thumbnail and in a preview at once.
constexpr size_t maxSizedCopies = 4;

QImage::Format FormatFor(int components)
{
    switch (components) {
    case 1:
        return QImage::Format_Grayscale8;
    case 3:
        return QImage::Format_RGB888;
    case 4:
        return QImage::Format_RGBA8888;
    default:
        return QImage::Format_Invalid;
    }
}

int ComponentsOf(const QImage& image)
{
    switch (image.format()) {
    case QImage::Format_Grayscale8:
    case QImage::Format_Grayscale16:
        return 1;
    case QImage::Format_Mono:
    case QImage::Format_MonoLSB:
    case QImage::Format_Indexed8:
        if (image.isGrayscale() && !image.hasAlphaChannel())
            return 1;
        break;
    default:
        break;
    }
    return image.hasAlphaChannel() ? 4 : 3;
}

} // namespace

CVxPicBuf::CVxPicBuf(int width, int height, int components)
{
    Create(width, height, components);
}

CVxPicBuf::~CVxPicBuf()
{
    DropDerived();
}

void CVxPicBuf::Release()
{
    if (--m_refCount <= 0)
        delete this;
}

bool CVxPicBuf::Create(int width, int height, int components)
{
    const QImage::Format format = FormatFor(components);
    if (width <= 0 || height <= 0 || format == QImage::Format_Invalid)
        return false;
    QImage image(width, height, format);
    if (image.isNull())
        return false;
    image.fill(0);
    DropDerived();
    m_shared = QImage();
    m_image = image;
    m_components = components;
    m_filePath.Empty();
    return true;
}

bool CVxPicBuf::CreateFromFile(const CVxStringW& path)
{
    // A project may name a FIFO or a device as its picture; reading one
    // would wait or never end.
    if (!VX_IsPlainFile(path))
        return false;
    QImageReader reader(path.ToQString());
    reader.setAutoTransform(true);
    QImage image = reader.read();
    if (image.isNull())
        return false;
    SetQImage(image);
    m_filePath = path;
    return true;
}

bool CVxPicBuf::CreateFromMemory(const unsigned char* data, size_t size)
{
    if (!data || size == 0)
        return false;
    QImage image = QImage::fromData(data, static_cast<int>(size));
    if (image.isNull())
        return false;
    SetQImage(image);
    return true;
}

bool CVxPicBuf::SaveToFile(const CVxStringW& path, int quality) const
{
    if (IsEmpty())
        return false;
    return m_image.save(path.ToQString(), nullptr, quality);
}

bool CVxPicBuf::GetFileDimensions(const CVxStringW& path, int& width, int& height)
{
    if (!VX_IsPlainFile(path))
        return false;
    QImageReader reader(path.ToQString());
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!size.isValid())
        return false;
    // A picture turned by its orientation tag shows with its sides swapped.
    if (reader.transformation() & QImageIOHandler::TransformationRotate90) {
        width = size.height();
        height = size.width();
    } else {
        width = size.width();
        height = size.height();
    }
    return true;
}

unsigned char* CVxPicBuf::GetRow(int y)
{
    if (y < 0 || y >= GetHeight())
        return nullptr;
    DropDerived();
    return m_image.scanLine(y);
}

const unsigned char* CVxPicBuf::GetRow(int y) const
{
    if (y < 0 || y >= GetHeight())
        return nullptr;
    return m_image.constScanLine(y);
}

unsigned CVxPicBuf::GetPixel(int x, int y, unsigned char* alpha) const
{
    if (alpha)
        *alpha = 0;
    if (x < 0 || x >= GetWidth() || y < 0 || y >= GetHeight())
        return 0;
    const unsigned char* p = m_image.constScanLine(y) + static_cast<ptrdiff_t>(x) * m_components;
    unsigned r = p[0];
    unsigned g = p[0];
    unsigned b = p[0];
    unsigned a = 255;
    if (m_components >= 3) {
        g = p[1];
        b = p[2];
    }
    if (m_components == 4)
        a = p[3];
    if (alpha)
        *alpha = static_cast<unsigned char>(a);
    return r | (g << 8) | (b << 16);
}

void CVxPicBuf::SetPixel(int x, int y, unsigned colour, unsigned char alpha)
{
    if (x < 0 || x >= GetWidth() || y < 0 || y >= GetHeight())
        return;
    unsigned char* p = GetRow(y) + static_cast<ptrdiff_t>(x) * m_components;
    const unsigned r = colour & 0xFF;
    const unsigned g = (colour >> 8) & 0xFF;
    const unsigned b = (colour >> 16) & 0xFF;
    if (m_components == 1) {
        p[0] = static_cast<unsigned char>((r + g + b) / 3);
        return;
    }
    p[0] = static_cast<unsigned char>(r);
    p[1] = static_cast<unsigned char>(g);
    p[2] = static_cast<unsigned char>(b);
    if (m_components == 4)
        p[3] = alpha;
}

void CVxPicBuf::Fill(unsigned colour, unsigned char alpha)
{
    if (IsEmpty())
        return;
    for (int x = 0; x < GetWidth(); ++x)
        SetPixel(x, 0, colour, alpha);
    const size_t rowBytes = static_cast<size_t>(GetWidth()) * static_cast<size_t>(m_components);
    const unsigned char* first = GetRow(0);
    for (int y = 1; y < GetHeight(); ++y)
        std::copy(first, first + rowBytes, GetRow(y));
}

CVxPicBuf* CVxPicBuf::CacheForSize(int width, int height, bool smooth)
{
    if (IsEmpty() || width <= 0 || height <= 0 || (width >= GetWidth() && height >= GetHeight()))
        return this;
    for (size_t i = 0; i < m_sized.size(); ++i) {
        if (m_sized[i].width == width && m_sized[i].height == height && m_sized[i].smooth == smooth) {
            const CVxSizedCopy hit = m_sized[i];
            m_sized.erase(m_sized.begin() + static_cast<ptrdiff_t>(i));
            m_sized.insert(m_sized.begin(), hit);
            return hit.copy;
        }
    }
    const QImage scaled = m_image.scaled(width, height, Qt::IgnoreAspectRatio,
                                         smooth ? Qt::SmoothTransformation : Qt::FastTransformation);
    auto* copy = new CVxPicBuf;
    copy->m_image = scaled.format() == m_image.format() ? scaled : scaled.convertToFormat(m_image.format());
    copy->m_components = m_components;
    copy->m_filePath = m_filePath;
    m_sized.insert(m_sized.begin(), CVxSizedCopy{width, height, smooth, copy});
    if (m_sized.size() > maxSizedCopies) {
        m_sized.back().copy->Release();
        m_sized.pop_back();
    }
    return copy;
}

CVxPicBuf* CVxPicBuf::CacheGrey()
{
    if (IsEmpty() || m_components == 1)
        return this;
    if (m_grey)
        return m_grey;
    auto* grey = new CVxPicBuf;
    grey->m_components = m_components == 4 ? 4 : 1;
    grey->m_image = QImage(GetWidth(), GetHeight(), FormatFor(grey->m_components));
    grey->m_filePath = m_filePath;
    for (int y = 0; y < GetHeight(); ++y) {
        const unsigned char* src = m_image.constScanLine(y);
        unsigned char* dst = grey->m_image.scanLine(y);
        for (int x = 0; x < GetWidth(); ++x, src += m_components) {
            // The plain mean, as grey drawing turns every pen and brush.
            const auto mean = static_cast<unsigned char>((src[0] + src[1] + src[2]) / 3);
            if (grey->m_components == 1) {
                *dst++ = mean;
                continue;
            }
            dst[0] = dst[1] = dst[2] = mean;
            dst[3] = src[3];
            dst += 4;
        }
    }
    m_grey = grey;
    return grey;
}

void CVxPicBuf::ClearCache()
{
    DropDerived();
}

CVxPicBuf* CVxPicBuf::CreateView(int x, int y, int width, int height) const
{
    if (IsEmpty())
        return nullptr;
    if (x < 0) {
        width += x;
        x = 0;
    }
    if (y < 0) {
        height += y;
        y = 0;
    }
    width = std::min(width, GetWidth() - x);
    height = std::min(height, GetHeight() - y);
    if (width <= 0 || height <= 0)
        return nullptr;
    auto* view = new CVxPicBuf;
    // Holding the source image keeps the shared pixels alive; should the
    // source be written later, it detaches and the view keeps what it showed.
    view->m_shared = m_image;
    const uchar* origin = view->m_shared.constBits() + static_cast<ptrdiff_t>(y) * m_image.bytesPerLine() +
                          static_cast<ptrdiff_t>(x) * m_components;
    view->m_image = QImage(origin, width, height, m_image.bytesPerLine(), m_image.format());
    view->m_components = m_components;
    view->m_filePath = m_filePath;
    return view;
}

CVxPicBuf* CVxPicBuf::Clone() const
{
    auto* copy = new CVxPicBuf;
    copy->m_image = m_image.copy();
    copy->m_components = m_components;
    copy->m_filePath = m_filePath;
    return copy;
}

void CVxPicBuf::SetQImage(const QImage& image)
{
    DropDerived();
    m_shared = QImage();
    m_filePath.Empty();
    if (image.isNull()) {
        m_image = QImage();
        m_components = 0;
        return;
    }
    m_components = ComponentsOf(image);
    const QImage::Format format = FormatFor(m_components);
    m_image = image.format() == format ? image : image.convertToFormat(format);
}

const QImage& CVxPicBuf::GetDrawImage() const
{
    if (m_drawImage.isNull() && !m_image.isNull()) {
        m_drawImage = m_image.convertToFormat(m_components == 4 ? QImage::Format_ARGB32_Premultiplied
                                                                : QImage::Format_RGB32);
    }
    return m_drawImage;
}

void CVxPicBuf::DropDerived()
{
    for (CVxSizedCopy& sized : m_sized)
        sized.copy->Release();
    m_sized.clear();
    if (m_grey) {
        m_grey->Release();
        m_grey = nullptr;
    }
    m_drawImage = QImage();
}
