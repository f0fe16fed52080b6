#pragma once
// Reads the record format as a pull loop: the owner of a file asks for one
// section at a time and chooses the client that receives its keys.
//
//     CVxIniFileReader reader(path, 0);
//     reader.Start();
//     while (!reader.GetSectionName().IsEmpty())
//         reader.ReadSection(ClientFor(reader.GetSectionName()));
//
// The bytes pass through one buffer of 2048 bytes. Binary data blocks may
// stand behind a key line; the client that receives the key reads them with
// the data block functions before it returns. No byte sequence makes the
// reader read outside its buffer or loop forever: malformed lines are
// skipped, and a block that is cut short ends the data.

#include "CVxMissingFileInfo.h"
#include "CVxStringA.h"
#include "CVxStringW.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <list>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class CVxPackedEntries;
class IVxReadIniClient;

class CVxIniFileReader
{
public:
    // The reading flags, set by the loader of a project or library.
    enum EFlags : unsigned
    {
        VX_READ_NO_NEWER_VERSION_WARNING = 1,
        VX_READ_UNPACK_MAIN_FILE_ONLY = 2,
        VX_READ_SKIP_FLOOR_OBJECTS = 4,
        // The inner file of a compressed project: its unpack folder stays.
        VX_READ_INNER_COMPRESSED_FILE = 0x8000,
    };
    // What is being read; a standard library fills colours that its objects
    // leave out from the settings.
    enum EKind : int
    {
        VX_READER_OTHER = 0,
        VX_READER_PROJECT = 1,
        VX_READER_LIBRARY = 2,
        VX_READER_STANDARD_LIBRARY = 3,
    };

    static constexpr size_t VX_INI_BUFFER_SIZE = 2048;
    // For UncompressDataBlockToFile: the block runs to the end of the file.
    static constexpr unsigned VX_INI_DATA_TO_END = 0xFFFFFFFFu;

    // Opens `path` through the host. A UTF-8 mark sets the code page to 65001,
    // otherwise `codePage` stays until the file names its own.
    CVxIniFileReader(const CVxStringW& path, unsigned codePage);

    // Refills the buffer from the file; false when nothing is left.
    virtual bool ReadNewBuffer();
    virtual ~CVxIniFileReader();

    CVxIniFileReader(const CVxIniFileReader&) = delete;
    CVxIniFileReader& operator=(const CVxIniFileReader&) = delete;

    virtual bool IsOpened();
    // Moves to the first section head; the same as ReadSection(nullptr).
    virtual bool Start();
    // Hands every key of the current section to `client` (none: the section
    // is skipped) and stops at the next head, whose name becomes the current
    // one. At the end of the data the name becomes empty and the result false.
    virtual bool ReadSection(IVxReadIniClient* client);
    // From the start, every section named `section` goes to `client` and
    // every other one is skipped: the shape of a file with one section of
    // interest.
    void ReadAllSectionsNamed(const char* section, IVxReadIniClient* client);
    virtual void SetPathTransformer(IVxReadIniClient* transformer);
    // The full path of a file that the data refers to. A path whose file does
    // not exist is recorded in the list of missing files.
    virtual CVxStringW MakeAbsolutePath(const CVxStringW& path);
    // Whether a file that the data refers to by `fullPath` may be used: one
    // outside the folders of the file being read and of the program, or no
    // plain file, is recorded as missing and as refused, and gives false.
    // A path of no existing file passes; MakeAbsolutePath lists those.
    bool AcceptReference(const CVxStringW& fullPath);

    const CVxStringA& GetSectionName() const { return m_sectionName; }

    static double ToDouble(const CVxStringW& value, double def);
    static int ToInt(const CVxStringW& value, int def);
    static bool ToBool(const CVxStringW& value, bool def);
    // A number that sizes a loop or an allocation: a value that is no number
    // or lies outside [low, high] gives `def`, and the first such value of
    // each key is traced.
    static double ToDoubleInRange(const CVxStringW& value, double def, double low, double high,
                                  const char* key);
    static int ToIntInRange(const CVxStringW& value, int def, int low, int high, const char* key);
    // Traces the first value out of range of each key.
    static void TraceOutOfRange(const char* key, const CVxStringW& value);

