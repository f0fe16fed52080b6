#pragma once
// The receiver of the keys of one record section. The reader delivers every
// key line of the section it is asked to read; the owner of the format picks
// the client by the section's name, so one file feeds many classes.

#include "CVxStringA.h"
#include "CVxStringW.h"

class CVxIniFileReader;

class IVxReadIniClient
{
public:
    virtual ~IVxReadIniClient() = default;

    // The key is the text left of the first "=", the value everything right of
    // it, untrimmed and decoded. A client may read a data block that follows
    // the line through the reader before it returns.
    virtual void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) = 0;

    // Path transformers: a project maps the file names stored in its container
    // to its unpack folder, a library keeps its textures movable. Returning
    // false leaves the reader's or writer's own rule in force.
    virtual bool OnPathTransformToAbsolute(CVxStringW& /*result*/, const CVxStringW& /*path*/,
                                           const CVxStringW& /*baseFolder*/)
    {
        return false;
    }
    virtual bool OnPathTransformToRelative(CVxStringW& /*result*/, const CVxStringW& /*path*/,
                                           const CVxStringW& /*baseFolder*/)
    {
        return false;
    }
};
