#include "CVxQtDC.h"

#include "CVxPicBuf.h"
#include "VxAngle.h"
#include "VxColorWord.h"

#include <QFont>
#include <QFontMetrics>
#include <QLinearGradient>
#include <QPaintDevice>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace {

// All pen widths and hatch spacings are chosen for this screen resolution.
constexpr int referenceDpi = 112;

QColor ToQColor(unsigned colour, unsigned char alpha = 255)
{
    return QColor(static_cast<int>(VX_GetRValue(colour)), static_cast<int>(VX_GetGValue(colour)),
                  static_cast<int>(VX_GetBValue(colour)), alpha);
}

unsigned FromQColor(const QColor& colour)
{
    return VX_RGB(static_cast<unsigned>(colour.red()), static_cast<unsigned>(colour.green()),
                  static_cast<unsigned>(colour.blue()));
}

Qt::PenStyle ToQtPenStyle(int style)
{
    switch (style & CVxDC::penStyleMask) {
    case CVxDC::penDash:
        return Qt::DashLine;
    case CVxDC::penDot:
        return Qt::DotLine;
    case CVxDC::penDashDot:
        return Qt::DashDotLine;
    case CVxDC::penDashDotDot:
        return Qt::DashDotDotLine;
    case CVxDC::penNull:
        return Qt::NoPen;
    default:
        return Qt::SolidLine;
    }
}

Qt::BrushStyle ToQtHatch(int hatch)
{
    static const Qt::BrushStyle hatches[] = {Qt::HorPattern,   Qt::VerPattern,   Qt::FDiagPattern,
                                             Qt::BDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};
    return hatches[std::clamp(hatch, 0, 5)];
}

QPointF Centre(int x, int y)
{
    return QPointF(x + 0.5, y + 0.5);
}

// The rectangle-based shapes: one pixel narrower and lower, so that the pen
// centred on the outline stays inside right and bottom.
QRectF ShapeRect(int left, int top, int right, int bottom)
{
    return QRectF(left + 0.5, top + 0.5, right - left - 1, bottom - top - 1);
}

bool IsUnsetAngle(double angle)
{
    return angle == -19182.0 || angle == -19181.0;
}

} // namespace

CVxQtDC::CVxQtDC(QPainter* painter, bool highQuality, bool grey) : CVxDC(highQuality), m_painter(painter)
{
    if (grey)
        m_colorMode = colorModeGrey;
    InitPainter();
}

CVxQtDC::CVxQtDC(int width, int height, bool highQuality) : CVxDC(highQuality)
{
    m_ownImage = std::make_unique<QImage>(std::max(1, width), std::max(1, height),
                                          QImage::Format_ARGB32_Premultiplied);
    m_ownImage->fill(Qt::transparent);
    m_painter = new QPainter(m_ownImage.get());
    m_ownsPainter = true;
    InitPainter();
}

CVxQtDC::~CVxQtDC()
{
    ClearOldPensAndBrushes();
    m_path.reset();
    if (m_ownsPainter) {
        m_painter->end();
        delete m_painter;
    }
}

void CVxQtDC::InitPainter()
{
    if (!m_painter || !m_painter->isActive())
        return;
    m_painter->setRenderHint(QPainter::Antialiasing, true);
    m_painter->setRenderHint(QPainter::TextAntialiasing, true);
    m_painter->setRenderHint(QPainter::SmoothPixmapTransform, true);
    m_smoothing = true;
}

bool CVxQtDC::CanTakeSprites() const
{
    if (!m_painter || !m_painter->isActive() || m_path || IsPrinting())
        return false;
    const QPaintDevice* device = m_painter->device();
    if (!device || device->devicePixelRatioF() != 1.0)
        return false;
    const int type = device->devType();
    if (type != QInternal::Image && type != QInternal::Widget && type != QInternal::Pixmap)
        return false;
    return m_painter->transform().isIdentity() && m_painter->opacity() == 1.0 &&
           m_painter->compositionMode() == QPainter::CompositionMode_SourceOver;
}

void CVxQtDC::DrawSprite(const QImage& image, int x, int y)
{
    m_painter->drawImage(QPoint(x, y), image);
}

void CVxQtDC::RestoreAfterReplay(int bkMode, unsigned bkColor, bool smoothing)
{
    SetBkMode(bkMode);
    if (smoothing != m_smoothing)
        EnableSmoothing(smoothing);
    if (GetBkColor() != bkColor)
        m_painter->setBackground(QBrush(ToQColor(bkColor, 255)));
}

