#include "CVxIniFileReader.h"

#include "CVxCompressedFileReader.h"

#include "CVxUtils.h"
#include "IVxAppHelperCallback.h"
#include "IVxReadIniClient.h"
#include "VxCodePages.h"
#include "VxNumbers.h"
#include "VxReferencedFile.h"
#include "VxTrace.h"
#include "VxUtf8.h"

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

// Pieces of the inflate output; matches what the container's writer uses.
constexpr size_t s_inflateChunk = 16384;
// Data blocks at least this long are read past the line buffer, in pieces of
// up to 16 times as much.
constexpr uint64_t s_directPiece = 16384;
// Blocks from this size on are copied by the kernel when the file system can.
constexpr uint64_t s_kernelCopyMin = 65536;
// Paths longer than this are taken for paths of another machine: only their
// tail is looked for.
constexpr int s_longPath = 200;
// No line that the program writes comes near this; a longer one is skipped
// whole instead of being held, widened and copied at many times its size.
constexpr size_t s_maxLineLength = size_t{8} << 20;

// Text of a file for the log: anything but printable ASCII becomes "?", so
// that no control sequence of a hostile file reaches a terminal.
std::string PlainAscii(const std::string& text)
{
    std::string plain = text;
    for (char& c : plain)
        if (c < 0x20 || c > 0x7E)
            c = '?';
    return plain;
}

IVxAppHelperCallback* Host()
{
    return VX_GetAppHelper();
}

bool FileExists(const CVxStringW& path)
{
    IVxAppHelperCallback* host = Host();
    return host && !path.IsEmpty() && host->FileExists(path);
}

FILE* CreateOutputFile(const CVxStringW& path)
{
    IVxAppHelperCallback* host = Host();
    return (host && !path.IsEmpty()) ? host->OpenFile(path, VX_OPEN_WRITE) : nullptr;
}

} // namespace

CVxIniFileReader::CVxIniFileReader(const CVxStringW& path, unsigned codePage)
    : m_codePage(codePage), m_path(path), m_folder(path.ExtractFileFolder())
{
    IVxAppHelperCallback* host = Host();
    if (!host || path.IsEmpty())
        return;
    // A FIFO or device in place of a file would hold the program in open()
    // or feed it without end.
    m_file = VX_OpenPlainFileForReading(path, INT64_MAX);
    if (!m_file)
        return;
    if (fseeko(m_file, 0, SEEK_END) == 0) {
        const off_t size = ftello(m_file);
        m_fileSize = size > 0 ? static_cast<int64_t>(size) : 0;
    }
    fseeko(m_file, 0, SEEK_SET);
    CVxIniFileReader::ReadNewBuffer();
    SkipByteOrderMark(m_fileSize, true);
}

CVxIniFileReader::~CVxIniFileReader()
{
    if (m_file)
        fclose(m_file);
}

void CVxIniFileReader::SkipByteOrderMark(int64_t size, bool allowWide)
{
    const size_t available = m_bufferLength - m_bufferPos;
    const auto* bytes = reinterpret_cast<const unsigned char*>(m_buffer + m_bufferPos);
    if (allowWide && size > 1 && available >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE) {
        // Lines are then read in units of wchar_t. The stored size is halved
        // as older versions did, so beyond the first buffer only half of such
        // a file is read; no file of the program's own is written so.
        m_wide = true;
        m_bufferPos += 2;
        m_fileSize /= 2;
    } else if (size != 2 && available >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF) {
        m_bufferPos += 3;
        m_codePage = VX_CP_UTF8;
    }
}

bool CVxIniFileReader::ReadNewBuffer()
{
    m_bufferPos = 0;
    m_bufferLength = 0;
    if (!m_file || m_bytesRead >= m_fileSize)
        return false;
    const size_t wanted =
        static_cast<size_t>(std::min<int64_t>(VX_INI_BUFFER_SIZE, m_fileSize - m_bytesRead));
    const size_t got = fread(m_fileBuffer, 1, wanted, m_file);
    m_bytesRead += static_cast<int64_t>(got);
    m_bufferLength = got;
    // A file that shrank since it was opened ends where its bytes end.
    if (got < wanted)
        m_fileSize = m_bytesRead;
    return got > 0;
}

