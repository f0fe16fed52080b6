#include "CVxStringWriter.h"

#include "VxNumbers.h"
#include "VxUtf8.h"

CVxStringWriter::CVxStringWriter() : m_text("[Plaveno Clipboard]\r\n\r\n") {}

void CVxStringWriter::StartSection(CVxStringA name)
{
    // The clipboard head is followed by its empty line already.
    if (!m_section.IsEmpty())
        m_text += "\r\n";
    m_text += "[" + name + "]\r\n";
    m_section = name;
}

void CVxStringWriter::WriteInteger(const char* key, int value)
{
    if (key)
        m_text += CVxStringA().sprintf("%s=%d\r\n", key, value);
}

void CVxStringWriter::WriteString(const char* key, const CVxStringW& value)
{
    if (key)
        m_text += CVxStringA(key) + "=" + VX_StringToUTF8(value) + "\r\n";
}

void CVxStringWriter::WriteDouble(const char* key, double value)
{
    if (key)
        m_text += CVxStringA(key) + "=" + DblSave(value) + "\r\n";
}