int CVxQtDC::GetDPI()
{
    const QPaintDevice* device = m_painter ? m_painter->device() : nullptr;
    return device ? device->logicalDpiY() : 96;
}

bool CVxQtDC::EnableSmoothing(bool enable)
{
    const bool old = m_smoothing;
    m_smoothing = enable;
    m_painter->setRenderHint(QPainter::Antialiasing, enable);
    return old;
}

bool CVxQtDC::SetInterpolationQuality(bool smooth)
{
    const bool old = m_painter->testRenderHint(QPainter::SmoothPixmapTransform);
    m_painter->setRenderHint(QPainter::SmoothPixmapTransform, smooth);
    return old;
}

void CVxQtDC::SelectGradientBrush(unsigned colour1, unsigned colour2, double angle, VxRECT& rect)
{
    colour1 = C2G(colour1);
    colour2 = C2G(colour2);
    const double cx = (rect.left + rect.right) / 2.0;
    const double cy = (rect.top + rect.bottom) / 2.0;
    const double a = angle * M_PI / 180.0;
    const double c = std::cos(a);
    const double s = std::sin(a);
    // Turn the rectangle so that the gradient runs along x, take the box
    // around it, and turn the box's top edge back: its ends are where the
    // two colours stand, so both colours reach the rectangle's far corners.
    const double corners[4][2] = {{rect.left - cx, rect.top - cy},
                                  {rect.right - cx, rect.top - cy},
                                  {rect.right - cx, rect.bottom - cy},
                                  {rect.left - cx, rect.bottom - cy}};
    double minX = 0;
    double maxX = 0;
    double minY = 0;
    for (int i = 0; i < 4; ++i) {
        const double x = corners[i][0] * c + corners[i][1] * s;
        const double y = -corners[i][0] * s + corners[i][1] * c;
        minX = i == 0 ? x : std::min(minX, x);
        maxX = i == 0 ? x : std::max(maxX, x);
        minY = i == 0 ? y : std::min(minY, y);
    }
    const QPointF start(cx + minX * c - minY * s, cy + minX * s + minY * c);
    const QPointF end(cx + maxX * c - minY * s, cy + maxX * s + minY * c);
    QLinearGradient gradient(start, end);
    gradient.setColorAt(0.0, ToQColor(colour1));
    gradient.setColorAt(1.0, ToQColor(colour2));
    m_painter->setBrush(QBrush(gradient));
    CVxDC::SelectGradientBrush(colour1, colour2, angle, rect);
}

void CVxQtDC::SelectTextureBrush(double scale, double angle, int offsetX, int offsetY, CVxPicBuf* picture)
{
    if (!picture || picture->IsEmpty() || scale <= 0) {
        SelectBrush_int(brushSolid, 0xC0C0C0, 0, 255);
        CVxDC::SelectTextureBrush(scale, angle, offsetX, offsetY, picture);
        return;
    }
    const int width = static_cast<int>(picture->GetWidth() * scale + 1.5);
    const int height = static_cast<int>(picture->GetHeight() * scale + 1.5);
    CVxPicBuf* copy = picture->CacheForSize(width, height, true);
    double remaining = scale;
    if (copy != picture)
        remaining = picture->GetWidth() * scale / copy->GetWidth();
    if (m_colorMode == colorModeGrey && copy->GetComponents() > 2)
        copy = copy->CacheGrey();
    QBrush brush(copy->GetDrawImage());
    QTransform transform;
    if (offsetX != 0 || offsetY != 0)
        transform.translate(offsetX, offsetY);
    if (std::fabs(angle) >= 1e-7)
        transform.rotate(angle);
    transform.scale(remaining, remaining);
    brush.setTransform(transform);
    m_painter->setBrush(brush);
    CVxDC::SelectTextureBrush(scale, angle, offsetX, offsetY, picture);
}

int CVxQtDC::GetBkMode()
{
    return m_painter->backgroundMode() == Qt::OpaqueMode ? bkOpaque : bkTransparent;
}

int CVxQtDC::SetBkMode(int mode)
{
    const int old = GetBkMode();
    if (mode == bkTransparent)
        m_painter->setBackgroundMode(Qt::TransparentMode);
    else if (mode == bkOpaque)
        m_painter->setBackgroundMode(Qt::OpaqueMode);
    return old;
}

