#pragma once
// The additional library files that the user has, with their options: the
// settings keep the list ("LibAddLib%d" with "ExtLibOpt%d"), and every
// start registers the .pvl files found beside the program. An entry's
// option word says what the file may be loaded for.

#include "CVxStringW.h"

#include <vector>

class CVxOptions;

class CVxExternalLibraries
{
public:
    // Bits of an entry's options.
    enum EVxUse : unsigned
    {
        VX_EXTLIB_OBJECTS = 1,
        VX_EXTLIB_TEXTURES = 2,
        VX_EXTLIB_DISABLED = 0x100,
    };
    // Of the library, only objects are loaded through this list.
    static constexpr int typeObjects = 0;
    // No user keeps more; a damaged settings file could claim millions.
    static constexpr size_t maxEntries = 1000;

    explicit CVxExternalLibraries(CVxOptions* options) : m_options(options) {}

    // Adds the file unless it is listed; new entries are for objects.
    void RegisterLibrary(const CVxStringW& path);
    // Forgets the entries whose files have gone.
    void RemoveNonPresentItems();
    int GetCount() const;
    CVxStringW GetPath(int index) const;
    unsigned GetOptions(int index) const;
    bool CanBeLoadedForType(int index, int type) const;
    void SetEnabled(int index, bool enabled);
    void Remove(int index);

private:
    CVxOptions* m_options;
};