    // Data blocks: `size` bytes that start behind the line end of the key
    // being delivered. Each leaves the reader at the line that follows the
    // block. A block cut short by the end of the data ends the data: the
    // current section stops as if the file had ended, and the result is false.
    bool SkipDataBlock(unsigned size);
    // `buffer` must hold `size` bytes.
    bool ReadDataBlock(unsigned size, void* buffer);
    // Copies the block to a new file at `path`; the block is skipped when the
    // file can't be created.
    bool ReadDataBlockToFile(unsigned size, const CVxStringW& path);
    // Inflates a zlib or gzip stream of `size` bytes (VX_INI_DATA_TO_END: up to the
    // end of the file) into a new file, never writing more than
    // `uncompressedSize` bytes. The reader's position is set by `size`
    // whatever the stream holds; a bad stream, or one that inflates to
    // another size than `uncompressedSize`, leaves the file as far as
    // written and gives false.
    bool UncompressDataBlockToFile(unsigned size, const CVxStringW& path, unsigned uncompressedSize);
    // Writes `size` bytes to a new file in pieces of 2048.
    static bool WriteDataToFile(const void* buffer, unsigned size, const CVxStringW& path);
    // One line as wide text; `eof` is set when the data ended on the way.
    CVxStringW ReadLineFromFile(bool& eof);

    // Every code page reads as UTF-8; the number is the file's claim.
    void ChangeCodePage(unsigned codePage) { m_codePage = codePage; }
    unsigned GetCodePage() const { return m_codePage; }

    unsigned GetFlags() const { return m_flags; }
    void SetFlags(unsigned flags) { m_flags = flags; }
    void AddFlags(unsigned flags) { m_flags |= flags; }
    bool HasFlag(unsigned flag) const { return (m_flags & flag) != 0; }

    int GetReaderKind() const { return m_kind; }
    void SetReaderKind(int kind) { m_kind = kind; }
    bool IsReadingProject() const { return m_kind == VX_READER_PROJECT; }
    void SetReadingProject(bool project) { m_kind = project ? VX_READER_PROJECT : VX_READER_OTHER; }

    // The "FileVersion" of the project being read, 0 until its head is read.
    int GetProjectVersion() const { return m_projectVersion; }
    void SetProjectVersion(int version) { m_projectVersion = version; }
    // The unit of lengths in the file (index of CVxUnits), centimetres by default.
    int GetUnit() const { return m_unit; }
    void SetUnit(int unit) { m_unit = unit; }

    const CVxStringW& GetPath() const { return m_path; }
    // The folder of the file, ending in "/": the base of relative paths.
    const CVxStringW& GetFolder() const { return m_folder; }
    // When set, relative paths are taken against this folder instead; a
    // project unpacked from a container looks for stray files beside it.
    const CVxStringW& GetAltBaseFolder() const { return m_altBaseFolder; }
    void SetAltBaseFolder(const CVxStringW& folder)
    {
        m_altBaseFolder = folder;
        m_foundPaths.clear();
    }

    // What unpacking the entries of a container may still write, in bytes;
    // without a limit until the owner sets one.
    uint64_t GetUnpackBudget() const { return m_unpackBudget; }
    void SetUnpackBudget(uint64_t bytes) { m_unpackBudget = bytes; }
    void TakeFromUnpackBudget(uint64_t bytes) { m_unpackBudget -= std::min(bytes, m_unpackBudget); }
    // True the first time an entry of that name is unpacked from this
    // container, false for every entry of the name after it.
    bool ClaimUnpackName(const CVxStringW& name) { return m_unpackedNames.insert(name.Std()).second; }
    // The entries of the container that the data came from, left packed
    // until a reference asks for one: every path this reader works out is
    // first offered to them. May be null; not owned.
    void SetPackedEntries(CVxPackedEntries* entries) { m_packedEntries = entries; }

