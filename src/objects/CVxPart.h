#pragma once
// Everything that stands on a floor and is not a wall: furniture, doors,
// windows, texts, dimension lines, pictures, tables and groups. One class
// with a type number and no subclasses; what a part may do follows from its
// type and library number (HasCap). A part is a plain value: floors keep
// parts in a vector, a group keeps its members in a vector of its own, and
// assignment copies everything deeply, which undo, the clipboard, duplicate
// and library insertion rely on.

#include "CVxAppearance.h"
#include "CVxDPoint.h"
#include "CVxDPolygon.h"
#include "CVxDRect.h"
#include "CVxStringA.h"
#include "CVxStringW.h"
#include "IVxReadIniClient.h"
#include "VxColorWord.h"
#include "VxIntGeometry.h"

#include <cstdint>
#include <vector>

class CVxDC;
class CVxFloor;
class CVxRoomWalls;
class CVxFont;
class CVxIniFileReader;
class CVxIniWriter;
class CVxPart;
class CVxPartPayload;
class CVxPicBuf;
struct SVx3DExportPars;

// The type number of a part, stored in files by name.
enum EVxPartType : int
{
    ptRectangle = 0,
    ptCircle = 1,
    ptEllipse = 2,
    ptTriangle = 3,
    ptHexagon = 4,
    ptOctagon = 5,
    ptDoor = 6,
    ptWindow = 7,
    ptArrow = 8,
    ptLine = 9,
    ptMeasLine = 10,
    ptCompass = 11,
    ptLogo = 12,
    ptPolygon = 13,
    ptAngle = 14,
    ptEntrTriangle = 15,
    ptQRCode = 16,
    ptPolyline = 17,
    ptTable = 18,
    ptEnergyLabel = 19,
    ptLabel = 20,
    ptLibraryObject = 21,
    ptComplexObject = 22,
    ptImported = 23,
    ptPageArea = 24,
    ptTypeCount = 25
};

// What the rest of the program may do with a part.
enum EVxPartCapability : int
{
    capHandle = 0,
    capDoorSwing = 1,
    capWindowShape = 2,
    capRotate = 3,
    capSkew = 4,
    capResize = 5,
    capResizeAnyDirection = 6,
    capDuplicate = 7,
    capMirror = 8,
    capGroup = 9,
    capLineColor = 10,
    capFillColor = 11,
    capFrontColor = 12,
    capLineThickness = 13,
    capVisibleIn3D = 14,
    capHas3D = 15,
    capDoorFrame = 16,
    capWindowFrame = 17,
    capThickness = 18,
    capPicture = 19,
    capTileTexture = 20,
    capPayload = 21
};

// The outline style that a part stores.
enum EVxLineStyle : int32_t
{
    lsSolid = 0,
    lsDotted = 1,
    lsDashDot = 2
};

// What a part needs to know of the object library: names, heights and
// models of the standard objects by number. The library installs itself
// with CVxPart::SetLibrary; without one, the answers are those of an empty
// library, and page names are those of the standard pages.
// The side of a side view, in quarter turns from the front.
enum EVxObjSide : int
{
    OBJ_SIDE_FRONT = 0,
    OBJ_SIDE_RIGHT = 1,
    OBJ_SIDE_BACK = 2,
    OBJ_SIDE_LEFT = 3
};

class IVxPartLibrary
{
public:
    virtual ~IVxPartLibrary() = default;
    // Display name of a library object; empty when the number is unknown.
    virtual CVxStringW GetLibObjName(int /*libId*/) const { return CVxStringW(); }
    // The 3D height of the first library object of that number, -1 for none.
    virtual double GetLibObjZHeight(int /*libId*/) const { return -1; }
    // The "WrlProto" of the first library object of that number.
    virtual CVxStringW GetLibObjWrlFile(int /*libId*/) const { return CVxStringW(); }
    // The page id of a library page name, 0 (the user library) when unknown.
    virtual int GetLibIDFromName(const CVxStringW& name) const;
    // Brings an object of an old file up to the materials of its library
    // object.
    virtual void SetNewLibraryPropsToLegacyPart(int /*version*/, CVxPart* /*part*/) const {}
};

class CVxPart : public IVxReadIniClient
{
public:
    // Bits of locked.
    static constexpr unsigned ctxLock = 1;      // no moving and no other editing
    static constexpr unsigned ctxLockSize = 2;  // no resizing
    static constexpr unsigned ctxLockGroup = 4; // a group's members can't be edited one by one
    // Bit of specificDisability: the object has no 3D representation.
    static constexpr unsigned disable3D = 1;
    // Bit of appTag on a measurement line: a temporary line shown while a
    // door or window is dragged along its wall.
    static constexpr unsigned appTagTempDimLine = 2;
    // Bit of appTag on a table cell made by the table itself.
    static constexpr unsigned appTagTableCell = 8;
    // The library mask of a private user object.
    static constexpr unsigned libMaskPrivate = 0x40000000;
    // Deepest nesting of groups that files and copies may build; the loaders
    // drop what lies deeper, and walks over members stop there.
    static constexpr int maxGroupDepth = 32;
    // Largest table: rows and columns each.
    static constexpr int maxTableRowsCols = 255;

