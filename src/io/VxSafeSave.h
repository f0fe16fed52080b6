#pragma once
// Saving that never damages the file it replaces: the new content is
// finished as a temporary file in the target's own folder, flushed to disk,
// and renamed over the target in one step. A save that is killed half-way
// leaves the old file as it was and at worst a stray temporary beside it.

#include "CVxStringW.h"

// The temporary file to write before committing to `target`.
CVxStringW VX_SafeSaveTempPath(const CVxStringW& target);
// Creates the temporary file of `target` as a new, empty regular file that
// only this process made: an entry planted under its name, such as a link
// to another file, is removed first and never written through. False when
// `target` exists and is no regular file (a device, a FIFO), or when the
// file can't be made.
bool VX_SafeSaveCreateTemp(const CVxStringW& target);
// Flushes `temp` to disk and renames it over `target`; on failure removes
// `temp` and leaves `target` untouched.
bool VX_SafeSaveCommit(const CVxStringW& temp, const CVxStringW& target);
// Gives up a save: removes the temporary file.
void VX_SafeSaveAbandon(const CVxStringW& temp);
