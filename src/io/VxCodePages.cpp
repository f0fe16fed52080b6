#include "VxCodePages.h"

#include <cwchar>

namespace {

struct SVxEncodingName
{
    const wchar_t* name;
    unsigned codePage;
};

constexpr SVxEncodingName s_encodings[] = {
    {L"windows-1250", 1250}, {L"windows-1251", 1251}, {L"windows-1252", 1252}, {L"iso-8859-1", 1252},
    {L"windows-1253", 1253}, {L"windows-1254", 1254}, {L"windows-1255", 1255}, {L"windows-1256", 1256},
    {L"windows-874", 874},   {L"gb2312", 20936},      {L"big5", 10002},        {L"utf-8", VX_CP_UTF8},
    {L"utf-7", VX_CP_UTF7},
};

} // namespace

unsigned VX_EncodingToCodePage(const wchar_t* encoding)
{
    if (!encoding)
        return 0;
    for (const SVxEncodingName& entry : s_encodings) {
        if (wcscmp(encoding, entry.name) == 0)
            return entry.codePage;
    }
    return 0;
}
