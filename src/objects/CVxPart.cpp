#include "CVxPart.h"

#include "CVxFloor.h"
#include "CVxFont.h"
#include "CVxOptions.h"
#include "CVxPartPayload.h"
#include "CVxPicBuf.h"
#include "CVxPictureLoadCache.h"
#include "CVxProject.h"
#include "IVxAppHelperCallback.h"
#include "VxNumbers.h"

#include <algorithm>
#include <type_traits>
#include <utility>

namespace {
// Fixed defaults of what a file leaves out and what a save compares with
// when the part has no group.
constexpr unsigned kDefaultShininess = 20;
// A cell that the table makes for itself: a text without text and no fill.
constexpr double kNewCellSize = 0.0001;
constexpr unsigned kNewCellFill = 0xEFFFFFFFu;
} // namespace

CVxPart::CVxPart()
{
    Reset();
}

CVxPart::CVxPart(const CVxPart& other) : IVxReadIniClient(other)
{
    CopyFrom(other);
}

CVxPart::CVxPart(CVxPart&& other) noexcept
{
    // Nothing is owned yet; the assignment sets every field.
    *this = std::move(other);
}

CVxPart& CVxPart::operator=(const CVxPart& other)
{
    if (this != &other) {
        // The source may be one of our own members: copy before freeing.
        CVxPart copy(other);
        *this = std::move(copy);
    }
    return *this;
}

CVxPart& CVxPart::operator=(CVxPart&& other) noexcept
{
    if (this == &other)
        return *this;
    ReleaseOwned();
    // The members change hands last: the source may be one of them.
    std::vector<CVxPart> members = std::move(other.subParts);
    other.subParts.clear();
    AssignFields(std::move(other));
    subParts = std::move(members);
    return *this;
}

CVxPart::~CVxPart()
{
    ReleaseOwned();
}

void CVxPart::ReleaseOwned()
{
    delete font;
    font = nullptr;
    delete payload;
    payload = nullptr;
    if (picture)
        CVxPictureLoadCache::ReleasePicture(picture);
    picture = nullptr;
    if (thumb)
        CVxPictureLoadCache::ReleasePicture(thumb);
    thumb = nullptr;
}

// Member-wise copy of everything but the owned pointers, which are
// duplicated; assumes nothing is owned yet.
void CVxPart::CopyFrom(const CVxPart& other)
{
    AssignFields(other);
}

// Every field from `o`: copied from a part that stays, taken over from one
// that goes, strings and members included, so that parts move through the
// loaders' vectors without copying their texts. Assumes nothing is owned yet.
template <typename Source>
void CVxPart::AssignFields(Source&& o)
{
    constexpr bool take = !std::is_lvalue_reference_v<Source>;
    const auto pass = [](auto& field) -> decltype(auto) {
        if constexpr (take)
            return std::move(field);
        else
            return std::as_const(field);
    };
    x = o.x;
    y = o.y;
    z = o.z;
    width = o.width;
    height = o.height;
    zHeight = o.zHeight;
    rotation = o.rotation;
    rotation3D = o.rotation3D;
    angle = o.angle;
    caption = pass(o.caption);
    lineColor = o.lineColor;
    textColor = o.textColor;
    appearFill = pass(o.appearFill);
    appearFront = pass(o.appearFront);
    overlayTexture = pass(o.overlayTexture);
    frontColorEnable = o.frontColorEnable;
    emissive = o.emissive;
    specular = o.specular;
    shininess = o.shininess;
    lineStyle = o.lineStyle;
    lineEnds = o.lineEnds;
    lineThick = o.lineThick;
    fillStyle = o.fillStyle;
    inUse = o.inUse;
    type = o.type;
    subType = o.subType;
    handleType = o.handleType;
    doorframe = o.doorframe;
    thickness = o.thickness;
    snapToWall = o.snapToWall;
    opened = o.opened;
    if constexpr (take)
        font = std::exchange(o.font, nullptr);
    else
        font = o.font ? new CVxFont(*o.font) : nullptr;
    layer = o.layer;
    snapWall = o.snapWall;
    snapWallSide = o.snapWallSide;
    snapRegion = o.snapRegion;
    wallRotation = o.wallRotation;
    locked = o.locked;
    unlockPassword = pass(o.unlockPassword);
    selected = o.selected;
    specificDisability = o.specificDisability;
    groupID = o.groupID;
    subParts = pass(o.subParts);
    baseLineColor = o.baseLineColor;
    baseTextColor = o.baseTextColor;
    baseEmissive = o.baseEmissive;
    baseSpecular = o.baseSpecular;
    baseShininess = o.baseShininess;
    baseAppear = pass(o.baseAppear);
    baseLineStyle = o.baseLineStyle;
    baseFillStyle = o.baseFillStyle;
    fileLink = pass(o.fileLink);
    soundClip = pass(o.soundClip);
    appTag = o.appTag;
    price = o.price;
    customID = pass(o.customID);
    comment = pass(o.comment);
    keptPayload = pass(o.keptPayload);
    if constexpr (take) {
        picture = std::exchange(o.picture, nullptr);
        thumb = std::exchange(o.thumb, nullptr);
    } else {
        CopyPictures(o);
    }
    polygon = pass(o.polygon);
    if constexpr (take)
        payload = std::exchange(o.payload, nullptr);
    else
        payload = o.payload ? o.payload->Duplicate() : nullptr;
    libObjID = o.libObjID;
    library = pass(o.library);
    libraryMask = o.libraryMask;
    userLibID = o.userLibID;
    wrl3dAsBillboard = o.wrl3dAsBillboard;
    wrlProto = pass(o.wrlProto);
    wrlPrototype = pass(o.wrlPrototype);
    wrlProtoWidth = o.wrlProtoWidth;
    wrlProtoHeight = o.wrlProtoHeight;
    wrlProtoZHeight = o.wrlProtoZHeight;
    wrlProtoOffX = o.wrlProtoOffX;
    wrlProtoOffY = o.wrlProtoOffY;
    wrlProtoOffZ = o.wrlProtoOffZ;
    wrlProtoStd = o.wrlProtoStd;
    lib3DImgIdx = o.lib3DImgIdx;
    lib3DImgPng = pass(o.lib3DImgPng);
    declaredSubPartCount = o.declaredSubPartCount;
    std::copy(std::begin(o.cacheCorners), std::end(o.cacheCorners), std::begin(cacheCorners));
    std::copy(std::begin(o.cacheCornersInt), std::end(o.cacheCornersInt), std::begin(cacheCornersInt));
    cacheScale = o.cacheScale;
}

