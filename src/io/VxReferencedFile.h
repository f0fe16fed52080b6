#pragma once
// The files that a project refers to come from the project's text, which
// may come from anyone. Before a file is copied into the project's folder or
// embedded in a container it must be a plain file of a sane size whose bytes
// fit what it is used for, and a reference read from a file must point into
// the project's own folders or the program's data: a project must never be
// able to carry off a private file of the user who opens it.

#include "CVxStringW.h"

#include <cstdint>
#include <cstdio>
#include <vector>

// What a referenced file is used as.
enum class EVxFileRole
{
    // A texture, a picture, a sky box side, a background scan.
    Picture,
    // A sound clip of an object.
    Sound,
    // An object's model in the scene format.
    Model,
    // An attachment: any kind of document.
    Document,
};

// No file larger than this is taken into a project.
constexpr int64_t kVxMaxReferencedFileSize = int64_t{256} << 20;

// The role of a file by its extension; Document for anything unknown.
EVxFileRole VX_FileRoleFromName(const CVxStringW& path);

// True when `path` is a regular file (no folder, device, FIFO, socket or
// file of /proc) of at most `maxSize` bytes. Looks at the file's
// attributes only and never opens it.
bool VX_IsPlainFile(const CVxStringW& path, int64_t maxSize = kVxMaxReferencedFileSize);
// VX_IsPlainFile, and its first bytes fit `role`: a picture is an image
// format that can be read, a sound a known audio format, a model a scene
// file.
bool VX_IsEmbeddableFile(const CVxStringW& path, EVxFileRole role);
// Opens a plain file for reading without ever waiting on a FIFO or device;
// null for anything else.
FILE* VX_OpenPlainFileForReading(const CVxStringW& path, int64_t maxSize = kVxMaxReferencedFileSize);

// The program's own folders, whose files any project may use: the folder
// of the program with its libraries and the built-in textures. Set once at
// start-up.
void VX_SetTrustedDataFolders(const std::vector<CVxStringW>& folders);
// True when `path`, with its links and ".." resolved, lies inside one of
// `folders` or the program's own folders, and no part of it below that
// folder is hidden (starts with a dot).
bool VX_IsInsideTrustedFolders(const CVxStringW& path, const std::vector<CVxStringW>& folders);