int64_t CVxIniFileReader::GetDataPosition() const
{
    return m_bytesRead - static_cast<int64_t>(m_bufferLength - m_bufferPos);
}

bool CVxIniFileReader::SeekData(int64_t position)
{
    if (!m_file || position < 0 || position > m_fileSize ||
        fseeko(m_file, static_cast<off_t>(position), SEEK_SET) != 0)
        return false;
    m_bytesRead = position;
    ReadNewBuffer();
    return true;
}

bool CVxIniFileReader::IsOpened()
{
    return m_file != nullptr;
}

bool CVxIniFileReader::Start()
{
    return ReadSection(nullptr);
}

void CVxIniFileReader::ReadAllSectionsNamed(const char* section, IVxReadIniClient* client)
{
    Start();
    while (!GetSectionName().IsEmpty())
        ReadSection(GetSectionName() == section ? client : nullptr);
}

bool CVxIniFileReader::ReadSection(IVxReadIniClient* client)
{
    // The line, key and value buffers of the last section are used again,
    // so that a line costs no allocation once they have grown. A client
    // that reads a section of its own on the way finds them taken and
    // makes its own.
    struct SBorrowed
    {
        explicit SBorrowed(SVxLineBuffers& owner)
            : owner(owner), line(std::move(owner.line)), key(std::move(owner.key)),
              value(std::move(owner.value))
        {
        }
        ~SBorrowed()
        {
            owner.line = std::move(line);
            owner.key = std::move(key);
            owner.value = std::move(value);
        }
        SVxLineBuffers& owner;
        std::string line;
        CVxStringA key;
        CVxStringW value;
    } lines(m_lineBuffers);
    for (;;) {
        bool eof = false;
        if (m_wide) {
            const CVxStringW line = ReadWideLine(eof);
            if (line[0] == L'[') {
                const int close = line.Find(L']');
                if (close > 0) {
                    m_sectionName = CVxStringA(line.Mid(1, close - 1));
                    return true;
                }
            } else if (client) {
                const int equals = line.Find(L'=');
                const CVxStringA key = equals > 0 ? CVxStringA(line.Left(equals)) : CVxStringA();
                if (!key.IsEmpty())
                    client->OnReadIniValue(key, line.Mid(equals + 1), this);
            }
        } else {
            ReadLine(lines.line, eof);
            const std::string& line = lines.line;
            if (!line.empty() && line[0] == '[') {
                const size_t close = line.find(']');
                if (close != std::string::npos && close > 0) {
                    m_sectionName = CVxStringA(line.substr(1, close - 1));
                    return true;
                }
            } else if (client) {
                const size_t equals = line.find('=');
                if (equals != std::string::npos && equals > 0) {
                    lines.key.Std().assign(line, 0, equals);
                    lines.value.Std().clear();
                    VX_AppendUnicodeFromUTF8(line.data() + equals + 1, line.data() + line.size(),
                                             lines.value.Std());
                    client->OnReadIniValue(lines.key, lines.value, this);
                }
            }
        }
        if (eof) {
            m_sectionName.Empty();
            return false;
        }
    }
}

void CVxIniFileReader::SetPathTransformer(IVxReadIniClient* transformer)
{
    m_pathTransformer = transformer;
    m_foundPaths.clear();
}

CVxStringW CVxIniFileReader::BaseFolder() const
{
    return m_altBaseFolder.IsEmpty() ? m_folder : m_altBaseFolder;
}

bool CVxIniFileReader::IsTrustedReference(const CVxStringW& fullPath) const
{
    return VX_IsPlainFile(fullPath) && VX_IsInsideTrustedFolders(fullPath, {m_folder, m_altBaseFolder});
}

