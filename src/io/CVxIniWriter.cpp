#include "CVxIniWriter.h"

#include "CVxUtils.h"
#include "IVxAppHelperCallback.h"
#include "IVxReadIniClient.h"
#include "VxNumbers.h"
#include "VxUtf8.h"

#include <charconv>

namespace {

// The UTF-8 mark and an empty line: how every file of ours begins.
const char s_fileLead[] = "\xEF\xBB\xBF\r\n";

// "key=value" and CR LF. Hundreds of thousands of lines make a big
// project; they go out without a format string to parse for each.
void WriteLine(FILE* file, const char* key, const char* value, size_t length)
{
    fputs(key, file);
    fputc('=', file);
    fwrite(value, 1, length, file);
    fputs("\r\n", file);
}

} // namespace

CVxIniWriter::CVxIniWriter(const CVxStringW& path, IVxReadIniClient* pathTransformer)
    : m_file(OpenFile(path, true)), m_pathTransformer(pathTransformer), m_path(path),
      m_folder(path.ExtractFileFolder())
{
}

CVxIniWriter::~CVxIniWriter()
{
    if (m_file)
        fclose(m_file);
}

bool CVxIniWriter::IsOpened()
{
    return m_file != nullptr;
}

void CVxIniWriter::Finalize() {}

void CVxIniWriter::StartSection(CVxStringA name)
{
    if (!m_file)
        return;
    fprintf(m_file, "%s[%s]\r\n", m_section.IsEmpty() ? "" : "\r\n", name.c_str());
    fflush(m_file);
    m_section = name;
}

void CVxIniWriter::WriteInteger(const char* key, int value)
{
    FileWriteInteger(m_file, key, value);
}

void CVxIniWriter::WriteInteger64(const char* key, long value)
{
    FileWriteInteger64(m_file, key, value);
}

void CVxIniWriter::WriteString(const char* key, const CVxStringW& value)
{
    FileWriteString(m_file, key, value);
}

void CVxIniWriter::WriteDouble(const char* key, double value)
{
    FileWriteDouble(m_file, key, value);
}

void CVxIniWriter::WriteBool(const char* key, bool value)
{
    WriteInteger(key, value ? 1 : 0);
}

CVxStringW CVxIniWriter::MakeRelativePath(CVxStringW& path)
{
    if (path.IsEmpty())
        return path;
    CVxStringW result;
    if (m_pathTransformer && m_pathTransformer->OnPathTransformToRelative(result, path, m_folder))
        return result;
    return CVxUtils::MakeRelativePath(path, m_folder);
}

CVxStringW CVxIniWriter::MakeRelativePathAs(CVxStringW& path, EVxFileRole /*role*/)
{
    return MakeRelativePath(path);
}

void CVxIniWriter::FileWriteInteger(FILE* file, const char* key, int value)
{
    if (!file || !key)
        return;
    char digits[16];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof(digits), value);
    WriteLine(file, key, digits, static_cast<size_t>(end.ptr - digits));
}

void CVxIniWriter::FileWriteInteger64(FILE* file, const char* key, long value)
{
    if (file && key)
        fprintf(file, "%s=%lld\r\n", key, static_cast<long long>(value));
}

void CVxIniWriter::FileWriteString(FILE* file, const char* key, const CVxStringW& value)
{
    if (!file || !key)
        return;
    const CVxStringA text = VX_StringToUTF8(value);
    WriteLine(file, key, text.c_str(), static_cast<size_t>(text.GetLength()));
}

void CVxIniWriter::FileWriteDouble(FILE* file, const char* key, double value)
{
    if (!file || !key)
        return;
    const CVxStringA text = DblSave(value);
    WriteLine(file, key, text.c_str(), static_cast<size_t>(text.GetLength()));
}

FILE* CVxIniWriter::OpenFile(const CVxStringW& path, bool writeBom)
{
    IVxAppHelperCallback* host = VX_GetAppHelper();
    if (!host || path.IsEmpty())
        return nullptr;
    FILE* file = host->OpenFile(path, VX_OPEN_WRITE);
    if (file && writeBom)
        fwrite(s_fileLead, 1, sizeof(s_fileLead) - 1, file);
    return file;
}