    // Where in the file the next unread byte lies, and a move there: the
    // start of a data block is found again later this way.
    int64_t GetDataPosition() const;
    bool SeekData(int64_t position);

    // Lines skipped whole for their length: the data they held is lost, and
    // the document read is not the whole file.
    size_t GetOverlongLineCount() const { return m_overlongLines; }

    // The files referred to that could not be found, each once.
    std::list<CVxMissingFileInfo>& GetMissingFiles() { return m_missingFiles; }
    const std::list<CVxMissingFileInfo>& GetMissingFiles() const { return m_missingFiles; }
    // The files referred to that exist but were refused; each is also missing.
    const std::vector<CVxStringW>& GetRefusedFiles() const { return m_refusedFiles; }

protected:
    // For readers whose data is not a file; they set up the buffer themselves.
    CVxIniFileReader() = default;

    // Handles a byte order mark at the read position of data of `size` bytes.
    void SkipByteOrderMark(int64_t size, bool allowWide);

    FILE* m_file = nullptr;
    int64_t m_bytesRead = 0;
    int64_t m_fileSize = 0;
    bool m_wide = false;
    unsigned m_codePage = 0;
    IVxReadIniClient* m_pathTransformer = nullptr;
    char m_fileBuffer[VX_INI_BUFFER_SIZE] = {};
    // The bytes being read: the file buffer, or a reader's own text.
    const char* m_buffer = m_fileBuffer;
    size_t m_bufferLength = 0;
    size_t m_bufferPos = 0;
    CVxStringA m_sectionName;
    CVxStringW m_path;
    int m_projectVersion = 0;
    int m_unit = 1;
    CVxStringW m_folder;
    CVxStringW m_altBaseFolder;
    std::list<CVxMissingFileInfo> m_missingFiles;
    std::vector<CVxStringW> m_refusedFiles;
    uint64_t m_unpackBudget = UINT64_MAX;
    std::unordered_set<std::wstring> m_unpackedNames;
    CVxPackedEntries* m_packedEntries = nullptr;
    size_t m_overlongLines = 0;
    // Paths met before and the files they were found as. A project names
    // the same texture for thousands of objects; the file system, and the
    // project's copy of the file, are asked once.
    std::unordered_map<std::wstring, CVxStringW> m_foundPaths;
    int m_kind = VX_READER_OTHER;
    unsigned m_flags = 0;

    // Room for the line being read and its key and value, kept from one
    // section to the next (see ReadSection).
    struct SVxLineBuffers
    {
        std::string line;
        CVxStringA key;
        CVxStringW value;
    };
    SVxLineBuffers m_lineBuffers;

private:
    // Takes `size` bytes from the data and hands them to `sink` piece by
    // piece. Once the sink answers false, or without a sink, the rest of the
    // block is skipped. False when the data ended first; the data then counts
    // as ended.
    bool TakeBytes(uint64_t size, const std::function<bool(const char*, size_t)>& sink);
    // TakeBytes for a long block whose bytes are all in the file: whole
    // pieces go to the sink straight from the file, and `size` is what
    // remains. False, with nothing taken, when the file is too short.
    bool TakeDirect(uint64_t& size, const std::function<bool(const char*, size_t)>& sink, bool& wanted);
    uint64_t BytesLeft() const;
    bool IsAtEnd() const;
    void EndData();
    void SkipOneByte();
    CVxStringA ReadLine(bool& eof);
    // The next line into `line`, whose room is kept.
    void ReadLine(std::string& line, bool& eof);
    CVxStringW ReadWideLine(bool& eof);
    bool ReadByte(unsigned char& byte);
    bool ReadWideUnit(wchar_t& unit);
    CVxStringW BaseFolder() const;
    bool IsTrustedReference(const CVxStringW& fullPath) const;
    void AddMissingFile(const CVxStringW& fullPath);
};
