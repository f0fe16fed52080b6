#include "VxUtf8.h"

#include "VxTrace.h"

#include <utf8.h>

#include <iterator>

CVxStringA VX_StringToUTF8(const CVxStringW& text)
{
    std::string out;
    const wchar_t* p = text.c_str();
    const wchar_t* end = p + text.GetLength();
    try {
        for (; p != end; ++p)
            utf8::append(static_cast<uint32_t>(*p), std::back_inserter(out));
    } catch (const utf8::exception&) {
        VxDebugLog("VX_StringToUTF8 conversion failed with exception");
    }
    return CVxStringA(std::move(out));
}

CVxStringW VX_StringToUnicode(const CVxStringA& text, int /*codePage*/)
{
    std::wstring out;
    const char* p = text.c_str();
    const char* end = p + text.GetLength();
    try {
        while (p != end)
            out.push_back(static_cast<wchar_t>(utf8::next(p, end)));
    } catch (const utf8::exception&) {
        VxDebugLog("VX_StringToUnicode conversion failed with exception");
    }
    return CVxStringW(std::move(out));
}

CVxStringW VX_StringFromUTF8(const CVxStringA& text)
{
    return VX_StringToUnicode(text, 65001);
}
