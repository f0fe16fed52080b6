#pragma once
// The document: the floors of a house with the settings that travel with the
// project file, the viewpoints and the attachments. The core holds one
// project by value; undo snapshots and temporaries for saving are copies.

#include "CVxAppearance.h"
#include "CVxAttachments.h"
#include "CVxCompressIniWriter.h"
#include "CVxDPoint.h"
#include "CVxFloor.h"
#include "CVxFont.h"
#include "CVxMissingFileInfo.h"
#include "CVxStringA.h"
#include "CVxStringW.h"
#include "CVxViewpointSet.h"
#include "IVxReadIniClient.h"
#include "VxNumbers.h"

#include <list>
#include <utility>
#include <vector>

class CVx3DPoint;
class CVxFloorPlan;
class CVxGlobalShadow;
class CVxIniFileReader;
class CVxIniWriter;
class CVxPackedEntries;

// A section owned by a part of the program that the document does not model
// here (the terrain, the picture resize cache): kept as it was read and
// written back unchanged, so that opening and saving never loses it.
class CVxKeptSection : public IVxReadIniClient
{
public:
    void Reset();
    // Takes the keys of the reader's current section.
    void Read(CVxIniFileReader* reader);
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    // Writes the section, with no keys when none were read.
    void SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const;

    // Whether the project's file had the section at all, or the program
    // has given it values since.
    bool IsPresent() const { return m_present; }
    void SetPresent() { m_present = true; }

    std::vector<std::pair<CVxStringA, CVxStringW>> m_values;

private:
    bool m_present = false;
};

class CVxProject : public IVxReadIniClient, public IVxCompressedFileOwner
{
public:
    // The version of the project text that this program writes.
    static constexpr int fileVersion = 1020;

    CVxProject();
    CVxProject(const CVxProject& other);
    CVxProject& operator=(const CVxProject& other);
    ~CVxProject() override;

    // All defaults of a new project, with one new floor.
    void Reset();
    // A deep copy into target, floors included; nothing for null or itself.
    void CopyTo(CVxProject* target) const;

    // The keys of the "Room" section.
    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    void SaveToFile(CVxIniWriter* writer, const CVxStringA& section) const;

    // Writes the whole project to `path`: compressed with every file it
    // refers to, or as plain text. The file is finished beside the target
    // and only then replaces it, so a failed or interrupted save leaves the
    // previous file as it was. With a list, the user's decisions about
    // missing files are applied.
    bool SaveToFile(const CVxStringW& path, bool compressed, std::list<CVxMissingFileInfo>* missingFiles);
    // Reads a project of either form; the reading flags are those of
    // CVxIniFileReader. `baseFolder`, when given, is where files that the
    // text refers to are looked for; `nested` keeps the unpack folder at the
    // file's own folder. A file that can't be opened leaves the project
    // untouched; anything else loads as far as it goes.
    bool LoadFromFile(const CVxStringW& path, std::list<CVxMissingFileInfo>* missingFiles,
                      const CVxStringW* baseFolder, bool nested, int flags);
    // The rest of a container whose head the reader has passed: unpacks the
    // entries and loads the project text among them.
    bool LoadFromCompressedFile(CVxIniFileReader* reader, std::list<CVxMissingFileInfo>* missingFiles,
                                int flags, const CVxStringW& sourceFolder);

    void WriteCompressedFileHeader(FILE* file) const override;
    // The copy of a file that the project keeps in its unpack folder, made
    // on first use. A different file of a name already taken gets a new name.
    CVxStringW AddFileToProject(const CVxStringW& path) override;
    // False for a file that the project's text named outside the project's
    // folders: it stays a reference and never becomes part of the project.
    bool MayEmbed(const CVxStringW& path) const override;
    // Makes the unpack folder when the project has none yet.
    void VerifyStoragePathExists();
    // Deletes the unpack folder, if it is one of the program's own.
    void RemoveTempFiles();
    // A file that the text names is taken into the unpack folder.
    bool OnPathTransformToAbsolute(CVxStringW& result, const CVxStringW& path,
                                   const CVxStringW& baseFolder) override;

    // The current floor, the first one for an index out of range; a floor is
    // added when there is none.
    CVxFloor* GetFloor();
    // That floor, or GetFloor() for an index out of range.
    CVxFloor* GetSafeFloor(int index);
    int GetFloorCount() const { return static_cast<int>(m_floors.size()); }
    // A floor on top of the others: the project rectangle walled round.
    CVxFloor* AddNewFloor();
    // The last floor can't go; the current floor stays where it was, or
    // becomes the one below.
    bool RemoveFloor(int index);
    // Floors trade places; the current floor goes with its floor.
    bool SwapFloors(int first, int second);
    bool IsModified() const { return m_modified; }
    // The last load met a container entry that could not be unpacked whole:
    // the project holds what could be read, not what was saved.
    bool WasDamagedOnLoad() const { return m_damagedOnLoad; }
    // Nothing worth keeping came in: no floor holds a wall, a floor opening
    // or an object.
    bool HoldsNothing() const;

    // The sheet: the room rectangle with the space around it.
    double GetTotalWidth() const { return m_width + m_spaceLeft + m_spaceRight; }
    double GetTotalHeight() const { return m_height + m_spaceTop + m_spaceBottom; }
    // Height of the floor surface of floor n above the ground floor's.
    double GetFloorZOffset(int n) const;
    // The union of the walls' bounds over the floors that have walls; false
    // if none has.
    bool GetUnionWallBoundRect(CVxDRect& out) const;
    // After loading: corners joined on every floor.
    void RebuildAllFloorsWalls();
    void ResnapAllParts();
    double GetTotalZHeight();
    bool HasSkyBox() const;
    // The unit vector towards the sun in plan axes, z up, turned by the
    // first compass. Null settings are the project's own; settings without
    // a date get the default date stored into them.
    bool GetSunDirection(CVx3DPoint& out, CVxGlobalShadow* settings);
    bool GetSunDirection(CVx3DPoint& out, int day, int minutesUtc, double longitude, double latitude) const;
    // The box of the walls of all floors, else the sheet.
    CVxDRect GetCoveringBBox() const;