    CVxPart();
    CVxPart(const CVxPart& other);
    CVxPart(CVxPart&& other) noexcept;
    CVxPart& operator=(const CVxPart& other);
    CVxPart& operator=(CVxPart&& other) noexcept;
    ~CVxPart() override;

    // Every field back at its default; owned font and payload are freed and
    // the pictures given back.
    void Reset();

    // The type table.
    static CVxStringW TypeNameFromID(int type);
    static CVxStringW TypeLocalNameFromID(int type, int libId);
    static int TypeIDFromName(const CVxStringW& name);

    bool HasCap(int capability) const;
    // Door or window that swings: type Door or a door-like library object.
    static bool IsDoorLike(int type, int libId);
    static int GetSubTypeCount(int type, int libId);
    static bool AreSubTypesForFrontView(int type, int libId);
    static int GetHandleTypeCount(int type, int libId);
    // Outline family for hit tests and simple drawing: a value of
    // EVxPartType among Rectangle, Circle, Ellipse, Hexagon, Octagon or the
    // part's own type.
    int GetShape(bool plain) const;
    static int LibGetShape(int libId);
    bool KeepAspect() const;
    bool KeepXZAspect(bool billboardCounts) const;
    // The library number of the other hand of a wall-hung door or window,
    // -1 when it has none.
    int GetSnapMirrorPartId() const;

    // Locks. A lock command sets its bit and clears the other one, unless
    // the primary selection has that bit already: then it clears it. bit 0
    // stands for the command that clears both.
    void ApplyLockCommand(unsigned bit, unsigned primaryLocked);
    bool IsLocked() const { return (locked & ctxLock) != 0; }
    bool IsSizeLocked() const { return (locked & (ctxLock | ctxLockSize)) != 0; }
    // A duplicate can be moved at once.
    void PrepareAsDuplicate() { locked &= ~ctxLock; }
    bool IsTempDimLine() const { return type == ptMeasLine && (appTag & appTagTempDimLine) != 0; }

    // Group inheritance: the group's line and text colour, styles, material
    // and appearance go to the members that still had the group's previous
    // values, and the baseline follows.
    void SetPropertiesToSubParts();
    void CopySubPartsWithProperties(const CVxPart* source);
    // The members' frame is 1000 wide, so a new aspect changes the members'
    // y and height.
    void ResizePart(double w, double h);
    // Tables: rows in the low byte of subType, columns in the high byte.
    void GetTableRowsCols(int& rows, int& cols) const;
    // Rebuilds the cells for rows x cols (each 1 to 255), keeping the cells
    // that keep their row and column.
    void SetTableRowsCols(int rows, int cols);
    void InvalidateCache();

    // Placement: the frame and its caches, hit tests, hanging on walls,
    // resizing, turning and mirroring.
    void GetRect(CVxDPoint corners[4], double scale, bool round) const;
    void GetBoundingRect(CVxDRect* out, double scale) const;
    // The eight integers of the corners at this zoom and origin; out may be
    // null. Only a new zoom recomputes them.
    const VxPOINT* GetCachedRect(double originX, double originY, double zoom, CVxDPoint* out);
    void GetCachedBoundingRect(VxRECT* out, int originX, int originY, double zoom);
    void GetCachedDrawingRect(VxRECT* out, int originX, int originY, double zoom);
    // The same rectangle from the corners' box at scale 1, kept while the
    // geometry stays: deciding that an object is out of view at a new zoom
    // turns no corners.
    void GetCullingRect(VxRECT* out, int originX, int originY, double zoom);
    bool PtInPart(double x, double y, double zoom, bool plain, double tolerance);
    void SnapToWall(CVxRoomWalls* walls, double px, double py, bool centred, bool keepWall, bool mayMirror);
    CVxDRect GetWallOpeningRect(const CVxRoomWalls* walls, int wallIndex, bool clip) const;
    void Scale(double sx, double sy, double sz, bool textures);
    void ScaleSubParts(double factor);
    void RotateAroundCenter(double degrees);
    void Mirror(bool horizontal);
    void GetAnglePartPoints(CVxDPoint& vertex, CVxDPoint& arm1, CVxDPoint& arm2) const;
    void SetAnglePartPoints(CVxDPoint& vertex, CVxDPoint& arm1, CVxDPoint& arm2, int handle, bool snap);
    bool GetTableCellAtPos(double px, double py, int* row, int* col, CVxPart** cell);

