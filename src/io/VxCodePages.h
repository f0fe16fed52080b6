#pragma once
// Code pages named by the "Encoding" key of record files. Text is decoded as
// UTF-8 whatever the page; the number is kept so that a file's own claim can be
// told and passed on.

constexpr unsigned VX_CP_UTF8 = 65001;
constexpr unsigned VX_CP_UTF7 = 65000;

// The code page for the value of an "Encoding" key, 0 for an unknown name.
// Names are compared without regard to case, as encoding names are.
unsigned VX_EncodingToCodePage(const wchar_t* encoding);
