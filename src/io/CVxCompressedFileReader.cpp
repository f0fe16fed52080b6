#include "CVxCompressedFileReader.h"

#include "CVxIniFileReader.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#include <algorithm>
#include <memory>

namespace {

// Longer names are no names the writer produces, and file systems refuse
// them anyway.
constexpr int s_maxNameLength = 200;

} // namespace

CVxCompressedFileReader::CVxCompressedFileReader(const CVxStringW& folder, const CVxStringW& mainExt)
    : m_folder(folder), m_mainExt(mainExt)
{
}

uint64_t CVxCompressedFileReader::UnpackBudgetFor(int64_t fileSize)
{
    const uint64_t size = fileSize > 0 ? static_cast<uint64_t>(fileSize) : 0;
    return std::min(size * maxUnpackRatio, maxUnpackedTotal);
}

CVxStringW CVxCompressedFileReader::SafeEntryName(const CVxStringW& name)
{
    // Containers written on other systems may carry either separator or a
    // drive; only the last part names the file.
    CVxStringW bare = name.FromWinPath();
    bare = bare.Mid(bare.ReverseFind(L'/') + 1);
    bare = bare.Mid(bare.ReverseFind(L':') + 1);
    if (bare.IsEmpty() || bare == L"." || bare == L".." || bare.GetLength() > s_maxNameLength)
        return CVxStringW();
    const bool control =
        std::any_of(bare.Std().begin(), bare.Std().end(), [](wchar_t c) { return c < 0x20 || c == 0x7F; });
    return control ? CVxStringW() : bare;
}

void CVxCompressedFileReader::OnReadIniValue(const CVxStringA& key, const CVxStringW& value,
                                             CVxIniFileReader* reader)
{
    if (key == "Name") {
        m_name = SafeEntryName(value);
    } else if (key == "UncpSize") {
        const int size = CVxIniFileReader::ToInt(value, 0);
        m_uncompressedSize = size > 0 ? static_cast<unsigned>(size) : 0;
    } else if (key == "DataSize") {
        if (!reader)
            return;
        const int size = CVxIniFileReader::ToInt(value, 0);
        if (size < 0) {
            // No block can be that long: the rest of the container is lost.
            reader->SkipDataBlock(CVxIniFileReader::VX_INI_DATA_TO_END);
            m_damaged = true;
            return;
        }
        m_dataSize = static_cast<unsigned>(size);
        if (m_dataSize == 0)
            return;
        if (m_name.IsEmpty()) {
            m_damaged = !reader->SkipDataBlock(m_dataSize);
            return;
        }
        const CVxStringW path = m_folder + m_name;
        const bool isMain = m_name.ExtractFileExt() == m_mainExt;
        if (!isMain && reader->HasFlag(CVxIniFileReader::VX_READ_UNPACK_MAIN_FILE_ONLY)) {
            m_damaged = !reader->SkipDataBlock(m_dataSize);
            return;
        }
        // Noted where they lie, to be unpacked when asked for; the first
        // entry of a name counts here too.
        if (!isMain && m_packed) {
            const int64_t position = reader->GetDataPosition();
            if (!reader->SkipDataBlock(m_dataSize))
                m_damaged = true;
            else
                m_packed->Add(m_name, position, m_dataSize, m_uncompressedSize);
            return;
        }
        // Entries of one name would all go to the one file, each rewriting
        // the one before, and a file system may write every such file out
        // before it lets it be truncated: thousands of them take minutes.
        // The writer never repeats a name; the first entry of a name counts.
        if (!reader->ClaimUnpackName(m_name)) {
            m_damaged = !reader->SkipDataBlock(m_dataSize);
            return;
        }
        if (isMain)
            m_mainFile = path;
        // A few kilobytes of a container can claim gigabytes: what all
        // entries unpack together is bounded, and an entry that does not fit
        // is left out whole.
        const unsigned unpacked =
            m_uncompressedSize != 0 ? std::min(m_uncompressedSize, maxUncompressedSize) : m_dataSize;
        if (unpacked > reader->GetUnpackBudget()) {
            VxTrace("Container entry left out, unpacked size beyond the limit: %s\n",
                    VX_StringToUTF8(m_name).c_str());
            if (m_mainFile == path)
                m_mainFile.Empty();
            reader->SkipDataBlock(m_dataSize);
            m_damaged = true;
            return;
        }
        reader->TakeFromUnpackBudget(unpacked);
        if (m_uncompressedSize != 0)
            m_damaged = !reader->UncompressDataBlockToFile(m_dataSize, path, unpacked);
        else
            m_damaged = !reader->ReadDataBlockToFile(m_dataSize, path);
    }
}

CVxPackedEntries::CVxPackedEntries(const CVxStringW& container, const CVxStringW& folder)
    : m_container(container), m_folder(folder)
{
}

CVxPackedEntries::~CVxPackedEntries() = default;

bool CVxPackedEntries::Add(const CVxStringW& name, int64_t position, unsigned dataSize,
                           unsigned uncompressedSize)
{
    return m_entries.emplace(name.Std(), SEntry{position, dataSize, uncompressedSize, false}).second;
}

void CVxPackedEntries::UnpackFor(const CVxStringW& path)
{
    if (m_entries.empty() || path.GetLength() <= m_folder.GetLength() || !path.StartsWith(m_folder))
        return;
    const CVxStringW name = path.Mid(m_folder.GetLength());
    const auto found = m_entries.find(name.Std());
    if (found == m_entries.end() || found->second.unpacked)
        return;
    SEntry& entry = found->second;
    entry.unpacked = true;
    const unsigned unpacked =
        entry.uncompressedSize != 0
            ? std::min(entry.uncompressedSize, CVxCompressedFileReader::maxUncompressedSize)
            : entry.dataSize;
    if (unpacked > m_budget) {
        VxTrace("Container entry left out, unpacked size beyond the limit: %s\n",
                VX_StringToUTF8(name).c_str());
        m_damaged = true;
        return;
    }
    m_budget -= unpacked;
    if (!m_reader)
        m_reader = std::make_unique<CVxIniFileReader>(m_container, 0);
    bool written = m_reader->IsOpened() && m_reader->SeekData(entry.position);
    if (written && entry.uncompressedSize != 0)
        written = m_reader->UncompressDataBlockToFile(entry.dataSize, path, unpacked);
    else if (written)
        written = m_reader->ReadDataBlockToFile(entry.dataSize, path);
    if (!written) {
        // A broken stream may leave the reader at the end of its data; the
        // next entry starts from a fresh one.
        m_reader.reset();
        m_damaged = true;
    }
}