    // Drawing in plan and in side view; side -1 means plan.
    void DrawToHdc(CVxDC* dc, CVxFloor* floor, int units, double originX, double originY, double zoom,
                   int flags, int layerTransparency, double scale);
    void DrawPart(CVxDC* dc, CVxFloor* floor, int units, double originX, double originY, double zoom,
                  int flags, int transparency, double scale, int side);
    // The plan symbol of a library number; false when it has none.
    bool LibDrawPart(CVxDC* dc, int libId, int units, int originX, int originY, double zoom, int flags);
    void DrawSideToHdc(CVxDC* dc, int side, int units, double originX, double originY, double zoom,
                       int flags);
    bool LibDrawPartSide(CVxDC* dc, int libId, int side, int units, double originX, double originY,
                         double zoom, int flags);
    bool LibDrawPartSide_low(CVxDC* dc, int libId, EVxObjSide side, VxPOINT* corners, bool front, bool plain);
    void SubTypeDraw(CVxDC* dc, int units, double originX, double originY, double zoom, bool side,
                     bool plain);
    void DrawDoorFrame(CVxDC* dc, int units, CVxDPoint* points, VxPOINT* scratch, double depth);

    // Captions. The variables of a caption ("%AREA%", "%LENGTH%", ...; "~"
    // on a dimension or angle line) are replaced at every drawing.
    CVxStringW ProcessCaptionVars(const CVxStringW& text, int units, double scale) const;
    // The variables that a caption of the type may use, for the dialogs.
    static std::vector<CVxStringW> GetPossibleCaptionVars(int partType, int forDialog);
    // An object's caption word-wrapped into its bounding rectangle (pixels).
    void DrawCaption(CVxDC* dc, VxRECT* rect, int units, double zoom, double scale);
    // A label's text in its frame, turned with the label.
    void DrawLabelCaption(CVxDC* dc, int units, double originX, double originY, double zoom, double scale);
    // A dimension line's figure along the line, always readable.
    void DrawMeasLineCaption(CVxDC* dc, int units, double originX, double originY, double zoom, double scale);
    // The part's own font, or the project's caption font.
    CVxFont GetCaptionFont() const;

    // The record form. The section is named by the caller; members follow in
    // sections named section + "." + running number.
    void SaveToFile(CVxIniWriter* writer, CVxStringA section, bool forLibrary, const CVxPart* parent) const;
    // Reads the reader's current section and repairs what old or damaged
    // files leave. False when the reader has no current section.
    bool LoadFromSection(CVxIniFileReader* reader);
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;

    // Slot reuse of a vector of parts (a floor's, the library's): the first
    // free slot unless append is set, else a new one at the end. The slot is
    // reset and marked in use; the vector may move, so callers re-read their
    // pointers afterwards.
    static CVxPart* GetNewObject(std::vector<CVxPart>& partSlots, int* index, bool append);
    static CVxPart* SafeGetPart(std::vector<CVxPart>& partSlots, int index);

    CVxStringW GetToolTipText(CVxFloor* floor) const;
    bool FollowFileLink() const;
    void LibSetCaption();

    // The picture of a picture object, loaded from the main texture; copies
    // share it.
    bool LoadPicture();
    CVxPicBuf* GetPicture() const { return picture; }
    // Shares the given picture (or none) instead of the current one.
    void SetPicture(CVxPicBuf* newPicture);
    void SetThumb(CVxPicBuf* newThumb);
    CVxPicBuf* GetThumb() const { return thumb; }

    CVxFont* GetFont() const { return font; }
    // The part's own font, made from the project's default when it had none.
    CVxFont* CreateFont();
    void DeleteFont();
    CVxPartPayload* GetPayload() const { return payload; }
    // Takes ownership.
    void SetPayload(CVxPartPayload* newPayload);

    unsigned GetFillColor() const { return appearFill.main.color; }
    void SetFillColor(unsigned colour) { appearFill.main.color = colour; }

    // The 3D scene (written by the scene export). A path of a picture,
    // sound or model as the scene's URL; empty when the file is missing.
    // pars may be null.
    static CVxStringA GetTextureURL(const CVxStringW& path, SVx3DExportPars* pars);
    // Declares the protos that the part will instantiate.
    void WriteVRMLProto(SVx3DExportPars* pars) const;
    // The part's scene text; empty for a part that has no 3D form. parent is
    // the group of a member, whose sizes are in thousandths of the group.
    CVxStringA ExportToVRML(SVx3DExportPars* pars, const CVxRoomWalls* walls, const CVxPart* parent,
                            double parentWidth, double parentZHeight) const;
    // The frame around a door or window opening, at scene place (x, y, z).
    CVxStringA ExportVRMLDoorFrame(SVx3DExportPars* pars, const CVxRoomWalls* walls, double frameWidth,
                                   double depth, double zHeight, double x, double y, double z) const;