void CVxPart::CopyPictures(const CVxPart& other)
{
    picture = other.picture;
    if (picture)
        picture->AddRef();
    thumb = other.thumb;
    if (thumb)
        thumb->AddRef();
}

void CVxPart::Reset()
{
    ReleaseOwned();
    const CVxOptions* options = VX_GetOptions();
    x = 100;
    y = 100;
    z = 0;
    width = 100;
    height = 100;
    zHeight = 100;
    rotation = 0;
    rotation3D = 0;
    angle = 90;
    caption.Empty();
    lineColor = options->m_defLineColor;
    textColor = options->m_defTextColor;
    appearFill.Reset();
    appearFill.SetColor(options->m_defFillColor);
    appearFront.Reset();
    appearFront.SetColor(VX_ColorSwitchOff(options->m_defFillColor));
    overlayTexture.Empty();
    frontColorEnable = false;
    emissive = 0;
    specular = 0;
    shininess = kDefaultShininess;
    lineStyle = lsSolid;
    lineEnds = options->m_defMeasLineEnds;
    lineThick = 1.0f;
    fillStyle = options->m_defFillStyle;
    inUse = false;
    type = ptRectangle;
    subType = 0;
    handleType = 1;
    doorframe = false;
    thickness = 0;
    snapToWall = false;
    opened = true;
    layer = 0;
    snapWall = -1;
    snapWallSide = 0;
    snapRegion = -1;
    wallRotation = 0;
    locked = 0;
    unlockPassword.Empty();
    selected = false;
    specificDisability = 0;
    groupID = 0;
    subParts.clear();
    StoreBaseline();
    fileLink.Empty();
    soundClip.Empty();
    appTag = 0;
    price = 0;
    customID.Empty();
    comment.Empty();
    keptPayload.Empty();
    polygon.Zero();
    libObjID = 0;
    library.Empty();
    libraryMask = 0;
    userLibID = 0;
    wrl3dAsBillboard = false;
    wrlProto.Empty();
    wrlPrototype.Empty();
    wrlProtoWidth = wrlProtoHeight = wrlProtoZHeight = 1.0f;
    wrlProtoOffX = wrlProtoOffY = wrlProtoOffZ = 0.0f;
    wrlProtoStd = false;
    lib3DImgIdx = -1;
    lib3DImgPng.Empty();
    declaredSubPartCount = 0;
    for (int i = 0; i < 4; ++i) {
        cacheCorners[i] = CVxDPoint();
        cacheCornersInt[i] = VxPOINT();
    }
    cacheScale = 0;
}