    // Whole-document transforms.
    void MoveAllObjects(double dx, double dy, double dz);
    void ScaleAllObjects(double sx, double sy, double sz, bool keepDefaults, bool keepObjectSizes);
    void RotateAllObjects(int degrees);
    void MirrorAllObjects(bool vertical);
    void ConvertUnit(int from, int to, CVxFloorPlan* plan);

    // Pours `second` into this project. Each is first moved by its shift (so
    // `second` is changed). With createNewFloor the second's floors stand
    // above this project's; otherwise floor by floor its layers, walls,
    // objects and rooms join this one's, and the floors it has beyond this
    // project's count are appended. The room rectangle becomes the union of
    // both.
    void MergeProject(CVxProject* second, const CVxDPoint& shift, const CVxDPoint& secondShift,
                      bool createNewFloor);

    // Grid, margins, zoom and sub-unit moves that suit a unit; yards and
    // kilometres change nothing.
    void SetDefaultsForUnit(int unit);
    // Pixels per unit at zoom 100 % for a unit (the name is spelt so).
    static double GetDeafaultBaseZoom(int unit);
    // The unit in which room areas of a project in `unit` are told.
    static int GetStatisticalUnitForUnit(int unit);
    int GetStatisticalUnit() const { return GetStatisticalUnitForUnit(m_unit); }

    // Snaps lengths to what the project allows: whole units without sub-unit
    // moves, else fractions of an inch or decimals.
    void SubUnitCorrection(double& x, double& y, EVxDblFormat format) const;
    void SubUnitCorrection(double& value, EVxDblFormat format) const;
    void SubUnitCorrection(CVxDPoint* point, EVxDblFormat format) const;

    std::vector<CVxFloor*> m_floors;
    int m_currentFloor = 0;
    CVxViewpointSet m_viewpoints;

    CVxAttachments m_attachments;

    int m_walls3DStyle = 0;
    double m_width = 500;
    double m_height = 300;
    unsigned m_gridColor = 0xE0E0E0;
    double m_gridSize = 50;
    int m_gridLineStyle = 0;
    double m_spaceLeft = 60;
    double m_spaceTop = 60;
    double m_spaceRight = 60;
    double m_spaceBottom = 60;
    int m_unit = 1;
    bool m_subUnitMoves = false;
    // 1 means tenths, anything else hundredths.
    int m_decimalPrecision = 2;
    // The power of two of the inch fractions: 4 means sixteenths.
    int m_inchesPrecision = 4;
    double m_baseZoom = 1.0;
    bool m_userCoord = false;
    bool m_bkgScanVisible = false;
    CVxStringW m_printSetup;
    CVxStringW m_printTitle;
    CVxStringW m_printNote1;
    CVxStringW m_printNote2;
    CVxStringW m_printTitleFont;
    CVxStringW m_printNotesFont;
    CVxFont m_captionFont;
    CVxFont m_captionPrintFont;
    bool m_modified = false;
    double m_groundPosZ = 0;
    CVxAppearance m_groundAppear;
    unsigned m_skyColor = 0xFF0000;
    CVxStringW m_skyBoxLeft;
    CVxStringW m_skyBoxRight;
    CVxStringW m_skyBoxFront;
    CVxStringW m_skyBoxBack;
    CVxStringW m_skyBoxTop;
    CVxStringW m_skyBoxBottom;
    CVxStringW m_comments;
    // Folder of this project's unpacked files.
    CVxStringW m_storagePath;
    bool m_damagedOnLoad = false;
    // While the text of a container is read: its entries not yet unpacked.
    CVxPackedEntries* m_packedEntries = nullptr;
    CVxStringW m_thumbnailPath;
    // Source path and stored path of each file kept in the project.
    std::list<std::pair<CVxStringW, CVxStringW>> m_storedFiles;
    // Files that the loaded text named but that lie outside the project's
    // folders; they count as missing.
    std::vector<CVxStringW> m_refusedFiles;
    unsigned m_defFloorColor = 0xFFFFFF;
    unsigned m_defWallsColor = 0x808080;
    unsigned m_defWalls3DColor = 0xFFFFFF;
    double m_defWallThickness = 10;
    double m_defWallHeight = 265;
    // Set while a compressed file is being read.
    bool m_compressed = false;
    CVxKeptSection m_terrain;
    CVxKeptSection m_globalShadow;
    CVxKeptSection m_pictureResizeCache;

    // The room rectangle reaches to the right and bottom of the walls.
    void SizeToWalls();

private:
    // Everything moves so that the walls start at the origin again.
    void MoveToOrigin();
    void DeleteFloors();
    void WriteProjectText(CVxIniWriter* writer);
    // The unpack folder of a file being opened.
    void SetStoragePathForFile(const CVxStringW& path, bool nested);
    // The project's own sections, wherever they stand; false for others.
    bool ReadProjectSection(CVxIniFileReader* reader);
};

// The project being edited, which objects consult for the plan's base zoom
// and the rounding of positions to the unit's steps. Its owner sets it; a
// bare document has none.
CVxProject* VX_GetActiveProject();
void VX_SetActiveProject(CVxProject* project);
