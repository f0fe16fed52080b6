#pragma once
// Type-specific data of the few library objects that compute their shape
// from parameters of their own: stairs, stairs with banisters, the
// made-to-measure wardrobe. A part owns at most one payload and stores it
// under its key "Payload" as the class name, ":" and the payload's own text.
// The classes register themselves by name and library number.

#include "CVxStringA.h"
#include "CVxStringW.h"

#include <functional>

class CVxDC;
class CVxDPoint;
class CVxPart;
struct SVx3DExportPars;
struct VxPOINT;
enum EVxObjSide : int;

class CVxPartPayload
{
public:
    using Creator = std::function<CVxPartPayload*()>;

    CVxPartPayload() = default;
    virtual ~CVxPartPayload() = default;

    virtual CVxStringW GetClassName() const = 0;
    // A new copy, owned by the caller.
    virtual CVxPartPayload* Duplicate() const = 0;
    virtual CVxStringW SaveToString() const { return CVxStringW(); }
    // False when the text can't be used; the part then goes without payload.
    virtual bool LoadFromString(const CVxStringW& /*text*/) { return true; }

    // The plan symbol on the part's corners (integer and exact); false
    // leaves the drawing to the part's own symbol.
    virtual bool DrawPart(CVxPart* /*part*/, CVxDC* /*dc*/, VxPOINT* /*corners*/, CVxDPoint* /*points*/,
                          bool /*fill*/)
    {
        return false;
    }
    // The elevation of one side on the quadrilateral of corners; false
    // leaves it to the part's own side view.
    virtual bool DrawPartSide(CVxPart* /*part*/, CVxDC* /*dc*/, EVxObjSide /*side*/, int /*units*/,
                              VxPOINT* /*corners*/, bool /*front*/, bool /*outline*/, int /*flags*/)
    {
        return false;
    }

    // A picture of the object for its property form, filling width by
    // height pixels from the top left of the surface; false draws nothing.
    virtual bool DrawObjectPreview(CVxPart* /*part*/, CVxDC* /*dc*/, int /*width*/, int /*height*/)
    {
        return false;
    }

    // The payload's own geometry in the part's unit box for the 3D scene;
    // empty leaves the part to its catalogue proto. The scene export writes
    // it, and knows the geometry of each built-in class; the document does
    // not depend on the scene.
    CVxStringA ExportToVRML(const CVxPart* part, const CVxStringA& appearance, SVx3DExportPars* pars,
                            const CVxPart* parent) const;

    // A unit box with the faces of mask: 1 bottom, 2 top, 4 the far side,
    // 8 the near side, 16 and 32 the ends; u and v stretch the texture.
    static CVxStringA ExportRectToVRML(const CVxStringA& appearance, int mask, double u, double v);

    // Class name, ":" and SaveToString.
    CVxStringW Serialize() const;

    // The stairs, banister stairs and wardrobe classes; the core runs it
    // once at its construction, and again it changes nothing.
    static void RegisterBuiltinClasses();
    // A name already registered keeps its first creator.
    static void RegisterClass(const CVxStringW& name, int libraryNumber, Creator creator);
    static void UnregisterClass(const CVxStringW& name);
    // A new payload for that library number, or null.
    static CVxPartPayload* CreateNew(int libraryNumber);
    // Null for an empty text, an unknown class or a text the class rejects.
    static CVxPartPayload* CreateFromString(const CVxStringW& text);

protected:
    CVxPartPayload(const CVxPartPayload&) = default;
    CVxPartPayload& operator=(const CVxPartPayload&) = default;
};
