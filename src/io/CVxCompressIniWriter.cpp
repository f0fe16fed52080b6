#include "CVxCompressIniWriter.h"

#include "CVxUtils.h"
#include "IVxAppHelperCallback.h"
#include "VxReferencedFile.h"

#include <zlib.h>

#include <algorithm>
#include <climits>
#include <unistd.h>

namespace {

// Pieces of the deflater's input and output.
constexpr size_t s_zlibChunk = 16384;
// Pictures are copied in large pieces: a few system calls per megabyte.
constexpr size_t s_copyPiece = 256 << 10;
// The value of a deflated entry's "DataSize" until the real count is known:
// twelve characters, so that any count fits over it.
const char s_sizePlaceholder[] = "0           ";
constexpr long s_sizeFieldOffset = 9; // strlen("DataSize=")
// The reader takes sizes as int; a bigger file keeps its reference instead.
constexpr int64_t s_maxEmbeddedSize = INT_MAX;

bool FileExists(const CVxStringW& path)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    return host && !path.IsEmpty() && host->FileExists(path);
}

int64_t StreamSize(FILE* file)
{
    if (fseeko(file, 0, SEEK_END) != 0)
        return -1;
    const off_t size = ftello(file);
    rewind(file);
    return static_cast<int64_t>(size);
}

} // namespace

CVxCompressIniWriter::CVxCompressIniWriter(const CVxStringW& outputPath, const CVxStringW& tempPath,
                                           IVxCompressedFileOwner* owner)
    : CVxIniWriter(tempPath), m_output(OpenFile(outputPath, false)), m_owner(owner),
      m_outputFolder(outputPath.ExtractFileFolder())
{
    if (!m_output)
        return;
    if (m_owner)
        m_owner->WriteCompressedFileHeader(m_output);
    fputs("\r\n", m_output);
}

CVxCompressIniWriter::~CVxCompressIniWriter()
{
    if (m_output)
        fclose(m_output);
}

bool CVxCompressIniWriter::IsOpened()
{
    return m_file && m_output;
}

bool CVxCompressIniWriter::IsCompressedExtension(const CVxStringW& ext)
{
    CVxStringW lower = ext;
    lower.LowerCase();
    static const wchar_t* const compressed[] = {L".pvp", L".pvl", L".pvo", L".wrl",
                                                L".bmp", L".txt", L".wav"};
    return std::any_of(std::begin(compressed), std::end(compressed),
                       [&lower](const wchar_t* candidate) { return lower == candidate; });
}

CVxStringW CVxCompressIniWriter::MakeRelativePath(CVxStringW& path)
{
    return MakeRelativePathAs(path, VX_FileRoleFromName(path));
}

CVxStringW CVxCompressIniWriter::MakeRelativePathAs(CVxStringW& path, EVxFileRole role)
{
    if (path.IsEmpty())
        return path;
    std::wstring key = path.Std();
    key += static_cast<wchar_t>(L'0' + static_cast<int>(role));
    const auto known = m_resolved.find(key);
    if (known != m_resolved.end())
        return known->second;
    const CVxStringW result = ResolveAndEmbed(path, role);
    m_resolved.emplace(std::move(key), result);
    return result;
}

CVxStringW CVxCompressIniWriter::ResolveAndEmbed(const CVxStringW& path, EVxFileRole role)
{
    CVxStringW source = path;
    const bool refused = m_owner && !m_owner->MayEmbed(source);
    if (m_missingFiles && (refused || !FileExists(source))) {
        // The user decided about this file after the project was opened.
        for (const CVxMissingFileInfo& missing : *m_missingFiles) {
            if (missing.filePath != source)
                continue;
            if (missing.resolution == CVxMissingFileInfo::VX_MISSING_REMOVE)
                return CVxStringW();
            if (missing.resolution == CVxMissingFileInfo::VX_MISSING_REPLACE &&
                !missing.replacementPath.IsEmpty())
                source = missing.replacementPath;
            break;
        }
    }
    // Every byte that goes into the container passes here: a file that the
    // text named outside the project's folders, or whose content does not
    // fit its use, stays a reference.
    if ((m_owner && !m_owner->MayEmbed(source)) || !VX_IsEmbeddableFile(source, role))
        return CVxUtils::MakeRelativePath(source, m_outputFolder);
    if (m_owner)
        source = m_owner->AddFileToProject(source);
    const CVxStringW name = source.FromWinPath().ExtractFileTitle();
    if (std::find(m_embedded.begin(), m_embedded.end(), source) != m_embedded.end())
        return name;
    FILE* file = VX_OpenPlainFileForReading(source);
    if (!file)
        return CVxUtils::MakeRelativePath(source, m_outputFolder);
    const int64_t size = StreamSize(file);
    if (size < 0 || size > s_maxEmbeddedSize || name.IsEmpty()) {
        fclose(file);
        return CVxUtils::MakeRelativePath(source, m_outputFolder);
    }
    AppendFileToOutput(file, source);
    fclose(file);
    m_embedded.push_back(source);
    return name;
}