    static void SetLibrary(IVxPartLibrary* library);
    static const IVxPartLibrary* GetLibrary();

    double x, y, z;
    double width, height, zHeight;
    double rotation;
    double rotation3D;
    double angle;
    CVxStringW caption;
    unsigned lineColor;
    unsigned textColor;
    CVxAppearance appearFill;
    CVxAppearance appearFront;
    CVxStringW overlayTexture;
    bool frontColorEnable;
    unsigned emissive;
    unsigned specular;
    unsigned shininess;
    int32_t lineStyle;
    int32_t lineEnds;
    float lineThick;
    int32_t fillStyle;
    bool inUse;
    uint16_t type;
    int16_t subType;
    int16_t handleType;
    bool doorframe;
    double thickness;
    bool snapToWall;
    bool opened;
    int32_t layer;
    int16_t snapWall;
    int16_t snapWallSide;
    int32_t snapRegion;
    double wallRotation;
    unsigned locked;
    CVxStringW unlockPassword;
    bool selected;
    unsigned specificDisability;
    int32_t groupID;
    std::vector<CVxPart> subParts;
    // What the members inherited last: a member whose value still equals it
    // has none of its own.
    unsigned baseLineColor;
    unsigned baseTextColor;
    unsigned baseEmissive;
    unsigned baseSpecular;
    unsigned baseShininess;
    CVxAppearance baseAppear;
    int32_t baseLineStyle;
    int32_t baseFillStyle;
    CVxStringW fileLink;
    CVxStringW soundClip;
    unsigned appTag;
    int32_t price;
    CVxStringW customID;
    CVxStringW comment;
    // The "Payload" text of a class this program does not know, from a newer
    // file or one whose class is not built in: written back as it came, so
    // that opening and saving loses nothing.
    CVxStringW keptPayload;
    CVxDPolygon polygon;
    int32_t libObjID;
    CVxStringW library;
    unsigned libraryMask;
    int32_t userLibID;
    bool wrl3dAsBillboard;
    CVxStringW wrlProto;
    CVxStringW wrlPrototype;
    float wrlProtoWidth, wrlProtoHeight, wrlProtoZHeight;
    float wrlProtoOffX, wrlProtoOffY, wrlProtoOffZ;
    bool wrlProtoStd;
    int32_t lib3DImgIdx;
    CVxStringW lib3DImgPng;

    // The members that "SubPartCount" announced while the part is read; the
    // grouper closes the group when that many have arrived.
    int64_t declaredSubPartCount;

    // Geometry caches of placement: the corners relative to the drawing
    // origin at cacheScale, as doubles and rounded. A scale of 0 is invalid.
    CVxDPoint cacheCorners[4];
    VxPOINT cacheCornersInt[4];
    double cacheScale;

private:
    // The corners' box at scale 1 and the fields it was made from.
    struct SVxModelBox
    {
        double key[7] = {};
        int type = -1;
        int libObjID = -1;
        CVxDRect box;
    };
    const CVxDRect& UnitScaleBox();
    void GrowToDrawingRect(VxRECT* out, double zoom) const;
    SVxModelBox m_modelBox;

    // Owned: the part's own font (none: the project's caption font) and its
    // type-specific data. Pictures are shared by reference count.
    CVxFont* font = nullptr;
    CVxPartPayload* payload = nullptr;
    CVxPicBuf* picture = nullptr;
    CVxPicBuf* thumb = nullptr;

    void CopyFrom(const CVxPart& other);
    template <typename Source>
    void AssignFields(Source&& other);
    void CopyPictures(const CVxPart& other);
    void ReleaseOwned();
    void SetPropertiesToSubParts(int depth);
    bool KeepAspect(int depth) const;
    void ResizeMembers(double factor, int depth);
    void SaveToFile(CVxIniWriter* writer, const CVxStringA& section, bool forLibrary, const CVxPart* parent,
                    int32_t parentGroupID, int depth) const;
    void RepairAfterLoad(CVxIniFileReader* reader);
    void StoreBaseline();
    friend class CVxPartVectorGrouper;
    // Missing colours and styles, left undefined by a group member that
    // never found its group, take the fixed defaults.
    void FillUndefinedWithDefaults(int depth);

    // Placement: the walks over members that stop at maxGroupDepth.
    bool PtInPartAtDepth(double px, double py, double zoom, bool plain, double tolerance, int depth);
    void MirrorAtDepth(bool horizontal, int depth);
    void ScaleSubPartsAtDepth(double factor, int depth);
};
