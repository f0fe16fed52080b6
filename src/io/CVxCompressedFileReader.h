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
};