bool CVxIniFileReader::AcceptReference(const CVxStringW& fullPath)
{
    if (m_packedEntries)
        m_packedEntries->UnpackFor(fullPath);
    if (fullPath.IsEmpty() || !FileExists(fullPath) || IsTrustedReference(fullPath))
        return true;
    VxTrace("Reference refused, outside the project's folders: %s\n", VX_StringToUTF8(fullPath).c_str());
    AddMissingFile(fullPath);
    if (std::find(m_refusedFiles.begin(), m_refusedFiles.end(), fullPath) == m_refusedFiles.end())
        m_refusedFiles.push_back(fullPath);
    return false;
}

void CVxIniFileReader::AddMissingFile(const CVxStringW& fullPath)
{
    const bool listed =
        std::any_of(m_missingFiles.begin(), m_missingFiles.end(),
                    [&](const CVxMissingFileInfo& info) { return info.filePath == fullPath; });
    if (!listed)
        m_missingFiles.emplace_back(fullPath, CVxMissingFileInfo::VX_MISSING_KEEP);
}

CVxStringW CVxIniFileReader::MakeAbsolutePath(const CVxStringW& path)
{
    if (path.IsEmpty())
        return path;
    const auto known = m_foundPaths.find(path.Std());
    if (known != m_foundPaths.end())
        return known->second;
    // The transformer copies the file into the project: a file that the
    // project may not take in never reaches it.
    const CVxStringW direct = CVxUtils::MakeFullPath(path, m_folder);
    if (m_packedEntries)
        m_packedEntries->UnpackFor(direct);
    const bool refused = FileExists(direct) && !IsTrustedReference(direct);
    CVxStringW result;
    // What the transformer answers is the project's own copy.
    const bool transformed =
        !refused && m_pathTransformer && m_pathTransformer->OnPathTransformToAbsolute(result, path, m_folder);
    if (!transformed)
        result = CVxUtils::MakeFullPath(path, BaseFolder());
    if (result.IsEmpty())
        return result;
    if (FileExists(result)) {
        if (!transformed && !AcceptReference(result))
            return result;
        m_foundPaths.emplace(path.Std(), result);
        return result;
    }
    // Pictures of the resize cache are made again when needed.
    if (result.Contains(CVxStringW(L"rXrsz")))
        return CVxStringW();
    if (path.GetLength() > s_longPath) {
        // A long absolute path of another machine: keep its tail, which may
        // well lie beside this file.
        const CVxStringW tail = path.FromWinPath().Right(s_longPath);
        const int slash = tail.Find(L'/');
        if (slash > 0) {
            result = CVxUtils::MakeFullPath(tail.Mid(slash + 1), BaseFolder());
            if (FileExists(result) && AcceptReference(result)) {
                m_foundPaths.emplace(path.Std(), result);
                return result;
            }
        }
    }
    AddMissingFile(result);
    return result;
}

double CVxIniFileReader::ToDouble(const CVxStringW& value, double def)
{
    return DblLoad(value, def);
}

int CVxIniFileReader::ToInt(const CVxStringW& value, int def)
{
    return value.ToIntDef(def);
}

bool CVxIniFileReader::ToBool(const CVxStringW& value, bool def)
{
    return value.ToBoolDef(def);
}

void CVxIniFileReader::TraceOutOfRange(const char* key, const CVxStringW& value)
{
    static std::set<std::string> traced;
    if (key && traced.insert(key).second)
        VxTrace("Value out of range, default used: %s=%s\n", key, VX_StringToUTF8(value.Left(40)).c_str());
}

double CVxIniFileReader::ToDoubleInRange(const CVxStringW& value, double def, double low, double high,
                                         const char* key)
{
    const double read = DblLoad(value, def);
    if (std::isfinite(read) && read >= low && read <= high)
        return read;
    TraceOutOfRange(key, value);
    return def;
}

int CVxIniFileReader::ToIntInRange(const CVxStringW& value, int def, int low, int high, const char* key)
{
    const int read = value.ToIntDef(def);
    if (read >= low && read <= high)
        return read;
    TraceOutOfRange(key, value);
    return def;
}

