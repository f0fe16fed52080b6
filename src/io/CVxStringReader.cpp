#include "CVxStringReader.h"

CVxStringReader::CVxStringReader(CVxStringA text, unsigned codePage) : m_text(std::move(text))
{
    m_codePage = codePage;
    m_buffer = m_text.c_str();
    m_bufferLength = static_cast<size_t>(m_text.GetLength());
    m_bufferPos = 0;
    // Text pasted from elsewhere may carry the UTF-8 mark.
    SkipByteOrderMark(m_text.GetLength(), false);
}
