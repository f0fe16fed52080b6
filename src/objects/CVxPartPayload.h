#pragma once
// Type-specific data of the few library objects that compute their shape
// from parameters of their own: stairs, stairs with banisters, the
// made-to-measure wardrobe. A part owns at most one payload and stores it
// under its key "Payload" as the class name, ":" and the payload's own text.
// The classes register themselves by name and library number.

#include "CVxStringW.h"

#include <functional>

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

    // Class name, ":" and SaveToString.
    CVxStringW Serialize() const;

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