void CVxPart::StoreBaseline()
{
    baseLineColor = lineColor;
    baseTextColor = textColor;
    baseEmissive = emissive;
    baseSpecular = specular;
    baseShininess = shininess;
    baseAppear = appearFill;
    baseLineStyle = lineStyle;
    baseFillStyle = fillStyle;
}

void CVxPart::FillUndefinedWithDefaults(int depth)
{
    auto fill = [](auto& field, auto value) {
        if (static_cast<unsigned>(field) == clrUndefined)
            field = value;
    };
    fill(lineColor, 0u);
    fill(textColor, 0u);
    if (GetFillColor() == clrUndefined)
        SetFillColor(VX_GetOptions()->m_defFillColor);
    fill(lineStyle, static_cast<int32_t>(lsSolid));
    fill(fillStyle, static_cast<int32_t>(0));
    fill(emissive, 0u);
    fill(specular, 0u);
    fill(shininess, kDefaultShininess);
    if (depth >= maxGroupDepth)
        return;
    for (CVxPart& member : subParts)
        member.FillUndefinedWithDefaults(depth + 1);
}

void CVxPart::ApplyLockCommand(unsigned bit, unsigned primaryLocked)
{
    if (bit != ctxLock && bit != ctxLockSize) {
        locked &= ~(ctxLock | ctxLockSize);
        return;
    }
    const unsigned other = bit == ctxLock ? ctxLockSize : ctxLock;
    if (primaryLocked & bit) {
        locked &= ~bit;
    } else {
        locked |= bit;
        locked &= ~other;
    }
}

void CVxPart::SetPropertiesToSubParts()
{
    SetPropertiesToSubParts(0);
}

void CVxPart::SetPropertiesToSubParts(int depth)
{
    if (depth < maxGroupDepth) {
        auto inherit = [](auto& memberValue, auto baseValue, auto groupValue) {
            if (memberValue == baseValue || static_cast<unsigned>(memberValue) == clrUndefined)
                memberValue = groupValue;
        };
        for (CVxPart& member : subParts) {
            inherit(member.lineColor, baseLineColor, lineColor);
            inherit(member.textColor, baseTextColor, textColor);
            inherit(member.lineStyle, baseLineStyle, lineStyle);
            inherit(member.fillStyle, baseFillStyle, fillStyle);
            inherit(member.emissive, baseEmissive, emissive);
            inherit(member.specular, baseSpecular, specular);
            inherit(member.shininess, baseShininess, shininess);
            if (member.GetFillColor() == clrUndefined)
                member.SetFillColor(GetFillColor());
            if (member.appearFill == baseAppear)
                member.appearFill = appearFill;
            if (member.type == ptComplexObject)
                member.SetPropertiesToSubParts(depth + 1);
        }
    }
    StoreBaseline();
}

void CVxPart::CopySubPartsWithProperties(const CVxPart* source)
{
    if (!source || source == this)
        return;
    subParts = source->subParts;
    if (source->type == ptComplexObject) {
        baseLineColor = source->baseLineColor;
        baseTextColor = source->baseTextColor;
        baseEmissive = source->baseEmissive;
        baseSpecular = source->baseSpecular;
        baseShininess = source->baseShininess;
        baseAppear = source->baseAppear;
        baseLineStyle = source->baseLineStyle;
        baseFillStyle = source->baseFillStyle;
    }
    SetPropertiesToSubParts();
    if (source->KeepAspect()) {
        if (source->width != 0)
            height = DblRound2x(width * source->height / source->width);
    } else {
        const double w = width;
        const double h = height;
        width = source->width;
        height = source->height;
        ResizePart(w, h);
    }
}

void CVxPart::ResizePart(double w, double h)
{
    const CVxProject* project = VX_GetActiveProject();
    const double baseZoom = project ? project->m_baseZoom : 1.0;
    const double least = baseZoom > 0 ? 1.0 / baseZoom : 1.0;
    auto positive = [least](double value) { return value > 0 ? value : least; };
    w = positive(w);
    h = positive(h);
    if (type == ptComplexObject) {
        const double factor = (positive(width) / w) * (h / positive(height));
        ResizeMembers(factor, 0);
    }
    width = w;
    height = h;
}

void CVxPart::ResizeMembers(double factor, int depth)
{
    if (depth >= maxGroupDepth)
        return;
    for (CVxPart& member : subParts) {
        member.y *= factor;
        member.height *= factor;
        if (member.type == ptComplexObject)
            member.ResizeMembers(factor, depth + 1);
    }
}

void CVxPart::GetTableRowsCols(int& rows, int& cols) const
{
    const unsigned packed = static_cast<uint16_t>(subType);
    rows = std::max(1, static_cast<int>(packed & 0xFFu));
    cols = std::max(1, static_cast<int>(packed >> 8));
}

