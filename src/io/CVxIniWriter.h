#pragma once
// Writes the record format: "[Section]" heads and "key=value" lines with
// CR LF ends, text in UTF-8. Every persistent thing of the program goes
// through a writer: projects, libraries, settings, the clipboard.
//
// Use: construct with a path, check IsOpened(), start sections and write
// values, Finalize(), delete. Writing to a writer that is not open does
// nothing.

#include "CVxMissingFileInfo.h"
#include "CVxStringA.h"
#include "CVxStringW.h"
#include "VxReferencedFile.h"

#include <cstdio>
#include <list>

class IVxReadIniClient;

class CVxIniWriter
{
public:
    // Opens `path` for writing through the host, with the UTF-8 mark and an
    // empty line ahead of the first section.
    explicit CVxIniWriter(const CVxStringW& path, IVxReadIniClient* pathTransformer = nullptr);
    virtual ~CVxIniWriter();

    CVxIniWriter(const CVxIniWriter&) = delete;
    CVxIniWriter& operator=(const CVxIniWriter&) = delete;

    virtual bool IsOpened();
    // Completes the output; nothing to do for a plain file.
    virtual void Finalize();
    // Every section but the first stands behind one empty line. Flushes, so
    // that a crash later in a save leaves whole sections behind.
    virtual void StartSection(CVxStringA name);
    virtual void WriteInteger(const char* key, int value);
    virtual void WriteInteger64(const char* key, long value);
    virtual void WriteString(const char* key, const CVxStringW& value);
    virtual void WriteDouble(const char* key, double value);
    // Written as 1 or 0.
    virtual void WriteBool(const char* key, bool value);
    // The text under which a file path is stored: the path transformer's
    // answer if it gives one, else relative to the file's folder or the
    // built-in texture library.
    virtual CVxStringW MakeRelativePath(CVxStringW& path);
    // MakeRelativePath for a file used as `role`; a writer that embeds files
    // takes only those whose content fits the role.
    virtual CVxStringW MakeRelativePathAs(CVxStringW& path, EVxFileRole role);

    const CVxStringA& GetSectionName() const { return m_section; }
    const CVxStringW& GetPath() const { return m_path; }
    const CVxStringW& GetFolder() const { return m_folder; }
    // The missing files of the project being saved, with the user's decisions
    // about them; a container writer applies them to the paths it embeds.
    void SetMissingFiles(std::list<CVxMissingFileInfo>* missingFiles) { m_missingFiles = missingFiles; }
    std::list<CVxMissingFileInfo>* GetMissingFiles() const { return m_missingFiles; }

    // One line to any stream; a null stream writes nothing.
    static void FileWriteInteger(FILE* file, const char* key, int value);
    static void FileWriteInteger64(FILE* file, const char* key, long value);
    static void FileWriteString(FILE* file, const char* key, const CVxStringW& value);
    static void FileWriteDouble(FILE* file, const char* key, double value);
    // Opens `path` for writing through the host; with `writeBom` the file
    // starts with the UTF-8 mark and an empty line. Null on failure.
    static FILE* OpenFile(const CVxStringW& path, bool writeBom);

protected:
    // For writers whose output is not a file of their own.
    CVxIniWriter() = default;

    FILE* m_file = nullptr;
    IVxReadIniClient* m_pathTransformer = nullptr;
    CVxStringA m_section;
    CVxStringW m_path;
    CVxStringW m_folder;
    std::list<CVxMissingFileInfo>* m_missingFiles = nullptr;
};