unsigned CVxQtDC::GetBkColor()
{
    return FromQColor(m_painter->background().color());
}

unsigned CVxQtDC::SetBkColor(unsigned colour, unsigned char alpha)
{
    const unsigned old = GetBkColor();
    m_painter->setBackground(QBrush(ToQColor(C2G(colour), alpha)));
    return old;
}

void CVxQtDC::SelectPen_int(int style, int width, unsigned colour, unsigned char alpha)
{
    width = std::max(1, width);
    if (IsPrinting() && (style & penKeepWidth) == 0)
        width = std::max(1, width * GetDPI() / referenceDpi);
    const Qt::PenStyle penStyle = ToQtPenStyle(style);
    QPen pen(ToQColor(colour, alpha), width, penStyle);
    if (penStyle != Qt::SolidLine) {
        pen.setCapStyle(Qt::FlatCap);
        pen.setJoinStyle(Qt::MiterJoin);
    } else if (width > 1) {
        // Thick outlines of walls and objects meet round, as on the screen of
        // the classic device API.
        pen.setCapStyle(Qt::RoundCap);
        pen.setJoinStyle(Qt::RoundJoin);
    } else {
        pen.setCapStyle(Qt::SquareCap);
        pen.setJoinStyle(Qt::MiterJoin);
        // Pens of one pixel take the painter's fast hairline path, many times
        // cheaper than the general stroker. Its closed outlines leave each
        // corner pixel three quarters covered, which is why upright
        // rectangles draw their frames as four strips instead.
    }
    m_painter->setPen(pen);
}

void CVxQtDC::SelectBrush_int(int style, unsigned colour, int hatch, unsigned char alpha)
{
    const QColor qcolour = ToQColor(colour, alpha);
    if (style == brushNull) {
        m_painter->setBrush(Qt::NoBrush);
        return;
    }
    if (style != brushHatched) {
        m_painter->setBrush(QBrush(qcolour));
        return;
    }
    const QBrush pattern(qcolour, ToQtHatch(hatch));
    if (!IsPrinting()) {
        m_painter->setBrush(pattern);
        return;
    }
    // At printer resolution the eight-pixel pattern would shrink to a grey
    // tone; a tile of it scaled to the device keeps the hatch spacing that
    // the screen shows.
    QImage tile(128, 128, QImage::Format_ARGB32_Premultiplied);
    tile.fill(Qt::transparent);
    {
        QPainter tilePainter(&tile);
        // A texture brush knows no background mode, so a two-colour hatch
        // takes its background into the tile.
        if (m_painter->backgroundMode() == Qt::OpaqueMode)
            tilePainter.fillRect(tile.rect(), m_painter->background());
        tilePainter.fillRect(tile.rect(), pattern);
    }
    QBrush brush(tile);
    const double factor = static_cast<double>(GetDPI()) / referenceDpi;
    brush.setTransform(QTransform::fromScale(factor, factor));
    m_painter->setBrush(brush);
}

void CVxQtDC::SelectFont_int(const CVxFont& font)
{
    QFont qfont(font.m_name.ToQString(), std::max(1, static_cast<int>(font.m_size)), font.m_bold ? 700 : 400,
                font.m_italic);
    qfont.setStrikeOut(font.m_strikeout);
    qfont.setUnderline(font.m_underline);
    qfont.setStyleStrategy(m_highQuality ? QFont::PreferAntialias : QFont::PreferDefault);
    if (font.m_rotation != 0.0)
        qfont.setHintingPreference(QFont::PreferNoHinting);
    if (m_fontResolution > 0)
        qfont.setPixelSize(std::max(1, static_cast<int>(m_fontResolution * font.m_size / 72.0)));
    m_fontRotation = font.m_rotation;
    m_painter->setFont(qfont);
}

QPainterPath& CVxQtDC::PathFromCurrent()
{
    if (m_path->elementCount() == 0)
        m_path->moveTo(Centre(m_current.x, m_current.y));
    return *m_path;
}