// Lines

bool CVxIniFileReader::IsAtEnd() const
{
    const bool fileDone = !m_file || m_bytesRead >= m_fileSize;
    return fileDone && m_bufferPos >= m_bufferLength;
}

uint64_t CVxIniFileReader::BytesLeft() const
{
    uint64_t left = m_bufferLength - m_bufferPos;
    if (m_file && m_fileSize > m_bytesRead)
        left += static_cast<uint64_t>(m_fileSize - m_bytesRead);
    return left;
}

void CVxIniFileReader::EndData()
{
    m_bufferPos = m_bufferLength;
    m_fileSize = std::min(m_fileSize, m_bytesRead);
}

bool CVxIniFileReader::ReadByte(unsigned char& byte)
{
    if (m_bufferPos >= m_bufferLength && !ReadNewBuffer())
        return false;
    byte = static_cast<unsigned char>(m_buffer[m_bufferPos++]);
    return true;
}

void CVxIniFileReader::SkipOneByte()
{
    unsigned char ignored = 0;
    ReadByte(ignored);
}

CVxStringA CVxIniFileReader::ReadLine(bool& eof)
{
    std::string line;
    ReadLine(line, eof);
    return CVxStringA(std::move(line));
}

void CVxIniFileReader::ReadLine(std::string& line, bool& eof)
{
    eof = false;
    line.clear();
    if (IsAtEnd()) {
        eof = true;
        return;
    }
    bool overlong = false;
    for (;;) {
        if (m_bufferPos >= m_bufferLength && !ReadNewBuffer()) {
            eof = true;
            if (overlong)
                line.clear();
            return;
        }
        const char* start = m_buffer + m_bufferPos;
        const char* end = m_buffer + m_bufferLength;
        const char* p = start;
        while (p < end && *p != '\r' && *p != '\n')
            ++p;
        if (line.size() + static_cast<size_t>(p - start) <= s_maxLineLength) {
            line.append(start, static_cast<size_t>(p - start));
        } else if (!overlong) {
            overlong = true;
            ++m_overlongLines;
            // The key names what is lost: a floor opening of a million
            // points, say, that a reader can't hold.
            const std::string head = line.substr(0, 64);
            const size_t equals = head.find('=');
            const std::string key = equals == std::string::npos ? head.substr(0, 32) : head.substr(0, equals);
            VxTrace("Line longer than %zu bytes skipped, section [%s], key %s: what it holds is lost\n",
                    s_maxLineLength, PlainAscii(m_sectionName.Std()).c_str(), PlainAscii(key).c_str());
        }
        m_bufferPos += static_cast<size_t>(p - start);
        if (p < end) {
            ++m_bufferPos;
            // CR LF ends a line as LF does; the byte behind a CR is taken for
            // its LF without a look.
            if (*p == '\r')
                SkipOneByte();
            if (overlong)
                line.clear();
            return;
        }
    }
}

bool CVxIniFileReader::ReadWideUnit(wchar_t& unit)
{
    unsigned char bytes[sizeof(wchar_t)];
    for (unsigned char& byte : bytes) {
        if (!ReadByte(byte))
            return false;
    }
    memcpy(&unit, bytes, sizeof(unit));
    return true;
}

CVxStringW CVxIniFileReader::ReadWideLine(bool& eof)
{
    eof = false;
    std::wstring line;
    if (IsAtEnd()) {
        eof = true;
        return CVxStringW();
    }
    for (;;) {
        wchar_t unit = 0;
        if (!ReadWideUnit(unit)) {
            eof = true;
            return CVxStringW(std::move(line));
        }
        if (unit == L'\r' || unit == L'\n') {
            if (unit == L'\r')
                ReadWideUnit(unit);
            return CVxStringW(std::move(line));
        }
        line += unit;
    }
}

