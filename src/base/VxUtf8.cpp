#include "VxUtf8.h"

#include "VxTrace.h"

#include <utf8.h>

#include <iterator>

CVxStringA VX_StringToUTF8(const CVxStringW& text)
{
    std::string out;
    out.reserve(static_cast<size_t>(text.GetLength()));
    const wchar_t* p = text.c_str();
    const wchar_t* end = p + text.GetLength();
    try {
        for (; p != end; ++p) {
            const auto code = static_cast<uint32_t>(*p);
            if (code < 0x80)
                out.push_back(static_cast<char>(code));
            else
                utf8::append(code, std::back_inserter(out));
        }
    } catch (const utf8::exception&) {
        VxDebugLog("VX_StringToUTF8 conversion failed with exception");
    }
    return CVxStringA(std::move(out));
}

CVxStringW VX_StringToUnicode(const CVxStringA& text, int /*codePage*/)
{
    std::wstring out;
    VX_AppendUnicodeFromUTF8(text.c_str(), text.c_str() + text.GetLength(), out);
    return CVxStringW(std::move(out));
}

void VX_AppendUnicodeFromUTF8(const char* begin, const char* end, std::wstring& out)
{
    out.reserve(out.size() + static_cast<size_t>(end - begin));
    const char* p = begin;
    try {
        while (p != end) {
            // Record files are mostly ASCII, which needs no decoding.
            if (static_cast<unsigned char>(*p) < 0x80)
                out.push_back(static_cast<wchar_t>(*p++));
            else
                out.push_back(static_cast<wchar_t>(utf8::next(p, end)));
        }
    } catch (const utf8::exception&) {
        VxDebugLog("VX_StringToUnicode conversion failed with exception");
    }
}

CVxStringW VX_StringFromUTF8(const CVxStringA& text)
{
    return VX_StringToUnicode(text, 65001);
}
