#pragma once
// The object library: every object that the user can pick, as ordinary
// parts read from library files, and the pages they are shown on. The
// standard catalogue beside the program comes first, then additional
// library files, and last the user's own objects from UserLib.pvl; only
// those are written back.
//
// A library file is the record format: a "LibSetup" head with the pages,
// then one "Part%d" section per object with its members behind it. The
// same text may travel inside the compressed container under a
// "LibSetup" head that says "Compression=zlib"; it is unpacked into a
// temporary folder of its own and read from there. Library values are in
// centimetres and objects have no place.

#include "CVxCompressIniWriter.h"
#include "CVxLibraryPage.h"
#include "CVxPart.h"
#include "CVxStringW.h"
#include "IVxReadIniClient.h"

#include <array>
#include <cstdint>
#include <vector>

class CVxIniFileReader;

class CVxUserLibrary : public IVxCompressedFileOwner
{
public:
    // Flags of LoadFromFile.
    enum ELoadFlags : int
    {
        // The file's pages are kept as pages of the user library.
        LIB_LOAD_USER_PAGES = 1,
        // Added to what the library holds instead of starting afresh.
        LIB_LOAD_ADD = 2,
        // Objects without a caption are named after the file.
        LIB_LOAD_CAPTION_FROM_TITLE = 4,
        // An additional library: its pages and objects share one page bit.
        LIB_LOAD_ADDITIONAL = 8,
        // The standard catalogue: colours it leaves out come from the
        // settings, and its objects' materials are remembered for old files.
        LIB_LOAD_STANDARD = 16,
    };

    // The version of the library text that this program writes.
    static constexpr int fileVersion = 1020;
    // Bounds that no real library reaches; a file that claims more only
    // wants the memory.
    static constexpr int maxObjectsPerFile = 20000;
    static constexpr int maxObjects = 100000;
    static constexpr int maxPageIndex = 255;
    static constexpr int maxPages = 512;
    // Library numbers beyond this have no row in the tables kept by number.
    static constexpr int maxLibObjID = 65535;
    // Largest size, place or height that a library object may have, in
    // centimetres: anything beyond is damage.
    static constexpr double maxLength = 1e7;
    // The inner file of a compressed library.
    static const wchar_t* const innerFileName;
    // Beside the program: the standard catalogue, plain and compressed.
    static const wchar_t* const standardFileName;
    static const wchar_t* const standardPackedFileName;
    // Where library files that the user adds are kept: in the user's data
    // folder, so that adding one needs no right to the program's folder.
    static CVxStringW GetAdditionalLibraryFolder();
    static const wchar_t* const userFileName;

    CVxUserLibrary() = default;
    ~CVxUserLibrary() override;
    CVxUserLibrary(const CVxUserLibrary&) = delete;
    CVxUserLibrary& operator=(const CVxUserLibrary&) = delete;

    // No objects and no pages; the temporary folders stay listed.
    void Reset();

    // Reads a library file of either form; `page`, when not -1, is the user
    // page that objects without one go to. False when the file can't be
    // opened or is no library.
    bool LoadFromFile(const CVxStringW& path, int flags, int page);
    // The rest of a container whose head the reader has passed.
    bool LoadFromCompressedFile(CVxIniFileReader* reader, int flags, int page);
    // Writes the user objects (of one user page, unless pageId is -1) and
    // the user pages. The file is finished beside the target and renamed
    // over it, so a failed save leaves the previous file whole.
    bool SaveToFile(const CVxStringW& path, int pageId, bool compressed);

