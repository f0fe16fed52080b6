#pragma once
// Unpacks one "[File]" entry of a compressed project or library into the
// folder of the opened document. The owner of the container reads each
// "File" section with a fresh instance and asks it afterwards whether the
// entry was the main file, the document's own text.
//
// The entry's bytes follow its "DataSize" line; the client takes them through
// the reader's data block functions, so the reader goes on behind them.
// Whatever the container says, nothing is written outside the unpack folder:
// a name with folders in it is cut to its last part, names that are no file
// names are refused, and inflated data is cut off at the announced size.

#include "IVxReadIniClient.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

class CVxIniFileReader;

// The side entries of a container that were not unpacked on opening, by
// name. A container may hold any number of entries that its text never
// names, and every file made costs the file system far more than reading
// past the entry's bytes; so an entry is written out when the document
// first refers to it, and never otherwise.
class CVxPackedEntries
{
public:
    // `container` is the file that holds the entries, `folder` (ending in
    // "/") the unpack folder.
    CVxPackedEntries(const CVxStringW& container, const CVxStringW& folder);
    ~CVxPackedEntries();

    // What all entries together may unpack, in bytes; no limit until set.
    void SetBudget(uint64_t bytes) { m_budget = bytes; }

    // Notes an entry whose data starts at `position` in the container;
    // false if the name is known already (the first entry of a name counts).
    bool Add(const CVxStringW& name, int64_t position, unsigned dataSize, unsigned uncompressedSize);
    // If `path` is a file of the unpack folder that an entry not yet
    // unpacked would be, unpacks that entry now.
    void UnpackFor(const CVxStringW& path);
    // An entry unpacked so far was cut short, broken or over the budget.
    bool IsDamaged() const { return m_damaged; }
    size_t GetCount() const { return m_entries.size(); }

private:
    struct SEntry
    {
        int64_t position = 0;
        unsigned dataSize = 0;
        unsigned uncompressedSize = 0;
        bool unpacked = false;
    };
    CVxStringW m_container;
    CVxStringW m_folder;
    uint64_t m_budget = UINT64_MAX;
    std::unordered_map<std::wstring, SEntry> m_entries;
    // Opened at the first entry that is unpacked.
    std::unique_ptr<CVxIniFileReader> m_reader;
    bool m_damaged = false;
};

class CVxCompressedFileReader : public IVxReadIniClient
{
public:
    // No entry inflates beyond this, whatever its "UncpSize" claims.
    static constexpr unsigned maxUncompressedSize = 1u << 30;
    // What a whole container may unpack: this many times its own size, and
    // never more than maxUnpackedTotal.
    static constexpr uint64_t maxUnpackRatio = 200;
    static constexpr uint64_t maxUnpackedTotal = uint64_t{2} << 30;
    // The unpack budget of a container of `fileSize` bytes.
    static uint64_t UnpackBudgetFor(int64_t fileSize);

    // `folder` ends in "/"; `mainExt` ("." and the extension, compared
    // exactly) marks the main file.
    CVxCompressedFileReader(const CVxStringW& folder, const CVxStringW& mainExt);

    void OnReadIniValue(const CVxStringA& key, const CVxStringW& value, CVxIniFileReader* reader) override;
    // Side entries are then noted there and skipped, not unpacked; the main
    // file is unpacked all the same. May be null; not owned.
    void SetPackedEntries(CVxPackedEntries* entries) { m_packed = entries; }

    // The unpacked main file; empty when this entry was none.
    const CVxStringW& GetMainFile() const { return m_mainFile; }
    // The entry's data ended early, its stream was broken, or it unpacked
    // to another size than announced: what was written is not the file.
    bool IsDamaged() const { return m_damaged; }

    // The bare file name under which an entry may be unpacked, or an empty
    // string when `name` can't be one. Folders, drive letters and the
    // special names "." and ".." never pass.
    static CVxStringW SafeEntryName(const CVxStringW& name);

private:
    CVxStringW m_folder;
    CVxStringW m_name;
    CVxStringW m_mainExt;
    unsigned m_uncompressedSize = 0;
    unsigned m_dataSize = 0;
    CVxStringW m_mainFile;
    bool m_damaged = false;
    CVxPackedEntries* m_packed = nullptr;
};