bool CVxCompressIniWriter::CopyRaw(FILE* source, int64_t size)
{
    m_piece.resize(s_copyPiece);
    char* piece = m_piece.data();
    int64_t done = 0;
    while (done < size) {
        const size_t wanted = static_cast<size_t>(std::min<int64_t>(s_copyPiece, size - done));
        size_t got = fread(piece, 1, wanted, source);
        if (got == 0) {
            // The file shrank while it was copied: the entry still holds the
            // size it announced, so that the entries behind it stay readable.
            std::fill(piece, piece + wanted, '\0');
            got = wanted;
            m_failed = true;
        }
        if (fwrite(piece, 1, got, m_output) != got)
            return false;
        done += static_cast<int64_t>(got);
    }
    return true;
}

bool CVxCompressIniWriter::CompressFile(FILE* source, uint64_t& written)
{
    z_stream stream{};
    if (deflateInit2(&stream, 1, Z_DEFLATED, 15, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        return false;
    unsigned char in[s_zlibChunk];
    unsigned char out[s_zlibChunk];
    bool ok = true;
    int flush = Z_NO_FLUSH;
    do {
        stream.avail_in = static_cast<uInt>(fread(in, 1, sizeof(in), source));
        if (ferror(source)) {
            ok = false;
            break;
        }
        flush = feof(source) ? Z_FINISH : Z_NO_FLUSH;
        stream.next_in = in;
        do {
            stream.avail_out = sizeof(out);
            stream.next_out = out;
            if (deflate(&stream, flush) == Z_STREAM_ERROR) {
                ok = false;
                break;
            }
            const size_t produced = sizeof(out) - stream.avail_out;
            if (fwrite(out, 1, produced, m_output) != produced) {
                ok = false;
                break;
            }
            written += produced;
        } while (stream.avail_out == 0);
    } while (ok && flush != Z_FINISH);
    deflateEnd(&stream);
    return ok;
}

bool CVxCompressIniWriter::AppendFileToOutput(FILE* source, const CVxStringW& path)
{
    if (!m_output || !source)
        return false;
    const CVxStringW name = path.FromWinPath().ExtractFileTitle();
    const int64_t size = StreamSize(source);
    if (size < 0) {
        m_failed = true;
        return false;
    }
    fputs("[File]\r\n", m_output);
    FileWriteString(m_output, "Name", name);
    bool ok = true;
    if (!IsCompressedExtension(name.ExtractFileExt())) {
        fprintf(m_output, "DataSize=%lld\r\n", static_cast<long long>(size));
        ok = CopyRaw(source, size);
    } else {
        fflush(m_output);
        const off_t entryStart = ftello(m_output);
        fprintf(m_output, "UncpSize=%lld\r\n", static_cast<long long>(size));
        const off_t sizeLine = ftello(m_output);
        fprintf(m_output, "DataSize=%s\r\n", s_sizePlaceholder);
        uint64_t written = 0;
        if (CompressFile(source, written) && written > 0) {
            fseeko(m_output, sizeLine + s_sizeFieldOffset, SEEK_SET);
            fprintf(m_output, "%llu", static_cast<unsigned long long>(written));
            fseeko(m_output, 0, SEEK_END);
        } else {
            // The deflater gave up: the file goes in raw, and what it had
            // produced is cut away, so the container stays well formed.
            fflush(m_output);
            ok = fseeko(m_output, entryStart, SEEK_SET) == 0 && ftruncate(fileno(m_output), entryStart) == 0;
            rewind(source);
            fprintf(m_output, "DataSize=%lld\r\n", static_cast<long long>(size));
            ok = ok && CopyRaw(source, size);
        }
    }
    fputs("\r\n\r\n", m_output);
    if (!ok || ferror(m_output))
        m_failed = true;
    return ok;
}

void CVxCompressIniWriter::Finalize()
{
    if (m_finalized)
        return;
    m_finalized = true;
    if (!m_file || !m_output) {
        m_failed = true;
        return;
    }
    const bool textWritten = fflush(m_file) == 0 && !ferror(m_file);
    const bool textClosed = fclose(m_file) == 0;
    m_file = nullptr;
    IVxAppHelperCallback* host = VX_GetAppHelper();
    FILE* text = host ? host->OpenFile(m_path, VX_OPEN_READ) : nullptr;
    if (!textWritten || !textClosed || !text) {
        m_failed = true;
        if (text)
            fclose(text);
        return;
    }
    AppendFileToOutput(text, m_path);
    fclose(text);
    if (fflush(m_output) != 0 || ferror(m_output))
        m_failed = true;
    if (fclose(m_output) != 0)
        m_failed = true;
    m_output = nullptr;
}