    // The user library in the user's documents folder.
    bool SaveUserLibrary();
    // Drops the user objects and pages and reads the file again.
    bool ReloadUserLibrary();
    // The catalogue beside the program (the compressed copy when there is
    // one), then the additional library files.
    bool LoadAllStandardLibraries();
    const CVxStringW& GetUserLibraryFile() const { return m_userLibraryFile; }
    void SetUserLibraryFile(const CVxStringW& path) { m_userLibraryFile = path; }
    // The folder where the catalogue and additional library files lie.
    const CVxStringW& GetProgramFolder() const { return m_programFolder; }
    void SetProgramFolder(const CVxStringW& folder) { m_programFolder = folder; }
    // Deletes the folders that compressed libraries were unpacked into.
    void RemoveTempFiles();

    // The object slots: a removed object is a slot not in use.
    CVxPart* GetNewObject(int* index, bool append);
    CVxPart* SafeGetPart(int index);
    const CVxPart* SafeGetPart(int index) const;
    int GetSlotCount() const { return static_cast<int>(m_objects.size()); }
    // The objects in use.
    int GetObjectCount() const;
    std::vector<CVxPart>& GetObjects() { return m_objects; }
    const std::vector<CVxPart>& GetObjects() const { return m_objects; }
    std::vector<CVxLibraryPage>& GetPages() { return m_pages; }
    const std::vector<CVxLibraryPage>& GetPages() const { return m_pages; }
    // Slots from this index on hold the user's own objects.
    int GetFirstUserObject() const { return m_firstUserObject; }
    bool IsUserObject(int index) const { return index >= m_firstUserObject && index < GetSlotCount(); }
    // The next objects read belong to the user library.
    void StartUserObjects() { m_firstUserObject = GetSlotCount(); }

    // The first object in use of that library number, -1 for none.
    int FindPartWithLibObjID(int libObjID, bool userOnly) const;
    // The first object in use with that caption, on that user page unless
    // page is -1; -1 for none.
    int GetObject(const CVxStringW& name, int page) const;
    void RemoveLastObjects(int count);
    int GetNumberOfObjectsInUserPage(int page) const;
    // The page of that mask bit and display name; -1 for none.
    int FindLibPartPage(int mask, const CVxStringW& name) const;
    // The index of the page with that unique name, -1 for none.
    int FindPageByUniqueName(const CVxStringW& uniqueName) const;
    // The mask bit of a page name: a standard one, or a loaded page's; 0
    // for an unknown one.
    int GetLibIDFromName(const CVxStringW& name) const;

    // Objects of old files take the materials of their library object.
    void SetNewLibraryPropsToLegacyPart(int version, CVxPart* part) const;

    void WriteCompressedFileHeader(FILE* file) const override;
    CVxStringW AddFileToProject(const CVxStringW& path) override { return path; }

    const CVxStringW& GetFileName() const { return m_fileName; }
    bool WasCompressed() const { return m_compressed; }
    int LibVersion = 0;
    CVxStringW m_libName;

private:
    struct SVxLibAppearance
    {
        unsigned fillColor = 0;
        unsigned frontColor = 0;
        unsigned specular = 0;
        unsigned shininess = 0;
        bool set = false;
    };

    bool LoadFromFileAt(const CVxStringW& path, int flags, int page, bool inner);
    // After the head: the pages of the file join the library.
    void AddFilePages(const class CVxLibSetupReader& setup, int flags);
    // After the objects: library form, unit, pages.
    void PrepareLoadedObject(CVxPart& part, int unit, int flags, int page, const CVxStringW& title,
                             int& runningNumber);
    std::vector<const CVxLibraryPage*> PagesToSave() const;

    std::vector<CVxPart> m_objects;
    std::vector<CVxLibraryPage> m_pages;
    int m_firstUserObject = 0;
    CVxStringW m_fileName;
    bool m_compressed = false;
    // The user library is written back in the form it was read in.
    bool m_userLibraryCompressed = true;
    std::vector<CVxStringW> m_tempFolders;
    CVxStringW m_userLibraryFile;
    CVxStringW m_programFolder;
    // Materials of the standard objects by library number, for objects of
    // files older than those materials.
    std::vector<SVxLibAppearance> m_libAppearance;
};