CVxStringW CVxIniFileReader::ReadLineFromFile(bool& eof)
{
    if (m_wide)
        return ReadWideLine(eof);
    return VX_StringToUnicode(ReadLine(eof), static_cast<int>(m_codePage));
}

// Data blocks

bool CVxIniFileReader::TakeBytes(uint64_t size, const std::function<bool(const char*, size_t)>& sink)
{
    bool wanted = static_cast<bool>(sink);
    while (size > 0) {
        if (m_bufferPos >= m_bufferLength) {
            if (!wanted && m_file) {
                // Skip the rest in the file itself instead of through the buffer.
                const uint64_t inFile =
                    m_fileSize > m_bytesRead ? static_cast<uint64_t>(m_fileSize - m_bytesRead) : 0;
                if (size > inFile ||
                    fseeko(m_file, static_cast<off_t>(m_bytesRead + static_cast<int64_t>(size)), SEEK_SET) !=
                        0) {
                    EndData();
                    return false;
                }
                m_bytesRead += static_cast<int64_t>(size);
                ReadNewBuffer();
                return true;
            }
            // A picture of megabytes goes from the file to the sink in large
            // pieces, past the line buffer.
            if (wanted && m_file && size >= s_directPiece && TakeDirect(size, sink, wanted))
                continue;
            if (!ReadNewBuffer()) {
                EndData();
                return false;
            }
        }
        const size_t count = static_cast<size_t>(std::min<uint64_t>(size, m_bufferLength - m_bufferPos));
        const char* piece = m_buffer + m_bufferPos;
        m_bufferPos += count;
        size -= count;
        if (wanted && !sink(piece, count))
            wanted = false;
    }
    return true;
}

bool CVxIniFileReader::TakeDirect(uint64_t& size, const std::function<bool(const char*, size_t)>& sink,
                                  bool& wanted)
{
    const uint64_t inFile = m_fileSize > m_bytesRead ? static_cast<uint64_t>(m_fileSize - m_bytesRead) : 0;
    // A block cut short goes through the buffer, which knows how to end.
    if (inFile < size)
        return false;
    std::vector<char> piece(static_cast<size_t>(std::min<uint64_t>(s_directPiece * 16, size)));
    // Whole pieces only: the tail of the block comes through the buffer, as
    // the lines behind it do.
    while (wanted && size >= s_directPiece) {
        const size_t count = static_cast<size_t>(std::min<uint64_t>(piece.size(), size));
        const size_t got = fread(piece.data(), 1, count, m_file);
        m_bytesRead += static_cast<int64_t>(got);
        size -= got;
        if (got < count) {
            // The file shrank since it was opened.
            EndData();
            return true;
        }
        if (!sink(piece.data(), got))
            wanted = false;
    }
    return true;
}

bool CVxIniFileReader::SkipDataBlock(unsigned size)
{
    return TakeBytes(size, nullptr);
}

bool CVxIniFileReader::ReadDataBlock(unsigned size, void* buffer)
{
    if (!buffer)
        return TakeBytes(size, nullptr) && size == 0;
    char* out = static_cast<char*>(buffer);
    return TakeBytes(size, [&out](const char* piece, size_t count) {
        memcpy(out, piece, count);
        out += count;
        return true;
    });
}

