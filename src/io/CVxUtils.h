#pragma once
// File and path helpers shared by the whole core. A plain collection of
// static functions; paths use "/" and folders end in "/".

#include "CVxStringW.h"

#include <cstdint>
#include <cstdio>

class CVxUtils
{
public:
    // The text of `path` as a project stores it: "{$BT}" plus the rest for a
    // file of the built-in texture library, the rest for a file under
    // `folder`, otherwise the path unchanged. URLs stay as they are.
    // Two axis-angle turns about 'x', 'y' or 'z' chained as quaternions, the
    // first times the second, back as one axis and angle (radians).
    static void MultiplyVRMLRotation(double& angleOut, double axisOut[3], char axis1, double angle1,
                                     char axis2, double angle2);
    static CVxStringW MakeRelativePath(const CVxStringW& path, const CVxStringW& folder);
    // The reverse: back-slashes of paths written on other systems become
    // slashes, "{$BT}" becomes the built-in texture folder, an absolute path
    // stays, and anything else is taken relative to `base`.
    static CVxStringW MakeFullPath(const CVxStringW& path, const CVxStringW& base);
    // True when `path` starts with `folder`, both having at least two
    // characters and the folder being shorter.
    static bool ContainsPath(const CVxStringW& path, const CVxStringW& folder);

    // The folder of the built-in texture library. While it is empty, no path
    // maps to or from "{$BT}". A trailing "/" is added when missing.
    static void SetBuiltInTextureFolder(const CVxStringW& folder);
    static const CVxStringW& GetBuiltInTextureFolder();

    // The folder under the user's application data where opened projects
    // unpack their files: "ProjUnpack/", created when missing.
    static CVxStringW GetProjectsTempPath();
    // `path` itself while no such file exists, otherwise a free name in the
    // same folder with "_" and a random number before the extension. After
    // 5000 taken numbers the last one tried is returned.
    static CVxStringW GetUniqueFileName(const CVxStringW& path);
    // The same for a folder, with up to 500 tries of numbers below 1000.
    static CVxStringW GetUniqueFolderName(const CVxStringW& path);
    // Same size and same CRC-32; a file that can't be read is identical to
    // nothing.
    static bool CheckTwoFilesIdentical(const CVxStringW& a, const CVxStringW& b);
    // The CRC-32 of the whole stream, read from its start in pieces of 2048.
    static uint32_t CalcCRC(FILE* file);
    // Removes what earlier runs left in the projects' folder, unless another
    // instance runs and may still use it.
    static void DeleteUserAppDataProjects();
    // The name pattern of a private temporary folder of this run, for
    // QTemporaryDir: "Plaveno-", the process id, "-" and six free letters
    // in the system's temporary folder.
    static CVxStringW GetRunTempFolderTemplate();
    // Removes the private temporary folders of runs that died without
    // cleaning up: those of this user whose process no longer exists.
    static void RemoveTempFoldersOfDeadRuns();
    // A run started by another instance of the program ("-newinstance").
    static void SetRunFromAnotherInstance(bool fromAnother);
    // True when another instance of the program runs for this user: it was
    // started by one, or one holds the instance lock.
    static bool AnotherInstanceRunning();
    // Takes the instance lock for the life of the process; false when another
    // instance holds it.
    static bool AcquireInstanceLock();
    static void ReleaseInstanceLock();

    // This run's auto-save file, "PVSave", a number and ".pvp" in the user's
    // application data folder, chosen once per process.
    static CVxStringW GetAutoSaveFile();
    // The auto-save file that an earlier run left, taken over as this run's
    // own; empty when there is none or another instance runs, since the
    // files may then be that instance's.
    static CVxStringW InitAndGetAutoSaveCrashFile();
    // Lets the next GetAutoSaveFile choose anew, as a new process would.
    static void ForgetAutoSaveFile();
};
