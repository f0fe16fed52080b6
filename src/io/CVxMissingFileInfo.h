#pragma once
// A file that a project refers to but that could not be found on loading,
// with what the user decided to do about it before the project is saved.

#include "CVxStringW.h"

class CVxMissingFileInfo
{
public:
    // The resolution, also the row of the choice in the missing files dialogue.
    enum EResolution
    {
        VX_MISSING_REMOVE = 0,  // drop the reference from the project
        VX_MISSING_KEEP = 1,    // keep it as it is; the value when found
        VX_MISSING_REPLACE = 2, // refer to the replacement instead
    };

    CVxMissingFileInfo() = default;
    explicit CVxMissingFileInfo(const CVxStringW& path, int res = VX_MISSING_KEEP)
        : filePath(path), resolution(res)
    {
    }

    CVxStringW filePath;
    CVxStringW replacementPath;
    int resolution = VX_MISSING_KEEP;
};