bool CVxIniFileReader::ReadDataBlockToFile(unsigned size, const CVxStringW& path)
{
    FILE* file = CreateOutputFile(path);
    if (!file) {
        SkipDataBlock(size);
        return false;
    }
    bool written = true;
    uint64_t left = size;
    // What the line buffer holds already goes first; a picture of megabytes
    // then goes from file to file inside the kernel, never through our
    // memory. A file system that can't do that leaves it to the buffer.
    const size_t buffered = static_cast<size_t>(std::min<uint64_t>(left, m_bufferLength - m_bufferPos));
    if (buffered > 0) {
        written = fwrite(m_buffer + m_bufferPos, 1, buffered, file) == buffered;
        m_bufferPos += buffered;
        left -= buffered;
    }
    if (written && m_file && left >= s_kernelCopyMin && m_bufferPos >= m_bufferLength &&
        m_fileSize - m_bytesRead >= static_cast<int64_t>(left) && fflush(file) == 0) {
        off_t from = static_cast<off_t>(m_bytesRead);
        uint64_t copied = 0;
        while (copied < left) {
            const ssize_t n = copy_file_range(fileno(m_file), &from, fileno(file), nullptr,
                                              static_cast<size_t>(left - copied), 0);
            if (n <= 0)
                break;
            copied += static_cast<uint64_t>(n);
        }
        m_bytesRead += static_cast<int64_t>(copied);
        left -= copied;
        if (fseeko(m_file, static_cast<off_t>(m_bytesRead), SEEK_SET) != 0) {
            EndData();
            fclose(file);
            return false;
        }
    }
    const bool complete = TakeBytes(left, [&](const char* piece, size_t count) {
        written = written && fwrite(piece, 1, count, file) == count;
        return written;
    });
    written = (fclose(file) == 0) && written;
    return complete && written;
}

bool CVxIniFileReader::UncompressDataBlockToFile(unsigned size, const CVxStringW& path,
                                                 unsigned uncompressedSize)
{
    const uint64_t blockSize = size == VX_INI_DATA_TO_END ? BytesLeft() : size;
    FILE* file = CreateOutputFile(path);
    if (!file) {
        TakeBytes(blockSize, nullptr);
        return false;
    }
    z_stream stream{};
    // 15 window bits plus 32: zlib and gzip heads alike.
    if (inflateInit2(&stream, 47) != Z_OK) {
        fclose(file);
        TakeBytes(blockSize, nullptr);
        return false;
    }
    unsigned char out[s_inflateChunk];
    uint64_t written = 0;
    bool finished = false;
    bool failed = false;
    // Fed piece by piece from the block; answers false once the stream is
    // done or broken, after which the rest of the block is skipped.
    auto inflatePiece = [&](const char* piece, size_t count) {
        stream.next_in = reinterpret_cast<const Bytef*>(piece);
        stream.avail_in = static_cast<uInt>(count);
        do {
            stream.next_out = out;
            stream.avail_out = sizeof(out);
            const int status = inflate(&stream, Z_NO_FLUSH);
            const size_t produced = sizeof(out) - stream.avail_out;
            // The stated size caps the output: a stream that claims less
            // than it holds is broken, and must not fill the disk.
            const size_t allowed =
                static_cast<size_t>(std::min<uint64_t>(produced, uncompressedSize - written));
            if (allowed > 0 && fwrite(out, 1, allowed, file) != allowed) {
                failed = true;
                return false;
            }
            written += allowed;
            if (allowed < produced) {
                failed = true;
                return false;
            }
            if (status == Z_STREAM_END) {
                finished = true;
                return false;
            }
            if (status == Z_BUF_ERROR && stream.avail_in == 0)
                return true;
            if (status != Z_OK) {
                failed = true;
                return false;
            }
        } while (stream.avail_in > 0 || stream.avail_out == 0);
        return true;
    };
    const bool complete = TakeBytes(blockSize, inflatePiece);
    inflateEnd(&stream);
    const bool closed = fclose(file) == 0;
    // A stream that ends before the stated size is as broken as one that
    // runs past it.
    return complete && finished && !failed && closed && written == uncompressedSize;
}

bool CVxIniFileReader::WriteDataToFile(const void* buffer, unsigned size, const CVxStringW& path)
{
    if (!buffer && size > 0)
        return false;
    FILE* file = CreateOutputFile(path);
    if (!file)
        return false;
    const char* bytes = static_cast<const char*>(buffer);
    bool written = true;
    for (unsigned done = 0; done < size && written;) {
        const size_t count = std::min<size_t>(VX_INI_BUFFER_SIZE, size - done);
        written = fwrite(bytes + done, 1, count, file) == count;
        done += static_cast<unsigned>(count);
    }
    return (fclose(file) == 0) && written;
}