void CVxPart::SetTableRowsCols(int rows, int cols)
{
    int oldRows = 1, oldCols = 1;
    GetTableRowsCols(oldRows, oldCols);
    rows = std::clamp(rows, 1, maxTableRowsCols);
    cols = std::clamp(cols, 1, maxTableRowsCols);
    subType = static_cast<int16_t>(static_cast<uint16_t>(rows | (cols << 8)));

    CVxPart newCell;
    newCell.type = ptLabel;
    newCell.width = kNewCellSize;
    newCell.height = kNewCellSize;
    newCell.SetFillColor(kNewCellFill);
    newCell.appTag = appTagTableCell;
    newCell.inUse = true;

    std::vector<CVxPart> cells;
    cells.reserve(static_cast<size_t>(rows) * static_cast<size_t>(cols));
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col) {
            const size_t old =
                static_cast<size_t>(row) * static_cast<size_t>(oldCols) + static_cast<size_t>(col);
            if (row < oldRows && col < oldCols && old < subParts.size())
                cells.push_back(std::move(subParts[old]));
            else
                cells.push_back(newCell);
        }
    }
    subParts = std::move(cells);
}

void CVxPart::InvalidateCache()
{
    // Iterative: members at any depth.
    std::vector<CVxPart*> pending{this};
    while (!pending.empty()) {
        CVxPart* part = pending.back();
        pending.pop_back();
        part->cacheScale = 0;
        for (CVxPart& member : part->subParts)
            pending.push_back(&member);
    }
}

CVxPart* CVxPart::GetNewObject(std::vector<CVxPart>& partSlots, int* index, bool append)
{
    size_t slot = partSlots.size();
    if (!append) {
        for (size_t i = 0; i < partSlots.size(); ++i) {
            if (!partSlots[i].inUse) {
                slot = i;
                break;
            }
        }
    }
    if (slot == partSlots.size())
        partSlots.emplace_back();
    CVxPart& part = partSlots[slot];
    part.Reset();
    part.inUse = true;
    if (index)
        *index = static_cast<int>(slot);
    return &part;
}

CVxPart* CVxPart::SafeGetPart(std::vector<CVxPart>& partSlots, int index)
{
    if (index < 0 || static_cast<size_t>(index) >= partSlots.size())
        return nullptr;
    return &partSlots[static_cast<size_t>(index)];
}

CVxStringW CVxPart::GetToolTipText(CVxFloor* floor) const
{
    CVxStringW text = caption.IsEmpty() ? TypeLocalNameFromID(type, libObjID) : caption;
    if (floor && floor->m_layers.GetLayerCount() > 1)
        text += L" (" + floor->m_layers.GetLayerName(layer) + L")";
    if (!fileLink.IsEmpty())
        text += L"\n" + fileLink;
    if (!comment.IsEmpty())
        text += L"\n" + comment;
    return text;
}

bool CVxPart::FollowFileLink() const
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (fileLink.IsEmpty() || !host)
        return false;
    return host->SystemExecute(fileLink);
}

void CVxPart::LibSetCaption()
{
    if (libObjID == 0 || libraryMask == libMaskPrivate)
        return;
    const CVxStringW name = GetLibrary()->GetLibObjName(libObjID);
    if (!name.IsEmpty())
        caption = name;
}

bool CVxPart::LoadPicture()
{
    if (picture)
        CVxPictureLoadCache::ReleasePicture(picture);
    picture = nullptr;
    if (appearFill.main.texture.IsEmpty())
        return false;
    picture = CVxPictureLoadCache::GetPicture(appearFill.main.texture);
    return picture != nullptr;
}

void CVxPart::SetPicture(CVxPicBuf* newPicture)
{
    if (newPicture == picture)
        return;
    if (newPicture)
        newPicture->AddRef();
    if (picture)
        CVxPictureLoadCache::ReleasePicture(picture);
    picture = newPicture;
}

void CVxPart::SetThumb(CVxPicBuf* newThumb)
{
    if (newThumb)
        newThumb->AddRef();
    if (thumb)
        CVxPictureLoadCache::ReleasePicture(thumb);
    thumb = newThumb;
}

CVxFont* CVxPart::CreateFont()
{
    if (!font)
        font = new CVxFont();
    return font;
}

void CVxPart::DeleteFont()
{
    delete font;
    font = nullptr;
}

void CVxPart::SetPayload(CVxPartPayload* newPayload)
{
    if (newPayload == payload)
        return;
    delete payload;
    payload = newPayload;
}
