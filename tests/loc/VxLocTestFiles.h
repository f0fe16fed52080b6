#pragma once
// Language files for the tests, written byte for byte into folders of the
// test program's temporary folder.

#include "CVxStringW.h"

#include <string>

// A new empty folder under the temporary folder, ending in "/".
CVxStringW VxLocTestFolder(const char* name);
// Writes `bytes` as they are.
bool VxLocWriteFile(const CVxStringW& path, const std::string& bytes);
// A language file as translators write it: UTF-8 mark, CR LF line ends, the
// section "Main" with these keys, then `tables` as given (lines joined with
// CR LF, "\n" in the text below becomes a line end).
std::string VxLocLanguageFile(const std::string& language, const std::string& languageId,
                              const std::string& tables, const std::string& extraMain = std::string());