QPointF* CVxQtDC::CentredPoints(const VxPOINT* points, int count)
{
    if (m_points.size() < static_cast<size_t>(count))
        m_points.resize(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        m_points[static_cast<size_t>(i)] = Centre(points[i].x, points[i].y);
    return m_points.data();
}

void CVxQtDC::Line(int x1, int y1, int x2, int y2)
{
    if (m_path) {
        m_path->moveTo(Centre(x1, y1));
        m_path->lineTo(Centre(x2, y2));
    } else {
        m_painter->drawLine(Centre(x1, y1), Centre(x2, y2));
    }
    m_current = VxPOINT{x2, y2};
}

void CVxQtDC::MoveTo(int x, int y)
{
    if (m_path)
        m_path->moveTo(Centre(x, y));
    m_current = VxPOINT{x, y};
}

void CVxQtDC::LineTo(int x, int y)
{
    if (m_path)
        PathFromCurrent().lineTo(Centre(x, y));
    else
        m_painter->drawLine(Centre(m_current.x, m_current.y), Centre(x, y));
    m_current = VxPOINT{x, y};
}

void CVxQtDC::Rectangle(int left, int top, int right, int bottom)
{
    if (left == -1 && top == -1 && right == -1 && bottom == -1)
        return;
    const QRectF rect = ShapeRect(left, top, right, bottom);
    if (m_path)
        m_path->addRect(rect);
    else if (!FillFramedRect(left, top, right, bottom))
        m_painter->drawRect(rect);
}

bool CVxQtDC::FillFramedRect(int left, int top, int right, int bottom)
{
    // An upright rectangle with a solid pen of one pixel is the frame of
    // pixels from left to right - 1 and top to bottom - 1, as the classic
    // device API draws it, corners included.
    const QPen& pen = m_painter->pen();
    const QBrush& brush = m_painter->brush();
    if (pen.style() != Qt::SolidLine || pen.widthF() != 1.0 || pen.brush().style() != Qt::SolidPattern ||
        (brush.style() != Qt::NoBrush && brush.style() != Qt::SolidPattern) ||
        !m_painter->transform().isIdentity())
        return false;
    const int width = right - left;
    const int height = bottom - top;
    if (width < 1 || height < 1)
        return false;
    const QColor colour = pen.color();
    if (width <= 2 || height <= 2) {
        m_painter->fillRect(QRect(left, top, width, height), colour);
        return true;
    }
    if (brush.style() == Qt::SolidPattern)
        m_painter->fillRect(QRect(left + 1, top + 1, width - 2, height - 2), brush.color());
    m_painter->fillRect(QRect(left, top, width, 1), colour);
    m_painter->fillRect(QRect(left, bottom - 1, width, 1), colour);
    m_painter->fillRect(QRect(left, top + 1, 1, height - 2), colour);
    m_painter->fillRect(QRect(right - 1, top + 1, 1, height - 2), colour);
    return true;
}

void CVxQtDC::RoundRect(int left, int top, int right, int bottom, int radius)
{
    m_painter->drawRoundedRect(ShapeRect(left, top, right, bottom), radius, radius);
}

void CVxQtDC::Ellipse(int left, int top, int right, int bottom)
{
    const QRectF rect = ShapeRect(left, top, right, bottom);
    if (m_path)
        m_path->addEllipse(rect);
    else
        m_painter->drawEllipse(rect);
}

void CVxQtDC::Pie(int left, int top, int right, int bottom, int, int, int, int, float startAngle,
                  float spanAngle)
{
    if (m_path)
        return;
    const QRectF rect(left, top, right - left - 1, bottom - top - 1);
    m_painter->drawPie(rect, static_cast<int>(-startAngle * 16), static_cast<int>(-spanAngle * 16));
}

void CVxQtDC::Arc(int left, int top, int right, int bottom, int, int, int, int, float startAngle,
                  float spanAngle)
{
    const QRectF rect = ShapeRect(left, top, right, bottom);
    if (!m_path) {
        m_painter->drawArc(rect, static_cast<int>(-startAngle * 16), static_cast<int>(-spanAngle * 16));
        return;
    }
    // In a path the arc joins what came before, so that a door's leaf and
    // swing close into one outline.
    if (m_path->elementCount() == 0)
        m_path->arcMoveTo(rect, startAngle);
    m_path->arcTo(rect, startAngle, spanAngle);
    const QPointF end = m_path->currentPosition();
    m_current = VxPOINT{static_cast<int32_t>(std::floor(end.x())), static_cast<int32_t>(std::floor(end.y()))};
}

int CVxQtDC::ThinOutline(QPointF* points, int count, const QRectF& visible)
{
    if (!points || count < thinOutlinesFrom)
        return count;
    // Edges beyond the visible part are cut away before the rasteriser
    // sees them; held to its border they count for no more than they cost.
    auto clamped = [&visible](const QPointF& p) {
        if (!visible.isValid())
            return p;
        return QPointF(std::clamp(p.x(), visible.left(), visible.right()),
                       std::clamp(p.y(), visible.top(), visible.bottom()));
    };
    double crossings = 0;
    QPointF previous = clamped(points[0]);
    for (int i = 1; i < count; ++i) {
        const QPointF next = clamped(points[i]);
        crossings += std::fabs(next.x() - previous.x()) + std::fabs(next.y() - previous.y());
        previous = next;
    }
    if (!(crossings > maxOutlineCrossings))
        return count;
    const int stride =
        static_cast<int>(std::min(std::ceil(crossings / maxOutlineCrossings), static_cast<double>(count)));
    int kept = 0;
    for (int i = 0; i < count; i += stride)
        points[kept++] = points[i];
    return kept;
}

void CVxQtDC::Polygon(const VxPOINT* points, int count)
{
    if (!points || count <= 0)
        return;
    QPointF* centred = CentredPoints(points, count);
    QRectF visible;
    if (m_painter->transform().isIdentity() && m_painter->device())
        visible = QRectF(0, 0, m_painter->device()->width(), m_painter->device()->height());
    count = ThinOutline(centred, count, visible);
    if (!m_path) {
        m_painter->drawPolygon(centred, count);
        return;
    }
    m_path->moveTo(centred[0]);
    for (int i = 1; i < count; ++i)
        m_path->lineTo(centred[i]);
    m_path->closeSubpath();
}

void CVxQtDC::Polyline(const VxPOINT* points, int count)
{
    if (!points || count <= 0)
        return;
    const QPointF* centred = CentredPoints(points, count);
    if (!m_path) {
        m_painter->drawPolyline(centred, count);
        return;
    }
    m_path->moveTo(centred[0]);
    for (int i = 1; i < count; ++i)
        m_path->lineTo(centred[i]);
}

void CVxQtDC::PolyBezier(const VxPOINT* points, int count)
{
    if (!points || count <= 0)
        return;
    QPainterPath curve;
    QPainterPath& path = m_path ? *m_path : curve;
    path.moveTo(Centre(points[0].x, points[0].y));
    for (int i = 1; i + 2 < count; i += 3) {
        path.cubicTo(Centre(points[i].x, points[i].y), Centre(points[i + 1].x, points[i + 1].y),
                     Centre(points[i + 2].x, points[i + 2].y));
    }
    if (!m_path && count >= 4)
        m_painter->strokePath(curve, m_painter->pen());
}

void CVxQtDC::PolyBezierTo(const VxPOINT* points, int count)
{
    if (!points || count < 3)
        return;
    QPainterPath curve(Centre(m_current.x, m_current.y));
    QPainterPath& path = m_path ? PathFromCurrent() : curve;
    for (int i = 0; i + 2 < count; i += 3) {
        path.cubicTo(Centre(points[i].x, points[i].y), Centre(points[i + 1].x, points[i + 1].y),
                     Centre(points[i + 2].x, points[i + 2].y));
        m_current = points[i + 2];
    }
    if (!m_path)
        m_painter->strokePath(curve, m_painter->pen());
}

void CVxQtDC::SetPixelV(int x, int y, unsigned colour)
{
    m_painter->fillRect(QRect(x, y, 1, 1), ToQColor(C2G(colour)));
}

int CVxQtDC::DrawText(const CVxStringW& text, VxRECT& rect, unsigned flags, unsigned colour, bool)
{
    const QRect box(QPoint(rect.left, rect.top), QPoint(rect.right - 2, rect.bottom - 2));
    int qflags = 0;
    if (flags & dtRight)
        qflags |= Qt::AlignRight;
    else if (flags & dtCenter)
        qflags |= Qt::AlignHCenter;
    else
        qflags |= Qt::AlignLeft;
    if (flags & dtBottom)
        qflags |= Qt::AlignBottom;
    else if (flags & dtVCenter)
        qflags |= Qt::AlignVCenter;
    else
        qflags |= Qt::AlignTop;
    if (flags & dtWordBreak)
        qflags |= Qt::TextWordWrap;
    if (flags & dtSingleLine)
        qflags |= Qt::TextSingleLine;
    if (flags & dtNoClip)
        qflags |= Qt::TextDontClip;
    const QString qtext = text.ToQString();
    if (flags & dtCalcRect) {
        const QRect needed = m_painter->boundingRect(box, qflags, qtext);
        VxSetRect(rect, needed.left(), needed.top(), needed.right() + 1, needed.bottom() + 1);
        return needed.height();
    }
    const QPen oldPen = m_painter->pen();
    m_painter->setPen(ToQColor(C2G(colour)));
    QRect drawn;
    m_painter->drawText(box, qflags, qtext, &drawn);
    m_painter->setPen(oldPen);
    return drawn.height();
}

void CVxQtDC::TextOut(const CVxStringW& text, int x, int y, unsigned flags, unsigned colour)
{
    const QPen oldPen = m_painter->pen();
    m_painter->setPen(ToQColor(C2G(colour)));
    const int height = m_painter->fontMetrics().height();
    int baseline = y + height / 3;
    if ((flags & taBaseline) == taBaseline)
        baseline = y;
    else if (flags & taBottom)
        baseline = y - height / 4;
    const bool rotated = m_fontRotation != 0.0;
    if (rotated) {
        m_painter->save();
        m_painter->translate(x, y);
        m_painter->rotate(m_fontRotation);
        m_painter->translate(-x, -y);
    }
    m_painter->drawText(QPoint(x, baseline), text.ToQString());
    if (rotated)
        m_painter->restore();
    m_painter->setPen(oldPen);
}

bool CVxQtDC::GetTextExtentPoint(const CVxStringW& text, VxSIZE& size)
{
    const QFontMetrics metrics = m_painter->fontMetrics();
    size.cx = metrics.horizontalAdvance(text.ToQString());
    size.cy = metrics.height();
    return true;
}

void CVxQtDC::BeginPath()
{
    m_path = std::make_unique<QPainterPath>();
}

void CVxQtDC::EndPath() {}

void CVxQtDC::StrokeAndFillPath()
{
    if (!m_path)
        return;
    const QPainterPath& path = *m_path;
    const int elements = path.elementCount();
    bool single = elements > 2;
    for (int i = 1; single && i < elements; ++i)
        single = !path.elementAt(i).isMoveTo();
    if (single && QPointF(path.elementAt(0)) == QPointF(path.elementAt(elements - 1))) {
        // One closed outline, the usual symbol part, is flattened once and
        // drawn as a polygon: filling and stroking a path would flatten its
        // curves twice and miss the painter's polygon path.
        m_painter->drawPolygon(path.toFillPolygon(), path.fillRule());
    } else {
        m_painter->drawPath(path);
    }
    m_path.reset();
}

void CVxQtDC::SetClipRect(const VxRECT& rect)
{
    m_painter->setClipRect(QRect(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top));
}

void CVxQtDC::ClearClipping()
{
    m_painter->setClipping(false);
}

void CVxQtDC::DrawPicture(int x, int y, int width, int height, double angle, CVxPicBuf* picture, bool smooth)
{
    if (!picture || picture->IsEmpty() || width <= 0 || height <= 0)
        return;
    // An unset angle (a mark, not a direction) draws the picture upright.
    angle = IsUnsetAngle(angle) ? 0.0 : VX_NormalizeAngle(angle);
    const bool previous = SetInterpolationQuality(smooth);
    CVxPicBuf* copy = picture->CacheForSize(width, height, smooth);
    if (m_colorMode == colorModeGrey && copy->GetComponents() > 2)
        copy = copy->CacheGrey();
    const QImage& image = copy->GetDrawImage();
    if (std::fabs(angle) < 1e-7) {
        m_painter->drawImage(QRect(x, y, width, height), image);
    } else {
        m_painter->save();
        m_painter->translate(x, y);
        m_painter->rotate(angle);
        m_painter->drawImage(QRect(0, 0, width, height), image);
        m_painter->restore();
    }
    SetInterpolationQuality(previous);
}

bool CVxQtDC::CopyToPicture(CVxPicBuf& picture) const
{
    if (!m_ownImage)
        return false;
    // The painter writes into the surface's memory without detaching it, so
    // the picture needs its own pixels.
    picture.SetQImage(m_ownImage->copy());
    return true;
}

bool CVxQtDC::LoadPicture(const CVxStringW& path, CVxPicBuf& picture)
{
    return picture.CreateFromFile(path);
}

bool CVxQtDC::SavePicture(const CVxStringW& path, const CVxPicBuf& picture, int quality)
{
    return picture.SaveToFile(path, quality);
}

bool CVxQtDC::GetPictureDimensions(const CVxStringW& path, int& width, int& height)
{
    return CVxPicBuf::GetFileDimensions(path, width, height);
}
